#include "platform/XmlEventParser.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <climits>
#include <cstring>
#include <mutex>

namespace harmony::platform {

namespace {

// The parser whose parse() runs on this thread. libxml2 hands its callbacks a context that
// is not always the one we created (entity text is parsed in a context of its own), so the
// dispatcher is found here instead.
thread_local XmlEventParser* tCurrentParser = nullptr;

std::string_view View(const xmlChar* text) {
  return text == nullptr ? std::string_view()
                         : std::string_view(reinterpret_cast<const char*>(text));
}

std::string_view View(const xmlChar* begin, const xmlChar* end) {
  return std::string_view(reinterpret_cast<const char*>(begin),
                          static_cast<std::size_t>(end - begin));
}

// libxml2 2.9 crashes on some documents that start like UCS-4 (four bytes per character,
// told by where the NULs around the first "<" stand). No MusicXML is written that way, so
// such input is refused before the parser sees it.
bool StartsLikeUcs4(std::string_view bytes) {
  static constexpr std::string_view kStarts[] = {
      std::string_view("\0\0\0<", 4),      std::string_view("<\0\0\0", 4),
      std::string_view("\0\0<\0", 4),      std::string_view("\0<\0\0", 4),
      std::string_view("\0\0\xFE\xFF", 4), std::string_view("\xFF\xFE\0\0", 4)};
  for (const std::string_view start : kStarts) {
    if (bytes.substr(0, 4) == start) return true;
  }
  return false;
}

void InitLibxmlOnce() {
  static std::once_flag once;
  std::call_once(once, [] { xmlInitParser(); });
}

// While a parse runs, libxml2's own fallback error channels of this thread (used for errors
// that come without a parser context, such as a broken encoding) lead to the dispatcher
// instead of standard error.
class ScopedErrorChannels {
 public:
  ScopedErrorChannels(XmlEventParser* parser, xmlStructuredErrorFunc handler)
      : _previousParser(tCurrentParser),
        _structured(xmlStructuredError),
        _structuredContext(xmlStructuredErrorContext),
        _generic(xmlGenericError),
        _genericContext(xmlGenericErrorContext) {
    tCurrentParser = parser;
    xmlSetStructuredErrorFunc(nullptr, handler);
    xmlSetGenericErrorFunc(nullptr, &Silent);
  }
  ~ScopedErrorChannels() {
    xmlSetStructuredErrorFunc(_structuredContext, _structured);
    xmlSetGenericErrorFunc(_genericContext, _generic);
    tCurrentParser = _previousParser;
  }
  ScopedErrorChannels(const ScopedErrorChannels&) = delete;
  ScopedErrorChannels& operator=(const ScopedErrorChannels&) = delete;

 private:
  static void Silent(void*, const char*, ...) {}

  XmlEventParser* _previousParser;
  xmlStructuredErrorFunc _structured;
  void* _structuredContext;
  xmlGenericErrorFunc _generic;
  void* _genericContext;
};

}  // namespace

struct XmlEventParser::Callbacks {
  // Nothing more is delivered after a fatal error: libxml2 would go on with the end of the
  // document and the errors that follow from the first.
  static XmlEventDelegate* Delegate() {
    return tCurrentParser == nullptr || tCurrentParser->_stopped ? nullptr
                                                                 : tCurrentParser->_delegate;
  }

  static void StartDocument(void* context) {
    // The small document libxml2 keeps holds the entity declarations of the internal subset.
    xmlSAX2StartDocument(context);
    if (XmlEventDelegate* delegate = Delegate()) delegate->parserDidStartDocument(*tCurrentParser);
  }

  static void EndDocument(void* context) {
    xmlSAX2EndDocument(context);
    if (XmlEventDelegate* delegate = Delegate()) delegate->parserDidEndDocument(*tCurrentParser);
  }

