#include "musicxml/XMLParserDelegate_RecursiveMuxml_Note.h"

#include <algorithm>
#include <boost/rational.hpp>

#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/MusicXmlText.h"

namespace harmony {

namespace {

bool HasTie(const std::vector<TMuxmlEnum_StartStop::TType>& ties, TMuxmlEnum_StartStop::TType tie) {
  return std::find(ties.begin(), ties.end(), tie) != ties.end();
}

}  // namespace

void XMLParserDelegate_RecursiveMuxml_Note::didStartMyElement(
    platform::XmlEventParser& /*parser*/, std::string_view /*elementName*/,
    std::string_view /*namespaceURI*/, std::string_view /*qualifiedName*/,
    const CXMLAttributes& attributes) {
  InstrumentName.clear();
  if (const auto dynamics = attributes.Find("dynamics")) {
    _note.mVelocityAsDynamics = static_cast<float>(musicxml::IntValueOfText(*dynamics));
  }
  if (const auto endDynamics = attributes.Find("end-dynamics")) {
    _note.mRelVelocityAsEndDynamics = static_cast<float>(musicxml::IntValueOfText(*endDynamics));
  }
  // The notes of the tree and of the events correspond one to one, in all voices.
  MusicXmlContext& context = Context();
  context.setCurrentPartMeasureNotesXMLIx(context.CurrentPartMeasureNotesXMLIx() + 1);
}

void XMLParserDelegate_RecursiveMuxml_Note::didStartElement(platform::XmlEventParser& parser,
                                                            std::string_view elementName,
                                                            std::string_view /*namespaceURI*/,
                                                            std::string_view /*qualifiedName*/,
                                                            const CXMLAttributes& attributes) {
  storeElement(elementName, attributes);
  currentElementParentNames.push_back(currentElementName);
  foundCharacters(parser, "");
}

void XMLParserDelegate_RecursiveMuxml_Note::interpretText(platform::XmlEventParser& parser,
                                                          std::string_view text) {
  if (_pitchAndTimeText(text) || _notationText(text) || _tupletText(text)) return;
  XMLParserDelegate_RecursiveMuxml::interpretText(parser, text);
}

// Pitch, duration, voice and the flags; an element without text is read at its start.
bool XMLParserDelegate_RecursiveMuxml_Note::_pitchAndTimeText(std::string_view text) {
  const std::string& name = currentElementName;
  if (name == "pitch") {
    _note.mNoteType = TMuxmlEnum_NoteType::kPitched;
  } else if (name == "unpitched") {
    _note.mNoteType = TMuxmlEnum_NoteType::kUnpitched;
  } else if (name == "rest") {
    _note.mNoteType = TMuxmlEnum_NoteType::kRest;
  } else if (name == "step") {
    _note.mPitch.mStep = MuxmlEnumValue<TMuxmlEnum_Step>(text, -1);
  } else if (name == "alter") {
    _note.mPitch.mAlteration = static_cast<float>(musicxml::DoubleValueOfText(text));
  } else if (name == "octave") {
    _note.mPitch.mOctave = musicxml::IntValueOfText(text);
  } else if (name == "display-step") {
    _note.mUnpitched.mDisplayStep = MuxmlEnumValue<TMuxmlEnum_Step>(text, -1);
  } else if (name == "display-octave") {
    _note.mUnpitched.mDisplayOctave = musicxml::IntValueOfText(text);
  } else if (name == "duration") {
    _note.mLengthAsDuration = musicxml::IntValueOfText(text);
  } else if (name == "staff") {
    _note.mStaff = musicxml::IntValueOfText(text);
  } else if (name == "voice") {
    _note.mVoice = musicxml::IntValueOfText(text);
  } else if (name == "grace") {
    _note.mIsGraceNote = true;
  } else if (name == "cue") {
    _note.mIsCueNote = true;
  } else if (name == "chord") {
    _note.mIsChordNote = true;
  } else if (name == "dot") {
    ++_note.mDots;  // counted at the element's start, so a dot with text counts twice
  } else if (name == "instrument") {
    InstrumentName.assign(text);
  } else if (name == "attack") {
    _note.mPositionDisplayOffsetAsMidiTicks =
        static_cast<std::int32_t>(musicxml::DoubleValueOfText(text));
  } else if (name == "release") {
    _note.mLengthDisplayOffsetAsMidiTicks =
        static_cast<std::int32_t>(musicxml::DoubleValueOfText(text));
  } else {
    return false;
  }
  return true;
}

bool XMLParserDelegate_RecursiveMuxml_Note::_notationText(std::string_view text) {
  const std::string& name = currentElementName;
  const CXMLAttributes& attributes = currentAttributes.view();
  const CXMLElement noteXML = Context().CurrentPartMeasureNoteXMLs();
  if (name == "type") {
    _note.mGraphicalNoteType.ReadFromFoundCharactersAndAttributes(text, attributes);
  } else if (name == "accidental") {
    _note.mAccidental.ReadFromFoundCharactersAndAttributes(text, attributes);
  } else if (name == "stem") {
    _note.mStem.ReadFromFoundCharactersAndAttributes(text, attributes);
  } else if (name == "fermata") {
    _note.mFermata.ReadFromFoundCharactersAndAttributes(text, attributes);
  } else if (name == "tie") {
    _note.mNoteTies.push_back(MuxmlEnumValue<TMuxmlEnum_StartStop>(
        attributes.ValueOr("type"), MuxmlEnumUndef<TMuxmlEnum_StartStop>()));
  } else if (name == "accent") {
    _note.mAccent.ReadFromAttributes(attributes);
  } else if (name == "breath-mark") {
    _note.mBreathMark.ReadFromAttributes(attributes);
  } else if (name == "caesura") {
    _note.mCaesura.ReadFromAttributes(attributes);
  } else if (name == "detached-legato") {
    _note.mDetachedLegato.ReadFromAttributes(attributes);
  } else if (name == "strong-accent") {
    _note.mStrongAccent.ReadFromAttributes(attributes);
  } else if (name == "tenuto") {
    _note.mTenuto.ReadFromAttributes(attributes);
  } else if (name == "staccato") {
    _note.mStaccato.ReadFromAttributes(attributes);
  } else if (name == "staccatissimo") {
    _note.mStaccatissimo.ReadFromAttributes(attributes);
  } else if (name == "doit") {
    _note.mDoit.ReadFromAttributes(attributes);
  } else if (name == "falloff") {
    _note.mFallOff.ReadFromAttributes(attributes);
  } else if (name == "plop") {
    _note.mPlop.ReadFromAttributes(attributes);
  } else if (name == "scoop") {
    _note.mScoop.ReadFromAttributes(attributes);
  } else if (name == "notations") {
    _note.mNotationsXMLs = noteXML.NodesForXPath(".//notations");
  } else if (name == "notehead") {
    _note.mNoteheadXML = XMLElementForXPath(noteXML, ".//notehead");
  } else if (name == "notehead-text") {
    _note.mNoteheadTextXML = XMLElementForXPath(noteXML, ".//notehead-text");
  } else {
    return false;
  }
  return true;
}

// Tuplets are read for a host to draw; times come from the durations alone.
bool XMLParserDelegate_RecursiveMuxml_Note::_tupletText(std::string_view text) {
  const std::string& name = currentElementName;
  const CXMLAttributes& attributes = currentAttributes.view();
  CMuxmlTimeModification& modification = _note.mTimeModification;
  if (name == "time-modification") {
  } else if (name == "actual-notes") {
    modification.mActualNotes = static_cast<std::uint64_t>(musicxml::IntValueOfText(text));
  } else if (name == "normal-notes") {
    modification.mNormalNotes = static_cast<std::uint64_t>(musicxml::IntValueOfText(text));
  } else if (name == "normal-dot") {
    ++modification.mNormalNumberOfDots;
  } else if (name == "normal-type") {
    modification.mNormalNoteType =
        MuxmlEnumValue<TMuxmlEnum_NoteTypeValue>(text, modification.mNormalNoteType);
  } else if (name == "tuplet") {
    _note.mTuplet.ReadFromAttributes(attributes);
  } else if (name == "tuplet-number" || name == "tuplet-type" || name == "tuplet-dot") {
    const bool actual = hasParentName("tuplet-actual");
    if (!actual && !hasParentName("tuplet-normal")) return false;
    CMuxmlTupletPortion& portion = actual ? _note.mTuplet.mTupletActual : _note.mTuplet.mTupletNormal;
    if (name == "tuplet-number") portion.mTupletNumber.ReadFromFoundCharactersAndAttributes(text, attributes);
    if (name == "tuplet-type") portion.mTupletType.ReadFromFoundCharactersAndAttributes(text, attributes);
    if (name == "tuplet-dot") portion.mTupletDot.ReadFromAttributes(attributes);
  } else {
    return false;
  }
  return true;
}

void XMLParserDelegate_RecursiveMuxml_Note::didEndElement(platform::XmlEventParser& parser,
                                                          std::string_view elementName,
                                                          std::string_view /*namespaceURI*/,
                                                          std::string_view /*qualifiedName*/) {
  if (elementName == MyRecursiveTreeStartsAtElementName) {
    encounteredNote();
    didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
    setParserDelegateToParentDelegateAndReleaseSelf(elementName, parser);
    return;
  }
  didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
}

// --- The note's end

void XMLParserDelegate_RecursiveMuxml_Note::encounteredNote() {
  if (_note.mNoteType == TMuxmlEnum_NoteType::kUndefined) return;
  MusicXmlContext& context = Context();
  std::int32_t ticks = context.ConvertMuxmlDurationToMidiTicks(_note.mLengthAsDuration);
  _note.mNoteXML = context.CurrentPartMeasureNoteXMLs();
  _note.mLyricXMLs = _note.mNoteXML.NodesForXPath(".//lyric");
  bool report = false;
  if (_note.mNoteType != TMuxmlEnum_NoteType::kRest) {
    _note.mMidiChannel = context.CurrentMidiChannel();
    _setNoteNr();
    encounteredNote_setVelocityAndReleaseVelocity();
    report = _placeNote(ticks);
  }
  try {
    context.encounteredNote_updateMusicXmlContextCurrentPartInfo(_note);
  } catch (const boost::bad_rational&) {
    // Divisions of 0, reported already: the note's place in the bar is no fraction.
  }
  if (report) Receiver(TMusicXmlEvent::kNote).didEncounterNote(&_note);
  if (!_note.mIsChordNote) context.SetCurrentFirstChordNote(_note);
  // Rests move the time line too; chord notes don't, so the chord's start stays the last
  // position.
  if (!_note.mIsCueNote && !_note.mIsGraceNote && !_note.mIsChordNote) {
    context.AdvanceCurrentPosByMidiTicks(ticks, _note.mLengthAsDuration);
  }
}

void XMLParserDelegate_RecursiveMuxml_Note::_setNoteNr() {
  const MusicXmlContext& context = Context();
  long noteNr = -1;
  if (_note.mNoteType == TMuxmlEnum_NoteType::kPitched) {
    noteNr = _note.mPitch.ToNoteNrLarge(context.CurrentSignKey());
  } else if (_note.mNoteType == TMuxmlEnum_NoteType::kUnpitched) {
    noteNr = _note.mUnpitched.ToNoteNrLarge(context.CurrentSignKey());
  }
  // A transposing instrument's written note is moved to where it sounds.
  if (noteNr >= 0) {
    const CMuxmlTranspose& transpose = context.CurrentTranspose();
    const float sounding = static_cast<float>(noteNr) + transpose.mChromatic +
                           12.0f * static_cast<float>(transpose.mOctaveChange);
    noteNr = static_cast<long>(std::clamp(sounding, -1.0e9f, 1.0e9f));
  }
  if (noteNr != -1) noteNr = std::clamp(noteNr, 0L, 127L);
  _note.mNoteNr = noteNr;
}

void XMLParserDelegate_RecursiveMuxml_Note::encounteredNote_setVelocityAndReleaseVelocity() {
  const std::uint8_t fromDynamics =
      _note.mVelocityAsDynamics != -1.0f
          ? MusicXmlContext::ConvertMuxmlDynamicsToMidiVelocity(
                static_cast<std::int32_t>(_note.mVelocityAsDynamics))
          : std::uint8_t{255};
  if (fromDynamics != 255) {
    _note.mVelocity = fromDynamics;
  } else {
    _note.mVelocity = _note.mAccent.mExists || _note.mStrongAccent.mExists ? 105 : 90;
  }
  if (_note.mRelVelocityAsEndDynamics != -1.0f) {
    _note.mRelVelocity = MusicXmlContext::ConvertMuxmlDynamicsToMidiRelVelocity(
        static_cast<std::int32_t>(_note.mRelVelocityAsEndDynamics));
  }
}

// The pieces of a tie are gathered while they come, and the last piece is reported at the
// tie's start with the whole length. A note without any tie closes a pending tie of its pitch
// too, so the last piece needs no stop.
bool XMLParserDelegate_RecursiveMuxml_Note::_placeNote(std::int32_t& ticks) {
  MusicXmlContext& context = Context();
  std::int32_t position =
      _note.mIsChordNote ? context.LastPosAsMidiTicks() : context.CurrentPosAsMidiTicks();
  std::vector<TMuxmlEnum_StartStop::TType> ties = _note.mNoteTies;
  if (_note.mIsChordNote && ties.empty()) ties = context.CurrentFirstChordNote().mNoteTies;
  CTiePendingInfos& pending = context.TiePendingInfos();
  const auto found = pending.PendingDurationFor(_note);
  const bool hasPending = found != pending.end();
  const auto pendingIndex = found - pending.begin();
  if (_note.mIsGraceNote) {
    ticks = context.TicksPerQuarter() / 8;
    _note.mLengthAsMidiTicks = ticks;
    _note.mPositionAsMidiTicks = std::max(position - ticks, 0);
    return true;
  }
  const bool start = HasTie(ties, TMuxmlEnum_StartStop::kStart);
  const bool stop = HasTie(ties, TMuxmlEnum_StartStop::kStop);
  bool report = true;
  bool merge = false;
  if (start && stop) {
    pending.ContinueEncounteredFor(_note, ticks);
    report = false;
  } else if (start) {
    pending.StartEncounteredFor(_note, ticks);
    report = hasPending;
    merge = hasPending;
  } else if (stop && !hasPending) {
    pending.StopEncounteredFor(_note);
  } else if (hasPending) {
    merge = true;
  } else {
    _note.mLengthAsMidiTicks = ticks;
  }
  if (merge) {
    // The info found before a new start may have moved in its list, but not ahead of it.
    const CTiePendingInfo piece = pending[static_cast<std::size_t>(pendingIndex)];
    ticks += piece.mPendingMidiTicks;
    _note.mLengthAsMidiTicks = ticks;
    _note.mLengthAsDuration += piece.mPendingDuration;
    piece.TransferRelevantObjectsToLastNote(_note);
    if (!_note.mIsChordNote) {
      position -= piece.mPendingMidiTicks;
      context.AdvanceCurrentPosEvenBeforeBarStartByMidiTicks(-piece.mPendingMidiTicks,
                                                             -piece.mPendingDuration);
    }
    pending.StopEncounteredFor(_note);
  }
  _note.mPositionAsMidiTicks = position;
  return report;
}

}  // namespace harmony
