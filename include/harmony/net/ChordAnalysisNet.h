#pragma once
// The pretrained net that names the root of a set of notes. Its 24 inputs are the exact
// intervals 0..23 above the lowest note (1.0 where a note sounds), its 12 outputs the root's
// key distance above the lowest note. The trained weights are generated data
// (tools/train-root-net writes src/net/ChordAnalysisWeights.cpp and data/net/).
//
// The net keeps its activations in itself, so every use of NetForSingleChordAnalysis from
// filling the inputs to reading the outputs holds ChordAnalysisNetLock().

#include <cstddef>
#include <mutex>
#include <vector>

#include "harmony/net/NetProperties.h"
#include "harmony/net/NeuronalNet.h"

namespace harmony {

class CIntvlSet;

inline constexpr std::size_t kChordAnalysisWeightCount = 24 * 15 + 15 * 15 + 15 * 12;

// The trained weights in the flat order of TPredefinedWeights.
extern const double weight_definitions[kChordAnalysisWeightCount];
// 24 inputs, 12 outputs, two hidden layers of 15, sum and sigmoid (slope 0.2, threshold 2).
extern const TPredefinedWeights ChordAnalysisNeuronalNet;
// Built from ChordAnalysisNeuronalNet when the library loads.
extern NeuronalNet NetForSingleChordAnalysis;

// The net lock, guarding NetForSingleChordAnalysis.
std::mutex& ChordAnalysisNetLock();

// The net's inputs for an interval set whose root is the lowest note: input i is 1.0 when
// the interval i is in the set, else 0.0. `inputs` is resized to `inputCount` (no allocation
// once it has that size).
void FillChordAnalysisNetInputs(const CIntvlSet& intvls, std::size_t inputCount,
                                std::vector<double>& inputs);

}  // namespace harmony
