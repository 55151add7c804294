#pragma once
// What a host's chord editor asks about its two rows of buttons: one row of chord types
// (major, minor, ...) and one row of options (flat fifth, ninth, thirteenth, ...). For a chord
// it tells which button is available, which is lit and which of two titles it bears, and it
// computes the chord a press produces. The rules look at the chord's semitone mask alone;
// root and bass pass through every press unchanged.

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleLite.h"

namespace harmony {

// A button of the type row: 1 major, 2 minor, 3 augmented, 4 diminished, 5 sus4, 6 sus2,
// 7 power, 8 other. 0 stands for a chord without tones, which has no button of its own.
using TDialogChordType = int;
inline constexpr TDialogChordType kDialogChordType_None = 0;
inline constexpr TDialogChordType kDialogChordType_Major = 1;
inline constexpr TDialogChordType kDialogChordType_Minor = 2;
inline constexpr TDialogChordType kDialogChordType_Aug = 3;
inline constexpr TDialogChordType kDialogChordType_Dim = 4;
inline constexpr TDialogChordType kDialogChordType_Sus4 = 5;
inline constexpr TDialogChordType kDialogChordType_Sus2 = 6;
inline constexpr TDialogChordType kDialogChordType_Power = 7;
inline constexpr TDialogChordType kDialogChordType_Other = 8;
inline constexpr int kDialogChordTypeCount = 8;

// A button of the option row, 1..12. Each stands for one semitone above the root; three pairs
// share one: the flat fifth and the sharp eleventh (6), the sharp fifth and the flat
// thirteenth (8), the sixth and the thirteenth (9). Whether a seventh sounds decides which
// reading of the pair lights up.
using TDialogChordOption = int;
inline constexpr TDialogChordOption kDialogChordOption_b5 = 1;
inline constexpr TDialogChordOption kDialogChordOption_sharp5 = 2;
inline constexpr TDialogChordOption kDialogChordOption_6 = 3;
inline constexpr TDialogChordOption kDialogChordOption_7 = 4;
inline constexpr TDialogChordOption kDialogChordOption_maj7 = 5;
inline constexpr TDialogChordOption kDialogChordOption_b9 = 6;
inline constexpr TDialogChordOption kDialogChordOption_9 = 7;
inline constexpr TDialogChordOption kDialogChordOption_sharp9 = 8;
inline constexpr TDialogChordOption kDialogChordOption_11 = 9;
inline constexpr TDialogChordOption kDialogChordOption_sharp11 = 10;
inline constexpr TDialogChordOption kDialogChordOption_b13 = 11;
inline constexpr TDialogChordOption kDialogChordOption_13 = 12;
inline constexpr int kDialogChordOptionCount = 12;

// The semitone above the root each option stands for, indexed by option minus 1.
inline constexpr std::array<int, kDialogChordOptionCount> kDialogChordOptionSemitones = {
    6, 8, 9, 10, 11, 1, 2, 3, 5, 6, 8, 9};

// The state of a button.
inline constexpr std::uint8_t kDialogButtonStatus_Disabled = 2;
inline constexpr std::uint8_t kDialogButtonStatus_Off = 3;
inline constexpr std::uint8_t kDialogButtonStatus_On = 4;

// Which of a button's two titles it shows; the texts are the host's.
inline constexpr std::uint8_t kDialogButtonTitle_Normal = 1;
inline constexpr std::uint8_t kDialogButtonTitle_Alternative = 2;

// One button: its type or option value, its status and its title id, three bytes.
struct TDialogButton : public TraceFamily<TDialogButton> {
  std::uint8_t Value = 0;
  std::uint8_t Status = kDialogButtonStatus_Off;
  std::uint8_t TitleID = kDialogButtonTitle_Normal;

  constexpr TDialogButton() = default;
  constexpr TDialogButton(std::uint8_t value, std::uint8_t status, std::uint8_t titleID)
      : Value(value), Status(status), TitleID(titleID) {}

  bool IsEnabled() const { return Status != kDialogButtonStatus_Disabled; }
  bool IsOn() const { return Status == kDialogButtonStatus_On; }
  friend bool operator==(const TDialogButton& a, const TDialogButton& b) {
    return a.Value == b.Value && a.Status == b.Status && a.TitleID == b.TitleID;
  }

  // "TDialogButton: 2 on, title 1"
  void WriteTrace(std::ostream& out) const;
  // "2 on" (with " title 2" for the alternative title)
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

static_assert(sizeof(TDialogButton) == 3, "a button record is three bytes");

// The host calls the rules through this interface. None of the operations reads the scale;
// it stays in the signatures for the host.
class DialogChordHarmonyKnowHowInterface {
 public:
  virtual ~DialogChordHarmonyKnowHowInterface() = default;

  // Eight buttons, types 1..8 in that order.
  virtual std::vector<TDialogButton> DialogChordTypesFor(const CChordLite& chord,
                                                         const CScaleLite& scale) const = 0;
  // The chord with the type's plain triad; every tension is lost. A type outside 1..8 gives
  // a chord without tones.
  virtual CChordLite SetChordFomChangedDialogChordType(TDialogChordType type,
                                                       const CChordLite& chord,
                                                       const CScaleLite& scale) const = 0;
  // Twelve buttons, options 1..12 in that order.
  virtual std::vector<TDialogButton> DialogChordOptionsFor(const CChordLite& chord,
                                                           const CScaleLite& scale) const = 0;
  // The chord with the option switched on or off, together with the tones a tension implies
  // (a ninth brings a seventh); an option outside 1..12 gives the chord unchanged.
  virtual CChordLite SetChordFomChangedDialogChordOption(TDialogChordOption option, bool on,
                                                         const CChordLite& chord,
                                                         const CScaleLite& scale) const = 0;
};

}  // namespace harmony
