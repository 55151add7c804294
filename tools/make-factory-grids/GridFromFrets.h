#pragma once
// Building a chord grid from a fret per string, the way a guitarist writes it ("x32010"),
// with optional fingers. Strings that one finger presses at the same fret become a barre,
// unless an open string or a lower fretted note lies between them.
//
// Fret numbers here are those of the instrument: 0 is the open string, 1 the first fret
// (absFretIndex 0), -1 a muted string.

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "harmony/guitar/GChBasicChord.h"

namespace harmony::grid_tools {

constexpr int kMuted = -1;
constexpr int kGridFretSpan = 8;

// "x32010", "x 3 2 0 1 0" or "x,3,2,0,1,0" (the separated forms allow frets of two digits);
// "x" or "X" mutes. Nothing for other text or a fret above 32.
inline std::optional<std::vector<int>> ParseFrets(const std::string& text) {
  std::vector<int> frets;
  const bool separated = text.find_first_of(", ") != std::string::npos;
  size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == ',' || c == ' ') {
      ++i;
    } else if (c == 'x' || c == 'X') {
      frets.push_back(kMuted);
      ++i;
    } else if (c >= '0' && c <= '9') {
      int value = c - '0';
      ++i;
      // Checked digit by digit, so that no number of digits can overflow.
      while (separated && i < text.size() && text[i] >= '0' && text[i] <= '9') {
        value = value * 10 + (text[i++] - '0');
        if (value > kGChMaxAbsFretIndex + 1) return std::nullopt;
      }
      frets.push_back(value);
    } else {
      return std::nullopt;
    }
  }
  if (frets.empty()) return std::nullopt;
  return frets;
}

// Fingers as digits 0..5, one per string ("032010"); 0 where no finger is named.
inline std::optional<std::vector<int>> ParseFingers(const std::string& text) {
  std::vector<int> fingers;
  for (char c : text) {
    if (c == ',' || c == ' ') continue;
    if (c == 'x' || c == 'X' || c == '-') {
      fingers.push_back(0);
    } else if (c >= '0' && c <= '5') {
      fingers.push_back(c - '0');
    } else {
      return std::nullopt;
    }
  }
  return fingers;
}

// The grid, or nothing (with a reason) when the frets do not fit the tuning.
inline std::shared_ptr<GChBasicChord> GridFromFrets(const GChShortTuning& tuning,
                                                    const std::vector<int>& frets,
                                                    const std::vector<int>& fingers,
                                                    std::string* error) {
  const int strings = GChNumberOfStringsInShortTuning(tuning);
  if (static_cast<int>(frets.size()) != strings) {
    *error = "expected " + std::to_string(strings) + " frets, got " + std::to_string(frets.size());
    return nullptr;
  }
  if (!fingers.empty() && fingers.size() != frets.size()) {
    *error =
        "expected " + std::to_string(strings) + " fingers, got " + std::to_string(fingers.size());
    return nullptr;
  }
  // A library file stores the frets of a grid within eight frets of its lowest one.
  int lowest = kGChMaxAbsFretIndex + 1, highest = 0;
  for (int fret : frets) {
    if (fret <= 0) continue;
    lowest = std::min(lowest, fret);
    highest = std::max(highest, fret);
  }
  if (highest - lowest >= kGridFretSpan) {
    *error = "frets " + std::to_string(lowest) + " to " + std::to_string(highest) + " span " +
             std::to_string(highest - lowest + 1) + " frets; a grid holds at most " +
             std::to_string(kGridFretSpan);
    return nullptr;
  }
  auto chord = std::make_shared<GChBasicChord>(tuning);
  const auto fingerOf = [&](int s) { return fingers.empty() ? 0 : fingers[s]; };
  // Strings grouped by finger and fret, for the barres.
  std::map<std::pair<int, int>, std::vector<int>> groups;
  for (int s = 0; s < strings; ++s) {
    if (frets[s] == kMuted) chord->setMuted(true, s);
    if (frets[s] > 0 && fingerOf(s) > 0) groups[{fingerOf(s), frets[s]}].push_back(s);
  }
  // A string between two members that sounds below the barre's fret (open, or pressed
  // lower) splits the group; a muted string does not.
  const auto blocks = [&](int s, int fret) { return frets[s] != kMuted && frets[s] < fret; };
  std::vector<bool> placed(strings, false);
  for (const auto& [key, members] : groups) {
    const int fret = key.second;
    size_t start = 0;
    for (size_t i = 1; i <= members.size(); ++i) {
      bool joined = i < members.size();
      for (int s = members[i - 1] + 1; joined && s < members[i]; ++s) joined = !blocks(s, fret);
      if (joined) continue;
      if (i - start >= 2) {
        chord->addChordElem(key.first, fret - 1, members[start], members[i - 1], 0);
        for (size_t k = start; k < i; ++k) placed[members[k]] = true;
      }
      start = i;
    }
  }
  for (int s = 0; s < strings; ++s) {
    if (frets[s] <= 0 || placed[s]) continue;
    if (!chord->addChordElem(fingerOf(s), frets[s] - 1, s)) {
      *error = "fret " + std::to_string(frets[s]) + " cannot be stored";
      return nullptr;
    }
  }
  return chord;
}

}  // namespace harmony::grid_tools
