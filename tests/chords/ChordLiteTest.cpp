#include "harmony/chords/ChordLite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "platform/JsonReader.h"

namespace harmony {
namespace {

constexpr int kUndef = -129;
constexpr CKeyEnh kC(0, TEnh_n);
constexpr CKeyEnh kBSharp(0, TEnh_s);
constexpr CKeyEnh kCSharp(1, TEnh_s);
constexpr CKeyEnh kDFlat(1, TEnh_b);
constexpr CKeyEnh kD(2, TEnh_n);
constexpr CKeyEnh kEFlat(3, TEnh_b);
constexpr CKeyEnh kE(4, TEnh_n);
constexpr CKeyEnh kFSharp(6, TEnh_s);
constexpr CKeyEnh kGFlat(6, TEnh_b);
constexpr CKeyEnh kA(9, TEnh_n);
constexpr CKeyEnh kNoKey;
constexpr CSemitones kMajor(145);
constexpr CSemitones kMinor(137);

constexpr std::uint64_t Bits(std::initializer_list<int> intvls) {
  std::uint64_t word = 0;
  for (int intvl : intvls) word |= std::uint64_t{1} << intvl;
  return word;
}

CChordLite Chord(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = kNoKey) {
  return CChordLite(root, CSemitones(mask), bass);
}

std::string Json(const CChordLite& chord) {
  std::ostringstream out;
  chord.AppendJSONString(out);
  return out.str();
}

CChordLite FromJsonText(const std::string& text) {
  const auto dict = platform::ParseJson(text);
  EXPECT_TRUE(dict.has_value()) << text;
  return dict ? CChordLite::FromDictionary(*dict) : CChordLite();
}

TEST(ChordLite, UndefinedAndNoChordStates) {
  const CChordLite undef;
  EXPECT_EQ(undef.RootKeyEnh, kNoKey);
  EXPECT_EQ(undef.BassKeyEnh, kNoKey);
  EXPECT_TRUE(undef.Semitones.IsEmpty());
  EXPECT_EQ(undef.RootDir, 0);
  EXPECT_EQ(undef.BassDir, 0);

  for (const CChordLite& chord : {undef, CChordLite_NoChordYield, CChordLite_NoChordForce}) {
    EXPECT_TRUE(chord.IsUndef());
    EXPECT_FALSE(chord.HasBassNote());
    EXPECT_FALSE(chord.IsSlashChord());
  }
  EXPECT_FALSE(undef.IsNoChordYield());
  EXPECT_FALSE(undef.IsNoChordForce());
  EXPECT_TRUE(CChordLite_NoChordYield.IsNoChordYield());
  EXPECT_FALSE(CChordLite_NoChordYield.IsNoChordForce());
  EXPECT_TRUE(CChordLite_NoChordForce.IsNoChordForce());
  EXPECT_FALSE(CChordLite_NoChordForce.IsNoChordYield());
  EXPECT_NE(CChordLite_NoChordYield, CChordLite_NoChordForce);
  EXPECT_NE(undef, CChordLite_NoChordForce);

  // The setters write the root only.
  CChordLite chord = Chord(kC, 145, kE);
  chord.SetNoChordYield();
  EXPECT_TRUE(chord.IsNoChordYield());
  EXPECT_EQ(chord.Semitones, kMajor);
  EXPECT_EQ(chord.BassKeyEnh, kE);
  chord.SetNoChordForce();
  EXPECT_TRUE(chord.IsNoChordForce());
  chord.SetUndef();
  EXPECT_TRUE(chord.IsUndef());
  EXPECT_FALSE(chord.IsNoChordYield() || chord.IsNoChordForce());
  EXPECT_EQ(chord.RootKeyEnh, kNoKey);
  EXPECT_EQ(chord.Semitones, kMajor);
}

TEST(ChordLite, SlashChordNeedsADifferentlyWrittenBass) {
  EXPECT_FALSE(Chord(kC, 145).IsSlashChord());
  EXPECT_FALSE(Chord(kC, 145, kC).IsSlashChord());
  EXPECT_TRUE(Chord(kC, 145, kBSharp).IsSlashChord());  // same key, other spelling
  EXPECT_TRUE(Chord(kC, 145, kE).IsSlashChord());
  EXPECT_TRUE(Chord(kC, 145, kE).HasBassNote());
  EXPECT_FALSE(Chord(kNoKey, 145, kE).IsSlashChord());
}

TEST(ChordLite, IntervalsBetweenRootAndBass) {
  const CChordLite cOverFSharp = Chord(kC, 145, kFSharp);
  EXPECT_EQ(cOverFSharp.KeyIntvlFromRootToBass(), 6);
  EXPECT_EQ(cOverFSharp.AbsKeyIntvlFromRootToBass(), 6);
  EXPECT_EQ(cOverFSharp.SmallestKeyIntvlBetweenRootAndBass(), -6);
  EXPECT_EQ(cOverFSharp.KeyDistanceBetweenRootAndBass(), 6);
  const CChordLite fSharpOverC = Chord(kFSharp, 145, kC);
  EXPECT_EQ(fSharpOverC.KeyIntvlFromRootToBass(), -6);
  EXPECT_EQ(fSharpOverC.AbsKeyIntvlFromRootToBass(), 6);
  EXPECT_EQ(fSharpOverC.SmallestKeyIntvlBetweenRootAndBass(), -6);

  const CChordLite bOverC = Chord(CKeyEnh(11, TEnh_n), 145, kC);
  EXPECT_EQ(bOverC.KeyIntvlFromRootToBass(), -11);  // raw, not wrapped
  EXPECT_EQ(bOverC.AbsKeyIntvlFromRootToBass(), 1);
  EXPECT_EQ(bOverC.SmallestKeyIntvlBetweenRootAndBass(), 1);
  EXPECT_EQ(bOverC.KeyDistanceBetweenRootAndBass(), 1);
  const CChordLite cOverA = Chord(kC, 145, kA);
  EXPECT_EQ(cOverA.SmallestKeyIntvlBetweenRootAndBass(), -3);
  EXPECT_EQ(cOverA.KeyDistanceBetweenRootAndBass(), 3);

  for (const CChordLite& chord : {Chord(kC, 145), Chord(kNoKey, 145, kE)}) {
    EXPECT_EQ(chord.KeyIntvlFromRootToBass(), kUndef);
    EXPECT_EQ(chord.AbsKeyIntvlFromRootToBass(), kUndef);
    EXPECT_EQ(chord.SmallestKeyIntvlBetweenRootAndBass(), kUndef);
    EXPECT_EQ(chord.KeyDistanceBetweenRootAndBass(), kUndef);
  }
}

TEST(ChordLite, ChordKeyNumbersAreRelativeToTheRoot) {
  for (int root = 0; root < 12; ++root) {
    const CChordLite chord = Chord(CKeyEnh(root, TEnh_n), 145);
    for (int n = 0; n < 12; ++n) {
      const int key = chord.KeyNrFromChordKeyNr(n);
      EXPECT_EQ(key, (root + n) % 12);
      EXPECT_EQ(chord.ChordKeyNrFromKeyNr(key), n);
    }
    EXPECT_EQ(chord.KeyNrFromChordKeyNr(15), 15);
    EXPECT_EQ(chord.ChordKeyNrFromKeyNr(15), 15);
  }
  // Key 15 is undefined, but a root of 4 plus 11 is key 3, not "15 normalised".
  EXPECT_EQ(Chord(kE, 145).KeyNrFromChordKeyNr(11), 3);
  EXPECT_EQ(Chord(kE, 145).ChordKeyNrFromKeyNr(-1), 7);
  EXPECT_EQ(Chord(kNoKey, 145).KeyNrFromChordKeyNr(0), 15);
  EXPECT_EQ(Chord(kNoKey, 145).ChordKeyNrFromKeyNr(0), 15);
}

TEST(ChordLite, BasicChordFromTheMaskAlone) {
  EXPECT_EQ(Chord(kC, 0b1'1001'0001).BasicChord(), kBasicChordMajor);  // 0 4 7 8
  EXPECT_EQ(Chord(kC, 0b1'0000'1001).BasicChord(), kBasicChordNone);   // 0 3 8
  EXPECT_EQ(Chord(kC, Bits({0, 3, 6, 9})).BasicChord(), kBasicChordDim);
  EXPECT_EQ(Chord(kC, Bits({0, 4, 5, 7})).BasicChord(), kBasicChordMajor);
  // Root and bass play no part.
  EXPECT_EQ(Chord(kNoKey, 137, kE).BasicChord(), kBasicChordMinor);

  const CChordLite halfDim = Chord(kC, Bits({0, 3, 6, 10}));
  EXPECT_EQ(halfDim.BasicChord(), kBasicChordDim);
  EXPECT_EQ(halfDim.BasicChordForNaming(), kBasicChordMinor);
  EXPECT_EQ(Chord(kC, Bits({0, 3, 6, 9})).BasicChordForNaming(), kBasicChordDim);
  EXPECT_EQ(Chord(kC, Bits({0, 3, 6, 10, 11})).BasicChordForNaming(), kBasicChordMinor);
  EXPECT_EQ(Chord(kC, Bits({0, 4, 7, 10})).BasicChordForNaming(), kBasicChordMajor);
}

TEST(ChordLite, BasicChordAndOptionTones) {
  const CChordLite sevenFlatNine = Chord(kC, Bits({0, 1, 4, 7, 10}));
  EXPECT_EQ(sevenFlatNine.BasicChordSemitones(), kMajor);
  EXPECT_EQ(sevenFlatNine.OptionsSemitones(), CSemitones(Bits({1, 10})));
  EXPECT_TRUE(sevenFlatNine.HasBasicChordIntvl(7));
  EXPECT_FALSE(sevenFlatNine.HasBasicChordIntvl(10));
  EXPECT_TRUE(sevenFlatNine.HasOptionsIntvl(10));
  EXPECT_FALSE(sevenFlatNine.HasOptionsIntvl(4));
  EXPECT_FALSE(sevenFlatNine.HasOptionsIntvl(13));  // 12 and above never count
  EXPECT_FALSE(sevenFlatNine.HasOptionsIntvl(-2));
  EXPECT_TRUE(sevenFlatNine.HasChordOption(kChordOption7));
  EXPECT_TRUE(sevenFlatNine.HasChordOption(kChordOption9));
  EXPECT_FALSE(sevenFlatNine.HasChordOption(kChordOption13));

  // A third alone is a major triad, so the basic chord claims a fifth that isn't there.
  const CChordLite third = Chord(kC, Bits({0, 4}));
  EXPECT_TRUE(third.HasBasicChordIntvl(7));
  EXPECT_TRUE(third.OptionsSemitones().IsEmpty());

  EXPECT_FALSE(Chord(kC, Bits({0, 3, 6})).HasChordOption(kChordOption11));
  EXPECT_TRUE(Chord(kC, Bits({0, 4, 6})).HasChordOption(kChordOption11));
}

TEST(ChordLite, BassToneAlone) {
  const CChordLite cOverD = Chord(kC, 145, kD);
  EXPECT_TRUE(cOverD.BassKeyEnhHasThisIntvlAlone(2));
  EXPECT_FALSE(cOverD.BassKeyEnhHasThisIntvlAlone(4));
  EXPECT_FALSE(cOverD.BassKeyEnhHasThisIntvlAlone(14));
  EXPECT_TRUE(cOverD.BassKeyEnhHasIntvlAlone());
  EXPECT_FALSE(cOverD.HasIntvlButNotInBassKeyEnhAlone(2));
  EXPECT_TRUE(cOverD.HasIntvlButNotInBassKeyEnhAlone(4));

  const CChordLite cOverE = Chord(kC, 145, kE);
  EXPECT_FALSE(cOverE.BassKeyEnhHasThisIntvlAlone(4));
  EXPECT_FALSE(cOverE.BassKeyEnhHasIntvlAlone());
  EXPECT_TRUE(cOverE.HasIntvlButNotInBassKeyEnhAlone(4));
  EXPECT_FALSE(cOverE.HasIntvlButNotInBassKeyEnhAlone(16));

  const CChordLite noBass = Chord(kC, 145);
  EXPECT_TRUE(noBass.BassKeyEnhHasIntvlAlone());
  EXPECT_FALSE(noBass.BassKeyEnhHasThisIntvlAlone(kUndef));
  EXPECT_TRUE(Chord(kNoKey, 145, kD).BassKeyEnhHasIntvlAlone());
}

TEST(ChordLite, KeyNumberSet) {
  EXPECT_EQ(Chord(kA, 137).KeyNrSet(), (CMySet<int>{9, 0, 4}));
  // E major seven reaches key 3 (D sharp): 4 + 11 must wrap to 3, not stay 15.
  EXPECT_EQ(Chord(kE, Bits({0, 4, 7, 11})).KeyNrSet(), (CMySet<int>{4, 8, 11, 3}));
  EXPECT_TRUE(Chord(kNoKey, 145).KeyNrSet().empty());
  EXPECT_TRUE(Chord(kC, 0).KeyNrSet().empty());
}

TEST(ChordLite, HashCodeLayout) {
  // semitones + root key << 24 + root enh << 28 + bass key << 32 + bass enh << 36
  EXPECT_EQ(Chord(kC, 145, kE).GetChordHashCode(), 155155693713LL);
  EXPECT_EQ(CChordLite().GetChordHashCode(),
            (15LL << 24) + (7LL << 28) + (15LL << 32) + (7LL << 36));
  EXPECT_EQ(CChordLite_NoChordYield.GetChordHashCode(),
            (15LL << 24) + (0LL << 28) + (15LL << 32) + (7LL << 36));
  // Directions and the flag are not part of it.
  CChordLite withDir = Chord(kA, 137);
  withDir.RootDir = 1;
  withDir.BassDir = 2;
  withDir.Flag = 1;
  EXPECT_EQ(withDir.GetChordHashCode(), Chord(kA, 137).GetChordHashCode());

  // A triple flat is -1 in a four-bit field: it borrows from the bass key above it and
  // comes back as enh 15 on a bass one key lower.
  const CChordLite tripleFlat = Chord(CKeyEnh(2, TEnh_bbb), 145, kE);
  EXPECT_EQ(tripleFlat.GetChordHashCode(),
            145 + (2LL << 24) - (1LL << 28) + (4LL << 32) + (2LL << 36));
  CChordLite decoded;
  decoded.SetFromChordHashCode(tripleFlat.GetChordHashCode());
  EXPECT_EQ(decoded.RootKeyEnh.Enh, static_cast<TEnh>(15));
  EXPECT_EQ(decoded.BassKeyEnh.KeyNr, 3);
}

TEST(ChordLite, HashCodeRoundTrip) {
  constexpr TEnh kEnhs[] = {TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss, TEnh_sss, TEnh_Undef};
  std::vector<CKeyEnh> keys;
  for (int key = 0; key < 16; ++key) {
    for (TEnh enh : kEnhs) keys.emplace_back(key, enh);
  }
  const std::uint64_t masks[] = {0, 1, 145, 137, 1169, 2741, 4095, 0xFFFFFF};
  std::vector<long long> codes;
  for (const CKeyEnh& root : keys) {
    for (const CKeyEnh& bass : keys) {
      for (std::uint64_t mask : masks) {
        const CChordLite chord = Chord(root, mask, bass);
        CChordLite back = Chord(kA, 3, kD);
        back.SetFromChordHashCode(chord.GetChordHashCode());
        ASSERT_EQ(back, chord) << chord.StringForInitializerList();
        codes.push_back(chord.GetChordHashCode());
      }
    }
  }
  // Distinct chords give distinct codes.
  std::sort(codes.begin(), codes.end());
  EXPECT_EQ(std::adjacent_find(codes.begin(), codes.end()), codes.end());

  for (std::uint64_t mask = 0; mask < 4096; ++mask) {
    const CChordLite chord = Chord(kFSharp, mask, kA);
    CChordLite back;
    back.SetFromChordHashCode(chord.GetChordHashCode());
    ASSERT_EQ(back, chord) << mask;
  }
}

TEST(ChordLite, RotateRootKeepsTheChordTones) {
  CChordLite chord = Chord(kC, 145);
  chord.RotateRootToKeyEnh(kA);  // C E G read from A: 3 7 10
  EXPECT_EQ(chord, Chord(kA, Bits({3, 7, 10})));
  EXPECT_EQ(chord.KeyNrSet(), (CMySet<int>{0, 4, 7}));

  // Undefined on either side: nothing changes.
  for (const CChordLite& start : {Chord(kNoKey, 145, kE), CChordLite_NoChordForce}) {
    CChordLite unchanged = start;
    unchanged.RotateRootToKeyEnh(kA);
    EXPECT_EQ(unchanged, start);
  }
  chord = Chord(kC, 145, kE);
  chord.RotateRootToKeyEnh(kNoKey);
  EXPECT_EQ(chord, Chord(kC, 145, kE));

  // A bass on the root, spelled alike, follows the root with its spelling.
  chord = Chord(kC, 145, kC);
  chord.RotateRootToKeyEnh(kEFlat);
  EXPECT_EQ(chord, Chord(kEFlat, Bits({1, 4, 9}), kEFlat));
}

TEST(ChordLite, RotateRootMovesAnyOtherBass) {
  // The bass moves by the same interval; a natural result keeps its spelling.
  CChordLite chord = Chord(kC, 145, kE);
  chord.RotateRootToKeyEnh(kEFlat);
  EXPECT_EQ(chord, Chord(kEFlat, Bits({1, 4, 9}), CKeyEnh(7, TEnh_n)));

  // D up a semitone is D sharp, then spelled with the new root's flat: E flat.
  chord = Chord(kC, 145, kD);
  chord.RotateRootToKeyEnh(kDFlat);
  EXPECT_EQ(chord, Chord(kDFlat, Bits({3, 6, 11}), kEFlat));

  // A natural new root leaves the transposed bass as it is.
  chord = Chord(kC, 145, kD);
  chord.RotateRootToKeyEnh(kD);
  EXPECT_EQ(chord, Chord(kD, Bits({2, 5, 10}), kE));
  chord = Chord(kC, 145, kD);
  chord.RotateRootToKeyEnh(kCSharp);
  EXPECT_EQ(chord.BassKeyEnh, CKeyEnh(3, TEnh_s));

  // A bass on the root key but spelled otherwise is transposed like any other bass:
  // B sharp up a tritone is F sharp, then takes the flat of G flat.
  chord = Chord(kC, 145, kBSharp);
  chord.RotateRootToKeyEnh(kGFlat);
  EXPECT_EQ(chord, Chord(kGFlat, Bits({1, 6, 10}), kGFlat));
}

TEST(ChordLite, RotateRootToBass) {
  CChordLite chord = Chord(kC, 145, kE);
  chord.RotateRootToBassKeyEnh();  // C E G from E: 8 0 3
  EXPECT_EQ(chord, Chord(kE, Bits({0, 3, 8})));

  chord = Chord(kC, 145, kD);  // the bass becomes a chord tone at 0
  chord.RotateRootToBassKeyEnh();
  EXPECT_EQ(chord, Chord(kD, Bits({0, 2, 5, 10})));

  chord = Chord(kC, Bits({4, 7}));  // no bass: only the root tone is added
  chord.RotateRootToBassKeyEnh();
  EXPECT_EQ(chord, Chord(kC, 145));

  chord = Chord(kC, 145, kBSharp);  // same key, the bass's spelling wins
  chord.RotateRootToBassKeyEnh();
  EXPECT_EQ(chord, Chord(kBSharp, 145));

  chord = Chord(kNoKey, 144, kE);
  chord.RotateRootToBassKeyEnh();
  EXPECT_EQ(chord, Chord(kNoKey, 144, kE));
}

TEST(ChordLite, EqualityFamily) {
  const CChordLite cSharp = Chord(kCSharp, 145, kFSharp);
  const CChordLite dFlat = Chord(kDFlat, 145, kGFlat);
  EXPECT_NE(cSharp, dFlat);
  EXPECT_TRUE(cSharp.EqualWithoutEnh(dFlat));
  EXPECT_FALSE(cSharp.EqualWithoutEnh(Chord(kCSharp, 145)));
  EXPECT_FALSE(cSharp.EqualWithoutEnh(Chord(kCSharp, 137, kFSharp)));
  EXPECT_TRUE(cSharp.EqualExceptRootAndBass(Chord(kA, 145)));
  EXPECT_FALSE(cSharp.EqualExceptRootAndBass(Chord(kCSharp, 137, kFSharp)));

  CChordLite moved = cSharp;
  moved.RootDir = 1;
  moved.Flag = 1;
  EXPECT_EQ(moved, cSharp);
  EXPECT_TRUE(moved.EqualWithoutDir(cSharp));
  EXPECT_FALSE(moved.EqualIncludingDir(cSharp));
  moved.RootDir = 0;
  moved.BassDir = -1;
  EXPECT_FALSE(moved.EqualIncludingDir(cSharp));
  moved.BassDir = 0;
  EXPECT_TRUE(moved.EqualIncludingDir(cSharp));
  EXPECT_FALSE(moved.EqualIncludingDir(dFlat));
}

TEST(ChordLite, OrderRootThenBassThenMask) {
  const std::vector<CChordLite> expected{
      Chord(kBSharp, 145),  // same key as C: the larger enh (sharp) first
      Chord(kC, 137, kE),
      Chord(kC, 145, kE),
      Chord(kC, 145, CKeyEnh(4, TEnh_b)),  // F flat: the smaller enh comes later
      Chord(kC, 0, kA),
      Chord(kC, 1),
      Chord(kC, std::uint64_t{1} << 63),  // the mask compares unsigned
      Chord(kCSharp, 145),
      Chord(kDFlat, 145),
      Chord(kD, 145),
      CChordLite_NoChordYield,  // key 15 last, undefined (enh 7) before force and yield
  };
  std::vector<CChordLite> chords{expected.rbegin(), expected.rend()};
  chords.insert(chords.begin() + 3, CChordLite_NoChordForce);
  chords.insert(chords.begin(), CChordLite());
  std::sort(chords.begin(), chords.end());
  std::vector<CChordLite> sortedExpected = expected;
  sortedExpected.insert(sortedExpected.end() - 1, {CChordLite(), CChordLite_NoChordForce});
  EXPECT_EQ(chords, sortedExpected);
}

TEST(ChordLite, OrderAgreesWithEquality) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> key(0, 15);
  std::uniform_int_distribution<int> enh(-1, 7);
  std::uniform_int_distribution<std::uint64_t> mask(0, 7);
  const auto randomChord = [&] {
    return Chord(CKeyEnh(key(random) % 3, static_cast<TEnh>(enh(random) % 3)), mask(random),
                 CKeyEnh(key(random) % 2, static_cast<TEnh>(enh(random) % 2)));
  };
  for (int i = 0; i < 2000; ++i) {
    const CChordLite a = randomChord();
    const CChordLite b = randomChord();
    const auto order = a <=> b;
    EXPECT_EQ(order == 0, a == b);
    EXPECT_EQ(order<0, (b <=> a)> 0);
  }
}

TEST(ChordLite, JsonForm) {
  const CChordLite cOverE = Chord(kC, 145, kE);
  EXPECT_EQ(Json(cOverE),
            "{\"RootKeyEnh\":{\"KeyNr\":\" 0\",\"Enh\":\"neutral\"}, "
            "\"BassKeyEnh\":{\"KeyNr\":\" 4\",\"Enh\":\"neutral\"}, \"Semitones\":145}");
  std::ostringstream substring;
  cOverE.AppendJSONClassSubstring(substring);
  EXPECT_EQ("{" + substring.str() + "}", Json(cOverE));
  EXPECT_EQ(Json(CChordLite()),
            "{\"RootKeyEnh\":{\"KeyNr\":\"15\",\"Enh\":\"undef\"}, "
            "\"BassKeyEnh\":{\"KeyNr\":\"15\",\"Enh\":\"undef\"}, \"Semitones\":0}");
}

TEST(ChordLite, JsonReadBack) {
  CChordLite withDir = Chord(kDFlat, Bits({0, 4, 7, 10}), kGFlat);
  withDir.RootDir = 3;
  const std::vector<CChordLite> chords{CChordLite(),
                                       CChordLite_NoChordYield,
                                       CChordLite_NoChordForce,
                                       Chord(kC, 145, kE),
                                       Chord(kBSharp, 137),
                                       Chord(CKeyEnh(11, TEnh_sss), 4095, CKeyEnh(10, TEnh_bbb)),
                                       withDir};
  for (const CChordLite& chord : chords) {
    const CChordLite back = FromJsonText(Json(chord));
    EXPECT_EQ(back, chord) << Json(chord);
    EXPECT_EQ(back.RootDir, 0);  // directions are not stored
  }
}

TEST(ChordLite, JsonReadingFallbacks) {
  // Without the spelled key the key number alone is read, with an undefined enh.
  EXPECT_EQ(FromJsonText(R"({"RootKeyNr":7,"BassKeyNr":"11","Semitones":137})"),
            Chord(CKeyEnh(7, TEnh_Undef), 137, CKeyEnh(11, TEnh_Undef)));
  // The spelled key wins over the number.
  EXPECT_EQ(FromJsonText(R"({"RootKeyEnh":{"KeyNr":"3","Enh":"flat"},"RootKeyNr":5})"),
            Chord(kEFlat, 0));
  EXPECT_EQ(FromJsonText("{}"), CChordLite());
  EXPECT_EQ(FromJsonText("[1,2]"), CChordLite());
  // Semitones are a 32-bit number.
  EXPECT_EQ(FromJsonText(R"({"Semitones":4294967441})").Semitones, kMajor);
  EXPECT_EQ(FromJsonText(R"({"Semitones":"137"})").Semitones, kMinor);
  // A float far beyond any integer saturates instead of being converted blindly.
  EXPECT_EQ(FromJsonText(R"({"Semitones":1e30})").Semitones, CSemitones(0xFFFFFFFF));
  EXPECT_EQ(FromJsonText(R"({"RootKeyNr":7.9})").RootKeyEnh, CKeyEnh(7, TEnh_Undef));
}

TEST(ChordLite, TraceForms) {
  const CChordLite cOverE = Chord(kC, 145, kE);
  const std::string trace = cOverE.TraceString();
  EXPECT_EQ(trace.rfind("CChordLite: ", 0), 0U) << trace;
  const auto root = trace.find("  RootKeyEnh CKeyEnh: (0, neutral)");
  const auto bass = trace.find(", BassKeyEnh CKeyEnh: (4, neutral)");
  const auto semitones = trace.find(", Semitones 145=");
  EXPECT_NE(root, std::string::npos) << trace;
  EXPECT_LT(root, bass) << trace;
  EXPECT_LT(bass, semitones) << trace;
  std::ostringstream streamed;
  streamed << cOverE;
  EXPECT_EQ(streamed.str(), trace);
  EXPECT_EQ(cOverE.StringForInitializerList(),
            "CChordLite(CKeyEnh(0, TEnh_n), CSemitones(145), CKeyEnh(4, TEnh_n))");
}

}  // namespace
}  // namespace harmony
