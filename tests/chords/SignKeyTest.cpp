#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "TestText.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

using testing::Json;
using testing::Streamed;

constexpr TSignKeyType kMajor = TSignKeyType::Major;
constexpr TSignKeyType kMinor = TSignKeyType::Minor;
constexpr TSignKeyTypeNoUndef kMajorNoUndef = TSignKeyTypeNoUndef::Major;
constexpr TSignKeyTypeNoUndef kMinorNoUndef = TSignKeyTypeNoUndef::Minor;

JsonDict Parsed(const std::string& text) {
  auto parsed = platform::ParseJson(text);
  EXPECT_TRUE(parsed.has_value()) << text;
  return parsed.value_or(JsonDict());
}

TEST(SignKeyType, TextsAndConversions) {
  EXPECT_EQ(Streamed(TSignKeyType::Undef), "Undef");
  EXPECT_EQ(Streamed(kMinor), "Minor");
  EXPECT_EQ(Streamed(static_cast<TSignKeyType>(3)), "unkown TSignKeyType");
  EXPECT_EQ(Streamed(kMinorNoUndef), "Minor");
  EXPECT_EQ(Streamed(static_cast<TSignKeyTypeNoUndef>(2)), "unkown TSignKeyTypeNoUndef");
  std::ostringstream json;
  ToJSONString(json, kMajor);
  ToJSONString(json, TSignKeyType::Undef);
  ToJSONString(json, kMinorNoUndef);
  ToJSONString(json, static_cast<TSignKeyTypeNoUndef>(9));
  EXPECT_EQ(json.str(), "majorundefminorundef");
  EXPECT_EQ(InitializerText(kMajor), "TSignKeyType::Major");

  EXPECT_EQ(SignKeyTypeFromString("maj"), kMajor);
  EXPECT_EQ(SignKeyTypeFromString("min"), kMinor);
  EXPECT_EQ(SignKeyTypeFromString("minor"), TSignKeyType::Undef);
  EXPECT_EQ(SignKeyTypeNoUndefFromString("Min"), kMajorNoUndef);
  EXPECT_EQ(FromSignKeyTypeNoUndef(kMinorNoUndef), kMinor);
  EXPECT_EQ(FromSignKeyTypeNoUndef(static_cast<TSignKeyTypeNoUndef>(4)), TSignKeyType::Undef);
  EXPECT_EQ(FromSignKeyType(TSignKeyType::Undef), kMajorNoUndef);

  EXPECT_EQ(SemitonesFromSignKeyType(kMinor).Word(), 1453u);
  EXPECT_TRUE(SemitonesFromSignKeyType(TSignKeyType::Undef).IsEmpty());
  EXPECT_EQ(SignKeyTypeFromSemitones(CSemitones(1453)), kMinor);
  EXPECT_EQ(SignKeyTypeFromSemitones(CSemitones(1709)), TSignKeyType::Undef);

  int minorTypes = 0;
  for (int value = 0; value <= 31; ++value) {
    minorTypes += SignKeyTypeFromScaleType(static_cast<TScaleType>(value)) == kMinor;
  }
  EXPECT_EQ(minorTypes, 10);
  EXPECT_EQ(SignKeyTypeFromScaleType(st_custom), kMajor);
  EXPECT_EQ(SignKeyTypeFromScaleType(st_Undef), kMajor);
  EXPECT_EQ(SignKeyTypeFromScaleType(BebopHarmonicMinor), kMajor);
}

