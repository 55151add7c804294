#include <gtest/gtest.h>

#include <array>

#include "harmony/pitch/Enh.h"
#include "harmony/pitch/KeyNumbers.h"

namespace harmony {
namespace {

constexpr std::array<TEnh, 8> kAllEnhs = {TEnh_bbb, TEnh_bb, TEnh_b,   TEnh_n,
                                          TEnh_s,   TEnh_ss, TEnh_sss, TEnh_Undef};

TEST(Enh, TextsRoundTripAndUnknownValuesAreNamed) {
  for (TEnh enh : kAllEnhs) {
    if (enh == TEnh_Undef) continue;
    EXPECT_EQ(EnhFromStdString(EnhText(enh)), enh) << EnhText(enh);
  }
  EXPECT_EQ(EnhText(TEnh_bbb), "triple flat");
  EXPECT_EQ(EnhText(TEnh_Undef), "undef");
  EXPECT_EQ(EnhText(static_cast<TEnh>(6)), "unknown TEnh 6");
  EXPECT_EQ(EnhInitializerText(TEnh_ss), "TEnh_ss");
  // Only the seven accidental texts read; "undef" itself does not.
  EXPECT_EQ(EnhFromString("undef"), TEnh_Undef);
  EXPECT_EQ(EnhFromString("Sharp"), TEnh_Undef);
  EXPECT_EQ(EnhFromString(nullptr), TEnh_Undef);
  EXPECT_EQ(EnhFromStdString(std::string("sharp\0x", 7)), TEnh_Undef);
}

TEST(Enh, SemitonesAndHash) {
  for (int s = -3; s <= 3; ++s) EXPECT_EQ(EnhToSemitone(SemitoneToEnh(s)), s);
  EXPECT_EQ(SemitoneToEnh(9), TEnh_sss);
  EXPECT_EQ(SemitoneToEnh(-9), TEnh_bbb);
  EXPECT_EQ(EnhToSemitone(TEnh_Undef), 0);
  // Triple flat and undefined share the hash 0.
  EXPECT_EQ(HashValue(TEnh_bbb), 0);
  EXPECT_EQ(HashValue(TEnh_Undef), 0);
  EXPECT_EQ(HashValue(TEnh_bb), 1);
  EXPECT_EQ(HashValue(TEnh_sss), 6);
}

// A spelling is senseful exactly when the letter it is written on is a white key.
TEST(Enh, SensefulMeansTheWrittenLetterIsWhite) {
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : kAllEnhs) {
      if (enh == TEnh_Undef) {
        EXPECT_FALSE(IsSensefulEnhForKeyNr(key, enh));
        continue;
      }
      const int letter = (key - EnhToSemitone(enh) + 12) % 12;
      EXPECT_EQ(IsSensefulEnhForKeyNr(key, enh), IsWhiteKey(letter)) << key << " " << enh;
    }
  }
  EXPECT_TRUE(IsSensefulEnhForKeyNr(15, TEnh_Undef));
  EXPECT_FALSE(IsSensefulEnhForKeyNr(15, TEnh_n));
  EXPECT_TRUE(IsSensefulEnhForKeyNr(-1, TEnh_b));  // normalised to 11: C flat
  EXPECT_FALSE(IsSensefulEnhForKeyNr(0, static_cast<TEnh>(6)));
}

TEST(Enh, CMajorAndLeastSignsDefaults) {
  const std::array<TEnh, 12> cMajor = {TEnh_n, TEnh_s, TEnh_n, TEnh_b, TEnh_n, TEnh_n,
                                       TEnh_s, TEnh_n, TEnh_s, TEnh_n, TEnh_b, TEnh_n};
  const std::array<TEnh, 12> leastSigns = {TEnh_n, TEnh_b, TEnh_n, TEnh_b, TEnh_n, TEnh_n,
                                           TEnh_s, TEnh_n, TEnh_b, TEnh_n, TEnh_b, TEnh_n};
  for (int key = 0; key < 12; ++key) {
    EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(key, TEnh_Undef), cMajor[key]) << key;
    EXPECT_EQ(MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(key, TEnh_Undef), leastSigns[key])
        << key;
  }
  // A fitting hint is kept, B sharp included; an unfitting one falls back by key.
  EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(0, TEnh_s), TEnh_s);
  EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(1, TEnh_b), TEnh_b);
  EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(4, TEnh_bb), TEnh_b);
  EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(0, TEnh_ss), TEnh_s);
  // Triple accidentals are clamped to double ones first: A triple sharp becomes B sharp.
  EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(0, TEnh_sss), TEnh_s);
  EXPECT_EQ(MakeSensefulEnhForKeyNrAssumingCMajor(2, TEnh_bbb), TEnh_bb);
  // Least signs: G flat only on request, D flat unless a double accidental is asked for.
  EXPECT_EQ(MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(6, TEnh_b), TEnh_b);
  EXPECT_EQ(MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(1, TEnh_s), TEnh_b);
  EXPECT_EQ(MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(1, TEnh_ss), TEnh_ss);
  EXPECT_EQ(MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(8, TEnh_s), TEnh_b);
}

