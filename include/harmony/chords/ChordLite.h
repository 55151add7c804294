#pragma once
// CChordLite: the chord as the whole system passes it around. A spelled root, a spelled bass
// and the mask of chord tones above the root; a bass that is not also a chord tone stays out
// of the mask. It is a flat record without allocation, compared in the inner loops of the
// analysis.

#include <compare>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/chords/BasicChord.h"
#include "harmony/chords/HarmFunc.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/MySet.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

// How a chord symbol is read; defined with the parser in harmony/chords/ChordSymbolParser.h.
struct ChordSetFromStringPrefs;
class CChordHeavy;
class CHarmCenterLite;
class CScaleHeavy;
class CScaleLite;
class CSignKeyHeavy;
class CSignKeyLite;
// Defined with the voicing in harmony/chords/Voicing.h.
struct TChordVoicingPrefs;

class CChordLite : public TraceFamily<CChordLite> {
 public:
  CKeyEnh RootKeyEnh;        // key 15: no chord (see the three undefined states below)
  std::int32_t RootDir = 0;  // counts only in EqualIncludingDir
  CKeyEnh BassKeyEnh;        // key 15: no bass note
  std::int32_t BassDir = 0;  // counts only in EqualIncludingDir
  CSemitones Semitones;      // bits 0..11 above the root; tensions folded into the octave
  std::uint8_t Flag = 0;     // free for derived records (the JSON form of the metro chord)

  // The undefined chord: root and bass (15, TEnh_Undef), no tones.
  constexpr CChordLite() = default;
  constexpr CChordLite(CKeyEnh root, CSemitones semitones, CKeyEnh bass = CKeyEnh())
      : RootKeyEnh(root), BassKeyEnh(bass), Semitones(semitones) {}

  // A chord symbol read by the parser of harmony/chords/ChordSymbolParser.h, which callers
  // include for the preferences.
  CChordLite(const std::string& text, const ChordSetFromStringPrefs& prefs,
             const CChordNamePrefs& namePrefs);
  CChordLite(const char* text, const ChordSetFromStringPrefs& prefs,
             const CChordNamePrefs& namePrefs);
  void SetFromString(const std::string& text, const ChordSetFromStringPrefs& prefs,
                     const CChordNamePrefs& namePrefs);

  static CChordLite FromDictionary(const JsonDict& dict);

  // Root and bass from the heavy chord's root and bass slot; a tone that sounds only in the
  // bass stays out of the mask. A chord of played notes without bass slot has no bass.
  void SetFromChordHeavy(const CChordHeavy& heavy);
  // The root in the comping range, the bass (or the root) in the bass slot. The no-chord
  // states give copies of their heavy constants with their own wrap interval.
  CChordHeavy ToChordHeavy(int wrapIntvl) const;

  // A 64-bit code of root, bass and tones: semitones in the low 24 bits, then four bits each
  // for root key, root enh, bass key, bass enh. The code is stored by hosts, so the layout is
  // fixed; an enh outside 0..15 (TEnh_bbb) does not survive it.
  long long GetChordHashCode() const;
  void SetFromChordHashCode(long long code);

  // --- The three states without a root. They differ only in the root's enh byte.
  bool IsUndef() const { return RootKeyEnh.KeyNr == kKeyNrUndef; }
  bool IsNoChordYield() const { return IsUndef() && RootKeyEnh.Enh == TEnh_bb; }
  bool IsNoChordForce() const { return IsUndef() && RootKeyEnh.Enh == TEnh_b; }
  // Each writes only the root; bass and tones stay.
  void SetUndef() { RootKeyEnh = CKeyEnh(kKeyNrUndef, TEnh_Undef); }
  void SetNoChordYield() { RootKeyEnh = CKeyEnh(kKeyNrUndef, TEnh_bb); }
  void SetNoChordForce() { RootKeyEnh = CKeyEnh(kKeyNrUndef, TEnh_b); }
  bool HasBassNote() const { return BassKeyEnh.KeyNr != kKeyNrUndef; }
  // A bass spelled differently from the root (C/B#) counts as a slash chord.
  bool IsSlashChord() const { return !IsUndef() && HasBassNote() && BassKeyEnh != RootKeyEnh; }

  // --- Tones
  TBasicChord BasicChord() const { return Semitones.BasicChord(); }
  // A half-diminished chord (3, 6 and 10) is named as a minor chord with a flat five.
  TBasicChord BasicChordForNaming() const;
  CSemitones BasicChordSemitones() const { return SemitonesForBasicChord(BasicChord()); }
  // The tones beyond the basic chord.
  CSemitones OptionsSemitones() const { return Semitones - BasicChordSemitones(); }
  bool HasBasicChordIntvl(int intvl) const { return BasicChordSemitones().HasIntvl(intvl); }
  bool HasOptionsIntvl(int intvl) const { return OptionsSemitones().HasIntvl(intvl); }
  bool HasChordOption(TChordOption option) const { return Semitones.HasChordOption(option); }
  // The bass stands `intvl` (0..11) above the root and is no chord tone.
  bool BassKeyEnhHasThisIntvlAlone(int intvl) const;
  // The bass is no chord tone; also true without a bass.
  bool BassKeyEnhHasIntvlAlone() const;
  // A chord tone at `intvl`; the mask never holds a bass-only tone.
  bool HasIntvlButNotInBassKeyEnhAlone(int intvl) const { return Semitones.HasIntvl(intvl); }
  // The key numbers of all chord tones; empty without a root.
  CMySet<int> KeyNrSet() const;
  // The heavy forms' keys (the bass among them): all of the other chord's and more.
  bool IsNonidenticalSupersetOf(const CChordLite& other) const;
  // Whether the tones that make the chord what it is are keys of the sign key's scale; the
  // root always has to be one. Major, aug and dominant 7 chords pass on their root alone.
  bool IsInSignKeyRegardlessOfEnh(const CSignKeyLite& signKey) const;
  bool IsInSignKeyRegardlessOfEnh(const CSignKeyHeavy& signKey) const;
  // The basic chord with the seventh the center's mode suggests on this degree (an existing
  // seventh is kept); no bass. The undefined chord for an undefined center.
  CChordLite ChordExpandedWithTypicalSeventh(const CHarmCenterLite& center) const;
  // The scale degree (from 0) of the root or bass key; -1 when it is no scale key.
  int RootNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const;
  int BassNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const;
  // The function in a key, as the heavy chord at wrap 24 tells it (harmony/chords/HarmFunc.h).
  CHarmFunc HarmFuncIn(const CScaleHeavy& scale) const;
  std::string HarmFuncNameIn(const CSignKeyHeavy& signKey, const CChordNamePrefs& prefs) const;

