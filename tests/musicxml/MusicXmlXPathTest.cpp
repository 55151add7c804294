// The look-ups the event import makes in the score's tree: values with their defaults, the
// first match in document order, paths relative to an element and absolute ones, and ids
// with quotes of either kind inside a path.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "harmony/musicxml/MusicXmlXPath.h"
#include "platform/XmlDocument.h"

namespace harmony {
namespace {

std::shared_ptr<platform::XmlDocument> Tree(const std::string& xml) {
  platform::XmlError error;
  auto document = platform::XmlDocument::Parse(xml, {}, error);
  EXPECT_TRUE(document) << error.description;
  return document;
}

const std::string kScore =
    "<score-partwise><part-list><score-part id=\"P1\"><part-name>Violin</part-name>"
    "<score-instrument id=\"P1-I1\"><instrument-sound>Strings.Violin</instrument-sound>"
    "</score-instrument></score-part></part-list>"
    "<part id=\"P1\"><measure number=\"1\"><attributes><divisions> 8 </divisions></attributes>"
    "<note><pitch><step>E</step><alter>-1.5</alter><octave>4</octave></pitch></note>"
    "<note><pitch><step>G</step><octave>4</octave></pitch></note></measure>"
    "<measure number=\"2\"><note><chord/><pitch><step>B</step></pitch></note></measure>"
    "</part></score-partwise>";

TEST(MusicXmlXPath, ValuesDefaultsAndTheFirstMatch) {
  const auto tree = Tree(kScore);
  const CXMLElement root(tree, tree->Root());
  // The first match in document order, and the defaults when nothing matches.
  EXPECT_EQ(StringValueForXPath(root, ".//step", "-"), "E");
  EXPECT_EQ(StringValueForXPath(root, ".//unpitched", "-"), "-");
  EXPECT_FALSE(StringObjectForXPath(root, ".//unpitched"));
  EXPECT_EQ(*StringObjectForXPath(root, ".//score-part/@id"), "P1");
  EXPECT_EQ(LowercaseStringValueForXPath(root, ".//instrument-sound", ""), "strings.violin");
  // Numbers are read from their text, with blanks around them.
  EXPECT_EQ(IntValueForXPath(root, ".//divisions", -1), 8);
  EXPECT_EQ(IntValueForXPath(root, ".//octave-change", -1), -1);
  EXPECT_DOUBLE_EQ(DoubleValueForXPath(root, ".//alter", 0.0), -1.5);
  // Not XPath at all: the default, and no exception.
  EXPECT_EQ(StringValueForXPath(root, ".//[", "bad"), "bad");
  EXPECT_FALSE(XPathExists(root, "((("));
}

TEST(MusicXmlXPath, RelativeAndAbsolutePaths) {
  const auto tree = Tree(kScore);
  const CXMLElement root(tree, tree->Root());
  const CXMLElement firstBar = XMLElementForXPath(root, ".//measure");
  ASSERT_FALSE(firstBar.IsNone());
  EXPECT_EQ(firstBar.Name(), "measure");
  // ".//" stays inside the element, "//" looks at the whole document.
  EXPECT_FALSE(XPathExists(firstBar, ".//chord"));
  EXPECT_TRUE(XPathExists(firstBar, "//chord"));
  EXPECT_EQ(firstBar.NodesForXPath(".//note").size(), 2u);
  // From the root element ".//" does not find the root itself; from the document it does,
  // which is how a compressed score's container is read.
  const auto container = Tree(
      "<container><rootfiles><rootfile full-path=\"score.xml\"/></rootfiles></container>");
  const CXMLElement containerRoot(container, container->Root());
  const CXMLElement containerDocument(container, container->DocumentNode());
  const std::string path = ".//container//rootfiles//rootfile//@full-path";
  EXPECT_FALSE(StringObjectForXPath(containerRoot, path));
  EXPECT_EQ(StringObjectForXPath(containerDocument, path), "score.xml");
}

TEST(MusicXmlXPath, IdsWithQuotesInsideAPath) {
  const auto tree = Tree(
      "<part-list><score-part id=\"it's\"/><score-part id='say \"P2\"'/>"
      "<score-part id=\"both '&quot;\"/></part-list>");
  const CXMLElement root(tree, tree->Root());
  for (const std::string id : {"it's", "say \"P2\"", "both '\""}) {
    const CXMLElement found =
        XMLElementForXPath(root, "(score-part[@id=" + platform::XPathLiteral(id) + "])[1]");
    EXPECT_EQ(StringValueForXPath(found, "@id", "none"), id);
  }
}

}  // namespace
}  // namespace harmony
