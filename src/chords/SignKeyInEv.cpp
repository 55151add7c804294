// The one-byte sign key of the host's events.

#include "harmony/chords/SignKeyInEv.h"

#include <array>

#include "chords/LeastSigns.h"

namespace harmony {

namespace {

constexpr unsigned char kLastSignKeyInEv = 30;

struct TSignKeyInEvRow {
  int keyNr;
  TEnh enh;
};

// By byte: 0..14 major keys from seven flats to seven sharps, 15 undefined, 16..30 the
// minor keys likewise.
constexpr std::array<TSignKeyInEvRow, 31> kSignKeyInEvRows = {{
    {11, TEnh_b}, {6, TEnh_b},  {1, TEnh_b},  {8, TEnh_b},
    {3, TEnh_b},  {10, TEnh_b}, {5, TEnh_n},  {0, TEnh_n},
    {7, TEnh_n},  {2, TEnh_n},  {9, TEnh_n},  {4, TEnh_n},
    {11, TEnh_n}, {6, TEnh_s},  {1, TEnh_s},  {kKeyNrUndef, TEnh_Undef},
    {8, TEnh_b},  {3, TEnh_b},  {10, TEnh_b}, {5, TEnh_n},
    {0, TEnh_n},  {7, TEnh_n},  {2, TEnh_n},  {9, TEnh_n},
    {4, TEnh_n},  {11, TEnh_n}, {6, TEnh_s},  {1, TEnh_s},
    {8, TEnh_s},  {3, TEnh_s},  {10, TEnh_s},
}};

// A spelling the byte can't hold, mapped to the byte of its enharmonic neighbour.
struct TAlteration {
  TSignKeyType type;
  int keyNr;
  TEnh enh1, enh2;
  unsigned char byte;
};
constexpr std::array<TAlteration, 20> kAlterations = {{
    {TSignKeyType::Minor, 0, TEnh_bb, TEnh_s, 20},   {TSignKeyType::Minor, 5, TEnh_bb, TEnh_s, 19},
    {TSignKeyType::Minor, 1, TEnh_b, TEnh_ss, 27},   {TSignKeyType::Minor, 4, TEnh_b, TEnh_ss, 24},
    {TSignKeyType::Minor, 6, TEnh_b, TEnh_ss, 26},   {TSignKeyType::Minor, 11, TEnh_b, TEnh_ss, 25},
    {TSignKeyType::Minor, 2, TEnh_bb, TEnh_ss, 22},  {TSignKeyType::Minor, 7, TEnh_bb, TEnh_ss, 21},
    {TSignKeyType::Minor, 9, TEnh_bb, TEnh_ss, 23},  {TSignKeyType::Major, 0, TEnh_bb, TEnh_s, 7},
    {TSignKeyType::Major, 5, TEnh_bb, TEnh_s, 6},    {TSignKeyType::Major, 2, TEnh_bb, TEnh_ss, 9},
    {TSignKeyType::Major, 7, TEnh_bb, TEnh_ss, 8},   {TSignKeyType::Major, 9, TEnh_bb, TEnh_ss, 10},
    {TSignKeyType::Major, 3, TEnh_s, TEnh_s, 4},     {TSignKeyType::Major, 8, TEnh_s, TEnh_s, 3},
    {TSignKeyType::Major, 10, TEnh_s, TEnh_s, 5},    {TSignKeyType::Major, 4, TEnh_b, TEnh_ss, 11},
    {TSignKeyType::Major, 11, TEnh_ss, TEnh_ss, 12},
}};

// The fixed bytes of the deprecated form for a key without spelling, by key number.
constexpr std::array<unsigned char, 12> kDeprecatedMajorBytes = {7, 2, 9, 4,  11, 6,
                                                                 1, 8, 3, 10, 5,  12};
constexpr std::array<unsigned char, 12> kDeprecatedMinorBytes = {20, 27, 22, 17, 24, 19,
                                                                 26, 21, 28, 23, 18, 25};

bool IsMajorOrMinor(TSignKeyType type) {
  return type == TSignKeyType::Major || type == TSignKeyType::Minor;
}

TSignKeyType TypeOfByte(unsigned char byte) {
  return byte < kSignKeyInEvUndef ? TSignKeyType::Major : TSignKeyType::Minor;
}

// The byte of exactly this key, spelling and type; 15 when the table has no such key.
unsigned char FindSignKeyInEv(const CKeyEnh& key, TSignKeyType type) {
  for (unsigned char byte = 0; byte <= kLastSignKeyInEv; ++byte) {
    const TSignKeyInEvRow& row = kSignKeyInEvRows[byte];
    if (byte != kSignKeyInEvUndef && TypeOfByte(byte) == type && row.keyNr == key.KeyNr &&
        row.enh == key.Enh) {
      return byte;
    }
  }
  return kSignKeyInEvUndef;
}

}  // namespace

unsigned char ToSignKeyInEv(const CKeyEnh& key, TSignKeyType type) {
  const unsigned char byte = _ToSignKeyInEv(key, type);
  return byte != kSignKeyInEvUndef ? byte : _ToSignKeyInEv_AlterEnharmonically(key, type);
}

unsigned char ToSignKeyInEv(const CKeyEnh& key, const CSemitones& semitones) {
  return ToSignKeyInEv(key, SignKeyTypeFromSemitones(semitones));
}

unsigned char _ToSignKeyInEv(const CKeyEnh& key, TSignKeyType type) {
  CKeyEnh spelled = key;
  if (spelled.Enh == TEnh_Undef || !IsSensefulEnhForKeyNr(spelled.KeyNr, spelled.Enh)) {
    spelled.Enh = _ToSignKeyInEv_GuessEnhWithLeastSignes(spelled, type);
  }
  if (!IsMajorOrMinor(type)) return kSignKeyInEvUndef;
  return FindSignKeyInEv(spelled, type);
}

unsigned char _ToSignKeyInEv_AlterEnharmonically(const CKeyEnh& key, TSignKeyType type) {
  if (!IsMajorOrMinor(type)) return kSignKeyInEvUndef;
  for (const TAlteration& alteration : kAlterations) {
    if (alteration.type == type && alteration.keyNr == key.KeyNr &&
        (alteration.enh1 == key.Enh || alteration.enh2 == key.Enh)) {
      return alteration.byte;
    }
  }
  return kSignKeyInEvUndef;
}

TEnh _ToSignKeyInEv_GuessEnhWithLeastSignes(const CKeyEnh& key, TSignKeyType type) {
  CSignKeyLite signKey(key, type);
  // The least-signs choice is made for major or minor; an undefined type spells as major.
  if (!IsMajorOrMinor(type)) signKey.SignKeyType = TSignKeyType::Major;
  signKey.SetRootNoteEnhWithLeastSigns();
  return signKey.RootKeyEnh.Enh;
}

unsigned char ToSignKeyInEvDeprecated(const CSignKeyLite& signKey) {
  if (signKey.IsUndef() || !IsMajorOrMinor(signKey.SignKeyType)) {
    return kSignKeyInEvDeprecatedUndef;
  }
  const unsigned char byte = FindSignKeyInEv(signKey.RootKeyEnh, signKey.SignKeyType);
  if (byte != kSignKeyInEvUndef) return byte;
  return _ToSignKeyInEvDeprecated_TryToCorrectMissingEnh(signKey);
}

unsigned char _ToSignKeyInEvDeprecated_TryToCorrectMissingEnh(const CSignKeyLite& signKey) {
  const CKeyEnh& key = signKey.RootKeyEnh;
  if (key.Enh != TEnh_Undef && key.Enh != TEnh_n) return kSignKeyInEvDeprecatedUndef;
  if (key.KeyNr < 0 || key.KeyNr > 11) return kSignKeyInEvDeprecatedUndef;
  const auto index = static_cast<std::size_t>(key.KeyNr);
  if (signKey.SignKeyType == TSignKeyType::Major) return kDeprecatedMajorBytes[index];
  if (signKey.SignKeyType == TSignKeyType::Minor) return kDeprecatedMinorBytes[index];
  return kSignKeyInEvDeprecatedUndef;
}

std::pair<CKeyEnh, TSignKeyType> ToRootKeyEnhAndSignKeyType(unsigned char signKeyInEv) {
  if (signKeyInEv == kSignKeyInEvUndef || signKeyInEv > kLastSignKeyInEv) {
    return {CKeyEnh(), TSignKeyType::Undef};
  }
  const TSignKeyInEvRow& row = kSignKeyInEvRows[signKeyInEv];
  return {CKeyEnh(row.keyNr, row.enh), TypeOfByte(signKeyInEv)};
}

std::pair<CKeyEnh, CSemitones> ToRootKeyEnhAndSemitones(unsigned char signKeyInEv) {
  const auto [key, type] = ToRootKeyEnhAndSignKeyType(signKeyInEv);
  return {key, SemitonesFromSignKeyType(type)};
}

CSignKeyLite ToSignKeyLite(unsigned char signKeyInEv) {
  // 255, the undefined value of the deprecated form, lies above 30 and reads as undefined.
  const auto [key, type] = ToRootKeyEnhAndSignKeyType(signKeyInEv);
  return CSignKeyLite(key, type);
}

TSignKeyType ToSignKeyType(unsigned char signKeyInEv) {
  if (signKeyInEv == kSignKeyInEvUndef) return TSignKeyType::Undef;
  return (signKeyInEv & 0x10) != 0 ? TSignKeyType::Minor : TSignKeyType::Major;
}

TKeySignature KeySignatureFromSignKeyInEv(unsigned char signKeyInEv) {
  if (signKeyInEv > kLastSignKeyInEv) return {kKeyNrUndef, TKeySignatureType::Major};
  return {kSignKeyInEvRows[signKeyInEv].keyNr,
          signKeyInEv <= kSignKeyInEvUndef ? TKeySignatureType::Major : TKeySignatureType::Minor};
}

TSignKeyType ToSignKeyType(TKeySignatureType type) {
  switch (type) {
    case TKeySignatureType::Major:
      return TSignKeyType::Major;
    case TKeySignatureType::Minor:
      return TSignKeyType::Minor;
  }
  return TSignKeyType::Undef;
}

}  // namespace harmony
