#include "harmony/musicxml/PositionedXMLElement.h"

#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

void CPositionedXMLElement::WriteTrace(std::ostream& out) const {
  out << "CPositionedXMLElement: ";
  TMuxmlFieldOut(out, " ")("PositionAsMidiTicks", mPositionAsMidiTicks)(
      "CurrentDivisions", mCurrentDivisions)("XMLElement", mXMLElement);
}

void CPositionedXMLElement::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CPositionedXMLElement::WriteInitializerList(std::ostream& out) const {
  out << "CPositionedXMLElement{";
  TMuxmlFieldOut(out, " = ")("PositionAsMidiTicks", mPositionAsMidiTicks)(
      "CurrentDivisions", mCurrentDivisions)("XMLElement", mXMLElement);
  out << '}';
}

}  // namespace harmony
