#pragma once
// The chord symbols of a MusicXML file as a song: the harmony import reads the `harmony`
// elements with the keys, time signatures and repeat structure around them, then plays the
// repeats, endings, D.S. and coda out, so that every chord stands at its position in quarter
// notes from the song's start.
//
// A chord's length is, as the import has always read it, the last `duration` in its bar
// after it, which is that of the bar's last note (or backup or forward), not the time until
// the next chord; positions add those lengths up, and bars without a chord add nothing.

#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/analysis/HarmCopy.h"
#include "harmony/musicxml/MusicXMLHarmony.h"

namespace harmony {

struct TMusicXMLTimeSignature {
  double Position = 0.0;  // quarter notes in song time
  std::int32_t Beats = -1;
  std::int32_t BeatType = -1;

  bool operator==(const TMusicXMLTimeSignature& other) const = default;
};

// A rehearsal mark reached while the song is played out.
struct CHarmSection {
  double Position = 0.0;
  bool Spare1 = false;  // carried; the import sets it to false
  bool Spare2 = true;   // carried; the import sets it to true
  bool IsFirstSection = false;
};

// A bar line record; the import leaves the list empty.
struct CHarmBarline {
  double Position = 0.0;
};

// One `measure` as read, before the repeats are played out.
struct TMusicXMLMeasure {
  std::vector<TMusicXMLHarmony> Harmonies;
  std::vector<std::string> Words;  // repeat counts such as "3x"
  double SpareDouble = std::numeric_limits<double>::lowest();
  std::int32_t Beats = -1;
  std::int32_t BeatType = -1;
  std::int32_t Rehearsal = 0;
  bool RepeatForward = false;
  bool RepeatBackward = false;
  bool Segno = false;
  bool Coda = false;
  bool DalSegnoAlCoda = false;
  bool Slash = false;
  std::int32_t KeyIndex = -1;     // into HarmSignKeys of the document
  std::int32_t EndingNumber = 0;  // set by an ending of type "discontinue" only
  std::int32_t RepeatTimes = 1;
};

// Where and why a MusicXML import stopped.
struct TMusicXMLParseError {
  int Code = 0;
  std::string Description;
  long Line = 0;
  long Column = 0;
};

class TMusicXMLDoc : public TraceFamily<TMusicXMLDoc> {
 public:
  std::string Title;
  // First the keys of the file in order, without positions; then those placed while the
  // repeats were played out, where the key changes.
  CHarmAnlsSignKeys HarmSignKeys;
  std::vector<TMusicXMLHarmony> Harmonies;
  // Indices into Harmonies where a bar marked with the word "/" begins.
  std::vector<std::uint64_t> ChordSequences;
  std::vector<TMusicXMLTimeSignature> TimeSignatures;
  std::vector<CHarmSection> HarmSections;
  // One per jump back: at the position of the jump, the number of bars played again in both
  // SourceOffsetBars and LengthBars.
  CHarmCopies HarmCopies;
  std::vector<CHarmBarline> HarmBarlines;

  void clear();

  // Reads a plain MusicXML file (a compressed one is no XML to the parser). True when the
  // parser reported no error; the document holds what was read up to an error either way,
  // and `error`, when given, tells the error.
  bool LoadFromMusicXMLFile(const std::string& path, TMusicXMLParseError* error = nullptr);
  // The same from the bytes of a file.
  bool LoadFromMusicXMLBytes(std::string_view bytes, TMusicXMLParseError* error = nullptr);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
