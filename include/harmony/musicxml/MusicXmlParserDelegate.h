#pragma once
// What a host receives from the event import of a MusicXML file: one call per event, in
// document order, on the importing thread. Every event does nothing unless the host overrides
// it. Records come by pointer and are valid during the call only.
//
// A host tells which events it implements through RespondsToEvent (all, by default). The
// importer asks before each event; the clef event goes out when the host implements the key
// event, whatever it says about clefs, as importers have always done.

#include <cstdint>
#include <string>

namespace harmony {

class CMuxmlPart;
class CMuxmlPartGatheredInfo;
class CMuxmlMeasure;
class CMuxmlSignTime;
class CMuxmlSignKey;
class CMuxmlClef;
class CMuxmlTranspose;
class CMuxmlNote;
class CPositionedXMLElement;

// The size of the import ahead, for a progress bar: the number of parts the score lists.
struct TMuxmlProgressBarInfo {
  std::int32_t mScorePartCount = 0;
};

// A tempo given by a `sound` element, in quarter notes per minute.
struct CMuxmlTempoChange {
  std::int32_t mPositionAsMidiTicks = 0;
  float mTempo = 0.0f;
};

enum class TMusicXmlEvent : std::uint8_t {
  kDocumentStart,
  kDocumentEnd,
  kPartStart,
  kPartEnd,
  kMeasureStart,
  kMeasureEnd,
  kSignTime,
  kSignKey,
  kClef,
  kTranspose,
  kTempoChange,
  kInstrumentWithName,
  kNote,
  kDirection,
  kCtrChangePedal,
  kCtrChangeVol,
  kCtrChangeBank,
  kCtrChangePrg,
};

class MusicXmlParserDelegate {
 public:
  virtual ~MusicXmlParserDelegate() = default;

  // Whether the host implements the event; events it does not implement are dropped.
  virtual bool RespondsToEvent(TMusicXmlEvent /*event*/) const { return true; }

  virtual void didEncounterDocumentStartWithProgressBarInfo(const TMuxmlProgressBarInfo* /*info*/) {}
  virtual void didEncounterDocumentEnd() {}
  virtual void didEncounterPartStart(const CMuxmlPart* /*part*/) {}
  // The part's gathered information is reset right after the call.
  virtual void didEncounterPartEnd(const CMuxmlPartGatheredInfo* /*info*/) {}
  virtual void didEncounterMeasureStart(std::int64_t /*positionAsMidiTicks*/) {}
  virtual void didEncounterMeasureEnd(const CMuxmlMeasure* /*measure*/) {}
  virtual void didEncounterSignTime(const CMuxmlSignTime* /*signTime*/) {}
  virtual void didEncounterSignKey(const CMuxmlSignKey* /*signKey*/) {}
  virtual void didEncounterClef(const CMuxmlClef* /*clef*/) {}
  virtual void didEncounterTranspose(const CMuxmlTranspose* /*transpose*/) {}
  virtual void didEncounterTempoChange(const CMuxmlTempoChange* /*tempoChange*/) {}
  // Declared for hosts; the import never sends it.
  virtual void didEncounterInstrumentWithName(const std::string& /*name*/,
                                              std::uint8_t /*midiChannel*/) {}
  // Once per sounding note, after the pieces of a tie have been merged.
  virtual void didEncounterNote(const CMuxmlNote* /*note*/) {}
  virtual void didEncounterDirection(const CPositionedXMLElement& /*direction*/) {}
  // Declared for hosts; the import never sends them. Pedal, volume, bank and program reach a
  // host through the direction elements.
  virtual void didEncounterCtrChangePedal(std::int64_t /*positionAsMidiTicks*/,
                                          std::int32_t /*pedalType*/, std::uint8_t /*value*/) {}
  virtual void didEncounterCtrChangeVol(std::int64_t /*positionAsMidiTicks*/,
                                        std::uint8_t /*midiChannel*/, std::uint8_t /*value*/) {}
  virtual void didEncounterCtrChangeBank(std::int64_t /*positionAsMidiTicks*/,
                                         std::uint8_t /*midiChannel*/, std::uint8_t /*value*/) {}
  virtual void didEncounterCtrChangePrg(std::int64_t /*positionAsMidiTicks*/,
                                        std::uint8_t /*midiChannel*/, std::uint8_t /*value*/) {}
};

}  // namespace harmony
