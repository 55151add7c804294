#pragma once
// The pattern sets of the root-detection net: the keys of common chord shapes above each of
// their tones as the lowest note, in the many voicings players use, each reduced to what the
// net sees (the exact intervals above the lowest note, wrapped at 24) and the root's key
// distance above the lowest note.
//
// Naming convention for note sets that several chords share (C6 and Am7, the inversions of
// a diminished seventh or an augmented triad, Csus2 and Gsus4, ...):
//
//   A reading of a note set is a chord shape (whole, without its fifth, or rootless) whose
//   keys, with one of them as the lowest note, are the keys of the set. The voicing does not
//   matter: every voicing of the same keys above the same lowest note has the same root. A
//   reading is standard when its shape is on the list of common chord symbols and it sounds
//   its root. If any reading is standard, only the standard readings compete. A complete
//   major or minor triad wins over every other reading: musicians hear the triad over its
//   bass. Otherwise, among those that compete, the one whose root is the lowest note wins;
//   without such a reading, the one of the most common shape (earliest in the list) wins,
//   and between readings of one shape (a symmetric chord) the root nearest above the lowest
//   note.
//
// So C E G A is C6 but A C E G is Am7, F A D is Dm over F (not F6 without its fifth) and
// E A C# is A over E, every diminished seventh and augmented triad is named from its lowest
// note, C D G is Csus2 while D G C is Gsus4 (sus4 before sus2 in the list), and C Eb G Ab is
// Ab major seven over C, not C minor with a flat thirteenth.
//
// Voicings players use. Of all the ways to lay a note set out in two octaves above its lowest
// note, only those a player would take are generated (the close voicing always is):
//   - a doubled key is never the third or the seventh of the named root (a doubled leading
//     tone or third sounds heavy); the root, the fifth or a tension may be doubled;
//   - the upper voices (all but the lowest note) lie within an octave of their neighbours;
//   - wide intervals go at the bottom: a gap wider than a fifth between neighbouring notes
//     has no narrower gap below it.
// The broad set (every voicing with at most two doubled keys) stays available for scoring and,
// weighted towards the played voicings, for training: more voicings teach this small net more.

#include <cstdint>
#include <string>
#include <vector>

#include "harmony/net/NeuronalNet.h"

namespace harmony::trainer {

// One note set, as the net sees it and as the library's algorithms receive it.
struct TRootPattern {
  std::uint32_t intvlMask = 0;  // bit i: the interval i above the lowest note (0..23)
  int rootDist = 0;             // the root's key distance above the lowest note
  std::vector<int> noteNrs;     // one voicing that gives the set, lowest note first
  std::string name;             // the winning reading
  int readingCount = 0;         // how many readings the keys have
  bool close = false;           // every key once, within the octave above the lowest note
  bool undoubled = false;       // every key once: close, open, drop 2, drop 3, ...
  bool played = false;          // a voicing players use (see above)
};

struct TPatternSets {
  std::vector<TRootPattern> training;
  std::vector<TRootPattern> validation;  // not trained on; picks the epoch
  std::vector<TRootPattern> heldOut;
  int shapeCount = 0;
  int noteSetCount = 0;  // distinct keys above a lowest note
};

// All shapes in all voicings, resolved by the convention above and split deterministically:
// about one voicing in five is held out and one in ten is kept for validation, never the close
// voicing of a note set.
enum class TVoicingSet { kPlayed, kBroad };
TPatternSets BuildPatternSets(TVoicingSet voicingSet = TVoicingSet::kPlayed);

// The net's training form: inputs as the library fills them, a one-hot target.
training_pattern ToTrainingPattern(const TRootPattern& pattern, double learningRate);

}  // namespace harmony::trainer
