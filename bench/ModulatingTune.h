#pragma once
// A 32-bar tune in AABA form that modulates: the A sections in C major with a turn to F and
// E flat, the bridge through E major and A flat major, the last A from C minor back to C
// major. Repeated, it makes pieces of any length whose analysis meets every kind of center
// change, as real lead sheets do.

#include <array>
#include <string>

namespace harmony::bench {

inline constexpr std::array<const char*, 32> kModulatingTuneBars = {
    "Cmaj7 . Am7 . |", "Dm7 . G7 . |",     "Em7 . A7 . |",     "Dm7 . G7 . |",     "Cmaj7 . C7 . |",
    "Fmaj7 . Bb7 . |", "Em7 . A7 . |",     "Dm7 . G7 . |",     "Cmaj7 . Am7 . |",  "Dm7 . G7 . |",
    "Gm7 . C7 . |",    "Fmaj7 . . . |",    "Fm7 . Bb7 . |",    "Ebmaj7 . . . |",   "Dm7 . G7 . |",
    "Cmaj7 . . . |",   "F#m7 . B7 . |",    "Emaj7 . C#m7 . |", "F#m7 . B7 . |",    "Emaj7 . . . |",
    "Bbm7 . Eb7 . |",  "Abmaj7 . Fm7 . |", "Bbm7 . Eb7 . |",   "Dm7b5 . G7b9 . |", "Cm7 . Ab7 . |",
    "Dm7b5 . G7 . |",  "Cm7 . F7 . |",     "Bbmaj7 . . . |",   "Am7 . D7 . |",     "Dm7 . G7 . |",
    "Cmaj7 . A7 . |",  "Dm7 . G7 . |"};

// The tune repeated until the piece has `chords` chord symbols; a bar is cut off after its
// first chord when that makes the count.
inline std::string ModulatingTune(long chords) {
  std::string text;
  long count = 0;
  for (std::size_t bar = 0; count < chords; ++bar) {
    std::string line = kModulatingTuneBars[bar % kModulatingTuneBars.size()];
    const bool twoChords = line.find(" . . . ") == std::string::npos;
    if (twoChords && count + 1 == chords) line = line.substr(0, line.find(" . ") + 2);
    text += line + (bar % 4 == 3 ? "\n" : " ");
    count += twoChords && count + 1 < chords ? 2 : 1;
  }
  return text;
}

}  // namespace harmony::bench
