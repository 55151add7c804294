// The lists of analysis chords: ordering by position, the end of a piece, and their text forms.

#include <algorithm>
#include <iterator>
#include <ostream>

#include "HarmAnlsText.h"
#include "harmony/analysis/HarmAnlsChord.h"

namespace harmony {

using harmanls::WriteBriefList;
using harmanls::WriteInitializerBlock;
using harmanls::WriteTraceBlock;

namespace {

bool PositionLess(const CHarmAnlsChordWithPos& a, const CHarmAnlsChordWithPos& b) {
  return a.Position < b.Position;
}

}  // namespace

// --- CHarmAnlsChordsSet

void CHarmAnlsChordsSet::WriteTrace(std::ostream& out) const {
  WriteTraceBlock(out, "CHarmAnlsChordsSet", *this);
}

void CHarmAnlsChordsSet::WriteTraceBrief(std::ostream& out) const { WriteBriefList(out, *this); }

void CHarmAnlsChordsSet::WriteInitializerList(std::ostream& out) const {
  WriteInitializerBlock(out, "CHarmAnlsChordsSet", *this);
}

// --- CHarmAnlsChords

void CHarmAnlsChords::InsertAtCorrectPosition(const_iterator first, const_iterator last) {
  if (first == last) return;
  const auto where =
      std::upper_bound(cbegin(), cend(), *first, PositionLess);  // after equal positions
  InsertAtCorrectPosition(where, first, last);
}

void CHarmAnlsChords::InsertAtCorrectPosition(const_iterator where, const_iterator first,
                                              const_iterator last) {
  const auto count = std::distance(first, last);
  const auto at = insert(where, first, last);
  // The list is now three runs: before, the new chords, behind. When each is in order, the
  // stable sort of the whole is the stable merge of the runs, and at the joins that are
  // already in order nothing moves; a merge only walks the chords, a sort moves them all.
  const auto behind = at + count;
  if (!std::is_sorted(begin(), at, PositionLess) || !std::is_sorted(at, behind, PositionLess) ||
      !std::is_sorted(behind, end(), PositionLess)) {
    SortByPosition();
    return;
  }
  if (at != begin() && behind != at && PositionLess(*at, *std::prev(at))) {
    std::inplace_merge(begin(), at, behind, PositionLess);
  }
  if (behind != begin() && behind != end() && PositionLess(*behind, *std::prev(behind))) {
    std::inplace_merge(begin(), behind, end(), PositionLess);
  }
}

void CHarmAnlsChords::SortByPosition() { std::stable_sort(begin(), end(), PositionLess); }

double CHarmAnlsChords::LastChordEndPos() const {
  if (empty()) return kHarmAnlsUndefDouble;
  return back().Position + 1.0;
}

CHarmAnlsChords::iterator CHarmAnlsChords::LastNonUndefChord() {
  for (auto it = end(); it != begin();) {
    --it;
    if (!it->IsUndef()) return it;
  }
  return end();
}

CHarmAnlsChords::const_iterator CHarmAnlsChords::LastNonUndefChord() const {
  return const_cast<CHarmAnlsChords&>(*this).LastNonUndefChord();
}

bool CHarmAnlsChords::Contain(const CHarmAnlsChord& chord) const {
  return std::any_of(begin(), end(),
                     [&chord](const CHarmAnlsChord& element) { return element == chord; });
}

CHarmAnlsChordsSet CHarmAnlsChords::CreateSetOfNonUndefChords() const {
  CHarmAnlsChordsSet set;
  for (const CHarmAnlsChordWithPos& chord : *this) {
    if (!chord.IsUndef()) set.insert(chord);
  }
  return set;
}

std::size_t CHarmAnlsChords::CountDifferentNonUndefChords() const {
  return CreateSetOfNonUndefChords().size();
}

void CHarmAnlsChords::AppendJSONString(std::ostream& out) const {
  harmanls::AppendJSONList(out, *this);
}

void CHarmAnlsChords::WriteTrace(std::ostream& out) const {
  WriteTraceBlock(out, "CHarmAnlsChords", *this);
}

void CHarmAnlsChords::WriteTraceBrief(std::ostream& out) const { WriteBriefList(out, *this); }

void CHarmAnlsChords::WriteInitializerList(std::ostream& out) const {
  WriteInitializerBlock(out, "CHarmAnlsChords", *this);
}

// --- CHarmAnlsChordsWithLength

void CHarmAnlsChordsWithLength::WriteTrace(std::ostream& out) const {
  WriteTraceBlock(out, "CHarmAnlsChordsWithLength", *this);
}

void CHarmAnlsChordsWithLength::WriteTraceBrief(std::ostream& out) const {
  WriteBriefList(out, *this);
}

void CHarmAnlsChordsWithLength::WriteInitializerList(std::ostream& out) const {
  WriteInitializerBlock(out, "CHarmAnlsChordsWithLength", *this);
}

}  // namespace harmony
