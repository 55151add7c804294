// Reads arbitrary bytes as a guitar library file. Whatever is read must write back, and the
// written file must read to the same bytes again (the read-only bit aside, which a library
// without chord chunks does not keep).

#include <cstddef>
#include <cstdint>
#include <vector>

#include "harmony/guitar/GChDatabase.h"

namespace {

std::vector<uint8_t> WithoutFlagByte(std::vector<uint8_t> bytes) {
  if (bytes.size() > 7) bytes[7] = 0;
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  harmony::GChDatabase db;
  db.setLocalizedDefaultTuningName("Gitarre");
  db.readOneRegularFile(data, size, "fuzz");
  for (const harmony::GChLibrary* library : db.allLibrariesForAnyTuning()) {
    const auto written = library->wholeLibraryFileContent();
    if (!written) continue;
    harmony::GChDatabase again;
    again.setLocalizedDefaultTuningName("Gitarre");
    if (!again.readOneRegularFile(written->data(), written->size(), "")) __builtin_trap();
    const auto libraries = again.allLibrariesForAnyTuning();
    if (libraries.size() != 1) __builtin_trap();
    if (libraries[0]->numberOfBasicChords() != library->numberOfBasicChords()) __builtin_trap();
    const auto rewritten = libraries[0]->wholeLibraryFileContent();
    if (!rewritten || WithoutFlagByte(*rewritten) != WithoutFlagByte(*written)) __builtin_trap();
  }
  return 0;
}
