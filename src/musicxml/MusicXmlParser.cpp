#include "harmony/musicxml/MusicXmlParser.h"

#include <filesystem>

#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"
#include "platform/AtomicWrite.h"
#include "platform/BoundedRead.h"
#include "platform/CompressedFileWrapper.h"
#include "platform/Localize.h"
#include "platform/UserFolders.h"
#include "platform/XmlDocument.h"
#include "platform/XmlEventParser.h"

namespace harmony {

namespace {

namespace fs = std::filesystem;

// Scores larger than this are refused rather than read.
constexpr std::size_t kMaxScoreBytes = platform::kMaxMusicXmlBytes;
constexpr int kImportErrorCode = 259;

TMusicXmlError ImportError(const char* englishDescription) {
  return {kImportErrorCode, kMusicXmlErrorDomain, platform::LocalizedString(englishDescription), 0,
          0};
}

TMusicXmlError FromXmlError(const platform::XmlError& error) {
  return {error.code, error.domain, error.description, error.line, error.column};
}

// The catalog of the MusicXML document types in the library's data.
std::string DtdCatalogPath() {
  for (const fs::path& folder : platform::ResourceFolders()) {
    const fs::path catalog = folder / "musicxml-dtd" / "catalog.xml";
    std::error_code error;
    if (fs::is_regular_file(catalog, error)) return catalog.string();
  }
  return {};
}

std::optional<std::string> ReadScore(const std::string& location, TMusicXmlError& error) {
  platform::TBoundedRead read = platform::ReadBounded(location, platform::TReadKind::kMusicXml);
  if (!read) {
    error = {read.error->code, "POSIX", read.error->reason, 0, 0};  // the caller knows the path
    return std::nullopt;
  }
  return std::move(read.bytes);
}

bool IsScoreRoot(const std::string& name) {
  return name.rfind("score-partwise", 0) == 0 || name.rfind("score-timewise", 0) == 0;
}

}  // namespace

void MusicXmlParser::init() {
  _settings = {};
  _trace = false;
  _midiTicksPerQuarter = 960;
  _delegate = nullptr;
}

bool MusicXmlParser::assignLocalError(const TMusicXmlError& error, TMusicXmlError* outError) {
  if (outError != nullptr) *outError = error;
  return false;
}

std::optional<TMusicXmlError> MusicXmlParser::wrapCompressedMusicXMLFile(
    std::string& location) const {
  if (location.empty() || fs::path(location).extension() != std::string(".") + kMusicXMLFileExtCompressed_mxl) {
    return std::nullopt;
  }
  std::string wrapperError;
  const auto wrapper =
      platform::CompressedFileWrapper::Open(location, kMaxScoreBytes, wrapperError);
  if (!wrapper || wrapper->fileWrappers().empty()) {
    return ImportError("Could not decompress (compressed MusicXML file)");
  }
  // The container names the root file; a container that doesn't parse is no reason to stop.
  std::optional<std::string> fullPath;
  const auto metaInf = wrapper->fileWrappers().find("META-INF");
  if (metaInf != wrapper->fileWrappers().end()) {
    const auto container = metaInf->second.children.find("container.xml");
    std::string readError;
    std::optional<std::string> bytes;
    if (container != metaInf->second.children.end()) {
      bytes = wrapper->regularFileContents(container->second, kMaxScoreBytes, readError);
    }
    platform::XmlError xmlError;
    const auto document = bytes ? platform::XmlDocument::Parse(
                                      *bytes, {true, DtdCatalogPath()}, xmlError)
                                : nullptr;
    if (document) {
      fullPath = StringObjectForXPath(CXMLElement(document, document->DocumentNode()),
                                      ".//container//rootfiles//rootfile//@full-path");
    }
  }
  if (!fullPath) {
    return ImportError(
        "Compressed MusicXML file seems to be malformed (could not find \u2018full-path\u2019)");
  }
  location = (fs::temp_directory_path() / "QuillonMusicXMLImport.xml").string();
  // Only the top level is searched: a root file inside a folder of the archive is not found.
  const auto root = wrapper->fileWrappers().find(*fullPath);
  std::string readError;
  std::optional<std::string> score;
  if (root != wrapper->fileWrappers().end()) {
    score = wrapper->regularFileContents(root->second, kMaxScoreBytes, readError);
  }
  if (!score || score->empty() ||
      !platform::WriteFileAtomically(location, reinterpret_cast<const uint8_t*>(score->data()),
                                     score->size())) {
    return ImportError("Could not create temporary conversion file");
  }
  return std::nullopt;
}

bool MusicXmlParser::parseURL(std::string location, MusicXmlParserDelegate* delegate,
                              TMusicXmlError* error) {
  setMusicXmlParserDelegate(delegate);
  if (const std::optional<TMusicXmlError> wrapError = wrapCompressedMusicXMLFile(location)) {
    return assignLocalError(*wrapError, error);
  }
  TMusicXmlError readError;
  const std::optional<std::string> bytes = ReadScore(location, readError);
  if (!bytes) return assignLocalError(readError, error);
  // The whole score as a tree first: one that doesn't parse or validate is refused before any
  // event is sent, and the readers look ahead in it.
  platform::XmlError xmlError;
  const std::shared_ptr<platform::XmlDocument> document =
      platform::XmlDocument::Parse(*bytes, {_validates, DtdCatalogPath()}, xmlError);
  if (!document || xmlError.code != 0) return assignLocalError(FromXmlError(xmlError), error);
  const CXMLElement root(document, document->Root());
  if (!IsScoreRoot(root.Name())) {
    return assignLocalError(ImportError("File is not a MusicXML File"), error);
  }
  platform::XmlEventParser parser(*bytes, location);
  XMLParserDelegate_RecursiveMuxml rootDelegate;
  rootDelegate.initAsRootDelegateWithMidiTicksPerQuarter(_midiTicksPerQuarter, root);
  parser.setDelegate(&rootDelegate);
  rootDelegate.setMusicXmlParserDelegate(delegate);
  rootDelegate.setTrace(_trace);
  parser.parse();
  if (const std::optional<platform::XmlError>& parseError = parser.parserError()) {
    return assignLocalError(FromXmlError(*parseError), error);
  }
  return true;
}

}  // namespace harmony
