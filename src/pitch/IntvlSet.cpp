#include "harmony/pitch/IntvlSet.h"

#include <cstdarg>

#include "harmony/pitch/Semitones.h"

namespace harmony {

namespace {

constexpr int kUndefIntvl = -129;
constexpr unsigned long kMaxVarargIntvls = 128;

bool IsOutsideMidiRange(int v) { return v < 0 || v > 127; }
bool IsNegative(int v) { return v < 0; }

// The values of a C argument list up to (not including) the first one that `ends` accepts.
struct TListedIntvls {
  CMySet<int> distinct;
  unsigned long count = 0;
};

TListedIntvls ReadList(int first, va_list args, bool (*ends)(int), unsigned long maxCount) {
  TListedIntvls listed;
  // No value is read past the last one taken: a full list of 128 needs no terminator.
  for (int v = first; !ends(v); v = va_arg(args, int)) {
    listed.distinct.insert(v);
    if (++listed.count == maxCount) break;
  }
  return listed;
}

TListedIntvls FromList(std::initializer_list<int> intvls) {
  return {CMySet<int>(intvls), static_cast<unsigned long>(intvls.size())};
}

constexpr int Normalized12(int v) { return ((v % 12) + 12) % 12; }

}  // namespace

CIntvlSet::CIntvlSet(int first, ...) {
  va_list args;
  va_start(args, first);
  static_cast<CMySet<int>&>(*this) =
      ReadList(first, args, IsOutsideMidiRange, kMaxVarargIntvls).distinct;
  va_end(args);
}

CIntvlSet::CIntvlSet(std::initializer_list<int> intvls) : CMySet<int>(intvls) {}

void CIntvlSet::SetIntvls(int first, ...) {
  va_list args;
  va_start(args, first);
  static_cast<CMySet<int>&>(*this) =
      ReadList(first, args, IsOutsideMidiRange, kMaxVarargIntvls).distinct;
  va_end(args);
}

void CIntvlSet::SetIntvls(std::initializer_list<int> intvls) {
  static_cast<CMySet<int>&>(*this) = intvls;
}

bool CIntvlSet::HasIntvl(int intvl) const {
  if (intvl == kUndefIntvl || empty()) return false;
  return contains(intvl);
}

bool CIntvlSet::HasIntvlInAnyOctave(int intvl) const {
  if (intvl == kUndefIntvl) return false;
  for (long v = intvl % 12; v < _WrapIntvl; v += 12) {
    if (contains(v)) return true;
  }
  return false;
}

namespace {

bool HasAll(const CIntvlSet& set, const TListedIntvls& listed) {
  if (listed.count == 0) return true;
  if (set.empty()) return false;
  for (int v : listed.distinct) {
    if (!set.contains(v)) return false;
  }
  return true;
}

// The count of listed values, repeats included, must equal the size: a repeated value thus
// fails even when everything listed is present.
bool HasExact(const CIntvlSet& set, const TListedIntvls& listed) {
  return listed.count == set.size() && listed.distinct == set;
}

bool HasExactInAnyOctave(const CIntvlSet& set, const TListedIntvls& listed) {
  for (int v : listed.distinct) {
    if (!set.HasIntvlInAnyOctave(v)) return false;
  }
  return listed.distinct.size() == set.size();
}

}  // namespace

bool CIntvlSet::HasIntvls(int first, ...) const {
  va_list args;
  va_start(args, first);
  const TListedIntvls listed = ReadList(first, args, IsOutsideMidiRange, ~0UL);
  va_end(args);
  return HasAll(*this, listed);
}

bool CIntvlSet::HasIntvls(std::initializer_list<int> intvls) const {
  return HasAll(*this, FromList(intvls));
}

bool CIntvlSet::HasExactTheseIntvls(int first, ...) const {
  va_list args;
  va_start(args, first);
  const TListedIntvls listed = ReadList(first, args, IsNegative, ~0UL);
  va_end(args);
  return HasExact(*this, listed);
}

bool CIntvlSet::HasExactTheseIntvls(std::initializer_list<int> intvls) const {
  return HasExact(*this, FromList(intvls));
}

bool CIntvlSet::HasExactlyTheseIntvlsInAnyOctave(int first, ...) const {
  va_list args;
  va_start(args, first);
  const TListedIntvls listed = ReadList(first, args, IsNegative, ~0UL);
  va_end(args);
  return HasExactInAnyOctave(*this, listed);
}

bool CIntvlSet::HasExactlyTheseIntvlsInAnyOctave(std::initializer_list<int> intvls) const {
  return HasExactInAnyOctave(*this, FromList(intvls));
}

// Unlike HasIntvlInAnyOctave the argument is not folded first and the wrap interval itself
// is still erased.
void CIntvlSet::EraseIntvlInAnyOct(int intvl) {
  if (empty()) return;
  long v = intvl;
  // Values below the lowest element erase nothing; skipping them keeps the walk short.
  if (v < *begin()) v += (static_cast<long>(*begin()) - v) / 12 * 12;
  for (; v <= _WrapIntvl; v += 12) erase(static_cast<int>(v));
}

bool CIntvlSet::HasOtherStackedThirdsOptionThan(int intvl) const {
  for (int e : *this) {
    const int folded = Normalized12(e);
    const bool isTriadTone = folded == 0 || folded == 3 || folded == 4 || folded == 7;
    if (!isTriadTone && folded != intvl) return true;
  }
  return false;
}

// The shape seen from its n-th tone: that tone becomes 0 and everything below it moves up by
// the span of the chord (an octave, or two for a chord reaching past the octave).
CIntvlSet CIntvlSet::Inversion(unsigned long n) const {
  if (size() < 2) return *this;
  const long long pivot = Intvl(n % size());
  const long long largest = *rbegin();
  const long long span = largest <= 12 ? 12 : (largest + 11) / 12 * 12;
  CIntvlSet result;
  for (long long e : *this) result.insert(static_cast<int>((e + span - pivot) % span));
  return result;
}

void CIntvlSet::Invert() { *this = Inversion(1); }

void CIntvlSet::SetFromSemitones(const CSemitones& semitones) { *this = semitones.IntvlSet(); }

CSemitones CIntvlSet::ToSemitones() const {
  CSemitones semitones;
  for (int e : *this) semitones.AddIntvl(e);
  return semitones;
}

bool CIntvlSet::AutoTest() {
  const CIntvlSet majorTriad(0, 4, 7, -1);
  const CIntvlSet firstInversion(0, 3, 8, -1);
  CIntvlSet ninth(0, 4, 7, 14, -1);
  bool ok = majorTriad.size() == 3 && majorTriad.HasIntvls(0, 7, -1);
  ok = ok && majorTriad.HasExactTheseIntvls(7, 0, 4, -1) && !majorTriad.HasIntvls(0, 2, -1);
  ok = ok && majorTriad.Inversion(1) == firstInversion && majorTriad.Inversion(3) == majorTriad;
  ok = ok && ninth.HasIntvlInAnyOctave(2) && ninth.ToSemitones() == CSemitones(149);
  ninth.EraseIntvlInAnyOct(2);
  ok = ok && ninth == majorTriad && ninth.HasExactlyTheseIntvlsInAnyOctave(12, 16, 19, -1);
  return ok;
}

void CIntvlSet::WriteTrace(std::ostream& out) const {
  out << "CIntvlSet: (";
  WriteTraceBrief(out);
  out << " )";
}

void CIntvlSet::WriteTraceBrief(std::ostream& out) const {
  const char* separator = "";
  for (int e : *this) {
    out << separator << e;
    separator = ", ";
  }
}

void CIntvlSet::WriteInitializerList(std::ostream& out) const {
  out << "CIntvlSet{";
  WriteTraceBrief(out);
  out << "}";
}

CIntvlSet ConvertKeyNrSetToIntvlSet(const CMySet<int>& keyNrs, int rootKey) {
  CIntvlSet result;
  if (rootKey == 15) return result;
  for (int key : keyNrs) result.insert(Normalized12(key - rootKey));
  return result;
}

CMySet<int> ConvertIntvlSetToKeyNrSet(const CIntvlSet& intvlSet, int rootKey) {
  CMySet<int> result;
  if (rootKey == 15) return result;
  for (int intvl : intvlSet) result.insert(Normalized12(intvl + rootKey));
  return result;
}

}  // namespace harmony
