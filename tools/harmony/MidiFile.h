#pragma once
// Standard MIDI files (format 1) written through libsmf: a first track with the tempo and
// time signatures, then one track per part with its notes. The tool writes what the MusicXML
// event import delivers and what the voicing of a chord list gives.

#include <cstdint>
#include <string>
#include <vector>

namespace harmony::tool {

struct TMidiNote {
  std::int64_t tick = 0;
  std::int64_t length = 0;  // ticks; a note without length sounds for none
  int noteNr = 60;
  int velocity = 90;
  int channel = 0;
};

struct TMidiTrack {
  std::string name;
  std::vector<TMidiNote> notes;
};

struct TMidiTempo {
  std::int64_t tick = 0;
  double quarterNotesPerMinute = 120.0;
};

struct TMidiTimeSignature {
  std::int64_t tick = 0;
  int beats = 4;
  int beatType = 4;
};

struct TMidiSong {
  int ticksPerQuarter = 960;
  std::vector<TMidiTempo> tempos;
  std::vector<TMidiTimeSignature> timeSignatures;
  std::vector<TMidiTrack> tracks;
};

// Writes the song to `path` (replacing a file there); false with `error` set when it cannot.
// Notes outside 0..127, velocities outside 1..127 and negative ticks are brought into range,
// since a MIDI file cannot hold them.
bool WriteMidiFile(const TMidiSong& song, const std::string& path, std::string& error);

}  // namespace harmony::tool
