#include "harmony/musicxml/MuxmlNote.h"

#include <string_view>
#include <utility>

#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

long CMuxmlNote::ConvertToNoteNrLarge(const CMuxmlSignKey& signKey) const {
  switch (mNoteType) {
    case TMuxmlEnum_NoteType::kPitched:
      return mPitch.ToNoteNrLarge(signKey);
    case TMuxmlEnum_NoteType::kUnpitched:
    case TMuxmlEnum_NoteType::kRest:
      return mUnpitched.ToNoteNrLarge(signKey);
    default:
      return -1;
  }
}

namespace {

template <class TFields>
void WriteNoteFields(const CMuxmlNote& n, TFields&& fields) {
  fields("mPositionAsMidiTicks", n.mPositionAsMidiTicks)(
      "mLengthAsMidiTicks", n.mLengthAsMidiTicks)("mLengthAsDuration", n.mLengthAsDuration)(
      "mMidiChannel", n.mMidiChannel)("mNoteNr", static_cast<std::int64_t>(n.mNoteNr))
      .template Enum<TMuxmlEnum_NoteType>("mNoteType", n.mNoteType)("mVelocity", n.mVelocity)(
          "mRelVelocity", n.mRelVelocity)("mStaff", n.mStaff)("mVoice", n.mVoice)(
          "mIsGraceNote", n.mIsGraceNote)("mIsCueNote", n.mIsCueNote)("mIsChordNote",
                                                                      n.mIsChordNote)
      .template Enum<TMuxmlEnum_NoteTypeValue>("mGraphicalNoteType", n.mGraphicalNoteType.mValue)(
          "mDots", n.mDots)("mNoteXML", n.mNoteXML)("mLyricXMLs", n.mLyricXMLs);
}

// The names of the articulations and notations the note has.
void WriteNotations(std::ostream& out, const CMuxmlNote& n) {
  const std::pair<std::string_view, bool> present[] = {
      {"accidental", n.mAccidental.mExists},
      {"fermata", n.mFermata.mExists},
      {"accent", n.mAccent.mExists},
      {"breath-mark", n.mBreathMark.mExists},
      {"caesura", n.mCaesura.mExists},
      {"detached-legato", n.mDetachedLegato.mExists},
      {"doit", n.mDoit.mExists},
      {"falloff", n.mFallOff.mExists},
      {"plop", n.mPlop.mExists},
      {"scoop", n.mScoop.mExists},
      {"strong-accent", n.mStrongAccent.mExists},
      {"tenuto", n.mTenuto.mExists},
      {"staccato", n.mStaccato.mExists},
      {"staccatissimo", n.mStaccatissimo.mExists},
  };
  out << ", notations [";
  bool first = true;
  for (const auto& [name, exists] : present) {
    if (!exists) continue;
    out << (first ? "" : " ") << name;
    first = false;
  }
  out << "], ties [";
  for (std::size_t i = 0; i < n.mNoteTies.size(); ++i) {
    out << (i == 0 ? "" : " ") << MuxmlEnumWord<TMuxmlEnum_StartStop>(n.mNoteTies[i]);
  }
  out << ']';
}

}  // namespace

void CMuxmlNote::WriteTrace(std::ostream& out) const {
  out << "CMuxmlNote: ";
  WriteNoteFields(*this, TMuxmlFieldOut(out, " "));
  out << ", mPitch ";
  mPitch.WriteTraceBrief(out);
  WriteNotations(out, *this);
}

void CMuxmlNote::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlNote: ";
  TMuxmlFieldOut(out, " ")("position", mPositionAsMidiTicks)("length", mLengthAsMidiTicks)(
      "note", static_cast<std::int64_t>(mNoteNr))("velocity", mVelocity)("staff", mStaff)("voice",
                                                                                          mVoice);
}

void CMuxmlNote::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlNote{";
  WriteNoteFields(*this, TMuxmlFieldOut(out, " = "));
  out << ", mPitch = ";
  mPitch.WriteInitializerList(out);
  out << '}';
}

}  // namespace harmony
