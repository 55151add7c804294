// Reads arbitrary bytes as a property list of chord grids, as "harmony grids import" does.
// Every grid read must give its property list back unchanged when read again, and that list
// must write as XML.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "harmony/guitar/GChBasicChord.h"
#include "platform/PropertyList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using harmony::GChBasicChord;
  using harmony::GChPropertyList;
  const auto plist =
      harmony::platform::PropertyListFromBytes(reinterpret_cast<const char*>(data), size);
  if (!plist) return 0;
  const std::vector<GChPropertyList> entries =
      plist->isArray() ? plist->items() : std::vector<GChPropertyList>{*plist};
  for (const GChPropertyList& entry : entries) {
    const auto grid = GChBasicChord::fromPropertyList(entry);
    if (!grid) continue;
    const GChPropertyList written = grid->propertyList();
    const auto again = GChBasicChord::fromPropertyList(written);
    if (!again || !again->isEqualToChordRange(*grid, true) || again->propertyList() != written) {
      __builtin_trap();
    }
    if (harmony::platform::PropertyListToXml(written).empty()) __builtin_trap();
  }
  return 0;
}
