#pragma once
// The closed vocabularies of MusicXML (yes/no, start/stop, steps, note types, clef signs...)
// as enumerations, each with a table between the words of the file and its values. The
// words are compared exactly, upper and lower case as they stand; a word a table lacks gives
// the caller's fallback, so a reader keeps the value a record already has.

#include <boost/bimap.hpp>
#include <cstdint>
#include <string>
#include <string_view>

namespace harmony {

// The undefined value of every 32-bit integer (and enumeration) of the MusicXML records.
inline constexpr std::int32_t kMuxmlUndef32 = static_cast<std::int32_t>(0x80000001u);

// Each member: a nested enumeration TType and the table GetBiMap (left: the word, right: the
// value), built at first use and kept until the program ends.
class TMuxmlEnum_YesNo {
 public:
  enum TType : std::int32_t { kYes = 0, kNo = 1 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_StartStop {
 public:
  enum TType : std::int32_t { kStart = 1, kStop = 2, kContinue = 3 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_Stem {
 public:
  enum TType : std::int32_t { kNone = 0, kDown = 1, kUp = 2, kDouble = 3 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

// The letters of `step` and `display-step` counted from C, as a scale walks them.
class TMuxmlEnum_Step {
 public:
  enum TType : std::int32_t { kC = 0, kD = 1, kE = 2, kF = 3, kG = 4, kA = 5, kB = 6 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_NoteType {
 public:
  enum TType : std::int32_t { kUndefined = 0, kPitched = 1, kUnpitched = 2, kRest = 3 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

// The graphical note values, shortest first; kUndef stands for "no value given".
class TMuxmlEnum_NoteTypeValue {
 public:
  enum TType : std::int32_t {
    k1024th = 0,
    k512th = 1,
    k256th = 2,
    k128th = 3,
    k64th = 4,
    k32nd = 5,
    k16th = 6,
    kEighth = 7,
    kQuarter = 8,
    kHalf = 9,
    kWhole = 10,
    kBreve = 11,
    kLong = 12,
    kMaxima = 13,
    kUndef = 14,
  };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_SymbolSize {
 public:
  enum TType : std::int32_t { kFull = 0, kCue = 1, kLarge = 2 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_FontStyle {
 public:
  enum TType : std::int32_t { kNormal = 0, kItalic = 1 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_FontWeight {
 public:
  enum TType : std::int32_t { kNormal = 0, kBold = 1 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_AboveBelow {
 public:
  enum TType : std::int32_t { kAbove = 0, kBelow = 1 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_Accidental {
 public:
  enum TType : std::int32_t {
    kNatural = 0,
    kSharp = 1,
    kFlat = 2,
    kDoubleSharp = 3,
    kFlatFlat = 4,
  };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_FermataShape {
 public:
  enum TType : std::int32_t { kNormal = 0, kAngled = 1, kSquare = 2 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_UprightInverted {
 public:
  enum TType : std::int32_t { kUpright = 0, kInverted = 1 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_LineShape {
 public:
  enum TType : std::int32_t { kStraight = 0, kCurved = 1 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_LineType {
 public:
  enum TType : std::int32_t { kSolid = 0, kDashed = 1, kDotted = 2, kWavy = 3 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_SignKeyMode {
 public:
  enum TType : std::int32_t {
    kMajor = 0,
    kMinor = 1,
    kDorian = 2,
    kPhrygian = 3,
    kLydian = 4,
    kMixolydian = 5,
    kAeolian = 6,
    kIonian = 7,
    kLocrian = 8,
    kNone = 9,
  };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_ClefSign {
 public:
  enum TType : std::int32_t {
    kG = 0,
    kF = 1,
    kC = 2,
    kPercussion = 3,
    kTAB = 4,
    kJianpu = 5,
    kNone = 6,
  };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_ShowTuplet {
 public:
  enum TType : std::int32_t { kActual = 0, kBoth = 1, kNone = 2 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_EnclosureShape {
 public:
  enum TType : std::int32_t {
    kSquare = 0,
    kOval = 1,
    kCircle = 2,
    kBracket = 3,
    kTriangle = 4,
    kDiamond = 5,
    kNone = 6,
  };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

class TMuxmlEnum_LeftCenterRight {
 public:
  enum TType : std::int32_t { kLeft = 0, kCenter = 1, kRight = 2 };
  using TBiMap = boost::bimap<std::string, TType>;
  static const TBiMap& GetBiMap();
};

// The value of `word` in the table of TEnum, or `fallback` when the table lacks the word.
template <class TEnum>
typename TEnum::TType MuxmlEnumValue(std::string_view word, typename TEnum::TType fallback) {
  const auto& left = TEnum::GetBiMap().left;
  const auto found = left.find(std::string(word));
  return found == left.end() ? fallback : found->second;
}

// The same with a plain integer as fallback (-1 for an unknown step, the undefined value).
template <class TEnum>
typename TEnum::TType MuxmlEnumValue(std::string_view word, std::int32_t fallback) {
  return MuxmlEnumValue<TEnum>(word, static_cast<typename TEnum::TType>(fallback));
}

// The word of `value`, or "" for a value the table lacks.
template <class TEnum>
std::string MuxmlEnumWord(typename TEnum::TType value) {
  const auto& right = TEnum::GetBiMap().right;
  const auto found = right.find(value);
  return found == right.end() ? std::string() : found->second;
}

// An enumeration field that nothing has set yet.
template <class TEnum>
constexpr typename TEnum::TType MuxmlEnumUndef() {
  return static_cast<typename TEnum::TType>(kMuxmlUndef32);
}

}  // namespace harmony
