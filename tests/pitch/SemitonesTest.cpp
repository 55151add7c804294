#include "TestPaths.h"
#include "harmony/pitch/Semitones.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "TestText.h"
#include "ToolRun.h"
#include "harmony/chords/BasicChord.h"

namespace harmony {
namespace {

constexpr int kUndef = -129;
constexpr CSemitones kMajor(145);
constexpr CSemitones kMinor(137);
constexpr CSemitones kMajorScale(2741);

TEST(Semitones, BasicChords) {
  const std::uint64_t masks[] = {0, 145, 137, 273, 81, 73, 161, 133, 129};
  for (int value = 0; value <= 8; ++value) {
    const auto basicChord = static_cast<TBasicChord>(value);
    EXPECT_EQ(SemitonesForBasicChord(basicChord), CSemitones(masks[value])) << value;
    EXPECT_EQ(CSemitones(masks[value]).BasicChord(), basicChord) << value;
  }
  EXPECT_EQ(SemitonesForBasicChord(static_cast<TBasicChord>(9)), kMajor);

  EXPECT_EQ(CSemitones(128).BasicChord(), kBasicChordNone);         // a fifth alone...
  EXPECT_TRUE(CSemitones(128).IsDrone5());                          // ...is a drone
  EXPECT_EQ(CSemitones(145 | 256).BasicChord(), kBasicChordMajor);  // both fifths
  EXPECT_FALSE(CSemitones(145 | 256).IsAug());
  EXPECT_EQ(CSemitones(73 | 128).BasicChord(), kBasicChordMinor);
  EXPECT_FALSE(CSemitones(73 | 128).IsDim());
  EXPECT_EQ(CSemitones(1 | 8 | 256).BasicChord(), kBasicChordNone);  // 0 3 8: no triad
  EXPECT_EQ(CSemitones(1 | 8).BasicChord(), kBasicChordMinor);       // a third is enough
  EXPECT_EQ(CSemitones(145 | 32).BasicChord(), kBasicChordMajor);    // third beats sus4
  EXPECT_EQ(CSemitones(161 | 4).BasicChord(), kBasicChordSus4);      // sus4 before sus2

  CSemitones chord(149 | 1024);
  chord.EraseTensions();
  EXPECT_EQ(chord, kMajor);
  chord = CSemitones(1024);
  chord.AddSemitonesFromBasicChord(static_cast<TBasicChord>(42));  // counts as major
  EXPECT_EQ(chord, CSemitones(145 | 1024));
}

TEST(Semitones, Predicates) {
  static_assert(kMajor.IsMajor() && kMajor.IsMajorOrAug() && !kMajor.IsMinor());
  static_assert(kMinor.IsMinor() && kMinor.IsMinorOrDim() && !kMinor.IsMajorOrAug());
  EXPECT_FALSE(CSemitones(153).IsMinor());  // both thirds
  EXPECT_FALSE(CSemitones(153).IsMinorOrDim());
  EXPECT_FALSE(CSemitones(81 | 128).IsMajorb5());
  EXPECT_TRUE(CSemitones(161 | 4).IsSus4());    // the second doesn't spoil a sus4...
  EXPECT_FALSE(CSemitones(133 | 32).IsSus2());  // ...but the fourth spoils a sus2
  EXPECT_FALSE(CSemitones(0).IsMajor());

  EXPECT_TRUE(CSemitones(1451).IsModalScaleMinor());
  EXPECT_TRUE(CSemitones(2773).IsModalScaleMajor());
  EXPECT_TRUE(CSemitones(1387).IsModalScale());  // locrian: modal, neither major nor minor
  EXPECT_FALSE(CSemitones(1387).IsModalScaleMajor() || CSemitones(1387).IsModalScaleMinor());
  EXPECT_FALSE(CSemitones(2477).IsModalScale());  // harmonic minor
}

TEST(Semitones, BitsAndTheUnsignedFoldOfIntervals) {
  CSemitones s;
  s.SetSemitone(4, true);
  s.SetSemitone(12, true);  // ignored
  EXPECT_EQ(s, CSemitones(16));

  EXPECT_EQ(CSemitones::SemitoneIxFromIntvl(14), 2u);
  EXPECT_EQ(CSemitones::SemitoneIxFromIntvl(-1), 3u);  // 2^64 - 1 is 3 modulo 12
  EXPECT_EQ(CSemitones::SemitoneIxFromIntvl(-12), 4u);
  s.AddIntvl(-1);
  EXPECT_EQ(s, CSemitones(16 | 8));
  EXPECT_FALSE(s.HasIntvl(-1));
  EXPECT_FALSE(kMajor.HasIntvl(12));
  EXPECT_TRUE(kMajorScale.Contain(145));
  EXPECT_FALSE(kMajorScale.Contain(137));

  std::vector<bool> bits;
  kMajor.ToVectorBool(bits);
  EXPECT_EQ(bits, (std::vector<bool>{1, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(CSemitones::VectorBoolToInt(bits), 145u);
  CSemitones(4097).ToVectorBool(bits);
  EXPECT_EQ(bits, std::vector<bool>(12, false));
}

TEST(Semitones, IntervalSets) {
  EXPECT_EQ(kMajor.IntvlSet(), CIntvlSet(0, 4, 7, -1));
  EXPECT_EQ(kMajor.IntvlSet().WrapIntvl(), 12);
  CSemitones s;
  s.SetFromIntvlSet(CIntvlSet(0, 4, 7, 14, -1));
  EXPECT_EQ(s, CSemitones(149));
  s.EraseIntvls(CIntvlSet(2, 4, -1));
  EXPECT_EQ(s, CSemitones(129));

  EXPECT_FALSE(kMajorScale.HasTheseOrMoreIntvls(CIntvlSet(0, 4, 16, -1)));  // 16 not folded
  // An empty set of intervals asks for nothing, yet fails; an empty index list succeeds.
  EXPECT_FALSE(kMajorScale.HasTheseOrMoreIntvls(CIntvlSet()));
  EXPECT_TRUE(kMajorScale.HasSameSemitonesAtTheseIndicesTo({}, kMinor));
  EXPECT_TRUE(kMajor.HasExactlyTheseIntvls(CIntvlSet(7, 0, 4, -1)));
  EXPECT_FALSE(kMajor.HasExactlyTheseIntvls(CIntvlSet(0, 4, 19, -1)));
}

TEST(Semitones, DegreesAndRotation) {
  EXPECT_EQ(kMajorScale.DegreeNrToIntvl(3), 5);
  EXPECT_EQ(kMajorScale.DegreeNrToIntvl(7), 0);
  // -1 is read as 2^64 - 1, which is 1 modulo 7: the second degree, not the seventh.
  EXPECT_EQ(kMajorScale.DegreeNrToIntvl(-1), 2);
  EXPECT_EQ(CSemitones().DegreeNrToIntvl(0), kUndef);

  CSemitones chord = kMajor;
  chord.RotateRootToIx(4);  // E G C
  EXPECT_EQ(chord, CSemitones(1 | 8 | 256));
  chord.RotateRootToIx(12);  // ignored
  chord.RotateRootToIx(8);
  EXPECT_EQ(chord, kMajor);
  CSemitones scale = kMajorScale;
  scale.RotateRootToIx(9);
  EXPECT_EQ(scale, CSemitones(1453));
}

TEST(Semitones, ChordOptions) {
  EXPECT_TRUE(CSemitones(145 | 2048).HasChordOption(kChordOption7));
  EXPECT_FALSE(kMajor.HasChordOption(kChordOption9));
  // The flat fifth of a diminished triad is no eleventh; next to a major third it is.
  EXPECT_FALSE(CSemitones(73).HasChordOption(kChordOption11));
  EXPECT_TRUE(CSemitones(81).HasChordOption(kChordOption11));
  EXPECT_FALSE(CSemitones(273).HasChordOption(kChordOption13));
  EXPECT_TRUE(CSemitones(145 | 256).HasChordOption(kChordOption13));
  EXPECT_FALSE(CSemitones(4095).HasChordOption(static_cast<TChordOption>(4)));

  const CSemitones dominant(145 | 1024);
  EXPECT_FALSE(kMajor.IsMatchingChordOption(kChordOption7, dominant));
  EXPECT_FALSE(CSemitones(145 | 1024 | 2048).IsMatchingChordOption(kChordOption7, dominant));
  EXPECT_TRUE(CSemitones(145 | 2048).IsMatchingChordOption(kChordOption7, kMajor));  // no demand
  EXPECT_TRUE(kMajor.IsMatchingChordOption(static_cast<TChordOption>(7), dominant));
  EXPECT_FALSE(kMajor.IsMatchingChordOption(kChordOption11, CSemitones(81)));
  // With the other's diminished triad the 6 is no option: only the 5 is compared.
  EXPECT_TRUE(kMajor.IsMatchingChordOption(kChordOption11, CSemitones(73)));
  EXPECT_TRUE(CSemitones(81 | 32).IsMatchingChordOption(kChordOption11, CSemitones(73 | 32)));
}

TEST(Semitones, Counts) {
  EXPECT_EQ(kMajor.MatchingCountInOctaveTo(kMinor), 10u);
  EXPECT_EQ(kMajor.MatchingCountForActiveInBothTo(kMinor), 2u);
  EXPECT_EQ(kMajor.MismatchingCountInOctaveTo(kMinor), 2u);
  EXPECT_EQ(kMajorScale.MismatchingCountForActiveInThisTo(kMajor), 4u);
  EXPECT_EQ(kMajor.MismatchingCountForActiveInOtherTo(kMajorScale), 4u);
  EXPECT_EQ(CSemitones(145 | 4096).MatchingCountInOctaveTo(kMajor), 12u);  // octave only

  EXPECT_EQ(kMajorScale.AvoidNotesCountTo(kMajor), 1u);              // F over E
  EXPECT_EQ(CSemitones(1).AvoidNotesCountTo(CSemitones(2048)), 1u);  // C over B, across 0
  EXPECT_EQ(CSemitones(4095).AdjacentHalfStepsCount(), 12u);
  EXPECT_EQ(CSemitones(2048 | 1 | 2).AdjacentHalfStepsCount(), 1u);  // B C C#
  EXPECT_EQ(kMajorScale.AdjacentHalfStepsCount(), 0u);
  EXPECT_EQ(kMajorScale.StepsWithIntvlCount(2), 5u);
  EXPECT_EQ(kMajorScale.StepsWithIntvlCount(1), 1u);  // B to C does not count

  const std::vector<unsigned long> thirds{3, 4};
  EXPECT_FALSE(kMajor.HasSameSemitonesAtTheseIndicesTo(thirds, kMinor));
  EXPECT_TRUE(CSemitones(129).HasSameOrLessSemitonesAtTheseIndicesTo(thirds, kMinor));
  EXPECT_FALSE(kMajor.HasSameOrLessSemitonesAtTheseIndicesTo(thirds, kMinor));
  EXPECT_GT(CSemitones(1ULL << 63), kMajorScale);  // ordered as unsigned words
}

struct TQuantizeCase {
  std::uint64_t mask;
  unsigned long index;
  TQuantizeDirection direction;
  TQuantizeWrapAtOctave wrap;
  int expected;
};

TEST(Semitones, QuantizeCases) {
  const TQuantizeCase cases[] = {
      // Undefined cases; the defined ones are checked for every mask below.
      {0, 3, kQuantizeClosestTieRight, _Quantize_WrapAtOctave_Yes, kUndef},
      {145, 3, kQuantizeClosestTieRight, static_cast<TQuantizeWrapAtOctave>(2), kUndef},
      {145, 3, static_cast<TQuantizeDirection>(4), _Quantize_WrapAtOctave_No, kUndef},
      {145, 12, kQuantizeClosestTieRight, _Quantize_WrapAtOctave_Yes, kUndef},
      {4096, 3, kQuantizeClosestTieRight, _Quantize_WrapAtOctave_Yes, kUndef},
  };
  for (const TQuantizeCase& c : cases) {
    EXPECT_EQ(CSemitones(c.mask).QuantizeToActiveSemitonesAsIntvl(c.index, {c.direction, c.wrap}),
              c.expected)
        << c.mask << " " << c.index << " " << c.direction << " " << c.wrap;
  }
  EXPECT_EQ(kMajor.QuantizeToActiveSemitonwAsIndex(10, kQuantizeClosestTieRight), 0u);
  EXPECT_EQ(CSemitones().QuantizeToActiveSemitonwAsIndex(5, kQuantizeRight), 5u);
  EXPECT_EQ(CSemitones(2048)._Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Left(1),
            (std::pair<int, int>{10, 2}));
  EXPECT_EQ(CSemitones()._Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Right(3),
            (std::pair<int, int>{kUndef, 2147483647}));
}

// Every answer names an active semitone, and none is nearer in the chosen direction.
TEST(Semitones, QuantizeReachesTheNearestActiveSemitoneForEveryMask) {
  for (std::uint64_t mask = 1; mask < 4096; ++mask) {
    const CSemitones s(mask);
    for (unsigned long index = 0; index < 12; ++index) {
      if (s.Semitone(index)) continue;
      int up = 1;
      while (!s.Semitone((index + up) % 12)) ++up;
      int down = 1;
      while (!s.Semitone((index + 12 - down) % 12)) ++down;
      const auto ask = [&](TQuantizeDirection d, TQuantizeWrapAtOctave w) {
        return s.QuantizeToActiveSemitonesAsIntvl(index, {d, w});
      };
      const int i = static_cast<int>(index);
      const int upWrapped = static_cast<int>((index + up) % 12) - i;
      const int downWrapped = static_cast<int>((index + 12 - down) % 12) - i;
      ASSERT_EQ(ask(kQuantizeRight, _Quantize_WrapAtOctave_No), up);
      ASSERT_EQ(ask(kQuantizeLeft, _Quantize_WrapAtOctave_No), -down);
      ASSERT_EQ(ask(kQuantizeClosestTieRight, _Quantize_WrapAtOctave_No), down < up ? -down : up);
      ASSERT_EQ(ask(kQuantizeClosestTieLeft, _Quantize_WrapAtOctave_No), up < down ? up : -down);
      ASSERT_EQ(ask(kQuantizeRight, _Quantize_WrapAtOctave_Yes), upWrapped);
      ASSERT_EQ(ask(kQuantizeLeft, _Quantize_WrapAtOctave_Yes), downWrapped);
      ASSERT_EQ(ask(kQuantizeClosestTieRight, _Quantize_WrapAtOctave_Yes),
                down < up ? downWrapped : upWrapped);
      ASSERT_EQ(ask(kQuantizeClosestTieLeft, _Quantize_WrapAtOctave_Yes),
                up < down ? upWrapped : downWrapped);
    }
  }
}

TEST(Semitones, TextForms) {
  EXPECT_EQ(kMajor.GenericName(), "0-4-7");
  EXPECT_EQ(CSemitones().GenericName(), "-");
  EXPECT_EQ(testing::Json(kMajor), "[1,0,0,0,1,0,0,1,0,0,0,0]");

  EXPECT_EQ(kMajor.TraceString(), "145=+...+..+.... 0-4-7");
  EXPECT_EQ(kMajorScale.TraceString(), "2741=+.+.++.+.+.+ 0-2-4-5-7-9-11 Major (Ionian)");
  EXPECT_EQ(CSemitones().TraceString(), "0=............ -");
  EXPECT_EQ(CSemitones(3072 | 16).TraceBriefString(), "----4-----1011");
  EXPECT_EQ(kMajor.StringForInitializerList(), "CSemitones(145)");
}

TEST(Semitones, ScaleNamesKeepTheFirstNameOfAMask) {
  EXPECT_EQ(Semitones::LocalizedNameForScale(kMajorScale), "Major (Ionian)");
  EXPECT_EQ(Semitones::LocalizedNameForScale(CSemitones(1749)), "Mixolydian ♯11");
  EXPECT_EQ(Semitones::LocalizedNameForScale(CSemitones(1371)), "Super Locrian (Altered)");
  EXPECT_EQ(Semitones::LocalizedNameForScale(kMajor), "");
  // 44 rows, three masks twice.
  EXPECT_EQ(Semitones::LocalizedScaleNames().size(), 41u);
  EXPECT_EQ(Semitones::LocalizedNameForChordPlatformString(kMajor), "");
}

// The command-line tool reads masks and names what the library sees in them.
TEST(Semitones, ToolDescribesMasks) {
  if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "the harmony tool is not built";
  const testing::TRun run = testing::RunTool("semitones 145 2741");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(
      testing::Contains(run.output,
                        "145  0-4-7\n  basic chord  kBasicChordMajor\n  holds        IsMajor "
                        "IsMajorOrAug\n"))
      << run.output;
  EXPECT_TRUE(testing::Contains(
      run.output, "scale        Major (Ionian)\n  json         [1,0,1,0,1,1,0,1,0,1,0,1]"));

  const testing::TRun bad = testing::RunTool("semitones 145 4096");
  EXPECT_EQ(bad.status, 1);
  EXPECT_TRUE(testing::Contains(bad.output, "\"4096\"")) << bad.output;
  EXPECT_FALSE(testing::Contains(bad.output, "0-4-7")) << bad.output;
}

}  // namespace
}  // namespace harmony
