#include "harmony/analysis/HarmCenterWeightAnalysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/pitch/Enh.h"

namespace harmony {

namespace {

constexpr std::uint64_t kMajorTriad = 145;
constexpr std::uint64_t kMinorTriad = 137;
// A chord on the key's tonic earns a tenth of its length, once more at the edges of a list.
constexpr double kTonicBonus = 0.1;
// What a chord counts for when no chord follows it.
constexpr double kLastChordLength = 1.0;

// The black keys are weighed as flats, the white keys as naturals (never B sharp or E sharp).
constexpr std::array<TEnh, 12> kCandidateEnhHints = {
    TEnh_n, TEnh_b, TEnh_n, TEnh_b, TEnh_n, TEnh_n, TEnh_b, TEnh_n, TEnh_b, TEnh_n, TEnh_b, TEnh_n};

struct TCandidate {
  CSignKeyLite signKey;
  CSignKeyHeavy heavy;
};

// The twelve major keys, then the twelve minor keys: the order of the weights.
const std::vector<TCandidate>& AllCandidates() {
  static const std::vector<TCandidate> candidates = [] {
    std::vector<TCandidate> built;
    for (const TSignKeyType type : {TSignKeyType::Major, TSignKeyType::Minor}) {
      for (int keyNr = 0; keyNr < 12; ++keyNr) {
        const TEnh hint = kCandidateEnhHints[static_cast<std::size_t>(keyNr)];
        const CSignKeyLite signKey(
            CKeyEnh(keyNr, MakeSensefulEnhForKeyNrAssumingCMajor(keyNr, hint)), type);
        built.push_back({signKey, signKey.ToSignKeyHeavy()});
      }
    }
    return built;
  }();
  return candidates;
}

std::size_t CandidateCount(std::int32_t candidateSet) {
  switch (candidateSet) {
    case CHarmCenterWeightAnalysis::kCandidatesMajor:
      return 12;
    case CHarmCenterWeightAnalysis::kCandidatesMajorAndMinor:
      return 24;
    default:
      return 0;
  }
}

// The chord's fields that decide which keys it lies in, packed into one word; empty for values
// too wide to pack, which are then tested each time.
std::optional<std::uint64_t> PackedChord(const CChordLite& chord) {
  const auto fits = [](int value) { return value >= 0 && value < 256; };
  const std::uint64_t mask = chord.Semitones.Word();
  if (!fits(chord.RootKeyEnh.KeyNr) || !fits(chord.BassKeyEnh.KeyNr) || (mask >> 32) != 0) {
    return std::nullopt;
  }
  const auto byte = [](int value) { return static_cast<std::uint64_t>(value) & 0xffu; };
  return byte(chord.RootKeyEnh.KeyNr) | byte(chord.RootKeyEnh.Enh) << 8 |
         byte(chord.BassKeyEnh.KeyNr) << 16 | byte(chord.BassKeyEnh.Enh) << 24 | mask << 32;
}

// Bit k: the chord lies in candidate k. The test is the heavy chord's, which reads the
// chord record that the heavy chord gives back; that record is made once for all candidates.
std::uint32_t CandidatesHolding(const CChordLite& chord, std::size_t count) {
  const std::vector<TCandidate>& all = AllCandidates();
  CChordLite asHeavyHasIt;
  asHeavyHasIt.SetFromChordHeavy(chord.ToChordHeavy(24));
  std::uint32_t holding = 0;
  for (std::size_t k = 0; k < count; ++k) {
    if (asHeavyHasIt.IsInSignKeyRegardlessOfEnh(all[k].heavy)) holding |= 1u << k;
  }
  return holding;
}

// The key's tonic triad as a chord list writes it when nothing is added: same spelling, no
// bass, no distances.
bool HasPlainTonicTriad(const CHarmAnlsChords& chords, const CSignKeyLite& signKey) {
  const std::uint64_t triad =
      signKey.SignKeyType == TSignKeyType::Minor ? kMinorTriad : kMajorTriad;
  const CHarmAnlsChord plain(CChordLite(signKey.RootKeyEnh, CSemitones(triad)));
  return std::any_of(chords.begin(), chords.end(),
                     [&](const CHarmAnlsChordWithPos& chord) { return chord == plain; });
}

}  // namespace

bool CHarmCenterWeightAnalysis::TCandidateOrder::operator()(const CSignKeyLite& a,
                                                            const CSignKeyLite& b) const {
  if (a.SignKeyType != b.SignKeyType) return a.SignKeyType < b.SignKeyType;
  if (a.RootKeyEnh.KeyNr != b.RootKeyEnh.KeyNr) return a.RootKeyEnh.KeyNr < b.RootKeyEnh.KeyNr;
  return a.RootKeyEnh.Enh < b.RootKeyEnh.Enh;
}

CHarmCenterWeightAnalysis::TWeights CHarmCenterWeightAnalysis::_WeighCandidates(
    const CHarmAnlsChords& chords) const {
  const std::vector<TCandidate>& all = AllCandidates();
  const std::size_t count = CandidateCount(CandidateSet);
  std::vector<double> weights(count, 0.0);
  // A piece repeats its chords: each different chord is tested against the keys once.
  std::unordered_map<std::uint64_t, std::uint32_t> holdingByChord;
  for (std::size_t i = 0; i < chords.size(); ++i) {
    const CHarmAnlsChordWithPos& chord = chords[i];
    if (chord.IsUndef()) continue;
    const double len =
        i + 1 < chords.size() ? chords[i + 1].Position - chord.Position : kLastChordLength;
    const bool atEdge = i == 0 || i + 1 == chords.size();
    std::uint32_t holding = 0;
    if (const std::optional<std::uint64_t> packed = PackedChord(chord)) {
      const auto [known, isNew] = holdingByChord.try_emplace(*packed, 0);
      if (isNew) known->second = CandidatesHolding(chord, count);
      holding = known->second;
    } else {
      holding = CandidatesHolding(chord, count);
    }
    for (std::size_t k = 0; k < count; ++k) {
      if (((holding >> k) & 1u) == 0) continue;
      double& weight = weights[k];
      weight += len;
      if (chord.RootKeyEnh.KeyNr != all[k].signKey.RootKeyEnh.KeyNr) continue;
      weight = std::fma(len, kTonicBonus, weight);
      if (atEdge) weight = std::fma(len, kTonicBonus, weight);
    }
  }
  TWeights result;
  for (std::size_t k = 0; k < count; ++k) result.emplace(all[k].signKey, weights[k]);
  return result;
}

bool CHarmCenterWeightAnalysis::_IsNewBestResult(TWeights::const_iterator candidate,
                                                 TWeights::const_iterator best,
                                                 const TWeights& weights,
                                                 const CHarmAnlsChords& chords) const {
  if (best == weights.end()) return true;
  if (candidate->second > best->second) return true;
  // Major and minor on one root: the triad that is actually played decides, even against
  // the weights.
  const bool sameRoot = candidate->first.RootKeyEnh == best->first.RootKeyEnh;
  return sameRoot && HasPlainTonicTriad(chords, candidate->first) &&
         !HasPlainTonicTriad(chords, best->first);
}

void CHarmCenterWeightAnalysis::DetectHarmCentersFromChords(const CHarmAnlsChords& chords,
                                                            CHarmAnlsCenters& results) {
  results.clear();
  ResultIsAmbiguous = false;
  _Weights.clear();
  if (chords.empty()) return;
  _Weights = _WeighCandidates(chords);
  if (SkipResult || _Weights.empty()) return;

  auto best = _Weights.cend();
  for (auto candidate = _Weights.cbegin(); candidate != _Weights.cend(); ++candidate) {
    if (_IsNewBestResult(candidate, best, _Weights, chords)) {
      best = candidate;
      ResultIsAmbiguous = false;
    } else if (candidate->second == best->second) {
      // Relative keys share a signature; their tie goes to the major key on purpose.
      const CSignKeyLite& a = candidate->first;
      const CSignKeyLite& b = best->first;
      if (SignsCountAbsForSignKeyWithKeyEnhAndSignKeyType(a.RootKeyEnh, a.SignKeyType) !=
          SignsCountAbsForSignKeyWithKeyEnhAndSignKeyType(b.RootKeyEnh, b.SignKeyType)) {
        ResultIsAmbiguous = true;
      }
    }
  }
  const CSignKeyLite& key = best->first;
  results.emplace_back(kHarmAnlsUndefDouble, chords.front().Position,
                       CHarmCenterLite(key.RootKeyEnh, SemitonesFromSignKeyType(key.SignKeyType)));
}

void CHarmCenterWeightAnalysis::WriteTrace(std::ostream& out) const {
  out << "CHarmCenterWeightAnalysis: todo define TraceStream";
}

void CHarmCenterWeightAnalysis::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CHarmCenterWeightAnalysis::WriteInitializerList(std::ostream& out) const {
  out << "CHarmCenterWeightAnalysis(" << (SkipResult ? "true" : "false") << ", " << CandidateSet
      << ')';
}

}  // namespace harmony
