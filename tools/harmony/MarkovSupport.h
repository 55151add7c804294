#pragma once
// What the markov commands share: the model file they read (the bundled default unless one
// is named), the generation settings of the tool, chord lists written for a musician, and
// the evidence of a sequence with each chord's probability.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/markov/VariableLengthMarkovModel.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony::tool {

// Where the bundled model lies, below the library's data folder.
inline constexpr const char* kDefaultMarkovModel = "markov/default-model.json";

// The model of `path`, or the bundled one for an empty path. A file that can't be read as a
// model, or a model that can't generate (no history, no symbols), is an InputError.
std::unique_ptr<VariableLengthMarkovModel> LoadMarkovModel(const std::string& path);

// The settings the tool generates and rates with: the model's longest history backing off to
// one, evidence over windows one shorter than the longest history, sequences of one repeated
// chord made rare. `variety` is the share of the largest entropy below which a history counts
// as too certain and the generator looks at a shorter one: 0 keeps every history that knows
// a continuation, so that the result follows the corpus closely.
TMarkovGenerateOptions ToolGenerateOptions(const VariableLengthMarkovModel& model,
                                           std::uint64_t samples, double variety);

// A progression of `bars` bars of four beats drawn from the model with the search that hits
// the length exactly and ends as the learned pieces end, placed in the key of `center`. The
// random source is the caller's to seed. No chords when the model found none.
struct TMarkovBars {
  TMarkovSampledSequence Sequence;
  std::size_t Candidates = 0;
  CHarmAnlsChords Chords;
};
TMarkovBars GenerateMarkovBars(VariableLengthMarkovModel& model, int bars,
                               const CHarmCenterLite& center, std::uint64_t samples,
                               double variety);

// A chord's name as a single token of a chord list (no blanks); `undefined` for a chord
// without root.
std::string ChordToken(const CHarmAnlsChord& chord, const CChordNamePrefs& prefs,
                       const std::string& undefined);

// The chords (closed by an undefined chord at their end) as a chord list of one token a beat:
// a bar line every four beats, a line of text every four bars. Positions are rounded to
// whole beats; a chord that would share a beat with the one before takes the next.
std::string ChordListText(const CHarmAnlsChords& chords, const CChordNamePrefs& prefs,
                          const std::string& undefined);

// The evidence of a finished sequence whose objects are all fixed, and each object's
// probability after the longest history before it that the model knows.
struct TMarkovRating {
  double Evidence = 0.0;
  // Windows of the evidence that the model never heard.
  int UnknownWindows = 0;
  std::vector<double> Probabilities;
  std::vector<std::uint64_t> HistoryLengths;
};
TMarkovRating RateMarkovObjects(VariableLengthMarkovModel& model,
                                const std::vector<CMarkovObject>& objects);

}  // namespace harmony::tool
