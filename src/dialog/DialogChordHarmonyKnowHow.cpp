#include "harmony/dialog/DialogChordHarmonyKnowHow.h"

#include <array>

#include "DialogChordMask.h"

namespace harmony {

namespace {

using dialog::CDialogChordMask;

// Indexed by type minus 1: the triad each type button sets, and whether the button is
// "other", the power chord that stands for every chord the six triads don't describe.
constexpr std::array<std::pair<TBasicChord, bool>, kDialogChordTypeCount> kTypeTriads = {{
    {kBasicChordMajor, false},
    {kBasicChordMinor, false},
    {kBasicChordAug, false},
    {kBasicChordDim, false},
    {kBasicChordSus4, false},
    {kBasicChordSus2, false},
    {kBasicChordPower, false},
    {kBasicChordPower, true},
}};

constexpr std::uint8_t Status(bool on) {
  return on ? kDialogButtonStatus_On : kDialogButtonStatus_Off;
}

}  // namespace

std::vector<TDialogButton> DialogChordHarmonyKnowHow::DialogChordTypesFor(
    const CChordLite& chord, const CScaleLite& /*scale*/) const {
  return _DialogChordTypesWithStatusForBasicChord(chord);
}

CChordLite DialogChordHarmonyKnowHow::SetChordFomChangedDialogChordType(
    TDialogChordType type, const CChordLite& chord, const CScaleLite& /*scale*/) const {
  CChordLite result = chord;
  result.Semitones =
      SemitonesForBasicChord(_BasicChordAndEraseTensionsForDialogChordType(type).first);
  return result;
}

std::vector<TDialogButton> DialogChordHarmonyKnowHow::_DialogChordTypesWithStatusForBasicChord(
    const CChordLite& chord) {
  const TDialogChordType current = _DialogChordTypeForBasicChord(chord.Semitones);
  std::vector<TDialogButton> buttons;
  buttons.reserve(kDialogChordTypeCount);
  for (TDialogChordType type = 1; type <= kDialogChordTypeCount; ++type) {
    // The power button never lights: a bare fifth counts as "other".
    const bool on = type == kDialogChordType_Other
                        ? current >= kDialogChordType_Other
                        : type != kDialogChordType_Power && current == type;
    buttons.emplace_back(static_cast<std::uint8_t>(type), Status(on),
                         _TypeButtonTitleIDForTypeAndChord(type, chord));
  }
  return buttons;
}

TDialogChordType DialogChordHarmonyKnowHow::_DialogChordTypeForBasicChord(
    const CSemitones& semitones) {
  const CDialogChordMask s(semitones);
  if (s.Bit(4)) return s.Masked(0x180, 0x100) ? kDialogChordType_Aug : kDialogChordType_Major;
  if (s.Bit(3)) {
    if (s.Bit(6) && !s.Bit(7)) return kDialogChordType_Dim;
    // A minor third over a minor sixth without fifth is a major chord's first inversion, not a
    // minor chord: it goes on to the chords without a third.
    const bool inversion = !s.Bit(6) && s.Masked(0x180, 0x100);
    if (!inversion) return kDialogChordType_Minor;
  }
  if (!s.Bit(7)) return s.Word() != 0 ? kDialogChordType_Other : kDialogChordType_None;
  if (s.Bit(5)) return kDialogChordType_Sus4;
  if (s.Bit(2)) return kDialogChordType_Sus2;
  return kDialogChordType_Other;
}

std::pair<TBasicChord, bool>
DialogChordHarmonyKnowHow::_BasicChordAndEraseTensionsForDialogChordType(TDialogChordType type) {
  if (type < 1 || type > kDialogChordTypeCount) return {kBasicChordNone, true};
  return kTypeTriads[static_cast<std::size_t>(type - 1)];
}

std::uint8_t DialogChordHarmonyKnowHow::_TypeButtonTitleIDForTypeAndChord(TDialogChordType type,
                                                                          const CChordLite& chord) {
  if (type != kDialogChordType_Other) return kDialogButtonTitle_Normal;
  const std::uint64_t s = chord.Semitones.Word();
  // Neither third nor fifth: the button says the chord is no triad at all.
  const bool thirdOrFifth = s == 0 || (s & 152) != 0;
  return thirdOrFifth ? kDialogButtonTitle_Normal : kDialogButtonTitle_Alternative;
}

void DialogChordHarmonyKnowHow::WriteTrace(std::ostream& out) const {
  out << "DialogChordHarmonyKnowHow: rules of the chord dialog, no state";
}

void DialogChordHarmonyKnowHow::WriteTraceBrief(std::ostream& out) const {
  out << "DialogChordHarmonyKnowHow";
}

void DialogChordHarmonyKnowHow::WriteInitializerList(std::ostream& out) const {
  out << "DialogChordHarmonyKnowHow()";
}

// --- TDialogButton

namespace {

const char* StatusText(std::uint8_t status) {
  switch (status) {
    case kDialogButtonStatus_Disabled:
      return "disabled";
    case kDialogButtonStatus_Off:
      return "off";
    case kDialogButtonStatus_On:
      return "on";
    default:
      return "unknown";
  }
}

}  // namespace

void TDialogButton::WriteTrace(std::ostream& out) const {
  out << "TDialogButton: " << static_cast<int>(Value) << ' ' << StatusText(Status) << ", title "
      << static_cast<int>(TitleID);
}

void TDialogButton::WriteTraceBrief(std::ostream& out) const {
  out << static_cast<int>(Value) << ' ' << StatusText(Status);
  if (TitleID != kDialogButtonTitle_Normal) out << " title " << static_cast<int>(TitleID);
}

void TDialogButton::WriteInitializerList(std::ostream& out) const {
  out << "TDialogButton(" << static_cast<int>(Value) << ", " << static_cast<int>(Status) << ", "
      << static_cast<int>(TitleID) << ')';
}

}  // namespace harmony