TEST(Enh, SharpFlatAndBlackKeyPolicies) {
  EXPECT_EQ(MakeSensefulEnhForKeyNrPreferSharps(3, TEnh_b), TEnh_s);
  EXPECT_EQ(MakeSensefulEnhForKeyNrPreferSharps(4, TEnh_b), TEnh_n);  // no F flat
  EXPECT_EQ(MakeSensefulEnhForKeyNrPreferSharps(0, TEnh_s), TEnh_s);  // B sharp stays
  EXPECT_EQ(MakeSensefulEnhForKeyNrPreferFlats(1, TEnh_s), TEnh_b);
  EXPECT_EQ(MakeSensefulEnhForKeyNrPreferFlats(5, TEnh_s), TEnh_n);   // no E sharp
  EXPECT_EQ(MakeSensefulEnhForKeyNrPreferFlats(11, TEnh_b), TEnh_b);  // C flat stays
  EXPECT_EQ(MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh(2, TEnh_ss), TEnh_n);
  EXPECT_EQ(MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh(1, TEnh_ss), TEnh_ss);
  EXPECT_EQ(MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh(1, TEnh_n), TEnh_s);

  using TPolicy = TEnh (*)(int, TEnh);
  const std::array<TPolicy, 5> policies = {
      MakeSensefulEnhForKeyNrAssumingCMajor, MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns,
      MakeSensefulEnhForKeyNrPreferSharps, MakeSensefulEnhForKeyNrPreferFlats,
      MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh};
  for (int p = 0; p < 5; ++p) {
    for (TEnh enh : kAllEnhs) {
      EXPECT_EQ(MakeSensefulEnhForKeyNr(15, enh, static_cast<TMakeSensefulEnh>(p)), TEnh_Undef);
      for (int key = 0; key < 12; ++key) {
        const TEnh made = MakeSensefulEnhForKeyNr(key, enh, static_cast<TMakeSensefulEnh>(p));
        EXPECT_EQ(made, policies[p](key, enh));
        EXPECT_TRUE(IsSensefulEnhForKeyNr(key, made)) << p << " " << key << " " << enh;
      }
    }
  }
}

// Shifting re-spells the same key: the result always fits, and never moves the other way.
TEST(Enh, ShiftsFitTheKeyAndMoveOneWay) {
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : {TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss}) {
      const TEnh flats = EnhShiftToFlats(key, enh);
      const TEnh sharps = EnhShiftToSharps(key, enh);
      EXPECT_TRUE(IsSensefulEnhForKeyNr(key, flats)) << key << " " << enh;
      EXPECT_TRUE(IsSensefulEnhForKeyNr(key, sharps)) << key << " " << enh;
      if (!IsSensefulEnhForKeyNr(key, enh)) continue;
      EXPECT_LE(flats, enh) << key << " " << enh;
      EXPECT_GE(sharps, enh) << key << " " << enh;
    }
  }
  EXPECT_EQ(EnhShiftToFlats(1, TEnh_s), TEnh_b);    // C sharp -> D flat
  EXPECT_EQ(EnhShiftToFlats(0, TEnh_n), TEnh_bb);   // C -> D double flat
  EXPECT_EQ(EnhShiftToSharps(4, TEnh_n), TEnh_ss);  // E -> D double sharp
  EXPECT_EQ(EnhShiftToSharps(0, TEnh_Undef), TEnh_s);
  EXPECT_EQ(EnhShiftToFlats(15, TEnh_s), TEnh_n);  // the undefined key has no special row
  EXPECT_EQ(EnhShift(1, TEnh_s), TEnh_b);
  EXPECT_EQ(EnhShift(1, TEnh_b), TEnh_s);
  EXPECT_EQ(EnhShift(4, TEnh_n), TEnh_b);  // E -> F flat
  EXPECT_EQ(EnhShift(0, TEnh_n), TEnh_s);  // C -> B sharp
  EXPECT_EQ(EnhShift(11, TEnh_bbb), TEnh_b);
  EXPECT_EQ(EnhShift(-11, TEnh_s), TEnh_b);  // key normalised to 1
}

}  // namespace
}  // namespace harmony
