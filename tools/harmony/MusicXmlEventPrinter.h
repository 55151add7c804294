#pragma once
// The host side of the MusicXML event import for the tool: every event as a line of text or
// of JSON, in document order, optionally for one part only, and the notes, tempi and time
// signatures gathered for a MIDI file.

#include <ostream>
#include <string>

#include <nlohmann/json.hpp>

#include "MidiFile.h"
#include "harmony/musicxml/MusicXmlParserDelegate.h"
#include "harmony/musicxml/MuxmlSigns.h"

namespace harmony::tool {

class MusicXmlEventPrinter : public MusicXmlParserDelegate {
 public:
  MusicXmlEventPrinter(std::ostream& out, bool json, std::string onlyPart, int ticksPerQuarter);

  void didEncounterDocumentStartWithProgressBarInfo(const TMuxmlProgressBarInfo* info) override;
  void didEncounterDocumentEnd() override;
  void didEncounterPartStart(const CMuxmlPart* part) override;
  void didEncounterPartEnd(const CMuxmlPartGatheredInfo* info) override;
  void didEncounterMeasureStart(std::int64_t positionAsMidiTicks) override;
  void didEncounterMeasureEnd(const CMuxmlMeasure* measure) override;
  void didEncounterSignTime(const CMuxmlSignTime* signTime) override;
  void didEncounterSignKey(const CMuxmlSignKey* signKey) override;
  void didEncounterClef(const CMuxmlClef* clef) override;
  void didEncounterTranspose(const CMuxmlTranspose* transpose) override;
  void didEncounterTempoChange(const CMuxmlTempoChange* tempoChange) override;
  void didEncounterNote(const CMuxmlNote* note) override;
  void didEncounterDirection(const CPositionedXMLElement& direction) override;

  const TMidiSong& Song() const { return _song; }
  std::size_t NoteCount() const { return _notes; }

 private:
  // Whether events of the current part are shown.
  bool Shown() const;
  // One event: a text line ("kind  part  tick  details") or a JSON object.
  void Line(const std::string& kind, std::int64_t tick, const std::string& text,
            nlohmann::json members);

  std::ostream& _out;
  bool _json;
  std::string _onlyPart;
  std::string _part;
  CMuxmlSignKey _signKey;
  TMidiSong _song;
  std::size_t _notes = 0;
};

}  // namespace harmony::tool
