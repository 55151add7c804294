#pragma once
// The XML document tree: libxml2's tree with XPath 1.0. A document comes from bytes in
// memory, never from the network; an external DTD is read only from the local folders a
// catalog names, for validation. Nodes are handed out as raw libxml2 node pointers together
// with the shared document that owns them (see harmony/musicxml/XMLElement.h).

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/XmlEventParser.h"

struct _xmlDoc;
struct _xmlNode;

namespace harmony::platform {

class XmlDocument {
 public:
  struct Options {
    // Check a document that declares a document type against it, with the DTD found through
    // the catalog (a DTD that is not found fails the check). A document without a document
    // type declaration is not checked.
    bool validate = false;
    // An XML catalog (OASIS form) mapping public identifiers to local DTD files.
    std::string catalogPath;
  };

  // The tree of `bytes`. Nothing, with `error` set to the first error, when they are not
  // well-formed XML; a tree with `error` set to the first validity error when the check
  // fails; a tree with `error.code` 0 otherwise.
  static std::shared_ptr<XmlDocument> Parse(std::string_view bytes, const Options& options,
                                            XmlError& error);
  ~XmlDocument();
  XmlDocument(const XmlDocument&) = delete;
  XmlDocument& operator=(const XmlDocument&) = delete;

  _xmlNode* Root() const;
  // The document itself as a node, the context in which an XPath starting with ".//" also
  // finds the root element.
  _xmlNode* DocumentNode() const;

  // The nodes an XPath finds from `context` (any node of this document); empty when the
  // expression is not valid XPath or finds no nodes.
  std::vector<_xmlNode*> NodesForXPath(_xmlNode* context, std::string_view xpath) const;
  // The number an XPath expression gives (count(...)); nothing on error.
  std::optional<double> NumberForXPath(_xmlNode* context, std::string_view xpath) const;

  // The name of an element or attribute, without prefix.
  static std::string Name(const _xmlNode* node);
  // The text of the node: an attribute's value, or all text inside an element.
  static std::string StringValue(const _xmlNode* node);
  // Element children in document order.
  static std::vector<_xmlNode*> ChildElements(const _xmlNode* node);
  // Appends a deep copy of `source` (of any document) as the last child of `parent`.
  void AppendCopyOf(_xmlNode* parent, const _xmlNode* source);

 private:
  XmlDocument() = default;
  _xmlDoc* _doc = nullptr;
};

// A string literal for an XPath expression holding `text` as it is, whatever quotes it has.
std::string XPathLiteral(std::string_view text);

}  // namespace harmony::platform
