#include "harmony/guitar/GChLibrary.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <system_error>

#include "guitar/GChBytes.h"
#include "harmony/guitar/GChTuning.h"
#include "platform/AtomicWrite.h"

namespace harmony {

using guitar_detail::ReadBE16;
using guitar_detail::ReadBE32;

namespace {

long NextLibraryRunTimeID() {
  static std::atomic<long> counter{0};
  return ++counter;
}

// A chord chunk decoded into fixed storage, so that reading allocates nothing per element.
struct ChunkElem {
  int finger, fret, minStr, maxStr, type;
};

}  // namespace

GChLibrary::GChLibrary(GChTuning* tuning, std::string libraryPath, std::string libraryName)
    : mTuning(tuning),
      mRunTimeID(NextLibraryRunTimeID()),
      mLibraryPath(std::move(libraryPath)),
      mLibraryName(std::move(libraryName)) {}

// --- chords ---

void GChLibrary::addChordRangePriv(std::shared_ptr<GChBasicChord> chord) {
  if (!chord) return;
  chord->setLibrary(this);
  mBasicChords.push_back(std::move(chord));
}

bool GChLibrary::deleteChordRangePriv(const GChBasicChord* chord) {
  const auto it = std::find_if(mBasicChords.begin(), mBasicChords.end(),
                               [chord](const auto& owned) { return owned.get() == chord; });
  if (it == mBasicChords.end()) return false;
  (*it)->setLibrary(nullptr);
  mBasicChords.erase(it);
  return true;
}

bool GChLibrary::addBasicChord(std::shared_ptr<GChBasicChord> chord) {
  if (mIsReadOnlyLibrary || !chord) return false;
  addChordRangePriv(std::move(chord));
  return true;
}

bool GChLibrary::deleteChordRange(const GChBasicChord* chord) {
  return !mIsReadOnlyLibrary && deleteChordRangePriv(chord);
}

bool GChLibrary::replaceChordRange2withChord(const GChBasicChord* oldChord,
                                             std::shared_ptr<GChBasicChord> newChord) {
  if (mIsReadOnlyLibrary || !newChord) return false;
  const auto it = std::find_if(mBasicChords.begin(), mBasicChords.end(),
                               [oldChord](const auto& owned) { return owned.get() == oldChord; });
  if (it == mBasicChords.end()) return false;
  (*it)->setLibrary(nullptr);
  newChord->setLibrary(this);
  *it = std::move(newChord);
  return true;
}

// --- writing ---

size_t GChLibrary::tuningChunkSize() const {
  const int strings = mTuning != nullptr ? mTuning->numberOfStrings() : 0;
  const std::string tuningName = mTuning != nullptr ? mTuning->storedTuningName() : "";
  return 4 + 4 + static_cast<size_t>(strings) + guitar_detail::TextFieldSize(tuningName) +
         guitar_detail::TextFieldSize(mLibraryName);
}

size_t GChLibrary::writeTuningChunkToBuffer(uint8_t* buffer, size_t remLength) const {
  if (mTuning == nullptr) return 0;
  const int strings = mTuning->numberOfStrings();
  if (strings < 1) return 0;
  const auto tuningName = guitar_detail::EncodeTextField(mTuning->storedTuningName());
  const auto libraryName = guitar_detail::EncodeTextField(mLibraryName);
  if (!tuningName || !libraryName) return 0;
  const size_t header = 4 + static_cast<size_t>(strings);
  const size_t size = 4 + header + tuningName->size() + libraryName->size();
  if (size > remLength) return 0;
  guitar_detail::WriteBE32(buffer, static_cast<uint32_t>(size));
  buffer[4] = static_cast<uint8_t>(header);
  buffer[5] = static_cast<uint8_t>((strings - 1) & 0x0F);
  buffer[6] = 0;
  buffer[7] = static_cast<uint8_t>(mTuning->capodasterOffset() & 0x0F);
  std::memcpy(buffer + 8, mTuning->shortTuning2().data(), static_cast<size_t>(strings));
  uint8_t* out = buffer + 4 + header;
  std::memcpy(out, tuningName->data(), tuningName->size());
  std::memcpy(out + tuningName->size(), libraryName->data(), libraryName->size());
  return size;
}

std::optional<std::vector<uint8_t>> GChLibrary::wholeLibraryFileContent() const {
  size_t size = kGChLibraryHeaderSize + tuningChunkSize();
  for (const auto& chord : mBasicChords) size += chord->chordChunkSize();
  std::vector<uint8_t> content(size, 0);
  std::memcpy(content.data(), kGChLibraryMagic, 4);
  content[7] = mIsReadOnlyLibrary ? 1 : 0;
  size_t offset = kGChLibraryHeaderSize;
  const size_t tuningBytes = writeTuningChunkToBuffer(content.data() + offset, size - offset);
  if (tuningBytes == 0) return std::nullopt;
  offset += tuningBytes;
  for (const auto& chord : mBasicChords) {
    const size_t written = chord->writeChordChunkToBuffer(content.data() + offset, size - offset);
    if (written == 0) return std::nullopt;
    offset += written;
  }
  if (offset != size) return std::nullopt;
  return content;
}

// --- reading ---

bool GChLibrary::readChordChunksFromBuffer(const uint8_t* buffer, size_t length, long* dbChordCount,
                                           size_t offsetInFile) {
  const GChShortTuning tuning = mTuning != nullptr ? mTuning->shortTuning2() : GChShortTuning{};
  std::array<ChunkElem, 16> elems;
  // Where reading stopped or stepped over something, told by the record and its byte in the
  // file; the first such place is kept.
  int record = 1;
  const auto note = [&](const std::string& what) {
    if (mReadProblem.empty()) {
      mReadProblem = "grid record " + std::to_string(record) + " at byte " +
                     std::to_string(offsetInFile) + " " + what;
    }
    return false;
  };
  for (; length >= 5; ++record) {
    const uint32_t size = ReadBE32(buffer);
    if (size > length) {
      return note("gives its size as " + std::to_string(size) + ", but only " +
                  std::to_string(length) + " bytes are left");
    }
    if (size < 4) return note("gives its size as " + std::to_string(size));
    // F is little-endian; a chunk of five bytes has only its low byte.
    const size_t fixed = buffer[4] | (size > 5 ? buffer[5] << 8 : 0);
    if (size - 4 >= 1 && size - 4 >= fixed) {
      // The fixed part holds twelve bytes of fields and the elements; a chunk too short for
      // them is broken.
      if (size < 16)
        return note("is too short for its fields (" + std::to_string(size) + " bytes)");
      const int count = ReadBE16(buffer + 8) & 0x0F;
      if (fixed < 12u + 2u * count) {
        return note("is too short for its " + std::to_string(count) + " fingers");
      }
      const int lowest = buffer[7] & 0x1F;
      for (int i = 0; i < count; ++i) {
        const uint8_t b0 = buffer[16 + 2 * i], b1 = buffer[17 + 2 * i];
        // The point type is kept as the masked bit, not shifted back.
        elems[i] = {b0 >> 3 & 7, (b0 & 7) + lowest, b1 & 0x0F, b1 >> 4, b0 & 64};
      }
      auto chord = std::make_shared<GChBasicChord>(tuning);
      for (int i = 0; i < count; ++i) {
        chord->addChordElem(elems[i].finger, elems[i].fret, elems[i].minStr, elems[i].maxStr,
                            elems[i].type);
      }
      chord->setIsMutedMask(ReadBE16(buffer + 10));
      chord->setDifficultyLevel(buffer[7] >> 5);
      chord->setRootNote((buffer[6] & 0x0F) - 1);
      chord->setBassNote((buffer[6] >> 4) - 1);
      chord->setChordType(static_cast<GChChordTypeId>(ReadBE16(buffer + 8) >> 4));
      chord->setIsFavoriteMask(ReadBE32(buffer + 12));
      const auto name = guitar_detail::DecodeTextField(buffer + 4 + fixed, size - 4 - fixed);
      if (!name) return note("has a name that cannot be read");
      if (!chord->isEmpty()) {
        chord->setDbChordID(dbChordCount != nullptr ? (*dbChordCount)++ : -1);
        chord->setUserName(name->text);
        addChordRangePriv(std::move(chord));
      }
    } else {
      // Stepped over as the format asks; a rewrite would lose it.
      note("is shorter than its fixed part of " + std::to_string(fixed) + " bytes");
    }
    buffer += size;
    length -= size;
    offsetInFile += size;
  }
  if (length > 0) note("is cut off after " + std::to_string(length) + " bytes");
  return true;
}

namespace {

// FNV-1a: tells whether a library's content differs from what was read or last written.
uint64_t ContentHash(const std::vector<uint8_t>& bytes) {
  uint64_t hash = 14695981039346656037ull;
  for (const uint8_t byte : bytes) hash = (hash ^ byte) * 1099511628211ull;
  return hash;
}

}  // namespace

void GChLibrary::markSaved() {
  const auto content = wholeLibraryFileContent();
  mSavedContentHash = content ? std::optional<uint64_t>(ContentHash(*content)) : std::nullopt;
}

bool GChLibrary::hasUnsavedChanges() const {
  const auto content = wholeLibraryFileContent();
  return !mSavedContentHash || !content || ContentHash(*content) != *mSavedContentHash;
}

bool GChLibrary::updateLibraryFile(const std::filesystem::path& packagePath, std::string* why) {
  namespace fs = std::filesystem;
  const auto fail = [why](const std::string& reason) {
    if (why != nullptr) *why = reason;
    return false;
  };
  if (isReadInPart()) {
    return fail(mLibraryPath + " was read only in part (" + mReadProblem +
                "): it is not written over");
  }
  const auto content = wholeLibraryFileContent();
  if (!content) return fail("library '" + mLibraryName + "' " + unencodableText());
  std::error_code ec;
  std::string reason;
  if (!mLibraryPath.empty() && fs::exists(fs::symlink_status(mLibraryPath, ec))) {
    if (!platform::WriteFileAtomically(mLibraryPath, content->data(), content->size(), &reason))
      return fail(mLibraryPath + ": " + reason);
    markSaved();
    return true;
  }
  for (unsigned long number = 1;; ++number) {
    char name[32];
    std::snprintf(name, sizeof name, "0x%lx", number);
    const fs::path candidate = packagePath / name;
    if (fs::exists(fs::symlink_status(candidate, ec))) continue;
    if (!platform::WriteFileAtomically(candidate, content->data(), content->size(), &reason))
      return fail(candidate.string() + ": " + reason);
    mLibraryPath = candidate.string();
    markSaved();
    return true;
  }
}

// Why the content cannot be written: a name that UTF-16 cannot hold.
std::string GChLibrary::unencodableText() const {
  if (!guitar_detail::EncodeTextField(mLibraryName)) return "has a name that is no valid UTF-8";
  for (size_t i = 0; i < mBasicChords.size(); ++i) {
    if (!guitar_detail::EncodeTextField(mBasicChords[i]->userName())) {
      return "has a grid (number " + std::to_string(i + 1) + ") whose name is no valid UTF-8";
    }
  }
  return "cannot be written";
}

std::string GChLibrary::description() const { return TraceString(); }

void GChLibrary::WriteTrace(std::ostream& out) const {
  out << "GChLibrary: \"" << mLibraryName << "\", runTimeID " << mRunTimeID << ", path \""
      << mLibraryPath << "\", " << (mIsReadOnlyLibrary ? "read-only" : "writable") << ", chords "
      << mBasicChords.size();
}

void GChLibrary::WriteTraceBrief(std::ostream& out) const {
  out << mLibraryName << " (" << mBasicChords.size() << " chords)";
}

void GChLibrary::WriteInitializerList(std::ostream& out) const {
  out << "GChLibrary(\"" << mLibraryPath << "\", \"" << mLibraryName << "\")";
}

}  // namespace harmony
