#include "platform/XmlDocument.h"

#include <libxml/catalog.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/valid.h>
#include <libxml/xmlerror.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <map>
#include <mutex>

namespace harmony::platform {

namespace {

namespace fs = std::filesystem;

// What a parse of ours may read besides its bytes: the files below the folder of its catalog,
// found through the catalog by public identifier or by a relative name inside a DTD.
struct TLocalDtds {
  xmlCatalogPtr catalog = nullptr;
  fs::path folder;
};

thread_local const TLocalDtds* tLocalDtds = nullptr;
thread_local bool tInOurParse = false;
xmlExternalEntityLoader gPreviousLoader = nullptr;

bool IsBelow(const fs::path& path, const fs::path& folder) {
  std::error_code error;
  const fs::path canonical = fs::weakly_canonical(path, error);
  if (error) return false;
  const auto [end, rest] =
      std::mismatch(folder.begin(), folder.end(), canonical.begin(), canonical.end());
  (void)rest;
  return end == folder.end();
}

std::string LocalPathOf(const char* url) {
  if (url == nullptr) return {};
  std::string text = url;
  if (text.rfind("file://", 0) == 0) return text.substr(7);
  if (text.find("://") != std::string::npos) return {};  // http, ftp...: never
  return text;
}

// Our parses read nothing from the network and nothing outside their DTD folder; parses of
// a host that shares the process keep whatever loader was installed before.
xmlParserInputPtr GuardedEntityLoader(const char* url, const char* id, xmlParserCtxtPtr context) {
  if (!tInOurParse) {
    return gPreviousLoader != nullptr ? gPreviousLoader(url, id, context) : nullptr;
  }
  const TLocalDtds* dtds = tLocalDtds;
  if (dtds == nullptr || dtds->catalog == nullptr) return nullptr;
  std::string path;
  if (xmlChar* resolved = xmlACatalogResolve(dtds->catalog, reinterpret_cast<const xmlChar*>(id),
                                             reinterpret_cast<const xmlChar*>(url))) {
    path = LocalPathOf(reinterpret_cast<const char*>(resolved));
    xmlFree(resolved);
  } else {
    path = LocalPathOf(url);
  }
  if (path.empty() || !IsBelow(path, dtds->folder)) return nullptr;
  return xmlNewInputFromFile(context, path.c_str());
}

void InitOnce() {
  static std::once_flag once;
  std::call_once(once, [] {
    xmlInitParser();
    gPreviousLoader = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(&GuardedEntityLoader);
  });
}

// Catalogs are read once per path and kept for the life of the process.
const TLocalDtds* LocalDtdsFor(const std::string& catalogPath) {
  static std::mutex mutex;
  // Never destroyed, so the catalogs stay reachable to the end.
  static auto& loaded = *new std::map<std::string, TLocalDtds>;
  std::lock_guard<std::mutex> lock(mutex);
  auto found = loaded.find(catalogPath);
  if (found == loaded.end()) {
    TLocalDtds dtds;
    std::error_code error;
    if (fs::is_regular_file(catalogPath, error)) {
      dtds.catalog = xmlLoadACatalog(catalogPath.c_str());
      dtds.folder = fs::weakly_canonical(fs::path(catalogPath).parent_path(), error);
    }
    found = loaded.emplace(catalogPath, std::move(dtds)).first;
  }
  return &found->second;
}

struct TErrorCollector {
  std::optional<XmlError> first;
};

void CollectError(void* data, xmlErrorPtr error) {
  auto* collector = static_cast<TErrorCollector*>(data);
  if (error == nullptr || error->level < XML_ERR_ERROR || collector->first) return;
  XmlError reported;
  reported.code = error->code;
  reported.domain = error->domain == XML_FROM_VALID ? "XMLValidation" : "XMLParser";
  reported.description = error->message == nullptr ? "" : error->message;
  while (!reported.description.empty() &&
         (reported.description.back() == '\n' || reported.description.back() == ' ')) {
    reported.description.pop_back();
  }
  reported.line = error->line;
  reported.column = error->int2;
  collector->first = std::move(reported);
}

void IgnoreError(void*, xmlErrorPtr) {}

// Errors of a parse go to the collector, also those libxml2 raises without a parser context.
class ScopedParse {
 public:
  ScopedParse(TErrorCollector& collector, const TLocalDtds* dtds)
      : _structured(xmlStructuredError), _structuredContext(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(&collector, &CollectError);
    tInOurParse = true;
    tLocalDtds = dtds;
  }
  ~ScopedParse() {
    xmlSetStructuredErrorFunc(_structuredContext, _structured);
    tInOurParse = false;
    tLocalDtds = nullptr;
  }
  ScopedParse(const ScopedParse&) = delete;
  ScopedParse& operator=(const ScopedParse&) = delete;

