#include "musicxml/XMLParserDelegate_RecursiveMuxml_Part.h"

#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml_Measure.h"
#include "platform/XmlDocument.h"

namespace harmony {

void XMLParserDelegate_RecursiveMuxml_Part::didStartMyElement(
    platform::XmlEventParser& /*parser*/, std::string_view /*elementName*/,
    std::string_view /*namespaceURI*/, std::string_view /*qualifiedName*/,
    const CXMLAttributes& attributes) {
  encounteredPartStart(attributes);
}

void XMLParserDelegate_RecursiveMuxml_Part::encounteredPartStart(const CXMLAttributes& attributes) {
  _encounteredPartStart_setRootDelegateMusicXMLContext(attributes);
  MusicXmlContext& context = Context();
  CMuxmlSignTime& signTime = context.CurrentSignTime();
  // A part that starts without a time signature is announced in an invisible 4/4.
  const CXMLElements& measures = context.CurrentPartMeasuresXMLs();
  if (!measures.empty() && XPathExists(measures.front(), ".//time")) {
    signTime.mPrintObject = TMuxmlEnum_YesNo::kYes;
  } else {
    signTime.mPrintObject = TMuxmlEnum_YesNo::kNo;
    signTime.mPositionAsMidiTicks = context.CurrentPosAsMidiTicks();
    Receiver(TMusicXmlEvent::kSignTime).didEncounterSignTime(&signTime);
  }
  CMuxmlPart part;
  _encounteredPartStart_setupEncounteredPart(part);
  _encounteredPartStart_queryScoreToSetMembersOf(part);
  _encounteredPartStart_queryScoreInstrumentToSetMembersOf(part);
  Receiver(TMusicXmlEvent::kPartStart).didEncounterPartStart(&part);
}

void XMLParserDelegate_RecursiveMuxml_Part::_encounteredPartStart_setRootDelegateMusicXMLContext(
    const CXMLAttributes& attributes) {
  MusicXmlContext& context = Context();
  context.resetCurrentPartMembers();
  CMuxmlSignTime signTime;
  signTime.mPositionAsMidiTicks = kMuxmlUndef32;
  context.SetCurrentSignTime(signTime);
  CurrentPartID.assign(attributes.ValueOr("id"));
  context.setCurrentDivisionsPQN(1);
  const CXMLElement partXML = RootDelegate->PartXMLWithID(CurrentPartID);
  context.setCurrentPartXML(partXML);
  if (partXML.IsNone()) return;
  // The part's first divisions hold from before its first note.
  context.UpdateCurrentDivisionsPQNFromXmlElement(partXML);
  context.setCurrentPartMeasuresXMLs(partXML.NodesForXPath(".//measure"));
}

void XMLParserDelegate_RecursiveMuxml_Part::_encounteredPartStart_setupEncounteredPart(
    CMuxmlPart& part) {
  part.mPartXML = Context().CurrentPartXML();
  part.mPositionAsMidiTicks = Context().CurrentPosAsMidiTicks();
  part.mPartID = CurrentPartID;
  part.mScoreInstrumentCount = static_cast<std::int32_t>(ScoreInstruments.count(CurrentPartID));
}

void XMLParserDelegate_RecursiveMuxml_Part::_encounteredPartStart_queryScoreToSetMembersOf(
    CMuxmlPart& part) {
  const CXMLElement scorePart =
      XMLElementForXPath(RootDelegate->partListXML,
                         "(score-part[@id=" + platform::XPathLiteral(CurrentPartID) + "])[1]");
  part.mPartName = StringValueForXPath(scorePart, ".//part-name", "");
  part.mPartNameDisplay = StringValueForXPath(scorePart, ".//part-name-display", "");
  part.mPartAbbreviation = StringValueForXPath(scorePart, ".//part-abbreviation", "");
  part.mPartAbbreviationDisplay =
      StringValueForXPath(scorePart, ".//part-abbreviation-display", "");
}

void XMLParserDelegate_RecursiveMuxml_Part::_encounteredPartStart_queryScoreInstrumentToSetMembersOf(
    CMuxmlPart& part) {
  // Instrument ids usually begin with the part's id and a hyphen ("P1-I1").
  const std::string query =
      ".//score-instrument[contains(@id," + platform::XPathLiteral(CurrentPartID + "-") + ")]";
  for (const CXMLElement& element : RootDelegate->partListXML.NodesForXPath(query)) {
    CMuxmlScoreInstrument instrument;
    instrument.mID = StringValueForXPath(element, "@id", "");
    instrument.mInstName = StringValueForXPath(element, ".//instrument-name", "");
    instrument.mInstAbbreviation = StringValueForXPath(element, ".//instrument-abbrevation", "");
    instrument.mInstSound = LowercaseStringValueForXPath(element, ".//instrument-sound", "");
    instrument.mInstrumentXML = element;
    if (instrument.InstSoundGroupIsStrings()) part.mHasStringsInstrument = true;
    part.mInstruments.push_back(std::move(instrument));
  }
}

void XMLParserDelegate_RecursiveMuxml_Part::didStartElement(platform::XmlEventParser& parser,
                                                            std::string_view elementName,
                                                            std::string_view namespaceURI,
                                                            std::string_view qualifiedName,
                                                            const CXMLAttributes& attributes) {
  storeElement(elementName, attributes);
  if (currentElementName == "measure") {
    createAndSetAsDelegateForParser<XMLParserDelegate_RecursiveMuxml_Measure>(
        parser, elementName, namespaceURI, qualifiedName, attributes, this, RootDelegate);
    return;
  }
  currentElementParentNames.push_back(currentElementName);
  if (currentElementName == "midi-device") visit_Start_MidiDevice();
  if (currentElementName == "score-part") visit_Start_ScorePart(attributes);
}

void XMLParserDelegate_RecursiveMuxml_Part::visit_Start_ScorePart(const CXMLAttributes& attributes) {
  CurrentPartID.assign(attributes.ValueOr("id"));
}

void XMLParserDelegate_RecursiveMuxml_Part::didEndElement(platform::XmlEventParser& parser,
                                                          std::string_view elementName,
                                                          std::string_view /*namespaceURI*/,
                                                          std::string_view /*qualifiedName*/) {
  if (elementName == MyRecursiveTreeStartsAtElementName) {
    encounteredPartEnd();
    didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
    setParserDelegateToParentDelegateAndReleaseSelf(elementName, parser);
    return;
  }
  if (elementName == "midi-instrument") visit_End_MidiInstrument();
  if (elementName == "score-instrument") visit_End_ScoreInstrument();
  if (elementName == "score-part") visit_End_ScorePart();
  didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
}

void XMLParserDelegate_RecursiveMuxml_Part::encounteredPartEnd() {
  MusicXmlContext& context = Context();
  context.CurrentPartGatheredInfo().mPartEndPosAsMidiTicks = context.CurrentPosAsMidiTicks();
  Receiver(TMusicXmlEvent::kPartEnd).didEncounterPartEnd(&context.CurrentPartGatheredInfo());
  context.resetCurrentPartMembers();
}

}  // namespace harmony
