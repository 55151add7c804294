// Matching a progression against a run of chords, the center a match proves, and the ranking
// of the progressions that fit at one place.

#include "harmony/analysis/HarmAnlsProgressions.h"

#include <algorithm>
#include <iomanip>
#include <iterator>

#include "HarmAnlsText.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

namespace {

using ChordIt = CHarmAnlsChords::const_iterator;

int Mod12(int value) { return ((value % 12) + 12) % 12; }

std::size_t Remaining(ChordIt it, const CHarmAnlsChords& chords) {
  return static_cast<std::size_t>(chords.end() - it);
}

// The match of `progression` at `it`, with the list's last defined chord found beforehand:
// the walks ask every progression at every chord, and the last chord stays the same.
bool MatchesFrom(const CHarmAnlsProgression& progression, const CHarmAnlsChords& chords, ChordIt it,
                 ChordIt last) {
  if (progression.empty() || chords.empty()) return false;
  // Unsigned on purpose: a start behind the last defined chord wraps around to a large
  // count and is refused by the chord test below, not here.
  const std::size_t count = 1 + static_cast<std::size_t>(last - it);
  if (count < progression.size()) return false;
  if (it == chords.end()) return true;
  const std::size_t steps = std::min(progression.size(), Remaining(it, chords));
  // The steps between the roots first: cheaper than the kinds of chord, and they fail more
  // often. Both must hold for every chord, so the order of the tests changes no answer.
  for (std::size_t i = 1; i < steps; ++i) {
    const ChordIt chord = it + static_cast<std::ptrdiff_t>(i);
    if (chord == chords.begin()) continue;
    const int patternStep =
        Mod12(progression[i].RootDistToHarmCenter - progression[i - 1].RootDistToHarmCenter);
    const int chordStep = Mod12(chord->RootKeyEnh.KeyNr - std::prev(chord)->RootKeyEnh.KeyNr);
    if (patternStep != chordStep) return false;
  }
  for (std::size_t i = 0; i < steps; ++i) {
    const ChordIt chord = it + static_cast<std::ptrdiff_t>(i);
    if (!progression[i].SemitonesMatch.Matches(chord->Semitones)) return false;
  }
  return true;
}

}  // namespace

// --- CHarmAnlsProgressionEl

void CHarmAnlsProgressionEl::AppendJSONString(std::ostream& out) const {
  out << "{\"RootDistToHarmCenter\":" << std::setw(2) << RootDistToHarmCenter
      << ", \"BassDistToHarmCenter\":" << std::setw(2) << BassDistToHarmCenter
      << ", \"SemitonesMatch\":";
  SemitonesMatch.AppendJSONString(out);
  out << '}';
}

void CHarmAnlsProgressionEl::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsChordWithPos:";
  AppendJSONString(out);
}

void CHarmAnlsProgressionEl::WriteTraceBrief(std::ostream& out) const {
  out << RootDistToHarmCenter << ':';
  SemitonesMatch.WriteTraceBrief(out);
}

void CHarmAnlsProgressionEl::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsProgressionEl(" << RootDistToHarmCenter << ", " << BassDistToHarmCenter << ", ";
  SemitonesMatch.WriteInitializerList(out);
  out << ')';
}

// --- CHarmAnlsProgression: matching

bool CHarmAnlsProgression::MatchesHarmChordsFrom(const CHarmAnlsChords& chords, ChordIt it) const {
  if (chords.empty()) return false;
  return MatchesFrom(*this, chords, it, chords.LastNonUndefChord());
}

bool CHarmAnlsProgression::MatchesHarmChordsBackwardsFrom(const CHarmAnlsChords& chords,
                                                          ChordIt it) const {
  if (empty() || chords.empty()) return false;
  if (static_cast<std::size_t>(it - chords.begin()) + 1 < size()) return false;
  return MatchesHarmChordsFrom(chords, it - static_cast<std::ptrdiff_t>(size() - 1));
}

// --- CHarmAnlsProgression: the center of a match

