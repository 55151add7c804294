#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "TestText.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

const CScaleLite kCMajor(CKeyEnh(0, TEnh_n), CSemitones(2741));
const CScaleLite kAMinor(CKeyEnh(9, TEnh_n), CSemitones(1453));
const CScaleLite kDDorian(CKeyEnh(2, TEnh_n), CSemitones(1709));
const CScaleLite kUndefRoot(CKeyEnh(), CSemitones(2741));

TEST(ScaleLite, KeysAndDegrees) {
  EXPECT_TRUE(kDDorian.HasKeyNr(11));
  EXPECT_FALSE(kDDorian.HasKeyNr(10));
  EXPECT_TRUE(kDDorian.HasKeyNr(14));  // key numbers are read modulo 12
  EXPECT_FALSE(kDDorian.HasKeyNr(kKeyNrUndef));
  EXPECT_FALSE(kUndefRoot.HasKeyNr(0));
  EXPECT_FALSE(kDDorian.HasIntvl(12));

  EXPECT_EQ(kDDorian.DegreeNrToKeyNr(0), 2);
  EXPECT_EQ(kDDorian.DegreeNrToKeyNr(9), 5);  // wraps round the seven degrees
  EXPECT_EQ(kDDorian.DegreeNrToKeyNr(-1), kKeyNrUndef);
  EXPECT_EQ(kDDorian.DegreeNrToKeyNr(-5), 2);  // other negative degrees give the root
  EXPECT_EQ(kUndefRoot.DegreeNrToKeyNr(0), kKeyNrUndef);
  EXPECT_EQ(CScaleLite(CKeyEnh(2, TEnh_n), CSemitones()).DegreeNrToKeyNr(0), kKeyNrUndef);

  EXPECT_EQ(kDDorian.KeyNrToDegreeNr(0), 6);
  EXPECT_EQ(kDDorian.KeyNrToDegreeNr(-8), 1);
  EXPECT_EQ(kDDorian.KeyNrToDegreeNr(1), -1);
  EXPECT_EQ(kUndefRoot.KeyNrToDegreeNr(0), -1);
  EXPECT_EQ(kDDorian.NoteNrToDegreeNr(64), 1);
  EXPECT_EQ(kDDorian.NoteNrToDegreeNr(kNoteNrUndef), -1);

  // The octave base comes from the index; the degree does not carry into the next octave.
  EXPECT_EQ(kDDorian.DegreeNrToNoteNr(6, 5), 60);
  EXPECT_EQ(kDDorian.DegreeNrToNoteNr(0, 5), 62);
  EXPECT_EQ(kDDorian.DegreeNrToNoteNr(2, -3), 5);
  EXPECT_EQ(kDDorian.DegreeNrToNoteNr(-2, 1), 14);
  EXPECT_EQ(kDDorian.DegreeNrToNoteNr(-1, 1), kNoteNrUndef);
  EXPECT_EQ(kUndefRoot.DegreeNrToNoteNr(0, 1), kNoteNrUndef);

  EXPECT_EQ(kAMinor.ScaleKeyNrFromKeyNr(0), 3);
  EXPECT_EQ(kAMinor.ScaleKeyNrFromKeyNr(kKeyNrUndef), kKeyNrUndef);
  EXPECT_EQ(kUndefRoot.KeyNrFromScaleKeyNr(3), kKeyNrUndef);
  EXPECT_EQ(kAMinor.DistToRootKey(2), 5);
  EXPECT_EQ(kUndefRoot.DistToRootKey(2), -1);
}

TEST(ScaleLite, QuantizeWalksWithoutWrapping) {
  // C sharp (61) in C major: a tie between C and D goes up unless asked otherwise.
  EXPECT_EQ(kCMajor.QuantizeToScale(61, kQuantizeClosestTieRight), 62);
  EXPECT_EQ(kCMajor.QuantizeToScale(61, kQuantizeClosestTieLeft), 60);
  EXPECT_EQ(kCMajor.QuantizeToScale(64, kQuantizeRight), 64);
  // C minor pentatonic from B: the next tone up is the C above, not a wrap back down.
  const CScaleLite pentatonic(CKeyEnh(0, TEnh_n), CSemitones(1193));
  EXPECT_EQ(pentatonic.QuantizeToScale(71, kQuantizeRight), 72);
  // The result is not clamped to note numbers.
  EXPECT_EQ(pentatonic.QuantizeToScale(131, kQuantizeRight), 132);
  EXPECT_EQ(kCMajor.QuantizeToScale(kNoteNrUndef, kQuantizeRight), kNoteNrUndef);
  EXPECT_EQ(kUndefRoot.QuantizeToScale(61, kQuantizeRight), kNoteNrUndef);
  // An empty mask moves nothing.
  EXPECT_EQ(CScaleLite(CKeyEnh(0, TEnh_n), CSemitones()).QuantizeToScale(61, kQuantizeRight), 61);
}

