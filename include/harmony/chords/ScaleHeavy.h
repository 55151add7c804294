#pragma once
// CScaleHeavy: a scale with a root note in a register, a spelling for each of the twelve keys
// and degree arithmetic in notes. Its spelling table is what names every key correctly in a
// scale (CKeyEnh::AdjustEnhToScale, CNote::AdjustEnhToScale read it). Building one computes
// the key signature and the table, so callers in loops should keep one instead of rebuilding.

#include <array>
#include <cstdint>
#include <ostream>
#include <set>
#include <string>

#include "harmony/Trace.h"
#include "harmony/chords/ScaleType.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/MySet.h"
#include "harmony/pitch/Note.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

class CChordHeavy;

// One scale of the vocabulary: its degrees as intervals above the root, an accidental per
// degree, and whether it counts as major or minor.
struct TScaleData {
  TScaleType Type = st_Undef;
  const char* Name = "";
  std::int32_t DegreesPerOctave = 0;
  // Ascending from 0; entries beyond the degrees are 0.
  std::array<std::int32_t, 12> DegreeToRootOffsetIntvl{};
  // TEnh values by degree.
  std::array<std::int32_t, 12> DegreeEnh{};
  // 0 major, 1 minor, 2 neither, 3 custom or undefined.
  std::int32_t Mode = 3;

  friend bool operator==(const TScaleData&, const TScaleData&) = default;
};

class CScaleHeavy : public TraceFamily<CScaleHeavy> {
 public:
  // Where a key outside the scale goes: the nearer scale key (a tie going up or down), or
  // always up, or always down. The values are those of TQuantizeDirection.
  enum TQuantizeToScaleDirection : std::int32_t {
    kQuantizeToScale_ClosestTieUp = 0,
    kQuantizeToScale_ClosestTieDown = 1,
    kQuantizeToScale_Up = 2,
    kQuantizeToScale_Down = 3,
  };

  static constexpr int kNumAvailableScales = 30;
  // Scales built from a key (without register) place their root in this octave (C = 60).
  static constexpr int kRootOctave = 4;

  // The vocabulary in table order; the last row is the empty scale of type st_Undef.
  static const std::array<TScaleData, kNumAvailableScales> mScaleData;
  static const CScaleHeavy Undef;

  // --- The table
  static int NumAvailableScales() { return kNumAvailableScales; }
  // st_maj for an index outside the table.
  static TScaleType GetTypeForScaleAtIndex(int index);
  // nullptr for an index outside the table.
  static const char* GetNameForScaleAtIndex(int index);
  // 0 when the type has no row, which includes st_custom.
  static int ScaleIndexFromType(TScaleType type);
  static const char* GetNameForScaleType(TScaleType type);
  static std::int32_t GetModeForScaleType(TScaleType type);
  static std::int32_t GetDegreesPerOctaveForScaleType(TScaleType type);
  static const std::array<std::int32_t, 12>& GetDegreeToRootOffsetIntvlArrayForScaleType(
      TScaleType type);
  static const std::array<std::int32_t, 12>& GetDegreeEnhForScaleType(TScaleType type);
  // The localized display name ("Dorian"); empty for st_Undef and values above 30.
  static std::string LocalizedNameForScaleType(TScaleType type);
  // This scale's own custom record for st_custom, otherwise the table row.
  const TScaleData& ScaleDataFromType(TScaleType type) const;

