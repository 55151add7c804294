#include "harmony/chords/ScaleNameReader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <span>
#include <string_view>

#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/SetFromStringHelper.h"

namespace harmony {

namespace {

using std::string_view_literals::operator""sv;

constexpr std::uint64_t kMajorMask = 2741;

// The keyword groups in the order they are tried; within a group the keywords are tried in
// the order listed. Several groups give the same mask under different words.
constexpr std::array kChromatic = {"chromatic"sv, "chrom"sv};
constexpr std::array kPentaMajor = {
    "pentamajor"sv,      "penta major"sv,      "majorpenta"sv,      "major penta"sv,
    "pentama"sv,         "penta ma"sv,         "mapenta"sv,         "ma penta"sv,
    "pentma"sv,          "pent ma"sv,          "mapent"sv,          "ma pent"sv,
    "pentatonicmajor"sv, "pentatonic major"sv, "majorpentatonic"sv, "major pentatonic"sv};
constexpr std::array kPentaMinor = {
    "pentaminor"sv,      "penta minor"sv,      "minorpenta"sv,      "minor penta"sv,
    "pentami"sv,         "penta mi"sv,         "mipenta"sv,         "mi penta"sv,
    "pentmi"sv,          "pent mi"sv,          "mipent"sv,          "mi pent"sv,
    "pentatonicminor"sv, "pentatonic minor"sv, "minorpentatonic"sv, "minor pentatonic"sv};
constexpr std::array kBluesMajor = {"bluesmajor"sv, "blues major"sv, "major blues"sv,
                                    "majorblues"sv, "bluesma"sv,     "blues ma"sv,
                                    "mablues"sv,    "ma blues"sv};
constexpr std::array kBluesMinor = {"bluesminor"sv, "blues minor"sv, "minor blues"sv,
                                    "minorblues"sv, "bluesmi"sv,     "blues mi"sv,
                                    "miblues"sv,    "mi blues"sv};
constexpr std::array kMajor = {"major"sv, "dur"sv, "maj"sv, "ma"sv};
constexpr std::array kMinor = {"minor"sv, "moll"sv, "min"sv, "mi"sv, "m"sv};
constexpr std::array kIonian = {"ionian"sv, "ion"sv};
constexpr std::array kDorian = {"dorian"sv, "dor"sv};
constexpr std::array kPhrygian = {"phrygian"sv, "phry"sv};
constexpr std::array kLydian = {"lydian"sv, "lyd"sv};
constexpr std::array kLydianAug = {"lydianaug"sv, "lydaug"sv};
constexpr std::array kMixolydian = {"mixolydian"sv, "mixo"sv};
constexpr std::array kAeolian = {"aeolian"sv, "aeol"sv};
constexpr std::array kLocrian = {"locrian"sv, "loc"sv};
constexpr std::array kMelodicMinor = {"mm1"sv, "minormelodic"sv, "minor melodic"sv,
                                      "melodicminor"sv, "melodic minor"sv};
constexpr std::array kMm2 = {"mm2"sv};
constexpr std::array kMm3 = {"mm3"sv};
constexpr std::array kMm4 = {"mm4"sv};
constexpr std::array kMm5 = {"mm5"sv};
constexpr std::array kMm6 = {"mm6"sv};
constexpr std::array kMm7 = {"mm7"sv};
constexpr std::array kHarmonicMinor = {"hm1"sv, "minorharmonic"sv, "minor harmonic"sv,
                                       "harmonicminor"sv, "harmonic minor"sv};
constexpr std::array kHm2 = {"hm2"sv};
constexpr std::array kHm3 = {"hm3"sv};
constexpr std::array kHm4 = {"hm4"sv};
constexpr std::array kHm5 = {"hm5"sv, "mixo b9 b13"sv, "mixob9b13"sv};
constexpr std::array kHm6 = {"hm6"sv};
constexpr std::array kHm7 = {"hm7"sv};
constexpr std::array kWholeTone = {"wholetone"sv, "wt"sv};
constexpr std::array kDimHalfWhole = {"diminishedhalfwhole"sv, "diminishedhw"sv, "dimhalfwhole"sv,
                                      "dimhw"sv};
constexpr std::array kDimWholeHalf = {"diminishedwholehalf"sv, "diminishedwh"sv, "dimwholehalf"sv,
                                      "dimwh"sv};
constexpr std::array kMajorMinor = {"majorminor"sv};
constexpr std::array kMajorAddB7 = {"majoraddb7"sv, "major addb7"sv, "major add b7"sv};
constexpr std::array kJapanese = {"japanese"sv};
constexpr std::array kSouthEastAsian = {"southeastasian"sv, "southeast asian"sv};
constexpr std::array kBebopMelodicMinor = {"bebop melodic minor"sv, "bebopmelodicminor"sv};
constexpr std::array kBebopHarmonicMinor = {"bebop harmonic minor"sv, "bebopharmonicminor"sv};
constexpr std::array kBebopDominant = {"bebop dominant"sv, "bebopdominant"sv};
constexpr std::array kBebopMajor = {"bebop major"sv, "bebopmajor"sv};
constexpr std::array kSuperLocrian = {"super locrian"sv, "superlocrian"sv};
constexpr std::array kKlezmer = {"klezmer"sv};

struct TKeywordGroup {
  std::uint64_t mask;
  std::span<const std::string_view> keywords;
};

constexpr std::array<TKeywordGroup, 42> kKeywordGroups = {{
    {4095, kChromatic},
    {661, kPentaMajor},
    {1193, kPentaMinor},
    {669, kBluesMajor},
    {1257, kBluesMinor},
    {2741, kMajor},
    {1453, kMinor},
    {2741, kIonian},
    {1709, kDorian},
    {1451, kPhrygian},
    {2773, kLydian},
    {2901, kLydianAug},
    {1717, kMixolydian},
    {1453, kAeolian},
    {1387, kLocrian},
    {2733, kMelodicMinor},
    {1707, kMm2},
    {2901, kMm3},
    {1749, kMm4},
    {1461, kMm5},
    {1389, kMm6},
    {1371, kMm7},
    {2477, kHarmonicMinor},
    {1643, kHm2},
    {2869, kHm3},
    {1741, kHm4},
    {1459, kHm5},
    {2777, kHm6},
    {859, kHm7},
    {1365, kWholeTone},
    {1755, kDimHalfWhole},
    {2925, kDimWholeHalf},
    {3773, kMajorMinor},
    {3765, kMajorAddB7},
    {419, kJapanese},
    {395, kSouthEastAsian},
    {2989, kBebopMelodicMinor},
    {3501, kBebopHarmonicMinor},
    {3765, kBebopDominant},
    {2997, kBebopMajor},
    {1371, kSuperLocrian},
    {1427, kKlezmer},
}};

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

CSemitones _SemitonesScaleFromString(const std::string& text, int& pos) {
  const std::string lowered = Lowered(text);
  SetFromStringHelper::SkipLeadingBlanks(lowered, pos);
  if (pos >= 0 && static_cast<std::size_t>(pos) >= lowered.size()) return CSemitones(kMajorMask);
  for (const TKeywordGroup& group : kKeywordGroups) {
    const std::pair<bool, int> match =
        SetFromStringHelper::CompareLowercaseStrsAndOnMatchAdvanceStringPos(
            SetFromStringHelper::TSpaces_WholeRest, group.keywords, lowered, pos);
    if (match.first) return CSemitones(group.mask);
  }
  return CSemitones(kMajorMask);
}

void SetFromString(const std::string& text, CScaleLite& scale, const CChordNamePrefs& prefs) {
  scale = CScaleLite();
  // Both readers work on the text with Unicode accidentals turned into "#" and "b", so that
  // the position after the root means the same to both.
  std::string converted = text;
  ConvertUtf8SharpAndFlatToAscii(converted);
  int pos = 0;
  scale.RootKeyEnh.SetFromString(converted, &pos, prefs);
  scale.Semitones = _SemitonesScaleFromString(converted, pos);
}

void SetFromString(const std::string& text, CScaleHeavy& scale, const CChordNamePrefs& prefs) {
  CScaleLite lite;
  SetFromString(text, lite, prefs);
  scale.SetFromRootKeyEnhAndCustomScaleSemitones_ResetCustomScaleData(lite.RootKeyEnh,
                                                                      lite.Semitones);
}

std::map<std::string, std::string> _Create_ScaleNames() { return {}; }

namespace CSemitonesKeywordNamesFactory {
std::map<std::string, std::string> Create(const std::string& /*kind*/) { return {}; }
}  // namespace CSemitonesKeywordNamesFactory

}  // namespace harmony
