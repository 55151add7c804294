#pragma once
// CChordHeavy: a chord as notes. A spelled root note, the spelled notes of the chord with
// their octaves, and a cache of the intervals above the root. Naming, root detection and
// voicing work on it; CChordLite::SetFromChordHeavy and CChordLite::ToChordHeavy convert.
//
// The bass is not a field of its own: a note in octave -1 (note numbers 0..11) is the bass,
// and the chord tones stand around the comping range (53..65) above it. The interval cache
// is rebuilt lazily: every change of notes or root sets a dirty flag, and the next query
// that reads intervals rebuilds them once. A const query may therefore write the cache, and
// naming may respell the bass and root, so one chord must not be used by two threads at once.

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/BasicChord.h"
#include "harmony/chords/HarmFunc.h"
#include "harmony/chords/ScaleType.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/MySet.h"
#include "harmony/pitch/Note.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

class CHarmCenterLite;

// Which way root detection goes: the trained net (1) or the hand-weighted tables (any other
// value).
using TSingleChordAnalysisAlgo = int;
inline constexpr TSingleChordAnalysisAlgo kSingleChordAnalysisAlgoProbTable = 0;
inline constexpr TSingleChordAnalysisAlgo kSingleChordAnalysisAlgoNeuronalNet = 1;
class CScaleHeavy;
class CSignKeyHeavy;
struct ChordSetFromStringPrefs;

// How BasicChordRealIntvls treats a tone that sounds only in the bass (C/D: the D).
enum TIgnoreBassNoteForPositiveMatch : std::int32_t {
  // The bass-only tone does not make the chord what it would be with that tone.
  kIgnoreBassNoteForPositiveMatch_Yes = 0,
  // It counts like every other tone (as does any value other than 0).
  kIgnoreBassNoteForPositiveMatch_No = 1,
};

class CChordHeavy : public TraceFamily<CChordHeavy> {
 public:
  // The single options of a chord name, one per interval. Distinct from the four tension
  // groups of the chord record (harmony::TChordOption).
  enum TChordOption : std::uint8_t {
    kOption_b9 = 0,
    kOption_add_b9 = 1,
    kOption_9 = 2,
    kOption_add_9 = 3,
    kOption_sharp9 = 4,
    kOption_b3 = 5,
    kOption_3 = 6,
    kOption_11 = 7,
    kOption_add_11 = 8,
    kOption_sharp11 = 9,
    kOption_b5 = 10,
    kOption_5 = 11,
    kOption_b13 = 12,
    kOption_sharp5 = 13,
    kOption_13 = 14,
    kOption_7 = 15,
    kOption_6 = 16,
    kOption_ma7 = 17,
    kOption_j7 = 18,
    kOption_maj7 = 19,
  };

  // The options of a chord by sort key: the key puts them in the order of a chord name, and
  // a later option written to a key replaces the earlier one. A flat map without allocation.
  struct TOptionsMapEntry {
    int Key;
    TChordOption Option;
    friend bool operator==(const TOptionsMapEntry&, const TOptionsMapEntry&) = default;
  };
  struct TOptionsMapEntryKeyLess {
    bool operator()(const TOptionsMapEntry& a, const TOptionsMapEntry& b) const {
      return a.Key < b.Key;
    }
  };
  class COptionsMap : public CMySet<TOptionsMapEntry, TOptionsMapEntryKeyLess, 16> {
   public:
    using CMySet::CMySet;
    void Set(int key, TChordOption option) {
      erase(TOptionsMapEntry{key, option});
      insert(TOptionsMapEntry{key, option});
    }
  };

