#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "MarkovTestModels.h"
#include "TestText.h"
#include "harmony/markov/IteratorIndexConverter.h"
#include "harmony/markov/VariableLengthMarkovModel.h"

namespace harmony {
namespace {

using Reader = VariableLengthMarkovModel::JSONDeserialization_Helper;
using testing::ChordObject;
using testing::I;
using testing::ii;
using testing::IV;
using testing::Json;
using testing::Learn;
using testing::V7;
using testing::vi;

std::string Text(const VariableLengthMarkovModel& model) {
  std::ostringstream out;
  model.AppendJSONString(out);
  return out.str();
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class MarkovModelFile : public ::testing::Test {
 protected:
  void SetUp() override {
    _folder =
        std::filesystem::temp_directory_path() /
        ("harmony-markov-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
         "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(_folder);
  }
  void TearDown() override { std::filesystem::remove_all(_folder); }
  std::string Path(const std::string& name) const { return (_folder / name).string(); }

  std::filesystem::path _folder;
};

TEST_F(MarkovModelFile, WritesTheModelAsOneJsonObject) {
  VariableLengthMarkovModel model(1);
  const CMarkovObject chord = ChordObject(7, testing::kDominant7, 2.0);
  Learn(model, {chord});
  // Alphabet: start, the chord, end. The map in symbol order: chords before start and end.
  const std::string expected =
      "{\n\"VariableLengthMarkovModel\":\n{\n\"MaxHistoryLength\":1,\n"
      "\"CMarkovObjects\":[{\"Type\":4},\n{\"Type\":1,\n\"CHarmAnlsChordWithLength\":\n" +
      Json(chord.Chord) +
      "},\n{\"Type\":5}],\n"
      "\"TransitionMap\":[[[   1],[[   2,  1]]],\n"
      "[[   0],[[   1,  1]]]],\n"
      "\"History\":[   2]\n}\n}\n";
  EXPECT_EQ(Text(model), expected);
  EXPECT_NE(expected.find("{\"Length\":  2.00, \"RootKeyEnh\":"), std::string::npos);

  // The other kinds of object: the reserved ones keep their comma, gaps and the start and
  // end write their type only.
  EXPECT_EQ(Json(CMarkovObject::Indexed(3)), "{\"Type\":7,\n\"Index\":3,\n}");
  CMarkovObject reserved;
  reserved.Type = kMarkovObjectReservedCount;
  EXPECT_EQ(Json(reserved), "{\"Type\":2,\n}");
  EXPECT_EQ(Json(CMarkovObject::Gap(8.0)), "{\"Type\":6}");

  // A model without history lengths still writes a file that reads back.
  VariableLengthMarkovModel none(0);
  none.StartSequence();
  none.LearnAddSymbol(chord);
  const std::string text = Text(none);
  EXPECT_NE(text.find("\"TransitionMap\":[],\n\"History\":[]"), std::string::npos);
  VariableLengthMarkovModel read(5);
  ASSERT_TRUE(Reader::VariableLengthMarkovModelFromJSONString(text, read));
  EXPECT_TRUE(read == none);
}

TEST_F(MarkovModelFile, ReadsBackWhatItWroteByteForByte) {
  VariableLengthMarkovModel model(3);
  Learn(model, {I(), vi(), IV(), V7(), I()});
  Learn(model, {I(), ChordObject(7, testing::kDominant7, 2.0), ChordObject(7, 1161, 2.0, 2), I()});
  CHarmAnlsChordWithLength slash(
      CHarmAnlsChord(CChordLite(CKeyEnh(0, TEnh_n), CSemitones(145), CKeyEnh(4, TEnh_n)), 0, 4),
      4.0);
  Learn(model, {CMarkovObject::FromChord(slash), ii(), V7()});
  // Counts above 999 widen their field.
  for (int i = 0; i < 1000; ++i) Learn(model, {I(), IV()});
  ASSERT_TRUE(model.SaveToFile(Path("model.json")));
  const std::string written = ReadFile(Path("model.json"));
  EXPECT_NE(written.find(",1002]"), std::string::npos);

  VariableLengthMarkovModel read;
  ASSERT_TRUE(Reader::VariableLengthMarkovModelFromJSONFile(Path("model.json"), read));
  EXPECT_TRUE(read == model);
  EXPECT_EQ(read.MaxHistoryLength(), 3u);
  ASSERT_TRUE(read.SaveToFile(Path("again.json")));
  EXPECT_EQ(ReadFile(Path("again.json")), written);

  // The read model answers as the learned one does.
  TMarkovProbabilities learned;
  TMarkovProbabilities reread;
  model.QueryStartSequence();
  read.QueryStartSequence();
  model.ProbabilitiesForNextSymbol(learned);
  read.ProbabilitiesForNextSymbol(reread);
  ASSERT_EQ(learned.size(), reread.size());
  for (auto a = learned.begin(), b = reread.begin(); a != learned.end(); ++a, ++b) {
    EXPECT_EQ(*a->first, *b->first);
    EXPECT_DOUBLE_EQ(a->second, b->second);
  }
}

TEST_F(MarkovModelFile, GapsLoseTheirLengthAndComeBackAsChordlessObjects) {
  VariableLengthMarkovModel model(1);
  Learn(model, {I(), CMarkovObject::Gap(8.0), IV()});
  VariableLengthMarkovModel read;
  ASSERT_TRUE(Reader::VariableLengthMarkovModelFromJSONString(Text(model), read));
  EXPECT_FALSE(read == model);
  const auto gap = std::next(read.Objects().begin(), 2);
  EXPECT_EQ(*gap, CMarkovObject());
  EXPECT_TRUE(gap->Chord.IsUndef());
  EXPECT_EQ(gap->Length(), 1.0);

  // The reserved kinds read as the default object too; indexed objects keep their index.
  using ObjectReader = CMarkovObject::JSONDeserialization_Helper;
  EXPECT_EQ(ObjectReader::CMarkovObjectFromJSONString("{\"Type\":3,\n}"), CMarkovObject());
  EXPECT_EQ(ObjectReader::CMarkovObjectFromJSONString("{\"Type\":7,\n\"Index\":12,\n}"),
            CMarkovObject::Indexed(12));
  EXPECT_EQ(ObjectReader::CMarkovObjectFromJSONString("{\"Type\":5}"), CMarkovObject::End());
  EXPECT_EQ(ObjectReader::CMarkovObjectFromJSONString("not json"), CMarkovObject());
  // A chord read from a record written by key numbers only.
  const CMarkovObject byNumbers = ObjectReader::CMarkovObjectFromJSONString(
      "{\"Type\":1, \"CHarmAnlsChordWithLength\":{\"Length\":2, \"RootKeyNr\":7, "
      "\"BassKeyNr\":15, \"Semitones\":1169, \"RootDistToHarmCenter\":7, "
      "\"BassDistToHarmCenter\":-1}}");
  EXPECT_EQ(byNumbers, ChordObject(7, testing::kDominant7, 2.0));
}

TEST_F(MarkovModelFile, WhatIsNoModelLeavesTheModelEmpty) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV()});
  EXPECT_FALSE(Reader::VariableLengthMarkovModelFromJSONFile(Path("missing.json"), model));
  EXPECT_TRUE(model.Objects().empty());
  Learn(model, {I(), IV()});
  EXPECT_FALSE(Reader::VariableLengthMarkovModelFromJSONString("{\"Model\":{}}", model));
  EXPECT_TRUE(model.TransitionMap().empty());
  EXPECT_FALSE(Reader::VariableLengthMarkovModelFromJSONString("{\"VariableLength", model));

