// The members of keys and notes that spell them by a scale. They live with the scales
// because the spelling table belongs to the heavy scale.

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Note.h"

namespace harmony {

CKeyEnh::CKeyEnh(int keyNr, const CScaleLite& scale) {
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef || scale.RootKeyEnh.IsUndef()) return;
  KeyNr = key;
  Enh = CScaleHeavy(scale.RootKeyEnh, scale.Semitones).EnhForKeyNr(key);
}

void CKeyEnh::AdjustEnhToScale(const CScaleLite& scale) {
  if (IsUndef() || scale.RootKeyEnh.IsUndef()) return;
  Enh = CScaleHeavy(scale.RootKeyEnh, scale.Semitones).EnhForKeyNr(KeyNr);
}

void CKeyEnh::TranposeThisAndAdjustEnh(int intvl, const CScaleLite& scale) {
  if (IsUndef()) return;
  KeyNr = ((KeyNr + intvl % 12) % 12 + 12) % 12;
  if (!scale.RootKeyEnh.IsUndef()) {
    Enh = CScaleHeavy(scale.RootKeyEnh, scale.Semitones).EnhForKeyNr(KeyNr);
  }
}

void CNote::AdjustEnhToScale(const CScaleHeavy& scale) { _Enh = scale.EnhForKeyNr(KeyNr()); }

}  // namespace harmony
