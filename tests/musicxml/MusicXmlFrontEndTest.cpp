// The door of the event import: which files are taken, the errors of those that aren't, the
// alerts of an import that goes on, and the events a host receives at the part level.

#include <gtest/gtest.h>

#include <filesystem>

#include "MusicXmlImportRecorder.h"
#include "TestPaths.h"
#include "harmony/Alert.h"

namespace harmony {
namespace {

using testing::ImportFile;
using testing::ImportRecorder;
using testing::ImportText;

const std::string kFixtures = std::string(HARMONY_FIXTURES_DIR) + "/musicxml/";

std::string Score(const std::string& root, const std::string& measures,
                  const std::string& doctype = "") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + doctype + "<" + root +
         " version=\"3.1\"><part-list><score-part id=\"P1\"><part-name>Flute</part-name>"
         "<score-instrument id=\"P1-I1\"><instrument-name>Flute</instrument-name>"
         "<instrument-sound>Wind.Flutes.Flute</instrument-sound></score-instrument>"
         "</score-part></part-list><part id=\"P1\">" +
         measures + "</part></" + root + ">\n";
}

std::string Note(int duration, const std::string& step = "C") {
  return "<note><pitch><step>" + step + "</step><octave>5</octave></pitch><duration>" +
         std::to_string(duration) + "</duration></note>";
}

const std::string kDoctype =
    "<!DOCTYPE score-partwise PUBLIC \"-//Recordare//DTD MusicXML 3.1 Partwise//EN\" "
    "\"http://www.musicxml.org/dtds/partwise.dtd\">\n";

// Collects the alerts of an import instead of writing them to standard error.
class AlertCollector {
 public:
  AlertCollector() {
    _previous = SetAlertHandler([this](const TAlert& alert) { alerts.push_back(alert); });
  }
  ~AlertCollector() { SetAlertHandler(_previous); }
  std::vector<TAlert> alerts;

 private:
  TAlertHandler _previous;
};

TEST(MusicXmlFrontEnd, RefusesWhatIsNotAScore) {
  ImportRecorder recorder;
  const auto wrongRoot = ImportText("<?xml version=\"1.0\"?><opus><title>x</title></opus>", recorder);
  EXPECT_FALSE(wrongRoot.ok);
  EXPECT_EQ(wrongRoot.error.code, 259);
  EXPECT_EQ(wrongRoot.error.domain, kMusicXmlErrorDomain);
  EXPECT_EQ(wrongRoot.error.description, "File is not a MusicXML File");

  const auto notXml = ImportText("C F G7 C\n", recorder);
  EXPECT_FALSE(notXml.ok);
  EXPECT_EQ(notXml.error.domain, "XMLParser");
  EXPECT_NE(notXml.error.code, 0);
  EXPECT_EQ(notXml.error.line, 1);

  const auto broken = ImportText(Score("score-partwise", "<measure>"), recorder);
  EXPECT_FALSE(broken.ok);
  EXPECT_EQ(broken.error.domain, "XMLParser");

  const auto missing = ImportFile(kFixtures + "no-such-score.xml", recorder);
  EXPECT_FALSE(missing.ok);
  EXPECT_NE(missing.error.code, 0);
  // Nothing reaches the host from a file that is refused.
  EXPECT_TRUE(recorder.events.empty());

  // The root's name is compared by its beginning, and the time-wise form is taken as a score,
  // though its parts are not where the part delegate looks for them.
  ImportRecorder timewise;
  const auto timewiseResult = ImportText(Score("score-timewise", ""), timewise);
  EXPECT_TRUE(timewiseResult.ok);
  EXPECT_EQ(timewise.events.front(), "document");
}

TEST(MusicXmlFrontEnd, CompressedScoresAndTheirFailures) {
  ImportRecorder recorder;
  const auto oneBar = ImportFile(kFixtures + "one-bar.mxl", recorder);
  ASSERT_TRUE(oneBar.ok) << oneBar.error.description;
  EXPECT_EQ(recorder.NoteTriples(), (std::vector<std::vector<long>>{{0, 3840, 72}}));
  // The score is unpacked to a fixed file in the temporary folder, which stays.
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::temp_directory_path() /
                                      "QuillonMusicXMLImport.xml"));

  const struct {
    std::string file;
    std::string description;
  } failures[] = {
      {"root-in-folder.mxl", "Could not create temporary conversion file"},
      {"no-root-file.mxl",
       "Compressed MusicXML file seems to be malformed (could not find \u2018full-path\u2019)"},
      {"not-a-zip.mxl", "Could not decompress (compressed MusicXML file)"},
  };
  for (const auto& failure : failures) {
    SCOPED_TRACE(failure.file);
    ImportRecorder refused;
    const auto result = ImportFile(kFixtures + failure.file, refused);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error.code, 259);
    EXPECT_EQ(result.error.description, failure.description);
    EXPECT_TRUE(refused.events.empty());
  }
}

