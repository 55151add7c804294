// The records of alternative readings: centers over ranges of chords, the readings made of
// them, and the clean-up of overlapping, repeated and outlasted readings.

#include <algorithm>
#include <compare>
#include <iterator>
#include <tuple>

#include "HarmAnlsText.h"
#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"
#include "harmony/chords/ScaleLite.h"

namespace harmony {

using harmanls::WriteBriefList;
using harmanls::WriteInitializerBlock;
using harmanls::WriteTraceBlock;

namespace {

void WriteChordIndex(std::ostream& out, std::size_t index) {
  if (index == CHarmAnlsCenterInChords::kNoChord) {
    out << '-';
  } else {
    out << index;
  }
}

void WritePercent(std::ostream& out, double probability) {
  if (IsHarmAnlsUndef(probability)) {
    out << "Undef";
  } else {
    out << HarmAnlsPercentText(probability) << '%';
  }
}

// Two readings entry by entry, each entry by the fields that `key` picks: -1, 0 or 1.
template <class TKey>
int CompareEntries(const CHarmAnlsCentersInChords& a, const CHarmAnlsCentersInChords& b, TKey key) {
  const auto order = std::lexicographical_compare_three_way(
      a.begin(), a.end(), b.begin(), b.end(),
      [&](const CHarmAnlsCenterInChords& x, const CHarmAnlsCenterInChords& y) {
        return key(x) <=> key(y);
      });
  return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

int CompareRanges(const CHarmAnlsCentersInChords& a, const CHarmAnlsCentersInChords& b) {
  return CompareEntries(a, b, [](const CHarmAnlsCenterInChords& entry) {
    return std::pair{entry.Begin, entry.End};
  });
}

// By the fields that equality of entries compares: key, spelling, mask and range.
int CompareCenters(const CHarmAnlsCentersInChords& a, const CHarmAnlsCentersInChords& b) {
  return CompareEntries(a, b, [](const CHarmAnlsCenterInChords& entry) {
    const CKeyEnh& root = entry.HarmCenter.RootKeyEnh;
    return std::tuple{root.KeyNr, root.Enh, entry.HarmCenter.Semitones.Word(), entry.Begin,
                      entry.End};
  });
}

using TCompareReadings = int (*)(const CHarmAnlsCentersInChords&, const CHarmAnlsCentersInChords&);

// The indices of the readings in the order of `compare`; equal readings keep their order.
std::vector<std::size_t> IndicesSortedBy(const CHarmAnlsCenterAlternatives& alternatives,
                                         TCompareReadings compare) {
  std::vector<std::size_t> order(alternatives.size());
  for (std::size_t a = 0; a < order.size(); ++a) order[a] = a;
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const int byCenters = compare(alternatives[a].Centers, alternatives[b].Centers);
    return byCenters != 0 ? byCenters < 0 : a < b;
  });
  return order;
}

// Erases the readings marked in `dropped`; the others keep their order. True if any went.
bool EraseMarked(CHarmAnlsCenterAlternatives& alternatives, const std::vector<bool>& dropped) {
  std::size_t kept = 0;
  for (std::size_t a = 0; a < alternatives.size(); ++a) {
    if (dropped[a]) continue;
    if (kept != a) alternatives[kept] = std::move(alternatives[a]);
    ++kept;
  }
  const bool erased = kept != alternatives.size();
  alternatives.erase(alternatives.begin() + static_cast<std::ptrdiff_t>(kept), alternatives.end());
  return erased;
}

bool FindOutlastedSingleRangeReadings(const CHarmAnlsCenterAlternatives& alternatives,
                                      std::vector<bool>& outlasted) {
  // Readings of one range each, as the search for readings makes them: outlasting is then a
  // strict order (a range that contains another and is not the same range), so the readings
  // to drop are those that any other reading outlasts, whatever the order of the scan. They
  // are found by one sweep over the ranges sorted by start, the longer first at equal starts:
  // a range is outlasted when a different range before it in that order reaches as far.
  using TRange = std::pair<std::size_t, std::size_t>;
  std::vector<std::pair<TRange, std::size_t>> ranges;
  ranges.reserve(alternatives.size());
  for (std::size_t a = 0; a < alternatives.size(); ++a) {
    const CHarmAnlsCentersInChords& centers = alternatives[a].Centers;
    if (centers.size() != 1 || centers.front().Begin > centers.front().End) return false;
    ranges.emplace_back(TRange{centers.front().Begin, centers.front().End}, a);
  }
  std::sort(ranges.begin(), ranges.end(), [](const auto& x, const auto& y) {
    if (x.first.first != y.first.first) return x.first.first < y.first.first;
    return x.first.second > y.first.second;
  });
  outlasted.assign(alternatives.size(), false);
  bool anyBefore = false;
  std::size_t farthestBefore = 0;  // the largest End of the different ranges before
  for (auto group = ranges.begin(); group != ranges.end();) {
    const auto groupEnd = std::find_if(
        group, ranges.end(), [&](const auto& entry) { return entry.first != group->first; });
    const std::size_t end = group->first.second;
    const bool isOutlasted = anyBefore && farthestBefore >= end;
    for (auto it = group; it != groupEnd; ++it) outlasted[it->second] = isOutlasted;
    farthestBefore = anyBefore ? std::max(farthestBefore, end) : end;
    anyBefore = true;
    group = groupEnd;
  }
  return true;
}

}  // namespace

