// Reads arbitrary bytes as a net property file. When the properties describe a small net, the
// net is built and its file form must read back to the same shape and neuron types.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

#include "harmony/net/NeuronalNet.h"

namespace {

bool Small(const harmony::TFixedNetProp& fixed, const harmony::TDynNetProp& dyn) {
  if (fixed.mInputCount > 32 || fixed.mOutputCount > 32) return false;
  for (int layer = 0; layer < harmony::kMaxHiddenLayers; ++layer) {
    if (dyn.mHiddenLayerSizes[layer] > 32) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The reader reports what it recognises on stdout.
  if (std::freopen("/dev/null", "w", stdout) == nullptr) return 1;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
  const auto [fixed, dyn] = harmony::NeuronalNet::load_net_properties_from_stream(in);
  if (!Small(fixed, dyn)) return 0;

  harmony::NeuronalNet net(fixed, dyn);
  net.use();
  std::istringstream written(net.weights_to_text(4, -1.0, -1, {}));
  const auto [fixed2, dyn2] = harmony::NeuronalNet::load_net_properties_from_stream(written);
  if (fixed2.mInputCount != fixed.mInputCount || fixed2.mOutputCount != fixed.mOutputCount ||
      dyn2.mHiddenLayerCount != dyn.mHiddenLayerCount) {
    __builtin_trap();
  }
  for (int layer = 0; layer < dyn.mHiddenLayerCount && layer < harmony::kMaxHiddenLayers; ++layer) {
    if (dyn2.mHiddenLayerSizes[layer] != dyn.mHiddenLayerSizes[layer]) __builtin_trap();
  }
  const harmony::TNeuronProp& p = dyn.mNeuronProp;
  const harmony::TNeuronProp& p2 = dyn2.mNeuronProp;
  if (p2.mInputType != p.mInputType || p2.mActivationType != p.mActivationType ||
      p2.mOutputType != p.mOutputType) {
    __builtin_trap();
  }
  return 0;
}
