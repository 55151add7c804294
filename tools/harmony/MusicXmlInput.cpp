#include "MusicXmlInput.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>

#include "Command.h"
#include "platform/XmlEventParser.h"
#include "platform/ZipArchive.h"

namespace harmony::tool {

namespace {

constexpr std::size_t kMaxContainerBytes = std::size_t{1} << 20;
constexpr std::size_t kMaxScoreBytes = std::size_t{64} << 20;

// The first root file that META-INF/container.xml names.
class ContainerReader : public platform::XmlEventDelegate {
 public:
  std::optional<std::string> fullPath;

  void didStartElement(platform::XmlEventParser& parser, std::string_view name, std::string_view,
                       std::string_view, const platform::XmlAttributes& attributes) override {
    if (name != "rootfile") return;
    if (const auto path = attributes.Find("full-path")) {
      fullPath = std::string(*path);
      parser.abortParsing();
    }
  }
};

bool IsTopLevelXml(const std::string& name) {
  return name.find('/') == std::string::npos && name.size() > 4 &&
         name.compare(name.size() - 4, 4, ".xml") == 0;
}

std::string RootFileName(const platform::ZipArchive& archive) {
  std::string error;
  if (const auto container = archive.Read("META-INF/container.xml", kMaxContainerBytes, error)) {
    ContainerReader reader;
    platform::XmlEventParser parser(*container);
    parser.setDelegate(&reader);
    parser.parse();
    if (reader.fullPath && archive.HasEntry(*reader.fullPath)) return *reader.fullPath;
  }
  // Many exports write a container that no XML reader accepts (a quote inside a quoted
  // name); the score then is the archive's top-level .xml file.
  for (const std::string& name : archive.EntryNames()) {
    if (IsTopLevelXml(name)) return name;
  }
  return {};
}

}  // namespace

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
  if (bytes.substr(0, 4) == std::string_view("PK\x03\x04", 4)) return true;
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
  if (bytes.substr(0, 4) != std::string_view("PK\x03\x04", 4)) return bytes;
  std::string error;
  const auto archive = platform::ZipArchive::FromBytes(std::move(bytes), error);
  if (!archive)
    throw InputError(label + ": not a readable compressed MusicXML file (" + error + ")");
  const std::string root = RootFileName(*archive);
  if (root.empty()) throw InputError(label + ": the compressed file holds no MusicXML file");
  auto score = archive->Read(root, kMaxScoreBytes, error);
  if (!score) throw InputError(label + ": cannot unpack \"" + root + "\" (" + error + ")");
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

}  // namespace harmony::tool
