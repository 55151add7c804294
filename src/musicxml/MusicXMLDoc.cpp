#include "harmony/musicxml/MusicXMLDoc.h"

#include <sstream>

#include "musicxml/MusicXmlParserHarmonyDelegate.h"
#include "platform/BoundedRead.h"
#include "platform/XmlEventParser.h"

namespace harmony {

void TMusicXMLDoc::clear() {
  Title.clear();
  HarmSignKeys.clear();
  Harmonies.clear();
  ChordSequences.clear();
  TimeSignatures.clear();
  HarmSections.clear();
  HarmCopies.clear();
  HarmBarlines.clear();
}

bool TMusicXMLDoc::LoadFromMusicXMLFile(const std::string& path, TMusicXMLParseError* error) {
  // A file that cannot be read leaves the parser without bytes, which it reports.
  const platform::TBoundedRead read = platform::ReadBounded(path, platform::TReadKind::kMusicXml);
  return LoadFromMusicXMLBytes(read.bytes, error);
}

bool TMusicXMLDoc::LoadFromMusicXMLBytes(std::string_view bytes, TMusicXMLParseError* error) {
  clear();
  MusicXmlParserHarmonyDelegate delegate;
  platform::XmlEventParser parser(bytes);
  parser.setDelegate(&delegate);
  const bool parsed = parser.parse();
  *this = std::move(delegate.musicXMLDoc);
  if (error != nullptr) {
    *error = {};
    if (const auto& parserError = parser.parserError()) {
      *error = {parserError->code, parserError->description, parserError->line,
                parserError->column};
    } else if (delegate.unrollStopped()) {
      error->Description = "the repeats play out to more bars or chords than a song has";
    }
  }
  return parsed && !delegate.unrollStopped();
}

void TMusicXMLDoc::WriteTrace(std::ostream& out) const {
  out << "TMusicXMLDoc: Title \"" << Title << "\", " << HarmSignKeys.size() << " sign keys, "
      << Harmonies.size() << " harmonies, " << TimeSignatures.size() << " time signatures, "
      << HarmSections.size() << " sections, " << HarmCopies.size() << " copies";
  for (const TMusicXMLHarmony& harmony : Harmonies) {
    out << '\n';
    harmony.WriteTrace(out);
  }
}

void TMusicXMLDoc::WriteTraceBrief(std::ostream& out) const {
  out << "TMusicXMLDoc: \"" << Title << "\"";
  for (const TMusicXMLHarmony& harmony : Harmonies) {
    out << ' ';
    harmony.WriteTraceBrief(out);
  }
}

void TMusicXMLDoc::WriteInitializerList(std::ostream& out) const {
  out << "TMusicXMLDoc{\"" << Title << "\", {";
  for (std::size_t i = 0; i < Harmonies.size(); ++i) {
    if (i > 0) out << ", ";
    Harmonies[i].WriteInitializerList(out);
  }
  out << "}}";
}

}  // namespace harmony
