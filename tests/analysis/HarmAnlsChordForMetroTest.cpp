#include "harmony/analysis/HarmAnlsChordForMetro.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "TestText.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

using testing::Json;
using TMetro = CHarmAnlsChordForMetro;

constexpr CKeyEnh kC(0, TEnh_n), kD(2, TEnh_n), kE(4, TEnh_n), kA(9, TEnh_n);
constexpr CKeyEnh kDFlat(1, TEnh_b), kFSharp(6, TEnh_s), kBFlat(10, TEnh_b);

TMetro Metro(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = CKeyEnh()) {
  return TMetro(CChordLite(root, CSemitones(mask), bass));
}

TMetro Symbol(const char* text) {
  return TMetro(CChordLite(text, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs()));
}

// The indices of the vector's elements that are 1.
std::vector<std::size_t> SetIndices(const std::vector<float>& vector) {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < vector.size(); ++i) {
    if (vector[i] == 1.0f) indices.push_back(i);
  }
  return indices;
}

std::vector<std::size_t> SetIndices(const TMetro& chord) {
  const std::vector<float> vector = chord.GetChordVectorRepresentation();
  EXPECT_EQ(vector.size(), 46u);
  return SetIndices(vector);
}

std::vector<float> VectorWith(std::initializer_list<std::size_t> indices) {
  std::vector<float> vector(46, 0.0f);
  for (const std::size_t i : indices) vector[i] = 1.0f;
  return vector;
}

TMetro ReadVector(const std::vector<float>& vector, TMetro onto = TMetro()) {
  onto.SetFromChordVectorRepresentation(vector);
  return onto;
}

std::string Chroma(const TMetro& chord, bool withBass) {
  TMetro::TChromaVector chroma;
  chroma.fill(0.5f);
  chord.GetChromaVector(chroma, withBass);
  std::string digits;
  for (const float x : chroma) digits += x == 1.0f ? '1' : (x == 0.0f ? '0' : '?');
  return digits;
}

using Indices = std::vector<std::size_t>;

// {"VectorRep":[...]} with these elements as written.
std::string VectorJson(const std::vector<std::string>& elements) {
  std::string json = "{\"VectorRep\":[";
  for (std::size_t i = 0; i < elements.size(); ++i) json += (i > 0 ? ", " : "") + elements[i];
  return json + "]}";
}

TEST(HarmAnlsChordForMetro, VectorOfRecognizedTriads) {
  // Root at 3 + key, triad at 15.., tones beyond the triad at 22 + bit, bass at 34 + key.
  EXPECT_EQ(SetIndices(Metro(kC, 1169, kE)), (Indices{3, 15, 32, 38}));
  EXPECT_EQ(SetIndices(Symbol("F#m7/C#")), (Indices{9, 16, 32, 35}));
  EXPECT_EQ(SetIndices(Metro(kDFlat, 273)), (Indices{4, 17}));
  EXPECT_EQ(SetIndices(Metro(kA, 585)), (Indices{12, 18, 31}));  // dim7: 9 beyond dim
  EXPECT_EQ(SetIndices(Metro(kD, 1185)), (Indices{5, 19, 32}));  // D7sus4
  EXPECT_EQ(SetIndices(Metro(kBFlat, 133)), (Indices{13, 20}));
  EXPECT_EQ(SetIndices(Metro(kE, 129)), (Indices{7, 21}));
  // A bass of the root's key, however spelled, is no bass in the vector.
  EXPECT_EQ(SetIndices(Metro(kC, 145, CKeyEnh(0, TEnh_s))), (Indices{3, 15}));
}

