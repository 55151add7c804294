#include "harmony/chords/ChordHeavy.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "TestText.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/CompingRange.h"

namespace harmony {
namespace {

constexpr CKeyEnh kC(0, TEnh_n), kD(2, TEnh_n), kE(4, TEnh_n), kBb(10, TEnh_b), kNoKey;
constexpr int kWrap = 24;

CChordHeavy FromLite(CKeyEnh root, std::uint64_t mask, CKeyEnh bass = kNoKey) {
  return CChordLite(root, CSemitones(mask), bass).ToChordHeavy(kWrap);
}

CChordLite ToLite(const CChordHeavy& heavy) {
  CChordLite lite;
  lite.SetFromChordHeavy(heavy);
  return lite;
}

std::vector<long> NoteNrs(const CChordHeavy& chord) {
  std::vector<long> nrs;
  for (const CNote& note : chord.Notes()) nrs.push_back(note.NoteNr());
  return nrs;
}

std::vector<int> Intvls(const CChordHeavy& chord) {
  return std::vector<int>(chord.IntvlSet().begin(), chord.IntvlSet().end());
}

CChordHeavy Played(CNote root, std::initializer_list<unsigned char> noteNrs) {
  return CChordHeavy(root, CMySet<unsigned char>(noteNrs), kWrap);
}

TEST(ChordHeavy, CompingRange) {
  EXPECT_EQ(ToCompingRangeNoteNr(0), 60);
  EXPECT_EQ(ToCompingRangeNoteNr(65), 65);
  EXPECT_EQ(ToCompingRangeNoteNr(66), 54);
  EXPECT_EQ(ToCompingRangeNoteNr(-1), -1);
  // Tensions keep their register above the root within start + wrap.
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(60, 14, 24), 74);
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(60, 14, 12), 62);
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(0, 4, 24), 52 + 24);
  EXPECT_EQ(NoteNrAddIntvlToCompingPlusWrapIntvlRange(-1, 4, 24), -1);
}

// The root sits in the comping range, the bass (or else the root) in octave -1, and the mask
// of the light form never holds a tone that sounds only in the bass.
TEST(ChordHeavy, FromSemitonesWithBassSlot) {
  const CChordHeavy c(kC, CSemitones(145), kNoKey, kWrap);
  EXPECT_EQ(NoteNrs(c), (std::vector<long>{0, 60, 64, 67}));
  EXPECT_EQ(Intvls(c), (std::vector<int>{0, 4, 7}));
  EXPECT_FALSE(c.BassNoteHasIntvlAlone());  // note 60 shares the interval 0
  EXPECT_FALSE(c.IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate());
  EXPECT_FALSE(c.IsSlashChord());

  const CChordHeavy overE(kC, CSemitones(145), kE, kWrap);
  EXPECT_EQ(NoteNrs(overE), (std::vector<long>{4, 60, 64, 67}));
  EXPECT_EQ(ToLite(overE), CChordLite(kC, CSemitones(145), kE));
  EXPECT_TRUE(overE.IsSlashChord());

  const CChordHeavy overD(kC, CSemitones(145), kD, kWrap);
  EXPECT_TRUE(overD.BassNoteHasIntvlAlone());
  EXPECT_EQ(Intvls(overD), (std::vector<int>{0, 2, 4, 7}));
  EXPECT_EQ(ToLite(overD), CChordLite(kC, CSemitones(145), kD));
  EXPECT_EQ(overD.BasicChord(), kBasicChordMajor);

  // A ninth an octave above the bass's second does not end the bass's aloneness: only the
  // literal interval counts, so the light form loses the ninth with the bass tone.
  CChordHeavy ninthAbove(kC, CSemitones(145), kD, kWrap);
  ninthAbove.AddNote(CNote(74, TEnh_n));
  EXPECT_TRUE(ninthAbove.BassNoteHasIntvlAlone());
  EXPECT_EQ(ToLite(ninthAbove).Semitones, CSemitones(145));
  CChordHeavy ninthInOctave(kC, CSemitones(145), kD, kWrap);
  ninthInOctave.AddNote(CNote(62, TEnh_n));
  EXPECT_FALSE(ninthInOctave.BassNoteHasIntvlAlone());
  EXPECT_EQ(ToLite(ninthInOctave).Semitones, CSemitones(149));

  // Constructors from notes and from intervals.
  const CChordHeavy fromNote(CNote(62, TEnh_n), CSemitones(137), CNote::Undef);
  EXPECT_EQ(NoteNrs(fromNote), (std::vector<long>{2, 62, 65, 69}));
  const CChordHeavy ninth(kC, CIntvlSet{0, 4, 7, 10, 14}, kBb, kWrap);
  EXPECT_EQ(NoteNrs(ninth), (std::vector<long>{10, 60, 64, 67, 70, 74}));
  EXPECT_EQ(ToLite(ninth), CChordLite(kC, CSemitones(1173), kBb));
  const CChordHeavy inRange(CNote(65, TEnh_n), CIntvlSet{0, 4, 7, 14}, CNote::Undef);
  EXPECT_EQ(NoteNrs(inRange), (std::vector<long>{5, 55, 65, 69, 72}));  // 79 folds down
}

