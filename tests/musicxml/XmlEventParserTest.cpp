// The event-driven XML reader: events in document order, a delegate replaced from inside an
// event, text delivered in pieces, errors with their place, and no way out to files or the
// network.

#include "platform/XmlEventParser.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace harmony::platform {
namespace {

// Writes every event as one line, tagged with the recorder's name.
class Recorder : public XmlEventDelegate {
 public:
  explicit Recorder(std::string tag, std::vector<std::string>& log)
      : _tag(std::move(tag)), _log(log) {}

  void parserDidStartDocument(XmlEventParser&) override { Add("start-document"); }
  void parserDidEndDocument(XmlEventParser&) override { Add("end-document"); }
  void didStartElement(XmlEventParser&, std::string_view name, std::string_view,
                       std::string_view qualifiedName, const XmlAttributes& attributes) override {
    std::string line = "<" + std::string(qualifiedName);
    for (std::size_t i = 0; i < attributes.size(); ++i) {
      line += " " + std::string(attributes.Name(i)) + "=" + std::string(attributes.Value(i));
    }
    Add(line);
    if (onStart) onStart(name);
  }
  void didEndElement(XmlEventParser&, std::string_view name, std::string_view,
                     std::string_view) override {
    Add("</" + std::string(name));
    if (onEnd) onEnd(name);
  }
  void foundCharacters(XmlEventParser&, std::string_view text) override {
    Add("text " + std::string(text));
  }
  void parseErrorOccurred(XmlEventParser& parser, const XmlError& error) override {
    Add("error " + std::to_string(error.code) + " at " + std::to_string(error.line) + ":" +
        std::to_string(error.column) + " parser at line " + std::to_string(parser.lineNumber()));
  }

  std::function<void(std::string_view)> onStart;
  std::function<void(std::string_view)> onEnd;

 private:
  void Add(const std::string& line) { _log.push_back(_tag + ": " + line); }
  std::string _tag;
  std::vector<std::string>& _log;
};

TEST(XmlEventParser, DeliversEventsInOrderAndLetsADelegateHandOverFromInsideAnEvent) {
  const std::string xml =
      "<?xml version=\"1.0\"?>\n<score a=\"1\" b=\"x&amp;y\"><part "
      "id=\"P1\"><n>4</n></part><x:tail/></score>";
  std::vector<std::string> log;
  Recorder root("root", log);
  Recorder child("child", log);
  XmlEventParser parser(xml);
  // The root hands the part's subtree to the child, which hands the parser back at its end.
  root.onStart = [&](std::string_view name) {
    if (name == "part") parser.setDelegate(&child);
  };
  child.onEnd = [&](std::string_view name) {
    if (name == "part") parser.setDelegate(&root);
  };
  parser.setDelegate(&root);
  EXPECT_FALSE(parser.parse()) << "the undeclared prefix x: is a namespace error";
  const std::vector<std::string> expected = {"root: start-document", "root: <score a=1 b=x&y",
                                             "root: <part id=P1",    "child: <n",
                                             "child: text 4",        "child: </n",
                                             "child: </part",        "root: <x:tail",
                                             "root: </tail",         "root: </score",
                                             "root: end-document"};
  std::vector<std::string> withoutErrors;
  for (const std::string& line : log) {
    if (line.find(": error ") == std::string::npos) withoutErrors.push_back(line);
  }
  EXPECT_EQ(withoutErrors, expected);
  ASSERT_TRUE(parser.parserError().has_value());
  EXPECT_EQ(parser.parserError()->domain, "XMLParser");
}

TEST(XmlEventParser, TextArrivesInPiecesAroundEntitiesAndEntitiesOfTheDocumentAreExpanded) {
  const std::string xml =
      "<!DOCTYPE t [<!ENTITY who \"Anna\">]><t>3&lt;4 &who; <![CDATA[<raw>]]></t>";
  std::vector<std::string> log;
  Recorder recorder("r", log);
  XmlEventParser parser(xml);
  parser.setDelegate(&recorder);
  EXPECT_TRUE(parser.parse());
  std::string text;
  int pieces = 0;
  for (const std::string& line : log) {
    if (line.rfind("r: text ", 0) == 0) {
      text += line.substr(8);
      ++pieces;
    }
  }
  EXPECT_EQ(text, "3<4 Anna <raw>");
  EXPECT_GE(pieces, 3) << "an entity splits the text";
}

TEST(XmlEventParser, ReportsTheFirstErrorWithItsPlaceAndStops) {
  std::vector<std::string> log;
  Recorder recorder("r", log);
  const std::string xml = "<a>\n  <b>\n</a>";
  XmlEventParser parser(xml);
  parser.setDelegate(&recorder);
  EXPECT_FALSE(parser.parse());
  ASSERT_TRUE(parser.parserError().has_value());
  EXPECT_EQ(parser.parserError()->line, 3);
  EXPECT_NE(parser.parserError()->description.find("mismatch"), std::string::npos)
      << parser.parserError()->description;
  EXPECT_EQ(log.back().rfind("r: error 76", 0), 0u)
      << "one report of the first fatal error, then nothing, not even the end of document";

  XmlEventParser empty("");
  EXPECT_FALSE(empty.parse());
  EXPECT_EQ(empty.parserError()->description, "Document is empty");

  // UCS-4, on which libxml2 may crash, is refused in either byte order.
  for (const std::string_view ucs4 : {std::string_view("\0\0\0<\0\0\0a\0\0\0/\0\0\0>", 16),
                                      std::string_view("<\0\0\0a\0\0\0/\0\0\0>\0\0\0", 16)}) {
    XmlEventParser wide(ucs4);
    EXPECT_FALSE(wide.parse());
    EXPECT_EQ(wide.parserError()->description, "encoding not supported: UCS-4");
  }

  // Bytes that are no XML at all, and a parser that runs only once.
  XmlEventParser binary(std::string_view("\x00\x01\x02PK", 5));
  EXPECT_FALSE(binary.parse());
  EXPECT_FALSE(binary.parse());
}

TEST(XmlEventParser, NeverLoadsExternalEntitiesOrTheDtd) {
  const std::filesystem::path secret =
      std::filesystem::temp_directory_path() / "harmony-xml-secret.txt";
  std::ofstream(secret) << "SECRET";
  const std::string xml = "<!DOCTYPE t SYSTEM \"" + secret.string() +
                          "\" [<!ENTITY leak SYSTEM \"file://" + secret.string() +
                          "\">]><t>&leak;</t>";
  std::vector<std::string> log;
  Recorder recorder("r", log);
  XmlEventParser parser(xml);
  parser.setDelegate(&recorder);
  parser.parse();
  for (const std::string& line : log) EXPECT_EQ(line.find("SECRET"), std::string::npos) << line;
  std::filesystem::remove(secret);
}

TEST(XmlEventParser, AbortStopsAfterTheCurrentEvent) {
  std::vector<std::string> log;
  Recorder recorder("r", log);
  XmlEventParser parser("<a><b/><c/></a>");
  recorder.onStart = [&](std::string_view name) {
    if (name == "b") parser.abortParsing();
  };
  parser.setDelegate(&recorder);
  EXPECT_FALSE(parser.parse());
  for (const std::string& line : log) EXPECT_EQ(line.find("<c"), std::string::npos);
}

}  // namespace
}  // namespace harmony::platform
