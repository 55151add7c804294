#include "harmony/guitar/GChBasicChord.h"

#include "harmony/guitar/GChChord.h"

#include <algorithm>
#include <tuple>

#include "harmony/guitar/GChChordFunctions.h"

namespace harmony {

GChBasicChord::GChBasicChord(const GChShortTuning& shortTuning) : mShortTuning(shortTuning) {
  mChordElems.reserve(8);
}

// --- elements ---

bool GChBasicChord::addChordElem(int fingerNumber, int absFretIndex, int stringIndex1,
                                 int stringIndex2, int fingerPointType) {
  auto elem = GChChordElem::initWithFingerNumber(
      fingerNumber, absFretIndex, std::min(stringIndex1, stringIndex2),
      std::max(stringIndex1, stringIndex2), fingerPointType);
  if (!elem) return false;
  mChordElems.push_back(*elem);
  return true;
}

bool GChBasicChord::addChordElem(int fingerNumber, int absFretIndex, int stringIndex) {
  return addChordElem(fingerNumber, absFretIndex, stringIndex, stringIndex, 0);
}

std::vector<GChChordElem> GChBasicChord::sortedChordElems() const {
  std::vector<GChChordElem> sorted = mChordElems;
  std::stable_sort(sorted.begin(), sorted.end(), [](const GChChordElem& a, const GChChordElem& b) {
    return std::make_tuple(a.absFretIndex(), a.coveredMinStr(), a.coveredMaxStr(), a.fingerNumber(),
                           a.fingerPointType()) <
           std::make_tuple(b.absFretIndex(), b.coveredMinStr(), b.coveredMaxStr(), b.fingerNumber(),
                           b.fingerPointType());
  });
  return sorted;
}

bool GChBasicChord::removeChordElem(const GChChordElem& elem) {
  const auto it =
      std::find_if(mChordElems.begin(), mChordElems.end(),
                   [&elem](const GChChordElem& e) { return e.isEqualToChordElem(elem); });
  if (it == mChordElems.end()) return false;
  mChordElems.erase(it);
  return true;
}

void GChBasicChord::shiftFretIndexesBy(int delta) {
  // All or nothing: a grid never ends up half shifted.
  for (const auto& elem : mChordElems) {
    const int fret = elem.absFretIndex() + delta;
    if (fret < 0 || fret > kGChMaxAbsFretIndex) return;
  }
  for (auto& elem : mChordElems) elem.shiftFretIndexBy(delta);
}

// --- spots ---

const GChChordElem* GChBasicChord::elemAtAbsFretIndex(int absFretIndex, int stringIndex) const {
  for (const auto& elem : mChordElems) {
    if (elem.absFretIndex() == absFretIndex && elem.singleStringIndex() == stringIndex) {
      return &elem;
    }
  }
  return nullptr;
}

const GChChordElem* GChBasicChord::spotAtAbsFretIndex(int absFretIndex, int stringIndex) const {
  for (const auto& elem : mChordElems) {
    if (elem.absFretIndex() == absFretIndex && elem.coversString(stringIndex)) return &elem;
  }
  return nullptr;
}

template <class Pred>
const GChChordElem* GChBasicChord::highestSingleWhere(int stringIndex, Pred pred) const {
  const GChChordElem* best = nullptr;
  for (const auto& elem : mChordElems) {
    if (elem.singleStringIndex() != stringIndex || !pred(elem)) continue;
    if (best == nullptr || elem.absFretIndex() > best->absFretIndex()) best = &elem;
  }
  return best;
}

const GChChordElem* GChBasicChord::realSpotAtMaxIndexForStringIndex(int stringIndex) const {
  return highestSingleWhere(stringIndex, [](const GChChordElem& e) { return e.isRealSpot(); });
}

const GChChordElem* GChBasicChord::optionalSpotAtMaxIndexForStringIndex(int stringIndex) const {
  return highestSingleWhere(stringIndex, [](const GChChordElem& e) { return !e.isRealSpot(); });
}

bool GChBasicChord::hasSingleSpot(int stringIndex, int absFretIndex) const {
  return elemAtAbsFretIndex(absFretIndex, stringIndex) != nullptr;
}

bool GChBasicChord::hasSingleSpot(int stringIndex, int absFretIndex, int fingerNumber) const {
  return std::any_of(mChordElems.begin(), mChordElems.end(), [&](const GChChordElem& e) {
    return e.absFretIndex() == absFretIndex && e.singleStringIndex() == stringIndex &&
           e.fingerNumber() == fingerNumber;
  });
}

bool GChBasicChord::hasBarreSpot(int stringIndex0, int stringIndex1, int absFretIndex) const {
  const int lo = std::min(stringIndex0, stringIndex1), hi = std::max(stringIndex0, stringIndex1);
  return std::any_of(mChordElems.begin(), mChordElems.end(), [&](const GChChordElem& e) {
    return e.absFretIndex() == absFretIndex && e.coveredMinStr() == lo && e.coveredMaxStr() == hi;
  });
}

bool GChBasicChord::hasBarreSpot(int stringIndex0, int stringIndex1, int absFretIndex,
                                 int fingerNumber) const {
  const int lo = std::min(stringIndex0, stringIndex1), hi = std::max(stringIndex0, stringIndex1);
  return std::any_of(mChordElems.begin(), mChordElems.end(), [&](const GChChordElem& e) {
    return e.absFretIndex() == absFretIndex && e.coveredMinStr() == lo && e.coveredMaxStr() == hi &&
           e.fingerNumber() == fingerNumber;
  });
}

int GChBasicChord::fretIndexForBarreSpot(int stringIndex0, int stringIndex1) const {
  const int lo = std::min(stringIndex0, stringIndex1), hi = std::max(stringIndex0, stringIndex1);
  for (const auto& elem : mChordElems) {
    if (elem.coveredMinStr() == lo && elem.coveredMaxStr() == hi) return elem.absFretIndex();
  }
  return -1;
}

bool GChBasicChord::liesInBarreShadow(int absFretIndex, int stringIndex1, int stringIndex2) const {
  return std::any_of(mChordElems.begin(), mChordElems.end(), [&](const GChChordElem& e) {
    return e.isBarre() && e.absFretIndex() <= absFretIndex && e.coversString(stringIndex1) &&
           e.coversString(stringIndex2);
  });
}

int GChBasicChord::maxAbsFretIndexPlusOneForStringIndex(int stringIndex) const {
  if (isMutedForStringIndex(stringIndex)) return -1;
  int result = 0;
  for (const auto& elem : mChordElems) {
    if (elem.coversString(stringIndex)) result = std::max(result, elem.absFretIndex() + 1);
  }
  return result;
}

template <class Pred>
int GChBasicChord::countSinglesWhere(int stringIndex, Pred pred) const {
  return static_cast<int>(std::count_if(
      mChordElems.begin(), mChordElems.end(),
      [&](const GChChordElem& e) { return e.singleStringIndex() == stringIndex && pred(e); }));
}

int GChBasicChord::numberOfSpotsForStringIndex(int stringIndex) const {
  return countSinglesWhere(stringIndex, [](const GChChordElem&) { return true; });
}

int GChBasicChord::numberOfOptionalSpotsForStringIndex(int stringIndex) const {
  return countSinglesWhere(stringIndex, [](const GChChordElem& e) { return !e.isRealSpot(); });
}

int GChBasicChord::numberOfRealSpotsForStringIndex(int stringIndex) const {
  return countSinglesWhere(stringIndex, [](const GChChordElem& e) { return e.isRealSpot(); });
}

template <class Pred>
int GChBasicChord::removeSinglesWhere(int stringIndex, bool onlyLastElement, Pred pred) {
  const auto matches = [&](const GChChordElem& e) {
    return e.singleStringIndex() == stringIndex && pred(e);
  };
  if (onlyLastElement) {
    const auto it = std::find_if(mChordElems.rbegin(), mChordElems.rend(), matches);
    if (it == mChordElems.rend()) return 0;
    mChordElems.erase(std::next(it).base());
    return 1;
  }
  const auto oldSize = mChordElems.size();
  std::erase_if(mChordElems, matches);
  return static_cast<int>(oldSize - mChordElems.size());
}

int GChBasicChord::removeSpotsForStringIndex(int stringIndex, bool onlyLastElement) {
  return removeSinglesWhere(stringIndex, onlyLastElement, [](const GChChordElem&) { return true; });
}

int GChBasicChord::removeOptionalSpotsForStringIndex(int stringIndex, bool onlyLastElement) {
  return removeSinglesWhere(stringIndex, onlyLastElement,
                            [](const GChChordElem& e) { return !e.isRealSpot(); });
}

int GChBasicChord::removeRealSpotsForStringIndex(int stringIndex, bool onlyLastElement) {
  return removeSinglesWhere(stringIndex, onlyLastElement,
                            [](const GChChordElem& e) { return e.isRealSpot(); });
}

// --- strings and flags ---

bool GChBasicChord::isMutedForStringIndex(int stringIndex) const {
  return stringIndex >= 0 && stringIndex < kGChMaxStrings && (mIsMutedMask >> stringIndex & 1);
}

void GChBasicChord::setMuted(bool muted, int stringIndex) {
  if (stringIndex < 0 || stringIndex >= kGChMaxStrings) return;
  const auto bit = static_cast<uint16_t>(1u << stringIndex);
  mIsMutedMask = static_cast<uint16_t>(muted ? (mIsMutedMask | bit) : (mIsMutedMask & ~bit));
}

bool GChBasicChord::isOpenForStringIndex(int stringIndex) const {
  return stringIndex >= 0 && stringIndex < numberOfStrings() &&
         maxAbsFretIndexPlusOneForStringIndex(stringIndex) == 0;
}

bool GChBasicChord::hasOpenStrings() const {
  for (int s = 0; s < numberOfStrings(); ++s) {
    if (isOpenForStringIndex(s)) return true;
  }
  return false;
}

bool GChBasicChord::isFavoriteForTransposeIndex(int transposeIndex) const {
  return transposeIndex >= 0 && transposeIndex < 32 && (mIsFavoriteMask >> transposeIndex & 1);
}

void GChBasicChord::setIsFavorite(bool favorite, int transposeIndex) {
  if (transposeIndex < 0 || transposeIndex >= 32) return;
  const uint32_t bit = 1u << transposeIndex;
  mIsFavoriteMask = favorite ? (mIsFavoriteMask | bit) : (mIsFavoriteMask & ~bit);
}

int GChBasicChord::firstShownFretForNumberOfFrets(int numberOfFrets) const {
  int lowest = 100, highest = 0;
  for (const auto& elem : mChordElems) {
    lowest = std::min(lowest, elem.absFretIndex());
    highest = std::max(highest, elem.absFretIndex());
  }
  return highest < numberOfFrets ? 0 : lowest;
}

int GChBasicChord::lowestFingeredFret() const {
  if (mChordElems.empty()) return 0;
  int lowest = kGChMaxAbsFretIndex;
  for (const auto& elem : mChordElems) lowest = std::min(lowest, elem.absFretIndex());
  return lowest;
}

bool GChBasicChord::isEqualToChordRange(const GChBasicChord& other,
                                        bool includeFavoriteMask) const {
  if (this == &other) return true;
  if (!GChIsEqualShortTuning(mShortTuning, other.mShortTuning) ||
      mDifficultyLevel != other.mDifficultyLevel || mRootNote != other.mRootNote ||
      mBassNote != other.mBassNote || mChordType != other.mChordType ||
      mIsMutedMask != other.mIsMutedMask || mChordElems.size() != other.mChordElems.size()) {
    return false;
  }
  for (size_t i = 0; i < mChordElems.size(); ++i) {
    if (!mChordElems[i].isEqualToChordElem(other.mChordElems[i])) return false;
  }
  return !includeFavoriteMask || mIsFavoriteMask == other.mIsFavoriteMask;
}

void GChBasicChord::clearAll() {
  mChordElems.clear();
  mIsMutedMask = 0;
  mIsFavoriteMask = 0;
  mDifficultyLevel = 0;
  mRootNote = -1;
  mBassNote = -1;
  mChordType = 0;
  mUserName.clear();
}

std::string GChBasicChord::chordName(int capodasterOffset) const {
  if (mUserName.empty()) {
    const GChChord chord(std::make_shared<GChBasicChord>(*this), 0);
    return chord.chordName(capodasterOffset);
  }
  if (mRootNote < 0) return mUserName;
  const int root = (mRootNote + std::max(capodasterOffset, 0)) % 12;
  return GChOctPitchDefaultName(root) + " " + mUserName;
}

}  // namespace harmony
