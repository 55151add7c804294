#include <gtest/gtest.h>

#include <cstring>

#include "GuitarTestSupport.h"
#include "harmony/guitar/GChDatabase.h"

namespace harmony {
namespace {

using testing::Bytes;

struct Fixture {
  GChDatabase db;
  GChTuning* tuning = db.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "");
  GChLibrary* library = tuning->createLibraryWithPath("", "");
};

std::vector<uint8_t> FileOf(const GChLibrary& library) {
  auto content = library.wholeLibraryFileContent();
  EXPECT_TRUE(content.has_value());
  return content.value_or(std::vector<uint8_t>());
}

// The chords of the only library read from `file` into a fresh database.
const GChLibrary* ReadBack(GChDatabase& db, const std::vector<uint8_t>& file,
                           bool expectOk = true) {
  EXPECT_EQ(db.readOneRegularFile(file.data(), file.size(), "/pkg/0x1"), expectOk);
  const auto libraries = db.allLibrariesForAnyTuning();
  return libraries.empty() ? nullptr : libraries.back();
}

TEST(GChLibraryFile, HeaderAndTuningChunkLayout) {
  Fixture f;
  f.library->setIsReadOnlyLibrary(true);
  const auto file = FileOf(*f.library);
  // No names: S = 4 + H + 4 + 4 with H = 4 + 6 strings.
  ASSERT_EQ(file.size(), 12u + 22u);
  EXPECT_EQ(std::vector<uint8_t>(file.begin(), file.begin() + 34),
            Bytes({'g', 'c', 'h', 'T', 0,  0, 0, 1, 0,  0,  0,  0,           // header
                   0,   0,   0,   22,  10, 5, 0, 0, 52, 57, 62, 67, 71, 76,  // tuning chunk
                   0,   0,   0,   4,   0,  0, 0, 4}));                       // two absent names

  // Names as UTF-16 with a byte-order mark; the capodaster in the low nibble of byte 7.
  f.tuning->setTuningName("T");
  f.tuning->setCapodasterOffset(3);
  f.library->setLibraryName("Lib");
  f.library->setIsReadOnlyLibrary(false);
  const auto named = FileOf(*f.library);
  ASSERT_EQ(named.size(), 12u + 4 + 10 + 8 + 12);
  EXPECT_EQ(named[7], 0);
  EXPECT_EQ(named[19], 3);
  EXPECT_EQ(
      std::vector<uint8_t>(named.begin() + 26, named.end()),
      Bytes({0, 0, 0, 8, 0xFF, 0xFE, 'T', 0, 0, 0, 0, 12, 0xFF, 0xFE, 'L', 0, 'i', 0, 'b', 0}));

  // A library without chords reads back with 0 chords, whatever its size modulo 4.
  for (const auto& bytes : {file, named}) {
    GChDatabase db;
    const GChLibrary* read = ReadBack(db, bytes);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->numberOfBasicChords(), 0);
  }
  GChDatabase db;
  EXPECT_EQ(ReadBack(db, named)->libraryName(), "Lib");
  EXPECT_EQ(db.allTunings().front()->tuningName(), "T");
}

