#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordTypes.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony {
namespace {

constexpr CKeyEnh kC(0, TEnh_n), kD(2, TEnh_n), kE(4, TEnh_n), kNoKey;
constexpr CKeyEnh kAb(8, TEnh_b), kBb(10, TEnh_b), kEb(3, TEnh_b), kFSharp(6, TEnh_s);
constexpr int kWrap = 24;

CChordHeavy FromLite(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = kNoKey) {
  return CChordLite(root, CSemitones(mask), bass).ToChordHeavy(kWrap);
}

CChordHeavy Played(CNote root, std::initializer_list<unsigned char> noteNrs) {
  return CChordHeavy(root, CMySet<unsigned char>(noteNrs), kWrap);
}

const CChordNamePrefs& Ascii() { return GetChordNamePrefsNonUTF8(); }

std::string Without(std::string text, const std::string& chars) {
  std::erase_if(text, [&](char c) { return chars.find(c) != std::string::npos; });
  return text;
}

TEST(ChordNaming, ChordsInDefaultStyle) {
  struct Case {
    CKeyEnh root;
    std::uint64_t mask;
    CKeyEnh bass;
    const char* name;
  };
  const Case cases[] = {
      {kC, 1169, kE, "C7/E"},
      {kC, 1185, kNoKey, "C7sus4"},  // the seven comes before the sus
      {kC, 1157, kNoKey, "C7sus2"},
      {kC, 1105, kNoKey, "C7b5"},
      {kC, 81, kNoKey, "C(b5)"},    // a bare "b5" could be read as part of the root
      {kAb, 129, kNoKey, "Ab(5)"},  // likewise "5" after a flat
      {kC, 129, kNoKey, "C5"},
      {kAb, 1169, kNoKey, "Ab(7)"},
      {kBb, 1105, kNoKey, "Bb(7)b5"},
      {kC, 1235, kNoKey, "C7(b9,#11)"},
      {kC, 1179, kNoKey, "C7(b9,#9)"},
      {kC, 139, kNoKey, "Cmadd b9"},
      {kC, 177, kNoKey, "Cadd 11"},
      {kC, 401, kNoKey, "C(b13)"},
      {kC, 2121, kNoKey, "Cdimma7"},
      {kC, 1033, kNoKey, "Cm7"},         // a minor third and seventh without fifth
      {kC, 265, kNoKey, "Cno3(b3,#5)"},  // 0 3 8 is no triad on C
      {kEb, 1165, kBb, "Ebm7(9)/Bb"},
      {CKeyEnh(11, TEnh_n), 2257, kNoKey, "Bma7(#11)"},
      {kFSharp, 1185, kNoKey, "F#(7)sus4"},
      {kC, 145, kD, "C/D"},                    // the bass-only second of a wide chord is no option
      {kC, 145, CKeyEnh(10, TEnh_s), "C/Bb"},  // the bass is spelled by the chord's scale
      {kD, 145, CKeyEnh(6, TEnh_b), "D/F#"},
      {kC, 1, kNoKey, "Cno3"},                             // root and bass slot are two notes
      {kC, 4095, kNoKey, "C6(7,ma7,b9,9,#9,11,#11,b13)"},  // the order of the options
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FromLite(c.root, c.mask, c.bass).Name(Ascii()), c.name) << c.mask;
  }
  EXPECT_EQ(FromLite(kC, 1235).Name(),
            "C7(\xE2\x99\xAD"
            "9,\xE2\x99\xAF"
            "11)");
  EXPECT_EQ(CChordHeavy_NoChordYield.Name(), "No Chord Yield");
  EXPECT_EQ(CChordHeavy_NoChordForce.Name(), "No Chord");
  EXPECT_EQ(CChordHeavy_Undef.Name(), "");
  EXPECT_EQ(Played(CNote::Undef, {67}).Name(), "G");  // one note: the root alone
}

