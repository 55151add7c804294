#include "harmony/pitch/Enh.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "harmony/pitch/KeyNumbers.h"

namespace harmony {

namespace {

// Indexed by enh + 1 for TEnh_bbb .. TEnh_sss.
constexpr std::array<const char*, 7> kEnhTexts = {
    "triple flat", "double flat", "flat", "neutral", "sharp", "double sharp", "triple sharp"};
constexpr std::array<const char*, 7> kEnhInitializerTexts = {
    "TEnh_bbb", "TEnh_bb", "TEnh_b", "TEnh_n", "TEnh_s", "TEnh_ss", "TEnh_sss"};

constexpr bool IsRealEnh(TEnh enh) { return enh >= TEnh_bbb && enh <= TEnh_sss; }

constexpr TEnh ClampEnh(TEnh enh, TEnh low, TEnh high) {
  return enh < low ? low : (enh > high ? high : enh);
}

constexpr unsigned EnhBit(TEnh enh) { return 1u << (enh + 1); }

template <class... E>
constexpr unsigned EnhMask(E... enhs) {
  return (EnhBit(enhs) | ...);
}

// The accidentals each key number can be written with, one bit per TEnh_bbb .. TEnh_sss.
constexpr std::array<unsigned, 12> kSensefulEnhs = {
    EnhMask(TEnh_bb, TEnh_n, TEnh_s, TEnh_sss),             // C: D double flat .. A triple sharp
    EnhMask(TEnh_bbb, TEnh_b, TEnh_s, TEnh_ss),             // C sharp / D flat
    EnhMask(TEnh_bbb, TEnh_bb, TEnh_n, TEnh_ss, TEnh_sss),  // D
    EnhMask(TEnh_bb, TEnh_b, TEnh_s, TEnh_sss),             // D sharp / E flat
    EnhMask(TEnh_bbb, TEnh_b, TEnh_n, TEnh_ss),             // E
    EnhMask(TEnh_bb, TEnh_n, TEnh_s, TEnh_sss),             // F
    EnhMask(TEnh_bbb, TEnh_b, TEnh_s, TEnh_ss),             // F sharp / G flat
    EnhMask(TEnh_bb, TEnh_n, TEnh_ss, TEnh_sss),            // G
    EnhMask(TEnh_bbb, TEnh_b, TEnh_s, TEnh_sss),            // G sharp / A flat
    EnhMask(TEnh_bbb, TEnh_bb, TEnh_n, TEnh_ss),            // A
    EnhMask(TEnh_bb, TEnh_b, TEnh_s, TEnh_sss),             // A sharp / B flat
    EnhMask(TEnh_bbb, TEnh_b, TEnh_n, TEnh_ss),             // B
};

// The C-major spelling of a key when the hint does not fit: by a double-flat hint, by a
// double-sharp hint, and by any other hint.
struct TCMajorFallback {
  TEnh forBb, forSs, forOther;
};
constexpr TCMajorFallback kFallbackCDG{TEnh_n, TEnh_n, TEnh_n};
constexpr TCMajorFallback kFallbackCF{TEnh_n, TEnh_s, TEnh_n};
constexpr TCMajorFallback kFallbackSharpBlack{TEnh_b, TEnh_s, TEnh_s};
constexpr TCMajorFallback kFallbackFlatBlack{TEnh_b, TEnh_s, TEnh_b};
constexpr TCMajorFallback kFallbackEB{TEnh_b, TEnh_n, TEnh_n};
constexpr std::array<TCMajorFallback, 12> kCMajorFallbacks = {
    kFallbackCF,         kFallbackSharpBlack, kFallbackCDG,        kFallbackFlatBlack,
    kFallbackEB,         kFallbackCF,         kFallbackSharpBlack, kFallbackCDG,
    kFallbackSharpBlack, kFallbackCDG,        kFallbackFlatBlack,  kFallbackEB,
};

// Shift results for the hints TEnh_bb, TEnh_b, TEnh_n, TEnh_s, TEnh_ss.
using TShiftRow = std::array<TEnh, 5>;
constexpr TShiftRow kFlatsCF{TEnh_bb, TEnh_bb, TEnh_bb, TEnh_n, TEnh_s};
constexpr TShiftRow kFlatsSharpBlack{TEnh_b, TEnh_b, TEnh_b, TEnh_b, TEnh_s};
constexpr TShiftRow kFlatsFlatBlack{TEnh_bb, TEnh_bb, TEnh_b, TEnh_b, TEnh_s};
constexpr TShiftRow kFlatsEB{TEnh_b, TEnh_b, TEnh_b, TEnh_n, TEnh_n};
constexpr TShiftRow kFlatsOther{TEnh_bb, TEnh_bb, TEnh_bb, TEnh_n, TEnh_n};
constexpr std::array<TShiftRow, 12> kShiftToFlats = {
    kFlatsCF,         kFlatsSharpBlack, kFlatsOther,      kFlatsFlatBlack,
    kFlatsEB,         kFlatsCF,         kFlatsSharpBlack, kFlatsOther,
    kFlatsSharpBlack, kFlatsOther,      kFlatsFlatBlack,  kFlatsEB,
};

constexpr TShiftRow kSharpsCF{TEnh_n, TEnh_n, TEnh_s, TEnh_s, TEnh_s};
constexpr TShiftRow kSharpsCsFs{TEnh_b, TEnh_s, TEnh_s, TEnh_ss, TEnh_ss};
constexpr TShiftRow kSharpsEbGsBb{TEnh_b, TEnh_s, TEnh_s, TEnh_s, TEnh_s};
constexpr TShiftRow kSharpsEB{TEnh_b, TEnh_n, TEnh_ss, TEnh_ss, TEnh_ss};
constexpr TShiftRow kSharpsOther{TEnh_n, TEnh_n, TEnh_ss, TEnh_ss, TEnh_ss};
constexpr std::array<TShiftRow, 12> kShiftToSharps = {
    kSharpsCF,   kSharpsCsFs,  kSharpsOther,  kSharpsEbGsBb, kSharpsEB,     kSharpsCF,
    kSharpsCsFs, kSharpsOther, kSharpsEbGsBb, kSharpsOther,  kSharpsEbGsBb, kSharpsEB,
};

// The undefined key takes the rows of the keys without a special rule.
const TShiftRow& ShiftRow(const std::array<TShiftRow, 12>& table, const TShiftRow& other,
                          int keyNr) {
  return keyNr == kKeyNrUndef ? other : table[keyNr];
}

TEnh ClampForShift(TEnh enh) {
  if (enh == TEnh_Undef) return TEnh_n;
  return ClampEnh(enh, TEnh_bb, TEnh_ss);
}

}  // namespace

std::string EnhText(TEnh enh) {
  if (IsRealEnh(enh)) return kEnhTexts[enh + 1];
  if (enh == TEnh_Undef) return "undef";
  return "unknown TEnh " + std::to_string(static_cast<int>(enh));
}

std::string EnhInitializerText(TEnh enh) {
  if (IsRealEnh(enh)) return kEnhInitializerTexts[enh + 1];
  if (enh == TEnh_Undef) return "TEnh_Undef";
  return "TEnh(" + std::to_string(static_cast<int>(enh)) + ")";
}

std::ostream& operator<<(std::ostream& out, TEnh enh) {
  if (IsRealEnh(enh)) return out << kEnhTexts[enh + 1];
  if (enh == TEnh_Undef) return out << "undef";
  return out << "unknown TEnh " << static_cast<int>(enh);
}

TEnh EnhFromString(const char* text) {
  if (text == nullptr) return TEnh_Undef;
  for (std::size_t i = 0; i < kEnhTexts.size(); ++i) {
    if (std::strcmp(text, kEnhTexts[i]) == 0) return static_cast<TEnh>(static_cast<int>(i) - 1);
  }
  return TEnh_Undef;
}

TEnh EnhFromStdString(const std::string& text) {
  // A text with an embedded zero byte is none of the seven.
  if (text.find('\0') != std::string::npos) return TEnh_Undef;
  return EnhFromString(text.c_str());
}

int EnhToSemitone(TEnh enh) { return IsRealEnh(enh) ? enh - TEnh_n : 0; }

TEnh SemitoneToEnh(int semitones) { return static_cast<TEnh>(std::clamp(semitones, -3, 3) + 2); }

int HashValue(TEnh enh) { return enh >= TEnh_bb && enh <= TEnh_sss ? enh + 1 : 0; }

bool IsSensefulEnhForKeyNr(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return enh == TEnh_Undef;
  if (!IsRealEnh(enh)) return false;
  return (kSensefulEnhs[key] & EnhBit(enh)) != 0;
}

TEnh MakeSensefulEnhForKeyNrAssumingCMajor(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return TEnh_Undef;
  if (enh != TEnh_Undef) enh = ClampEnh(enh, TEnh_bb, TEnh_ss);
  if (IsSensefulEnhForKeyNr(key, enh)) return enh;
  const TCMajorFallback& fallback = kCMajorFallbacks[key];
  if (enh == TEnh_bb) return fallback.forBb;
  if (enh == TEnh_ss) return fallback.forSs;
  return fallback.forOther;
}

TEnh MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return TEnh_Undef;
  if (enh != TEnh_Undef) enh = ClampEnh(enh, TEnh_bbb, TEnh_sss);
  const TEnh r = MakeSensefulEnhForKeyNrAssumingCMajor(key, enh);
  switch (key) {
    case 1:  // D flat, unless the hint insists on a double accidental
      return r == TEnh_bb || r == TEnh_ss ? r : TEnh_b;
    case 3:   // E flat
    case 10:  // B flat
      return r == TEnh_bb ? r : TEnh_b;
    case 8:  // A flat
      return TEnh_b;
    default:
      return r;
  }
}

