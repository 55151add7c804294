// The spellings of chord symbols on lead sheets, as the reader knows them.
//
// Sources of the conventions: the chord charts of jazz and pop fake books and real books
// (maj7, ma7, M7, Δ, -, ø, °, +, alt, 7sus4, 6/9), the chord tables of guitar and keyboard chord
// books (add9, add2, 2, 4, 5, no3, omit5, sus2, the implied ninth of 11 and 13), the standard
// texts on jazz and pop harmony and notation (the altered dominant, tensions in parentheses,
// -5/+5 for flat and sharp five in older charts), German note names as German music teaching
// writes them (Cis, Es, As, H, B for B flat) and the fixed-do solfege of Romance languages
// (Do Re Mi Fa Sol La Si, Ti in English-speaking solfege).

#include "LeadSheetNotation.h"

#include <array>
#include <initializer_list>

namespace harmony::leadsheet {

namespace {

constexpr std::uint16_t NumberBits(std::initializer_list<TNumberId> ids) {
  std::uint16_t bits = 0;
  for (TNumberId id : ids) bits |= static_cast<std::uint16_t>(1u << id);
  return bits;
}

constexpr std::uint16_t kTriadNumbers =
    NumberBits({kNum2, kNum4, kNum6, kNum69, kNum7, kNum9, kNum11, kNum13});
constexpr std::uint16_t kMajorNumbers = NumberBits({kNum6, kNum69, kNum7, kNum9, kNum11, kNum13});
constexpr std::uint16_t kSeventhNumbers = NumberBits({kNum7, kNum9, kNum11, kNum13});

// third, fifth, seventh, seventh alone, major seventh may follow, numbers
constexpr TQuality kMinor{"m", 3, 7, 10, false, true, kTriadNumbers};
constexpr TQuality kMajor{"M", 4, 7, 11, false, false, kMajorNumbers};
constexpr TQuality kMajorSign{"^", 4, 7, 11, true, false, kMajorNumbers};
constexpr TQuality kDim{"dim", 3, 6, 9, false, false, NumberBits({kNum7})};
constexpr TQuality kHalfDim{"h", 3, 6, 10, true, false, NumberBits({kNum7, kNum9, kNum11})};
constexpr TQuality kAug{"aug", 4, 8, 10, false, true, kSeventhNumbers};

constexpr TQuality Spelled(TQuality quality, std::string_view text) {
  quality.text = text;
  return quality;
}

constexpr std::array kQualities{
    Spelled(kMinor, "m"),          Spelled(kMinor, "mi"),         Spelled(kMinor, "min"),
    Spelled(kMinor, "MI"),         Spelled(kMinor, "MIN"),        Spelled(kMinor, "moll"),
    Spelled(kMinor, "-"),          Spelled(kMinor, "\u2212"),     Spelled(kMajor, "M"),
    Spelled(kMajor, "ma"),         Spelled(kMajor, "maj"),        Spelled(kMajor, "Ma"),
    Spelled(kMajor, "Maj"),        Spelled(kMajor, "MA"),         Spelled(kMajor, "MAJ"),
    Spelled(kMajor, "j"),          Spelled(kMajorSign, "^"),      Spelled(kMajorSign, "\u0394"),
    Spelled(kMajorSign, "\u2206"), Spelled(kMajorSign, "\u25B3"), Spelled(kMajorSign, "\u25B5"),
    Spelled(kDim, "dim"),          Spelled(kDim, "DIM"),          Spelled(kDim, "o"),
    Spelled(kDim, "\u00B0"),       Spelled(kDim, "\u00BA"),       Spelled(kHalfDim, "h"),
    Spelled(kHalfDim, "\u00F8"),   Spelled(kHalfDim, "\u00D8"),   Spelled(kHalfDim, "\u2300"),
    Spelled(kAug, "aug"),          Spelled(kAug, "AUG"),          Spelled(kAug, "+"),
};

constexpr std::array kMajorSeventhWords{
    Spelled(kMajor, "M"),          Spelled(kMajor, "ma"),         Spelled(kMajor, "maj"),
    Spelled(kMajor, "Ma"),         Spelled(kMajor, "Maj"),        Spelled(kMajor, "MA"),
    Spelled(kMajor, "MAJ"),        Spelled(kMajor, "j"),          Spelled(kMajorSign, "^"),
    Spelled(kMajorSign, "\u0394"), Spelled(kMajorSign, "\u2206"), Spelled(kMajorSign, "\u25B3"),
    Spelled(kMajorSign, "\u25B5"),
};

constexpr std::uint16_t k9 = Bit(2), k11 = Bit(5), k13 = Bit(9);

constexpr std::array kNumbers{
    TNumber{"13", kNum13, true, k9 | k13},  TNumber{"11", kNum11, true, k9 | k11},
    TNumber{"69", kNum69, false, k9 | k13}, TNumber{"9", kNum9, true, k9},
    TNumber{"7", kNum7, true, 0},           TNumber{"6", kNum6, false, k13},
    TNumber{"5", kNum5, false, 0},          TNumber{"4", kNum4, false, k11},
    TNumber{"2", kNum2, false, k9},
};

// Two-digit degrees first, so that 11 and 13 are not read as 1.
constexpr std::array kDegrees{
    TDegree{kSignSharp, "11", 6, k11, false}, TDegree{kSignNone, "11", 5, 0, false},
    TDegree{kSignFlat, "13", 8, k13, false},  TDegree{kSignNone, "13", 9, 0, false},
    TDegree{kSignFlat, "5", 6, 0, true},      TDegree{kSignSharp, "5", 8, 0, true},
    TDegree{kSignFlat, "9", 1, k9, false},    TDegree{kSignSharp, "9", 3, k9, false},
    TDegree{kSignNone, "9", 2, 0, false},     TDegree{kSignFlat, "6", 8, k13, false},
    TDegree{kSignNone, "6", 9, 0, false},     TDegree{kSignSharp, "4", 6, k11, false},
    TDegree{kSignNone, "4", 5, 0, false},     TDegree{kSignNone, "2", 2, 0, false},
    TDegree{kSignFlat, "2", 1, k9, false},    TDegree{kSignNone, "7", 10, 0, false},
};

constexpr std::array kWords{
    TWord{"sus 4", kSus4}, TWord{"sus 2", kSus2}, TWord{"sus4", kSus4},      TWord{"sus2", kSus2},
    TWord{"sus", kSus4},   TWord{"alt", kAlt},    TWord{"aug", kSharpFifth}, TWord{"add", kAdd},
    TWord{"omit", kOmit},  TWord{"no", kOmit},
};

constexpr std::array kOmissions{
    TOmission{"13", 0, k13}, TOmission{"11", 0, k11}, TOmission{"3", 3, 0},
    TOmission{"5", 5, 0},    TOmission{"7", 7, 0},    TOmission{"9", 0, k9},
};

constexpr std::array kSignSpellings{
    TSignSpelling{"b", kSignFlat},  TSignSpelling{"\u266D", kSignFlat},
    TSignSpelling{"-", kSignFlat},  TSignSpelling{"\u2212", kSignFlat},
    TSignSpelling{"#", kSignSharp}, TSignSpelling{"\u266F", kSignSharp},
    TSignSpelling{"+", kSignSharp},
};

constexpr std::array<std::string_view, 5> kNoChordWords{"n.c.", "n.c", "n/c", "nc", "no chord"};

}  // namespace

std::span<const TQuality> Qualities() { return kQualities; }
std::span<const TQuality> MajorSeventhWords() { return kMajorSeventhWords; }
std::span<const TNumber> Numbers() { return kNumbers; }
std::span<const TDegree> Degrees() { return kDegrees; }
std::span<const TWord> Words() { return kWords; }
std::span<const TOmission> Omissions() { return kOmissions; }
std::span<const TSignSpelling> SignSpellings() { return kSignSpellings; }
std::span<const std::string_view> NoChordWords() { return kNoChordWords; }

}  // namespace harmony::leadsheet