TEST(ChordNaming, NarrowAndWideChords) {
  const CNote c(60, TEnh_n);
  EXPECT_EQ(Played(c, {64, 67, 70, 72}).Name(Ascii()), "C7");  // narrow: no slash
  EXPECT_EQ(Played(c, {52, 60, 64, 67, 70}).Name(Ascii()), "C7/E");
  CChordNamePrefs slashAlways = Ascii();
  slashAlways.NameWithoutSlashIfNarrow = 0;
  EXPECT_EQ(Played(c, {64, 67, 70, 72}).Name(slashAlways), "C7/E");
  // The second that sounds only in the bass is hidden in a wide chord only.
  EXPECT_EQ(Played(c, {62, 64, 67, 72}).Name(Ascii()), "Cadd 9");
  CChordNamePrefs showBass = Ascii();
  showBass.HideBassIntvlInWideChords = 0;
  EXPECT_EQ(FromLite(kC, 145, kD).Name(showBass), "Cadd 9/D");
  EXPECT_EQ(FromLite(kC, 145, kD).OptionsName(showBass), "add 9");
  EXPECT_EQ(FromLite(kC, 145, kD).OptionsName(Ascii()), "");

  // Naming respells the bass in the chord itself.
  const CChordHeavy sharpBass = FromLite(kC, 145, CKeyEnh(10, TEnh_s));
  EXPECT_EQ(sharpBass.BassKeyEnh(), CKeyEnh(10, TEnh_s));
  (void)sharpBass.Name(Ascii());
  EXPECT_EQ(sharpBass.BassKeyEnh(), kBb);
  CChordLite lite;
  lite.SetFromChordHeavy(sharpBass);
  EXPECT_EQ(lite.BassKeyEnh, kBb);
}

// One chord set in several preferences: spoken, German, solfege, small minor letters,
// spaced name parts and the comma form.
TEST(ChordNaming, Preferences) {
  CChordNamePrefs spoken, german, solfege, minor1, minor2;
  spoken.AccessibilitySpoken = 1;
  german.GermanAccidentals = german.BIsH = german.BIsBFlat = 1;
  solfege.Solfege = 1;
  minor1.MinorNaming = 1;
  minor2.MinorNaming = 2;
  const CChordNamePrefs spaced = CurrentChordNamePrefs_SpaceBetweenNamePartsAndSlash();
  const CChordNamePrefs& comma = GetCurrentChordNamePrefs_Loftbox();
  const std::vector<const CChordNamePrefs*> prefs{&spoken, &german, &solfege, &minor1,
                                                  &minor2, &spaced, &comma};
  struct Case {
    CChordHeavy chord;
    std::vector<std::string> names;
  };
  const Case cases[] = {
      {FromLite(kC, 1169, kE),
       {"c major 7/e", "C7/E", "Do7/Mi", "C7/E", "C7/E", "C 7 / E", "C,,7,/ E"}},
      {FromLite(kBb, 1097),
       {"b flat minor 7 flat 5", "Bm7(♭5)", "Ti♭m7(♭5)", "b♭m7(♭5)", "b♭(7,♭5)", "B♭ m 7(♭5)",
        "B♭,m,7(♭5)"}},
      {FromLite(kEb, 1165, kBb),
       {"e flat minor 7 9/b flat", "Esm7(9)/B", "Mi♭m7(9)/Ti♭", "e♭m7(9)/B♭", "e♭(7,9)/B♭",
        "E♭ m 7(9) / B♭", "E♭,m,7(9),/ B♭"}},
      {FromLite(kFSharp, 1185),
       {"f sharp 7 sus4", "Fis(7)sus4", "Fa♯(7)sus4", "F♯(7)sus4", "F♯(7)sus4", "F♯ 7 sus4",
        "F♯,7,sus4"}},
      {FromLite(kAb, 129), {"a flat 5", "As(5)", "La♭(5)", "A♭(5)", "A♭(5)", "A♭ 5", "A♭,5,"}},
      {FromLite(CKeyEnh(11, TEnh_n), 2257),
       {"b major major 7 sharp 11", "Hma7(♯11)", "Tima7(♯11)", "Bma7(♯11)", "Bma7(♯11)",
        "B ma7(♯11)", "B,,ma7(♯11)"}},
  };
  for (const Case& c : cases) {
    for (std::size_t i = 0; i < prefs.size(); ++i) {
      EXPECT_EQ(c.chord.Name(*prefs[i]), c.names[i]) << "prefs " << i;
    }
  }
}

