#pragma once
// The reader of one `part`: it sets the context up for the part, announces the part with its
// names and instruments looked up in the part list, hands each `measure` to a measure reader,
// and at the part's end sends what was gathered about it.

#include <map>
#include <string>

#include "harmony/musicxml/MuxmlPart.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"

namespace harmony {

class XMLParserDelegate_RecursiveMuxml_Part : public XMLParserDelegate_RecursiveMuxml {
 public:
  std::string CurrentPartID;
  // Kept for hosts that fill them; the import itself leaves both empty.
  std::multimap<std::string, CMuxmlScoreInstrument> ScoreInstruments;
  std::multimap<std::string, CXMLElement> MidiInstruments;

  void didStartMyElement(platform::XmlEventParser& parser, std::string_view elementName,
                         std::string_view namespaceURI, std::string_view qualifiedName,
                         const CXMLAttributes& attributes) override;
  void didStartElement(platform::XmlEventParser& parser, std::string_view elementName,
                       std::string_view namespaceURI, std::string_view qualifiedName,
                       const CXMLAttributes& attributes) override;
  void didEndElement(platform::XmlEventParser& parser, std::string_view elementName,
                     std::string_view namespaceURI, std::string_view qualifiedName) override;

  void encounteredPartStart(const CXMLAttributes& attributes);
  void encounteredPartEnd();
  void _encounteredPartStart_setRootDelegateMusicXMLContext(const CXMLAttributes& attributes);
  void _encounteredPartStart_setupEncounteredPart(CMuxmlPart& part);
  void _encounteredPartStart_queryScoreToSetMembersOf(CMuxmlPart& part);
  void _encounteredPartStart_queryScoreInstrumentToSetMembersOf(CMuxmlPart& part);

  // Hooks at elements a part may hold in files that nest part-list entries in it.
  void visit_Start_MidiDevice() {}
  void visit_Start_ScorePart(const CXMLAttributes& attributes);
  void visit_End_MidiInstrument() {}
  void visit_End_ScoreInstrument() {}
  void visit_End_ScorePart() { CurrentPartID.clear(); }
};

}  // namespace harmony
