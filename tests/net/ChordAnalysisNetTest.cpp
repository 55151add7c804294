#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "harmony/net/ChordAnalysisNet.h"
#include "harmony/pitch/IntvlSet.h"

namespace harmony {
namespace {

TEST(ChordAnalysisNet, TableShapeAndLoadedNet) {
  const TPredefinedWeights& record = ChordAnalysisNeuronalNet;
  EXPECT_EQ(record.mFixedProp.mInputCount, 24);
  EXPECT_EQ(record.mFixedProp.mOutputCount, 12);
  EXPECT_EQ(record.mDynProp.mHiddenLayerCount, 2);
  EXPECT_EQ(record.mDynProp.mHiddenLayerSizes[0], 15);
  EXPECT_EQ(record.mDynProp.mHiddenLayerSizes[1], 15);
  const TNeuronProp& p = record.mDynProp.mNeuronProp;
  EXPECT_EQ(p.mInputType, INPUT_SUM);
  EXPECT_EQ(p.mActivationType, ACT_SIGM);
  EXPECT_EQ(p.mActivationSlope, 0.2);
  EXPECT_EQ(p.mActivationThreshold, 2.0);
  EXPECT_EQ(p.mOutputType, OUTPUT_NONE);
  EXPECT_EQ(p.mOutputThreshold, 0.0);
  EXPECT_EQ(record.mWeights, weight_definitions);
  EXPECT_EQ(kChordAnalysisWeightCount, 765u);
  EXPECT_TRUE(std::all_of(weight_definitions, weight_definitions + kChordAnalysisWeightCount,
                          [](double w) { return std::isfinite(w); }));

  // The shared net holds the table in flat order: layer 1 from 360, the output layer from 585.
  const std::lock_guard<std::mutex> lock(ChordAnalysisNetLock());
  const NeuronalNet& net = NetForSingleChordAnalysis;
  EXPECT_EQ(net.get_input_neuron_count(), 24);
  EXPECT_EQ(net.get_hidden_layer(0)[0].mWeights[0], weight_definitions[0]);
  EXPECT_EQ(net.get_hidden_layer(1)[0].mWeights[0], weight_definitions[360]);
  EXPECT_EQ(net.get_output_layer()[0].mWeights[0], weight_definitions[585]);
  EXPECT_EQ(net.get_output_layer()[11].mWeights[14], weight_definitions[764]);
}

TEST(ChordAnalysisNet, InputsFromIntervals) {
  std::vector<double> inputs(3, 7.0);
  FillChordAnalysisNetInputs(CIntvlSet{0, 4, 7, 23, 30}, 24, inputs);
  ASSERT_EQ(inputs.size(), 24u);
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const bool on = i == 0 || i == 4 || i == 7 || i == 23;
    EXPECT_EQ(inputs[i], on ? 1.0 : 0.0) << i;
  }
}

}  // namespace
}  // namespace harmony
