// Chords against keys, centers and scales: the members of the chord record, the scales and
// the sign keys that work through the heavy chord.

#include <gtest/gtest.h>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony {
namespace {

constexpr CKeyEnh kC(0, TEnh_n), kD(2, TEnh_n), kE(4, TEnh_n), kF(5, TEnh_n), kG(7, TEnh_n);
constexpr CKeyEnh kA(9, TEnh_n), kB(11, TEnh_n), kEb(3, TEnh_b), kFSharp(6, TEnh_s);
constexpr CKeyEnh kBb(10, TEnh_b), kNoKey;
constexpr std::uint64_t kMajor = 145, kMinor = 137, kDom7 = 1169, kMaj7 = 2193, kMin7 = 1161;

CChordLite Chord(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = kNoKey) {
  return CChordLite(root, CSemitones(mask), bass);
}

CSignKeyHeavy MajorKey(CKeyEnh root) { return CSignKeyHeavy(root, TSignKeyTypeNoUndef::Major); }

TEST(ChordInKey, IsInSignKeyRegardlessOfEnh) {
  struct Case {
    CChordLite chord;
    CKeyEnh key;
    bool in;
  };
  const Case cases[] = {
      {Chord(kA, kMajor), kC, true},  // major chords pass on their root alone
      {Chord(kG, kDom7), kF, true},   // so does a dominant seventh, B natural or not
      {Chord(kA, kMinor), kC, true},
      {Chord(kE, kMinor), kF, false},  // B is not in F major
      {Chord(kB, 73), kC, true},       // B D F
      {Chord(kB, 73), kG, false},      // F is not in G major
      {Chord(kFSharp, kMajor), kC, false},
      {Chord(kG, kMaj7), kC, false},
      {Chord(kF, kMaj7), kC, true},
      {Chord(kD, 1185), kC, true},   // other masks: fifth and seventh
      {Chord(kD, 1185), kD, false},  // C is not in D major
      {Chord(kB, 133), kC, false},
      {Chord(kC, 1), kC, false},  // the root alone says nothing
      {CChordLite(), kC, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.chord.StringForInitializerList() + " in " + std::to_string(c.key.KeyNr));
    EXPECT_EQ(c.chord.IsInSignKeyRegardlessOfEnh(MajorKey(c.key)), c.in);
    EXPECT_EQ(c.chord.IsInSignKeyRegardlessOfEnh(CSignKeyLite(c.key, TSignKeyType::Major)), c.in);
    EXPECT_EQ(c.chord.ToChordHeavy(24).IsInSignKeyRegardlessOfEnh(MajorKey(c.key)), c.in);
  }
  EXPECT_FALSE(Chord(kC, kMajor).IsInSignKeyRegardlessOfEnh(CSignKeyLite()));
  // The heavy chord asks with its light form: a bass-only tone is no chord tone.
  EXPECT_TRUE(Chord(kE, kMinor, kF).ToChordHeavy(24).IsInSignKeyRegardlessOfEnh(MajorKey(kG)));
}

TEST(ChordInKey, ChordExpandedWithTypicalSeventh) {
  const CHarmCenterLite cMajor(kC, CSemitones(2741)), aMinor(kA, CSemitones(1453));
  const CHarmCenterLite dDorian(kD, CSemitones(1709)), aHarmonic(kA, CSemitones(2477));
  struct Case {
    CChordLite chord;
    const CHarmCenterLite& center;
    CChordLite expanded;
  };
  const Case cases[] = {
      {Chord(kC, kMajor), cMajor, Chord(kC, kMaj7)},
      {Chord(kG, kMajor), cMajor, Chord(kG, kDom7)},
      {Chord(kF, kMajor, kA), cMajor, Chord(kF, kMaj7)},  // the bass is dropped
      {Chord(kB, 73), cMajor, Chord(kB, 1097)},
      {Chord(kC, 1173), cMajor, Chord(kC, kDom7)},  // an own seventh stays, the ninth goes
      {Chord(kC, kMaj7 | 64), aMinor, Chord(kC, kMaj7)},
      {Chord(kA, kMinor), aMinor, Chord(kA, kMin7)},
      {Chord(kC, kMajor), aMinor, Chord(kC, kMaj7)},
      {Chord(kE, kMajor), aMinor, Chord(kE, kDom7)},
      {Chord(kD, kMinor), dDorian, Chord(kD, kMin7)},
      {Chord(kA, kMinor), aHarmonic, Chord(kA, kMinor)},  // no rule for this mode
      {Chord(kEb, kMajor), cMajor, Chord(kEb, kMajor)},   // no seventh on this degree
      {Chord(kC, kMajor), CHarmCenterLite(), CChordLite()},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.chord.ChordExpandedWithTypicalSeventh(c.center), c.expanded)
        << c.chord.StringForInitializerList();
  }
}

