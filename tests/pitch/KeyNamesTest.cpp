#include <gtest/gtest.h>

#include <array>
#include <string>

#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/TextUtil.h"

namespace harmony {
namespace {

CChordNamePrefs Prefs(void (*change)(CChordNamePrefs&)) {
  CChordNamePrefs prefs;
  change(prefs);
  return prefs;
}
const CChordNamePrefs kAscii = Prefs([](CChordNamePrefs& p) { p.AsciiAccidentals = 1; });
const CChordNamePrefs kGerman = Prefs([](CChordNamePrefs& p) { p.GermanAccidentals = 1; });
const CChordNamePrefs kSolfegeTi = Prefs([](CChordNamePrefs& p) {
  p.Solfege = 1;
  p.AsciiAccidentals = 1;
});
const CChordNamePrefs kSolfegeSi = Prefs([](CChordNamePrefs& p) {
  p.Solfege = 2;
  p.AsciiAccidentals = 1;
});
const CChordNamePrefs kSpoken = Prefs([](CChordNamePrefs& p) { p.AccessibilitySpoken = 1; });

using TNames = std::array<const char*, 12>;

void ExpectNames(TEnh enh, const CChordNamePrefs& prefs, const TNames& names) {
  for (int key = 0; key < 12; ++key) {
    if (names[key] == nullptr) continue;
    EXPECT_EQ(KeyNrAndEnhToName(key, enh, prefs), names[key]) << key << " " << enh;
  }
}

TEST(KeyNames, LetterNamesReadBackAsTheSameKey) {
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : {TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss}) {
      if (!IsSensefulEnhForKeyNr(key, enh)) continue;
      for (const CChordNamePrefs* prefs : {&kAscii, &GetCurrentChordNamePrefs()}) {
        const std::string name = KeyNrAndEnhToName(key, enh, *prefs);
        CKeyEnh read;
        int consumed = 0;
        read.SetFromString(name, &consumed);
        EXPECT_EQ(read, CKeyEnh(key, enh)) << name;
      }
    }
  }
}

TEST(KeyNames, LetterStyle) {
  ExpectNames(TEnh_bb, kAscii,
              {"Dbb", nullptr, "Ebb", "Fbb", nullptr, "Gbb", nullptr, "Abb", nullptr, "Bbb", "Cbb",
               nullptr});
  ExpectNames(
      TEnh_ss, kAscii,
      {nullptr, "Bx", "Cx", nullptr, "Dx", nullptr, "Ex", "Fx", nullptr, "Gx", nullptr, "Ax"});
  // Without a spelling the black keys take their usual names.
  ExpectNames(TEnh_n, kAscii, {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "G#", "A", "Bb", "B"});
  ExpectNames(TEnh_Undef, kAscii,
              {"C", "C#", "D", "Eb", "E", "F", "F#", "G", "G#", "A", "Bb", "B"});
  // Unicode signs behind the first character, never an empty name.
  EXPECT_EQ(KeyNrAndEnhToName(3, TEnh_n, GetCurrentChordNamePrefs()), "E\u266D");
  EXPECT_EQ(KeyNrAndEnhToName(0, TEnh_bb, GetCurrentChordNamePrefs()), "D\u266D\u266D");
  EXPECT_EQ(KeyNrAndEnhToName(1, TEnh_s, GetCurrentChordNamePrefs()), "C\u266F");
  EXPECT_EQ(KeyNrAndEnhToName(kKeyNrUndef, TEnh_Undef, GetCurrentChordNamePrefs()), "Undef");
  EXPECT_EQ(KeyNrAndEnhToName(-3, TEnh_n, kAscii), "C");  // clamped, not wrapped
  EXPECT_EQ(KeyNrAndEnhToName(14, TEnh_n, kAscii), "B");
}

