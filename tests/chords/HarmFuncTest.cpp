// Functional names of chords in a key: roman numerals and function letters, in keys of major
// and of minor kind.

#include "harmony/chords/HarmFunc.h"

#include <gtest/gtest.h>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony {
namespace {

CChordNamePrefs Letters(int functionLetters) {
  CChordNamePrefs prefs;
  prefs.FunctionLetters = functionLetters;
  return prefs;
}

struct TNamed {
  const char* symbol;
  CHarmFunc code;
  const char* roman;
  const char* letters;
};

void ExpectNames(const CSignKeyHeavy& key, std::initializer_list<TNamed> cases) {
  for (const TNamed& c : cases) {
    const CChordLite chord(c.symbol, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
    EXPECT_EQ(chord.HarmFuncIn(key), c.code) << c.symbol;
    EXPECT_EQ(chord.HarmFuncNameIn(key, Letters(0)), c.roman) << c.symbol;
    EXPECT_EQ(chord.HarmFuncNameIn(key, Letters(1)), c.letters) << c.symbol;
  }
}

TEST(HarmFunc, ChordsInKeysOfBothKinds) {
  const CSignKeyHeavy cMajor(CKeyEnh(0, TEnh_n), TSignKeyTypeNoUndef::Major);
  // The triad the name is built on counts: B half-diminished names as minor, so it has no
  // function; aug has none anywhere.
  ExpectNames(cMajor, {{"Cm", 1, "Im", "t"},
                       {"D7", 2, "II", "DD / SP"},
                       {"Em", 6, "IIIm", "Sp"},
                       {"G7", 9, "V", "D"},
                       {"Gsus4", 9, "V", "D"},
                       {"Am", 12, "VIm", "Tp"},
                       {"Bdim", 14, "VIIdim", "VIIdim##in minor"},
                       {"Bm7b5", -1, "undef", "undef"},
                       {"Caug", -1, "undef", "undef"},
                       {"F#m", -1, "undef", "undef"}});
  // A natural minor: A B C D E F G. No degree gives the flat seventh its code.
  const CSignKeyHeavy aMinor(CKeyEnh(9, TEnh_n), TSignKeyTypeNoUndef::Minor);
  ExpectNames(aMinor, {{"Am", 1, "Im", "t"},
                       {"Bdim", 4, "IIdim", "IIdim##"},
                       {"C", 5, "III", "P"},
                       {"Cm", 6, "IIIm", "IIIm##in minor"},
                       {"F", 11, "VI", "sP = G"},
                       {"Fm", 12, "VIm", "sp"},
                       {"G", -1, "undef", "undef"}});

  // Only FunctionLetters 1 chooses the letters; the heavy chord answers as the light one.
  const CChordHeavy g7("G7", ChordSetFromStringPrefs(), GetCurrentChordNamePrefs(), 24);
  EXPECT_EQ(g7.HarmFuncName(cMajor, Letters(2)), "V");
  EXPECT_EQ(g7.HarmFuncName(aMinor, Letters(1)), "undef");
  EXPECT_EQ(CChordLite().HarmFuncIn(cMajor), -1);
  // Code 13 is named, though no chord has it; codes beyond give "undef".
  EXPECT_EQ(HarmFuncNameForCode(13, false, Letters(0)), "bVII");
  EXPECT_EQ(HarmFuncNameForCode(13, false, Letters(1)), "SS");
  EXPECT_EQ(HarmFuncNameForCode(13, true, Letters(1)), "sp");
  EXPECT_EQ(HarmFuncNameForCode(15, true, Letters(1)), "undef");
}

}  // namespace
}  // namespace harmony
