// The records of alternative readings: centers over ranges of chords, the readings made of
// them, and the clean-up of overlapping, repeated and outlasted readings.

#include <algorithm>

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

bool SameRanges(const CHarmAnlsCentersInChords& a, const CHarmAnlsCentersInChords& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const CHarmAnlsCenterInChords& x, const CHarmAnlsCenterInChords& y) {
                      return x.IsSimultaneousWith(y);
                    });
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
  // After an erase the scan stays at the same place: the alternative that moved in is
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
  for (std::size_t a = 0; a < size(); ++a) {
    for (std::size_t b = a + 1; b < size();) {
      if ((*this)[b].Centers == (*this)[a].Centers) {
        (*this)[a].Probability += (*this)[b].Probability;
        erase(begin() + static_cast<std::ptrdiff_t>(b));
      } else {
        ++b;
      }
    }
  }
  // Where partners remain their shares overwrite the sums; a lone sum of 1.0 is the usual
  // way a reading becomes sure.
  RecalculateProbabilitiesOfSimultaneousAlternatives();
}

void CHarmAnlsCenterAlternatives::RemoveNonSureAlternativesWithSameRangeAsSureAlternative() {
  for (std::size_t a = 0; a < size(); ++a) {
    if ((*this)[a].Probability != 1.0) continue;
    for (std::size_t b = a + 1; b < size();) {
      if (SameRanges((*this)[a].Centers, (*this)[b].Centers)) {
        erase(begin() + static_cast<std::ptrdiff_t>(b));
      } else {
        ++b;
      }
    }
  }
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