  // --- Construction. Every constructor starts from an undefined root that follows the
  // lowest note, no notes, and the given wrap interval of the interval cache.
  explicit CChordHeavy(int wrapIntvl = CIntvlSet::kDefaultWrapIntvl);
  CChordHeavy(const CNote& root, TBasicChord basicChord, int wrapIntvl);
  // The triad on the root in the comping range, with `bass` (or else the root) in the bass
  // slot; wrap 24.
  CChordHeavy(CKeyEnh root, TBasicChord basicChord, CKeyEnh bass);
  // As the CKeyEnh form, the root spelled as C major would spell its key.
  CChordHeavy(int rootKeyNr, TBasicChord basicChord, int wrapIntvl);
  // Played notes. An undefined root follows the lowest note.
  CChordHeavy(const CNote& root, const CMySet<CNote>& notes, int wrapIntvl);
  CChordHeavy(const CNote& root, const CMySet<unsigned char>& noteNrs, int wrapIntvl);
  // The tones above the root note, with `bass` (or else the root) in the bass slot.
  CChordHeavy(const CNote& root, const CSemitones& semitones, const CNote& bass,
              int wrapIntvl = CIntvlSet::kDefaultWrapIntvl);
  CChordHeavy(const CNote& root, const CIntvlSet& intvls, const CNote& bass,
              int wrapIntvl = CIntvlSet::kDefaultWrapIntvl);
  // The root in the comping range; the bass, or else the root, in the bass slot.
  CChordHeavy(const CKeyEnh& root, const CSemitones& semitones, const CKeyEnh& bass, int wrapIntvl);
  CChordHeavy(const CKeyEnh& root, const CIntvlSet& intvls, const CKeyEnh& bass, int wrapIntvl);
  // A chord symbol, read by the parser of harmony/chords/ChordSymbolParser.h (which callers
  // include for the preferences) and voiced as ToChordHeavy voices a chord.
  CChordHeavy(const std::string& text, const ChordSetFromStringPrefs& prefs,
              const CChordNamePrefs& namePrefs, int wrapIntvl = CIntvlSet::kDefaultWrapIntvl);
  CChordHeavy(const char* text, const ChordSetFromStringPrefs& prefs,
              const CChordNamePrefs& namePrefs, int wrapIntvl = CIntvlSet::kDefaultWrapIntvl);
  // Replaces this chord by the one the symbol names, keeping this chord's wrap interval.
  void SetFromString(const std::string& text, const ChordSetFromStringPrefs& prefs,
                     const CChordNamePrefs& namePrefs);

  // --- The three states without a root; they differ in the root's enh only.
  bool IsUndef() const { return _RootNote.IsUndef(); }
  bool IsNoChordYield() const { return IsUndef() && _RootNote.Enh() == TEnh_bb; }
  bool IsNoChordForce() const { return IsUndef() && _RootNote.Enh() == TEnh_b; }
  // Each writes the root only.
  void SetNoChordYield();
  void SetNoChordForce();
  // No notes and no root; the root counts as given explicitly.
  void SetUndef();

  // --- Root
  // The root is fixed from now on. A defined root also becomes the new bass: the bass slot
  // is cleared and holds the root's key.
  void SetRootNote(const CNote& note);
  // The root without fixing it: it follows the lowest note again when notes are added.
  void SetRootNoteWithoutSpecify(const CNote& note);
  bool RootNoteSpecified() const { return _RootNoteSpecified; }
  // The key in the comping range (53..65); key 15 leaves the root undefined with this enh.
  void SetRootKeyEnh(CKeyEnh keyEnh);
  void SetRootKeyNr(int keyNr);
  void SetRootNoteInCompingRange(const CNote& note);
  void SetRootKeyNrAndBasicChord(int keyNr, TBasicChord basicChord);
  // The note at the interval of this index (in the interval cache) becomes the root; the
  // notes stay.
  void SetRootNoteToIntvlIx(unsigned long intvlIx);

  // --- Notes
  void ClearAllExceptRoot();
  // Turns the triad into another one, keeping every tension: thirds and fifths are bent,
  // missing triad tones are added above the root.
  void SetBasicChord(TBasicChord basicChord);
  // The tones above the root note, replacing all notes.
  void SetSemitones(const CSemitones& semitones);
  // Replace all notes by these. With an unspecified root, the root follows the lowest note.
  void SetFromNoteSet(const CMySet<CNote>& notes);
  void SetFromNoteNrSet(const CMySet<unsigned char>& noteNrs);
  // Keys placed in the comping range.
  void SetFromKeyNrSet(const CMySet<int>& keyNrs);
  void AddNote(const CNote& note);
  void DelNote(const CNote& note);
  void DelNote(unsigned long noteIx);
  // Octave -1 is the bass slot (note numbers 0..11).
  void DeleteAllNotesInOctave(int octave);
  // A note `intvl` above the root note.
  void AddIntvl(int intvl);
  // A note `intvl` above the root, moved by octaves into 53..65.
  void AddIntvlInCompingRange(int intvl);
  // A note `intvl` above the root, moved by the wrap interval into 53..53 + wrap.
  void AddIntvlInCompingPlusWrapIntvlRange(int intvl);
  void AddIntvlSetAboveRootNote(const CIntvlSet& intvls);
  void AddIntvlSetInCompingRange(const CIntvlSet& intvls);
  // Bends every note whose key lies low..high semitones above the root key to `target`.
  void ChangeAllNotesWithinIntvlRange(int low, int high, int target);

