#pragma once
// The mask tests the dialog's rules share: the forms of the triad that decide how a tone
// above it reads. Each test looks at the bits of its first mask only.

#include <cstdint>

#include "harmony/pitch/Semitones.h"

namespace harmony::dialog {

class CDialogChordMask {
 public:
  explicit constexpr CDialogChordMask(const CSemitones& semitones) : _s(semitones.Word()) {}

  constexpr std::uint64_t Word() const { return _s; }
  constexpr bool Bit(int index) const { return ((_s >> index) & 1U) != 0; }
  constexpr bool Masked(std::uint64_t mask, std::uint64_t value) const {
    return (_s & mask) == value;
  }

  // Major third and sharp fifth without the perfect fifth.
  constexpr bool IsAugForm() const { return Masked(0x190, 0x110); }
  // Major third and flat fifth without the perfect fifth.
  constexpr bool IsFlatFiveForm() const { return Masked(208, 80); }
  // Minor third and flat fifth, neither major third nor perfect fifth.
  constexpr bool IsDimForm() const { return Masked(216, 72); }
  // Fourth and fifth without a third.
  constexpr bool IsSus4Form() const { return Masked(184, 160); }
  // Second and fifth without a third or fourth.
  constexpr bool IsSus2Form() const { return Masked(188, 132); }
  // A minor or major seventh.
  constexpr bool HasSeventh() const { return (_s & 0xC00) != 0; }
  // Neither the flat fifth nor the fourth belongs to the triad (no flat-five, dim or sus4
  // form), so bits 5 and 6 read as tensions.
  constexpr bool FourthAndTritoneAreTensions() const {
    return !IsFlatFiveForm() && !IsDimForm() && !IsSus4Form();
  }

 private:
  std::uint64_t _s;
};

}  // namespace harmony::dialog
