// The harmony import laying a lead sheet out in song time: repeats with counts and endings,
// D.S. al coda, keys, time signatures, sections, and the rules for "no chord".

#include "harmony/musicxml/MusicXMLDoc.h"

#include "MusicXmlTestScores.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace harmony {
namespace {

using namespace musicxml_scores;

TMusicXMLDoc Load(const std::string& xml) {
  TMusicXMLDoc doc;
  TMusicXMLParseError error;
  EXPECT_TRUE(doc.LoadFromMusicXMLBytes(xml, &error)) << error.Description;
  return doc;
}

// The chords as their root steps, in song order.
std::string Roots(const TMusicXMLDoc& doc) {
  std::string roots;
  for (const TMusicXMLHarmony& harmony : doc.Harmonies) roots += harmony.Root.Step;
  return roots;
}

std::vector<double> Positions(const TMusicXMLDoc& doc) {
  std::vector<double> positions;
  for (const TMusicXMLHarmony& harmony : doc.Harmonies) positions.push_back(harmony.Position);
  return positions;
}

TEST(MusicXMLRepeats, ARepeatedSectionIsPlayedTwiceOrAsOftenAsItsWordSays) {
  const TMusicXMLDoc doc =
      Load(Score(FirstBar(kForward + Chord("C")) + Bar(Chord("G") + kBackward)));
  EXPECT_EQ(doc.Title, "Test");
  EXPECT_EQ(Roots(doc), "CGCG");
  EXPECT_EQ(Positions(doc), (std::vector<double>{0, 4, 8, 12}));
  ASSERT_EQ(doc.HarmCopies.size(), 1u);
  EXPECT_EQ(doc.HarmCopies[0], CHarmCopy(8.0, 2, 2));

  // "4x" above the closing bar, before its chord, plays the section four times; without a
  // forward repeat the section starts at the first bar.
  const TMusicXMLDoc four = Load(
      Score(FirstBar(Chord("A")) + Bar(Chord("C")) + Bar(Words("4x") + Chord("G") + kBackward)));
  EXPECT_EQ(Roots(four), "ACGACGACGACGACG") << "from no pass: one more round than the count";
  const TMusicXMLDoc afterChord =
      Load(Score(FirstBar(kForward + Chord("C")) + Bar(Chord("G") + Words("4x") + kBackward)));
  EXPECT_EQ(Roots(afterChord), "CGCG") << "words after the bar's chord are not read";
}

TEST(MusicXMLRepeats, EndingsArePlayedOnTheirPassOnly) {
  // |: A | B (1.) | C (2.) :| D — the second ending lies inside the repeat.
  const TMusicXMLDoc inside =
      Load(Score(FirstBar(kForward + Chord("A")) + Bar(Ending(1) + Chord("B")) +
                 Bar(Ending(2) + Chord("C") + kBackward) + Bar(Chord("D"))));
  // Pass 1 leaves the second ending out; on pass 2 the first ending is stepped over up to
  // the closing bar, which goes with it.
  EXPECT_EQ(Roots(inside), "ABAD");

  // |: A | B (1.) :| C (2.) — the usual layout.
  const TMusicXMLDoc usual =
      Load(Score(FirstBar(kForward + Chord("A")) + Bar(Ending(1) + Chord("B") + kBackward) +
                 Bar(Ending(2) + Chord("C"))));
  EXPECT_EQ(Roots(usual), "ABAC");
  EXPECT_EQ(Positions(usual), (std::vector<double>{0, 4, 8, 12}));

  // A first ending marked only as start and stop carries no number: played on both passes.
  const std::string startStop = "<barline><ending number=\"1\" type=\"start\"/></barline>";
  const TMusicXMLDoc unnumbered =
      Load(Score(FirstBar(kForward + Chord("A")) + Bar(startStop + Chord("B") + kBackward) +
                 Bar(Ending(2) + Chord("C"))));
  EXPECT_EQ(Roots(unnumbered), "ABABC");
}

TEST(MusicXMLRepeats, DalSegnoAlCodaJumpsBackAndOnToTheCoda) {
  // A | B segno | C to coda | D D.S. al Coda | E coda
  const TMusicXMLDoc doc =
      Load(Score(FirstBar(Chord("A")) + Bar(kSegno + Chord("B")) + Bar(kCoda + Chord("C")) +
                 Bar(Words("D.S. al Coda") + Chord("D")) + Bar(kCoda + Chord("E"))));
  EXPECT_EQ(Roots(doc), "ABCDBCE");
  ASSERT_EQ(doc.HarmCopies.size(), 1u);
  // From the segno (bar 2) to the "to coda" bar (bar 3): two bars again, at the jump.
  EXPECT_EQ(doc.HarmCopies[0], CHarmCopy(16.0, 2, 2));

  // Without a segno the sign sends the player back to the first bar.
  const TMusicXMLDoc noSegno =
      Load(Score(FirstBar(Chord("A")) + Bar(kCoda + Chord("B")) +
                 Bar(Words("D.S. al Coda") + Chord("C")) + Bar(kCoda + Chord("D"))));
  EXPECT_EQ(Roots(noSegno), "ABCABD");
}

TEST(MusicXMLRepeats, ARepeatInsideTheDalSegnoIsPlayedAgainAfterTheJump) {
  // A | B segno |: | C :| | D to coda | E D.S. al Coda | F coda
  const TMusicXMLDoc doc = Load(Score(
      FirstBar(Chord("A")) + Bar(kSegno + kForward + Chord("B")) + Bar(Chord("C") + kBackward) +
      Bar(kCoda + Chord("D")) + Bar(Words("D.S. al Coda") + Chord("E")) + Bar(kCoda + Chord("F"))));
  // The "to coda" bar is played before the jump to the coda.
  EXPECT_EQ(Roots(doc), "ABCBCDEBCBCDF");
  ASSERT_EQ(doc.HarmCopies.size(), 3u);
  EXPECT_EQ(doc.HarmCopies[1], CHarmCopy(28.0, 3, 3)) << "bars 2 to 4 again, after bar 5";
}

TEST(MusicXMLImport, PositionsAddUpChordLengthsAcrossTimeSignatures) {
  const std::string threeFour =
      "<attributes><time><beats>3</beats><beat-type>4</beat-type></time></attributes>";
  const std::string fourFour =
      "<attributes><time><beats>4</beats><beat-type>4</beat-type></time></attributes>";
  const TMusicXMLDoc doc =
      Load(Score(FirstBar(fourFour + Chord("C")) + Bar(threeFour + Chord("F", "major", 3)) +
                 Bar(threeFour + Chord("G", "major", 3)) +
                 Bar("<note><duration>4</duration></note>") + Bar(fourFour + Chord("C"))));
  EXPECT_EQ(Positions(doc), (std::vector<double>{0, 4, 7, 10}))
      << "a bar without a chord adds nothing";
  ASSERT_EQ(doc.TimeSignatures.size(), 3u) << "a repeated signature is kept once";
  EXPECT_EQ(doc.TimeSignatures[1], (TMusicXMLTimeSignature{4.0, 3, 4}));
  EXPECT_EQ(doc.TimeSignatures[2], (TMusicXMLTimeSignature{10.0, 4, 4}));

  // A chord lasts as long as the last duration after it in its bar, whatever that belongs to.
  const TMusicXMLDoc quirk = Load(Score(
      FirstBar(Chord("C", "major", 1) +
               "<note><duration>3</duration></note><backup><duration>2</duration></backup>")));
  EXPECT_EQ(quirk.Harmonies.at(0).Length, 2.0);
}

TEST(MusicXMLImport, NoChordEmptyKindAndDegrees) {
  const std::string noneFirst =
      "<harmony><root><root-step>D</root-step></root><kind>none</kind></harmony>";
  const std::string emptyKind =
      "<harmony><root><root-step>E</root-step><root-alter>-1</root-alter></root><kind/>"
      "<bass><bass-step>G</bass-step></bass>"
      "<degree><degree-value>9</degree-value><degree-alter>-1</degree-alter>"
      "<degree-type>add</degree-type></degree></harmony>";
  const TMusicXMLDoc doc = Load(Score(FirstBar(noneFirst + emptyKind + Chord("F", "none", 2))));
  ASSERT_EQ(doc.Harmonies.size(), 3u);
  EXPECT_EQ(doc.Harmonies[0].Root.Step, "D") << "a bar's first \"none\" keeps its root";
  EXPECT_EQ(doc.Harmonies[1].Kind, "major");
  EXPECT_EQ(doc.Harmonies[1].Root, (TMusicXMLPitch{"E", -1}));
  EXPECT_EQ(doc.Harmonies[1].Bass, (TMusicXMLPitch{"G", 0}));
  ASSERT_EQ(doc.Harmonies[1].Degrees.size(), 1u);
  EXPECT_EQ(doc.Harmonies[1].Degrees[0].Alter, -1);
  EXPECT_EQ(doc.Harmonies[2].Root.Step, "N.C.") << "a later \"none\" loses it";
}

TEST(MusicXMLImport, KeysSectionsAndSlashBars) {
  const std::string key =
      "<attributes><key><fifths>-3</fifths><mode>minor</mode></key></attributes>";
  const std::string keyChange =
      "<attributes><key><fifths>2</fifths><mode>major</mode></key></attributes>";
  const std::string noMode = "<attributes><key><fifths>4</fifths></key></attributes>";
  const std::string rehearsal =
      "<direction><direction-type><rehearsal>A</rehearsal></direction-type></direction>";
  const TMusicXMLDoc doc =
      Load(Score(FirstBar(key + rehearsal + Chord("C", "minor")) +
                 Bar(noMode + Words("/") + Chord("G")) + Bar(rehearsal + keyChange + Chord("D"))));
  // The file's two keys unplaced, then each placed where it starts to hold.
  ASSERT_EQ(doc.HarmSignKeys.size(), 4u);
  EXPECT_EQ(doc.HarmSignKeys[0].SignKey, CSignKeyLite(CKeyEnh(0, TEnh_n), TSignKeyType::Minor));
  EXPECT_TRUE(IsHarmAnlsUndef(doc.HarmSignKeys[0].Position));
  EXPECT_EQ(doc.HarmSignKeys[2].Position, 0.0);
  EXPECT_EQ(doc.HarmSignKeys[3].SignKey, CSignKeyLite(CKeyEnh(2, TEnh_n), TSignKeyType::Major));
  EXPECT_EQ(doc.HarmSignKeys[3].Position, 8.0);
  ASSERT_EQ(doc.HarmSections.size(), 2u);
  EXPECT_TRUE(doc.HarmSections[0].IsFirstSection);
  EXPECT_FALSE(doc.HarmSections[1].IsFirstSection);
  EXPECT_EQ(doc.HarmSections[1].Position, 8.0);
  EXPECT_EQ(doc.ChordSequences, (std::vector<std::uint64_t>{1}));

  // One key only: its placed copy equals the last entry and is not added.
  const TMusicXMLDoc single = Load(Score(FirstBar(key + Chord("C", "minor"))));
  EXPECT_EQ(single.HarmSignKeys.size(), 1u);
}

TEST(MusicXMLImport, FailuresAreReportedAndKeepWhatWasRead) {
  TMusicXMLDoc doc;
  doc.Title = "old";
  TMusicXMLParseError error;
  EXPECT_FALSE(doc.LoadFromMusicXMLFile("/nonexistent/score.musicxml", &error));
  EXPECT_TRUE(doc.Title.empty());
  EXPECT_NE(error.Code, 0);

  // A broken file: the title was read, but the end of the document, where the bars are
  // played out, never comes.
  std::string broken = Score(FirstBar(Chord("C")) + Bar(Chord("G")));
  broken.resize(broken.size() - 40);
  EXPECT_FALSE(doc.LoadFromMusicXMLBytes(broken, &error));
  EXPECT_EQ(doc.Title, "Test");
  EXPECT_TRUE(doc.Harmonies.empty());
  EXPECT_GT(error.Line, 1);

  // A compressed file is no XML to the harmony import.
  EXPECT_FALSE(doc.LoadFromMusicXMLBytes(std::string("PK\x03\x04\x14\x00", 6), &error));
}

}  // namespace
}  // namespace harmony
