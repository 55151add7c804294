#pragma once
// The reader of one `note`: it fills a CMuxmlNote from the note's elements and, at the note's
// end, decides where the note lies and how long it is, whether it is reported now (ties are
// merged into their last piece, reported at the tie's start), and how far the time moves.

#include <string>

#include "harmony/musicxml/MuxmlNote.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"

namespace harmony {

class XMLParserDelegate_RecursiveMuxml_Note : public XMLParserDelegate_RecursiveMuxml {
 public:
  CMuxmlNote* EncounteredNote() { return &_note; }
  void SetEncounteredNote(const CMuxmlNote& note) { _note = note; }
  std::string InstrumentName;

  void didStartMyElement(platform::XmlEventParser& parser, std::string_view elementName,
                         std::string_view namespaceURI, std::string_view qualifiedName,
                         const CXMLAttributes& attributes) override;
  void didStartElement(platform::XmlEventParser& parser, std::string_view elementName,
                       std::string_view namespaceURI, std::string_view qualifiedName,
                       const CXMLAttributes& attributes) override;
  void didEndElement(platform::XmlEventParser& parser, std::string_view elementName,
                     std::string_view namespaceURI, std::string_view qualifiedName) override;

  void encounteredNote();
  void encounteredNote_setVelocityAndReleaseVelocity();

 protected:
  void interpretText(platform::XmlEventParser& parser, std::string_view text) override;

 private:
  bool _pitchAndTimeText(std::string_view text);
  bool _notationText(std::string_view text);
  bool _tupletText(std::string_view text);
  void _setNoteNr();
  // Where the note lies and how long it is, with its ties; true when it is reported now.
  bool _placeNote(std::int32_t& ticks);

  CMuxmlNote _note;
};

}  // namespace harmony
