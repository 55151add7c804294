#pragma once
// Reading a chord symbol as a person types it ("C#m7b5/G#", "Bbmaj7", "F 6 add9", "Cdim7")
// into a CChordLite. The reader is forgiving: it never fails, takes what it recognises and
// steps over the rest. Text that means nothing gives an undefined root; a root without
// anything else gives the major triad.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "harmony/Trace.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/IntvlSet.h"

namespace harmony {

// How a chord symbol is read. The value 1 lets a slash chord whose bass completes a chord of
// stacked thirds become that chord (C/A reads as Am7); every other value reads it as written.
struct ChordSetFromStringPrefs : public TraceFamily<ChordSetFromStringPrefs> {
  static constexpr std::uint8_t kSimplifyBassNote = 1;

  std::uint8_t Value = 0;

  constexpr ChordSetFromStringPrefs() = default;
  constexpr explicit ChordSetFromStringPrefs(std::uint8_t value) : Value(value) {}
  constexpr bool SimplifiesBassNote() const { return Value == kSimplifyBassNote; }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// One parse. The passes run over one lowered copy of the text: the no-chord words, the root,
// the basic chord, the bass behind the last slash character, the options, and (if asked) the
// simplification of a bass note.
class CChordSetFromStringHelper : public TraceFamily<CChordSetFromStringHelper> {
 public:
  // The TBasicChord value the basic chord pass recognised (2 minor, 3 aug, 5 dim, 6 sus4,
  // 7 sus2, 8 power); 0 for major and for the undefined and no-chord results.
  std::int32_t BasicChordCode = 0;
  // The text in lower case with Unicode sharp and flat signs as "#" and "b".
  std::string LoweredText;

  void SetFromString(const std::string& text, CChordLite& chord,
                     const ChordSetFromStringPrefs& prefs, const CChordNamePrefs& namePrefs);

  // The last pass: turns a slash chord into the chord of stacked thirds its bass completes,
  // told a chord, a harmonic center and a sign key (both undefined here); gives (true, the
  // new chord) or (false, anything). The harmonic analysis owns that rule and installs it,
  // so this layer does not depend on it; while none is installed the pass does nothing.
  using TSimplifyBassNoteHook = std::pair<bool, CChordLite> (*)(const CChordLite& chord,
                                                                const CHarmCenterLite& center,
                                                                const CSignKeyLite& signKey);
  static void SetSimplifyBassNoteHook(TSimplifyBassNoteHook hook);
  static TSimplifyBassNoteHook SimplifyBassNoteHook();

  // --- The passes, reachable for tests. Each reads LoweredText.
  // "undef", "-", "nochordyield", "nochordforce" or "nochord" at the start decide the chord
  // alone; true when one of them did.
  bool _StringShouldSetUndefOrNoChord(CChordLite& chord) const;
  // The triad's mask from `pos`, which moves behind the word read; sets BasicChordCode.
  CSemitones _BasicChordSemitonesFromString(int& pos);
  // The key behind the last slash character, or the undefined key.
  CKeyEnh _BassKeyNrAndEnhFromString(const CChordNamePrefs& namePrefs) const;
  // Reads options from `pos` to the end into the add and the erase set.
  void _AddAndEraseIntvlsForOptionsFromString(int& pos, CIntvlSet& add, CIntvlSet& erase) const;
  // One option (or one stepped-over character or run of digits) at `pos`.
  void _AddAndEraseIntvlsForSingleOptionFromString(int& pos, CIntvlSet& add,
                                                   CIntvlSet& erase) const;
  // Moves behind a run of digits, or by one character.
  void _SkipLetterOrAllSequentialNumbers(int& pos) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// Makes a helper and parses with it.
void SetFromString(const std::string& text, CChordLite& chord,
                   const ChordSetFromStringPrefs& prefs = ChordSetFromStringPrefs(),
                   const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs());

// "Cmaj7;C lydian": the part before the first ";" is read as a chord, the part behind it as
// a scale name; further parts are ignored. Both stay undefined when their part is missing.
// The same into a heavy chord, which keeps its wrap interval.
void SetFromString(const std::string& text, CChordHeavy& chord,
                   const ChordSetFromStringPrefs& prefs = ChordSetFromStringPrefs(),
                   const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs());

// "Cmaj7;lydian": the chord before the first ";" and the scale after it; further parts are
// ignored, and a text without ";" leaves the scale undefined.
std::pair<CChordLite, CScaleLite> ChordAndScaleFromString(
    const std::string& text, const ChordSetFromStringPrefs& prefs = ChordSetFromStringPrefs(),
    const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs());

// The chord's name, and "; " with the scale's name when the scale has a root: the text that
// ChordAndScaleFromString reads back.
std::string ChordAndScaleToString(const CChordLite& chord, const CScaleLite& scale,
                                  const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs());

}  // namespace harmony
