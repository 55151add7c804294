// Speed of reading chord symbols: a lead sheet's worth of jazz and pop symbols with slashes,
// tensions and Unicode signs, read one after another as the chord-list parser does. Reports
// the time per symbol and the heap allocations per symbol.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "harmony/chords/ChordSymbolParser.h"

#include "AllocationCounter.h"

namespace harmony {
namespace {

// Roots as they are typed, in ASCII, German and Unicode spellings.
const char* const kRoots[] = {"C",  "C#", "Db", "D", "Eb", "E",  "F",       "F#",      "Gb", "G",
                              "Ab", "A",  "Bb", "B", "H",  "Es", "D\u266D", "F\u266F", "Cis"};

// Chord suffixes from lead sheets of standards and pop songs.
const char* const kSuffixes[] = {
    "",          "m",        "7",       "m7",     "maj7",   "m7b5",     "dim7",   "7b9",
    "7#9",       "9",        "m9",      "13",     "7sus4",  "sus4",     "sus2",   "6/9",
    "m6",        "add9",     "7(b9)",   "7(#11)", "maj9",   "m(maj7)",  "aug",    "7#5",
    "\u25B37",   "-7",       "\u00F87", "7alt",   "m11",    "7 b13",    "13b9",   "7\u266D9",
    "7\u266F11", "mi7",      "min7",    "ma7",    "j7",     "5",        "dim",    "m7(b5)",
    "9sus4",     "7(b9,#9)", "maj7#11", "6",      "m add9", "sus",      "11",     "7 #5 #9",
    "mmaj7",     "maj13",    "no3",     "omit3",  "7b9b13", "m7 add11", "\u25B3", "aug7",
    "dim(maj7)", "seventh",  "drone",   "add #11"};

// Basses of slash chords, a third of the symbols.
const char* const kBasses[] = {"", "", "/E", "", "/G", "", "/Bb", "", "/F\u266F", "", "/A", ""};

std::vector<std::string> LeadSheetSymbols() {
  std::vector<std::string> symbols;
  const std::size_t roots = std::size(kRoots), suffixes = std::size(kSuffixes);
  const std::size_t basses = std::size(kBasses);
  for (std::size_t i = 0; i < 400; ++i) {
    symbols.push_back(std::string(kRoots[(i * 7) % roots]) + kSuffixes[(i * 11) % suffixes] +
                      kBasses[(i * 5) % basses]);
  }
  return symbols;
}

void ReadSymbols(benchmark::State& state, const ChordSetFromStringPrefs& prefs) {
  const std::vector<std::string> symbols = LeadSheetSymbols();
  const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs();
  CChordLite chord;
  SetFromString(symbols.front(), chord, prefs, namePrefs);  // builds the shared preferences
  const long allocationsBefore = harmony::bench::AllocationCount();
  for (auto _ : state) {
    for (const std::string& symbol : symbols) {
      SetFromString(symbol, chord, prefs, namePrefs);
      benchmark::DoNotOptimize(chord);
    }
  }
  const auto parsed = static_cast<double>(state.iterations() * symbols.size());
  state.SetItemsProcessed(static_cast<std::int64_t>(parsed));
  state.counters["ns_per_symbol"] =
      benchmark::Counter(parsed, benchmark::Counter::kIsRate | benchmark::Counter::kInvert,
                         benchmark::Counter::kIs1000);
  state.counters["allocs_per_symbol"] =
      static_cast<double>(harmony::bench::AllocationCount() - allocationsBefore) / parsed;
}

void BM_ReadLeadSheetSymbols(benchmark::State& state) {
  ReadSymbols(state, ChordSetFromStringPrefs());
}
BENCHMARK(BM_ReadLeadSheetSymbols);

void BM_ReadLeadSheetSymbolsSimplifyingBass(benchmark::State& state) {
  ReadSymbols(state, ChordSetFromStringPrefs(ChordSetFromStringPrefs::kSimplifyBassNote));
}
BENCHMARK(BM_ReadLeadSheetSymbolsSimplifyingBass);

}  // namespace
}  // namespace harmony
