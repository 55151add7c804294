#pragma once
// A node of a parsed MusicXML document tree (an element, or an attribute an XPath found),
// as the event import hands it to a host. Holding one keeps its whole document alive, so a
// host may keep the elements it was given (a direction, a note's lyrics) after the import.
// A default element is none, the answer of a look-up that found nothing.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace harmony {

namespace platform {
class XmlDocument;
}

class CXMLElement {
 public:
  CXMLElement() = default;
  CXMLElement(std::shared_ptr<platform::XmlDocument> document, void* node)
      : _document(std::move(document)), _node(node) {}

  bool IsNone() const { return _node == nullptr; }
  explicit operator bool() const { return _node != nullptr; }
  // The same node of the same document.
  bool operator==(const CXMLElement& other) const { return _node == other._node; }

  // The local name ("note"); "" for none.
  std::string Name() const;
  // All text inside the element, or an attribute's value; "" for none.
  std::string StringValue() const;
  // The element children in document order.
  std::vector<CXMLElement> ChildElements() const;
  // The nodes an XPath finds from here; empty for none, an invalid expression, or a result
  // that is not a list of nodes.
  std::vector<CXMLElement> NodesForXPath(std::string_view xpath) const;
  // Appends a deep copy of `other` as this element's last child (lyrics merged onto the last
  // piece of a tied note). Nothing happens when either is none.
  void AppendChildCopyOf(const CXMLElement& other);

  const std::shared_ptr<platform::XmlDocument>& _Document() const { return _document; }
  void* _Node() const { return _node; }

 private:
  std::shared_ptr<platform::XmlDocument> _document;
  void* _node = nullptr;
};

using CXMLElements = std::vector<CXMLElement>;

}  // namespace harmony