TEST(SignKeyType, SignCounts) {
  // The minimal table and the spelled count agree except where the spelling matters.
  EXPECT_EQ(MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(6, kMajor), 6);
  EXPECT_EQ(MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(3, kMinor), 6);
  EXPECT_EQ(MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(15, kMajor), 0);
  EXPECT_EQ(MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(2, TSignKeyType::Undef), 0);
  for (int key = 0; key < 12; ++key) {
    for (TSignKeyType type : {kMajor, kMinor}) {
      CSignKeyLite signKey(CKeyEnh(key, TEnh_Undef), type);
      signKey.SetRootNoteEnhWithLeastSigns();
      // The least-signs spelling reaches the minimal count, up to the tie of D sharp and E
      // flat minor, which keeps E flat.
      EXPECT_EQ(signKey.SignsCountAbs(),
                std::abs(MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(key, type)))
          << key;
    }
  }
  EXPECT_EQ(SignsCountForSignKeyWithKeyEnhAndSignKeyType(CKeyEnh(6, TEnh_s), kMajor), 6);
  EXPECT_EQ(SignsCountForSignKeyWithKeyEnhAndSignKeyType(CKeyEnh(6, TEnh_b), kMajor), -6);
  EXPECT_EQ(SignsCountForSignKeyWithKeyEnhAndSignKeyType(CKeyEnh(3, TEnh_s), kMinor), 6);
  EXPECT_EQ(SignsCountForSignKeyWithKeyEnhAndSignKeyType(CKeyEnh(3, TEnh_b), TSignKeyType::Undef),
            0);
}

TEST(SignKeyLite, KeysScalesAndConversions) {
  const CSignKeyLite fSharpMinor(CKeyEnh(6, TEnh_s), kMinor);
  EXPECT_FALSE(fSharpMinor.IsUndef());
  EXPECT_TRUE(CSignKeyLite(CKeyEnh(6, TEnh_s), TSignKeyType::Undef).IsUndef());
  EXPECT_TRUE(CSignKeyLite::Undef.IsUndef());
  EXPECT_EQ(CSignKeyLite("F# minor"), fSharpMinor);
  EXPECT_EQ(CSignKeyLite("Bb"), CSignKeyLite(CKeyEnh(10, TEnh_b), kMajor));
  EXPECT_EQ(CSignKeyLite("D dorian").SignKeyType, TSignKeyType::Undef);

  EXPECT_EQ(fSharpMinor.Scale(), CScaleLite(CKeyEnh(6, TEnh_s), CSemitones(1453)));
  EXPECT_EQ(CSignKeyLite(CKeyEnh(6, TEnh_s), TSignKeyType::Undef).Scale(), CScaleLite());
  const CHarmCenterLite rootOnly =
      CSignKeyLite(CKeyEnh(6, TEnh_s), TSignKeyType::Undef).ToHarmCenter();
  EXPECT_EQ(rootOnly.RootKeyEnh, CKeyEnh(6, TEnh_s));
  EXPECT_TRUE(rootOnly.Semitones.IsEmpty());
  EXPECT_EQ(fSharpMinor.ToHarmCenter(), CHarmCenterLite(fSharpMinor));
  EXPECT_EQ(fSharpMinor.ToSignKeyNoEnh(), CSignKeyNoEnh(6, kMinorNoUndef));
  EXPECT_EQ(CSignKeyLite(fSharpMinor.ToSignKeyHeavy()), fSharpMinor);

  CSignKeyLite fromCenter;
  fromCenter.SetFromHarmCenter(CHarmCenterLite(CKeyEnh(2, TEnh_n), CSemitones(1709)));
  EXPECT_EQ(fromCenter, CSignKeyLite(CKeyEnh(2, TEnh_n), kMajor));
  fromCenter.SetFromHarmCenter(CHarmCenterLite(CKeyEnh(2, TEnh_n), CSemitones(1453)));
  EXPECT_EQ(fromCenter.SignKeyType, kMinor);

  EXPECT_EQ(fSharpMinor.DistToSignKeyRoot(1), 7);
  EXPECT_EQ(CSignKeyLite::Undef.DistToSignKeyRoot(1), -1);
  EXPECT_EQ(fSharpMinor.KeyNrToSignKeyKeyNr(4), 10);
  EXPECT_EQ(fSharpMinor.KeyNrToSignKeyKeyNr(kKeyNrUndef), kKeyNrUndef);
  EXPECT_EQ(CSignKeyLite::Undef.SignKeyKeyNrToKeyNr(2), kKeyNrUndef);

  // Spelling keys by the sign key: key 10 is A sharp in F sharp minor, B flat in F minor.
  EXPECT_EQ(CKeyEnh(10, fSharpMinor), CKeyEnh(10, TEnh_s));
  EXPECT_EQ(CKeyEnh(10, CSignKeyLite(CKeyEnh(5, TEnh_n), kMinor)), CKeyEnh(10, TEnh_b));
  EXPECT_EQ(CKeyEnh(10, CSignKeyLite(CKeyEnh(5, TEnh_n), TSignKeyType::Undef)), CKeyEnh());

  CSignKeyLite moved = fSharpMinor;
  moved.TransposeDestructiveBy(2, CScaleLite(CKeyEnh(8, TEnh_b), CSemitones(2741)));
  EXPECT_EQ(moved.RootKeyEnh, CKeyEnh(8, TEnh_b));
}

