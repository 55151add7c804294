#include "harmony/analysis/HarmonicAnalyse.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "TestText.h"

namespace harmony {
namespace {

using testing::Json;

using A = CHarmonicAnalyse;
constexpr double kUndef = kHarmAnlsUndefDouble;
constexpr CKeyEnh kC(0, TEnh_n), kD(2, TEnh_n), kF(5, TEnh_n), kG(7, TEnh_n), kB(11, TEnh_n);
constexpr std::uint64_t kMajor = 145, kMajorScale = 2741;

CHarmAnlsChordWithPos At(double position, CKeyEnh root, CKeyEnh bass = CKeyEnh()) {
  return CHarmAnlsChordWithPos(CChordLite(root, CSemitones(kMajor), bass), position);
}
CHarmAnlsChordWithPos EndAt(double position) {
  return CHarmAnlsChordWithPos(CChordLite(), position);
}

CHarmAnlsSignKey Key(double position, CKeyEnh root, TSignKeyType type,
                     CHarmAnlsCenters centers = {}) {
  return CHarmAnlsSignKey(kUndef, position, CSignKeyLite(root, type), std::move(centers));
}

std::vector<double> Positions(const CHarmAnlsChords& chords) {
  std::vector<double> positions;
  for (const auto& chord : chords) positions.push_back(chord.Position);
  return positions;
}

const CHarmAnlsCenter& OnlyCenter(const CHarmonicAnalyse& analyse) {
  EXPECT_EQ(analyse.HarmSignKeys().size(), 1U);
  EXPECT_EQ(analyse.HarmSignKeys()[0].HarmCenters.size(), 1U);
  return analyse.HarmSignKeys()[0].HarmCenters[0];
}

TEST(HarmonicAnalyse, AnEmptyPieceLeavesOneUndefinedKeyAndCenter) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString("", {}, A::kAnalyseTonicProgressions, TChordStringParse());
  const CHarmAnlsCenter& center = OnlyCenter(analyse);
  EXPECT_TRUE(analyse.HarmSignKeys()[0].IsUndef());
  EXPECT_TRUE(center.IsUndef());
  EXPECT_TRUE(center.HarmChords.empty());
  const std::string json = Json(analyse);
  EXPECT_EQ(json.rfind("{\"HarmSignKeys\":\n[\n{\"Probability\":Undef, ", 0), 0U) << json;
  EXPECT_NE(json.find("\"Type\":\"undef\"}, \n\"HarmCenters\":\n[\n{\"Probability\":Undef, "),
            std::string::npos);
  const std::string tail = "\"HarmChords\":\n[\n]\n},\n]\n},\n]\n}";
  EXPECT_EQ(json.substr(json.size() - tail.size()), tail);
}

TEST(HarmonicAnalyse, ChordsGoIntoTheLastCenterOfTheLastSignKey) {
  CHarmonicAnalyse analyse;
  const CHarmAnlsChords input{At(0, kC), EndAt(1), At(2, kG), EndAt(3)};
  analyse._FillAnalyserWithSignKeysAndChords({}, input);
  EXPECT_EQ(Positions(OnlyCenter(analyse).HarmChords), (std::vector<double>{0, 2, 3}));
  EXPECT_EQ(Positions(analyse.InputChords()), (std::vector<double>{0, 2, 3}));
  // The last element stays whatever it is.
  analyse._FillAnalyserWithSignKeysAndChords({}, {EndAt(0), At(1, kC)});
  EXPECT_EQ(Positions(analyse.InputChords()), (std::vector<double>{1}));

  // Undefined chords of a parse stay.
  analyse._FillAnalyserWithSignKeysAndChordString({}, "C undef G", TChordStringParse());
  EXPECT_EQ(Positions(OnlyCenter(analyse).HarmChords), (std::vector<double>{0, 1, 2, 3}));

  // Earlier sign keys keep the centers they were given; the last one gets a center of its
  // own scale at its own position.
  const CHarmAnlsSignKeys keys{
      Key(0, kD, TSignKeyType::Major,
          {CHarmAnlsCenter(kUndef, 0, CHarmCenterLite(kD, CSemitones(kMajorScale)))}),
      Key(8, kG, TSignKeyType::Minor)};
  analyse._FillAnalyserWithSignKeysAndChords(keys, input);
  const CHarmAnlsSignKeys& filled = analyse.HarmSignKeys();
  ASSERT_EQ(filled.size(), 2U);
  EXPECT_TRUE(filled[0].HarmCenters[0].HarmChords.empty());
  ASSERT_EQ(filled[1].HarmCenters.size(), 1U);
  EXPECT_EQ(filled[1].HarmCenters[0].Position, 8.0);
  EXPECT_EQ(filled[1].HarmCenters[0].HarmCenter.Semitones.Word(), 1453U);
  EXPECT_EQ(filled[1].HarmCenters[0].HarmChords.size(), 3U);
}

TEST(HarmonicAnalyse, AGivenSignKeyGivesTheDistances) {
  CHarmonicAnalyse analyse;
  const CHarmAnlsSignKeys gMajor{Key(0, kG, TSignKeyType::Major)};
  analyse.AnalyseFromChordString("G D/F# | C . Am D7 | G", gMajor, A::kAnalyseNone,
                                 TChordStringParse());
  EXPECT_EQ(analyse.HarmSignKeys()[0].SignKey, CSignKeyLite(kG, TSignKeyType::Major));
  const CHarmAnlsCenter& center = OnlyCenter(analyse);
  EXPECT_EQ(center.HarmCenter, CHarmCenterLite(kG, CSemitones(kMajorScale)));
  std::vector<std::pair<int, int>> dists;
  for (const auto& chord : center.HarmChords) {
    dists.emplace_back(chord.RootDistToHarmCenter, chord.BassDistToHarmCenter);
  }
  EXPECT_EQ(dists, (std::vector<std::pair<int, int>>{
                       {0, -1}, {7, 11}, {5, -1}, {2, -1}, {7, -1}, {0, -1}, {-1, -1}}));
}

TEST(HarmonicAnalyse, UndefinedLevelsAreFilledFromTheOtherLevel) {
  // An undefined center under a known key takes its scale and position.
  CHarmonicAnalyse analyse;
  CHarmAnlsCenters centers{
      CHarmAnlsCenter(kUndef, kUndef, CHarmCenterLite(), {At(0, kF)}),
      CHarmAnlsCenter(kUndef, kUndef, CHarmCenterLite(kD, CSemitones(1709)), {At(4, kG)})};
  analyse.FillManually_AppendSignKey(Key(2, kF, TSignKeyType::Major, centers));
  analyse.Analyse(A::kAnalyseNone);
  const CHarmAnlsCenters& filled = analyse.HarmSignKeys()[0].HarmCenters;
  EXPECT_EQ(filled[0].HarmCenter, CHarmCenterLite(kF, CSemitones(kMajorScale)));
  EXPECT_EQ(filled[0].Position, 2.0);
  EXPECT_EQ(filled[0].HarmChords[0].RootDistToHarmCenter, 0);
  // A known center keeps its mode and its undefined position.
  EXPECT_EQ(filled[1].HarmCenter.Semitones.Word(), 1709U);
  EXPECT_EQ(filled[1].Position, kUndef);
  EXPECT_EQ(filled[1].HarmChords[0].RootDistToHarmCenter, 5);

  // An undefined sign key takes the most occurent center, which is seldom a defined one.
  const auto keyFrom = [](const CHarmCenterLite& center) {
    CHarmonicAnalyse tree;
    auto key = tree.FillManually_AppendSignKey(CHarmAnlsSignKey());
    auto c = tree.FillManually_AppendHarmCenterInSignKey(key, CHarmAnlsCenter(kUndef, 0, center));
    tree.FillManually_AppendChordInHarmCenter(c, At(0, kB));
    tree.Analyse(A::kAnalyseNone);
    return tree.HarmSignKeys()[0];
  };
  const CHarmAnlsSignKey fromB = keyFrom(CHarmCenterLite(kB, CSemitones(kMajorScale)));
  EXPECT_EQ(fromB.SignKey, CSignKeyLite(kB, TSignKeyType::Major));
  EXPECT_EQ(fromB.HarmCenters[0].HarmChords[0].RootDistToHarmCenter, 0);
  const CHarmAnlsSignKey fromC = keyFrom(CHarmCenterLite(kC, CSemitones(kMajorScale)));
  EXPECT_TRUE(fromC.IsUndef());
  EXPECT_EQ(fromC.HarmCenters[0].HarmChords[0].RootDistToHarmCenter, 11);
}

TEST(HarmonicAnalyse, EqualNeighboursMergeAndOtherMethodValuesActAsNone) {
  const CHarmAnlsSignKeys keys{Key(0, kC, TSignKeyType::Major), Key(8, kC, TSignKeyType::Major),
                               Key(16, kC, TSignKeyType::Minor)};
  CHarmonicAnalyse none;
  none.AnalyseFromChords({At(0, kC), EndAt(4)}, keys, A::kAnalyseNone);
  const CHarmAnlsSignKeys& merged = none.HarmSignKeys();
  ASSERT_EQ(merged.size(), 2U);
  EXPECT_EQ(merged[0].Position, 0.0);
  EXPECT_EQ(merged[1].Position, 16.0);
  EXPECT_EQ(merged[1].HarmCenters[0].HarmChords.size(), 2U);

  CHarmonicAnalyse seven;
  seven.AnalyseFromChords({At(0, kC), EndAt(4)}, keys, static_cast<A::TAnalyse>(7));
  EXPECT_EQ(Json(seven), Json(none));
}

TEST(HarmonicAnalyse, AFileStandsAloneWhateverTheCallerPasses) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "harmony_analyse_file_test.txt";
  const std::string text = "F . . . | Bb . C7 . | F";
  {
    std::ofstream out(path);
    out << text;
  }
  CHarmonicAnalyse fromFile;
  fromFile.AnalyseFromChordStringFile(path.string(), {Key(0, kG, TSignKeyType::Major)},
                                      A::kAnalyseCenterWeights, TChordStringParse());
  CHarmonicAnalyse fromText;
  fromText.AnalyseFromChordString(text, {}, A::kAnalyseTonicProgressions, TChordStringParse());
  EXPECT_EQ(Json(fromFile), Json(fromText));
  EXPECT_EQ(fromFile.InputChords().size(), 5U);

