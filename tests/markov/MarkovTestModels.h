#pragma once
// Small hand-made corpora for the Markov tests: chords given by their distance to the center,
// their tones and their length.

#include <cstdint>
#include <vector>

#include "harmony/markov/VariableLengthMarkovModel.h"

namespace harmony::testing {

inline constexpr std::uint64_t kMajor = 145;
inline constexpr std::uint64_t kMinor = 137;
inline constexpr std::uint64_t kDominant7 = 1169;

// A chord `rootDist` semitones above its center; `rootKey` only sets the spelled root, which
// the model does not compare.
inline CMarkovObject ChordObject(int rootDist, std::uint64_t semitones, double length = 4.0,
                                 int rootKey = -1) {
  const int key = rootKey < 0 ? rootDist : rootKey;
  const CChordLite chord(CKeyEnh(key % 12, TEnh_n), CSemitones(semitones));
  return CMarkovObject::FromChord(
      CHarmAnlsChordWithLength(CHarmAnlsChord(chord, rootDist), length));
}

// The degrees every test corpus uses, in a bar each.
inline CMarkovObject I() { return ChordObject(0, kMajor); }
inline CMarkovObject IV() { return ChordObject(5, kMajor); }
inline CMarkovObject V7() { return ChordObject(7, kDominant7); }
inline CMarkovObject vi() { return ChordObject(9, kMinor); }
inline CMarkovObject ii() { return ChordObject(2, kMinor); }

inline void Learn(VariableLengthMarkovModel& model, const std::vector<CMarkovObject>& sequence) {
  model.StartSequence();
  for (const CMarkovObject& object : sequence) model.LearnAddSymbol(object);
  model.EndSequence();
}

inline std::uint64_t TotalCount(const VariableLengthMarkovModel& model) {
  std::uint64_t total = 0;
  for (const auto& [history, counts] : model.TransitionMap()) {
    for (const auto& [symbol, count] : counts) total += count;
  }
  return total;
}

// The objects a sequence of symbols points to.
inline std::vector<CMarkovObject> ObjectsOf(const TMarkovHistory& symbols) {
  std::vector<CMarkovObject> objects;
  for (const TMarkovSymbol& symbol : symbols) objects.push_back(*symbol);
  return objects;
}

}  // namespace harmony::testing