// The chord from root, mask and bass is built in one go; it must be the chord that setting
// the root, the mask and the bass one after the other gives, for every mask and for roots
// and basses of every spelling, odd ones included.
TEST(ChordHeavy, FromSemitonesAsSetStepByStep) {
  const TEnh spellings[] = {TEnh_n, TEnh_b, TEnh_s, TEnh_bb, TEnh_ss, TEnh_bbb, TEnh_Undef};
  const int wraps[] = {24, 12, 36, 11, 7, 0};
  for (std::uint64_t mask = 0; mask < 4096 + 8; ++mask) {
    const CKeyEnh root(static_cast<int>(mask * 5 % 12), spellings[mask % 7]);
    const int bassKey = static_cast<int>(mask / 7 % 13);
    const CKeyEnh bass = bassKey == 12 ? CKeyEnh() : CKeyEnh(bassKey, spellings[mask / 3 % 7]);
    const int wrap = wraps[mask % std::size(wraps)];
    const CChordHeavy built(root, CSemitones(mask), bass, wrap);
    CChordHeavy stepwise(wrap);
    stepwise.SetRootKeyEnh(root);
    stepwise.SetSemitones(CSemitones(mask));
    stepwise.RemoveBassNote();
    const CKeyEnh slot = bass.IsUndef() ? stepwise.RootKeyEnh() : bass;
    stepwise.SetBassNoteInOctave(slot.KeyNr, -1, slot.Enh);
    stepwise.UpdateIntvlSetAndBassNoteHasIntvlAlone();
    ASSERT_TRUE(built.IsExactlyTheSame(stepwise)) << mask;
    ASSERT_EQ(built.RootNoteSpecified(), stepwise.RootNoteSpecified()) << mask;
    ASSERT_EQ(built.IntvlSet(), stepwise.IntvlSet()) << mask;
    ASSERT_EQ(built.BassNoteHasIntvlAlone(), stepwise.BassNoteHasIntvlAlone()) << mask;
  }
}

TEST(ChordHeavy, FromPlayedNotesAndKeys) {
  // The root follows the lowest note while it is not specified.
  CChordHeavy played = Played(CNote::Undef, {64, 60, 67});
  EXPECT_EQ(played.RootNote(), CNote(60, TEnh_n));
  EXPECT_FALSE(played.RootNoteSpecified());
  EXPECT_EQ(ToLite(played), CChordLite(kC, CSemitones(145)));  // no bass without bass slot
  played.AddNote(CNote(55, TEnh_n));
  EXPECT_EQ(played.RootNote(), CNote(55, TEnh_n));
  EXPECT_EQ(Intvls(played), (std::vector<int>{0, 5, 9, 12}));

  // A given root stays, whatever is lowest.
  const CChordHeavy onA = Played(CNote(57, TEnh_n), {60, 64, 67, 69});
  EXPECT_EQ(ToLite(onA), CChordLite(CKeyEnh(9, TEnh_n), CSemitones(1161)));
  const CChordHeavy fromNotes(CNote::Undef, CMySet<CNote>{CNote(63, TEnh_s), CNote(67, TEnh_n)},
                              kWrap);
  EXPECT_EQ(fromNotes.RootKeyEnh(), CKeyEnh(3, TEnh_s));

  CChordHeavy keys(kWrap);
  keys.SetRootKeyNr(0);
  keys.SetFromKeyNrSet({0, 4, 7, 11});
  EXPECT_EQ(NoteNrs(keys), (std::vector<long>{55, 59, 60, 64}));
  EXPECT_TRUE(keys.HasExactTheseKeyNrs(7, 0, 4, 11, -1));
  EXPECT_FALSE(keys.HasExactTheseKeyNrs(0, 4, 7, -1));
  EXPECT_TRUE(keys.HasKeyNrs(11, 4, -1) && !keys.HasKeyNrs(4, 2, -1));
  EXPECT_EQ(keys.Semitones(), CSemitones(2193));

  const CChordHeavy triad(9, kBasicChordMinor, kWrap);  // A minor
  EXPECT_EQ(ToLite(triad), CChordLite(CKeyEnh(9, TEnh_n), CSemitones(137)));
  const CChordHeavy withBass(kC, kBasicChordMajor, kE);
  EXPECT_EQ(ToLite(withBass), CChordLite(kC, CSemitones(145), kE));
}