  // --- Construction: the undefined scale, or a root with a named type or a set of tones.
  // A set of tones that equals a row of the table takes that row's type; otherwise the
  // scale is of type st_custom.
  constexpr CScaleHeavy() = default;
  CScaleHeavy(const CNote& root, TScaleType type);
  CScaleHeavy(const CKeyEnh& root, TScaleType type);
  // The root takes the spelling whose key signature has the fewest signs (D flat major,
  // C sharp minor).
  CScaleHeavy(int rootKeyNr, TScaleType type);
  CScaleHeavy(const CKeyEnh& root, const CSemitones& semitones);
  CScaleHeavy(const CKeyEnh& root, const CIntvlSet& intvls);
  CScaleHeavy(const CKeyEnh& root, const CMySet<int>& keyNrs);
  CScaleHeavy(const CNote& root, const CIntvlSet& intvls);
  CScaleHeavy(const CNote& root, const CMySet<int>& keyNrs);
  // Reads a scale name ("D dorian", "Eb melodic minor").
  explicit CScaleHeavy(const std::string& text,
                       const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
  explicit CScaleHeavy(const char* text, const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

  // --- Setting
  void SetFromRootKeyEnhAndScaleType_ResetCustomScaleData(const CKeyEnh& root, TScaleType type);
  void SetFromRootKeyEnhAndScaleType_DontResetCustomScaleData(const CKeyEnh& root, TScaleType type);
  void SetFromRootKeyEnhAndCustomScaleSemitones_ResetCustomScaleData(const CKeyEnh& root,
                                                                     const CSemitones& semitones);
  // Intervals count within the octave (14 is 2).
  void SetFromRootKeyEnhAndCustomScaleIntvlSet_ResetCustomScaleData(const CKeyEnh& root,
                                                                    const CIntvlSet& intvls);
  void SetFromRootKeyEnhAndCustomScaleKeyNrSet_ResetCustomScaleData(const CKeyEnh& root,
                                                                    const CMySet<int>& keyNrs);
  // New tones above the current root. The resetting form also renames the custom record.
  void SetCustomScaleRootOffsetIntvlSet_ResetCustomScaleData(const CIntvlSet& intvls);
  void SetCustomScaleRootOffsetIntvlSet_DontResetCustomScaleData(const CIntvlSet& intvls);
  // A defined root keeps its octave; a new root from the undefined one goes to kRootOctave.
  void SetRootKeyEnh(const CKeyEnh& root);
  void SetRootKeyEnhWithoutCalcEnh(const CKeyEnh& root);
  void SetRootNote(const CNote& root);
  // st_custom uses the custom record as it stands.
  void SetScaleType(TScaleType type);
  void SetScaleTypeWithoutCalcEnh(TScaleType type);
  void SetUndef();
  // Every key of the spelling table becomes TEnh_Undef.
  void InitEnh();
  // Fills the spelling table from the key signature and the neighbour rules.
  void CalcEnh();
  // Type st_custom, name "Custom", twelve degrees 0..11, mode 3.
  void InitCustomScaleData();

  // --- The scale
  const CNote& RootNote() const { return _RootNote; }
  CKeyEnh RootKeyEnh() const { return _RootNote.KeyEnh(); }
  TScaleType ScaleType() const { return _ScaleType; }
  const TScaleData& ActiveScaleData() const { return mActiveScaleData; }
  const TScaleData& CustomScaleData() const { return mCustomScaleData; }
  // No root, or type st_Undef.
  bool IsUndef() const { return _RootNote.IsUndef() || _ScaleType == st_Undef; }
  bool IsModalScale() const { return IsScaleTypeModal(_ScaleType); }
  CKeyEnh RelatedIonianScaleRootKeyEnh() const;
  // The major scale with the same notes; an undefined root for a type that is no church mode.
  CScaleHeavy RelatedIonianScale() const;
  std::int32_t DegreesPerOctave() const { return mActiveScaleData.DegreesPerOctave; }
  CSemitones ToSemitones() const;
  // The degrees as intervals above the root, wrap interval 12.
  CIntvlSet ToIntvlSet() const;
  // Empty for an undefined root.
  CMySet<int> ToKeyNrSet() const;
  // The first table row with the custom record's degrees, or st_custom.
  TScaleType FindScaleTypeForCustomScale() const;

  // --- Key signature and spelling
  // Sharps (positive) or flats (negative) of the scale's key signature.
  int SignsCount() const;
  int SignsCountAbs() const;
  CKeyEnh _SignsCount_DetermineLookForRootKeyEnhForNonModalScale() const;
  // The steps on the circle of fifths from C to `look`; 25 or -25 when not found.
  static int _SignsCount_DetermineSignsCountBySearchingCycleOfFifths(const CKeyEnh& look);
  void _CalcEnh_SetKeyEnhOfScaleNotesSetOthersToUndef(int signsCount);
  // The spelling of a key number; the key is read modulo 12, so key 15 reads the entry of 3.
  TEnh EnhForKeyNr(int keyNr) const;
  // The spelling of the key `step` semitones above the root.
  TEnh EnhForChromStep(int step) const;
  TEnh EnhForNote(const CNote& note) const { return EnhForKeyNr(note.KeyNr()); }
  void SetEnhForKeyNr(int keyNr, TEnh enh);
  void SetEnhForNote(const CNote& note) { SetEnhForKeyNr(note.KeyNr(), note.Enh()); }
  void SetEnhForChromStep(int step, TEnh enh);

  // --- Degrees (counted from 0 at the root); -1 for no degree, 15 for no key
  bool HasIntvl(int intvl) const;
  bool HasKeyNr(int keyNr) const { return KeyNrToDegreeNr(keyNr) >= 0; }
  bool HasNote(const CNote& note) const { return HasKeyNr(note.KeyNr()); }
  bool HasNoteNr(long noteNr) const;
  int KeyNrToDegreeNr(int keyNr) const;
  int NoteToDegreeNr(const CNote& note) const { return KeyNrToDegreeNr(note.KeyNr()); }
  int NoteNrToDegreeNr(long noteNr) const;
  // The degree whose interval above the root is `intvl` within the octave.
  int IntvlToDegreeNr(int intvl) const;
  // Degrees beyond the octave or below the root wrap round the scale.
  int DegreeNrToKeyNr(int degreeNr) const;
  CKeyEnh DegreeNrToKeyEnh(int degreeNr) const;
  // Counted from the root note, carrying octaves: degree 7 of a major scale is the octave.
  long DegreeNrToNoteNr(int degreeNr) const;
  CNote DegreeNrToNote(int degreeNr) const;
  // The degree's key in octave -1 (note numbers 0..11), spelled.
  CNote DegreeNrToNoteInLowestOctave(int degreeNr) const;

  // --- Quantising onto the scale; an undefined key or scale gives it back unchanged
  CKeyEnh QuantizeToScaleKeyEnh(const CKeyEnh& key, TQuantizeToScaleDirection direction) const;
  int QuantizeToScaleDegreeNr(int keyNr, TQuantizeToScaleDirection direction) const;
  CNote NoteQuantizeToScaleNote(const CNote& note, TQuantizeToScaleDirection direction) const;

  // Walks `steps` degrees up or down. A note between two degrees counts as lying just above
  // the lower one when walking up and just below the upper one when walking down. With
  // `keepInNoteRange` the result moves by octaves into 0..127 and keeps its key.
  long MoveInScale(long noteNr, int steps, bool keepInNoteRange) const;
  // The same for a note, spelled from the table; an unchanged note for an undefined scale.
  CNote MoveInScale(const CNote& note, int steps) const;

  // --- Chords and the scale
  // The scale a chord sounds in: this scale, or for an undefined scale major or minor on the
  // chord's root by its basic chord, with the chord's keys added (a custom scale then). Keys
  // a custom scale can't spell take the spelling of the scale it grew from. An undefined
  // chord gives the undefined scale.
  CScaleHeavy ConstructScaleForChord(const CChordHeavy& chord) const;
  // The chord of these scale steps (0 = root) built upwards from the root in the comping
  // range; the first step is the chord's root. The undefined chord for an undefined scale.
  CChordHeavy ChordFromScaleStepSet(const std::set<int>& steps) const;
  // Steps 0, 2 and 4.
  CChordHeavy ChordTriadForScale() const;
  // Root, lowest note and every key of the chord are scale keys; false without notes.
  bool ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(const CChordHeavy& chord) const;
  // The keys of the triad and the lowest note are scale keys.
  bool ChordBasicChordAndBassNoteIsDiatonicInScaleDisregardingEnh(const CChordHeavy& chord) const;

  // --- Comparing and text
  // Root note, type and degrees; the spelling table follows from them.
  bool operator==(const CScaleHeavy& other) const;
  // "D Dorian"; a custom scale names its tones.
  std::string FullName(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  // {"root":{"name":"D3","nr":62,"enh":"neutral"},"type":"dori"}
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  void _SetRootFromKeyEnh(const CKeyEnh& root);
  // Sets the custom record's degrees from a mask and takes the first table type with them.
  void _SetCustomDegreesAndFindType(const CSemitones& semitones);
  // A root without spelling takes the one the table gives its key.
  void _SpellRootFromTable();
  // The degree of the interval of `rel` (0..11) above the root, or -1.
  int _DegreeOfRootOffset(int rel) const;
  int _QuantizeIntvlFromKey(int keyNr, TQuantizeToScaleDirection direction) const;

  CNote _RootNote;
  TScaleType _ScaleType = st_Undef;
  std::array<TEnh, 12> _Enh{TEnh_Undef, TEnh_Undef, TEnh_Undef, TEnh_Undef, TEnh_Undef, TEnh_Undef,
                            TEnh_Undef, TEnh_Undef, TEnh_Undef, TEnh_Undef, TEnh_Undef, TEnh_Undef};
  TScaleData mActiveScaleData;
  TScaleData mCustomScaleData{st_custom,
                              "Custom",
                              12,
                              {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11},
                              {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2},
                              3};
};

inline constexpr CScaleHeavy CScaleHeavy::Undef{};

}  // namespace harmony
