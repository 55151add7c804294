#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <vector>

#include "TestText.h"
#include "harmony/pitch/KeyEnh.h"
#include "pitch/KeyEnhTransposeTable.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

constexpr TEnh kSpellings[] = {TEnh_bbb, TEnh_bb, TEnh_b,   TEnh_n,
                               TEnh_s,   TEnh_ss, TEnh_sss, TEnh_Undef};

CKeyEnh Transposed(int key, TEnh enh, int intvl) { return CKeyEnh(key, enh).Transpose(intvl); }

// The letter (0 = C .. 6 = B) a spelled key is written on.
int LetterOf(int key, TEnh enh) {
  constexpr int kLetterOfWhiteKey[12] = {0, -1, 1, -1, 2, 3, -1, 4, -1, 5, -1, 6};
  return kLetterOfWhiteKey[((key - EnhToSemitone(enh)) % 12 + 12) % 12];
}

// The two rows of the table that break the pattern below; they are kept as they stand.
bool IsIrregularRow(int r, int key, TEnh enh) {
  return (r == -9 && key == 10 && enh == TEnh_sss) || (r == -4 && key == 10 && enh == TEnh_bb);
}

// Every customary spelling is written on the letter the interval names: a minor second up
// (-11) moves one letter, a fourth up (-7) three, a whole tone down (-2) one back, ...
TEST(KeyEnhTranspose, SpecialSpellingsKeepTheLetterDistance) {
  // Letters moved upwards, by interval -11..11 (0 where the table has no rows).
  constexpr int kLetterSteps[23] = {1, 0, 2, 0, 3, 0, 4, 5, 5, 6, 0, 0,
                                    0, 0, 2, 2, 0, 0, 4, 0, 0, 0, 0};
  for (const pitch_detail::TTransposeRow& row : pitch_detail::kTransposeRows) {
    if (IsIrregularRow(row.intvl, row.oldKey, row.oldEnh)) continue;
    const int from = LetterOf(row.oldKey, row.oldEnh);
    const int to = LetterOf(row.newKey, row.newEnh);
    ASSERT_GE(from, 0);
    ASSERT_GE(to, 0);
    EXPECT_EQ((to - from + 7) % 7, kLetterSteps[row.intvl + 11])
        << int{row.intvl} << ": " << int{row.oldKey} << " -> " << int{row.newKey};
    EXPECT_EQ(((row.newKey - row.oldKey - row.intvl) % 12 + 12) % 12, 0)
        << int{row.intvl} << ": " << int{row.oldKey} << " -> " << int{row.newKey};
  }
  // C double flat down a major third is written G flat, not A triple flat.
  EXPECT_EQ(Transposed(10, TEnh_bb, -4), CKeyEnh(6, TEnh_b));
  // G triple sharp down a major sixth: the row replaces the key number too, giving B sharp
  // (key 0) where the interval alone would reach key 1.
  EXPECT_EQ(Transposed(10, TEnh_sss, -9), CKeyEnh(0, TEnh_s));
  EXPECT_EQ(Transposed(10, TEnh_sss, 3), CKeyEnh(1, TEnh_s));  // +3 has no such row
}

TEST(KeyEnhTranspose, KeyNumberFollowsTheInterval) {
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : kSpellings) {
      for (int intvl = -30; intvl <= 30; ++intvl) {
        if (IsIrregularRow(intvl % 12, key, enh)) continue;
        const CKeyEnh result = Transposed(key, enh, intvl);
        EXPECT_EQ(result.KeyNr, ((key + intvl) % 12 + 12) % 12);
        if (intvl % 12 == 0) {
          EXPECT_EQ(result, CKeyEnh(key, enh));
        }
      }
    }
  }
  EXPECT_EQ(Transposed(kKeyNrUndef, TEnh_Undef, 5), CKeyEnh());
}

TEST(KeyEnhTranspose, DirectionOfTheIntervalDecidesTheSpelling) {
  // D flat a semitone up: no rule, the fallback writes D; as -11 the table gives E double flat.
  EXPECT_EQ(Transposed(1, TEnh_b, 1), CKeyEnh(2, TEnh_n));
  EXPECT_EQ(Transposed(1, TEnh_b, -11), CKeyEnh(2, TEnh_bb));
  EXPECT_EQ(Transposed(0, TEnh_n, -2), CKeyEnh(10, TEnh_b));
  EXPECT_EQ(Transposed(0, TEnh_n, 10), CKeyEnh(10, TEnh_s));
  EXPECT_EQ(CKeyEnh(0, TEnh_n) - 2, CKeyEnh(10, TEnh_b));
  EXPECT_EQ(CKeyEnh(0, TEnh_n) + 10, CKeyEnh(10, TEnh_s));
  EXPECT_EQ(Transposed(0, TEnh_n, 3), CKeyEnh(3, TEnh_b));   // C up a minor third: E flat
  EXPECT_EQ(Transposed(0, TEnh_n, 15), CKeyEnh(3, TEnh_b));  // the octave doesn't matter
}