TEST(ChordHeavy, UndefinedAndNoChordStates) {
  EXPECT_TRUE(CChordHeavy_Undef.IsUndef());
  EXPECT_TRUE(CChordHeavy_NoChordYield.IsNoChordYield() &&
              CChordHeavy_NoChordForce.IsNoChordForce());
  EXPECT_FALSE(CChordHeavy_Undef.IsNoChordYield() || CChordHeavy_Undef.IsNoChordForce());
  EXPECT_TRUE(CChordLite_NoChordYield.ToChordHeavy(kWrap).IsNoChordYield());
  EXPECT_TRUE(CChordLite_NoChordForce.ToChordHeavy(12).IsNoChordForce());
  // The constants keep their own wrap interval; the undefined chord takes the argument.
  EXPECT_EQ(CChordLite_NoChordForce.ToChordHeavy(12).IntvlSet().WrapIntvl(), 24);
  EXPECT_EQ(CChordLite().ToChordHeavy(12).IntvlSet().WrapIntvl(), 12);
  for (const CChordLite& lite : {CChordLite(), CChordLite_NoChordYield, CChordLite_NoChordForce}) {
    EXPECT_EQ(ToLite(lite.ToChordHeavy(kWrap)), lite);
  }
  EXPECT_EQ(CChordHeavy().Semitones(), CSemitones(1));

  CChordHeavy chord = FromLite(kC, 145);
  chord.SetNoChordYield();  // the notes stay
  EXPECT_TRUE(chord.IsNoChordYield());
  EXPECT_EQ(chord.NotesCount(), 4U);
  chord.SetUndef();
  EXPECT_TRUE(chord.IsUndef() && chord.NotesCount() == 0 && chord.RootNoteSpecified());
}

// Converting every mask on several spelled roots and basses and back gives the chord again.
TEST(ChordHeavy, LiteRoundTrip) {
  const CKeyEnh roots[] = {kC, CKeyEnh(1, TEnh_s), CKeyEnh(3, TEnh_b), CKeyEnh(6, TEnh_s),
                           CKeyEnh(11, TEnh_n)};
  const CKeyEnh basses[] = {kNoKey, kE, CKeyEnh(7, TEnh_n), kBb};
  for (const CKeyEnh& root : roots) {
    for (const CKeyEnh& bass : basses) {
      for (std::uint64_t mask = 1; mask < 4096; mask += 2) {
        const CChordLite lite(root, CSemitones(mask), bass.KeyNr == root.KeyNr ? kNoKey : bass);
        ASSERT_EQ(ToLite(lite.ToChordHeavy(kWrap)), lite) << lite.StringForInitializerList();
      }
    }
  }
}

