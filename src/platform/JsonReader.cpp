#include "platform/JsonReader.h"

#include <algorithm>
#include <cctype>
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

bool IsWordStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool IsWordChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNumberChar(char c) {
  return IsDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// The end of the string literal that opens at `begin`, behind its closing quote.
std::size_t StringEnd(std::string_view text, std::size_t begin) {
  std::size_t i = begin + 1;
  while (i < text.size() && text[i] != '"') i += text[i] == '\\' ? 2 : 1;
  return std::min(i + 1, text.size());
}

bool CommaBeforeClosing(std::string_view text, std::size_t comma) {
  std::size_t i = comma + 1;
  while (i < text.size() && IsBlank(text[i])) ++i;
  return i < text.size() && (text[i] == ']' || text[i] == '}');
}

}  // namespace

std::string RelaxedJsonToStrict(std::string_view text) {
  std::string strict;
  strict.reserve(text.size() + 16);
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    std::size_t end = i + 1;
    if (c == '"') {
      end = StringEnd(text, i);
      strict.append(text.substr(i, end - i));
    } else if (c == ',' && CommaBeforeClosing(text, i)) {
      // dropped
    } else if (IsDigit(c) || (c == '-' && i + 1 < text.size() && !IsWordStart(text[i + 1]))) {
      while (end < text.size() && IsNumberChar(text[end])) ++end;
      strict.append(text.substr(i, end - i));
    } else if (IsWordStart(c) || c == '-') {
      // A word, or a minus in front of one as in "-nan".
      while (end < text.size() && IsWordChar(text[end])) ++end;
      const std::string_view word = text.substr(i, end - i);
      const bool literal = word == "true" || word == "false" || word == "null";
      if (!literal) strict += '"';
      strict.append(word);
      if (!literal) strict += '"';
    } else {
      strict += c;
    }
    i = end;
  }
  return strict;
}

std::optional<JsonDict> ParseRelaxedJson(std::string_view text) {
  return ParseJson(RelaxedJsonToStrict(text));
}

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
