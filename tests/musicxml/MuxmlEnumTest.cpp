// The vocabularies of MusicXML both ways: every word to its value and back, words the file
// format doesn't have, and words in the wrong case.

#include "harmony/musicxml/MuxmlEnum.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace harmony {
namespace {

constexpr std::int32_t kAbsent = -7;

template <class TEnum>
void ExpectTable(const std::vector<std::pair<std::string, int>>& expected) {
  EXPECT_EQ(TEnum::GetBiMap().size(), expected.size());
  for (const auto& [word, value] : expected) {
    EXPECT_EQ(MuxmlEnumValue<TEnum>(word, kAbsent), value) << word;
    EXPECT_EQ(MuxmlEnumWord<TEnum>(static_cast<typename TEnum::TType>(value)), word) << value;
  }
  EXPECT_EQ(MuxmlEnumValue<TEnum>("", kAbsent), kAbsent);
  EXPECT_EQ(MuxmlEnumValue<TEnum>("no-such-word", kAbsent), kAbsent);
  EXPECT_EQ(MuxmlEnumWord<TEnum>(static_cast<typename TEnum::TType>(kAbsent)), "");
}

TEST(MuxmlEnum, EveryWordReadsAsItsValueAndBack) {
  ExpectTable<TMuxmlEnum_YesNo>({{"yes", 0}, {"no", 1}});
  ExpectTable<TMuxmlEnum_StartStop>({{"start", 1}, {"stop", 2}, {"continue", 3}});
  ExpectTable<TMuxmlEnum_Stem>({{"none", 0}, {"down", 1}, {"up", 2}, {"double", 3}});
  ExpectTable<TMuxmlEnum_Step>(
      {{"A", 5}, {"B", 6}, {"C", 0}, {"D", 1}, {"E", 2}, {"F", 3}, {"G", 4}});
  ExpectTable<TMuxmlEnum_NoteType>(
      {{"undefined", 0}, {"pitched", 1}, {"unpitched", 2}, {"rest", 3}});
  ExpectTable<TMuxmlEnum_NoteTypeValue>({{"1024th", 0},
                                         {"512th", 1},
                                         {"256th", 2},
                                         {"128th", 3},
                                         {"64th", 4},
                                         {"32nd", 5},
                                         {"16th", 6},
                                         {"eighth", 7},
                                         {"quarter", 8},
                                         {"half", 9},
                                         {"whole", 10},
                                         {"breve", 11},
                                         {"long", 12},
                                         {"maxima", 13},
                                         {"undef (does not occur in MusicXml)", 14}});
  ExpectTable<TMuxmlEnum_SymbolSize>({{"full", 0}, {"cue", 1}, {"large", 2}});
  ExpectTable<TMuxmlEnum_FontStyle>({{"normal", 0}, {"italic", 1}});
  ExpectTable<TMuxmlEnum_FontWeight>({{"normal", 0}, {"bold", 1}});
  ExpectTable<TMuxmlEnum_AboveBelow>({{"above", 0}, {"below", 1}});
  ExpectTable<TMuxmlEnum_Accidental>(
      {{"natural", 0}, {"sharp", 1}, {"flat", 2}, {"double-sharp", 3}, {"flat-flat", 4}});
  ExpectTable<TMuxmlEnum_FermataShape>({{"normal", 0}, {"angled", 1}, {"square", 2}});
  ExpectTable<TMuxmlEnum_UprightInverted>({{"upright", 0}, {"inverted", 1}});
  ExpectTable<TMuxmlEnum_LineShape>({{"straight", 0}, {"curved", 1}});
  ExpectTable<TMuxmlEnum_LineType>({{"solid", 0}, {"dashed", 1}, {"dotted", 2}, {"wavy", 3}});
  ExpectTable<TMuxmlEnum_SignKeyMode>({{"major", 0},
                                       {"minor", 1},
                                       {"dorian", 2},
                                       {"phrygian", 3},
                                       {"lydian", 4},
                                       {"mixolydian", 5},
                                       {"aeolian", 6},
                                       {"ionian", 7},
                                       {"locrian", 8},
                                       {"none", 9}});
  ExpectTable<TMuxmlEnum_ClefSign>(
      {{"G", 0}, {"F", 1}, {"C", 2}, {"percussion", 3}, {"TAB", 4}, {"jianpu", 5}, {"none", 6}});
  ExpectTable<TMuxmlEnum_ShowTuplet>({{"actual", 0}, {"both", 1}, {"none", 2}});
  ExpectTable<TMuxmlEnum_EnclosureShape>({{"square", 0},
                                          {"oval", 1},
                                          {"circle", 2},
                                          {"bracket", 3},
                                          {"triangle", 4},
                                          {"diamond", 5},
                                          {"none", 6}});
  ExpectTable<TMuxmlEnum_LeftCenterRight>({{"left", 0}, {"center", 1}, {"right", 2}});
}

TEST(MuxmlEnum, WordsAreComparedExactly) {
  EXPECT_EQ(MuxmlEnumValue<TMuxmlEnum_Step>("c", -1), -1) << "steps are capitals";
  EXPECT_EQ(MuxmlEnumValue<TMuxmlEnum_ClefSign>("g", kAbsent), kAbsent);
  EXPECT_EQ(MuxmlEnumValue<TMuxmlEnum_ClefSign>("tab", kAbsent), kAbsent);
  EXPECT_EQ(MuxmlEnumValue<TMuxmlEnum_YesNo>("Yes", kAbsent), kAbsent);
  EXPECT_EQ(MuxmlEnumValue<TMuxmlEnum_YesNo>(" yes", kAbsent), kAbsent);
  // The fallback can be a value of the table itself: a reader keeps what a record holds.
  EXPECT_EQ(MuxmlEnumValue<TMuxmlEnum_Stem>("sideways", TMuxmlEnum_Stem::kUp),
            TMuxmlEnum_Stem::kUp);
}

}  // namespace
}  // namespace harmony
