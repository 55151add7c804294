#include "harmony/analysis/HarmKeyEstimator.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace harmony {

namespace {

constexpr double kClosingChordLength = 4.0;
constexpr std::uint64_t kOctaveBits = 4095;

// Published key profiles, tonic first: [profile][mode][degree].
constexpr std::array<std::array<std::array<double, 12>, 2>, 3> kProfiles{{
    // Krumhansl and Kessler 1982, probe-tone ratings.
    {{{6.35, 2.23, 3.48, 2.33, 4.38, 4.09, 2.52, 5.19, 2.39, 3.66, 2.29, 2.88},
      {6.33, 2.68, 3.52, 5.38, 2.60, 3.53, 2.54, 4.75, 3.98, 2.69, 3.34, 3.17}}},
    // Temperley 2001, revised from the Kostka-Payne excerpts.
    {{{5.0, 2.0, 3.5, 2.0, 4.5, 4.0, 2.0, 4.5, 2.0, 3.5, 1.5, 4.0},
      {5.0, 2.0, 3.5, 4.5, 2.0, 4.0, 2.0, 4.5, 3.5, 2.0, 1.5, 4.0}}},
    // Aarden 2003, tone counts of the Essen folksong collection.
    {{{17.7661, 0.145624, 14.9265, 0.160186, 19.8049, 11.3587, 0.291248, 22.062, 0.145624, 8.15494,
       0.232998, 4.95122},
      {18.2648, 0.737619, 14.0499, 16.8599, 0.702494, 14.4362, 0.702494, 18.6161, 4.56621, 1.93186,
       7.37619, 1.75623}}},
}};

// Cadence strength by the step down from the approaching chord's root to the goal's root
// (7: a fifth above, V-I; 5: a fourth above, IV-I; 10: a whole tone below, bVII-I) and the
// approaching chord's class (major, minor, dominant, diminished, other).
struct TCadenceRule {
  int step;
  std::array<double, kHarmKeyChordClasses> strength;
};
constexpr std::array<TCadenceRule, 3> kCadenceRules{{
    {7, {0.8, 0.0, 1.0, 0.0, 0.0}},
    {5, {0.5, 0.5, 0.0, 0.0, 0.0}},
    {10, {0.4, 0.0, 0.0, 0.0, 0.0}},
}};
// Added to a V-I when a chord on the goal's second degree led to the V (ii-V-I).
constexpr double kTwoFiveOneBonus = 0.5;

int Wrap12(int value) { return ((value % 12) + 12) % 12; }

struct TChordStep {
  int root = -1;
  THarmKeyChordClass cls = THarmKeyChordClass::Other;
};

// How well a chord on the tonic confirms the mode: its class fits the mode or not.
bool ClassFitsMode(THarmKeyChordClass cls, int mode) {
  if (mode == 0) return cls == THarmKeyChordClass::Major || cls == THarmKeyChordClass::Dominant;
  return cls == THarmKeyChordClass::Minor;
}

void AddCadence(THarmKeyEvidence& evidence, const TChordStep& before, const TChordStep& from,
                const TChordStep& to) {
  const int step = Wrap12(from.root - to.root);
  for (const TCadenceRule& rule : kCadenceRules) {
    if (rule.step != step) continue;
    double strength = rule.strength[static_cast<int>(from.cls)];
    if (strength <= 0.0) return;
    if (step == 7 && before.root == Wrap12(to.root + 2)) strength += kTwoFiveOneBonus;
    const bool major = ClassFitsMode(to.cls, 0);
    const bool minor = ClassFitsMode(to.cls, 1);
    const double share = major || minor ? 1.0 : 0.5;
    if (major || !minor) evidence.Cadences[to.root][0] += strength * share;
    if (minor || !major) evidence.Cadences[to.root][1] += strength * share;
    evidence.CadenceTotal += strength;
    return;
  }
}

void AddTones(THarmKeyEvidence& evidence, const CChordLite& chord, double length) {
  const int root = chord.RootKeyEnh.KeyNr;
  const std::uint64_t bits = (chord.Semitones.Word() & kOctaveBits) | 1u;
  for (int interval = 0; interval < 12; ++interval) {
    if ((bits >> interval) & 1u) evidence.PitchClasses[Wrap12(root + interval)] += length;
  }
  if (chord.HasBassNote() && chord.BassKeyEnh.KeyNr < 12) {
    evidence.PitchClasses[chord.BassKeyEnh.KeyNr] += length;
  }
}

double ChordFeature(int root, THarmKeyChordClass cls, int tonic, int mode) {
  if (root != tonic) return 0.0;
  return ClassFitsMode(cls, mode) ? 1.0 : 0.5;
}

double ProfileCorrelation(const std::array<double, 12>& tones,
                          const std::array<double, 12>& profile, int tonic) {
  double toneMean = 0.0, profileMean = 0.0;
  for (int i = 0; i < 12; ++i) {
    toneMean += tones[i];
    profileMean += profile[i];
  }
  toneMean /= 12.0;
  profileMean /= 12.0;
  double product = 0.0, toneSquares = 0.0, profileSquares = 0.0;
  for (int i = 0; i < 12; ++i) {
    const double tone = tones[Wrap12(tonic + i)] - toneMean;
    const double weight = profile[i] - profileMean;
    product += tone * weight;
    toneSquares += tone * tone;
    profileSquares += weight * weight;
  }
  const double norm = std::sqrt(toneSquares * profileSquares);
  return norm > 0.0 ? product / norm : 0.0;
}

}  // namespace

