// Moving a semitone that is not in a set to a neighbour that is, for snapping played notes
// to a chord or a scale.

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdlib>

#include "harmony/pitch/Semitones.h"

namespace harmony {

namespace {

constexpr int kUndef = CSemitones::kUndefIntvl;
constexpr std::pair<int, int> kNotFound{kUndef, INT_MAX};

// The octave turned so that bit i holds the semitone i steps above `from`.
constexpr std::uint64_t TurnedTo(std::uint64_t word, unsigned long from) {
  const unsigned long n = from % 12;
  const std::uint64_t octave = word & CSemitones::kOctaveMask;
  return ((octave >> n) | (octave << (12 - n))) & CSemitones::kOctaveMask;
}

// Walking up from `index` round the octave: the steps to the first active semitone, at most
// `maxSteps` (12 reaches `index` itself); 0 when there is none.
int StepsUp(std::uint64_t word, unsigned long index, int maxSteps) {
  const std::uint64_t turned = TurnedTo(word, index + 1);
  if (turned == 0) return 0;
  const int steps = std::countr_zero(turned) + 1;
  return steps <= maxSteps ? steps : 0;
}

// The same walking down: bit 12 - k of the octave turned to `index` is k steps below it.
int StepsDown(std::uint64_t word, unsigned long index, int maxSteps) {
  std::uint64_t turned = TurnedTo(word, index);
  const std::uint64_t self = turned & 1;
  turned &= ~std::uint64_t{1};
  if (turned == 0) return (self != 0 && maxSteps >= 12) ? 12 : 0;
  return 12 - std::bit_width(turned) + 1;
}

int Below(unsigned long index, int steps) {
  return static_cast<int>((index % 12 + 12 - static_cast<unsigned long>(steps)) % 12);
}

}  // namespace

// Without wrap the interval is the number of steps walked, so it may cross the octave.
int CSemitones::_Quantize_WrapAtOctave_No_IntvlRight(unsigned long index) const {
  const int steps = StepsUp(_word, index, 12);
  return steps > 0 ? steps : kUndef;
}

int CSemitones::_Quantize_WrapAtOctave_No_IntvlLeft(unsigned long index) const {
  const int steps = StepsDown(_word, index, 11);
  return steps > 0 ? -steps : kUndef;
}

int CSemitones::_Quantize_WrapAtOctave_No_Closest(unsigned long index,
                                                  TQuantizeDirection direction) const {
  const int right = _Quantize_WrapAtOctave_No_IntvlRight(index);
  const int left = _Quantize_WrapAtOctave_No_IntvlLeft(index);
  switch (direction) {
    case kQuantizeClosestTieRight:
      return std::abs(left) < std::abs(right) ? left : right;
    case kQuantizeClosestTieLeft:
      return std::abs(right) < std::abs(left) ? right : left;
    default:
      return kUndef;
  }
}

// With wrap the interval is the difference of the two indices within the octave, so a target
// reached across the octave has the opposite sign; the distance is the steps walked.
std::pair<int, int> CSemitones::_Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Right(
    unsigned long index) const {
  const int steps = IsEmpty() ? 0 : StepsUp(_word, index, 12);
  if (steps == 0) return kNotFound;
  const unsigned long target = (index + static_cast<unsigned long>(steps)) % 12;
  const int intvl = static_cast<int>(target) - static_cast<int>(index);
  return {intvl, target < index ? intvl + 12 : intvl};
}

std::pair<int, int> CSemitones::_Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Left(
    unsigned long index) const {
  const int steps = IsEmpty() ? 0 : StepsDown(_word, index, 12);
  if (steps == 0) return kNotFound;
  const unsigned long target = static_cast<unsigned long>(Below(index, steps));
  const int intvl = static_cast<int>(target) - static_cast<int>(index);
  return {intvl, target > index ? 12 - intvl : -intvl};
}

int CSemitones::_Quantize_WrapAtOctave_Yes_Closest(unsigned long index,
                                                   TQuantizeDirection direction) const {
  if (direction != kQuantizeClosestTieRight && direction != kQuantizeClosestTieLeft) {
    return kUndef;
  }
  const auto left = _Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Left(index);
  if (std::has_single_bit(_word)) return left.first;
  const auto right = _Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Right(index);
  if (direction == kQuantizeClosestTieRight) {
    return left.second < right.second ? left.first : right.first;
  }
  return right.second < left.second ? right.first : left.first;
}

int CSemitones::QuantizeToActiveSemitonesAsIntvl(unsigned long index,
                                                 TQuantizeSemitonesOptions options) const {
  // An index outside the octave names no semitone.
  if (IsEmpty() || index >= 12) return kUndef;
  if (Semitone(index)) return 0;
  const TQuantizeDirection direction = options.Direction;
  switch (options.WrapAtOctave) {
    case _Quantize_WrapAtOctave_No:
      if (direction == kQuantizeRight) return _Quantize_WrapAtOctave_No_IntvlRight(index);
      if (direction == kQuantizeLeft) return _Quantize_WrapAtOctave_No_IntvlLeft(index);
      return _Quantize_WrapAtOctave_No_Closest(index, direction);
    case _Quantize_WrapAtOctave_Yes:
      if (direction == kQuantizeRight) {
        return _Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Right(index).first;
      }
      if (direction == kQuantizeLeft) {
        return _Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Left(index).first;
      }
      return _Quantize_WrapAtOctave_Yes_Closest(index, direction);
  }
  return kUndef;
}

unsigned long CSemitones::QuantizeToActiveSemitonwAsIndex(unsigned long index,
                                                          TQuantizeDirection direction) const {
  const int intvl =
      QuantizeToActiveSemitonesAsIntvl(index, {direction, _Quantize_WrapAtOctave_Yes});
  if (intvl == kUndef) return index;
  return static_cast<unsigned long>(std::clamp(static_cast<long>(index) + intvl, 0L, 11L));
}

}  // namespace harmony