TEST(MusicXmlFrontEnd, CompressedAndPlainTwinsGiveTheSameEvents) {
  const std::string folder = std::string(HARMONY_TESTDATA_DIR) + "/musicxml/sample-scores/";
  if (!std::filesystem::exists(folder)) GTEST_SKIP() << "no sample scores at " << folder;
  int compared = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".mxl") continue;
    std::filesystem::path plain = entry.path();
    plain.replace_extension(".xml");
    if (!std::filesystem::exists(plain)) continue;
    SCOPED_TRACE(plain.filename().string());
    ImportRecorder compressed;
    ImportRecorder uncompressed;
    // The scores' own document types are older than some of their content: the comparison is
    // about the unpacking, not the validity.
    ASSERT_TRUE(ImportFile(entry.path().string(), compressed, false).ok);
    ASSERT_TRUE(ImportFile(plain.string(), uncompressed, false).ok);
    EXPECT_EQ(compressed.events, uncompressed.events);
    EXPECT_EQ(compressed.NoteTriples(), uncompressed.NoteTriples());
    ++compared;
  }
  EXPECT_GE(compared, 15);
}

TEST(MusicXmlFrontEnd, ValidationAgainstTheDocumentType) {
  // A part without its required id breaks the partwise document type.
  const std::string invalid =
      Score("score-partwise", "<measure number=\"1\">" + Note(4) + "</measure>", kDoctype);
  std::string withoutId = invalid;
  withoutId.replace(withoutId.find("<part id=\"P1\">"), 14, "<part>");

  ImportRecorder recorder;
  const auto refused = ImportText(withoutId, recorder);
  EXPECT_FALSE(refused.ok);
  EXPECT_EQ(refused.error.domain, "XMLValidation");
  EXPECT_GT(refused.error.line, 0);

  // The same score, with its id, is valid; and the check can be left out.
  ImportRecorder valid;
  EXPECT_TRUE(ImportText(invalid, valid).ok);
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "harmony-invalid-score.musicxml";
  std::ofstream(path) << withoutId;
  ImportRecorder unchecked;
  EXPECT_TRUE(ImportFile(path.string(), unchecked, false).ok);
  std::filesystem::remove(path);
}

TEST(MusicXmlFrontEnd, PartLevelEventsInOrder) {
  ImportRecorder recorder;
  const std::string bars = "<measure number=\"1\"><attributes><divisions>1</divisions>"
                           "</attributes>" +
                           Note(4) + "</measure>";
  ASSERT_TRUE(ImportText(Score("score-partwise", bars), recorder).ok);
  EXPECT_EQ(recorder.partCount, 1);
  ASSERT_EQ(recorder.parts.size(), 1u);
  EXPECT_EQ(recorder.parts[0].mPartID, "P1");
  EXPECT_EQ(recorder.parts[0].mPartName, "Flute");
  ASSERT_EQ(recorder.parts[0].mInstruments.size(), 1u);
  EXPECT_EQ(recorder.parts[0].mInstruments[0].mInstName, "Flute");
  EXPECT_EQ(recorder.parts[0].mInstruments[0].mInstSound, "wind.flutes.flute");
  // A part that starts without a time signature is announced as an invisible 4/4, even before
  // the part itself.
  ASSERT_EQ(recorder.times.size(), 1u);
  EXPECT_EQ(recorder.times[0].mPrintObject, TMuxmlEnum_YesNo::kNo);
  EXPECT_EQ(recorder.times[0].mNomAkaBeats, 4);
  EXPECT_EQ(recorder.times[0].mPositionAsMidiTicks, 0);
  EXPECT_EQ(recorder.events,
            (std::vector<std::string>{"document", "time", "part", "bar", "note", "bar end",
                                      "part end", "end"}));

  // With its own time signature the part announces nothing before the bar.
  ImportRecorder withTime;
  const std::string timed = "<measure number=\"1\"><attributes><divisions>1</divisions>"
                            "<time><beats>3</beats><beat-type>4</beat-type></time></attributes>" +
                            Note(3) + "</measure>";
  ASSERT_TRUE(ImportText(Score("score-partwise", timed), withTime).ok);
  ASSERT_EQ(withTime.times.size(), 1u);
  EXPECT_EQ(withTime.times[0].mNomAkaBeats, 3);
  EXPECT_EQ(withTime.events[1], "part");

  // A host that implements only the notes hears only about notes.
  ImportRecorder notesOnly;
  notesOnly.implemented = {TMusicXmlEvent::kNote};
  ASSERT_TRUE(ImportText(Score("score-partwise", bars), notesOnly).ok);
  EXPECT_EQ(notesOnly.events, std::vector<std::string>{"note"});
}

TEST(MusicXmlFrontEnd, ZeroDivisionsAreAlertedAndTheImportGoesOn) {
  AlertCollector collector;
  ImportRecorder recorder;
  const std::string bars = "<measure number=\"1\"><attributes><divisions>0</divisions>"
                           "</attributes>" +
                           Note(4) + Note(4, "D") + "</measure>";
  ASSERT_TRUE(ImportText(Score("score-partwise", bars), recorder).ok);
  ASSERT_EQ(collector.alerts.size(), 1u);
  EXPECT_EQ(collector.alerts[0].messageText, "MusicXML Parsing Error");
  EXPECT_EQ(collector.alerts[0].informativeText.rfind(
                "Parsing error 1, Description: MusicXML File contains zero or negative value "
                "for \u201cdivisions\u201d, Line: ",
                0),
            0u)
      << collector.alerts[0].informativeText;
  EXPECT_NE(collector.alerts[0].informativeText.find(", Column: "), std::string::npos);
  // Durations convert to nothing while the divisions are 0.
  ASSERT_EQ(recorder.notes.size(), 2u);
  EXPECT_EQ(recorder.notes[1].mPositionAsMidiTicks, 0);
  EXPECT_EQ(recorder.notes[1].mLengthAsMidiTicks, 0);
}

}  // namespace
}  // namespace harmony
