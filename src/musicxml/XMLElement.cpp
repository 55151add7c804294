#include "harmony/musicxml/XMLElement.h"

#include "platform/XmlDocument.h"

namespace harmony {

namespace {

_xmlNode* Node(void* node) { return static_cast<_xmlNode*>(node); }

}  // namespace

std::string CXMLElement::Name() const {
  return _node == nullptr ? std::string() : platform::XmlDocument::Name(Node(_node));
}

std::string CXMLElement::StringValue() const {
  return _node == nullptr ? std::string() : platform::XmlDocument::StringValue(Node(_node));
}

std::vector<CXMLElement> CXMLElement::ChildElements() const {
  std::vector<CXMLElement> children;
  if (_node == nullptr) return children;
  for (_xmlNode* child : platform::XmlDocument::ChildElements(Node(_node))) {
    children.emplace_back(_document, child);
  }
  return children;
}

std::vector<CXMLElement> CXMLElement::NodesForXPath(std::string_view xpath) const {
  std::vector<CXMLElement> nodes;
  if (_node == nullptr || !_document) return nodes;
  for (_xmlNode* node : _document->NodesForXPath(Node(_node), xpath)) {
    nodes.emplace_back(_document, node);
  }
  return nodes;
}

void CXMLElement::AppendChildCopyOf(const CXMLElement& other) {
  if (_node == nullptr || other._node == nullptr || !_document) return;
  _document->AppendCopyOf(Node(_node), Node(other._node));
}

}  // namespace harmony