TEST(ScaleLite, SameKeysRotationAndRelatedScales) {
  EXPECT_TRUE(kCMajor.HasSameKeysAsScale(kAMinor));
  EXPECT_TRUE(kCMajor.HasSameKeysAsScale(kDDorian));
  EXPECT_FALSE(kCMajor.HasSameKeysAsScale(CScaleLite(CKeyEnh(9, TEnh_n), CSemitones(1709))));
  EXPECT_FALSE(kCMajor.HasSameKeysAsScale(CScaleLite(CKeyEnh(1, TEnh_b), CSemitones(2741))));
  EXPECT_FALSE(kUndefRoot.HasSameKeysAsScale(kCMajor));
  EXPECT_FALSE(kCMajor.HasSameKeysAsScale(kUndefRoot));

  CScaleLite rotated = kCMajor;
  rotated.RotateRootToKeyEnh(CKeyEnh(2, TEnh_n));
  EXPECT_EQ(rotated, kDDorian);
  rotated.RotateRootToKeyEnh(CKeyEnh());
  EXPECT_EQ(rotated, kDDorian);

  EXPECT_EQ(kAMinor.ParallelModalScale(), kCMajor);
  EXPECT_EQ(kCMajor.ParallelModalScale(), kAMinor);
  EXPECT_EQ(CScaleLite(CKeyEnh(0, TEnh_n), CSemitones(1453)).ParallelModalScale(),
            CScaleLite(CKeyEnh(3, TEnh_b), CSemitones(2741)));
  EXPECT_TRUE(kDDorian.ParallelModalScale().IsUndef());
  EXPECT_TRUE(kDDorian.ParallelModalScale().Semitones.IsEmpty());

  EXPECT_EQ(kDDorian.RelatedIonianModalScale(), kCMajor);
  // A mask that is no church mode keeps the major mask under an undefined root.
  const CScaleLite related =
      CScaleLite(CKeyEnh(0, TEnh_n), CSemitones(1459)).RelatedIonianModalScale();
  EXPECT_TRUE(related.IsUndef());
  EXPECT_EQ(related.Semitones.Word(), 2741u);
  EXPECT_EQ(kUndefRoot.RelatedIonianModalScale(), CScaleLite());
}

TEST(ScaleLite, OrderHashAndEquality) {
  const CScaleLite cSharp(CKeyEnh(1, TEnh_s), CSemitones(2741));
  const CScaleLite dFlat(CKeyEnh(1, TEnh_b), CSemitones(2741));
  EXPECT_TRUE(kCMajor < cSharp);
  EXPECT_TRUE(cSharp < dFlat);  // the larger spelling sorts first
  EXPECT_FALSE(dFlat < cSharp);
  EXPECT_TRUE(CScaleLite(CKeyEnh(1, TEnh_b), CSemitones(1453)) < dFlat);
  EXPECT_NE(cSharp, dFlat);

  EXPECT_EQ(kCMajor.HashValue(),
            2741u + (static_cast<std::uint64_t>(CKeyEnh(0, TEnh_n).HashValue()) << 24));
  std::set<std::uint64_t> hashes;
  for (int key = 0; key < 12; ++key) {
    for (TEnh enh : {TEnh_b, TEnh_n, TEnh_s}) {
      for (std::uint64_t mask : {2741u, 1453u, 1709u}) {
        hashes.insert(CScaleLite(CKeyEnh(key, enh), CSemitones(mask)).HashValue());
      }
    }
  }
  EXPECT_EQ(hashes.size(), 12u * 3 * 3);
}