TEST(HarmAnlsChordForMetro, VectorOfChordsOutsideTheTriads) {
  // The major flat five and the chords without triad have no index of their own; their
  // tones beyond the (empty or flat-five) triad still appear.
  EXPECT_EQ(SetIndices(Metro(kC, 81)), (Indices{3}));
  EXPECT_EQ(SetIndices(Metro(kC, 81 + 1024)), (Indices{3, 32}));
  EXPECT_EQ(SetIndices(Metro(kC, 265)), (Indices{3, 22, 25, 30}));  // 0 3 8
  EXPECT_EQ(SetIndices(Metro(kC, 1)), (Indices{3, 22}));
  // A third without fifth is major; the missing fifth is not subtracted into an option.
  EXPECT_EQ(SetIndices(Metro(kC, 17 + 4)), (Indices{3, 15, 24}));
  // Undefined, no chord, and the two special values stand alone.
  EXPECT_EQ(SetIndices(TMetro()), (Indices{0}));
  EXPECT_EQ(SetIndices(TMetro(CChordLite_NoChordForce)), (Indices{0}));
  EXPECT_EQ(SetIndices(Metro(CKeyEnh(15, TEnh_n), 145, kE)), (Indices{0}));
  EXPECT_EQ(SetIndices(TMetro::EADGBE()), (Indices{1}));
  EXPECT_EQ(SetIndices(TMetro::Wildcard()), (Indices{2}));
  EXPECT_EQ(SetIndices(Metro(kC, 4095, kE)), (Indices{2}));
  // A key number beyond the octave, as a dictionary may carry, is no key.
  EXPECT_EQ(SetIndices(Metro(CKeyEnh(13, TEnh_n), 145)), (Indices{0}));
  EXPECT_EQ(SetIndices(Metro(kC, 145, CKeyEnh(40, TEnh_n))), (Indices{3, 15}));
}

TEST(HarmAnlsChordForMetro, VectorReadBack) {
  const TMetro c7e = ReadVector(VectorWith({3, 15, 32, 38}));
  EXPECT_EQ(c7e.ChordLite(), CChordLite(kC, CSemitones(1169), kE));
  // Black keys come back as C major spells them.
  EXPECT_EQ(ReadVector(VectorWith({9, 16, 35})).ChordLite(),
            CChordLite(kFSharp, CSemitones(137), CKeyEnh(1, TEnh_s)));
  EXPECT_EQ(ReadVector(VectorWith({6})).RootKeyEnh, CKeyEnh(3, TEnh_b));
  // A chord on C or E with every tone but the root reads back as a special value.
  EXPECT_TRUE(ReadVector(Metro(kC, 4094).GetChordVectorRepresentation()).IsWildcard());
  EXPECT_TRUE(ReadVector(Metro(kE, 4094, kA).GetChordVectorRepresentation()).IsEADGBE());
  // Index 0 wins over everything after it; the special values take no bass.
  const TMetro g = Metro(CKeyEnh(7, TEnh_n), 145, kD);
  EXPECT_EQ(ReadVector(VectorWith({0, 3, 15}), g).ChordLite(), CChordLite());
  EXPECT_TRUE(ReadVector(VectorWith({1, 2}), g).IsEADGBE());
  EXPECT_EQ(ReadVector(VectorWith({1, 2}), g).BassKeyEnh, CKeyEnh());
  EXPECT_TRUE(ReadVector(VectorWith({2, 3}), g).IsWildcard());
  // The first root and triad count; every option adds its bit.
  EXPECT_EQ(ReadVector(VectorWith({4, 3, 16, 15, 30})).ChordLite(),
            CChordLite(kC, CSemitones(145 + 256)));
  // A major triad with flat fifth has no index, so only its tones beyond it come back.
  EXPECT_EQ(ReadVector(Metro(kC, 81 + 1024).GetChordVectorRepresentation()).Semitones.Word(),
            1024u);
  // What the vector does not set stays: the old tones below the options, the old bass.
  EXPECT_EQ(ReadVector(VectorWith({7, 32}), Metro(kD, 137, kA)).ChordLite(),
            CChordLite(kE, CSemitones(1161), kA));
  EXPECT_EQ(ReadVector(VectorWith({15, 38}), g).ChordLite(), g.ChordLite());  // no root
  // A malformed vector changes nothing.
  std::vector<float> half = VectorWith({3, 15});
  half[20] = 0.5f;
  EXPECT_EQ(ReadVector(half, g).ChordLite(), g.ChordLite());
  std::vector<float> short45 = VectorWith({3, 15});
  short45.pop_back();
  EXPECT_EQ(ReadVector(short45, g).ChordLite(), g.ChordLite());
  EXPECT_EQ(ReadVector({}, g).ChordLite(), g.ChordLite());
}

