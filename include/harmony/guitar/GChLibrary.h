#pragma once
// A named collection of chord grids for one tuning, stored as one file of its own chunk
// format inside a database package:
//
//   "gchT", 0 0 0, read-only flag (bit 0), 0 0 0 0, tuning chunk, chord chunks ...
//
// Multi-byte integers are big-endian (apart from one field of the chord chunk); texts are
// UTF-16 with a byte-order mark behind a four-byte length that counts itself.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/guitar/GChBasicChord.h"

namespace harmony {

class GChTuning;

constexpr char kGChLibraryMagic[4] = {'g', 'c', 'h', 'T'};
constexpr size_t kGChLibraryHeaderSize = 12;
constexpr int kGChMaxElementsInChunk = 15;

class GChLibrary : public TraceFamily<GChLibrary> {
 public:
  GChLibrary(GChTuning* tuning, std::string libraryPath, std::string libraryName);
  GChLibrary(const GChLibrary&) = delete;
  GChLibrary& operator=(const GChLibrary&) = delete;

  GChTuning* tuning() const { return mTuning; }
  long runTimeID() const { return mRunTimeID; }
  const std::string& libraryPath() const { return mLibraryPath; }
  void setLibraryPath(const std::string& path) { mLibraryPath = path; }
  const std::string& libraryName() const { return mLibraryName; }
  void setLibraryName(const std::string& name) { mLibraryName = name; }
  bool isReadOnlyLibrary() const { return mIsReadOnlyLibrary; }
  void setIsReadOnlyLibrary(bool readOnly) { mIsReadOnlyLibrary = readOnly; }
  const std::vector<std::shared_ptr<GChBasicChord>>& basicChords() const { return mBasicChords; }

  // --- chords ---
  // The Priv forms change the list whatever the read-only flag says; the others refuse to
  // change a read-only library.
  void addChordRangePriv(std::shared_ptr<GChBasicChord> chord);
  bool deleteChordRangePriv(const GChBasicChord* chord);
  bool addBasicChord(std::shared_ptr<GChBasicChord> chord);
  bool deleteChordRange(const GChBasicChord* chord);
  // Puts `newChord` in the place of `oldChord`.
  bool replaceChordRange2withChord(const GChBasicChord* oldChord,
                                   std::shared_ptr<GChBasicChord> newChord);
  // Each stored grid is listed as one chord, so both counts agree.
  long numberOfChords() const { return numberOfBasicChords(); }
  long numberOfBasicChords() const { return static_cast<long>(mBasicChords.size()); }

  // --- file form ---
  size_t tuningChunkSize() const;
  // The bytes written, or 0 when the chunk does not fit or a name cannot be encoded.
  size_t writeTuningChunkToBuffer(uint8_t* buffer, size_t remLength) const;
  std::optional<std::vector<uint8_t>> wholeLibraryFileContent() const;
  // Reads chord chunks into this library; `dbChordCount` hands out the chord ids. False on a
  // broken chunk, keeping the chords read before it. Whatever is not read (a broken chunk, a
  // chunk too short for its fields, bytes behind the last chunk) marks the library as read in
  // part; `offsetInFile` is where the buffer starts in its file, for the message.
  bool readChordChunksFromBuffer(const uint8_t* buffer, size_t length, long* dbChordCount,
                                 size_t offsetInFile = 0);
  // Writes the file atomically to its known path, or to a new "0x<n>" file in the package.
  // A library read in part is never written: its file holds more than the library. On
  // failure `why` (if given) receives the reason.
  bool updateLibraryFile(const std::filesystem::path& packagePath, std::string* why = nullptr);

  // --- what the file on disk holds ---
  // Empty when the library was read whole (or never read); otherwise what stopped the read,
  // e.g. "grid record 2 at byte 112 gives its size as 90 ...".
  const std::string& readProblem() const { return mReadProblem; }
  bool isReadInPart() const { return !mReadProblem.empty(); }
  void setReadProblem(std::string problem) { mReadProblem = std::move(problem); }
  // Remembers the present content as the one on disk; `hasUnsavedChanges` compares with it.
  void markSaved();
  bool hasUnsavedChanges() const;

  std::string description() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  std::string unencodableText() const;

  GChTuning* mTuning;  // not owned: the tuning owns its libraries
  long mRunTimeID;
  std::string mLibraryPath;
  std::string mLibraryName;
  bool mIsReadOnlyLibrary = false;
  std::vector<std::shared_ptr<GChBasicChord>> mBasicChords;
  std::string mReadProblem;
  std::optional<uint64_t> mSavedContentHash;
};

}  // namespace harmony
