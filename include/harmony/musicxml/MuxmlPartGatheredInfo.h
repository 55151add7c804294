#pragma once
// What the event import learns about a part while it reads it, handed to the host at the
// part's end: clefs and staves, voices, the note range, the transpositions the notes were
// written under, and the positions and lengths of plain and triplet notes as fractions of a
// whole note (which tell a host how fine the part's rhythm is).

#include <boost/rational.hpp>
#include <cstdint>
#include <map>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/MuxmlSigns.h"

namespace harmony {

// Values that change along the part, each with the position (in ticks) from which it holds.
template <class T>
class CPositionedInfo : public std::vector<std::pair<std::int32_t, T>> {
 public:
  std::int32_t mEndPosition = kMuxmlUndef32;

  // Appends the value at the position, unless the last entry holds that value already.
  void AppendIfValueChanges(std::int32_t position, const T& value) {
    if (!this->empty() && this->back().second == value) return;
    this->emplace_back(position, value);
  }
};

// How many notes were written under each transposition. Transpositions that differ only in
// the octave change share one count (see CMuxmlTranspose::operator<).
class CTransposeNoteCounts : public std::map<CMuxmlTranspose, int> {
 public:
  // Makes sure the transposition has a count, 0 when it is new.
  void EnsureEntry(const CMuxmlTranspose& transpose) { (*this)[transpose]; }
  void CountNote(const CMuxmlTranspose& transpose) { ++(*this)[transpose]; }
};

class CMuxmlPartGatheredInfo : public TraceFamily<CMuxmlPartGatheredInfo> {
 public:
  // A fraction of a whole note.
  using TDurDiv = boost::rational<unsigned long>;

  std::int32_t mPartEndPosAsMidiTicks = kMuxmlUndef32;
  std::vector<CMuxmlClef> mClefs;
  CPositionedInfo<int> mPositionedStaves;
  std::set<int> mFoundVoices;
  std::set<TDurDiv> mFoundBinaryAndTripletNotePosInBarAsDurDiv;
  std::set<TDurDiv> mFoundBinaryAndTripletNoteLengthsAsDurDiv;
  CTransposeNoteCounts mFoundTransposeNoteCounts;
  // Since the last rest, for the lowest.
  long mLowestNoteNr = -1;
  long mHighestNoteNr = -1;

  // A grand staff from the start: two staves, and the first two clefs, at one position, are
  // a G clef on line 2 and an F clef on line 4 in either order.
  bool IsPianoPartAtBegin() const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
