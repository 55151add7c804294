#include "musicxml/XMLParserDelegate_RecursiveMuxml_Measure.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/MusicXmlText.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml_Note.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml_Sound.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

// Bar arithmetic comes from the file: a crafted time signature must not overflow it.
std::int32_t ClampedToInt32(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(std::clamp(value, static_cast<double>(std::numeric_limits<std::int32_t>::min()),
                                              static_cast<double>(std::numeric_limits<std::int32_t>::max())));
}

std::int32_t NotNegative(std::int32_t value) { return value < 0 ? 0 : value; }

}  // namespace

// --- The bar's start

void XMLParserDelegate_RecursiveMuxml_Measure::didStartMyElement(
    platform::XmlEventParser& /*parser*/, std::string_view elementName,
    std::string_view /*namespaceURI*/, std::string_view /*qualifiedName*/,
    const CXMLAttributes& attributes) {
  _measure = CMuxmlMeasure();
  Context().SetCurrentMeasure(CMuxmlMeasure());
  encounteredMeasureStart(attributes);
  currentElementName.assign(elementName);
  currentElementParentNames.push_back("measure");
}

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredMeasureStart(
    const CXMLAttributes& attributes) {
  MusicXmlContext& context = Context();
  // The cursor walks the measures of the tree in step with the events.
  context.setCurrentPartMeasuresXMLIx(context.CurrentPartMeasuresXMLIx() + 1);
  const CXMLElement measureXML = context.CurrentPartMeasureXML();
  context.setCurrentPartMeasureNotesXMLIx(-1);
  context.setCurrentPartMeasureNotesXMLs(measureXML.NodesForXPath(".//note"));
  context.setCurrentPartMeasureDirectionsXMLIx(-1);
  context.setCurrentPartMeasureDirectionsXMLs(measureXML.NodesForXPath(".//direction"));
  _encounteredMeasureStart_detectIncompleteFirstBar();
  // The pickup's shift stays in the bar positions of every bar of the part.
  context.setCurrentBarStartAsMidiTicks(context.CurrentPosAsMidiTicks());
  context.setCurrentPosInBarAsDuration(
      static_cast<std::uint64_t>(context.ShiftNotePosInIncompleteFirstBarAsDuration()));
  _measure.mPositionAsMidiTicks = context.CurrentBarStartAsMidiTicks();
  _measure.ReadFromAttributes(attributes);
  Receiver(TMusicXmlEvent::kMeasureStart).didEncounterMeasureStart(_measure.mPositionAsMidiTicks);
}

void XMLParserDelegate_RecursiveMuxml_Measure::_encounteredMeasureStart_detectIncompleteFirstBar() {
  MusicXmlContext& context = Context();
  if (context.CurrentPartMeasuresXMLIx() != 0) return;
  const std::int32_t content = _findMaxPosInCurrentPartMeasureAsDuration();
  const std::int32_t bar = _encounteredMeasureStart_detectIncompleteFirstBar_barLengthOfFirstSignTimeAsDuration();
  const long long shift = static_cast<long long>(bar) - content;
  context.setShiftNotePosInIncompleteFirstBarAsDuration(ClampedToInt32(static_cast<double>(std::max(shift, 0LL))));
}

// The bar's content: the durations of its notes, less backups, plus forwards. A `chord`
// anywhere in the file leaves every note out, since the look-up is absolute.
std::int32_t XMLParserDelegate_RecursiveMuxml_Measure::_findMaxPosInCurrentPartMeasureAsDuration() const {
  const bool documentHasChord = RootDelegate->DocumentHasChord();
  long long sum = 0;
  for (const CXMLElement& child : Context().CurrentPartMeasureXML().ChildElements()) {
    const std::string name = child.Name();
    const long long duration = IntValueForXPath(child, "duration", 0);
    if (name == "note" && !documentHasChord) sum += duration;
    if (name == "backup") sum -= duration;
    if (name == "forward") sum += duration;
  }
  return ClampedToInt32(static_cast<double>(sum));
}