TEST(ChordNaming, TensionAndSeventhStyles) {
  CChordNamePrefs prefs = Ascii();
  const CChordHeavy c = FromLite(kC, 1235);
  const CChordHeavy ab = FromLite(kAb, 1169);
  const std::pair<const char*, const char*> byStyle[] = {
      {"C7/b9/#11", "Ab 7"}, {"C7(b9)(#11)", "Ab(7)"}, {"C7(b9,#11)", "Ab(7)"}};
  for (int style = 0; style < 3; ++style) {
    prefs.TensionStyle = style;
    EXPECT_EQ(c.Name(prefs), byStyle[style].first);
    EXPECT_EQ(ab.Name(prefs), byStyle[style].second);
  }
  prefs = Ascii();
  EXPECT_EQ(c.OptionsStringVector(prefs), (std::vector<std::string>{"7", "b9", "#11"}));
  std::vector<int> keys;
  for (const auto& entry : c.OptionsMap(prefs)) keys.push_back(entry.Key);
  EXPECT_EQ(keys, (std::vector<int>{10, 13, 18}));
  for (const auto& [style, name] : {std::pair{1, "Cj7"}, {2, "Cmaj7"}, {0, "Cma7"}, {7, "Cma7"}}) {
    prefs.MajorSeventhStyle = style;
    EXPECT_EQ(FromLite(kC, 2193).Name(prefs), name);
  }
  EXPECT_EQ(CChordHeavy::OptionName(CChordHeavy::kOption_add_b9, Ascii()), "add b9");
  EXPECT_EQ(CChordHeavy::OptionName(CChordHeavy::kOption_sharp9, GetCurrentChordNamePrefs()),
            std::string(kUtf8Sharp) + "9");
  EXPECT_EQ(CChordHeavy::OptionName(static_cast<CChordHeavy::TChordOption>(20), Ascii()), "");
}

// Every built-in chord type on every spelled root: the name is the root's and the type's,
// it survives the chord record, and the type is found again from the chord.
TEST(ChordNaming, EveryChordTypeOnEveryRoot) {
  const char* const cSuffixes[] = {"",        "m",     "sus2",   "sus4",   "7",       "7(b9)",
                                   "7(#9)",   "7(11)", "7(13)",  "7(b13)", "7(9)",    "add 9",
                                   "6",       "6(9)",  "ma7",    "ma7b5",  "ma7(b9)", "ma7(#9)b5",
                                   "ma7(13)", "m7",    "m7(b5)", "mma7",   "madd 9",  "m6",
                                   "m6(9)",   "mb13",  "dim",    "dim7",   "aug",     "aug7"};
  const CChordTypeVec& types = SharedChordTypes().BuiltIn();
  ASSERT_EQ(types.size(), std::size(cSuffixes));
  const int letterKeys[] = {0, 2, 4, 5, 7, 9, 11};
  for (std::size_t t = 0; t < types.size(); ++t) {
    for (int letterKey : letterKeys) {
      for (TEnh enh : {TEnh_b, TEnh_n, TEnh_s}) {
        const CKeyEnh root(NormalizedKeyNr(letterKey + enh - TEnh_n), enh);
        const CChordHeavy chord(root, types[t].Intvls, kNoKey, kWrap);
        const std::string name = chord.Name(Ascii());
        const std::string rootName = KeyNrAndEnhToName(root.KeyNr, root.Enh, Ascii());
        SCOPED_TRACE(name);
        ASSERT_EQ(name.rfind(rootName, 0), 0U);
        const std::string suffix = name.substr(rootName.size());
        // After a natural root the suffix is C's; after an accidental only the clarifying
        // parentheses may differ.
        if (enh == TEnh_n) {
          EXPECT_EQ(suffix, cSuffixes[t]);
        } else {
          EXPECT_EQ(Without(suffix, "(),"), Without(cSuffixes[t], "(),"));
        }
        CChordLite lite;
        lite.SetFromChordHeavy(chord);
        EXPECT_EQ(lite.ToChordHeavy(kWrap).Name(Ascii()), name);
        EXPECT_EQ(chord.Name(Ascii()), name);  // naming changed nothing that names
        const auto found = SharedChordTypes().FindChordTypeVecAndChordTypeFromChord(chord);
        ASSERT_EQ(found.first, kChordTypeVecSel_BuiltIn);
        EXPECT_EQ(found.second->Id, types[t].Id);
      }
    }
  }
}

