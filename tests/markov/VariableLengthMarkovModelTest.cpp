#include "harmony/markov/VariableLengthMarkovModel.h"

#include <gtest/gtest.h>

#include <cmath>

#include "MarkovTestModels.h"
#include "platform/Random.h"

namespace harmony {
namespace {

using testing::ChordObject;
using testing::I;
using testing::IV;
using testing::Learn;
using testing::V7;
using testing::vi;

std::uint64_t CountAfter(VariableLengthMarkovModel& model,
                         const std::vector<CMarkovObject>& history, const CMarkovObject& next) {
  TMarkovHistory symbols;
  model.IteratorSequenceForObjects(history, symbols);
  const auto entry = model.TransitionMap().find(symbols);
  if (entry == model.TransitionMap().end()) return 0;
  for (const auto& [symbol, count] : entry->second) {
    if (*symbol == next) return count;
  }
  return 0;
}

TEST(VariableLengthMarkovModel, LearnsEveryHistoryLengthAtOnce) {
  VariableLengthMarkovModel model(3);
  const CMarkovObject start = CMarkovObject::Start();
  const CMarkovObject end = CMarkovObject::End();
  model.StartSequence();
  model.LearnAddSymbol(I());
  // The first chord after the start is counted after one, two and three start symbols.
  EXPECT_EQ(CountAfter(model, {start}, I()), 1u);
  EXPECT_EQ(CountAfter(model, {start, start}, I()), 1u);
  EXPECT_EQ(CountAfter(model, {start, start, start}, I()), 1u);
  EXPECT_EQ(model.TransitionMap().size(), 3u);
  model.LearnAddSymbol(IV());
  model.LearnAddSymbol(V7());
  model.LearnAddSymbol(I());
  model.EndSequence();

  // n symbols and three end symbols, each counted at three history lengths.
  EXPECT_EQ(testing::TotalCount(model), 3u * (4u + 3u));
  EXPECT_EQ(CountAfter(model, {I()}, IV()), 1u);
  EXPECT_EQ(CountAfter(model, {I()}, end), 1u);
  EXPECT_EQ(CountAfter(model, {start, I(), IV()}, V7()), 1u);
  EXPECT_EQ(CountAfter(model, {V7(), I()}, end), 1u);
  // The end is learned after histories that end in end symbols too.
  EXPECT_EQ(CountAfter(model, {I(), end}, end), 1u);
  EXPECT_EQ(CountAfter(model, {I(), end, end}, end), 1u);
  // The history keeps its length and ends in the flushed end symbols.
  ASSERT_EQ(model.History().size(), 3u);
  EXPECT_EQ(*model.History().back(), end);

  // A second sequence adds to the same tables.
  Learn(model, {I(), IV(), I()});
  EXPECT_EQ(CountAfter(model, {I()}, IV()), 2u);
  EXPECT_EQ(CountAfter(model, {start, start, start}, I()), 2u);
  EXPECT_EQ(testing::TotalCount(model), 3u * (4u + 3u) + 3u * (3u + 3u));
}

TEST(VariableLengthMarkovModel, SymbolsAreChordsRelativeToTheirCenter) {
  VariableLengthMarkovModel model(2);
  CMarkovObjects& objects = model.Objects();
  // A dominant seventh five semitones above its center, once spelled on F, once on B flat.
  const auto onF = objects.insertObjectIfUnique(ChordObject(7, testing::kDominant7, 4.0, 5));
  const auto onBb = objects.insertObjectIfUnique(ChordObject(7, testing::kDominant7, 4.0, 10));
  EXPECT_EQ(onF, onBb);
  // The same chord of another length, or at another distance, is another symbol.
  const auto half = objects.insertObjectIfUnique(ChordObject(7, testing::kDominant7, 2.0));
  const auto fourth = objects.insertObjectIfUnique(ChordObject(5, testing::kDominant7, 4.0));
  EXPECT_NE(half, onF);
  EXPECT_NE(fourth, onF);
  EXPECT_EQ(objects.size(), 3u);

  // Order: by type, then root distance, length, bass distance and tones.
  EXPECT_TRUE(ChordObject(5, testing::kDominant7) < ChordObject(7, testing::kMajor));
  EXPECT_TRUE(ChordObject(7, testing::kDominant7, 2.0) < ChordObject(7, testing::kMajor, 4.0));
  EXPECT_TRUE(ChordObject(7, testing::kMajor) < ChordObject(7, testing::kDominant7));
  EXPECT_TRUE(ChordObject(11, testing::kMajor) < CMarkovObject::Start());
  EXPECT_TRUE(CMarkovObject::Indexed(1) < CMarkovObject::Indexed(2));
  // Gaps of any length are equivalent in the order, but distinct symbols.
  EXPECT_FALSE(CMarkovObject::Gap(2.0) < CMarkovObject::Gap(4.0));
  EXPECT_FALSE(CMarkovObject::Gap(2.0) == CMarkovObject::Gap(4.0));
}

TEST(VariableLengthMarkovModel, QueriesReadTheLearnedTables) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV(), V7(), I()});
  Learn(model, {I(), vi(), IV(), V7(), I()});

  model.QueryStartSequence();
  model.QueryAddSymbol(I());
  TMarkovProbabilities probabilities;
  model.ProbabilitiesForNextSymbol(probabilities);
  // After (start, I): IV once, vi once.
  ASSERT_EQ(probabilities.size(), 2u);
  for (const auto& [symbol, probability] : probabilities) EXPECT_DOUBLE_EQ(probability, 0.5);
  // After I alone: IV, vi and the end twice, out of four.
  model.ProbabilitiesForNextSymbol(1, probabilities);
  EXPECT_EQ(probabilities.size(), 3u);
  EXPECT_NEAR(VariableLengthMarkovModel::SumProbabilities(probabilities), 1.0, 1e-12);

  // Taking the step back restores the history before it.
  const TMarkovHistory before = model.History();
  model.QueryAddSymbol(V7());
  model.QueryRemoveLastItem();
  EXPECT_EQ(model.History(), before);

  // An unknown history gives nothing; lengths are brought into range.
  model.QueryAddSymbol(ChordObject(1, testing::kMinor));
  model.ProbabilitiesForNextSymbol(probabilities);
  EXPECT_TRUE(probabilities.empty());
  unsigned long length = 0;
  model.ValidateHistoryLength(length);
  EXPECT_EQ(length, 1u);
  length = 9;
  model.ValidateHistoryLength(length);
  EXPECT_EQ(length, 2u);

  // A history shorter than asked is padded with start symbols.
  TMarkovHistory padded;
  model.Subvector(3, {model.Objects().getIteratorToObject(I())}, padded);
  ASSERT_EQ(padded.size(), 3u);
  EXPECT_TRUE(padded[0]->IsStart());
  EXPECT_TRUE(padded[1]->IsStart());
  EXPECT_EQ(*padded[2], I());
}