  // --- Bass
  // Adds a note of key `keyNr` in the octave (below -1 counts as -1, from 10 up as 8).
  void SetBassNoteInOctave(int keyNr, int octave, TEnh enh);
  // The same after clearing that octave.
  void SetBassNoteAloneInOctave(int keyNr, int octave, TEnh enh);
  // A new bass slot with this key; an undefined key leaves the chord without bass slot.
  void SetBassKeyEnh(const CKeyEnh& keyEnh);
  void RemoveBassNote();
  void SetBassNoteDeletingFormer(CNote note);
  // A former bass slot note moves up into the comping range and stays a chord tone.
  void AddBassNoteKeepingFormer(CNote note);

  // --- Moving
  // The lowest note goes above the highest (or into its octave); root and intervals stay.
  void Invert();
  // Every note and the root move, folded into 0..127; only the first note may stay in the
  // bass slot.
  void Transpose(int intvl);
  void IntvlSet_SetWrapIntvl(int wrapIntvl);

  // --- Notes and intervals
  const CNote& RootNote() const { return _RootNote; }
  CKeyEnh RootKeyEnh() const { return _RootNote.KeyEnh(); }
  // The lowest note, or CNote::Undef without notes.
  CNote BassNote() const;
  CKeyEnh BassKeyEnh() const { return BassNote().KeyEnh(); }
  const CMySet<CNote>& Notes() const { return _Notes; }
  unsigned long NotesCount() const { return static_cast<unsigned long>(_Notes.size()); }
  CNote Note(unsigned long noteIx) const;
  CNote HighestNote() const;
  int CountNotesInOctave(int octave) const;
  bool HasNote(const CNote& note) const { return _Notes.contains(note); }
  bool HasNoteNr(int noteNr) const;
  bool HasKeyNr(int keyNr) const;
  // Variadic lists of key numbers, ended by -1.
  bool HasKeyNrs(int keyNr, ...) const;
  // The chord has exactly these keys, each at least once.
  bool HasExactTheseKeyNrs(int keyNr, ...) const;
  CMySet<int> KeyNrSet() const;
  // The keys of the triad as BasicChordRealIntvls(1) tells it.
  CMySet<int> KeyNrSetOfBasicChord() const;
  CMySet<int> KeyNrSetOfBasicChordAndBassNote() const;

  // The interval cache, rebuilt first when it is out of date.
  const CIntvlSet& IntvlSet() const;
  // -129 for an index beyond the intervals.
  int Intvl(unsigned long intvlIx) const {
    return intvlIx < IntvlSet().size() ? IntvlSet().Intvl(intvlIx) : kIntvlUndef;
  }
  bool HasIntvl(int intvl) const { return IntvlSet().HasIntvl(intvl); }
  bool HasIntvlInAnyOctave(int intvl) const { return IntvlSet().HasIntvlInAnyOctave(intvl); }
  // In some octave, and not only as a bass-only tone.
  bool HasIntvlInAnyOctaveButNotInBassNoteAlone(int intvl) const;
  // The same, with the root always counting.
  bool HasIntvlInAnyOctaveOrRootButNotInBassNoteAlone(int intvl) const;
  // An interval other than root, thirds, fifth and `intvl`.
  bool HasOtherStackedThirdsOptionThan(int intvl) const {
    return IntvlSet().HasOtherStackedThirdsOptionThan(intvl);
  }
  // The lowest note's tone is sounded by no other note at the same interval.
  bool BassNoteHasIntvlAlone() const;
  // Rebuilds the interval cache and the bass flag from the notes. Const: the cache is
  // mutable.
  void UpdateIntvlSetAndBassNoteHasIntvlAlone() const;
  bool IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate() const {
    return _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate;
  }
  CNote IntvlIxToNote(int intvlIx) const;
  int IntvlIxToKeyNr(int intvlIx) const { return IntvlIxToNote(intvlIx).KeyNr(); }
  std::string IntvlIxToKeyName(int intvlIx) const { return IntvlIxToNote(intvlIx).KeyName(); }

