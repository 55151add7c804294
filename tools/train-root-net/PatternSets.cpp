// Chord shapes, their voicings and the naming convention (see PatternSets.h).

#include "PatternSets.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <map>
#include <set>
#include <stdexcept>
#include <tuple>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ChordTypes.h"
#include "harmony/net/ChordAnalysisNet.h"

namespace harmony::trainer {
namespace {

constexpr int kInputCount = 24;
constexpr int kLowestNoteNr = 36;  // where every voicing is placed (C2)
constexpr int kMaxDoublings = 2;   // keys sounding in both octaves of a voicing

int FloorMod(int value) { return ((value % 12) + 12) % 12; }

// The common chord symbols, most common first. Their order decides between readings of a
// note set none of which has the lowest note as root.
constexpr const char* kCommonSymbols[] = {
    "C",      "Cm",   "C7",    "Cmaj7",  "Cm7",  "Cdim",   "Caug",  "Csus4",  "Csus2",
    "C6",     "Cm6",  "Cm7b5", "Cdim7",  "C9",   "Cmaj9",  "Cm9",   "Cadd9",  "Cmadd9",
    "C7sus4", "C5",   "C6/9",  "C13",    "Cm11", "C7b9",   "C7#9",  "Cmmaj7", "Cmaj7#11",
    "C7#5",   "C7b5", "C11",   "Cmaj13", "Cm13", "C9sus4", "C7#11", "C7b13",  "Cmaj7#5"};

struct TShape {
  std::string name;
  std::vector<int> tones;  // intervals above the root, tensions above the octave
  int rank = 0;
  bool common = false;
};

// The tones of a chord mask, tensions placed above the octave as they are voiced: ninths,
// a sharp nine beside a major third, elevenths beside a third, a sharp eleven beside a fifth,
// thirteenths beside a seventh. Sus2 keeps its second and a sixth chord its sixth.
std::vector<int> _PlacedTones(const CSemitones& semitones) {
  const auto has = [&semitones](int intvl) { return semitones.HasIntvl(intvl); };
  const bool third = has(3) || has(4);
  const bool seventh = has(10) || has(11);
  std::vector<int> tones;
  for (int intvl = 0; intvl < 12; ++intvl) {
    if (!has(intvl)) continue;
    int placed = intvl;
    if ((intvl == 1 || intvl == 2) && third) placed += 12;
    if (intvl == 3 && has(4)) placed += 12;
    if (intvl == 5 && third) placed += 12;
    if (intvl == 6 && has(7)) placed += 12;
    if ((intvl == 8 || intvl == 9) && seventh && has(7)) placed += 12;
    tones.push_back(placed);
  }
  std::sort(tones.begin(), tones.end());
  return tones;
}

std::uint32_t _PitchClassMask(const std::vector<int>& tones) {
  std::uint32_t mask = 0;
  for (int tone : tones) mask |= 1u << (((tone % 12) + 12) % 12);
  return mask;
}

std::vector<TShape> _Shapes() {
  std::vector<TShape> shapes;
  std::set<std::uint32_t> seen;
  for (const char* symbol : kCommonSymbols) {
    CChordLite chord;
    SetFromString(symbol, chord);
    if (chord.IsUndef() || chord.RootKeyEnh.KeyNr != 0) {
      throw std::runtime_error(std::string("the parser does not read ") + symbol);
    }
    std::vector<int> tones = _PlacedTones(chord.Semitones);
    if (!seen.insert(_PitchClassMask(tones)).second) continue;
    shapes.push_back({symbol, tones, static_cast<int>(shapes.size()), true});
  }
  for (const TChordType& type : SharedChordTypes().BuiltIn()) {
    std::vector<int> tones(type.Intvls.begin(), type.Intvls.end());
    if (!seen.insert(_PitchClassMask(tones)).second) continue;
    shapes.push_back({"C " + type.Name, tones, static_cast<int>(shapes.size()), false});
  }
  return shapes;
}

// A shape with tones left out as players leave them out, reduced to its keys above the root.
struct TVariant {
  std::vector<int> keys;  // 0..11, ascending
  std::string tag;
  bool rootless = false;
};

std::vector<int> _Keys(const std::vector<int>& tones) {
  std::set<int> folded;
  for (int tone : tones) folded.insert(((tone % 12) + 12) % 12);
  return {folded.begin(), folded.end()};
}

std::vector<TVariant> _Variants(const TShape& shape) {
  std::vector<TVariant> variants{{_Keys(shape.tones), "", false}};
  const auto has = [&shape](int tone) {
    return std::find(shape.tones.begin(), shape.tones.end(), tone) != shape.tones.end();
  };
  const bool third = has(3) || has(4);
  const bool seventh = has(10) || has(11);
  const auto without = [&shape](std::initializer_list<int> left) {
    std::vector<int> kept;
    for (int tone : shape.tones) {
      if (std::find(left.begin(), left.end(), tone) == left.end()) kept.push_back(tone);
    }
    return kept;
  };
  // Shell voicings leave out a perfect fifth once the chord has a third and two more tones.
  if (third && has(7) && shape.tones.size() >= 4) {
    variants.push_back({_Keys(without({7})), "no 5 ", false});
  }
  // Rootless voicings of seventh chords with a ninth: the bass player has the root.
  if (third && seventh && (has(13) || has(14) || has(15))) {
    const std::vector<int> noRoot = without({0, 7});
    if (noRoot.size() >= 3) variants.push_back({_Keys(noRoot), "rootless ", true});
  }
  return variants;
}

struct TReading {
  int rootDist;
  int rank;
  bool standard;
  bool triad;  // the whole major or minor triad
  std::string name;
};

bool _IsTriad(const std::vector<int>& keys) {
  return keys == std::vector<int>{0, 4, 7} || keys == std::vector<int>{0, 3, 7};
}

// The winner among the readings of one note set (see the convention in PatternSets.h).
const TReading& _Resolve(const std::vector<TReading>& readings) {
  const bool anyStandard =
      std::any_of(readings.begin(), readings.end(), [](const TReading& r) { return r.standard; });
  const TReading* best = nullptr;
  const auto key = [](const TReading& r) {
    return std::make_tuple(!r.triad, r.rootDist != 0, r.rank, r.rootDist);
  };
  for (const TReading& reading : readings) {
    if (anyStandard && !reading.standard) continue;
    if (best == nullptr || key(reading) < key(*best)) best = &reading;
  }
  return *best;
}

// Every reading of every shape, by the keys above its lowest note (bit k: k keys above it).
std::map<std::uint32_t, std::vector<TReading>> _ReadingsByKeySet(
    const std::vector<TShape>& shapes) {
  std::map<std::uint32_t, std::vector<TReading>> readings;
  for (const TShape& shape : shapes) {
    for (const TVariant& variant : _Variants(shape)) {
      for (std::size_t k = 0; k < variant.keys.size(); ++k) {
        const int bass = variant.keys[k];
        std::uint32_t keySet = 0;
        for (int key : variant.keys) keySet |= 1u << FloorMod(key - bass);
        readings[keySet].push_back(
            {FloorMod(-bass), shape.rank, shape.common && !variant.rootless, _IsTriad(variant.keys),
             shape.name + " " + variant.tag + "inversion " + std::to_string(k)});
      }
    }
  }
  return readings;
}

// The voicings of a key set within the two octaves the net sees: the lowest note, perhaps
// doubled an octave up, and each other key in the lower octave, the upper one or both, with
// at most kMaxDoublings keys doubled in all.
std::vector<std::uint32_t> _Voicings(std::uint32_t keySet) {
  std::vector<int> upper;
  for (int key = 1; key < 12; ++key) {
    if ((keySet >> key) & 1u) upper.push_back(key);
  }
  std::vector<std::uint32_t> masks;
  std::size_t combinations = 2;
  for (std::size_t i = 0; i < upper.size(); ++i) combinations *= 3;
  for (std::size_t code = 0; code < combinations; ++code) {
    std::size_t rest = code / 2;
    std::uint32_t mask = (code % 2 == 1) ? (1u | (1u << 12)) : 1u;
    int doublings = static_cast<int>(code % 2);
    for (int key : upper) {
      const std::size_t place = rest % 3;  // 0 lower octave, 1 upper, 2 both
      rest /= 3;
      if (place != 1) mask |= 1u << key;
      if (place != 0) mask |= 1u << (key + 12);
      doublings += place == 2;
    }
    if (doublings <= kMaxDoublings) masks.push_back(mask);
  }
  return masks;
}

// Doubling a third or a seventh, an octave gap between upper voices or a wide gap above a
// narrow one: the voicings players avoid (see PatternSets.h).
bool _IsPlayed(std::uint32_t mask, int rootDist) {
  for (int key = 0; key < 12; ++key) {
    if (((mask >> key) & (mask >> (key + 12)) & 1u) == 0) continue;
    const int aboveRoot = FloorMod(key - rootDist);
    if (aboveRoot == 3 || aboveRoot == 4 || aboveRoot == 10 || aboveRoot == 11) return false;
  }
  std::vector<int> gaps;
  int previous = 0;
  for (int intvl = 1; intvl < kInputCount; ++intvl) {
    if (((mask >> intvl) & 1u) == 0) continue;
    gaps.push_back(intvl - previous);
    previous = intvl;
  }
  for (std::size_t i = 0; i < gaps.size(); ++i) {
    if (i > 0 && gaps[i] > 12) return false;
    if (gaps[i] <= 7) continue;
    for (std::size_t below = 0; below < i; ++below) {
      if (gaps[below] < gaps[i]) return false;
    }
  }
  return true;
}

std::vector<int> _NoteNrs(std::uint32_t mask) {
  std::vector<int> noteNrs;
  for (int intvl = 0; intvl < kInputCount; ++intvl) {
    if ((mask >> intvl) & 1u) noteNrs.push_back(kLowestNoteNr + intvl);
  }
  return noteNrs;
}

// A fixed scramble of the mask decides the split, so that which voicings are held out does
// not depend on the order in which they were found: a fifth is held out and a tenth kept for
// validation. The close voicing of every note set trains, so that nothing held out or
// validated is a note set the net never saw.
enum class TSplit { kTraining, kValidation, kHeldOut };

TSplit _SplitOf(std::uint32_t mask, std::uint32_t keySet) {
  std::uint32_t scrambled = mask * 2654435761u;
  scrambled ^= scrambled >> 16;
  const std::uint32_t bucket = scrambled % 20u;
  if (mask == keySet) return TSplit::kTraining;
  if (bucket < 4) return TSplit::kHeldOut;
  if (bucket < 6) return TSplit::kValidation;
  return TSplit::kTraining;
}

}  // namespace

TPatternSets BuildPatternSets(TVoicingSet voicingSet) {
  TPatternSets sets;
  const std::vector<TShape> shapes = _Shapes();
  sets.shapeCount = static_cast<int>(shapes.size());
  for (const auto& [keySet, readings] : _ReadingsByKeySet(shapes)) {
    const TReading& winner = _Resolve(readings);
    ++sets.noteSetCount;
    for (std::uint32_t mask : _Voicings(keySet)) {
      const bool played = mask == keySet || _IsPlayed(mask, winner.rootDist);
      if (voicingSet == TVoicingSet::kPlayed && !played) continue;
      const bool undoubled = (mask & (mask >> 12)) == 0;
      TRootPattern pattern{mask,
                           winner.rootDist,
                           _NoteNrs(mask),
                           winner.name,
                           static_cast<int>(readings.size()),
                           mask == keySet,
                           undoubled,
                           played};
      const TSplit split = _SplitOf(mask, keySet);
      (split == TSplit::kHeldOut      ? sets.heldOut
       : split == TSplit::kValidation ? sets.validation
                                      : sets.training)
          .push_back(std::move(pattern));
    }
  }
  return sets;
}

training_pattern ToTrainingPattern(const TRootPattern& pattern, double learningRate) {
  training_pattern result;
  CIntvlSet intvls;
  for (int intvl = 0; intvl < kInputCount; ++intvl) {
    if ((pattern.intvlMask >> intvl) & 1u) intvls.insert(intvl);
  }
  FillChordAnalysisNetInputs(intvls, kInputCount, result.mInputs);
  result.mOutputs.assign(12, 0.0);
  result.mOutputs[static_cast<std::size_t>(pattern.rootDist)] = 1.0;
  result.mLearningRate = learningRate;
  result.mName = pattern.name;
  return result;
}

}  // namespace harmony::trainer
