// The search for repeated passages: runs of at least two chords that come again with the
// same chords and lengths, the longest first, and inside the first occurrence of each the
// smaller repeats it holds.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>

#include "harmony/analysis/HarmCopy.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {

namespace {

// Bar arithmetic works in whole quarter notes, truncating after every step. Lengths come
// from outside (a MusicXML file may leave one unset, the most negative double), so the
// conversion saturates instead of overflowing.
template <class Int>
Int TruncatedSum(Int sum, double length) {
  const double value = std::trunc(length + static_cast<double>(sum));
  if (std::isnan(value)) return 0;
  if (value <= static_cast<double>(std::numeric_limits<Int>::min())) {
    return std::numeric_limits<Int>::min();
  }
  if (value >= static_cast<double>(std::numeric_limits<Int>::max())) {
    return std::numeric_limits<Int>::max();
  }
  return static_cast<Int>(value);
}

// Runs are keys of a map: chord by chord in the order of the plain chords, then by length.
struct RunLess {
  bool operator()(const CHarmAnlsChordsWithLength& a, const CHarmAnlsChordsWithLength& b) const {
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [](const CHarmAnlsChordWithLength& x, const CHarmAnlsChordWithLength& y) {
          const auto order = x.ChordLite() <=> y.ChordLite();
          if (order != 0) return order < 0;
          return x.Length < y.Length;
        });
  }
};

}  // namespace

void CHarmonicAnalyse::FindHarmCopies(CHarmCopies& copies) const {
  copies.clear();
  CHarmAnlsChordsWithLength chords;
  ListAllHarmChordsWithLength(chords);
  TRepeatingSequences sequences;
  GenerateVectorWithRepeatingSequenceIndices(sequences, chords);
  RecursiveFillWithSequences(chords, sequences, 0, 0.0, copies);
  std::stable_sort(copies.begin(), copies.end(), [](const CHarmCopy& a, const CHarmCopy& b) {
    return a.TargetPos < b.TargetPos;
  });
}

void CHarmonicAnalyse::FindRecurringChordIndices(std::vector<std::size_t>& indices,
                                                 const CHarmAnlsChordsWithLength& chords,
                                                 std::size_t index) const {
  indices.clear();
  for (std::size_t j = index + 1; j < chords.size(); ++j) {
    if (chords[j] == chords[index]) indices.push_back(j);
  }
}

void CHarmonicAnalyse::InsertRangeStartIfNoCollision(std::vector<std::size_t>& starts,
                                                     std::size_t start, std::size_t length) {
  for (const std::size_t s : starts) {
    // A range already listed that reaches the new start collides; one that starts within
    // the new range does not.
    if (s == start || (s < start && s + length > start)) return;
  }
  starts.push_back(start);
}

void CHarmonicAnalyse::GenerateVectorWithRepeatingSequenceIndices(
    TRepeatingSequences& sequences, const CHarmAnlsChordsWithLength& chords) const {
  sequences.clear();
  std::map<CHarmAnlsChordsWithLength, std::vector<std::size_t>, RunLess> runs;
  std::vector<std::size_t> recurring;
  CHarmAnlsChordsWithLength run;
  for (std::size_t i = 0; i < chords.size(); ++i) {
    FindRecurringChordIndices(recurring, chords, i);
    for (const std::size_t j : recurring) {
      // The run grows while the chords agree, and stops where it would reach its own
      // repetition: a run and its repetition never overlap.
      run.clear();
      for (std::size_t k = 0; j + k < chords.size() && i + k < j && chords[i + k] == chords[j + k];
           ++k) {
        run.push_back(chords[i + k]);
      }
      if (run.size() < 2) continue;
      std::vector<std::size_t>& starts = runs[run];
      InsertRangeStartIfNoCollision(starts, j, run.size());
      InsertRangeStartIfNoCollision(starts, i, run.size());
    }
  }
  for (auto& [chordsOfRun, starts] : runs) {
    std::sort(starts.begin(), starts.end());
    sequences.emplace_back(std::move(starts), chordsOfRun.size());
  }
  std::stable_sort(sequences.begin(), sequences.end(),
                   [](const TRepeatingSequence& a, const TRepeatingSequence& b) {
                     if (a.second != b.second) return a.second > b.second;
                     return a.first < b.first;
                   });
}

