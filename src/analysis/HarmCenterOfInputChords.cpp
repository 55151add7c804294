#include "harmony/analysis/HarmCenterOfInputChords.h"

#include <algorithm>

namespace harmony {

namespace {

struct TPlacedChord {
  double Position;
  const CHarmAnlsChordWithPos* Chord;
  const CHarmAnlsCenter* Center;
};

// A reading without a probability is the only one.
double Likelihood(const CHarmAnlsCenter& center) {
  return IsHarmAnlsUndef(center.Probability) ? 1.0 : center.Probability;
}

std::vector<TPlacedChord> PlacedChordsByPosition(const CHarmonicAnalyse& analyse) {
  std::vector<TPlacedChord> placed;
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      if (center.IsUndef()) continue;
      for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
        if (!chord.IsUndef()) placed.push_back({chord.Position, &chord, &center});
      }
    }
  }
  std::stable_sort(placed.begin(), placed.end(), [](const TPlacedChord& a, const TPlacedChord& b) {
    return a.Position < b.Position;
  });
  return placed;
}

}  // namespace

std::vector<CHarmCenterLite> HarmCenterOfEachInputChord(const CHarmonicAnalyse& analyse) {
  const std::vector<TPlacedChord> placed = PlacedChordsByPosition(analyse);
  std::vector<CHarmCenterLite> centers;
  centers.reserve(analyse.InputChords().size());
  for (const CHarmAnlsChordWithPos& input : analyse.InputChords()) {
    const auto [first, last] = std::equal_range(
        placed.begin(), placed.end(), TPlacedChord{input.Position, nullptr, nullptr},
        [](const TPlacedChord& a, const TPlacedChord& b) { return a.Position < b.Position; });
    const CHarmAnlsCenter* best = nullptr;
    for (auto it = first; it != last; ++it) {
      if (!(it->Chord->ChordLite() == input.ChordLite())) continue;
      if (best == nullptr || Likelihood(*it->Center) > Likelihood(*best)) best = it->Center;
    }
    centers.push_back(best == nullptr ? CHarmCenterLite::Undef : best->HarmCenter);
  }
  return centers;
}

}  // namespace harmony
