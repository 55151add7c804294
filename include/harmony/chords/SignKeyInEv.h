#pragma once
// The one-byte sign key that the host's event streams carry. A major key is 7 + its signs, a
// minor key 23 + its signs, the signs running from -7 (seven flats) to 7 (seven sharps); 15
// is undefined, so bit 4 marks minor.

#include <cstdint>
#include <utility>

#include "harmony/chords/SignKey.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

inline constexpr unsigned char kSignKeyInEvUndef = 15;
// What the deprecated form writes for an undefined sign key.
inline constexpr unsigned char kSignKeyInEvDeprecatedUndef = 255;

// The key signature of a host's score: a key number and major (0) or minor (1).
enum class TKeySignatureType : std::int32_t { Major = 0, Minor = 1 };
struct TKeySignature {
  int KeyNr = kKeyNrUndef;
  TKeySignatureType Type = TKeySignatureType::Major;
  friend bool operator==(const TKeySignature&, const TKeySignature&) = default;
};

// The byte of a spelled key; a spelling the byte can't hold (A sharp major) is written as
// its enharmonic neighbour (B flat major). A missing or impossible spelling is replaced by
// the one with the fewest signs first. 15 when nothing fits.
unsigned char ToSignKeyInEv(const CKeyEnh& key, TSignKeyType type);
unsigned char ToSignKeyInEv(const CKeyEnh& key, const CSemitones& semitones);
unsigned char _ToSignKeyInEv(const CKeyEnh& key, TSignKeyType type);
unsigned char _ToSignKeyInEv_AlterEnharmonically(const CKeyEnh& key, TSignKeyType type);
TEnh _ToSignKeyInEv_GuessEnhWithLeastSignes(const CKeyEnh& key, TSignKeyType type);

// The older form: the exact spelling or, for a missing or natural spelling, a fixed byte by
// key number; 255 for anything else.
unsigned char ToSignKeyInEvDeprecated(const CSignKeyLite& signKey);
unsigned char _ToSignKeyInEvDeprecated_TryToCorrectMissingEnh(const CSignKeyLite& signKey);

// Reading the byte: 15 and values above 30 give the undefined key with type 0 (mask 0).
CSignKeyLite ToSignKeyLite(unsigned char signKeyInEv);
std::pair<CKeyEnh, TSignKeyType> ToRootKeyEnhAndSignKeyType(unsigned char signKeyInEv);
std::pair<CKeyEnh, CSemitones> ToRootKeyEnhAndSemitones(unsigned char signKeyInEv);
// 15 is undefined; otherwise bit 4 decides.
TSignKeyType ToSignKeyType(unsigned char signKeyInEv);
// Above 30: key 15, type 0. Otherwise the key of the byte, major up to 15 and minor above.
TKeySignature KeySignatureFromSignKeyInEv(unsigned char signKeyInEv);
TSignKeyType ToSignKeyType(TKeySignatureType type);

}  // namespace harmony
