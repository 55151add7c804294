// Feeds arbitrary bytes to the event import of MusicXML, through its file front end: as a
// plain score, as a compressed score whose archive holds the bytes as its root file, or as the
// bytes of an archive themselves. A host that takes every event checks what it is given: notes
// inside MIDI's range, positions not negative, parts that end as they start.

#include <unistd.h>
#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "harmony/Alert.h"
#include "harmony/musicxml/MusicXmlParser.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/MuxmlPart.h"

namespace {

using namespace harmony;

class CheckingHost : public MusicXmlParserDelegate {
 public:
  void didEncounterPartStart(const CMuxmlPart*) override { ++_openParts; }
  void didEncounterPartEnd(const CMuxmlPartGatheredInfo*) override {
    if (--_openParts < 0) std::abort();
  }
  void didEncounterNote(const CMuxmlNote* note) override {
    if (note->mNoteNr < -1 || note->mNoteNr > 127) std::abort();
    if (note->mPositionAsMidiTicks < 0) std::abort();
  }

 private:
  int _openParts = 0;
};

// An archive in the form of a compressed score, with `score` as its root file.
std::string CompressedScore(const std::string& score) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
  zip_t* archive = buffer ? zip_open_from_source(buffer, ZIP_TRUNCATE, &error) : nullptr;
  std::string bytes;
  if (archive != nullptr) {
    zip_source_keep(buffer);
    static const std::string container =
        "<container><rootfiles><rootfile full-path=\"score.xml\"/></rootfiles></container>";
    zip_add_dir(archive, "META-INF");
    zip_file_add(archive, "META-INF/container.xml",
                 zip_source_buffer(archive, container.data(), container.size(), 0), 0);
    zip_file_add(archive, "score.xml", zip_source_buffer(archive, score.data(), score.size(), 0),
                 0);
    if (zip_close(archive) != 0) {
      zip_discard(archive);
    } else if (zip_source_open(buffer) == 0) {
      zip_source_seek(buffer, 0, SEEK_END);
      bytes.resize(static_cast<std::size_t>(zip_source_tell(buffer)));
      zip_source_seek(buffer, 0, SEEK_SET);
      zip_source_read(buffer, bytes.data(), bytes.size());
      zip_source_close(buffer);
    }
  }
  if (buffer != nullptr) zip_source_free(buffer);
  zip_error_fini(&error);
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool quiet = [] {
    SetAlertHandler([](const TAlert&) {});
    return true;
  }();
  (void)quiet;
  if (size == 0) return 0;
  // The first byte chooses the way in and whether the document type is checked.
  const int way = data[0] % 3;
  const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::string file = way == 1 ? CompressedScore(bytes) : bytes;
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() /
      ("harmony-fuzz-" + std::to_string(::getpid()) + (way == 0 ? ".musicxml" : ".mxl"));
  std::ofstream(path, std::ios::binary | std::ios::trunc) << file;

  MusicXmlParser parser;
  parser.setValidatesDocumentType((data[0] & 0x80) != 0);
  CheckingHost host;
  TMusicXmlError error;
  parser.parseURL(path.string(), &host, &error);
  std::filesystem::remove(path);
  return 0;
}
