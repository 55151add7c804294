#pragma once
// The spelling of a scale's root that gives the key signature the fewest signs.

#include "harmony/chords/ScaleType.h"
#include "harmony/pitch/KeyEnh.h"

namespace harmony::chords_detail {

// The root is first made sensible for its key (a missing spelling becomes the one C major
// would write). Then the signature's sign count is compared for that spelling, its shift to
// flats and its shift to sharps: the flats win when they need fewer signs than the given
// spelling and no more than the sharps; the sharps win when they need fewer than the
// winner so far. Ties keep the given spelling, then the flats. So D flat beats C sharp
// major, F sharp stays against G flat, and C sharp minor beats D flat minor.
CKeyEnh RootKeyEnhWithLeastSigns(const CKeyEnh& root, TScaleType type);

}  // namespace harmony::chords_detail