TEST(GChLibraryFile, ChordChunkLayout) {
  GChBasicChord chord(GChDefaultGuitarShortTuning());
  chord.addChordElem(2, 5, 3);
  chord.addChordElem(1, 4, 0, 5);
  chord.setRootNote(9);
  chord.setChordType(11);
  chord.setDifficultyLevel(2);
  chord.setIsFavoriteMask(0x80000001u);
  chord.setMuted(true, 9);
  ASSERT_EQ(chord.chordChunkSize(), 24u);
  std::vector<uint8_t> buffer(24);
  EXPECT_EQ(chord.writeChordChunkToBuffer(buffer.data(), 23), 0u);  // does not fit
  ASSERT_EQ(chord.writeChordChunkToBuffer(buffer.data(), buffer.size()), 24u);
  EXPECT_EQ(buffer, Bytes({0,    0,    0, 24,    // size
                           16,   0,              // F, little-endian
                           0x0A,                 // root 9 + 1, no bass
                           0x44,                 // lowest fret 4, difficulty 2
                           0x00, 0xB2,           // type 11, 2 elements
                           0x02, 0x00,           // muted string 9
                           0x80, 0,    0, 1,     // favourites
                           0x11, 0x33,           // finger 2, fret 4 + 1, string 3
                           0x08, 0x50,           // finger 1, fret 4 + 0, strings 0..5
                           0,    0,    0, 4}));  // no name

  // No elements: the lowest fret is 127 cut to 31; a note of 12 or more writes none.
  GChBasicChord empty(GChDefaultGuitarShortTuning());
  empty.setRootNote(12);
  empty.setBassNote(3);
  empty.setUserName("Ab");
  std::vector<uint8_t> emptyChunk(empty.chordChunkSize());
  ASSERT_EQ(empty.writeChordChunkToBuffer(emptyChunk.data(), emptyChunk.size()), 26u);
  EXPECT_EQ(emptyChunk, Bytes({0, 0, 0, 26, 12, 0, 0x40, 0x1F, 0,    0,   0, 0,   0,
                               0, 0, 0, 0,  0,  0, 10,   0xFF, 0xFE, 'A', 0, 'b', 0}));

  // A name that is no valid UTF-8 cannot be encoded: the chunk fails, and so does the file.
  Fixture f;
  auto broken = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  broken->addChordElem(1, 0, 0);
  broken->setUserName("\xC3\x28");
  EXPECT_EQ(broken->writeChordChunkToBuffer(buffer.data(), buffer.size()), 0u);
  f.library->addChordRangePriv(broken);
  EXPECT_FALSE(f.library->wholeLibraryFileContent().has_value());
}

// A library with the awkward cases: 16 elements, a grid wider than 8 frets, a chord without
// elements, a chord without root, point types and a name outside ASCII.
void FillAwkwardLibrary(GChLibrary& library) {
  library.setLibraryName("Übungen ♭");
  auto sixteen = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  for (int i = 0; i < 16; ++i) sixteen->addChordElem(i % 6, 3 + i % 8, i % 6);
  sixteen->setRootNote(4);
  library.addChordRangePriv(sixteen);

  auto wide = testing::Grid({{1, 0, 0}, {4, 10, 5}});
  wide->setRootNote(-1);
  wide->setBassNote(7);
  wide->setUserName("weit");
  library.addChordRangePriv(wide);

  auto empty = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  empty->setUserName("dropped");
  library.addChordRangePriv(empty);

  auto types = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  for (int type = 0; type < 4; ++type) types->addChordElem(1, 2, type, type, type);
  types->setChordType(4095);
  types->setDifficultyLevel(7);
  types->setIsFavoriteMask(0xFFFFFFFFu);
  types->setIsMutedMask(0x0030);
  types->setUserName("Dm7 ♯11 – 日本");
  library.addChordRangePriv(types);
}

