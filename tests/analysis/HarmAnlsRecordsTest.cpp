#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "TestText.h"
#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

using testing::Json;

constexpr CKeyEnh kC(0, TEnh_n), kE(4, TEnh_n), kF(5, TEnh_n), kG(7, TEnh_n), kA(9, TEnh_n);
constexpr CKeyEnh kB(11, TEnh_n), kCFlat(11, TEnh_b), kBFlat(10, TEnh_b);
constexpr std::uint64_t kMajor = 145, kMinor = 137, kMajorScale = 2741, kMinorScale = 1453;
constexpr double kUndef = kHarmAnlsUndefDouble;

CHarmAnlsChordWithPos At(double position, CKeyEnh root, std::uint64_t mask = kMajor,
                         CKeyEnh bass = CKeyEnh()) {
  return CHarmAnlsChordWithPos(CChordLite(root, CSemitones(mask), bass), position);
}

CHarmAnlsChordWithPos EndAt(double position) {
  return CHarmAnlsChordWithPos(CChordLite(), position);
}

CHarmCenterLite Major(CKeyEnh root) { return CHarmCenterLite(root, CSemitones(kMajorScale)); }
CHarmCenterLite Minor(CKeyEnh root) { return CHarmCenterLite(root, CSemitones(kMinorScale)); }

CHarmAnlsCenter Center(double position, const CHarmCenterLite& center, CHarmAnlsChords chords) {
  return CHarmAnlsCenter(kUndef, position, center, std::move(chords));
}

// The positions of a center's chords, for compact expectations.
std::vector<double> Positions(const CHarmAnlsChords& chords) {
  std::vector<double> positions;
  for (const auto& chord : chords) positions.push_back(chord.Position);
  return positions;
}

// C F G C over four bars and the closing chord.
CHarmAnlsChords Cadence() { return {At(0, kC), At(4, kF), At(8, kG), At(12, kC), EndAt(16)}; }

TEST(HarmAnlsRecords, ChordJsonPadsDistancesAndPositions) {
  CHarmAnlsChordWithPos g7 = At(1.5, kG, 1169, kB);
  g7.RootDistToHarmCenter = 7;
  EXPECT_EQ(Json(g7),
            "{\"Position\":  1.50, \"RootKeyEnh\":{\"KeyNr\":\" 7\",\"Enh\":\"neutral\"}, "
            "\"BassKeyEnh\":{\"KeyNr\":\"11\",\"Enh\":\"neutral\"}, \"Semitones\":1169, "
            "\"RootDistToHarmCenter\": 7, \"BassDistToHarmCenter\":-1}");
  CHarmAnlsChordWithLength whole(CChordLite(kC, CSemitones(kMajor)), 128);
  whole.BassDistToHarmCenter = 11;
  EXPECT_EQ(Json(whole),
            "{\"Length\":128.00, \"RootKeyEnh\":{\"KeyNr\":\" 0\",\"Enh\":\"neutral\"}, "
            "\"BassKeyEnh\":{\"KeyNr\":\"15\",\"Enh\":\"undef\"}, \"Semitones\":145, "
            "\"RootDistToHarmCenter\":-1, \"BassDistToHarmCenter\":11}");
  // The undefined position is the most negative double written out in full.
  const std::string undefined = Json(EndAt(kUndef));
  EXPECT_EQ(undefined.find("{\"Position\":-179769313486231570"), 0U) << undefined;
  EXPECT_GT(undefined.size(), 300U + 150U);
  // The stream's own number format is left alone.
  std::ostringstream out;
  At(2, kC).AppendJSONString(out);
  out << 0.125;
  EXPECT_NE(out.str().find("}0.125"), std::string::npos) << out.str();
}

TEST(HarmAnlsRecords, ChordComparisonsWeighDistancesButNotPositions) {
  const CHarmAnlsChord c(CChordLite(kC, CSemitones(kMajor)), 0, -1);
  const CHarmAnlsChord bSharp(CChordLite(CKeyEnh(0, TEnh_s), CSemitones(kMajor)), 0, -1);
  EXPECT_FALSE(c == bSharp);
  EXPECT_TRUE(c.EqualWithoutEnh(bSharp));
  EXPECT_FALSE(c.EqualExceptRootAndBass(CHarmAnlsChord(CChordLite(kG, CSemitones(kMajor)), 7)));
  EXPECT_TRUE(CHarmAnlsChordWithPos(c, 0) == CHarmAnlsChordWithPos(c, 8));
  EXPECT_FALSE(CHarmAnlsChordWithLength(c, 4) == CHarmAnlsChordWithLength(c, 2));
}