  // The intervals folded into the octave, with the root always set (1 without notes).
  CSemitones Semitones() const;
  CSemitones BasicChordSemitones() const { return SemitonesForBasicChord(BasicChord()); }
  TBasicChord BasicChord() const {
    return BasicChordRealIntvls(kIgnoreBassNoteForPositiveMatch_Yes);
  }
  TBasicChord BasicChordRealIntvls(TIgnoreBassNoteForPositiveMatch mode) const;
  // The triad a name is built on: a half-diminished chord names as minor with a flat five.
  TBasicChord BasicChordForNaming() const;
  CIntvlSet IntvlSetOfBasicChord(TIgnoreBassNoteForPositiveMatch mode) const;

  // The lowest note differs from the root in key or spelling.
  bool IsSlashChord() const;
  // Highest minus lowest note below 13.
  bool IsNarrowChord() const;
  // A key relative to the root key and back; 15 when undefined.
  int ChordKeyNrFromKeyNr(int keyNr) const;
  int KeyNrFromChordKeyNr(int chordKeyNr) const;
  // The index of the chord in the XG chord table, by exact intervals, else by basic chord.
  int XGChordIx() const;

  // Same notes with the same spellings and the same root.
  bool IsExactlyTheSame(const CChordHeavy& other) const;
  // Same keys and same root key.
  bool IsHarmonicallyTheSame(const CChordHeavy& other) const;
  bool operator==(const CChordHeavy& other) const { return IsExactlyTheSame(other); }
  bool operator!=(const CChordHeavy& other) const { return !IsExactlyTheSame(other); }