  // Members that are missing read as nothing; indices outside the alphabet read as "no
  // object", which the model keeps apart from every object and writes as -1.
  ASSERT_TRUE(Reader::VariableLengthMarkovModelFromJSONString(
      "{\"VariableLengthMarkovModel\":{\"MaxHistoryLength\":1,"
      "\"CMarkovObjects\":[{\"Type\":4},{\"Type\":5}],"
      "\"TransitionMap\":[[[9],[[1,2],[-3,1]]],[[0],[[1,4]]],[\"odd\"]],\"History\":[1,7]}}",
      model));
  EXPECT_EQ(model.Objects().size(), 2u);
  EXPECT_EQ(model.TransitionMap().size(), 2u);
  ASSERT_EQ(model.History().size(), 2u);
  EXPECT_TRUE(model.IsNull(model.History()[1]));
  const std::string text = Text(model);
  EXPECT_NE(text.find("[[  -1],[[   1,  2],[  -1,  1]]]"), std::string::npos) << text;
  TMarkovProbabilities probabilities;
  model.ProbabilitiesForNextSymbol({model.NullSymbol()}, probabilities);
  ASSERT_EQ(probabilities.size(), 1u);
  EXPECT_DOUBLE_EQ(probabilities.begin()->second, 2.0 / 3.0);
}

TEST_F(MarkovModelFile, StatisticsFilesHoldOneIntegerALine) {
  TMarkovStatsByHistoryLength stats;
  stats[2] = {{3, 1, 1}, {2, 1}};
  VariableLengthMarkovModel::DEBUG_PrintStatsForHistoryLength(2, Path(""), stats);
  EXPECT_EQ(ReadFile(Path("transitionCountsH2.csv")), "3\n1\n1\n");
  EXPECT_EQ(ReadFile(Path("transitionPossibilitiesH2.csv")), "2\n1\n");
  // A length without statistics writes empty files; a folder that isn't there, none.
  VariableLengthMarkovModel::DEBUG_PrintStatsForHistoryLength(3, Path(""), stats);
  EXPECT_EQ(ReadFile(Path("transitionCountsH3.csv")), "");
  VariableLengthMarkovModel::DEBUG_PrintStatsForHistoryLength(2, Path("none/"), stats);
  EXPECT_FALSE(std::filesystem::exists(Path("none")));
}

TEST_F(MarkovModelFile, IndicesArePositionsInTheAlphabet) {
  CMarkovObjects objects;
  const auto first = objects.insertObjectIfUnique(I());
  const auto gap = objects.insertObjectIfUnique(CMarkovObject::Gap(2.0));
  const auto otherGap = objects.insertObjectIfUnique(CMarkovObject::Gap(4.0));
  CIteratorIndexConverter converter(objects);
  EXPECT_EQ(converter.InsertIfUniqueAndReturnIndex(first), 0);
  EXPECT_EQ(converter.InsertIfUniqueAndReturnIndex(otherGap), 2);
  // The cache goes by the order of objects, in which gaps are all alike.
  EXPECT_EQ(converter.InsertIfUniqueAndReturnIndex(gap), 2);
  EXPECT_EQ(converter.InsertIfUniqueAndReturnIndex(objects.end()), -1);
  EXPECT_EQ(converter.InsertIfUniqueAndReturnPointer(1), gap);
  EXPECT_EQ(converter.InsertIfUniqueAndReturnPointer(3), objects.end());
  EXPECT_EQ(converter.InsertIfUniqueAndReturnPointer(-1), objects.end());
}

}  // namespace
}  // namespace harmony
