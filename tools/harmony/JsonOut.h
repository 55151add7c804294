#pragma once
// Strict JSON for the tool's --json: a small value tree that commands fill from the library's
// values and print as one document. Numbers stay numbers, an undefined value is null, text is
// escaped and kept valid UTF-8, and members keep the order in which they were added.
//
//   Json chord = Json::Object();
//   chord.Add("name", "Dm7").Add("root", KeyJson(root, prefs)).Add("mask", 1161);
//   PrintJson(chord);

#include <concepts>
#include <cstddef>
#include <iostream>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Note.h"
#include "harmony/pitch/Semitones.h"

namespace harmony::tool {

class Json {
 public:
  Json() = default;  // null
  Json(std::nullptr_t) {}
  Json(bool value) : mValue(value) {}
  template <std::integral T>
  requires(!std::same_as<T, bool>) Json(T value) : mValue(static_cast<long long>(value)) {}
  // Infinite and NaN values have no JSON form: null.
  Json(double value);
  Json(const char* text) : mValue(std::string(text)) {}
  Json(std::string text) : mValue(std::move(text)) {}
  Json(std::string_view text) : mValue(std::string(text)) {}

  static Json Array() { return Json(Items{}); }
  static Json Object() { return Json(Members{}); }
  template <class T>
  static Json ArrayOf(const std::vector<T>& values) {
    Json array = Array();
    for (const T& value : values) array.Push(Json(value));
    return array;
  }

  // A member of an object (a key added again replaces its value); a value of an array.
  Json& Add(std::string key, Json value);
  Json& Push(Json value);

  bool IsNull() const { return std::holds_alternative<std::nullptr_t>(mValue); }
  void Write(std::ostream& out) const;
  std::string Text() const;

 private:
  using Items = std::vector<Json>;
  using Members = std::vector<std::pair<std::string, Json>>;
  explicit Json(Items items) : mValue(std::move(items)) {}
  explicit Json(Members members) : mValue(std::move(members)) {}

  std::variant<std::nullptr_t, bool, long long, double, std::string, Items, Members> mValue;
};

// The document on standard output, with a line end.
void PrintJson(const Json& json, std::ostream& out = std::cout);
// The library's own JSON of a value, on a line of its own.
template <class T>
void PrintNativeJson(const T& value, std::ostream& out = std::cout) {
  value.AppendJSONString(out);
  out << '\n';
}

// Text as a JSON string: quotes, backslashes and control characters escaped, bytes that are
// no UTF-8 replaced by U+FFFD.
std::string JsonQuoted(std::string_view text);
// Whether every byte of the text belongs to a well-formed UTF-8 sequence.
bool IsUtf8(std::string_view text);

// --- The library's values in the tool's JSON. Undefined parts are null.

// {"key": 3, "spelling": "flat", "name": "E♭"}
Json KeyJson(const CKeyEnh& key, const CChordNamePrefs& prefs);
// {"note": 61, "name": "C♯4", "key": 1, "spelling": "sharp"}, octaves as middle C is C4.
Json NoteJson(const CNote& note, const CChordNamePrefs& prefs);
// {"mask": 145, "tones": [0, 4, 7]}
Json SemitonesJson(const CSemitones& semitones);
// {"name", "root", "bass", "mask", "tones", "noChord"}
Json ChordJson(const CChordLite& chord, const CChordNamePrefs& prefs);
// {"name", "root", "type", "mask", "tones", "degrees", "signs"}
Json ScaleJson(const CScaleHeavy& scale, const CChordNamePrefs& prefs);
// {"name", "root", "type": "major" | "minor" | null, "signs"}
Json SignKeyJson(const CSignKeyLite& signKey, const CChordNamePrefs& prefs);
// "flat", "sharp", ...: the spelling's word, null when undefined.
Json EnhJson(TEnh enh);

}  // namespace harmony::tool
