// How a row of harmonic centers is cut and joined: chords move between neighbouring centers
// when a center's borders change, and neighbours with the same center become one.

#include <algorithm>
#include <iterator>
#include <map>

#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/pitch/Enh.h"

namespace harmony {

namespace {

constexpr unsigned long kMajorScale = 2741;
constexpr unsigned long kNaturalMinorScale = 1453;

CHarmAnlsCenter UndefCenterAt(double position) {
  return CHarmAnlsCenter(kHarmAnlsUndefDouble, position, CHarmCenterLite::Undef);
}

bool InCollectedRange(const CHarmAnlsChordWithPos& chord, double smaller, double larger) {
  const double p = chord.Position;
  // The closing chord of a range sits on its end and travels with it.
  return smaller <= p && (p < larger || (p == larger && chord.IsUndef()));
}

// The chords that a change of a center's range deals out anew: those in front of the new
// range (from the old start on), inside it, and behind it (up to the old end), each in the
// order in which they are met in the row.
struct TDealtChords {
  CHarmAnlsChords before, inside, after;
};

// Kept per thread between calls: cutting a long row deals out nearly all of its chords, and
// lists that grow and give back the heap on every cut cost more than the dealing itself.
TDealtChords& EmptyDealtChords() {
  thread_local TDealtChords dealt;
  dealt.before.clear();
  dealt.inside.clear();
  dealt.after.clear();
  return dealt;
}

// Takes the chords of the three ranges out of all centers in one walk. A chord goes to the
// first range it falls in, as three walks one range after the other would take it; a range
// that is empty (its start not below its end) takes nothing.
void DealOut(CHarmAnlsCenters& centers, double oldStart, double smaller, double larger,
             double oldEnd, TDealtChords& dealt) {
  const bool withBefore = oldStart < smaller, withInside = smaller < larger;
  const bool withAfter = larger < oldEnd;
  for (CHarmAnlsCenter& center : centers) {
    CHarmAnlsChords& chords = center.HarmChords;
    auto kept = chords.begin();
    for (auto it = chords.begin(); it != chords.end(); ++it) {
      if (withBefore && InCollectedRange(*it, oldStart, smaller)) {
        dealt.before.push_back(*it);
      } else if (withInside && InCollectedRange(*it, smaller, larger)) {
        dealt.inside.push_back(*it);
      } else if (withAfter && InCollectedRange(*it, larger, oldEnd)) {
        dealt.after.push_back(*it);
      } else {
        *kept++ = *it;
      }
    }
    chords.erase(kept, chords.end());
  }
}

// How long a center lasts: up to the next center, or to the end of its own chords.
double CenterLength(const CHarmAnlsCenters& centers, std::size_t index) {
  const CHarmAnlsCenter& center = centers[index];
  if (index + 1 < centers.size()) return centers[index + 1].Position - center.Position;
  const double end = center.HarmChords.LastChordEndPos();
  if (center.HarmChords.empty() || IsHarmAnlsUndef(end)) return 1.0;
  return end - center.Position;
}

}  // namespace

void CHarmAnlsCenters::_InsertChords(iterator target, const CHarmAnlsChords& chords) {
  target->HarmChords.InsertAtCorrectPosition(chords.cbegin(), chords.cend());
}

CHarmAnlsChords CHarmAnlsCenters::CollectAndEraseChordsFromSmallerUntilBeforeLarger(double smaller,
                                                                                    double larger) {
  TDealtChords dealt;
  DealOut(*this, smaller, smaller, larger, larger, dealt);
  return std::move(dealt.inside);
}

CHarmAnlsCenters::iterator CHarmAnlsCenters::ChangeRangeOfHarmCenter(iterator center, double a,
                                                                     double b) {
  if (center == end()) return center;
  const double smaller = std::min(a, b);
  const double larger = std::max(a, b);
  const double oldStart = center->Position;  // undefined is the most negative double
  const double oldEnd =
      std::next(center) == end() ? kHarmAnlsMaxDouble : std::next(center)->Position;
  if (smaller == oldStart && larger == oldEnd) return center;

  center->Position = smaller;
  TDealtChords& dealt = EmptyDealtChords();
  DealOut(*this, oldStart, smaller, larger, oldEnd, dealt);
  const CHarmAnlsChords& before = dealt.before;
  const CHarmAnlsChords& inside = dealt.inside;
  const CHarmAnlsChords& after = dealt.after;

  auto index = std::distance(begin(), center);
  if (!before.empty()) {
    if (index == 0) {
      insert(begin(), UndefCenterAt(before.front().Position));
      index = 1;
    }
    _InsertChords(begin() + (index - 1), before);
  }
  if (!inside.empty()) _InsertChords(begin() + index, inside);
  if (!after.empty()) {
    // A following center keeps its position even when its first chords change.
    if (index + 1 == static_cast<std::ptrdiff_t>(size())) {
      push_back(UndefCenterAt(after.front().Position));
    }
    _InsertChords(begin() + (index + 1), after);
  }
  return begin() + index;
}

CHarmAnlsCenters::iterator CHarmAnlsCenters::CreateNewHarmCenterWithChordsAfterPos(iterator center,
                                                                                   double pos) {
  if (center == end()) return center;
  const auto index = std::distance(begin(), center);
  const CHarmAnlsChords after =
      CollectAndEraseChordsFromSmallerUntilBeforeLarger(pos, kHarmAnlsMaxDouble);
  if (after.empty()) return center;
  if (index + 1 == static_cast<std::ptrdiff_t>(size())) {
    push_back(UndefCenterAt(after.front().Position));
  }
  _InsertChords(begin() + (index + 1), after);
  return begin() + index;
}

// The lengths are summed per center, but the winner is the last entry of the map: the
// highest center in the order of key number, spelling and mask, whatever its length. With
// the twelve major and minor centers always in the map, that is B major unless a spelling or
// mask above it occurs; and only a center that really occurs can win. Callers rely on this
// being a last resort that usually says "undefined".
CHarmCenterLite CHarmAnlsCenters::FindMostOccurentHarmCenter() const {
  if (empty()) return CHarmCenterLite::Undef;
  std::map<CHarmCenterLite, double> lengths;
  for (int keyNr = 0; keyNr < 12; ++keyNr) {
    const CKeyEnh root(keyNr, MakeSensefulEnhForKeyNrPreferFlats(keyNr, TEnh_Undef));
    lengths[CHarmCenterLite(root, CSemitones(kMajorScale))] = 0.0;
    lengths[CHarmCenterLite(root, CSemitones(kNaturalMinorScale))] = 0.0;
  }
  for (std::size_t i = 0; i < size(); ++i) {
    const CHarmAnlsCenter& center = (*this)[i];
    if (center.IsUndef() || IsHarmAnlsUndef(center.Position)) continue;
    lengths[center.HarmCenter] += CenterLength(*this, i);
  }
  const auto& winner = *lengths.rbegin();
  return winner.second == 0.0 ? CHarmCenterLite::Undef : winner.first;
}

void CHarmAnlsCenters::MergeAdjacentSameHarmCenters() {
  // One walk that keeps the first center of each run of equal ones and gives it the chords of
  // the others in order; erasing each merged center from the middle of the row would move
  // all centers behind it, once per merge.
  if (empty()) return;
  std::size_t kept = 0;
  for (std::size_t i = 1; i < size(); ++i) {
    CHarmAnlsCenter& previous = (*this)[kept];
    CHarmAnlsCenter& current = (*this)[i];
    if (current.HarmCenter == previous.HarmCenter) {
      previous.HarmChords.insert(previous.HarmChords.end(), current.HarmChords.begin(),
                                 current.HarmChords.end());
    } else if (++kept != i) {
      (*this)[kept] = std::move(current);
    }
  }
  erase(begin() + static_cast<std::ptrdiff_t>(kept + 1), end());
}

}  // namespace harmony
