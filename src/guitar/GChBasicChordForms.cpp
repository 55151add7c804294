// The stored forms of a grid: its chunk in a library file, its property list, its trace.

#include <algorithm>
#include <cstring>

#include "guitar/GChBytes.h"
#include "harmony/guitar/GChBasicChord.h"

namespace harmony {

using guitar_detail::WriteBE16;
using guitar_detail::WriteBE32;

namespace {

constexpr size_t kChunkFixedHeader = 12;  // bytes 4..15 ahead of the elements

size_t WrittenElementCount(size_t count) { return std::min(count, static_cast<size_t>(15)); }

// A note outside 0..11 has no nibble: it is written as none.
uint8_t NoteNibble(int note) { return note >= 0 && note < 12 ? static_cast<uint8_t>(note + 1) : 0; }

// Integer members of a dictionary within a range.
bool ReadInt(const GChPropertyList& dict, const char* key, int64_t lo, int64_t hi, int64_t* out) {
  const GChPropertyList* value = dict.find(key);
  if (value == nullptr || !value->isInteger()) return false;
  if (value->integerValue() < lo || value->integerValue() > hi) return false;
  *out = value->integerValue();
  return true;
}

}  // namespace

size_t GChBasicChord::chordChunkSize() const {
  const size_t fixed = kChunkFixedHeader + 2 * WrittenElementCount(mChordElems.size());
  return 4 + fixed + guitar_detail::TextFieldSize(mUserName);
}

size_t GChBasicChord::writeChordChunkToBuffer(uint8_t* buffer, size_t remLength) const {
  const size_t count = WrittenElementCount(mChordElems.size());
  const size_t fixed = kChunkFixedHeader + 2 * count;
  const auto name = guitar_detail::EncodeTextField(mUserName);
  if (!name) return 0;
  const size_t size = 4 + fixed + name->size();
  if (size > remLength) return 0;

  // The lowest fret over all elements, also those beyond the fifteen written; 127 (cut to
  // five bits) without elements.
  int lowest = 127;
  for (const auto& elem : mChordElems) lowest = std::min(lowest, elem.absFretIndex());

  WriteBE32(buffer, static_cast<uint32_t>(size));
  buffer[4] = static_cast<uint8_t>(fixed);  // the one little-endian field
  buffer[5] = static_cast<uint8_t>(fixed >> 8);
  buffer[6] = static_cast<uint8_t>(NoteNibble(mRootNote) | NoteNibble(mBassNote) << 4);
  buffer[7] = static_cast<uint8_t>((lowest & 0x1F) | mDifficultyLevel << 5);
  WriteBE16(buffer + 8, static_cast<uint16_t>(count | mChordType << 4));
  WriteBE16(buffer + 10, mIsMutedMask);
  WriteBE32(buffer + 12, mIsFavoriteMask);
  uint8_t* out = buffer + 16;
  for (size_t i = 0; i < count; ++i) {
    const GChChordElem& elem = mChordElems[i];
    // The point type keeps only its two lowest bits here; fret offsets beyond 7 lose their
    // high bits.
    out[0] = static_cast<uint8_t>(elem.fingerPointType() << 6 | (elem.fingerNumber() & 7) << 3 |
                                  ((elem.absFretIndex() - lowest) & 7));
    out[1] = static_cast<uint8_t>(elem.coveredMaxStr() << 4 | (elem.coveredMinStr() & 0x0F));
    out += 2;
  }
  std::memcpy(out, name->data(), name->size());
  return size;
}

GChPropertyList GChBasicChord::propertyList() const {
  GChPropertyList tuning = GChPropertyList::Array();
  for (int pitch : GChPitchArrayFromShortTuning(mShortTuning)) {
    tuning.append(GChPropertyList::Integer(pitch));
  }
  GChPropertyList elems = GChPropertyList::Array();
  for (const auto& elem : mChordElems) elems.append(elem.propertyList());
  GChPropertyList plist;
  plist.set("shortTuning", std::move(tuning));
  plist.set("chordElems", std::move(elems));
  plist.set("isMutedMask", GChPropertyList::Integer(mIsMutedMask));
  plist.set("isFavoriteMask", GChPropertyList::Integer(mIsFavoriteMask));
  plist.set("difficultyLevel", GChPropertyList::Integer(mDifficultyLevel));
  plist.set("rootNote", GChPropertyList::Integer(mRootNote));
  plist.set("bassNote", GChPropertyList::Integer(mBassNote));
  plist.set("chordType", GChPropertyList::Integer(mChordType));
  plist.set("userName", GChPropertyList::String(mUserName));
  return plist;
}

std::unique_ptr<GChBasicChord> GChBasicChord::fromPropertyList(const GChPropertyList& plist) {
  const GChPropertyList* tuningList = plist.find("shortTuning");
  const GChPropertyList* elemList = plist.find("chordElems");
  if (tuningList == nullptr || !tuningList->isArray() || elemList == nullptr ||
      !elemList->isArray() || tuningList->items().size() > kGChMaxStrings) {
    return nullptr;
  }
  GChShortTuning tuning{};
  for (size_t i = 0; i < tuningList->items().size(); ++i) {
    const GChPropertyList& pitch = tuningList->items()[i];
    if (!pitch.isInteger() || pitch.integerValue() < 1 || pitch.integerValue() > 255)
      return nullptr;
    tuning[i] = static_cast<uint8_t>(pitch.integerValue());
  }
  auto chord = std::make_unique<GChBasicChord>(tuning);
  for (const auto& item : elemList->items()) {
    int64_t finger, fret, minStr, maxStr, type;
    if (!ReadInt(item, "fingerNumber", 0, 255, &finger) ||
        !ReadInt(item, "absFretIndex", 0, 255, &fret) ||
        !ReadInt(item, "coveredMinStr", 0, 255, &minStr) ||
        !ReadInt(item, "coveredMaxStr", 0, 255, &maxStr) ||
        !ReadInt(item, "fingerPointType", 0, 255, &type)) {
      return nullptr;
    }
    auto elem = GChChordElem::initWithFingerNumber(
        static_cast<int>(finger), static_cast<int>(fret), static_cast<int>(minStr),
        static_cast<int>(maxStr), static_cast<int>(type));
    if (!elem) return nullptr;
    chord->mChordElems.push_back(*elem);
  }
  int64_t muted = 0, favorite = 0, difficulty = 0, root = -1, bass = -1, type = 0;
  const auto optional = [&](const char* key, int64_t lo, int64_t hi, int64_t* out) {
    return plist.find(key) == nullptr || ReadInt(plist, key, lo, hi, out);
  };
  if (!optional("isMutedMask", 0, 0xFFFF, &muted) ||
      !optional("isFavoriteMask", 0, 0xFFFFFFFF, &favorite) ||
      !optional("difficultyLevel", 0, 255, &difficulty) ||
      !optional("rootNote", -128, 127, &root) || !optional("bassNote", -128, 127, &bass) ||
      !optional("chordType", 0, 0xFFFF, &type)) {
    return nullptr;
  }
  chord->mIsMutedMask = static_cast<uint16_t>(muted);
  chord->mIsFavoriteMask = static_cast<uint32_t>(favorite);
  chord->mDifficultyLevel = static_cast<uint8_t>(difficulty);
  chord->mRootNote = static_cast<int8_t>(root);
  chord->mBassNote = static_cast<int8_t>(bass);
  chord->mChordType = static_cast<GChChordTypeId>(type);
  if (const GChPropertyList* name = plist.find("userName"); name != nullptr) {
    if (!name->isString()) return nullptr;
    chord->mUserName = name->stringValue();
  }
  return chord;
}

std::string GChBasicChord::description() const { return TraceString(); }

void GChBasicChord::WriteTrace(std::ostream& out) const {
  out << "GChBasicChord: id " << mDbChordID << ", root " << int{mRootNote} << ", bass "
      << int{mBassNote} << ", type " << mChordType << ", difficulty " << int{mDifficultyLevel}
      << ", muted 0x" << std::hex << mIsMutedMask << ", favorites 0x" << mIsFavoriteMask << std::dec
      << ", name \"" << mUserName << "\", elements [";
  for (size_t i = 0; i < mChordElems.size(); ++i) {
    if (i > 0) out << ", ";
    mChordElems[i].WriteTraceBrief(out);
  }
  out << "]";
}

void GChBasicChord::WriteTraceBrief(std::ostream& out) const {
  out << "#" << mDbChordID << " [";
  for (size_t i = 0; i < mChordElems.size(); ++i) {
    if (i > 0) out << ' ';
    mChordElems[i].WriteTraceBrief(out);
  }
  out << "]";
}

void GChBasicChord::WriteInitializerList(std::ostream& out) const {
  out << "GChBasicChord({";
  const auto pitches = GChPitchArrayFromShortTuning(mShortTuning);
  for (size_t i = 0; i < pitches.size(); ++i) out << (i == 0 ? "" : ", ") << pitches[i];
  out << "})";
}

}  // namespace harmony