TEST(GChLibraryFile, WritesAndReadsBackByteForByte) {
  Fixture f;
  f.tuning->setTuningName("Default Guitar Tuning");
  FillAwkwardLibrary(*f.library);
  const auto first = FileOf(*f.library);

  GChDatabase db;
  const GChLibrary* read = ReadBack(db, first);
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->libraryName(), "Übungen ♭");
  EXPECT_EQ(read->libraryPath(), "/pkg/0x1");
  ASSERT_EQ(read->numberOfBasicChords(), 3);  // the chord without elements is gone
  const auto& chords = read->basicChords();
  EXPECT_EQ(chords[0]->dbChordID(), 0);
  EXPECT_EQ(chords[2]->dbChordID(), 2);
  EXPECT_EQ(chords[0]->library(), read);

  // Sixteen elements: fifteen are written.
  EXPECT_EQ(chords[0]->chordElems().size(), 15u);
  EXPECT_EQ(chords[0]->rootNote(), 4);
  EXPECT_EQ(chords[0]->bassNote(), -1);
  for (size_t i = 0; i < 15; ++i) {
    EXPECT_TRUE(chords[0]->chordElems()[i].isEqualToChordElem(
        f.library->basicChords()[0]->chordElems()[i]));
  }
  // Wider than 8 frets: fret 10 comes back as 10 & 7.
  EXPECT_EQ(chords[1]->rootNote(), -1);
  EXPECT_EQ(chords[1]->bassNote(), 7);
  EXPECT_EQ(chords[1]->userName(), "weit");
  EXPECT_EQ(chords[1]->chordElems()[1].absFretIndex(), 2);
  // Point types 1, 2, 3 come back as the flag 64, 0, 64.
  const auto& typed = chords[2]->chordElems();
  ASSERT_EQ(typed.size(), 4u);
  EXPECT_EQ(typed[0].fingerPointType(), 0);
  EXPECT_EQ(typed[1].fingerPointType(), 64);
  EXPECT_EQ(typed[2].fingerPointType(), 0);
  EXPECT_EQ(typed[3].fingerPointType(), 64);
  EXPECT_EQ(chords[2]->chordType(), 4095);
  EXPECT_EQ(chords[2]->difficultyLevel(), 7);
  EXPECT_EQ(chords[2]->isFavoriteMask(), 0xFFFFFFFFu);
  EXPECT_EQ(chords[2]->isMutedMask(), 0x0030);
  EXPECT_EQ(chords[2]->userName(), "Dm7 ♯11 – 日本");

  // The second generation differs from the first only by the dropped chunk (and the lost point
  // type flags); from then on the bytes stay the same.
  const auto second = FileOf(*read);
  GChDatabase db2;
  const auto third = FileOf(*ReadBack(db2, second));
  EXPECT_EQ(second, third);
  GChDatabase db3;
  const auto fourth = FileOf(*ReadBack(db3, third));
  EXPECT_EQ(third, fourth);
  const size_t emptyChunk = 4 + 12 + 4 + 2 + 2 * 7;
  EXPECT_EQ(first.size(), second.size() + emptyChunk);
  // Every chunk before the dropped one is unchanged.
  const size_t head = 12 + f.library->tuningChunkSize() +
                      f.library->basicChords()[0]->chordChunkSize() +
                      f.library->basicChords()[1]->chordChunkSize();
  EXPECT_TRUE(std::equal(first.begin(), first.begin() + head, second.begin()));
  // Re-reading the rewritten point type 64 finds 0: the flag does not survive a second write.
  EXPECT_EQ(db2.allLibrariesForAnyTuning()[0]->basicChords()[2]->chordElems()[1].fingerPointType(),
            0);
}

TEST(GChLibraryFile, RefusesBrokenHeaders) {
  Fixture f;
  f.library->addChordRangePriv(testing::Grid({{1, 0, 0}}));
  const auto good = FileOf(*f.library);
  const auto refuses = [](std::vector<uint8_t> bytes) {
    GChDatabase db;
    const bool ok = db.readOneRegularFile(bytes.data(), bytes.size(), "");
    EXPECT_TRUE(db.allTunings().empty());
    return !ok;
  };
  EXPECT_TRUE(refuses({}));
  EXPECT_TRUE(refuses(std::vector<uint8_t>(good.begin(), good.begin() + 11)));
  EXPECT_TRUE(refuses(std::vector<uint8_t>(good.begin(), good.begin() + 15)));  // no chunk size
  auto magic = good;
  magic[3] = 't';
  EXPECT_TRUE(refuses(magic));
  auto tooBig = good;
  tooBig[15] = 0xFF;  // S beyond the file
  EXPECT_TRUE(refuses(tooBig));
  GChDatabase nullDb;
  EXPECT_FALSE(nullDb.readOneRegularFile(nullptr, 40, ""));

  // A header length of 0, or one beyond the chunk, reads nothing and is no error.
  for (int headerLength : {0, 19}) {
    auto bytes = good;
    bytes[16] = static_cast<uint8_t>(headerLength);
    GChDatabase db;
    EXPECT_TRUE(db.readOneRegularFile(bytes.data(), bytes.size(), ""));
    EXPECT_TRUE(db.allTunings().empty());
  }
  // A tuning name whose length field points beyond the chunk fails after nothing was made.
  auto badName = good;
  badName[29] = 40;
  EXPECT_TRUE(refuses(badName));
  // An odd UTF-16 byte count cannot be decoded.
  GChDatabase oddDb;
  f.library->setLibraryName("ab");
  auto odd = FileOf(*f.library);
  odd[33] = 9;  // library name field 10 -> 9 bytes
  EXPECT_FALSE(oddDb.readOneRegularFile(odd.data(), odd.size(), ""));
  EXPECT_TRUE(oddDb.allTunings().size() == 1);  // the tuning was made before the failure
}

