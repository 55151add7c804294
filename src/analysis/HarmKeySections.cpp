#include <algorithm>
#include <cmath>

#include "harmony/analysis/HarmKeyEstimator.h"

namespace harmony {

namespace {

double ScoreOf(const THarmKeyRanking& ranking, int key) {
  for (const THarmKeyScore& score : ranking) {
    if (HarmKeyNumber(score.Key) == key) return score.Score;
  }
  return 0.0;
}

// The position of the chord with a root nearest to `position`.
double NearestChordPosition(const CHarmAnlsChords& chords, double position) {
  double best = position;
  double bestDistance = kHarmAnlsMaxDouble;
  for (const CHarmAnlsChordWithPos& chord : chords) {
    if (chord.IsUndef()) continue;
    const double distance = std::abs(chord.Position - position);
    if (distance < bestDistance) {
      best = chord.Position;
      bestDistance = distance;
    }
  }
  return best;
}

}  // namespace

std::vector<THarmKeySection> CHarmKeyEstimator::Sections(const CHarmAnlsChords& chords,
                                                         const THarmKeyWindow& window) const {
  std::vector<THarmKeySection> sections;
  const THarmKeyEvidence whole = Gather(chords);
  if (whole.Duration <= 0.0 || chords.empty()) return sections;
  const double start = chords.front().Position;
  const double end =
      chords.back().IsUndef() ? chords.back().Position : chords.back().Position + 4.0;
  const double step = std::max(window.Step, 1.0);
  if (end - start <= window.Length) {
    sections.push_back({start, Rank(whole)[0].Key});
    return sections;
  }
  // Window edges are no phrase edges: their first and last chords tell nothing.
  THarmKeyParams params = _Params;
  params.Weights.FirstChord = params.Weights.LastChord = 0.0;
  const CHarmKeyEstimator local(params);
  int current = -1, challenger = -1, wins = 0;
  double challengeStart = start;
  for (double from = start; from < end - window.Length + step; from += step) {
    const double windowStart = std::min(from, end - window.Length);
    const THarmKeyRanking ranking =
        local.Rank(Gather(chords, windowStart, windowStart + window.Length));
    const int best = HarmKeyNumber(ranking[0].Key);
    if (current < 0) {
      current = best;
      sections.push_back({start, ranking[0].Key});
      continue;
    }
    if (best == current || ranking[0].Score - ScoreOf(ranking, current) < window.Margin) {
      challenger = -1;
      wins = 0;
      continue;
    }
    if (best != challenger) {
      challenger = best;
      wins = 0;
      challengeStart = windowStart + window.Length / 2.0;
    }
    if (++wins < std::max(window.Confirm, 1)) continue;
    current = best;
    sections.push_back({NearestChordPosition(chords, challengeStart), ranking[0].Key});
    challenger = -1;
    wins = 0;
  }
  return sections;
}

}  // namespace harmony
