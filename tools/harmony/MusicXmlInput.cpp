#include "MusicXmlInput.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>

#include "Command.h"
#include "musicxml/CompressedMusicXml.h"

namespace harmony::tool {

std::string ReadInputBytes(const std::string& path) {
  if (path == "-") {
    return std::string(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  }
  std::error_code code;
  if (std::filesystem::is_directory(path, code)) {
    throw InputError("\"" + path + "\" is a folder, not a file");
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) throw InputError("cannot read \"" + path + "\"");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) throw InputError("cannot read \"" + path + "\"");
  return bytes.str();
}

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
  return doc;
}

TChordsFile ReadChordsFile(const std::string& path) {
  const std::string label = path == "-" ? "standard input" : path;
  std::string bytes = ReadInputBytes(path);
  TChordsFile file;
  if (LooksLikeMusicXml(bytes)) {
    file.musicXml = ImportMusicXmlHarmonies(label, std::move(bytes));
  } else {
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
