#include "harmony/guitar/GChTuning.h"

#include <algorithm>
#include <atomic>
#include <sstream>

#include "harmony/guitar/GChChordFunctions.h"
#include "harmony/guitar/GChLibrary.h"
#include "platform/Localize.h"

namespace harmony {

namespace {
constexpr GChShortTuning kDefaultGuitar{52, 57, 62, 67, 71, 76};

long NextTuningRunTimeID() {
  static std::atomic<long> counter{0};
  return ++counter;
}

void WritePitches(std::ostream& out, const GChShortTuning& tuning) {
  const int count = GChNumberOfStringsInShortTuning(tuning);
  for (int i = 0; i < count; ++i) out << (i == 0 ? "" : ", ") << int{tuning[i]};
}
}  // namespace

GChShortTuning GChDefaultGuitarShortTuning() { return kDefaultGuitar; }

int GChStandardGuitarOpenStringPitch(int stringIndex) {
  return stringIndex >= 0 && stringIndex < 6 ? kDefaultGuitar[stringIndex] : 0;
}

int GChNumberOfStringsInShortTuning(const GChShortTuning& tuning) {
  const auto end = std::find(tuning.begin(), tuning.end(), uint8_t{0});
  return static_cast<int>(end - tuning.begin());
}

bool GChIsValidShortTuning(const GChShortTuning& tuning) {
  const int count = GChNumberOfStringsInShortTuning(tuning);
  if (count < 3) return false;
  for (int i = 0; i < count; ++i) {
    if (static_cast<int8_t>(tuning[i]) <= 0) return false;
  }
  return true;
}

bool GChIsEqualShortTuning(const GChShortTuning& a, const GChShortTuning& b) {
  for (int i = 0; i < kGChMaxStrings; ++i) {
    if (a[i] != b[i]) return false;
    if (a[i] == 0) return true;
  }
  return true;
}

std::vector<int> GChPitchArrayFromShortTuning(const GChShortTuning& tuning) {
  const int count = GChNumberOfStringsInShortTuning(tuning);
  return std::vector<int>(tuning.begin(), tuning.begin() + count);
}

// --- GChTuning ---

GChTuning::GChTuning(const GChShortTuning& shortTuning)
    : mShortTuning2(shortTuning), mRunTimeID(NextTuningRunTimeID()) {}

GChTuning::~GChTuning() = default;

std::unique_ptr<GChTuning> GChTuning::initWithShortTuning1(const GChShortTuning& shortTuning) {
  return std::unique_ptr<GChTuning>(new GChTuning(shortTuning));
}

GChLibrary* GChTuning::createLibraryWithPath(const std::string& libraryPath,
                                             const std::string& libraryName) {
  mTuningLibraries.push_back(std::make_unique<GChLibrary>(this, libraryPath, libraryName));
  return mTuningLibraries.back().get();
}

bool GChTuning::removeLibrary1(GChLibrary* library) {
  const auto it = std::find_if(mTuningLibraries.begin(), mTuningLibraries.end(),
                               [library](const auto& owned) { return owned.get() == library; });
  if (it == mTuningLibraries.end()) return false;
  mTuningLibraries.erase(it);
  return true;
}

bool GChTuning::isEqualToTuning(const GChTuning& other) const {
  return GChIsEqualShortTuning(mShortTuning2, other.mShortTuning2);
}

int GChTuning::openStringPitchForStringIndex(int stringIndex) const {
  if (stringIndex < 0 || stringIndex >= numberOfStrings()) return -1;
  return mShortTuning2[stringIndex];
}

std::string GChTuning::tuningName() const {
  if (!mTuningName.empty()) return mTuningName;
  std::string name = platform::Localized("Untitled Tuning %d");
  if (const auto pos = name.find("%d"); pos != std::string::npos) {
    name.replace(pos, 2, std::to_string(mRunTimeID));
  }
  return name;
}

std::string GChTuning::tuningPitchesString() const {
  std::string text;
  const int count = numberOfStrings();
  for (int i = 0; i < count; ++i) {
    if (i > 0) text += ' ';
    text += GChMidiPitchDefaultName(mShortTuning2[i]);
  }
  return text;
}

long GChTuning::numberOfChords() const {
  long count = 0;
  for (const auto& library : mTuningLibraries) count += library->numberOfChords();
  return count;
}

long GChTuning::numberOfBasicChords() const {
  long count = 0;
  for (const auto& library : mTuningLibraries) count += library->numberOfBasicChords();
  return count;
}

std::string GChTuning::description() const { return TraceString(); }

void GChTuning::WriteTrace(std::ostream& out) const {
  out << "GChTuning: \"" << tuningName() << "\" " << tuningPitchesString() << ", capodaster "
      << mCapodasterOffset << ", runTimeID " << mRunTimeID << ", libraries "
      << mTuningLibraries.size() << ", chords " << numberOfBasicChords();
}

void GChTuning::WriteTraceBrief(std::ostream& out) const {
  out << tuningName() << " (" << tuningPitchesString() << ")";
}

void GChTuning::WriteInitializerList(std::ostream& out) const {
  out << "GChTuning({";
  WritePitches(out, mShortTuning2);
  out << "})";
}

// --- GChTuningDescr ---

GChTuningDescr::GChTuningDescr(const GChShortTuning& tuning, int capodasterOffset)
    : mCapodasterOffset(capodasterOffset),
      mNumberOfStrings(GChNumberOfStringsInShortTuning(tuning)),
      mOpenStringPitches(tuning) {}

void GChTuningDescr::clearDataFields() { *this = GChTuningDescr(); }

bool GChTuningDescr::isValid() const { return GChIsValidShortTuning(shortTuning()); }

bool GChTuningDescr::isEqualToTuningStrings(const GChTuningDescr& other) const {
  return GChIsEqualShortTuning(shortTuning(), other.shortTuning());
}

bool GChTuningDescr::isEqualToTuningDescr(const GChTuningDescr& other) const {
  return isEqualToTuningStrings(other) && mCapodasterOffset == other.mCapodasterOffset;
}

int GChTuningDescr::openStringPitch(int stringIndex) const {
  if (stringIndex < 0 || stringIndex >= mNumberOfStrings) return 0;
  return mOpenStringPitches[stringIndex];
}

bool GChTuningDescr::setOpenStringPitch(int stringIndex, int pitch) {
  if (stringIndex < 0 || stringIndex >= kGChMaxStrings || pitch < 0 || pitch > 255) return false;
  mOpenStringPitches[stringIndex] = static_cast<uint8_t>(pitch);
  mNumberOfStrings = std::max(mNumberOfStrings, stringIndex + 1);
  return true;
}

GChShortTuning GChTuningDescr::shortTuning() const {
  GChShortTuning tuning{};
  std::copy(mOpenStringPitches.begin(), mOpenStringPitches.begin() + mNumberOfStrings,
            tuning.begin());
  return tuning;
}

GChPropertyList GChTuningDescr::propertyList() const {
  GChPropertyList pitches = GChPropertyList::Array();
  for (int i = 0; i < mNumberOfStrings; ++i) {
    pitches.append(GChPropertyList::Integer(mOpenStringPitches[i]));
  }
  GChPropertyList plist;
  plist.set("openStringPitches", std::move(pitches));
  plist.set("capodasterOffset", GChPropertyList::Integer(static_cast<int8_t>(mCapodasterOffset)));
  return plist;
}

std::string GChTuningDescr::description() const { return TraceString(); }

void GChTuningDescr::WriteTrace(std::ostream& out) const {
  out << "GChTuningDescr: strings " << mNumberOfStrings << " (";
  WritePitches(out, shortTuning());
  out << "), capodaster " << mCapodasterOffset;
}

void GChTuningDescr::WriteTraceBrief(std::ostream& out) const { WritePitches(out, shortTuning()); }

void GChTuningDescr::WriteInitializerList(std::ostream& out) const {
  out << "GChTuningDescr({";
  WritePitches(out, shortTuning());
  out << "}, " << mCapodasterOffset << ")";
}

}  // namespace harmony
