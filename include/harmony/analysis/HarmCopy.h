#pragma once
// A repeated passage of a piece: where the repetition (the copy) stands, how far back its
// source lies and how long it lasts, in bars of four quarter notes. The repeats search of
// the analyser writes the distance back as a negative or zero bar count; the MusicXML import
// writes one record per jump back of the score with a positive count.

#include <cstdint>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"

namespace harmony {

class CHarmCopy : public TraceFamily<CHarmCopy> {
 public:
  double TargetPos = 0.0;               // quarter notes: where the copy starts
  std::int32_t SourceOffsetBars = 0;    // bars from the copy back to its source
  std::int32_t SourceOffsetChords = 0;  // 0 in every record the library makes
  std::uint64_t LengthBars = 0;         // whole bars
  std::uint64_t LengthChords = 0;       // 0 in every record the library makes

  CHarmCopy() = default;
  CHarmCopy(double targetPos, std::int32_t sourceOffsetBars, std::uint64_t lengthBars)
      : TargetPos(targetPos), SourceOffsetBars(sourceOffsetBars), LengthBars(lengthBars) {}

  bool operator==(const CHarmCopy& other) const {
    return TargetPos == other.TargetPos && SourceOffsetBars == other.SourceOffsetBars &&
           SourceOffsetChords == other.SourceOffsetChords && LengthBars == other.LengthBars &&
           LengthChords == other.LengthChords;
  }

  // "CHarmCopy: TargetPos 16 Source OffsetBars -4 Chords 0, Length Bars 4 Chords 0"; the
  // first chord count is LengthChords too.
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmCopies : public std::vector<CHarmCopy>, public TraceFamily<CHarmCopies> {
 public:
  using std::vector<CHarmCopy>::vector;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