TEST(KeyNames, BIsHAndBIsBFlat) {
  CChordNamePrefs h = kAscii;
  h.BIsH = 1;
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, h), "H");
  EXPECT_EQ(KeyNrAndEnhToName(0, TEnh_s, h), "H#");
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_b, h), "Bb");
  EXPECT_EQ(KeyNrAndEnhToName(9, TEnh_bb, h), "Hbb");
  CChordNamePrefs bFlat = kAscii;
  bFlat.BIsBFlat = 1;
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_b, bFlat), "B");
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_s, bFlat), "A#");
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, bFlat), "B");
}

TEST(KeyNames, GermanStyle) {
  ExpectNames(TEnh_bb, kGerman,
              {"Deses", nullptr, "Eeses", "Feses", nullptr, "Geses", nullptr, "Ases", nullptr,
               "Beses", "Ceses", nullptr});
  ExpectNames(
      TEnh_b, kGerman,
      {nullptr, "Des", nullptr, "Es", "Fes", nullptr, "Ges", nullptr, "As", nullptr, "Bes", "Ces"});
  ExpectNames(TEnh_s, kGerman,
              {"Bis", "Cis", nullptr, "Dis", nullptr, "Eis", "Fis", nullptr, "Gis", nullptr, "Ais",
               nullptr});
  ExpectNames(TEnh_ss, kGerman,
              {nullptr, "Bisis", "Cisis", nullptr, "Disis", nullptr, "Eisis", "Fisis", nullptr,
               "Gisis", nullptr, "Aisis"});
  // Unspelled black keys: E flat comes out as "Ees".
  ExpectNames(TEnh_n, kGerman,
              {"C", "Cis", "D", "Ees", "E", "F", "Fis", "G", "Gis", "A", "Bes", "B"});
  CChordNamePrefs bh = kGerman;
  bh.BIsH = 1;
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, bh), "H");
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_b, bh), "Bes");
  EXPECT_EQ(KeyNrAndEnhToName(9, TEnh_bb, bh), "Heses");
  EXPECT_EQ(KeyNrAndEnhToName(0, TEnh_s, bh), "His");
  bh.BIsBFlat = 1;
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_b, bh), "B");
}

TEST(KeyNames, SolfegeStyles) {
  ExpectNames(TEnh_n, kSolfegeTi,
              {"Do", "Do#", "Re", "Mib", "Mi", "Fa", "Fa#", "Sol", "Sol#", "La", "Tib", "Ti"});
  ExpectNames(TEnh_b, kSolfegeTi,
              {nullptr, "Reb", nullptr, "Mib", "Fab", nullptr, "Solb", nullptr, "Lab", nullptr,
               "Tib", "Dob"});
  ExpectNames(TEnh_ss, kSolfegeTi,
              {nullptr, "Tix", "Dox", nullptr, "Rex", nullptr, "Mix", "Fax", nullptr, "Solx",
               nullptr, "Lax"});
  EXPECT_EQ(KeyNrAndEnhToName(3, TEnh_bb, kSolfegeTi), "Fabb");
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_bb, kSolfegeTi), "Dobb");
  EXPECT_EQ(KeyNrAndEnhToName(0, TEnh_bb, kSolfegeTi), "Rebb");
  EXPECT_EQ(KeyNrAndEnhToName(0, TEnh_s, kSolfegeTi), "Ti#");
  EXPECT_EQ(KeyNrAndEnhToName(0, TEnh_s, kSolfegeSi), "Si#");
  EXPECT_EQ(KeyNrAndEnhToName(1, TEnh_ss, kSolfegeSi), "Six");
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, kSolfegeSi), "Si");
  EXPECT_EQ(KeyNrAndEnhToName(10, TEnh_b, kSolfegeSi), "Sib");
  CChordNamePrefs utf8 = kSolfegeTi;
  utf8.AsciiAccidentals = 0;
  EXPECT_EQ(KeyNrAndEnhToName(1, TEnh_b, utf8), "Re\u266D");
  utf8.Solfege = 3;  // Ti syllables, localized (no translation installed: unchanged)
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, utf8), "Ti");
  EXPECT_EQ(KeyNrAndEnhToName(8, TEnh_s, utf8), "Sol\u266F");
  // Solfege wins over German accidentals.
  CChordNamePrefs both = kSolfegeTi;
  both.GermanAccidentals = 1;
  EXPECT_EQ(KeyNrAndEnhToName(1, TEnh_s, both), "Do#");
}