std::int32_t XMLParserDelegate_RecursiveMuxml_Measure::
    _encounteredMeasureStart_detectIncompleteFirstBar_barLengthOfFirstSignTimeAsDuration() {
  MusicXmlContext& context = Context();
  const CXMLElement measureXML = context.CurrentPartMeasureXML();
  context.UpdateCurrentDivisionsPQNFromXmlElement(measureXML);
  CMuxmlSignTime signTime;
  const CXMLElement time = RootDelegate->FirstTimeXML();
  for (const CXMLElement& child : time.ChildElements()) {
    signTime.SetElementFromString(child.Name(), child.StringValue());
  }
  return ClampedToInt32(std::trunc(4.0 / signTime.mDenomAkaBeatTypeAsInt *
                                   static_cast<double>(context.CurrentDivisionsPQN()) *
                                   signTime.mNomAkaBeats));
}

// --- Inside the bar

void XMLParserDelegate_RecursiveMuxml_Measure::didStartElement(platform::XmlEventParser& parser,
                                                               std::string_view elementName,
                                                               std::string_view namespaceURI,
                                                               std::string_view qualifiedName,
                                                               const CXMLAttributes& attributes) {
  storeElement(elementName, attributes);
  MusicXmlContext& context = Context();
  if (currentElementName == "note") {
    createAndSetAsDelegateForParser<XMLParserDelegate_RecursiveMuxml_Note>(
        parser, elementName, namespaceURI, qualifiedName, attributes, this, RootDelegate);
  } else if (currentElementName == "sound") {
    createAndSetAsDelegateForParser<XMLParserDelegate_RecursiveMuxml_Sound>(
        parser, elementName, namespaceURI, qualifiedName, attributes, this, RootDelegate);
  } else if (currentElementName == "forward") {
    context.setInXMLElementForward(true);
  } else if (currentElementName == "backup") {
    context.setInXMLElementBackup(true);
  } else if (currentElementName == "senza-misura") {
    _signTime.mSenzaMisura = true;
  } else if (currentElementName == "direction") {
    encounteredDirection();
  } else {
    currentElementParentNames.push_back(currentElementName);
  }
  foundCharacters(parser, "");
}

void XMLParserDelegate_RecursiveMuxml_Measure::interpretText(platform::XmlEventParser& parser,
                                                             std::string_view text) {
  if (currentElementName == "measure") return;
  if (!hasParentName("measure")) {
    XMLParserDelegate_RecursiveMuxml::interpretText(parser, text);
    return;
  }
  if (hasParentName("attributes")) {
    _attributesText(parser, text);
  } else if (currentElementName == "duration") {
    _durationText(text);
  }
}

