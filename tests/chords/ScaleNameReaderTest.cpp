#include <gtest/gtest.h>

#include <string>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/ScaleNameReader.h"

namespace harmony {
namespace {

std::uint64_t MaskOf(const std::string& text) { return CScaleLite(text).Semitones.Word(); }

TEST(ScaleNameReader, RootAndMaskAreReadIndependently) {
  EXPECT_EQ(CScaleLite("C"), CScaleLite(CKeyEnh(0, TEnh_n), CSemitones(2741)));
  EXPECT_EQ(CScaleLite("C foo"), CScaleLite(CKeyEnh(0, TEnh_n), CSemitones(2741)));
  // The first letter of an unknown word is read as a note name.
  EXPECT_EQ(CScaleLite("foo"), CScaleLite(CKeyEnh(5, TEnh_n), CSemitones(2741)));
  const CScaleLite noRoot("xyz");
  EXPECT_TRUE(noRoot.RootKeyEnh.IsUndef());
  EXPECT_EQ(noRoot.RootKeyEnh.Enh, TEnh_Undef);
  EXPECT_EQ(noRoot.Semitones.Word(), 2741u);
  EXPECT_TRUE(CScaleLite("").IsUndef());
  EXPECT_EQ(CScaleLite("Dmajor"), CScaleLite(CKeyEnh(2, TEnh_n), CSemitones(2741)));
  EXPECT_EQ(CScaleLite("Db lydian"), CScaleLite(CKeyEnh(1, TEnh_b), CSemitones(2773)));
  EXPECT_EQ(CScaleLite("D\u266D lydian"), CScaleLite(CKeyEnh(1, TEnh_b), CSemitones(2773)));
  EXPECT_EQ(CScaleLite("F# hm5"), CScaleLite(CKeyEnh(6, TEnh_s), CSemitones(1459)));
  EXPECT_EQ(CScaleLite("Eb melodic minor"), CScaleLite(CKeyEnh(3, TEnh_b), CSemitones(2733)));
  // Reading again replaces everything.
  CScaleLite scale("D dorian");
  scale.SetFromString("  lydian");
  EXPECT_TRUE(scale.IsUndef());
  EXPECT_EQ(scale.Semitones.Word(), 2773u);
  // Without a root the word is read from the start, so "xyz" spoils it.
  scale.SetFromString("xyz lydian");
  EXPECT_EQ(scale.Semitones.Word(), 2741u);
}

TEST(ScaleNameReader, CaseIsIgnoredAndTheWordMustFillTheRest) {
  EXPECT_EQ(MaskOf("A m"), 1453u);
  EXPECT_EQ(MaskOf("A minor"), 1453u);
  EXPECT_EQ(MaskOf("a Moll"), 1453u);
  EXPECT_EQ(MaskOf("C DORIAN"), 1709u);
  EXPECT_EQ(MaskOf("C  dorian   "), 1709u);
  // A keyword that leaves text behind does not match, and nothing else does either.
  EXPECT_EQ(MaskOf("C dorian x"), 2741u);
  EXPECT_EQ(MaskOf("C minor penta x"), 2741u);
  EXPECT_EQ(MaskOf("C blues"), 2741u);
  // Blanks inside a keyword count: "penta minor" is a keyword, "penta  minor" is not.
  EXPECT_EQ(MaskOf("C penta minor"), 1193u);
  EXPECT_EQ(MaskOf("C penta  minor"), 2741u);
  EXPECT_EQ(MaskOf("C major blues"), 669u);
  EXPECT_EQ(MaskOf("C blues minor"), 1257u);
  // "mixo" is tried before "mixo b9 b13" but does not fill the rest.
  EXPECT_EQ(MaskOf("C mixo b9 b13"), 1459u);
  EXPECT_EQ(MaskOf("C mixo"), 1717u);
  EXPECT_EQ(MaskOf("C mm7"), 1371u);
  EXPECT_EQ(MaskOf("C wt"), 1365u);
  EXPECT_EQ(MaskOf("C dimwh"), 2925u);
  EXPECT_EQ(MaskOf("C major add b7"), 3765u);
  EXPECT_EQ(MaskOf("C bebop harmonic minor"), 3501u);
  EXPECT_EQ(MaskOf("C super locrian"), 1371u);
  EXPECT_EQ(MaskOf("C klezmer"), 1427u);
  EXPECT_EQ(MaskOf("C lydaug"), 2901u);
}

TEST(ScaleNameReader, PositionMovesBehindTheKeyword) {
  int pos = 1;
  EXPECT_EQ(_SemitonesScaleFromString("C  Dorian ", pos).Word(), 1709u);
  EXPECT_EQ(pos, 9);
  pos = 0;
  EXPECT_EQ(_SemitonesScaleFromString("   ", pos).Word(), 2741u);
  EXPECT_EQ(pos, 3);
  pos = 0;
  EXPECT_EQ(_SemitonesScaleFromString("nonsense", pos).Word(), 2741u);
  EXPECT_EQ(pos, 0);
  pos = 20;
  EXPECT_EQ(_SemitonesScaleFromString("C", pos).Word(), 2741u);
  pos = -1;
  EXPECT_EQ(_SemitonesScaleFromString("dorian", pos).Word(), 2741u);
  EXPECT_EQ(pos, -1);
}

TEST(ScaleNameReader, HeavyScaleFindsTheNamedType) {
  const CScaleHeavy dorian("D dorian");
  EXPECT_EQ(dorian.ScaleType(), st_dorian);
  EXPECT_EQ(dorian.RootKeyEnh(), CKeyEnh(2, TEnh_n));
  // The bebop dominant mask is found under the older type.
  EXPECT_EQ(CScaleHeavy("Bb bebop dominant").ScaleType(), st_majaddb7);
  // Masks the vocabulary does not name stay custom, and keep their tones.
  const CScaleHeavy wholeTone("C wholetone");
  EXPECT_EQ(wholeTone.ScaleType(), st_custom);
  EXPECT_EQ(wholeTone.ToSemitones().Word(), 1365u);
  EXPECT_EQ(wholeTone.DegreesPerOctave(), 6);
  EXPECT_TRUE(_Create_ScaleNames().empty());
  EXPECT_TRUE(CSemitonesKeywordNamesFactory::Create("scales").empty());
}

}  // namespace
}  // namespace harmony
