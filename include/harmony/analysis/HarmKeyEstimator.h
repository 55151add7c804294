#pragma once
// The key of a piece from its chords alone: the 24 major and minor keys ranked by the evidence
// a musician weighs, and the best key per section where the piece modulates.
//
// The evidence, each a number per candidate key:
// - Profile: the Pearson correlation of the duration-weighted chord tones (every tone of a
//   chord and its bass, weighted by the chord's length) with a published key profile rotated
//   to the candidate tonic (Krumhansl and Kessler 1982, Temperley 2001, Aarden 2003).
// - Functions: the mean log-probability per quarter note of the chords as degrees of the
//   candidate key: the root's distance to the tonic and the chord's class (major, minor,
//   dominant seventh, diminished, other), from a table learned on labelled pop songs.
// - Cadences: the share of all cadences (V-I, ii-V-I, IV-I, bVII-I, each with its own
//   strength) whose goal is the candidate tonic with a chord of the candidate mode.
// - First and last chord: 1 when the chord is the candidate's tonic chord, 0.5 when only the
//   root is the tonic.
// The score of a key is the weighted sum; higher is better, only differences matter.

#include <array>
#include <cstddef>
#include <vector>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

// The chord classes the function table tells apart.
enum class THarmKeyChordClass : int { Major = 0, Minor, Dominant, Diminished, Other };
inline constexpr int kHarmKeyChordClasses = 5;
// Keys are numbered 0..11 for the major keys on tonic 0..11 and 12..23 for the minor ones.
inline constexpr int kHarmKeyCount = 24;

THarmKeyChordClass HarmKeyChordClassOf(const CChordLite& chord);

enum class THarmKeyProfile : int { KrumhanslKessler = 0, Temperley, Aarden };

struct THarmKeyWeights {
  double Profile = 0.0;
  double Functions = 0.0;
  double Cadences = 0.0;
  double FirstChord = 0.0;
  double LastChord = 0.0;
};

// [mode 0 major, 1 minor][degree of the root above the tonic][chord class]: natural log of
// the share of a piece's quarter notes.
using THarmKeyFunctionTable =
    std::array<std::array<std::array<float, kHarmKeyChordClasses>, 12>, 2>;

// The table and weights learned on the training four fifths of the Billboard songs (see the
// key-eval program and README); the profile the fit chose.
const THarmKeyFunctionTable& HarmKeyDefaultFunctionTable();
THarmKeyWeights HarmKeyDefaultWeights();
inline constexpr THarmKeyProfile kHarmKeyDefaultProfile = THarmKeyProfile::KrumhanslKessler;

struct THarmKeyParams {
  THarmKeyProfile Profile = kHarmKeyDefaultProfile;
  THarmKeyWeights Weights = HarmKeyDefaultWeights();
  THarmKeyFunctionTable Functions = HarmKeyDefaultFunctionTable();
};

// What a stretch of chords tells, before any key is assumed.
struct THarmKeyEvidence {
  std::array<double, 12> PitchClasses{};  // quarter notes each pitch class sounds
  std::array<std::array<double, kHarmKeyChordClasses>, 12> RootClasses{};  // quarter notes
  std::array<std::array<double, 2>, 12> Cadences{};  // strength into each root, per goal mode
  double CadenceTotal = 0.0;
  double Duration = 0.0;
  int FirstRoot = -1;
  THarmKeyChordClass FirstClass = THarmKeyChordClass::Other;
  int LastRoot = -1;
  THarmKeyChordClass LastClass = THarmKeyChordClass::Other;
};

// The evidence for one key, unweighted.
struct THarmKeyFeatures {
  double Profile = 0.0;
  double Functions = 0.0;
  double Cadences = 0.0;
  double FirstChord = 0.0;
  double LastChord = 0.0;
};

struct THarmKeyScore {
  CSignKeyLite Key;  // spelled with the fewest signs
  double Score = 0.0;
};
// Best first.
using THarmKeyRanking = std::array<THarmKeyScore, kHarmKeyCount>;

// How sections are found: a window slides over the piece by a step; a key that is not the
// current one takes over only when it beats the current key by the margin in `Confirm`
// windows running. The new section then starts at the middle of the first of those windows,
// at the chord nearest to it. First and last chords count for the whole piece only.
struct THarmKeyWindow {
  double Length = 32.0;  // quarter notes: eight bars of 4/4
  double Step = 4.0;
  double Margin = 0.05;
  int Confirm = 2;
};

struct THarmKeySection {
  double Position = 0.0;
  CSignKeyLite Key;
};

class CHarmKeyEstimator {
 public:
  explicit CHarmKeyEstimator(const THarmKeyParams& params = THarmKeyParams()) : _Params(params) {}

  // The chords as the analyser takes them: ascending positions, each lasting until the next;
  // a closing undefined chord marks the end, without it the last chord lasts one bar of 4/4.
  // Undefined chords in between are rests. Only chords from `from` to before `to` count, the
  // parts that stick out are cut off.
  static THarmKeyEvidence Gather(const CHarmAnlsChords& chords, double from = kHarmAnlsUndefDouble,
                                 double to = kHarmAnlsMaxDouble);
  THarmKeyFeatures Features(const THarmKeyEvidence& evidence, int key) const;
  double Score(const THarmKeyFeatures& features) const;

  THarmKeyRanking Rank(const THarmKeyEvidence& evidence) const;
  THarmKeyRanking Rank(const CHarmAnlsChords& chords) const { return Rank(Gather(chords)); }
  // The best key, undefined when no chord has a root.
  CSignKeyLite BestKey(const CHarmAnlsChords& chords) const;
  // The best key per section, in order; empty when no chord has a root.
  std::vector<THarmKeySection> Sections(const CHarmAnlsChords& chords,
                                        const THarmKeyWindow& window = THarmKeyWindow()) const;

  const THarmKeyParams& Params() const { return _Params; }

 private:
  THarmKeyParams _Params;
};

// The key with number 0..23, spelled with the fewest signs.
CSignKeyLite HarmKeyFromNumber(int key);
// The number of a major or minor key, -1 for any other.
int HarmKeyNumber(const CSignKeyLite& key);

// The estimated key of the whole piece as the sign key an analysis starts from
// (CHarmonicAnalyse::AnalyseFromChords); none when no chord has a root.
CHarmAnlsSignKeys HarmEstimatedSignKeys(const CHarmAnlsChords& chords,
                                        const CHarmKeyEstimator& estimator = CHarmKeyEstimator());

}  // namespace harmony