TEST(HarmAnlsChordForMetro, EveryChordsVectorSurvivesItsReading) {
  for (std::uint64_t mask = 0; mask < 4096; ++mask) {
    for (const CKeyEnh bass : {CKeyEnh(), kE, kBFlat}) {
      const TMetro chord = Metro(kD, mask, bass);
      // The one triad without index, whose tones are lost (see above).
      if (chord.BasicChord() == kBasicChordMajorFlat5) continue;
      const std::vector<float> vector = chord.GetChordVectorRepresentation();
      ASSERT_EQ(ReadVector(vector).GetChordVectorRepresentation(), vector) << mask;
    }
  }
}

TEST(HarmAnlsChordForMetro, ChromaOfRootTonesAndBass) {
  EXPECT_EQ(Chroma(Metro(kC, 1169, kE), true), "100010010010");
  EXPECT_EQ(Chroma(Symbol("Am/G"), true), "100010010100");
  EXPECT_EQ(Chroma(Symbol("Am/G"), false), "100010000100");
  EXPECT_EQ(Chroma(Symbol("Bbmaj7"), false), "001001000110");
  // The root sounds even when the mask lacks bit 0.
  EXPECT_EQ(Chroma(Metro(kD, 144), false), "001000100100");
  EXPECT_EQ(Chroma(TMetro::Wildcard(), false), "111111111111");
  EXPECT_EQ(Chroma(TMetro(), true), "000000000000");
  EXPECT_EQ(Chroma(TMetro(CChordLite_NoChordYield), true), "000000000000");
}

TEST(HarmAnlsChordForMetro, ExportNames) {
  EXPECT_EQ(TMetro::Wildcard().NameForMetroExport(false), "*");
  EXPECT_EQ(TMetro::EADGBE().NameForMetroExport(true), "EADGBE");
  EXPECT_EQ(TMetro(CChordLite_NoChordForce).NameForMetroExport(true), "No Chord Force");
  EXPECT_EQ(TMetro(CChordLite_NoChordYield).NameForMetroExport(false), "No Chord Yield");
  EXPECT_EQ(TMetro().NameForMetroExport(true), "Undef ('No Chord')");
  // Simple names spell every black key as a sharp and set the bass off with blanks.
  EXPECT_EQ(Symbol("F#m7/C#").NameForMetroExport(true), "F#m7 / C#");
  EXPECT_EQ(Symbol("Dbm").NameForMetroExport(true), "C#m");
  EXPECT_EQ(Symbol("Cm7b5").NameForMetroExport(true), "Cm7(\u266D5)");
  // The triad's symbol always stands before the options.
  EXPECT_EQ(Symbol("C7sus4").NameForMetroExport(true), "Csus47");
  EXPECT_EQ(Symbol("C/C").NameForMetroExport(true), "C");
  // Otherwise the name of the analysis traces.
  EXPECT_EQ(Symbol("F#m7/C#").NameForMetroExport(false), "F\u266Fm7/C\u266F");
  EXPECT_EQ(Symbol("C7sus4").NameForMetroExport(false), "C7sus4");
  EXPECT_EQ(Symbol("Dbm").TraceBriefString(), "C#m");
}

TEST(HarmAnlsChordForMetro, SlashChordsAreNoSpecialValues) {
  EXPECT_FALSE(Metro(kE, 4095, kA).IsSlashChord());
  EXPECT_TRUE(Metro(kE, 4094, kA).IsSlashChord());
  EXPECT_TRUE(Metro(kC, 145, CKeyEnh(0, TEnh_s)).IsSlashChord());  // C/B#
  EXPECT_FALSE(Metro(kC, 145, kC).IsSlashChord());
  EXPECT_FALSE(Metro(CKeyEnh(), 145, kC).IsSlashChord());
}

