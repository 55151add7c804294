#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"

#include <cinttypes>
#include <cstdio>

#include "harmony/Alert.h"
#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/MusicXmlText.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml_Part.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml_PartList.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n\f\v";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

}  // namespace

// --- Kept attributes

void CKeptXMLAttributes::assign(const CXMLAttributes& attributes) {
  _entries.resize(attributes.size());
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    _entries[i].first.assign(attributes.Name(i));
    _entries[i].second.assign(attributes.Value(i));
  }
  _view._Clear();
  for (const auto& [name, value] : _entries) _view._Add(name, value);
  _present = true;
}

void CKeptXMLAttributes::clear() {
  _entries.clear();
  _view._Clear();
  _present = false;
}

// --- The chain

void XMLParserDelegate_RecursiveMuxml::initAsRootDelegateWithMidiTicksPerQuarter(
    std::int32_t ticksPerQuarter, CXMLElement wholeDocument) {
  RootDelegate = this;
  musicXmlContext = std::make_unique<MusicXmlContext>();
  musicXmlContext->initWithTicksPerQuarter(ticksPerQuarter);
  wholeDocumentXML = std::move(wholeDocument);
  partListXML = XMLElementForXPath(wholeDocumentXML, ".//part-list");
}

void XMLParserDelegate_RecursiveMuxml::initAndSetAsDelegateForParser(
    platform::XmlEventParser& parser, std::string_view elementName, std::string_view namespaceURI,
    std::string_view qualifiedName, const CXMLAttributes& attributes,
    XMLParserDelegate_RecursiveMuxml* parentDelegate,
    XMLParserDelegate_RecursiveMuxml* rootDelegate) {
  parser.setDelegate(this);
  ParentDelegate = parentDelegate;
  RootDelegate = rootDelegate;
  MyRecursiveTreeStartsAtElementName.assign(elementName);
  currentElementParentNames.clear();
  _trace = parentDelegate->Trace();
  didStartMyElement(parser, elementName, namespaceURI, qualifiedName, attributes);
}

void XMLParserDelegate_RecursiveMuxml::setParserDelegateToParentDelegateAndReleaseSelf(
    std::string_view elementName, platform::XmlEventParser& parser) {
  XMLParserDelegate_RecursiveMuxml* parent = ParentDelegate;
  parser.setDelegate(parent);
  parent->currentElementName.clear();
  if (!parent->currentElementParentNames.empty() &&
      parent->currentElementParentNames.back() == elementName) {
    parent->currentElementParentNames.pop_back();
  }
  parent->currentAttributes.clear();
  parent->ChildDelegate.reset();  // destroys this delegate
}

void XMLParserDelegate_RecursiveMuxml::
    didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(
        std::string_view elementName) {
  currentElementName.clear();
  currentAttributes.clear();
  if (!currentElementParentNames.empty() && currentElementParentNames.back() == elementName) {
    currentElementParentNames.pop_back();
  }
}

void XMLParserDelegate_RecursiveMuxml::storeElement(std::string_view elementName,
                                                    const CXMLAttributes& attributes) {
  currentAttributes.assign(attributes);
  currentElementName.assign(Trimmed(elementName));
}

bool XMLParserDelegate_RecursiveMuxml::hasParentName(std::string_view name) const {
  for (const std::string& parent : currentElementParentNames) {
    if (parent == name) return true;
  }
  return false;
}

// --- The root's events

void XMLParserDelegate_RecursiveMuxml::parserDidStartDocument(platform::XmlEventParser& /*parser*/) {
  const TMuxmlProgressBarInfo info{getScorePartCountFromXMLDocument()};
  Receiver(TMusicXmlEvent::kDocumentStart).didEncounterDocumentStartWithProgressBarInfo(&info);
}

void XMLParserDelegate_RecursiveMuxml::parserDidEndDocument(platform::XmlEventParser& /*parser*/) {
  Receiver(TMusicXmlEvent::kDocumentEnd).didEncounterDocumentEnd();
}

void XMLParserDelegate_RecursiveMuxml::didStartElement(platform::XmlEventParser& parser,
                                                       std::string_view elementName,
                                                       std::string_view namespaceURI,
                                                       std::string_view qualifiedName,
                                                       const CXMLAttributes& attributes) {
  storeElement(elementName, attributes);
  // The elements inside `identification` are pushed on their own.
  if (currentElementName == "identification") return;
  if (currentElementName == "part-list") {
    createAndSetAsDelegateForParser<XMLParserDelegate_RecursiveMuxml_PartList>(
        parser, elementName, namespaceURI, qualifiedName, attributes, this, RootDelegate);
    return;
  }
  if (currentElementName == "part") {
    createAndSetAsDelegateForParser<XMLParserDelegate_RecursiveMuxml_Part>(
        parser, elementName, namespaceURI, qualifiedName, attributes, this, RootDelegate);
    return;
  }
  currentElementParentNames.push_back(currentElementName);
}