TEST(HarmAnlsRecords, SimplifyingLeavesATriadOfOneBar) {
  struct TCase {
    std::uint64_t mask;
    std::uint64_t simplified;
  };
  // Major with anything on top, minor without a major third, anything else major.
  for (const TCase& c : {TCase{1169, kMajor}, TCase{kMajor, kMajor}, TCase{1161, kMinor},
                         TCase{153, kMajor}, TCase{73, kMajor}, TCase{161, kMajor}}) {
    CHarmAnlsChordWithLength chord(CChordLite(kA, CSemitones(c.mask), kE), 1.5);
    chord.RootDistToHarmCenter = 9;
    chord.BassDistToHarmCenter = 4;
    chord.SimplifyChord();
    EXPECT_EQ(chord.Semitones.Word(), c.simplified) << c.mask;
    EXPECT_EQ(chord.RootKeyEnh, kA);
    EXPECT_EQ(chord.RootDistToHarmCenter, 9);
    EXPECT_FALSE(chord.HasBassNote());
    EXPECT_EQ(chord.BassKeyEnh.Enh, TEnh_Undef);
    EXPECT_EQ(chord.BassDistToHarmCenter, -1);
    EXPECT_EQ(chord.Length, 4.0);
  }
}

TEST(HarmAnlsRecords, ChordListsKnowTheirEndAndTheirChords) {
  EXPECT_EQ(CHarmAnlsChords().LastChordEndPos(), kUndef);
  EXPECT_EQ(CHarmAnlsChords{At(4, kC)}.LastChordEndPos(), 5.0);
  // One quarter note whatever the closing chord is.
  EXPECT_EQ(Cadence().LastChordEndPos(), 17.0);

  CHarmAnlsChords onlyUndef{EndAt(0), EndAt(4)};
  EXPECT_EQ(onlyUndef.LastNonUndefChord(), onlyUndef.end());
  const CHarmAnlsChords cadence = Cadence();
  EXPECT_EQ(cadence.LastNonUndefChord()->Position, 12.0);

  const CHarmAnlsChords cgc{At(0, kC), At(1, kG), At(2, kC), EndAt(3)};
  EXPECT_EQ(cgc.CountDifferentNonUndefChords(), 2U);
  EXPECT_EQ(cgc.CreateSetOfNonUndefChords().begin()->RootKeyEnh, kC);
  EXPECT_TRUE(cgc.Contain(At(7, kG)));
  EXPECT_FALSE(cgc.Contain(At(1, kG, kMinor)));
  CHarmAnlsChordWithPos knownG = At(1, kG);
  knownG.RootDistToHarmCenter = 7;
  EXPECT_FALSE(cgc.Contain(knownG));
}

