#include "harmony/chords/ChordLite.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "TestText.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

using testing::Json;

constexpr int kUndef = -129;
constexpr CKeyEnh kC(0, TEnh_n), kBSharp(0, TEnh_s), kCSharp(1, TEnh_s), kDFlat(1, TEnh_b);
constexpr CKeyEnh kD(2, TEnh_n), kEFlat(3, TEnh_b), kE(4, TEnh_n), kFSharp(6, TEnh_s);
constexpr CKeyEnh kGFlat(6, TEnh_b), kA(9, TEnh_n), kNoKey;

constexpr std::uint64_t Bits(std::initializer_list<int> intvls) {
  std::uint64_t word = 0;
  for (int intvl : intvls) word |= std::uint64_t{1} << intvl;
  return word;
}

CChordLite Chord(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = kNoKey) {
  return CChordLite(root, CSemitones(mask), bass);
}

CChordLite FromJsonText(const std::string& text) {
  const auto dict = platform::ParseJson(text);
  EXPECT_TRUE(dict.has_value()) << text;
  return dict ? CChordLite::FromDictionary(*dict) : CChordLite();
}

TEST(ChordLite, UndefinedNoChordAndSlashStates) {
  for (const CChordLite& chord : {CChordLite(), CChordLite_NoChordYield, CChordLite_NoChordForce}) {
    EXPECT_TRUE(chord.IsUndef() && !chord.HasBassNote() && !chord.IsSlashChord());
  }
  EXPECT_TRUE(CChordLite_NoChordYield.IsNoChordYield() && CChordLite_NoChordForce.IsNoChordForce());
  EXPECT_FALSE(CChordLite_NoChordYield.IsNoChordForce() ||
               CChordLite_NoChordForce.IsNoChordYield() || CChordLite().IsNoChordYield() ||
               CChordLite().IsNoChordForce());
  CChordLite chord = Chord(kC, 145, kE);  // the setters write the root only
  chord.SetNoChordYield();
  EXPECT_EQ(chord, Chord(CKeyEnh(15, TEnh_bb), 145, kE));
  chord.SetUndef();
  EXPECT_EQ(chord, Chord(kNoKey, 145, kE));
  EXPECT_FALSE(Chord(kC, 145, kC).IsSlashChord());
  EXPECT_TRUE(Chord(kC, 145, kBSharp).IsSlashChord());  // same key, other spelling
}

TEST(ChordLite, RootAndBassIntervals) {
  struct Case {
    CKeyEnh root, bass;
    int raw, abs, smallest, distance;
  };
  const Case cases[] = {{kC, kFSharp, 6, 6, -6, 6},
                        {kFSharp, kC, -6, 6, -6, 6},
                        {CKeyEnh(11, TEnh_n), kC, -11, 1, 1, 1},
                        {kNoKey, kE, kUndef, kUndef, kUndef, kUndef}};
  for (const Case& c : cases) {
    const CChordLite chord = Chord(c.root, 145, c.bass);
    EXPECT_EQ(chord.KeyIntvlFromRootToBass(), c.raw) << c.root.KeyNr << "/" << c.bass.KeyNr;
    EXPECT_EQ(chord.AbsKeyIntvlFromRootToBass(), c.abs);
    EXPECT_EQ(chord.SmallestKeyIntvlBetweenRootAndBass(), c.smallest);
    EXPECT_EQ(chord.KeyDistanceBetweenRootAndBass(), c.distance);
  }
  EXPECT_EQ(Chord(kC, 145).KeyIntvlFromRootToBass(), kUndef);
  EXPECT_EQ(Chord(kE, 145).KeyNrFromChordKeyNr(11), 3);  // not the undefined 15
  EXPECT_EQ(Chord(kE, 145).ChordKeyNrFromKeyNr(3), 11);
  EXPECT_EQ(Chord(kE, 145).ChordKeyNrFromKeyNr(15), 15);
  EXPECT_EQ(Chord(kNoKey, 145).KeyNrFromChordKeyNr(0), 15);
}

TEST(ChordLite, TonesBasicChordAndBassAlone) {
  const CChordLite halfDim = Chord(kC, Bits({0, 3, 6, 10}));
  EXPECT_EQ(halfDim.BasicChord(), kBasicChordDim);
  EXPECT_EQ(halfDim.BasicChordForNaming(), kBasicChordMinor);
  EXPECT_EQ(Chord(kC, Bits({0, 3, 6, 9})).BasicChordForNaming(), kBasicChordDim);

  const CChordLite sevenFlatNine = Chord(kC, Bits({0, 1, 4, 7, 10}), kD);
  EXPECT_EQ(sevenFlatNine.OptionsSemitones(), CSemitones(Bits({1, 10})));
  EXPECT_TRUE(sevenFlatNine.HasBasicChordIntvl(7) && sevenFlatNine.HasOptionsIntvl(10));
  EXPECT_FALSE(sevenFlatNine.HasBasicChordIntvl(10) || sevenFlatNine.HasOptionsIntvl(13));
  EXPECT_TRUE(Chord(kC, Bits({0, 4})).HasBasicChordIntvl(7));  // a third alone is major

  EXPECT_TRUE(sevenFlatNine.BassKeyEnhHasThisIntvlAlone(2));
  EXPECT_FALSE(sevenFlatNine.BassKeyEnhHasThisIntvlAlone(14));
  EXPECT_TRUE(sevenFlatNine.BassKeyEnhHasIntvlAlone());
  EXPECT_FALSE(Chord(kC, 145, kE).BassKeyEnhHasIntvlAlone());
  EXPECT_TRUE(Chord(kC, 145).BassKeyEnhHasIntvlAlone());

  EXPECT_EQ(Chord(kE, Bits({0, 4, 7, 11})).KeyNrSet(), (CMySet<int>{4, 8, 11, 3}));
  EXPECT_TRUE(Chord(kNoKey, 145).KeyNrSet().empty());
}

