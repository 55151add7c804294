#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony {
namespace {

CChordHeavy Played(std::initializer_list<int> noteNrs) {
  CMySet<unsigned char> set;
  for (int noteNr : noteNrs) set.insert(static_cast<unsigned char>(noteNr));
  return CChordHeavy(CNote::Undef, set, CIntvlSet::kDefaultWrapIntvl);
}

CChordHeavy Detected(std::initializer_list<int> noteNrs, TSingleChordAnalysisAlgo algo) {
  CChordHeavy chord = Played(noteNrs);
  if (algo == kSingleChordAnalysisAlgoNeuronalNet) chord.SetWrapIntvlToNeuronalNetInputCount();
  chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(algo);
  return chord;
}

int RootKey(std::initializer_list<int> noteNrs, TSingleChordAnalysisAlgo algo) {
  return Detected(noteNrs, algo).RootNote().KeyNr();
}

constexpr auto kTable = kSingleChordAnalysisAlgoProbTable;
constexpr auto kNet = kSingleChordAnalysisAlgoNeuronalNet;

TEST(RootDetection, TableWeightsAndShortcuts) {
  // C E G: C collects root, third and fifth.
  const CChordHeavy cMajor = Played({60, 64, 67});
  EXPECT_EQ(cMajor.ProbThatNoteIsRootNote(CNote(0, TEnh_n)), 18 + 12 + 14);
  EXPECT_EQ(cMajor.ProbThatNoteIsRootNote(CNote(4, TEnh_n)), 18 + 12 + 1);
  EXPECT_EQ(RootKey({60, 64, 67}, kTable), 0);
  // The inversions weigh by key, so the lowest note does not decide.
  EXPECT_EQ(RootKey({64, 67, 72}, kTable), 0);
  EXPECT_EQ(RootKey({55, 60, 64}, kTable), 0);

  // 0 3 6 10 above F sharp: the half-diminished chord answers at once for its lowest note.
  const CChordHeavy halfDim = Played({54, 57, 60, 64});
  EXPECT_EQ(halfDim.ProbThatNoteIsRootNote(CNote(54, TEnh_s)), 48);
  EXPECT_EQ(RootKey({54, 57, 60, 64}, kTable), 6);
  // 0 6 11 and 0 2 6 11 name the key two above the lowest note, but never by wrapping.
  EXPECT_EQ(Played({52, 58, 63}).ProbThatNoteIsRootNote(CNote(6, TEnh_n)), 33);
  EXPECT_EQ(Played({52, 54, 58, 63}).ProbThatNoteIsRootNote(CNote(6, TEnh_n)), 45);
  EXPECT_NE(Played({58, 64, 69}).ProbThatNoteIsRootNote(CNote(0, TEnh_n)), 33);
  EXPECT_EQ(Played({60, 64, 69, 70}).ProbThatNoteIsRootNote(CNote(0, TEnh_n)), 45);

  // An open fifth with a doubled note (the octave wraps at 24): 5 instead of the sum 3 + 1.
  EXPECT_EQ(Played({60, 67, 84}).ProbThatNoteIsRootNote(CNote(0, TEnh_n)), 5);
  EXPECT_EQ(Played({60, 67}).ProbThatNoteIsRootNote(CNote(0, TEnh_n)), 4);
}

TEST(RootDetection, TableTieRules) {
  // C F: C sharp, D and F all weigh 4. C sharp comes first; D is farther from the lowest
  // note and stays behind; F sounds in the chord and wins.
  const CChordHeavy fourth = Played({60, 65});
  for (int key : {1, 2, 5}) EXPECT_EQ(fourth.ProbThatNoteIsRootNote(CNote(key, TEnh_n)), 4);
  EXPECT_EQ(RootKey({60, 65}, kTable), 5);
  // C F sharp: D and G sharp weigh 4 and neither sounds: the one nearer the lowest note.
  EXPECT_EQ(RootKey({60, 66}, kTable), 2);
  EXPECT_EQ(RootKey({66, 72}, kTable), 8);
}

TEST(RootDetection, ResultRootSpellingAndBass) {
  // The found root is fixed, sits in the bass slot and is spelled with the fewest signs.
  const CChordHeavy chord = Detected({63, 67, 70}, kTable);
  EXPECT_TRUE(chord.RootNoteSpecified());
  EXPECT_EQ(chord.RootKeyEnh(), CKeyEnh(3, TEnh_b));
  EXPECT_EQ(chord.BassNote().NoteNr(), 3);
  EXPECT_EQ(chord.Name(), "E♭");
  // The notes are respelled from the scale of the chord: F sharp major's A sharp, not B flat.
  const CChordHeavy fSharp = Detected({66, 70, 73}, kTable);
  EXPECT_EQ(fSharp.RootKeyEnh().KeyNr, 6);
  for (const CNote& note : fSharp.Notes()) {
    if (note.KeyNr() == 10) {
      EXPECT_EQ(note.Enh(), fSharp.RootKeyEnh().Enh == TEnh_s ? TEnh_s : TEnh_b);
    }
  }

  for (auto algo : {kTable, kNet}) {
    CChordHeavy empty;
    empty.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(algo);
    EXPECT_TRUE(empty.IsUndef());
    EXPECT_EQ(empty.NotesCount(), 0u);
  }
}

TEST(RootDetection, NetOnWellKnownVoicings) {
  struct Case {
    std::initializer_list<int> notes;
    int root;
  };
  const Case cases[] = {
      {{60, 64, 67}, 0},              // C, close
      {{64, 67, 72}, 0},              // C/E
      {{55, 60, 64}, 0},              // C/G
      {{48, 55, 64}, 0},              // C, open
      {{57, 60, 64}, 9},              // Am
      {{55, 59, 62, 65}, 7},          // G7
      {{59, 62, 65, 67}, 7},          // G7/B
      {{48, 55, 59, 64}, 0},          // Cmaj7, drop 2
      {{57, 64, 67, 72}, 9},          // Am7, drop 2
      {{60, 64, 67, 69}, 0},          // C6, not Am7
      {{57, 60, 64, 67}, 9},          // Am7
      {{50, 57, 60, 65}, 2},          // Dm7 drop 2
      {{43, 53, 59, 64}, 7},          // G13, no fifth
      {{60, 63, 66, 69}, 0},          // diminished seventh: from its lowest note
      {{60, 64, 68}, 0},              // augmented: from its lowest note
      {{60, 62, 67}, 0},              // Csus2
      {{60, 65, 67}, 0},              // Csus4
      {{54, 57, 60, 64}, 6},          // F sharp half-diminished
      {{40, 47, 52, 56, 59, 64}, 4},  // E major, guitar shape
      {{53, 57, 62, 65}, 2},          // D minor over F, not F6 without its fifth
      {{57, 60, 65}, 5},              // F over A
      {{52, 57, 61}, 9},              // A over E
      {{45, 53, 60}, 5},              // F over A, open
  };
  for (const Case& c : cases) {
    EXPECT_EQ(RootKey(c.notes, kNet), c.root) << Played(c.notes).TraceString();
  }
  // Under the net the result is fixed and spelled like the table's.
  const CChordHeavy chord = Detected({63, 67, 70, 74}, kNet);
  EXPECT_EQ(chord.RootKeyEnh(), CKeyEnh(3, TEnh_b));
  EXPECT_EQ(chord.Name(), "E♭(ma7)");
}

TEST(RootDetection, WrapIntvlFollowsNetInputs) {
  CChordHeavy chord(12);
  chord.SetFromNoteNrSet(CMySet<unsigned char>{48, 64, 79});
  EXPECT_EQ(chord.IntvlSet(), (CIntvlSet{0, 4, 7}));
  chord.SetWrapIntvlToNeuronalNetInputCount();
  EXPECT_EQ(chord.IntvlSet().WrapIntvl(), 24);
  EXPECT_EQ(chord.IntvlSet(), (CIntvlSet{0, 7, 16}));
}

TEST(RootDetection, ClosenessToSignKey) {
  const CSignKeyHeavy cMajorKey(0, TSignKeyTypeNoUndef::Major);
  const auto triad = [](int root, TBasicChord basic) { return CChordHeavy(root, basic, 24); };
  EXPECT_EQ(triad(0, kBasicChordMajor).ClosenessToSignKey(cMajorKey), 2);
  EXPECT_EQ(triad(7, kBasicChordMajor).ClosenessToSignKey(cMajorKey), 2);
  EXPECT_EQ(triad(2, kBasicChordMinor).ClosenessToSignKey(cMajorKey), 2);
  // E flat major: 0 from the table, less E flat and B flat outside the key.
  const CChordHeavy eFlat = triad(3, kBasicChordMajor);
  EXPECT_EQ(eFlat.CountIntvlsNotInSignKey(cMajorKey), 2);
  EXPECT_EQ(eFlat.CountIntvlsInSignKey(cMajorKey), 1);
  EXPECT_EQ(eFlat.ClosenessToSignKey(cMajorKey), -2);
  // Augmented and diminished triads in a major key: 2 less the tones outside.
  EXPECT_EQ(triad(11, kBasicChordDim).ClosenessToSignKey(cMajorKey), 2);
  EXPECT_EQ(triad(0, kBasicChordAug).ClosenessToSignKey(cMajorKey), 1);
  // No row for major flat five: tones inside less tones outside (C E G flat: 2 - 1).
  EXPECT_EQ(triad(0, kBasicChordMajorFlat5).ClosenessToSignKey(cMajorKey), 1);

  // A minor: the dominant E major is close (harmonic minor), G sharp outside the key.
  const CSignKeyHeavy aMinorKey(9, TSignKeyTypeNoUndef::Minor);
  EXPECT_EQ(triad(4, kBasicChordMajor).ClosenessToSignKey(aMinorKey), 2 - 1);
  EXPECT_EQ(triad(9, kBasicChordMinor).ClosenessToSignKey(aMinorKey), 2);
  EXPECT_EQ(triad(11, kBasicChordDim).ClosenessToSignKey(aMinorKey), 2);

  EXPECT_EQ(triad(4, kBasicChordMajor).RootNoteDegreeNrInSignKey(cMajorKey), 2);
  EXPECT_EQ(triad(1, kBasicChordMajor).RootNoteDegreeNrInSignKey(cMajorKey), -1);
  EXPECT_EQ(Played({64, 67, 72}).BassNoteDegreeNrInSignKey(cMajorKey), 2);
  EXPECT_EQ(Played({61, 65, 68}).CountNotesNotInSignKey(cMajorKey), 2);
}

// The spelling by the chord's scale, with the heavy scale built afresh for every question:
// what the kept spellings must reproduce.
TEnh ReferenceEnhWithLeastSigns(const CChordHeavy& chord) {
  CNote given = chord.RootNote();
  given.MakeSensefulEnhAssumingCMajor();
  CNote flats = given;
  flats.EnhShiftToFlats();
  CNote sharps = given;
  sharps.EnhShiftToSharps();
  const auto signs = [&chord](const CNote& root) {
    CChordHeavy rooted = chord;
    rooted.SetRootNote(root);
    return std::abs(CScaleHeavy::Undef.ConstructScaleForChord(rooted).SignsCount());
  };
  const int a = signs(given);
  const int b = signs(flats);
  const int c = signs(sharps);
  if (b >= a) return c >= a ? given.Enh() : sharps.Enh();
  return c >= b ? flats.Enh() : sharps.Enh();
}

CMySet<CNote> ReferenceNotesRespelled(const CChordHeavy& chord) {
  const CScaleHeavy scale = CSignKeyHeavy::Undef.ConstructScaleForChord(chord);
  CMySet<CNote> notes;
  for (CNote note : chord.Notes()) {
    const TEnh enh = scale.EnhForKeyNr(note.KeyNr());
    if (enh != TEnh_Undef) note.SetEnh(enh);
    notes.insert(note);
  }
  return notes;
}

void ExpectSameNotes(const CMySet<CNote>& actual, const CMySet<CNote>& expected,
                     const std::string& context) {
  ASSERT_EQ(actual.size(), expected.size()) << context;
  for (std::size_t i = 0; i < actual.size(); ++i) {
    EXPECT_EQ(actual.begin()[i].NoteNr(), expected.begin()[i].NoteNr()) << context;
    EXPECT_EQ(actual.begin()[i].Enh(), expected.begin()[i].Enh()) << context;
  }
}

// Every key set, rooted on several of its keys in several spellings, with notes spelled
// against the grain and with a foreign bass: the key signature, the root's spelling with the
// fewest signs and the respelled notes equal those of the scale built each time.
TEST(RootDetection, SpellingEqualsTheScaleBuiltEachTime) {
  constexpr TEnh kSpellings[] = {TEnh_n, TEnh_b, TEnh_s, TEnh_bb, TEnh_ss};
  int checked = 0;
  for (unsigned mask = 1; mask < 4096; ++mask) {
    std::vector<int> keys;
    for (int key = 0; key < 12; ++key) {
      if ((mask >> key) & 1u) keys.push_back(key);
    }
    CMySet<CNote> notes;
    for (std::size_t i = 0; i < keys.size(); ++i) {
      // Some notes an octave up, spelled in turn as written, with flats and with sharps.
      const long noteNr = 48 + keys[i] + ((mask >> (i + 3)) & 1u) * 12;
      notes.insert(CNote(noteNr, kSpellings[(mask + i) % 5]));
    }
    for (std::size_t r = 0; r < keys.size(); r += 2) {
      const TEnh rootEnh = kSpellings[(mask / 3 + r) % 5];
      CChordHeavy chord(CNote::Undef, notes, 24);
      chord.SetRootNote(CNote(keys[r] + 12 * static_cast<int>(mask % 3), rootEnh));
      if (mask % 7 == 0) chord.SetBassKeyEnh(CKeyEnh((keys[r] + 5) % 12, TEnh_n));
      const std::string context = chord.TraceString();

      const CScaleHeavy scale = CScaleHeavy::Undef.ConstructScaleForChord(chord);
      CChordHeavy counted = chord;
      EXPECT_EQ(counted.SignsCount(), scale.SignsCount()) << context;
      CNote scaleRoot = scale.RootNote();
      if (scaleRoot.Enh() != TEnh_Undef) scaleRoot.MakeSensefulEnhAssumingCMajor();
      EXPECT_EQ(counted.RootNote().Enh(), scaleRoot.Enh()) << context;

      CChordHeavy leastSigns = chord;
      leastSigns.SetRootNoteEnhWithLeastSigns();
      EXPECT_EQ(leastSigns.RootNote().Enh(), ReferenceEnhWithLeastSigns(chord)) << context;

      CChordHeavy respelled = chord;
      bool changed = true;
      respelled.AdjustEnhOfChordNotesToRootScale(&changed);
      EXPECT_FALSE(changed);
      ExpectSameNotes(respelled.Notes(), ReferenceNotesRespelled(chord), context);
      ++checked;
    }
  }
  EXPECT_GT(checked, 10000);
}

// Many threads naming chords at once must give exactly what one thread gives: the shared net
// is used under its lock.
TEST(RootDetectionThreads, ConcurrentNamingMatchesOneThread) {
  std::vector<std::vector<int>> voicings;
  for (int low = 40; low < 52; ++low) {
    for (int a = 1; a < 12; ++a) {
      for (int b = a + 1; b < 17; b += 2) voicings.push_back({low, low + a, low + b, low + 19});
    }
  }
  const auto nameAll = [&voicings](TSingleChordAnalysisAlgo algo) {
    std::vector<std::string> names;
    for (const std::vector<int>& v : voicings) {
      CMySet<unsigned char> set;
      for (int noteNr : v) set.insert(static_cast<unsigned char>(noteNr));
      CChordHeavy chord(CNote::Undef, set, 24);
      chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(algo);
      names.push_back(chord.Name());
    }
    return names;
  };
  const std::vector<std::string> byNet = nameAll(kNet);
  const std::vector<std::string> byTable = nameAll(kTable);
  std::vector<std::vector<std::string>> results(8);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < results.size(); ++t) {
    threads.emplace_back([&, t] { results[t] = nameAll(t % 2 == 0 ? kNet : kTable); });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t t = 0; t < results.size(); ++t) {
    EXPECT_EQ(results[t], t % 2 == 0 ? byNet : byTable) << "thread " << t;
  }
}

}  // namespace
}  // namespace harmony
