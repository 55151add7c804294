// The know-how of functional harmony as two fixed tables. A cell reads root distance above
// the center, then the kind of chord, from the first chord of a progression to the last. The
// order of the rows, their priorities and the rows that do not end on the center (tonic rows
// 3 and 11, cadence rows 4 and 5) are part of the system's behaviour: the center is always
// computed from an element's distance, never from the assumption that a run ends on the tonic.

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "HarmAnlsChordPatterns.h"
#include "harmony/analysis/HarmAnlsProgressions.h"

namespace harmony {

namespace harmanls {

namespace {

struct TPatternMasks {
  std::uint32_t required;
  std::uint32_t forbidden;
};

constexpr std::uint32_t Bits(std::initializer_list<int> semitones) {
  std::uint32_t bits = 0;
  for (int semitone : semitones) bits |= 1U << semitone;
  return bits;
}

// In the order of TChordPattern.
constexpr std::array<TPatternMasks, 5> kPatternMasks = {{
    {Bits({0, 4, 7}), 0},                 // major triad, anything on top
    {Bits({0, 3, 7}), Bits({4})},         // minor triad
    {Bits({0, 4, 7, 10}), Bits({11})},    // dominant seventh
    {Bits({0, 3, 6}), Bits({4, 7})},      // diminished triad
    {Bits({0, 3, 6, 10}), Bits({4, 7})},  // half-diminished seventh
}};

CSemitonesMatch MatchFromMasks(const TPatternMasks& masks) {
  CSemitonesMatch match;
  match.ResetToValue(kSemiMatch_Free);
  for (unsigned long i = 0; i < 12; ++i) {
    if (masks.required & (1U << i)) match.SetSemitone(i, kSemiMatch_Required);
    if (masks.forbidden & (1U << i)) match.SetSemitone(i, kSemiMatch_Forbidden);
  }
  return match;
}

}  // namespace

const CSemitonesMatch& ChordPatternMatch(TChordPattern pattern) {
  static const std::array<CSemitonesMatch, 5> matches = [] {
    std::array<CSemitonesMatch, 5> built;
    for (std::size_t i = 0; i < built.size(); ++i) built[i] = MatchFromMasks(kPatternMasks[i]);
    return built;
  }();
  return matches[static_cast<std::size_t>(pattern)];
}

}  // namespace harmanls

namespace {

using harmanls::TChordPattern;

constexpr TChordPattern M = TChordPattern::kMajor;
constexpr TChordPattern m = TChordPattern::kMinor;
constexpr TChordPattern D7 = TChordPattern::kDominant7;
constexpr TChordPattern dim = TChordPattern::kDiminished;
constexpr TChordPattern m7b5 = TChordPattern::kHalfDiminished7;
constexpr TSignKeyType kMajor = TSignKeyType::Major;
constexpr TSignKeyType kMinor = TSignKeyType::Minor;

struct TRowEl {
  std::int8_t dist = 0;
  TChordPattern pattern = M;
};

struct TRow {
  TSignKeyType type = TSignKeyType::Undef;
  std::uint32_t priority = 0;
  std::array<TRowEl, 4> elements{};
  std::size_t count = 0;
};

constexpr TRow Row(TSignKeyType type, std::uint32_t priority, std::initializer_list<TRowEl> els) {
  TRow row{type, priority, {}, els.size()};
  std::size_t i = 0;
  for (const TRowEl& el : els) row.elements[i++] = el;
  return row;
}

constexpr std::array kTonicRows = {
    Row(kMajor, 9, {{7, D7}, {0, M}}),                    // V7 I
    Row(kMajor, 8, {{7, M}, {0, M}}),                     // V I
    Row(kMajor, 8, {{0, M}, {5, M}}),                     // I IV
    Row(kMajor, 8, {{11, dim}, {0, M}}),                  // vii-dim I
    Row(kMajor, 8, {{1, D7}, {0, M}}),                    // tritone substitute
    Row(kMajor, 8, {{2, m}, {7, M}, {0, M}}),             // ii V I
    Row(kMajor, 6, {{5, m}, {7, M}, {0, M}}),             // iv V I
    Row(kMajor, 8, {{9, M}, {2, m}, {7, M}, {0, M}}),     // VI ii V I
    Row(kMajor, 4, {{5, M}, {5, m}, {0, M}}),             // IV iv I
    Row(kMajor, 10, {{5, M}, {2, m7b5}, {0, M}}),         // IV ii-half-dim I
    Row(kMajor, 4, {{5, M}, {7, M}, {9, m}}),             // IV V vi, the deceptive close
    Row(kMajor, 4, {{0, M}, {5, M}, {2, m7b5}, {0, M}}),  // I IV ii-half-dim I
    Row(kMinor, 8, {{2, m}, {7, M}, {0, m}}),             // ii V i
    Row(kMinor, 8, {{2, dim}, {7, M}, {0, m}}),           // ii-dim V i
    Row(kMinor, 4, {{7, M}, {0, m}}),                     // V i
};

constexpr std::array kCadenceRows = {
    Row(kMajor, 8, {{9, m}, {2, m}, {7, M}, {0, M}}),  // vi ii V I
    Row(kMajor, 8, {{2, m}, {7, M}, {0, M}}),          // ii V I
    Row(kMajor, 4, {{7, M}, {0, M}}),                  // V I
    Row(kMajor, 4, {{7, M}, {9, m}}),                  // V vi
    Row(kMajor, 2, {{2, m}, {7, M}}),                  // ii V
    Row(kMinor, 8, {{2, m}, {7, M}, {0, m}}),          // ii V i
    Row(kMinor, 8, {{2, dim}, {7, M}, {0, m}}),        // ii-dim V i
    Row(kMinor, 4, {{7, M}, {0, m}}),                  // V i
};

static_assert(kTonicRows.size() == 15 && kCadenceRows.size() == 8);

template <std::size_t N>
CHarmAnlsProgressions BuildTable(const std::array<TRow, N>& rows) {
  CHarmAnlsProgressions table;
  table.reserve(N);
  for (const TRow& row : rows) {
    CHarmAnlsProgression& progression = table.emplace_back();
    progression.Priority = row.priority;
    progression.SignKeyType = row.type;
    for (std::size_t i = 0; i < row.count; ++i) {
      const TRowEl& el = row.elements[i];
      // The tables keep the root's distance as the bass's too.
      progression.emplace_back(el.dist, el.dist, harmanls::ChordPatternMatch(el.pattern));
    }
  }
  return table;
}

}  // namespace

const CHarmAnlsProgressions& CHarmAnlsProgressions::TonicProgressions() {
  static const CHarmAnlsProgressions table = BuildTable(kTonicRows);
  return table;
}

const CHarmAnlsProgressions& CHarmAnlsProgressions::CadenceProgressions() {
  static const CHarmAnlsProgressions table = BuildTable(kCadenceRows);
  return table;
}

}  // namespace harmony
