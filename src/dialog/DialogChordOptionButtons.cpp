// The option row: which tension buttons are available and lit for a chord. Three pairs of
// buttons share a semitone, and the chord decides which reading of it lights up: bit 6 is a
// flat fifth without a seventh and a sharp eleventh with one, bit 9 a sixth without a seventh
// and a thirteenth with one, bit 8 a sharp fifth over an augmented triad and a flat
// thirteenth elsewhere.

#include <array>

#include "DialogChordMask.h"
#include "harmony/dialog/DialogChordHarmonyKnowHow.h"

namespace harmony {

namespace {

using dialog::CDialogChordMask;

constexpr std::uint8_t kOff = kDialogButtonStatus_Off;
constexpr std::uint8_t kOn = kDialogButtonStatus_On;
constexpr std::uint8_t kDisabled = kDialogButtonStatus_Disabled;

constexpr std::uint8_t Lit(bool on) { return on ? kOn : kOff; }

// Bit 6 as a tension of a chord whose triad neither holds it nor is augmented.
constexpr bool TritoneIsTension(const CDialogChordMask& s) {
  return s.Bit(6) && s.FourthAndTritoneAreTensions() && !s.IsAugForm();
}

using TStatusRule = std::uint8_t (*)(const CDialogChordMask&);

// Indexed by option minus 1.
constexpr std::array<TStatusRule, kDialogChordOptionCount> kStatusRules = {
    // 1 flat fifth: lit by a tritone without seventh; an augmented triad has no room for it.
    [](const CDialogChordMask& s) {
      if (TritoneIsTension(s)) return s.HasSeventh() ? kOff : kOn;
      if (s.IsAugForm()) return kDisabled;
      return Lit(s.Bit(6));
    },
    // 2 sharp fifth: not over a minor triad or a triad that already bends its fifth down.
    [](const CDialogChordMask& s) {
      if (s.Masked(152, 136) || s.IsFlatFiveForm() || s.IsDimForm()) return kDisabled;
      return s.Bit(8) ? Lit(s.IsAugForm()) : kOff;
    },
    // 3 sixth: bit 9 without seventh (or beside a minor sixth), never over an augmented triad.
    [](const CDialogChordMask& s) {
      return Lit(s.Bit(9) && !s.IsAugForm() && (s.Bit(8) || !s.HasSeventh()));
    },
    // 4 minor seventh, 5 major seventh.
    [](const CDialogChordMask& s) { return Lit(s.Bit(10)); },
    [](const CDialogChordMask& s) { return Lit(s.Bit(11)); },
    // 6 flat ninth, 7 ninth: a sus2 chord holds the second in its triad.
    [](const CDialogChordMask& s) { return s.IsSus2Form() ? kDisabled : Lit(s.Bit(1)); },
    [](const CDialogChordMask& s) { return s.IsSus2Form() ? kDisabled : Lit(s.Bit(2)); },
    // 8 sharp ninth: not over a minor third or over a bare fifth.
    [](const CDialogChordMask& s) {
      if (s.Masked(24, 8) || s.Masked(152, 128)) return kDisabled;
      return Lit(s.Bit(3));
    },
    // 9 eleventh: a sus4 chord holds the fourth in its triad.
    [](const CDialogChordMask& s) { return s.IsSus4Form() ? kDisabled : Lit(s.Bit(5)); },
    // 10 sharp eleventh: lit by a tritone over a seventh.
    [](const CDialogChordMask& s) {
      if (TritoneIsTension(s)) return Lit(s.HasSeventh());
      if (!s.FourthAndTritoneAreTensions()) return kDisabled;
      return Lit(s.Bit(6));
    },
    // 11 flat thirteenth: an augmented triad holds bit 8 as its fifth.
    [](const CDialogChordMask& s) { return s.IsAugForm() ? kDisabled : Lit(s.Bit(8)); },
    // 12 thirteenth: bit 9 over an augmented triad, or over a seventh without a minor sixth.
    [](const CDialogChordMask& s) {
      return Lit(s.Bit(9) && (s.IsAugForm() || (!s.Bit(8) && s.HasSeventh())));
    },
};

}  // namespace

std::vector<TDialogButton> DialogChordHarmonyKnowHow::DialogChordOptionsFor(
    const CChordLite& chord, const CScaleLite& /*scale*/) const {
  const CDialogChordMask s(chord.Semitones);
  std::vector<TDialogButton> buttons;
  buttons.reserve(kDialogChordOptionCount);
  for (TDialogChordOption option = 1; option <= kDialogChordOptionCount; ++option) {
    buttons.emplace_back(static_cast<std::uint8_t>(option),
                         kStatusRules[static_cast<std::size_t>(option - 1)](s),
                         _OptionButtonTitleIDForOptionAndChord(option, chord));
  }
  return buttons;
}

std::uint8_t DialogChordHarmonyKnowHow::_OptionButtonTitleIDForOptionAndChord(
    TDialogChordOption option, const CChordLite& chord) {
  // Over a diminished triad the sixth is the diminished seventh.
  const bool dimSeventh =
      option == kDialogChordOption_6 && CDialogChordMask(chord.Semitones).IsDimForm();
  return dimSeventh ? kDialogButtonTitle_Alternative : kDialogButtonTitle_Normal;
}

}  // namespace harmony