TEST(SignKeyLite, ParallelAndIonicKeys) {
  const auto parallel = [](int key, TEnh enh, TSignKeyType type) {
    return CSignKeyLite(CKeyEnh(key, enh), type).ParallelSignKey();
  };
  EXPECT_EQ(parallel(0, TEnh_n, kMajor), CSignKeyLite(CKeyEnh(9, TEnh_n), kMinor));
  EXPECT_EQ(parallel(1, TEnh_s, kMajor), CSignKeyLite(CKeyEnh(10, TEnh_s), kMinor));
  EXPECT_EQ(parallel(11, TEnh_b, kMajor), CSignKeyLite(CKeyEnh(8, TEnh_b), kMinor));
  EXPECT_EQ(parallel(8, TEnh_b, kMinor), CSignKeyLite(CKeyEnh(11, TEnh_b), kMajor));
  // Beyond seven signs on a white key the letter needs a double accidental: E sharp major
  // has C double sharp minor, B sharp major G double sharp minor.
  EXPECT_EQ(parallel(5, TEnh_s, kMajor), CSignKeyLite(CKeyEnh(2, TEnh_ss), kMinor));
  EXPECT_EQ(parallel(0, TEnh_s, kMajor), CSignKeyLite(CKeyEnh(9, TEnh_ss), kMinor));
  EXPECT_EQ(parallel(10, TEnh_s, kMinor), CSignKeyLite(CKeyEnh(1, TEnh_s), kMajor));
  EXPECT_EQ(parallel(3, TEnh_s, kMinor), CSignKeyLite(CKeyEnh(6, TEnh_s), kMajor));
  EXPECT_EQ(parallel(0, TEnh_n, TSignKeyType::Undef), CSignKeyLite::Undef);
  EXPECT_EQ(CSignKeyLite(CKeyEnh(4, TEnh_n), kMinor).IonicSignKey(),
            CSignKeyLite(CKeyEnh(7, TEnh_n), kMajor));
  EXPECT_EQ(CSignKeyLite(CKeyEnh(4, TEnh_n), kMajor).IonicSignKey(),
            CSignKeyLite(CKeyEnh(4, TEnh_n), kMajor));
}

TEST(SignKeyLite, LeastSignsSpelling) {
  const auto leastSigns = [](int key, TEnh enh, TSignKeyType type) {
    CSignKeyLite signKey(CKeyEnh(key, enh), type);
    signKey.SetRootNoteEnhWithLeastSigns();
    return signKey.RootKeyEnh;
  };
  EXPECT_EQ(leastSigns(1, TEnh_s, kMajor), CKeyEnh(1, TEnh_b));
  EXPECT_EQ(leastSigns(1, TEnh_b, kMinor), CKeyEnh(1, TEnh_s));
  EXPECT_EQ(leastSigns(6, TEnh_b, kMajor), CKeyEnh(6, TEnh_b));  // a tie keeps the spelling
  EXPECT_EQ(leastSigns(6, TEnh_Undef, kMajor), CKeyEnh(6, TEnh_s));
  EXPECT_EQ(leastSigns(8, TEnh_b, kMinor), CKeyEnh(8, TEnh_s));
  EXPECT_EQ(leastSigns(0, TEnh_bb, kMajor), CKeyEnh(0, TEnh_n));
  EXPECT_EQ(leastSigns(11, TEnh_b, kMajor), CKeyEnh(11, TEnh_n));
  EXPECT_EQ(leastSigns(4, TEnh_b, kMinor), CKeyEnh(4, TEnh_n));
  // Undefined sign keys are left alone.
  CSignKeyLite undefinedType(CKeyEnh(1, TEnh_s), TSignKeyType::Undef);
  undefinedType.SetRootNoteEnhWithLeastSigns();
  EXPECT_EQ(undefinedType.RootKeyEnh, CKeyEnh(1, TEnh_s));
}

