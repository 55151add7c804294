#include "harmony/guitar/GChChord.h"

#include "harmony/guitar/GChHarmony.h"

#include <algorithm>

#include "harmony/guitar/GChChordFunctions.h"

namespace harmony {

namespace {
int FoldedNote(int stored, int capodasterOffset, int transposeIndex) {
  if (stored < 0) return -1;
  return (stored + std::max(capodasterOffset, 0) + transposeIndex) % 12;
}
}  // namespace

GChChord::GChChord(std::shared_ptr<GChBasicChord> basicChord, int transposeIndex)
    : mBasicChord(std::move(basicChord)), mTransposeIndex(std::max(transposeIndex, 0)) {}

int GChChord::rootNote(int capodasterOffset) const {
  return FoldedNote(mBasicChord->rootNote(), capodasterOffset, mTransposeIndex);
}

int GChChord::bassNote(int capodasterOffset) const {
  return FoldedNote(mBasicChord->bassNote(), capodasterOffset, mTransposeIndex);
}

// A name the user gave stands as it is; otherwise the grid is named from its notes on its
// stored root.
std::string GChChord::chordName(int capodasterOffset) const {
  if (!mBasicChord->userName().empty()) return mBasicChord->userName();
  return GChHarmonyStringFromChord(*this, rootNote(capodasterOffset), mRootEnhType,
                                   capodasterOffset)
      .value_or("");
}

std::string GChChord::chordNameWithIndex(int capodasterOffset) const {
  return chordName(capodasterOffset) + " [" + std::to_string(mBasicChord->dbChordID()) + "]";
}

int GChChord::pitchForStringIndex(int stringIndex, int capodasterOffset) const {
  if (stringIndex < 0 || stringIndex >= numberOfStrings()) return -1;
  const int open = mBasicChord->shortTuning()[stringIndex];
  const int fret = mBasicChord->maxAbsFretIndexPlusOneForStringIndex(stringIndex);
  if (fret < 0) return -1;
  return open + capodasterOffset + fret;
}

std::string GChChord::stringFromPitches(int capodasterOffset) const {
  std::string text;
  for (int s = 0; s < numberOfStrings(); ++s) {
    const int pitch = pitchForStringIndex(s, capodasterOffset);
    if (pitch >= 0) text += GChMidiPitchDefaultName(pitch) + " ";
  }
  return text;
}

bool GChChord::isSimilarToChord(const GChChord& other) const {
  if (!GChIsEqualShortTuning(mBasicChord->shortTuning(), other.mBasicChord->shortTuning())) {
    return false;
  }
  for (int s = 0; s < numberOfStrings(); ++s) {
    if (pitchForStringIndex(s, 0) != other.pitchForStringIndex(s, 0)) return false;
  }
  return true;
}

GChPropertyList GChChord::propertyList() const {
  GChPropertyList plist;
  plist.set("basicChord", mBasicChord->propertyList());
  plist.set("rootEnhType", GChPropertyList::Integer(mRootEnhType));
  plist.set("bassEnhType", GChPropertyList::Integer(mBassEnhType));
  return plist;
}

std::string GChChord::description() const { return TraceString(); }

void GChChord::WriteTrace(std::ostream& out) const {
  out << "GChChord: transpose " << mTransposeIndex << ", root enh " << int{mRootEnhType}
      << ", bass enh " << int{mBassEnhType} << ", ";
  mBasicChord->WriteTrace(out);
}

void GChChord::WriteTraceBrief(std::ostream& out) const {
  mBasicChord->WriteTraceBrief(out);
  out << " +" << mTransposeIndex;
}

void GChChord::WriteInitializerList(std::ostream& out) const {
  out << "GChChord(";
  mBasicChord->WriteInitializerList(out);
  out << ", " << mTransposeIndex << ")";
}

// --- GChChordDescr ---

GChChordDescr::GChChordDescr(const GChBasicChord& chord)
    : difficultyLevel(chord.difficultyLevel()),
      rootNote(chord.rootNote()),
      bassNote(chord.bassNote()),
      chordType(chord.chordType()),
      isMutedMask(chord.isMutedMask()),
      isFavoriteMask(chord.isFavoriteMask()),
      userName(chord.userName()) {
  for (const auto& elem : chord.chordElems()) elements.emplace_back(elem);
}

std::string GChChordDescr::description() const { return TraceString(); }

void GChChordDescr::WriteTrace(std::ostream& out) const {
  out << "GChChordDescr: root " << rootNote << ", bass " << bassNote << ", type " << chordType
      << ", difficulty " << difficultyLevel << ", transposeRange " << transposeRange << ", muted 0x"
      << std::hex << isMutedMask << ", favorites 0x" << isFavoriteMask << std::dec << ", name \""
      << userName << "\", elements [";
  for (size_t i = 0; i < elements.size(); ++i) {
    if (i > 0) out << ", ";
    elements[i].WriteTraceBrief(out);
  }
  out << "]";
}

void GChChordDescr::WriteTraceBrief(std::ostream& out) const {
  out << elements.size() << " elements, root " << rootNote << ", type " << chordType;
}

void GChChordDescr::WriteInitializerList(std::ostream& out) const {
  out << "GChChordDescr(" << elements.size() << " elements)";
}

}  // namespace harmony