TEST(ChordInKey, SupersetDegreesAndTransposition) {
  EXPECT_TRUE(Chord(kC, kDom7).IsNonidenticalSupersetOf(Chord(kC, kMajor)));
  EXPECT_TRUE(Chord(kA, kMin7).IsNonidenticalSupersetOf(Chord(kC, kMajor)));
  EXPECT_FALSE(Chord(kC, kMajor).IsNonidenticalSupersetOf(Chord(kC, kMajor)));
  EXPECT_FALSE(Chord(kC, kMajor).IsNonidenticalSupersetOf(Chord(kC, kDom7)));
  EXPECT_FALSE(Chord(kC, kMajor, kE).IsNonidenticalSupersetOf(Chord(kC, kMajor)));
  // The heavy forms count the bass: C/Bb has the keys of C7.
  EXPECT_FALSE(Chord(kC, kDom7).IsNonidenticalSupersetOf(Chord(kC, kMajor, kBb)));

  const CSignKeyHeavy cMajor = MajorKey(kC);
  EXPECT_EQ(Chord(kG, kMajor, kB).RootNoteDegreeNrInSignKey(cMajor), 4);
  EXPECT_EQ(Chord(kG, kMajor, kB).BassNoteDegreeNrInSignKey(cMajor), 6);
  EXPECT_EQ(Chord(kFSharp, kMajor).RootNoteDegreeNrInSignKey(cMajor), -1);
  EXPECT_EQ(Chord(kG, kMajor).BassNoteDegreeNrInSignKey(cMajor), -1);

  const CScaleLite cScale(kC, CSemitones(2741));
  CChordLite chord = Chord(kC, kMajor, kE);
  chord.TransposeAndAdjustEnh(2, cScale);
  EXPECT_EQ(chord, Chord(kD, kMajor, kFSharp));
  chord = Chord(kC, kMinor);
  chord.TransposeAndAdjustEnh(3, CScaleLite(kBb, CSemitones(2741)));
  EXPECT_EQ(chord, Chord(kEb, kMinor));
  CChordLite undefined;
  undefined.TransposeAndAdjustEnh(2, cScale);
  EXPECT_EQ(undefined, CChordLite());
}

