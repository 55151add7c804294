#include "harmony/scalealternatives/ScaleAlternativesFilter.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace harmony {

namespace {

using TParams = CScaleAlternativesFilter::TParams;

constexpr std::uint64_t kMajorPentatonic = 661;
constexpr std::uint64_t kMinorPentatonic = 1193;
constexpr std::uint64_t kMajorBlues = 669;
constexpr std::uint64_t kMinorBlues = 1257;
constexpr std::uint64_t kAltered = 1371;
constexpr std::uint64_t kLydianDominant = 1749;
constexpr std::uint64_t kWholeHalfDiminished = 2925;
constexpr std::uint64_t kHalfWholeDiminished = 1755;
constexpr std::uint64_t kChromatic = 4095;
constexpr std::uint64_t kMajorTriad = 145;
constexpr std::uint64_t kMinorTriad = 137;
constexpr std::uint64_t kSus4Triad = 161;
constexpr std::uint64_t kThirteenth = 1685;  // 0-2-4-7-9-10
constexpr std::uint64_t kDim7 = 585;
// Ninth, major third, fifth, thirteenth and major seventh: with third and fifth alone among
// them a dominant takes alterations.
constexpr std::uint64_t kAlterationTones = 2708;
constexpr std::uint64_t kThirdAndFifth = 144;

bool Has(const CSemitones& semitones, int intvl) { return semitones.HasIntvl(intvl); }
bool HasThird(const CSemitones& semitones) { return Has(semitones, 3) || Has(semitones, 4); }
bool HasMinorThirdAlone(const CSemitones& semitones) { return semitones.IsMinorOrDim(); }
bool HasAnyFifth(const CSemitones& semitones) {
  return Has(semitones, 6) || Has(semitones, 7) || Has(semitones, 8);
}

// The masks every candidate is measured against (the letters of the rules: C, E, T, S, A, O).
struct TPrepared {
  CSemitones Chord;          // C
  CSemitones Expanded;       // E: with the seventh the chord's degree suggests
  CSemitones Triad;          // T: the basic chord
  CSemitones Scale;          // S: the center scale read from the chord's root
  unsigned long Foreign{};   // A: chord tones the scale lacks
  CSemitones ChordAndScale;  // O
};

TPrepared Prepare(const CScaleAlternativesChordContext& context) {
  TPrepared prepared;
  const CChordLite& chord = context.Chord;
  prepared.Chord = chord.Semitones;
  prepared.Expanded = chord.ChordExpandedWithTypicalSeventh(context.HarmCenter).Semitones;
  prepared.Triad = SemitonesForBasicChord(context.BasicChord);
  prepared.Scale = context.Scale.Semitones;
  if (!chord.IsUndef() && !context.Scale.IsUndef()) {
    prepared.Scale.RotateRootToIx(static_cast<unsigned long>(
        NormalizedKeyNr(chord.RootKeyEnh.KeyNr - context.Scale.RootKeyEnh.KeyNr)));
  }
  prepared.Foreign = prepared.Chord.MismatchingCountForActiveInThisTo(prepared.Scale);
  prepared.ChordAndScale = prepared.Chord + prepared.Scale;
  return prepared;
}

// The center's third counts only where the chord does not contradict it.
bool MatchesCenterThird(const TPrepared& p, const TParams& params, const CSemitones& m) {
  const CSemitones& c = p.Chord;
  const CSemitones& s = p.Scale;
  if (!HasThird(c)) return true;
  const bool chordContradicts =
      Has(p.ChordAndScale, 4) ? Has(s, 4) != Has(c, 4) : Has(s, 3) != Has(c, 3);
  if (chordContradicts || params.MatchCenter3rd != 1 || !HasThird(s)) return true;
  return Has(m, 4) == Has(s, 4) && HasMinorThirdAlone(m) == HasMinorThirdAlone(s);
}

bool MatchesCenterFifth(const TPrepared& p, const TParams& params, const CSemitones& m) {
  if (params.MatchCenter5th == 0) return true;
  if (!CScaleAlternativesFilter::IsMatchingChord5th(p.Scale, p.Chord)) return true;
  return CScaleAlternativesFilter::IsMatchingChord5th(m, p.Scale);
}

bool MatchesCenterSeventh(const TPrepared& p, const TParams& params, const CSemitones& m) {
  if (params.MatchCenter7th != 1) return true;
  if (!Has(p.Chord, 10) && !Has(p.Chord, 11)) return true;
  if (!p.Scale.IsMatchingChordOption(kChordOption7, p.Chord)) return true;
  return m.IsMatchingChordOption(kChordOption7, p.Scale);
}

bool MatchesChordThird(const TPrepared& p, const TParams& params, const CSemitones& m) {
  if (params.MatchChord3rd != 1) return true;
  const CSemitones& c = p.Chord;
  // A sus chord: the scale keeps the fourth.
  if (!HasThird(c) && (Has(c, 2) || Has(c, 5))) return Has(m, 5);
  const int third = Has(m, 4) || Has(c, 4) ? 4 : 3;
  return Has(m, third) == Has(c, third);
}

bool MatchesChordFifth(const TPrepared& p, const TParams& params, const CSemitones& m) {
  const bool withSeventh = Has(p.Expanded, 10) || Has(p.Expanded, 11);
  const std::uint8_t flag =
      withSeventh ? params.MatchChord5thWithSeventh : params.MatchChord5thNoSeventh;
  return flag == 0 || CScaleAlternativesFilter::IsMatchingChord5th(m, p.Chord);
}

bool MatchesChordOptions(const TPrepared& p, const TParams& params, const CSemitones& m) {
  const std::array<std::pair<std::uint8_t, TChordOption>, 4> options{{
      {params.MatchOption7, kChordOption7},
      {params.MatchOption9, kChordOption9},
      {params.MatchOption11, kChordOption11},
      {params.MatchOption13, kChordOption13},
  }};
  for (const auto& [flag, option] : options) {
    if (flag == 1 && !m.IsMatchingChordOption(option, p.Chord)) return false;
  }
  return true;
}

bool HasEnoughSharedTones(const TPrepared& p, const TParams& params, const CSemitones& m) {
  if (m.MatchingCountForActiveInBothTo(p.Expanded) < params.MinExpandedChordTones) return false;
  if (m.MatchingCountForActiveInBothTo(p.Chord) < params.MinChordTones) return false;
  // Each chord tone outside the center scale lowers what the candidate must share with it.
  const long long needed =
      static_cast<long long>(params.MinCenterTones) - static_cast<long long>(p.Foreign);
  return static_cast<long long>(m.MatchingCountForActiveInBothTo(p.Scale)) >= needed;
}

bool HasToneCountInLimits(const TParams& params, const CSemitones& m) {
  if (params.MinTones != CScaleAlternativesFilter::kNoLimit && m.size() < params.MinTones) {
    return false;
  }
  return params.MaxTones == CScaleAlternativesFilter::kNoLimit || m.size() <= params.MaxTones;
}

bool PassesAllTests(const CScaleAlternativesChordContext& context, const TPrepared& p,
                    const TParams& params, const CSemitones& m) {
  return MatchesCenterThird(p, params, m) && MatchesCenterFifth(p, params, m) &&
         MatchesCenterSeventh(p, params, m) && MatchesChordThird(p, params, m) &&
         MatchesChordFifth(p, params, m) && MatchesChordOptions(p, params, m) &&
         m.AvoidNotesCountTo(p.Chord) <= params.MaxAvoidNotes &&
         m.AdjacentHalfStepsCount() <= params.MaxAdjacentHalfSteps &&
         CScaleAlternativesFilter::_IsBelowMaximumHiatusCount(context, params, m) &&
         HasEnoughSharedTones(p, params, m) && HasToneCountInLimits(params, m);
}

bool IsAccepted(const CScaleAlternativesChordContext& context, const TPrepared& p,
                const TParams& params, const CSemitones& m) {
  const std::uint64_t mask = m.Word();
  const std::uint64_t chord = p.Chord.Word();
  const std::uint64_t triad = p.Triad.Word();
  if ((mask == kMajorPentatonic || mask == kMinorPentatonic) && params.AllowPentatonics == 0) {
    return false;
  }
  if (params.UseBlues != 0) {
    if ((mask == kMajorBlues && triad == kMajorTriad) ||
        (mask == kMinorBlues && triad == kMinorTriad)) {
      return true;
    }
  } else if (mask == kMajorBlues || mask == kMinorBlues) {
    return false;
  }
  if (params.ForceAlteredOverAlteredDominant == 1 && mask == kAltered &&
      (chord & kAlterationTones) == kThirdAndFifth && triad != kSus4Triad) {
    return true;
  }
  if (params.ForceLydianDominantOver13 == 1 && mask == kLydianDominant && chord == kThirteenth) {
    return true;
  }
  if (params.ForceDiminishedOverDim7 == 1 &&
      (mask == kWholeHalfDiminished || mask == kHalfWholeDiminished) && chord == kDim7) {
    return true;
  }
  return PassesAllTests(context, p, params, m);
}

// Name and value of every rule, in the order of the record.
std::array<std::pair<const char*, std::string>, 25> ParamsList(const TParams& p) {
  const auto text = [](auto value) { return std::to_string(+value); };
  return {{{"MatchChord3rd", text(p.MatchChord3rd)},
           {"MatchChord5thNoSeventh", text(p.MatchChord5thNoSeventh)},
           {"MatchChord5thWithSeventh", text(p.MatchChord5thWithSeventh)},
           {"MatchOption7", text(p.MatchOption7)},
           {"MatchOption9", text(p.MatchOption9)},
           {"MatchOption11", text(p.MatchOption11)},
           {"MatchOption13", text(p.MatchOption13)},
           {"MatchCenter3rd", text(p.MatchCenter3rd)},
           {"MatchCenter5th", text(p.MatchCenter5th)},
           {"MatchCenter7th", text(p.MatchCenter7th)},
           {"MinExpandedChordTones", text(p.MinExpandedChordTones)},
           {"MinChordTones", text(p.MinChordTones)},
           {"MinCenterTones", text(p.MinCenterTones)},
           {"MaxAvoidNotes", text(p.MaxAvoidNotes)},
           {"MaxAdjacentHalfSteps", text(p.MaxAdjacentHalfSteps)},
           {"MaxHiatusInMajorCenter", text(p.MaxHiatusInMajorCenter)},
           {"MaxHiatusInOtherCenter", text(p.MaxHiatusInOtherCenter)},
           {"MinTones", text(p.MinTones)},
           {"MaxTones", text(p.MaxTones)},
           {"AllowPentatonics", text(p.AllowPentatonics)},
           {"AppendChromatic", text(p.AppendChromatic)},
           {"ForceAlteredOverAlteredDominant", text(p.ForceAlteredOverAlteredDominant)},
           {"ForceLydianDominantOver13", text(p.ForceLydianDominantOver13)},
           {"ForceDiminishedOverDim7", text(p.ForceDiminishedOverDim7)},
           {"UseBlues", text(p.UseBlues)}}};
}

// The pitch class `intvl` above the root offset k (key 15 is no pitch class here).
bool HasAbove(const CSemitones& semitones, int k, int intvl) {
  return semitones.HasIntvl(((k + intvl) % 12 + 12) % 12);
}

}  // namespace

