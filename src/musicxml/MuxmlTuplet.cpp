#include "harmony/musicxml/MuxmlTuplet.h"

#include "musicxml/MuxmlRead.h"

namespace harmony {

using namespace musicxml;

bool CMuxmlTimeModification::IsNoneOrPlainTriplet() const {
  if (mActualNotes == 0 || mNormalNotes == 0) return true;
  return mActualNotes == 3 && mNormalNotes == 2 &&
         mNormalNoteType == TMuxmlEnum_NoteTypeValue::kUndef && mNormalNumberOfDots == 0;
}

void CMuxmlTupletNumber::ReadFromFoundCharactersAndAttributes(std::string_view text,
                                                              const CXMLAttributes& attributes) {
  if (!text.empty()) mTupletNumber = IntValueOfText(text);
  CMuxmlFont::ReadFromAttributes(attributes);
}

void CMuxmlTupletNumber::ReadFromAttributes(const CXMLAttributes&) {}

void CMuxmlTupletType::ReadFromFoundCharactersAndAttributes(std::string_view text,
                                                            const CXMLAttributes&) {
  mTupletType = MuxmlEnumValue<TMuxmlEnum_NoteTypeValue>(text, mTupletType);
}

void CMuxmlTupletType::ReadFromAttributes(const CXMLAttributes&) {}

void CMuxmlTuplet::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadEnum<TMuxmlEnum_StartStop>(attributes, "start-stop", mType);
  ReadInt32(attributes, "number", mNumber);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "bracket", mBracket);
  ReadEnum<TMuxmlEnum_ShowTuplet>(attributes, "show-number", mShowNumber);
  ReadEnum<TMuxmlEnum_ShowTuplet>(attributes, "show-type", mShowTuplet);
  ReadEnum<TMuxmlEnum_LineShape>(attributes, "line-shape", mLineShape);
  ReadEnum<TMuxmlEnum_AboveBelow>(attributes, "placement", mPlacement);
  CMuxmlXY::ReadFromAttributes(attributes);
}

}  // namespace harmony
