#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include <nlohmann/json.hpp>

#include "TestPaths.h"
#include "ToolRun.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony {
namespace {

using testing::Contains;
using testing::RunTool;
using testing::TRun;

namespace fs = std::filesystem;

constexpr const char* kAnnotation =
    "# title: A test\n# metre: 4/4\n# tonic: C\n\n0.0\tsilence\n"
    "0.5\tA, intro, | C:maj | F:maj/3 G:7 |, (voice\n"
    "3.0\t| A:min . . D:min7 | (3/4) C:maj . G:sus4(b7,9) | x2\n"
    "5.0\tB, verse, | N | G:hdim7 C:1 E:min |, voice)\n"
    "# metre: 6/8\n10.0\t| Bb:maj | Eb:maj/b7 | Ab:7(#9) . |\n12.0\tend\n";

class MarkovCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    _folder = fs::temp_directory_path() /
              ("harmony-markov-tool-" +
               std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(_folder);
    fs::create_directories(_folder / "corpus" / "billboard");
    Write("corpus/a.txt", "C . . . | F . . . | G7 . . . | C . . . |");
    Write("corpus/b.txt", "C . . . | Am . . . | F . . . | G7 . . . | C . . . |");
    Write("corpus/c.chords", "Am . . . | F . . . | C . . . | G . . . |");
    Write("corpus/d.txt", "(0.0,C);(4.0,G7);(8.0,C);(12.0,U)");
    Write("corpus/billboard/song.txt", kAnnotation);
    Write("corpus/notes.md", "C . . . | F . . . |");
  }
  void TearDown() override { fs::remove_all(_folder); }

  std::string Path(const std::string& name) const { return "'" + (_folder / name).string() + "'"; }
  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(_folder / name) << text;
  }
  TRun Learn() const {
    return RunTool("markov learn " + Path("corpus") + " -o " + Path("model.json"));
  }

  fs::path _folder;
};

// The tokens of a chord list that take beats.
int Beats(const std::string& list) {
  std::istringstream words(list);
  int beats = 0;
  for (std::string word; words >> word;) beats += word == "|" ? 0 : 1;
  return beats;
}

TEST_F(MarkovCommand, ConvertsBillboardAnnotationsByTheirRules) {
  const TRun run = RunTool("markov convert " + Path("corpus/billboard/song.txt"));
  ASSERT_EQ(run.status, 0) << run.output;
  // Two chords share a bar; "." continues a chord; "(3/4)" shortens one bar, "x2" plays the
  // line twice; three chords in a bar of four take 2, 1 and 1 beats; 6/8 has two beats; bar
  // lines stand only where whole bars of four are full.
  EXPECT_TRUE(Contains(run.output,
                       "C . . . | F/A . G7 . |\n"
                       "Am . . Dm7 | C . G7(9)sus4 Am . . Dm7 C . G7(9)sus4\n"
                       "N.C. . . . Gm7(b5) . Cno3 Em\n"
                       "Bb . | Eb/Db . Ab(7,#9) . |\n"))
      << run.output;
}