// --- CHarmAnlsCenterInChords

void CHarmAnlsCenterInChords::ExtendForAdjacentDiatonicOrAllowedOutlierChords(
    const CHarmAnlsChords& chords) {
  if (chords.empty()) return;
  const auto fits = [&](std::size_t i) {
    return ScaleLite::ChordIsCompatibleWithScale(chords[i], HarmCenter);
  };
  while (Begin > 0 && Begin <= chords.size() && fits(Begin - 1)) --Begin;
  while (End + 1 < chords.size() && fits(End)) ++End;
}

CHarmAnlsCenter CHarmAnlsCenterInChords::ToHarmAnlsCenter(const CHarmAnlsChords& chords) const {
  if (HarmCenter.IsUndef() || Begin >= chords.size()) return CHarmAnlsCenter();
  const auto first = chords.begin() + static_cast<std::ptrdiff_t>(Begin);
  const auto last = chords.begin() + static_cast<std::ptrdiff_t>(std::min(End, chords.size()));
  return CHarmAnlsCenter(kHarmAnlsUndefDouble, first->Position, HarmCenter,
                         CHarmAnlsChords(first, std::max(first, last)));
}

void CHarmAnlsCenterInChords::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsCenterInChords: HarmCenter " << HarmCenter << ", Begin ";
  WriteChordIndex(out, Begin);
  out << ", End ";
  WriteChordIndex(out, End);
}

void CHarmAnlsCenterInChords::WriteTraceBrief(std::ostream& out) const {
  out << '(' << HarmCenter.NameShort(GetChordNamePrefsNonUTF8()) << ' ';
  WriteChordIndex(out, Begin);
  out << "..";
  WriteChordIndex(out, End);
  out << ')';
}

void CHarmAnlsCenterInChords::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsCenterInChords(";
  HarmCenter.WriteInitializerList(out);
  out << ", " << Begin << ", " << End << ')';
}

// --- CHarmAnlsCentersInChords

void CHarmAnlsCentersInChords::RemoveShorterContainedHarmCenters() {
  // Outlasting is transitive, so dropping one entry at a time drops the same entries as
  // judging all against the original list.
  for (std::size_t i = 0; i < size();) {
    if (HasCenterThatIsLongerAndContains((*this)[i])) {
      erase(begin() + static_cast<std::ptrdiff_t>(i));
    } else {
      ++i;
    }
  }
}

bool CHarmAnlsCentersInChords::HasCenterThatIsLongerAndContains(
    const CHarmAnlsCenterInChords& center) const {
  return std::any_of(begin(), end(), [&](const CHarmAnlsCenterInChords& entry) {
    return entry.IsLongerAndContains(center);
  });
}

