#include "musicxml/CompressedMusicXml.h"

#include "platform/XmlEventParser.h"
#include "platform/ZipArchive.h"

namespace harmony {

namespace {

constexpr std::size_t kMaxContainerBytes = std::size_t{1} << 20;

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
  for (const std::string& name : archive.EntryNames()) {
    if (IsTopLevelXml(name)) return name;
  }
  return {};
}

}  // namespace

bool IsZipArchive(std::string_view bytes) {
  return bytes.substr(0, 4) == std::string_view("PK\x03\x04", 4);
}

std::optional<std::string> UnpackCompressedMusicXml(std::string bytes, std::string& error) {
  const auto archive = platform::ZipArchive::FromBytes(std::move(bytes), error);
  if (!archive) {
    error = "not a readable compressed MusicXML file (" + error + ")";
    return std::nullopt;
  }
  const std::string root = RootFileName(*archive);
  if (root.empty()) {
    error = "the compressed file holds no MusicXML file";
    return std::nullopt;
  }
  auto score = archive->Read(root, kMaxUnpackedMusicXmlBytes, error);
  if (!score) error = "cannot unpack \"" + root + "\" (" + error + ")";
  return score;
}

}  // namespace harmony