void XMLParserDelegate_RecursiveMuxml_Measure::_attributesText(platform::XmlEventParser& parser,
                                                               std::string_view text) {
  const std::string& name = currentElementName;
  const CXMLAttributes& attributes = currentAttributes.view();
  if (name == "divisions") {
    _divisionsText(parser, text);
  } else if (name == "key") {
    _signKey = CMuxmlSignKey();
    _signKey.ReadFromAttributes(attributes);
  } else if (name == "fifths" && hasParentName("key")) {
    _signKey.mFifths = musicxml::IntValueOfText(text);
  } else if (name == "mode" && hasParentName("key")) {
    _signKey.mMode = MuxmlEnumValue<TMuxmlEnum_SignKeyMode>(text, _signKey.mMode);
  } else if (name == "time") {
    _signTime = CMuxmlSignTime();
    _signTime.ReadFromAttributes(attributes);
  } else if (hasParentName("time")) {
    _signTime.SetElementFromString(name, text);
  } else if (name == "staves") {
    _measure.mStaves = static_cast<std::uint64_t>(NotNegative(musicxml::IntValueOfText(text)));
  } else if (name == "instruments") {
    _measure.mInstruments = static_cast<std::uint64_t>(NotNegative(musicxml::IntValueOfText(text)));
  } else if (name == "clef") {
    _clef = CMuxmlClef();
    _clef.ReadFromAttributes(attributes);
  } else if (name == "sign" && hasParentName("clef")) {
    _clef.mSign = MuxmlEnumValue<TMuxmlEnum_ClefSign>(text, _clef.mSign);
  } else if (name == "line" && hasParentName("clef")) {
    _clef.mStaffLine = musicxml::IntValueOfText(text);
  } else if (name == "clef-octave-change" && hasParentName("clef")) {
    _clef.mClefOctaveChange = musicxml::IntValueOfText(text);
  } else if (name == "transpose") {
    _transpose = CMuxmlTranspose();
    _transpose.ReadFromAttributes(attributes);
  } else if (hasParentName("transpose")) {
    if (name == "diatonic") _transpose.mDiatonic = musicxml::IntValueOfText(text);
    if (name == "chromatic") {
      _transpose.mChromatic = std::round(static_cast<float>(musicxml::DoubleValueOfText(text)));
    }
    if (name == "octave-change") _transpose.mOctaveChange = musicxml::IntValueOfText(text);
    if (name == "double") _transpose.mDouble = true;
  }
}

// Divisions below 1 are the one content error the import reports; it goes on with them.
void XMLParserDelegate_RecursiveMuxml_Measure::_divisionsText(platform::XmlEventParser& parser,
                                                              std::string_view text) {
  if (text.empty()) return;
  const std::int32_t divisions = musicxml::IntValueOfText(text);
  if (divisions < 1) {
    const platform::XmlError error{
        1, "XMLParser",
        platform::LocalizedString("MusicXML File contains zero or negative value for \u201Cdivisions\u201D"),
        parser.lineNumber(), parser.columnNumber()};
    parseErrorOccurred(parser, error);
  }
  _measure.mDivisions = static_cast<std::uint64_t>(NotNegative(divisions));
  Context().setCurrentDivisionsPQN(_measure.mDivisions);
}

// A backup moves the ticks back but the position in the bar forward, as a forward does.
void XMLParserDelegate_RecursiveMuxml_Measure::_durationText(std::string_view text) {
  MusicXmlContext& context = Context();
  const std::int32_t duration = NotNegative(musicxml::IntValueOfText(text));
  const std::int32_t ticks = context.ConvertMuxmlDurationToMidiTicks(duration);
  if (context.InXMLElementBackup()) context.AdvanceCurrentPosByMidiTicks(-ticks, duration);
  if (context.InXMLElementForward()) context.AdvanceCurrentPosByMidiTicks(ticks, duration);
}

void XMLParserDelegate_RecursiveMuxml_Measure::didEndElement(platform::XmlEventParser& parser,
                                                             std::string_view elementName,
                                                             std::string_view /*namespaceURI*/,
                                                             std::string_view /*qualifiedName*/) {
  if (elementName == MyRecursiveTreeStartsAtElementName) {
    encounteredMeasureEnd();
    didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
    setParserDelegateToParentDelegateAndReleaseSelf(elementName, parser);
    return;
  }
  if (elementName == "time") encounteredSignTime();
  if (elementName == "key") encounteredSignKey();
  if (elementName == "clef") encounteredClef();
  if (elementName == "transpose") encounteredTranspose();
  if (elementName == "forward") Context().setInXMLElementForward(false);
  if (elementName == "backup") Context().setInXMLElementBackup(false);
  didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
}

