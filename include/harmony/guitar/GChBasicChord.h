#pragma once
// A chord grid as a library stores it: the fingers on the strings for one tuning, with muted
// strings, favourite transpositions, a difficulty, an optional root, bass, chord type and a
// name given by the user.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/guitar/GChChordElem.h"
#include "harmony/guitar/GChPropertyList.h"
#include "harmony/guitar/GChTuning.h"

namespace harmony {

class GChLibrary;

// A chord type id of the built-in chord-type table (0 when the grid has none).
using GChChordTypeId = uint16_t;

class GChBasicChord : public TraceFamily<GChBasicChord> {
 public:
  explicit GChBasicChord(const GChShortTuning& shortTuning);

  // Builds a grid from its property-list form; null when a field is missing or out of range.
  static std::unique_ptr<GChBasicChord> fromPropertyList(const GChPropertyList& plist);

  // --- elements ---
  // Adds a finger on the strings between the two indexes (in either order); false when the
  // element is refused (see GChChordElem) or a string lies beyond the tuning.
  bool addChordElem(int fingerNumber, int absFretIndex, int stringIndex1, int stringIndex2,
                    int fingerPointType = 0);
  bool addChordElem(int fingerNumber, int absFretIndex, int stringIndex);
  const std::vector<GChChordElem>& chordElems() const { return mChordElems; }
  // Sorted by fret, then lowest string, highest string, finger and point type.
  std::vector<GChChordElem> sortedChordElems() const;
  void removeChordElems() { mChordElems.clear(); }
  bool removeChordElem(const GChChordElem& elem);  // the first equal element
  void shiftFretIndexesBy(int delta);

  // --- spots: elements at a fret; "single" ones cover exactly one string ---
  const GChChordElem* elemAtAbsFretIndex(int absFretIndex, int stringIndex) const;
  const GChChordElem* spotAtAbsFretIndex(int absFretIndex, int stringIndex) const;
  const GChChordElem* realSpotAtMaxIndexForStringIndex(int stringIndex) const;
  const GChChordElem* optionalSpotAtMaxIndexForStringIndex(int stringIndex) const;
  bool hasSingleSpot(int stringIndex, int absFretIndex) const;
  bool hasSingleSpot(int stringIndex, int absFretIndex, int fingerNumber) const;
  bool hasBarreSpot(int stringIndex0, int stringIndex1, int absFretIndex) const;
  bool hasBarreSpot(int stringIndex0, int stringIndex1, int absFretIndex, int fingerNumber) const;
  int fretIndexForBarreSpot(int stringIndex0, int stringIndex1) const;  // -1 when none
  // True when a barre at this fret or below covers both strings.
  bool liesInBarreShadow(int absFretIndex, int stringIndex1, int stringIndex2) const;
  // The highest fret pressed on the string (barres included) plus one; 0 for an open string,
  // -1 for a muted one.
  int maxAbsFretIndexPlusOneForStringIndex(int stringIndex) const;
  // Counting and removing work on the single-string spots of a string; a barre across the
  // string stays.
  int numberOfSpotsForStringIndex(int stringIndex) const;
  int numberOfOptionalSpotsForStringIndex(int stringIndex) const;
  int numberOfRealSpotsForStringIndex(int stringIndex) const;
  int removeSpotsForStringIndex(int stringIndex, bool onlyLastElement);
  int removeOptionalSpotsForStringIndex(int stringIndex, bool onlyLastElement);
  int removeRealSpotsForStringIndex(int stringIndex, bool onlyLastElement);

  // --- strings and flags ---
  int numberOfStrings() const { return GChNumberOfStringsInShortTuning(mShortTuning); }
  bool isMutedForStringIndex(int stringIndex) const;
  void setMuted(bool muted, int stringIndex);
  bool isOpenForStringIndex(int stringIndex) const;  // neither muted nor pressed
  bool hasOpenStrings() const;
  bool isFavoriteForTransposeIndex(int transposeIndex) const;
  void setIsFavorite(bool favorite, int transposeIndex);

  // 0 when the highest fret lies below `numberOfFrets` (the grid starts at the nut),
  // otherwise the lowest fret of the grid.
  int firstShownFretForNumberOfFrets(int numberOfFrets) const;
  int lowestFingeredFret() const;  // 0 without elements

  bool isEqualToChordRange(const GChBasicChord& other, bool includeFavoriteMask) const;
  bool isEmpty() const { return mChordElems.empty(); }
  // Removes elements and muting and resets favourites, difficulty, root, bass, type and name.
  void clearAll();

  // The user's name, behind the root name when a root is set ("A Jazz"); empty when the grid
  // has no name of its own (naming from the notes is not available here).
  std::string chordName(int capodasterOffset) const;

  // --- library file form ---
  size_t chordChunkSize() const;
  // The bytes written, or 0 when the chunk does not fit or the name cannot be encoded.
  size_t writeChordChunkToBuffer(uint8_t* buffer, size_t remLength) const;

  // --- accessors ---
  GChLibrary* library() const { return mLibrary; }
  void setLibrary(GChLibrary* library) { mLibrary = library; }
  const GChShortTuning& shortTuning() const { return mShortTuning; }
  void setShortTuning(const GChShortTuning& tuning) { mShortTuning = tuning; }
  long dbChordID() const { return mDbChordID; }
  void setDbChordID(long id) { mDbChordID = id; }
  uint16_t isMutedMask() const { return mIsMutedMask; }
  void setIsMutedMask(uint16_t mask) { mIsMutedMask = mask; }
  uint32_t isFavoriteMask() const { return mIsFavoriteMask; }
  void setIsFavoriteMask(uint32_t mask) { mIsFavoriteMask = mask; }
  int difficultyLevel() const { return mDifficultyLevel; }
  void setDifficultyLevel(int level) { mDifficultyLevel = static_cast<uint8_t>(level); }
  int rootNote() const { return mRootNote; }
  void setRootNote(int note) { mRootNote = static_cast<int8_t>(note); }
  int bassNote() const { return mBassNote; }
  void setBassNote(int note) { mBassNote = static_cast<int8_t>(note); }
  GChChordTypeId chordType() const { return mChordType; }
  void setChordType(GChChordTypeId type) { mChordType = type; }
  const std::string& userName() const { return mUserName; }
  void setUserName(const std::string& name) { mUserName = name; }

  GChPropertyList propertyList() const;
  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  template <class Pred>
  int removeSinglesWhere(int stringIndex, bool onlyLastElement, Pred pred);
  template <class Pred>
  int countSinglesWhere(int stringIndex, Pred pred) const;
  template <class Pred>
  const GChChordElem* highestSingleWhere(int stringIndex, Pred pred) const;

  GChLibrary* mLibrary = nullptr;  // not owned: the library owns its chords
  GChShortTuning mShortTuning{};
  std::vector<GChChordElem> mChordElems;
  long mDbChordID = -1;
  uint16_t mIsMutedMask = 0;
  uint32_t mIsFavoriteMask = 0;
  uint8_t mDifficultyLevel = 0;
  int8_t mRootNote = -1;
  int8_t mBassNote = -1;
  GChChordTypeId mChordType = 0;
  std::string mUserName;
};

}  // namespace harmony
