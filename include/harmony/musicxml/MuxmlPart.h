#pragma once
// A part of the score as a host receives it when the part starts: its names from the part
// list and the instruments that play it, with their sounds ("strings.violin", "brass.horn").

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

class CMuxmlScoreInstrument : public TraceFamily<CMuxmlScoreInstrument> {
 public:
  std::string mID;
  std::string mInstName;
  std::string mInstAbbreviation;
  // The sound's identifier, family first ("strings.violin"), lowered.
  std::string mInstSound;
  CXMLElement mInstrumentXML;

  // The family of the sound, before the first ".", lowered; "" for a sound without ".".
  std::string InstSoundGroup() const;
  bool InstSoundGroupIsStrings() const;
  bool InstSoundGroupIsPitchedPrc() const;
  // True for "pitched-percussion" too, which contains the word.
  bool InstSoundGroupIsPrc() const;
  // The best description there is: the sound, else the name (unless it is the generic
  // name of a notation program's built-in synthesizer), else the abbreviation, else "".
  std::string InstSoundAndIfNotExistsYieldToBest() const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CMuxmlScoreInstruments : public std::vector<CMuxmlScoreInstrument> {
 public:
  using std::vector<CMuxmlScoreInstrument>::vector;

  // The first instrument with this id, or end().
  const_iterator FindForID(std::string_view id) const;
  // The first instrument with this name or abbreviation, or end().
  const_iterator FindByInstNameOrAbbrevation(std::string_view name) const;
};

// The record of a part's start.
class CMuxmlPart : public TraceFamily<CMuxmlPart> {
 public:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::int32_t mScoreInstrumentCount = 0;
  std::string mPartID;
  std::string mPartName;
  std::string mPartNameDisplay;
  std::string mPartAbbreviation;
  std::string mPartAbbreviationDisplay;
  CMuxmlScoreInstruments mInstruments;
  bool mHasStringsInstrument = false;
  CXMLElement mPartXML;

  // The first name the part has, display names before plain ones and names before
  // abbreviations, else the first description of its instruments, else "".
  std::string FindBestPartName() const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
