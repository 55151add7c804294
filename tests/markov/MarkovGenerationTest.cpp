#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "MarkovTestModels.h"
#include "harmony/markov/VariableLengthMarkovModel.h"
#include "platform/Random.h"

namespace harmony {
namespace {

using testing::ChordObject;
using testing::I;
using testing::ii;
using testing::IV;
using testing::Learn;
using testing::ObjectsOf;
using testing::V7;
using testing::vi;

// Options for a sequence of `beats` with gaps only, or the template of the given objects.
TMarkovGenerateOptions Options(VariableLengthMarkovModel& model,
                               const std::vector<CMarkovObject>& templateObjects) {
  TMarkovGenerateOptions options;
  model.IteratorSequenceForObjects(templateObjects, options.Objects);
  options.MaxHistory = model.MaxHistoryLength();
  options.MinHistory = 1;
  options.EvidenceHistory = 1;
  options.AcceptLowEntropy = true;
  options.SampleCount = 10;
  return options;
}

void LearnPopCorpus(VariableLengthMarkovModel& model) {
  Learn(model, {I(), IV(), V7(), I()});
  Learn(model, {I(), vi(), IV(), V7(), I()});
  Learn(model, {I(), vi(), ii(), V7(), I()});
  Learn(model, {vi(), IV(), I(), V7(), vi(), IV(), I(), V7(), I()});
  Learn(model, {I(), ChordObject(7, testing::kDominant7, 2.0), ChordObject(0, testing::kMajor, 2.0),
                IV(), V7(), I()});
}

TEST(MarkovGeneration, ASearchOnOneLearnedSequenceGivesThatSequence) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV(), V7(), I()});
  TMarkovSampledSequence result;
  std::vector<TMarkovSampledSequence> all;
  model.SampleSequenceWithLength(result, all, true, Options(model, {CMarkovObject::Gap(16.0)}));
  EXPECT_EQ(ObjectsOf(result.Objects), (std::vector<CMarkovObject>{I(), IV(), V7(), I()}));
  // Every sample is the same sequence: one candidate drawn ten times.
  ASSERT_EQ(all.size(), 1u);
  EXPECT_EQ(all.front().Count, 10);
  EXPECT_EQ(model.LastSamplingRun().Accepted, 10u);
  ASSERT_EQ(result.LogProbabilities.size(), 4u);
  EXPECT_DOUBLE_EQ(result.LogProbabilities.front(), 0.0);
}

TEST(MarkovGeneration, ASearchHitsTheLengthExactlyOrGivesNothing) {
  VariableLengthMarkovModel model(3);
  LearnPopCorpus(model);
  for (std::uint32_t seed : {1u, 2u, 3u, 4u, 5u}) {
    platform::SeedRandom(seed);
    TMarkovSampledSequence result;
    std::vector<TMarkovSampledSequence> all;
    model.SampleSequenceWithLength(result, all, true, Options(model, {CMarkovObject::Gap(32.0)}));
    ASSERT_FALSE(result.empty()) << "seed " << seed;
    EXPECT_DOUBLE_EQ(result.LengthInBeats(), 32.0);
    // The candidates come lightest first.
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), CompareSequencesByWeightAndEntropy));
    int counted = 0;
    for (const TMarkovSampledSequence& sequence : all) counted += sequence.Count;
    EXPECT_EQ(counted, 10);
  }

  // Only whole bars and half bars were learned after the start: six beats can't end a piece
  // the way the corpus ends. The search finds nothing, and it says so quickly.
  TMarkovSampledSequence result;
  std::vector<TMarkovSampledSequence> all;
  model.SampleSequenceWithLength(result, all, true, Options(model, {CMarkovObject::Gap(6.0)}));
  EXPECT_TRUE(result.empty());
  EXPECT_TRUE(all.empty());
  EXPECT_EQ(model.LastSamplingRun().Accepted, 0u);
  EXPECT_LT(model.LastSamplingRun().Tries, 10u);

  // Options outside the model's range leave the result alone.
  TMarkovGenerateOptions invalid = Options(model, {CMarkovObject::Gap(16.0)});
  invalid.MaxHistory = 4;
  result.LogWeight = 42.0;
  model.SampleSequenceWithLength(result, all, true, invalid);
  EXPECT_EQ(result.LogWeight, 42.0);
  EXPECT_TRUE(invalid.Validate(model));
  EXPECT_EQ(invalid.MaxHistory, 3u);
}

