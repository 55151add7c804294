// The analysis of a MusicXML file: the harmony import's chords in the file's keys, the
// closing chord of the tree, and what a file without chords or a missing file gives.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "MusicXmlTestScores.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/musicxml/MusicXMLDoc.h"

namespace harmony {
namespace {

using namespace musicxml_scores;

const std::string kGMajor =
    "<attributes><key><fifths>1</fifths><mode>major</mode></key></attributes>";

TMusicXMLDoc Doc(const std::string& xml) {
  TMusicXMLDoc doc;
  EXPECT_TRUE(doc.LoadFromMusicXMLBytes(xml));
  return doc;
}

TEST(AnalyseMusicXML, AIIVIInTheFilesKeyIsFoundAndClosed) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "harmony-analyse-test.musicxml";
  std::ofstream(path) << Score(FirstBar(kGMajor + Chord("A", "minor-seventh")) +
                               Bar(Words("/") + Chord("D", "dominant")) +
                               Bar(Chord("G", "major-seventh")));
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromMusicXMLFile(path.string(), CHarmonicAnalyse::kAnalyseTonicProgressions);
  CHarmonicAnalyse unanalysed;
  unanalysed.AnalyseFromMusicXMLFile(path.string(), CHarmonicAnalyse::kAnalyseNone);
  std::filesystem::remove(path);

  EXPECT_EQ(analyse.InputChords().size(), 3u) << "the input list has no closing chord";
  ASSERT_EQ(analyse.HarmSignKeys().size(), 1u);
  const CHarmAnlsSignKey& key = analyse.HarmSignKeys()[0];
  EXPECT_EQ(key.SignKey, CSignKeyLite(CKeyEnh(7, TEnh_n), TSignKeyType::Major));
  ASSERT_EQ(key.HarmCenters.size(), 1u);
  const CHarmAnlsCenter& center = key.HarmCenters[0];
  EXPECT_EQ(center.HarmCenter.RootKeyEnh, CKeyEnh(7, TEnh_n));
  // The progressions build the center from the input chords, which end without a closing
  // chord; the tree as filled has one at the end of the last chord.
  ASSERT_EQ(center.HarmChords.size(), 3u);
  EXPECT_EQ(center.HarmChords[0].RootDistToHarmCenter, 2);
  EXPECT_EQ(center.HarmChords[1].RootDistToHarmCenter, 7);
  EXPECT_EQ(center.HarmChords[2].RootDistToHarmCenter, 0);
  const CHarmAnlsChords& filled = unanalysed.HarmSignKeys().at(0).HarmCenters.at(0).HarmChords;
  ASSERT_EQ(filled.size(), 4u);
  EXPECT_TRUE(filled[3].IsUndef());
  EXPECT_EQ(filled[3].Position, 12.0);
  EXPECT_EQ(analyse.ChordSequences(), (std::vector<std::uint64_t>{1}));
}

TEST(AnalyseMusicXML, KeysAlreadyHeldStayAheadAndChordsGoToTheKeyThatHoldsThem) {
  const std::string dMajor =
      "<attributes><key><fifths>2</fifths><mode>major</mode></key></attributes>";
  const TMusicXMLDoc doc = Doc(Score(FirstBar(kGMajor + Chord("G")) + Bar(Chord("D", "dominant")) +
                                     Bar(dMajor + Chord("E", "minor-seventh")) +
                                     Bar(Chord("A", "dominant")) + Bar(Chord("D"))));
  CHarmonicAnalyse analyse;
  analyse.FillManually_AppendSignKey(
      CHarmAnlsSignKey(kHarmAnlsUndefDouble, kHarmAnlsUndefDouble,
                       CSignKeyLite(CKeyEnh(0, TEnh_n), TSignKeyType::Major)));
  analyse.AnalyseFromMusicXMLDoc(doc, CHarmonicAnalyse::kAnalyseNone);
  // C major held before, the file's G and D major unplaced, then G major from 0 and D major
  // from 8 holding the chords.
  std::vector<std::string> keys;
  for (const CHarmAnlsSignKey& key : analyse.HarmSignKeys()) {
    keys.push_back(
        key.SignKey.NameLong(GetCurrentChordNamePrefs()) + " " +
        std::to_string(key.HarmCenters.empty() ? 0 : key.HarmCenters[0].HarmChords.size()));
  }
  EXPECT_EQ(keys, (std::vector<std::string>{"C Major 0", "G Major 0", "D Major 0", "G Major 2",
                                            "D Major 4"}));
}

TEST(AnalyseMusicXML, NoChordsOrNoFileLeaveTheKeysWithoutChords) {
  const TMusicXMLDoc noChords =
      Doc(Score(FirstBar(kGMajor + Chord("N.C.", "none")) + Bar(Chord("C", "none"))));
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromMusicXMLDoc(noChords, CHarmonicAnalyse::kAnalyseTonicProgressions);
  ASSERT_EQ(analyse.HarmSignKeys().size(), 1u);
  EXPECT_TRUE(analyse.HarmSignKeys()[0].HarmCenters.empty()) << "no center and no closing chord";
  EXPECT_TRUE(analyse.InputChords().empty());

  CHarmonicAnalyse missing;
  missing.AnalyseFromMusicXMLFile("/nonexistent.musicxml",
                                  CHarmonicAnalyse::kAnalyseTonicProgressions);
  ASSERT_EQ(missing.HarmSignKeys().size(), 1u);
  EXPECT_TRUE(missing.HarmSignKeys()[0].IsUndef());
  EXPECT_TRUE(missing.InputChords().empty());
}

}  // namespace
}  // namespace harmony
