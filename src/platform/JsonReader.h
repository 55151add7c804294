#pragma once
// Reading JSON through nlohmann/json without exceptions: a parse that reports failure by an
// empty optional, and tolerant member accessors for the dictionaries the classes write.

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "harmony/Json.h"

namespace harmony::platform {

// Parses strict JSON; an empty result for text that is not JSON.
std::optional<JsonDict> ParseJson(std::string_view text);

// The non-strict JSON that the analysis records write, made strict: a bare word other than
// true, false and null becomes a string ("Undef" for an undefined probability), and a comma
// in front of a closing bracket or brace is dropped. Strict JSON passes unchanged.
std::string RelaxedJsonToStrict(std::string_view text);
// ParseJson on the strict form.
std::optional<JsonDict> ParseRelaxedJson(std::string_view text);

// The member `key` of an object, or nullptr when `dict` is no object or lacks the key.
const JsonDict* JsonMember(const JsonDict& dict, const char* key);

// The integer value of a member: a number, or a string read like atoi (so " 5" is 5).
// `fallback` when the member is missing or holds neither.
long long JsonInteger(const JsonDict& dict, const char* key, long long fallback);

// The floating-point value of a member that is a number or a numeric string.
double JsonDouble(const JsonDict& dict, const char* key, double fallback);

// The text of a string member; `fallback` when missing or not a string.
std::string JsonString(const JsonDict& dict, const char* key, const std::string& fallback = {});

}  // namespace harmony::platform
