#include "harmony/musicxml/MuxmlMeasure.h"

#include "musicxml/MuxmlRead.h"
#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

void CMuxmlMeasure::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadString(attributes, "number", mNumber);
}

namespace {

template <class TFields>
void WriteMeasureFields(const CMuxmlMeasure& m, TFields&& fields) {
  fields("mPositionAsMidiTicks", m.mPositionAsMidiTicks)(
      "mEndPositionAsMidiTicks", m.mEndPositionAsMidiTicks)("mMeasureXML", m.mMeasureXML)(
      "mNumber", m.mNumber)("mDivisions", m.mDivisions)("mStaves", m.mStaves)(
      "mInstruments", m.mInstruments)("mBarlineXMLs", m.mBarlineXMLs);
}

}  // namespace

void CMuxmlMeasure::WriteTrace(std::ostream& out) const {
  out << "CMuxmlMeasure: ";
  WriteMeasureFields(*this, TMuxmlFieldOut(out, " "));
}

void CMuxmlMeasure::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlMeasure: ";
  TMuxmlFieldOut(out, " ")("number", mNumber)("position", mPositionAsMidiTicks)(
      "end", mEndPositionAsMidiTicks);
}

void CMuxmlMeasure::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlMeasure{";
  WriteMeasureFields(*this, TMuxmlFieldOut(out, " = "));
  out << '}';
}

}  // namespace harmony
