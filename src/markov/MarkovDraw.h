#pragma once
// The draw every random choice of the Markov model makes: two numbers of the platform's
// 32-bit source, the first thrown away, the second as a share of the largest.

#include "platform/Random.h"

namespace harmony::markov_detail {

inline double DrawUnit() {
  platform::Random32();
  return static_cast<double>(platform::Random32()) / 4294967295.0;
}

}  // namespace harmony::markov_detail
