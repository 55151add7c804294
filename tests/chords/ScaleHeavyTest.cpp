#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "TestText.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"

namespace harmony {
namespace {

using TSpelling = std::array<TEnh, 12>;

constexpr TEnh b = TEnh_b;
constexpr TEnh n = TEnh_n;
constexpr TEnh s = TEnh_s;
constexpr TEnh ss = TEnh_ss;
constexpr TEnh u = TEnh_Undef;
constexpr TSpelling kNoSpelling{u, u, u, u, u, u, u, u, u, u, u, u};

TSpelling SpellingOf(const CScaleHeavy& scale) {
  TSpelling spelling{};
  for (int key = 0; key < 12; ++key)
    spelling[static_cast<std::size_t>(key)] = scale.EnhForKeyNr(key);
  return spelling;
}

// The sharps (positive) or flats of a major key, counted from its letter: the letter's own
// signature plus seven signs per accidental (F sharp: F has one flat, plus seven).
int MajorSignsByLetter(int keyNr, TEnh enh) {
  constexpr int kLetterSigns[12] = {0, 99, 2, 99, 4, -1, 99, 1, 99, 3, 99, 5};
  const int letter = ((keyNr - (enh - TEnh_n)) % 12 + 12) % 12;
  return kLetterSigns[letter] + 7 * (enh - TEnh_n);
}

TEST(ScaleHeavy, TheTableOfScales) {
  EXPECT_EQ(CScaleHeavy::NumAvailableScales(), 30);
  EXPECT_EQ(CScaleHeavy::GetTypeForScaleAtIndex(0), st_maj);
  EXPECT_EQ(CScaleHeavy::GetTypeForScaleAtIndex(29), st_Undef);
  EXPECT_EQ(CScaleHeavy::GetTypeForScaleAtIndex(30), st_maj);
  EXPECT_EQ(CScaleHeavy::GetTypeForScaleAtIndex(-1), st_maj);
  EXPECT_STREQ(CScaleHeavy::GetNameForScaleAtIndex(29), "");
  EXPECT_EQ(CScaleHeavy::GetNameForScaleAtIndex(30), nullptr);
  EXPECT_EQ(CScaleHeavy::ScaleIndexFromType(Altered), 21);
  EXPECT_EQ(CScaleHeavy::ScaleIndexFromType(st_Undef), 29);
  EXPECT_EQ(CScaleHeavy::ScaleIndexFromType(st_custom), 0);
  EXPECT_EQ(CScaleHeavy::ScaleIndexFromType(st_Count), 0);
  EXPECT_STREQ(CScaleHeavy::GetNameForScaleType(st_custom), "Major");
  EXPECT_EQ(CScaleHeavy::GetModeForScaleType(st_Undef), 3);
  EXPECT_EQ(CScaleHeavy::GetDegreesPerOctaveForScaleType(st_Undef), 0);
  const std::array<std::int32_t, 12> zeros{};
  EXPECT_EQ(CScaleHeavy::GetDegreeEnhForScaleType(st_Undef), zeros);
  // Setting a type takes its own row: the tones are those of the type's mask.
  for (const TScaleData& row : CScaleHeavy::mScaleData) {
    EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), row.Type).ToSemitones(), SemitonesFromScaleType(row.Type))
        << row.Name;
  }
}

