// Speed of the lead-sheet chord reader beside the forgiving parser, on the same everyday
// symbols of standards and pop songs (a third of them slash chords). Reports the time per
// symbol and the heap allocations per symbol; the lead-sheet reader should stay under 300 ns
// and allocate nothing.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "AllocationCounter.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/LeadSheetChordReader.h"

namespace harmony {
namespace {

const char* const kEverydayRoots[] = {"C", "F", "Bb", "Eb", "G", "D", "A", "E", "Ab", "F#", "Db",
                                      "B"};
const char* const kEverydaySuffixes[] = {
    "",     "m",     "7",    "m7",   "maj7",    "m7b5",  "dim7",    "7b9",  "9",     "m9",
    "13",   "7sus4", "sus4", "6",    "m6",      "6/9",   "add9",    "7#9",  "7(b9)", "maj9",
    "-7",   "^7",    "7alt", "aug",  "m(maj7)", "11",    "7#11",    "sus2", "5",     "dim"};
const char* const kEverydayBasses[] = {"", "", "/E", "", "/G", "", "/Bb", "", "/A"};

std::vector<std::string> EverydaySymbols() {
  std::vector<std::string> symbols;
  for (std::size_t i = 0; i < 360; ++i) {
    symbols.push_back(std::string(kEverydayRoots[(i * 5) % std::size(kEverydayRoots)]) +
                      kEverydaySuffixes[(i * 7) % std::size(kEverydaySuffixes)] +
                      kEverydayBasses[(i * 4) % std::size(kEverydayBasses)]);
  }
  return symbols;
}

template <class TRead>
void Measure(benchmark::State& state, TRead read) {
  const std::vector<std::string> symbols = EverydaySymbols();
  read(symbols.front());  // builds shared preferences and tables
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    for (const std::string& symbol : symbols) benchmark::DoNotOptimize(read(symbol));
  }
  const double count = static_cast<double>(state.iterations() * symbols.size());
  state.counters["ns_per_symbol"] = benchmark::Counter(
      count, benchmark::Counter::kIsRate | benchmark::Counter::kInvert, benchmark::Counter::kIs1000);
  state.counters["allocs_per_symbol"] =
      static_cast<double>(bench::AllocationCount() - before) / count;
}

void BM_LeadSheetReader(benchmark::State& state) {
  Measure(state, [](const std::string& symbol) { return ReadLeadSheetChord(symbol).Chord; });
}
BENCHMARK(BM_LeadSheetReader);

void BM_SeedParser(benchmark::State& state) {
  Measure(state, [](const std::string& symbol) {
    CChordLite chord;
    SetFromString(symbol, chord);
    return chord;
  });
}
BENCHMARK(BM_SeedParser);

}  // namespace
}  // namespace harmony
