// What a press of an option button does to a chord. Besides its own tone a tension brings
// the tones stacked below it, as players expect: a ninth implies a seventh, an eleventh or a
// thirteenth a seventh and a ninth. Switching the tension off takes them away again by the
// same steps. Every condition reads the chord as it was before the press.

#include <array>

#include "DialogChordMask.h"
#include "harmony/dialog/DialogChordHarmonyKnowHow.h"

namespace harmony {

namespace {

using dialog::CDialogChordMask;

class COptionPress {
 public:
  COptionPress(const CSemitones& before, bool on) : s(before), _on(on), _result(before) {}

  const CDialogChordMask s;

  CSemitones Result() const { return _result; }
  bool On() const { return _on; }

  // The pressed tone follows the button: in when on, out when off.
  void Set(int bit) { _result.SetSemitone(static_cast<unsigned long>(bit), _on); }
  // A tone that the pressed one replaces goes out; switching off leaves it alone.
  void Clear(int bit) {
    if (_on) _result.SetSemitone(static_cast<unsigned long>(bit), false);
  }
  // A tone that the pressed one replaces comes back when the press is undone.
  void Restore(int bit) { _result.SetSemitone(static_cast<unsigned long>(bit), !_on); }
  void Add(int bit) { _result.SetSemitone(static_cast<unsigned long>(bit), true); }

  // An eleventh over a seventh: a fourth outside a sus4 triad, or a tritone outside the
  // triads that hold it.
  bool EleventhWithSeventh() const {
    return s.HasSeventh() &&
           ((s.Bit(5) && !s.IsSus4Form()) || (s.Bit(6) && !s.IsFlatFiveForm() && !s.IsDimForm()));
  }
  // A thirteenth (or flat thirteenth) over a seventh, outside an augmented triad.
  bool ThirteenthWithSeventh() const {
    return s.HasSeventh() && !s.IsAugForm() && (s.Word() & 0x300) != 0;
  }
  // A ninth brings the minor seventh unless the chord has a seventh, a sixth or an upper
  // tension that already stands over one.
  void ImpliedSeventhBelowNinth() {
    if (!s.Bit(11) && !s.Bit(9) && !EleventhWithSeventh() && !ThirteenthWithSeventh()) Set(10);
  }
  // An eleventh brings a seventh and a ninth; a sixth chord takes it alone (C6(11)).
  void ImpliedBelowEleventh() {
    if (s.Bit(9) || ThirteenthWithSeventh()) return;
    if (!s.Bit(11)) Set(10);
    if (s.Bit(1) || s.IsSus2Form()) return;
    Set(2);
  }
  // A thirteenth brings a seventh and a ninth, unless an eleventh already stands on them; a
  // sharp ninth over a major third serves as the ninth.
  void ImpliedBelowThirteenth() {
    if (EleventhWithSeventh()) return;
    if (!s.Bit(11)) Set(10);
    if (s.Bit(1)) return;
    if (s.Bit(3) && !s.Masked(24, 8)) return;
    Set(2);
  }

 private:
  bool _on;
  CSemitones _result;
};

using TPressSteps = void (*)(COptionPress&);

// Indexed by option minus 1.
constexpr std::array<TPressSteps, kDialogChordOptionCount> kPressSteps = {
    // 1 flat fifth replaces the fifth, which comes back when it goes, unless a sharp fifth
    // stands in for it.
    [](COptionPress& p) {
      p.Set(6);
      if (!p.s.Bit(8)) p.Restore(7);
      p.Clear(8);
    },
    // 2 sharp fifth, the same way round.
    [](COptionPress& p) {
      p.Set(8);
      if (!p.s.Bit(6)) p.Restore(7);
      p.Clear(6);
    },
    // 3 sixth: a sixth chord has no seventh.
    [](COptionPress& p) {
      if (p.s.Bit(9)) {
        p.Clear(10);
        p.Clear(11);
        p.Clear(9);
      }
      p.Set(9);
    },
    // 4 minor seventh replaces the major seventh; a bit 9 stays (it now reads as thirteenth).
    [](COptionPress& p) {
      p.Set(10);
      p.Clear(11);
      if (p.s.Bit(9)) {
        p.Clear(9);
        if (p.On()) p.Add(9);
      }
    },
    // 5 major seventh replaces the minor seventh.
    [](COptionPress& p) {
      p.Set(11);
      p.Clear(10);
    },
    // 6 flat ninth replaces the ninth, except the second of a sus2 triad.
    [](COptionPress& p) {
      p.ImpliedSeventhBelowNinth();
      p.Set(1);
      if (!p.s.IsSus2Form()) p.Clear(2);
    },
    // 7 ninth replaces the other ninths; a minor third is no sharp ninth.
    [](COptionPress& p) {
      p.ImpliedSeventhBelowNinth();
      p.Set(2);
      if (!p.s.Masked(24, 8)) p.Clear(3);
      p.Clear(1);
    },
    // 8 sharp ninth replaces the ninth.
    [](COptionPress& p) {
      p.ImpliedSeventhBelowNinth();
      p.Set(3);
      p.Clear(2);
    },
    // 9 eleventh and 10 sharp eleventh replace each other.
    [](COptionPress& p) {
      p.ImpliedBelowEleventh();
      p.Set(5);
      p.Clear(6);
    },
    [](COptionPress& p) {
      p.ImpliedBelowEleventh();
      p.Set(6);
      p.Clear(5);
    },
    // 11 flat thirteenth and 12 thirteenth replace each other; the sharp fifth of an
    // augmented triad stays under a thirteenth.
    [](COptionPress& p) {
      p.ImpliedBelowThirteenth();
      p.Set(8);
      p.Clear(9);
    },
    [](COptionPress& p) {
      p.ImpliedBelowThirteenth();
      p.Set(9);
      if (!p.s.IsAugForm()) p.Clear(8);
    },
};

}  // namespace

CChordLite DialogChordHarmonyKnowHow::SetChordFomChangedDialogChordOption(
    TDialogChordOption option, bool on, const CChordLite& chord,
    const CScaleLite& /*scale*/) const {
  CChordLite result = chord;
  if (option < 1 || option > kDialogChordOptionCount) return result;
  COptionPress press(chord.Semitones, on);
  kPressSteps[static_cast<std::size_t>(option - 1)](press);
  result.Semitones = press.Result();
  return result;
}

}  // namespace harmony
