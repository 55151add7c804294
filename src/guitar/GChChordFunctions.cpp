#include "harmony/guitar/GChChordFunctions.h"

#include <algorithm>
#include <array>

#include "guitar/GChChordTypeTable.h"

namespace harmony {

namespace {

constexpr std::array<const char*, 12> kPitchClassNames{"C",  "C#", "D",  "D#", "E",  "F",
                                                       "F#", "G",  "G#", "A",  "A#", "B"};

// The accidentals of the spelled pitch classes, valued as the enh bytes of the key classes.
enum SpelledEnh : int8_t { kFlat = 1, kNatural = 2, kSharp = 3 };
struct SpelledPitch {
  int8_t key;
  SpelledEnh enh;
};
constexpr std::array<SpelledPitch, 17> kSpelledPitches{{
    {0, kNatural},
    {1, kSharp},
    {1, kFlat},
    {2, kNatural},
    {3, kSharp},
    {3, kFlat},
    {4, kNatural},
    {5, kNatural},
    {6, kSharp},
    {6, kFlat},
    {7, kNatural},
    {8, kSharp},
    {8, kFlat},
    {9, kNatural},
    {10, kSharp},
    {10, kFlat},
    {11, kNatural},
}};
constexpr std::array<char, 12> kLetterOfNaturalKey{'C', 0,   'D', 0,   'E', 'F',
                                                   0,   'G', 0,   'A', 0,   'B'};

// Letters A..G as key numbers.
constexpr std::array<int, 7> kKeyOfLetter{9, 11, 0, 2, 4, 5, 7};

const CChordTypeVec& BuiltInTypes() { return SharedChordTypes().BuiltIn(); }

int ClampedIndex(int index) {
  return std::clamp(index, 0, static_cast<int>(BuiltInTypes().size()) - 1);
}

}  // namespace

int GChNumberOfChordTypes() { return static_cast<int>(BuiltInTypes().size()); }

std::string GChChordTypeNameForIndex(int index) { return BuiltInTypes()[ClampedIndex(index)].Name; }

GChChordTypeId GChChordTypeIdForIndex(int index) {
  return static_cast<GChChordTypeId>(BuiltInTypes()[ClampedIndex(index)].Id);
}

std::string GChChordTypeNameForId(GChChordTypeId id) {
  const auto* row = guitar_detail::ChordTypeRowForId(id);
  return row != nullptr ? row->Name : "";
}

std::string GChMidiPitchDefaultName(int pitch) {
  if (pitch < 0) return {};
  return std::string(kPitchClassNames[pitch % 12]) + std::to_string(pitch / 12 - 2);
}

std::string GChOctPitchDefaultName(int key) {
  if (key < 0 || key > 11) return {};
  return kPitchClassNames[key];
}

std::string GChEnhPitchName(int index) {
  if (index < 0 || index >= static_cast<int>(kSpelledPitches.size())) return {};
  const SpelledPitch spelled = kSpelledPitches[index];
  const int natural = (spelled.key - (spelled.enh - kNatural) + 12) % 12;
  std::string name(1, kLetterOfNaturalKey[natural]);
  if (spelled.enh == kSharp) name += '#';
  if (spelled.enh == kFlat) name += 'b';
  return name;
}

int GChMidiPitchForPitchString(const std::string& text) {
  size_t i = text.find_first_not_of(' ');
  if (i == std::string::npos) return -1;
  const char letter = text[i];
  int key;
  if (letter >= 'A' && letter <= 'G') {
    key = kKeyOfLetter[letter - 'A'];
  } else if (letter >= 'a' && letter <= 'g') {
    key = kKeyOfLetter[letter - 'a'];
  } else {
    return -1;
  }
  ++i;
  // An accidental must have something behind it: the octave.
  if (i < text.size() && (text[i] == 'b' || text[i] == '#')) {
    if (i + 1 >= text.size()) return -1;
    key = text[i] == 'b' ? (key + 11) % 12 : (key + 1) % 12;
    ++i;
  }
  std::string octave = text.substr(i);
  octave.erase(octave.find_last_not_of(' ') + 1);
  int base;
  if (octave == "-1") {
    base = 12;
  } else if (octave == "-2") {
    base = 0;
  } else if (octave.size() == 1 && octave[0] >= '0' && octave[0] <= '9') {
    base = 24 + 12 * (octave[0] - '0');
  } else {
    return -1;
  }
  const int pitch = base + key;
  return pitch < 128 ? pitch : -1;
}

std::string stringByConvertingMusicalSymbols(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    if (c == 'b') {
      out += "\u266D";
    } else if (c == '#') {
      out += "\u266F";
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace harmony