TEST(HarmAnlsRecords, InsertingKeepsTheListInPositionOrder) {
  CHarmAnlsChords chords{At(0, kC), At(4, kF), EndAt(8)};
  const CHarmAnlsChords more{At(4, kA), At(2, kG), At(9, kE)};
  chords.InsertAtCorrectPosition(more.cbegin(), more.cbegin());
  EXPECT_EQ(chords.size(), 3U);
  chords.InsertAtCorrectPosition(more.cbegin(), more.cend());
  EXPECT_EQ(Positions(chords), (std::vector<double>{0, 2, 4, 4, 8, 9}));
  // A chord put in at an equal position stays behind the one that was there.
  EXPECT_EQ(chords[2].RootKeyEnh, kF);
  EXPECT_EQ(chords[3].RootKeyEnh, kA);
  const CHarmAnlsChords front{At(-1, kB)};
  chords.InsertAtCorrectPosition(chords.cend(), front.cbegin(), front.cend());
  EXPECT_EQ(chords.front().RootKeyEnh, kB);

  // Chords in order that fall between and onto those there go in behind the chords up to the
  // first new one's position; at an equal position further on they stand before the old
  // chord, as they stood before it when put in. Put in at the front, they lead their ties.
  const auto roots = [](const CHarmAnlsChords& list) {
    std::vector<int> keys;
    for (const CHarmAnlsChordWithPos& chord : list) keys.push_back(chord.RootKeyEnh.KeyNr);
    return keys;
  };
  CHarmAnlsChords run{At(0, kC), At(4, kF), At(6, kG), EndAt(8)};
  const CHarmAnlsChords between{At(4, kA), At(5, kE), At(6, kB), At(9, kBFlat)};
  run.InsertAtCorrectPosition(between.cbegin(), between.cend());
  EXPECT_EQ(Positions(run), (std::vector<double>{0, 4, 4, 5, 6, 6, 8, 9}));
  EXPECT_EQ(roots(run), (std::vector<int>{0, 5, 9, 4, 11, 7, 15, 10}));
  CHarmAnlsChords atFront{At(0, kC), At(4, kF), EndAt(8)};
  const CHarmAnlsChords late{At(0, kG), At(8, kA)};
  atFront.InsertAtCorrectPosition(atFront.cbegin(), late.cbegin(), late.cend());
  EXPECT_EQ(roots(atFront), (std::vector<int>{7, 0, 5, 9, 15}));
}

TEST(HarmAnlsRecords, CollectingTakesTheClosingChordOfTheRange) {
  CHarmAnlsCenters centers{
      Center(0, Major(kC), {At(0, kC), At(4, kF)}),
      Center(8, Major(kG), {At(8, kG), EndAt(8), At(12, kC), EndAt(16)}),
  };
  const CHarmAnlsChords taken = centers.CollectAndEraseChordsFromSmallerUntilBeforeLarger(4, 8);
  EXPECT_EQ(Positions(taken), (std::vector<double>{4, 8}));
  EXPECT_TRUE(taken[1].IsUndef());
  EXPECT_EQ(Positions(centers[0].HarmChords), (std::vector<double>{0}));
  EXPECT_EQ(Positions(centers[1].HarmChords), (std::vector<double>{8, 12, 16}));
  EXPECT_TRUE(centers.CollectAndEraseChordsFromSmallerUntilBeforeLarger(8, 8).empty());
  EXPECT_TRUE(centers.CollectAndEraseChordsFromSmallerUntilBeforeLarger(12, 0).empty());
  EXPECT_EQ(centers[1].HarmChords.size(), 3U);
}

TEST(HarmAnlsRecords, ChangingTheRangeDealsTheChordsToTheNeighbours) {
  CHarmAnlsCenters one{Center(0, Major(kC), Cadence())};
  EXPECT_EQ(one.ChangeRangeOfHarmCenter(one.end(), 0, 4), one.end());
  // The same borders change nothing.
  CHarmAnlsCenters same = one;
  EXPECT_EQ(same.ChangeRangeOfHarmCenter(same.begin(), kHarmAnlsMaxDouble, 0), same.begin());
  EXPECT_TRUE(same == one);

  // A range in the middle of the only center: undefined centers come in front and behind.
  const auto center = one.ChangeRangeOfHarmCenter(one.begin(), 8, 4);
  ASSERT_EQ(one.size(), 3U);
  EXPECT_EQ(center, one.begin() + 1);
  EXPECT_TRUE(one[0].IsUndef());
  EXPECT_EQ(one[0].Position, 0.0);
  EXPECT_EQ(Positions(one[0].HarmChords), (std::vector<double>{0}));
  EXPECT_EQ(one[1].Position, 4.0);
  EXPECT_EQ(one[1].HarmCenter, Major(kC));
  EXPECT_EQ(Positions(one[1].HarmChords), (std::vector<double>{4}));
  EXPECT_TRUE(one[2].IsUndef());
  EXPECT_EQ(one[2].Position, 8.0);
  EXPECT_EQ(Positions(one[2].HarmChords), (std::vector<double>{8, 12, 16}));

  // Widening the middle center to the end takes the chords of the center behind it, which
  // keeps its position; an unplaced first center hands everything ahead to a new one.
  one.ChangeRangeOfHarmCenter(one.begin() + 1, 4, 14);
  EXPECT_EQ(Positions(one[1].HarmChords), (std::vector<double>{4, 8, 12}));
  EXPECT_EQ(Positions(one[2].HarmChords), (std::vector<double>{16}));
  EXPECT_EQ(one[2].Position, 8.0);

  CHarmAnlsCenters unplaced{Center(kUndef, Minor(kA), Cadence())};
  const auto moved = unplaced.ChangeRangeOfHarmCenter(unplaced.begin(), 4, kHarmAnlsMaxDouble);
  ASSERT_EQ(unplaced.size(), 2U);
  EXPECT_EQ(moved->HarmCenter, Minor(kA));
  EXPECT_EQ(Positions(unplaced[0].HarmChords), (std::vector<double>{0}));
  EXPECT_EQ(Positions(unplaced[1].HarmChords), (std::vector<double>{4, 8, 12, 16}));
}