TEnh MakeSensefulEnhForKeyNrPreferSharps(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return TEnh_Undef;
  if (IsBlackKey(key)) return TEnh_s;
  const TEnh r = MakeSensefulEnhForKeyNrAssumingCMajor(key, enh);
  if (r == TEnh_b && (key == 4 || key == 11)) return TEnh_n;
  return r;
}

TEnh MakeSensefulEnhForKeyNrPreferFlats(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return TEnh_Undef;
  if (IsBlackKey(key)) return TEnh_b;
  const TEnh r = MakeSensefulEnhForKeyNrAssumingCMajor(key, enh);
  if (r == TEnh_s && (key == 0 || key == 5)) return TEnh_n;
  return r;
}

TEnh MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return TEnh_Undef;
  if (IsWhiteKey(key)) return TEnh_n;
  return IsSensefulEnhForKeyNr(key, enh) ? enh : TEnh_s;
}

TEnh MakeSensefulEnhForKeyNr(int keyNr, TEnh enh, TMakeSensefulEnh policy) {
  using TPolicy = TEnh (*)(int, TEnh);
  static constexpr std::array<TPolicy, 5> kPolicies = {
      MakeSensefulEnhForKeyNrAssumingCMajor, MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns,
      MakeSensefulEnhForKeyNrPreferSharps, MakeSensefulEnhForKeyNrPreferFlats,
      MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh};
  if (policy < 0 || policy >= static_cast<int>(kPolicies.size())) {
    return MakeSensefulEnhForKeyNrAssumingCMajor(keyNr, enh);
  }
  return kPolicies[policy](keyNr, enh);
}

TEnh EnhShiftToFlats(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  return ShiftRow(kShiftToFlats, kFlatsOther, key)[ClampForShift(enh)];
}

TEnh EnhShiftToSharps(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  return ShiftRow(kShiftToSharps, kSharpsOther, key)[ClampForShift(enh)];
}

TEnh EnhShift(int keyNr, TEnh enh) {
  const int key = NormalizedKeyNr(keyNr);
  // B triple flat is read as the double flat it is clamped to and goes to sharps.
  if (key == 11 && enh == TEnh_bbb) return EnhShiftToSharps(key, TEnh_bb);
  if (enh != TEnh_Undef) enh = ClampEnh(enh, TEnh_bb, TEnh_ss);
  const bool flatsFirst = (key == 4 || key == 11)
                              ? (enh == TEnh_n || enh == TEnh_s || enh == TEnh_ss)
                              : (enh == TEnh_s || enh == TEnh_ss);
  return flatsFirst ? EnhShiftToFlats(key, enh) : EnhShiftToSharps(key, enh);
}

}  // namespace harmony
