#pragma once
// A host for the tests of the MusicXML event import: it keeps every event it receives, in
// order, and runs imports of files and of scores written inline.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "harmony/musicxml/MusicXmlContext.h"
#include "harmony/musicxml/MusicXmlParser.h"
#include "harmony/musicxml/MuxmlMeasure.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/MuxmlPart.h"
#include "harmony/musicxml/MuxmlPartGatheredInfo.h"
#include "harmony/musicxml/PositionedXMLElement.h"

namespace harmony::testing {

class ImportRecorder : public MusicXmlParserDelegate {
 public:
  // The events the host says it implements; all when empty.
  std::set<TMusicXmlEvent> implemented;

  std::vector<std::string> events;  // the kinds in order
  std::int32_t partCount = -1;
  std::vector<CMuxmlPart> parts;
  std::vector<CMuxmlPartGatheredInfo> partEnds;
  std::vector<std::int64_t> measureStarts;
  std::vector<CMuxmlMeasure> measures;
  std::vector<CMuxmlSignTime> times;
  std::vector<CMuxmlSignKey> keys;
  std::vector<CMuxmlClef> clefs;
  std::vector<CMuxmlTranspose> transposes;
  std::vector<CMuxmlTempoChange> tempos;
  std::vector<CMuxmlNote> notes;
  std::vector<CPositionedXMLElement> directions;

  bool RespondsToEvent(TMusicXmlEvent event) const override {
    return implemented.empty() || implemented.count(event) > 0;
  }
  void didEncounterDocumentStartWithProgressBarInfo(const TMuxmlProgressBarInfo* info) override {
    events.push_back("document");
    partCount = info->mScorePartCount;
  }
  void didEncounterDocumentEnd() override { events.push_back("end"); }
  void didEncounterPartStart(const CMuxmlPart* part) override {
    events.push_back("part");
    parts.push_back(*part);
  }
  void didEncounterPartEnd(const CMuxmlPartGatheredInfo* info) override {
    events.push_back("part end");
    partEnds.push_back(*info);
  }
  void didEncounterMeasureStart(std::int64_t position) override {
    events.push_back("bar");
    measureStarts.push_back(position);
  }
  void didEncounterMeasureEnd(const CMuxmlMeasure* measure) override {
    events.push_back("bar end");
    measures.push_back(*measure);
  }
  void didEncounterSignTime(const CMuxmlSignTime* signTime) override {
    events.push_back("time");
    times.push_back(*signTime);
  }
  void didEncounterSignKey(const CMuxmlSignKey* signKey) override {
    events.push_back("key");
    keys.push_back(*signKey);
  }
  void didEncounterClef(const CMuxmlClef* clef) override {
    events.push_back("clef");
    clefs.push_back(*clef);
  }
  void didEncounterTranspose(const CMuxmlTranspose* transpose) override {
    events.push_back("transpose");
    transposes.push_back(*transpose);
  }
  void didEncounterTempoChange(const CMuxmlTempoChange* tempo) override {
    events.push_back("tempo");
    tempos.push_back(*tempo);
  }
  void didEncounterNote(const CMuxmlNote* note) override {
    events.push_back("note");
    notes.push_back(*note);
  }
  void didEncounterDirection(const CPositionedXMLElement& direction) override {
    events.push_back("direction");
    directions.push_back(direction);
  }

  // The notes as (position, length, note number), the form most tests compare.
  std::vector<std::vector<long>> NoteTriples() const {
    std::vector<std::vector<long>> triples;
    for (const CMuxmlNote& note : notes) {
      triples.push_back({note.mPositionAsMidiTicks, note.mLengthAsMidiTicks, note.mNoteNr});
    }
    return triples;
  }
};

struct TImport {
  bool ok = false;
  TMusicXmlError error;
};

inline TImport ImportFile(const std::string& path, ImportRecorder& recorder,
                          bool validate = true) {
  MusicXmlParser parser;
  parser.setValidatesDocumentType(validate);
  TImport result;
  result.ok = parser.parseURL(path, &recorder, &result.error);
  return result;
}

// Writes `xml` to a temporary file named with `extension` and imports it.
inline TImport ImportText(const std::string& xml, ImportRecorder& recorder,
                          const std::string& extension = ".musicxml") {
  const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                     ("harmony-import-" + std::to_string(::getpid()) + extension);
  std::ofstream(path, std::ios::binary) << xml;
  const TImport result = ImportFile(path.string(), recorder);
  std::filesystem::remove(path);
  return result;
}

}  // namespace harmony::testing