void CHarmonicAnalyse::RecursiveFillWithSequences(const CHarmAnlsChordsWithLength& chords,
                                                  const TRepeatingSequences& sequences,
                                                  std::size_t startIndex, double offset,
                                                  CHarmCopies& copies) const {
  if (chords.empty()) return;
  std::vector<bool> used(chords.size(), false);
  const std::size_t lastIndex = startIndex + chords.size() - 1;
  const auto rangeIsFree = [&](std::size_t start, std::size_t length) {
    for (std::size_t k = start - startIndex; k < start - startIndex + length; ++k) {
      if (used[k]) return false;
    }
    return true;
  };
  const auto markUsed = [&](std::size_t start, std::size_t length) {
    std::fill_n(used.begin() + static_cast<std::ptrdiff_t>(start - startIndex), length, true);
  };
  std::vector<std::size_t> starts;
  for (const auto& [allStarts, length] : sequences) {
    // Only runs of up to half the part can repeat within it.
    if (length > chords.size() / 2) continue;
    starts.clear();
    for (const std::size_t s : allStarts) {
      if (s >= startIndex && s + length - 1 <= lastIndex && rangeIsFree(s, length)) {
        starts.push_back(s);
      }
    }
    if (starts.size() < 2) continue;
    // The first occurrence is the source of every copy, and the search goes into it. Its
    // position is summed over as many chords of this part as its index in the whole list
    // tells, even in a nested call, where that index is not this part's.
    const std::size_t source = starts.front();
    long long sourcePos = 0;
    for (std::size_t k = 0; k < std::min(chords.size(), source); ++k) {
      sourcePos = TruncatedSum(sourcePos, chords[k].Length);
    }
    const auto sourceBegin = chords.begin() + static_cast<std::ptrdiff_t>(source - startIndex);
    const CHarmAnlsChordsWithLength sourcePart(sourceBegin,
                                               sourceBegin + static_cast<std::ptrdiff_t>(length));
    RecursiveFillWithSequences(sourcePart, sequences, source, static_cast<double>(sourcePos),
                               copies);
    markUsed(source, length);
    for (std::size_t n = 1; n < starts.size(); ++n) {
      const std::size_t s = starts[n];
      long long lengthQuarters = 0;
      for (std::size_t k = s; k < s + length; ++k) {
        lengthQuarters = TruncatedSum(lengthQuarters, chords[k - startIndex].Length);
      }
      std::int32_t back = 0;
      for (std::size_t k = source; k < s; ++k) {
        back = TruncatedSum(back, -chords[k - startIndex].Length);
      }
      long long target = 0;
      for (std::size_t k = startIndex; k < s; ++k) {
        target = TruncatedSum(target, chords[k - startIndex].Length);
      }
      CHarmCopy copy;
      copy.TargetPos = static_cast<double>(target) + offset;
      copy.SourceOffsetBars = back / 4;
      copy.LengthBars = static_cast<std::uint64_t>(lengthQuarters) >> 2;
      copies.push_back(copy);
      markUsed(s, length);
    }
  }
}

// --- Trace family

void CHarmCopy::WriteTrace(std::ostream& out) const {
  out << "CHarmCopy: TargetPos " << TargetPos << " Source OffsetBars " << SourceOffsetBars
      << " Chords " << LengthChords << ", Length Bars " << LengthBars << " Chords " << LengthChords;
}

void CHarmCopy::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CHarmCopy::WriteInitializerList(std::ostream& out) const {
  out << "CHarmCopy(" << TargetPos << ", " << SourceOffsetBars << ", " << LengthBars << ")";
}

void CHarmCopies::WriteTrace(std::ostream& out) const {
  out << "CHarmCopies: " << size() << " copies";
  for (const CHarmCopy& copy : *this) {
    out << '\n';
    copy.WriteTrace(out);
  }
}

void CHarmCopies::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CHarmCopies::WriteInitializerList(std::ostream& out) const {
  out << "{";
  for (std::size_t i = 0; i < size(); ++i) {
    if (i > 0) out << ", ";
    (*this)[i].WriteInitializerList(out);
  }
  out << "}";
}

}  // namespace harmony
