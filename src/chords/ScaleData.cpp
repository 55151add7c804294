// The vocabulary of the heavy scale in table order. The order decides which type a set of
// tones is found as (3765 is found as st_majaddb7 at index 4 before BebopDominant at 23) and
// the order of GetTypeForScaleAtIndex. Degrees, masks and modes come from the scale type
// table; this file adds the internal names and the accidentals of altered degrees.

#include <array>
#include <bit>
#include <initializer_list>
#include <utility>

#include "chords/ScaleTypeTable.h"
#include "harmony/chords/ScaleHeavy.h"

namespace harmony {

namespace {

// An altered degree: its index and its accidental.
using TDegreeEnh = std::pair<int, TEnh>;

struct TScaleDataSource {
  TScaleType type;
  const char* name;
  std::initializer_list<TDegreeEnh> degreeEnhs;
};

constexpr TScaleData MakeScaleData(const TScaleDataSource& source) {
  TScaleData data;
  const chords_detail::TScaleTypeRow& row =
      chords_detail::kScaleTypeRows[static_cast<std::size_t>(source.type)];
  data.Type = source.type;
  data.Name = source.name;
  data.Mode = row.mode;
  int degree = 0;
  for (int intvl = 0; intvl < 12; ++intvl) {
    if ((row.mask >> intvl) & 1U) data.DegreeToRootOffsetIntvl[degree++] = intvl;
  }
  data.DegreesPerOctave = degree;
  for (std::int32_t& enh : data.DegreeEnh) enh = degree > 0 ? TEnh_n : 0;
  for (const TDegreeEnh& altered : source.degreeEnhs) {
    data.DegreeEnh[static_cast<std::size_t>(altered.first)] = altered.second;
  }
  return data;
}

constexpr std::array<TScaleData, CScaleHeavy::kNumAvailableScales> BuildScaleData() {
  constexpr TEnh b = TEnh_b;
  constexpr TEnh s = TEnh_s;
  // The empty last row stays all zero, mode 3.
  const TScaleDataSource sources[CScaleHeavy::kNumAvailableScales - 1] = {
      {st_maj, "Major", {}},
      {st_min, "Natural Minor", {}},
      {st_chrom, "Chromatic", {}},
      {st_majmin, "Major/Minor", {{2, b}, {7, b}}},
      {st_majaddb7, "Bebop Dominant", {}},
      {st_min_harm, "Harmonic Minor", {{6, s}}},
      {st_min_melo, "Melodic Minor", {{5, s}, {6, s}}},
      {st_maj_pent, "Major Pentatonic", {}},
      {st_min_pent, "Minor Pentatonic", {}},
      {st_maj_blues, "Major Blues", {{2, b}}},
      {st_min_blues, "Minor Blues", {{3, b}}},
      {st_lydian, "Lydian", {{3, s}}},
      {st_mixolydian, "Mixolydian", {{6, b}}},
      {st_dorian, "Dorian", {{5, s}}},
      {st_phrygian, "Phrygian", {{1, b}}},
      {st_locrian, "Locrian", {{1, b}, {4, b}}},
      {st_hm5, "Phrygian Dominant", {{1, b}, {5, b}, {6, b}}},
      {st_japanese, "Japanese", {{1, b}, {4, b}}},
      {st_southeast_asian, "South-East Asian", {{1, b}, {2, b}, {4, b}}},
      {MixolydianSharp11, "Mixolydian #11", {{3, s}, {6, b}}},
      {DiminishedHalfWhole, "Half-Whole Diminished", {{1, b}, {2, s}, {4, s}, {7, b}}},
      {Altered, "Altered", {{1, b}, {2, s}, {4, s}, {5, b}, {6, b}}},
      {BebopMajor, "Bebop Major", {{5, s}}},
      {BebopDominant, "Bebop Dominant", {{6, b}}},
      {DiminishedWholeHalf, "Whole-Half Diminished", {{4, b}, {6, s}, {7, s}}},
      {LocrianMaj2, "Locrian 9", {{4, b}}},
      {BebopMelodicMinor, "Bebop Melodic Minor", {{6, s}, {7, s}}},
      {BebopHarmonicMinor, "Bebop Harmonic Minor", {{7, s}}},
      {DoubleHarmonic, "Double Harmonic/Byzantine", {{1, b}, {5, b}}},
  };
  std::array<TScaleData, CScaleHeavy::kNumAvailableScales> table{};
  for (std::size_t i = 0; i + 1 < table.size(); ++i) table[i] = MakeScaleData(sources[i]);
  return table;
}

}  // namespace

constinit const std::array<TScaleData, CScaleHeavy::kNumAvailableScales> CScaleHeavy::mScaleData =
    BuildScaleData();

}  // namespace harmony