  // --- Root and bass. Each is -129 when root or bass is undefined.
  // Bass minus root, not wrapped: -11..11 for normal keys.
  int KeyIntvlFromRootToBass() const;
  int AbsKeyIntvlFromRootToBass() const;
  // -6..5: the tritone is always -6.
  int SmallestKeyIntvlBetweenRootAndBass() const;
  int KeyDistanceBetweenRootAndBass() const;
  // A key number relative to the root and back, both wrapped to 0..11; 15 when undefined.
  int ChordKeyNrFromKeyNr(int keyNr) const;
  int KeyNrFromChordKeyNr(int chordKeyNr) const;

  // --- Transformations
  // The same chord tones read from another root; see ChordLite.cpp for the bass.
  void RotateRootToKeyEnh(const CKeyEnh& newRoot);
  // The bass becomes the root; the former root stays a chord tone.
  void RotateRootToBassKeyEnh();
  // Root and bass move by the interval and are spelled as the scale spells them; the mask
  // stays. Nothing happens without a root.
  void TransposeAndAdjustEnh(int intvl, const CScaleLite& scale);

  // --- Voicing and quantising (harmony/chords/Voicing.h)
  // The chord as MIDI notes, sorted ascending, each note once: the root in the comping range
  // (53..65), the tones above it, ninths, elevenths and thirteenths an octave up where the
  // chord makes them tensions, and the bass below the root. Empty without a root.
  std::vector<unsigned char> VoicingNotesNrs(const TChordVoicingPrefs& prefs) const;
  // The note moved to the nearest chord tone (or in the direction given). Within the octave
  // the move never crosses the root's octave boundary: on a C chord, B4 quantises to C4.
  // A chord without root leaves the note alone; an undefined note gives -1.
  long QuantizeToChord(long noteNr, TQuantizeDirection direction) const;
  // The same onto the triad only (onto all tones when the chord has no triad).
  long QuantizeToBasicChord(long noteNr, TQuantizeDirection direction) const;
  long _QuantizeToSemitones(long noteNr, TQuantizeDirection direction,
                            const CSemitones& semitones) const;

  // --- Comparisons
  bool EqualExceptRootAndBass(const CChordLite& other) const {
    return Semitones == other.Semitones;
  }
  bool EqualWithoutEnh(const CChordLite& other) const {
    return RootKeyEnh.KeyNr == other.RootKeyEnh.KeyNr &&
           BassKeyEnh.KeyNr == other.BassKeyEnh.KeyNr && Semitones == other.Semitones;
  }
  bool EqualWithoutDir(const CChordLite& other) const {
    return RootKeyEnh == other.RootKeyEnh && BassKeyEnh == other.BassKeyEnh &&
           Semitones == other.Semitones;
  }
  bool EqualIncludingDir(const CChordLite& other) const {
    return RootDir == other.RootDir && BassDir == other.BassDir && EqualWithoutDir(other);
  }
  bool operator==(const CChordLite& other) const { return EqualWithoutDir(other); }
  // Root ascending with the larger enh first, bass likewise (the order of CKeyEnh), then the
  // mask as a number. Written out here so that sorting inlines it.
  std::strong_ordering operator<=>(const CChordLite& other) const {
    if (const auto byRoot = _CompareKeys(RootKeyEnh, other.RootKeyEnh); byRoot != 0) {
      return byRoot;
    }
    if (const auto byBass = _CompareKeys(BassKeyEnh, other.BassKeyEnh); byBass != 0) {
      return byBass;
    }
    return Semitones.Word() <=> other.Semitones.Word();
  }

  // --- Text
  // {"RootKeyEnh":{...}, "BassKeyEnh":{...}, "Semitones":145}
  void AppendJSONString(std::ostream& out) const;
  // The same without the braces, for the JSON of derived records.
  void AppendJSONClassSubstring(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  static constexpr std::strong_ordering _CompareKeys(const CKeyEnh& a, const CKeyEnh& b) {
    if (a.KeyNr != b.KeyNr) return a.KeyNr <=> b.KeyNr;
    return b.Enh <=> a.Enh;
  }
};

static_assert(std::is_trivially_copyable_v<CChordLite>, "CChordLite is copied as a whole");

// The two marked places without a chord, named "No Chord Yield" and "No Chord".
inline constexpr CChordLite CChordLite_NoChordYield{CKeyEnh(kKeyNrUndef, TEnh_bb), CSemitones()};
inline constexpr CChordLite CChordLite_NoChordForce{CKeyEnh(kKeyNrUndef, TEnh_b), CSemitones()};

}  // namespace harmony