CHarmCenterLite CHarmAnlsProgression::HarmCenterCalculatedFromFoundProgressionNthChord(
    std::size_t n, ChordIt it, const CHarmAnlsChords& chords) const {
  if (empty() || n >= size() || it == chords.end() || Remaining(it, chords) <= n) {
    return CHarmCenterLite::Undef;
  }
  const ChordIt chord = it + static_cast<std::ptrdiff_t>(n);
  const std::int32_t rootDist = (*this)[n].RootDistToHarmCenter;
  CHarmCenterLite center(CKeyEnh(Mod12(chord->RootKeyEnh.KeyNr - rootDist), TEnh_n),
                         SemitonesFromSignKeyType(SignKeyType));
  _SetEnhForHarmCenter(center, it, chords, rootDist, chord);
  return center;
}

void CHarmAnlsProgression::_SetEnhForHarmCenter(CHarmCenterLite& center, ChordIt it,
                                                const CHarmAnlsChords& chords,
                                                std::int32_t rootDist, ChordIt chord) const {
  ChordIt source = chords.end();
  if (rootDist == 0) {
    source = chord;
  } else if (Remaining(it, chords) < size()) {
    return;  // the run is cut short: the natural stays
  } else {
    const auto runEnd = it + static_cast<std::ptrdiff_t>(size());
    source = std::find_if(it, runEnd, [&](const CHarmAnlsChordWithPos& c) {
      return c.RootKeyEnh.KeyNr == center.RootKeyEnh.KeyNr;
    });
    if (source == runEnd) source = chords.end();
  }
  if (source != chords.end() && source->RootKeyEnh.Enh != TEnh_Undef) {
    center.RootKeyEnh.Enh = source->RootKeyEnh.Enh;
  } else {
    center.SetRootKeyEnhWithLeastSigns();
  }
}

CHarmCenterLite CHarmAnlsProgression::HarmCenterCalculatedFromFoundProgressionFirstChord(
    ChordIt it, const CHarmAnlsChords& chords) const {
  if (it == chords.end()) return CHarmCenterLite::Undef;
  return HarmCenterCalculatedFromFoundProgressionNthChord(0, it, chords);
}

CHarmCenterLite CHarmAnlsProgression::HarmCenterCalculatedFromFoundProgressionLastChord(
    ChordIt it, const CHarmAnlsChords& chords) const {
  if (it == chords.end() || empty()) return CHarmCenterLite::Undef;
  return HarmCenterCalculatedFromFoundProgressionNthChord(size() - 1, it, chords);
}

CHarmCenterLite CHarmAnlsProgression::HarmCenterFromProgressionAndChord(
    ChordIt it, const CHarmAnlsChords& chords, TMatchDirection direction) const {
  if (it == chords.end()) return CHarmCenterLite::Undef;
  switch (direction) {
    case kMatchDirection_Forward:
      return HarmCenterCalculatedFromFoundProgressionLastChord(it, chords);
    case kMatchDirection_Backward:
      return HarmCenterCalculatedFromFoundProgressionNthChord(0, it, chords);
  }
  return CHarmCenterLite::Undef;
}

ChordIt CHarmAnlsProgression::HarmCenterChordsBegin(ChordIt it, const CHarmAnlsChords& chords,
                                                    TMatchDirection direction) const {
  switch (direction) {
    case kMatchDirection_Forward:
      return it;
    case kMatchDirection_Backward: {
      const std::ptrdiff_t back = empty() ? 0 : static_cast<std::ptrdiff_t>(size() - 1);
      return it - chords.begin() < back ? chords.begin() : it - back;
    }
  }
  return chords.end();
}

// --- CHarmAnlsProgression: text

void CHarmAnlsProgression::AppendJSONString(std::ostream& out) const {
  harmanls::AppendJSONList(out, *this);
}

void CHarmAnlsProgression::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsProgression: Priority " << Priority << ", SignKeyType " << SignKeyType << ' ';
  platform::TraceOutContainerBeginEndl(out);
  for (const CHarmAnlsProgressionEl& el : *this) {
    el.WriteTrace(out);
    platform::TraceOutContainerEndl(out);
  }
  platform::TraceOutContainerEndEndl(out);
}

void CHarmAnlsProgression::WriteTraceBrief(std::ostream& out) const {
  out << "CHarmAnlsProgression: todo define TraceStreamBrief, size  " << size();
}