TScaleAlternatives CScaleAlternativesFilter::Filter(const CScaleAlternativesChordContext& context,
                                                    const TParams& params,
                                                    const std::vector<CSemitones>& candidates) {
  const TPrepared prepared = Prepare(context);
  const CKeyEnh root = context.Chord.RootKeyEnh;
  TScaleAlternatives kept;
  for (const CSemitones& candidate : candidates) {
    if (IsAccepted(context, prepared, params, candidate)) {
      kept.emplace_back(CScaleLite(root, candidate));
    }
  }
  if (params.AppendChromatic != 0) kept.emplace_back(CScaleLite(root, CSemitones(kChromatic)));
  return kept;
}

bool CScaleAlternativesFilter::IsMatchingChord5th(const CSemitones& a, const CSemitones& b) {
  if (!HasAnyFifth(a) || !HasAnyFifth(b)) return true;
  const bool flat = Has(b, 6);
  const bool perfect = Has(b, 7);
  const bool sharp = Has(b, 8);
  if (perfect && !flat && !sharp) return Has(a, 7);
  if (flat && !perfect) return Has(a, 6) && !Has(a, 7);
  if (sharp && !perfect) return !Has(a, 7);
  for (int intvl : {6, 7, 8}) {
    if (Has(a, intvl) && !Has(b, intvl)) return false;
  }
  return true;
}