 private:
  xmlStructuredErrorFunc _structured;
  void* _structuredContext;
};

bool StartsLikeUcs4(std::string_view bytes) {
  for (const std::string_view start :
       {std::string_view("\0\0\0<", 4), std::string_view("<\0\0\0", 4),
        std::string_view("\0\0<\0", 4), std::string_view("\0<\0\0", 4),
        std::string_view("\0\0\xFE\xFF", 4), std::string_view("\xFF\xFE\0\0", 4)}) {
    if (bytes.substr(0, 4) == start) return true;
  }
  return false;
}


// The compiled form of each expression, kept per thread: the import asks the same few paths
// for every note and bar. Bounded, since a path may carry an id from the score.
class CompiledXPaths {
 public:
  ~CompiledXPaths() { Clear(); }
  xmlXPathCompExprPtr Get(xmlXPathContextPtr context, std::string_view xpath) {
    const auto found = _compiled.find(xpath);
    if (found != _compiled.end()) return found->second;
    if (_compiled.size() >= kMaxExpressions) Clear();
    const std::string expression(xpath);
    xmlXPathCompExprPtr compiled =
        xmlXPathCtxtCompile(context, reinterpret_cast<const xmlChar*>(expression.c_str()));
    _compiled.emplace(expression, compiled);
    return compiled;
  }