TEST(HarmAnlsRecords, CuttingACenterMovesTheRestBehindIt) {
  CHarmAnlsCenters centers{Center(0, Major(kC), Cadence())};
  EXPECT_EQ(centers.CreateNewHarmCenterWithChordsAfterPos(centers.begin(), 20), centers.begin());
  EXPECT_EQ(centers.size(), 1U);
  const auto first = centers.CreateNewHarmCenterWithChordsAfterPos(centers.begin(), 6);
  EXPECT_EQ(first, centers.begin());
  ASSERT_EQ(centers.size(), 2U);
  EXPECT_EQ(Positions(centers[0].HarmChords), (std::vector<double>{0, 4}));
  EXPECT_TRUE(centers[1].IsUndef());
  EXPECT_EQ(centers[1].Position, 8.0);
  EXPECT_EQ(Positions(centers[1].HarmChords), (std::vector<double>{8, 12, 16}));
  // An existing center behind receives the chords in order.
  centers.CreateNewHarmCenterWithChordsAfterPos(centers.begin(), 0);
  EXPECT_TRUE(centers[0].HarmChords.empty());
  EXPECT_EQ(Positions(centers[1].HarmChords), (std::vector<double>{0, 4, 8, 12, 16}));
}

TEST(HarmAnlsRecords, TheMostOccurentCenterIsTheHighestThatOccurs) {
  EXPECT_TRUE(CHarmAnlsCenters().FindMostOccurentHarmCenter().IsUndef());
  // C major fills most of the piece, but a center in the map above it exists all the time.
  CHarmAnlsCenters onlyC{Center(0, Major(kC), Cadence())};
  EXPECT_TRUE(onlyC.FindMostOccurentHarmCenter().IsUndef());

  CHarmAnlsCenters withB{Center(0, Major(kC), {At(0, kC)}), Center(16, Major(kB), {}),
                         Center(17, Minor(kA), {At(17, kA, kMinor)})};
  EXPECT_EQ(withB.FindMostOccurentHarmCenter(), Major(kB));
  // C flat major lies above B major in the map: the larger spelling sorts first.
  withB.push_back(Center(30, Major(kCFlat), {}));
  EXPECT_EQ(withB.FindMostOccurentHarmCenter(), Major(kCFlat));
  // Unplaced centers count for nothing.
  CHarmAnlsCenters unplaced{Center(kUndef, Major(kB), Cadence())};
  EXPECT_TRUE(unplaced.FindMostOccurentHarmCenter().IsUndef());
}