TEST(ScaleHeavy, SignsCountOfEveryMajorAndMinorKey) {
  // Majors with up to double accidentals follow their letters; beyond 18 sharps or 14 flats
  // the count folds back by twelve (B double sharp major counts as C sharp major).
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : {TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss}) {
      if (!IsSensefulEnhForKeyNr(key, enh)) continue;
      int expected = MajorSignsByLetter(key, enh);
      if (expected >= 19) expected -= 12;
      if (expected < -14) expected += 12;
      EXPECT_EQ(CScaleHeavy(CKeyEnh(key, enh), st_maj).SignsCount(), expected) << key << enh;
    }
  }
  EXPECT_EQ(CScaleHeavy(CKeyEnh(1, ss), st_maj).SignsCount(), 7);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(3, TEnh_bb), st_maj).SignsCount(), -3);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(10, TEnh_bb), st_maj).SignsCount(), -14);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(6, ss), st_maj).SignsCount(), 18);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(6, b), st_maj).SignsCountAbs(), 6);

  // The fifteen minor keys from A flat minor to A sharp minor.
  const std::pair<CKeyEnh, int> minors[] = {{{8, b}, -7}, {{3, b}, -6}, {{10, b}, -5}, {{5, n}, -4},
                                            {{0, n}, -3}, {{7, n}, -2}, {{2, n}, -1},  {{9, n}, 0},
                                            {{4, n}, 1},  {{11, n}, 2}, {{6, s}, 3},   {{1, s}, 4},
                                            {{8, s}, 5},  {{3, s}, 6},  {{10, s}, 7}};
  for (const auto& [root, signs] : minors) {
    EXPECT_EQ(CScaleHeavy(root, st_min).SignsCount(), signs) << root;
  }
  // The search alone reports failure as 25 steps; SignsCount folds that to 13.
  EXPECT_EQ(CScaleHeavy::_SignsCount_DetermineSignsCountBySearchingCycleOfFifths(CKeyEnh(1, n)),
            25);
  EXPECT_EQ(CScaleHeavy::_SignsCount_DetermineSignsCountBySearchingCycleOfFifths(CKeyEnh(0, b)),
            -25);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(2, TEnh_sss), st_maj).SignsCount(), 13);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(15, n), st_maj).SignsCount(), 0);
}

TEST(ScaleHeavy, SignsCountOfOtherScalesLooksAtARelatedKey) {
  // Without a spelling the major root takes the one with the fewest signs.
  EXPECT_EQ(CScaleHeavy(CKeyEnh(8, u), st_maj).SignsCount(), -4);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(6, u), st_maj).SignsCount(), 6);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(2, n), st_dorian).SignsCount(), 0);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(11, n), st_locrian).SignsCount(), 0);
  // Minor-mode scales look a major sixth down, the others at their root.
  EXPECT_EQ(CScaleHeavy(CKeyEnh(9, n), st_min_harm).SignsCount(), 0);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(4, n), st_hm5).SignsCount(), 4);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), st_chrom).SignsCount(), 0);
  // A custom scale counts as minor when it has the minor third but not the major one.
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), CSemitones(137)).SignsCount(), -3);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), CSemitones(145)).SignsCount(), 0);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(2, n), CSemitones(1365)).SignsCount(), 2);
}

TEST(ScaleHeavy, SpellingTables) {
  // The major neighbour table spells the minor sixth as a flat: C major gives A flat.
  EXPECT_EQ(SpellingOf(CScaleHeavy(CNote(60, n), st_maj)),
            (TSpelling{n, s, n, b, n, n, s, n, b, n, b, n}));
  // In F sharp major the keys outside the scale lean on the sharps around them.
  EXPECT_EQ(SpellingOf(CScaleHeavy(CKeyEnh(6, s), st_maj)),
            (TSpelling{s, s, n, s, n, s, s, ss, s, n, s, n}));
  // A minor from the minor table: raised sixth and seventh, sharp fourth, flat second.
  EXPECT_EQ(SpellingOf(CScaleHeavy(CKeyEnh(9, n), st_min)),
            (TSpelling{n, s, n, s, n, n, s, n, s, n, b, n}));
  // C harmonic minor: E flat signature, the leading tone and the raised sixth natural.
  EXPECT_EQ(SpellingOf(CScaleHeavy(CKeyEnh(0, n), st_min_harm)),
            (TSpelling{n, b, n, b, n, n, s, n, b, n, b, n}));
  // A key whose neighbour step is 0 and that the signature leaves open stays undefined: the
  // fourth of C lydian, the minor sixth of D dorian.
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), st_lydian).EnhForKeyNr(5), u);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(2, n), st_dorian).EnhForKeyNr(10), u);
  // Custom and undefined scales have no spelling at all.
  EXPECT_EQ(SpellingOf(CScaleHeavy(CKeyEnh(0, n), CSemitones(1365))), kNoSpelling);
  EXPECT_EQ(SpellingOf(CScaleHeavy(CKeyEnh(), st_maj)), kNoSpelling);
  EXPECT_EQ(SpellingOf(CScaleHeavy::Undef), kNoSpelling);

  CScaleHeavy scale(CKeyEnh(0, n), st_maj);
  EXPECT_EQ(scale.EnhForChromStep(13), s);
  scale.SetEnhForChromStep(8, s);
  EXPECT_EQ(scale.EnhForKeyNr(8), s);
  scale.SetEnhForNote(CNote(61, b));
  EXPECT_EQ(scale.EnhForNote(CNote(73, s)), b);
  EXPECT_EQ(scale.EnhForKeyNr(15), scale.EnhForKeyNr(3));
}