  // The result file holds the JSON; an unreadable file analyses as an empty piece.
  fromFile.WriteAnalysisResultToFile(path.string(), std::ios_base::trunc);
  std::ifstream in(path);
  std::stringstream written;
  written << in.rdbuf();
  EXPECT_EQ(written.str(), Json(fromFile));
  std::filesystem::remove(path);
  fromFile.AnalyseFromChordStringFile(path.string(), {}, A::kAnalyseNone, TChordStringParse());
  EXPECT_TRUE(fromFile.InputChords().empty());
  EXPECT_TRUE(OnlyCenter(fromFile).HarmChords.empty());
  fromFile.WriteAnalysisResultToFile("/nonexistent-dir/result.json", std::ios_base::trunc);
}

TEST(HarmonicAnalyse, ListingTellsTheTreeAndTheInputByLengths) {
  CHarmonicAnalyse analyse;
  auto key = analyse.FillManually_AppendSignKey(Key(0, kC, TSignKeyType::Major));
  auto first = analyse.FillManually_AppendHarmCenterInSignKey(key, CHarmAnlsCenter());
  auto chord = analyse.FillManually_AppendChordInHarmCenter(first, At(4, kG));
  EXPECT_EQ(chord->RootKeyEnh, kG);
  analyse.FillManually_AppendChordInHarmCenter(first, At(0, kC));
  auto second = analyse.FillManually_AppendHarmCenterInSignKey(key, CHarmAnlsCenter());
  analyse.FillManually_AppendChordInHarmCenter(second, EndAt(8));
  EXPECT_TRUE(analyse.InputChords().empty());
  CHarmAnlsChords all{At(99, kB)};
  analyse.ListAllHarmChords(all);
  EXPECT_EQ(Positions(all), (std::vector<double>{4, 0, 8}));

  analyse.AnalyseFromChordString("C . G | F . . . | C", {}, A::kAnalyseNone, TChordStringParse());
  CHarmAnlsChordsWithLength lengths{CHarmAnlsChordWithLength()};
  analyse.ListAllHarmChordsWithLength(lengths);
  ASSERT_EQ(lengths.size(), 5U);
  const std::vector<double> expected{2, 2, 4, 1};
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(lengths[i].Length, expected[i]);
  EXPECT_EQ(lengths[4].Length, kUndef);
  EXPECT_TRUE(lengths[4].IsUndef());
  EXPECT_EQ(lengths[1].RootKeyEnh, kG);
  EXPECT_EQ(lengths[1].RootDistToHarmCenter, -1);
}

}  // namespace
}  // namespace harmony