void XMLParserDelegate_RecursiveMuxml::didEndElement(platform::XmlEventParser& parser,
                                                     std::string_view elementName,
                                                     std::string_view /*namespaceURI*/,
                                                     std::string_view /*qualifiedName*/) {
  didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(elementName);
  // The part list's delegate inherits this: at the list's end the parser goes back to the root.
  if ((elementName == "part-list" || elementName == "part") && ParentDelegate != nullptr) {
    setParserDelegateToParentDelegateAndReleaseSelf(elementName, parser);
  }
}

void XMLParserDelegate_RecursiveMuxml::foundCharacters(platform::XmlEventParser& parser,
                                                       std::string_view text) {
  if (!text.empty() && text.front() == '\n') return;
  interpretText(parser, Trimmed(text));
}

void XMLParserDelegate_RecursiveMuxml::interpretText(platform::XmlEventParser& parser,
                                                     std::string_view text) {
  if (ParentDelegate != nullptr) ParentDelegate->foundCharacters(parser, text);
}

void XMLParserDelegate_RecursiveMuxml::parseErrorOccurred(platform::XmlEventParser& parser,
                                                          const platform::XmlError& error) {
  if (ParentDelegate != nullptr) {
    ParentDelegate->parseErrorOccurred(parser, error);
    return;
  }
  showParsingErrorAlert(parser, error);
}

void XMLParserDelegate_RecursiveMuxml::validationErrorOccurred(platform::XmlEventParser& parser,
                                                               const platform::XmlError& error) {
  showParsingErrorAlert(parser, error);
}

void XMLParserDelegate_RecursiveMuxml::showParsingErrorAlert(platform::XmlEventParser& parser,
                                                             const platform::XmlError& error) {
  const std::string format =
      platform::LocalizedString("Parsing error %zd, Description: %@, Line: %zd, Column: %zd");
  // The format's placeholders in order: code, description, line, column.
  const std::string values[] = {std::to_string(error.code), error.description,
                                std::to_string(parser.lineNumber()),
                                std::to_string(parser.columnNumber())};
  std::string informative;
  std::size_t next = 0;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const bool number = format.compare(i, 3, "%zd") == 0;
    const bool object = format.compare(i, 2, "%@") == 0;
    if ((number || object) && next < std::size(values)) {
      informative += values[next++];
      i += number ? 2 : 1;
    } else {
      informative += format[i];
    }
  }
  ShowAlert({platform::LocalizedString("MusicXML Parsing Error"), informative,
             {platform::LocalizedString("OK")}});
}

// --- Reading the score

const XMLParserDelegate_RecursiveMuxml::DocumentLookups& XMLParserDelegate_RecursiveMuxml::Lookups() {
  if (RootDelegate != this) return RootDelegate->Lookups();
  if (!_lookups) {
    DocumentLookups lookups;
    for (const CXMLElement& part : wholeDocumentXML.NodesForXPath(".//part")) {
      const std::optional<std::string> id = StringObjectForXPath(part, "@id");
      if (id) lookups.partsByID.emplace(*id, part);  // the first of an id stays
    }
    lookups.hasChord = !XMLElementForXPath(wholeDocumentXML, "//chord").IsNone();
    lookups.firstTime = XMLElementForXPath(wholeDocumentXML, "//time");
    _lookups = std::move(lookups);
  }
  return *_lookups;
}

CXMLElement XMLParserDelegate_RecursiveMuxml::PartXMLWithID(const std::string& id) {
  const auto& parts = Lookups().partsByID;
  const auto found = parts.find(id);
  return found == parts.end() ? CXMLElement() : found->second;
}

bool XMLParserDelegate_RecursiveMuxml::DocumentHasChord() { return Lookups().hasChord; }

CXMLElement XMLParserDelegate_RecursiveMuxml::FirstTimeXML() { return Lookups().firstTime; }

std::int32_t XMLParserDelegate_RecursiveMuxml::MidiTicksPerQuarter() const {
  return Context().TicksPerQuarter();
}

MusicXmlParserDelegate& XMLParserDelegate_RecursiveMuxml::Receiver(TMusicXmlEvent event) {
  MusicXmlParserDelegate* host = RootDelegate->_host;
  // Clefs go to a host that takes key signatures, whatever it says about clefs.
  const TMusicXmlEvent asked = event == TMusicXmlEvent::kClef ? TMusicXmlEvent::kSignKey : event;
  if (host != nullptr && host->RespondsToEvent(asked)) return *host;
  return *this;
}

std::int32_t XMLParserDelegate_RecursiveMuxml::getScorePartCountFromXMLDocument() const {
  const std::vector<CXMLElement> parts =
      wholeDocumentXML.NodesForXPath("/score-partwise/part-list/score-part");
  return static_cast<std::int32_t>(parts.size());
}

}  // namespace harmony