bool CHarmAnlsCentersInChords::IsLongerAndContains(const CHarmAnlsCentersInChords& other) const {
  return std::any_of(other.begin(), other.end(), [&](const CHarmAnlsCenterInChords& entry) {
    return HasCenterThatIsLongerAndContains(entry);
  });
}

bool CHarmAnlsCentersInChords::ContainsSameCenterWithSameOrLongerChords(
    const CHarmAnlsCenterInChords& center) const {
  const const_iterator same = FindCenterMatching(center.HarmCenter);
  return same != end() && same->IsLongerAndContains(center);
}

CHarmAnlsCentersInChords::const_iterator CHarmAnlsCentersInChords::FindCenterMatching(
    const CHarmCenterLite& center) const {
  return std::find_if(begin(), end(), [&](const CHarmAnlsCenterInChords& entry) {
    return entry.HarmCenter == center;
  });
}

std::pair<std::size_t, std::size_t> CHarmAnlsCentersInChords::OverallBeginAndEndInputChord() const {
  if (empty()) return {CHarmAnlsCenterInChords::kNoChord, CHarmAnlsCenterInChords::kNoChord};
  std::pair<std::size_t, std::size_t> range{front().Begin, front().End};
  for (const CHarmAnlsCenterInChords& entry : *this) {
    range.first = std::min(range.first, entry.Begin);
    range.second = std::max(range.second, entry.End);
  }
  return range;
}

void CHarmAnlsCentersInChords::WriteTrace(std::ostream& out) const {
  WriteTraceBlock(out, "CHarmAnlsCentersInChords", *this);
}

void CHarmAnlsCentersInChords::WriteTraceBrief(std::ostream& out) const {
  WriteBriefList(out, *this);
}

void CHarmAnlsCentersInChords::WriteInitializerList(std::ostream& out) const {
  WriteInitializerBlock(out, "CHarmAnlsCentersInChords", *this);
}

// --- CHarmAnlsCenterAlternative

void CHarmAnlsCenterAlternative::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsCenterAlternative: Probability ";
  WritePercent(out, Probability);
  out << ", Centers: ";
  Centers.WriteTrace(out);
}

void CHarmAnlsCenterAlternative::WriteTraceBrief(std::ostream& out) const {
  out << '(';
  WritePercent(out, Probability);
  out << ": ";
  Centers.WriteTraceBrief(out);
  out << ')';
}

void CHarmAnlsCenterAlternative::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsCenterAlternative(";
  harmanls::WriteInitializerDouble(out, Probability);
  out << ", ";
  Centers.WriteInitializerList(out);
  out << ')';
}

// --- CHarmAnlsCenterAlternatives

void CHarmAnlsCenterAlternatives::RemoveShorterContainedAlternatives() {
  std::vector<bool> outlasted;
  if (FindOutlastedSingleRangeReadings(*this, outlasted)) {
    if (EraseMarked(*this, outlasted)) RecalculateProbabilitiesOfSimultaneousAlternatives();
    return;
  }
  // Readings of several ranges: outlasting is no order any more, so the scan goes as the
  // rule says. After an erase it stays at the same place: the alternative that moved in is
  // compared with all others from the first on.
  bool erased = false;
  for (std::size_t a = 0; a < size();) {
    if (HasLongerContainingAlternernative(a)) {
      erase(begin() + static_cast<std::ptrdiff_t>(a));
      erased = true;
    } else {
      ++a;
    }
  }
  if (erased) RecalculateProbabilitiesOfSimultaneousAlternatives();
}

std::vector<std::size_t> CHarmAnlsCenterAlternatives::FindSimultaneousAlternatives(
    std::size_t index) const {
  std::vector<std::size_t> partners;
  for (std::size_t b = 0; b < size(); ++b) {
    if (b != index && (*this)[b].IsSimultaneousWith((*this)[index])) partners.push_back(b);
  }
  return partners;
}

bool CHarmAnlsCenterAlternatives::HasLongerContainingAlternernative(std::size_t index) const {
  for (std::size_t b = 0; b < size(); ++b) {
    if (b != index && (*this)[b].IsLongerContainingAlternativeFor((*this)[index])) return true;
  }
  return false;
}

