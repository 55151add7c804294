#include <gtest/gtest.h>

#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyInEv.h"

namespace harmony {
namespace {

constexpr TSignKeyType kMajor = TSignKeyType::Major;
constexpr TSignKeyType kMinor = TSignKeyType::Minor;

TEST(SignKeyInEv, EveryByteReadsBackToItself) {
  for (int byte = 0; byte <= 30; ++byte) {
    if (byte == 15) continue;
    const auto [key, type] = ToRootKeyEnhAndSignKeyType(static_cast<unsigned char>(byte));
    EXPECT_EQ(type, byte < 15 ? kMajor : kMinor);
    // The byte tells the sign count: 7 + signs for major, 23 + signs for minor.
    EXPECT_EQ(CSignKeyLite(key, type).SignsCount(), byte - (byte < 15 ? 7 : 23)) << byte;
    EXPECT_EQ(ToSignKeyInEv(key, type), byte);
    EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(key, type)), byte);
    EXPECT_EQ(ToSignKeyLite(static_cast<unsigned char>(byte)), CSignKeyLite(key, type));
  }
  EXPECT_EQ(ToRootKeyEnhAndSignKeyType(9), std::make_pair(CKeyEnh(2, TEnh_n), kMajor));
  EXPECT_EQ(ToRootKeyEnhAndSemitones(26), std::make_pair(CKeyEnh(6, TEnh_s), CSemitones(1453)));
  for (unsigned char undefined : {15, 31, 200, 255}) {
    EXPECT_EQ(ToRootKeyEnhAndSignKeyType(undefined),
              std::make_pair(CKeyEnh(), TSignKeyType::Undef));
    EXPECT_EQ(ToRootKeyEnhAndSemitones(undefined), std::make_pair(CKeyEnh(), CSemitones()));
    EXPECT_TRUE(ToSignKeyLite(undefined).IsUndef());
  }
  EXPECT_EQ(ToSignKeyLite(255), CSignKeyLite::Undef);
}

TEST(SignKeyInEv, SpellingsOutsideTheTable) {
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(6, TEnh_b), kMajor), 1);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(6, TEnh_s), kMajor), 13);
  // Without a spelling the one with the fewest signs is taken: F sharp, not G flat.
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(6, TEnh_Undef), kMajor), 13);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(1, TEnh_Undef), kMajor), 2);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(1, TEnh_Undef), kMinor), 27);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(8, TEnh_Undef), kMinor), 28);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(3, TEnh_Undef), kMinor), 17);
  // An impossible spelling (C flat on key 0) is guessed anew too.
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(0, TEnh_b), kMajor), 7);
  // A sharp major is not in the table: B flat major.
  EXPECT_EQ(_ToSignKeyInEv(CKeyEnh(10, TEnh_s), kMajor), 15);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(10, TEnh_s), kMajor), 5);
  // D double flat major is a sensible spelling, but only C major has a byte.
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(0, TEnh_bb), kMajor), 7);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(11, TEnh_ss), kMajor), 12);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(6, TEnh_b), kMinor), 26);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(5, TEnh_s), kMinor), 19);
  // What the alteration table doesn't know stays undefined.
  EXPECT_EQ(_ToSignKeyInEv_AlterEnharmonically(CKeyEnh(11, TEnh_b), kMajor), 15);
  EXPECT_EQ(_ToSignKeyInEv_AlterEnharmonically(CKeyEnh(0, TEnh_s), TSignKeyType::Undef), 15);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(6, TEnh_s), TSignKeyType::Undef), 15);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(), kMajor), 15);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(9, TEnh_n), CSemitones(1453)), 23);
  EXPECT_EQ(ToSignKeyInEv(CKeyEnh(9, TEnh_n), CSemitones(1709)), 15);
  EXPECT_EQ(_ToSignKeyInEv_GuessEnhWithLeastSignes(CKeyEnh(10, TEnh_s), kMinor), TEnh_b);
}

TEST(SignKeyInEv, DeprecatedFormGuessesNothing) {
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite::Undef), 255);
  EXPECT_EQ(ToSignKeyInEv(CSignKeyLite::Undef.RootKeyEnh, CSignKeyLite::Undef.SignKeyType), 15);
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(CKeyEnh(0, TEnh_n), TSignKeyType::Undef)), 255);
  // A missing or natural spelling has a fixed byte per key number: G flat major here,
  // where the newer form guesses F sharp major.
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(CKeyEnh(6, TEnh_Undef), kMajor)), 1);
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(CKeyEnh(1, TEnh_n), kMajor)), 2);
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(CKeyEnh(8, TEnh_Undef), kMinor)), 28);
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(CKeyEnh(3, TEnh_Undef), kMinor)), 17);
  // Other spellings that miss the table are not altered.
  EXPECT_EQ(ToSignKeyInEvDeprecated(CSignKeyLite(CKeyEnh(10, TEnh_s), kMajor)), 255);
  EXPECT_EQ(
      _ToSignKeyInEvDeprecated_TryToCorrectMissingEnh(CSignKeyLite(CKeyEnh(10, TEnh_s), kMajor)),
      255);
}

TEST(SignKeyInEv, TypeBitAndKeySignature) {
  EXPECT_EQ(ToSignKeyType(15), TSignKeyType::Undef);
  EXPECT_EQ(ToSignKeyType(0), kMajor);
  EXPECT_EQ(ToSignKeyType(16), kMinor);
  EXPECT_EQ(ToSignKeyType(30), kMinor);
  // Only bit 4 counts, whatever the byte.
  EXPECT_EQ(ToSignKeyType(255), kMinor);
  EXPECT_EQ(ToSignKeyType(32), kMajor);

  EXPECT_EQ(KeySignatureFromSignKeyInEv(1), (TKeySignature{6, TKeySignatureType::Major}));
  EXPECT_EQ(KeySignatureFromSignKeyInEv(26), (TKeySignature{6, TKeySignatureType::Minor}));
  EXPECT_EQ(KeySignatureFromSignKeyInEv(15), (TKeySignature{15, TKeySignatureType::Major}));
  EXPECT_EQ(KeySignatureFromSignKeyInEv(31), (TKeySignature{15, TKeySignatureType::Major}));
  EXPECT_EQ(ToSignKeyType(TKeySignatureType::Minor), kMinor);
  EXPECT_EQ(ToSignKeyType(static_cast<TKeySignatureType>(5)), TSignKeyType::Undef);
}

}  // namespace
}  // namespace harmony
