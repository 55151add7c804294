#include "harmony/guitar/GChChordElem.h"

namespace harmony {

namespace {
bool IsValidStringPair(int minStr, int maxStr) {
  return minStr >= 0 && maxStr < 16 && minStr <= maxStr;
}

GChPropertyList ElemPropertyList(int finger, int fret, int minStr, int maxStr, int type) {
  GChPropertyList plist;
  plist.set("fingerNumber", GChPropertyList::Integer(static_cast<uint8_t>(finger)));
  plist.set("absFretIndex", GChPropertyList::Integer(static_cast<uint8_t>(fret)));
  plist.set("coveredMinStr", GChPropertyList::Integer(static_cast<uint8_t>(minStr)));
  plist.set("coveredMaxStr", GChPropertyList::Integer(static_cast<uint8_t>(maxStr)));
  plist.set("fingerPointType", GChPropertyList::Integer(static_cast<uint8_t>(type)));
  return plist;
}

void WriteElem(std::ostream& out, int finger, int fret, int minStr, int maxStr, int type) {
  out << "finger " << finger << ", fret " << fret << ", strings " << minStr << ".." << maxStr
      << ", type " << type;
}
}  // namespace

std::optional<GChChordElem> GChChordElem::initWithFingerNumber(int fingerNumber, int absFretIndex,
                                                               int coveredMinStr, int coveredMaxStr,
                                                               int fingerPointType) {
  if (fingerNumber < 0 || fingerNumber > kGChMaxFingerNumber) return std::nullopt;
  if (absFretIndex < 0 || absFretIndex > kGChMaxAbsFretIndex) return std::nullopt;
  if (!IsValidStringPair(coveredMinStr, coveredMaxStr)) return std::nullopt;
  GChChordElem elem;
  elem.mFingerNumber = static_cast<uint8_t>(fingerNumber);
  elem.mAbsFretIndex = static_cast<uint8_t>(absFretIndex);
  elem.mCoveredMinStr = static_cast<uint8_t>(coveredMinStr);
  elem.mCoveredMaxStr = static_cast<uint8_t>(coveredMaxStr);
  elem.mFingerPointType = static_cast<uint8_t>(fingerPointType);
  return elem;
}

void GChChordElem::setCoveredMinStr(int coveredMinStr, int coveredMaxStr) {
  if (!IsValidStringPair(coveredMinStr, coveredMaxStr)) return;
  mCoveredMinStr = static_cast<uint8_t>(coveredMinStr);
  mCoveredMaxStr = static_cast<uint8_t>(coveredMaxStr);
}

void GChChordElem::shiftFretIndexBy(int delta) {
  const int fret = mAbsFretIndex + delta;
  if (fret >= 0 && fret <= kGChMaxAbsFretIndex) mAbsFretIndex = static_cast<uint8_t>(fret);
}

bool GChChordElem::isEqualToChordElem(const GChChordElem& other) const {
  return mFingerNumber == other.mFingerNumber && mAbsFretIndex == other.mAbsFretIndex &&
         mCoveredMaxStr == other.mCoveredMaxStr && mCoveredMinStr == other.mCoveredMinStr &&
         mFingerPointType == other.mFingerPointType;
}

GChPropertyList GChChordElem::propertyList() const {
  return ElemPropertyList(mFingerNumber, mAbsFretIndex, mCoveredMinStr, mCoveredMaxStr,
                          mFingerPointType);
}

std::string GChChordElem::description() const { return TraceString(); }

void GChChordElem::WriteTrace(std::ostream& out) const {
  out << "GChChordElem: ";
  WriteElem(out, mFingerNumber, mAbsFretIndex, mCoveredMinStr, mCoveredMaxStr, mFingerPointType);
}

void GChChordElem::WriteTraceBrief(std::ostream& out) const {
  out << int{mFingerNumber} << '@' << int{mAbsFretIndex} << ':' << int{mCoveredMinStr};
  if (isBarre()) out << '-' << int{mCoveredMaxStr};
}

void GChChordElem::WriteInitializerList(std::ostream& out) const {
  out << "GChChordElem(" << int{mFingerNumber} << ", " << int{mAbsFretIndex} << ", "
      << int{mCoveredMinStr} << ", " << int{mCoveredMaxStr} << ", " << int{mFingerPointType} << ")";
}

// --- GChChordElemDescr ---

GChChordElemDescr::GChChordElemDescr(const GChChordElem& elem)
    : fingerNumber(static_cast<uint8_t>(elem.fingerNumber())),
      absFretIndex(static_cast<uint8_t>(elem.absFretIndex())),
      coveredMaxStr(static_cast<uint8_t>(elem.coveredMaxStr())),
      coveredMinStr(static_cast<uint8_t>(elem.coveredMinStr())),
      fingerPointType(static_cast<uint8_t>(elem.fingerPointType())) {}

std::optional<GChChordElem> GChChordElemDescr::chordElem() const {
  return GChChordElem::initWithFingerNumber(fingerNumber, absFretIndex, coveredMinStr,
                                            coveredMaxStr, fingerPointType);
}

GChPropertyList GChChordElemDescr::propertyList() const {
  return ElemPropertyList(fingerNumber, absFretIndex, coveredMinStr, coveredMaxStr,
                          fingerPointType);
}

std::string GChChordElemDescr::description() const { return TraceString(); }

void GChChordElemDescr::WriteTrace(std::ostream& out) const {
  out << "GChChordElemDescr: ";
  WriteElem(out, fingerNumber, absFretIndex, coveredMinStr, coveredMaxStr, fingerPointType);
}

void GChChordElemDescr::WriteTraceBrief(std::ostream& out) const {
  out << int{fingerNumber} << '@' << int{absFretIndex} << ':' << int{coveredMinStr} << '-'
      << int{coveredMaxStr};
}

void GChChordElemDescr::WriteInitializerList(std::ostream& out) const {
  out << "GChChordElemDescr(" << int{fingerNumber} << ", " << int{absFretIndex} << ", "
      << int{coveredMinStr} << ", " << int{coveredMaxStr} << ", " << int{fingerPointType} << ")";
}

}  // namespace harmony
