#pragma once
// One finger of a chord grid: a finger number, the fret it presses and the strings it covers.
// An element covering more than one string is a barre.
//
// Fret indexes count from the first fret: absFretIndex 0 is the first fret above the nut, so
// a spot raises its string by absFretIndex + 1 semitones.

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "harmony/Trace.h"
#include "harmony/guitar/GChPropertyList.h"

namespace harmony {

constexpr int kGChMaxFingerNumber = 5;
constexpr int kGChMaxAbsFretIndex = 31;

class GChChordElem : public TraceFamily<GChChordElem> {
 public:
  // No object for a finger above 5, a fret above 31, min above max or a string above 15.
  static std::optional<GChChordElem> initWithFingerNumber(int fingerNumber, int absFretIndex,
                                                          int coveredMinStr, int coveredMaxStr,
                                                          int fingerPointType);

  int fingerNumber() const { return mFingerNumber; }
  int absFretIndex() const { return mAbsFretIndex; }
  int coveredMinStr() const { return mCoveredMinStr; }
  int coveredMaxStr() const { return mCoveredMaxStr; }
  int fingerPointType() const { return mFingerPointType; }

  // Ignores a pair with min above max or a string above 15.
  void setCoveredMinStr(int coveredMinStr, int coveredMaxStr);
  // Moves the element; a result outside 0..31 is ignored.
  void shiftFretIndexBy(int delta);

  bool isBarre() const { return mCoveredMaxStr > mCoveredMinStr; }
  bool coversString(int stringIndex) const {
    return stringIndex >= mCoveredMinStr && stringIndex <= mCoveredMaxStr;
  }
  // The string when the element covers one string, otherwise -1.
  int singleStringIndex() const { return isBarre() ? -1 : mCoveredMinStr; }
  // A real spot has point type 0; any other type marks an optional spot.
  bool isRealSpot() const { return mFingerPointType == 0; }

  bool isEqualToChordElem(const GChChordElem& other) const;

  GChPropertyList propertyList() const;
  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  GChChordElem() = default;

  uint8_t mFingerNumber = 0;
  uint8_t mAbsFretIndex = 0;
  uint8_t mCoveredMaxStr = 0;
  uint8_t mCoveredMinStr = 0;
  uint8_t mFingerPointType = 0;
};

// The same content as a free record, with no checks.
struct GChChordElemDescr : TraceFamily<GChChordElemDescr> {
  uint8_t fingerNumber = 0;
  uint8_t absFretIndex = 0;
  uint8_t coveredMaxStr = 0;
  uint8_t coveredMinStr = 0;
  uint8_t fingerPointType = 0;

  GChChordElemDescr() = default;
  explicit GChChordElemDescr(const GChChordElem& elem);
  std::optional<GChChordElem> chordElem() const;

  GChPropertyList propertyList() const;
  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
