#include "musicxml/XMLParserDelegate_RecursiveMuxml_Sound.h"

#include "musicxml/MusicXmlText.h"

namespace harmony {

void XMLParserDelegate_RecursiveMuxml_Sound::didStartMyElement(
    platform::XmlEventParser& parser, std::string_view /*elementName*/,
    std::string_view /*namespaceURI*/, std::string_view /*qualifiedName*/,
    const CXMLAttributes& attributes) {
  if (const auto tempo = attributes.Find("tempo")) {
    encounteredTempoChange(static_cast<float>(musicxml::DoubleValueOfText(*tempo)));
  }
  foundCharacters(parser, "");
}

void XMLParserDelegate_RecursiveMuxml_Sound::encounteredTempoChange(float tempo) {
  const CMuxmlTempoChange change{Context().CurrentPosAsMidiTicks(), tempo};
  Receiver(TMusicXmlEvent::kTempoChange).didEncounterTempoChange(&change);
}

void XMLParserDelegate_RecursiveMuxml_Sound::didStartElement(platform::XmlEventParser& parser,
                                                             std::string_view elementName,
                                                             std::string_view /*namespaceURI*/,
                                                             std::string_view /*qualifiedName*/,
                                                             const CXMLAttributes& attributes) {
  storeElement(elementName, attributes);
  currentElementParentNames.push_back(currentElementName);
  foundCharacters(parser, "");
}

void XMLParserDelegate_RecursiveMuxml_Sound::didEndElement(platform::XmlEventParser& parser,
                                                           std::string_view elementName,
                                                           std::string_view /*namespaceURI*/,
                                                           std::string_view /*qualifiedName*/) {
  didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
  if (elementName == MyRecursiveTreeStartsAtElementName) {
    setParserDelegateToParentDelegateAndReleaseSelf(elementName, parser);
  }
}

}  // namespace harmony
