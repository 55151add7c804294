#pragma once
// The closed vocabulary of named scales. A scale value (CScaleLite) stores only a root and a
// semitone mask; the named type is derived from the mask when it is needed.

#include <cstdint>
#include <ostream>
#include <string>

#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

// Values are stored in files and events and must not change. Values 21..30 were added later
// under plain names; they print with those names and are written to JSON, but the JSON reader
// does not know them. Value 5 and value 24 share their mask on purpose.
enum TScaleType : std::int32_t {
  st_Undef = 0,
  st_maj = 1,
  st_min = 2,
  st_chrom = 3,
  st_majmin = 4,
  st_majaddb7 = 5,
  st_min_harm = 6,
  st_min_melo = 7,
  st_maj_pent = 8,
  st_min_pent = 9,
  st_maj_blues = 10,
  st_min_blues = 11,
  st_lydian = 12,
  st_mixolydian = 13,
  st_dorian = 14,
  st_phrygian = 15,
  st_locrian = 16,
  st_hm5 = 17,
  st_japanese = 18,
  st_southeast_asian = 19,
  st_custom = 20,
  DiminishedHalfWhole = 21,
  DiminishedWholeHalf = 22,
  BebopMajor = 23,
  BebopDominant = 24,
  BebopMelodicMinor = 25,
  BebopHarmonicMinor = 26,
  MixolydianSharp11 = 27,
  LocrianMaj2 = 28,
  Altered = 29,
  DoubleHarmonic = 30,
  st_Count = 31,
};

// Plain steps through the values, without wrapping.
TScaleType& operator++(TScaleType& type);
TScaleType operator++(TScaleType& type, int);
TScaleType& operator--(TScaleType& type);
TScaleType operator--(TScaleType& type, int);

// The church modes: major, natural minor, lydian, mixolydian, dorian, phrygian, locrian.
bool IsScaleTypeModal(TScaleType type);

// "st_maj", "DiminishedHalfWhole", ... ("LocrianMaj2 " keeps its trailing blank); "undef"
// for a value outside the vocabulary.
std::ostream& operator<<(std::ostream& out, TScaleType type);
// "maj", "TScaleType::BebopMajor", ...; "undef" outside the vocabulary.
void ToJSONString(std::ostream& out, TScaleType type);
// Reads back only the names of values 1..20 (exact case, whole string); st_Undef otherwise.
TScaleType ScaleTypeFromJSONString(const std::string& text);

// The mask of a named type; empty outside 1..30 and for st_custom.
CSemitones SemitonesFromScaleType(TScaleType type);
// The first type (by value) with exactly this mask: 3765 gives st_majaddb7, never
// BebopDominant. An empty mask gives st_Undef, any unnamed mask st_custom.
TScaleType ScaleTypeFromSemitones(const CSemitones& semitones);

namespace CKeyEnhUtil {

// The root of the major scale with the same notes as a church mode on `root` (A aeolian ->
// C); the undefined key for any other type.
CKeyEnh RelatedIonianScaleRootKeyEnh(const CKeyEnh& root, TScaleType type);
// The same with the type taken from the mask.
CKeyEnh RelatedIonianScaleRootKeyEnh(const CKeyEnh& root, const CSemitones& semitones);

}  // namespace CKeyEnhUtil

}  // namespace harmony