TEST(KeyNames, SpokenStyle) {
  EXPECT_EQ(KeyNrAndEnhToName(1, TEnh_s, kSpoken), "c sharp");
  EXPECT_EQ(KeyNrAndEnhToName(3, TEnh_n, kSpoken), "e flat");
  EXPECT_EQ(KeyNrAndEnhToName(9, TEnh_bb, kSpoken), "b double flat");
  EXPECT_EQ(KeyNrAndEnhToName(7, TEnh_ss, kSpoken), "f double sharp");
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, kSpoken), "b");
  CChordNamePrefs h = kSpoken;
  h.BIsH = 1;
  EXPECT_EQ(KeyNrAndEnhToName(11, TEnh_n, h), "h");
  EXPECT_EQ(_ReplaceAccidentalNamesNormalWithAccessibilitySpoken("Bb"), "B flat");
  EXPECT_EQ(_ReplaceAccidentalNamesNormalWithAccessibilitySpoken("Fbb"), "F double flat");
  EXPECT_EQ(_ReplaceAccidentalNamesNormalWithAccessibilitySpoken("Cx"), "C double sharp");
  EXPECT_EQ(_ReplaceAccidentalNamesNormalWithAccessibilitySpoken("C#"), "C sharp");
  EXPECT_EQ(_ReplaceAccidentalNamesNormalWithAccessibilitySpoken("C"), "C");
  EXPECT_EQ(_ReplaceAccidentalNamesNormalWithAccessibilitySpoken(""), "");
}

TEST(KeyNames, NamesWithoutAccidental) {
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  EXPECT_EQ(KeyNrToNameIgnoringEnh(1, TEnh_s, prefs), "C");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(1, TEnh_b, prefs), "D");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(3, TEnh_n, prefs), "E");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(1, TEnh_ss, prefs), "B");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(6, TEnh_ss, prefs), "E");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(3, TEnh_bb, prefs), "F");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(10, TEnh_bb, prefs), "C");
  CChordNamePrefs h = prefs;
  h.BIsH = 1;
  EXPECT_EQ(KeyNrToNameIgnoringEnh(11, TEnh_n, h), "H");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(10, TEnh_b, h), "B");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(1, TEnh_ss, kSolfegeTi), "Ti");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(1, TEnh_ss, kSolfegeSi), "Si");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(3, TEnh_bb, kSolfegeTi), "Fa");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(8, TEnh_s, kSolfegeTi), "Sol");
  EXPECT_EQ(KeyNrToNameIgnoringEnh(1, TEnh_s, kGerman), "Cis");  // German keeps its ending
}

TEST(KeyNames, SignsAndTextHelpers) {
  EXPECT_STREQ(SharpAsUTF8OrNot(GetCurrentChordNamePrefs()), "\u266F");
  EXPECT_STREQ(FlatAsUTF8OrNot(GetCurrentChordNamePrefs()), "\u266D");
  EXPECT_STREQ(SharpAsUTF8OrNot(GetChordNamePrefsNonUTF8()), "#");
  EXPECT_STREQ(FlatAsUTF8OrNot(GetChordNamePrefsNonUTF8()), "b");
  std::string text = "C\u266Fm7\u266D5\u266D\u266F";
  ConvertUtf8SharpAndFlatToAscii(text);
  EXPECT_EQ(text, "C#m7b5b#");
  EXPECT_EQ(_UTF8StringLength("C\u266F\u266D"), 3u);
  EXPECT_STREQ(_EnabledBoolStr(true, false), "disabled");
  EXPECT_STREQ(_EnabledBoolStr(false, true), "false");
}

}  // namespace
}  // namespace harmony
