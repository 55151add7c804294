// Voicing chords as MIDI notes, the comping range, moving voicings toward a target note and
// pulling played notes onto a chord.

#include "TestPaths.h"
#include "harmony/chords/Voicing.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"

#include "ToolRun.h"

namespace harmony {
namespace {

using harmony::testing::Contains;
using harmony::testing::RunTool;
using harmony::testing::TRun;

using Notes = std::vector<unsigned char>;

CChordLite Chord(int root, std::initializer_list<int> intvls, int bass = kKeyNrUndef) {
  CSemitones mask;
  for (int intvl : intvls) mask.AddIntvl(intvl);
  return CChordLite(CKeyEnh(root, TEnh_n), mask,
                    bass == kKeyNrUndef ? CKeyEnh() : CKeyEnh(bass, TEnh_n));
}

Notes Voiced(const CChordLite& chord, bool rootBelow = false) {
  TChordVoicingPrefs prefs;
  prefs.AddRootOctaveBelow = rootBelow ? 1 : 0;
  return chord.VoicingNotesNrs(prefs);
}

Notes Transposed(Notes notes, int target) {
  TransposeChordBasedOnPreviousChords(notes, target);
  return notes;
}

Notes WithBass(const CHarmAnlsChord& chord, Notes notes, bool relative = false) {
  AddBassNoteToMidiNotes(chord, notes, relative);
  return notes;
}

TEST(Voicing, CompingRangeLimits) {
  EXPECT_TRUE(IsNoteNrInCompingRange(53) && IsNoteNrInCompingRange(65));
  EXPECT_FALSE(IsNoteNrInCompingRange(52) || IsNoteNrInCompingRange(66));
  // Steps of the wrap interval up to 53, then down to 53 + wrap.
  EXPECT_EQ(NoteNrToCompingPlusWrapIntvlRange(40, 24), 64);
  EXPECT_EQ(NoteNrToCompingPlusWrapIntvlRange(100, 24), 76);
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(60, 6, 12), 54);
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(-1, 6, 12), -1);
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(60, 2, kIntvlUndef), -1);
}

TEST(Voicing, RootInCompingRangeWithTonesAndBassAround) {
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 7})), (Notes{60, 64, 67}));
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 7}), true), (Notes{48, 60, 64, 67}));
  EXPECT_EQ(Voiced(Chord(5, {0, 4, 7})), (Notes{53, 57, 60}));
  EXPECT_EQ(Voiced(Chord(4, {0, 5, 7})), (Notes{64, 69, 71}));  // sus4: the fourth stays low
  EXPECT_TRUE(Voiced(CChordLite_NoChordForce, true).empty());
  // The bass goes below the root; on the root's own key it is the root, once.
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 7}, 4)), (Notes{52, 60, 64, 67}));
  EXPECT_EQ(Voiced(Chord(5, {0, 4, 7}, 0), true), (Notes{41, 48, 53, 57, 60}));
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 7}, 0)), (Notes{60, 64, 67}));
}

TEST(Voicing, TensionsGoAnOctaveUp) {
  EXPECT_EQ(Voiced(Chord(0, {0, 1, 4, 7, 10})), (Notes{60, 64, 67, 70, 73}));
  EXPECT_EQ(Voiced(Chord(0, {0, 2, 4, 7, 10})), (Notes{60, 64, 67, 70, 74}));
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 7, 9})), (Notes{60, 64, 67, 69}));  // a sixth
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 7, 9, 10})), (Notes{60, 64, 67, 70, 81}));
  EXPECT_EQ(Voiced(Chord(0, {0, 3, 7, 8, 11})), (Notes{60, 63, 67, 71, 80}));
}