TEST(HarmAnlsChordForMetro, RecognizedTypes) {
  EXPECT_TRUE(Metro(kC, 1153).IsRecognizedMetroChord(false));
  // The common types are those of lead sheets, the recognized ones what the consumer
  // knows: C7 without third is only the latter, C6 only the former.
  EXPECT_FALSE(Metro(kC, 1153).IsCommonChord(false));
  EXPECT_TRUE(Metro(kC, 657).IsCommonChord(false));
  EXPECT_FALSE(Metro(kC, 657).IsRecognizedMetroChord(false));
  EXPECT_TRUE(Metro(kC, 1).IsRecognizedMetroChord(false));
  EXPECT_TRUE(Metro(kC, 137).IsMajorOrMinor(false));
  EXPECT_FALSE(Metro(kC, 1169).IsMajorOrMinor(false));
  // A bass, even one on the root, counts only when asked to.
  EXPECT_TRUE(Metro(kC, 145, kE).IsMajorOrMinor(false));
  EXPECT_FALSE(Metro(kC, 145, kE).IsMajorOrMinor(true));
  EXPECT_FALSE(Metro(kC, 145, kC).IsRecognizedMetroChord(true));
  EXPECT_FALSE(Metro(kC, 1169, kE).IsCommonChord(true));
  EXPECT_TRUE(TMetro::Wildcard().IsMajorOrMinor(true));
}

TEST(HarmAnlsChordForMetro, SimplifyToMajorOrMinor) {
  const auto simplified = [](std::uint64_t mask) {
    return Metro(kD, mask).SimplifiedToMajorOrMinor(false).Semitones.Word();
  };
  EXPECT_EQ(simplified(161), 145u);   // sus4
  EXPECT_EQ(simplified(1185), 145u);  // 7sus4
  EXPECT_EQ(simplified(133), 145u);   // sus2
  EXPECT_EQ(simplified(273), 145u);   // aug
  EXPECT_EQ(simplified(1161), 137u);  // m7
  EXPECT_EQ(simplified(73), 137u);    // dim
  EXPECT_EQ(simplified(129), 145u);   // power
  EXPECT_EQ(simplified(141), 145u);   // m(add9) holds the tones of sus2
  TMetro chord = Metro(kD, 1161, kA);
  chord.RootDistToHarmCenter = 2;
  chord.SetWritesVectorRep(true);
  chord.SimplifyToMajorOrMinor(false);
  EXPECT_EQ(chord.ChordLite(), CChordLite(kD, CSemitones(137), kA));
  EXPECT_EQ(chord.RootDistToHarmCenter, -1);
  EXPECT_FALSE(chord.WritesVectorRep());
  chord.SimplifyToMajorOrMinor(true);
  EXPECT_EQ(chord.BassKeyEnh, CKeyEnh());
  EXPECT_TRUE(TMetro::EADGBE().SimplifiedToMajorOrMinor(true).IsEADGBE());
  EXPECT_EQ(TMetro(CChordLite_NoChordForce).SimplifiedToMajorOrMinor(false).ChordLite(),
            CChordLite());
  EXPECT_EQ(Metro(kD, 0, kA).SimplifiedToMajorOrMinor(false).ChordLite(), CChordLite());
}

TEST(HarmAnlsChordForMetro, SimplifyToRecognizedTypes) {
  const auto simplified = [](std::uint64_t mask) {
    return Metro(kD, mask).SimplifiedToRecognizedMetroChord(false).Semitones.Word();
  };
  EXPECT_EQ(simplified(1173), 1169u);  // 9 -> 7
  EXPECT_EQ(simplified(2197), 2193u);  // maj9 -> maj7
  EXPECT_EQ(simplified(661), 149u);    // 6/9 -> add9
  EXPECT_EQ(simplified(1177), 1169u);  // 7#9 -> 7 (the major third decides)
  EXPECT_EQ(simplified(81), 145u);     // b5 -> major
  EXPECT_EQ(simplified(1165), 1161u);  // m9 -> m7
  EXPECT_EQ(simplified(2185), 2185u);  // m(maj7)
  EXPECT_EQ(simplified(649), 137u);    // m6 -> m
  EXPECT_EQ(simplified(9), 137u);      // a minor third alone
  EXPECT_EQ(simplified(1097), 73u);    // m7b5 -> dim
  EXPECT_EQ(simplified(585), 585u);    // dim7
  EXPECT_EQ(simplified(1297), 1297u);  // aug7
  EXPECT_EQ(simplified(2321), 273u);   // aug(maj7) -> aug
  EXPECT_EQ(simplified(1185), 161u);   // 7sus4 -> sus4
  EXPECT_EQ(simplified(133), 133u);
  EXPECT_EQ(simplified(1153), 1153u);  // 5 with minor seventh
  EXPECT_EQ(simplified(2177), 129u);   // 5 with major seventh
  EXPECT_EQ(simplified(3), 1u);
  // The root alone always loses its bass.
  EXPECT_EQ(Metro(kD, 1, kA).SimplifiedToRecognizedMetroChord(false).BassKeyEnh, CKeyEnh());
  EXPECT_EQ(Metro(kD, 3, kA).SimplifiedToRecognizedMetroChord(false).BassKeyEnh, kA);
  EXPECT_EQ(Metro(kD, 3, kA).SimplifiedToRecognizedMetroChord(true).BassKeyEnh, CKeyEnh());
  EXPECT_TRUE(TMetro::Wildcard().SimplifiedToRecognizedMetroChord(true).IsWildcard());
  for (std::uint64_t mask = 1; mask < 4096; ++mask) {
    TMetro chord = Metro(kD, mask, kA);
    chord.SimplifyToRecognizedMetroChord(false);
    ASSERT_TRUE(chord.IsRecognizedMetroChord(false)) << mask;
    ASSERT_EQ(chord.RootKeyEnh, kD);
  }
}

