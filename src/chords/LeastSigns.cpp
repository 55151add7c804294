#include "chords/LeastSigns.h"

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/pitch/Note.h"

namespace harmony::chords_detail {

namespace {

int SignsCountAbsOnRoot(int keyNr, TEnh enh, TScaleType type) {
  return CScaleHeavy(CKeyEnh(keyNr, enh), type).SignsCountAbs();
}

}  // namespace

CKeyEnh RootKeyEnhWithLeastSigns(const CKeyEnh& root, TScaleType type) {
  if (root.IsUndef()) return root;
  CNote note(CKeyEnh(NormalizedKeyNr(root.KeyNr), TEnh_Undef), 0);
  note.SetEnhAndDontMakeSenseful(root.Enh);
  note.MakeSensefulEnhAssumingCMajor();
  const int keyNr = note.KeyNr();
  const TEnh given = note.Enh();
  const TEnh flats = EnhShiftToFlats(keyNr, given);
  const TEnh sharps = EnhShiftToSharps(keyNr, given);
  const int a = SignsCountAbsOnRoot(keyNr, given, type);
  const int b = SignsCountAbsOnRoot(keyNr, flats, type);
  const int c = SignsCountAbsOnRoot(keyNr, sharps, type);
  TEnh chosen = given;
  if (b >= a) {
    if (c < a) chosen = sharps;
  } else {
    chosen = c >= b ? flats : sharps;
  }
  return CKeyEnh(keyNr, chosen);
}

}  // namespace harmony::chords_detail
