// MusicXML chord symbols: the note names with their alters, the table of chord kinds read
// and written, and the chord a symbol with degrees and a bass stands for.

#include "harmony/musicxml/MusicXMLHarmony.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace harmony {
namespace {

TMusicXMLHarmony Symbol(const std::string& step, int alter, const std::string& kind,
                        std::vector<TMusicXMLDegree> degrees = {}, TMusicXMLPitch bass = {}) {
  TMusicXMLHarmony harmony;
  harmony.Root = {step, alter};
  harmony.Kind = kind;
  harmony.Degrees = std::move(degrees);
  harmony.Bass = std::move(bass);
  return harmony;
}

// The chord's tones as intervals above its root, folded into the octave.
std::vector<int> Tones(const CChordHeavy& chord) {
  std::vector<int> tones;
  for (int i = 0; i < 12; ++i) {
    if (chord.IntvlSet().HasIntvlInAnyOctave(i)) tones.push_back(i);
  }
  return tones;
}

TEST(MusicXMLPitch, LetterAndAlterGiveASpelledKey) {
  EXPECT_EQ(TMusicXMLPitch({"B", -1}).ToKeyEnh(), CKeyEnh(10, TEnh_b));
  EXPECT_EQ(TMusicXMLPitch({"F", 1}).ToKeyEnh(), CKeyEnh(6, TEnh_s));
  EXPECT_EQ(TMusicXMLPitch({"C", -2}).ToKeyEnh(), CKeyEnh(10, TEnh_bb));
  // Alters beyond a double accidental are taken as one.
  EXPECT_EQ(TMusicXMLPitch({"B", 5}).ToKeyEnh(), CKeyEnh(1, TEnh_ss));
  EXPECT_EQ(TMusicXMLPitch({"G", 0}).ToKeyNrAndEnh(), std::make_pair(7, TEnh_n));
  EXPECT_TRUE(TMusicXMLPitch({"N.C.", 0}).ToKeyEnh().IsUndef());
  EXPECT_TRUE(TMusicXMLPitch({"", 0}).ToKeyEnh().IsUndef());
  EXPECT_FALSE(TMusicXMLPitch({"", 1}).IsDefined());
}

TEST(MusicXMLKinds, EveryKindReadsAndWritesBackAndOddTonesHaveNoKind) {
  const std::vector<std::string> kinds = {"major",
                                          "minor",
                                          "augmented",
                                          "diminished",
                                          "dominant",
                                          "major-seventh",
                                          "minor-seventh",
                                          "diminished-seventh",
                                          "augmented-seventh",
                                          "half-diminished",
                                          "major-minor",
                                          "major-sixth",
                                          "minor-sixth",
                                          "dominant-ninth",
                                          "major-ninth",
                                          "minor-ninth",
                                          "dominant-11th",
                                          "major-11th",
                                          "minor-11th",
                                          "dominant-13th",
                                          "major-13th",
                                          "minor-13th",
                                          "suspended-second",
                                          "suspended-fourth",
                                          "Neapolitan",
                                          "Italian",
                                          "French",
                                          "power"};
  for (const std::string& kind : kinds) {
    EXPECT_EQ(SemitonesToXMLHarmonyKind(XMLHarmonyKindToSemitones(kind)), kind);
  }
  EXPECT_EQ(XMLHarmonyKindToIntvlSetExceptRoot("dominant-13th"), CIntvlSet({4, 7, 10, 14, 17, 21}));
  EXPECT_EQ(XMLHarmonyKindToSemitones("dominant-ninth").Word(), CSemitones(1173).Word());
  for (const char* empty : {"none", "pedal", "", "altered", "dominant-seventh", "Major"}) {
    EXPECT_TRUE(XMLHarmonyKindToIntvlSetExceptRoot(empty).empty()) << empty;
  }
  // A ninth chord with a thirteenth, and a lone third: no kind has exactly these tones.
  EXPECT_EQ(SemitonesToXMLHarmonyKind(CSemitones(1173 | (1 << 9))), "none");
  EXPECT_EQ(SemitonesToXMLHarmonyKind(CSemitones(1 | (1 << 4))), "none");
  EXPECT_EQ(ChordToXMLHarmonyKind(CHarmAnlsChord(CChordLite(CKeyEnh(2, TEnh_n), CSemitones(1161)))),
            "minor-seventh");
}

TEST(MusicXMLChord, DegreesAddAlterAndSubtractInOrder) {
  // A flat ninth written as an added ninth altered down brings the seventh along.
  EXPECT_EQ(Tones(CChordSetFromMusicXml(Symbol("C", 0, "major", {{"9", -1, "add"}}), 24)),
            (std::vector<int>{0, 1, 4, 7, 10}));
  EXPECT_EQ(Tones(CChordSetFromMusicXml(Symbol("C", 0, "dominant", {{"5", 1, "alter"}}), 24)),
            (std::vector<int>{0, 4, 8, 10}));
  EXPECT_EQ(Tones(CChordSetFromMusicXml(Symbol("C", 0, "major", {{"5", 0, "subtract"}}), 24)),
            (std::vector<int>{0, 4}));
  // Only the fifth can be taken away or altered.
  EXPECT_EQ(Tones(CChordSetFromMusicXml(Symbol("C", 0, "major", {{"3", 0, "subtract"}}), 24)),
            (std::vector<int>{0, 4, 7}));
  EXPECT_EQ(Tones(CChordSetFromMusicXml(Symbol("C", 0, "major", {{"9", 1, "alter"}}), 24)),
            (std::vector<int>{0, 4, 7}));
  EXPECT_EQ(Tones(CChordSetFromMusicXml(
                Symbol("A", 0, "minor", {{"11", 0, "add"}, {"b13", 0, "add"}}), 24)),
            (std::vector<int>{0, 2, 3, 5, 7, 8, 10}));
  // Values outside the table and unknown types change nothing.
  EXPECT_EQ(Tones(CChordSetFromMusicXml(
                Symbol("C", 0, "major", {{"10", 0, "add"}, {"9", 0, "replace"}}), 24)),
            (std::vector<int>{0, 4, 7}));
  const CChordHeavy ninth =
      CChordSetFromMusicXml(Symbol("D", 0, "minor", {{"add 9", 0, "add"}}), 24);
  EXPECT_TRUE(ninth.IntvlSet().HasIntvl(14));
}

TEST(MusicXMLChord, RootKindAndBassMakeTheChord) {
  CChordLite chord;
  chord.SetFromChordHeavy(
      CChordSetFromMusicXml(Symbol("E", -1, "minor-seventh", {}, {"D", -1}), 24));
  EXPECT_EQ(chord.RootKeyEnh, CKeyEnh(3, TEnh_b));
  EXPECT_EQ(chord.BassKeyEnh, CKeyEnh(1, TEnh_b));
  EXPECT_EQ(chord.Semitones.Word(), 1161u);
  // An unknown kind still has its root; "N.C." has none.
  EXPECT_FALSE(CChordSetFromMusicXml(Symbol("G", 0, "altered"), 24).IsUndef());
  EXPECT_TRUE(CChordSetFromMusicXml(Symbol("N.C.", 0, "none"), 24).IsUndef());
  // The form that fills a chord keeps that chord's wrap interval.
  CChordHeavy target(12);
  CChordSetFromMusicXml(Symbol("F", 0, "major-ninth"), target);
  EXPECT_EQ(target.IntvlSet().WrapIntvl(), 12);
  EXPECT_EQ(Tones(target), (std::vector<int>{0, 2, 4, 7, 11}));
}

TEST(MusicXMLHarmonyRecord, CompareAllMembersLeavesOutDegreesAndOptionallyThePosition) {
  TMusicXMLHarmony a = Symbol("C", 0, "major", {{"9", 0, "add"}});
  TMusicXMLHarmony b = Symbol("C", 0, "major");
  a.Position = 0.0;
  b.Position = 4.0;
  EXPECT_FALSE(a.CompareAllMembers(b, TMusicXMLHarmony::kComparePos));
  EXPECT_TRUE(a.CompareAllMembers(b, TMusicXMLHarmony::kDontComparePos));
  b.Bass = {"E", 0};
  EXPECT_FALSE(a.CompareAllMembers(b, TMusicXMLHarmony::kDontComparePos));
}

}  // namespace
}  // namespace harmony
