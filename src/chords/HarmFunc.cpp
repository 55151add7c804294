// Chord functions: the code table by degree and triad, the names of the codes, and the
// chords' own queries.

#include "harmony/chords/HarmFunc.h"

#include <array>
#include <cstddef>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony {

namespace {

struct TDegreeFunc {
  int degreeNr;
  TBasicChord basicChord;
  CHarmFunc code;
};

constexpr std::array<TDegreeFunc, 16> kDegreeFuncs{{
    {0, kBasicChordMajor, 0},
    {0, kBasicChordMinor, 1},
    {1, kBasicChordMajor, 2},
    {1, kBasicChordMinor, 3},
    {1, kBasicChordDim, 4},
    {2, kBasicChordMajor, 5},
    {2, kBasicChordMinor, 6},
    {3, kBasicChordMajor, 7},
    {3, kBasicChordMinor, 8},
    {4, kBasicChordMajor, 9},
    {4, kBasicChordMinor, 10},
    {4, kBasicChordSus4, 9},
    {4, kBasicChordSus2, 9},
    {5, kBasicChordMajor, 11},
    {5, kBasicChordMinor, 12},
    {6, kBasicChordDim, 14},
}};

struct TFuncNames {
  const char* roman;
  const char* inMajorKind;
  const char* inMinorKind;
};

// Several odd entries are as the hosts know them and stay: IIIm is "Sp" in a major key, bVII
// is "sp" in a minor key, and code 13 has names though no degree gives it.
constexpr std::array<TFuncNames, 15> kFuncNames{{
    {"I", "T", "T"},
    {"Im", "t", "t"},
    {"II", "DD / SP", "DD / SP"},
    {"IIm", "Sp", "Sp"},
    {"IIdim", "IIdim##", "IIdim##"},
    {"III", "TG", "P"},
    {"IIIm", "Sp", "IIIm##in minor"},
    {"IV", "S", "S"},
    {"IVm", "s", "s"},
    {"V", "D", "D"},
    {"Vm", "d", "d"},
    {"VI", "TP", "sP = G"},
    {"VIm", "Tp", "sp"},
    {"bVII", "SS", "sp"},
    {"VIIdim", "VIIdim##in minor", "VIIdim##in minor"},
}};

constexpr const char* kNoFuncName = "undef";

bool IsMinorKind(const CSignKeyHeavy& signKey) {
  return SignKeyTypeFromScaleType(signKey.ScaleType()) == TSignKeyType::Minor;
}

}  // namespace

CHarmFunc HarmFuncForDegreeNrAndBasicChord(int degreeNr, TBasicChord basicChord) {
  for (const TDegreeFunc& entry : kDegreeFuncs) {
    if (entry.degreeNr == degreeNr && entry.basicChord == basicChord) return entry.code;
  }
  return kHarmFuncNone;
}

std::string HarmFuncNameForCode(CHarmFunc code, bool minorKind, const CChordNamePrefs& prefs) {
  if (code < 0 || code >= static_cast<CHarmFunc>(kFuncNames.size())) return kNoFuncName;
  const TFuncNames& names = kFuncNames[static_cast<std::size_t>(code)];
  if (prefs.FunctionLetters != 1) return names.roman;
  return minorKind ? names.inMinorKind : names.inMajorKind;
}

CHarmFunc CChordHeavy::HarmFuncIn(const CScaleHeavy& scale) const {
  return HarmFuncForDegreeNrAndBasicChord(scale.KeyNrToDegreeNr(RootNote().KeyNr()),
                                          BasicChordForNaming());
}

std::string CChordHeavy::HarmFuncName(const CSignKeyHeavy& signKey,
                                      const CChordNamePrefs& prefs) const {
  return HarmFuncNameForCode(HarmFuncIn(signKey), IsMinorKind(signKey), prefs);
}

CHarmFunc CChordLite::HarmFuncIn(const CScaleHeavy& scale) const {
  return ToChordHeavy(24).HarmFuncIn(scale);
}

std::string CChordLite::HarmFuncNameIn(const CSignKeyHeavy& signKey,
                                       const CChordNamePrefs& prefs) const {
  return ToChordHeavy(24).HarmFuncName(signKey, prefs);
}

}  // namespace harmony
