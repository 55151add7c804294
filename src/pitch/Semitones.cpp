#include "harmony/pitch/Semitones.h"

#include <array>

namespace harmony {

namespace {

constexpr int kUndef = CSemitones::kUndefIntvl;

// The small and the large interval of a tension group. The flat fifth of a diminished triad
// and the sharp fifth of an augmented one belong to the triad, so they do not count as the
// eleventh or the flat thirteenth there.
std::pair<int, int> OptionIntvls(TChordOption option, const CSemitones& triad) {
  switch (option) {
    case kChordOption7:
      return {10, 11};
    case kChordOption9:
      return {1, 2};
    case kChordOption11:
      return {5, triad.IsDim() ? kUndef : 6};
    case kChordOption13:
      return {triad.IsAug() ? kUndef : 8, 9};
  }
  return {kUndef, kUndef};
}

bool IsOptionValue(TChordOption option) { return option <= kChordOption13; }

}  // namespace

std::uint64_t CSemitones::VectorBoolToInt(const std::vector<bool>& bits) {
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < bits.size() && i < 64; ++i) {
    if (bits[i]) word |= std::uint64_t{1} << i;
  }
  return word;
}

void CSemitones::ToVectorBool(std::vector<bool>& bits) const {
  bits.assign(12, false);
  if (_word > 4096) return;
  for (unsigned long i = 0; i < 12; ++i) bits[i] = Semitone(i);
}

void CSemitones::AddIntvls(const CIntvlSet& intvls) {
  for (int intvl : intvls) AddIntvl(intvl);
}

void CSemitones::EraseIntvls(const CIntvlSet& intvls) {
  for (int intvl : intvls) EraseIntvl(intvl);
}

void CSemitones::SetFromIntvlSet(const CIntvlSet& intvls) {
  Reset();
  AddIntvls(intvls);
}

CIntvlSet CSemitones::IntvlSet() const {
  CIntvlSet result;
  result.SetWrapIntvl(12);
  for (std::uint64_t rest = _word; rest != 0; rest &= rest - 1) {
    result.insert(std::countr_zero(rest));
  }
  return result;
}

bool CSemitones::HasTheseOrMoreIntvls(const CIntvlSet& intvls) const {
  if (intvls.empty()) return false;
  for (int intvl : intvls) {
    if (!HasIntvl(intvl)) return false;
  }
  return true;
}

bool CSemitones::HasExactlyTheseIntvls(const CIntvlSet& intvls) const {
  if (intvls.empty() || intvls.size() != size()) return false;
  return HasTheseOrMoreIntvls(intvls);
}

// First match wins. A chord with both the perfect and the sharp fifth is not augmented.
TBasicChord CSemitones::BasicChord() const {
  const bool aug = Semitone(8) && !Semitone(7);
  if (Semitone(4)) {
    if (aug) return kBasicChordAug;
    if (Semitone(6) && !Semitone(7)) return kBasicChordMajorFlat5;
    return kBasicChordMajor;
  }
  if (Semitone(3)) {
    if (Semitone(6)) return Semitone(7) ? kBasicChordMinor : kBasicChordDim;
    if (!aug) return kBasicChordMinor;
    // A minor third over a sharp fifth without the fifth: no triad of its own.
  }
  if (!Semitone(7)) return kBasicChordNone;
  if (Semitone(5)) return kBasicChordSus4;
  if (Semitone(2)) return kBasicChordSus2;
  if ((_word & 9) == 1) return kBasicChordPower;
  return kBasicChordNone;
}

void CSemitones::SetFromBasicChord(TBasicChord basicChord) {
  *this = SemitonesForBasicChord(basicChord);
}

void CSemitones::AddSemitonesFromBasicChord(TBasicChord basicChord) {
  *this += SemitonesForBasicChord(basicChord);
}

CSemitones CSemitones::ExtractBasicChordSemitones() const {
  return SemitonesForBasicChord(BasicChord());
}

void CSemitones::EraseTensions() { *this = ExtractBasicChordSemitones(); }

int CSemitones::DegreeNrToIntvl(int degreeNr) const {
  if (IsEmpty()) return kUndefIntvl;
  std::uint64_t n = static_cast<std::uint64_t>(static_cast<std::int64_t>(degreeNr)) % size();
  std::uint64_t rest = _word;
  for (; n > 0; --n) rest &= rest - 1;
  return std::countr_zero(rest);
}

bool CSemitones::HasChordOption(TChordOption option) const {
  const auto [small, large] = OptionIntvls(option, *this);
  return HasIntvl(small) || HasIntvl(large);
}

bool CSemitones::IsMatchingChordOption(TChordOption option, const CSemitones& other) const {
  if (!IsOptionValue(option)) return true;
  const auto [small, large] = OptionIntvls(option, other);
  if (!other.HasIntvl(small) && !other.HasIntvl(large)) return true;
  for (int intvl : {small, large}) {
    if (intvl != kUndef && HasIntvl(intvl) != other.HasIntvl(intvl)) return false;
  }
  return true;
}

bool CSemitones::HasSameSemitonesAtTheseIndicesTo(const std::vector<unsigned long>& indices,
                                                  const CSemitones& other) const {
  for (unsigned long index : indices) {
    if (Semitone(index) != other.Semitone(index)) return false;
  }
  return true;
}

bool CSemitones::HasSameOrLessSemitonesAtTheseIndicesTo(const std::vector<unsigned long>& indices,
                                                        const CSemitones& other) const {
  for (unsigned long index : indices) {
    if (Semitone(index) && !other.Semitone(index)) return false;
  }
  return true;
}

unsigned long CSemitones::StepsWithIntvlCount(int intvl) const {
  unsigned long count = 0;
  int previous = -1;
  for (std::uint64_t rest = _word; rest != 0; rest &= rest - 1) {
    const int current = std::countr_zero(rest);
    if (previous >= 0 && current - previous == intvl) ++count;
    previous = current;
  }
  return count;
}

std::string CSemitones::GenericName() const {
  if (IsEmpty()) return "-";
  std::string name;
  for (std::uint64_t rest = _word; rest != 0; rest &= rest - 1) {
    if (!name.empty()) name += '-';
    name += std::to_string(std::countr_zero(rest));
  }
  return name;
}

void CSemitones::AppendJSONString(std::ostream& out) const {
  out << '[';
  for (unsigned long i = 0; i < 12; ++i) out << (i > 0 ? "," : "") << (Semitone(i) ? 1 : 0);
  out << ']';
}

void CSemitones::WriteTrace(std::ostream& out) const {
  out << _word << '=';
  for (unsigned long i = 0; i < 12; ++i) out << (Semitone(i) ? '+' : '.');
  out << ' ' << GenericName();
  const std::string& scaleName = Semitones::LocalizedNameForScale(*this);
  if (!scaleName.empty()) out << ' ' << scaleName;
}

void CSemitones::WriteTraceBrief(std::ostream& out) const {
  for (unsigned long i = 0; i < 12; ++i) {
    if (Semitone(i)) {
      out << i;
    } else {
      out << '-';
    }
  }
}

void CSemitones::WriteInitializerList(std::ostream& out) const {
  out << "CSemitones(" << _word << ")";
}

}  // namespace harmony
