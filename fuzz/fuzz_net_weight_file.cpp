// Reads arbitrary bytes as a net weight file into a small net, which must then run.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

#include "harmony/net/NeuronalNet.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The reader reports every weight on stdout.
  if (std::freopen("/dev/null", "w", stdout) == nullptr) return 1;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::int32_t kHidden[] = {4, 3};
  harmony::NeuronalNet net(3, 2, kHidden, 2, harmony::INPUT_SUM, harmony::ACT_SIGM, 0.2, 2.0,
                           harmony::OUTPUT_NONE, 0.0);
  const std::size_t weightCount = net.get_weight_count();
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
  if (!net.load_weights_from_stream(in)) __builtin_trap();
  if (net.get_weight_count() != weightCount) __builtin_trap();
  net.use({1.0, -1.0, 0.5});
  if (net.winner() < 0 || net.winner() >= 2) __builtin_trap();
  return 0;
}
