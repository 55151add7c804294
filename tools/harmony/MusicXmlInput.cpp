#include "MusicXmlInput.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>

#include "Command.h"
#include "musicxml/CompressedMusicXml.h"

namespace harmony::tool {

bool LooksLikeMusicXml(std::string_view bytes) {
  if (IsZipArchive(bytes)) return true;
  if (bytes.substr(0, 2) == "\xFE\xFF" || bytes.substr(0, 2) == "\xFF\xFE") {
    // UTF-16 with a byte-order mark: look at the first character behind it.
    const bool bigEndian = bytes[0] == '\xFE';
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
      const char high = bigEndian ? bytes[i] : bytes[i + 1];
      const char low = bigEndian ? bytes[i + 1] : bytes[i];
      if (high != 0) return false;
      if (low == ' ' || low == '\t' || low == '\r' || low == '\n') continue;
      return low == '<';
    }
    return false;
  }
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && bytes[first] == '<';
}

std::string PlainMusicXml(const std::string& label, std::string bytes) {
  if (!IsZipArchive(bytes)) return bytes;
  std::string error;
  std::optional<std::string> score = UnpackCompressedMusicXml(std::move(bytes), error);
  if (!score) throw InputError(label + ": " + error);
  return std::move(*score);
}

namespace {

// A chord symbol the import kept but no chord can be made of: a root that is no note letter,
// or a kind MusicXML does not define.
void CheckEveryChordRead(const std::string& label, const TMusicXMLDoc& doc) {
  std::size_t unread = 0;
  const TMusicXMLHarmony* first = nullptr;
  for (const TMusicXMLHarmony& harmony : doc.Harmonies) {
    if (!IsUnreadMusicXmlChord(harmony)) continue;
    if (unread++ == 0) first = &harmony;
  }
  if (first == nullptr) return;
  std::ostringstream message;
  message << label << ": " << unread << (unread == 1 ? " chord symbol" : " chord symbols")
          << " cannot be read, the first with root \"" << first->Root.Step << "\" and kind \""
          << first->Kind << '"';
  for (const TMusicXMLDegree& degree : first->Degrees) {
    if (!IsReadMusicXmlDegree(degree)) {
      message << " and degree \"" << degree.Type << ' ' << degree.Value << '"';
      break;
    }
  }
  message << " (--lenient reads them as the import does)";
  throw InputError(message.str());
}

}  // namespace

bool IsMusicXmlNoChord(const TMusicXMLHarmony& harmony) {
  return harmony.Root.Step == "N.C." || harmony.Kind == "none";
}

bool IsUnreadMusicXmlChord(const TMusicXMLHarmony& harmony) {
  if (IsMusicXmlNoChord(harmony)) return false;
  // Every kind but a pedal tone has tones above its root; an unknown kind would be read as
  // the root alone.
  const bool knownKind =
      harmony.Kind == "pedal" || !XMLHarmonyKindToIntvlSetExceptRoot(harmony.Kind).empty();
  const bool degreesRead =
      std::all_of(harmony.Degrees.begin(), harmony.Degrees.end(),
                  [](const TMusicXMLDegree& d) { return IsReadMusicXmlDegree(d); });
  return !knownKind || !degreesRead ||
         CChordSetFromMusicXml(harmony, CIntvlSet::kDefaultWrapIntvl).IsUndef();
}

TMusicXMLDoc ImportMusicXmlHarmonies(const std::string& label, std::string bytes) {
  const std::string plain = PlainMusicXml(label, std::move(bytes));
  TMusicXMLDoc doc;
  TMusicXMLParseError error;
  if (!doc.LoadFromMusicXMLBytes(plain, &error)) {
    std::ostringstream message;
    message << label;
    if (error.Line > 0) message << ':' << error.Line << ':' << error.Column;
    message << ": " << (error.Description.empty() ? "not a MusicXML file" : error.Description);
    throw InputError(message.str());
  }
  if (!Lenient()) CheckEveryChordRead(label, doc);
  return doc;
}

TChordsFile ReadChordsFile(const std::string& path) {
  const std::string label = path == "-" ? "standard input" : path;
  // Which of the two it is shows only once read: the larger limit first.
  std::string bytes = ReadInputBytes(path, platform::TReadKind::kMusicXml);
  TChordsFile file;
  if (LooksLikeMusicXml(bytes)) {
    file.musicXml = ImportMusicXmlHarmonies(label, std::move(bytes));
  } else {
    CheckInputSize(path, bytes.size(), platform::TReadKind::kChordList);
    CheckInputText(path, bytes);
    file.chordList = std::move(bytes);
  }
  return file;
}

void AnalyseMusicXml(CHarmonicAnalyse& analyse, TMusicXMLDoc doc,
                     const CHarmAnlsSignKeys& givenKeys, CHarmonicAnalyse::TAnalyse method) {
  if (!givenKeys.empty()) {
    doc.HarmSignKeys.clear();
    analyse.FillManually_AppendSignKey(givenKeys.front());
  }
  analyse.AnalyseFromMusicXMLDoc(doc, method);
}

}  // namespace harmony::tool