// The dirty flag: a run of changes rebuilds the interval cache once, on the next read.
TEST(ChordHeavy, IntervalCache) {
  CChordHeavy chord(CNote(60, TEnh_n), CSemitones(145), CNote::Undef);
  chord.AddNote(CNote(70, TEnh_b));
  chord.AddNote(CNote(74, TEnh_n));
  EXPECT_TRUE(chord.IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate());
  EXPECT_EQ(Intvls(chord), (std::vector<int>{0, 4, 7, 10, 14}));
  EXPECT_FALSE(chord.IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate());
  chord.DelNote(CNote(74, TEnh_n));
  EXPECT_EQ(Intvls(chord), (std::vector<int>{0, 4, 7, 10}));
  chord.IntvlSet_SetWrapIntvl(12);
  chord.AddNote(CNote(74, TEnh_n));
  EXPECT_EQ(Intvls(chord), (std::vector<int>{0, 2, 4, 7, 10}));

  // Without a basic chord the triad tones leave the cache but not the notes, so the next
  // rebuild brings them back.
  CChordHeavy none = FromLite(kC, 1169);
  none.SetBasicChord(kBasicChordNone);
  EXPECT_EQ(Intvls(none), (std::vector<int>{0, 10}));
  EXPECT_EQ(none.NotesCount(), 5U);
  none.IntvlSet_SetWrapIntvl(kWrap);
  EXPECT_EQ(Intvls(none), (std::vector<int>{0, 4, 7, 10}));
}

TEST(ChordHeavy, SetBasicChordBendsTheTriad) {
  CChordHeavy maj7 = FromLite(kC, 2193);
  maj7.SetBasicChord(kBasicChordMinor);
  EXPECT_EQ(NoteNrs(maj7), (std::vector<long>{0, 60, 63, 67, 71}));

  CChordHeavy m7 = FromLite(kC, 1161);
  m7.SetBasicChord(kBasicChordPower);
  EXPECT_EQ(Intvls(m7), (std::vector<int>{0, 7, 12}));
  EXPECT_EQ(NoteNrs(m7), (std::vector<long>{0, 60, 67, 72}));

  // From every triad to every other, the chord is then heard as the new triad.
  for (int from = kBasicChordMajor; from <= kBasicChordPower; ++from) {
    for (int to = kBasicChordMajor; to <= kBasicChordPower; ++to) {
      CChordHeavy chord(CKeyEnh(5, TEnh_n), static_cast<TBasicChord>(from), kNoKey);
      chord.SetBasicChord(static_cast<TBasicChord>(to));
      EXPECT_EQ(chord.BasicChord(), to) << from << " -> " << to << ' ' << chord.TraceString();
    }
  }
  CChordHeavy unknown = FromLite(kC, 145);
  unknown.SetBasicChord(static_cast<TBasicChord>(9));
  EXPECT_EQ(NoteNrs(unknown), (std::vector<long>{0, 60, 64, 67}));
}

// The triad rules on tones that sound only in the bass.
TEST(ChordHeavy, BasicChordLooksPastTheBass) {
  struct Case {
    std::uint64_t mask;
    CKeyEnh bass;
    TBasicChord basic, forNaming;
  };
  const Case cases[] = {
      {145, kNoKey, kBasicChordMajor, kBasicChordMajor},
      {1097, kNoKey, kBasicChordDim, kBasicChordMinor},  // half-diminished names as minor
      {73, kNoKey, kBasicChordDim, kBasicChordDim},
      {585, kNoKey, kBasicChordDim, kBasicChordDim},
      {81, kNoKey, kBasicChordMajorFlat5, kBasicChordMajorFlat5},
      {273, kNoKey, kBasicChordAug, kBasicChordAug},
      {393, kNoKey, kBasicChordMinor, kBasicChordMinor},  // 0 3 7 8: the fifth wins
      {265, kNoKey, kBasicChordNone, kBasicChordNone},    // 0 3 8: a major sixth chord
      {9, kNoKey, kBasicChordMinor, kBasicChordMinor},
      {129, kNoKey, kBasicChordPower, kBasicChordPower},
      {1, kNoKey, kBasicChordNone, kBasicChordNone},
      // A minor third over a major third that sounds only in the bass: minor, not major.
      {137, kE, kBasicChordMinor, kBasicChordMinor},
      // Any fifth, even one only in the bass, makes 0 3 8 a minor chord.
      {265, CKeyEnh(7, TEnh_n), kBasicChordMinor, kBasicChordMinor},
      // A second only in the bass: neither power chord nor sus2, but naming counts the tone.
      {129, kD, kBasicChordNone, kBasicChordSus2},
      {145, kBb, kBasicChordMajor, kBasicChordMajor},
  };
  for (const Case& c : cases) {
    const CChordHeavy chord = FromLite(kC, c.mask, c.bass);
    EXPECT_EQ(chord.BasicChord(), c.basic) << c.mask << ' ' << c.bass.KeyNr;
    EXPECT_EQ(chord.BasicChordForNaming(), c.forNaming) << c.mask << ' ' << c.bass.KeyNr;
  }
  // On chords without a bass-only tone the heavy rules agree with the light ones.
  for (std::uint64_t mask = 1; mask < 4096; mask += 2) {
    const CChordLite lite(kC, CSemitones(mask));
    ASSERT_EQ(lite.ToChordHeavy(kWrap).BasicChord(), lite.BasicChord()) << mask;
  }
  EXPECT_EQ(FromLite(kC, 1169).IntvlSetOfBasicChord(kIgnoreBassNoteForPositiveMatch_Yes),
            (CIntvlSet{0, 4, 7}));
  EXPECT_TRUE(FromLite(kC, 1).IntvlSetOfBasicChord(kIgnoreBassNoteForPositiveMatch_Yes).empty());
  EXPECT_EQ(FromLite(kD, 137, kBb).KeyNrSetOfBasicChordAndBassNote(), (CMySet<int>{2, 5, 9, 10}));
  EXPECT_EQ(FromLite(kD, 137, kBb).BasicChordSemitones(), CSemitones(137));
}

