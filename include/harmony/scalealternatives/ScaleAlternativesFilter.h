#pragma once
// Which candidate scales could be played over a chord in its context. The candidates are
// masks relative to the chord's root; a record of rules, filled by each caller, says how
// strictly a candidate has to agree with the chord and with the scale around it. A pure
// function: the same context, rules and candidates always give the same list.

#include <cstdint>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/pitch/Semitones.h"
#include "harmony/scalealternatives/ScaleAlternative.h"
#include "harmony/scalealternatives/ScaleAlternativesContext.h"

namespace harmony {

class CScaleAlternativesFilter {
 public:
  // A tone count limit with every bit set imposes nothing.
  static constexpr std::uint64_t kNoLimit = ~std::uint64_t{0};

  // The rules. Every field starts at 0, which is no sensible rule set: callers fill all.
  struct TParams : public TraceFamily<TParams> {
    std::uint8_t MatchChord3rd = 0;             // 1: agree with the chord's third
    std::uint8_t MatchChord5thNoSeventh = 0;    // flag: agree with the fifth of a chord
    std::uint8_t MatchChord5thWithSeventh = 0;  // ... without, or with, a seventh
    std::uint8_t MatchOption7 = 0;              // 1: agree with the chord's seventh,
    std::uint8_t MatchOption9 = 0;              // ninth, eleventh, thirteenth where it
    std::uint8_t MatchOption11 = 0;             // has one
    std::uint8_t MatchOption13 = 0;
    std::uint8_t MatchCenter3rd = 0;          // 1: agree with the third of the center scale
    std::uint8_t MatchCenter5th = 0;          // flag: agree with its fifth
    std::uint8_t MatchCenter7th = 0;          // 1: agree with its seventh
    std::uint64_t MinExpandedChordTones = 0;  // of the chord with the seventh its degree suggests
    std::uint64_t MinChordTones = 0;
    std::int32_t MinCenterTones = 0;  // lowered by each chord tone the center scale lacks
    std::uint64_t MaxAvoidNotes = 0;  // tones a semitone above a chord tone
    std::uint64_t MaxAdjacentHalfSteps = 0;
    std::uint64_t MaxHiatusInMajorCenter = 0;          // steps of three semitones in a scale of six
    std::uint64_t MaxHiatusInOtherCenter = 0;          // or more tones
    std::uint64_t MinTones = 0;                        // kNoLimit: no limit
    std::uint64_t MaxTones = 0;                        // kNoLimit: no limit
    std::uint8_t AllowPentatonics = 0;                 // flag: the two pentatonic scales may pass
    std::uint8_t AppendChromatic = 0;                  // flag: the chromatic scale closes the list
    std::uint8_t ForceAlteredOverAlteredDominant = 0;  // 1: see Filter
    std::uint8_t ForceLydianDominantOver13 = 0;        // 1: see Filter
    std::uint8_t ForceDiminishedOverDim7 = 0;          // 1: see Filter
    std::uint8_t UseBlues = 0;                         // flag: see Filter

    void WriteTrace(std::ostream& out) const;
    void WriteTraceBrief(std::ostream& out) const;
    void WriteInitializerList(std::ostream& out) const;
  };

  // The candidates that pass every rule, in their order, each on the chord's root. Some
  // candidates decide alone, whatever the other rules say:
  // - the blues scales: with UseBlues, major blues over a major triad and minor blues over a
  //   minor one pass at once; without it both are refused;
  // - the altered scale over a chord with major third and fifth but without natural ninth,
  //   thirteenth or major seventh, a dominant open to alterations
  //   (ForceAlteredOverAlteredDominant);
  // - the Lydian dominant over the thirteenth chord 0-2-4-7-9-10 (ForceLydianDominantOver13);
  // - both diminished scales over a diminished seventh (ForceDiminishedOverDim7).
  static TScaleAlternatives Filter(const CScaleAlternativesChordContext& context,
                                   const TParams& params,
                                   const std::vector<CSemitones>& candidates);

  // Whether `a` agrees with the fifth of `b`: a plain fifth needs a plain fifth, a flat fifth
  // (without a plain one) a flat fifth and no plain one, a sharp fifth no plain one.
  static bool IsMatchingChord5th(const CSemitones& a, const CSemitones& b);

  // Thirds compared above the root offset k: the major third where either has one, else the
  // minor third (a sharp nine counts as a minor third).
  static bool _Semitones3rdOrSharp9AreMatching(const CSemitones& a, const CSemitones& b, int k);
  // The same, except that over a sus chord `b` (a second or fourth, no third) `a` must have
  // b's fourth, or else its second.
  static bool _Semitones3rdOrSharp9OrSus2OrSus4AreMatching(const CSemitones& a, const CSemitones& b,
                                                           int k);
  // `a` has a major third exactly where `b` has one, else a minor third alone; true when `b`
  // has no third. The thirds are bits 3 and 4: the root offset is not read.
  static bool _IsMatchingHarmCenterOrSignKeyScale3rd(const CSemitones& a, const CSemitones& b,
                                                     int k);
  // A scale of six or more tones may have only so many steps of three semitones.
  static bool _IsBelowMaximumHiatusCount(const CScaleAlternativesChordContext& context,
                                         const TParams& params, const CSemitones& candidate);
};

}  // namespace harmony
