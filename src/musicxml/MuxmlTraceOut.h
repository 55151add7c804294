#pragma once
// Writes the fields of a MusicXML record for its trace forms: "name value" pairs for the
// debug form, "name = value" for the initializer form, undefined values as "undef" and
// vocabulary values as their words.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony::musicxml {

class TMuxmlFieldOut {
 public:
  // `between` stands between a name and its value (" " or " = ").
  TMuxmlFieldOut(std::ostream& out, std::string_view between) : _out(out), _between(between) {}

  template <class T>
  TMuxmlFieldOut& operator()(std::string_view name, const T& value) {
    Name(name);
    Write(value);
    return *this;
  }

  template <class TEnum>
  TMuxmlFieldOut& Enum(std::string_view name, typename TEnum::TType value) {
    Name(name);
    const std::string word = MuxmlEnumWord<TEnum>(value);
    if (!word.empty()) {
      _out << word;
    } else {
      Write(static_cast<std::int32_t>(value));
    }
    return *this;
  }

 private:
  void Name(std::string_view name) {
    if (!_first) _out << ", ";
    _first = false;
    _out << name << _between;
  }
  void Write(std::int32_t value) {
    if (value == kMuxmlUndef32) {
      _out << "undef";
    } else {
      _out << value;
    }
  }
  void Write(std::int64_t value) { _out << value; }
  void Write(std::uint64_t value) { _out << value; }
  void Write(std::uint8_t value) { _out << static_cast<int>(value); }
  void Write(float value) { _out << value; }
  void Write(bool value) { _out << (value ? "true" : "false"); }
  void Write(const std::string& value) { _out << '"' << value << '"'; }
  void Write(const CXMLElement& element) {
    if (element.IsNone()) {
      _out << "none";
    } else {
      _out << '<' << element.Name() << '>';
    }
  }
  void Write(const CXMLElements& elements) { _out << elements.size() << " elements"; }
  void Write(const std::vector<int>& values) {
    _out << '[';
    for (std::size_t i = 0; i < values.size(); ++i) _out << (i == 0 ? "" : ", ") << values[i];
    _out << ']';
  }

  std::ostream& _out;
  std::string_view _between;
  bool _first = true;
};

}  // namespace harmony::musicxml