TEST(ChordHeavy, BassSlot) {
  CChordHeavy chord = FromLite(kC, 145);
  chord.AddBassNoteKeepingFormer(CNote(4, TEnh_n));  // the former bass C joins the chord
  EXPECT_EQ(NoteNrs(chord), (std::vector<long>{4, 60, 64, 67}));
  EXPECT_EQ(ToLite(chord), CChordLite(kC, CSemitones(145), kE));
  chord.SetBassNoteDeletingFormer(CNote(43, TEnh_n));  // any octave: the key counts
  EXPECT_EQ(NoteNrs(chord), (std::vector<long>{7, 60, 64, 67}));
  chord.SetBassKeyEnh(kBb);
  EXPECT_EQ(ToLite(chord), CChordLite(kC, CSemitones(145), kBb));
  EXPECT_EQ(chord.CountNotesInOctave(-1), 1);
  chord.SetBassNoteInOctave(2, -1, TEnh_n);
  EXPECT_EQ(chord.CountNotesInOctave(-1), 2);
  chord.SetBassNoteAloneInOctave(15, -3, TEnh_Undef);  // key 15 lands on 3, octave -1
  EXPECT_EQ(NoteNrs(chord), (std::vector<long>{3, 60, 64, 67}));
  chord.SetBassNoteInOctave(0, 12, TEnh_s);  // octaves from 10 up count as 8; B sharp stays
  EXPECT_EQ(chord.HighestNote(), CNote(108, TEnh_s));
  chord.RemoveBassNote();
  EXPECT_EQ(chord.CountNotesInOctave(-1), 0);
  EXPECT_EQ(ToLite(chord).BassKeyEnh, kNoKey);
}

TEST(ChordHeavy, InvertAndTranspose) {
  CChordHeavy chord = Played(CNote(60, TEnh_n), {60, 64, 67});
  chord.Invert();
  EXPECT_EQ(NoteNrs(chord), (std::vector<long>{64, 67, 72}));
  chord.Invert();
  EXPECT_EQ(NoteNrs(chord), (std::vector<long>{67, 72, 76}));
  EXPECT_EQ(chord.RootNote(), CNote(60, TEnh_n));
  EXPECT_EQ(Intvls(chord), (std::vector<int>{7, 12, 16}));
  // A key above the highest note's key goes into that note's octave.
  CChordHeavy high = Played(CNote(62, TEnh_n), {62, 72});
  high.Invert();
  EXPECT_EQ(NoteNrs(high), (std::vector<long>{72, 74}));
  CChordHeavy top = Played(CNote(60, TEnh_n), {60, 118});
  top.Invert();
  EXPECT_EQ(NoteNrs(top), (std::vector<long>{108, 118}));

  CChordHeavy folded = Played(CNote(60, TEnh_n), {0, 60, 120});
  folded.Transpose(12);
  EXPECT_EQ(NoteNrs(folded), (std::vector<long>{12, 72, 120}));
  // Only the first note may stay in the bass slot.
  CChordHeavy slot = Played(CNote(60, TEnh_n), {0, 14});
  slot.Transpose(-5);
  EXPECT_EQ(NoteNrs(slot), (std::vector<long>{7, 21}));

  CChordHeavy c = FromLite(kC, 1169, kE);
  c.Transpose(-2);
  EXPECT_EQ(ToLite(c), CChordLite(kBb, CSemitones(1169), kD));
  c.Transpose(2);
  EXPECT_EQ(ToLite(c), CChordLite(kC, CSemitones(1169), kE));
}

