#pragma once
// The attributes of one XML element as the event-driven reader delivers them: names and
// values, valid during the event only. The readers of the MusicXML records take them.

#include <cstddef>
#include <deque>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace harmony {

class CXMLAttributes {
 public:
  CXMLAttributes() = default;
  // Names and values that outlive the object (string literals in tests).
  CXMLAttributes(std::initializer_list<std::pair<std::string_view, std::string_view>> entries) {
    for (const auto& [name, value] : entries) _Add(name, value);
  }

  std::size_t size() const { return _entries.size(); }
  std::string_view Name(std::size_t i) const { return _entries[i].first; }
  std::string_view Value(std::size_t i) const { return _entries[i].second; }
  // The value of the attribute `name`, or nothing when the element lacks it.
  std::optional<std::string_view> Find(std::string_view name) const;
  // The value, or "" when the element lacks it.
  std::string_view ValueOr(std::string_view name, std::string_view fallback = {}) const;

  // Filled by the dispatcher.
  void _Clear() {
    _entries.clear();
    _decoded.clear();
  }
  void _Add(std::string_view name, std::string_view rawValue);

 private:
  std::vector<std::pair<std::string_view, std::string_view>> _entries;
  // Values that needed decoding; a deque keeps each string in place while more are added.
  std::deque<std::string> _decoded;
};

}  // namespace harmony
