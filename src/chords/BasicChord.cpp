#include "harmony/chords/BasicChord.h"

#include <array>

namespace harmony {

namespace {

constexpr std::size_t kBasicChordCount = 9;
constexpr int kUndefIntvl = CSemitones::kUndefIntvl;

// Indexed by TBasicChord: none, major, minor, aug, major flat 5, dim, sus4, sus2, power.
constexpr std::array<std::uint64_t, kBasicChordCount> kBasicChordMasks{0,  145, 137, 273, 81,
                                                                       73, 161, 133, 129};
constexpr std::uint64_t kMajorTriad = 145;

constexpr std::array<const char*, kBasicChordCount> kNormalNames{"no3", "",     "m",    "aug", "b5",
                                                                 "dim", "sus4", "sus2", "5"};
constexpr std::array<const char*, kBasicChordCount> kSpokenNames{
    "no3", " major", "minor", "augmented", "major flat 5", "diminished", "sus4", "sus2", "5"};
constexpr const char* kUnknownName = "no3";

constexpr std::array<bool, kBasicChordCount> kIsDominant{false, true, false, true, true,
                                                         false, true, true,  true};

// Indexed by TChordOption: the small and the large interval without the triad exceptions.
constexpr std::array<std::pair<int, int>, 4> kOptionIntvls{{{10, 11}, {1, 2}, {5, 6}, {8, 9}}};

}  // namespace

CSemitones SemitonesForBasicChord(TBasicChord basicChord) {
  if (basicChord >= kBasicChordMasks.size()) return CSemitones(kMajorTriad);
  return CSemitones(kBasicChordMasks[basicChord]);
}

std::pair<int, int> SmallAndLargeIntvlsForSemitones(TChordOption option,
                                                    const CSemitones& semitones) {
  if (option >= kOptionIntvls.size()) return {kUndefIntvl, kUndefIntvl};
  std::pair<int, int> intvls = kOptionIntvls[option];
  if (option == kChordOption11 && semitones.IsDim()) intvls.second = kUndefIntvl;
  if (option == kChordOption13 && semitones.IsAug()) intvls.first = kUndefIntvl;
  return intvls;
}

std::string BasicChordName(TBasicChord basicChord, const CChordNamePrefs& prefs) {
  if (prefs.AccessibilitySpoken == 1) {
    return _BasicChordName_ChordNaming_AccessibilitySpoken(basicChord);
  }
  return _BasicChordName_ChordNaming_Normal(basicChord, prefs);
}

std::string _BasicChordName_ChordNaming_Normal(TBasicChord basicChord,
                                               const CChordNamePrefs& prefs) {
  if (basicChord >= kNormalNames.size()) return kUnknownName;
  if (basicChord == kBasicChordMinor && prefs.MinorNaming == 2) return {};
  return kNormalNames[basicChord];
}

std::string _BasicChordName_ChordNaming_AccessibilitySpoken(TBasicChord basicChord) {
  if (basicChord >= kSpokenNames.size()) return kUnknownName;
  return kSpokenNames[basicChord];
}

// An empty symbol (minor written with a small root letter) gets no blank of its own.
std::string BasicChordNameWithPreceedingOptionalSpace(TBasicChord basicChord,
                                                      const CChordNamePrefs& prefs) {
  const bool spoken = prefs.AccessibilitySpoken == 1;
  if (basicChord == kBasicChordMajor) return spoken ? " major" : "";
  std::string name = BasicChordName(basicChord, prefs);
  if (name.empty()) return name;
  return OptionalSpaceBetweenNameParts(prefs) + name;
}

bool IsDominantBasicChord(TBasicChord basicChord) {
  return basicChord < kIsDominant.size() && kIsDominant[basicChord];
}

}  // namespace harmony
