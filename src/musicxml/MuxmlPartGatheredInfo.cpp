#include "harmony/musicxml/MuxmlPartGatheredInfo.h"

#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

namespace {

bool IsClef(const CMuxmlClef& clef, TMuxmlEnum_ClefSign::TType sign, std::int32_t line) {
  return clef.mSign == sign && clef.mStaffLine == line;
}

void WriteFractions(std::ostream& out, const std::set<CMuxmlPartGatheredInfo::TDurDiv>& set) {
  out << '[';
  bool first = true;
  for (const auto& fraction : set) {
    out << (first ? "" : " ") << fraction;
    first = false;
  }
  out << ']';
}

}  // namespace

bool CMuxmlPartGatheredInfo::IsPianoPartAtBegin() const {
  if (mPositionedStaves.empty() || mPositionedStaves.front().second != 2) return false;
  if (mClefs.size() < 2) return false;
  const CMuxmlClef& a = mClefs[0];
  const CMuxmlClef& b = mClefs[1];
  if (a.mPositionAsMidiTicks != b.mPositionAsMidiTicks) return false;
  const auto treble = [](const CMuxmlClef& clef) {
    return IsClef(clef, TMuxmlEnum_ClefSign::kG, 2);
  };
  const auto bass = [](const CMuxmlClef& clef) { return IsClef(clef, TMuxmlEnum_ClefSign::kF, 4); };
  return (treble(a) && bass(b)) || (bass(a) && treble(b));
}

void CMuxmlPartGatheredInfo::WriteTrace(std::ostream& out) const {
  out << "CMuxmlPartGatheredInfo: ";
  TMuxmlFieldOut(out, " ")("mPartEndPosAsMidiTicks", mPartEndPosAsMidiTicks)(
      "mClefs", static_cast<std::uint64_t>(mClefs.size()))(
      "mLowestNoteNr", static_cast<std::int64_t>(mLowestNoteNr))(
      "mHighestNoteNr", static_cast<std::int64_t>(mHighestNoteNr))("IsPianoPartAtBegin",
                                                                   IsPianoPartAtBegin());
  out << ", mPositionedStaves [";
  for (std::size_t i = 0; i < mPositionedStaves.size(); ++i) {
    out << (i == 0 ? "" : " ") << mPositionedStaves[i].second << '@' << mPositionedStaves[i].first;
  }
  out << "], mFoundVoices [";
  bool first = true;
  for (int voice : mFoundVoices) {
    out << (first ? "" : " ") << voice;
    first = false;
  }
  out << "], mFoundBinaryAndTripletNotePosInBarAsDurDiv ";
  WriteFractions(out, mFoundBinaryAndTripletNotePosInBarAsDurDiv);
  out << ", mFoundBinaryAndTripletNoteLengthsAsDurDiv ";
  WriteFractions(out, mFoundBinaryAndTripletNoteLengthsAsDurDiv);
  out << ", mFoundTransposeNoteCounts [";
  first = true;
  for (const auto& [transpose, count] : mFoundTransposeNoteCounts) {
    out << (first ? "" : "; ");
    transpose.WriteTraceBrief(out);
    out << ": " << count;
    first = false;
  }
  out << ']';
}

void CMuxmlPartGatheredInfo::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlPartGatheredInfo: ";
  TMuxmlFieldOut(out, " ")("end", mPartEndPosAsMidiTicks)("lowest",
                                                          static_cast<std::int64_t>(mLowestNoteNr))(
      "highest", static_cast<std::int64_t>(mHighestNoteNr))(
      "voices", static_cast<std::uint64_t>(mFoundVoices.size()));
}

void CMuxmlPartGatheredInfo::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlPartGatheredInfo{";
  TMuxmlFieldOut(out, " = ")("mPartEndPosAsMidiTicks", mPartEndPosAsMidiTicks)(
      "mLowestNoteNr", static_cast<std::int64_t>(mLowestNoteNr))(
      "mHighestNoteNr", static_cast<std::int64_t>(mHighestNoteNr));
  out << '}';
}

}  // namespace harmony
