#pragma once
// Sign keys: a key signature with its tonic, a root and major or minor. CSignKeyLite is the
// value used everywhere, CSignKeyNoEnh drops the spelling of the root.

#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/ScaleType.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

class CSignKeyHeavy;
class CSignKeyNoEnh;
class CHarmCenterLite;
class CChordLite;

// The values are stored in files and events and must not change.
enum class TSignKeyType : std::int32_t { Undef = 0, Major = 1, Minor = 2 };
enum class TSignKeyTypeNoUndef : std::int32_t { Major = 0, Minor = 1 };

// "Undef", "Major", "Minor", otherwise "unkown TSignKeyType" (so spelled).
std::ostream& operator<<(std::ostream& out, TSignKeyType type);
// "major", "minor", otherwise "undef".
void ToJSONString(std::ostream& out, TSignKeyType type);
// "TSignKeyType::" followed by the stream text.
std::string InitializerText(TSignKeyType type);
// "Major", "Minor", otherwise "unkown TSignKeyTypeNoUndef".
std::ostream& operator<<(std::ostream& out, TSignKeyTypeNoUndef type);
// "major", "minor", otherwise "undef".
void ToJSONString(std::ostream& out, TSignKeyTypeNoUndef type);

// "maj" and "min" as whole strings; anything else is undefined (or major).
TSignKeyType SignKeyTypeFromString(const std::string& text);
TSignKeyTypeNoUndef SignKeyTypeNoUndefFromString(const std::string& text);

TSignKeyType FromSignKeyTypeNoUndef(TSignKeyTypeNoUndef type);
// Minor stays minor; everything else, the undefined type included, becomes major.
TSignKeyTypeNoUndef FromSignKeyType(TSignKeyType type);
TSignKeyTypeNoUndef FromSignKeyTypeInCaseOfUndefReturnMajor(TSignKeyType type);

// Major 2741, minor 1453, anything else the empty mask; and back.
CSemitones SemitonesFromSignKeyType(TSignKeyType type);
CSemitones SemitonesFromSignKeyTypeNoUndef(TSignKeyTypeNoUndef type);
TSignKeyType SignKeyTypeFromSemitones(const CSemitones& semitones);

// The key signature a scale is written in: minor for the scales on a minor third and for
// the two Asian pentatonics, major for everything else (the undefined type included).
TSignKeyType SignKeyTypeFromScaleType(TScaleType type);
TSignKeyTypeNoUndef SignKeyTypeNoUndefFromScaleType(TScaleType type);

// The sign count of the key's customary spelling (F sharp major 6, E flat minor -6 but
// D sharp minor counted here as 6); 0 for key 15 or an undefined type.
int MinimalSignsCountForSignKeyWithKeyNrAndSignKeyType(int keyNr, TSignKeyType type);
// The sign count of the spelled key (G flat major -6, F sharp major 6); 0 for an undefined
// type.
int SignsCountForSignKeyWithKeyEnhAndSignKeyType(const CKeyEnh& key, TSignKeyType type);
int SignsCountAbsForSignKeyWithKeyEnhAndSignKeyType(const CKeyEnh& key, TSignKeyType type);

class CSignKeyLite : public TraceFamily<CSignKeyLite> {
 public:
  static const CSignKeyLite Undef;

  CKeyEnh RootKeyEnh;
  TSignKeyType SignKeyType = TSignKeyType::Undef;

