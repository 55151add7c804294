#pragma once
// The factory chord grids of the six-string guitar in standard tuning: common open shapes,
// and two movable shapes for every built-in chord type (root on the sixth string and root on
// the fifth string) placed on every root. Every grid is checked as it is built: its strings
// must sound the root in the bass and exactly the tones of its chord type (the fifth may be
// left out), and a guitarist must be able to finger it as drawn (PlayabilityProblem).

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "GridFromFrets.h"
#include "guitar/GChChordTypeTable.h"
#include "harmony/guitar/GChChord.h"
#include "harmony/guitar/GChChordFunctions.h"
#include "harmony/guitar/GChDatabase.h"

namespace harmony::factory_grids {

constexpr const char* kTuningName = "Default Guitar Tuning";
constexpr const char* kLibraryName = "6-String Guitar Normal Tuning";
constexpr int X = -100;  // a muted string in the shape tables

struct OpenShape {
  int root;
  uint16_t typeId;
  std::array<int, 6> frets;  // -1 muted
  std::array<int, 6> fingers;
};

// Frets and fingers as a guitarist reads them, from the low E string to the high one.
inline const std::vector<OpenShape>& OpenShapes() {
  static const std::vector<OpenShape> shapes{
      {0, 1, {-1, 3, 2, 0, 1, 0}, {0, 3, 2, 0, 1, 0}},    // C
      {9, 1, {-1, 0, 2, 2, 2, 0}, {0, 0, 1, 2, 3, 0}},    // A
      {7, 1, {3, 2, 0, 0, 0, 3}, {2, 1, 0, 0, 0, 3}},     // G
      {4, 1, {0, 2, 2, 1, 0, 0}, {0, 2, 3, 1, 0, 0}},     // E
      {2, 1, {-1, -1, 0, 2, 3, 2}, {0, 0, 0, 1, 3, 2}},   // D
      {9, 9, {-1, 0, 2, 2, 1, 0}, {0, 0, 2, 3, 1, 0}},    // Am
      {4, 9, {0, 2, 2, 0, 0, 0}, {0, 2, 3, 0, 0, 0}},     // Em
      {2, 9, {-1, -1, 0, 2, 3, 1}, {0, 0, 0, 2, 3, 1}},   // Dm
      {4, 3, {0, 2, 0, 1, 0, 0}, {0, 2, 0, 1, 0, 0}},     // E7
      {9, 3, {-1, 0, 2, 0, 2, 0}, {0, 0, 2, 0, 3, 0}},    // A7
      {2, 3, {-1, -1, 0, 2, 1, 2}, {0, 0, 0, 2, 1, 3}},   // D7
      {7, 3, {3, 2, 0, 0, 0, 1}, {3, 2, 0, 0, 0, 1}},     // G7
      {0, 3, {-1, 3, 2, 3, 1, 0}, {0, 3, 2, 4, 1, 0}},    // C7
      {11, 3, {-1, 2, 1, 2, 0, 2}, {0, 2, 1, 3, 0, 4}},   // B7
      {0, 20, {-1, 3, 2, 0, 0, 0}, {0, 3, 2, 0, 0, 0}},   // Cmaj7
      {9, 20, {-1, 0, 2, 1, 2, 0}, {0, 0, 2, 1, 3, 0}},   // Amaj7
      {2, 20, {-1, -1, 0, 2, 2, 2}, {0, 0, 0, 1, 1, 1}},  // Dmaj7
      {5, 20, {-1, -1, 3, 2, 1, 0}, {0, 0, 3, 2, 1, 0}},  // Fmaj7
      {7, 20, {3, -1, 0, 0, 0, 2}, {2, 0, 0, 0, 0, 1}},   // Gmaj7
      {4, 20, {0, 2, 1, 1, 0, 0}, {0, 3, 1, 2, 0, 0}},    // Emaj7
      {9, 11, {-1, 0, 2, 0, 1, 0}, {0, 0, 2, 0, 1, 0}},   // Am7
      {4, 11, {0, 2, 0, 0, 0, 0}, {0, 2, 0, 0, 0, 0}},    // Em7
      {2, 11, {-1, -1, 0, 2, 1, 1}, {0, 0, 0, 2, 1, 1}},  // Dm7
      {9, 34, {-1, 0, 2, 2, 0, 0}, {0, 0, 1, 2, 0, 0}},   // Asus2
      {2, 34, {-1, -1, 0, 2, 3, 0}, {0, 0, 0, 1, 3, 0}},  // Dsus2
      {9, 33, {-1, 0, 2, 2, 3, 0}, {0, 0, 1, 2, 3, 0}},   // Asus4
      {2, 33, {-1, -1, 0, 2, 3, 3}, {0, 0, 0, 1, 3, 4}},  // Dsus4
      {4, 33, {0, 2, 2, 2, 0, 0}, {0, 2, 3, 4, 0, 0}},    // Esus4
      {0, 5, {-1, 3, 2, 0, 3, 0}, {0, 2, 1, 0, 3, 0}},    // Cadd9
      {0, 2, {-1, 3, 2, 2, 1, 0}, {0, 4, 2, 3, 1, 0}},    // C6
      {9, 2, {-1, 0, 2, 2, 2, 2}, {0, 0, 1, 1, 1, 1}},    // A6
      {4, 2, {0, 2, 2, 1, 2, 0}, {0, 2, 3, 1, 4, 0}},     // E6
      {2, 2, {-1, -1, 0, 2, 0, 2}, {0, 0, 0, 1, 0, 2}},   // D6
      {7, 2, {3, 2, 0, 0, 0, 0}, {2, 1, 0, 0, 0, 0}},     // G6
      {9, 10, {-1, 0, 2, 2, 1, 2}, {0, 0, 2, 3, 1, 4}},   // Am6
      {4, 10, {0, 2, 2, 0, 2, 0}, {0, 2, 3, 0, 4, 0}},    // Em6
      {2, 19, {-1, -1, 0, 1, 0, 1}, {0, 0, 0, 1, 0, 2}},  // Ddim7
      {0, 8, {-1, 3, 2, 1, 1, 0}, {0, 4, 3, 1, 2, 0}},    // Caug
      {4, 28, {0, 2, 0, 1, 0, 2}, {0, 2, 0, 1, 0, 3}},    // E9
      {9, 16, {-1, 0, 2, 1, 1, 0}, {0, 0, 3, 1, 2, 0}},   // Am(maj7)
      {4, 13, {0, 2, 4, 0, 0, 0}, {0, 1, 3, 0, 0, 0}},    // Em add9
      {9, 13, {-1, 0, 2, 4, 1, 0}, {0, 0, 2, 4, 1, 0}},   // Am add9
  };
  return shapes;
}

// A movable shape: fret offsets from the fret of the root on its root string (X mutes).
struct MovableShape {
  uint16_t typeId;
  int rootString;
  std::array<int, 6> offsets;
  std::array<int, 6> fingers;
};

inline const std::vector<MovableShape>& MovableShapes() {
  static const std::vector<MovableShape> shapes{
      // Root on the sixth string.
      {1, 0, {0, 2, 2, 1, 0, 0}, {1, 3, 4, 2, 1, 1}},
      {9, 0, {0, 2, 2, 0, 0, 0}, {1, 3, 4, 1, 1, 1}},
      {34, 0, {0, 2, 4, 4, 0, 0}, {1, 2, 3, 4, 1, 1}},
      {33, 0, {0, 2, 2, 2, 0, 0}, {1, 2, 3, 4, 1, 1}},
      {3, 0, {0, 2, 0, 1, 0, 0}, {1, 3, 1, 2, 1, 1}},
      {119, 0, {0, X, 0, 1, 0, 1}, {1, 0, 2, 3, 2, 4}},
      {120, 0, {0, X, 0, 1, X, 3}, {1, 0, 2, 3, 0, 4}},
      {118, 0, {0, 0, 0, 1, 0, 0}, {1, 1, 1, 2, 1, 1}},
      {25, 0, {0, 2, 0, 1, 2, 0}, {1, 3, 1, 2, 4, 1}},
      {27, 0, {0, 2, 0, 1, 1, 0}, {1, 4, 1, 2, 3, 1}},
      {28, 0, {0, 2, 0, 1, 0, 2}, {1, 3, 1, 2, 1, 4}},
      {5, 0, {0, X, 2, 1, X, 2}, {1, 0, 3, 2, 0, 4}},
      {2, 0, {0, X, 2, 1, 2, X}, {1, 0, 3, 2, 4, 0}},
      {7, 0, {0, -1, -1, -1, 0, 0}, {2, 1, 1, 1, 3, 4}},
      {20, 0, {0, X, 1, 1, 0, X}, {2, 0, 3, 4, 1, 0}},
      {22, 0, {0, X, 1, 1, -1, X}, {2, 0, 3, 4, 1, 0}},
      {26, 0, {0, X, 1, 1, X, 1}, {1, 0, 2, 3, 0, 4}},
      {101, 0, {0, X, 1, 1, -1, 3}, {2, 0, 3, 3, 1, 4}},
      {121, 0, {0, X, 1, 1, 2, X}, {1, 0, 2, 3, 4, 0}},
      {11, 0, {0, 2, 0, 0, 0, 0}, {1, 3, 1, 1, 1, 1}},
      {12, 0, {0, X, 0, 0, -1, X}, {2, 0, 3, 4, 1, 0}},
      {16, 0, {0, 2, 1, 0, 0, 0}, {1, 3, 2, 1, 1, 1}},
      {13, 0, {0, X, 2, 0, X, 2}, {1, 0, 3, 2, 0, 4}},
      {10, 0, {0, 2, 2, 0, 2, 0}, {1, 2, 3, 1, 4, 1}},
      {104, 0, {0, X, -1, 0, 0, 2}, {2, 0, 1, 3, 3, 4}},
      {100, 0, {0, 2, 2, 0, 1, 0}, {1, 3, 4, 1, 2, 1}},
      {18, 0, {0, 1, 2, 0, X, X}, {1, 2, 3, 1, 0, 0}},
      {19, 0, {0, X, -1, 0, -1, X}, {2, 0, 1, 3, 1, 0}},
      {8, 0, {0, X, 2, 1, 1, X}, {1, 0, 4, 2, 3, 0}},
      {30, 0, {0, X, 0, 1, 1, X}, {1, 0, 2, 3, 4, 0}},
      // Root on the fifth string.
      {1, 1, {X, 0, 2, 2, 2, 0}, {0, 1, 3, 3, 3, 1}},
      {9, 1, {X, 0, 2, 2, 1, 0}, {0, 1, 3, 4, 2, 1}},
      {34, 1, {X, 0, 2, 2, 0, 0}, {0, 1, 3, 4, 1, 1}},
      {33, 1, {X, 0, 2, 2, 3, 0}, {0, 1, 2, 3, 4, 1}},
      {3, 1, {X, 0, 2, 0, 2, 0}, {0, 1, 3, 1, 4, 1}},
      {119, 1, {X, 0, -1, 0, -1, X}, {0, 2, 1, 3, 1, 0}},
      {120, 1, {X, 0, -1, 0, 1, X}, {0, 2, 1, 3, 4, 0}},
      {118, 1, {X, 0, 0, 0, 2, 0}, {0, 1, 1, 1, 3, 1}},
      {25, 1, {X, 0, 2, 0, 2, 2}, {0, 1, 2, 1, 3, 4}},
      {27, 1, {X, 0, 2, 0, 2, 1}, {0, 1, 3, 1, 4, 2}},
      {28, 1, {X, 0, -1, 0, 0, 0}, {0, 2, 1, 3, 3, 3}},
      {5, 1, {X, 0, 2, 4, 2, 0}, {0, 1, 2, 4, 3, 1}},
      {2, 1, {X, 0, 2, 2, 2, 2}, {0, 1, 3, 3, 3, 3}},
      {7, 1, {X, 0, -1, -1, 0, 0}, {0, 2, 1, 1, 3, 3}},
      {20, 1, {X, 0, 2, 1, 2, 0}, {0, 1, 3, 2, 4, 1}},
      {22, 1, {X, 0, 1, 1, 2, X}, {0, 1, 2, 3, 4, 0}},
      {26, 1, {X, 0, -1, 1, -1, X}, {0, 2, 1, 4, 1, 0}},
      {101, 1, {X, 0, -1, 1, 1, -1}, {0, 2, 1, 3, 4, 1}},
      {121, 1, {X, 0, 2, 1, 2, 2}, {0, 1, 3, 2, 4, 4}},
      {11, 1, {X, 0, 2, 0, 1, 0}, {0, 1, 3, 1, 2, 1}},
      {12, 1, {X, 0, 1, 0, 1, X}, {0, 1, 3, 2, 4, 0}},
      {16, 1, {X, 0, 2, 1, 1, 0}, {0, 1, 4, 2, 3, 1}},
      {13, 1, {X, 0, 2, 4, 1, 0}, {0, 1, 3, 4, 2, 1}},
      {10, 1, {X, 0, -2, -1, -2, 0}, {0, 3, 1, 2, 1, 4}},
      {104, 1, {X, 0, -2, -1, 0, 0}, {0, 3, 1, 2, 4, 4}},
      {100, 1, {X, 0, 2, 2, 1, 1}, {0, 1, 3, 4, 2, 2}},
      {18, 1, {X, 0, 1, 2, 1, X}, {0, 1, 2, 4, 3, 0}},
      {19, 1, {X, 0, 1, -1, 1, -1}, {0, 2, 3, 1, 4, 1}},
      {8, 1, {X, 0, 3, 2, 2, 1}, {0, 1, 4, 3, 3, 2}},
      {30, 1, {X, 0, X, 0, 2, 1}, {0, 1, 0, 2, 4, 3}},
  };
  return shapes;
}

// Empty when the grid sounds its root in the bass and the tones of its type (the fifth may be
// missing); otherwise what is wrong.
inline std::string CheckGrid(const std::shared_ptr<GChBasicChord>& grid) {
  const auto* row = guitar_detail::ChordTypeRowForId(grid->chordType());
  if (row == nullptr) return "unknown chord type " + std::to_string(grid->chordType());
  const GChChord chord(grid, 0);
  unsigned mask = 0;
  int bass = -1;
  for (int s = 0; s < chord.numberOfStrings(); ++s) {
    const int pitch = chord.pitchForStringIndex(s, 0);
    if (pitch < 0) continue;
    if (bass < 0) bass = pitch;
    mask |= 1u << ((pitch - grid->rootNote() + 120) % 12);
  }
  const unsigned expected = guitar_detail::ChordTypePitchClassMask(*row);
  if (bass < 0 || bass % 12 != grid->rootNote()) return "the bass is not the root";
  if (mask != expected && mask != (expected & ~(1u << 7))) {
    return "tones differ from " + row->Name;
  }
  return {};
}

// Empty when a guitarist can finger the grid as it is drawn; otherwise why not. Every pressed
// place has a finger (1..4, or 5 for the thumb); a finger presses one place, a single string
// or one barre, so it is never drawn on two strings with another finger or an open string
// between them; a barre crosses no muted string and no string that sounds lower than it; and
// the fingers keep their order along the neck within a stretch of five frets.
inline std::string PlayabilityProblem(const GChBasicChord& grid) {
  std::array<const GChChordElem*, kGChMaxFingerNumber + 1> places{};
  int lowest = kGChMaxAbsFretIndex, highest = 0;
  for (const GChChordElem& elem : grid.chordElems()) {
    const int finger = elem.fingerNumber();
    if (finger == 0) return "a pressed place has no finger";
    if (places[finger] != nullptr) {
      return "finger " + std::to_string(finger) + " would press two places";
    }
    places[finger] = &elem;
    lowest = std::min<int>(lowest, elem.absFretIndex());
    highest = std::max<int>(highest, elem.absFretIndex());
    for (int s = elem.coveredMinStr(); elem.isBarre() && s <= elem.coveredMaxStr(); ++s) {
      if (grid.isMutedForStringIndex(s)) return "a barre crosses a muted string";
      if (grid.maxAbsFretIndexPlusOneForStringIndex(s) < elem.absFretIndex() + 1) {
        return "a barre crosses a string that sounds lower";
      }
    }
  }
  if (highest - lowest > 4) return "the fingers stretch over more than five frets";
  for (int a = 1; a < 5; ++a) {
    for (int b = a + 1; b < 5; ++b) {
      if (places[a] != nullptr && places[b] != nullptr &&
          places[a]->absFretIndex() > places[b]->absFretIndex()) {
        return "finger " + std::to_string(b) + " lies below finger " + std::to_string(a);
      }
    }
  }
  return {};
}

inline std::shared_ptr<GChBasicChord> MakeGrid(const std::vector<int>& frets,
                                               const std::vector<int>& fingers, int root,
                                               uint16_t typeId, std::string* error) {
  auto grid = grid_tools::GridFromFrets(GChDefaultGuitarShortTuning(), frets, fingers, error);
  if (!grid) return nullptr;
  grid->setRootNote(root);
  grid->setChordType(typeId);
  bool hasBarre = false;
  for (const auto& elem : grid->chordElems()) hasBarre = hasBarre || elem.isBarre();
  const bool open = grid->hasOpenStrings() && !hasBarre;
  grid->setDifficultyLevel(open ? 1 : (hasBarre ? 2 : 3));
  std::string problem = CheckGrid(grid);
  if (problem.empty()) problem = PlayabilityProblem(*grid);
  if (!problem.empty()) {
    *error = "grid " + GChOctPitchDefaultName(root) + " " + GChChordTypeNameForId(typeId) + ": " +
             problem;
    return nullptr;
  }
  return grid;
}

// The movable shape placed so that its root string sounds `root` at the lowest fret of at
// least 1 where no offset falls below the nut.
inline std::shared_ptr<GChBasicChord> PlaceShape(const MovableShape& shape, int root,
                                                 std::string* error) {
  int lowestOffset = 0;
  for (int offset : shape.offsets) {
    if (offset != X) lowestOffset = std::min(lowestOffset, offset);
  }
  const int open = GChStandardGuitarOpenStringPitch(shape.rootString);
  int fret = ((root - open) % 12 + 12) % 12;
  while (fret < 1 || fret + lowestOffset < 0) fret += 12;
  std::vector<int> frets, fingers;
  for (int s = 0; s < 6; ++s) {
    frets.push_back(shape.offsets[s] == X ? grid_tools::kMuted : fret + shape.offsets[s]);
    fingers.push_back(shape.offsets[s] == X ? 0 : shape.fingers[s]);
  }
  return MakeGrid(frets, fingers, root, shape.typeId, error);
}

// Every factory grid in order: the open shapes, then per chord type and root the two movable
// shapes. Nothing (with a reason) when a shape does not sound what it claims.
inline std::optional<std::vector<std::shared_ptr<GChBasicChord>>> BuildGrids(std::string* error) {
  std::vector<std::shared_ptr<GChBasicChord>> grids;
  for (const auto& shape : OpenShapes()) {
    auto grid =
        MakeGrid({shape.frets.begin(), shape.frets.end()},
                 {shape.fingers.begin(), shape.fingers.end()}, shape.root, shape.typeId, error);
    if (!grid) return std::nullopt;
    grids.push_back(std::move(grid));
  }
  for (int index = 0; index < GChNumberOfChordTypes(); ++index) {
    const GChChordTypeId typeId = GChChordTypeIdForIndex(index);
    for (int root = 0; root < 12; ++root) {
      for (const auto& shape : MovableShapes()) {
        if (shape.typeId != typeId) continue;
        auto grid = PlaceShape(shape, root, error);
        if (!grid) return std::nullopt;
        grids.push_back(std::move(grid));
      }
    }
  }
  return grids;
}

// The package files: "GChInfo" and one read-only library.
inline std::optional<GChPackageContents> BuildFactoryPackage(std::string* error) {
  auto grids = BuildGrids(error);
  if (!grids) return std::nullopt;
  GChDatabase database;
  GChTuning* tuning = database.tuningWithShortTuning(GChDefaultGuitarShortTuning(), kTuningName);
  GChLibrary* library = tuning->createLibraryWithPath("", kLibraryName);
  for (auto& grid : *grids) library->addChordRangePriv(std::move(grid));
  library->setIsReadOnlyLibrary(true);
  auto contents = database.writeLibrariesToDbPackageWrapper({library});
  if (!contents) *error = "the library could not be written";
  return contents;
}

}  // namespace harmony::factory_grids
