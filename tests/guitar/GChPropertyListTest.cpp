#include <gtest/gtest.h>

#include "GuitarTestSupport.h"
#include "harmony/guitar/GChBasicChord.h"
#include "platform/PropertyList.h"

namespace harmony {
namespace {

std::optional<GChPropertyList> Parse(const std::string& text) {
  return platform::PropertyListFromBytes(text.data(), text.size());
}

TEST(GChPropertyList, BasicChordRoundTripsThroughXml) {
  auto chord = testing::Grid({{2, 1, 1}, {3, 1, 2}});
  chord->addChordElem(1, 0, 0, 5, 64);
  chord->setRootNote(-1);
  chord->setBassNote(4);
  chord->setChordType(119);
  chord->setIsFavoriteMask(0xFFFFFFFFu);
  chord->setIsMutedMask(0x8001);
  chord->setDifficultyLevel(5);
  chord->setUserName("E7 \u266D9 <&>");
  const GChPropertyList plist = chord->propertyList();
  EXPECT_EQ(plist.keys(), (std::vector<std::string>{"shortTuning", "chordElems", "isMutedMask",
                                                    "isFavoriteMask", "difficultyLevel", "rootNote",
                                                    "bassNote", "chordType", "userName"}));
  EXPECT_EQ(plist.find("rootNote")->integerValue(), -1);
  const std::string xml = platform::PropertyListToXml(plist);
  EXPECT_NE(xml.find("<key>shortTuning</key>"), std::string::npos);
  EXPECT_LT(xml.find("shortTuning"), xml.find("userName"));  // keys keep their order
  EXPECT_NE(xml.find("<integer>-1</integer>"), std::string::npos);

  const auto parsed = Parse(xml);
  ASSERT_TRUE(parsed.has_value());
  EXPECT_EQ(*parsed, plist);
  const auto back = GChBasicChord::fromPropertyList(*parsed);
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(back->isEqualToChordRange(*chord, true));
  EXPECT_EQ(back->userName(), chord->userName());
}

TEST(GChPropertyList, RefusesWhatIsNoGrid) {
  EXPECT_FALSE(Parse("").has_value());
  EXPECT_FALSE(Parse("no property list").has_value());
  EXPECT_FALSE(Parse("<plist><dict><key>a</key><real>1.5</real></dict></plist>").has_value());

  const GChPropertyList good = testing::Grid({{1, 0, 0}})->propertyList();
  ASSERT_NE(GChBasicChord::fromPropertyList(good), nullptr);
  const auto without = [&](const char* key, GChPropertyList value) {
    GChPropertyList copy = good;
    copy.set(key, std::move(value));
    return GChBasicChord::fromPropertyList(copy);
  };
  EXPECT_EQ(without("shortTuning", GChPropertyList::String("E A D")), nullptr);
  EXPECT_EQ(without("rootNote", GChPropertyList::Integer(200)), nullptr);
  EXPECT_EQ(without("isMutedMask", GChPropertyList::Integer(0x10000)), nullptr);
  EXPECT_EQ(without("userName", GChPropertyList::Integer(3)), nullptr);
  GChPropertyList badElem = GChPropertyList::Array();
  GChPropertyList elem = *GChChordElem::initWithFingerNumber(1, 0, 0, 0, 0)
                              ->propertyList()
                              .find("fingerNumber");  // a number where a dictionary belongs
  badElem.append(elem);
  EXPECT_EQ(without("chordElems", badElem), nullptr);
  GChPropertyList sixFingers = GChPropertyList::Array();
  GChPropertyList six = GChChordElem::initWithFingerNumber(1, 0, 0, 0, 0)->propertyList();
  six.set("fingerNumber", GChPropertyList::Integer(6));
  sixFingers.append(six);
  EXPECT_EQ(without("chordElems", sixFingers), nullptr);
  // Optional fields may be missing.
  GChPropertyList minimal;
  minimal.set("shortTuning", *good.find("shortTuning"));
  minimal.set("chordElems", *good.find("chordElems"));
  const auto chord = GChBasicChord::fromPropertyList(minimal);
  ASSERT_NE(chord, nullptr);
  EXPECT_EQ(chord->rootNote(), -1);
}

}  // namespace
}  // namespace harmony