bool CScaleAlternativesFilter::_Semitones3rdOrSharp9AreMatching(const CSemitones& a,
                                                                const CSemitones& b, int k) {
  if (HasAbove(a, k, 4) || HasAbove(b, k, 4)) return HasAbove(a, k, 4) == HasAbove(b, k, 4);
  return HasAbove(a, k, 3) == HasAbove(b, k, 3);
}

bool CScaleAlternativesFilter::_Semitones3rdOrSharp9OrSus2OrSus4AreMatching(const CSemitones& a,
                                                                            const CSemitones& b,
                                                                            int k) {
  const bool sus =
      (HasAbove(b, k, 2) || HasAbove(b, k, 5)) && !HasAbove(b, k, 3) && !HasAbove(b, k, 4);
  if (!sus) return _Semitones3rdOrSharp9AreMatching(a, b, k);
  return HasAbove(a, k, HasAbove(b, k, 5) ? 5 : 2);
}

bool CScaleAlternativesFilter::_IsMatchingHarmCenterOrSignKeyScale3rd(const CSemitones& a,
                                                                      const CSemitones& b,
                                                                      int /*k*/) {
  if (!HasThird(b)) return true;
  const bool major = Has(b, 4);
  return Has(a, 4) == major && HasMinorThirdAlone(a) == !major;
}

