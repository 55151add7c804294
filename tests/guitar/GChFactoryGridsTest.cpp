// The bundled factory package: it must be what the generator makes from its shape tables, and
// every grid in it must sound its stated chord type on its stated root.

#include <gtest/gtest.h>

#include <set>

#include "../../tools/make-factory-grids/FactoryGrids.h"
#include "TestPaths.h"
#include "guitar/GChChordTypeTable.h"
#include "platform/FileWrapper.h"

namespace harmony {
namespace {

namespace fs = std::filesystem;

const fs::path kPackage = fs::path(HARMONY_DATA_DIR) / "Chord Grids" / "GuitarChords.gchdb";

TEST(GChFactoryGrids, PackageIsWhatTheGeneratorMakes) {
  std::string error;
  const auto contents = factory_grids::BuildFactoryPackage(&error);
  ASSERT_TRUE(contents.has_value()) << error;
  const auto members = platform::DirectoryMembers(kPackage);
  ASSERT_TRUE(members.has_value()) << "no package at " << kPackage;
  ASSERT_EQ(members->size(), contents->size());
  for (const auto& [name, bytes] : *contents) {
    EXPECT_EQ(platform::ReadFileBytes(kPackage / name), bytes)
        << name << " differs: rebuild with make-factory-grids --out";
  }
}

std::string FretsOf(const GChChord& chord) {
  std::string text;
  for (int s = 0; s < chord.numberOfStrings(); ++s) {
    const int fret = chord.basicChord()->maxAbsFretIndexPlusOneForStringIndex(s);
    text += (s > 0 ? "," : "") + (fret < 0 ? std::string("x") : std::to_string(fret));
  }
  return text;
}

TEST(GChFactoryGrids, EveryGridSoundsItsTypeOnItsRootAndCanBeFingered) {
  GChDatabase db;
  ASSERT_TRUE(db.readFromDbPackageAtPath(kPackage));
  ASSERT_EQ(db.allTunings().size(), 1u);
  db.setActiveTuning(db.allTunings()[0]);
  const auto libraries = db.allLibrariesForAnyTuning();
  ASSERT_EQ(libraries.size(), 1u);
  EXPECT_TRUE(libraries[0]->isReadOnlyLibrary());
  EXPECT_EQ(libraries[0]->libraryName(), "6-String Guitar Standard Tuning");

  std::set<std::pair<int, int>> covered;
  const auto chords = db.allChordsFilteringLibrary(nullptr, true);
  ASSERT_GE(chords.size(), 30u * 12u);
  for (const auto& chord : chords) {
    const auto* row = guitar_detail::ChordTypeRowForId(chord.chordType());
    ASSERT_NE(row, nullptr) << chord.chordType();
    const int root = chord.rootNote(0);
    ASSERT_GE(root, 0);
    unsigned mask = 0;
    int bass = -1;
    for (int s = 0; s < chord.numberOfStrings(); ++s) {
      const int pitch = chord.pitchForStringIndex(s, 0);
      if (pitch < 0) continue;
      if (bass < 0) bass = pitch;
      mask |= 1u << ((pitch - root + 120) % 12);
    }
    const unsigned expected = guitar_detail::ChordTypePitchClassMask(*row);
    EXPECT_TRUE(mask == expected || mask == (expected & ~(1u << 7)))
        << chord.stringFromPitches(0) << " is no " << row->Name << " on " << root;
    EXPECT_EQ(bass % 12, root) << chord.stringFromPitches(0);
    EXPECT_GE(chord.difficultyLevel(), 1);
    // A grid fits the file format: at most 8 frets between its lowest and highest finger.
    const auto& elems = chord.basicChord()->chordElems();
    int lo = 99, hi = -1;
    for (const auto& e : elems) {
      lo = std::min(lo, e.absFretIndex());
      hi = std::max(hi, e.absFretIndex());
    }
    EXPECT_LE(hi - lo, 7);
    EXPECT_LE(elems.size(), 15u);
    EXPECT_EQ(factory_grids::PlayabilityProblem(*chord.basicChord()), "")
        << FretsOf(chord) << " " << row->Name;
    covered.insert({chord.chordType(), root});
  }
  // Every built-in chord type on every root.
  EXPECT_EQ(covered.size(), 30u * 12u);
}

TEST(GChFactoryGrids, ShapeCheckCatchesWrongGrids) {
  std::string error;
  // E major frets claimed as E minor.
  EXPECT_EQ(factory_grids::MakeGrid({0, 2, 2, 1, 0, 0}, {}, 4, 9, &error), nullptr);
  EXPECT_NE(error.find("minor"), std::string::npos);
  // A major with the wrong root.
  EXPECT_EQ(factory_grids::MakeGrid({-1, 0, 2, 2, 2, 0}, {}, 2, 1, &error), nullptr);
  // A fifth may be left out, nothing else.
  EXPECT_NE(factory_grids::MakeGrid({0, -1, 0, 1, -1, -1}, {0, 0, 0, 1, 0, 0}, 4, 3, &error),
            nullptr)
      << error;
  EXPECT_EQ(factory_grids::MakeGrid({0, -1, 0, -1, 0, -1}, {}, 4, 3, &error), nullptr);
}

TEST(GChFactoryGrids, PlayabilityCheckRefusesWhatNoHandCanFinger) {
  const auto tuning = GChDefaultGuitarShortTuning();
  std::string error;
  const auto problem = [&](std::vector<int> frets, std::vector<int> fingers) {
    const auto grid = grid_tools::GridFromFrets(tuning, frets, fingers, &error);
    return grid ? factory_grids::PlayabilityProblem(*grid) : error;
  };
  EXPECT_EQ(problem({1, 3, 3, 2, 1, 1}, {1, 3, 4, 2, 1, 1}), "");   // the F barre
  EXPECT_EQ(problem({-1, 3, 1, 2, 1, 3}, {0, 3, 1, 2, 1, 4}), "");  // C minor 6 on the A string
  // C minor 6 as once drawn: finger 2 on the A and the high E string, fingers 4, 1, 3 between.
  EXPECT_EQ(problem({-1, 3, 5, 2, 4, 3}, {0, 2, 4, 1, 3, 2}), "finger 2 would press two places");
  // G7(b9) with the first finger across the muted A string, which would sound.
  EXPECT_EQ(problem({3, -1, 3, 4, 3, 4}, {1, 0, 1, 2, 1, 3}), "a barre crosses a muted string");
  EXPECT_EQ(problem({-1, 3, 2, 0, 1, 0}, {0, 3, 0, 0, 1, 0}), "a pressed place has no finger");
  EXPECT_EQ(problem({3, 2, 0, 0, 0, 3}, {1, 2, 0, 0, 0, 3}), "finger 2 lies below finger 1");
  EXPECT_EQ(problem({1, 3, 3, 2, 1, 7}, {1, 2, 3, 2, 1, 4}), "finger 2 would press two places");
  EXPECT_EQ(problem({1, 3, 3, 2, 1, 7}, {1, 3, 3, 2, 1, 4}),
            "the fingers stretch over more than five frets");
}

TEST(GridFromFrets, BarresAndParsing) {
  using grid_tools::ParseFrets;
  EXPECT_EQ(ParseFrets("x32010"), (std::vector<int>{-1, 3, 2, 0, 1, 0}));
  EXPECT_EQ(ParseFrets("x,10,12,12,11,10"), (std::vector<int>{-1, 10, 12, 12, 11, 10}));
  EXPECT_EQ(ParseFrets("8 10 10 9 8 8"), (std::vector<int>{8, 10, 10, 9, 8, 8}));
  EXPECT_FALSE(ParseFrets("x3201a").has_value());
  EXPECT_FALSE(ParseFrets("").has_value());
  EXPECT_FALSE(ParseFrets("0,40,0").has_value());

  std::string error;
  const auto tuning = GChDefaultGuitarShortTuning();
  // F major barre: finger 1 over all strings at the first fret.
  auto f = grid_tools::GridFromFrets(tuning, {1, 3, 3, 2, 1, 1}, {1, 3, 4, 2, 1, 1}, &error);
  ASSERT_NE(f, nullptr);
  EXPECT_TRUE(f->hasBarreSpot(0, 5, 0, 1));
  EXPECT_EQ(f->chordElems().size(), 4u);
  // An open string under the finger forbids the barre.
  auto split = grid_tools::GridFromFrets(tuning, {1, 0, 3, 2, 1, 1}, {1, 0, 4, 2, 1, 1}, &error);
  ASSERT_NE(split, nullptr);
  EXPECT_FALSE(split->hasBarreSpot(0, 5, 0));
  EXPECT_TRUE(split->hasBarreSpot(4, 5, 0, 1));
  EXPECT_TRUE(split->hasSingleSpot(0, 0, 1));
  // A muted string may lie under a barre.
  auto muted = grid_tools::GridFromFrets(tuning, {3, -1, 3, 3, 3, -1}, {1, 0, 1, 1, 1, 0}, &error);
  ASSERT_NE(muted, nullptr);
  EXPECT_TRUE(muted->hasBarreSpot(0, 4, 2, 1));
  EXPECT_EQ(GChChord(muted).pitchForStringIndex(1, 0), -1);
  EXPECT_EQ(grid_tools::GridFromFrets(tuning, {0, 0, 0}, {}, &error), nullptr);
  EXPECT_NE(error.find("expected 6 frets"), std::string::npos);
  // A library file holds the frets of a grid within eight frets of the lowest one.
  EXPECT_EQ(grid_tools::GridFromFrets(tuning, {-1, 30, 2, 0, 1, 0}, {}, &error), nullptr);
  EXPECT_NE(error.find("span 30 frets"), std::string::npos) << error;
  EXPECT_EQ(grid_tools::GridFromFrets(tuning, {-1, 9, 2, 0, 1, 0}, {}, &error), nullptr);
  EXPECT_NE(grid_tools::GridFromFrets(tuning, {-1, 8, 2, 0, 1, 0}, {}, &error), nullptr);
}

}  // namespace
}  // namespace harmony