TEST_F(MarkovCommand, LearnsAFolderAndGeneratesFromIt) {
  const TRun learned = Learn();
  ASSERT_EQ(learned.status, 0) << learned.output;
  // Five files: the notes are no chord file. The annotation has two stretches between its
  // no-chord, the others one each.
  EXPECT_TRUE(Contains(learned.output, "Learned 5 files (6 sequences, 33 chords)"))
      << learned.output;

  const std::string generate = "markov generate --bars 4 --model " + Path("model.json");
  const TRun first = RunTool(generate + " --seed 3");
  ASSERT_EQ(first.status, 0) << first.output;
  EXPECT_EQ(Beats(first.output), 16) << first.output;
  EXPECT_EQ(RunTool(generate + " --seed 3").output, first.output);

  // In another key the same symbols stand on other roots; the JSON is strict.
  const auto json = [&generate](const std::string& key) {
    const TRun run = RunTool(generate + " --seed 3 --json --ascii --key " + key);
    EXPECT_EQ(run.status, 0) << run.output;
    return nlohmann::json::parse(run.output);
  };
  const nlohmann::json inC = json("C");
  const nlohmann::json inEb = json("Eb");
  EXPECT_EQ(inEb["bars"], 4);
  EXPECT_EQ(inEb["seed"], 3);
  EXPECT_EQ(Beats(inEb["chord_list"].get<std::string>()), 16);
  ASSERT_EQ(inEb["chords"].size(), inC["chords"].size());
  double length = 0.0;
  for (std::size_t i = 0; i < inEb["chords"].size(); ++i) {
    const nlohmann::json& chord = inEb["chords"][i];
    EXPECT_EQ(chord["root_distance"], inC["chords"][i]["root_distance"]);
    length += chord["length"].get<double>();
  }
  EXPECT_EQ(length, 16.0);
  const CChordLite firstInC(inC["chords"][0]["chord"].get<std::string>(), {}, {});
  const CChordLite firstInEb(inEb["chords"][0]["chord"].get<std::string>(), {}, {});
  EXPECT_EQ((firstInEb.RootKeyEnh.KeyNr - firstInC.RootKeyEnh.KeyNr + 12) % 12, 3);
  EXPECT_EQ(firstInEb.Semitones, firstInC.Semitones);

  // Every learned stretch has two chords or more: one bar can't be generated.
  const TRun none = RunTool("markov generate --bars 1 --model " + Path("model.json"));
  EXPECT_EQ(none.status, 1);
  EXPECT_TRUE(Contains(none.output, "no progression of exactly 1 bars")) << none.output;
}

TEST_F(MarkovCommand, FillsGapsAndRatesProgressions) {
  ASSERT_EQ(Learn().status, 0);
  const std::string model = " --model " + Path("model.json");
  // Between C and G7 the corpus has only F in one bar.
  const TRun filled = RunTool("markov fill \"C . . . | ? | G7 . . . | C . . . |\"" + model);
  ASSERT_EQ(filled.status, 0) << filled.output;
  EXPECT_EQ(filled.output, "C . . . | F . . . | G7 . . . | C . . . |\n");
  // One chord per gap by what comes before it: anything heard after a starting C.
  const TRun one =
      RunTool("markov fill --one --seed 4 \"C . . . | ? | G7 . . . | C . . . |\"" + model);
  ASSERT_EQ(one.status, 0) << one.output;
  EXPECT_TRUE(
      std::regex_match(one.output, std::regex(R"(C \. \. \. \| (F|Am|G7) \. \. \. \| G7 .*\n)")))
      << one.output;

  const auto evidence = [&model](const std::string& list) {
    const TRun run = RunTool("markov rate --json \"" + list + "\"" + model);
    EXPECT_EQ(run.status, 0) << run.output;
    return nlohmann::json::parse(run.output)["evidence"].get<double>();
  };
  EXPECT_GT(evidence("C . . . | Am . . . | F . . . | G7 . . . | C . . . |"),
            evidence("G7 . . . | F . . . | C . . . | Am . . . | C . . . |"));
  const TRun table = RunTool("markov rate \"C . . . | F . . . | G7 . . . | C . . . |\"" + model);
  EXPECT_TRUE(Contains(table.output, "for 4 chords")) << table.output;
}

TEST_F(MarkovCommand, BadInputIsAClearErrorWithStatusOne) {
  ASSERT_EQ(Learn().status, 0);
  Write("other.json", "{\"HarmSignKeys\":[]}");
  Write("broken.json", "{\"VariableLengthMarkovModel\":{\"MaxHistoryLength\":");
  const struct {
    std::string arguments;
    std::string message;
  } cases[] = {
      {"markov generate --bars 2 --model " + Path("missing.json"), "No such file or directory"},
      {"markov generate --bars 2 --model " + Path("broken.json"), "cannot read the Markov model"},
      {"markov generate --bars 2 --model " + Path("other.json"), "cannot read the Markov model"},
      {"markov generate --bars 2 --key Xm --model " + Path("model.json"), "is not a major or minor key"},
      {"markov rate \"C . . . | C7zz . . . |\" --model " + Path("model.json"), "could not read \"zz\""},
      {"markov fill \"C . . . | G . . . |\" --model " + Path("model.json"), "no gap"},
      {"markov rate \"| |\" --model " + Path("model.json"), "no chords"},
      {"markov learn " + Path("nowhere.txt") + " -o " + Path("m.json"), "no such file"},
      {"markov learn " + Path("corpus") + " -o " + Path("no/folder/m.json"), "cannot write"},
  };
  for (const auto& [arguments, message] : cases) {
    const TRun run = RunTool(arguments);
    EXPECT_EQ(run.status, 1) << arguments << "\n" << run.output;
    EXPECT_TRUE(Contains(run.output, message)) << arguments << "\n" << run.output;
  }
  EXPECT_EQ(RunTool("markov generate --model " + Path("model.json")).status, 2);
}