bool CScaleAlternativesFilter::_IsBelowMaximumHiatusCount(
    const CScaleAlternativesChordContext& context, const TParams& params,
    const CSemitones& candidate) {
  // Pentatonic scales are made of such steps; they are judged by other rules.
  if (candidate.size() < 6) return true;
  const std::uint64_t maximum = context.Scale.Semitones.IsModalScaleMajor()
                                    ? params.MaxHiatusInMajorCenter
                                    : params.MaxHiatusInOtherCenter;
  return candidate.StepsWithIntvlCount(3) <= maximum;
}

// --- TParams

void CScaleAlternativesFilter::TParams::WriteTrace(std::ostream& out) const {
  out << "CScaleAlternativesFilter::TParams:";
  const char* separator = " ";
  for (const auto& [name, value] : ParamsList(*this)) {
    out << separator << name << ' ' << value;
    separator = ", ";
  }
}

void CScaleAlternativesFilter::TParams::WriteTraceBrief(std::ostream& out) const {
  out << "TParams(";
  const char* separator = "";
  for (const auto& [name, value] : ParamsList(*this)) {
    if (value == "0") continue;
    out << separator << name << ' ' << value;
    separator = ", ";
  }
  out << ')';
}

void CScaleAlternativesFilter::TParams::WriteInitializerList(std::ostream& out) const {
  out << "CScaleAlternativesFilter::TParams{";
  const char* separator = "";
  for (const auto& [name, value] : ParamsList(*this)) {
    out << separator << value;
    separator = ", ";
  }
  out << '}';
}

}  // namespace harmony