TEST(MarkovGeneration, ASearchKeepsTheFixedChordsOfTheTemplate) {
  VariableLengthMarkovModel model(2);
  LearnPopCorpus(model);
  for (std::uint32_t seed : {11u, 12u, 13u}) {
    platform::SeedRandom(seed);
    TMarkovSampledSequence result;
    std::vector<TMarkovSampledSequence> all;
    model.SampleSequenceWithLength(result, all, true,
                                   Options(model, {I(), CMarkovObject::Gap(8.0), V7(), I()}));
    ASSERT_FALSE(result.empty());
    EXPECT_DOUBLE_EQ(result.LengthInBeats(), 20.0);
    const std::vector<CMarkovObject> objects = ObjectsOf(result.Objects);
    EXPECT_EQ(objects.front(), I());
    ASSERT_GE(objects.size(), 4u);
    EXPECT_EQ(objects[objects.size() - 2], V7());
    EXPECT_EQ(objects.back(), I());
  }
}

TEST(MarkovGeneration, ASeedRepeatsTheResult) {
  VariableLengthMarkovModel model(3);
  LearnPopCorpus(model);
  const auto sample = [&model](std::uint32_t seed, bool recursive) {
    platform::SeedRandom(seed);
    TMarkovSampledSequence result;
    std::vector<TMarkovSampledSequence> all;
    model.SampleSequenceWithLength(result, all, recursive,
                                   Options(model, {CMarkovObject::Gap(48.0)}));
    return ObjectsOf(result.Objects);
  };
  for (bool recursive : {true, false}) {
    const std::vector<CMarkovObject> first = sample(99, recursive);
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(sample(99, recursive), first);
    bool anotherSeedDiffers = false;
    for (std::uint32_t seed = 100; seed < 110 && !anotherSeedDiffers; ++seed) {
      anotherSeedDiffers = sample(seed, recursive) != first;
    }
    EXPECT_TRUE(anotherSeedDiffers);
  }
}

TEST(MarkovGeneration, BacksOffWhereTheLongHistoryIsTooCertain) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV(), V7(), I()});
  Learn(model, {I(), IV(), V7(), I()});
  Learn(model, {vi(), IV(), I()});
  TMarkovGenerateOptions options = Options(model, {CMarkovObject::Gap(4.0)});
  options.MinNormalizedEntropy = 0.5;
  const auto symbol = [&model](const CMarkovObject& object) {
    return model.Objects().getIteratorToObject(object);
  };

  // (I, IV) leads only to V7: a single candidate has no entropy to speak of, so the step
  // backs off to (IV), which leads to V7 or I.
  TMarkovSampledSequence sequence;
  model.AppendNextSymbol(sequence, {symbol(I()), symbol(IV())}, options);
  ASSERT_EQ(sequence.SampledObjects.size(), 1u);
  EXPECT_EQ(sequence.SampledObjects[0].HistoryLength, 1u);
  EXPECT_NEAR(sequence.SampledObjects[0].MaxEntropy, std::log(2.0), 1e-12);

  // (start, I) leads to IV twice and to vi never: one candidate again, back off to (I) with
  // IV and the end; the end is not chosen here.
  sequence = TMarkovSampledSequence();
  for (int i = 0; i < 20; ++i) {
    model.AppendNextSymbol(sequence, {symbol(CMarkovObject::Start()), symbol(I())}, options);
  }
  for (const TMarkovSampledObject& sampled : sequence.SampledObjects) {
    EXPECT_EQ(*sampled.Object, IV());
    EXPECT_EQ(sampled.HistoryLength, 1u);
  }

  // Now (I, IV) leads to V7 twice and to I once, an entropy ratio of 0.92. Without a bound
  // the longer history stays; a bound above the ratio backs off to (IV).
  Learn(model, {I(), IV(), I()});
  options.MinNormalizedEntropy = 0.0;
  sequence = TMarkovSampledSequence();
  model.AppendNextSymbol(sequence, {symbol(I()), symbol(IV())}, options);
  ASSERT_EQ(sequence.size(), 1u);
  EXPECT_EQ(sequence.SampledObjects[0].HistoryLength, 2u);
  EXPECT_NEAR(sequence.SampledObjects[0].NormalizedEntropy, 0.9183, 1e-4);
  options.MinNormalizedEntropy = 0.95;
  sequence = TMarkovSampledSequence();
  model.AppendNextSymbol(sequence, {symbol(I()), symbol(IV())}, options);
  ASSERT_EQ(sequence.size(), 1u);
  EXPECT_EQ(sequence.SampledObjects[0].HistoryLength, 1u);

  // A history of one that leads only to the end ends the sequence with probability 0.
  sequence = TMarkovSampledSequence();
  model.AppendNextSymbol(sequence, {symbol(CMarkovObject::End())}, options);
  ASSERT_EQ(sequence.size(), 1u);
  EXPECT_TRUE(sequence.Objects[0]->IsEnd());
  EXPECT_EQ(sequence.SampledObjects[0].Probability, 0.0);
}

