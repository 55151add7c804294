#pragma once
// The chain of small readers that walks a MusicXML score as events. Each delegate of the
// event-driven parser sees only the subtree of its own element: when an element with a
// class of its own starts, the current delegate creates a child for it, the child becomes
// the parser's delegate and, at its element's end, gives the parser back to its parent and is
// destroyed. The root delegate owns the running context and the document tree, and sends the
// host's events.
//
// Text follows one rule in every class: text that begins with a line feed is the white space
// between elements and is dropped; other text is trimmed and interpreted by the class, or
// passed to the parent's handler when the class has no use for it.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "harmony/musicxml/MusicXmlContext.h"
#include "harmony/musicxml/MusicXmlParserDelegate.h"
#include "harmony/musicxml/XMLAttributes.h"
#include "harmony/musicxml/XMLElement.h"
#include "platform/XmlEventParser.h"

namespace harmony {

// The attributes of the element whose text is awaited, kept beyond the start event.
class CKeptXMLAttributes {
 public:
  void assign(const CXMLAttributes& attributes);
  void clear();
  bool empty() const { return !_present; }
  const CXMLAttributes& view() const { return _view; }

 private:
  std::vector<std::pair<std::string, std::string>> _entries;
  CXMLAttributes _view;
  bool _present = false;
};

class XMLParserDelegate_RecursiveMuxml : public platform::XmlEventDelegate,
                                         public MusicXmlParserDelegate {
 public:
  XMLParserDelegate_RecursiveMuxml() = default;
  ~XMLParserDelegate_RecursiveMuxml() override = default;
  XMLParserDelegate_RecursiveMuxml(const XMLParserDelegate_RecursiveMuxml&) = delete;
  XMLParserDelegate_RecursiveMuxml& operator=(const XMLParserDelegate_RecursiveMuxml&) = delete;

  // --- The root of the chain
  void initAsRootDelegateWithMidiTicksPerQuarter(std::int32_t ticksPerQuarter,
                                                 CXMLElement wholeDocument);

  // --- Children: created for an element, they take the parser over until the element ends.
  template <class T>
  static T* createAndSetAsDelegateForParser(platform::XmlEventParser& parser,
                                            std::string_view elementName,
                                            std::string_view namespaceURI,
                                            std::string_view qualifiedName,
                                            const CXMLAttributes& attributes,
                                            XMLParserDelegate_RecursiveMuxml* parentDelegate,
                                            XMLParserDelegate_RecursiveMuxml* rootDelegate) {
    auto child = std::make_unique<T>();
    T* created = child.get();
    parentDelegate->ChildDelegate = std::move(child);
    created->initAndSetAsDelegateForParser(parser, elementName, namespaceURI, qualifiedName,
                                           attributes, parentDelegate, rootDelegate);
    return created;
  }
  void initAndSetAsDelegateForParser(platform::XmlEventParser& parser,
                                     std::string_view elementName, std::string_view namespaceURI,
                                     std::string_view qualifiedName,
                                     const CXMLAttributes& attributes,
                                     XMLParserDelegate_RecursiveMuxml* parentDelegate,
                                     XMLParserDelegate_RecursiveMuxml* rootDelegate);
  // How a child sees the attributes of its own element, whose start went to its parent.
  virtual void didStartMyElement(platform::XmlEventParser& /*parser*/,
                                 std::string_view /*elementName*/,
                                 std::string_view /*namespaceURI*/,
                                 std::string_view /*qualifiedName*/,
                                 const CXMLAttributes& /*attributes*/) {}
  // Gives the parser back to the parent, which then destroys this delegate: nothing may
  // touch it after the call.
  void setParserDelegateToParentDelegateAndReleaseSelf(std::string_view elementName,
                                                       platform::XmlEventParser& parser);
  void didEndElement_resetCurrentElementNameAndRemoveFromCurrentElementParentNames(
      std::string_view elementName);

  // --- The parser's events, as the root handles them
  void parserDidStartDocument(platform::XmlEventParser& parser) override;
  void parserDidEndDocument(platform::XmlEventParser& parser) override;
  void didStartElement(platform::XmlEventParser& parser, std::string_view elementName,
                       std::string_view namespaceURI, std::string_view qualifiedName,
                       const CXMLAttributes& attributes) override;
  void didEndElement(platform::XmlEventParser& parser, std::string_view elementName,
                     std::string_view namespaceURI, std::string_view qualifiedName) override;
  // The text rule, then interpretText with the trimmed text.
  void foundCharacters(platform::XmlEventParser& parser, std::string_view text) override;
  // A child forwards to its parent; the root shows the alert.
  void parseErrorOccurred(platform::XmlEventParser& parser,
                          const platform::XmlError& error) override;
  // The same alert, from whichever delegate is current.
  void validationErrorOccurred(platform::XmlEventParser& parser,
                               const platform::XmlError& error) final;

  // --- Reading the score
  std::int32_t MidiTicksPerQuarter() const;
  MusicXmlContext& Context() const { return *RootDelegate->musicXmlContext; }
  // The host's delegate when it implements the event, else this delegate's own empty method.
  MusicXmlParserDelegate& Receiver(TMusicXmlEvent event);
  // The number of parts the score lists.
  std::int32_t getScorePartCountFromXMLDocument() const;

  bool Trace() const { return _trace; }
  void setTrace(bool trace) { _trace = trace; }
  MusicXmlParserDelegate* musicXmlParserDelegate() const { return _host; }
  void setMusicXmlParserDelegate(MusicXmlParserDelegate* host) { _host = host; }

  // The names of the open elements below this delegate's own, innermost last.
  std::vector<std::string> currentElementParentNames;
  XMLParserDelegate_RecursiveMuxml* ParentDelegate = nullptr;
  XMLParserDelegate_RecursiveMuxml* RootDelegate = nullptr;
  std::unique_ptr<XMLParserDelegate_RecursiveMuxml> ChildDelegate;
  std::string MyRecursiveTreeStartsAtElementName;
  std::unique_ptr<MusicXmlContext> musicXmlContext;  // the root's
  CXMLElement wholeDocumentXML;                      // the root's
  CXMLElement partListXML;                           // the root's
  // Look-ups in the whole document whose answers never change while the import runs, found
  // once on the root instead of by a walk through the whole tree at every part or note.
  // The first ".//part" with the id, or none.
  CXMLElement PartXMLWithID(const std::string& id);
  // Whether "//chord" finds anything, and the first "//time" element.
  bool DocumentHasChord();
  CXMLElement FirstTimeXML();
  std::string currentElementName;
  CKeptXMLAttributes currentAttributes;

 protected:
  // What a class makes of trimmed text; by default it goes to the parent, and the root, which
  // has none, drops it.
  virtual void interpretText(platform::XmlEventParser& parser, std::string_view text);
  // Stores the element's attributes and trimmed name.
  void storeElement(std::string_view elementName, const CXMLAttributes& attributes);
  bool hasParentName(std::string_view name) const;
  void showParsingErrorAlert(platform::XmlEventParser& parser, const platform::XmlError& error);

 private:
  struct DocumentLookups {
    std::map<std::string, CXMLElement> partsByID;
    bool hasChord = false;
    CXMLElement firstTime;
  };
  const DocumentLookups& Lookups();
  std::optional<DocumentLookups> _lookups;  // the root's, on first use
  bool _trace = false;
  MusicXmlParserDelegate* _host = nullptr;  // the root's
};

}  // namespace harmony
