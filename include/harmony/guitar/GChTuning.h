#pragma once
// Tunings: the open-string pitches of an instrument. A short tuning is 16 MIDI pitch bytes,
// one per string from the first (lowest) string on, ended by the first zero byte or by the
// end of the array. A GChTuning owns the libraries of chord grids made for it.

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/guitar/GChPropertyList.h"

namespace harmony {

class GChLibrary;

constexpr int kGChMaxStrings = 16;
using GChShortTuning = std::array<uint8_t, kGChMaxStrings>;

// E A D G B E of a six-string guitar: 52 57 62 67 71 76.
GChShortTuning GChDefaultGuitarShortTuning();
constexpr const char* kGChDefaultGuitarTuningName = "Default Guitar Tuning";

// The pitches of the default guitar tuning for i in 0..5, 0 otherwise.
int GChStandardGuitarOpenStringPitch(int stringIndex);

// The count of strings up to the first zero byte, at most 16.
int GChNumberOfStringsInShortTuning(const GChShortTuning& tuning);
// At least 3 strings, every pitch positive when read as a signed byte (so 128 and above fail).
bool GChIsValidShortTuning(const GChShortTuning& tuning);
// Byte by byte up to the end of both tunings.
bool GChIsEqualShortTuning(const GChShortTuning& a, const GChShortTuning& b);
std::vector<int> GChPitchArrayFromShortTuning(const GChShortTuning& tuning);

class GChTuning : public TraceFamily<GChTuning> {
 public:
  static std::unique_ptr<GChTuning> initWithShortTuning1(const GChShortTuning& shortTuning);
  ~GChTuning();
  GChTuning(const GChTuning&) = delete;
  GChTuning& operator=(const GChTuning&) = delete;

  // Makes a library for this tuning and keeps it in tuningLibraries.
  GChLibrary* createLibraryWithPath(const std::string& libraryPath,
                                    const std::string& libraryName = {});
  // Takes the library out of tuningLibraries (and destroys it); false when it is not ours.
  bool removeLibrary1(GChLibrary* library);

  bool isEqualToTuning(const GChTuning& other) const;  // strings and pitches; not the name
  bool isValid() const { return GChIsValidShortTuning(mShortTuning2); }
  int numberOfStrings() const { return GChNumberOfStringsInShortTuning(mShortTuning2); }
  int openStringPitchForStringIndex(int stringIndex) const;  // -1 out of range

  void setTuningName(const std::string& name) { mTuningName = name; }
  // The name, or "Untitled Tuning <runTimeID>" when it has none.
  std::string tuningName() const;
  // The name as stored, empty when none was given.
  const std::string& storedTuningName() const { return mTuningName; }
  // The names of the open strings with their octaves, separated by blanks: "E2 A2 D3 G3 B3 E4".
  std::string tuningPitchesString() const;

  long numberOfChords() const;
  long numberOfBasicChords() const;

  const std::vector<std::unique_ptr<GChLibrary>>& tuningLibraries() const {
    return mTuningLibraries;
  }
  const GChShortTuning& shortTuning2() const { return mShortTuning2; }
  int capodasterOffset() const { return mCapodasterOffset; }
  void setCapodasterOffset(int offset) { mCapodasterOffset = offset; }
  long runTimeID() const { return mRunTimeID; }

  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  explicit GChTuning(const GChShortTuning& shortTuning);

  std::vector<std::unique_ptr<GChLibrary>> mTuningLibraries;
  GChShortTuning mShortTuning2{};
  std::string mTuningName;
  int mCapodasterOffset = 0;
  long mRunTimeID = 0;
};

// A tuning as a free record, not tied to any library.
class GChTuningDescr : public TraceFamily<GChTuningDescr> {
 public:
  GChTuningDescr() = default;  // init: no strings, capodaster 0
  explicit GChTuningDescr(const GChShortTuning& tuning, int capodasterOffset = 0);

  void clearDataFields();
  bool isValid() const;
  void setToTuningDescr(const GChTuningDescr& other) { *this = other; }
  bool isEqualToTuningStrings(const GChTuningDescr& other) const;  // strings only
  bool isEqualToTuningDescr(const GChTuningDescr& other) const;    // strings and capodaster

  int capodasterOffset() const { return mCapodasterOffset; }
  void setCapodasterOffset(int offset) { mCapodasterOffset = offset; }
  int numberOfStrings() const { return mNumberOfStrings; }
  // The pitch of a string, 0 out of range.
  int openStringPitch(int stringIndex) const;
  // Sets a pitch; a string beyond the current count extends it. False out of 0..15 or 0..255.
  bool setOpenStringPitch(int stringIndex, int pitch);
  GChShortTuning shortTuning() const;

  GChPropertyList propertyList() const;
  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  int mCapodasterOffset = 0;
  int mNumberOfStrings = 0;
  std::array<uint8_t, kGChMaxStrings> mOpenStringPitches{};
};

}  // namespace harmony
