#pragma once
// A sign key of the analysis tree: what a key signature says, from where it holds, with the
// harmonic centers that the harmony passes through under it; and the row of sign keys of a
// piece, the root of the tree.

#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

class CHarmAnlsSignKey : public TraceFamily<CHarmAnlsSignKey> {
 public:
  // Carried and written; nothing in the analysis sets it.
  double Probability = kHarmAnlsUndefDouble;
  double Position = kHarmAnlsUndefDouble;
  CSignKeyLite SignKey;
  CHarmAnlsCenters HarmCenters;

  CHarmAnlsSignKey() = default;
  CHarmAnlsSignKey(double probability, double position, const CSignKeyLite& signKey,
                   CHarmAnlsCenters centers = {})
      : Probability(probability),
        Position(position),
        SignKey(signKey),
        HarmCenters(std::move(centers)) {}

  // No root or no type.
  bool IsUndef() const {
    return SignKey.RootKeyEnh.KeyNr == kKeyNrUndef || SignKey.SignKeyType == TSignKeyType::Undef;
  }

  // Position, sign key and centers; the probability takes no part.
  bool operator==(const CHarmAnlsSignKey& other) const {
    return Position == other.Position && SignKey == other.SignKey &&
           HarmCenters == other.HarmCenters;
  }

  // An undefined sign key takes root and type of the center, an unplaced one its position.
  void IfUndefFillWithHarmAnlsCenter(const CHarmAnlsCenter& center);

  // Reads what AppendJSONString writes (after the relaxed pass of the JSON reader).
  static CHarmAnlsSignKey FromDictionary(const JsonDict& dict);

  void AppendJSONString(std::ostream& out) const;
  // "CHarmAnlsSignKey: " and the JSON form.
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmAnlsSignKeys : public std::vector<CHarmAnlsSignKey>,
                          public TraceFamily<CHarmAnlsSignKeys> {
 public:
  using std::vector<CHarmAnlsSignKey>::vector;

  // Neighbours with the same key and type become one: the first takes the centers of the
  // second, whose position is lost.
  void MergeAdjacentSameSignKeys();
  // Merges the same neighbouring centers within each sign key.
  void MergeAdjacentSameHarmCenters();

  // The sign keys of a JSON array.
  static CHarmAnlsSignKeys FromDictionary(const JsonDict& array);
  // The sign keys of an analysis result as CHarmonicAnalyse writes it, non-strict forms
  // included; empty for text that can't be read.
  static CHarmAnlsSignKeys FromAnalysisJSONString(std::string_view text);

  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  void _MergeSignKeysAndEraseSecond(iterator first);
};

}  // namespace harmony
