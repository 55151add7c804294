#pragma once
// A property list as plain values: integers, strings, arrays and dictionaries whose keys keep
// the order in which they were set. The guitar classes describe themselves in this form; the
// platform layer turns it into XML and back.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace harmony {

class GChPropertyList {
 public:
  enum class Kind { Integer, String, Array, Dictionary };

  GChPropertyList() = default;  // an empty dictionary
  static GChPropertyList Integer(int64_t value);
  static GChPropertyList String(std::string value);
  static GChPropertyList Array();
  static GChPropertyList Dictionary() { return GChPropertyList(); }

  Kind kind() const { return mKind; }
  bool isInteger() const { return mKind == Kind::Integer; }
  bool isString() const { return mKind == Kind::String; }
  bool isArray() const { return mKind == Kind::Array; }
  bool isDictionary() const { return mKind == Kind::Dictionary; }

  int64_t integerValue() const { return mInteger; }
  const std::string& stringValue() const { return mString; }

  // Array items, or dictionary values in the order of keys().
  const std::vector<GChPropertyList>& items() const { return mItems; }
  const std::vector<std::string>& keys() const { return mKeys; }

  // Appends to an array.
  void append(GChPropertyList item);
  // Sets a dictionary entry; an existing key keeps its place and takes the new value.
  void set(std::string_view key, GChPropertyList value);
  // The value under `key`, or nullptr when missing or when this is no dictionary.
  const GChPropertyList* find(std::string_view key) const;

  bool operator==(const GChPropertyList&) const = default;

 private:
  Kind mKind = Kind::Dictionary;
  int64_t mInteger = 0;
  std::string mString;
  std::vector<std::string> mKeys;
  std::vector<GChPropertyList> mItems;
};

}  // namespace harmony
