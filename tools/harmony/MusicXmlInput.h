#pragma once
// MusicXML files for the tool's commands: plain (.musicxml, .xml) or compressed (.mxl), told
// apart from chord lists by their content. A compressed file is unpacked here: its root file
// is the one META-INF/container.xml names, else the first .xml file at the top of the archive.

#include <optional>
#include <string>
#include <string_view>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/musicxml/MusicXMLDoc.h"

namespace harmony::tool {

// A zip archive, or XML (after a byte-order mark and blanks, the text begins with "<").
bool LooksLikeMusicXml(std::string_view bytes);

// The plain MusicXML inside compressed bytes, or the bytes themselves when they are no
// archive. `label` names the file in messages.
std::string PlainMusicXml(const std::string& label, std::string bytes);

// "No chord": the root N.C. or the kind none.
bool IsMusicXmlNoChord(const TMusicXMLHarmony& harmony);
// Whether the import kept a chord symbol that names no chord, or none the kind table knows (a
// root that is no note letter, a kind such as "other" or one MusicXML does not define), or
// with a degree the chord steps over (a ninth altered, a third subtracted); "no chord" is read.
bool IsUnreadMusicXmlChord(const TMusicXMLHarmony& harmony);

// The harmony import of a file's bytes; InputError naming the file, line and column when the
// file is no well-formed XML, and, unless --lenient, when a chord symbol cannot be read.
TMusicXMLDoc ImportMusicXmlHarmonies(const std::string& label, std::string bytes);

// A file of chords as the analysing commands take it: MusicXML (plain or compressed), told by
// its content, or else a chord list, which must be text unless --lenient.
struct TChordsFile {
  std::optional<TMusicXMLDoc> musicXml;
  std::string chordList;
};
TChordsFile ReadChordsFile(const std::string& path);

// The analysis of an imported MusicXML file; keys given on the command line stand for the
// whole piece instead of the file's.
void AnalyseMusicXml(CHarmonicAnalyse& analyse, TMusicXMLDoc doc,
                     const CHarmAnlsSignKeys& givenKeys, CHarmonicAnalyse::TAnalyse method);

}  // namespace harmony::tool
