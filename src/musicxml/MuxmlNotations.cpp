#include "harmony/musicxml/MuxmlNotations.h"

#include "musicxml/MuxmlRead.h"

namespace harmony {

using namespace musicxml;

void CMuxmlNotation::ReadGroupsFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlXYColor::ReadFromAttributes(attributes);
  CMuxmlFont::ReadFromAttributes(attributes);
}

void CMuxmlAccidental::ReadFromFoundCharactersAndAttributes(std::string_view text,
                                                            const CXMLAttributes& attributes) {
  mExists = true;
  mValue = MuxmlEnumValue<TMuxmlEnum_Accidental>(text, mValue);
  ReadFromAttributes(attributes);
}

void CMuxmlAccidental::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadGroupsFromAttributes(attributes);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "cautionary", mCautionary);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "editorial", mEditorial);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "parentheses", mParentheses);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "bracket", mBracket);
}

void CMuxmlFermata::ReadFromFoundCharactersAndAttributes(std::string_view text,
                                                         const CXMLAttributes& attributes) {
  mExists = true;
  mShape = MuxmlEnumValue<TMuxmlEnum_FermataShape>(text, mShape);
  ReadFromAttributes(attributes);
}

void CMuxmlFermata::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadGroupsFromAttributes(attributes);
  ReadEnum<TMuxmlEnum_UprightInverted>(attributes, "type", mType);
}

void CMuxmlNotationEmptyPlacement::ReadFromAttributes(const CXMLAttributes& attributes) {
  mExists = true;
  ReadGroupsFromAttributes(attributes);
  ReadEnum<TMuxmlEnum_AboveBelow>(attributes, "placement", mPlacement);
}

void CMuxmlArticulationEmptyLine::ReadFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlNotationEmptyPlacement::ReadFromAttributes(attributes);
  CMuxmlLine::ReadFromAttributes(attributes);
}

void CMuxmlStem::ReadFromFoundCharactersAndAttributes(std::string_view text,
                                                      const CXMLAttributes& attributes) {
  mExists = true;
  mValue = MuxmlEnumValue<TMuxmlEnum_Stem>(text, mValue);
  ReadFromAttributes(attributes);
}

void CMuxmlStem::ReadFromAttributes(const CXMLAttributes&) {}

void CMuxmlGraphicalNoteType::ReadFromFoundCharactersAndAttributes(
    std::string_view text, const CXMLAttributes& attributes) {
  mExists = true;
  mValue = MuxmlEnumValue<TMuxmlEnum_NoteTypeValue>(text, TMuxmlEnum_NoteTypeValue::kQuarter);
  ReadFromAttributes(attributes);
}

void CMuxmlGraphicalNoteType::ReadFromAttributes(const CXMLAttributes& attributes) {
  ReadEnum<TMuxmlEnum_SymbolSize>(attributes, "size", mSize);
}

}  // namespace harmony
