#pragma once
// The tones of a scale written out for a person, each letter once where the scale has seven
// tones: G Mixolydian flat 9 is G A♭ B C D E F, not G G♯ B C D E F as a key signature of
// sharps would have it.

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "ScaleCommandSupport.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony::tool {

namespace letter_spelling {

inline constexpr int Mod12(int value) { return (value % 12 + 12) % 12; }

// How a scale is written: the root keeps its own spelling, the letters go up with the tones,
// and of such spellings the cheapest wins. A single accidental costs 10, a double one 40; an
// accidental on a white key (F♭, E♯) or against the root's direction (a sharp above a root
// written with a flat) costs more, and so does a letter used twice: much in a seven-tone scale,
// which has a letter per degree, little in the others. So G Mixolydian flat 9 reads
// G A♭ B C D E F, F♯ harmonic minor F♯ G♯ A B C♯ D E♯, C major blues C D E♭ E G A.
struct TLetterCosts {
  static constexpr int kSingle = 10;
  static constexpr int kDouble = 40;
  static constexpr int kWhiteKey = 15;
  static constexpr int kAgainstRoot = 10;
  static constexpr int kImpossible = 1 << 20;
  static int SameLetter(std::size_t tones) { return tones == 7 ? 30 : 12; }
};

inline int AccidentalCost(int key, int accidental, int rootAccidental) {
  if (accidental == 0) return 0;
  if (accidental < -2 || accidental > 2) return TLetterCosts::kImpossible;
  const int base =
      (accidental == 1 || accidental == -1) ? TLetterCosts::kSingle : TLetterCosts::kDouble;
  const bool againstRoot = rootAccidental > 0 ? accidental < 0 : accidental > 0;
  return base + (againstRoot ? TLetterCosts::kAgainstRoot : 0) +
         (IsWhiteKey(key) ? TLetterCosts::kWhiteKey : 0);
}

inline std::optional<std::vector<std::string>> SpelledByLetters(const CScaleLite& scale,
                                                                const CChordNamePrefs& prefs) {
  static constexpr std::array<int, 7> kNaturalKeys{0, 2, 4, 5, 7, 9, 11};
  const CKeyEnh root = scale.RootKeyEnh;
  if (root.IsUndef() || root.Enh < TEnh_bb || root.Enh > TEnh_ss) return std::nullopt;
  const int rootAccidental = root.Enh - TEnh_n;
  const auto rootLetter = static_cast<std::size_t>(
      std::find(kNaturalKeys.begin(), kNaturalKeys.end(), Mod12(root.KeyNr - rootAccidental)) -
      kNaturalKeys.begin());
  std::vector<int> keys;
  for (int intvl : scale.Semitones.IntvlSet()) keys.push_back(Mod12(root.KeyNr + intvl));
  if (keys.empty() || keys.front() != root.KeyNr) return std::nullopt;
  const auto accidental = [&](std::size_t tone, std::size_t letter) {
    return Mod12(keys[tone] - kNaturalKeys[(rootLetter + letter) % 7] + 6) - 6;
  };
  // cost[t][l]: the cheapest spelling of tones 0..t with tone t on letter l above the root's.
  std::vector<std::array<int, 7>> cost(keys.size());
  std::vector<std::array<std::size_t, 7>> from(keys.size());
  cost[0].fill(TLetterCosts::kImpossible);
  cost[0][0] = 0;
  for (std::size_t t = 1; t < keys.size(); ++t) {
    for (std::size_t l = 0; l < 7; ++l) {
      cost[t][l] = TLetterCosts::kImpossible;
      const int own = AccidentalCost(keys[t], accidental(t, l), rootAccidental);
      for (std::size_t previous = 0; previous <= l; ++previous) {
        const int total = cost[t - 1][previous] + own +
                          (previous == l ? TLetterCosts::SameLetter(keys.size()) : 0);
        if (total < cost[t][l]) {
          cost[t][l] = total;
          from[t][l] = previous;
        }
      }
    }
  }
  const auto last = static_cast<std::size_t>(
      std::min_element(cost.back().begin(), cost.back().end()) - cost.back().begin());
  if (cost.back()[last] >= TLetterCosts::kImpossible) return std::nullopt;
  std::vector<std::string> tones(keys.size());
  for (std::size_t t = keys.size(), letter = last; t-- > 0; letter = t > 0 ? from[t][letter] : 0) {
    tones[t] = KeyNrAndEnhToName(keys[t], static_cast<TEnh>(TEnh_n + accidental(t, letter)), prefs);
  }
  return tones;
}

}  // namespace letter_spelling

// The scale's tones from its root, spelled by letters; a scale the letters can't spell (more
// than double accidentals) is spelled as the library spells it.
inline std::vector<std::string> SpelledTones(const CScaleLite& scale,
                                             const CChordNamePrefs& prefs) {
  if (auto byLetters = letter_spelling::SpelledByLetters(scale, prefs)) return *byLetters;
  std::vector<std::string> tones;
  std::istringstream words(SpelledDegrees(CScaleHeavy(scale.RootKeyEnh, scale.Semitones), prefs));
  for (std::string tone; words >> tone;) tones.push_back(tone);
  return tones;
}

}  // namespace harmony::tool
