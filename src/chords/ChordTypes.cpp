#include "harmony/chords/ChordTypes.h"

#include <algorithm>
#include <array>

namespace harmony {

namespace {

constexpr int kNoIntvl = -1;

struct TBuiltInChordType {
  CChordTypeId id;
  const char* name;
  std::array<int, 5> intvls;  // ascending, unused places kNoIntvl
};

// The order is the index that guitar chord libraries use; the ids are theirs too. The ninths
// are written above the octave and the other tensions inside it, and matching compares the
// intervals literally, so "add9" is 0 4 7 14 and never 0 2 4 7.
constexpr std::array<TBuiltInChordType, 30> kBuiltInChordTypes{{
    {1, "major", {0, 4, 7, kNoIntvl, kNoIntvl}},
    {9, "minor", {0, 3, 7, kNoIntvl, kNoIntvl}},
    {34, "sus2", {0, 2, 7, kNoIntvl, kNoIntvl}},
    {33, "sus4", {0, 5, 7, kNoIntvl, kNoIntvl}},
    {3, "7", {0, 4, 7, 10, kNoIntvl}},
    {119, "7 b9", {0, 4, 7, 10, 13}},
    {120, "7 #9", {0, 4, 7, 10, 15}},
    {118, "7 11", {0, 4, 5, 7, 10}},
    {25, "7 13", {0, 4, 7, 9, 10}},
    {27, "7 b13", {0, 4, 7, 8, 10}},
    {28, "9", {0, 4, 7, 10, 14}},
    {5, "add9", {0, 4, 7, 14, kNoIntvl}},
    {2, "6", {0, 4, 7, 9, kNoIntvl}},
    {7, "6 add9", {0, 4, 7, 9, 14}},
    {20, "maj7", {0, 4, 7, 11, kNoIntvl}},
    {22, "maj7 b5", {0, 4, 6, 11, kNoIntvl}},
    {26, "maj7 b9", {0, 4, 7, 11, 13}},
    {101, "maj7 b5 #9", {0, 4, 6, 11, 15}},
    {121, "maj7 13", {0, 4, 7, 9, 11}},
    {11, "minor 7", {0, 3, 7, 10, kNoIntvl}},
    {12, "minor 7 b5", {0, 3, 6, 10, kNoIntvl}},
    {16, "minor maj7", {0, 3, 7, 11, kNoIntvl}},
    {13, "minor add9", {0, 3, 7, 14, kNoIntvl}},
    {10, "minor 6", {0, 3, 7, 9, kNoIntvl}},
    {104, "minor 6 add9", {0, 3, 7, 9, 14}},
    {100, "minor b13", {0, 3, 7, 8, kNoIntvl}},
    {18, "dim", {0, 3, 6, kNoIntvl, kNoIntvl}},
    {19, "dim 7", {0, 3, 6, 9, kNoIntvl}},
    {8, "aug", {0, 4, 8, kNoIntvl, kNoIntvl}},
    {30, "aug 7", {0, 4, 8, 10, kNoIntvl}},
}};

TChordTypeVecAndChordType Found(TChordTypeVecSel sel, const CChordTypeVec& vec,
                                CChordTypeVec::const_iterator it) {
  if (it == vec.end()) return {kChordTypeVecSel_None, nullptr};
  return {sel, &*it};
}

}  // namespace

void TChordType::WriteTrace(std::ostream& out) const {
  out << "TChordType: ";
  WriteTraceBrief(out);
}

void TChordType::WriteTraceBrief(std::ostream& out) const {
  out << Id << " \"" << Name << "\" (";
  Intvls.WriteTraceBrief(out);
  out << ')';
}

void TChordType::WriteInitializerList(std::ostream& out) const {
  out << "TChordType{" << Id << ", \"" << Name << "\", ";
  Intvls.WriteInitializerList(out);
  out << ", " << Reserved << '}';
}

CChordTypeVec::const_iterator CChordTypeVec::FindChordTypeForIntvls(const CIntvlSet& intvls) const {
  return std::find_if(begin(), end(),
                      [&intvls](const TChordType& row) { return row.Intvls == intvls; });
}

CChordTypeVec::const_iterator CChordTypeVec::FindChordTypeForId(CChordTypeId id) const {
  return std::find_if(begin(), end(), [id](const TChordType& row) { return row.Id == id; });
}

void CChordTypeVec::WriteTrace(std::ostream& out) const {
  out << "CChordTypeVec: " << size() << " rows";
  for (const TChordType& row : *this) {
    out << "\n  ";
    row.WriteTraceBrief(out);
  }
}

void CChordTypeVec::WriteTraceBrief(std::ostream& out) const {
  const char* separator = "";
  for (const TChordType& row : *this) {
    out << separator << row.Name;
    separator = ", ";
  }
}

void CChordTypeVec::WriteInitializerList(std::ostream& out) const {
  out << "CChordTypeVec{";
  const char* separator = "";
  for (const TChordType& row : *this) {
    out << separator;
    row.WriteInitializerList(out);
    separator = ", ";
  }
  out << '}';
}

CChordTypes::CChordTypes() {
  _builtIn.reserve(kBuiltInChordTypes.size());
  for (const TBuiltInChordType& row : kBuiltInChordTypes) {
    TChordType chordType;
    chordType.Id = row.id;
    chordType.Name = row.name;
    for (int intvl : row.intvls) {
      if (intvl != kNoIntvl) chordType.Intvls.insert(intvl);
    }
    _builtIn.push_back(std::move(chordType));
  }
}

CChordTypeVec::const_iterator CChordTypes::ChordTypeBuiltInFromId(CChordTypeId id) const {
  return _builtIn.FindChordTypeForId(id);
}

CChordTypeVec::const_iterator CChordTypes::ChordTypeUserFromId(CChordTypeId id) const {
  return _user.FindChordTypeForId(id);
}

TChordTypeVecAndChordType CChordTypes::ChordTypeFromId(CChordTypeId id) const {
  const TChordTypeVecAndChordType builtIn =
      Found(kChordTypeVecSel_BuiltIn, _builtIn, ChordTypeBuiltInFromId(id));
  if (builtIn.first != kChordTypeVecSel_None) return builtIn;
  return Found(kChordTypeVecSel_User, _user, ChordTypeUserFromId(id));
}

TChordTypeVecAndChordType CChordTypes::FindChordTypeVecAndChordTypeFromIntvls(
    const CIntvlSet& intvls) const {
  const TChordTypeVecAndChordType builtIn =
      Found(kChordTypeVecSel_BuiltIn, _builtIn, _builtIn.FindChordTypeForIntvls(intvls));
  if (builtIn.first != kChordTypeVecSel_None) return builtIn;
  return Found(kChordTypeVecSel_User, _user, _user.FindChordTypeForIntvls(intvls));
}

void CChordTypes::WriteTrace(std::ostream& out) const {
  out << "CChordTypes: built-in ";
  _builtIn.WriteTrace(out);
  out << "\nuser ";
  _user.WriteTrace(out);
}

void CChordTypes::WriteTraceBrief(std::ostream& out) const {
  out << _builtIn.size() << " built-in, " << _user.size() << " user chord types";
}

void CChordTypes::WriteInitializerList(std::ostream& out) const {
  out << "CChordTypes{";
  _builtIn.WriteInitializerList(out);
  out << ", ";
  _user.WriteInitializerList(out);
  out << '}';
}

const CChordTypes& SharedChordTypes() {
  static const CChordTypes chordTypes;
  return chordTypes;
}

}  // namespace harmony
