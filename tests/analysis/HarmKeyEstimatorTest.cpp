// The key estimator on tunes whose key a musician names at once, and harmony key-of.

#include <gtest/gtest.h>

#include <iostream>
#include <set>
#include <string>

#include "TestPaths.h"
#include "ToolRun.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmKeyEstimator.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "platform/JsonReader.h"

namespace {

using harmony::CHarmAnlsChords;
using harmony::CHarmKeyEstimator;
using harmony::CSignKeyLite;
using harmony::TChordStringParse;

CHarmAnlsChords Chords(const std::string& text) {
  return CHarmAnlsChords(text, TChordStringParse());
}

std::string BestKey(const std::string& text) {
  harmony::CChordNamePrefs ascii;
  ascii.AsciiAccidentals = 1;
  return CHarmKeyEstimator().BestKey(Chords(text)).NameLong(ascii);
}

// `bars` repeated `times` times.
std::string Repeat(const std::string& bars, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += (i > 0 ? " | " : "") + bars;
  return text;
}

TEST(HarmKeyEstimator, NamesTheKeyOfPlainTunes) {
  EXPECT_EQ(BestKey("C . . . | F . G7 . | C . . ."), "C Major");
  EXPECT_EQ(BestKey("Am . . . | Dm . E7 . | Am . . . | F . E7 . | Am . . ."), "A Minor");
  // Eb major: the relative minor shares every tone.
  EXPECT_EQ(BestKey("Eb . . . | Cm . . . | Ab . Bb7 . | Eb . . ."), "Eb Major");
  // A minor blues: i, iv and V7 over twelve bars.
  EXPECT_EQ(BestKey("Cm7 . . . | Fm7 . . . | Cm7 . . . | Cm7 . . . | Fm7 . . . | Fm7 . . . | "
                    "Cm7 . . . | Cm7 . . . | Abmaj7 . . . | G7 . . . | Cm7 . . . | G7 . . ."),
            "C Minor");
  // Modal vamps: Dorian (i - IV) and Mixolydian (I - bVII) keep their own tonic, not the
  // major key their tones come from.
  EXPECT_EQ(BestKey(Repeat("Dm . . . | G . . .", 4)), "D Minor");
  EXPECT_EQ(BestKey(Repeat("G . . . | F . . .", 3) + " | C . . . | G . . ."), "G Major");
  // A tune that starts away from its tonic: ii - V - I.
  EXPECT_EQ(BestKey("Dm7 . . . | G7 . . . | Cmaj7 . . . | Cmaj7 . . . | Dm7 . . . | G7 . . . | "
                    "Cmaj7 . . . | A7 . . . | Dm7 . . . | G7 . . . | C . . ."),
            "C Major");
}

TEST(HarmKeyEstimator, RanksAllTwentyFourKeysBestFirst) {
  const harmony::THarmKeyRanking ranking =
      CHarmKeyEstimator().Rank(Chords("G . . . | C . D7 . | G"));
  std::set<int> keys;
  for (std::size_t i = 0; i < ranking.size(); ++i) {
    keys.insert(harmony::HarmKeyNumber(ranking[i].Key));
    if (i > 0) {
      EXPECT_GE(ranking[i - 1].Score, ranking[i].Score);
    }
  }
  EXPECT_EQ(keys.size(), 24u);
  EXPECT_EQ(ranking[0].Key.NameShort(), "G");

  // Without a chord that has a root there is no key and there are no sections.
  EXPECT_TRUE(CHarmKeyEstimator().BestKey(Chords("N.C. . . . | N.C.")).IsUndef());
  EXPECT_TRUE(CHarmKeyEstimator().Sections(Chords("")).empty());
}

TEST(HarmKeyEstimator, GathersOnlyTheWindow) {
  // Four bars of C, then four of G: a window over bars 2..5 holds two bars of each, cut at
  // its edges, with the C-G move inside it.
  const CHarmAnlsChords chords = Chords(
      "C . . . | C . . . | C . . . | C . . . | G . . . | "
      "G . . . | G . . . | G . . .");
  const harmony::THarmKeyEvidence all = CHarmKeyEstimator::Gather(chords);
  EXPECT_DOUBLE_EQ(all.Duration, 32.0);
  const harmony::THarmKeyEvidence window = CHarmKeyEstimator::Gather(chords, 10.0, 22.0);
  EXPECT_DOUBLE_EQ(window.Duration, 12.0);
  EXPECT_DOUBLE_EQ(window.PitchClasses[0], 6.0);  // C sounds from 10 to 16
  EXPECT_DOUBLE_EQ(window.PitchClasses[2], 6.0);  // D (of G) from 16 to 22
  EXPECT_DOUBLE_EQ(window.PitchClasses[7], 12.0);
  EXPECT_EQ(window.FirstRoot, 0);
  EXPECT_EQ(window.LastRoot, 7);
  // C to G is a plagal move (IV-I) into G major, G7 to C a dominant one into C.
  EXPECT_DOUBLE_EQ(window.CadenceTotal, 0.5);
  EXPECT_DOUBLE_EQ(window.Cadences[7][0], 0.5);
  EXPECT_DOUBLE_EQ(window.Cadences[0][0], 0.0);
  EXPECT_DOUBLE_EQ(CHarmKeyEstimator::Gather(Chords("G7 . . . | C")).Cadences[0][0], 1.0);
  // ii-V-i into a minor tonic.
  EXPECT_DOUBLE_EQ(CHarmKeyEstimator::Gather(Chords("Dm7b5 . G7 . | Cm")).Cadences[0][1], 1.5);
}

TEST(HarmKeyEstimator, FollowsAModulationUpAThird) {
  const std::string inC = Repeat("C . . . | F . . . | G7 . . . | C . . .", 3);
  const std::string inE = Repeat("E . . . | A . . . | B7 . . . | E . . .", 3);
  const std::vector<harmony::THarmKeySection> sections =
      CHarmKeyEstimator().Sections(Chords(inC + " | " + inE));
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(sections[0].Key.NameShort(), "C");
  EXPECT_DOUBLE_EQ(sections[0].Position, 0.0);
  EXPECT_EQ(sections[1].Key.NameShort(), "E");
  // The change lies at bar 13 (position 48); the windows place it within two bars of it.
  EXPECT_NEAR(sections[1].Position, 48.0, 8.0);

  // A tune in one key stays one section however long it is, and so does one whose secondary
  // dominants (A7 to Dm) lean towards the key of ii for two bars.
  EXPECT_EQ(CHarmKeyEstimator().Sections(Chords(inC + " | " + inC)).size(), 1u);
  const std::string leaning = inC + " | Am . . . | A7 . . . | Dm . . . | G7 . . . | " + inC;
  EXPECT_EQ(CHarmKeyEstimator().Sections(Chords(leaning)).size(), 1u);
  // Four bars that settle in E (I-V-I-V) do make a section, and the tune comes back to C.
  const std::string excursion = inC + " | E . . . | B7 . . . | E . . . | B7 . . . | " + inC;
  const auto back = CHarmKeyEstimator().Sections(Chords(excursion));
  ASSERT_EQ(back.size(), 3u);
  EXPECT_EQ(back[1].Key.NameShort(), "E");
  EXPECT_EQ(back[2].Key.NameShort(), "C");
  EXPECT_LT(back[1].Position, back[2].Position);
}

TEST(HarmKeyEstimator, StartsTheAnalyserFromTheEstimatedKey) {
  const CHarmAnlsChords chords = Chords("Am . . . | Dm . E7 . | Am . . . | F . E7 . | Am");
  harmony::CHarmonicAnalyse analyse;
  analyse.AnalyseFromChords(chords, harmony::HarmEstimatedSignKeys(chords),
                            harmony::CHarmonicAnalyse::kAnalyseNone);
  ASSERT_FALSE(analyse.HarmSignKeys().empty());
  EXPECT_EQ(analyse.HarmSignKeys().front().SignKey.NameShort(), "Am");
}

class KeyOfCommand : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(KeyOfCommand, PrintsTheBestKeysAndSections) {
  using harmony::testing::Contains;
  using harmony::testing::RunTool;
  const auto text = RunTool("key-of --ascii 'Am . . . | Dm . E7 . | Am'");
  EXPECT_EQ(text.status, 0) << text.output;
  EXPECT_TRUE(Contains(text.output, "Key A Minor")) << text.output;
  EXPECT_TRUE(Contains(text.output, "     5  ")) << text.output;

