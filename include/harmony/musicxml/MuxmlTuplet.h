#pragma once
// Tuplets: the time modification that squeezes notes (three in the time of two), and the
// bracket and numbers that show it. Only `duration` decides a note's time; these records
// tell how the tuplet is written.

#include <cstdint>
#include <string_view>

#include "harmony/musicxml/MuxmlAttributeGroups.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLAttributes.h"

namespace harmony {

// `time-modification`: mActualNotes in the time of mNormalNotes notes of mNormalNoteType
// with mNormalNumberOfDots dots. 0 notes means the note has no modification.
class CMuxmlTimeModification {
 public:
  std::uint64_t mActualNotes = 0;
  std::uint64_t mNormalNotes = 0;
  TMuxmlEnum_NoteTypeValue::TType mNormalNoteType = TMuxmlEnum_NoteTypeValue::kUndef;
  std::uint64_t mNormalNumberOfDots = 0;

  // No modification, or a plain triplet: three in the time of two of the same value.
  bool IsNoneOrPlainTriplet() const;
};

// `tuplet-number` below `tuplet-actual` or `tuplet-normal`.
class CMuxmlTupletNumber : public CMuxmlFontAndColor {
 public:
  std::int32_t mTupletNumber = kMuxmlUndef32;

  // The text is the number; the font attributes are read, the colour isn't.
  void ReadFromFoundCharactersAndAttributes(std::string_view text,
                                            const CXMLAttributes& attributes);
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

// `tuplet-type`: the note value shown beside the number.
class CMuxmlTupletType : public CMuxmlFontAndColor {
 public:
  TMuxmlEnum_NoteTypeValue::TType mTupletType = TMuxmlEnum_NoteTypeValue::kUndef;

  // The text is the note value; no attribute is read.
  void ReadFromFoundCharactersAndAttributes(std::string_view text,
                                            const CXMLAttributes& attributes);
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

class CMuxmlTupletDot : public CMuxmlFontAndColor {};

// What is shown for the actual or for the normal notes.
class CMuxmlTupletPortion {
 public:
  CMuxmlTupletNumber mTupletNumber;
  CMuxmlTupletType mTupletType;
  CMuxmlTupletDot mTupletDot;
};

// `tuplet` in the notations of a note: the start or stop of a bracket.
class CMuxmlTuplet : public CMuxmlXY {
 public:
  TMuxmlEnum_StartStop::TType mType = MuxmlEnumUndef<TMuxmlEnum_StartStop>();
  std::int32_t mNumber = kMuxmlUndef32;
  TMuxmlEnum_YesNo::TType mBracket = MuxmlEnumUndef<TMuxmlEnum_YesNo>();
  TMuxmlEnum_ShowTuplet::TType mShowNumber = MuxmlEnumUndef<TMuxmlEnum_ShowTuplet>();
  TMuxmlEnum_ShowTuplet::TType mShowTuplet = MuxmlEnumUndef<TMuxmlEnum_ShowTuplet>();
  TMuxmlEnum_LineShape::TType mLineShape = MuxmlEnumUndef<TMuxmlEnum_LineShape>();
  TMuxmlEnum_AboveBelow::TType mPlacement = MuxmlEnumUndef<TMuxmlEnum_AboveBelow>();
  CMuxmlTupletPortion mTupletActual;
  CMuxmlTupletPortion mTupletNormal;

  // Start or stop is read from an attribute named "start-stop", "show-type" goes into
  // mShowTuplet.
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

}  // namespace harmony
