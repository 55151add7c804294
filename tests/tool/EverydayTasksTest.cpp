// What users do every day with the tool: transposing a chord list, the chords of a key, the
// grids of a chord, and a user package whose ids hold and which reading never writes.

#include <gtest/gtest.h>

#include <string>

#include "ToolTest.h"
#include "harmony/pitch/TextUtil.h"

namespace harmony {
namespace {

using testing::Contains;
using testing::RunTool;
using testing::TRun;

class EverydayTasks : public testing::ToolTest {
 protected:
  static long Added(const std::string& args) {
    const TRun run = RunTool("grids add " + args);
    EXPECT_EQ(run.status, 0) << run.output;
    return std::stol(run.output.substr(std::string("added chord ").size()));
  }
};

TEST_F(EverydayTasks, TransposeAChordListWithTheNewKeysSpellings) {
  const TRun to = RunTool("transpose --to F 'Dm7 G7 | Cmaj7'");
  EXPECT_EQ(to.status, 0) << to.output;
  EXPECT_EQ(to.output, "C Major to F Major, 5 semitones up\nGm7 C7 | Fmaj7\n");
  // Up a minor third from C is E flat: B flat seven, never A sharp seven.
  const TRun by = RunTool("transpose --by 3 'Dm7 G7 | Cmaj7'");
  EXPECT_TRUE(Contains(by.output, "\nFm7 Bb7 | Ebmaj7\n")) << by.output;
  // Basses move too, Unicode signs stay Unicode, and a minor key finds its own spelling.
  EXPECT_TRUE(Contains(RunTool("transpose --by 1 'Am . F/A . | E7 . Am .'").output,
                       "\nBbm . Gb/Bb . | F7 . Bbm .\n"));
  EXPECT_TRUE(Contains(RunTool("transpose --to D 'C♯m7♭5 F♯7 | Bm'").output, "\nEm7♭5 A7 | Dm\n"));
  // A minor piece stays minor; down a semitone is told as down; the tritone takes the flats.
  EXPECT_TRUE(Contains(RunTool("transpose --to Bb 'Am Dm E7 Am'").output,
                       "A Minor to B♭ Minor, 1 semitone up\nBbm Ebm F7 Bbm\n"));
  EXPECT_TRUE(Contains(RunTool("transpose --by -1 'F#m7 B7 | Emaj7'").output,
                       "E Major to E♭ Major, 1 semitone down\nFm7 Bb7 | Ebmaj7\n"));
  EXPECT_TRUE(Contains(RunTool("transpose --by 6 'C F G7 C'").output, "\nGb Cb Db7 Gb\n"));
  // The forgiving parser would read G7+ as G7 and is refused; lead sheets mean G7 sharp five.
  EXPECT_EQ(RunTool("transpose --parser seed --to F 'Dm7 G7 Cmaj7 G7+'").status, 1);
  EXPECT_TRUE(
      Contains(RunTool("transpose --to F 'Dm7 G7 Cmaj7 G7+'").output, "\nGm7 C7 Fmaj7 C7+\n"));
  EXPECT_EQ(RunTool("transpose --to F 'Dm7 G7 Cmaj7 G7?'").status, 1);
  EXPECT_EQ(RunTool("transpose --to F --by 3 C").status, 2);
}

TEST_F(EverydayTasks, PlayedInversionsAreNamedOverTheirBass) {
  EXPECT_EQ(RunTool("name F3 A3 D4 F4").output, "Dm/F\n  notes      (D) F3 A3 D4 F4\n");
  EXPECT_TRUE(Contains(RunTool("name E4 G4 C5 Bb5").output, "C7/E\n"));
  EXPECT_TRUE(Contains(RunTool("name A3 C4 E4 G4").output, "Am7\n"));  // root position
  EXPECT_TRUE(Contains(RunTool("name --json F3 A3 D4 F4").output,
                       "\"bass\":{\"key\":5,\"spelling\":\"neutral\",\"name\":\"F\"}"));
}

TEST_F(EverydayTasks, TheChordsOfAKeyWithTheirFunctions) {
  const TRun major = RunTool("diatonic 'Eb major'");
  EXPECT_EQ(major.status, 0) << major.output;
  EXPECT_TRUE(Contains(major.output, "2       Fm     Fm7      IIm\n")) << major.output;
  EXPECT_TRUE(Contains(major.output, "5       B♭     B♭(7)    V\n")) << major.output;
  EXPECT_TRUE(Contains(major.output, "7       Ddim   Dm7(♭5)  VIIdim\n")) << major.output;
  const TRun minor = RunTool("diatonic --functions letters 'A harmonic minor'");
  EXPECT_TRUE(Contains(minor.output, "5       E      E7       D\n")) << minor.output;
  // A mode is told in the key of its kind on its root.
  const TRun dorian = RunTool("diatonic 'D dorian'");
  EXPECT_TRUE(Contains(dorian.output, "functions in D Minor\n")) << dorian.output;
  EXPECT_TRUE(Contains(dorian.output, "4       G      G7       IV\n")) << dorian.output;
  EXPECT_EQ(RunTool("diatonic 'C major pentatonic'").status, 1);  // five degrees
}

TEST_F(EverydayTasks, GridsOfAChordAndColumnsByCharacters) {
  const TRun symbol = RunTool("grids list Am7");
  const TRun named = RunTool("grids list --root A --type 'minor 7'");
  const TRun ending = RunTool("grids list --root A --type m7");
  EXPECT_EQ(symbol.status, 0) << symbol.output;
  EXPECT_TRUE(Contains(symbol.output, "3 grids")) << symbol.output;
  EXPECT_EQ(symbol.output, named.output);
  EXPECT_EQ(symbol.output, ending.output);

  const TRun show = RunTool("grids show Am7");
  EXPECT_EQ(show.status, 0) << show.output;
  EXPECT_TRUE(Contains(show.output, "x  o     o     o")) << show.output;
  EXPECT_TRUE(Contains(show.output, "  5  1--1--1--1--1--1")) << show.output;
  EXPECT_EQ(RunTool("grids show ''").status, 1);
  EXPECT_EQ(RunTool("grids show").status, 2);
  EXPECT_EQ(RunTool("grids show Am7 --id 20").status, 2);

  // Names are compared by characters: the E flat minor barre is not proposed as B major seven.
  EXPECT_TRUE(Contains(RunTool("grids name x,6,8,8,7,6").output,
                       "x,6,8,8,7,6: E♭ m  (proposed root E♭)\n"));

  // E♭ takes one column, as E does: the frets line up below their header.
  const TRun flats = RunTool("grids list --root Eb --type major");
  const std::string header = flats.output.substr(0, flats.output.find('\n'));
  const std::size_t line = flats.output.find("E♭");
  ASSERT_NE(line, std::string::npos) << flats.output;
  const std::string row = flats.output.substr(flats.output.rfind('\n', line) + 1);
  EXPECT_EQ(_UTF8StringLength(row.substr(0, row.find_first_of("x0123456789", row.find("E♭")))),
            header.find("frets"))
      << flats.output;
}

TEST_F(EverydayTasks, UserIdsHoldAndReadingNeverWrites) {
  RunTool("grids list");
  RunTool("grids show --id 0");
  RunTool("--db '" + (mTemp.path() / "other.gchdb").string() + "' grids list");
  EXPECT_FALSE(std::filesystem::exists(mTemp.path() / "user.gchdb"));
  EXPECT_FALSE(std::filesystem::exists(mTemp.path() / "other.gchdb"));

  const long first = Added("x02010 --name First");
  const long second = Added("x,10,12,12,11,10 --name Second --library Jazz");
  const long third = Added("x32010 --name Third");  // into the first library, before Jazz
  EXPECT_TRUE(std::filesystem::exists(mTemp.path() / "user.gchdb" / "GChInfo"));
  EXPECT_TRUE(Contains(RunTool("grids show --id " + std::to_string(second)).output,
                       "Chord " + std::to_string(second) + ": Second"));
  ASSERT_EQ(RunTool("grids remove " + std::to_string(first)).status, 0);
  EXPECT_TRUE(Contains(RunTool("grids show --id " + std::to_string(second)).output, ": Second"));
  EXPECT_TRUE(Contains(RunTool("grids show --id " + std::to_string(third)).output, ": Third"));
  EXPECT_EQ(RunTool("grids show --id " + std::to_string(first)).status, 1);
  // Frets beyond the eight a grid holds are refused, not stored as other frets.
  const TRun wide = RunTool("grids add x,30,2,0,1,0");
  EXPECT_EQ(wide.status, 1) << wide.output;
  EXPECT_FALSE(Contains(RunTool("grids list --library 'My Chords'").output, "x62010"));
}

}  // namespace
}  // namespace harmony
