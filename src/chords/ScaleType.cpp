#include "harmony/chords/ScaleType.h"

#include "chords/ScaleTypeTable.h"

namespace harmony {

using chords_detail::kScaleTypeRows;
using chords_detail::ScaleTypeRow;

namespace {

// Steps in unsigned arithmetic, so that stepping past the ends of int32 wraps instead of
// overflowing.
TScaleType Stepped(TScaleType type, std::uint32_t by) {
  return static_cast<TScaleType>(static_cast<std::uint32_t>(type) + by);
}

// The transposition from a church mode's root to the root of its major scale.
struct TIonianShift {
  TScaleType type;
  int intvl;
};
constexpr TIonianShift kIonianShifts[] = {
    {st_maj, 0},     {st_min, -9},      {st_lydian, -5},   {st_mixolydian, -7},
    {st_dorian, -2}, {st_phrygian, -4}, {st_locrian, -11},
};

// The JSON reader knows the names up to st_custom only.
constexpr int kLastReadableJsonType = st_custom;

}  // namespace

TScaleType& operator++(TScaleType& type) { return type = Stepped(type, 1); }
TScaleType operator++(TScaleType& type, int) {
  const TScaleType old = type;
  type = Stepped(type, 1);
  return old;
}
TScaleType& operator--(TScaleType& type) { return type = Stepped(type, ~std::uint32_t{0}); }
TScaleType operator--(TScaleType& type, int) {
  const TScaleType old = type;
  type = Stepped(type, ~std::uint32_t{0});
  return old;
}

bool IsScaleTypeModal(TScaleType type) {
  for (const TIonianShift& shift : kIonianShifts) {
    if (shift.type == type) return true;
  }
  return false;
}

std::ostream& operator<<(std::ostream& out, TScaleType type) {
  const auto* row = ScaleTypeRow(type);
  return out << (row != nullptr ? row->streamName : "undef");
}

void ToJSONString(std::ostream& out, TScaleType type) {
  const auto* row = ScaleTypeRow(type);
  out << (row != nullptr ? row->jsonName : "undef");
}

TScaleType ScaleTypeFromJSONString(const std::string& text) {
  for (int value = st_maj; value <= kLastReadableJsonType; ++value) {
    if (text == kScaleTypeRows[static_cast<std::size_t>(value)].jsonName) {
      return static_cast<TScaleType>(value);
    }
  }
  return st_Undef;
}

CSemitones SemitonesFromScaleType(TScaleType type) {
  if (type < st_maj || type > DoubleHarmonic) return CSemitones();
  return CSemitones(kScaleTypeRows[static_cast<std::size_t>(type)].mask);
}

TScaleType ScaleTypeFromSemitones(const CSemitones& semitones) {
  if (semitones.IsEmpty()) return st_Undef;
  for (int value = st_maj; value <= DoubleHarmonic; ++value) {
    if (kScaleTypeRows[static_cast<std::size_t>(value)].mask == semitones.Word()) {
      return static_cast<TScaleType>(value);
    }
  }
  return st_custom;
}

namespace CKeyEnhUtil {

CKeyEnh RelatedIonianScaleRootKeyEnh(const CKeyEnh& root, TScaleType type) {
  for (const TIonianShift& shift : kIonianShifts) {
    if (shift.type == type) return root.Transpose(shift.intvl);
  }
  return CKeyEnh();
}

CKeyEnh RelatedIonianScaleRootKeyEnh(const CKeyEnh& root, const CSemitones& semitones) {
  return RelatedIonianScaleRootKeyEnh(root, ScaleTypeFromSemitones(semitones));
}

}  // namespace CKeyEnhUtil

}  // namespace harmony
