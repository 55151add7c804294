#include <gtest/gtest.h>

#include "GuitarTestSupport.h"
#include "harmony/guitar/GChLibrary.h"
#include "harmony/guitar/GChTuning.h"

namespace harmony {
namespace {

GChShortTuning Tuning(std::initializer_list<int> pitches) {
  GChShortTuning tuning{};
  int i = 0;
  for (int p : pitches) tuning[i++] = static_cast<uint8_t>(p);
  return tuning;
}

TEST(GChShortTuning, CountAndValidity) {
  EXPECT_EQ(GChNumberOfStringsInShortTuning(GChDefaultGuitarShortTuning()), 6);
  EXPECT_TRUE(GChIsValidShortTuning(GChDefaultGuitarShortTuning()));
  // Two strings are too few, three are enough.
  EXPECT_FALSE(GChIsValidShortTuning(Tuning({40, 45})));
  EXPECT_TRUE(GChIsValidShortTuning(Tuning({40, 45, 50})));
  EXPECT_FALSE(GChIsValidShortTuning(Tuning({})));
  // 128 and above read as negative bytes.
  EXPECT_FALSE(GChIsValidShortTuning(Tuning({40, 45, 128})));
  EXPECT_TRUE(GChIsValidShortTuning(Tuning({40, 45, 127})));
  // A zero ends the tuning: what follows is not counted.
  EXPECT_EQ(GChNumberOfStringsInShortTuning(Tuning({40, 45, 0, 50})), 2);
  // Sixteen strings need no ending zero.
  GChShortTuning sixteen;
  sixteen.fill(60);
  EXPECT_EQ(GChNumberOfStringsInShortTuning(sixteen), 16);
  EXPECT_TRUE(GChIsValidShortTuning(sixteen));
  EXPECT_EQ(GChPitchArrayFromShortTuning(sixteen).size(), 16u);
  EXPECT_EQ(GChPitchArrayFromShortTuning(GChDefaultGuitarShortTuning()),
            (std::vector<int>{52, 57, 62, 67, 71, 76}));
}

TEST(GChShortTuning, EqualityStopsAtTheEnd) {
  EXPECT_TRUE(GChIsEqualShortTuning(Tuning({40, 45, 50}), Tuning({40, 45, 50})));
  EXPECT_FALSE(GChIsEqualShortTuning(Tuning({40, 45, 50}), Tuning({40, 45, 50, 55})));
  // Bytes behind the ending zero do not count.
  GChShortTuning a = Tuning({40, 45, 50}), b = a;
  b[5] = 99;
  EXPECT_TRUE(GChIsEqualShortTuning(a, b));
  EXPECT_EQ(GChStandardGuitarOpenStringPitch(0), 52);
  EXPECT_EQ(GChStandardGuitarOpenStringPitch(5), 76);
  EXPECT_EQ(GChStandardGuitarOpenStringPitch(6), 0);
  EXPECT_EQ(GChStandardGuitarOpenStringPitch(-1), 0);
}

TEST(GChTuning, NamesPitchesAndLibraries) {
  auto tuning = GChTuning::initWithShortTuning1(GChDefaultGuitarShortTuning());
  EXPECT_EQ(tuning->tuningName(), "Untitled Tuning " + std::to_string(tuning->runTimeID()));
  tuning->setTuningName("Guitar");
  EXPECT_EQ(tuning->tuningName(), "Guitar");
  EXPECT_EQ(tuning->tuningPitchesString(), "E2 A2 D3 G3 B3 E4");
  EXPECT_EQ(tuning->openStringPitchForStringIndex(0), 52);
  EXPECT_EQ(tuning->openStringPitchForStringIndex(6), -1);
  EXPECT_EQ(tuning->openStringPitchForStringIndex(-1), -1);

  auto other = GChTuning::initWithShortTuning1(GChDefaultGuitarShortTuning());
  EXPECT_NE(other->runTimeID(), tuning->runTimeID());
  EXPECT_TRUE(tuning->isEqualToTuning(*other));  // the name does not count

  GChLibrary* a = tuning->createLibraryWithPath("/a", "A");
  GChLibrary* b = tuning->createLibraryWithPath("/b", "B");
  EXPECT_EQ(a->tuning(), tuning.get());
  a->addChordRangePriv(testing::Grid({{1, 0, 1}}));
  a->addChordRangePriv(testing::Grid({{1, 2, 1}}));
  b->addChordRangePriv(testing::Grid({{1, 4, 1}}));
  EXPECT_EQ(tuning->numberOfBasicChords(), 3);
  EXPECT_EQ(tuning->numberOfChords(), 3);
  EXPECT_FALSE(other->removeLibrary1(a));
  EXPECT_TRUE(tuning->removeLibrary1(a));
  EXPECT_EQ(tuning->numberOfBasicChords(), 1);
  EXPECT_EQ(tuning->tuningLibraries().size(), 1u);
}

TEST(GChTuningDescr, FieldsAndComparison) {
  GChTuningDescr descr;
  EXPECT_EQ(descr.numberOfStrings(), 0);
  EXPECT_FALSE(descr.isValid());
  EXPECT_TRUE(descr.setOpenStringPitch(0, 40));
  EXPECT_TRUE(descr.setOpenStringPitch(2, 50));  // extends over string 1 (pitch 0)
  EXPECT_FALSE(descr.setOpenStringPitch(16, 50));
  EXPECT_EQ(descr.numberOfStrings(), 3);
  EXPECT_FALSE(descr.isValid());  // the zero of string 1 ends the tuning early
  descr.setOpenStringPitch(1, 45);
  EXPECT_TRUE(descr.isValid());

  GChTuningDescr guitar(GChDefaultGuitarShortTuning(), 2);
  GChTuningDescr copy;
  copy.setToTuningDescr(guitar);
  EXPECT_TRUE(copy.isEqualToTuningDescr(guitar));
  copy.setCapodasterOffset(0);
  EXPECT_TRUE(copy.isEqualToTuningStrings(guitar));
  EXPECT_FALSE(copy.isEqualToTuningDescr(guitar));
  copy.clearDataFields();
  EXPECT_EQ(copy.numberOfStrings(), 0);

  const GChPropertyList plist = guitar.propertyList();
  ASSERT_EQ(plist.keys(), (std::vector<std::string>{"openStringPitches", "capodasterOffset"}));
  EXPECT_EQ(plist.find("openStringPitches")->items().size(), 6u);
  EXPECT_EQ(plist.find("capodasterOffset")->integerValue(), 2);
}

}  // namespace
}  // namespace harmony
