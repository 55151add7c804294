// Root detection for played notes: which key of a note set a musician would call its root.
// Two ways lead there. The tables weigh every key by the intervals from it to the chord's
// keys (a key that has a fifth and a third above it in the chord scores high); a handful of
// exact shapes whose table sum would mislead are answered directly. The trained net reads the
// exact intervals above the lowest note and names the root's distance from it.

#include <array>
#include <cstdlib>
#include <initializer_list>
#include <mutex>
#include <vector>

#include "chords/ChordHeavyDetail.h"
#include "chords/ChordScaleSpelling.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/net/ChordAnalysisNet.h"

namespace harmony {
namespace {

using chords_detail::FloorMod12;

// Weights indexed by the key interval from the candidate up to a chord note (0..11). Few
// notes lean on root, thirds and fifth; many notes (clusters, scales) spread the weight.
using TWeightRow = std::array<int, 12>;
constexpr TWeightRow kWeightsFewIntvls{3, 0, 0, 2, 2, 0, 0, 1, 0, 0, 2, 2};        // 1, 2
constexpr TWeightRow kWeightsThreeIntvls{18, 0, 2, 12, 12, 2, 2, 14, 1, 2, 5, 5};  // 3
constexpr TWeightRow kWeightsFourToSix{18, 0, 3, 12, 12, 3, 3, 14, 0, 3, 3, 3};    // 4..6
constexpr TWeightRow kWeightsOther{18, 8, 8, 12, 12, 6, 5, 14, 4, 4, 10, 10};      // 0, 7 and more

const TWeightRow& _WeightRowForIntvlCount(std::size_t count) {
  if (count == 1 || count == 2) return kWeightsFewIntvls;
  if (count == 3) return kWeightsThreeIntvls;
  if (count >= 4 && count <= 6) return kWeightsFourToSix;
  return kWeightsOther;
}

// Shapes above the lowest note that are answered at once. The candidate must lie `rootOffset`
// keys above the lowest note without wrapping round the octave.
struct TExactShape {
  std::initializer_list<int> intvls;
  int rootOffset;
  int weight;
};
// 0 6 11 and 0 2 6 11: a rootless seventh chord over its third; 0 4 9 10: a thirteenth
// chord without fifth in root position; 0 3 6 10: a half-diminished chord in root position.
const std::array<TExactShape, 4> kExactShapes{{
    {{0, 6, 11}, 2, 33},
    {{0, 4, 9, 10}, 0, 45},
    {{0, 2, 6, 11}, 2, 45},
    {{0, 3, 6, 10}, 0, 48},
}};

// The key distance of two notes the short way round (0..6); -129 if either is undefined.
int _KeyDistance(const CNote& a, const CNote& b) {
  if (a.IsUndef() || b.IsUndef()) return kIntvlUndef;
  const int difference = std::abs(a.KeyNr() - b.KeyNr());
  return difference >= 7 ? 12 - difference : difference;
}

// What the tables weigh of a chord, read once for all twelve candidates.
struct TTableChord {
  const TExactShape* exactShape = nullptr;  // the chord's intervals are exactly this shape's
  bool openFifthDoubled = false;            // 0 7 with three notes
  int lowestKey = kKeyNrUndef;
  const TWeightRow* row = nullptr;
  std::array<int, 16> intvlsByKey{};  // how many intervals lead to each key (15: undefined)
};

TTableChord _TableChordOf(const CChordHeavy& chord) {
  TTableChord table;
  const CIntvlSet& intvls = chord.IntvlSet();
  table.lowestKey = chord.BassNote().KeyNr();
  for (const TExactShape& shape : kExactShapes) {
    if (intvls.HasExactTheseIntvls(shape.intvls)) table.exactShape = &shape;
  }
  table.openFifthDoubled = chord.NotesCount() == 3 && intvls.HasExactTheseIntvls({0, 7});
  table.row = &_WeightRowForIntvlCount(intvls.size());
  for (unsigned long k = 0; k < intvls.size(); ++k) {
    ++table.intvlsByKey[static_cast<std::size_t>(chord.IntvlIxToNote(static_cast<int>(k)).KeyNr())];
  }
  return table;
}

// The exact shapes answer at once when the candidate fits them; else the sum over all
// intervals of the row's weight for the key interval from the candidate up to the note.
int _TableWeight(const TTableChord& table, int candidateKey) {
  const TExactShape* shape = table.exactShape;
  if (shape != nullptr && candidateKey == table.lowestKey + shape->rootOffset) {
    return shape->weight;
  }
  // An open fifth with a doubled tone leans on its lower note.
  if (table.openFifthDoubled && candidateKey == table.lowestKey) return 5;
  int weight = 0;
  for (std::size_t key = 0; key < table.intvlsByKey.size(); ++key) {
    const int count = table.intvlsByKey[key];
    if (count != 0) {
      weight +=
          count *
          (*table.row)[static_cast<std::size_t>(FloorMod12(static_cast<int>(key) - candidateKey))];
    }
  }
  return weight;
}

}  // namespace

int CChordHeavy::ProbThatNoteIsRootNote(const CNote& candidate) const {
  return _TableWeight(_TableChordOf(*this), candidate.KeyNr());
}

namespace {

// The table algorithm: the key of highest weight. On equal weight a key that sounds in the
// chord beats one that does not; then the key nearer the lowest note; then the lower key.
CNote _LikeliestRootByTable(const CChordHeavy& chord) {
  const CNote lowest = chord.BassNote();
  const auto inChord = [&chord](const CNote& note) {
    const int intvl = chords_detail::WrappedKeyIntvl(chord.RootNote(), note);
    return intvl != kIntvlUndef && chord.IntvlSet().HasIntvl(intvl);
  };
  const TTableChord table = _TableChordOf(chord);
  CNote best = CNote::Undef;
  int bestWeight = 0;
  for (int key = 0; key < 12; ++key) {
    const CNote candidate(key, TEnh_n);  // the keys' note numbers, spelled as C major would
    const int weight = _TableWeight(table, candidate.KeyNr());
    if (weight > bestWeight) {
      best = candidate;
      bestWeight = weight;
    } else if (weight == bestWeight) {
      const bool candidateIn = inChord(candidate);
      const bool bestIn = inChord(best);
      if (candidateIn != bestIn) {
        if (candidateIn) best = candidate;
      } else if (_KeyDistance(candidate, lowest) < _KeyDistance(best, lowest)) {
        best = candidate;
      }
    }
  }
  return best;
}

}  // namespace

// The net algorithm: the net reads the exact intervals above the lowest note, as the interval
// cache holds them once the lowest note is the root (its key in the bass slot, the other
// notes of the bass octave given up to it), and names the root's key distance above it. The
// intervals are worked out without changing the chord: the only caller roots the chord on the
// found note next, which leaves it as rooting it on the lowest note first would have.
CNote CChordHeavy::_LikeliestRootByNet() {
  const CNote lowest = BassNote();
  const int wrapIntvl = _IntvlSet.WrapIntvl();
  CIntvlSet intvls;
  intvls.SetWrapIntvl(wrapIntvl);
  intvls.insert(
      static_cast<int>(chords_detail::CachedIntvl(lowest.KeyNr(), lowest.NoteNr(), wrapIntvl)));
  for (const CNote& note : _Notes) {
    if (chords_detail::OctaveOfNoteNr(note.NoteNr()) == -1) continue;
    intvls.insert(
        static_cast<int>(chords_detail::CachedIntvl(note.NoteNr(), lowest.NoteNr(), wrapIntvl)));
  }
  int winner = 0;
  {
    const std::lock_guard<std::mutex> lock(ChordAnalysisNetLock());
    // Kept between calls under the lock, so that a call allocates nothing.
    static std::vector<double> inputs;
    const auto inputCount =
        static_cast<std::size_t>(NetForSingleChordAnalysis.get_input_neuron_count());
    FillChordAnalysisNetInputs(intvls, inputCount, inputs);
    NetForSingleChordAnalysis.use(inputs);
    winner = NetForSingleChordAnalysis.winner();
  }
  return CNote(FloorMod12(lowest.KeyNr() + winner), TEnh_n);
}

void CChordHeavy::SetWrapIntvlToNeuronalNetInputCount() {
  const std::lock_guard<std::mutex> lock(ChordAnalysisNetLock());
  IntvlSet_SetWrapIntvl(static_cast<int>(NetForSingleChordAnalysis.get_input_neuron_count()));
}

void CChordHeavy::SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(TSingleChordAnalysisAlgo algo) {
  if (_Notes.empty()) {
    SetUndef();
    return;
  }
  const CNote root = algo == kSingleChordAnalysisAlgoNeuronalNet ? _LikeliestRootByNet()
                                                                 : _LikeliestRootByTable(*this);
  SetRootNote(root);  // fixes the root and puts its key into the bass slot
  SetRootNoteEnhWithLeastSigns();
  AdjustEnhOfChordNotesToRootScale(nullptr);
}

void CChordHeavy::AdjustEnhOfChordNotesToRootScale(bool* changed) {
  const std::array<TEnh, 12> enhByKey = chords_detail::ChordScaleEnhByKey(*this);
  CMySet<CNote> respelled;
  for (CNote note : _Notes) {
    const TEnh enh = enhByKey[static_cast<std::size_t>(note.KeyNr())];
    if (enh != TEnh_Undef) note.SetEnh(enh);
    respelled.insert(note);
  }
  _Notes = respelled;
  if (changed != nullptr) *changed = false;
}

}  // namespace harmony
