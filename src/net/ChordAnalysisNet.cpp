// The shared root-detection net, built from its trained table when the library loads.

#include "harmony/net/ChordAnalysisNet.h"

namespace harmony {
namespace {

NeuronalNet _BuildChordAnalysisNet() {
  NeuronalNet net(ChordAnalysisNeuronalNet.mFixedProp, ChordAnalysisNeuronalNet.mDynProp);
  net.acquire_weights(ChordAnalysisNeuronalNet);
  return net;
}

}  // namespace

// The table is constant data, initialised before any code runs, so building from it here
// is safe whatever the order of the library's initialisers.
NeuronalNet NetForSingleChordAnalysis = _BuildChordAnalysisNet();

std::mutex& ChordAnalysisNetLock() {
  static std::mutex lock;
  return lock;
}

}  // namespace harmony