TEST(HarmAnlsRecords, NeighboursWithTheSameCenterOrKeyMerge) {
  CHarmAnlsCenters centers{Center(0, Major(kC), {At(0, kC)}), Center(4, Major(kC), {At(4, kF)}),
                           Center(8, Major(CKeyEnh(0, TEnh_s)), {At(8, kG)}),
                           Center(12, Major(CKeyEnh(0, TEnh_s)), {}),
                           Center(13, Major(kC), {At(13, kC)})};
  centers.front().Probability = 0.5;
  centers.MergeAdjacentSameHarmCenters();
  ASSERT_EQ(centers.size(), 3U);
  EXPECT_EQ(centers[0].Probability, 0.5);
  EXPECT_EQ(centers[0].Position, 0.0);
  EXPECT_EQ(Positions(centers[0].HarmChords), (std::vector<double>{0, 4}));
  EXPECT_EQ(Positions(centers[1].HarmChords), (std::vector<double>{8}));

  const CSignKeyLite cMajor(kC, TSignKeyType::Major);
  CHarmAnlsSignKeys keys{
      CHarmAnlsSignKey(kUndef, 0, cMajor, {Center(0, Major(kC), {At(0, kC)})}),
      CHarmAnlsSignKey(kUndef, 8, cMajor, {Center(8, Major(kC), {At(8, kG)})}),
      CHarmAnlsSignKey(kUndef, 16, CSignKeyLite(kC, TSignKeyType::Minor), {}),
  };
  keys.MergeAdjacentSameSignKeys();
  ASSERT_EQ(keys.size(), 2U);
  EXPECT_EQ(keys[0].Position, 0.0);
  EXPECT_EQ(keys[0].HarmCenters.size(), 2U);
  keys.MergeAdjacentSameHarmCenters();
  EXPECT_EQ(keys[0].HarmCenters.size(), 1U);
  EXPECT_EQ(Positions(keys[0].HarmCenters[0].HarmChords), (std::vector<double>{0, 8}));
}

TEST(HarmAnlsRecords, DistancesAndFillingFromTheOtherLevel) {
  CHarmAnlsCenter center = Center(0, Major(kF), {At(0, kC, kMajor, kE), At(1, kBFlat), EndAt(2)});
  CHarmAnlsCenter undefined = center;
  undefined.HarmCenter = CHarmCenterLite();
  undefined.AnalyseHarmFunctionsOfChords();
  EXPECT_EQ(undefined.HarmChords[0].RootDistToHarmCenter, -1);

  center.AnalyseHarmFunctionsOfChords();
  EXPECT_EQ(center.HarmChords[0].RootDistToHarmCenter, 7);
  EXPECT_EQ(center.HarmChords[0].BassDistToHarmCenter, 11);
  EXPECT_EQ(center.HarmChords[1].RootDistToHarmCenter, 5);
  EXPECT_EQ(center.HarmChords[1].BassDistToHarmCenter, -1);
  EXPECT_EQ(center.HarmChords[2].RootDistToHarmCenter, -1);

  const CHarmAnlsSignKey aMinor(kUndef, 4, CSignKeyLite(kA, TSignKeyType::Minor));
  undefined.Position = kUndef;
  undefined.IfUndefFillWithHarmSignKey(aMinor);
  EXPECT_EQ(undefined.HarmCenter, Minor(kA));
  EXPECT_EQ(undefined.Position, 4.0);
  center.IfUndefFillWithHarmSignKey(aMinor);
  EXPECT_EQ(center.HarmCenter, Major(kF));
  EXPECT_EQ(center.Position, 0.0);

  CHarmAnlsSignKey typeless(kUndef, kUndef, CSignKeyLite(kG, TSignKeyType::Undef));
  typeless.IfUndefFillWithHarmAnlsCenter(center);
  EXPECT_EQ(typeless.SignKey, CSignKeyLite(kF, TSignKeyType::Major));
  EXPECT_EQ(typeless.Position, 0.0);
  CHarmAnlsSignKey given(kUndef, 2, CSignKeyLite(kG, TSignKeyType::Major));
  given.IfUndefFillWithHarmAnlsCenter(center);
  EXPECT_EQ(given.SignKey, CSignKeyLite(kG, TSignKeyType::Major));
  EXPECT_EQ(given.Position, 2.0);
}

// A small analysis result: one sign key with an undefined probability, two centers.
CHarmAnlsSignKeys SmallTree() {
  CHarmAnlsCenter second = Center(8, Minor(kA), {At(8, kA, kMinor), EndAt(12)});
  second.Probability = 0.25;
  second.AnalyseHarmFunctionsOfChords();
  return {CHarmAnlsSignKey(kUndef, 0, CSignKeyLite(kC, TSignKeyType::Major),
                           {Center(0, Major(kC), {At(0, kC), At(4, kG, 1169, kB)}), second})};
}

