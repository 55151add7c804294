#include "harmony/musicxml/MuxmlAttributeGroups.h"

#include "musicxml/MuxmlRead.h"

namespace harmony {

using namespace musicxml;

void CMuxmlXY::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadFloat(attributes, "default-x", mDefaultX);
  ReadFloat(attributes, "default-y", mDefaultY);
  ReadFloat(attributes, "relative-x", mRelativeX);
  ReadFloat(attributes, "relative-y", mRelativeY);
}

void CMuxmlXYColor::ReadFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlXY::ReadFromAttributes(attributes);
  ReadInt32(attributes, "color", mColor);
}

void CMuxmlFont::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadString(attributes, "font-family", mFontFamily);
  ReadEnum<TMuxmlEnum_FontStyle>(attributes, "font-style", mFontStyle);
  ReadFloat(attributes, "font-size", mFontSize);
  ReadEnum<TMuxmlEnum_FontWeight>(attributes, "font-weight", mFontWeight);
}

void CMuxmlFontAndColor::ReadFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlFont::ReadFromAttributes(attributes);
  ReadInt32(attributes, "color", mColor);
}

void CMuxmlLine::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadEnum<TMuxmlEnum_LineShape>(attributes, "line-shape", mLineShape);
  ReadEnum<TMuxmlEnum_LineType>(attributes, "line-type", mLineType);
  ReadFloat(attributes, "dash-length", mDashLength);
  ReadFloat(attributes, "space-length", mSpaceLength);
}

}  // namespace harmony
