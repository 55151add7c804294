#pragma once
// Chords to listen to: voicings placed in time as the notes of one track of a MIDI song.

#include <vector>

#include "MidiFile.h"

namespace harmony::tool {

// An empty song of one track at 960 ticks per quarter note, 120 quarter notes a minute, 4/4.
TMidiSong ChordSong();

// The notes of one voicing at `position` for `length`, both in quarter notes.
void AddChordNotes(TMidiSong& song, const std::vector<unsigned char>& notes, double position,
                   double length);

}  // namespace harmony::tool