TEST(ChordLite, HashCode) {
  // semitones + root key << 24 + root enh << 28 + bass key << 32 + bass enh << 36
  EXPECT_EQ(Chord(kC, 145, kE).GetChordHashCode(), 155155693713LL);
  CChordLite withDir = Chord(kA, 137);
  withDir.RootDir = 1;
  EXPECT_EQ(withDir.GetChordHashCode(), Chord(kA, 137).GetChordHashCode());

  // Every key and enh the four-bit fields can carry: the round trip also proves the codes
  // distinct.
  constexpr TEnh kEnhs[] = {TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss, TEnh_sss, TEnh_Undef};
  std::vector<CKeyEnh> keys;
  for (int key = 0; key < 16; ++key) {
    for (TEnh enh : kEnhs) keys.emplace_back(key, enh);
  }
  for (const CKeyEnh& root : keys) {
    for (const CKeyEnh& bass : keys) {
      for (std::uint64_t mask : {0, 1, 145, 2741, 4095, 0xFFFFFF}) {
        const CChordLite chord = Chord(root, mask, bass);
        CChordLite back = Chord(kA, 3, kD);
        back.SetFromChordHashCode(chord.GetChordHashCode());
        ASSERT_EQ(back, chord) << chord.StringForInitializerList();
      }
    }
  }

  // A triple flat is -1 in its four bits: it borrows from the bass key above it.
  CChordLite decoded;
  decoded.SetFromChordHashCode(Chord(CKeyEnh(2, TEnh_bbb), 145, kE).GetChordHashCode());
  EXPECT_EQ(decoded, Chord(CKeyEnh(2, static_cast<TEnh>(15)), 145, CKeyEnh(3, TEnh_n)));
}

TEST(ChordLite, RotateRootToKeyEnh) {
  struct Case {
    CChordLite from;
    CKeyEnh newRoot;
    CChordLite expected;
  };
  const Case cases[] = {
      {Chord(kC, 145), kA, Chord(kA, Bits({3, 7, 10}))},  // the tones keep their keys
      {Chord(kNoKey, 145, kE), kA, Chord(kNoKey, 145, kE)},
      {Chord(kC, 145, kE), kNoKey, Chord(kC, 145, kE)},
      // A bass on the root, spelled alike, follows the root.
      {Chord(kC, 145, kC), kEFlat, Chord(kEFlat, Bits({1, 4, 9}), kEFlat)},
      // Any other bass moves by the same interval; a natural result stays as it is.
      {Chord(kC, 145, kE), kEFlat, Chord(kEFlat, Bits({1, 4, 9}), CKeyEnh(7, TEnh_n))},
      // D up a semitone is D sharp, then spelled with the root's flat: E flat.
      {Chord(kC, 145, kD), kDFlat, Chord(kDFlat, Bits({3, 6, 11}), kEFlat)},
      {Chord(kC, 145, kD), kCSharp, Chord(kCSharp, Bits({3, 6, 11}), CKeyEnh(3, TEnh_s))},
      // E up a whole tone is F sharp; a natural root asks for no respelling.
      {Chord(kC, 145, kE), kD, Chord(kD, Bits({2, 5, 10}), kFSharp)},
      // B sharp is on the root key but spelled otherwise: F sharp, respelled G flat.
      {Chord(kC, 145, kBSharp), kGFlat, Chord(kGFlat, Bits({1, 6, 10}), kGFlat)},
  };
  for (const Case& c : cases) {
    CChordLite chord = c.from;
    chord.RotateRootToKeyEnh(c.newRoot);
    EXPECT_EQ(chord, c.expected) << c.from.StringForInitializerList() << " to "
                                 << c.newRoot.StringForInitializerList();
  }
}

TEST(ChordLite, RotateRootToBassKeyEnh) {
  const std::pair<CChordLite, CChordLite> cases[] = {
      {Chord(kC, 145, kE), Chord(kE, Bits({0, 3, 8}))},
      {Chord(kC, 145, kD), Chord(kD, Bits({0, 2, 5, 10}))},  // the bass becomes tone 0
      {Chord(kC, Bits({4, 7})), Chord(kC, 145)},             // no bass: only tone 0 added
      {Chord(kC, 145, kBSharp), Chord(kBSharp, 145)},
      {Chord(kNoKey, 144, kE), Chord(kNoKey, 144, kE)},
  };
  for (const auto& [from, expected] : cases) {
    CChordLite chord = from;
    chord.RotateRootToBassKeyEnh();
    EXPECT_EQ(chord, expected) << from.StringForInitializerList();
  }
}