TEST_F(MarkovCommand, TheBundledModelGeneratesSixteenBars) {
  if (!fs::exists(fs::path(HARMONY_DATA_DIR) / "markov" / "default-model.json")) {
    GTEST_SKIP() << "no bundled model in " << HARMONY_DATA_DIR;
  }
  const TRun run = RunTool("markov generate --bars 16 --seed 11 --ascii");
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(Beats(run.output), 64) << run.output;
  // What is printed reads back as the same number of chords.
  const std::string list = run.output;
  const CHarmAnlsChords chords = ParseStringIntoHarmAnlsChords::ParseIntoChords(list, {});
  std::istringstream words(list);
  std::size_t named = 0;
  for (std::string word; words >> word;) named += word != "|" && word != "." ? 1 : 0;
  EXPECT_EQ(chords.size(), named + 1);
  EXPECT_EQ(chords.back().Position, 64.0);

  // The demo draws with one seed in three keys: the same chords, each a transposition.
  const TRun demo = RunTool("demo");
  ASSERT_EQ(demo.status, 0) << demo.output;
  std::smatch found;
  const std::string output = demo.output;
  ASSERT_TRUE(std::regex_search(output, found,
                                std::regex("C   seed 1: ([^\n]*)\nEb  seed 1: ([^\n]*)\n"
                                           "F#  seed 1: ([^\n]*)\n")))
      << demo.output;
  const CHarmAnlsChords inC = ParseStringIntoHarmAnlsChords::ParseIntoChords(found[1], {});
  ASSERT_EQ(Beats(found[1]), 16);
  for (const auto& [match, semitones] : {std::pair{2, 3}, std::pair{3, 6}}) {
    const CHarmAnlsChords moved = ParseStringIntoHarmAnlsChords::ParseIntoChords(found[match], {});
    ASSERT_EQ(moved.size(), inC.size()) << found[match];
    for (std::size_t i = 0; i + 1 < inC.size(); ++i) {
      EXPECT_EQ(moved[i].Position, inC[i].Position) << found[match];
      EXPECT_EQ(moved[i].Semitones, inC[i].Semitones) << found[match];
      EXPECT_EQ(moved[i].RootKeyEnh.KeyNr, (inC[i].RootKeyEnh.KeyNr + semitones) % 12)
          << found[match];
    }
  }
}

TEST_F(MarkovCommand, EveryChordOfTheBillboardCorpusIsWrittenAsASymbolTheParserReads) {
  const fs::path corpus =
      fs::path(HARMONY_TESTDATA_DIR) / "progressions" / "billboard" / "billboard-2.0-salami_chords";
  if (!fs::is_directory(corpus)) GTEST_SKIP() << "no Billboard corpus at " << corpus;
  const TRun run = RunTool("markov convert '" + corpus.string() + "'");
  ASSERT_EQ(run.status, 0);
  std::istringstream lines(run.output);
  std::size_t noChords = 0;
  std::size_t undefined = 0;
  std::size_t files = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("# ")) {
      ++files;
      continue;
    }
    std::istringstream words(line);
    for (std::string word; words >> word;) noChords += word == "N.C." ? 1 : 0;
    const CHarmAnlsChords chords = ParseStringIntoHarmAnlsChords::ParseIntoChords(line, {});
    // The closing chord of each line is undefined too.
    for (std::size_t i = 0; i + 1 < chords.size(); ++i) undefined += chords[i].IsUndef() ? 1 : 0;
  }
  EXPECT_EQ(files, 890u);
  EXPECT_GT(noChords, 1000u);
  EXPECT_EQ(undefined, noChords);
}

}  // namespace
}  // namespace harmony
