#pragma once
// The reader of `part-list`: the list is passed over by the events; each part's names and
// instruments are read from the tree when the part starts.

#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"

namespace harmony {

class XMLParserDelegate_RecursiveMuxml_PartList : public XMLParserDelegate_RecursiveMuxml {
 protected:
  void interpretText(platform::XmlEventParser& /*parser*/, std::string_view /*text*/) override {}
};

}  // namespace harmony