TEST(KeyEnhTranspose, DirectRulesComeBeforeTheTable) {
  EXPECT_EQ(Transposed(5, TEnh_s, 2), CKeyEnh(7, TEnh_ss));  // E sharp -> F double sharp
  EXPECT_EQ(Transposed(6, TEnh_s, 2), CKeyEnh(8, TEnh_s));   // F sharp -> G sharp
  EXPECT_EQ(Transposed(4, TEnh_b, 1), CKeyEnh(5, TEnh_bb));  // F flat -> G double flat
  EXPECT_EQ(Transposed(0, TEnh_s, -1), CKeyEnh(11, TEnh_ss));
  EXPECT_EQ(Transposed(0, TEnh_n, -11), CKeyEnh(1, TEnh_b));  // C -> D flat
  EXPECT_EQ(Transposed(2, TEnh_n, -4), CKeyEnh(10, TEnh_b));
  EXPECT_EQ(Transposed(0, TEnh_Undef, -9), CKeyEnh(3, TEnh_b));
  // 1b is both a -4 table row and not covered by the white-key rule: the table applies.
  EXPECT_EQ(Transposed(1, TEnh_b, -4), CKeyEnh(9, TEnh_bb));
}

TEST(KeyEnhTranspose, Fallback) {
  // Black target: flat for an old flat or lower spelling, else sharp.
  EXPECT_EQ(Transposed(0, TEnh_bbb, 6), CKeyEnh(6, TEnh_b));
  EXPECT_EQ(Transposed(2, TEnh_n, 6), CKeyEnh(8, TEnh_s));
  // White target from a white key with an accidental: the accidental is carried over even
  // where it does not fit (C flat up a tritone stays "flat" on F).
  EXPECT_EQ(Transposed(0, TEnh_s, 5), CKeyEnh(5, TEnh_s));  // B sharp -> E sharp
  EXPECT_EQ(Transposed(11, TEnh_b, 6), CKeyEnh(5, TEnh_b));
  EXPECT_EQ(Transposed(0, TEnh_Undef, 5), CKeyEnh(5, TEnh_Undef));
  // From a black key a white target is natural.
  EXPECT_EQ(Transposed(1, TEnh_s, 6), CKeyEnh(7, TEnh_n));
}

TEST(KeyEnh, OrderingHashAndAccidentalSteps) {
  const std::set<CKeyEnh> keys = {CKeyEnh(1, TEnh_b), CKeyEnh(1, TEnh_s), CKeyEnh(0, TEnh_n),
                                  CKeyEnh(1, TEnh_ss), CKeyEnh(1, TEnh_bbb)};
  const std::vector<CKeyEnh> expected = {CKeyEnh(0, TEnh_n), CKeyEnh(1, TEnh_ss),
                                         CKeyEnh(1, TEnh_s), CKeyEnh(1, TEnh_b),
                                         CKeyEnh(1, TEnh_bbb)};
  EXPECT_TRUE(std::equal(keys.begin(), keys.end(), expected.begin(), expected.end()));
  EXPECT_LT(CKeyEnh(0, TEnh_bbb), CKeyEnh(1, TEnh_sss));

  EXPECT_EQ(CKeyEnh(5, TEnh_n).HashValue(), (5 << 8) | 3);
  EXPECT_EQ(CKeyEnh().HashValue(), 15 << 8);

  CKeyEnh key(0, TEnh_bb);
  key.DecEnh();
  EXPECT_EQ(key.Enh, TEnh_bbb);
  key.DecEnh();
  EXPECT_EQ(key.Enh, TEnh_bbb);
  key = CKeyEnh(0, TEnh_sss);
  key.IncEnh();
  EXPECT_EQ(key.Enh, TEnh_sss);

  EXPECT_TRUE(CKeyEnh(3, TEnh_bb).HasMisinterpretableAccidental());
  EXPECT_TRUE(CKeyEnh(1, TEnh_s).HasMisinterpretableAccidental());
  EXPECT_FALSE(CKeyEnh(2, TEnh_bbb).HasMisinterpretableAccidental());
}

struct TRead {
  const char* text;
  int keyNr;
  TEnh enh;
  int consumed;
};

void ExpectReads(const std::vector<TRead>& reads, const CChordNamePrefs& prefs) {
  for (const TRead& read : reads) {
    CKeyEnh key(4, TEnh_n);
    int consumed = -1;
    key.SetFromString(read.text, &consumed, prefs);
    EXPECT_EQ(key, CKeyEnh(read.keyNr, read.enh)) << '"' << read.text << '"';
    EXPECT_EQ(consumed, read.consumed) << '"' << read.text << '"';
  }
}