TEST(ChordNaming, OtherRoots) {
  const CChordHeavy c6 = FromLite(kC, 661 - 4);  // C E G A
  EXPECT_EQ(c6.Name(Ascii()), "C6");
  EXPECT_EQ(c6.NameForThisRootNote(CNote(57, TEnh_n), Ascii()), "Am7");
  CNote aSharpSpelled(57, TEnh_n);
  aSharpSpelled.SetEnhAndDontMakeSenseful(TEnh_s);  // no letter: C major spells it
  EXPECT_EQ(c6.NameForThisRootNote(aSharpSpelled, Ascii()), "Am7");
  EXPECT_EQ(c6.Name(Ascii()), "C6");  // the chord itself is not re-rooted

  struct Case {
    CKeyEnh chordRoot;
    std::uint64_t mask;
    CNote root;
    const char* name;
  };
  const Case cases[] = {
      {CKeyEnh(1, TEnh_s), 145, CNote(61, TEnh_s), "Db"},  // 7 sharps against 5 flats
      {kFSharp, 145, CNote(66, TEnh_s), "F#"},             // 6 against 6: the given one
      {CKeyEnh(6, TEnh_b), 145, CNote(66, TEnh_b), "Gb"},
      {CKeyEnh(10, TEnh_s), 137, CNote(58, TEnh_s), "Bbm"},  // A sharp minor has 7 sharps
      {CKeyEnh(3, TEnh_s), 137, CNote(63, TEnh_s), "D#m"},
      {CKeyEnh(8, TEnh_s), 145, CNote(68, TEnh_n), "Ab"},  // the C major G sharp respelled
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FromLite(c.chordRoot, c.mask).NameWithLeastSignsForThisRootNote(c.root, Ascii()),
              c.name);
  }
}

// The sign count of the scale a chord sounds in, and the root respelled with the fewest
// signs. Sign keys, light scales and heavy chords must agree on that spelling.
TEST(ChordNaming, LeastSignsSpelling) {
  EXPECT_EQ(FromLite(kC, 145).SignsCount(), 0);
  EXPECT_EQ(FromLite(CKeyEnh(9, TEnh_n), 137).SignsCount(), 0);
  EXPECT_EQ(FromLite(kEb, 145).SignsCount(), -3);
  EXPECT_EQ(FromLite(kC, 137).SignsCount(), -3);
  EXPECT_EQ(FromLite(kFSharp, 145).SignsCountAbs(), 6);
  // The scale's root spelling is written into a root without spelling.
  const CChordHeavy unspelled = FromLite(CKeyEnh(6, TEnh_Undef), 145);
  EXPECT_EQ(unspelled.RootNote().Enh(), TEnh_Undef);
  const int count = unspelled.SignsCount();
  EXPECT_NE(unspelled.RootNote().Enh(), TEnh_Undef);
  EXPECT_EQ(count, unspelled.RootNote().Enh() == TEnh_s ? 6 : -6);

  CChordHeavy cSharp = FromLite(CKeyEnh(1, TEnh_s), 145, kNoKey);
  cSharp.SetRootNoteEnhWithLeastSigns();
  EXPECT_EQ(cSharp.RootKeyEnh(), CKeyEnh(1, TEnh_b));
  CChordLite lite;
  lite.SetFromChordHeavy(cSharp);  // the bass slot followed the root: no slash chord
  EXPECT_EQ(lite, CChordLite(CKeyEnh(1, TEnh_b), CSemitones(145)));

  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : {TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss, TEnh_Undef}) {
      for (TSignKeyType type : {TSignKeyType::Major, TSignKeyType::Minor}) {
        const CSemitones triad(type == TSignKeyType::Major ? 145 : 137);
        CChordHeavy chord(CKeyEnh(key, enh), triad, kNoKey, kWrap);
        chord.SetRootNoteEnhWithLeastSigns();
        CSignKeyLite signKey(CKeyEnh(key, enh), type);
        signKey.SetRootNoteEnhWithLeastSigns();
        CScaleLite scale(CKeyEnh(key, enh), SemitonesFromSignKeyType(type));
        scale.SetRootKeyEnhWithLeastSigns();
        SCOPED_TRACE(std::to_string(key) + " " + EnhText(enh));
        EXPECT_EQ(chord.RootNote().Enh(), signKey.RootKeyEnh.Enh);
        EXPECT_EQ(scale.RootKeyEnh.Enh, signKey.RootKeyEnh.Enh);
        if (enh == TEnh_Undef) {
          const TScaleType scaleType = type == TSignKeyType::Major ? st_maj : st_min;
          EXPECT_EQ(CScaleHeavy(key, scaleType).RootNote().Enh(), signKey.RootKeyEnh.Enh);
        }
      }
    }
  }
}

}  // namespace
}  // namespace harmony