TEST(ChordHeavy, Comparisons) {
  const CChordHeavy c = FromLite(kC, 145);
  const CChordHeavy cOverE = FromLite(kC, 145, kE);
  const CChordHeavy cSharp = FromLite(CKeyEnh(1, TEnh_s), 145);
  const CChordHeavy dFlat = FromLite(CKeyEnh(1, TEnh_b), 145);
  EXPECT_TRUE(c == FromLite(kC, 145) && c != cOverE);
  EXPECT_TRUE(c.IsHarmonicallyTheSame(cOverE));  // the same keys on the same root
  EXPECT_TRUE(cSharp.IsHarmonicallyTheSame(dFlat) && !cSharp.IsExactlyTheSame(dFlat));
  EXPECT_FALSE(c.IsHarmonicallyTheSame(FromLite(kE, 137, kC)));
  EXPECT_EQ(FromLite(kBb, 145).ChordKeyNrFromKeyNr(2), 4);
  EXPECT_EQ(FromLite(kBb, 145).KeyNrFromChordKeyNr(4), 2);
  EXPECT_EQ(cOverE.IntvlIxToNote(1), CNote(64, TEnh_n));
  EXPECT_EQ(cOverE.IntvlIxToKeyNr(2), 7);
  EXPECT_FALSE(FromLite(kC, 145, kD).HasIntvlInAnyOctaveButNotInBassNoteAlone(2));
}

TEST(ChordHeavy, XGChordIndex) {
  const std::pair<std::uint64_t, int> cases[] = {
      {145, 0},         {1169, 19}, {1681, 24}, {137, 8}, {1161, 10},
      {273, 7},         {129, 31},  {1, 30},    {81, 34},  // major flat 5 has no row
      {145 | 2 | 64, 0}                                    // unknown: by the basic chord
  };
  for (const auto& [mask, index] : cases) {
    EXPECT_EQ(FromLite(kC, mask).XGChordIx(), index) << mask;
  }
  // A ninth above the octave is not the row's second.
  EXPECT_EQ(CChordHeavy(kC, CIntvlSet{0, 4, 7, 14}, kNoKey, kWrap).XGChordIx(), 0);
}

TEST(ChordHeavy, JsonAndTrace) {
  EXPECT_EQ(testing::Json(FromLite(kC, 137)),
            std::string(R"({"root":{"name":"C3","nr":60,"enh":"neutral"},"basic":)") + '\x02' +
                R"(,"notes":[{"name":"C-2","nr":0,"enh":"neutral"},)"
                R"({"name":"C3","nr":60,"enh":"neutral"},{"name":"E♭3","nr":63,"enh":"flat"},)"
                R"({"name":"G3","nr":67,"enh":"neutral"}]})");
  const CChordHeavy chord = FromLite(kC, 1169, kE);
  EXPECT_EQ(chord.TraceString(),
            "CChordHeavy: Name C7/E, RootNote C3 (Enh neutral), BassNote E-2 (Enh neutral), "
            "Notes: E-2 C3 E3 G3 B♭3");
  EXPECT_EQ(chord.TraceBriefString(), "C7/E");
  EXPECT_EQ(Played(CNote(60, TEnh_n), {60, 70}).StringForInitializerList(),
            "CChordHeavy(CNote(60, TEnh_n), {CNote(60, TEnh_n), CNote(70, TEnh_b)}, 24)");
}

}  // namespace
}  // namespace harmony
