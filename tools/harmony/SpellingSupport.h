#pragma once
// Spelling by letters: the letter a spelled key is written on, and the spelling of a key on a
// given letter. Shared by the commands that spell notes as intervals (voice, transpose).

#include <array>
#include <optional>

#include "harmony/pitch/Enh.h"
#include "harmony/pitch/KeyEnh.h"

namespace harmony::tool {

// The keys of the letters C D E F G A B.
inline constexpr std::array<int, 7> kNaturalKeys{0, 2, 4, 5, 7, 9, 11};

// 0 for C .. 6 for B; -1 for an undefined key.
inline int LetterOfKey(const CKeyEnh& key) {
  if (key.KeyNr == kKeyNrUndef || key.Enh == TEnh_Undef) return -1;
  const int natural = ((key.KeyNr - EnhToSemitone(key.Enh)) % 12 + 12) % 12;
  for (int letter = 0; letter < 7; ++letter) {
    if (kNaturalKeys[static_cast<std::size_t>(letter)] == natural) return letter;
  }
  return -1;
}

// The key number written on `letter` (counted on beyond B), with at most two sharps or flats.
inline std::optional<CKeyEnh> KeyOnLetter(int letter, int keyNr) {
  const int natural = kNaturalKeys[static_cast<std::size_t>(((letter % 7) + 7) % 7)];
  const int shift = ((keyNr - natural) % 12 + 18) % 12 - 6;  // -6..5
  if (shift < -2 || shift > 2) return std::nullopt;
  return CKeyEnh(((keyNr % 12) + 12) % 12, SemitoneToEnh(shift));
}

}  // namespace harmony::tool