  static void StartElement(void* /*context*/, const xmlChar* localName, const xmlChar* prefix,
                           const xmlChar* uri, int /*namespaceCount*/,
                           const xmlChar** /*namespaces*/, int attributeCount,
                           int /*defaultedCount*/, const xmlChar** attributes) {
    XmlEventDelegate* delegate = Delegate();
    if (delegate == nullptr) return;
    XmlEventParser& parser = *tCurrentParser;
    parser._attributes._Clear();
    for (int i = 0; i < attributeCount; ++i) {
      const xmlChar** attribute = attributes + 5 * i;  // name, prefix, URI, value, value end
      parser._attributes._Add(View(attribute[0]), View(attribute[3], attribute[4]));
    }
    const std::string_view name = View(localName);
    std::string qualifiedName;
    if (prefix != nullptr) qualifiedName.append(View(prefix)).append(":").append(name);
    delegate->didStartElement(parser, name, View(uri),
                              prefix == nullptr ? name : std::string_view(qualifiedName),
                              parser._attributes);
  }

  static void EndElement(void* /*context*/, const xmlChar* localName, const xmlChar* prefix,
                         const xmlChar* uri) {
    XmlEventDelegate* delegate = Delegate();
    if (delegate == nullptr) return;
    const std::string_view name = View(localName);
    std::string qualifiedName;
    if (prefix != nullptr) qualifiedName.append(View(prefix)).append(":").append(name);
    delegate->didEndElement(*tCurrentParser, name, View(uri),
                            prefix == nullptr ? name : std::string_view(qualifiedName));
  }

  static void Characters(void* /*context*/, const xmlChar* text, int length) {
    if (XmlEventDelegate* delegate = Delegate()) {
      delegate->foundCharacters(
          *tCurrentParser,
          std::string_view(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)));
    }
  }

  // External entities and DTDs are never loaded, whatever the document declares.
  static xmlParserInputPtr RefuseEntity(void* /*context*/, const xmlChar* /*publicId*/,
                                        const xmlChar* /*systemId*/) {
    return nullptr;
  }

  static void Error(void* /*userData*/, xmlErrorPtr error) {
    if (tCurrentParser == nullptr || tCurrentParser->_stopped || error == nullptr ||
        error->level < XML_ERR_ERROR) {
      return;
    }
    const bool validation = error->domain == XML_FROM_VALID;
    XmlError reported;
    reported.code = error->code;
    reported.domain = validation ? "XMLValidation" : "XMLParser";
    reported.description = error->message == nullptr ? "" : error->message;
    while (!reported.description.empty() &&
           (reported.description.back() == '\n' || reported.description.back() == ' ')) {
      reported.description.pop_back();
    }
    reported.line = error->line > 0 ? error->line : tCurrentParser->lineNumber();
    reported.column = error->int2 > 0 ? error->int2 : tCurrentParser->columnNumber();
    tCurrentParser->_ReportError(std::move(reported), validation);
    if (error->level == XML_ERR_FATAL) tCurrentParser->_Stop();
  }

  static xmlSAXHandler Handler() {
    xmlSAXHandler handler;
    std::memset(&handler, 0, sizeof handler);
    xmlSAXVersion(&handler, 2);  // the declaration handlers that keep the internal subset
    handler.startDocument = &StartDocument;
    handler.endDocument = &EndDocument;
    handler.startElementNs = &StartElement;
    handler.endElementNs = &EndElement;
    handler.characters = &Characters;
    handler.ignorableWhitespace = &Characters;
    handler.cdataBlock = &Characters;
    handler.resolveEntity = &RefuseEntity;
    handler.externalSubset = nullptr;
    handler.reference = nullptr;
    handler.comment = nullptr;
    handler.processingInstruction = nullptr;
    handler.startElement = nullptr;
    handler.endElement = nullptr;
    handler.warning = nullptr;
    handler.error = nullptr;
    handler.fatalError = nullptr;
    handler.serror = &Error;
    handler.initialized = XML_SAX2_MAGIC;
    return handler;
  }
};

}  // namespace harmony::platform

