// harmony musicxml FILE: the events a host receives from the MusicXML event import, one line
// each in document order (parts, bars, signs, tempi, notes with their ticks, lengths and
// velocities), or one JSON object per line; --midi writes the notes as a standard MIDI file.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Command.h"
#include "MidiFile.h"
#include "MusicXmlEventPrinter.h"
#include "MusicXmlInput.h"
#include "harmony/Alert.h"
#include "harmony/musicxml/MusicXmlParser.h"

namespace harmony::tool {

namespace {

struct MusicXmlOptions {
  std::string file;
  std::string part;
  std::string midi;
  int ticks = 960;
  bool json = false;
  bool lenient = false;
};

// The import's alerts (a parse error, divisions below 1) go to standard error and are counted:
// input the import could not read fully.
class AlertCounter {
 public:
  AlertCounter()
      : _previous(SetAlertHandler([this](const TAlert& alert) {
          ++count;
          std::cerr << "harmony: " << alert.messageText << ": " << alert.informativeText << '\n';
        })) {}
  ~AlertCounter() { SetAlertHandler(std::move(_previous)); }
  AlertCounter(const AlertCounter&) = delete;
  AlertCounter& operator=(const AlertCounter&) = delete;

  int count = 0;

 private:
  TAlertHandler _previous;
};

// The file the import reads. Standard input ("-") is written to a temporary file first, named
// .mxl when it is a zip archive. The lenient reading unpacks a compressed file the tool's way
// (a root file in a folder, or the first .xml when the container cannot be read) into a
// temporary plain file.
class ScoreInput {
 public:
  ScoreInput(const std::string& path, bool lenient) : _path(path) {
    if (path != "-" && !lenient) return;
    std::string bytes = ReadInputBytes(path, platform::TReadKind::kMusicXml);
    const bool zipped = bytes.substr(0, 2) == "PK";
    if (lenient && zipped && LooksLikeMusicXml(bytes)) {
      Write(PlainMusicXml(path, std::move(bytes)), ".xml");
    } else if (path == "-") {
      Write(bytes, zipped ? ".mxl" : ".xml");
    }
  }
  ~ScoreInput() {
    std::error_code error;
    if (!_temporary.empty()) std::filesystem::remove(_temporary, error);
  }
  ScoreInput(const ScoreInput&) = delete;
  ScoreInput& operator=(const ScoreInput&) = delete;

  const std::string& path() const { return _path; }

 private:
  void Write(const std::string& bytes, const char* extension) {
    _temporary = std::filesystem::temp_directory_path() /
                 ("harmony-musicxml-" + std::to_string(::getpid()) + extension);
    std::ofstream(_temporary, std::ios::binary) << bytes;
    _path = _temporary.string();
  }

  std::string _path;
  std::filesystem::path _temporary;
};

std::string ErrorText(const std::string& file, const TMusicXmlError& error) {
  std::string text = file;
  if (error.line > 0) text += ":" + std::to_string(error.line) + ":" + std::to_string(error.column);
  return text + ": " + error.description + " (" + error.domain + " " + std::to_string(error.code) + ")";
}

void RunMusicXml(const MusicXmlOptions& options) {
  const ScoreInput input(options.file, options.lenient);
  const std::string& path = input.path();
  MusicXmlEventPrinter printer(std::cout, options.json, options.part, options.ticks);
  MusicXmlParser parser;
  parser.setMidiTicksPerQuarter(options.ticks);
  parser.setValidatesDocumentType(!options.lenient);
  AlertCounter alerts;
  TMusicXmlError error;
  if (!parser.parseURL(path, &printer, &error)) throw InputError(ErrorText(options.file, error));
  if (!options.midi.empty()) {
    std::string midiError;
    if (!WriteMidiFile(printer.Song(), options.midi, midiError)) throw InputError(midiError);
  }
  if (alerts.count > 0 && !options.lenient) {
    throw InputError(options.file + ": the import reported " + std::to_string(alerts.count) +
                     (alerts.count == 1 ? " problem" : " problems") + " (--lenient accepts them)");
  }
}

const CommandRegistration kRegistration{
    66, [](CLI::App& app) {
      auto options = std::make_shared<MusicXmlOptions>();
      CLI::App* cmd = app.add_subcommand(
          "musicxml", "Import a MusicXML score and print the events a host receives");
      cmd->add_option("FILE", options->file,
                      "MusicXML file (.musicxml, .xml, or compressed .mxl; - reads standard input)")
          ->required();
      cmd->add_flag("--json", options->json, "Print one JSON object per event");
      cmd->add_option("--part", options->part, "Print only the events of this part (its id, e.g. P1)");
      cmd->add_option("--midi", options->midi, "Write the notes as a standard MIDI file (format 1)");
      AddIntegerOption(cmd, "--ticks", options->ticks, 1, 32767,
                       "MIDI ticks per quarter note (default 960)");
      cmd->add_flag("--lenient", options->lenient,
                    "Read scores that are not valid against their document type, and compressed "
                    "files whose container cannot be read");
      cmd->footer(
          "Positions and lengths are MIDI ticks. A tied note is one event at the tie's start\n"
          "with its whole length. Strictly, a score that declares a document type must be valid\n"
          "against it, and a compressed file's container must name its root file.");
      cmd->callback([options] { RunMusicXml(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
