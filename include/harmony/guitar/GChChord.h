#pragma once
// A chord grid at one transposition, sharing its stored grid with the other transpositions,
// and the free record of a grid's content.

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/guitar/GChBasicChord.h"

namespace harmony {

class GChChord : public TraceFamily<GChChord> {
 public:
  explicit GChChord(std::shared_ptr<GChBasicChord> basicChord, int transposeIndex = 0);

  const std::shared_ptr<GChBasicChord>& basicChord() const { return mBasicChord; }
  int transposeIndex() const { return mTransposeIndex; }
  int rootEnhType() const { return mRootEnhType; }
  void setRootEnhType(int type) { mRootEnhType = static_cast<int8_t>(type); }
  int bassEnhType() const { return mBassEnhType; }
  void setBassEnhType(int type) { mBassEnhType = static_cast<int8_t>(type); }

  // Forwarded to the stored grid.
  long dbChordID() const { return mBasicChord->dbChordID(); }
  int numberOfStrings() const { return mBasicChord->numberOfStrings(); }
  GChChordTypeId chordType() const { return mBasicChord->chordType(); }
  int difficultyLevel() const { return mBasicChord->difficultyLevel(); }
  const std::string& userName() const { return mBasicChord->userName(); }
  bool isFavorite() const { return mBasicChord->isFavoriteForTransposeIndex(mTransposeIndex); }
  bool isMutedForStringIndex(int s) const { return mBasicChord->isMutedForStringIndex(s); }

  // (stored root + capodaster + transpose index) folded into 0..11, -1 without a root; a
  // negative capodaster offset counts 0.
  int rootNote(int capodasterOffset) const;
  int bassNote(int capodasterOffset) const;

  // The user's name as it stands; empty when the grid has none (naming from the notes is not
  // available here).
  std::string chordName(int capodasterOffset) const;
  // The name followed by the chord's id in brackets: "Jazz A [17]".
  std::string chordNameWithIndex(int capodasterOffset) const;

  // open-string pitch + capodaster + maxAbsFretIndexPlusOne; -1 for a muted string.
  int pitchForStringIndex(int stringIndex, int capodasterOffset) const;
  // "E2 B2 E3 G#3 B3 E4 ": each sounding string's note and octave, each followed by a blank.
  std::string stringFromPitches(int capodasterOffset) const;
  // Equal tunings and the same pitch on every string, without capodaster.
  bool isSimilarToChord(const GChChord& other) const;

  GChPropertyList propertyList() const;
  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  std::shared_ptr<GChBasicChord> mBasicChord;
  int mTransposeIndex = 0;
  int8_t mRootEnhType = -1;
  int8_t mBassEnhType = -1;
};

// The content of a grid as a free record, not tied to a library.
struct GChChordDescr : TraceFamily<GChChordDescr> {
  std::vector<GChChordElemDescr> elements;
  int difficultyLevel = 0;
  int transposeRange = 0;
  int rootNote = -1;
  int bassNote = -1;
  GChChordTypeId chordType = 0;
  uint16_t isMutedMask = 0;
  uint32_t isFavoriteMask = 0;
  std::string userName;

  GChChordDescr() = default;
  explicit GChChordDescr(const GChBasicChord& chord);

  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