TEST(ScaleLite, NamesJsonAndTrace) {
  EXPECT_EQ(kDDorian.Name(), "D Dorian");
  EXPECT_EQ(CScaleLite(CKeyEnh(3, TEnh_b), CSemitones(2733)).Name(GetChordNamePrefsNonUTF8()),
            "Eb Melodic Minor");
  EXPECT_EQ(CScaleLite(CKeyEnh(0, TEnh_n), CSemitones(147)).Name(), "C 0-1-4-7");
  EXPECT_EQ(CScaleLite(CKeyEnh(0, TEnh_n), CSemitones()).ScaleName(), "-");

  const std::string json = testing::Json(kDDorian);
  EXPECT_EQ(
      json,
      R"({"CKeyEnh":{"KeyNr":" 2","Enh":"neutral"},"Semitones":"[1,0,1,1,0,1,0,1,0,1,1,0]"})");
  // The mask travels as a string that holds the array.
  const auto parsed = platform::ParseJson(json);
  ASSERT_TRUE(parsed.has_value());
  const auto inner = platform::ParseJson(platform::JsonString(*parsed, "Semitones"));
  ASSERT_TRUE(inner.has_value());
  EXPECT_EQ(inner->size(), 12u);
  EXPECT_EQ(CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary((*parsed)["CKeyEnh"]),
            kDDorian.RootKeyEnh);

  const std::string trace = kDDorian.TraceString();
  EXPECT_EQ(trace.rfind("CScaleLite: D Dorian, RootKeyEnh CKeyEnh: (2, neutral)", 0), 0u) << trace;
  EXPECT_NE(trace.find(", Semitones "), std::string::npos);
  EXPECT_EQ(kDDorian.StringForInitializerList().rfind("CScaleLite(CKeyEnh(2, TEnh_n), ", 0), 0u);

  EXPECT_EQ(testing::Streamed(CScaleLite::IsAutomatic::Yes), "isAutomatic: Yes");
  EXPECT_EQ(testing::Streamed(CScaleLite::IsAutomatic::No), "isAutomatic: No");
  EXPECT_EQ(testing::Streamed(static_cast<CScaleLite::IsAutomatic>(7)), "isAutomatic: No");
}

TEST(ScaleLite, KeysSpelledByAScale) {
  const CScaleLite eMajor(CKeyEnh(4, TEnh_n), CSemitones(2741));
  const CScaleLite bFlatMajor(CKeyEnh(10, TEnh_b), CSemitones(2741));
  EXPECT_EQ(CKeyEnh(3, eMajor), CKeyEnh(3, TEnh_s));
  EXPECT_EQ(CKeyEnh(3, bFlatMajor), CKeyEnh(3, TEnh_b));
  EXPECT_EQ(CKeyEnh(15, eMajor), CKeyEnh());
  EXPECT_EQ(CKeyEnh(3, kUndefRoot), CKeyEnh());
  EXPECT_EQ(eMajor.EnhForKeyNr(8), TEnh_s);
  EXPECT_EQ(bFlatMajor.EnhForKeyNr(8), TEnh_b);

  CKeyEnh key(3, TEnh_s);
  key.AdjustEnhToScale(bFlatMajor);
  EXPECT_EQ(key, CKeyEnh(3, TEnh_b));
  key.AdjustEnhToScale(kUndefRoot);
  EXPECT_EQ(key, CKeyEnh(3, TEnh_b));

  // From E up a major third in E major: G sharp; with no scale root the spelling stays.
  EXPECT_EQ(CKeyEnh(4, TEnh_n).TransposeAndAdjustEnh(4, eMajor), CKeyEnh(8, TEnh_s));
  EXPECT_EQ(CKeyEnh(4, TEnh_n).TransposeAndAdjustEnh(-8, bFlatMajor), CKeyEnh(8, TEnh_b));
  EXPECT_EQ(CKeyEnh(11, TEnh_n).TransposeAndAdjustEnh(4, kUndefRoot), CKeyEnh(3, TEnh_n));
  EXPECT_TRUE(CKeyEnh().TransposeAndAdjustEnh(4, eMajor).IsUndef());

  CScaleLite scale(CKeyEnh(2, TEnh_n), CSemitones(2741));
  scale.TransposeAndAdjustEnh(1, bFlatMajor);
  EXPECT_EQ(scale.RootKeyEnh, CKeyEnh(3, TEnh_b));
  CScaleLite undefined = kUndefRoot;
  undefined.TransposeAndAdjustEnh(1, bFlatMajor);
  EXPECT_TRUE(undefined.IsUndef());

  const CScaleHeavy cMajor(CNote(60, TEnh_n), st_maj);
  CNote note(66, TEnh_b);
  note.AdjustEnhToScale(cMajor);
  EXPECT_EQ(note.Enh(), TEnh_s);
  CNote undefinedNote;
  undefinedNote.AdjustEnhToScale(cMajor);  // reads the entry of key 3
  EXPECT_EQ(undefinedNote.Enh(), TEnh_b);
}

TEST(ScaleLite, ConvertsFromAHeavyScale) {
  const CScaleLite fromHeavy(CScaleHeavy(CKeyEnh(6, TEnh_b), st_lydian));
  EXPECT_EQ(fromHeavy, CScaleLite(CKeyEnh(6, TEnh_b), CSemitones(2773)));
  const CScaleLite custom(CScaleHeavy(CKeyEnh(0, TEnh_n), CSemitones(1365)));
  EXPECT_EQ(custom.Semitones.Word(), 1365u);
  EXPECT_EQ(CScaleLite(CScaleHeavy::Undef), CScaleLite());
}

}  // namespace
}  // namespace harmony
