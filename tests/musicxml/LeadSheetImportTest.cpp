// Real lead sheets through the harmony import: chord symbols counted as written in the file
// and as played out through their repeats and D.S. al coda (the counts were worked out by hand
// from each file's bars), and every lead sheet and chord-symbol test file imported.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "TestPaths.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/musicxml/MusicXMLDoc.h"
#include "musicxml/CompressedMusicXml.h"
#include "musicxml/MusicXmlParserHarmonyDelegate.h"
#include "platform/XmlEventParser.h"

namespace harmony {
namespace {

namespace fs = std::filesystem;

const fs::path kMusicXml = fs::path(HARMONY_TESTDATA_DIR) / "musicxml";

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::string PlainScore(const fs::path& path) {
  std::string bytes = ReadFile(path);
  if (!IsZipArchive(bytes)) return bytes;
  std::string error;
  return UnpackCompressedMusicXml(std::move(bytes), error).value_or("");
}

// `<harmony` elements as the text has them, counted without an XML reader.
std::size_t HarmonyElementsInText(const std::string& xml) {
  std::size_t count = 0;
  for (std::size_t at = xml.find("<harmony"); at != std::string::npos;
       at = xml.find("<harmony", at + 1)) {
    const char next = at + 8 < xml.size() ? xml[at + 8] : '\0';
    if (next == '>' || next == ' ' || next == '/' || next == '\n' || next == '\t') ++count;
  }
  return count;
}

struct TLeadSheet {
  const char* file;
  std::size_t played;  // chords in song order
  std::size_t jumps;   // repeats and D.S. taken
};

TEST(LeadSheetImport, HarmoniesAsWrittenAndAsPlayedOut) {
  if (!fs::exists(kMusicXml)) GTEST_SKIP() << "test data not found at " << kMusicXml;
  const fs::path dataset = kMusicXml / "leadsheets" / "dataset";
  const TLeadSheet sheets[] = {
      // A repeat of the first eight bars.
      {"Bert_Kalmar-Harry_Ruby-Herbert_Stothart/I_Wanna_Be_Loved_by_You/"
       "I_Wanna_Be_Loved_by_You.mxl",
       40, 1},
      // A repeat, then D.S. al coda written above a bar without chords: the repeat again from
      // the segno, then the coda.
      {"Dorothy_Fields-Jerome_Kern/Remind_Me/Remind_Me.mxl", 88, 2},
      // The D.S. stands behind its bar's chord and is not seen; a second forward repeat
      // inside the first is swallowed, so the closing repeat finds its passes used up.
      {"Al_Dubin-Harry_Warren/The_Boulevard_of_Broken_Dreams/The_Boulevard_of_Broken_Dreams.mxl",
       43, 1},
      {"Clarence_Williams-King_Oliver/West_End_Blues/West_End_Blues.mxl", 23, 0},
  };
  for (const TLeadSheet& sheet : sheets) {
    const std::string xml = PlainScore(dataset / sheet.file);
    ASSERT_FALSE(xml.empty()) << sheet.file;
    MusicXmlParserHarmonyDelegate delegate;
    platform::XmlEventParser parser(xml);
    parser.setDelegate(&delegate);
    ASSERT_TRUE(parser.parse()) << sheet.file;
    std::size_t written = 0;
    for (const TMusicXMLMeasure& measure : delegate.measures) written += measure.Harmonies.size();
    EXPECT_EQ(written, HarmonyElementsInText(xml)) << sheet.file;
    EXPECT_EQ(delegate.musicXMLDoc.Harmonies.size(), sheet.played) << sheet.file;
    EXPECT_EQ(delegate.musicXMLDoc.HarmCopies.size(), sheet.jumps) << sheet.file;
  }
}

TEST(LeadSheetImport, EveryLeadSheetAndChordSymbolFileImportsAndAnalyses) {
  if (!fs::exists(kMusicXml)) GTEST_SKIP() << "test data not found at " << kMusicXml;
  std::size_t files = 0;
  std::size_t written = 0;
  std::size_t imported = 0;
  for (const char* folder : {"leadsheets", "harmony-misc"}) {
    for (const auto& entry : fs::recursive_directory_iterator(kMusicXml / folder)) {
      const std::string extension = entry.path().extension().string();
      if (extension != ".mxl" && extension != ".xml" && extension != ".musicxml") continue;
      const std::string xml = PlainScore(entry.path());
      TMusicXMLDoc doc;
      TMusicXMLParseError error;
      EXPECT_TRUE(doc.LoadFromMusicXMLBytes(xml, &error))
          << entry.path() << ':' << error.Line << ": " << error.Description;
      ++files;
      written += HarmonyElementsInText(xml);
      imported += doc.Harmonies.size();
      // What was imported analyses, and its repeats are found, whatever the file held.
      CHarmonicAnalyse analyse;
      analyse.AnalyseFromMusicXMLDoc(doc, CHarmonicAnalyse::kAnalyseTonicProgressions);
      CHarmCopies copies;
      analyse.FindHarmCopies(copies);
      EXPECT_FALSE(analyse.HarmSignKeys().empty()) << entry.path();
    }
  }
  EXPECT_EQ(files, 525u);
  // The lead sheets alone hold 20,030 chord symbols; repeats make more of them.
  EXPECT_GT(written, 20030u);
  EXPECT_GT(imported, written);
}

}  // namespace
}  // namespace harmony
