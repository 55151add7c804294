#pragma once
// `measure`: one bar of a part, from its start to where the time signature ends it, in MIDI
// ticks, with the divisions, staves and instruments its attributes gave.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLAttributes.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

class CMuxmlMeasure : public TraceFamily<CMuxmlMeasure> {
 public:
  // The number of a bar without a "number" attribute.
  static constexpr std::string_view kNumber_Undef = "_Undef";

  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::int32_t mEndPositionAsMidiTicks = kMuxmlUndef32;
  CXMLElement mMeasureXML;
  // The bar's label as written ("12", "12a", "X1").
  std::string mNumber{kNumber_Undef};
  std::uint64_t mDivisions = 0;
  std::uint64_t mStaves = 0;
  std::uint64_t mInstruments = 0;
  CXMLElements mBarlineXMLs;

  // "number".
  void ReadFromAttributes(const CXMLAttributes& attributes);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
