#pragma once
// The event-driven XML reader: libxml2's SAX2 parser behind one dispatcher that hands every
// event to the current delegate. A delegate may install another delegate (or remove itself)
// from inside any event; the next event goes to the delegate installed then. This is how a
// chain of small readers walks a deep document, each seeing only its own element's subtree.
//
// Outside input is hostile: the reader never reaches the network, never loads a DTD or an
// external entity, and keeps libxml2's limits on depth, name and text sizes and entity
// expansion. Entities declared inside the document are expanded; their text arrives as
// characters.

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "harmony/musicxml/XMLAttributes.h"

namespace harmony::platform {

struct XmlError {
  int code = 0;             // libxml2's error number (XML_ERR_...)
  std::string domain;       // "XMLParser" for well-formedness, "XMLValidation" for validity
  std::string description;  // libxml2's message, without its line end
  long line = 0;            // where the parser stood, counted from 1
  long column = 0;
};

// The attributes of one element as name and value, valid during the event only.
using XmlAttributes = CXMLAttributes;

class XmlEventParser;

// Receives the events of a parse. Every event does nothing unless overridden.
class XmlEventDelegate {
 public:
  virtual ~XmlEventDelegate() = default;
  virtual void parserDidStartDocument(XmlEventParser& /*parser*/) {}
  virtual void parserDidEndDocument(XmlEventParser& /*parser*/) {}
  // `name` is the local name, `qualifiedName` the name with its prefix as written.
  virtual void didStartElement(XmlEventParser& /*parser*/, std::string_view /*name*/,
                               std::string_view /*namespaceURI*/,
                               std::string_view /*qualifiedName*/,
                               const XmlAttributes& /*attributes*/) {}
  virtual void didEndElement(XmlEventParser& /*parser*/, std::string_view /*name*/,
                             std::string_view /*namespaceURI*/,
                             std::string_view /*qualifiedName*/) {}
  // Text as the parser delivers it: one text may come in several pieces (around an entity
  // reference, or in chunks of a few hundred bytes), white space between elements included.
  virtual void foundCharacters(XmlEventParser& /*parser*/, std::string_view /*text*/) {}
  virtual void parseErrorOccurred(XmlEventParser& /*parser*/, const XmlError& /*error*/) {}
  virtual void validationErrorOccurred(XmlEventParser& /*parser*/, const XmlError& /*error*/) {}
};

class XmlEventParser {
 public:
  // Reads `bytes`, which must stay alive and unchanged until parse() returns. `name` only
  // labels the document in messages.
  explicit XmlEventParser(std::string_view bytes, std::string name = {});
  XmlEventParser(const XmlEventParser&) = delete;
  XmlEventParser& operator=(const XmlEventParser&) = delete;

  XmlEventDelegate* delegate() const { return _delegate; }
  // May be called from inside an event; the next event goes to the new delegate. Events
  // while no delegate is set are dropped.
  void setDelegate(XmlEventDelegate* delegate) { _delegate = delegate; }

  // Runs the whole parse, delivering events in document order. True when the document was
  // well-formed and no error was reported. A parser runs once.
  bool parse();
  // Stops the parse after the current event; parse() then returns false. A fatal error
  // (the document is not well-formed) stops it the same way, after its report.
  void abortParsing();

  // The first error of the parse, if any.
  const std::optional<XmlError>& parserError() const { return _error; }
  // Where the parser stands: during an event the position just behind what it has read.
  long lineNumber() const;
  long columnNumber() const;

  const std::string& name() const { return _name; }

  // Used by the libxml2 callbacks.
  struct Callbacks;

 private:
  void _ReportError(XmlError error, bool validation);
  void _Stop();

  std::string_view _bytes;
  std::string _name;
  XmlEventDelegate* _delegate = nullptr;
  void* _context = nullptr;  // libxml2's parser context while parse() runs
  XmlAttributes _attributes;
  std::optional<XmlError> _error;
  bool _aborted = false;
  bool _stopped = false;  // by abortParsing or a fatal error: no more events
  bool _parsed = false;
};

}  // namespace harmony::platform