TEST(HarmAnlsRecords, TheTreeIsWrittenWithBareWordsAndTrailingCommas) {
  const std::string json = Json(SmallTree());
  const std::string head =
      "[\n{\"Probability\":Undef, \"Position\":  0.00, \"SignKey\":{\"CKeyEnh\":{\"KeyNr\":\" "
      "0\",\"Enh\":\"neutral\"},\"Type\":\"major\"}, \n\"HarmCenters\":\n[\n{\"Probability\":"
      "Undef, \"Position\":  0.00, \"HarmCenter\":{\"CKeyEnh\":{\"KeyNr\":\" 0\",";
  EXPECT_EQ(json.substr(0, head.size()), head);
  EXPECT_NE(json.find("\"Semitones\":\"[1,0,1,0,1,1,0,1,0,1,0,1]\"}, \"HarmChords\":\n[\n{"),
            std::string::npos);
  EXPECT_NE(json.find("{\"Probability\":  0.25, \"Position\":  8.00"), std::string::npos);
  EXPECT_NE(json.find("\"BassDistToHarmCenter\":-1},\n]\n},\n{"), std::string::npos);
  const std::string tail = "-1},\n]\n},\n]\n},\n]\n";
  EXPECT_EQ(json.substr(json.size() - tail.size()), tail);
  EXPECT_FALSE(platform::ParseJson(json).has_value());
}

TEST(HarmAnlsRecords, TheTreeIsReadBackFromItsJson) {
  const CHarmAnlsSignKeys tree = SmallTree();
  const CHarmAnlsSignKeys read = CHarmAnlsSignKeys::FromAnalysisJSONString(Json(tree));
  EXPECT_TRUE(read == tree) << read.TraceString();
  EXPECT_EQ(read[0].Probability, kUndef);
  EXPECT_EQ(read[0].HarmCenters[1].Probability, 0.25);
  EXPECT_EQ(read[0].HarmCenters[1].HarmChords[0].RootDistToHarmCenter, 0);
  EXPECT_EQ(read[0].HarmCenters[0].HarmChords[1].BassKeyEnh, kB);

  // Undefined positions survive their three hundred digits.
  CHarmAnlsSignKeys unplaced{CHarmAnlsSignKey(
      kUndef, kUndef, CSignKeyLite(), {Center(kUndef, CHarmCenterLite(), {EndAt(kUndef)})})};
  const std::string wrapped = "{\"HarmSignKeys\":\n" + Json(unplaced) + "}";
  EXPECT_TRUE(CHarmAnlsSignKeys::FromAnalysisJSONString(wrapped) == unplaced);
  EXPECT_TRUE(CHarmAnlsSignKeys::FromAnalysisJSONString("").empty());
  EXPECT_TRUE(CHarmAnlsSignKeys::FromAnalysisJSONString("{\"HarmSignKeys\":[{]}").empty());
  // Missing members read as undefined.
  const CHarmAnlsSignKeys bare = CHarmAnlsSignKeys::FromAnalysisJSONString("[{},]");
  ASSERT_EQ(bare.size(), 1U);
  EXPECT_EQ(bare[0].Position, kUndef);
  EXPECT_TRUE(bare[0].IsUndef());
}

