#include "harmony/musicxml/TiePendingInfo.h"

#include <algorithm>

#include "musicxml/MuxmlRead.h"
#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

// --- CTiePendingInfo

bool CTiePendingInfo::IsFor(const CMuxmlNote& note) const {
  return mStaff == note.mStaff && mStep == note.mPitch.mStep &&
         mAlteration == note.mPitch.mAlteration && mOctave == note.mPitch.mOctave;
}

void CTiePendingInfo::TransferRelevantObjectsToLastNote(CMuxmlNote& note) const {
  for (const CXMLElement& pieceXML : mNoteXMLs) {
    for (const CXMLElement& lyric : pieceXML.NodesForXPath(".//lyric")) {
      note.mNoteXML.AppendChildCopyOf(lyric);
      note.mLyricXMLs.push_back(lyric);
    }
    if (mNotes.empty()) continue;
    // This replaces the note's element and lyrics too, so the next piece's lyrics go below
    // the first piece's element.
    CMuxmlNote merged = mNotes.front();
    merged.mPositionAsMidiTicks = note.mPositionAsMidiTicks;
    merged.mLengthAsMidiTicks = note.mLengthAsMidiTicks;
    merged.mLengthAsDuration = note.mLengthAsDuration;
    merged.mGraphicalNoteType.mValue =
        std::max(note.mGraphicalNoteType.mValue, merged.mGraphicalNoteType.mValue);
    note = std::move(merged);
  }
}

namespace {

template <class TFields>
void WriteTieFields(const CTiePendingInfo& t, TFields&& fields) {
  fields("mStaff", t.mStaff)("mVoice", t.mVoice)("mStep", t.mStep)("mAlteration", t.mAlteration)(
      "mOctave", t.mOctave)("mPendingDuration", t.mPendingDuration)(
      "mPendingMidiTicks", t.mPendingMidiTicks)("mNoteXMLs", t.mNoteXMLs)(
      "mNotes", static_cast<std::uint64_t>(t.mNotes.size()));
}

}  // namespace

void CTiePendingInfo::WriteTrace(std::ostream& out) const {
  out << "CTiePendingInfo: ";
  WriteTieFields(*this, TMuxmlFieldOut(out, " "));
}

void CTiePendingInfo::WriteTraceBrief(std::ostream& out) const {
  out << "CTiePendingInfo: ";
  TMuxmlFieldOut(out, " ")("staff", mStaff)("step", mStep)("alteration", mAlteration)(
      "octave", mOctave)("ticks", mPendingMidiTicks);
}

void CTiePendingInfo::WriteInitializerList(std::ostream& out) const {
  out << "CTiePendingInfo{";
  WriteTieFields(*this, TMuxmlFieldOut(out, " = "));
  out << '}';
}

// --- CTiePendingInfos

void CTiePendingInfos::StartEncounteredFor(const CMuxmlNote& note, std::int32_t ticks) {
  CTiePendingInfo& info = emplace_back();
  info.mStaff = note.mStaff;
  info.mVoice = note.mVoice;
  info.mStep = note.mPitch.mStep;
  info.mAlteration = note.mPitch.mAlteration;
  info.mOctave = note.mPitch.mOctave;
  info.mPendingDuration = note.mLengthAsDuration;
  info.mPendingMidiTicks = ticks;
  if (!note.mNoteXML.IsNone()) info.mNoteXMLs.push_back(note.mNoteXML);
  info.mNotes.push_back(note);
}

void CTiePendingInfos::ContinueEncounteredFor(const CMuxmlNote& note, std::int32_t ticks) {
  const iterator info = PendingDurationFor(note);
  if (info == end()) return;
  info->mPendingDuration = AddSaturated32(info->mPendingDuration, note.mLengthAsDuration);
  info->mPendingMidiTicks = AddSaturated32(info->mPendingMidiTicks, ticks);
  if (!note.mNoteXML.IsNone()) info->mNoteXMLs.push_back(note.mNoteXML);
  info->mNotes.push_back(note);
}

CTiePendingInfos::iterator CTiePendingInfos::PendingDurationFor(const CMuxmlNote& note) {
  return std::find_if(begin(), end(),
                      [&note](const CTiePendingInfo& info) { return info.IsFor(note); });
}

CTiePendingInfos::const_iterator CTiePendingInfos::PendingDurationFor(
    const CMuxmlNote& note) const {
  return std::find_if(begin(), end(),
                      [&note](const CTiePendingInfo& info) { return info.IsFor(note); });
}

void CTiePendingInfos::StopEncounteredFor(const CMuxmlNote& note) {
  const iterator info = PendingDurationFor(note);
  if (info != end()) erase(info);
}

}  // namespace harmony