  constexpr CSignKeyLite() = default;
  constexpr CSignKeyLite(const CKeyEnh& root, TSignKeyType type)
      : RootKeyEnh(root), SignKeyType(type) {}
  explicit CSignKeyLite(const CSignKeyHeavy& heavy);
  // Reads a scale name ("F# minor", "Bb", "Am"); masks other than major and minor give the
  // undefined type.
  explicit CSignKeyLite(const std::string& text,
                        const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
  explicit CSignKeyLite(const char* text,
                        const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

  // No root or no type.
  bool IsUndef() const { return RootKeyEnh.IsUndef() || SignKeyType == TSignKeyType::Undef; }
  // The root with the major or minor mask; the undefined scale for any other type.
  CScaleLite Scale() const;
  CSemitones Semitones() const { return SemitonesFromSignKeyType(SignKeyType); }
  CSignKeyHeavy ToSignKeyHeavy() const;
  CSignKeyNoEnh ToSignKeyNoEnh() const;
  // The root with the type's mask; the root stays even for an undefined type.
  CHarmCenterLite ToHarmCenter() const;
  // The tonic triad, major or minor; the undefined chord for an undefined sign key.
  CChordLite ToChord() const;
  // Root copied; minor for the natural minor mask, major for every other.
  void SetFromHarmCenter(const CHarmCenterLite& center);

  int DistToSignKeyRoot(int keyNr) const;
  int KeyNrToSignKeyKeyNr(int keyNr) const;
  int SignKeyKeyNrToKeyNr(int signKeyKeyNr) const;
  int SignsCount() const;
  int SignsCountAbs() const;
  // The relative minor of a major key and the relative major of a minor key, spelled after
  // the old key's signature; undefined for an undefined key.
  CSignKeyLite ParallelSignKey() const;
  // The major key of the signature: the relative major of a minor key, a major key itself.
  CSignKeyLite IonicSignKey() const;
  // Respells the root to the spelling whose signature has the fewest signs.
  void SetRootNoteEnhWithLeastSigns();
  // Moves the root and takes its spelling from the scale.
  void TransposeDestructiveBy(int intvl, const CScaleLite& scale);

  // "F♯m", "B♭"; the localized "Undefined" for an undefined key.
  std::string NameShort(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  // "F♯ Minor", "B♭ Major".
  std::string NameLong(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  bool operator==(const CSignKeyLite& other) const {
    return RootKeyEnh == other.RootKeyEnh && SignKeyType == other.SignKeyType;
  }
  // By root (the larger spelling first on equal keys), then by type.
  bool operator<(const CSignKeyLite& other) const;

  // {"CKeyEnh":{"KeyNr":" 6","Enh":"sharp"},"Type":"minor"}
  void AppendJSONString(std::ostream& out) const;
  // Missing members read as undefined.
  static CSignKeyLite FromJSONDict(const JsonDict& dict);
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

inline constexpr CSignKeyLite CSignKeyLite::Undef{};

static_assert(std::is_trivially_copyable_v<CSignKeyLite>, "CSignKeyLite is a plain value");

// A sign key without the spelling of its root: for comparing keys by sound.
class CSignKeyNoEnh : public TraceFamily<CSignKeyNoEnh> {
 public:
  static const CSignKeyNoEnh Undef;

  int RootKeyNr = kKeyNrUndef;
  TSignKeyTypeNoUndef Type = TSignKeyTypeNoUndef::Major;

  constexpr CSignKeyNoEnh() = default;
  constexpr CSignKeyNoEnh(int rootKeyNr, TSignKeyTypeNoUndef type)
      : RootKeyNr(rootKeyNr), Type(type) {}
  // An undefined sign key gives the undefined one.
  explicit CSignKeyNoEnh(const CSignKeyLite& signKey);
  explicit CSignKeyNoEnh(const CSignKeyHeavy& signKey);

  bool IsUndef() const { return RootKeyNr == kKeyNrUndef; }
  // The root spelled with the fewest signs.
  CSignKeyLite SignKey() const;
  CScaleLite Scale() const { return SignKey().Scale(); }
  int DistToSignKeyRoot(int keyNr) const;
  CSignKeyNoEnh ParallelSignKey() const;
  CSignKeyNoEnh IonicSignKey() const;
  int KeyNrToSignKeyKeyNr(int keyNr) const;
  int SignKeyKeyNrToKeyNr(int signKeyKeyNr) const;
  std::string Name(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  bool operator==(const CSignKeyNoEnh& other) const {
    return RootKeyNr == other.RootKeyNr && Type == other.Type;
  }

  // {"RootKeyNr":6,"Type":"minor"}
  void AppendJSONString(std::ostream& out) const;
  static CSignKeyNoEnh FromJSONDict(const JsonDict& dict);
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

inline constexpr CSignKeyNoEnh CSignKeyNoEnh::Undef{};

}  // namespace harmony
