#include "harmony/analysis/ChordSimplifier.h"

#include <gtest/gtest.h>

#include <string>

#include "harmony/analysis/HarmonyContext.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony {
namespace {

constexpr CKeyEnh kC(0, TEnh_n), kCSharp(1, TEnh_s), kDFlat(1, TEnh_b), kE(4, TEnh_n);
constexpr CKeyEnh kEFlat(3, TEnh_b), kAFlat(8, TEnh_b), kA(9, TEnh_n), kBFlat(10, TEnh_b);
constexpr std::uint64_t kMajorScale = 2741;

CChordLite Read(const std::string& text, std::uint8_t prefsValue = 0) {
  return CChordLite(text, ChordSetFromStringPrefs(prefsValue), GetCurrentChordNamePrefs());
}

CChordLite Chord(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = CKeyEnh()) {
  return CChordLite(root, CSemitones(mask), bass);
}

CHarmCenterLite MajorCenter(CKeyEnh root) { return CHarmCenterLite(root, CSemitones(kMajorScale)); }

const ChordSimplifier kSimplifier;

TEST(ChordSimplifier, ABassThatCompletesStackedThirdsBecomesTheRoot) {
  const CChordLite am7 = Chord(kA, 1161);  // A C E G
  EXPECT_EQ(kSimplifier.Simplify(Read("C/A")), am7);
  EXPECT_EQ(kSimplifier.Simplify(Read("C/A"), MajorCenter(kC)), am7);
  EXPECT_EQ(kSimplifier.Simplify(Read("C/A"), CSignKeyLite(kBFlat, TSignKeyType::Major)), am7);
  // In E flat major the A is no scale tone; key and chord still follow the bass.
  EXPECT_TRUE(kSimplifier.Simplify(Read("C/A"), MajorCenter(kEFlat)).EqualWithoutEnh(am7));
  EXPECT_EQ(kSimplifier.Simplify(Read("Cm/Ab")), Chord(kAFlat, 2193));  // Abmaj7
  // Tensions turn with the chord: the seventh of C7 is the flat ninth above A.
  EXPECT_EQ(kSimplifier.Simplify(Read("C7/A")), Chord(kA, 1163));

  for (const char* text : {"C/E", "C/G", "C/Bb", "Cm/A", "Csus4/A", "C5/A", "C", "/A"}) {
    const CChordLite chord = Read(text);
    const auto [simplified, result] =
        kSimplifier._SimplifyBassNoteToStackedThirdChord(chord, {}, {});
    EXPECT_FALSE(simplified) << text;
    EXPECT_EQ(result, chord) << text;
    EXPECT_EQ(kSimplifier.Simplify(chord), chord) << text;
  }
}

TEST(ChordSimplifier, SymmetricTriadsNeedTheCenterToHoldTheBass) {
  const CChordLite caugOverE = Read("Caug/E");
  const CChordLite eAug = Chord(kE, 273);
  EXPECT_EQ(kSimplifier.Simplify(caugOverE), eAug);
  EXPECT_EQ(kSimplifier.Simplify(caugOverE, MajorCenter(kC)), eAug);
  EXPECT_EQ(kSimplifier.Simplify(caugOverE, MajorCenter(kEFlat)), caugOverE);  // no E in it
  // Without a center the sign key's scale decides; a given center wins over the sign key.
  const CSignKeyLite eFlatMajor(kEFlat, TSignKeyType::Major);
  EXPECT_EQ(kSimplifier.Simplify(caugOverE, eFlatMajor), caugOverE);
  EXPECT_EQ(kSimplifier.Simplify(caugOverE, CSignKeyLite(kC, TSignKeyType::Major)), eAug);
  EXPECT_EQ(kSimplifier.Simplify(caugOverE, MajorCenter(kC), eFlatMajor), eAug);
  EXPECT_EQ(kSimplifier.Simplify(Read("Caug/D")), Read("Caug/D"));

  // A diminished triad over the tone that makes it a diminished seventh chord.
  const CChordLite cdimOverA = Read("Cdim/A");
  EXPECT_EQ(kSimplifier.Simplify(cdimOverA), Chord(kA, 585));
  EXPECT_EQ(kSimplifier.Simplify(cdimOverA, MajorCenter(kBFlat)), Chord(kA, 585));
  EXPECT_EQ(kSimplifier.Simplify(cdimOverA, MajorCenter(kAFlat)), cdimOverA);
  EXPECT_EQ(kSimplifier.Simplify(Read("Cdim/D")), Read("Cdim/D"));
}

TEST(ChordSimplifier, CenterSpellsTheNewRootAndOtherFieldsStay) {
  CChordLite eOverCSharp = Read("E/C#");
  EXPECT_EQ(kSimplifier.Simplify(eOverCSharp).RootKeyEnh, kCSharp);
  EXPECT_EQ(kSimplifier.Simplify(eOverCSharp, MajorCenter(kDFlat)).RootKeyEnh, kDFlat);
  EXPECT_EQ(kSimplifier.Simplify(eOverCSharp, CSignKeyLite(kDFlat, TSignKeyType::Major)).RootKeyEnh,
            kDFlat);
  eOverCSharp.RootDir = 2;
  eOverCSharp.Flag = 1;
  const CChordLite simplified = kSimplifier.Simplify(eOverCSharp);
  EXPECT_TRUE(simplified.RootDir == 2 && simplified.Flag == 1);

  const CChordLite cSharp = Chord(kCSharp, 137);
  EXPECT_EQ(kSimplifier._AdjustRootKeyEnhToHarmCenterIfDef(cSharp, MajorCenter(kAFlat)),
            Chord(kDFlat, 137));
  EXPECT_EQ(kSimplifier._AdjustRootKeyEnhToHarmCenterIfDef(cSharp, CHarmCenterLite()), cSharp);
}

TEST(ChordSimplifier, ParserPreferenceRunsTheSimplifier) {
  ASSERT_NE(CChordSetFromStringHelper::SimplifyBassNoteHook(), nullptr);
  EXPECT_EQ(Read("C/A", 1), Chord(kA, 1161));
  EXPECT_EQ(Read("Cm/Ab", 1), Chord(kAFlat, 2193));
  EXPECT_EQ(Read("C/E", 1), Read("C/E"));
  EXPECT_EQ(Read("Caug/E", 1), Chord(kE, 273));
  EXPECT_EQ(Read("C/A", 2), Chord(kC, 145, kA));  // only the value 1 asks for it

  // Without a hook the preference does nothing.
  CChordSetFromStringHelper::SetSimplifyBassNoteHook(nullptr);
  const CChordLite unhooked = Read("C/A", 1);
  ChordSimplifier::InstallAsChordSymbolParserHook();
  EXPECT_EQ(unhooked, Chord(kC, 145, kA));
  EXPECT_EQ(Read("C/A", 1), Chord(kA, 1161));
}

TEST(HarmonyContext, ContextMultiPlacementAndTrace) {
  const CChordLite c = Read("C"), dm = Read("Dm"), g7 = Read("G7");
  const CScaleLite dorian(CKeyEnh(2, TEnh_n), CSemitones(1709));
  const CHarmCenterLite center = MajorCenter(kC);
  const CSignKeyLite signKey(kC, TSignKeyType::Major);
  const Harmony::ContextSingle empty, first(c), second(dm, dorian, center, signKey), third(g7);

  EXPECT_EQ(empty, Harmony::ContextSingle(CChordLite(), CScaleLite(CKeyEnh(), CSemitones()),
                                          CHarmCenterLite(CKeyEnh(), CSemitones()),
                                          CSignKeyLite(CKeyEnh(), TSignKeyType::Undef)));
  EXPECT_EQ(Harmony::ContextMulti(c), Harmony::ContextMulti(empty, first, empty));
  EXPECT_EQ(Harmony::ContextMulti(dm, dorian, center, signKey),
            Harmony::ContextMulti(empty, second, empty));
  EXPECT_EQ(Harmony::ContextMulti(second).Current, second);
  const Harmony::ContextMulti two(first, second);
  EXPECT_TRUE(two.Previous == empty && two.Current == first && two.Next == second);
  const Harmony::ContextMulti three(first, second, third);
  EXPECT_TRUE(three.Previous == first && three.Current == second && three.Next == third);
  const Harmony::ContextMulti chords(c, dm, g7, {}, dorian, {}, {}, center, {}, {}, signKey);
  EXPECT_EQ(chords, three);

  // The sign key, the center and the scale (both told as scales), then the chord.
  const auto scaleForm = [](const CScaleLite& scale) {
    return "CScaleLite: " + scale.Name() + ", RootKeyEnh" + scale.RootKeyEnh.TraceString() +
           ", Semitones" + scale.Semitones.TraceBriefString();
  };
  EXPECT_EQ(second.TraceString(), signKey.TraceString() + ", " + scaleForm(center) + "," +
                                      scaleForm(dorian) + "," + dm.TraceString());
}

}  // namespace
}  // namespace harmony