TEST(Voicing, SharpNineOrMinorThird) {
  EXPECT_EQ(Voiced(Chord(0, {0, 3, 4, 7, 10})), (Notes{60, 64, 67, 70, 75}));  // C7#9
  EXPECT_EQ(Voiced(Chord(0, {0, 2, 3, 4, 7, 10})), (Notes{60, 64, 67, 70, 74, 75}));
  // Beside a nine and a seventh an eleven keeps it a minor third...
  EXPECT_EQ(Voiced(Chord(0, {0, 2, 3, 4, 5, 7, 10})), (Notes{60, 63, 64, 67, 70, 74, 77}));
  // ...but without them an eleven makes it a sharp nine, even with no major third.
  EXPECT_EQ(Voiced(Chord(0, {0, 3, 5, 7, 10})), (Notes{60, 67, 70, 75, 77}));
  EXPECT_EQ(Voiced(Chord(0, {0, 2, 3, 7})), (Notes{60, 63, 67, 74}));
}

TEST(Voicing, SharpElevenOverAFifthBecomesTheEleven) {
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 6, 10})), (Notes{60, 64, 66, 70}));
  // Eleven and sharp eleven over a third and a fifth share one note.
  EXPECT_EQ(Voiced(Chord(0, {0, 4, 5, 6, 7})), (Notes{60, 64, 67, 77}));
  // Without a third the eleven stays low, so both sound.
  EXPECT_EQ(Voiced(Chord(0, {0, 5, 6, 7})), (Notes{60, 65, 67, 77}));
}

TEST(Voicing, AnalysisChordsAsMidiNotesWithBass) {
  // D/F# in the center G: seen from the center it sounds as G/B would in C.
  const CHarmAnlsChordWithLength dOverFSharp(CHarmAnlsChord(Chord(2, {0, 4, 7}, 6), 7, 11), 4);
  Notes notes{1, 2, 3};
  CHarmAnlsChordWithLengthToMidiNotes(dOverFSharp, notes, false);
  EXPECT_EQ(notes, (Notes{50, 54, 57}));
  EXPECT_EQ(WithBass(dOverFSharp, notes), (Notes{50, 54, 57, 42}));
  CHarmAnlsChordWithLengthToMidiNotes(dOverFSharp, notes, true);
  EXPECT_EQ(notes, (Notes{55, 59, 62}));
  EXPECT_EQ(WithBass(dOverFSharp, notes, true), (Notes{55, 59, 62, 47}));
  CHarmAnlsChordWithLengthToMidiNotes(CHarmAnlsChordWithLength(), notes, false);
  EXPECT_TRUE(notes.empty());

  // Without a bass the root is the bass, an octave below the first note of its key.
  const CHarmAnlsChord c(Chord(0, {0, 4, 7}), 0, -1);
  EXPECT_EQ(WithBass(c, {67, 60, 64}, true), (Notes{67, 60, 64, 48}));
  // Without such a note the octave is 0 and the bass is raised to at least 40.
  const CHarmAnlsChord d(Chord(2, {0, 4, 7}));
  EXPECT_EQ(WithBass(d, {60, 64, 67}), (Notes{60, 64, 67, 50}));
  EXPECT_EQ(WithBass(CHarmAnlsChord(Chord(0, {0, 4, 7}, 0)), {48, 60}), (Notes{48, 60, 72}));
  EXPECT_EQ(WithBass(d, {60, 64}, true), (Notes{60, 64}));  // distance not known
}

TEST(Voicing, TransposeTowardTarget) {
  // A top above the target comes down while that brings it nearer than the note below.
  EXPECT_EQ(Transposed({60, 64, 67}, 60), (Notes{52, 55, 60}));
  EXPECT_EQ(Transposed({67, 60, 64}, 66), (Notes{60, 64, 67}));
  // Not from below 52, not onto a note already there.
  EXPECT_EQ(Transposed({40, 44, 47, 50, 53}, 0), (Notes{40, 41, 44, 47, 50}));
  EXPECT_EQ(Transposed({60, 48}, 40), (Notes{48, 60}));
  // A top below the target: the lowest notes go up while they land nearer than the top.
  EXPECT_EQ(Transposed({52, 55, 60}, 72), (Notes{64, 67, 72}));
  EXPECT_EQ(Transposed({120, 124}, 127), (Notes{120, 124}));
  EXPECT_TRUE(Transposed({}, 60).empty());
}

