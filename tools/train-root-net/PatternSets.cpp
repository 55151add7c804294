// Chord shapes, their voicings and the naming convention (see PatternSets.h).

#include "PatternSets.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <stdexcept>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ChordTypes.h"
#include "harmony/net/ChordAnalysisNet.h"

namespace harmony::trainer {
namespace {

constexpr int kInputCount = 24;
constexpr int kLowestNoteNr = 36;  // where every voicing is placed (C2)

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

// One voicing: offsets from the root (may be negative) and what it is.
struct TVoicing {
  std::vector<int> offsets;
  std::string form;
  bool rootless = false;
};

std::vector<int> _Close(const std::vector<int>& tones) {
  std::set<int> folded;
  for (int tone : tones) folded.insert(((tone % 12) + 12) % 12);
  return {folded.begin(), folded.end()};
}

// Close position with the k-th tone in the bass, the others stacked within the octave above.
std::vector<int> _Inversion(const std::vector<int>& close, std::size_t k) {
  std::vector<int> notes;
  for (std::size_t i = 0; i < close.size(); ++i) {
    const std::size_t ix = (k + i) % close.size();
    notes.push_back(close[ix] + (ix < k ? 12 : 0));
  }
  return notes;  // ascending
}

// Drop voicing: the n-th note from the top goes down an octave.
std::vector<int> _Drop(std::vector<int> notes, std::size_t fromTop) {
  notes[notes.size() - fromTop] -= 12;
  std::sort(notes.begin(), notes.end());
  return notes;
}

void _AddVoicingsOf(const std::vector<int>& tones, const std::string& tag, bool rootless,
                    std::vector<TVoicing>& out) {
  const std::vector<int> close = _Close(tones);
  if (!rootless) out.push_back({tones, tag + "spread", false});
  for (std::size_t k = 0; k < close.size(); ++k) {
    const std::vector<int> inv = _Inversion(close, k);
    const std::string name = tag + "inversion " + std::to_string(k);
    out.push_back({inv, name, rootless});
    if (rootless) continue;
    if (inv.size() >= 3) {
      std::vector<int> open = inv;
      open[1] += 12;  // the second note from the bottom goes up: open position
      std::sort(open.begin(), open.end());
      out.push_back({open, name + " open", false});
    }
    if (inv.size() >= 4) out.push_back({_Drop(inv, 2), name + " drop 2", false});
    if (inv.size() >= 4) out.push_back({_Drop(inv, 3), name + " drop 3", false});
    std::vector<int> doubled = inv;
    doubled.push_back(inv.front() + 12);  // the bass doubled on top
    out.push_back({doubled, name + " doubled bass", false});
    // The root an octave below, the chord in this inversion above it.
    std::vector<int> leftHand = inv;
    leftHand.insert(leftHand.begin(), -12);
    out.push_back({leftHand, name + " over its root", false});
  }
}

std::vector<TVoicing> _Voicings(const TShape& shape) {
  std::vector<TVoicing> voicings;
  _AddVoicingsOf(shape.tones, "", false, voicings);
  const auto has = [&shape](int tone) {
    return std::find(shape.tones.begin(), shape.tones.end(), tone) != shape.tones.end();
  };
  const bool third = has(3) || has(4);
  const bool seventh = has(10) || has(11);
  // Shell voicings leave out a perfect fifth once the chord has a third and two more tones.
  if (third && has(7) && shape.tones.size() >= 4) {
    std::vector<int> noFifth;
    for (int tone : shape.tones) {
      if (tone != 7) noFifth.push_back(tone);
    }
    _AddVoicingsOf(noFifth, "no 5 ", false, voicings);
  }
  // Rootless voicings of seventh chords with a ninth: the bass player has the root.
  if (third && seventh && (has(13) || has(14) || has(15))) {
    std::vector<int> noRoot;
    for (int tone : shape.tones) {
      if (tone != 0 && tone != 7) noRoot.push_back(tone);
    }
    if (noRoot.size() >= 3) _AddVoicingsOf(noRoot, "rootless ", true, voicings);
  }
  return voicings;
}

struct TReading {
  int rootDist;
  int rank;
  bool standard;
  std::string name;
  std::vector<int> noteNrs;
};

// The winner among the readings of one note set (see the convention in PatternSets.h).
const TReading& _Resolve(const std::vector<TReading>& readings) {
  const bool anyStandard =
      std::any_of(readings.begin(), readings.end(), [](const TReading& r) { return r.standard; });
  const TReading* best = nullptr;
  const auto key = [](const TReading& r) {
    return std::make_tuple(r.rootDist != 0, r.rank, r.rootDist);
  };
  for (const TReading& reading : readings) {
    if (anyStandard && !reading.standard) continue;
    if (best == nullptr || key(reading) < key(*best)) best = &reading;
  }
  return *best;
}

std::uint32_t _IntvlMask(const CChordHeavy& chord) {
  std::uint32_t mask = 0;
  for (int intvl : chord.IntvlSet()) mask |= 1u << intvl;
  return mask;
}

// A fixed scramble of the mask: which note sets are held out does not depend on the order
// in which they were found. Masks are odd (the lowest note is in every set), so the products
// are odd too and one residue of five odd ones selects a fifth of the sets.
bool _IsHeldOut(std::uint32_t mask) { return (mask * 2654435761u) % 10u == 3u; }

}  // namespace

TPatternSets BuildPatternSets() {
  std::map<std::uint32_t, std::vector<TReading>> readingsByMask;
  TPatternSets sets;
  const std::vector<TShape> shapes = _Shapes();
  sets.shapeCount = static_cast<int>(shapes.size());
  for (const TShape& shape : shapes) {
    for (const TVoicing& voicing : _Voicings(shape)) {
      const int lowest = *std::min_element(voicing.offsets.begin(), voicing.offsets.end());
      CMySet<unsigned char> noteNrs;
      std::vector<int> notes;
      for (int offset : voicing.offsets) {
        const int noteNr = kLowestNoteNr + offset - lowest;
        noteNrs.insert(static_cast<unsigned char>(noteNr));
        notes.push_back(noteNr);
      }
      const CChordHeavy chord(CNote::Undef, noteNrs, kInputCount);
      const int rootDist = ((-lowest) % 12 + 12) % 12;
      readingsByMask[_IntvlMask(chord)].push_back({rootDist, shape.rank,
                                                   shape.common && !voicing.rootless,
                                                   shape.name + " " + voicing.form, notes});
      ++sets.voicingCount;
    }
  }
  for (const auto& [mask, readings] : readingsByMask) {
    const TReading& winner = _Resolve(readings);
    TRootPattern pattern{mask, winner.rootDist, winner.noteNrs, winner.name,
                         static_cast<int>(readings.size())};
    (_IsHeldOut(mask) ? sets.heldOut : sets.training).push_back(std::move(pattern));
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
