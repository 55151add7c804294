// Reads arbitrary bytes as a Billboard annotation in Harte's syntax, as harmony markov learn
// does, and the chord list it gives as the chord-list parser reads it.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "HarteChordList.h"
#include "harmony/analysis/ChordStringParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  harmony::tool::LooksLikeHarteAnnotation(text);
  harmony::tool::ChordFromHarteSymbol(text);
  const std::string list = harmony::tool::HarteAnnotationToChordList(text);
  // Every token the reader writes is one chord symbol, a "." or a bar line: the parser finds
  // a chord for each symbol and closes the list.
  std::istringstream words(list);
  std::size_t symbols = 0;
  for (std::string word; words >> word;) symbols += word != "." && word != "|" ? 1 : 0;
  const harmony::CHarmAnlsChords chords =
      harmony::ParseStringIntoHarmAnlsChords::ParseIntoChords(list, {});
  if (chords.size() != (symbols == 0 ? 0 : symbols + 1)) __builtin_trap();
  return 0;
}
