#pragma once
// The notation the lead-sheet chord reader knows, as tables. The reader
// (LeadSheetChordReader.cpp) holds the grammar; these tables hold the spellings.

#include <cstdint>
#include <span>
#include <string_view>

namespace harmony::leadsheet {

// Semitones above the root, as bits.
constexpr std::uint16_t Bit(int intvl) { return static_cast<std::uint16_t>(1u << intvl); }

// A word behind the root that sets the chord's quality.
struct TQuality {
  std::string_view text;
  std::int8_t third;       // semitones, -1 none
  std::int8_t fifth;       // semitones
  std::int8_t seventh;     // the seventh that 7, 9, 11 and 13 bring
  bool seventhAlone;       // the seventh sounds even without a number (Δ, ø)
  bool takesMajorSeventh;  // a major-seventh word may follow (CmMaj7, C+Δ7)
  std::uint16_t numbers;   // the numbers that may follow, as TNumber::id bits
};

enum TNumberId : std::uint8_t { kNum2, kNum4, kNum5, kNum6, kNum69, kNum7, kNum9, kNum11, kNum13 };

// A number right behind the quality.
struct TNumber {
  std::string_view text;
  TNumberId id;
  bool seventh;            // brings the quality's seventh
  std::uint16_t tensions;  // tones it adds, the implied ones included
};

// The sign in front of a degree.
enum TSign : std::uint8_t { kSignNone, kSignFlat, kSignSharp };

// A degree in the tail, with or without a sign: what it adds and what it replaces.
struct TDegree {
  TSign sign;
  std::string_view digits;
  std::int8_t tone;      // semitones above the root; 10 means "the quality's seventh"
  std::uint16_t clears;  // tensions it replaces (an altered ninth the natural ninth)
  bool replacesFifth;    // b5 and #5 take the fifth's place, unless added with "add"
};

enum TWordAction : std::uint8_t { kSus4, kSus2, kAlt, kSharpFifth, kAdd, kOmit };

// A word in the tail.
struct TWord {
  std::string_view text;  // matched without regard to case
  TWordAction action;
};

// The degrees "no" and "omit" take away.
struct TOmission {
  std::string_view digits;
  std::int8_t part;  // 3 the third, 5 the fifth, 7 the seventh, else the tension bits below
  std::uint16_t tensions;
};

std::span<const TQuality> Qualities();
// Spellings of the major seventh that may follow a minor or augmented quality, or stand in the
// tail: a word (with 7, 9, 11, 13) or a sign (also alone).
std::span<const TQuality> MajorSeventhWords();
std::span<const TNumber> Numbers();
std::span<const TDegree> Degrees();
std::span<const TWord> Words();
std::span<const TOmission> Omissions();

// Signs in front of a degree: b, #, -, + and the Unicode flat, sharp and minus.
struct TSignSpelling {
  std::string_view text;
  TSign sign;
};
std::span<const TSignSpelling> SignSpellings();

// Words for "no chord", matched without regard to case.
std::span<const std::string_view> NoChordWords();

}  // namespace harmony::leadsheet
