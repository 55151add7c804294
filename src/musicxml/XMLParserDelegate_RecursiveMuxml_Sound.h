#pragma once
// The reader of a `sound` element: a tempo given there is sent to the host; the rest of the
// element (dynamics, pedal, instrument changes) reaches a host only through the tree.

#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"

namespace harmony {

class XMLParserDelegate_RecursiveMuxml_Sound : public XMLParserDelegate_RecursiveMuxml {
 public:
  void didStartMyElement(platform::XmlEventParser& parser, std::string_view elementName,
                         std::string_view namespaceURI, std::string_view qualifiedName,
                         const CXMLAttributes& attributes) override;
  void didStartElement(platform::XmlEventParser& parser, std::string_view elementName,
                       std::string_view namespaceURI, std::string_view qualifiedName,
                       const CXMLAttributes& attributes) override;
  void didEndElement(platform::XmlEventParser& parser, std::string_view elementName,
                     std::string_view namespaceURI, std::string_view qualifiedName) override;

  void encounteredTempoChange(float tempo);
};

}  // namespace harmony