TEST(HarmAnlsChordForMetro, JsonInBothFormsAndReadBack) {
  TMetro chord = Metro(kC, 1169, kE);
  chord.RootDistToHarmCenter = 5;
  EXPECT_EQ(Json(chord),
            "{\"RootKeyEnh\":{\"KeyNr\":\" 0\",\"Enh\":\"neutral\"}, "
            "\"BassKeyEnh\":{\"KeyNr\":\" 4\",\"Enh\":\"neutral\"}, \"Semitones\":1169}");
  chord.SetWritesVectorRep(true);
  const std::string vectorJson = Json(chord);
  EXPECT_EQ(vectorJson,
            "{\"VectorRep\":[0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, "
            "0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0]}");

  const auto read = [](const std::string& json) {
    const auto dict = platform::ParseJson(json);
    EXPECT_TRUE(dict.has_value()) << json;
    return dict ? TMetro::FromDictionary(*dict) : TMetro();
  };
  const TMetro fromVector = read(vectorJson);
  EXPECT_EQ(fromVector.ChordLite(), chord.ChordLite());
  EXPECT_EQ(fromVector.RootDistToHarmCenter, -1);
  EXPECT_FALSE(fromVector.WritesVectorRep());
  chord.SetWritesVectorRep(false);
  const TMetro fromKeys = read(Json(chord));
  EXPECT_EQ(fromKeys.ChordLite(), chord.ChordLite());
  EXPECT_EQ(fromKeys.RootDistToHarmCenter, -1);
  // The keys of an analysis chord are read too, its distances not.
  EXPECT_EQ(read("{\"RootKeyNr\":2, \"Semitones\":137, \"RootDistToHarmCenter\":4}"),
            TMetro(CChordLite(CKeyEnh(2, TEnh_Undef), CSemitones(137))));
  // Special values and the undefined chord come back from their vectors.
  chord = TMetro::EADGBE();
  chord.SetWritesVectorRep(true);
  EXPECT_TRUE(read(Json(chord)).IsEADGBE());
  // Any element that is not the number 0 or 1, or a length other than 46, gives the
  // undefined chord.
  std::vector<std::string> cMajor(46, "0");
  cMajor[3] = cMajor[15] = "1";
  EXPECT_EQ(read(VectorJson(cMajor)).ChordLite(), CChordLite(kC, CSemitones(145)));
  std::vector<std::string> spelled = cMajor;
  spelled[20] = "-0.0";
  spelled[40] = "1.0";
  EXPECT_EQ(read(VectorJson(spelled)).ChordLite(), CChordLite(kC, CSemitones(145), kFSharp));
  for (const char* bad : {"0.5", "\"1\"", "1e300", "true", "[1]", "null", "2"}) {
    std::vector<std::string> elements = cMajor;
    elements[20] = bad;
    EXPECT_EQ(read(VectorJson(elements)).ChordLite(), CChordLite()) << bad;
  }
  cMajor.push_back("0");
  EXPECT_EQ(read(VectorJson(cMajor)).ChordLite(), CChordLite());
  EXPECT_EQ(read("{\"VectorRep\":7}").ChordLite(), CChordLite());
}

}  // namespace
}  // namespace harmony
