#pragma once
// The named chord types whose numeric ids are stored in guitar chord libraries. Thirty of
// them are built in; a host may keep its own in a user list, looked up after them.

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/pitch/IntvlSet.h"

namespace harmony {

class CChordHeavy;

// Stored in files; the ids have gaps and are not in table order.
using CChordTypeId = std::uint32_t;

struct TChordType : TraceFamily<TChordType> {
  CChordTypeId Id = 0;
  std::string Name;
  // Compared element by element. Ninths stand above the octave (13, 14, 15), while elevenths
  // and thirteenths of the built-in rows stand inside it (5, 8, 9).
  CIntvlSet Intvls;
  std::uint32_t Reserved = 0;  // 0 in every built-in row

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CChordTypeVec : public std::vector<TChordType>, public TraceFamily<CChordTypeVec> {
 public:
  // The first row whose intervals equal `intvls` (the wrap interval does not count), or end().
  const_iterator FindChordTypeForIntvls(const CIntvlSet& intvls) const;
  // Linear search; end() when missing.
  const_iterator FindChordTypeForId(CChordTypeId id) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// Which list a chord type was found in.
enum TChordTypeVecSel : std::int32_t {
  kChordTypeVecSel_None = 0,
  kChordTypeVecSel_BuiltIn = 1,
  kChordTypeVecSel_User = 2,
};

// A found row and its list; the row is nullptr with kChordTypeVecSel_None.
using TChordTypeVecAndChordType = std::pair<TChordTypeVecSel, const TChordType*>;

class CChordTypes : public TraceFamily<CChordTypes> {
 public:
  // The thirty built-in rows in their fixed order (the index of the flat guitar functions);
  // no user rows.
  CChordTypes();

  const CChordTypeVec& BuiltIn() const { return _builtIn; }
  const CChordTypeVec& User() const { return _user; }
  // For a host's own CChordTypes; the shared object stays as built.
  void AddUserChordType(TChordType chordType) { _user.push_back(std::move(chordType)); }

  // end() of the respective list when missing.
  CChordTypeVec::const_iterator ChordTypeBuiltInFromId(CChordTypeId id) const;
  CChordTypeVec::const_iterator ChordTypeUserFromId(CChordTypeId id) const;
  // Built-in rows first, then user rows.
  TChordTypeVecAndChordType ChordTypeFromId(CChordTypeId id) const;
  TChordTypeVecAndChordType FindChordTypeVecAndChordTypeFromIntvls(const CIntvlSet& intvls) const;
  // By the chord's current interval set (its wrap interval does not count).
  TChordTypeVecAndChordType FindChordTypeVecAndChordTypeFromChord(const CChordHeavy& chord) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  CChordTypeVec _builtIn;
  CChordTypeVec _user;
};

// The one shared table, built on first use and read-only afterwards.
const CChordTypes& SharedChordTypes();

}  // namespace harmony