TEST(SignKeyLite, NamesOrderAndJson) {
  const CSignKeyLite fSharpMinor(CKeyEnh(6, TEnh_s), kMinor);
  EXPECT_EQ(fSharpMinor.NameShort(), "F\u266Fm");
  EXPECT_EQ(fSharpMinor.NameShort(GetChordNamePrefsNonUTF8()), "F#m");
  EXPECT_EQ(fSharpMinor.NameLong(GetChordNamePrefsNonUTF8()), "F# Minor");
  EXPECT_EQ(CSignKeyLite(CKeyEnh(10, TEnh_b), kMajor).NameLong(GetChordNamePrefsNonUTF8()),
            "Bb Major");
  EXPECT_EQ(CSignKeyLite::Undef.NameShort(), "Undefined");

  EXPECT_TRUE(CSignKeyLite(CKeyEnh(6, TEnh_s), kMajor) < CSignKeyLite(CKeyEnh(6, TEnh_b), kMajor));
  EXPECT_TRUE(CSignKeyLite(CKeyEnh(6, TEnh_s), kMajor) < fSharpMinor);
  EXPECT_TRUE(fSharpMinor < CSignKeyLite(CKeyEnh(7, TEnh_n), kMajor));
  EXPECT_NE(fSharpMinor, CSignKeyLite(CKeyEnh(6, TEnh_b), kMinor));

  EXPECT_EQ(Json(fSharpMinor), R"({"CKeyEnh":{"KeyNr":" 6","Enh":"sharp"},"Type":"minor"})");
  EXPECT_EQ(Json(CSignKeyLite::Undef),
            R"({"CKeyEnh":{"KeyNr":"15","Enh":"undef"},"Type":"undef"})");
  for (const CSignKeyLite& signKey :
       {fSharpMinor, CSignKeyLite(CKeyEnh(3, TEnh_b), kMajor), CSignKeyLite::Undef}) {
    EXPECT_EQ(CSignKeyLite::FromJSONDict(Parsed(Json(signKey))), signKey);
  }
  EXPECT_EQ(CSignKeyLite::FromJSONDict(Parsed("{}")), CSignKeyLite::Undef);
  EXPECT_EQ(CSignKeyLite::FromJSONDict(Parsed(R"({"Type":"maj"})")), CSignKeyLite::Undef);

  EXPECT_EQ(fSharpMinor.StringForInitializerList(),
            "CSignKeyLite(CKeyEnh(CKeyEnh(6, TEnh_s)), TSignKeyType::Minor)");
  EXPECT_EQ(fSharpMinor.TraceString().rfind("CSignKeyLite: F\u266Fm", 0), 0u);
}

