#pragma once
// One scale offered for a chord: the record that both the filter of candidate masks and the
// fallback creator hand back, so that a host reads either list the same way.

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/ScaleLite.h"

namespace harmony {

struct TScaleAlternative : public TraceFamily<TScaleAlternative> {
  // The scale on the chord's root.
  CScaleLite Scale;
  // Carried for hosts; the filter and the fallback leave it 0.
  int Value = 0;
  // How the fallback ranked the scale, when asked for it; empty otherwise.
  std::string Debug;
  // Carried for hosts; always empty here.
  std::string Comment;

  TScaleAlternative() = default;
  explicit TScaleAlternative(const CScaleLite& scale, std::string debug = {})
      : Scale(scale), Debug(std::move(debug)) {}

  bool operator==(const TScaleAlternative& other) const {
    return Scale == other.Scale && Value == other.Value && Debug == other.Debug &&
           Comment == other.Comment;
  }

  // "TScaleAlternative: D Dorian, Value 0, Debug \"...\""
  void WriteTrace(std::ostream& out) const;
  // "D Dorian"
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

using TScaleAlternatives = std::vector<TScaleAlternative>;

}  // namespace harmony
