#pragma once
// How the MusicXML records take values from attributes: a field changes only when its
// attribute is there, numbers are read the forgiving way (MusicXmlText.h), and a word the
// vocabulary lacks leaves the field as it was. Also the saturating integer arithmetic the
// records and the import context share, so that absurd durations in a file can't overflow.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLAttributes.h"
#include "musicxml/MusicXmlText.h"

namespace harmony::musicxml {

inline void ReadString(const CXMLAttributes& attributes, std::string_view name,
                       std::string& field) {
  if (const auto value = attributes.Find(name)) field = std::string(*value);
}

inline void ReadFloat(const CXMLAttributes& attributes, std::string_view name, float& field) {
  if (const auto value = attributes.Find(name)) {
    field = static_cast<float>(DoubleValueOfText(*value));
  }
}

inline void ReadInt32(const CXMLAttributes& attributes, std::string_view name,
                      std::int32_t& field) {
  if (const auto value = attributes.Find(name)) field = IntValueOfText(*value);
}

// Counts and staff numbers: a negative number counts as 0.
inline std::uint64_t UnsignedValueOfText(std::string_view text) {
  return static_cast<std::uint64_t>(std::max<std::int32_t>(IntValueOfText(text), 0));
}

inline void ReadUnsigned(const CXMLAttributes& attributes, std::string_view name,
                         std::uint64_t& field) {
  if (const auto value = attributes.Find(name)) field = UnsignedValueOfText(*value);
}

template <class TEnum>
void ReadEnum(const CXMLAttributes& attributes, std::string_view name,
              typename TEnum::TType& field) {
  if (const auto value = attributes.Find(name)) field = MuxmlEnumValue<TEnum>(*value, field);
}

// The same into a field kept as a plain integer.
template <class TEnum>
void ReadEnum(const CXMLAttributes& attributes, std::string_view name, std::int32_t& field) {
  if (const auto value = attributes.Find(name)) field = MuxmlEnumValue<TEnum>(*value, field);
}

inline std::int32_t ClampToInt32(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

inline std::int32_t AddSaturated32(std::int32_t a, std::int32_t b) {
  return ClampToInt32(std::int64_t{a} + std::int64_t{b});
}

// A float truncated toward zero into 32 bits; NaN counts as 0, infinities as the limits.
inline std::int32_t TruncateToInt32(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

}  // namespace harmony::musicxml