TEST(ChordInKey, ScaleForChord) {
  const CScaleHeavy& none = CScaleHeavy::Undef;
  const CScaleHeavy cMajor = none.ConstructScaleForChord(Chord(kC, kMajor).ToChordHeavy(24));
  EXPECT_EQ(cMajor.ScaleType(), st_maj);
  EXPECT_EQ(cMajor.RootKeyEnh(), kC);
  EXPECT_EQ(Chord(kC, kMinor).ToChordHeavy(24).ScaleType(), st_min);
  EXPECT_EQ(Chord(kC, 73).ToChordHeavy(24).ScaleType(), st_custom);  // minor with G flat
  EXPECT_EQ(Chord(kC, kDom7).ToChordHeavy(24).ScaleType(), st_majaddb7);
  EXPECT_TRUE(none.ConstructScaleForChord(CChordHeavy()).IsUndef());

  // Keys the base scale lacks join it; a merged set that a table row has takes its type.
  const CScaleHeavy sharpNine = none.ConstructScaleForChord(Chord(kC, kDom7 | 8).ToChordHeavy(24));
  EXPECT_EQ(sharpNine.ScaleType(), st_majmin);
  EXPECT_EQ(sharpNine.ToKeyNrSet(), (CMySet<int>{0, 2, 3, 4, 5, 7, 9, 10, 11}));
  EXPECT_EQ(sharpNine.EnhForKeyNr(3), TEnh_b);
  // A custom scale can't spell itself: it borrows the spelling of the scale it grew from.
  const CScaleHeavy dim = none.ConstructScaleForChord(Chord(kC, 73).ToChordHeavy(24));
  EXPECT_EQ(dim.ToKeyNrSet(), (CMySet<int>{0, 2, 3, 5, 6, 7, 8, 10}));
  const CScaleHeavy cMinor(kC, st_min);
  for (int key = 0; key < 12; ++key) EXPECT_EQ(dim.EnhForKeyNr(key), cMinor.EnhForKeyNr(key));
  EXPECT_EQ(sharpNine.EnhForKeyNr(10), TEnh_b);
  for (int key = 0; key < 12; ++key) EXPECT_NE(sharpNine.EnhForKeyNr(key), TEnh_Undef) << key;

  // In a sign key or a center the scale grows from the key's own scale.
  const CChordHeavy d7 = Chord(kD, kDom7).ToChordHeavy(24);
  const CScaleHeavy inC = d7.ConstructScaleInSignKey(MajorKey(kC));
  EXPECT_EQ(inC.RootKeyEnh(), kC);
  EXPECT_EQ(inC.ToKeyNrSet(), (CMySet<int>{0, 2, 4, 5, 6, 7, 9, 11}));
  EXPECT_EQ(inC.EnhForKeyNr(6), TEnh_s);
  const CScaleHeavy inF = Chord(kC, kDom7).ToChordHeavy(24).ConstructScaleInSignKey(MajorKey(kF));
  EXPECT_EQ(inF.ScaleType(), st_maj);
  EXPECT_EQ(inF.RootKeyEnh(), kF);
  const CHarmCenterLite dorian(kD, CSemitones(1709));
  EXPECT_EQ(Chord(kD, kMin7).ToChordHeavy(24).ConstructScaleInHarmCenter(dorian).ScaleType(),
            st_dorian);

  const CScaleLite lite = CScaleLite().ConstructScaleForChord(Chord(kC, kMinor));
  EXPECT_EQ(lite, CScaleLite(kC, CSemitones(1453)));
  // F major with the F sharp of D7: the semitone above F joins.
  EXPECT_EQ(CScaleLite(kF, CSemitones(2741)).ConstructScaleForChord(Chord(kD, kDom7)),
            CScaleLite(kF, CSemitones(2743)));
}

TEST(ChordInKey, ChordsOfScaleSteps) {
  const CScaleHeavy cMajor(kC, st_maj);
  const auto lite = [](const CChordHeavy& heavy) {
    CChordLite chord;
    chord.SetFromChordHeavy(heavy);
    return chord;
  };
  EXPECT_EQ(lite(cMajor.ChordTriadForScale()), Chord(kC, kMajor));
  EXPECT_EQ(lite(cMajor.ChordFromScaleStepSet({0, 2, 4, 6})), Chord(kC, kMaj7));
  EXPECT_EQ(lite(cMajor.ChordFromScaleStepSet({1, 3, 5})), Chord(kD, kMinor));
  EXPECT_EQ(lite(cMajor.ChordFromScaleStepSet({4, 6, 8, 10})), Chord(kG, kDom7));
  EXPECT_EQ(cMajor.ChordFromScaleStepSet({}).NotesCount(), 0U);
  EXPECT_TRUE(CScaleHeavy::Undef.ChordTriadForScale().IsUndef());
  // Spelled by the scale: the third of D major is F sharp.
  const CChordHeavy dMajor = CScaleHeavy(kD, st_maj).ChordTriadForScale();
  EXPECT_TRUE(dMajor.HasNote(CNote(66, TEnh_s)));
  EXPECT_EQ(CScaleLite(kD, CSemitones(1709)).ChordTriadForScale(), Chord(kD, kMinor));

  EXPECT_TRUE(cMajor.ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(
      Chord(kG, kDom7).ToChordHeavy(24)));
  EXPECT_FALSE(cMajor.ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(
      Chord(kC, kDom7).ToChordHeavy(24)));
  EXPECT_FALSE(cMajor.ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(CChordHeavy()));
  EXPECT_TRUE(cMajor.ChordBasicChordAndBassNoteIsDiatonicInScaleDisregardingEnh(
      Chord(kC, kDom7).ToChordHeavy(24)));
  EXPECT_FALSE(cMajor.ChordBasicChordAndBassNoteIsDiatonicInScaleDisregardingEnh(
      Chord(kC, kMajor, kBb).ToChordHeavy(24)));
}

