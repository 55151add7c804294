#include "platform/JsonReader.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace harmony::platform {

namespace {

// A float member read as an integer: truncated, and saturated where it leaves the range, since
// converting an out-of-range double is undefined.
long long SaturatedInteger(double value, long long fallback) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (std::isnan(value)) return fallback;
  if (value >= kTwoTo63) return std::numeric_limits<long long>::max();
  if (value < -kTwoTo63) return std::numeric_limits<long long>::min();
  return static_cast<long long>(value);
}

}  // namespace

std::optional<JsonDict> ParseJson(std::string_view text) {
  JsonDict parsed = JsonDict::parse(text.begin(), text.end(), nullptr, /*allow_exceptions=*/false);
  if (parsed.is_discarded()) return std::nullopt;
  return parsed;
}

const JsonDict* JsonMember(const JsonDict& dict, const char* key) {
  if (!dict.is_object()) return nullptr;
  auto it = dict.find(key);
  return it == dict.end() ? nullptr : &*it;
}

long long JsonInteger(const JsonDict& dict, const char* key, long long fallback) {
  const JsonDict* member = JsonMember(dict, key);
  if (member == nullptr) return fallback;
  if (member->is_number_integer()) return member->get<long long>();
  if (member->is_number_unsigned())
    return static_cast<long long>(member->get<unsigned long long>());
  if (member->is_number_float()) return SaturatedInteger(member->get<double>(), fallback);
  if (member->is_string()) return std::atoll(member->get_ref<const std::string&>().c_str());
  return fallback;
}

double JsonDouble(const JsonDict& dict, const char* key, double fallback) {
  const JsonDict* member = JsonMember(dict, key);
  if (member == nullptr) return fallback;
  if (member->is_number()) return member->get<double>();
  if (member->is_string()) return std::atof(member->get_ref<const std::string&>().c_str());
  return fallback;
}

std::string JsonString(const JsonDict& dict, const char* key, const std::string& fallback) {
  const JsonDict* member = JsonMember(dict, key);
  if (member == nullptr || !member->is_string()) return fallback;
  return member->get<std::string>();
}

}  // namespace harmony::platform
