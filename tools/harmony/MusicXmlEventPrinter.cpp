#include "MusicXmlEventPrinter.h"

#include <algorithm>
#include <limits>
#include <sstream>

#include "harmony/musicxml/MusicXmlContext.h"
#include "harmony/musicxml/MuxmlMeasure.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/MuxmlPart.h"
#include "harmony/musicxml/MuxmlPartGatheredInfo.h"
#include "harmony/musicxml/PositionedXMLElement.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/pitch/Note.h"

namespace harmony::tool {

namespace {

// Events without a place in time (the document's start and end).
constexpr std::int64_t kNoTick = std::numeric_limits<std::int64_t>::min();

// A value the score left undefined shows as "-" in text and null in JSON.
std::string TickText(std::int64_t tick) {
  return tick == kMuxmlUndef32 ? std::string("-") : std::to_string(tick);
}

nlohmann::json TickJson(std::int64_t tick) {
  return tick == kMuxmlUndef32 ? nlohmann::json(nullptr) : nlohmann::json(tick);
}

// The import leaves every note on channel 0; in the MIDI file each part gets a channel of its
// own so that a player can give it its own sound. Channel 10 (9 from 0) is the drums'.
int ChannelOfTrack(std::size_t track) {
  const int channel = static_cast<int>(track % 15);
  return channel < 9 ? channel : channel + 1;
}

// Scientific octaves, as in the other commands: note 60 is C4.
const CChordNamePrefs& NamePrefs() {
  static const CChordNamePrefs prefs = [] {
    CChordNamePrefs scientific = GetCurrentChordNamePrefs();
    scientific.OctaveNumbering = 1;
    return scientific;
  }();
  return prefs;
}

// The sounding note, spelled as written where the part is not transposed.
std::string NoteName(const CMuxmlNote& note, const CMuxmlSignKey& signKey) {
  if (note.mNoteNr < 0) return "-";
  if (note.mNoteType == TMuxmlEnum_NoteType::kPitched &&
      note.mPitch.ToNoteNrLarge(signKey) == note.mNoteNr) {
    return note.mPitch.ToString(signKey, NamePrefs());
  }
  CNote sounding(note.mNoteNr, TEnh_n);
  sounding.MakeSensefulEnhAssumingCMajor();
  return sounding.KeyName(NamePrefs()) + sounding.OctName(NamePrefs());
}

std::string DirectionText(const CPositionedXMLElement& direction) {
  std::string text = direction.XMLElement().StringValue();
  std::replace_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t' || c == '\r'; }, ' ');
  const std::size_t first = text.find_first_not_of(' ');
  text = first == std::string::npos ? std::string() : text.substr(first);
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text.size() > 60 ? text.substr(0, 57) + "..." : text;
}

}  // namespace

MusicXmlEventPrinter::MusicXmlEventPrinter(std::ostream& out, bool json, std::string onlyPart,
                                           int ticksPerQuarter)
    : _out(out), _json(json), _onlyPart(std::move(onlyPart)) {
  _song.ticksPerQuarter = ticksPerQuarter;
}

bool MusicXmlEventPrinter::Shown() const { return _onlyPart.empty() || _part == _onlyPart; }

void MusicXmlEventPrinter::Line(const std::string& kind, std::int64_t tick, const std::string& text,
                                nlohmann::json members) {
  if (!Shown()) return;
  if (_json) {
    nlohmann::json line = {{"event", kind}};
    if (!_part.empty()) line["part"] = _part;
    if (tick != kNoTick) line["tick"] = TickJson(tick);
    line.update(members);
    _out << line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    return;
  }
  std::ostringstream row;
  row << kind;
  for (std::size_t width = kind.size(); width < 10; ++width) row << ' ';
  if (!_part.empty()) row << _part << "  ";
  if (tick != kNoTick) row << "tick " << TickText(tick) << "  ";
  row << text;
  std::string rowText = row.str();
  while (!rowText.empty() && rowText.back() == ' ') rowText.pop_back();
  _out << rowText << '\n';
}

void MusicXmlEventPrinter::didEncounterDocumentStartWithProgressBarInfo(
    const TMuxmlProgressBarInfo* info) {
  Line("document", kNoTick, std::to_string(info->mScorePartCount) + " parts listed",
       {{"parts", info->mScorePartCount}});
}

void MusicXmlEventPrinter::didEncounterDocumentEnd() {
  _part.clear();
  Line("end", kNoTick, "of document", nlohmann::json::object());
}

void MusicXmlEventPrinter::didEncounterPartStart(const CMuxmlPart* part) {
  _part = part->mPartID;
  if (Shown()) _song.tracks.push_back({part->FindBestPartName(), {}});
  nlohmann::json instruments = nlohmann::json::array();
  std::string text = "\"" + part->FindBestPartName() + "\"";
  for (const CMuxmlScoreInstrument& instrument : part->mInstruments) {
    instruments.push_back({{"id", instrument.mID},
                           {"name", instrument.mInstName},
                           {"sound", instrument.mInstSound}});
    text += "  " + instrument.mID + " " + instrument.InstSoundAndIfNotExistsYieldToBest();
  }
  Line("part", part->mPositionAsMidiTicks, text,
       {{"name", part->FindBestPartName()}, {"instruments", instruments}});
}

void MusicXmlEventPrinter::didEncounterPartEnd(const CMuxmlPartGatheredInfo* info) {
  std::string voices;
  for (const int voice : info->mFoundVoices) voices += (voices.empty() ? "" : ",") + std::to_string(voice);
  Line("part end", info->mPartEndPosAsMidiTicks, "voices " + voices,
       {{"voices", info->mFoundVoices},
        {"lowest", info->mLowestNoteNr},
        {"highest", info->mHighestNoteNr},
        {"piano", info->IsPianoPartAtBegin()}});
  _part.clear();
}

void MusicXmlEventPrinter::didEncounterMeasureStart(std::int64_t positionAsMidiTicks) {
  Line("bar", positionAsMidiTicks, "", nlohmann::json::object());
}

void MusicXmlEventPrinter::didEncounterMeasureEnd(const CMuxmlMeasure* measure) {
  Line("bar end", measure->mEndPositionAsMidiTicks, "number " + measure->mNumber,
       {{"number", measure->mNumber}, {"start", TickJson(measure->mPositionAsMidiTicks)}});
}

void MusicXmlEventPrinter::didEncounterSignTime(const CMuxmlSignTime* signTime) {
  const bool hidden = signTime->mPrintObject == TMuxmlEnum_YesNo::kNo;
  const std::string text = std::to_string(signTime->mNomAkaBeats) + "/" +
                           std::to_string(signTime->mDenomAkaBeatTypeAsInt) +
                           (hidden ? " (not shown)" : "");
  if (Shown() && signTime->mPositionAsMidiTicks != kMuxmlUndef32) {
    _song.timeSignatures.push_back(
        {signTime->mPositionAsMidiTicks, signTime->mNomAkaBeats, signTime->mDenomAkaBeatTypeAsInt});
  }
  Line("time", signTime->mPositionAsMidiTicks, text,
       {{"beats", signTime->mNomAkaBeats},
        {"beatType", signTime->mDenomAkaBeatTypeAsInt},
        {"shown", !hidden}});
}

void MusicXmlEventPrinter::didEncounterSignKey(const CMuxmlSignKey* signKey) {
  _signKey = *signKey;
  const std::string name =
      CSignKeyLite(signKey->ConvertToCSignKeyTransposedPitch()).NameLong(NamePrefs());
  // A transposing part's key sounds elsewhere; without a transposition it is the same key.
  const CSignKeyHeavy soundingKey = signKey->ConvertToCSignKeySoundingPitch();
  const std::string sounding =
      signKey->mPartTransposeAtSignKey.mChromatic == 0.0f ? name : CSignKeyLite(soundingKey).NameLong(NamePrefs());
  Line("key", signKey->mPositionAsMidiTicks,
       name + " (" + std::to_string(signKey->mFifths) + ")" +
           (sounding != name ? ", sounding " + sounding : ""),
       {{"fifths", signKey->mFifths}, {"written", name}, {"sounding", sounding}});
}

void MusicXmlEventPrinter::didEncounterClef(const CMuxmlClef* clef) {
  const std::string sign = MuxmlEnumWord<TMuxmlEnum_ClefSign>(
      static_cast<TMuxmlEnum_ClefSign::TType>(clef->mSign));
  const std::string line = clef->mStaffLine == kMuxmlUndef32 ? "-" : std::to_string(clef->mStaffLine);
  Line("clef", clef->mPositionAsMidiTicks,
       (sign.empty() ? "?" : sign) + " on line " + line + ", staff " + std::to_string(clef->mStaffNumber),
       {{"sign", sign}, {"line", TickJson(clef->mStaffLine)}, {"staff", clef->mStaffNumber}});
}

void MusicXmlEventPrinter::didEncounterTranspose(const CMuxmlTranspose* transpose) {
  std::ostringstream text;
  text << "chromatic " << transpose->mChromatic << ", diatonic " << transpose->mDiatonic
       << ", octave " << transpose->mOctaveChange;
  Line("transpose", transpose->mPositionAsMidiTicks, text.str(),
       {{"chromatic", transpose->mChromatic},
        {"diatonic", transpose->mDiatonic},
        {"octave", transpose->mOctaveChange}});
}

void MusicXmlEventPrinter::didEncounterTempoChange(const CMuxmlTempoChange* tempoChange) {
  if (Shown()) _song.tempos.push_back({tempoChange->mPositionAsMidiTicks, tempoChange->mTempo});
  std::ostringstream text;
  text << tempoChange->mTempo << " quarters a minute";
  Line("tempo", tempoChange->mPositionAsMidiTicks, text.str(), {{"tempo", tempoChange->mTempo}});
}

void MusicXmlEventPrinter::didEncounterNote(const CMuxmlNote* note) {
  if (Shown()) {
    ++_notes;
    if (!_song.tracks.empty() && note->mNoteNr >= 0) {
      _song.tracks.back().notes.push_back(
          {note->mPositionAsMidiTicks,
           note->mLengthAsMidiTicks == kMuxmlUndef32 ? 0 : note->mLengthAsMidiTicks,
           static_cast<int>(note->mNoteNr), note->mVelocity,
           ChannelOfTrack(_song.tracks.size() - 1)});
    }
  }
  std::string flags;
  if (note->mIsChordNote) flags += "  chord";
  if (note->mIsGraceNote) flags += "  grace";
  if (note->mIsCueNote) flags += "  cue";
  Line("note", note->mPositionAsMidiTicks,
       "length " + TickText(note->mLengthAsMidiTicks) + "  " + std::to_string(note->mNoteNr) + " " +
           NoteName(*note, _signKey) + "  velocity " + std::to_string(note->mVelocity) +
           "  voice " + std::to_string(note->mVoice) + "  staff " + std::to_string(note->mStaff) + flags,
       {{"length", TickJson(note->mLengthAsMidiTicks)},
        {"note", note->mNoteNr},
        {"name", NoteName(*note, _signKey)},
        {"velocity", note->mVelocity},
        {"voice", note->mVoice},
        {"staff", note->mStaff},
        {"chord", note->mIsChordNote},
        {"grace", note->mIsGraceNote},
        {"cue", note->mIsCueNote}});
}

void MusicXmlEventPrinter::didEncounterDirection(const CPositionedXMLElement& direction) {
  const std::string text = DirectionText(direction);
  Line("direction", direction.PositionAsMidiTicks(), text, {{"text", text}});
}

}  // namespace harmony::tool
