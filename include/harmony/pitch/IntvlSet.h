#pragma once
// CIntvlSet: a chord or scale shape that keeps its register. The elements are ascending
// intervals above a root and may reach past the octave (a ninth is 14, not 2). The wrap
// interval tells the any-octave operations how far above the root the shape reaches.

#include <initializer_list>
#include <ostream>

#include "harmony/Trace.h"
#include "harmony/pitch/MySet.h"

namespace harmony {

class CSemitones;

class CIntvlSet : public CMySet<int>, public TraceFamily<CIntvlSet> {
 public:
  static constexpr int kDefaultWrapIntvl = 24;

  CIntvlSet() = default;
  // Intervals up to the first value outside 0..127, which ends the list and is not taken;
  // at most 128 values are read: CIntvlSet(0, 4, 7, -1).
  CIntvlSet(int first, ...);
  // Exactly the listed intervals, whatever their range.
  CIntvlSet(std::initializer_list<int> intvls);

  int WrapIntvl() const { return _WrapIntvl; }
  void SetWrapIntvl(int wrapIntvl) { _WrapIntvl = wrapIntvl; }

  // Replaces the contents like the variadic constructor; the wrap interval stays.
  void SetIntvls(int first, ...);
  void SetIntvls(std::initializer_list<int> intvls);

  bool HasIntvl(int intvl) const;
  // Any of intvl, intvl ± 12, ... that lies below the wrap interval.
  bool HasIntvlInAnyOctave(int intvl) const;
  // All listed intervals are present; the list ends at the first value outside 0..127.
  bool HasIntvls(int first, ...) const;
  bool HasIntvls(std::initializer_list<int> intvls) const;
  // The list, ended by a negative value, names each element exactly once and nothing else.
  bool HasExactTheseIntvls(int first, ...) const;
  bool HasExactTheseIntvls(std::initializer_list<int> intvls) const;
  // Each listed interval is present in some octave and the set has as many elements as the
  // list has different values; the list ends with a negative value.
  bool HasExactlyTheseIntvlsInAnyOctave(int first, ...) const;
  bool HasExactlyTheseIntvlsInAnyOctave(std::initializer_list<int> intvls) const;
  // Erases intvl, intvl + 12, ... up to and including the wrap interval.
  void EraseIntvlInAnyOct(int intvl);
  // An element other than root, minor or major third and fifth, and other than `intvl`.
  bool HasOtherStackedThirdsOptionThan(int intvl) const;

  // The n-th element in ascending order; n must be below size().
  int Intvl(unsigned long n) const { return begin()[n]; }

  CIntvlSet Inversion(unsigned long n) const;
  void Invert();

  void SetFromSemitones(const CSemitones& semitones);
  CSemitones ToSemitones() const;

  // Internal consistency check of the set operations; true when all hold.
  static bool AutoTest();

  // The wrap interval does not take part.
  friend bool operator==(const CIntvlSet& a, const CIntvlSet& b) {
    return static_cast<const CMySet<int>&>(a) == static_cast<const CMySet<int>&>(b);
  }
  friend auto operator<=>(const CIntvlSet& a, const CIntvlSet& b) {
    return static_cast<const CMySet<int>&>(a) <=> static_cast<const CMySet<int>&>(b);
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  int _WrapIntvl = kDefaultWrapIntvl;
};

// Key numbers relative to `rootKey`, each folded into 0..11; empty for the undefined key 15.
CIntvlSet ConvertKeyNrSetToIntvlSet(const CMySet<int>& keyNrs, int rootKey);
// Intervals placed on `rootKey`, each folded into 0..11; empty for the undefined key 15.
CMySet<int> ConvertIntvlSetToKeyNrSet(const CIntvlSet& intvlSet, int rootKey);

}  // namespace harmony
