#include <gtest/gtest.h>

#include <cmath>

#include "MarkovTestModels.h"
#include "harmony/markov/VariableLengthMarkovModel.h"
#include "platform/Log.h"
#include "platform/Random.h"

namespace harmony {
namespace {

using testing::ChordObject;
using testing::I;
using testing::ii;
using testing::IV;
using testing::Learn;
using testing::V7;
using testing::vi;

// Counts the lines the model writes to the platform log while it lives.
class LogCounter {
 public:
  LogCounter() {
    _previous = platform::SetLogHandler([this](std::string_view) { ++Lines; });
  }
  ~LogCounter() { platform::SetLogHandler(_previous); }
  int Lines = 0;

 private:
  platform::LogHandler _previous;
};

// The evidence of a finished sequence whose every chord is fixed.
double Evidence(VariableLengthMarkovModel& model, const std::vector<CMarkovObject>& chords,
                std::uint64_t evidenceHistory) {
  TMarkovSampledSequence sequence;
  TMarkovGenerateOptions options;
  model.IteratorSequenceForObjects(chords, options.Objects);
  for (const TMarkovSymbol& symbol : options.Objects) sequence.Append({1.0, 0, 0, 0, symbol});
  options.MaxHistory = model.MaxHistoryLength();
  options.EvidenceHistory = evidenceHistory;
  model.CalculateEvidenceProbability(sequence, options);
  return sequence.LogWeight;
}

TEST(MarkovEvidence, WindowsReachingFixedPlacesAddTheirLogProbability) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV()});
  // Every window of one chord before each fixed place, and the start and end around them,
  // was learned with certainty.
  EXPECT_DOUBLE_EQ(Evidence(model, {I(), IV()}, 1), 0.0);
  // Reversed, none of the five windows knows what follows it.
  LogCounter log;
  EXPECT_DOUBLE_EQ(Evidence(model, {IV(), I()}, 1), 5 * kMarkovUnseenLogProbability);
  EXPECT_EQ(log.Lines, 0);
  // With windows as long as the longest history, a window of fixed chords only says nothing
  // new and is skipped; the two windows that reach past the end hold an end symbol, which
  // isn't fixed, and (I, end) was never learned: each writes a line to the log.
  EXPECT_DOUBLE_EQ(Evidence(model, {IV(), I()}, 2), 2 * kMarkovUnseenLogProbability);
  EXPECT_EQ(log.Lines, 2);
}

TEST(MarkovEvidence, RanksACommonProgressionAboveItsChordsScrambled) {
  VariableLengthMarkovModel model(3);
  for (int i = 0; i < 3; ++i) {
    Learn(model, {I(), vi(), IV(), V7(), I()});
    Learn(model, {I(), IV(), V7(), I(), vi(), ii(), V7(), I()});
    Learn(model, {vi(), IV(), I(), V7(), vi(), IV(), I(), V7()});
  }
  const double common = Evidence(model, {I(), vi(), ii(), V7(), I()}, 2);
  const double scrambled = Evidence(model, {V7(), ii(), I(), I(), vi()}, 2);
  EXPECT_GT(common, scrambled);
  EXPECT_GT(common, 4 * kMarkovUnseenLogProbability);
  // A sequence of one repeated chord also takes the factor for all-equal sequences.
  TMarkovSampledSequence sequence;
  TMarkovGenerateOptions options;
  model.IteratorSequenceForObjects({I(), I()}, options.Objects);
  for (const TMarkovSymbol& symbol : options.Objects) sequence.Append({1.0, 0, 0, 0, symbol});
  options.MaxHistory = 3;
  options.EvidenceHistory = 2;
  options.AllEqualFactor = 0.25;
  model.CalculateEvidenceProbability(sequence, options);
  EXPECT_DOUBLE_EQ(sequence.LogWeight, std::log(0.25) + Evidence(model, {I(), I()}, 2));
}

