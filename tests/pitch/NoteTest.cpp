#include <gtest/gtest.h>

#include <sstream>

#include "harmony/pitch/Note.h"

namespace harmony {
namespace {

CChordNamePrefs Numbering(int numbering) {
  CChordNamePrefs prefs;
  prefs.OctaveNumbering = numbering;
  return prefs;
}

TEST(Note, ConstructionClampsAndFitsTheSpelling) {
  // B sharp fits key 0 and stays, although the note number says C.
  EXPECT_EQ(CNote(60, TEnh_s).Enh(), TEnh_s);
  EXPECT_EQ(CNote(60, TEnh_s).KeyNr(), 0);
  const CNote undefined(-1, TEnh_n);
  EXPECT_EQ(undefined.Enh(), TEnh_Undef);
  EXPECT_EQ(undefined.KeyNr(), kKeyNrUndef);
  EXPECT_EQ(CNote(255, TEnh_n), CNote::Undef);
  EXPECT_EQ(CNote(200, TEnh_n).NoteNr(), 127);
  EXPECT_EQ(CNote(-7, TEnh_n).NoteNr(), 0);
  EXPECT_EQ(CNote(61, TEnh_n).Enh(), TEnh_s);    // C sharp, as C major writes it
  EXPECT_EQ(CNote(63, TEnh_n).Enh(), TEnh_b);    // E flat
  EXPECT_EQ(CNote(61, TEnh_ss).Enh(), TEnh_ss);  // B double sharp fits
  EXPECT_EQ(CNote(62, TEnh_s).Enh(), TEnh_n);    // a sharp does not fit D: shifted away
  EXPECT_EQ(CNote(64, TEnh_bb).Enh(), TEnh_b);   // F flat
  EXPECT_EQ(CNote(65, TEnh_b).Enh(), TEnh_n);
  EXPECT_EQ(CNote(62, TEnh_Undef).Enh(), TEnh_Undef);  // an undefined spelling is kept
  CNote raw(62, TEnh_n);
  raw.SetEnhAndDontMakeSenseful(TEnh_s);
  EXPECT_FALSE(raw.HasSensefulEnh());
}

TEST(Note, OctavesFromKeys) {
  EXPECT_EQ(CNote(CKeyEnh(0, TEnh_n), 4).NoteNr(), 60);
  EXPECT_EQ(CNote(CKeyEnh(9, TEnh_n), -1).NoteNr(), 9);
  EXPECT_EQ(CNote(CKeyEnh(2, TEnh_n), 10).NoteNr(), 110);  // high octaves fold onto 8
  EXPECT_EQ(CNote(CKeyEnh(5, TEnh_n), -2).NoteNr(), -5);   // below -1: the negated key
  EXPECT_EQ(CNote(CKeyEnh(200, TEnh_n), 4).NoteNr(), 67);  // 200 -> 127 -> key 7
  EXPECT_EQ(CNote(CKeyEnh(), 4), CNote::Undef);
  EXPECT_EQ(CNote(std::pair{1, TEnh_b}, 3).KeyEnh(), CKeyEnh(1, TEnh_b));

  CNote note;
  note.SetOct(4);  // an undefined note is taken as C
  EXPECT_EQ(note.NoteNr(), 60);
  note = CNote(62, TEnh_n);
  note.SetKeyNr(11);  // keeps the octave
  EXPECT_EQ(note.NoteNr(), 71);
  note.SetKeyNrAndEnhAssumingCMajor(3, TEnh_n);
  EXPECT_EQ(note, CNote(63, TEnh_b));
  note.SetKeyNr(kKeyNrUndef);
  EXPECT_EQ(note, CNote::Undef);

  note = CNote(120, TEnh_n);
  note.AddIntvlAndClampToKey(10);
  EXPECT_EQ(note.NoteNr(), 118);
  note = CNote(5, TEnh_n);
  note.AddIntvlAndClampToKey(-10);
  EXPECT_EQ(note.NoteNr(), 7);
  note = CNote();
  note.AddIntvlAndClampToKey(3);
  EXPECT_TRUE(note.IsUndef());
}

TEST(Note, OctaveNamesByNumbering) {
  const CNote c(60, TEnh_n);
  EXPECT_EQ(c.OctName(Numbering(0)), "3");
  EXPECT_EQ(c.OctName(Numbering(1)), "4");
  EXPECT_EQ(c.OctName(Numbering(2)), "5");
  EXPECT_EQ(CNote(0, TEnh_n).OctName(), "-2");
  EXPECT_EQ(CNote().OctName(), "");
  EXPECT_EQ(CNote().KeyName(), "Undefined");
  EXPECT_EQ(CNote(70, TEnh_b).KeyName(), "B\u266D");
  EXPECT_EQ(CNote(70, TEnh_b).KeyNameWithoutEnh(), "B");
}

TEST(Note, ReadFromText) {
  CNote note;
  EXPECT_TRUE(note.SetFromString("C3"));
  EXPECT_EQ(note, CNote(60, TEnh_n));
  EXPECT_TRUE(note.SetFromString("C4", Numbering(1)));
  EXPECT_EQ(note.NoteNr(), 60);
  EXPECT_TRUE(note.SetFromString("C5", Numbering(2)));
  EXPECT_EQ(note.NoteNr(), 60);
  EXPECT_TRUE(note.SetFromString("Bb-1"));
  EXPECT_EQ(note, CNote(22, TEnh_b));
  EXPECT_TRUE(note.SetFromString("F\u266F3"));  // the octave is read behind the sign
  EXPECT_EQ(note, CNote(66, TEnh_s));
  EXPECT_TRUE(note.SetFromString("B#3"));
  EXPECT_EQ(note, CNote(60, TEnh_s));
  EXPECT_TRUE(note.SetFromString("E99999999999999999999"));  // saturates, no overflow
  EXPECT_EQ(note.NoteNr(), 112);
  EXPECT_FALSE(note.SetFromString("X3"));
  EXPECT_EQ(note, CNote::Undef);

  // Every note written with its default name reads back, in every numbering.
  for (int numbering = 0; numbering <= 2; ++numbering) {
    const CChordNamePrefs prefs = Numbering(numbering);
    for (long n = 0; n < 128; ++n) {
      const CNote written(n, TEnh_Undef);
      CNote spelled = written;
      spelled.MakeSensefulEnhAssumingCMajor();
      ASSERT_TRUE(note.SetFromString(spelled.KeyName(prefs) + spelled.OctName(prefs), prefs));
      EXPECT_EQ(note, spelled) << n << " numbering " << numbering;
    }
  }
}

TEST(Note, ComparisonAndStreamOutput) {
  EXPECT_LT(CNote(60, TEnh_n), CNote(60, TEnh_s));
  CNote tripleFlat(60, TEnh_n);
  tripleFlat.SetEnhAndDontMakeSenseful(TEnh_bbb);
  EXPECT_LT(CNote(60, TEnh_sss), tripleFlat);  // spellings compare unsigned: bbb is last
  EXPECT_LT(CNote(59, TEnh_bbb), CNote(60, TEnh_n));
  EXPECT_NE(CNote(60, TEnh_s), CNote(60, TEnh_n));

  std::ostringstream out;
  out << CNote(61, TEnh_b) << " | " << CNote();
  EXPECT_EQ(out.str(),
            "CNote: D\u266D3 (NoteNr 61, Enh flat) | CNote: Undefined (NoteNr -1, Enh undef)");
  EXPECT_EQ(CNote(61, TEnh_b).StringForInitializerList(), "CNote(61, TEnh_b)");
}

TEST(Note, EnhShiftsOnTheNote) {
  CNote note(61, TEnh_s);
  note.EnhShift();
  EXPECT_EQ(note.Enh(), TEnh_b);
  note.EnhShiftToSharps();
  EXPECT_EQ(note.Enh(), TEnh_s);
  note = CNote(64, TEnh_n);
  note.EnhShiftToFlats();
  EXPECT_EQ(note.KeyName(GetChordNamePrefsNonUTF8()), "Fb");
}

}  // namespace
}  // namespace harmony
