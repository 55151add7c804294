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

class CHarmAnlsChord;
class CHarmAnlsChordWithLength;

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

// --- Chords of the analysis (harmony/analysis/HarmAnlsChord.h). With `relative` the root
// and bass keys are the chord's distances to its harmonic center, so that chords of every
// key come out as if the center were C.

// The chord's tones straight above 48 + its root key, sorted ascending; `notes` is
// replaced. A chord without root (or without known distance) gives no notes.
void CHarmAnlsChordWithLengthToMidiNotes(const CHarmAnlsChordWithLength& chord,
                                         std::vector<unsigned char>& notes, bool relative);
// Appends the bass (the root without a bass of its own) an octave below the first note of the
// root's key, at least 40 and never onto a note already there; the order of `notes` is kept.
// A chord without root adds nothing.
void AddBassNoteToMidiNotes(const CHarmAnlsChord& chord, std::vector<unsigned char>& notes,
                            bool relative);

}  // namespace harmony
