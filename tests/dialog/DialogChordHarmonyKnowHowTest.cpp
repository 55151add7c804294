#include "harmony/dialog/DialogChordHarmonyKnowHow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace harmony {
namespace {

constexpr CKeyEnh kC(0, TEnh_n), kD(2, TEnh_n), kFSharp(6, TEnh_s);

const DialogChordHarmonyKnowHow kKnowHow;
const CScaleLite kNoScale;

CChordLite Chord(std::uint64_t mask) { return CChordLite(kC, CSemitones(mask)); }

// One digit per button, the statuses (2 disabled, 3 off, 4 on) or the title ids, in the
// order of the row; also checks that the row numbers its buttons 1, 2, ...
std::string Statuses(const std::vector<TDialogButton>& row) {
  std::string digits;
  for (std::size_t i = 0; i < row.size(); ++i) {
    EXPECT_EQ(row[i].Value, i + 1);
    digits += static_cast<char>('0' + row[i].Status);
  }
  return digits;
}

std::string Titles(const std::vector<TDialogButton>& row) {
  std::string digits;
  for (const TDialogButton& button : row) digits += static_cast<char>('0' + button.TitleID);
  return digits;
}

std::string TypeRow(std::uint64_t mask) {
  return Statuses(kKnowHow.DialogChordTypesFor(Chord(mask), kNoScale));
}
std::string OptionRow(std::uint64_t mask) {
  return Statuses(kKnowHow.DialogChordOptionsFor(Chord(mask), kNoScale));
}

std::uint64_t Pressed(int option, bool on, std::uint64_t mask) {
  return kKnowHow.SetChordFomChangedDialogChordOption(option, on, Chord(mask), kNoScale)
      .Semitones.Word();
}

TEST(DialogChordHarmonyKnowHow, TypeRowLightsTheChordsTriad) {
  EXPECT_EQ(TypeRow(145), "43333333");   // major
  EXPECT_EQ(TypeRow(1169), "43333333");  // a seventh changes nothing
  EXPECT_EQ(TypeRow(137), "34333333");   // minor
  EXPECT_EQ(TypeRow(273), "33433333");   // augmented
  EXPECT_EQ(TypeRow(73), "33343333");    // diminished
  EXPECT_EQ(TypeRow(585), "33343333");   // diminished seventh
  EXPECT_EQ(TypeRow(161), "33334333");   // sus4
  EXPECT_EQ(TypeRow(133), "33333433");   // sus2
  // The power button never lights; a bare fifth is "other".
  EXPECT_EQ(TypeRow(129), "33333334");
  // Minor third over a minor sixth without fifth: a major chord's first inversion.
  EXPECT_EQ(TypeRow(265), "33333334");
  // The same with a flat fifth is diminished, with the fifth minor.
  EXPECT_EQ(TypeRow(329), "33343333");
  EXPECT_EQ(TypeRow(393), "34333333");
  // No tones: no button lit.
  EXPECT_EQ(TypeRow(0), "33333333");

  EXPECT_EQ(DialogChordHarmonyKnowHow::_DialogChordTypeForBasicChord(CSemitones(0)), 0);
  EXPECT_EQ(DialogChordHarmonyKnowHow::_DialogChordTypeForBasicChord(CSemitones(5)), 8);
}

TEST(DialogChordHarmonyKnowHow, OtherButtonTakesItsAlternativeTitleWithoutThirdOrFifth) {
  for (const std::uint64_t mask : {145, 137, 129, 0, 9, 17}) {
    EXPECT_EQ(Titles(kKnowHow.DialogChordTypesFor(Chord(mask), kNoScale)), "11111111") << mask;
  }
  for (const std::uint64_t mask : {1, 5, 33, 1025}) {
    EXPECT_EQ(Titles(kKnowHow.DialogChordTypesFor(Chord(mask), kNoScale)), "11111112") << mask;
  }
}

TEST(DialogChordHarmonyKnowHow, EveryChordWithTonesLightsExactlyOneType) {
  for (std::uint64_t mask = 1; mask < 4096; ++mask) {
    const std::string row = TypeRow(mask);
    EXPECT_EQ(std::count(row.begin(), row.end(), '4'), 1) << mask;
    EXPECT_EQ(row[6], '3') << mask;
  }
}

TEST(DialogChordHarmonyKnowHow, OptionRowOnTheTriads) {
  EXPECT_EQ(OptionRow(145), "333333333333");  // major: everything may be added
  EXPECT_EQ(OptionRow(137), "323333323333");  // minor: no sharp fifth, no sharp ninth
  EXPECT_EQ(OptionRow(73), "423333323233");   // dim: its flat fifth lit, no sharp eleventh
  EXPECT_EQ(OptionRow(273), "243333333323");  // aug: its sharp fifth lit
  EXPECT_EQ(OptionRow(0), "333333333333");
  // sus4 holds the fourth, sus2 the second; without a third neither takes a sharp ninth.
  EXPECT_EQ(OptionRow(161), "333333322233");
  EXPECT_EQ(OptionRow(133), "333332223333");
  EXPECT_EQ(OptionRow(129), "333333323333");
  EXPECT_EQ(OptionRow(81), "423333333233");  // major flat five

  EXPECT_EQ(Titles(kKnowHow.DialogChordOptionsFor(Chord(73), kNoScale)), "112111111111");
  EXPECT_EQ(Titles(kKnowHow.DialogChordOptionsFor(Chord(585), kNoScale)), "112111111111");
  EXPECT_EQ(Titles(kKnowHow.DialogChordOptionsFor(Chord(137), kNoScale)), "111111111111");
}

TEST(DialogChordHarmonyKnowHow, SharedSemitonesAreReadByTheSeventh) {
  // Bit 6: flat fifth alone, sharp eleventh over a seventh.
  EXPECT_EQ(OptionRow(145 + 64).substr(0, 1) + OptionRow(145 + 64).substr(9, 1), "43");
  EXPECT_EQ(OptionRow(1169 + 64).substr(0, 1) + OptionRow(1169 + 64).substr(9, 1), "34");
  // Bit 9: sixth alone, thirteenth over a seventh.
  EXPECT_EQ(OptionRow(657), "334333333333");
  EXPECT_EQ(OptionRow(1681), "333433333334");
  // Beside a minor sixth bit 9 stays a sixth even over a seventh.
  EXPECT_EQ(OptionRow(1681 + 256).substr(2, 1), "4");
  EXPECT_EQ(OptionRow(1681 + 256).substr(10, 2), "43");
  // Bit 8: flat thirteenth outside an augmented triad.
  EXPECT_EQ(OptionRow(1425), "333433333343");
  // Over an augmented triad bit 9 is a thirteenth even without a seventh.
  EXPECT_EQ(OptionRow(273 + 512), "243333333324");
}

TEST(DialogChordHarmonyKnowHow, TypePressSetsThePlainTriadAndKeepsRootAndBass) {
  const CChordLite d9(kD, CSemitones(1173), kFSharp);
  const std::vector<std::uint64_t> masks = {0, 145, 137, 273, 73, 161, 133, 129, 129, 0};
  for (int type = 0; type <= 9; ++type) {
    const CChordLite result = kKnowHow.SetChordFomChangedDialogChordType(type, d9, kNoScale);
    EXPECT_EQ(result.Semitones.Word(), masks[static_cast<std::size_t>(type)]) << type;
    EXPECT_EQ(result.RootKeyEnh, kD);
    EXPECT_EQ(result.BassKeyEnh, kFSharp);
  }
  EXPECT_EQ(kKnowHow.SetChordFomChangedDialogChordType(-1, d9, kNoScale).Semitones.Word(), 0u);
  using Know = DialogChordHarmonyKnowHow;
  EXPECT_EQ(Know::_BasicChordAndEraseTensionsForDialogChordType(8),
            std::make_pair(kBasicChordPower, true));
  EXPECT_EQ(Know::_BasicChordAndEraseTensionsForDialogChordType(7),
            std::make_pair(kBasicChordPower, false));
}

TEST(DialogChordHarmonyKnowHow, NinthsBringTheSeventhAndTakeItAlong) {
  EXPECT_EQ(Pressed(7, true, 145), 1173u);   // C -> C9: 0 2 4 7 10
  EXPECT_EQ(Pressed(7, false, 1173), 145u);  // and back
  EXPECT_EQ(Pressed(7, true, 2193), 2197u);  // a major seventh is left alone
  EXPECT_EQ(Pressed(7, true, 657), 661u);    // a sixth chord takes the ninth alone
  EXPECT_EQ(Pressed(7, true, 1177), 1173u);  // the ninth replaces a sharp ninth
  EXPECT_EQ(Pressed(7, true, 1161), 1165u);  // but keeps a minor third
  EXPECT_EQ(Pressed(6, true, 133), 1159u);   // sus2 keeps its second under a flat ninth
  EXPECT_EQ(Pressed(8, true, 1173), 1177u);  // sharp ninth replaces the ninth
}

TEST(DialogChordHarmonyKnowHow, UpperTensionsBringSeventhAndNinth) {
  EXPECT_EQ(Pressed(9, true, 145), 1205u);    // C -> C11: 0 2 4 5 7 10
  EXPECT_EQ(Pressed(9, false, 1205), 145u);   // and back
  EXPECT_EQ(Pressed(9, true, 657), 689u);     // C6 takes the eleventh alone
  EXPECT_EQ(Pressed(10, true, 1205), 1237u);  // sharp eleventh replaces the eleventh
  EXPECT_EQ(Pressed(12, true, 145), 1685u);   // C -> C13: 0 2 4 7 9 10
  EXPECT_EQ(Pressed(12, false, 1685), 145u);
  EXPECT_EQ(Pressed(12, true, 1177), 1689u);  // a sharp ninth serves as the ninth
  EXPECT_EQ(Pressed(12, true, 1161), 1677u);  // a minor third does not
  EXPECT_EQ(Pressed(12, true, 2193), 2709u);  // over a major seventh
  EXPECT_EQ(Pressed(11, true, 1205), 1461u);  // an eleventh already stands on 7 and 9
  EXPECT_EQ(Pressed(12, true, 273), 1813u);   // the aug triad keeps its sharp fifth
}

TEST(DialogChordHarmonyKnowHow, SixthSeventhAndFifthPresses) {
  // The thirteenth gives way to the flat thirteenth and the seventh stays; the sixth button
  // on the same chord takes the sevenths away.
  EXPECT_EQ(Pressed(11, true, 1685), 1429u);
  EXPECT_EQ(Pressed(3, true, 1685), 661u);
  EXPECT_EQ(Pressed(3, false, 657), 145u);
  // The minor seventh keeps bit 9, now a thirteenth, and switching it off leaves bit 9 too.
  EXPECT_EQ(Pressed(4, true, 657), 1681u);
  EXPECT_EQ(Pressed(4, false, 1681), 657u);
  EXPECT_EQ(Pressed(4, true, 2193), 1169u);
  EXPECT_EQ(Pressed(5, true, 1169), 2193u);
  // Altered fifths replace the fifth, which returns when they go.
  EXPECT_EQ(Pressed(1, true, 145), 81u);
  EXPECT_EQ(Pressed(1, false, 81), 145u);
  EXPECT_EQ(Pressed(2, true, 145), 273u);
  EXPECT_EQ(Pressed(2, false, 273), 145u);
  EXPECT_EQ(Pressed(1, true, 273), 81u);  // a sharp fifth gives way without the fifth
}

TEST(DialogChordHarmonyKnowHow, OptionPressSetsItsSemitoneAndNothingOutsideTheMask) {
  const CChordLite slash(kD, CSemitones(145), kFSharp);
  EXPECT_EQ(kKnowHow.SetChordFomChangedDialogChordOption(0, true, slash, kNoScale), slash);
  EXPECT_EQ(kKnowHow.SetChordFomChangedDialogChordOption(13, true, slash, kNoScale), slash);
  for (std::uint64_t mask = 0; mask < 4096; ++mask) {
    for (int option = 1; option <= kDialogChordOptionCount; ++option) {
      const int bit = kDialogChordOptionSemitones[static_cast<std::size_t>(option - 1)];
      const CChordLite chord(kD, CSemitones(mask), kFSharp);
      const CChordLite on = kKnowHow.SetChordFomChangedDialogChordOption(option, true, chord, {});
      const CChordLite off = kKnowHow.SetChordFomChangedDialogChordOption(option, false, chord, {});
      ASSERT_TRUE(on.Semitones.HasIntvl(bit)) << mask << " option " << option;
      ASSERT_FALSE(off.Semitones.HasIntvl(bit)) << mask << " option " << option;
      ASSERT_EQ(on.RootKeyEnh, kD);
      ASSERT_EQ(off.BassKeyEnh, kFSharp);
      ASSERT_LT(on.Semitones.Word() | off.Semitones.Word(), 4096u);
    }
  }
}

TEST(DialogChordHarmonyKnowHow, WorksThroughTheInterface) {
  const DialogChordHarmonyKnowHowInterface& host = kKnowHow;
  EXPECT_EQ(host.DialogChordTypesFor(Chord(137), kNoScale).size(), 8u);
  EXPECT_EQ(host.DialogChordTypesFor(Chord(73), kNoScale)[3],
            TDialogButton(kDialogChordType_Dim, kDialogButtonStatus_On, kDialogButtonTitle_Normal));
  EXPECT_EQ(host.DialogChordOptionsFor(Chord(137), kNoScale).size(), 12u);
  EXPECT_EQ(host.DialogChordOptionsFor(Chord(137), kNoScale)[1].TraceString(),
            "TDialogButton: 2 disabled, title 1");
  EXPECT_EQ(host.DialogChordOptionsFor(Chord(73), kNoScale)[2].TraceBriefString(), "3 off title 2");
}

}  // namespace
}  // namespace harmony
