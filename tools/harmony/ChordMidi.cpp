#include "ChordMidi.h"

#include <cmath>

namespace harmony::tool {

TMidiSong ChordSong() {
  TMidiSong song;
  song.ticksPerQuarter = 960;
  song.tempos.push_back({});
  song.timeSignatures.push_back({});
  song.tracks.push_back({"Chords", {}});
  return song;
}

void AddChordNotes(TMidiSong& song, const std::vector<unsigned char>& notes, double position,
                   double length) {
  const auto tick = static_cast<std::int64_t>(std::llround(position * song.ticksPerQuarter));
  const auto ticks = static_cast<std::int64_t>(std::llround(length * song.ticksPerQuarter));
  for (const unsigned char noteNr : notes) {
    song.tracks.back().notes.push_back({tick, ticks, noteNr, 90, 0});
  }
}

}  // namespace harmony::tool
