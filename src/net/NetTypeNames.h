#pragma once
// The names of the neuron types as the net's text files and C source write them.

#include <cstddef>
#include <iterator>

#include "harmony/net/NetProperties.h"

namespace harmony {

constexpr const char* kInputTypeNames[] = {"INPUT_SUM", "INPUT_MIN", "INPUT_MAX", "INPUT_AVG",
                                           "INPUT_PROD"};
constexpr const char* kActTypeNames[] = {"ACT_SIGM", "ACT_LIN", "ACT_TANHYP", "ACT_IDENT"};
constexpr const char* kOutputTypeNames[] = {"OUTPUT_NONE", "OUTPUT_BIN"};

// The entry of `table` for an enumeration value, or "" for a value outside it.
template <std::size_t N, class Enum>
const char* _NameOf(const char* const (&table)[N], Enum value) {
  const auto index = static_cast<std::size_t>(value);
  return index < N ? table[index] : "";
}

}  // namespace harmony
