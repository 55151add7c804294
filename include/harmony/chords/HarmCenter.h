#pragma once
// CHarmCenterLite: a harmonic center, the tonal center a passage circles around: a root and
// a scale mask, in practice a church mode.

#include <ostream>
#include <string>
#include <type_traits>

#include "harmony/Trace.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {

class CHarmCenterLite : public CScaleLite, public TraceFamily<CHarmCenterLite> {
 public:
  static const CHarmCenterLite Undef;

  using TraceFamily<CHarmCenterLite>::Trace;
  using TraceFamily<CHarmCenterLite>::TraceBrief;
  using TraceFamily<CHarmCenterLite>::TraceStr;
  using TraceFamily<CHarmCenterLite>::TraceString;
  using TraceFamily<CHarmCenterLite>::TraceBriefString;
  using TraceFamily<CHarmCenterLite>::TraceForInitializerList;
  using TraceFamily<CHarmCenterLite>::StringForInitializerList;

  constexpr CHarmCenterLite() = default;
  constexpr CHarmCenterLite(const CKeyEnh& root, const CSemitones& semitones)
      : CScaleLite(root, semitones) {}
  // Not explicit: every scale can serve as a center.
  constexpr CHarmCenterLite(const CScaleLite& scale) : CScaleLite(scale) {}
  // The major or minor scale of the sign key; an undefined type gives the undefined center.
  explicit CHarmCenterLite(const CSignKeyLite& signKey);

  int KeyNrToHarmCenterKeyNr(int keyNr) const;
  int HarmCenterKeyNrToKeyNr(int harmCenterKeyNr) const;
  // "C", "Am", or the long name for the other modes.
  std::string NameShort(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  // "C Major", "A Minor", "D Dorian"; only the root for masks that are no church mode.
  std::string NameLong(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

inline constexpr CHarmCenterLite CHarmCenterLite::Undef{};

static_assert(std::is_trivially_copyable_v<CHarmCenterLite>, "CHarmCenterLite is a plain value");

}  // namespace harmony
