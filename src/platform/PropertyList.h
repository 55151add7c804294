#pragma once
// Property lists through libplist: the XML form of a GChPropertyList, and reading XML or
// binary property lists back into one. Integers are 64-bit and may be negative.

#include <cstddef>
#include <optional>
#include <string>

#include "harmony/guitar/GChPropertyList.h"

namespace harmony::platform {

std::string PropertyListToXml(const GChPropertyList& plist);
// Nothing for bytes that are no property list, or that hold types other than integers,
// strings, arrays and dictionaries (booleans read as 0 and 1).
std::optional<GChPropertyList> PropertyListFromBytes(const char* bytes, size_t length);

}  // namespace harmony::platform
