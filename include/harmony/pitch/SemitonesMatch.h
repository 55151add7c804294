#pragma once
// CSemitonesMatch: a pattern over the twelve semitones above a root that says for each one
// whether it must be present, must be absent, or does not matter. Rules such as "a major
// triad with anything on top" are written in it and CSemitones values are tested against it.

#include <array>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

enum TSemiMatch : std::int32_t {
  kSemiMatch_Forbidden = 0,
  kSemiMatch_Required = 1,
  kSemiMatch_Free = 2,
};

// "0", "1", "x"; anything else "unknown TSemiMatch: " and the number.
std::ostream& operator<<(std::ostream& out, TSemiMatch match);

class CSemitonesMatch : public TraceFamily<CSemitonesMatch> {
 public:
  // All forbidden: matches only the empty set.
  CSemitonesMatch() = default;
  // One value per semitone, from the root up. Write it with parentheses: braces would pick
  // the list of required indices below.
  CSemitonesMatch(TSemiMatch s0, TSemiMatch s1, TSemiMatch s2, TSemiMatch s3, TSemiMatch s4,
                  TSemiMatch s5, TSemiMatch s6, TSemiMatch s7, TSemiMatch s8, TSemiMatch s9,
                  TSemiMatch s10, TSemiMatch s11);
  // The listed semitones required, the rest forbidden. 12 stands for the root (the octave);
  // larger entries are ignored.
  CSemitonesMatch(std::initializer_list<unsigned long> required);
  // As above, then the second list free; a semitone in both lists ends free.
  CSemitonesMatch(std::initializer_list<unsigned long> required,
                  std::initializer_list<unsigned long> free);
  // Required where the set has a tone, forbidden elsewhere.
  explicit CSemitonesMatch(const CSemitones& semitones);

  void Reset() { ResetToValue(kSemiMatch_Forbidden); }
  void ResetToValue(TSemiMatch value) { _slots.fill(value); }
  // 12 counts as 0; larger indices are ignored.
  void SetSemitone(unsigned long index, TSemiMatch value);
  // 12 counts as 0; larger indices read as free.
  TSemiMatch Semitone(unsigned long index) const;
  // Required at the semitone of each interval (folded as CSemitones folds), forbidden elsewhere.
  void SetFromIntvlSet(const CIntvlSet& intvls);

  bool Matches(const CSemitones& semitones) const;

  friend bool operator==(const CSemitonesMatch& a, const CSemitonesMatch& b) {
    return a._slots == b._slots;
  }

  // [1,0,x,...]: meant to be read by eye, the "x" makes it no strict JSON.
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  std::array<TSemiMatch, 12> _slots{};
};

class CSemitonesMatches : public std::vector<CSemitonesMatch>,
                          public TraceFamily<CSemitonesMatches> {
 public:
  using std::vector<CSemitonesMatch>::vector;

  // True if any pattern matches; false for an empty list.
  bool Matches(const CSemitones& semitones) const;

  // "[", then each pattern on its own line followed by ",", then "]".
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