THarmKeyChordClass HarmKeyChordClassOf(const CChordLite& chord) {
  const std::uint64_t bits = chord.Semitones.Word();
  const auto has = [bits](int interval) { return ((bits >> interval) & 1u) != 0; };
  if (has(4) && !has(3)) {
    if (has(8) && !has(7)) return THarmKeyChordClass::Other;
    return has(10) ? THarmKeyChordClass::Dominant : THarmKeyChordClass::Major;
  }
  if (has(3) && !has(4)) {
    return has(6) && !has(7) ? THarmKeyChordClass::Diminished : THarmKeyChordClass::Minor;
  }
  return THarmKeyChordClass::Other;
}

THarmKeyEvidence CHarmKeyEstimator::Gather(const CHarmAnlsChords& chords, double from, double to) {
  THarmKeyEvidence evidence;
  TChordStep before, previous;
  for (std::size_t i = 0; i < chords.size(); ++i) {
    const CHarmAnlsChordWithPos& chord = chords[i];
    const double start = chord.Position;
    const double end = i + 1 < chords.size() ? chords[i + 1].Position : start + kClosingChordLength;
    const double length = std::min(end, to) - std::max(start, from);
    if (chord.IsUndef() || chord.RootKeyEnh.KeyNr >= 12) {
      if (start >= from && start < to) before = previous = TChordStep();
      continue;
    }
    if (length <= 0.0) continue;
    const TChordStep step{chord.RootKeyEnh.KeyNr, HarmKeyChordClassOf(chord)};
    AddTones(evidence, chord, length);
    evidence.RootClasses[step.root][static_cast<int>(step.cls)] += length;
    evidence.Duration += length;
    if (evidence.FirstRoot < 0) {
      evidence.FirstRoot = step.root;
      evidence.FirstClass = step.cls;
    }
    evidence.LastRoot = step.root;
    evidence.LastClass = step.cls;
    if (step.root == previous.root && step.cls == previous.cls) continue;
    if (previous.root >= 0) AddCadence(evidence, before, previous, step);
    before = previous;
    previous = step;
  }
  return evidence;
}

THarmKeyFeatures CHarmKeyEstimator::Features(const THarmKeyEvidence& evidence, int key) const {
  const int tonic = key % 12;
  const int mode = key / 12;
  THarmKeyFeatures features;
  features.Profile = ProfileCorrelation(evidence.PitchClasses,
                                        kProfiles[static_cast<int>(_Params.Profile)][mode], tonic);
  double logProbability = 0.0;
  for (int root = 0; root < 12; ++root) {
    const auto& row = _Params.Functions[mode][Wrap12(root - tonic)];
    for (int cls = 0; cls < kHarmKeyChordClasses; ++cls) {
      logProbability += evidence.RootClasses[root][cls] * row[cls];
    }
  }
  if (evidence.Duration > 0.0) features.Functions = logProbability / evidence.Duration;
  if (evidence.CadenceTotal > 0.0) {
    features.Cadences = evidence.Cadences[tonic][mode] / evidence.CadenceTotal;
  }
  features.FirstChord = ChordFeature(evidence.FirstRoot, evidence.FirstClass, tonic, mode);
  features.LastChord = ChordFeature(evidence.LastRoot, evidence.LastClass, tonic, mode);
  return features;
}

double CHarmKeyEstimator::Score(const THarmKeyFeatures& features) const {
  const THarmKeyWeights& w = _Params.Weights;
  return w.Profile * features.Profile + w.Functions * features.Functions +
         w.Cadences * features.Cadences + w.FirstChord * features.FirstChord +
         w.LastChord * features.LastChord;
}

THarmKeyRanking CHarmKeyEstimator::Rank(const THarmKeyEvidence& evidence) const {
  THarmKeyRanking ranking;
  for (int key = 0; key < kHarmKeyCount; ++key) {
    ranking[key] = {HarmKeyFromNumber(key), Score(Features(evidence, key))};
  }
  // Equal scores keep the order of the key numbers; std::sort needs no buffer.
  std::sort(ranking.begin(), ranking.end(), [](const THarmKeyScore& a, const THarmKeyScore& b) {
    return a.Score > b.Score || (a.Score == b.Score && HarmKeyNumber(a.Key) < HarmKeyNumber(b.Key));
  });
  return ranking;
}

CSignKeyLite CHarmKeyEstimator::BestKey(const CHarmAnlsChords& chords) const {
  const THarmKeyEvidence evidence = Gather(chords);
  if (evidence.Duration <= 0.0) return CSignKeyLite();
  return Rank(evidence)[0].Key;
}

CSignKeyLite HarmKeyFromNumber(int key) {
  static const std::array<CSignKeyLite, kHarmKeyCount> kKeys = [] {
    std::array<CSignKeyLite, kHarmKeyCount> keys;
    for (int number = 0; number < kHarmKeyCount; ++number) {
      keys[number] = CSignKeyLite(CKeyEnh(number % 12, TEnh_n),
                                  number >= 12 ? TSignKeyType::Minor : TSignKeyType::Major);
      keys[number].SetRootNoteEnhWithLeastSigns();
    }
    return keys;
  }();
  return kKeys[((key % kHarmKeyCount) + kHarmKeyCount) % kHarmKeyCount];
}

int HarmKeyNumber(const CSignKeyLite& key) {
  if (key.IsUndef() || key.RootKeyEnh.KeyNr >= 12) return -1;
  return key.RootKeyEnh.KeyNr + (key.SignKeyType == TSignKeyType::Minor ? 12 : 0);
}

CHarmAnlsSignKeys HarmEstimatedSignKeys(const CHarmAnlsChords& chords,
                                        const CHarmKeyEstimator& estimator) {
  const CSignKeyLite key = estimator.BestKey(chords);
  if (key.IsUndef()) return {};
  return {CHarmAnlsSignKey(kHarmAnlsUndefDouble, 0.0, key)};
}

}  // namespace harmony
