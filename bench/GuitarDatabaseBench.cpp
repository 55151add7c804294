// The guitar database at the size of a large user collection: 10,000 chords in 10 libraries,
// written to a package, read back, and listed with a filter.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include "harmony/guitar/GChDatabase.h"

namespace {

using namespace harmony;
namespace fs = std::filesystem;

constexpr int kLibraries = 10;
constexpr int kChordsPerLibrary = 1000;

// A varied grid: a barre, two or three fingers above it, a muted string now and then, a name
// on every fifth chord.
std::shared_ptr<GChBasicChord> MakeChord(int n) {
  auto chord = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  const int fret = n % 12;
  chord->addChordElem(1, fret, 0, 5);
  chord->addChordElem(2, fret + 1, 1 + n % 3);
  chord->addChordElem(3, fret + 2, 2 + n % 3);
  if (n % 2 == 0) chord->addChordElem(4, fret + 2, 4);
  if (n % 7 == 0) chord->setMuted(true, 5);
  chord->setRootNote(n % 12);
  chord->setChordType(static_cast<GChChordTypeId>(1 + n % 30));
  chord->setDifficultyLevel(n % 4);
  chord->setIsFavorite(n % 9 == 0, 0);
  if (n % 5 == 0) chord->setUserName("Grid " + std::to_string(n));
  return chord;
}

std::unique_ptr<GChDatabase> MakeDatabase() {
  auto db = std::make_unique<GChDatabase>();
  GChTuning* tuning = db->tuningWithDefaultGuitarTuning();
  for (int l = 0; l < kLibraries; ++l) {
    GChLibrary* library = tuning->createLibraryWithPath("", "Library " + std::to_string(l));
    for (int c = 0; c < kChordsPerLibrary; ++c) {
      library->addChordRangePriv(MakeChord(l * kChordsPerLibrary + c));
    }
  }
  db->setActiveTuning(tuning);
  return db;
}

fs::path BenchPackage() {
  return fs::temp_directory_path() / ("harmony-guitar-bench-" + std::to_string(::getpid())) /
         "GuitarChords.gchdb";
}

void BM_WriteLibraryFiles(benchmark::State& state) {
  const auto db = MakeDatabase();
  size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const GChLibrary* library : db->allLibrariesForAnyTuning()) {
      bytes += library->wholeLibraryFileContent()->size();
    }
    benchmark::DoNotOptimize(bytes);
  }
  state.counters["bytes"] = static_cast<double>(bytes);
  state.SetItemsProcessed(state.iterations() * kLibraries * kChordsPerLibrary);
}
BENCHMARK(BM_WriteLibraryFiles)->Unit(benchmark::kMillisecond);

void BM_WritePackage(benchmark::State& state) {
  const auto db = MakeDatabase();
  const fs::path package = BenchPackage();
  for (auto _ : state) {
    if (!db->writeLibraries(db->allLibrariesForAnyTuning(), package)) {
      state.SkipWithError("write failed");
    }
  }
  fs::remove_all(package.parent_path());
  state.SetItemsProcessed(state.iterations() * kLibraries * kChordsPerLibrary);
}
BENCHMARK(BM_WritePackage)->Unit(benchmark::kMillisecond);

void BM_ReadPackage(benchmark::State& state) {
  const fs::path package = BenchPackage();
  MakeDatabase()->writeLibraries(MakeDatabase()->allLibrariesForAnyTuning(), package);
  long chords = 0;
  for (auto _ : state) {
    GChDatabase db;
    db.readFromDbPackageAtPath(package);
    chords = db.allTunings().front()->numberOfBasicChords();
  }
  fs::remove_all(package.parent_path());
  if (chords != kLibraries * kChordsPerLibrary) state.SkipWithError("chords lost");
  state.SetItemsProcessed(state.iterations() * chords);
}
BENCHMARK(BM_ReadPackage)->Unit(benchmark::kMillisecond);

void BM_ListWithFilter(benchmark::State& state) {
  const auto db = MakeDatabase();
  GChFilterParameter filter;
  filter.setRootNoteToFilter(9);
  filter.setDifficultyToFilter(1);
  size_t listed = 0;
  for (auto _ : state) {
    listed = db->allChordsFilteringLibrary(nullptr, true, &filter).size();
    benchmark::DoNotOptimize(listed);
  }
  state.counters["listed"] = static_cast<double>(listed);
  state.SetItemsProcessed(state.iterations() * kLibraries * kChordsPerLibrary);
}
BENCHMARK(BM_ListWithFilter)->Unit(benchmark::kMicrosecond);

void BM_ListAll(benchmark::State& state) {
  const auto db = MakeDatabase();
  for (auto _ : state) {
    benchmark::DoNotOptimize(db->allChordsFilteringLibrary(nullptr, true).size());
  }
  state.SetItemsProcessed(state.iterations() * kLibraries * kChordsPerLibrary);
}
BENCHMARK(BM_ListAll)->Unit(benchmark::kMicrosecond);

}  // namespace
