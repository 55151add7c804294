#pragma once
// Reading chord symbols the way lead sheets, fake books and notation programs write them, with
// the tones a musician means. This reader stands beside the forgiving parser of
// ChordSymbolParser.h, which keeps its own rules; unlike that parser it tells what it could
// not read instead of stepping over it.
//
// What it reads (the full notation table is in src/chords/parse/LeadSheetNotation.cpp):
//   roots    English C D E F G A B H with b # x and the Unicode signs (H is B natural), German
//            Cis Des Es As Ais Hes His and the double forms (Cisis, Eses), solfege Do Re Mi Fa
//            Sol La Si/Ti with b or #.
//   quality  minor m mi min - ; major M ma maj Maj (a triad alone, with 7 9 11 13 a major
//            seventh, with 6 the sixth chord); major seventh also ^ Δ △ j (alone: maj7);
//            dim o ° (with 7: diminished seventh); half-diminished ø h (with or without 7);
//            aug + ; minor or aug followed by a major-seventh word: the major seventh (CmMaj7).
//   numbers  2 added second, 4 sus4 (after a minor or other quality: the added fourth), 5 power
//            chord, 6, 69 and 6/9, 7, and 9 11 13 with their implied tones: 9 adds the ninth,
//            11 the ninth and eleventh, 13 the ninth and thirteenth (not the eleventh), each with
//            the seventh of the quality.
//   tail     in any order, with or without parentheses, commas or blanks between them:
//            b5 #5 b9 #9 #11 b13 (also written -5 +5 -9 +9 +11 -13, b6 for b13, #4 for #11);
//            an altered ninth replaces the natural ninth, #11 the eleventh, b13 the thirteenth,
//            an altered fifth the fifth; plain 9 11 13 6 2 4 7 add a tone; add/no/omit with a
//            degree; sus sus2 sus4; alt; a major-seventh word (Cm(maj7)); + or aug (C7+).
//   alt      the altered dominant: 1 3 b7 with b9 #9 b5(#11) and b13, no natural fifth:
//            semitones 0 1 3 4 6 8 10.
//   bass     "/" and a note name in any of the spellings above; "/" followed by a degree is a
//            tone (C6/9 is no slash chord over 9, C7(b9/#11) holds both tensions).
//   others   N.C., N.C, NC (any case): no chord. % : the previous chord again.
//
// How ambiguous symbols read (what musicians expect):
//   Asus4, Esus   A and E with sus4: "As"/"Es" are German names only where the rest then reads.
//   Faug, Fadd9   F with aug, F with add9: solfege "Fa" only where the rest then reads.
//   Do7           C7: the solfege name wins over D°7 when both read; write D°7 or Ddim7.
//   B, H          B is B natural, H is B natural too; with CChordNamePrefs::BIsBFlat set (the
//                 German convention) B is B flat.
//   Cm, CM        C minor, C major (the triad); CM7 is Cmaj7, Cm7 the minor seventh.
//   C-7, C-       C minor seventh, C minor. C-5 is C with a flat fifth, as C(b5).
//   C7-5, C7+5    flat five, sharp five (C7 with the fifth replaced).
//   C#5, Cb5      C sharp and C flat power chords: a sign right behind the letter is always the
//                 root's; write C(#5) or C+ for the augmented triad.
//   C6/9          the sixth chord with added ninth, not a slash chord.
//   c, cm7        lower-case letters read as upper-case ones.
// Where several readings remain, the one that reads the most of the symbol wins; among equal
// ones a longer quality word wins (Cmaj7 is not Cm + aj7).

#include <cstdint>
#include <string_view>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {

enum class TLeadSheetSymbolKind : std::uint8_t {
  kNothing,  // no root, no N.C. and no %: nothing was read
  kChord,
  kNoChord,  // N.C.: the chord is CChordLite_NoChordForce
  kRepeat,   // %: the chord is the previous one handed to the reader
};

// What one symbol gave. The chord holds what was read before the first character that could
// not be read; that character's byte offset and the length of the unread rest tell the rest.
struct TLeadSheetChordRead {
  CChordLite Chord;
  TLeadSheetSymbolKind Kind = TLeadSheetSymbolKind::kNothing;
  std::uint32_t UnreadOffset = 0;
  std::uint32_t UnreadLength = 0;
  // Where the root and the bass note stand in the text (offset and length; length 0 without
  // one), for callers that rewrite them, such as a transposition.
  std::uint32_t RootOffset = 0;
  std::uint32_t RootLength = 0;
  std::uint32_t BassOffset = 0;
  std::uint32_t BassLength = 0;

  bool ReadWhole() const { return UnreadLength == 0 && Kind != TLeadSheetSymbolKind::kNothing; }
  // The unread rest of the text the reader was given.
  std::string_view Unread(std::string_view text) const {
    return text.substr(UnreadOffset, UnreadLength);
  }
};

// Reads one symbol. Blanks around it are ignored; `previous` is what % gives. Never allocates.
TLeadSheetChordRead ReadLeadSheetChord(std::string_view text,
                                       const CChordNamePrefs& prefs = GetCurrentChordNamePrefs(),
                                       const CChordLite& previous = CChordLite());

// The same into a heavy chord, which keeps its wrap interval.
TLeadSheetChordRead ReadLeadSheetChord(std::string_view text, CChordHeavy& chord,
                                       const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

}  // namespace harmony