TEST(SignKeyNoEnh, ValuesNamesAndJson) {
  const CSignKeyNoEnh eFlatMinor(3, kMinorNoUndef);
  EXPECT_TRUE(CSignKeyNoEnh::Undef.IsUndef());
  EXPECT_EQ(CSignKeyNoEnh::Undef.Type, kMajorNoUndef);
  EXPECT_EQ(CSignKeyNoEnh(CSignKeyLite::Undef), CSignKeyNoEnh::Undef);
  EXPECT_EQ(CSignKeyNoEnh(CSignKeyHeavy(CKeyEnh(3, TEnh_s), kMinorNoUndef)), eFlatMinor);
  EXPECT_EQ(eFlatMinor.SignKey(), CSignKeyLite(CKeyEnh(3, TEnh_b), kMinor));
  EXPECT_EQ(CSignKeyNoEnh(1, kMajorNoUndef).SignKey().RootKeyEnh, CKeyEnh(1, TEnh_b));
  EXPECT_EQ(CSignKeyNoEnh(1, kMinorNoUndef).SignKey().RootKeyEnh, CKeyEnh(1, TEnh_s));
  EXPECT_EQ(eFlatMinor.Scale(), CScaleLite(CKeyEnh(3, TEnh_b), CSemitones(1453)));
  EXPECT_EQ(eFlatMinor.ParallelSignKey(), CSignKeyNoEnh(6, kMajorNoUndef));
  EXPECT_EQ(eFlatMinor.IonicSignKey(), CSignKeyNoEnh(6, kMajorNoUndef));
  EXPECT_EQ(CSignKeyNoEnh(0, kMajorNoUndef).ParallelSignKey(), CSignKeyNoEnh(9, kMinorNoUndef));
  EXPECT_EQ(CSignKeyNoEnh::Undef.ParallelSignKey(), CSignKeyNoEnh::Undef);
  EXPECT_EQ(eFlatMinor.DistToSignKeyRoot(1), 10);
  EXPECT_EQ(CSignKeyNoEnh::Undef.KeyNrToSignKeyKeyNr(1), kKeyNrUndef);
  EXPECT_EQ(eFlatMinor.Name(GetChordNamePrefsNonUTF8()), "Ebm");

  EXPECT_EQ(Json(eFlatMinor), R"({"RootKeyNr":3,"Type":"minor"})");
  EXPECT_EQ(CSignKeyNoEnh::FromJSONDict(Parsed(Json(eFlatMinor))), eFlatMinor);
  EXPECT_EQ(CSignKeyNoEnh::FromJSONDict(Parsed(R"({"RootKeyNr":"7"})")),
            CSignKeyNoEnh(7, kMajorNoUndef));
  EXPECT_EQ(CSignKeyNoEnh::FromJSONDict(Parsed("{}")), CSignKeyNoEnh::Undef);
  EXPECT_EQ(CSignKeyNoEnh::Undef.TraceString(), "CSignKeyNoEnh_Undef");
  EXPECT_EQ(eFlatMinor.TraceString().rfind("CSignKeyNoEnh: Name E\u266Dm", 0), 0u);
}

TEST(SignKeyHeavy, StaysMajorOrMinor) {
  CSignKeyHeavy signKey(CKeyEnh(9, TEnh_n), kMinorNoUndef);
  EXPECT_EQ(signKey.ScaleType(), st_min);
  EXPECT_EQ(signKey.SignKeyType(), kMinorNoUndef);
  EXPECT_EQ(signKey.SignsCount(), 0);
  EXPECT_EQ(signKey.EnhForKeyNr(8), TEnh_s);
  signKey.SetSignKeyType(kMajorNoUndef);
  EXPECT_EQ(signKey.ScaleType(), st_maj);
  EXPECT_EQ(signKey.RootKeyEnh(), CKeyEnh(9, TEnh_n));
  EXPECT_EQ(signKey.SignsCount(), 3);
  signKey.SetRootKeyEnhAndSignKeyType(CKeyEnh(1, TEnh_s), kMajorNoUndef);
  signKey.SetRootNoteEnhWithLeastSigns();
  EXPECT_EQ(signKey.RootKeyEnh(), CKeyEnh(1, TEnh_b));
  EXPECT_EQ(signKey.SignsCount(), -5);
  EXPECT_EQ(signKey.Scale(), CScaleLite(CKeyEnh(1, TEnh_b), CSemitones(2741)));
  EXPECT_EQ(CSignKeyHeavy(8, kMinorNoUndef).RootKeyEnh(), CKeyEnh(8, TEnh_s));
  EXPECT_EQ(CSignKeyHeavy(CSignKeyNoEnh(10, kMinorNoUndef)).RootKeyEnh(), CKeyEnh(10, TEnh_b));
  EXPECT_TRUE(CSignKeyHeavy::Undef.RootNote().IsUndef());
  EXPECT_EQ(CSignKeyHeavy::Undef.SignKeyType(), kMajorNoUndef);

  // The keys of the event byte from their sign counts, and further round the circle.
  for (int signs = -7; signs <= 7; ++signs) {
    for (TSignKeyTypeNoUndef type : {kMajorNoUndef, kMinorNoUndef}) {
      signKey.SetFromSignsCountAndType(signs, type);
      EXPECT_EQ(signKey.SignsCount(), signs);
      EXPECT_EQ(signKey.SignKeyType(), type);
    }
  }
  signKey.SetFromSignsCountAndType(9, kMinorNoUndef);
  EXPECT_EQ(signKey.RootKeyEnh(), CKeyEnh(0, TEnh_s));
  signKey.SetFromSignsCountAndType(-8, kMajorNoUndef);
  EXPECT_EQ(signKey.RootKeyEnh(), CKeyEnh(4, TEnh_b));
}

