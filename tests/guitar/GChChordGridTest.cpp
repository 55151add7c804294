#include <gtest/gtest.h>

#include "GuitarTestSupport.h"
#include "harmony/guitar/GChChord.h"

namespace harmony {
namespace {

using testing::Grid;

TEST(GChChordElem, RefusesWhatDoesNotFit) {
  EXPECT_TRUE(GChChordElem::initWithFingerNumber(5, 31, 0, 15, 0).has_value());
  EXPECT_FALSE(GChChordElem::initWithFingerNumber(6, 0, 0, 0, 0).has_value());
  EXPECT_FALSE(GChChordElem::initWithFingerNumber(1, 32, 0, 0, 0).has_value());
  EXPECT_FALSE(GChChordElem::initWithFingerNumber(1, 0, 3, 2, 0).has_value());
  EXPECT_FALSE(GChChordElem::initWithFingerNumber(1, 0, 0, 16, 0).has_value());
  EXPECT_FALSE(GChChordElem::initWithFingerNumber(-1, 0, 0, 0, 0).has_value());

  auto barre = *GChChordElem::initWithFingerNumber(1, 4, 0, 5, 0);
  EXPECT_TRUE(barre.isBarre());
  EXPECT_EQ(barre.singleStringIndex(), -1);
  barre.setCoveredMinStr(4, 2);  // a bad pair changes nothing
  EXPECT_EQ(barre.coveredMinStr(), 0);
  EXPECT_EQ(barre.coveredMaxStr(), 5);
  barre.setCoveredMinStr(3, 3);
  EXPECT_EQ(barre.singleStringIndex(), 3);
  barre.shiftFretIndexBy(-5);  // below the first fret: ignored
  EXPECT_EQ(barre.absFretIndex(), 4);
  barre.shiftFretIndexBy(2);
  EXPECT_EQ(barre.absFretIndex(), 6);

  const auto a = *GChChordElem::initWithFingerNumber(2, 3, 1, 1, 0);
  EXPECT_TRUE(a.isEqualToChordElem(*GChChordElem::initWithFingerNumber(2, 3, 1, 1, 0)));
  EXPECT_FALSE(a.isEqualToChordElem(*GChChordElem::initWithFingerNumber(2, 3, 1, 1, 64)));
  EXPECT_FALSE(a.isEqualToChordElem(*GChChordElem::initWithFingerNumber(3, 3, 1, 1, 0)));
  EXPECT_EQ(a.propertyList().keys(),
            (std::vector<std::string>{"fingerNumber", "absFretIndex", "coveredMinStr",
                                      "coveredMaxStr", "fingerPointType"}));
}

// F major as a barre chord: 1 3 3 2 1 1.
std::shared_ptr<GChBasicChord> FMajorBarre() {
  auto chord = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  EXPECT_TRUE(chord->addChordElem(1, 0, 5, 0));  // strings in either order
  EXPECT_TRUE(chord->addChordElem(3, 2, 1));
  EXPECT_TRUE(chord->addChordElem(4, 2, 2));
  EXPECT_TRUE(chord->addChordElem(2, 1, 3));
  return chord;
}

TEST(GChBasicChord, SpotAndBarreQueries) {
  auto chord = FMajorBarre();
  EXPECT_FALSE(chord->addChordElem(6, 0, 1));
  EXPECT_EQ(chord->chordElems().size(), 4u);

  EXPECT_EQ(chord->spotAtAbsFretIndex(0, 4), &chord->chordElems()[0]);  // the barre
  EXPECT_EQ(chord->elemAtAbsFretIndex(0, 4), nullptr);                  // no single spot there
  EXPECT_NE(chord->elemAtAbsFretIndex(2, 1), nullptr);
  EXPECT_TRUE(chord->hasSingleSpot(1, 2));
  EXPECT_TRUE(chord->hasSingleSpot(1, 2, 3));
  EXPECT_FALSE(chord->hasSingleSpot(1, 2, 4));
  EXPECT_TRUE(chord->hasBarreSpot(5, 0, 0));
  EXPECT_TRUE(chord->hasBarreSpot(0, 5, 0, 1));
  EXPECT_FALSE(chord->hasBarreSpot(0, 4, 0));  // the range must match exactly
  EXPECT_EQ(chord->fretIndexForBarreSpot(0, 5), 0);
  EXPECT_EQ(chord->fretIndexForBarreSpot(1, 5), -1);

  EXPECT_TRUE(chord->liesInBarreShadow(2, 1, 2));
  EXPECT_TRUE(chord->liesInBarreShadow(0, 0, 5));
  auto high = Grid({{1, 3, 0}});
  high->addChordElem(1, 3, 1, 4);
  EXPECT_FALSE(high->liesInBarreShadow(2, 1, 2));  // the barre lies above
  EXPECT_FALSE(high->liesInBarreShadow(5, 0, 1));  // string 0 is not under it

  EXPECT_EQ(chord->maxAbsFretIndexPlusOneForStringIndex(0), 1);  // only the barre
  EXPECT_EQ(chord->maxAbsFretIndexPlusOneForStringIndex(1), 3);  // spot above the barre
  chord->setMuted(true, 5);
  EXPECT_EQ(chord->maxAbsFretIndexPlusOneForStringIndex(5), -1);
  auto open = Grid({{2, 1, 3}});
  EXPECT_EQ(open->maxAbsFretIndexPlusOneForStringIndex(0), 0);
  EXPECT_TRUE(open->isOpenForStringIndex(0));
  EXPECT_FALSE(open->isOpenForStringIndex(3));
  EXPECT_FALSE(open->isOpenForStringIndex(6));  // no such string
  EXPECT_TRUE(open->hasOpenStrings());
  EXPECT_FALSE(chord->hasOpenStrings());
}

TEST(GChBasicChord, RealAndOptionalSpots) {
  auto chord = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  chord->addChordElem(1, 2, 3, 3, 0);
  chord->addChordElem(2, 4, 3, 3, 64);  // optional
  chord->addChordElem(3, 6, 3, 3, 0);
  chord->addChordElem(4, 9, 3, 3, 64);
  chord->addChordElem(1, 1, 2, 4, 0);  // a barre across string 3 is no spot of it
  EXPECT_EQ(chord->realSpotAtMaxIndexForStringIndex(3)->absFretIndex(), 6);
  EXPECT_EQ(chord->optionalSpotAtMaxIndexForStringIndex(3)->absFretIndex(), 9);
  EXPECT_EQ(chord->realSpotAtMaxIndexForStringIndex(2), nullptr);
  EXPECT_EQ(chord->numberOfSpotsForStringIndex(3), 4);
  EXPECT_EQ(chord->numberOfRealSpotsForStringIndex(3), 2);
  EXPECT_EQ(chord->numberOfOptionalSpotsForStringIndex(3), 2);

  // Only the last optional spot goes, then all real ones; the barre stays.
  EXPECT_EQ(chord->removeOptionalSpotsForStringIndex(3, true), 1);
  EXPECT_EQ(chord->optionalSpotAtMaxIndexForStringIndex(3)->absFretIndex(), 4);
  EXPECT_EQ(chord->removeRealSpotsForStringIndex(3, false), 2);
  EXPECT_EQ(chord->numberOfSpotsForStringIndex(3), 1);
  EXPECT_EQ(chord->removeSpotsForStringIndex(3, false), 1);
  EXPECT_EQ(chord->removeSpotsForStringIndex(3, false), 0);
  ASSERT_EQ(chord->chordElems().size(), 1u);
  EXPECT_TRUE(chord->chordElems()[0].isBarre());
}

TEST(GChBasicChord, ShownFretsAndSorting) {
  // Highest fret below the shown count: the grid starts at the nut.
  EXPECT_EQ(Grid({{1, 2, 0}, {2, 3, 1}})->firstShownFretForNumberOfFrets(4), 0);
  EXPECT_EQ(Grid({{1, 2, 0}, {2, 4, 1}})->firstShownFretForNumberOfFrets(4), 2);
  EXPECT_EQ(Grid({})->firstShownFretForNumberOfFrets(4), 0);
  EXPECT_EQ(Grid({})->lowestFingeredFret(), 0);
  EXPECT_EQ(Grid({{1, 7, 0}, {2, 5, 1}})->lowestFingeredFret(), 5);

  auto chord = Grid({{3, 5, 2}, {1, 2, 4}, {2, 2, 1}});
  const auto sorted = chord->sortedChordElems();
  ASSERT_EQ(sorted.size(), 3u);
  EXPECT_EQ(sorted[0].coveredMinStr(), 1);
  EXPECT_EQ(sorted[1].coveredMinStr(), 4);
  EXPECT_EQ(sorted[2].absFretIndex(), 5);
  EXPECT_EQ(chord->chordElems()[0].absFretIndex(), 5);  // the grid itself keeps its order

  chord->shiftFretIndexesBy(-3);  // would push one below fret 0: nothing moves
  EXPECT_EQ(chord->lowestFingeredFret(), 2);
  chord->shiftFretIndexesBy(3);
  EXPECT_EQ(chord->lowestFingeredFret(), 5);
  EXPECT_TRUE(chord->removeChordElem(*GChChordElem::initWithFingerNumber(3, 8, 2, 2, 0)));
  EXPECT_FALSE(chord->removeChordElem(*GChChordElem::initWithFingerNumber(3, 8, 2, 2, 0)));
}

TEST(GChBasicChord, EqualityFlagsAndClearing) {
  auto a = FMajorBarre(), b = FMajorBarre();
  EXPECT_TRUE(a->isEqualToChordRange(*b, true));
  b->setIsFavorite(true, 3);
  EXPECT_TRUE(b->isFavoriteForTransposeIndex(3));
  EXPECT_FALSE(b->isFavoriteForTransposeIndex(2));
  EXPECT_EQ(b->isFavoriteMask(), 8u);
  EXPECT_TRUE(a->isEqualToChordRange(*b, false));
  EXPECT_FALSE(a->isEqualToChordRange(*b, true));
  b->setUserName("other");  // names do not count
  EXPECT_TRUE(a->isEqualToChordRange(*b, false));
  for (auto change :
       {+[](GChBasicChord& c) { c.setRootNote(5); }, +[](GChBasicChord& c) { c.setBassNote(0); },
        +[](GChBasicChord& c) { c.setChordType(9); },
        +[](GChBasicChord& c) { c.setDifficultyLevel(3); },
        +[](GChBasicChord& c) { c.setMuted(true, 2); },
        +[](GChBasicChord& c) { c.addChordElem(1, 9, 0); }}) {
    auto c = FMajorBarre();
    change(*c);
    EXPECT_FALSE(a->isEqualToChordRange(*c, false));
  }
  b->setMuted(true, 0);
  b->setMuted(true, 15);
  b->setMuted(false, 0);
  EXPECT_EQ(b->isMutedMask(), 0x8000);
  b->setRootNote(5);
  b->clearAll();
  EXPECT_TRUE(b->isEmpty());
  EXPECT_EQ(b->isMutedMask(), 0);
  EXPECT_EQ(b->isFavoriteMask(), 0u);
  EXPECT_EQ(b->rootNote(), -1);
  EXPECT_TRUE(b->userName().empty());
}

TEST(GChChord, RootPitchesAndNames) {
  // Open E major: 0 2 2 1 0 0.
  auto basic = Grid({{2, 1, 1}, {3, 1, 2}, {1, 0, 3}});
  basic->setRootNote(4);
  basic->setBassNote(11);
  GChChord chord(basic, 0);
  EXPECT_EQ(chord.rootNote(0), 4);
  EXPECT_EQ(chord.rootNote(3), 7);
  EXPECT_EQ(chord.rootNote(-2), 4);  // a negative capodaster counts 0
  EXPECT_EQ(chord.bassNote(2), 1);   // folded into 0..11
  EXPECT_EQ(GChChord(basic, 2).rootNote(0), 6);
  basic->setRootNote(-1);
  EXPECT_EQ(chord.rootNote(5), -1);

  EXPECT_EQ(chord.pitchForStringIndex(0, 0), 52);
  EXPECT_EQ(chord.pitchForStringIndex(1, 0), 59);
  EXPECT_EQ(chord.pitchForStringIndex(3, 2), 70);
  EXPECT_EQ(chord.pitchForStringIndex(6, 0), -1);
  EXPECT_EQ(chord.stringFromPitches(0), "E2 B2 E3 G#3 B3 E4 ");
  basic->setMuted(true, 0);
  EXPECT_EQ(chord.pitchForStringIndex(0, 0), -1);
  EXPECT_EQ(chord.stringFromPitches(0), "B2 E3 G#3 B3 E4 ");

  // Same sounds, different fingers: similar. Another pitch: not.
  auto sameSound = Grid({{1, 1, 1}, {1, 1, 2}, {2, 0, 3}});
  sameSound->setMuted(true, 0);
  EXPECT_TRUE(chord.isSimilarToChord(GChChord(sameSound)));
  sameSound->setMuted(false, 0);
  EXPECT_FALSE(chord.isSimilarToChord(GChChord(sameSound)));

  EXPECT_EQ(chord.chordName(0), "");
  basic->setUserName("Jazz");
  EXPECT_EQ(chord.chordName(0), "Jazz");
  EXPECT_EQ(basic->chordName(0), "Jazz");
  basic->setRootNote(9);
  basic->setDbChordID(17);
  EXPECT_EQ(basic->chordName(0), "A Jazz");
  EXPECT_EQ(basic->chordName(2), "B Jazz");
  EXPECT_EQ(chord.chordName(0), "Jazz");
  EXPECT_EQ(chord.chordNameWithIndex(0), "Jazz [17]");

  const GChPropertyList plist = chord.propertyList();
  EXPECT_EQ(plist.keys(), (std::vector<std::string>{"basicChord", "rootEnhType", "bassEnhType"}));
  EXPECT_EQ(plist.find("rootEnhType")->integerValue(), -1);
  const GChChordDescr descr(*basic);
  EXPECT_EQ(descr.elements.size(), 3u);
  EXPECT_EQ(descr.rootNote, 9);
  EXPECT_EQ(descr.userName, "Jazz");
}

}  // namespace
}  // namespace harmony
