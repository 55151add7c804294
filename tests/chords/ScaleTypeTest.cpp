#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "TestText.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleType.h"

namespace harmony {
namespace {

std::string JsonName(TScaleType type) {
  std::ostringstream out;
  ToJSONString(out, type);
  return out.str();
}

TEST(ScaleType, StreamAndJsonNames) {
  EXPECT_EQ(testing::Streamed(st_Undef), "st_Undef");
  EXPECT_EQ(JsonName(st_Undef), "Undef");
  EXPECT_EQ(testing::Streamed(st_southeast_asian), "st_southeast_asian");
  EXPECT_EQ(JsonName(st_hm5), "klez");
  EXPECT_EQ(JsonName(st_locrian), "lokr");
  EXPECT_EQ(testing::Streamed(DiminishedHalfWhole), "DiminishedHalfWhole");
  EXPECT_EQ(JsonName(Altered), "TScaleType::Altered");
  // The trailing blank is part of both names of value 28.
  EXPECT_EQ(testing::Streamed(LocrianMaj2), "LocrianMaj2 ");
  EXPECT_EQ(JsonName(LocrianMaj2), "TScaleType::LocrianMaj2 ");
  EXPECT_EQ(testing::Streamed(st_Count), "st_Count");
  for (int outside : {-1, 32, 1000}) {
    EXPECT_EQ(testing::Streamed(static_cast<TScaleType>(outside)), "undef");
    EXPECT_EQ(JsonName(static_cast<TScaleType>(outside)), "undef");
  }
}

TEST(ScaleType, OnlyTheOlderJsonNamesReadBack) {
  for (int value = st_maj; value <= st_custom; ++value) {
    const auto type = static_cast<TScaleType>(value);
    EXPECT_EQ(ScaleTypeFromJSONString(JsonName(type)), type) << value;
  }
  for (int value = DiminishedHalfWhole; value <= DoubleHarmonic; ++value) {
    EXPECT_EQ(ScaleTypeFromJSONString(JsonName(static_cast<TScaleType>(value))), st_Undef);
  }
  EXPECT_EQ(ScaleTypeFromJSONString("Undef"), st_Undef);
  EXPECT_EQ(ScaleTypeFromJSONString("Maj"), st_Undef);
  EXPECT_EQ(ScaleTypeFromJSONString("maj "), st_Undef);
  EXPECT_EQ(ScaleTypeFromJSONString(""), st_Undef);
}

TEST(ScaleType, MasksAndTheirTypes) {
  EXPECT_EQ(SemitonesFromScaleType(st_maj).Word(), 2741u);
  EXPECT_EQ(SemitonesFromScaleType(st_japanese).Word(), 419u);
  EXPECT_EQ(SemitonesFromScaleType(DoubleHarmonic).Word(), 2483u);
  EXPECT_TRUE(SemitonesFromScaleType(st_custom).IsEmpty());
  EXPECT_TRUE(SemitonesFromScaleType(st_Undef).IsEmpty());
  EXPECT_TRUE(SemitonesFromScaleType(st_Count).IsEmpty());
  // Every named mask finds its own type again, except BebopDominant, whose mask belongs to
  // the older st_majaddb7 first.
  for (int value = st_maj; value <= DoubleHarmonic; ++value) {
    if (value == st_custom) continue;
    const auto type = static_cast<TScaleType>(value);
    const TScaleType back = ScaleTypeFromSemitones(SemitonesFromScaleType(type));
    EXPECT_EQ(back, value == BebopDominant ? st_majaddb7 : type) << value;
  }
  EXPECT_EQ(ScaleTypeFromSemitones(CSemitones(0)), st_Undef);
  EXPECT_EQ(ScaleTypeFromSemitones(CSemitones(2901)), st_custom);
  EXPECT_EQ(ScaleTypeFromSemitones(CSemitones(145)), st_custom);
}

TEST(ScaleType, ModalTypesStepsAndLocalizedNames) {
  int modal = 0;
  for (int value = -2; value < 40; ++value)
    modal += IsScaleTypeModal(static_cast<TScaleType>(value));
  EXPECT_EQ(modal, 7);
  EXPECT_TRUE(IsScaleTypeModal(st_min));
  EXPECT_TRUE(IsScaleTypeModal(st_locrian));
  EXPECT_FALSE(IsScaleTypeModal(st_chrom));
  EXPECT_FALSE(IsScaleTypeModal(st_hm5));

  TScaleType type = st_custom;
  EXPECT_EQ(type++, st_custom);
  EXPECT_EQ(type, DiminishedHalfWhole);
  EXPECT_EQ(--type, st_custom);
  type = st_Count;
  EXPECT_EQ(static_cast<int>(++type), 32);  // no wrapping
  type = st_Undef;
  EXPECT_EQ(static_cast<int>(--type), -1);

  EXPECT_EQ(CScaleHeavy::LocalizedNameForScaleType(st_maj), "Major (Ionian)");
  EXPECT_EQ(CScaleHeavy::LocalizedNameForScaleType(st_custom), "Custom");
  EXPECT_EQ(CScaleHeavy::LocalizedNameForScaleType(LocrianMaj2), "Locrian 9");
  EXPECT_EQ(CScaleHeavy::LocalizedNameForScaleType(MixolydianSharp11), "Mixolydian \u266F11");
  EXPECT_EQ(CScaleHeavy::LocalizedNameForScaleType(st_Undef), "");
  EXPECT_EQ(CScaleHeavy::LocalizedNameForScaleType(st_Count), "");
}

TEST(ScaleType, RelatedIonianRootOfTheChurchModes) {
  // Each mode on the white key where it has no accidentals leads back to C.
  const std::pair<int, TScaleType> modes[] = {{0, st_maj},        {9, st_min},    {5, st_lydian},
                                              {7, st_mixolydian}, {2, st_dorian}, {4, st_phrygian},
                                              {11, st_locrian}};
  for (const auto& [key, type] : modes) {
    EXPECT_EQ(CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(CKeyEnh(key, TEnh_n), type),
              CKeyEnh(0, TEnh_n))
        << type;
  }
  // The spelling follows the transposition: C minor relates to E flat major.
  EXPECT_EQ(CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(CKeyEnh(0, TEnh_n), st_min),
            CKeyEnh(3, TEnh_b));
  EXPECT_EQ(CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(CKeyEnh(2, TEnh_n), CSemitones(1709)),
            CKeyEnh(0, TEnh_n));
  EXPECT_TRUE(CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(CKeyEnh(0, TEnh_n), st_hm5).IsUndef());
  EXPECT_TRUE(
      CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(CKeyEnh(0, TEnh_n), CSemitones(2901)).IsUndef());
}

}  // namespace
}  // namespace harmony
