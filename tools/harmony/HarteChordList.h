#pragma once
// Chord annotations in Harte's syntax, as the Billboard corpus writes them, read into chord
// lists that the chord-list parser and `harmony analyse` read. The rules:
//
// - A line "# metre: N/D" sets the bar's beats from there on: N for quarter-note metres, N/3
//   for the compound eighth-note metres (6/8 has two beats, 12/8 four), N/2 rounded up for
//   the other eighth-note metres, 2N for half-note metres. "(N/D)" inside a bar sets it for
//   that bar alone. Other "#" lines (title, artist, tonic) are not read: the analyser finds
//   the centers itself.
// - Every other line is a time stamp, a tab and comma-separated fields. Only the bars, from
//   the line's first bar line to its last, are read; "xN" behind the last bar line plays
//   them N times. Section letters, labels, instruments, "silence", "end", "Z" and "->" hold
//   no chords.
// - In a bar, each chord or "." takes a slot: as many slots as beats take a beat each; fewer
//   slots share the bar, each taking the whole beats that divide evenly, the first one the
//   beats left over (three chords in 4/4 take 2, 1 and 1); more slots than beats take a beat
//   each. "." continues the chord before it.
// - "N", "&pause" and "*" (no chord, a pause, a stretch that has none that can be named) are
//   written "N.C.".
// - A chord "root:quality(degrees)/bass" has the tones of its quality (the shorthands maj,
//   min, dim, aug, maj7, min7, 7, dim7, hdim7, minmaj7, maj6, min6, 9, maj9, min9, 11, maj11,
//   min11, 13, maj13, min13, sus2, sus4 as Harte defines them, plus 5 for root and fifth and
//   1 for the root alone), the degrees added ("9", "b7", "#11") or left out ("*3"), and the
//   bass as a degree above the root, spelled by its letter distance (D:maj/b7 has C in the
//   bass). A root without quality is major. It is written as the library names the chord, in
//   ASCII accidentals; a symbol that can't be read counts as no chord.
// - The chord list has one token per beat. A bar line follows a bar only where the beats so
//   far fill whole bars of four, so the list reads the same with the default bar length of
//   `harmony analyse` whatever the metre; each annotation line gives a line of text.

#include <optional>
#include <string>
#include <string_view>

#include "harmony/chords/ChordLite.h"

namespace harmony::tool {

// Whether the text is such an annotation: a "# metre:" or "# tonic:" line and a bar line.
bool LooksLikeHarteAnnotation(std::string_view text);

// The chord list of a whole annotation; empty when it holds no bar.
std::string HarteAnnotationToChordList(std::string_view text);

// One chord symbol; no value for no chord or a symbol that can't be read.
std::optional<CChordLite> ChordFromHarteSymbol(std::string_view symbol);

}  // namespace harmony::tool