 private:
  static constexpr std::size_t kMaxExpressions = 512;
  void Clear() {
    for (auto& [expression, compiled] : _compiled) xmlXPathFreeCompExpr(compiled);
    _compiled.clear();
  }
  std::map<std::string, xmlXPathCompExprPtr, std::less<>> _compiled;
};

// The value of `xpath` from `node`; nothing when the expression is not valid XPath. The
// caller frees the result.
xmlXPathObjectPtr EvaluateXPath(xmlDocPtr doc, xmlNodePtr node, std::string_view xpath) {
  thread_local CompiledXPaths compiledXPaths;
  xmlXPathContextPtr context = xmlXPathNewContext(doc);
  if (context == nullptr) return nullptr;
  context->node = node;
  context->error = &IgnoreError;
  xmlXPathCompExprPtr compiled = compiledXPaths.Get(context, xpath);
  xmlXPathObjectPtr result = compiled ? xmlXPathCompiledEval(compiled, context) : nullptr;
  xmlXPathFreeContext(context);
  return result;
}

}  // namespace

std::shared_ptr<XmlDocument> XmlDocument::Parse(std::string_view bytes, const Options& options,
                                                XmlError& error) {
  InitOnce();
  error = {};
  if (bytes.empty() || bytes.size() > static_cast<std::size_t>(INT_MAX) || StartsLikeUcs4(bytes)) {
    error = {XML_ERR_DOCUMENT_EMPTY, "XMLParser",
             bytes.empty() ? "Document is empty" : "Document cannot be read", 1, 1};
    return nullptr;
  }
  const TLocalDtds* dtds = options.validate ? LocalDtdsFor(options.catalogPath) : nullptr;
  TErrorCollector collector;
  xmlParserCtxtPtr context = xmlNewParserCtxt();
  if (context == nullptr) {
    error = {XML_ERR_NO_MEMORY, "XMLParser", "Cannot create the XML parser", 1, 1};
    return nullptr;
  }
  // The DTD is loaded for its default attributes and checked afterwards, and only when the
  // document declares one.
  int flags = XML_PARSE_NONET;
  if (options.validate) flags |= XML_PARSE_DTDLOAD | XML_PARSE_DTDATTR;
  xmlDocPtr doc = nullptr;
  {
    ScopedParse scope(collector, dtds);
    doc = xmlCtxtReadMemory(context, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                            nullptr, flags);
  }
  xmlFreeParserCtxt(context);
  if (doc == nullptr || collector.first) {
    error = collector.first.value_or(
        XmlError{XML_ERR_DOCUMENT_EMPTY, "XMLParser", "Document cannot be read", 1, 1});
    if (doc != nullptr) xmlFreeDoc(doc);
    return nullptr;
  }
  std::shared_ptr<XmlDocument> document(new XmlDocument());
  document->_doc = doc;
  if (options.validate && doc->intSubset != nullptr) {
    TErrorCollector validity;
    xmlValidCtxtPtr validation = xmlNewValidCtxt();
    if (validation != nullptr) {
      ScopedParse scope(validity, dtds);
      if (!xmlValidateDocument(validation, doc) && !validity.first) {
        validity.first = XmlError{XML_ERR_INTERNAL_ERROR, "XMLValidation",
                                  "The document is not valid", 1, 1};
      }
      xmlFreeValidCtxt(validation);
    }
    if (validity.first) {
      error = *validity.first;
      error.domain = "XMLValidation";
    }
  }
  return document;
}

XmlDocument::~XmlDocument() {
  if (_doc != nullptr) xmlFreeDoc(_doc);
}

_xmlNode* XmlDocument::Root() const { return xmlDocGetRootElement(_doc); }

_xmlNode* XmlDocument::DocumentNode() const { return reinterpret_cast<_xmlNode*>(_doc); }

std::vector<_xmlNode*> XmlDocument::NodesForXPath(_xmlNode* contextNode,
                                                  std::string_view xpath) const {
  std::vector<_xmlNode*> nodes;
  xmlXPathObjectPtr result = EvaluateXPath(_doc, contextNode, xpath);
  if (result != nullptr && result->type == XPATH_NODESET && result->nodesetval != nullptr) {
    for (int i = 0; i < result->nodesetval->nodeNr; ++i) {
      nodes.push_back(result->nodesetval->nodeTab[i]);
    }
  }
  xmlXPathFreeObject(result);
  return nodes;
}

std::optional<double> XmlDocument::NumberForXPath(_xmlNode* contextNode,
                                                  std::string_view xpath) const {
  xmlXPathObjectPtr result = EvaluateXPath(_doc, contextNode, xpath);
  std::optional<double> number;
  if (result != nullptr && result->type == XPATH_NUMBER) number = result->floatval;
  xmlXPathFreeObject(result);
  return number;
}

std::string XmlDocument::Name(const _xmlNode* node) {
  return node == nullptr || node->name == nullptr ? std::string()
                                                  : reinterpret_cast<const char*>(node->name);
}

std::string XmlDocument::StringValue(const _xmlNode* node) {
  if (node == nullptr) return {};
  xmlChar* content = xmlNodeGetContent(node);
  if (content == nullptr) return {};
  std::string text = reinterpret_cast<const char*>(content);
  xmlFree(content);
  return text;
}

std::vector<_xmlNode*> XmlDocument::ChildElements(const _xmlNode* node) {
  std::vector<_xmlNode*> children;
  if (node == nullptr || node->type != XML_ELEMENT_NODE) return children;
  for (_xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE) children.push_back(child);
  }
  return children;
}

void XmlDocument::AppendCopyOf(_xmlNode* parent, const _xmlNode* source) {
  if (parent == nullptr || source == nullptr || parent->type != XML_ELEMENT_NODE) return;
  xmlNodePtr copy = xmlDocCopyNode(const_cast<_xmlNode*>(source), _doc, 1);
  if (copy != nullptr && xmlAddChild(parent, copy) == nullptr) xmlFreeNode(copy);
}

std::string XPathLiteral(std::string_view text) {
  if (text.find('\'') == std::string_view::npos) return "'" + std::string(text) + "'";
  if (text.find('"') == std::string_view::npos) return "\"" + std::string(text) + "\"";
  // Both quotes: glue the pieces between single quotes together.
  std::string literal = "concat(";
  std::size_t start = 0;
  for (std::size_t quote = text.find('\''); quote != std::string_view::npos;
       quote = text.find('\'', start)) {
    literal += "'" + std::string(text.substr(start, quote - start)) + "', \"'\", ";
    start = quote + 1;
  }
  literal += "'" + std::string(text.substr(start)) + "')";
  return literal;
}

}  // namespace harmony::platform
