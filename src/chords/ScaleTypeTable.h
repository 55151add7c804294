#pragma once
// Everything that depends on the value of a TScaleType, one row per value 0..31.

#include <array>
#include <cstdint>

#include "harmony/chords/ScaleType.h"

namespace harmony::chords_detail {

// Mode of a scale as the heavy scale stores it.
inline constexpr std::int32_t kModeMajor = 0;
inline constexpr std::int32_t kModeMinor = 1;
inline constexpr std::int32_t kModeNeither = 2;
inline constexpr std::int32_t kModeCustomOrUndef = 3;

struct TScaleTypeRow {
  const char* streamName;
  const char* jsonName;
  std::uint64_t mask;
  std::int32_t mode;
  const char* localizedKey;  // nullptr: no text
};

inline constexpr std::array<TScaleTypeRow, 32> kScaleTypeRows = {{
    {"st_Undef", "Undef", 0, kModeCustomOrUndef, nullptr},
    {"st_maj", "maj", 2741, kModeMajor, "Major (Ionian)"},
    {"st_min", "min", 1453, kModeMinor, "Natural Minor (Aeolian)"},
    {"st_chrom", "chrom", 4095, kModeNeither, "Chromatic"},
    {"st_majmin", "majmin", 3773, kModeNeither, "Major / Minor"},
    {"st_majaddb7", "majaddb7", 3765, kModeMajor, "Bebop Dominant"},
    {"st_min_harm", "min_harm", 2477, kModeMinor, "Harmonic Minor"},
    {"st_min_melo", "min_melo", 2733, kModeMinor, "Melodic Minor"},
    {"st_maj_pent", "maj_pent", 661, kModeMajor, "Major Pentatonic"},
    {"st_min_pent", "min_pent", 1193, kModeMinor, "Minor Pentatonic"},
    {"st_maj_blues", "maj_blues", 669, kModeMajor, "Major Blues"},
    {"st_min_blues", "min_blues", 1257, kModeMinor, "Minor Blues"},
    {"st_lydian", "lyd", 2773, kModeMajor, "Lydian"},
    {"st_mixolydian", "mixo", 1717, kModeMajor, "Mixolydian"},
    {"st_dorian", "dori", 1709, kModeMinor, "Dorian"},
    {"st_phrygian", "phry", 1451, kModeMinor, "Phrygian"},
    {"st_locrian", "lokr", 1387, kModeMinor, "Locrian"},
    {"st_hm5", "klez", 1459, kModeMajor, "Phrygian Dominant"},
    {"st_japanese", "jap", 419, kModeNeither, "Miyako-Bushi (Japanese)"},
    {"st_southeast_asian", "se_asian", 395, kModeNeither, "South-East Asian"},
    {"st_custom", "custom", 0, kModeCustomOrUndef, "Custom"},
    {"DiminishedHalfWhole", "TScaleType::DiminishedHalfWhole", 1755, kModeMajor,
     "Half-Whole Diminished"},
    {"DiminishedWholeHalf", "TScaleType::DiminishedWholeHalf", 2925, kModeMinor,
     "Whole-Half Diminished"},
    {"BebopMajor", "TScaleType::BebopMajor", 2997, kModeMajor, "Bebop Major"},
    {"BebopDominant", "TScaleType::BebopDominant", 3765, kModeMajor, "Bebop Dominant"},
    {"BebopMelodicMinor", "TScaleType::BebopMelodicMinor", 2989, kModeMinor, "Bebop Melodic Minor"},
    {"BebopHarmonicMinor", "TScaleType::BebopHarmonicMinor", 3501, kModeMinor,
     "Bebop Harmonic Minor"},
    {"MixolydianSharp11", "TScaleType::MixolydianSharp11", 1749, kModeMajor, "Mixolydian \u266F11"},
    // The trailing blank belongs to both names.
    {"LocrianMaj2 ", "TScaleType::LocrianMaj2 ", 1389, kModeMinor, "Locrian 9"},
    {"Altered", "TScaleType::Altered", 1371, kModeMajor, "Super Locrian (Altered)"},
    {"DoubleHarmonic", "TScaleType::DoubleHarmonic", 2483, kModeNeither,
     "Double Harmonic (Byzantine)"},
    {"st_Count", "st_Count", 0, kModeCustomOrUndef, nullptr},
}};

// The row of a value, or nullptr outside 0..31.
constexpr const TScaleTypeRow* ScaleTypeRow(TScaleType type) {
  const auto value = static_cast<std::int32_t>(type);
  if (value < 0 || value >= static_cast<std::int32_t>(kScaleTypeRows.size())) return nullptr;
  return &kScaleTypeRows[static_cast<std::size_t>(value)];
}

}  // namespace harmony::chords_detail