TEST(VariableLengthMarkovModel, StartSymbolsCountInTheTotalButAreNeverProposed) {
  // A history once followed by a start symbol (only a hand-made table does that) and once by
  // IV: the start takes its share of the total without being a candidate.
  VariableLengthMarkovModel model(1);
  model.StartSequence();
  model.LearnAddSymbol(I());
  model.LearnAddSymbol(CMarkovObject::Start());
  model.StartSequence();
  model.LearnAddSymbol(I());
  model.LearnAddSymbol(IV());
  TMarkovProbabilities probabilities;
  model.ProbabilitiesForNextSymbol({model.Objects().getIteratorToObject(I())}, probabilities);
  ASSERT_EQ(probabilities.size(), 1u);
  EXPECT_EQ(*probabilities.begin()->first, IV());
  EXPECT_DOUBLE_EQ(probabilities.begin()->second, 0.5);
}

TEST(VariableLengthMarkovModel, ProbabilityMapsChooseAndMeasure) {
  VariableLengthMarkovModel model(1);
  CMarkovObjects& objects = model.Objects();
  TMarkovProbabilities probabilities(model.SymbolLess());
  EXPECT_TRUE(model.IsNull(model.ChooseFromProbabilities(probabilities)));
  EXPECT_DOUBLE_EQ(VariableLengthMarkovModel::CalculateEntropy(probabilities), 0.0);

  const auto whole = objects.insertObjectIfUnique(ChordObject(0, testing::kMajor, 4.0));
  const auto half = objects.insertObjectIfUnique(ChordObject(7, testing::kMajor, 2.0));
  const auto end = objects.insertObjectIfUnique(CMarkovObject::End());
  const auto gap = objects.insertObjectIfUnique(CMarkovObject::Gap(8.0));
  probabilities = {{whole, 0.25}, {half, 0.25}, {end, 0.25}, {gap, 0.25}};
  EXPECT_NEAR(VariableLengthMarkovModel::CalculateEntropy(probabilities), std::log(4.0), 1e-12);
  EXPECT_EQ(VariableLengthMarkovModel::GetMaxLengthFromProbabilities(probabilities), 8u);

  // Three beats left: the whole-bar chord and the end go, the gap stays whatever its length.
  TMarkovProbabilities fitting = probabilities;
  VariableLengthMarkovModel::RemoveNonFittingSymbolsFromProbabilities(fitting, 3.0);
  EXPECT_EQ(fitting.size(), 2u);
  EXPECT_EQ(fitting.count(half), 1u);
  EXPECT_EQ(fitting.count(gap), 1u);
  VariableLengthMarkovModel::RemoveItemsFromProbabilities(
      fitting, TMarkovSymbolSet({gap}, model.SymbolLess()));
  EXPECT_EQ(fitting.size(), 1u);

  // Choosing follows the weights: a symbol of weight 0 never comes, and a seed repeats.
  probabilities = {{whole, 3.0}, {half, 1.0}, {end, 0.0}};
  platform::SeedRandom(7);
  int wholeCount = 0;
  std::vector<TMarkovSymbol> first;
  for (int i = 0; i < 400; ++i) {
    const TMarkovSymbol chosen = model.ChooseFromProbabilities(probabilities);
    ASSERT_FALSE(model.IsNull(chosen));
    EXPECT_NE(chosen, end);
    wholeCount += chosen == whole ? 1 : 0;
    first.push_back(chosen);
  }
  EXPECT_NEAR(wholeCount, 300, 40);
  platform::SeedRandom(7);
  for (const TMarkovSymbol& expected : first) {
    EXPECT_EQ(model.ChooseFromProbabilities(probabilities), expected);
  }

  // All weights 0: no running sum passes the threshold.
  probabilities = {{whole, 0.0}};
  EXPECT_TRUE(model.IsNull(model.ChooseFromProbabilities(probabilities)));
}

TEST(VariableLengthMarkovModel, EqualityComparesObjectsNotIterators) {
  VariableLengthMarkovModel a(2);
  VariableLengthMarkovModel b(2);
  Learn(a, {I(), IV(), V7(), I()});
  Learn(b, {I(), IV(), V7(), I()});
  EXPECT_TRUE(a == b);
  b.LearnAddSymbol(IV());
  EXPECT_FALSE(a == b);

  VariableLengthMarkovModel c(3);
  Learn(c, {I(), IV(), V7(), I()});
  EXPECT_FALSE(a == c);

  a.Clear();
  EXPECT_TRUE(a.Objects().empty());
  EXPECT_TRUE(a.TransitionMap().empty());
  EXPECT_TRUE(a.History().empty());
}

}  // namespace
}  // namespace harmony
