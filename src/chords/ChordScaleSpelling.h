#pragma once
// The scale a chord is spelled by, when no key is given: a major or minor scale on the chord's
// root (minor for minor and diminished chords), widened by the keys only the chord brings.
// Building that heavy scale costs far more than naming a root, and a chord is spelled by it
// several times over (choosing the root's spelling, then respelling the notes), so the few
// numbers the spelling needs are kept once per root spelling, kind and key set.

#include <array>
#include <cstdint>
#include <optional>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/pitch/MySet.h"
#include "harmony/pitch/Note.h"

namespace harmony {

class CChordHeavy;

namespace chords_detail {

// The scale of a chord before its own spellings are applied: the base scale with the chord's
// keys merged in, every key still without a spelling taking the base scale's.
CScaleHeavy ScaleWithChordKeys(const CScaleHeavy& base, const CMySet<int>& chordKeys);

// A key that only the chord brings keeps the chord's own spelling when the base scale would
// put an accidental on a white key (F#m7b5/C keeps its C rather than B sharp).
bool KeepsChordSpelling(const CScaleHeavy& base, int keyNr);

// What spelling a chord by its scale needs from that scale.
struct TChordScaleSpelling {
  TEnh RootEnh = TEnh_Undef;           // the scale's root spelling
  int SignsCount = 0;                  // the scale's key signature
  std::array<TEnh, 12> Enh{};          // by key, before the chord's own spellings
  std::uint16_t ChordSpelledKeys = 0;  // bit k: key k keeps the chord's spelling of it
};

// What of a chord decides its scale besides the root's spelling: whether the scale is minor
// and which keys the chord has. Read once, it serves every spelling of the same root.
struct TChordScaleKeys {
  bool Defined = false;
  bool Minor = false;
  std::uint16_t KeyMask = 0;  // bit k: the chord has key k
};
TChordScaleKeys ChordScaleKeysOf(const CChordHeavy& chord);

// The spelling of a chord with the given keys and its root spelled as `root`, as
// ConstructScaleForChord on an undefined scale gives it. Empty when the chord or the root is
// undefined, the root's key is not among the chord's keys, or a spelling falls outside the
// kept range; the caller then builds the scale.
std::optional<TChordScaleSpelling> ChordScaleSpellingFor(const TChordScaleKeys& keys,
                                                         const CNote& root);

// Only the key signature's sign count of that spelling: the same answer as SignsCount of
// ChordScaleSpellingFor, without unpacking the spellings.
std::optional<int> ChordScaleSignsCountFor(const TChordScaleKeys& keys, const CNote& root);

// How the scale of a chord spells each key, the chord's own spellings of the keys it keeps
// included: EnhForKeyNr of CScaleHeavy::Undef.ConstructScaleForChord(chord), from the kept
// words where they serve, else from the heavy scale.
std::array<TEnh, 12> ChordScaleEnhByKey(const CChordHeavy& chord);

}  // namespace chords_detail
}  // namespace harmony
