#pragma once
// Chords as MIDI notes for an accompaniment. CChordLite::VoicingNotesNrs voices a chord
// around the comping range; the functions here add a bass below a voicing and move a
// voicing by octaves toward a target note, so that a sequence of chords moves in small steps
// instead of jumping with every root.
//
// The quantising members that pull a played note onto a chord are declared with the chords
// (CChordLite::QuantizeToChord, CChordHeavy::QuantizeToChord) and defined with the voicing.

#include <cstdint>
#include <vector>

#include "harmony/chords/CompingRange.h"

namespace harmony {

// How a host wants its chords voiced: 32-bit fields, in the order hosts store them.
struct TChordVoicingPrefs {
  std::int32_t Reserved = 0;            // kept for the host; the library does not read it
  std::int32_t AddRootOctaveBelow = 0;  // 1: the root once more, an octave below
};

// Moves notes of the voicing by octaves so that its top comes near `targetNoteNr`: a top
// above the target is taken down an octave while that brings it closer than the note below
// it (never below note 40, never onto a note already there); a top below the target makes
// the lowest notes go up an octave while each lands nearer the target than the top. The
// notes end sorted ascending. Fewer than two notes stay where they are when the top is above.
void TransposeChordBasedOnPreviousChords(std::vector<unsigned char>& notes, int targetNoteNr);

// The bass of a voicing from a root and a bass key (or, for the analysis records, from their
// distances to the harmonic center): an octave below the first note of the root's pitch
// class, at least 40, and never onto a note of the voicing. It is appended, not sorted in.
// A bass key of 15 (or -1) takes the root's; an undefined root (15, or -1) adds nothing.
void _AddBassKeyToMidiNotes(int rootKeyNr, int bassKeyNr, std::vector<unsigned char>& notes);

}  // namespace harmony
