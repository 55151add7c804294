#pragma once
// An element of the score's tree at a place in time: a `direction` (dynamics, tempo words,
// pedal marks) handed to a host at the position where it stands, with the divisions per
// quarter note in force there, so that the host can read its offsets.

#include <cstdint>
#include <ostream>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

class CPositionedXMLElement : public TraceFamily<CPositionedXMLElement> {
 public:
  CPositionedXMLElement() = default;
  CPositionedXMLElement(std::int32_t positionAsMidiTicks, CXMLElement element,
                        std::int32_t currentDivisions) {
    initWithPosition(positionAsMidiTicks, std::move(element), currentDivisions);
  }

  // Undefined position and divisions, no element.
  void init() { *this = CPositionedXMLElement(); }
  void initWithPosition(std::int32_t positionAsMidiTicks, CXMLElement element,
                        std::int32_t currentDivisions) {
    mPositionAsMidiTicks = positionAsMidiTicks;
    mXMLElement = std::move(element);
    mCurrentDivisions = currentDivisions;
  }

  std::int32_t PositionAsMidiTicks() const { return mPositionAsMidiTicks; }
  void setPositionAsMidiTicks(std::int32_t position) { mPositionAsMidiTicks = position; }
  std::int32_t CurrentDivisions() const { return mCurrentDivisions; }
  void setCurrentDivisions(std::int32_t divisions) { mCurrentDivisions = divisions; }
  const CXMLElement& XMLElement() const { return mXMLElement; }
  void setXMLElement(CXMLElement element) { mXMLElement = std::move(element); }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::int32_t mCurrentDivisions = kMuxmlUndef32;
  CXMLElement mXMLElement;
};

}  // namespace harmony
