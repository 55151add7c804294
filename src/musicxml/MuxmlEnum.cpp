#include "harmony/musicxml/MuxmlEnum.h"

#include <initializer_list>
#include <utility>

namespace harmony {

namespace {

template <class TEnum>
using TWord = std::pair<const char*, typename TEnum::TType>;

// Built once under the runtime's guard for local statics, read-only afterwards.
template <class TEnum>
const typename TEnum::TBiMap& BuildOnce(std::initializer_list<TWord<TEnum>> words) {
  static const typename TEnum::TBiMap table = [words] {
    typename TEnum::TBiMap built;
    for (const auto& [word, value] : words) built.insert({word, value});
    return built;
  }();
  return table;
}

}  // namespace

const TMuxmlEnum_YesNo::TBiMap& TMuxmlEnum_YesNo::GetBiMap() {
  return BuildOnce<TMuxmlEnum_YesNo>({{"yes", kYes}, {"no", kNo}});
}

const TMuxmlEnum_StartStop::TBiMap& TMuxmlEnum_StartStop::GetBiMap() {
  return BuildOnce<TMuxmlEnum_StartStop>(
      {{"start", kStart}, {"stop", kStop}, {"continue", kContinue}});
}

const TMuxmlEnum_Stem::TBiMap& TMuxmlEnum_Stem::GetBiMap() {
  return BuildOnce<TMuxmlEnum_Stem>(
      {{"none", kNone}, {"down", kDown}, {"up", kUp}, {"double", kDouble}});
}

const TMuxmlEnum_Step::TBiMap& TMuxmlEnum_Step::GetBiMap() {
  return BuildOnce<TMuxmlEnum_Step>(
      {{"A", kA}, {"B", kB}, {"C", kC}, {"D", kD}, {"E", kE}, {"F", kF}, {"G", kG}});
}

const TMuxmlEnum_NoteType::TBiMap& TMuxmlEnum_NoteType::GetBiMap() {
  return BuildOnce<TMuxmlEnum_NoteType>({{"undefined", kUndefined},
                                         {"pitched", kPitched},
                                         {"unpitched", kUnpitched},
                                         {"rest", kRest}});
}

const TMuxmlEnum_NoteTypeValue::TBiMap& TMuxmlEnum_NoteTypeValue::GetBiMap() {
  return BuildOnce<TMuxmlEnum_NoteTypeValue>({{"1024th", k1024th},
                                              {"512th", k512th},
                                              {"256th", k256th},
                                              {"128th", k128th},
                                              {"64th", k64th},
                                              {"32nd", k32nd},
                                              {"16th", k16th},
                                              {"eighth", kEighth},
                                              {"quarter", kQuarter},
                                              {"half", kHalf},
                                              {"whole", kWhole},
                                              {"breve", kBreve},
                                              {"long", kLong},
                                              {"maxima", kMaxima},
                                              {"undef (does not occur in MusicXml)", kUndef}});
}

const TMuxmlEnum_SymbolSize::TBiMap& TMuxmlEnum_SymbolSize::GetBiMap() {
  return BuildOnce<TMuxmlEnum_SymbolSize>({{"full", kFull}, {"cue", kCue}, {"large", kLarge}});
}

const TMuxmlEnum_FontStyle::TBiMap& TMuxmlEnum_FontStyle::GetBiMap() {
  return BuildOnce<TMuxmlEnum_FontStyle>({{"normal", kNormal}, {"italic", kItalic}});
}

const TMuxmlEnum_FontWeight::TBiMap& TMuxmlEnum_FontWeight::GetBiMap() {
  return BuildOnce<TMuxmlEnum_FontWeight>({{"normal", kNormal}, {"bold", kBold}});
}

const TMuxmlEnum_AboveBelow::TBiMap& TMuxmlEnum_AboveBelow::GetBiMap() {
  return BuildOnce<TMuxmlEnum_AboveBelow>({{"above", kAbove}, {"below", kBelow}});
}

const TMuxmlEnum_Accidental::TBiMap& TMuxmlEnum_Accidental::GetBiMap() {
  return BuildOnce<TMuxmlEnum_Accidental>({{"natural", kNatural},
                                           {"sharp", kSharp},
                                           {"flat", kFlat},
                                           {"double-sharp", kDoubleSharp},
                                           {"flat-flat", kFlatFlat}});
}

const TMuxmlEnum_FermataShape::TBiMap& TMuxmlEnum_FermataShape::GetBiMap() {
  return BuildOnce<TMuxmlEnum_FermataShape>(
      {{"normal", kNormal}, {"angled", kAngled}, {"square", kSquare}});
}

const TMuxmlEnum_UprightInverted::TBiMap& TMuxmlEnum_UprightInverted::GetBiMap() {
  return BuildOnce<TMuxmlEnum_UprightInverted>({{"upright", kUpright}, {"inverted", kInverted}});
}

const TMuxmlEnum_LineShape::TBiMap& TMuxmlEnum_LineShape::GetBiMap() {
  return BuildOnce<TMuxmlEnum_LineShape>({{"straight", kStraight}, {"curved", kCurved}});
}

const TMuxmlEnum_LineType::TBiMap& TMuxmlEnum_LineType::GetBiMap() {
  return BuildOnce<TMuxmlEnum_LineType>(
      {{"solid", kSolid}, {"dashed", kDashed}, {"dotted", kDotted}, {"wavy", kWavy}});
}

const TMuxmlEnum_SignKeyMode::TBiMap& TMuxmlEnum_SignKeyMode::GetBiMap() {
  return BuildOnce<TMuxmlEnum_SignKeyMode>({{"major", kMajor},
                                            {"minor", kMinor},
                                            {"dorian", kDorian},
                                            {"phrygian", kPhrygian},
                                            {"lydian", kLydian},
                                            {"mixolydian", kMixolydian},
                                            {"aeolian", kAeolian},
                                            {"ionian", kIonian},
                                            {"locrian", kLocrian},
                                            {"none", kNone}});
}

const TMuxmlEnum_ClefSign::TBiMap& TMuxmlEnum_ClefSign::GetBiMap() {
  return BuildOnce<TMuxmlEnum_ClefSign>({{"G", kG},
                                         {"F", kF},
                                         {"C", kC},
                                         {"percussion", kPercussion},
                                         {"TAB", kTAB},
                                         {"jianpu", kJianpu},
                                         {"none", kNone}});
}

const TMuxmlEnum_ShowTuplet::TBiMap& TMuxmlEnum_ShowTuplet::GetBiMap() {
  return BuildOnce<TMuxmlEnum_ShowTuplet>({{"actual", kActual}, {"both", kBoth}, {"none", kNone}});
}

const TMuxmlEnum_EnclosureShape::TBiMap& TMuxmlEnum_EnclosureShape::GetBiMap() {
  return BuildOnce<TMuxmlEnum_EnclosureShape>({{"square", kSquare},
                                               {"oval", kOval},
                                               {"circle", kCircle},
                                               {"bracket", kBracket},
                                               {"triangle", kTriangle},
                                               {"diamond", kDiamond},
                                               {"none", kNone}});
}

const TMuxmlEnum_LeftCenterRight::TBiMap& TMuxmlEnum_LeftCenterRight::GetBiMap() {
  return BuildOnce<TMuxmlEnum_LeftCenterRight>(
      {{"left", kLeft}, {"center", kCenter}, {"right", kRight}});
}

}  // namespace harmony
