#include "harmony/pitch/SemitonesMatch.h"

namespace harmony {

namespace {
const char* const kSemiMatchInitializerNames[] = {"kSemiMatch_Forbidden", "kSemiMatch_Required",
                                                  "kSemiMatch_Free"};
}

std::ostream& operator<<(std::ostream& out, TSemiMatch match) {
  switch (match) {
    case kSemiMatch_Forbidden:
      return out << '0';
    case kSemiMatch_Required:
      return out << '1';
    case kSemiMatch_Free:
      return out << 'x';
  }
  return out << "unknown TSemiMatch: " << static_cast<std::int32_t>(match);
}

CSemitonesMatch::CSemitonesMatch(TSemiMatch s0, TSemiMatch s1, TSemiMatch s2, TSemiMatch s3,
                                 TSemiMatch s4, TSemiMatch s5, TSemiMatch s6, TSemiMatch s7,
                                 TSemiMatch s8, TSemiMatch s9, TSemiMatch s10, TSemiMatch s11)
    : _slots{s0, s1, s2, s3, s4, s5, s6, s7, s8, s9, s10, s11} {}

CSemitonesMatch::CSemitonesMatch(std::initializer_list<unsigned long> required) {
  for (unsigned long index : required) SetSemitone(index, kSemiMatch_Required);
}

CSemitonesMatch::CSemitonesMatch(std::initializer_list<unsigned long> required,
                                 std::initializer_list<unsigned long> free)
    : CSemitonesMatch(required) {
  for (unsigned long index : free) SetSemitone(index, kSemiMatch_Free);
}

CSemitonesMatch::CSemitonesMatch(const CSemitones& semitones) {
  for (unsigned long i = 0; i < 12; ++i) {
    _slots[i] = semitones.Semitone(i) ? kSemiMatch_Required : kSemiMatch_Forbidden;
  }
}

void CSemitonesMatch::SetSemitone(unsigned long index, TSemiMatch value) {
  if (index > 12) return;
  _slots[index % 12] = value;
}

TSemiMatch CSemitonesMatch::Semitone(unsigned long index) const {
  if (index > 12) return kSemiMatch_Free;
  return _slots[index % 12];
}

void CSemitonesMatch::SetFromIntvlSet(const CIntvlSet& intvls) {
  Reset();
  for (int intvl : intvls) _slots[CSemitones::SemitoneIxFromIntvl(intvl)] = kSemiMatch_Required;
}

bool CSemitonesMatch::Matches(const CSemitones& semitones) const {
  for (unsigned long i = 0; i < 12; ++i) {
    if (_slots[i] == kSemiMatch_Required && !semitones.Semitone(i)) return false;
    if (_slots[i] == kSemiMatch_Forbidden && semitones.Semitone(i)) return false;
  }
  return true;
}

void CSemitonesMatch::AppendJSONString(std::ostream& out) const {
  out << '[';
  for (unsigned long i = 0; i < 12; ++i) out << (i > 0 ? "," : "") << _slots[i];
  out << ']';
}

void CSemitonesMatch::WriteTrace(std::ostream& out) const {
  out << "CSemitonesMatch: ";
  AppendJSONString(out);
}

void CSemitonesMatch::WriteTraceBrief(std::ostream& out) const {
  for (TSemiMatch slot : _slots) out << slot;
}

void CSemitonesMatch::WriteInitializerList(std::ostream& out) const {
  out << "CSemitonesMatch(";
  for (unsigned long i = 0; i < 12; ++i) {
    const TSemiMatch slot = _slots[i];
    out << (i > 0 ? ", " : "");
    if (slot >= kSemiMatch_Forbidden && slot <= kSemiMatch_Free) {
      out << kSemiMatchInitializerNames[slot];
    } else {
      out << "TSemiMatch(" << static_cast<std::int32_t>(slot) << ")";
    }
  }
  out << ")";
}

bool CSemitonesMatches::Matches(const CSemitones& semitones) const {
  for (const CSemitonesMatch& match : *this) {
    if (match.Matches(semitones)) return true;
  }
  return false;
}

void CSemitonesMatches::AppendJSONString(std::ostream& out) const {
  out << "[\n";
  for (const CSemitonesMatch& match : *this) {
    match.AppendJSONString(out);
    out << ",\n";
  }
  out << "]";
}

void CSemitonesMatches::WriteTrace(std::ostream& out) const {
  out << "CSemitonesMatches: ";
  AppendJSONString(out);
}

void CSemitonesMatches::WriteTraceBrief(std::ostream& out) const {
  const char* separator = "";
  for (const CSemitonesMatch& match : *this) {
    out << separator;
    match.WriteTraceBrief(out);
    separator = " ";
  }
}

void CSemitonesMatches::WriteInitializerList(std::ostream& out) const {
  out << "CSemitonesMatches{";
  const char* separator = "";
  for (const CSemitonesMatch& match : *this) {
    out << separator;
    match.WriteInitializerList(out);
    separator = ", ";
  }
  out << "}";
}

}  // namespace harmony
