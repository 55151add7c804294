// The key signature of a heavy scale and the spelling table it yields.
//
// The signature is found by walking the circle of fifths from C to the key whose major scale
// has the same notes (the "look" key). The seven letters then take their accidentals in the
// order of sharps or flats, and the five keys left over are spelled from a neighbour: a key
// a semitone above or below a spelled one takes that spelling moved by one accidental.

#include <algorithm>
#include <array>
#include <cstdlib>

#include "chords/ScaleTypeTable.h"
#include "harmony/chords/ScaleHeavy.h"

namespace harmony {

namespace {

constexpr int kCircleOfFifthsMaxSteps = 24;
constexpr int kCircleOfFifthsNotFound = 25;

// The letters C D E F G A B and their key numbers.
constexpr std::array<int, 7> kLetterKeyNrs = {0, 2, 4, 5, 7, 9, 11};
// Sharps are added from F (index 3) moving a fifth up (+4 letters), flats from B (index 6)
// moving a fifth down (+3 letters).
constexpr int kFirstSharpLetter = 3;
constexpr int kNextSharpLetter = 4;
constexpr int kFirstFlatLetter = 6;
constexpr int kNextFlatLetter = 3;

// For a key i semitones above the root that the signature leaves unspelled: the neighbour
// it is spelled from (-1 the key below, +1 the key above, 0 none).
constexpr std::array<int, 12> kMajorNeighbourSteps = {0, -1, 0, 1, 0, 0, -1, 0, 1, 0, 1, 0};
constexpr std::array<int, 12> kMinorNeighbourSteps = {0, 1, 0, 0, -1, 0, -1, 0, 0, -1, 0, -1};

constexpr std::array<TScaleType, 5> kTypesWithMinorNeighbours = {st_min, st_min_harm, st_min_melo,
                                                                 st_min_pent, st_dorian};

bool UsesMinorNeighbours(TScaleType type) {
  return std::find(kTypesWithMinorNeighbours.begin(), kTypesWithMinorNeighbours.end(), type) !=
         kTypesWithMinorNeighbours.end();
}

constexpr int Mod12(int value) { return ((value % 12) + 12) % 12; }

}  // namespace

int CScaleHeavy::SignsCount() const {
  if (_RootNote.IsUndef()) return 0;
  CKeyEnh look = IsScaleTypeModal(_ScaleType)
                     ? RelatedIonianScaleRootKeyEnh()
                     : _SignsCount_DetermineLookForRootKeyEnhForNonModalScale();
  if (look.IsUndef()) return 0;
  if (look.Enh == TEnh_Undef) {
    look.Enh = MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(look.KeyNr, TEnh_Undef);
  }
  int count = _SignsCount_DetermineSignsCountBySearchingCycleOfFifths(look);
  // Beyond double accidentals the search has gone round the circle once: fold back.
  if (count >= 19) {
    count -= 12;
  } else if (count < -14) {
    count += 12;
  }
  return count;
}

int CScaleHeavy::SignsCountAbs() const { return std::abs(SignsCount()); }

CKeyEnh CScaleHeavy::_SignsCount_DetermineLookForRootKeyEnhForNonModalScale() const {
  const CKeyEnh root = RootKeyEnh();
  bool looksLikeMinor = mActiveScaleData.Mode == chords_detail::kModeMinor;
  if (_ScaleType == st_custom && mActiveScaleData.Mode == chords_detail::kModeCustomOrUndef) {
    // A custom scale counts as minor when it has the minor third and not the major one.
    looksLikeMinor = HasKeyNr(root.KeyNr + 3) && !HasKeyNr(root.KeyNr + 4);
  }
  return looksLikeMinor ? root.Transpose(-9) : root;
}

int CScaleHeavy::_SignsCount_DetermineSignsCountBySearchingCycleOfFifths(const CKeyEnh& look) {
  // Keys spelled with sharps or naturals lie upwards from C, F and the flat keys downwards.
  const bool upward = look.Enh >= TEnh_n && !(look.KeyNr == 5 && look.Enh == TEnh_n);
  const int sign = upward ? 1 : -1;
  CKeyEnh key(0, TEnh_n);
  for (int count = 0; count <= kCircleOfFifthsMaxSteps; ++count) {
    if (key == look) return sign * count;
    key.TranposeThis(sign * 7);
  }
  return sign * kCircleOfFifthsNotFound;
}

void CScaleHeavy::_CalcEnh_SetKeyEnhOfScaleNotesSetOthersToUndef(int signsCount) {
  InitEnh();
  std::array<int, 7> letterEnhs;
  letterEnhs.fill(TEnh_n);
  int letter = signsCount > 0 ? kFirstSharpLetter : kFirstFlatLetter;
  for (int i = 0; i < std::abs(signsCount); ++i) {
    int& enh = letterEnhs[static_cast<std::size_t>(letter)];
    if (signsCount > 0) {
      enh = std::min(enh + 1, static_cast<int>(TEnh_sss));
      letter = (letter + kNextSharpLetter) % 7;
    } else {
      enh = std::max(enh - 1, static_cast<int>(TEnh_bbb));
      letter = (letter + kNextFlatLetter) % 7;
    }
  }
  for (std::size_t i = 0; i < kLetterKeyNrs.size(); ++i) {
    const int enh = letterEnhs[i];
    _Enh[static_cast<std::size_t>(Mod12(kLetterKeyNrs[i] + enh - TEnh_n))] = static_cast<TEnh>(enh);
  }
}

void CScaleHeavy::CalcEnh() {
  if (_RootNote.IsUndef() || mActiveScaleData.Mode == chords_detail::kModeCustomOrUndef) {
    InitEnh();
    return;
  }
  _CalcEnh_SetKeyEnhOfScaleNotesSetOthersToUndef(SignsCount());
  const auto& steps = UsesMinorNeighbours(_ScaleType) ? kMinorNeighbourSteps : kMajorNeighbourSteps;
  const int root = _RootNote.KeyNr();
  // In order of i: a key may read a neighbour spelled earlier in this loop.
  for (int i = 0; i < 12; ++i) {
    const auto k = static_cast<std::size_t>(Mod12(root + i));
    if (_Enh[k] != TEnh_Undef) continue;
    const int d = steps[static_cast<std::size_t>(i)];
    const int neighbour = _Enh[static_cast<std::size_t>(Mod12(static_cast<int>(k) + d))];
    const int shifted = neighbour - d;
    if (shifted == TEnh_Undef) continue;
    int v = std::abs(shifted);
    if (v >= 5) v = 8 - v;
    _Enh[k] =
        static_cast<TEnh>(std::clamp(v, static_cast<int>(TEnh_bb), static_cast<int>(TEnh_ss)));
  }
}

TEnh CScaleHeavy::EnhForKeyNr(int keyNr) const {
  return _Enh[static_cast<std::size_t>(Mod12(keyNr))];
}

TEnh CScaleHeavy::EnhForChromStep(int step) const {
  return EnhForKeyNr(_RootNote.KeyNr() + Mod12(step));
}

void CScaleHeavy::SetEnhForKeyNr(int keyNr, TEnh enh) {
  _Enh[static_cast<std::size_t>(Mod12(keyNr))] = enh;
}

void CScaleHeavy::SetEnhForChromStep(int step, TEnh enh) {
  SetEnhForKeyNr(_RootNote.KeyNr() + Mod12(step), enh);
}

}  // namespace harmony
