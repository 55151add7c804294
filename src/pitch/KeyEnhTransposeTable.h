#pragma once
// The customary spellings of common transpositions: for some intervals the new spelling
// follows the letter distance (D flat down a whole tone is C flat, not B; F up a minor
// third is A flat, not G sharp). Rows are old key and accidental -> new key and accidental,
// compiled into a lookup table so that a transposition never allocates.

#include <array>
#include <cstdint>
#include <optional>

#include "harmony/pitch/KeyEnh.h"

namespace harmony::pitch_detail {

struct TTransposeRow {
  std::int8_t intvl;
  std::int8_t oldKey;
  TEnh oldEnh;
  std::int8_t newKey;
  TEnh newEnh;
};

// clang-format off
inline constexpr TTransposeRow kTransposeRows[] = {
    {-11, 1, TEnh_b, 2, TEnh_bb}, {-11, 3, TEnh_b, 4, TEnh_b}, {-11, 4, TEnh_b, 5, TEnh_bb},
    {-11, 6, TEnh_b, 7, TEnh_bb}, {-11, 8, TEnh_b, 9, TEnh_bb}, {-11, 10, TEnh_b, 11, TEnh_b},
    {-11, 11, TEnh_b, 0, TEnh_bb}, {-11, 1, TEnh_ss, 2, TEnh_ss}, {-11, 4, TEnh_ss, 5, TEnh_s},
    {-11, 6, TEnh_ss, 7, TEnh_ss}, {-11, 11, TEnh_ss, 0, TEnh_s}, {-11, 10, TEnh_bb, 11, TEnh_bbb},
    {-11, 0, TEnh_bb, 1, TEnh_bbb}, {-11, 2, TEnh_bb, 3, TEnh_bb}, {-11, 3, TEnh_bb, 4, TEnh_bbb},
    {-11, 5, TEnh_bb, 6, TEnh_bbb}, {-11, 7, TEnh_bb, 8, TEnh_bbb},

    {-9, 1, TEnh_b, 4, TEnh_b}, {-9, 3, TEnh_b, 6, TEnh_b}, {-9, 4, TEnh_b, 7, TEnh_bb},
    {-9, 6, TEnh_b, 9, TEnh_bb}, {-9, 8, TEnh_b, 11, TEnh_b}, {-9, 11, TEnh_b, 2, TEnh_bb},
    {-9, 2, TEnh_ss, 5, TEnh_s}, {-9, 6, TEnh_ss, 9, TEnh_ss}, {-9, 9, TEnh_ss, 0, TEnh_s},
    {-9, 10, TEnh_sss, 0, TEnh_s}, {-9, 10, TEnh_bb, 1, TEnh_bbb}, {-9, 0, TEnh_bb, 3, TEnh_bb},
    {-9, 3, TEnh_bb, 6, TEnh_bbb}, {-9, 5, TEnh_bb, 8, TEnh_bbb}, {-9, 7, TEnh_bb, 10, TEnh_bb},

    {-7, 4, TEnh_b, 9, TEnh_bb}, {-7, 5, TEnh_n, 10, TEnh_b}, {-7, 6, TEnh_b, 11, TEnh_b},
    {-7, 5, TEnh_bb, 10, TEnh_bb}, {-7, 10, TEnh_bb, 3, TEnh_bb}, {-7, 6, TEnh_ss, 11, TEnh_ss},
    {-7, 7, TEnh_ss, 0, TEnh_s}, {-7, 3, TEnh_bb, 8, TEnh_bbb}, {-7, 8, TEnh_bbb, 1, TEnh_bbb},
    {-7, 1, TEnh_bbb, 6, TEnh_bbb}, {-7, 6, TEnh_bbb, 11, TEnh_bbb},

    {-5, 0, TEnh_s, 7, TEnh_ss}, {-5, 10, TEnh_s, 5, TEnh_s}, {-5, 6, TEnh_ss, 1, TEnh_ss},
    {-5, 11, TEnh_ss, 6, TEnh_ss}, {-5, 1, TEnh_ss, 8, TEnh_sss}, {-5, 10, TEnh_bb, 5, TEnh_bb},
    {-5, 3, TEnh_bb, 10, TEnh_bb}, {-5, 9, TEnh_bb, 4, TEnh_b},

    {-4, 1, TEnh_b, 9, TEnh_bb}, {-4, 3, TEnh_b, 11, TEnh_b}, {-4, 4, TEnh_b, 0, TEnh_bb},
    {-4, 6, TEnh_b, 2, TEnh_bb}, {-4, 8, TEnh_b, 4, TEnh_b}, {-4, 11, TEnh_b, 7, TEnh_bb},
    {-4, 6, TEnh_ss, 2, TEnh_ss}, {-4, 4, TEnh_ss, 0, TEnh_s}, {-4, 9, TEnh_ss, 5, TEnh_s},
    {-4, 11, TEnh_ss, 7, TEnh_ss}, {-4, 10, TEnh_bb, 6, TEnh_b}, {-4, 0, TEnh_bb, 8, TEnh_bbb},
    {-4, 2, TEnh_bb, 10, TEnh_bb}, {-4, 3, TEnh_bb, 11, TEnh_bbb}, {-4, 5, TEnh_bb, 1, TEnh_bbb},
    {-4, 7, TEnh_bb, 3, TEnh_bb},

    {-3, 0, TEnh_s, 9, TEnh_ss}, {-3, 3, TEnh_s, 0, TEnh_s}, {-3, 5, TEnh_s, 2, TEnh_ss},
    {-3, 8, TEnh_s, 5, TEnh_s}, {-3, 10, TEnh_s, 7, TEnh_ss}, {-3, 7, TEnh_bb, 4, TEnh_b},
    {-3, 10, TEnh_bb, 7, TEnh_bb},

    {-2, 0, TEnh_n, 10, TEnh_b}, {-2, 1, TEnh_b, 11, TEnh_b}, {-2, 4, TEnh_b, 2, TEnh_bb},
    {-2, 5, TEnh_n, 3, TEnh_b}, {-2, 6, TEnh_b, 4, TEnh_b}, {-2, 11, TEnh_b, 9, TEnh_bb},
    {-2, 2, TEnh_ss, 0, TEnh_s}, {-2, 6, TEnh_ss, 4, TEnh_ss}, {-2, 7, TEnh_ss, 5, TEnh_s},
    {-2, 10, TEnh_bb, 8, TEnh_bbb}, {-2, 0, TEnh_bb, 10, TEnh_bb}, {-2, 3, TEnh_bb, 1, TEnh_bbb},
    {-2, 5, TEnh_bb, 3, TEnh_bb},

    {3, 0, TEnh_n, 3, TEnh_b}, {3, 1, TEnh_b, 4, TEnh_b}, {3, 4, TEnh_b, 7, TEnh_bb},
    {3, 5, TEnh_n, 8, TEnh_b}, {3, 6, TEnh_b, 9, TEnh_bb}, {3, 7, TEnh_n, 10, TEnh_b},
    {3, 8, TEnh_b, 11, TEnh_b}, {3, 11, TEnh_b, 2, TEnh_bb},

    {4, 0, TEnh_s, 4, TEnh_ss}, {4, 1, TEnh_s, 5, TEnh_s}, {4, 3, TEnh_s, 7, TEnh_ss},
    {4, 5, TEnh_s, 9, TEnh_ss}, {4, 8, TEnh_s, 0, TEnh_s}, {4, 10, TEnh_s, 2, TEnh_ss},
    {4, 2, TEnh_ss, 6, TEnh_ss}, {4, 4, TEnh_ss, 8, TEnh_sss}, {4, 6, TEnh_ss, 10, TEnh_sss},
    {4, 9, TEnh_ss, 1, TEnh_ss}, {4, 11, TEnh_ss, 3, TEnh_sss}, {4, 10, TEnh_bb, 2, TEnh_bb},
    {4, 0, TEnh_bb, 4, TEnh_b}, {4, 3, TEnh_bb, 7, TEnh_bb}, {4, 7, TEnh_bb, 11, TEnh_b},

    {7, 10, TEnh_s, 5, TEnh_s}, {7, 0, TEnh_s, 7, TEnh_ss}, {7, 11, TEnh_ss, 6, TEnh_ss},
    {7, 6, TEnh_ss, 1, TEnh_ss}, {7, 1, TEnh_ss, 8, TEnh_sss}, {7, 8, TEnh_sss, 3, TEnh_sss},
    {7, 3, TEnh_sss, 10, TEnh_sss}, {7, 10, TEnh_sss, 5, TEnh_sss},
};
// clang-format on

// One byte per (interval -11..11, old key 0..11, old accidental bbb..sss): 0 for no row,
// otherwise 1 + new key * 8 + (new accidental + 1).
using TTransposeLookup = std::array<std::array<std::array<std::uint8_t, 7>, 12>, 23>;

constexpr TTransposeLookup MakeTransposeLookup() {
  TTransposeLookup lookup{};
  for (const TTransposeRow& row : kTransposeRows) {
    lookup[row.intvl + 11][row.oldKey][row.oldEnh + 1] =
        static_cast<std::uint8_t>(1 + row.newKey * 8 + (row.newEnh + 1));
  }
  return lookup;
}

inline constexpr TTransposeLookup kTransposeLookup = MakeTransposeLookup();

// The customary spelling for a transposition by r (-11..11) of (keyNr, enh), if any.
constexpr std::optional<CKeyEnh> SpecialTransposition(int r, int keyNr, TEnh enh) {
  if (r < -11 || r > 11 || keyNr < 0 || keyNr > 11 || enh < TEnh_bbb || enh > TEnh_sss) {
    return std::nullopt;
  }
  const std::uint8_t entry = kTransposeLookup[r + 11][keyNr][enh + 1];
  if (entry == 0) return std::nullopt;
  const int packed = entry - 1;
  return CKeyEnh(packed / 8, static_cast<TEnh>(packed % 8 - 1));
}

}  // namespace harmony::pitch_detail
