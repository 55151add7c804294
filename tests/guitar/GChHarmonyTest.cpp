// Naming guitar grids from their notes, and proposing their root.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "harmony/guitar/GChBasicChord.h"
#include "harmony/guitar/GChChord.h"
#include "harmony/guitar/GChHarmony.h"

namespace harmony {
namespace {

// A grid on the standard tuning from frets as a guitarist writes them (-1 mutes, 0 is open).
GChChord Grid(const std::vector<int>& frets) {
  auto basic = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  for (int s = 0; s < static_cast<int>(frets.size()); ++s) {
    if (frets[s] < 0) basic->setMuted(true, s);
    if (frets[s] > 0) {
      EXPECT_TRUE(basic->addChordElem(0, frets[s] - 1, s));
    }
  }
  return GChChord(basic, 0);
}

constexpr int X = -1;

TEST(GChHarmony, WellKnownGridsAreNamedOnTheirProposedRoot) {
  struct Case {
    std::vector<int> frets;
    int root;
    const char* name;
  };
  const std::vector<Case> cases = {
      {{X, 3, 2, 0, 1, 0}, 0, "C"},   {{3, 2, 0, 0, 0, 3}, 7, "G"},
      {{X, X, 0, 2, 3, 2}, 2, "D"},   {{0, 2, 2, 1, 0, 0}, 4, "E"},
      {{1, 3, 3, 2, 1, 1}, 5, "F"},   {{0, 2, 2, 0, 0, 0}, 4, "E m"},
      {{X, X, 0, 2, 1, 2}, 2, "D 7"}, {{X, 2, 1, 2, 0, 2}, 11, "B 7"},
      {{X, 3, 2, 3, 1, 0}, 0, "C 7"}, {{X, 0, 2, 0, 2, 0}, 9, "A 7"},
      {{X, X, 0, 2, 3, 1}, 2, "D m"}, {{X, 0, 2, 1, 2, 0}, 9, "A ma7"},
  };
  for (const Case& c : cases) {
    const GChChord chord = Grid(c.frets);
    EXPECT_EQ(GChProposedRootNoteFromChord(chord, 0), c.root) << c.name;
    EXPECT_EQ(GChHarmonyStringFromChord(chord, c.root, kGChEnhNatural, 0), c.name);
  }
  // Only the length of the name counts, and a tie goes to the lower key: A minor (A C E) is
  // as short as C6 and is proposed as C6; A sus4 (A D E) ties with C6(9) the same way.
  const GChChord aMinor = Grid({X, 0, 2, 2, 1, 0});
  EXPECT_EQ(GChHarmonyStringFromChord(aMinor, 9, kGChEnhNatural, 0), "A m");
  EXPECT_EQ(GChProposedRootNoteFromChord(aMinor, 0), 0);
  EXPECT_EQ(GChHarmonyStringFromChord(aMinor, 0, kGChEnhNatural, 0), "C 6");
  EXPECT_EQ(GChProposedRootNoteFromChord(Grid({X, 0, 2, 2, 3, 0}), 0), 0);

  // Lengths count characters, not bytes: the flat of E flat minor is one character, so the
  // barre x,6,8,8,7,6 is E flat minor and not B major seven (one byte shorter in UTF-8).
  const GChChord ebMinor = Grid({X, 6, 8, 8, 7, 6});
  EXPECT_EQ(GChProposedRootNoteFromChord(ebMinor, 0), 3);
  EXPECT_EQ(GChHarmonyStringFromChord(ebMinor, 3, kGChEnhFlat, 0), "E\u266D m");
}

TEST(GChHarmony, RootsSpellingCapodasterAndTheCommaForm) {
  const GChChord openE = Grid({0, 2, 2, 1, 0, 0});
  // Named on another root, the grid's tones are told from that root.
  // The root stands in the bass slot, so E G# B named on C# is C#m7 without a slash.
  EXPECT_EQ(GChHarmonyStringFromChord(openE, 1, kGChEnhSharp, 0), "C\xE2\x99\xAF m 7");
  EXPECT_FALSE(GChHarmonyStringFromChord(openE, 12, kGChEnhNatural, 0).has_value());
  EXPECT_FALSE(GChHarmonyStringFromChord(openE, -1, kGChEnhNatural, 0).has_value());
  // A capodaster on the second fret turns the open E shape into F sharp.
  EXPECT_EQ(GChProposedRootNoteFromChord(openE, 2), 6);
  EXPECT_EQ(GChHarmonyStringFromChord(openE, 6, kGChEnhSharp, 2), "F\xE2\x99\xAF");
  EXPECT_EQ(GChHarmonyStringFromChord(openE, 6, kGChEnhFlat, 2), "G\xE2\x99\xAD");
  EXPECT_EQ(GChHarmonyCommaSeparatedStringFromChord(Grid({X, 3, 2, 3, 1, 0}), 0, 0, 0), "C,,7");
}

TEST(GChHarmony, GridsWithoutUserNameAreNamedFromTheirNotes) {
  GChChord chord = Grid({X, 0, 2, 2, 1, 0});
  chord.basicChord()->setRootNote(9);
  EXPECT_EQ(chord.chordName(0), "A m");
  EXPECT_EQ(chord.basicChord()->chordName(0), "A m");
  chord.basicChord()->setUserName("Jazz");
  EXPECT_EQ(chord.chordName(0), "Jazz");
  EXPECT_EQ(chord.basicChord()->chordName(0), "A Jazz");

  // The free record names the same way on the tuning it is given.
  GChBasicChord basic(GChDefaultGuitarShortTuning());
  basic.setMuted(true, 0);
  basic.addChordElem(0, 2, 1);
  basic.addChordElem(0, 1, 2);
  basic.addChordElem(0, 0, 4);
  const GChChordDescr descr(basic);
  EXPECT_EQ(GChProposedRootNoteFromChordDescr(descr, GChDefaultGuitarShortTuning(), 0), 0);
  EXPECT_EQ(GChHarmonyStringFromChordDescr(descr, GChDefaultGuitarShortTuning(), 0, 0, 0), "C");
}

}  // namespace
}  // namespace harmony