void CHarmAnlsCenterAlternatives::RecalculateProbabilitiesOfSimultaneousAlternatives() {
  // Each alternative writes 1 / (partners + 1) into its partners, not into itself; it gets
  // the value in its partners' turn. So every member of a group of two or more ends with
  // 1 / the group's size, and one without partners keeps what it had, even a share of
  // partners that are gone. Groups are found by sorting the ranges, not by comparing pairs.
  using TRange = std::pair<std::size_t, std::size_t>;
  std::vector<std::pair<TRange, std::size_t>> ranges;
  ranges.reserve(size());
  for (std::size_t a = 0; a < size(); ++a) {
    ranges.emplace_back((*this)[a].Centers.OverallBeginAndEndInputChord(), a);
  }
  std::sort(ranges.begin(), ranges.end());
  for (auto group = ranges.begin(); group != ranges.end();) {
    const auto groupEnd = std::find_if(
        group, ranges.end(), [&](const auto& entry) { return entry.first != group->first; });
    const auto count = static_cast<std::size_t>(groupEnd - group);
    if (count > 1) {
      for (auto it = group; it != groupEnd; ++it) {
        (*this)[it->second].Probability = 1.0 / static_cast<double>(count);
      }
    }
    group = groupEnd;
  }
}

void CHarmAnlsCenterAlternatives::RemoveShorterContainedHarmCenters() {
  for (CHarmAnlsCenterAlternative& alternative : *this) {
    alternative.RemoveShorterContainedHarmCenters();
  }
}

void CHarmAnlsCenterAlternatives::Deduplication() {
  // Equal readings are found as neighbours in an order of the readings; the first of each
  // group stays and gets the probabilities of the others added in their order, as a pass
  // from the front that erases each later equal reading gives them.
  const std::vector<std::size_t> order = IndicesSortedBy(*this, CompareCenters);
  std::vector<bool> dropped(size(), false);
  for (auto group = order.begin(); group != order.end();) {
    const auto groupEnd = std::find_if(group, order.end(), [&](std::size_t b) {
      return CompareCenters((*this)[b].Centers, (*this)[*group].Centers) != 0;
    });
    for (auto it = std::next(group); it != groupEnd; ++it) {
      (*this)[*group].Probability += (*this)[*it].Probability;
      dropped[*it] = true;
    }
    group = groupEnd;
  }
  EraseMarked(*this, dropped);
  // Where partners remain their shares overwrite the sums; a lone sum of 1.0 is the usual
  // way a reading becomes sure.
  RecalculateProbabilitiesOfSimultaneousAlternatives();
}

void CHarmAnlsCenterAlternatives::RemoveNonSureAlternativesWithSameRangeAsSureAlternative() {
  // Among the readings of the same ranges, the first sure one removes all that follow it;
  // a sure one that a sure one before it removes would remove only readings of the same
  // ranges behind it, which go anyway.
  const std::vector<std::size_t> order = IndicesSortedBy(*this, CompareRanges);
  std::vector<bool> dropped(size(), false);
  for (auto group = order.begin(); group != order.end();) {
    const auto groupEnd = std::find_if(group, order.end(), [&](std::size_t b) {
      return CompareRanges((*this)[b].Centers, (*this)[*group].Centers) != 0;
    });
    const auto sure =
        std::find_if(group, groupEnd, [&](std::size_t a) { return (*this)[a].Probability == 1.0; });
    if (sure != groupEnd) {
      for (auto it = std::next(sure); it != groupEnd; ++it) dropped[*it] = true;
    }
    group = groupEnd;
  }
  EraseMarked(*this, dropped);
}

void CHarmAnlsCenterAlternatives::WriteTrace(std::ostream& out) const {
  WriteTraceBlock(out, "CHarmAnlsCenterAlternatives", *this);
}

void CHarmAnlsCenterAlternatives::WriteTraceBrief(std::ostream& out) const {
  WriteBriefList(out, *this);
}

void CHarmAnlsCenterAlternatives::WriteInitializerList(std::ostream& out) const {
  WriteInitializerBlock(out, "CHarmAnlsCenterAlternatives", *this);
}

}  // namespace harmony