TEST(MarkovGeneration, AWalkThatMissesTheLengthIsRejected) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV(), V7(), I()});
  // Bars of four beats can't make six.
  TMarkovSampledSequence sequence;
  model.GenerateSequenceWithFixedLength(sequence, Options(model, {CMarkovObject::Gap(6.0)}));
  EXPECT_EQ(sequence.size(), 2u);
  EXPECT_EQ(sequence.LogWeight, -750.0);
  sequence = TMarkovSampledSequence();
  model.GenerateSequenceWithFixedLength(sequence, Options(model, {CMarkovObject::Gap(8.0)}));
  EXPECT_EQ(ObjectsOf(sequence.Objects), (std::vector<CMarkovObject>{I(), IV()}));
  EXPECT_EQ(sequence.LogWeight, 0.0);

  // Sampling such walks rejects every one; the run ends after its tries with nothing.
  TMarkovGenerateOptions sixBeats = Options(model, {CMarkovObject::Gap(6.0)});
  sixBeats.MaxTries = 500;
  TMarkovSampledSequence result;
  std::vector<TMarkovSampledSequence> all;
  model.SampleSequenceWithLength(result, all, false, sixBeats);
  EXPECT_TRUE(result.empty());
  EXPECT_EQ(model.LastSamplingRun().Tries, 500u);
  EXPECT_EQ(model.LastSamplingRun().Accepted, 0u);

  // A sequence of one repeated chord takes the factor for all-equal sequences.
  TMarkovGenerateOptions options = Options(model, {CMarkovObject::Gap(4.0)});
  options.AllEqualFactor = 0.5;
  sequence = TMarkovSampledSequence();
  model.GenerateSequenceWithFixedLength(sequence, options);
  EXPECT_DOUBLE_EQ(sequence.LogWeight, std::log(0.5));

  // Where the model knows no continuation at all, the walk stops instead of looping.
  VariableLengthMarkovModel empty(2);
  sequence = TMarkovSampledSequence();
  empty.GenerateSequenceWithFixedLength(sequence, Options(empty, {CMarkovObject::Gap(8.0)}));
  EXPECT_TRUE(sequence.empty());
}

TEST(MarkovGeneration, WeightsNormaliseAndChooseByShare) {
  VariableLengthMarkovModel model(1);
  Learn(model, {I(), IV()});
  TMarkovSampledSequence light;
  TMarkovSampledSequence heavy;
  heavy.Count = 3;
  TMarkovWeightedSequences weighted{{light, -1000.0}, {heavy, -998.0}};
  VariableLengthMarkovModel::NormalizeLogProbabilities(weighted);
  EXPECT_DOUBLE_EQ(weighted[1].second, 1.0);
  EXPECT_DOUBLE_EQ(weighted[0].second, std::exp(-2.0));
  EXPECT_NEAR(VariableLengthMarkovModel::SumProbabilities(weighted), 1.0 + std::exp(-2.0), 1e-12);
  platform::SeedRandom(3);
  int heavyChosen = 0;
  for (int i = 0; i < 300; ++i) {
    TMarkovSampledSequence chosen;
    model.ChooseFromWeightedSequences(weighted, chosen);
    heavyChosen += chosen.Count == 3 ? 1 : 0;
  }
  EXPECT_NEAR(heavyChosen, 300 / (1.0 + std::exp(-2.0)), 25);

  // The weight of a sequence is its count times exp(LogWeight).
  light.LogWeight = 0.0;
  heavy.LogWeight = -0.5;
  EXPECT_TRUE(CompareSequencesByWeightAndEntropy(light, heavy));
  heavy.Count = 1;
  EXPECT_TRUE(CompareSequencesByWeightAndEntropy(heavy, light));
}

}  // namespace
}  // namespace harmony