namespace harmony {

std::optional<std::string_view> CXMLAttributes::Find(std::string_view name) const {
  for (const auto& [entryName, value] : _entries) {
    if (entryName == name) return value;
  }
  return std::nullopt;
}

std::string_view CXMLAttributes::ValueOr(std::string_view name, std::string_view fallback) const {
  const std::optional<std::string_view> value = Find(name);
  return value ? *value : fallback;
}

void CXMLAttributes::_Add(std::string_view name, std::string_view rawValue) {
  // Without entity substitution libxml2 hands an ampersand in an attribute on as "&#38;";
  // references to entities declared in the document stay as written.
  static constexpr std::string_view kAmpersand = "&#38;";
  if (rawValue.find(kAmpersand) == std::string_view::npos) {
    _entries.emplace_back(name, rawValue);
    return;
  }
  std::string decoded;
  for (std::size_t i = 0; i < rawValue.size();) {
    if (rawValue.compare(i, kAmpersand.size(), kAmpersand) == 0) {
      decoded += '&';
      i += kAmpersand.size();
    } else {
      decoded += rawValue[i++];
    }
  }
  _decoded.push_back(std::move(decoded));
  _entries.emplace_back(name, _decoded.back());
}

}  // namespace harmony

namespace harmony::platform {

XmlEventParser::XmlEventParser(std::string_view bytes, std::string name)
    : _bytes(bytes), _name(std::move(name)) {}

bool XmlEventParser::parse() {
  if (_parsed) return false;
  _parsed = true;
  InitLibxmlOnce();
  ScopedErrorChannels channels(this, &Callbacks::Error);
  if (_bytes.empty() || _bytes.size() > static_cast<std::size_t>(INT_MAX)) {
    _ReportError({XML_ERR_DOCUMENT_EMPTY, "XMLParser",
                  _bytes.empty() ? "Document is empty" : "Document is too large", 1, 1},
                 false);
    return false;
  }
  if (StartsLikeUcs4(_bytes)) {
    _ReportError({XML_ERR_UNSUPPORTED_ENCODING, "XMLParser", "encoding not supported: UCS-4", 1, 1},
                 false);
    return false;
  }
  xmlParserCtxtPtr context =
      xmlCreateMemoryParserCtxt(_bytes.data(), static_cast<int>(_bytes.size()));
  if (context == nullptr) {
    _ReportError({XML_ERR_NO_MEMORY, "XMLParser", "Cannot create the XML parser", 1, 1}, false);
    return false;
  }
  xmlCtxtUseOptions(context, XML_PARSE_NONET);
  static const xmlSAXHandler kHandler = Callbacks::Handler();
  std::memcpy(context->sax, &kHandler, sizeof kHandler);
  _context = context;
  xmlParseDocument(context);
  const bool wellFormed = context->wellFormed != 0;
  if (context->myDoc != nullptr) {
    xmlFreeDoc(context->myDoc);
    context->myDoc = nullptr;
  }
  xmlFreeParserCtxt(context);
  _context = nullptr;
  return wellFormed && !_error && !_aborted;
}

void XmlEventParser::abortParsing() {
  _aborted = true;
  _Stop();
}

void XmlEventParser::_Stop() {
  _stopped = true;
  if (_context != nullptr) xmlStopParser(static_cast<xmlParserCtxtPtr>(_context));
}

long XmlEventParser::lineNumber() const {
  return _context == nullptr ? 0 : xmlSAX2GetLineNumber(_context);
}

long XmlEventParser::columnNumber() const {
  return _context == nullptr ? 0 : xmlSAX2GetColumnNumber(_context);
}

void XmlEventParser::_ReportError(XmlError error, bool validation) {
  if (!_error) _error = error;
  if (_delegate == nullptr) return;
  if (validation) {
    _delegate->validationErrorOccurred(*this, error);
  } else {
    _delegate->parseErrorOccurred(*this, error);
  }
}

}  // namespace harmony::platform