TEST(ChordInKey, ChordsCompatibleWithScale) {
  const CScaleLite cMajor(kC, CSemitones(2741)), aMinor(kA, CSemitones(1453));
  using namespace ScaleLite;
  EXPECT_FALSE(ChordIncludingOptionsIsDiatonicInScale(Chord(kC, kDom7 | 8), cMajor));
  EXPECT_TRUE(ChordExcludingOptionsIsDiatonicInScale(Chord(kC, kDom7 | 8), cMajor));
  EXPECT_FALSE(ChordExcludingOptionsIsDiatonicInScale(Chord(kC, kMajor, kBb), cMajor));

  // The usual guests of C major: E flat, B flat (also as seventh chords) and F minor.
  for (const CChordLite& guest : {Chord(kEb, kMajor), Chord(kBb, kMajor), Chord(kBb, kDom7),
                                  Chord(kF, kMinor), Chord(kF, kMin7)}) {
    EXPECT_TRUE(IsCompatibleOutlierChordOfScale(guest, cMajor)) << guest.StringForInitializerList();
    EXPECT_TRUE(ChordIsCompatibleWithScale(guest, cMajor));
  }
  for (const CChordLite& stranger : {Chord(kEb, kMinor), Chord(CKeyEnh(8, TEnh_b), kMajor),
                                     Chord(kF, kMinor | 16), Chord(kFSharp, kMajor)}) {
    EXPECT_FALSE(IsCompatibleOutlierChordOfScale(stranger, cMajor))
        << stranger.StringForInitializerList();
  }
  EXPECT_FALSE(IsCompatibleOutlierChordOfScale(Chord(kC, kMajor), aMinor));
  // A dominant triad on the fifth degree fits: E7 in A minor.
  EXPECT_TRUE(ChordIsCompatibleWithScale(Chord(kE, kDom7), aMinor));
  EXPECT_FALSE(ChordIsCompatibleWithScale(Chord(kD, kDom7), cMajor));
  EXPECT_TRUE(ChordIsCompatibleWithScale(Chord(kD, kMinor), cMajor));

  EXPECT_EQ(CSignKeyLite(kA, TSignKeyType::Minor).ToChord(), Chord(kA, kMinor));
  EXPECT_EQ(CSignKeyLite(kBb, TSignKeyType::Major).ToChord(), Chord(kBb, kMajor));
  EXPECT_EQ(CSignKeyLite().ToChord(), CChordLite());
}

// The diatonic test reads key sets where it can; it must agree with the heavy chord in the
// heavy scale for every mask, on roots, basses and spellings of all kinds, in scales of
// every sort, with and without a root.
TEST(ChordInKey, DiatonicTestAgreesWithTheHeavyChordInTheHeavyScale) {
  const CScaleLite scales[] = {
      CScaleLite(kC, CSemitones(2741)),      CScaleLite(kA, CSemitones(1453)),
      CScaleLite(kFSharp, CSemitones(1709)), CScaleLite(kBb, CSemitones(2477)),
      CScaleLite(kEb, CSemitones(4095)),     CScaleLite(kD, CSemitones(0)),
      CScaleLite(kNoKey, CSemitones(2741)),  CScaleLite(CKeyEnh(9, TEnh_Undef), CSemitones(661))};
  const TEnh spellings[] = {TEnh_n, TEnh_b, TEnh_s, TEnh_bb, TEnh_Undef};
  int checked = 0;
  for (std::uint64_t mask = 0; mask < 4096; ++mask) {
    const int root = static_cast<int>(mask % 13) == 12 ? kKeyNrUndef : static_cast<int>(mask % 13);
    const int bass =
        static_cast<int>(mask / 13 % 13) == 12 ? kKeyNrUndef : static_cast<int>(mask / 13 % 13);
    const TEnh enh = spellings[mask % 5];
    const CChordLite chord(CKeyEnh(root, enh), CSemitones(mask),
                           bass == kKeyNrUndef ? kNoKey : CKeyEnh(bass, spellings[mask / 7 % 4]));
    for (const CScaleLite& scale : scales) {
      const bool heavy =
          CScaleHeavy(scale.RootKeyEnh, scale.Semitones)
              .ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(chord.ToChordHeavy(24));
      ASSERT_EQ(ScaleLite::ChordIncludingOptionsIsDiatonicInScale(chord, scale), heavy)
          << chord.StringForInitializerList() << " in " << scale.StringForInitializerList();
      checked += heavy;
    }
  }
  EXPECT_GT(checked, 100);  // the masks reach into the scales often enough to test both ways
}

}  // namespace
}  // namespace harmony