  const auto json = RunTool("key-of --json 'Bb . . . | Eb . F7 . | Bb'");
  EXPECT_EQ(json.status, 0) << json.output;
  const auto document = harmony::platform::ParseJson(json.output);
  ASSERT_TRUE(document.has_value()) << json.output;
  EXPECT_TRUE(Contains(json.output, "{\"key\":\"Bb Major\",\"ranking\":[{\"key\":\"Bb Major\""))
      << json.output;

  // The forgiving parser knows no "N.C.": read strictly it is no chord symbol; read as the
  // library does, it is a chord without root, from which no key follows. The lead-sheet reader
  // reads it as no chord, from which no key follows either.
  const auto strict = RunTool("key-of --parser seed 'N.C.'");
  EXPECT_EQ(strict.status, 1);
  EXPECT_TRUE(Contains(strict.output, "is not a chord symbol")) << strict.output;
  for (const char* args : {"key-of --parser seed --lenient 'N.C.'", "key-of 'N.C.'"}) {
    const auto none = RunTool(args);
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(Contains(none.output, "no chord with a root")) << args << "\n" << none.output;
  }
  EXPECT_EQ(RunTool("key-of").status, 2);

  // A Billboard annotation read as it is: "I Don't Mind", labelled with the tonic C, swings
  // between A minor and C major chords.
  const std::string billboard = std::string(HARMONY_TESTDATA_DIR) +
                                "/progressions/billboard/billboard-2.0-salami_chords/0003/"
                                "salami_chords.txt";
  if (std::string(HARMONY_TESTDATA_DIR).empty()) {
    std::cout << "[ SKIPPED  ] no test data: the Billboard annotation is not read\n";
  } else {
    const auto song = RunTool("key-of --json --file '" + billboard + "'");
    EXPECT_TRUE(Contains(song.output, "{\"key\":\"C Major\"")) << song.output;
    // A compressed MusicXML lead sheet whose chords (F Bb F C7 ... Gm C7 F) are in F major
    // while its key signature says C major.
    const std::string sheet = std::string(HARMONY_TESTDATA_DIR) +
                              "/musicxml/leadsheets/dataset/A._Emmett_Adams-Douglas_Furber/"
                              "The_Bells_of_St._Mary's/The_Bells_of_St._Mary's.mxl";
    const auto lead = RunTool("key-of --json --file \"" + sheet + "\"");
    EXPECT_TRUE(Contains(lead.output, "{\"key\":\"F Major\"")) << lead.output;
    const auto analysed = RunTool("analyse --key auto --file \"" + sheet + "\"");
    EXPECT_TRUE(Contains(analysed.output, "Sign key F Major")) << analysed.output;
  }

  const auto analyse = RunTool("analyse --key auto 'Am . . . | Dm . E7 . | Am'");
  EXPECT_EQ(analyse.status, 0) << analyse.output;
  EXPECT_TRUE(Contains(analyse.output, "Sign key A Minor")) << analyse.output;
}

}  // namespace
