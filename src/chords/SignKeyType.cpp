// The vocabulary of sign key types and the conversions between it, masks and scale types.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

namespace {

constexpr std::uint64_t kMajorMask = 2741;
constexpr std::uint64_t kMinorMask = 1453;

constexpr std::array<TScaleType, 10> kMinorSignatureScaleTypes = {
    st_min,    st_min_harm, st_min_melo, st_min_pent, st_min_blues,
    st_dorian, st_phrygian, st_locrian,  st_japanese, st_southeast_asian};

// Sign counts of each key's customary major and minor key, by key number.
constexpr std::array<int, 12> kMinimalMajorSignsCounts = {0, -5, 2, -3, 4, -1, 6, 1, -4, 3, -2, 5};
constexpr std::array<int, 12> kMinimalMinorSignsCounts = {-3, 4, -1, 6, 1, -4, 3, -2, 5, 0, -5, 2};

TScaleType ScaleTypeOf(TSignKeyType type) { return type == TSignKeyType::Minor ? st_min : st_maj; }

}  // namespace

std::ostream& operator<<(std::ostream& out, TSignKeyType type) {
  switch (type) {
    case TSignKeyType::Undef:
      return out << "Undef";
    case TSignKeyType::Major:
      return out << "Major";
    case TSignKeyType::Minor:
      return out << "Minor";
  }
  return out << "unkown TSignKeyType";
}

void ToJSONString(std::ostream& out, TSignKeyType type) {
  out << (type == TSignKeyType::Major ? "major" : type == TSignKeyType::Minor ? "minor" : "undef");
}

std::string InitializerText(TSignKeyType type) {
  std::ostringstream out;
  out << "TSignKeyType::" << type;
  return out.str();
}

std::ostream& operator<<(std::ostream& out, TSignKeyTypeNoUndef type) {
  switch (type) {
    case TSignKeyTypeNoUndef::Major:
      return out << "Major";
    case TSignKeyTypeNoUndef::Minor:
      return out << "Minor";
  }
  return out << "unkown TSignKeyTypeNoUndef";
}

void ToJSONString(std::ostream& out, TSignKeyTypeNoUndef type) {
  out << (type == TSignKeyTypeNoUndef::Major   ? "major"
          : type == TSignKeyTypeNoUndef::Minor ? "minor"
                                               : "undef");
}

TSignKeyType SignKeyTypeFromString(const std::string& text) {
  if (text == "maj") return TSignKeyType::Major;
  if (text == "min") return TSignKeyType::Minor;
  return TSignKeyType::Undef;
}

TSignKeyTypeNoUndef SignKeyTypeNoUndefFromString(const std::string& text) {
  return text == "min" ? TSignKeyTypeNoUndef::Minor : TSignKeyTypeNoUndef::Major;
}

TSignKeyType FromSignKeyTypeNoUndef(TSignKeyTypeNoUndef type) {
  switch (type) {
    case TSignKeyTypeNoUndef::Major:
      return TSignKeyType::Major;
    case TSignKeyTypeNoUndef::Minor:
      return TSignKeyType::Minor;
  }
  return TSignKeyType::Undef;
}

TSignKeyTypeNoUndef FromSignKeyType(TSignKeyType type) {
  return type == TSignKeyType::Minor ? TSignKeyTypeNoUndef::Minor : TSignKeyTypeNoUndef::Major;
}

TSignKeyTypeNoUndef FromSignKeyTypeInCaseOfUndefReturnMajor(TSignKeyType type) {
  return FromSignKeyType(type);
}

CSemitones SemitonesFromSignKeyType(TSignKeyType type) {
  if (type == TSignKeyType::Major) return CSemitones(kMajorMask);
  if (type == TSignKeyType::Minor) return CSemitones(kMinorMask);
  return CSemitones();
}

CSemitones SemitonesFromSignKeyTypeNoUndef(TSignKeyTypeNoUndef type) {
  return SemitonesFromSignKeyType(FromSignKeyTypeNoUndef(type));
}

TSignKeyType SignKeyTypeFromSemitones(const CSemitones& semitones) {
  if (semitones.Word() == kMajorMask) return TSignKeyType::Major;
  if (semitones.Word() == kMinorMask) return TSignKeyType::Minor;
  return TSignKeyType::Undef;
}

TSignKeyType SignKeyTypeFromScaleType(TScaleType type) {
  const bool minor = std::find(kMinorSignatureScaleTypes.begin(), kMinorSignatureScaleTypes.end(),
                               type) != kMinorSignatureScaleTypes.end();
  return minor ? TSignKeyType::Minor : TSignKeyType::Major;
}

TSignKeyTypeNoUndef SignKeyTypeNoUndefFromScaleType(TScaleType type) {
  return FromSignKeyType(SignKeyTypeFromScaleType(type));
}

int MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(int keyNr, TSignKeyType type) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return 0;
  if (type == TSignKeyType::Major) return kMinimalMajorSignsCounts[static_cast<std::size_t>(key)];
  if (type == TSignKeyType::Minor) return kMinimalMinorSignsCounts[static_cast<std::size_t>(key)];
  return 0;
}

int SignsCountForSignKeyWithKeyEnhAndSignKeyType(const CKeyEnh& key, TSignKeyType type) {
  if (type != TSignKeyType::Major && type != TSignKeyType::Minor) return 0;
  return CScaleHeavy(key, ScaleTypeOf(type)).SignsCount();
}

int SignsCountAbsForSignKeyWithKeyEnhAndSignKeyType(const CKeyEnh& key, TSignKeyType type) {
  return std::abs(SignsCountForSignKeyWithKeyEnhAndSignKeyType(key, type));
}

}  // namespace harmony