TEST(KeyEnhFromString, Accidentals) {
  ExpectReads({{"Bb", 10, TEnh_b, 2},
               {"Bbb", 9, TEnh_bb, 3},
               {"Bbb5", 10, TEnh_b, 2},  // B flat with a flat fifth
               {"Ebb9", 3, TEnh_b, 2},
               {"Cbb13", 11, TEnh_b, 2},
               {"Cbb11", 10, TEnh_bb, 3},
               {"Cbb1", 10, TEnh_bb, 3},
               {"Dbb7", 1, TEnh_b, 2},
               {"Abbm", 7, TEnh_bb, 3},
               {"Cis", 1, TEnh_s, 3},
               {"cIS7", 1, TEnh_s, 3},
               {"Ci", 0, TEnh_n, 1},
               {"Es", 4, TEnh_n, 1},
               {"Fx", 7, TEnh_ss, 2},
               {"Bx", 1, TEnh_ss, 2},
               {"B#", 0, TEnh_s, 2},
               {"CB", 0, TEnh_n, 1},
               {"  D#m7", 3, TEnh_s, 4}},
              GetCurrentChordNamePrefs());
}

TEST(KeyEnhFromString, LettersPrefsAndFailures) {
  ExpectReads({{"H", 11, TEnh_n, 1},
               {"h7", 11, TEnh_n, 1},
               {"B", 11, TEnh_n, 1},
               {"a", 9, TEnh_n, 1},
               {"   ", kKeyNrUndef, TEnh_Undef, 0},
               {"Xb", kKeyNrUndef, TEnh_Undef, 0},
               {"Is", kKeyNrUndef, TEnh_Undef, 0}},
              GetCurrentChordNamePrefs());
  CChordNamePrefs bFlat;
  bFlat.BIsBFlat = 1;
  // A plain B is B flat; a flat after it lowers from there.
  ExpectReads({{"B", 10, TEnh_b, 1}, {"Bb", 9, TEnh_b, 2}, {"H", 11, TEnh_n, 1}}, bFlat);

  CKeyEnh key;
  key.SetFromString("G#");  // no count wanted
  EXPECT_EQ(key, CKeyEnh(8, TEnh_s));
}

// Unicode signs are read as their ASCII forms; the count is of the converted text.
TEST(KeyEnhFromString, Utf8Accidentals) {
  ExpectReads({{"C\u266F", 1, TEnh_s, 2},
               {"E\u266D7", 3, TEnh_b, 2},
               {"B\u266D\u266D", 9, TEnh_bb, 3},
               {"B\u266D\u266D5", 10, TEnh_b, 2},
               {"\u266F", kKeyNrUndef, TEnh_Undef, 0},
               {"\u266D", 11, TEnh_n, 1}},  // a lone flat sign becomes the letter b
              GetCurrentChordNamePrefs());
}

TEST(KeyEnhJson, WrittenWithPaddedKeyNumberAndReadBack) {
  const auto json = [](CKeyEnh key) { return testing::Json(key); };
  EXPECT_EQ(json(CKeyEnh(5, TEnh_n)), R"({"KeyNr":" 5","Enh":"neutral"})");
  EXPECT_EQ(json(CKeyEnh(11, TEnh_ss)), R"({"KeyNr":"11","Enh":"double sharp"})");
  EXPECT_EQ(json(CKeyEnh()), R"({"KeyNr":"15","Enh":"undef"})");
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : kSpellings) {
      const auto dict = platform::ParseJson(json(CKeyEnh(key, enh)));
      ASSERT_TRUE(dict.has_value());
      EXPECT_EQ(CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*dict),
                CKeyEnh(key, enh));
    }
  }
  const auto read = [](const char* text) {
    return CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*platform::ParseJson(text));
  };
  EXPECT_EQ(read("{}"), CKeyEnh());
  EXPECT_EQ(read(R"({"KeyNr":7,"Enh":"Sharp"})"), CKeyEnh(7, TEnh_Undef));
  EXPECT_EQ(read(R"({"Enh":"flat"})"), CKeyEnh(kKeyNrUndef, TEnh_b));
  EXPECT_EQ(read("[1,2]"), CKeyEnh());
}

TEST(KeyEnh, TraceForms) {
  const CKeyEnh key(3, TEnh_b);
  EXPECT_EQ(key.StringForInitializerList(), "CKeyEnh(3, TEnh_b)");
  EXPECT_EQ(key.TraceString().rfind("CKeyEnh: (", 0), 0u);
  EXPECT_EQ(key.TraceBriefString(), "E\u266D");
}

}  // namespace
}  // namespace harmony