// --- Signs and directions

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredSignTime() {
  _signTime.mPositionAsMidiTicks = Context().CurrentPosAsMidiTicks();
  Context().SetCurrentSignTime(_signTime);
  Receiver(TMusicXmlEvent::kSignTime).didEncounterSignTime(&_signTime);
}

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredSignKey() {
  MusicXmlContext& context = Context();
  _signKey.mPositionAsMidiTicks = context.CurrentPosAsMidiTicks();
  // A transposition later in the same attributes is already known to the key.
  if (context.CurrentTranspose().mHasBeenReadFromXML) {
    _signKey.mPartTransposeAtSignKey = context.CurrentTranspose();
  } else {
    _signKey.mPartTransposeAtSignKey.ReadFromXMLElement(
        XMLElementForXPath(context.CurrentPartMeasureXML(), ".//attributes//transpose"));
  }
  context.SetCurrentSignKey(_signKey);
  Receiver(TMusicXmlEvent::kSignKey).didEncounterSignKey(&_signKey);
}

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredClef() {
  MusicXmlContext& context = Context();
  _clef.mPositionAsMidiTicks = context.CurrentPosAsMidiTicks();
  _clef.mStaffDetailsXML = XMLElementForXPath(context.CurrentPartMeasureXML(), ".//staff-details");
  context.SetCurrentClef(_clef);
  context.CurrentPartGatheredInfo().mClefs.push_back(_clef);
  Receiver(TMusicXmlEvent::kClef).didEncounterClef(&_clef);
}

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredTranspose() {
  MusicXmlContext& context = Context();
  _transpose.mPositionAsMidiTicks = context.CurrentPosAsMidiTicks();
  context.SetCurrentTranspose(_transpose);
  context.CurrentPartGatheredInfo().mFoundTransposeNoteCounts.EnsureEntry(_transpose);
  Receiver(TMusicXmlEvent::kTranspose).didEncounterTranspose(&_transpose);
}

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredDirection() {
  MusicXmlContext& context = Context();
  const std::int32_t index = context.CurrentPartMeasureDirectionsXMLIx() + 1;
  context.setCurrentPartMeasureDirectionsXMLIx(index);
  if (index < 0 ||
      static_cast<std::size_t>(index) >= context.CurrentPartMeasureDirectionsXMLs().size()) {
    return;
  }
  const CPositionedXMLElement direction(context.CurrentPosAsMidiTicks(),
                                        context.CurrentPartMeasureDirectionXML(),
                                        static_cast<std::int32_t>(context.CurrentDivisionsPQN()));
  Receiver(TMusicXmlEvent::kDirection).didEncounterDirection(direction);
}

// --- The bar's end: where the next bar starts comes from the time signature alone, so
// short, overfull and pickup bars line up.

void XMLParserDelegate_RecursiveMuxml_Measure::encounteredMeasureEnd() {
  MusicXmlContext& context = Context();
  const CMuxmlSignTime& signTime = context.CurrentSignTime();
  if (signTime.mNomAkaBeats != 0 && signTime.mDenomAkaBeatTypeAsInt != 0) {
    const double beatTicks =
        std::trunc(4.0 / signTime.mDenomAkaBeatTypeAsInt * context.TicksPerQuarter());
    context.setCurrentPosAsMidiTicks(ClampedToInt32(
        context.CurrentBarStartAsMidiTicks() + signTime.mNomAkaBeats * beatTicks));
  } else {
    context.setCurrentPosAsMidiTicks(0);
  }
  context.setCurrentPosInBarAsDuration(0);
  _measure.mEndPositionAsMidiTicks = context.CurrentPosAsMidiTicks();
  context.SetCurrentMeasure(_measure);
  context.CurrentPartGatheredInfo().mPositionedStaves.AppendIfValueChanges(
      _measure.mPositionAsMidiTicks, static_cast<int>(_measure.mStaves));
  _measure.mMeasureXML = context.CurrentPartMeasureXML();
  _measure.mBarlineXMLs = _measure.mMeasureXML.NodesForXPath(".//barline");
  Receiver(TMusicXmlEvent::kMeasureEnd).didEncounterMeasureEnd(&_measure);
}

}  // namespace harmony
