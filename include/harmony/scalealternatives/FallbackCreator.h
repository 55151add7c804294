#pragma once
// The scales proposed when the analysis offers no good one for a chord: every scale of a fixed
// table is put on the chord's root, those that hold the whole chord are kept, and they are
// sorted by size (seven tones first) and by likeness to the scale of the chord's context.
// The three steps are reached through a dependency object, so that a host or a test can
// replace any of them; ProductionFallbackCreatorDependencies is the real one.

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/scalealternatives/ScaleAlternative.h"
#include "harmony/scalealternatives/ScaleAlternativesContext.h"

namespace harmony::Harmonies::ScaleAlternatives {

// The table, in the order of generation: the church modes, the pentatonic and blues scales,
// the modes of melodic and harmonic minor, the symmetric scales, the bebop scales and a few
// from other traditions.
inline constexpr std::array<std::uint64_t, 39> kFallbackScaleMasks{
    2741, 1453, 2773, 1717, 1709, 1451, 1387, 661,  1193, 669,  1257, 1749, 1461,
    2901, 1371, 1755, 1459, 2485, 1365, 2869, 2777, 859,  1715, 1721, 2477, 2733,
    1707, 2925, 1389, 1643, 1741, 3765, 2997, 2989, 3501, 1427, 2483, 419,  395};

// How a scale is ranked: the higher, the earlier within its size class.
using TPenalty = std::function<int(const CScaleLite&)>;

class FallbackCreatorDependencies {
 public:
  virtual ~FallbackCreatorDependencies() = default;
  // The candidates for a chord.
  virtual std::vector<CScaleLite> ScaleGenerator(const CChordLite& chord) const = 0;
  // Whether a candidate can be played over the chord.
  virtual bool ScaleFilter(const CScaleLite& scale, const CChordHeavy& chord) const = 0;
  // The kept candidates in the order they are offered, as result records.
  virtual TScaleAlternatives SortAlternatives(const std::vector<CScaleLite>& scales,
                                              const CScaleLite& reference, bool debug,
                                              TPenalty penalty) const = 0;
};

class ProductionFallbackCreatorDependencies : public FallbackCreatorDependencies {
 public:
  // Every table scale on the chord's root, root key and spelling alike.
  std::vector<CScaleLite> ScaleGenerator(const CChordLite& chord) const override;
  // A minor chord refuses a major third, a chord with an altered fifth and no plain one
  // refuses the plain fifth; then ScaleAlternativesScaleFilter decides.
  bool ScaleFilter(const CScaleLite& scale, const CChordHeavy& chord) const override;
  // Similarity to the reference read from each scale's root (the agreeing semitones, less the
  // penalty), best first; then the size classes in order, stable, so that equal scales keep
  // the table's order. With `debug` each record tells "  FALLBACK: Similarity measure: "
  // with its size class and similarity.
  TScaleAlternatives SortAlternatives(const std::vector<CScaleLite>& scales,
                                      const CScaleLite& reference, bool debug,
                                      TPenalty penalty) const override;
};

// The fallback's proposals for the context's current chord, measured against its scale.
TScaleAlternatives ProductionFallbackCreator(const CScaleAlternativesContext& context, bool debug,
                                             const FallbackCreatorDependencies& dependencies);

// Every key of the chord (root and bass among them) is a key of the scale; the blues scales
// also take the dominant with both thirds (0-3-4-7-10), the sound they are made of.
bool ScaleAlternativesScaleFilter(const CScaleLite& scale, const CChordHeavy& chord);
// Scales a player reaches for only with reason rank lower: 3 for harmonic major and
// Mixolydian flat 9; 2 for the altered scale and the other modes of melodic and harmonic minor
// and major with an altered tone (Lydian dominant, Phrygian dominant, Mixolydian flat 13,
// Mixolydian sharp 9, Lydian sharp 9, Lydian augmented, Ionian sharp 5, the seventh mode of
// harmonic minor); 0 for the rest.
int PenaltyScoreForScaleFallback(const CScaleLite& scale);
// 1 for seven tones and the whole tone scale, 2 for eight tones, 3 for every other size.
int _SizeClassForScaleFallback(const CSemitones& semitones);
// The semitones in which the two scales agree, the reference read from the scale's root
// when both roots are defined.
int _SimilarityToReference(const CScaleLite& scale, const CScaleLite& reference);

}  // namespace harmony::Harmonies::ScaleAlternatives