TEST(GChLibraryFile, BrokenChordChunksKeepWhatWasRead) {
  Fixture f;
  f.library->setIsReadOnlyLibrary(true);
  for (int i = 0; i < 3; ++i) {
    auto chord = testing::Grid({{1, i, 2}});
    chord->setUserName("c" + std::to_string(i));
    f.library->addChordRangePriv(chord);
  }
  const auto good = FileOf(*f.library);
  const size_t chordsStart = 12 + f.library->tuningChunkSize();
  const size_t chunk = f.library->basicChords()[0]->chordChunkSize();

  // The third chunk claims more bytes than are left.
  auto bytes = good;
  bytes[chordsStart + 2 * chunk + 3] = 0xFF;
  GChDatabase db;
  const GChLibrary* read = ReadBack(db, bytes, false);
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->numberOfBasicChords(), 2);
  EXPECT_TRUE(read->isReadOnlyLibrary());

  // A name field shorter than its own length field.
  bytes = good;
  bytes[chordsStart + chunk + 4 + 14 + 3] = 3;
  GChDatabase db2;
  EXPECT_EQ(ReadBack(db2, bytes, false)->numberOfBasicChords(), 1);

  // A chunk size below 4 would never advance.
  bytes = good;
  bytes[chordsStart + 3] = 0;
  GChDatabase db3;
  EXPECT_EQ(ReadBack(db3, bytes, false)->numberOfBasicChords(), 0);

  // A chunk whose fixed part is longer than the chunk is skipped.
  bytes = good;
  bytes[chordsStart + 4] = 200;
  GChDatabase db4;
  EXPECT_EQ(ReadBack(db4, bytes)->numberOfBasicChords(), 2);

  // Chunks too short for their fields, at the very end of the file: 5 to 15 bytes.
  for (uint8_t size = 5; size < 16; ++size) {
    bytes = good;
    bytes.insert(bytes.end(), {0, 0, 0, size, 0});
    bytes.resize(good.size() + size, 0);
    GChDatabase shortDb;
    EXPECT_EQ(ReadBack(shortDb, bytes, false)->numberOfBasicChords(), 3) << int{size};
  }

  // Every truncation is refused or read in part, never more than was there.
  for (size_t length = 0; length < good.size(); ++length) {
    GChDatabase cut;
    cut.readOneRegularFile(good.data(), length, "");
    const auto libraries = cut.allLibrariesForAnyTuning();
    if (length < chordsStart) {
      EXPECT_TRUE(libraries.empty()) << length;
    } else {
      ASSERT_EQ(libraries.size(), 1u) << length;
      EXPECT_EQ(libraries[0]->numberOfBasicChords(),
                static_cast<long>((length - chordsStart) / chunk))
          << length;
    }
  }
}

TEST(GChLibraryFile, LocalizedNamesAndSharedTunings) {
  Fixture f;
  f.tuning->setTuningName("Default Guitar Tuning");
  f.library->setLibraryName("6-String Guitar Normal Tuning");
  const auto file = FileOf(*f.library);
  GChDatabase db;
  db.setLocalizedDefaultTuningName("Gitarre");
  ASSERT_TRUE(db.readOneRegularFile(file.data(), file.size(), "a"));
  ASSERT_TRUE(db.readOneRegularFile(file.data(), file.size(), "b"));
  // Both libraries share the one tuning, under the localized name.
  ASSERT_EQ(db.allTunings().size(), 1u);
  EXPECT_EQ(db.allTunings()[0]->tuningName(), "Gitarre");
  ASSERT_EQ(db.allLibrariesForAnyTuning().size(), 2u);
  EXPECT_EQ(db.allLibrariesForAnyTuning()[0]->libraryName(), "6-String Guitar Standard Tuning");
}

}  // namespace
}  // namespace harmony
