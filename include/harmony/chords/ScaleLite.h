#pragma once
// CScaleLite: the scale value passed around everywhere, a root and a semitone mask. It never
// consults the table of named scales; operations that need spelling build a CScaleHeavy for
// a moment.

#include <compare>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>

#include "harmony/Trace.h"
#include "harmony/chords/ScaleType.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

class CChordLite;
class CScaleHeavy;

class CScaleLite : public TraceFamily<CScaleLite> {
 public:
  // Whether a scale was chosen by the program or by the user.
  enum class IsAutomatic : std::uint8_t { Yes = 0, No = 1 };

  CKeyEnh RootKeyEnh;
  CSemitones Semitones;

  constexpr CScaleLite() = default;
  constexpr CScaleLite(const CKeyEnh& root, const CSemitones& semitones)
      : RootKeyEnh(root), Semitones(semitones) {}
  explicit CScaleLite(const CScaleHeavy& heavy);
  // Reads a scale name; see SetFromString.
  explicit CScaleLite(const std::string& text,
                      const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
  explicit CScaleLite(const char* text, const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

  // A root ("D", "Eb") followed by a scale word ("dorian", "melodic minor"); a bare root or
  // an unknown word gives the major scale, and an unreadable root stays undefined.
  void SetFromString(const std::string& text,
                     const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

  bool IsUndef() const { return RootKeyEnh.IsUndef(); }

  // --- Tones
  bool HasIntvl(int intvl) const { return Semitones.HasIntvl(intvl); }
  bool HasExactlyTheseIntvls(const CIntvlSet& intvls) const {
    return Semitones.HasExactlyTheseIntvls(intvls);
  }
  bool HasKeyNr(int keyNr) const;
  // The same keys with the other scale's root among them (C major and A minor).
  bool HasSameKeysAsScale(const CScaleLite& other) const;
  // The same keys read from another root of the scale.
  void RotateRootToKeyEnh(const CKeyEnh& newRoot);
  unsigned long AvoidNotesCountTo(const CSemitones& other) const {
    return Semitones.AvoidNotesCountTo(other);
  }
  int DegreesPerOctave() const { return static_cast<int>(Semitones.size()); }
  // The note moved onto the scale; the interval is walked without wrapping at the octave.
  long QuantizeToScale(long noteNr, TQuantizeDirection direction) const;

  // --- Keys and degrees (degrees from 0 at the root)
  int ScaleKeyNrFromKeyNr(int keyNr) const;
  int KeyNrFromScaleKeyNr(int scaleKeyNr) const;
  int DegreeNrToKeyNr(int degreeNr) const;
  int KeyNrToDegreeNr(int keyNr) const;
  // The degree's key in the octave `octaveIndex` (from note 0); degrees do not carry over.
  long DegreeNrToNoteNr(int degreeNr, int octaveIndex) const;
  int NoteNrToDegreeNr(long noteNr) const;
  int DistToRootKey(int keyNr) const;

  void TransposeAndAdjustEnh(int intvl, const CScaleLite& scale);
  // Respells the root as given, as flats or as sharps, whichever gives the scale of these
  // tones (read as a chord) the fewest signs.
  void SetRootKeyEnhWithLeastSigns();

  // --- Chords
  // This scale with the chord's keys added; for an undefined scale, major or minor on the
  // chord's root.
  CScaleLite ConstructScaleForChord(const CChordLite& chord) const;
  // The triad on the root of steps 0, 2, 4.
  CChordLite ChordTriadForScale() const;

  // --- Modes
  bool IsModalScale() const { return Semitones.IsModalScale(); }
  bool IsModalScaleMajor() const { return Semitones.IsModalScaleMajor(); }
  bool IsModalScaleMinor() const { return Semitones.IsModalScaleMinor(); }
  // Major to relative minor and back; undefined for any other mask.
  CScaleLite ParallelModalScale() const;
  // The major scale with the same notes as a church mode.
  CScaleLite RelatedIonianModalScale() const;

  // --- Values and text
  std::uint64_t HashValue() const;
  // How the scale spells a key.
  TEnh EnhForKeyNr(int keyNr) const;
  bool operator==(const CScaleLite& other) const {
    return RootKeyEnh == other.RootKeyEnh && Semitones == other.Semitones;
  }
  // Root key number, then the larger spelling first, then the mask.
  bool operator<(const CScaleLite& other) const;
  // "D Dorian", "C 0-1-4-7"
  std::string Name(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  // The localized name of the mask, or its tones.
  std::string ScaleName() const;
  // {"CKeyEnh":{"KeyNr":" 2","Enh":"neutral"},"Semitones":"[1,0,1,...]"}
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// "isAutomatic: Yes" or "isAutomatic: No".
std::ostream& operator<<(std::ostream& out, CScaleLite::IsAutomatic isAutomatic);

static_assert(std::is_trivially_copyable_v<CScaleLite>, "CScaleLite is copied as a plain value");

namespace ScaleLite {

// Root, bass and every key of the chord are scale keys.
bool ChordIncludingOptionsIsDiatonicInScale(const CChordLite& chord, const CScaleLite& scale);
// The keys of the basic chord and the bass are scale keys.
bool ChordExcludingOptionsIsDiatonicInScale(const CChordLite& chord, const CScaleLite& scale);
// The usual guests of a major key: major chords on the flat third and flat seventh degree,
// the minor chord on the fourth.
bool IsCompatibleOutlierChordOfScale(const CChordLite& chord, const CScaleLite& scale);
// Diatonic, such a guest, or a dominant triad on the fifth degree.
bool ChordIsCompatibleWithScale(const CChordLite& chord, const CScaleLite& scale);

}  // namespace ScaleLite

}  // namespace harmony