  // --- Naming. Each is const to the caller, but NameWithSlash respells the bass note and
  // SignsCount the root note of this chord.
  // Leaves the bass out of a narrow chord when the preferences say so.
  std::string Name(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  std::string NameWithSlash(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  std::string NameWithoutSlash(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  std::string BasicChordAndOptionsName(const CChordNamePrefs& prefs) const;
  std::string OptionsName(const CChordNamePrefs& prefs) const;
  std::string OptionsNameWithPreceedingOptionalSpace(const CChordNamePrefs& prefs) const;
  static std::string OptionName(TChordOption option, const CChordNamePrefs& prefs);
  std::string OptionsNameFromMap(const COptionsMap& map, const CChordNamePrefs& prefs) const;
  // One text per option, in name order, without separators.
  std::vector<std::string> OptionsStringVector(const CChordNamePrefs& prefs) const;
  COptionsMap OptionsMap(const CChordNamePrefs& prefs) const;
  // The chord named on another root, which also becomes its bass.
  std::string NameForThisRootNote(const CNote& note, const CChordNamePrefs& prefs) const;
  // The same with the root spelled as the given note, or its flat or sharp respelling,
  // whichever gives the scale of the chord the fewest signs.
  std::string NameWithLeastSignsForThisRootNote(const CNote& note,
                                                const CChordNamePrefs& prefs) const;
  // True for major flat 5, sus4 and sus2, whose symbol comes behind the options (C7sus4).
  bool BasicChordNameAfterOptionsName() const;
  bool _OptionsNameFromMap_NeedsClarifyingSeparatorBeforeFirstOption(
      TChordOption option, const CChordNamePrefs& prefs) const;
  bool _BasicChordAndOptionsName_NeedsClarifyingSeparatorBecauseOfMisinterpretableAccidental(
      const CChordNamePrefs& prefs) const;

  // --- Spelling
  // The signed sign count of the scale for the chord; writes that scale's root spelling
  // into the root note.
  int SignsCount() const;
  int SignsCountAbs() const;
  // Respells the root (and a bass slot note of the root's key) as given, as flats or as
  // sharps, whichever gives the fewest signs; ties keep the given spelling, then flats.
  void SetRootNoteEnhWithLeastSigns();

  // --- Keys and scales
  // As the chord record tells it of this chord's light form.
  bool IsInSignKeyRegardlessOfEnh(const CSignKeyHeavy& signKey) const;
  // The sign key's scale, or the center's, with the chord's keys added.
  CScaleHeavy ConstructScaleInSignKey(const CSignKeyHeavy& signKey) const;
  CScaleHeavy ConstructScaleInHarmCenter(const CHarmCenterLite& center) const;
  // The type of the scale the chord sounds in (st_maj, st_min, ..., st_custom).
  TScaleType ScaleType() const;

  // --- Root detection. Played notes carry no root; these choose the likeliest one.
  // Chooses root and spelling: the net looks at the exact intervals above the lowest note,
  // the tables weigh every key against the chord's keys. Without notes the chord becomes
  // undefined. The root lands in the bass slot, so the detected chord is named uninverted.
  void SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(TSingleChordAnalysisAlgo algo);
  // The table weight of `candidate` as the root of these notes (its key counts, not octave).
  int ProbThatNoteIsRootNote(const CNote& candidate) const;
  // Gives the interval cache one place per input of the shared net (under the net lock).
  void SetWrapIntvlToNeuronalNetInputCount();
  // Respells every note as the scale for the chord spells its key; `changed`, if given, is
  // set to false.
  void AdjustEnhOfChordNotesToRootScale(bool* changed);

  // --- Fit to a key. An interval or note is in the key when its key is a scale degree.
  // How well the chord fits: a table by the key's kind, the basic chord and the root's
  // distance to the key's root, less the tones outside the key.
  int ClosenessToSignKey(const CSignKeyHeavy& signKey) const;
  int CountIntvlsInSignKey(const CSignKeyHeavy& signKey) const;
  int CountIntvlsNotInSignKey(const CSignKeyHeavy& signKey) const;
  int CountNotesNotInSignKey(const CSignKeyHeavy& signKey) const;
  // The scale degree of the root or lowest note in the key; -1 when it is no degree.
  int RootNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const;
  int BassNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const;

  // --- Function in a key (harmony/chords/HarmFunc.h), by the root's degree and the triad
  // the name is built on.
  CHarmFunc HarmFuncIn(const CScaleHeavy& scale) const;
  // The roman numeral or, with FunctionLetters 1, the function letters for the kind of key.
  std::string HarmFuncName(const CSignKeyHeavy& signKey, const CChordNamePrefs& prefs) const;

  // --- Quantising: as the chord's light form does it (harmony/chords/Voicing.h).
  long QuantizeToChord(long noteNr, TQuantizeDirection direction) const;
  long QuantizeToBasicChord(long noteNr, TQuantizeDirection direction) const;

  // --- Text
  // {"root":{...},"basic":<one raw byte>,"notes":[{...},...]}
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  void _Init(int wrapIntvl);
  void _UpdateIfNeeded() const {
    if (_IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate) UpdateIntvlSetAndBassNoteHasIntvlAlone();
  }
  void _SetDirtyIfNotes() {
    if (!_Notes.empty()) _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
  }
  // Nothing for an undefined note number or interval, or when a note of that number exists.
  void _AddNoteNrAndIntvlIfNotAlreadyContained(long noteNr, int intvl);
  // The bass in the slot, or else the root; neither defined: no bass.
  void _SetBassOrRootInBassSlot(const CKeyEnh& bass);
  // Whether a bass note of this key would be a bass-only tone.
  bool _IsIntvlAloneForBassKey(int keyNr) const;
  // The chord rooted on `note`, whose key also fills the bass slot.
  CChordHeavy _RootedOn(const CNote& note) const;
  // Root enh among given, flats and sharps by the fewest signs of the scale for the chord.
  TEnh _EnhWithLeastSigns(const CNote& root) const;
  std::string _RootName(const CChordNamePrefs& prefs) const;
  // Asks the shared net for the likeliest root key, from the intervals above the lowest note.
  CNote _LikeliestRootByNet();

  mutable CNote _RootNote;
  mutable CMySet<CNote> _Notes;
  mutable CIntvlSet _IntvlSet;
  bool _RootNoteSpecified = false;
  mutable bool _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = false;
  mutable bool _BassNoteHasIntvlAlone = false;
};

// The three chords without a root: undefined, "No Chord Yield", "No Chord". Built during
// static initialisation: don't read them from another static initialiser.
extern const CChordHeavy CChordHeavy_Undef;
extern const CChordHeavy CChordHeavy_NoChordYield;
extern const CChordHeavy CChordHeavy_NoChordForce;

}  // namespace harmony
