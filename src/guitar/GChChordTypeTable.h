#pragma once
// The built-in chord types as the guitar libraries store them: id, name and intervals (which
// may reach above the octave). This is a private copy of the shared chord-type table, kept
// here until the guitar code can use that table directly; ids and order must stay as they are,
// since the ids are stored in library files.

#include <array>
#include <cstdint>

namespace harmony::guitar_detail {

struct ChordTypeRow {
  uint16_t id;
  const char* name;
  uint8_t intervalCount;
  std::array<uint8_t, 5> intervals;
};

inline constexpr std::array<ChordTypeRow, 30> kChordTypeRows{{
    {1, "major", 3, {0, 4, 7}},
    {9, "minor", 3, {0, 3, 7}},
    {34, "sus2", 3, {0, 2, 7}},
    {33, "sus4", 3, {0, 5, 7}},
    {3, "7", 4, {0, 4, 7, 10}},
    {119, "7 b9", 5, {0, 4, 7, 10, 13}},
    {120, "7 #9", 5, {0, 4, 7, 10, 15}},
    {118, "7 11", 5, {0, 4, 5, 7, 10}},
    {25, "7 13", 5, {0, 4, 7, 9, 10}},
    {27, "7 b13", 5, {0, 4, 7, 8, 10}},
    {28, "9", 5, {0, 4, 7, 10, 14}},
    {5, "add9", 4, {0, 4, 7, 14}},
    {2, "6", 4, {0, 4, 7, 9}},
    {7, "6 add9", 5, {0, 4, 7, 9, 14}},
    {20, "maj7", 4, {0, 4, 7, 11}},
    {22, "maj7 b5", 4, {0, 4, 6, 11}},
    {26, "maj7 b9", 5, {0, 4, 7, 11, 13}},
    {101, "maj7 b5 #9", 5, {0, 4, 6, 11, 15}},
    {121, "maj7 13", 5, {0, 4, 7, 9, 11}},
    {11, "minor 7", 4, {0, 3, 7, 10}},
    {12, "minor 7 b5", 4, {0, 3, 6, 10}},
    {16, "minor maj7", 4, {0, 3, 7, 11}},
    {13, "minor add9", 4, {0, 3, 7, 14}},
    {10, "minor 6", 4, {0, 3, 7, 9}},
    {104, "minor 6 add9", 5, {0, 3, 7, 9, 14}},
    {100, "minor b13", 4, {0, 3, 7, 8}},
    {18, "dim", 3, {0, 3, 6}},
    {19, "dim 7", 4, {0, 3, 6, 9}},
    {8, "aug", 3, {0, 4, 8}},
    {30, "aug 7", 4, {0, 4, 8, 10}},
}};

// The row of an id, or nullptr.
inline const ChordTypeRow* ChordTypeRowForId(uint16_t id) {
  for (const auto& row : kChordTypeRows) {
    if (row.id == id) return &row;
  }
  return nullptr;
}

// The pitch classes of a row as a 12-bit mask, intervals folded into the octave.
inline unsigned ChordTypePitchClassMask(const ChordTypeRow& row) {
  unsigned mask = 0;
  for (int i = 0; i < row.intervalCount; ++i) mask |= 1u << (row.intervals[i] % 12);
  return mask;
}

}  // namespace harmony::guitar_detail