void CHarmAnlsProgression::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsProgression({";
  for (std::size_t i = 0; i < size(); ++i) {
    if (i > 0) out << ", ";
    (*this)[i].WriteInitializerList(out);
  }
  out << "}, " << Priority << ", " << InitializerText(SignKeyType) << ')';
}

// --- CHarmAnlsProgressions

CHarmAnlsProgressions CHarmAnlsProgressions::FindAndSortForwardMatchingProgressions(
    ChordIt it, const CHarmAnlsChords& chords) const {
  CHarmAnlsProgressions found;
  for (const CHarmAnlsProgression& progression : *this) {
    if (progression.MatchesHarmChordsFrom(chords, it)) found.push_back(progression);
  }
  found.SortBySizeAndPriority();
  return found;
}

CHarmAnlsProgressions CHarmAnlsProgressions::FindAndSortBackwardMatchingProgressions(
    ChordIt it, const CHarmAnlsChords& chords) const {
  CHarmAnlsProgressions found;
  for (const CHarmAnlsProgression& progression : *this) {
    if (progression.MatchesHarmChordsBackwardsFrom(chords, it)) found.push_back(progression);
  }
  found.SortBySizeAndPriority();
  return found;
}

CHarmAnlsProgressions CHarmAnlsProgressions::FindAndSortMatchingProgressions(
    ChordIt it, const CHarmAnlsChords& chords, TMatchDirection direction) const {
  switch (direction) {
    case kMatchDirection_Forward:
      return FindAndSortForwardMatchingProgressions(it, chords);
    case kMatchDirection_Backward:
      return FindAndSortBackwardMatchingProgressions(it, chords);
  }
  return {};
}

void CHarmAnlsProgressions::FindBestForwardMatchingProgressions(
    ChordIt it, const CHarmAnlsChords& chords,
    std::vector<const CHarmAnlsProgression*>& best) const {
  best.clear();
  const ChordIt last = chords.LastNonUndefChord();
  for (const CHarmAnlsProgression& progression : *this) {
    if (!best.empty() && RanksBefore(*best.front(), progression)) continue;
    if (!MatchesFrom(progression, chords, it, last)) continue;
    if (!best.empty() && RanksBefore(progression, *best.front())) best.clear();
    best.push_back(&progression);
  }
}

const CHarmAnlsProgression* CHarmAnlsProgressions::FindBestForwardMatchingProgression(
    ChordIt it, const CHarmAnlsChords& chords) const {
  const CHarmAnlsProgression* best = nullptr;
  const ChordIt last = chords.LastNonUndefChord();
  for (const CHarmAnlsProgression& progression : *this) {
    if (best != nullptr && !RanksBefore(progression, *best)) continue;
    if (MatchesFrom(progression, chords, it, last)) best = &progression;
  }
  return best;
}

void CHarmAnlsProgressions::SortBySizeAndPriority() {
  std::stable_sort(begin(), end(), RanksBefore);
}

bool CHarmAnlsProgressions::HasSeveralBestMatchingProgressions() const {
  return size() >= 2 && (*this)[0].MatchesAsGoodAs((*this)[1]);
}

CHarmAnlsProgressions CHarmAnlsProgressions::GetBestMatchingProgressions() const {
  CHarmAnlsProgressions best;
  for (const CHarmAnlsProgression& progression : *this) {
    if (best.empty() || progression.MatchesAsGoodAs(best.back())) best.push_back(progression);
  }
  return best;
}

CHarmAnlsProgressions CHarmAnlsProgressions::SortAndGetBestMatchingProgressions() {
  SortBySizeAndPriority();
  return GetBestMatchingProgressions();
}

void CHarmAnlsProgressions::AppendJSONString(std::ostream& out) const {
  harmanls::AppendJSONList(out, *this);
}

void CHarmAnlsProgressions::WriteTrace(std::ostream& out) const {
  harmanls::WriteTraceBlock(out, "CHarmAnlsProgressions", *this);
}

void CHarmAnlsProgressions::WriteTraceBrief(std::ostream& out) const {
  out << "CHarmAnlsProgressions: todo define TraceStreamBrief, size  " << size();
}

void CHarmAnlsProgressions::WriteInitializerList(std::ostream& out) const {
  harmanls::WriteInitializerBlock(out, "CHarmAnlsProgressions", *this);
}

}  // namespace harmony