TEST(ChordLite, EqualityAndOrder) {
  const CChordLite cSharp = Chord(kCSharp, 145, kFSharp);
  const CChordLite dFlat = Chord(kDFlat, 145, kGFlat);
  EXPECT_NE(cSharp, dFlat);
  EXPECT_TRUE(cSharp.EqualWithoutEnh(dFlat));
  EXPECT_FALSE(cSharp.EqualWithoutEnh(Chord(kCSharp, 145)));
  EXPECT_TRUE(cSharp.EqualExceptRootAndBass(Chord(kA, 145)));
  CChordLite moved = cSharp;
  moved.BassDir = -1;
  moved.Flag = 1;
  EXPECT_TRUE(moved == cSharp && moved.EqualWithoutDir(cSharp));
  EXPECT_FALSE(moved.EqualIncludingDir(cSharp));

  // Root key up, root enh down, bass key up, bass enh down, mask up as unsigned.
  const std::vector<CChordLite> expected{Chord(kBSharp, 145),
                                         Chord(kC, 137, kE),
                                         Chord(kC, 145, kE),
                                         Chord(kC, 145, CKeyEnh(4, TEnh_b)),
                                         Chord(kC, 0, kA),
                                         Chord(kC, 1),
                                         Chord(kC, std::uint64_t{1} << 63),
                                         Chord(kCSharp, 145),
                                         Chord(kDFlat, 145),
                                         CChordLite(),
                                         CChordLite_NoChordForce,
                                         CChordLite_NoChordYield};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    for (std::size_t j = 0; j < expected.size(); ++j) {
      EXPECT_EQ(expected[i] <=> expected[j], i <=> j) << i << " " << j;
    }
  }
}

TEST(ChordLite, JsonWrittenAndReadBack) {
  EXPECT_EQ(Json(Chord(kC, 145, kE)),
            "{\"RootKeyEnh\":{\"KeyNr\":\" 0\",\"Enh\":\"neutral\"}, "
            "\"BassKeyEnh\":{\"KeyNr\":\" 4\",\"Enh\":\"neutral\"}, \"Semitones\":145}");
  std::ostringstream substring;
  Chord(kC, 145, kE).AppendJSONClassSubstring(substring);
  EXPECT_EQ("{" + substring.str() + "}", Json(Chord(kC, 145, kE)));

  CChordLite withDir = Chord(kDFlat, Bits({0, 4, 7, 10}), kGFlat);
  withDir.RootDir = 3;  // not stored
  for (const CChordLite& chord :
       {CChordLite(), CChordLite_NoChordYield, CChordLite_NoChordForce, withDir,
        Chord(CKeyEnh(11, TEnh_sss), 4095, CKeyEnh(10, TEnh_bbb))}) {
    const CChordLite back = FromJsonText(Json(chord));
    EXPECT_EQ(back, chord) << Json(chord);
    EXPECT_EQ(back.RootDir, 0);
  }

  // Without the spelled key the key number alone is read, with an undefined enh.
  EXPECT_EQ(FromJsonText(R"({"RootKeyNr":7,"BassKeyNr":"11","Semitones":137})"),
            Chord(CKeyEnh(7, TEnh_Undef), 137, CKeyEnh(11, TEnh_Undef)));
  EXPECT_EQ(FromJsonText(R"({"RootKeyEnh":{"KeyNr":"3","Enh":"flat"},"RootKeyNr":5})"),
            Chord(kEFlat, 0));
  EXPECT_EQ(FromJsonText("[1,2]"), CChordLite());
  // Semitones are a 32-bit number; a float far beyond any integer saturates.
  EXPECT_EQ(FromJsonText(R"({"Semitones":4294967441})").Semitones, CSemitones(145));
  EXPECT_EQ(FromJsonText(R"({"Semitones":1e30})").Semitones, CSemitones(0xFFFFFFFF));
}

TEST(ChordLite, TraceForms) {
  const std::string trace = Chord(kC, 145, kE).TraceString();
  // The name as the heavy form gives it: wide, so the bass stands behind the slash.
  EXPECT_EQ(trace.rfind("CChordLite: C/E  RootKeyEnh CKeyEnh: (0, neutral)", 0), 0U) << trace;
  EXPECT_EQ(CChordLite().TraceString().rfind("CChordLite:   RootKeyEnh", 0), 0U);
  EXPECT_NE(trace.find(", BassKeyEnh CKeyEnh: (4, neutral) E, Semitones 145="), trace.npos);
  EXPECT_EQ(Chord(kC, 145, kE).StringForInitializerList(),
            "CChordLite(CKeyEnh(0, TEnh_n), CSemitones(145), CKeyEnh(4, TEnh_n))");
}

}  // namespace
}  // namespace harmony