TEST(ScaleHeavy, RootsFromKeyNumbersTakeTheLeastSigns) {
  const std::vector<std::string> majors = {"C", "D\u266D", "D", "E\u266D", "E", "F", "F\u266F",
                                           "G", "A\u266D", "A", "B\u266D", "B"};
  const std::vector<std::string> minors = {"C", "C\u266F", "D", "E\u266D", "E", "F", "F\u266F",
                                           "G", "G\u266F", "A", "B\u266D", "B"};
  for (int key = 0; key < 12; ++key) {
    EXPECT_EQ(CScaleHeavy(key, st_maj).RootNote().KeyName(), majors[static_cast<std::size_t>(key)]);
    EXPECT_EQ(CScaleHeavy(key, st_min).RootNote().KeyName(), minors[static_cast<std::size_t>(key)]);
  }
  EXPECT_EQ(CScaleHeavy(1, st_maj).RootNote().NoteNr(), 61);
  EXPECT_TRUE(CScaleHeavy(15, st_maj).RootNote().IsUndef());
  // A root given without spelling takes the one of the table.
  EXPECT_EQ(CScaleHeavy(CKeyEnh(8, u), st_min).RootKeyEnh(), CKeyEnh(8, s));
}

TEST(ScaleHeavy, DegreeArithmetic) {
  const CScaleHeavy fMajor(CKeyEnh(5, n), st_maj);
  EXPECT_EQ(fMajor.RootNote().NoteNr(), 65);
  EXPECT_EQ(fMajor.KeyNrToDegreeNr(10), 3);
  EXPECT_EQ(fMajor.KeyNrToDegreeNr(11), -1);
  EXPECT_EQ(fMajor.KeyNrToDegreeNr(kKeyNrUndef), -1);
  EXPECT_EQ(fMajor.NoteNrToDegreeNr(46), 3);
  EXPECT_EQ(fMajor.NoteToDegreeNr(CNote(64, n)), 6);
  EXPECT_EQ(fMajor.IntvlToDegreeNr(16), 2);
  EXPECT_EQ(fMajor.IntvlToDegreeNr(kIntvlUndef), -1);
  EXPECT_TRUE(fMajor.HasNoteNr(70));
  EXPECT_FALSE(fMajor.HasNote(CNote(71, n)));
  EXPECT_TRUE(fMajor.HasIntvl(11));
  EXPECT_FALSE(fMajor.HasIntvl(13));
  EXPECT_EQ(fMajor.DegreeNrToKeyNr(3), 10);
  EXPECT_EQ(fMajor.DegreeNrToKeyNr(-1), 4);  // wraps below the root
  EXPECT_EQ(fMajor.DegreeNrToKeyEnh(3), CKeyEnh(10, b));
  // Note numbers carry octaves from the root note.
  EXPECT_EQ(fMajor.DegreeNrToNoteNr(7), 77);
  EXPECT_EQ(fMajor.DegreeNrToNoteNr(-1), 64);
  EXPECT_EQ(fMajor.DegreeNrToNoteNr(-8), 52);
  EXPECT_EQ(fMajor.DegreeNrToNote(3), CNote(70, b));
  EXPECT_EQ(fMajor.DegreeNrToNoteInLowestOctave(3), CNote(10, b));
  EXPECT_EQ(fMajor.ToKeyNrSet(), (CMySet<int>{0, 2, 4, 5, 7, 9, 10}));
  EXPECT_EQ(fMajor.ToIntvlSet().WrapIntvl(), 12);

  EXPECT_EQ(CScaleHeavy::Undef.DegreeNrToKeyNr(0), kKeyNrUndef);
  EXPECT_EQ(CScaleHeavy::Undef.DegreeNrToNoteNr(0), kNoteNrUndef);
  EXPECT_EQ(CScaleHeavy::Undef.KeyNrToDegreeNr(0), -1);
  EXPECT_TRUE(CScaleHeavy::Undef.ToKeyNrSet().empty());
  EXPECT_TRUE(CScaleHeavy(CKeyEnh(0, n), st_Undef).DegreeNrToNote(0).IsUndef());
}

