#pragma once
// The text forms of values, for comparing them in tests.

#include <sstream>
#include <string>

namespace harmony::testing {

// What the value writes as its JSON.
template <class T>
std::string Json(const T& value) {
  std::ostringstream out;
  value.AppendJSONString(out);
  return out.str();
}

// What the value writes to a stream.
template <class T>
std::string Streamed(const T& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

}  // namespace harmony::testing
