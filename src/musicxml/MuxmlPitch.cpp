#include "harmony/musicxml/MuxmlPitch.h"

#include <cmath>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/pitch/Note.h"
#include "musicxml/MuxmlRead.h"
#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

namespace {

bool IsStep(std::int32_t step) { return step >= 0 && step <= 6; }

// C of the octave, in which the steps are counted.
long OctaveStart(std::int32_t octave) { return 12 + 12L * octave; }

}  // namespace

long CMuxmlPitch::ToNoteNrLarge(const CMuxmlSignKey&) const {
  if (!IsStep(mStep)) return kNoteNrUndef;
  static const CScaleHeavy cMajor(CNote(60, TEnh_n), st_maj);
  const long noteNr = cMajor.MoveInScale(OctaveStart(mOctave), mStep, false);
  if (mAlteration == 0.0f) return noteNr;
  const float altered = static_cast<float>(noteNr) + mAlteration;
  if (!std::isfinite(altered)) return kNoteNrUndef;
  return TruncateToInt32(altered);
}

TEnh CMuxmlPitch::AlterationToEnh() const {
  // Whole semitones -2..2 above natural; NaN fails both comparisons.
  const double semitones = std::round(static_cast<double>(mAlteration));
  if (!(semitones >= -2.0 && semitones <= 2.0)) return TEnh_Undef;
  return static_cast<TEnh>(static_cast<int>(semitones) + static_cast<int>(TEnh_n));
}

std::string CMuxmlPitch::ToString(const CMuxmlSignKey& signKey,
                                  const CChordNamePrefs& prefs) const {
  CNote note;
  note.SetNoteNr(ToNoteNrLarge(signKey));
  note.SetEnhAndDontMakeSenseful(AlterationToEnh());
  note.MakeSensefulEnhAssumingCMajor();
  return note.KeyName(prefs) + note.OctName(prefs);
}

void CMuxmlPitch::WriteTrace(std::ostream& out) const {
  out << "CMuxmlPitch: ";
  TMuxmlFieldOut(out, " ").Enum<TMuxmlEnum_Step>(
      "mStep", static_cast<TMuxmlEnum_Step::TType>(mStep))("mAlteration", mAlteration)("mOctave",
                                                                                       mOctave);
}

void CMuxmlPitch::WriteTraceBrief(std::ostream& out) const {
  const std::string step =
      MuxmlEnumWord<TMuxmlEnum_Step>(static_cast<TMuxmlEnum_Step::TType>(mStep));
  out << (step.empty() ? "?" : step) << mOctave;
  if (mAlteration != 0.0f) out << " alter " << mAlteration;
}

void CMuxmlPitch::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlPitch{";
  TMuxmlFieldOut(out, " = ")("mStep", mStep)("mAlteration", mAlteration)("mOctave", mOctave);
  out << '}';
}

long CMuxmlUnpitched::ToNoteNrLarge(const CMuxmlSignKey& signKey) const {
  if (!IsStep(mDisplayStep)) return kNoteNrUndef;
  const CSignKeyHeavy key = signKey.ConvertToCSignKeyTransposedPitch();
  long noteNr = key.MoveInScale(OctaveStart(mDisplayOctave), mDisplayStep, false);
  const TEnh enh = key.EnhForKeyNr(static_cast<int>(((noteNr % 12) + 12) % 12));
  if (enh < 6) noteNr += enh + 1 - 3;
  return noteNr;
}

}  // namespace harmony
