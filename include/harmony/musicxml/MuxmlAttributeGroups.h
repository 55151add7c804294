#pragma once
// The attribute groups MusicXML repeats on many elements, as bases of the records: the
// position relative to the default layout, the colour, the font and the look of a line.
// The import never looks at them; they are there for a host that draws what it imports.
// Each ReadFromAttributes sets the fields whose attributes the element has and keeps the
// others.

#include <cstdint>
#include <string>

#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLAttributes.h"

namespace harmony {

// "default-x", "default-y", "relative-x", "relative-y", in tenths of a staff space.
class CMuxmlXY {
 public:
  float mDefaultX = 0.0f;
  float mDefaultY = 0.0f;
  float mRelativeX = 0.0f;
  float mRelativeY = 0.0f;

  void ReadFromAttributes(const CXMLAttributes& attributes);
};

// The position and "color". The colour is the integer reading of the attribute's text, so a
// colour written the usual way, "#RRGGBB", reads as 0.
class CMuxmlXYColor : public CMuxmlXY {
 public:
  std::int32_t mColor = kMuxmlUndef32;

  void ReadFromAttributes(const CXMLAttributes& attributes);
};

// "font-family", "font-style", "font-size" (points), "font-weight".
class CMuxmlFont {
 public:
  std::string mFontFamily;
  TMuxmlEnum_FontStyle::TType mFontStyle = MuxmlEnumUndef<TMuxmlEnum_FontStyle>();
  float mFontSize = 0.0f;
  TMuxmlEnum_FontWeight::TType mFontWeight = MuxmlEnumUndef<TMuxmlEnum_FontWeight>();

  void ReadFromAttributes(const CXMLAttributes& attributes);
};

class CMuxmlFontAndColor : public CMuxmlFont {
 public:
  std::int32_t mColor = kMuxmlUndef32;

  void ReadFromAttributes(const CXMLAttributes& attributes);
};

// "line-shape", "line-type", "dash-length", "space-length".
class CMuxmlLine {
 public:
  TMuxmlEnum_LineShape::TType mLineShape = MuxmlEnumUndef<TMuxmlEnum_LineShape>();
  TMuxmlEnum_LineType::TType mLineType = MuxmlEnumUndef<TMuxmlEnum_LineType>();
  float mDashLength = 0.0f;
  float mSpaceLength = 0.0f;

  void ReadFromAttributes(const CXMLAttributes& attributes);
};

}  // namespace harmony