TEST(HarmAnlsRecords, ChordReadersTakeWhatTheirFormsHold) {
  const JsonDict withDists = JsonDict::parse(
      R"({"Position": 3.5, "Length": 2, "RootKeyEnh":{"KeyNr":" 9","Enh":"neutral"},
          "Semitones":137, "RootDistToHarmCenter": 9, "BassDistToHarmCenter":-1})");
  const CHarmAnlsChordWithPos withPos = CHarmAnls::ChordWithPos::FromDictionary(withDists);
  EXPECT_EQ(withPos.RootKeyEnh, kA);
  EXPECT_EQ(withPos.Semitones.Word(), kMinor);
  EXPECT_EQ(withPos.RootDistToHarmCenter, 9);
  EXPECT_EQ(withPos.Position, 3.5);
  const CHarmAnlsChordWithLength withLength = CHarmAnls::ChordWithLength::FromDictionary(withDists);
  EXPECT_EQ(withLength.RootDistToHarmCenter, -1);
  EXPECT_EQ(withLength.Length, 2.0);

  // One distance alone is not read; a missing position is undefined.
  const JsonDict oneDist = JsonDict::parse(R"({"RootKeyNr":4, "RootDistToHarmCenter": 4})");
  const CHarmAnlsChordWithPos partial = CHarmAnls::ChordWithPos::FromDictionary(oneDist);
  EXPECT_EQ(partial.RootKeyEnh, CKeyEnh(4, TEnh_Undef));
  EXPECT_EQ(partial.RootDistToHarmCenter, -1);
  EXPECT_EQ(partial.Position, kUndef);
  EXPECT_EQ(CHarmAnls::Chord::FromDictionary(oneDist).RootDistToHarmCenter, -1);

  // The model file's reader reads every member; missing ones give 0.
  using Helper = CHarmAnlsChordWithLength::JSONDeserializer_Helper;
  const CHarmAnlsChordWithLength model = Helper::CHarmAnlsChordWithLengthFromJSONDictionary(
      JsonDict::parse(R"({"RootKeyNr":7, "BassKeyEnh":{"KeyNr":"11","Enh":"neutral"},
                          "Semitones":1169, "Length":4})"));
  EXPECT_EQ(model.RootKeyEnh, CKeyEnh(7, TEnh_Undef));
  EXPECT_EQ(model.BassKeyEnh, kB);
  EXPECT_EQ(model.Semitones.Word(), 1169U);
  EXPECT_EQ(model.RootDistToHarmCenter, 0);
  EXPECT_EQ(model.Length, 4.0);
  EXPECT_EQ(Helper::CHarmAnlsChordWithLengthFromJSONDictionary(JsonDict::object()).Length, 0.0);
}

TEST(HarmAnlsRecords, RelaxedJsonQuotesBareWordsAndDropsTrailingCommas) {
  EXPECT_EQ(platform::RelaxedJsonToStrict("[1, Undef, -nan,\n]"), "[1, \"Undef\", \"-nan\"\n]");
  EXPECT_EQ(platform::RelaxedJsonToStrict(R"({"a":true,"b":null, "c":-1.5e-3 ,})"),
            R"({"a":true,"b":null, "c":-1.5e-3 })");
  // Strings keep their commas, brackets and escaped quotes.
  EXPECT_EQ(platform::RelaxedJsonToStrict(R"(["x,]", "say \"Undef,]\"",])"),
            R"(["x,]", "say \"Undef,]\""])");
  const auto parsed = platform::ParseRelaxedJson("{\"p\":Undef, \"l\":[1,2,],}");
  ASSERT_TRUE(parsed.has_value());
  EXPECT_EQ((*parsed)["p"], "Undef");
  EXPECT_EQ((*parsed)["l"].size(), 2U);
  EXPECT_FALSE(platform::ParseRelaxedJson("[1,,]").has_value());
  EXPECT_FALSE(platform::ParseRelaxedJson("\"open").has_value());
}

TEST(HarmAnlsRecords, TracesNameChordsCentersAndKeys) {
  const CHarmAnlsSignKeys tree = SmallTree();
  EXPECT_EQ(tree.TraceBriefString(), "{(HK C: {(HC C: {C G7/B }) (HC Am 25: {Am - }) }) }");
  const CHarmAnlsChord g7 = tree[0].HarmCenters[0].HarmChords[1];
  const std::string chordTrace = g7.TraceString();
  EXPECT_EQ(chordTrace.find("CHarmAnlsChord:G7/B  RootKeyEnh "), 0U) << chordTrace;
  EXPECT_NE(chordTrace.find("RootDistToHarmCenter -1, BassDistToHarmCenter -1, "),
            std::string::npos);
  EXPECT_EQ(tree[0].HarmCenters[0].HarmChords[0].TraceString().find(
                "CHarmAnlsChordWithPos: Pos   0.00, C  RootKeyEnh"),
            0U);
  const std::string centerTrace = tree[0].HarmCenters[1].TraceString();
  EXPECT_NE(centerTrace.find(", Probability 25%, HarmChords:\nCHarmAnlsChords: {\n"),
            std::string::npos)
      << centerTrace;
  EXPECT_EQ(tree[0].TraceString().find("CHarmAnlsSignKey: {\"Probability\":Undef"), 0U);
  EXPECT_EQ(tree.TraceString().find("CHarmAnlsSignKeys: {\nCHarmAnlsSignKey: "), 0U);
}

}  // namespace
}  // namespace harmony
