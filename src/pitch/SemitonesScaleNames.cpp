// The names of scale masks. The list holds a few masks twice under different names (a mode
// of harmonic or melodic minor that also has a name of its own); the first name stays.

#include <map>
#include <string>

#include "harmony/pitch/Semitones.h"
#include "platform/Localize.h"

namespace harmony::Semitones {

namespace {

struct TScaleName {
  std::uint64_t mask;
  const char* english;
};

constexpr TScaleName kScaleNames[] = {
    {2741, "Major (Ionian)"},
    {1453, "Natural Minor (Aeolian)"},
    {4095, "Chromatic"},
    {3773, "Major / Minor"},
    {3765, "Bebop Dominant"},
    {2477, "Harmonic Minor"},
    {2733, "Melodic Minor"},
    {661, "Major Pentatonic"},
    {1193, "Minor Pentatonic"},
    {669, "Major Blues"},
    {1257, "Minor Blues"},
    {2773, "Lydian"},
    {1717, "Mixolydian"},
    {1709, "Dorian"},
    {1451, "Phrygian"},
    {1387, "Locrian"},
    {1459, "Phrygian Dominant"},
    {419, "Miyako-Bushi (Japanese)"},
    {395, "South-East Asian"},
    {1749, "Mixolydian ♯11"},
    {1755, "Half-Whole Diminished"},
    {1371, "Super Locrian (Altered)"},
    {2997, "Bebop Major"},
    {3765, "Bebop Dominant"},
    {2925, "Whole-Half Diminished"},
    {1389, "Locrian 9"},
    {2989, "Bebop Melodic Minor"},
    {3501, "Bebop Harmonic Minor"},
    {2483, "Double Harmonic (Byzantine)"},
    {2869, "Ionian ♯5 (HM3)"},
    {1643, "Locrian n6 (HM2)"},
    {1741, "Dorian ♯11 (HM4)"},
    {2777, "Lydian ♯9 (HM6)"},
    {859, "HM7"},
    {1707, "Dorian ♭2 (MM2)"},
    {2901, "Lydian Augmented (MM3)"},
    {1749, "Mixolydian ♯11 (MM4)"},
    {1461, "Mixolydian ♭13 (MM5)"},
    {1371, "Super Locrian (MM7)"},
    {2485, "Harmonic Major"},
    {1715, "Mixolydian b9"},
    {1721, "Mixolydian ♯9"},
    {1365, "Whole Tone"},
    {1427, "Klezmer"},
};

const std::string kEmpty;

}  // namespace

const std::map<std::uint64_t, std::string>& LocalizedScaleNames() {
  static const std::map<std::uint64_t, std::string> names = [] {
    std::map<std::uint64_t, std::string> built;
    // emplace keeps an existing entry, so the first name of a mask wins.
    for (const TScaleName& entry : kScaleNames) {
      built.emplace(entry.mask, platform::Localized(entry.english));
    }
    return built;
  }();
  return names;
}

const std::string& LocalizedNameForScale(const CSemitones& semitones) {
  const auto& names = LocalizedScaleNames();
  const auto found = names.find(semitones.Word());
  return found != names.end() ? found->second : kEmpty;
}

std::string LocalizedNameForScalePlatformString(const CSemitones& semitones) {
  return LocalizedNameForScale(semitones);
}

const std::string& LocalizedNameForChord(const CSemitones& /*semitones*/) { return kEmpty; }

std::string LocalizedNameForChordPlatformString(const CSemitones& /*semitones*/) { return {}; }

}  // namespace harmony::Semitones
