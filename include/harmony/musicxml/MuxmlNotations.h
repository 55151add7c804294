#pragma once
// What a note carries besides pitch and time: accidental, fermata, articulations, stem and
// the drawn note value. `mExists` tells whether the note has the element at all.
//
// Records of elements with text have ReadFromFoundCharactersAndAttributes (text, attributes):
// the import calls it once with "" when the element starts and once with the element's text.
// A word the vocabulary lacks, "" included, keeps the value the record has, so the first call
// leaves the default and the second fills in the value.

#include "harmony/musicxml/MuxmlAttributeGroups.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLAttributes.h"

#include <string_view>

namespace harmony {

// The groups every notation record starts with, and whether the note has the element.
class CMuxmlNotation : public CMuxmlXYColor, public CMuxmlFont {
 public:
  bool mExists = false;

  void ReadGroupsFromAttributes(const CXMLAttributes& attributes);
};

class CMuxmlAccidental : public CMuxmlNotation {
 public:
  TMuxmlEnum_Accidental::TType mValue = MuxmlEnumUndef<TMuxmlEnum_Accidental>();
  TMuxmlEnum_YesNo::TType mCautionary = MuxmlEnumUndef<TMuxmlEnum_YesNo>();
  TMuxmlEnum_YesNo::TType mEditorial = MuxmlEnumUndef<TMuxmlEnum_YesNo>();
  TMuxmlEnum_YesNo::TType mParentheses = MuxmlEnumUndef<TMuxmlEnum_YesNo>();
  TMuxmlEnum_YesNo::TType mBracket = MuxmlEnumUndef<TMuxmlEnum_YesNo>();

  // The text is the accidental ("sharp", "flat-flat").
  void ReadFromFoundCharactersAndAttributes(std::string_view text,
                                            const CXMLAttributes& attributes);
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

class CMuxmlFermata : public CMuxmlNotation {
 public:
  // Kept for a host; the element's attributes don't fill it.
  TMuxmlEnum_AboveBelow::TType mPlacement = MuxmlEnumUndef<TMuxmlEnum_AboveBelow>();
  TMuxmlEnum_FermataShape::TType mShape = MuxmlEnumUndef<TMuxmlEnum_FermataShape>();
  TMuxmlEnum_UprightInverted::TType mType = MuxmlEnumUndef<TMuxmlEnum_UprightInverted>();

  // The text is the shape ("angled"), the attribute "type" upright or inverted.
  void ReadFromFoundCharactersAndAttributes(std::string_view text,
                                            const CXMLAttributes& attributes);
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

// An articulation that is an empty element with a placement (accent, tenuto, caesura...).
class CMuxmlNotationEmptyPlacement : public CMuxmlNotation {
 public:
  TMuxmlEnum_AboveBelow::TType mPlacement = MuxmlEnumUndef<TMuxmlEnum_AboveBelow>();

  // The element is there: mExists, the groups and "placement".
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

using CMuxmlAccent = CMuxmlNotationEmptyPlacement;
using CMuxmlBreathMark = CMuxmlNotationEmptyPlacement;
using CMuxmlCeasura = CMuxmlNotationEmptyPlacement;
using CMuxmlDetachedLegato = CMuxmlNotationEmptyPlacement;
using CMuxmlStrongAccent = CMuxmlNotationEmptyPlacement;
using CMuxmlTenuto = CMuxmlNotationEmptyPlacement;
using CMuxmlStaccato = CMuxmlNotationEmptyPlacement;
using CMuxmlStaccatissimo = CMuxmlNotationEmptyPlacement;

// The jazz articulations that draw a line into or out of the note (doit, fall-off...).
class CMuxmlArticulationEmptyLine : public CMuxmlNotationEmptyPlacement, public CMuxmlLine {
 public:
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

using CMuxmlDoit = CMuxmlArticulationEmptyLine;
using CMuxmlFallOff = CMuxmlArticulationEmptyLine;
using CMuxmlPlop = CMuxmlArticulationEmptyLine;
using CMuxmlScoop = CMuxmlArticulationEmptyLine;

class CMuxmlStem : public CMuxmlXYColor {
 public:
  bool mExists = false;
  TMuxmlEnum_Stem::TType mValue = MuxmlEnumUndef<TMuxmlEnum_Stem>();

  // The text is the direction; the attributes are not read.
  void ReadFromFoundCharactersAndAttributes(std::string_view text,
                                            const CXMLAttributes& attributes);
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

// The note value as drawn (`type`), which may differ from the sounding duration.
class CMuxmlGraphicalNoteType {
 public:
  bool mExists = false;
  TMuxmlEnum_NoteTypeValue::TType mValue = TMuxmlEnum_NoteTypeValue::kQuarter;
  TMuxmlEnum_SymbolSize::TType mSize = MuxmlEnumUndef<TMuxmlEnum_SymbolSize>();

  // A word that is no note value, "" included, gives a quarter.
  void ReadFromFoundCharactersAndAttributes(std::string_view text,
                                            const CXMLAttributes& attributes);
  void ReadFromAttributes(const CXMLAttributes& attributes);
};

}  // namespace harmony
