#pragma once
// The built-in chord types as the guitar code reads them: the shared chord-type table, whose
// ids are what library files store.

#include <cstdint>

#include "harmony/chords/ChordTypes.h"
#include "harmony/pitch/Semitones.h"

namespace harmony::guitar_detail {

// The built-in row of an id, or nullptr.
inline const TChordType* ChordTypeRowForId(std::uint32_t id) {
  const CChordTypeVec& rows = SharedChordTypes().BuiltIn();
  const auto row = rows.FindChordTypeForId(id);
  return row == rows.end() ? nullptr : &*row;
}

// The pitch classes of a row as a 12-bit mask, intervals folded into the octave.
inline unsigned ChordTypePitchClassMask(const TChordType& row) {
  return static_cast<unsigned>(row.Intvls.ToSemitones().Word());
}

}  // namespace harmony::guitar_detail