TEST(ScaleHeavy, MoveInScaleAndQuantize) {
  const CScaleHeavy cMajor(CKeyEnh(0, n), st_maj);
  EXPECT_EQ(cMajor.MoveInScale(60, 2, true), 64);
  EXPECT_EQ(cMajor.MoveInScale(64, -3, true), 59);
  EXPECT_EQ(cMajor.MoveInScale(60, 14, true), 84);
  // Between two degrees: the first step up reaches the upper one, down the lower one.
  EXPECT_EQ(cMajor.MoveInScale(61, 1, true), 62);
  EXPECT_EQ(cMajor.MoveInScale(61, -1, true), 60);
  EXPECT_EQ(cMajor.MoveInScale(61, 2, true), 64);
  EXPECT_EQ(cMajor.MoveInScale(61, 0, true), 61);
  EXPECT_EQ(cMajor.MoveInScale(127, 1, false), 129);
  EXPECT_EQ(cMajor.MoveInScale(127, 1, true), 117);
  EXPECT_EQ(cMajor.MoveInScale(0, -1, true), 11);
  EXPECT_EQ(cMajor.MoveInScale(kNoteNrUndef, 1, true), kNoteNrUndef);
  EXPECT_EQ(CScaleHeavy::Undef.MoveInScale(61, 1, true), 61);
  // A scale without its root (D E G A over C) still walks its tones.
  const CScaleHeavy rootless(CKeyEnh(0, n), CSemitones(4 + 16 + 128 + 512));
  EXPECT_EQ(rootless.MoveInScale(60, 1, true), 62);
  EXPECT_EQ(rootless.MoveInScale(60, -1, true), 57);

  const CScaleHeavy fMajor(CKeyEnh(5, n), st_maj);
  EXPECT_EQ(fMajor.MoveInScale(CNote(69, n), 1), CNote(70, b));
  EXPECT_EQ(CScaleHeavy::Undef.MoveInScale(CNote(69, n), 1), CNote(69, n));

  using Direction = CScaleHeavy::TQuantizeToScaleDirection;
  EXPECT_EQ(fMajor.QuantizeToScaleKeyEnh(CKeyEnh(11, n), Direction::kQuantizeToScale_Down),
            CKeyEnh(10, b));
  EXPECT_EQ(fMajor.QuantizeToScaleKeyEnh(CKeyEnh(11, n), Direction::kQuantizeToScale_Up),
            CKeyEnh(0, n));
  EXPECT_EQ(fMajor.QuantizeToScaleKeyEnh(CKeyEnh(1, s), Direction::kQuantizeToScale_ClosestTieDown),
            CKeyEnh(0, n));
  EXPECT_EQ(fMajor.QuantizeToScaleKeyEnh(CKeyEnh(1, s), Direction::kQuantizeToScale_ClosestTieUp),
            CKeyEnh(2, n));
  EXPECT_EQ(fMajor.QuantizeToScaleKeyEnh(CKeyEnh(), Direction::kQuantizeToScale_Up), CKeyEnh());
  EXPECT_EQ(fMajor.QuantizeToScaleDegreeNr(11, Direction::kQuantizeToScale_Up), 4);
  EXPECT_EQ(fMajor.QuantizeToScaleDegreeNr(kKeyNrUndef, Direction::kQuantizeToScale_Up), -1);
  EXPECT_EQ(fMajor.NoteQuantizeToScaleNote(CNote(71, n), Direction::kQuantizeToScale_Up),
            CNote(72, n));
  EXPECT_EQ(fMajor.NoteQuantizeToScaleNote(CNote(71, n), Direction::kQuantizeToScale_Down),
            CNote(70, b));
}

