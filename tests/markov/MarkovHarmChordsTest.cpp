#include "harmony/markov/MarkovHarmChords.h"

#include <gtest/gtest.h>

#include "MarkovTestModels.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {
namespace {

std::string Names(const CHarmAnlsChords& chords) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = 1;
  std::string names;
  for (const CHarmAnlsChordWithPos& chord : chords) {
    names += (chord.IsUndef() ? std::string("-") : chord.TraceName(prefs)) + "@" +
             std::to_string(static_cast<int>(chord.Position)) + " ";
  }
  return names;
}

TEST(MarkovHarmChords, AnalysedChordsBecomeSymbolsRelativeToTheirCenter) {
  // The analyser is given the chords, so that it reads them without the no-chord.
  const CHarmAnlsChords piece("G . . . | C . D7 . | G . N.C. . | Em . . . |", TChordStringParse());
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChords(piece, {}, CHarmonicAnalyse::kAnalyseTonicProgressions);
  CHarmAnlsChordsWithLength chords;
  HarmChordsWithLengthFromAnalysis(piece, analyse, chords);
  // Each chord lasts until the next one; the closing chord is not itself a chord.
  ASSERT_EQ(chords.size(), 6u);
  const double lengths[] = {4.0, 2.0, 2.0, 2.0, 2.0, 4.0};
  const int roots[] = {0, 5, 7, 0, -1, 9};
  for (std::size_t i = 0; i < chords.size(); ++i) {
    EXPECT_EQ(chords[i].Length, lengths[i]) << i;
    EXPECT_EQ(chords[i].RootDistToHarmCenter, roots[i]) << i;
  }

  std::vector<CMarkovObject> objects;
  MarkovObjectsVectorForHarmChords(chords, objects);
  ASSERT_EQ(objects.size(), 6u);
  // The same progression in C gives the same symbols.
  EXPECT_EQ(objects[0], testing::ChordObject(0, testing::kMajor, 4.0));
  EXPECT_EQ(objects[2], testing::ChordObject(7, testing::kDominant7, 2.0));
  // The no-chord has no distance to a center: a gap of its length.
  EXPECT_EQ(objects[4], CMarkovObject::Gap(2.0));

  // Back out in E flat major, spelled as that key spells.
  const CHarmCenterLite eFlat(CKeyEnh(3, TEnh_b), CSemitones(2741));
  EXPECT_EQ(Names(HarmChordsForMarkovObjects(objects, eFlat)),
            "Eb@0 Ab@4 Bb(7)@6 Eb@8 -@10 Cm@12 -@16 ");
  EXPECT_EQ(Names(HarmChordsForMarkovObjects(objects, CHarmCenterLite())),
            "-@0 -@4 -@6 -@8 -@10 -@12 -@16 ");
}

TEST(MarkovHarmChords, OnlyAChordWithoutBothDistancesIsAGap) {
  CHarmAnlsChordsWithLength chords;
  const CChordLite c(CKeyEnh(0, TEnh_n), CSemitones(145), CKeyEnh(7, TEnh_n));
  chords.emplace_back(CHarmAnlsChord(c, 15, 15), 3.0);
  chords.emplace_back(CHarmAnlsChord(c, -1, 7), 1.0);
  chords.emplace_back(CHarmAnlsChord(c, 0, 7), 2.0);
  std::vector<CMarkovObject> objects;
  MarkovObjectsVectorForHarmChords(chords, objects);
  ASSERT_EQ(objects.size(), 3u);
  EXPECT_EQ(objects[0], CMarkovObject::Gap(3.0));
  EXPECT_TRUE(objects[1].IsChord());
  EXPECT_EQ(objects[1].Chord.BassDistToHarmCenter, 7);
  // A slash chord keeps its bass through the model and back.
  const CHarmAnlsChordWithPos back = HarmChordForMarkovObject(
      objects[2], CHarmCenterLite(CKeyEnh(2, TEnh_n), CSemitones(2741)), 8.0);
  EXPECT_EQ(back.TraceName(GetChordNamePrefsNonUTF8()), "D/A");
  EXPECT_EQ(back.Position, 8.0);
}

}  // namespace
}  // namespace harmony