TEST(Voicing, QuantizeToChordAndBasicChord) {
  const CChordLite cMajor = Chord(0, {0, 4, 7});
  EXPECT_EQ(cMajor.QuantizeToChord(62, kQuantizeClosestTieRight), 64);
  EXPECT_EQ(cMajor.QuantizeToChord(62, kQuantizeClosestTieLeft), 60);
  EXPECT_EQ(cMajor.QuantizeToChord(65, kQuantizeRight), 67);
  // The move stays within the root's octave: B goes to the C below, not the one above.
  EXPECT_EQ(cMajor.QuantizeToChord(71, kQuantizeClosestTieRight), 60);
  EXPECT_EQ(cMajor.QuantizeToChord(255, kQuantizeClosestTieRight), -1);
  EXPECT_EQ(CChordLite().QuantizeToChord(61, kQuantizeClosestTieRight), 61);
  // Intervals count from the root; C over D minor goes to the D below.
  const CChordLite dMinor = Chord(2, {0, 3, 7});
  EXPECT_EQ(dMinor.QuantizeToChord(64, kQuantizeClosestTieRight), 65);
  EXPECT_EQ(dMinor.QuantizeToChord(48, kQuantizeClosestTieRight), 38);
  EXPECT_EQ(dMinor.ToChordHeavy(24).QuantizeToChord(64, kQuantizeLeft), 62);

  const CChordLite c9 = Chord(0, {0, 2, 4, 7, 10});
  EXPECT_EQ(c9.QuantizeToChord(62, kQuantizeClosestTieRight), 62);
  EXPECT_EQ(c9.QuantizeToBasicChord(62, kQuantizeClosestTieRight), 64);
  EXPECT_EQ(c9.ToChordHeavy(24).QuantizeToBasicChord(62, kQuantizeLeft), 60);
  // Root and seventh alone have no triad: the chord's own tones count.
  const CChordLite rootAndSeventh = Chord(0, {0, 10});
  ASSERT_EQ(rootAndSeventh.BasicChord(), kBasicChordNone);
  EXPECT_EQ(rootAndSeventh.QuantizeToBasicChord(69, kQuantizeClosestTieRight), 70);
}

TEST(Voicing, VoiceCommand) {
  if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  const TRun run = RunTool("voice --ascii --root-below C7#9 Bdim7 F/C nochord");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output, "48 60 64 67 70 75  C3 C4 E4 G4 Bb4 D#5")) << run.output;
  EXPECT_TRUE(Contains(run.output, "47 59 62 65 68     B2 B3 D4 F4 Ab4")) << run.output;
  EXPECT_TRUE(Contains(run.output, "41 48 53 57 60     F2 C3 F3 A3 C4")) << run.output;
  EXPECT_TRUE(Contains(run.output, "nochord  -")) << run.output;

  // Each voicing is pulled toward the top of the one before.
  const TRun lead = RunTool("voice --lead 60 C F G7 C");
  EXPECT_EQ(lead.status, 0) << lead.output;
  EXPECT_TRUE(Contains(lead.output, "C      52 55 60 ")) << lead.output;
  EXPECT_TRUE(Contains(lead.output, "F      53 57 60 ")) << lead.output;
  EXPECT_TRUE(Contains(lead.output, "G7     50 53 55 59 ")) << lead.output;
  EXPECT_EQ(RunTool("voice --lead C4 C F G7 C").output, lead.output);

  const TRun bad = RunTool("voice C xyz");
  EXPECT_EQ(bad.status, 1);
  EXPECT_TRUE(Contains(bad.output, "\"xyz\"")) << bad.output;
  EXPECT_EQ(RunTool("voice --lead 128 C").status, 1);
  EXPECT_EQ(RunTool("voice").status, 2);
}

}  // namespace
}  // namespace harmony