TEST(ScaleHeavy, SettersAndTheCustomRecord) {
  CScaleHeavy scale(CKeyEnh(0, n), CSemitones(1365));
  EXPECT_EQ(scale.ScaleType(), st_custom);
  EXPECT_EQ(scale.DegreesPerOctave(), 6);
  EXPECT_EQ(scale.FindScaleTypeForCustomScale(), st_custom);
  scale.SetScaleType(st_maj);
  EXPECT_EQ(scale.ToSemitones().Word(), 2741u);
  // Back to custom: the whole-tone record is still there.
  scale.SetScaleType(st_custom);
  EXPECT_EQ(scale.ToSemitones().Word(), 1365u);
  scale.SetFromRootKeyEnhAndScaleType_DontResetCustomScaleData(CKeyEnh(2, n), st_custom);
  EXPECT_EQ(scale.ToSemitones().Word(), 1365u);
  scale.SetFromRootKeyEnhAndScaleType_ResetCustomScaleData(CKeyEnh(2, n), st_custom);
  EXPECT_EQ(scale.ToSemitones().Word(), 4095u);
  EXPECT_STREQ(scale.CustomScaleData().Name, "Custom");

  // Tones that a row has take its type; the empty set is the undefined type.
  scale.SetCustomScaleRootOffsetIntvlSet_ResetCustomScaleData(CIntvlSet{0, 2, 3, 5, 7, 9, 10});
  EXPECT_EQ(scale.ScaleType(), st_dorian);
  EXPECT_EQ(scale.RootKeyEnh(), CKeyEnh(2, n));
  scale.SetCustomScaleRootOffsetIntvlSet_DontResetCustomScaleData(CIntvlSet{0, 14, 16, 19});
  EXPECT_EQ(scale.ToSemitones().Word(), 1 + 4 + 16 + 128u);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), CSemitones()).ScaleType(), st_Undef);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), CSemitones(3765)).ScaleType(), st_majaddb7);
  EXPECT_EQ(CScaleHeavy(CKeyEnh(2, n), CMySet<int>{0, 2, 4, 5, 7, 9, 11}).ScaleType(), st_dorian);
  EXPECT_EQ(CScaleHeavy(CNote(50, n), CMySet<int>{0, 2, 4, 5, 7, 9, 11}).RootNote().NoteNr(), 50);
  EXPECT_EQ(CScaleHeavy(CNote(50, n), CIntvlSet{0, 3, 7}).ToSemitones().Word(), 137u);

  // A new root keeps the octave of the old one.
  CScaleHeavy moved(CNote(48, n), st_maj);
  moved.SetRootKeyEnh(CKeyEnh(7, n));
  EXPECT_EQ(moved.RootNote().NoteNr(), 55);
  EXPECT_EQ(moved.EnhForKeyNr(6), s);
  moved.SetRootNote(CNote(65, n));
  EXPECT_EQ(moved.EnhForKeyNr(10), b);
  moved.SetUndef();
  EXPECT_EQ(moved, CScaleHeavy::Undef);
  EXPECT_TRUE(moved.IsUndef());

  EXPECT_EQ(CScaleHeavy(CKeyEnh(9, n), st_min).RelatedIonianScale(),
            CScaleHeavy(CKeyEnh(0, n), st_maj));
  EXPECT_TRUE(CScaleHeavy(CKeyEnh(9, n), st_hm5).RelatedIonianScale().RootNote().IsUndef());
  EXPECT_NE(CScaleHeavy(CKeyEnh(1, s), st_maj), CScaleHeavy(CKeyEnh(1, b), st_maj));
}

TEST(ScaleHeavy, NamesJsonAndTrace) {
  const CScaleHeavy dorian(CKeyEnh(2, n), st_dorian);
  EXPECT_EQ(dorian.FullName(), "D Dorian");
  EXPECT_EQ(CScaleHeavy(CKeyEnh(0, n), CSemitones(1365)).FullName(), "C Whole Tone");
  EXPECT_EQ(CScaleHeavy::Undef.FullName(), "Undefined");
  EXPECT_EQ(testing::Json(dorian),
            R"({"root":{"name":"D3","nr":62,"enh":"neutral"},"type":"dori"})");
  EXPECT_EQ(testing::Json(CScaleHeavy::Undef),
            R"({"root":{"name":"Undefined","nr":-1,"enh":"undef"},"type":"Undef"})");
  EXPECT_EQ(dorian.TraceString(),
            "CScaleHeavy: Name D Dorian, RootNote D3 mActiveScaleData: name Dorian, type "
            "st_dorian, degreesPerOctave 7");
  EXPECT_EQ(dorian.StringForInitializerList(), "CScaleHeavy(CNote(62, TEnh_n), st_dorian)");
}

}  // namespace
}  // namespace harmony
