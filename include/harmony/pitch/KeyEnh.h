#pragma once
// A pitch class with its spelling: key number 0..11 (15 undefined) and an accidental.

#include <compare>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/Enh.h"
#include "harmony/pitch/KeyNumbers.h"

namespace harmony {

// Scales spell keys; their members that take a scale are defined with the scales.
class CScaleLite;
class CSignKeyLite;

class CKeyEnh : public TraceFamily<CKeyEnh> {
 public:
  int KeyNr = kKeyNrUndef;
  TEnh Enh = TEnh_Undef;

  constexpr CKeyEnh() = default;
  constexpr CKeyEnh(int keyNr, TEnh enh) : KeyNr(keyNr), Enh(enh) {}
  // The key spelled as the scale spells it (key 3 in B flat major is E flat, in E major D
  // sharp). An undefined key or scale gives the undefined key.
  CKeyEnh(int keyNr, const CScaleLite& scale);
  // The same with the major or minor scale of a sign key; any other type of sign key
  // counts as the undefined scale.
  CKeyEnh(int keyNr, const CSignKeyLite& signKey);

  bool IsUndef() const { return KeyNr == kKeyNrUndef; }
  // Takes the spelling the scale gives this key; an undefined key or scale root changes nothing.
  void AdjustEnhToScale(const CScaleLite& scale);
  bool HasAccidental() const { return Enh != TEnh_n; }
  // A flat, double flat or sharp could be read as part of a following chord text ("Bb5").
  bool HasMisinterpretableAccidental() const {
    return Enh == TEnh_bb || Enh == TEnh_b || Enh == TEnh_s;
  }
  bool HasSensefulEnh() const { return IsSensefulEnhForKeyNr(KeyNr, Enh); }
  void MakeSensefulEnh(TMakeSensefulEnh policy) {
    Enh = MakeSensefulEnhForKeyNr(KeyNr, Enh, policy);
  }
  void MakeSensefulEnhAssumingCMajor() { Enh = MakeSensefulEnhForKeyNrAssumingCMajor(KeyNr, Enh); }
  bool IsBlackKey() const { return harmony::IsBlackKey(KeyNr); }
  bool IsWhiteKey() const { return harmony::IsWhiteKey(KeyNr); }

  // Moves the key by an interval and keeps the written letter distance where a common
  // transposition has a customary spelling (C up a minor third is E flat, not D sharp).
  void TranposeThis(int intvl);
  CKeyEnh Transpose(int intvl) const {
    CKeyEnh result = *this;
    result.TranposeThis(intvl);
    return result;
  }
  // Moves the key number and takes the spelling of the new key from the scale; with an
  // undefined scale root the old spelling stays.
  void TranposeThisAndAdjustEnh(int intvl, const CScaleLite& scale);
  CKeyEnh TransposeAndAdjustEnh(int intvl, const CScaleLite& scale) const {
    CKeyEnh result = *this;
    result.TranposeThisAndAdjustEnh(intvl, scale);
    return result;
  }
  CKeyEnh operator+(int intvl) const { return Transpose(intvl); }
  // Only the remainder by 12 matters, so the negation can't overflow.
  CKeyEnh operator-(int intvl) const { return Transpose(-(intvl % 12)); }

  // One accidental up (to at most TEnh_sss) or down (to at least TEnh_bbb).
  void IncEnh();
  void DecEnh();

  // Key numbers ascend; on equal key numbers the larger accidental comes first.
  std::strong_ordering operator<=>(const CKeyEnh& other) const;
  bool operator==(const CKeyEnh& other) const { return KeyNr == other.KeyNr && Enh == other.Enh; }
  std::int16_t HashValue() const;

  // Reads a key name at the start of the text (after blanks): a letter A..H, then "#", "is",
  // "b", "bb" or "x". Unicode sharp and flat signs are first turned into "#" and "b", and
  // `consumed` counts characters of that converted text.
  void SetFromString(std::string_view text, int* consumed = nullptr,
                     const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

  // {"KeyNr":" 5","Enh":"neutral"}
  void AppendJSONString(std::ostream& out) const;
  struct JSONDeserializer_Helper {
    static CKeyEnh CKeyEnhFromJSONDictionary(const JsonDict& dict);
  };

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

inline bool IsBlackKey(CKeyEnh key) { return key.IsBlackKey(); }
inline bool IsWhiteKey(CKeyEnh key) { return key.IsWhiteKey(); }

}  // namespace harmony