TEST(SignKeyHeavy, JsonNamesAndTrace) {
  const CSignKeyHeavy bMinor(CNote(47, TEnh_n), kMinorNoUndef);
  EXPECT_EQ(Json(bMinor), R"({"root":{"name":"B1","nr":47,"enh":"neutral"},"type":"min"})");
  EXPECT_EQ(CSignKeyHeavy::FromJSONDict(Parsed(Json(bMinor))), bMinor);
  const CSignKeyHeavy gFlat(CKeyEnh(6, TEnh_b), kMajorNoUndef);
  EXPECT_EQ(CSignKeyHeavy::FromJSONDict(Parsed(Json(gFlat))), gFlat);
  EXPECT_EQ(CSignKeyHeavy::FromJSONDict(Parsed("{}")), CSignKeyHeavy::Undef);
  EXPECT_EQ(bMinor.Name(GetChordNamePrefsNonUTF8()), "Bm");
  EXPECT_EQ(bMinor.TraceString(), "CSignKeyHeavy: Name Bm, RootNote B1, SignsCount 2");
  EXPECT_EQ(Streamed(bMinor), bMinor.TraceString());
  EXPECT_EQ(bMinor.StringForInitializerList(),
            "CSignKeyHeavy(CNote(47, TEnh_n), TSignKeyTypeNoUndef::Minor)");
}

TEST(HarmCenter, CentersFromSignKeysAndTheirNames) {
  EXPECT_EQ(CHarmCenterLite(CSignKeyLite(CKeyEnh(9, TEnh_n), kMinor)),
            CHarmCenterLite(CKeyEnh(9, TEnh_n), CSemitones(1453)));
  EXPECT_EQ(CHarmCenterLite(CSignKeyLite(CKeyEnh(9, TEnh_n), TSignKeyType::Undef)),
            CHarmCenterLite::Undef);
  const CHarmCenterLite dDorian(CScaleLite(CKeyEnh(2, TEnh_n), CSemitones(1709)));
  EXPECT_EQ(dDorian.NameShort(), "D Dorian");
  EXPECT_EQ(dDorian.NameLong(), "D Dorian");
  EXPECT_EQ(CHarmCenterLite(CKeyEnh(9, TEnh_n), CSemitones(1453)).NameShort(), "Am");
  EXPECT_EQ(CHarmCenterLite(CKeyEnh(9, TEnh_n), CSemitones(2741)).NameShort(), "A");
  EXPECT_EQ(CHarmCenterLite(CKeyEnh(11, TEnh_n), CSemitones(1387)).NameShort(), "B Locrian");
  EXPECT_EQ(CHarmCenterLite(CKeyEnh(0, TEnh_n), CSemitones(1459)).NameShort(), "C");
  EXPECT_EQ(dDorian.KeyNrToHarmCenterKeyNr(0), 10);
  EXPECT_EQ(CHarmCenterLite::Undef.KeyNrToHarmCenterKeyNr(0), kKeyNrUndef);
  // What a scale offers, a center offers too.
  EXPECT_TRUE(dDorian.HasKeyNr(11));
  EXPECT_EQ(Json(dDorian), Json(CScaleLite(dDorian)));
  EXPECT_EQ(Streamed(dDorian).rfind("CHarmCenterLite: D Dorian", 0), 0u);
  EXPECT_EQ(dDorian.TraceBriefString(), "D Dorian");
}

}  // namespace
}  // namespace harmony