TEST(MarkovEvidence, FillsAGapByWhatComesBeforeIt) {
  VariableLengthMarkovModel model(2);
  for (int i = 0; i < 3; ++i) Learn(model, {I(), IV(), V7(), I()});
  Learn(model, {I(), vi(), IV(), V7(), I()});
  Learn(model, {ii(), V7(), I(), vi()});
  const auto symbol = [&model](const CMarkovObject& object) {
    return model.Objects().insertObjectIfUnique(object);
  };
  platform::SeedRandom(5);
  // After I and IV only V7 was ever heard.
  for (int i = 0; i < 20; ++i) {
    const TMarkovSymbol chosen = model.FillGapInSequence(
        {symbol(I()), symbol(IV()), symbol(CMarkovObject::Gap(4.0)), symbol(I())});
    ASSERT_FALSE(model.IsNull(chosen));
    EXPECT_EQ(*chosen, V7());
  }
  // After V7 and I: the end (four times) or vi (once); anything else never.
  int endCount = 0;
  for (int i = 0; i < 200; ++i) {
    const TMarkovSymbol chosen = model.FillGapInSequence(
        {symbol(ii()), symbol(V7()), symbol(I()), symbol(CMarkovObject::Gap(4.0))});
    ASSERT_FALSE(model.IsNull(chosen));
    EXPECT_TRUE(chosen->IsEnd() || *chosen == vi()) << chosen->TraceBriefString();
    endCount += chosen->IsEnd() ? 1 : 0;
  }
  EXPECT_NEAR(endCount, 160, 25);
  // Without a gap the first object is the one replaced: only the first candidate (I) hears
  // (I, IV), which never led to I; the others hear the gap symbol in its place. Nothing.
  EXPECT_TRUE(model.IsNull(model.FillGapInSequence({symbol(I()), symbol(IV())})));
  // With one entry of history, that first candidate is all there is: I after I, never heard.
  VariableLengthMarkovModel shortModel(1);
  Learn(shortModel, {I(), I(), IV()});
  const TMarkovSymbol onlyI =
      shortModel.FillGapInSequence({shortModel.Objects().getIteratorToObject(I()),
                                    shortModel.Objects().getIteratorToObject(IV())});
  ASSERT_FALSE(shortModel.IsNull(onlyI));
  EXPECT_EQ(*onlyI, I());
  // A history the model never heard leaves every score at 0: nothing is proposed.
  EXPECT_TRUE(model.IsNull(model.FillGapInSequence({symbol(ChordObject(1, testing::kMinor)),
                                                    symbol(ChordObject(3, testing::kMinor)),
                                                    symbol(CMarkovObject::Gap())})));
}

TEST(MarkovEvidence, AModelWithoutChordsProposesNothing) {
  VariableLengthMarkovModel model(2);
  model.StartSequence();
  EXPECT_TRUE(model.IsNull(
      model.FillGapInSequence({model.Objects().insertObjectIfUnique(CMarkovObject::Gap())})));
  EXPECT_TRUE(model.IsNull(model.FillGapInSequence({})));
}

TEST(MarkovEvidence, NextGivenObjectIsTheNextFixedChordOfTheTemplate) {
  VariableLengthMarkovModel model(2);
  Learn(model, {I(), IV()});
  TMarkovHistory templateObjects;
  model.IteratorSequenceForObjects({I(), CMarkovObject::Gap(6.0), IV(), CMarkovObject::Gap(2.0)},
                                   templateObjects);
  TMarkovSymbol next;
  double distance = 0.0;
  model.NextGivenObjectAndDistance(next, distance, templateObjects, 0.0);
  EXPECT_EQ(*next, I());
  EXPECT_EQ(distance, 0.0);
  model.NextGivenObjectAndDistance(next, distance, templateObjects, 1.0);
  EXPECT_EQ(*next, IV());
  EXPECT_EQ(distance, 9.0);
  model.NextGivenObjectAndDistance(next, distance, templateObjects, 11.0);
  EXPECT_TRUE(next->IsEnd());
  EXPECT_EQ(distance, 5.0);
}

}  // namespace
}  // namespace harmony
