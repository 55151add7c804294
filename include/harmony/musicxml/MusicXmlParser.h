#pragma once
// The event import of MusicXML: a file (plain, or compressed with the extension "mxl") read
// into its document tree, checked against its document type, and then walked as a stream of
// events that a host receives through MusicXmlParserDelegate, with positions and lengths in
// MIDI ticks.

#include <cstdint>
#include <optional>
#include <string>

#include "harmony/musicxml/MusicXmlParserDelegate.h"

namespace harmony {

// The extension of compressed MusicXML files.
inline constexpr const char* kMusicXMLFileExtCompressed_mxl = "mxl";

// What a failed import reports: a code (259 for the import's own errors, the XML reader's
// number otherwise), where the code comes from, and a description in the user's language.
// Line and column tell where the XML reader stopped, when it did (0 otherwise).
struct TMusicXmlError {
  int code = 0;
  std::string domain;
  std::string description;
  long line = 0;
  long column = 0;
};

// The error domain of the import's own errors.
inline constexpr const char* kMusicXmlErrorDomain = "org.harmony.MusicXmlParser";

// A flag a host may keep with the parser; the import does not read it.
struct TMusicXmlParserSettings {
  bool mFlag = false;
};

class MusicXmlParser {
 public:
  MusicXmlParser() { init(); }
  void init();

  const TMusicXmlParserSettings& Settings() const { return _settings; }
  void setSettings(const TMusicXmlParserSettings& settings) { _settings = settings; }
  bool Trace() const { return _trace; }
  void setTrace(bool trace) { _trace = trace; }
  std::int32_t MidiTicksPerQuarter() const { return _midiTicksPerQuarter; }
  void setMidiTicksPerQuarter(std::int32_t ticks) { _midiTicksPerQuarter = ticks; }
  MusicXmlParserDelegate* musicXmlParserDelegate() const { return _delegate; }
  void setMusicXmlParserDelegate(MusicXmlParserDelegate* delegate) { _delegate = delegate; }
  // Whether a score that declares a document type must be valid against it (true, as the
  // import has always done). A host that wants to read invalid scores turns it off; the
  // score must still be well-formed XML.
  bool ValidatesDocumentType() const { return _validates; }
  void setValidatesDocumentType(bool validates) { _validates = validates; }

  // The whole import of the file at `location`, delivering its events to `delegate`. False,
  // with `error` set when given, when the file cannot be read or unpacked, is not well-formed
  // or not valid, is not a score, or the parser fails while events are sent.
  bool parseURL(std::string location, MusicXmlParserDelegate* delegate, TMusicXmlError* error);

  // For a location whose extension is exactly "mxl": unpacks the root file its container
  // names into the temporary file "QuillonMusicXMLImport.xml" and points the location there.
  // Nothing for other locations, or the error.
  std::optional<TMusicXmlError> wrapCompressedMusicXMLFile(std::string& location) const;

  // Stores the error for the caller who asked for it; false always, the answer of every
  // failing path of parseURL.
  static bool assignLocalError(const TMusicXmlError& error, TMusicXmlError* outError);

 private:
  TMusicXmlParserSettings _settings;
  bool _trace = false;
  std::int32_t _midiTicksPerQuarter = 960;
  MusicXmlParserDelegate* _delegate = nullptr;
  bool _validates = true;
};

}  // namespace harmony
