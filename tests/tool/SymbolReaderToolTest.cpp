// The tool's two chord-symbol readers: the lead-sheet reader by default, the forgiving parser
// with --parser seed, in single symbols and in chord lists.

#include <string>

#include "ToolTest.h"

namespace harmony::testing {
namespace {

class SymbolReader : public ToolTest {};

TEST_F(SymbolReader, LeadSheetNotationIsReadByDefaultAndTheSeedParserOnRequest) {
  const TRun lead = RunTool("chord C-7 Es7/B Do7 %");
  EXPECT_EQ(lead.status, 0) << lead.output;
  for (const char* part :
       {"C-7\n  name       Cm7\n", "Es7/B\n  name       E♭(7)/B\n", "Do7\n  name       C7\n",
        "%\n  name       C7\n", "reader     lead-sheet"}) {
    EXPECT_TRUE(Contains(lead.output, part)) << part << "\n" << lead.output;
  }
  // Before the command or after it; the seed parser reads Es as E and knows no solfege.
  const TRun seed = RunTool("--parser seed chord --lenient Es7");
  EXPECT_TRUE(Contains(seed.output, "name       E7\n")) << seed.output;
  EXPECT_TRUE(Contains(seed.output, "reader     seed")) << seed.output;
  EXPECT_EQ(RunTool("chord --parser seed Do7").status, 1);
  EXPECT_EQ(RunTool("chord --parser other C").status, 2);
  EXPECT_TRUE(Contains(RunTool("chord --json C^7").output, "\"reader\":\"lead-sheet\""));
  // % needs a chord before it.
  EXPECT_EQ(RunTool("chord %").status, 1);
}

TEST_F(SymbolReader, TheUnreadRestIsToldWithItsPlace) {
  const TRun strict = RunTool("chord 'Cmaj7 foo'");
  EXPECT_EQ(strict.status, 1);
  EXPECT_TRUE(Contains(strict.output, "could not read \"foo\" (from byte 6)")) << strict.output;
  const TRun lenient = RunTool("chord --lenient 'Cmaj7 foo'");
  EXPECT_EQ(lenient.status, 0);
  EXPECT_TRUE(Contains(lenient.output, "name       Cma7\n")) << lenient.output;
  EXPECT_EQ(RunTool("chord Xm7").status, 1);
  EXPECT_EQ(RunTool("analyse 'Dm7 G7 | Cmaj7 Q7'").status, 1);
  EXPECT_EQ(RunTool("scales 'Dm7 G7 | Cmaj7 Q7'").status, 1);
}

// In chord lists the notation both readers know gives the same analysis; "%" repeats, N.C. is
// no chord, and hyphens reach the reader as minus signs.
TEST_F(SymbolReader, ChordListsAnalyseAlikeWhereTheReadersAgree) {
  const std::string list = "'Dm7 . G7 . | Cmaj7 A7/C# | Dm7 G7 | C'";
  const TRun lead = RunTool("analyse --json " + list);
  EXPECT_EQ(lead.status, 0) << lead.output;
  EXPECT_EQ(lead.output, RunTool("--parser seed analyse --json " + list).output);
  EXPECT_EQ(RunTool("analyse --json 'Dm7 G7 | C^7 % | N.C. | Am'").output,
            RunTool("analyse --json 'Dm7 G7 | Cmaj7 Cmaj7 | nochord | Am'").output);
  EXPECT_EQ(RunTool("key-of 'D-7 G7 | C^7 %'").output,
            RunTool("key-of 'Dm7 G7 | Cmaj7 Cmaj7'").output);
  EXPECT_EQ(RunTool("analyse 'C - - - | G'").status, 1);  // the list reader drops a lone "-"
  EXPECT_TRUE(
      Contains(RunTool("transpose --by 2 'Es7/B Sol7 | C-7 %'").output, "\nF7/C# A7 | D-7 %\n"));
}

}  // namespace
}  // namespace harmony::testing
