#include "harmony/guitar/GChPropertyList.h"

namespace harmony {

GChPropertyList GChPropertyList::Integer(int64_t value) {
  GChPropertyList plist;
  plist.mKind = Kind::Integer;
  plist.mInteger = value;
  return plist;
}

GChPropertyList GChPropertyList::String(std::string value) {
  GChPropertyList plist;
  plist.mKind = Kind::String;
  plist.mString = std::move(value);
  return plist;
}

GChPropertyList GChPropertyList::Array() {
  GChPropertyList plist;
  plist.mKind = Kind::Array;
  return plist;
}

void GChPropertyList::append(GChPropertyList item) {
  if (mKind == Kind::Array) mItems.push_back(std::move(item));
}

void GChPropertyList::set(std::string_view key, GChPropertyList value) {
  if (mKind != Kind::Dictionary) return;
  for (size_t i = 0; i < mKeys.size(); ++i) {
    if (mKeys[i] == key) {
      mItems[i] = std::move(value);
      return;
    }
  }
  mKeys.emplace_back(key);
  mItems.push_back(std::move(value));
}

const GChPropertyList* GChPropertyList::find(std::string_view key) const {
  if (mKind != Kind::Dictionary) return nullptr;
  for (size_t i = 0; i < mKeys.size(); ++i) {
    if (mKeys[i] == key) return &mItems[i];
  }
  return nullptr;
}

}  // namespace harmony
