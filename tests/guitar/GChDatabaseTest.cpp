#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "GuitarTestSupport.h"
#include "TestPaths.h"
#include "harmony/DataFolder.h"
#include "harmony/guitar/GChDatabase.h"
#include "harmony/guitar/GChSimpleDatabase.h"
#include "platform/FileWrapper.h"
#include "platform/PropertyList.h"

namespace harmony {
namespace {

namespace fs = std::filesystem;
using testing::Grid;
using testing::TempFolder;

GChShortTuning DropD() {
  GChShortTuning tuning = GChDefaultGuitarShortTuning();
  tuning[0] = 50;
  return tuning;
}

TEST(GChFilterParameter, SettersFoldTheirArguments) {
  GChFilterParameter filter;
  EXPECT_TRUE(filter.hasNoRestrictions());
  const std::vector<std::pair<int64_t, int64_t>> notes{{-5, -2}, {-2, -2}, {-1, -1}, {0, 0},
                                                       {11, 11}, {12, 0},  {99, 0}};
  for (auto [in, out] : notes) {
    filter.setRootNoteToFilter(in);
    filter.setBassNoteToFilter(in);
    EXPECT_EQ(filter.rootNoteToFilter, out) << in;
    EXPECT_EQ(filter.bassNoteToFilter, out) << in;
  }
  const std::vector<std::pair<int64_t, int64_t>> choices{{-7, -1}, {-1, 0}, {0, 0}, {9, 9}};
  for (auto [in, out] : choices) {
    filter.setChordTypeToFilter(in);
    filter.setDifficultyToFilter(in);
    EXPECT_EQ(filter.chordTypeToFilter, out) << in;
    EXPECT_EQ(filter.difficultyToFilter, out) << in;
  }
  const std::vector<std::pair<int64_t, int64_t>> flags{{-3, -1}, {-1, 0}, {0, 0}, {1, 1}, {5, 1}};
  for (auto [in, out] : flags) {
    filter.setIsFavoriteToFilter(in);
    EXPECT_EQ(filter.isFavoriteToFilter, out) << in;
  }
  filter.setNoRestrictions();
  EXPECT_TRUE(filter.hasNoRestrictions());
  EXPECT_EQ(filter.rootEnhType, 0);
}

struct ListFixture {
  GChDatabase db;
  GChTuning* tuning = db.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "Guitar");
  GChLibrary* first = tuning->createLibraryWithPath("", "first");
  GChLibrary* second = tuning->createLibraryWithPath("", "second");

  ListFixture() {
    // root, bass, type, difficulty, favourite at transpose index 0
    add(first, 9, -1, 9, 1, false);
    add(first, 9, 4, 9, 2, true);
    add(first, -1, -1, 0, 0, false);
    add(second, 4, -1, 1, 1, true);
    add(second, 0, 7, 3, 3, false);
    db.setActiveTuning(tuning);
  }
  void add(GChLibrary* library, int root, int bass, int type, int difficulty, bool favorite) {
    auto chord = Grid({{1, 0, 1}});
    chord->setRootNote(root);
    chord->setBassNote(bass);
    chord->setChordType(static_cast<GChChordTypeId>(type));
    chord->setDifficultyLevel(difficulty);
    chord->setIsFavorite(favorite, 0);
    chord->setDbChordID(db.takeNextDbChordID());
    library->addChordRangePriv(chord);
  }
  std::vector<long> ids(const GChLibrary* library, const GChFilterParameter* filter) const {
    std::vector<long> result;
    for (const auto& chord : db.allChordsFilteringLibrary(library, true, filter)) {
      EXPECT_EQ(chord.transposeIndex(), 0);
      result.push_back(chord.dbChordID());
    }
    return result;
  }
};

TEST(GChDatabase, ListsAndFiltersChords) {
  ListFixture f;
  GChFilterParameter filter;
  EXPECT_EQ(f.ids(nullptr, nullptr), (std::vector<long>{0, 1, 2, 3, 4}));
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{0, 1, 2, 3, 4}));
  EXPECT_EQ(f.ids(f.second, nullptr), (std::vector<long>{3, 4}));
  EXPECT_EQ(f.db.numberOfActiveBasicChords(), 5);

  filter.setRootNoteToFilter(9);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{0, 1}));
  filter.setBassNoteToFilter(4);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{1}));
  filter.setNoRestrictions();
  filter.setRootNoteToFilter(-1);  // only chords without root
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{2}));
  filter.setNoRestrictions();
  filter.setRootNoteToFilter(12);  // stored as 0: C
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{4}));
  // With a capodaster of 3 the stored A sounds C.
  f.tuning->setCapodasterOffset(3);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{0, 1}));
  f.tuning->setCapodasterOffset(0);

  filter.setNoRestrictions();
  filter.setChordTypeToFilter(9);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{0, 1}));
  filter.setChordTypeToFilter(-1);  // folds to type 0, not to "any"
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{2}));
  filter.setNoRestrictions();
  filter.setDifficultyToFilter(1);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{0, 3}));
  filter.setNoRestrictions();
  filter.setIsFavoriteToFilter(1);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{1, 3}));
  filter.setIsFavoriteToFilter(0);
  EXPECT_EQ(f.ids(nullptr, &filter), (std::vector<long>{0, 2, 4}));
  filter.setIsFavoriteToFilter(1);
  filter.setDifficultyToFilter(2);
  EXPECT_EQ(f.ids(f.second, &filter), (std::vector<long>{}));
  EXPECT_EQ(f.ids(f.first, &filter), (std::vector<long>{1}));

  // A library of another tuning, or no active libraries, gives nothing.
  GChTuning* other = f.db.tuningWithShortTuning(DropD(), "Drop D");
  GChLibrary* foreign = other->createLibraryWithPath("", "foreign");
  foreign->addChordRangePriv(Grid({{1, 0, 0}}));
  EXPECT_TRUE(f.ids(foreign, nullptr).empty());
  f.db.setActiveTuning(other);
  EXPECT_EQ(f.db.allChordsFilteringLibrary(nullptr, false).size(), 1u);
  other->removeLibrary1(foreign);
  EXPECT_TRUE(f.db.allChordsFilteringLibrary(nullptr, false).empty());
}

TEST(GChDatabase, TuningsAreFoundOrMade) {
  GChDatabase db;
  GChTuning* unnamed = db.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "");
  GChTuning* again = db.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "Named later");
  EXPECT_EQ(unnamed, again);
  EXPECT_EQ(unnamed->tuningName(), "Named later");
  EXPECT_EQ(db.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "Other"), unnamed);
  EXPECT_EQ(unnamed->tuningName(), "Named later");  // a name once given stays
  EXPECT_EQ(db.tuningWithDefaultGuitarTuning(), unnamed);
  GChTuning* dropD = db.tuningWithShortTuning(DropD(), "Drop D");
  EXPECT_NE(dropD, unnamed);
  EXPECT_EQ(db.tuningWithRuntimeID(dropD->runTimeID()), dropD);
  EXPECT_EQ(db.tuningWithRuntimeID(-5), nullptr);

  GChDatabase localized;
  localized.setLocalizedDefaultTuningName("Gitarre");
  EXPECT_EQ(localized.tuningWithDefaultGuitarTuning()->tuningName(), "Gitarre");
}

TEST(GChDatabase, RemoveTuningKeepsItsOddOrder) {
  GChDatabase db;
  GChTuning* a = db.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "A");
  GChTuning* b = db.tuningWithShortTuning(DropD(), "B");
  GChShortTuning open = DropD();
  open[5] = 74;
  GChTuning* c = db.tuningWithShortTuning(open, "C");
  a->createLibraryWithPath("/pkg/0x1", "a1");
  a->createLibraryWithPath("", "unsaved");
  a->createLibraryWithPath("/pkg/0x2", "a2");

  EXPECT_FALSE(db.removeTuning(nullptr));

  // The active tuning at index 0: the first entry is chosen while it still stands there.
  db.setActiveTuning(a);
  EXPECT_TRUE(db.removeTuning(a));
  EXPECT_EQ(db.activeTuning(), a);
  EXPECT_EQ(db.activeTuning()->tuningName(), "A");  // still alive
  EXPECT_EQ(db.allTunings(), (std::vector<GChTuning*>{b, c}));
  EXPECT_EQ(db.pathsToDelete(), (std::vector<std::string>{"/pkg/0x1", "/pkg/0x2"}));

  // An active tuning further down hands over to the first one.
  db.setActiveTuning(c);
  EXPECT_TRUE(db.removeTuning(c));
  EXPECT_EQ(db.activeTuning(), b);
  // Removing another tuning than the active one leaves the active one.
  GChTuning* d = db.tuningWithShortTuning(open, "D");
  EXPECT_TRUE(db.removeTuning(d));
  EXPECT_EQ(db.activeTuning(), b);

  // The last tuning: it stays active; removing it again with an empty list clears it.
  EXPECT_TRUE(db.removeTuning(b));
  EXPECT_TRUE(db.allTunings().empty());
  EXPECT_EQ(db.activeTuning(), b);
  EXPECT_TRUE(db.removeTuning(b));
  EXPECT_EQ(db.activeTuning(), nullptr);
}

TEST(GChDatabase, ChordEditingAndReadOnlyLibraries) {
  ListFixture f;
  auto chords = f.db.allChordsFilteringLibrary(nullptr, true);
  f.second->setIsReadOnlyLibrary(true);
  EXPECT_FALSE(f.db.deleteChord1Range(chords[3]));
  EXPECT_FALSE(f.second->addBasicChord(Grid({{1, 0, 0}})));
  EXPECT_TRUE(f.db.deleteChord1Range(chords[0]));
  EXPECT_EQ(chords[0].basicChord()->library(), nullptr);
  EXPECT_EQ(f.db.numberOfActiveBasicChords(), 4);
  EXPECT_EQ(f.db.allUserLibrariesForAnyTuning(), (std::vector<GChLibrary*>{f.first}));

  auto replacement = Grid({{3, 4, 2}});
  EXPECT_TRUE(f.db.replaceChord1Range1(chords[1], replacement));
  EXPECT_EQ(f.first->basicChords()[0], replacement);
  EXPECT_EQ(replacement->dbChordID(), 1);  // takes over the id
  EXPECT_EQ(f.db.chordWithDbChordID(1), replacement.get());
  EXPECT_EQ(f.db.chordWithDbChordID(0), nullptr);

  EXPECT_TRUE(f.db.editedChordIsEmpty());
  auto original = Grid({{1, 2, 3}});
  auto edited = std::make_shared<GChBasicChord>(*original);
  f.db.setOriginalChord(original);
  f.db.setEditedChord(edited);
  f.db.setUndoChord(std::make_shared<GChBasicChord>(*edited));
  EXPECT_FALSE(f.db.editedChordIsEmpty());
  EXPECT_FALSE(f.db.editedChordHasChanges());
  EXPECT_FALSE(f.db.basicChordWasChanged());
  edited->setUserName("mine");
  EXPECT_TRUE(f.db.editedChordHasChanges());
  EXPECT_TRUE(f.db.basicChordWasChanged());
  f.db.setUndoChord(std::make_shared<GChBasicChord>(*edited));
  EXPECT_FALSE(f.db.basicChordWasChanged());
  edited->removeChordElems();
  EXPECT_TRUE(f.db.editedChordIsEmpty());
}

TEST(GChDatabasePackage, WritesAndReadsPackages) {
  TempFolder temp;
  ListFixture f;
  GChTuning* dropD = f.db.tuningWithShortTuning(DropD(), "Drop D");
  dropD->createLibraryWithPath("", "drop")->addChordRangePriv(Grid({{2, 3, 4}}));
  const fs::path package = temp.path() / "Out.gchdb";
  ASSERT_TRUE(f.db.writeLibraries(f.db.allLibrariesForAnyTuning(), package));

  const auto members = platform::DirectoryMembers(package);
  ASSERT_TRUE(members.has_value());
  std::vector<std::string> names;
  for (const auto& m : *members) names.push_back(m.filename().string());
  EXPECT_EQ(names, (std::vector<std::string>{"0x1", "0x2", "0x3", "GChInfo"}));
  const auto info = platform::ReadFileBytes(package / "GChInfo");
  const auto plist =
      platform::PropertyListFromBytes(reinterpret_cast<const char*>(info->data()), info->size());
  ASSERT_TRUE(plist.has_value());
  EXPECT_EQ(plist->find("GChInfoVersion")->integerValue(), 100);

  GChDatabase db;
  ASSERT_TRUE(db.readFromDbPackageAtPath(package));
  ASSERT_EQ(db.allTunings().size(), 2u);
  const auto libraries = db.allLibrariesForAnyTuning();
  ASSERT_EQ(libraries.size(), 3u);
  EXPECT_EQ(libraries[0]->libraryName(), "first");
  EXPECT_EQ(libraries[0]->libraryPath(), (package / "0x1").string());
  EXPECT_EQ(libraries[2]->tuning()->tuningName(), "Drop D");
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(libraries[i]->wholeLibraryFileContent(),
              f.db.allLibrariesForAnyTuning()[i]->wholeLibraryFileContent());
  }
  // Writing over an existing package replaces it as a whole.
  ASSERT_TRUE(f.db.writeLibraries({f.first}, package));
  EXPECT_EQ(platform::DirectoryMembers(package)->size(), 2u);

  // Nothing at the path: the database stays as it was.
  const size_t before = db.allLibrariesForAnyTuning().size();
  EXPECT_FALSE(db.readFromDbPackageAtPath(temp.path() / "missing"));
  EXPECT_FALSE(db.readLibraryFromFileWrapper(temp.path() / "missing"));
  EXPECT_EQ(db.allLibrariesForAnyTuning().size(), before);
  // A single library file is read with no path.
  EXPECT_TRUE(db.readLibraryFromFileWrapper(package / "0x1"));
  const auto all = db.allLibrariesForAnyTuning();
  EXPECT_EQ(all.size(), before + 1);
  EXPECT_EQ(std::count_if(all.begin(), all.end(),
                          [](const GChLibrary* l) { return l->libraryPath().empty(); }),
            1);
  // A package member that is no library is passed over.
  std::ofstream(package / "notes.txt") << "not a library";
  GChDatabase third;
  EXPECT_TRUE(third.readFromDbPackageAtPath(package));
  EXPECT_EQ(third.allLibrariesForAnyTuning().size(), 1u);
}

TEST(GChDatabasePackage, UserPackageLifecycle) {
  TempFolder temp;
  const fs::path user = temp.path() / "Quillon" / "Chord Grids" / "GuitarChords.gchdb";
  const fs::path factory = temp.path() / "factory.gchdb";
  {
    ListFixture f;
    f.first->setIsReadOnlyLibrary(true);
    f.second->setIsReadOnlyLibrary(true);
    ASSERT_TRUE(f.db.writeLibraries({f.first, f.second}, factory));
  }
  // No user package yet: it is made, holding only "GChInfo".
  auto db = GChDatabase::initWithDiskData("Gitarre", user, factory);
  ASSERT_TRUE(fs::is_directory(user));
  EXPECT_EQ(platform::DirectoryMembers(user)->size(), 1u);
  EXPECT_EQ(db->defaultUserPackagePath(), user);
  ASSERT_NE(db->activeTuning(), nullptr);
  EXPECT_EQ(db->numberOfActiveBasicChords(), 5);
  EXPECT_TRUE(db->allUserLibrariesForAnyTuning().empty());
  EXPECT_FALSE(GChCreateDbPackageAtPath(user.string()));  // never over an existing package

  // New user libraries get free "0x" names; read-only ones are not written.
  GChLibrary* mine = db->activeTuning()->createLibraryWithPath("", "mine");
  mine->addChordRangePriv(Grid({{1, 4, 2}}));
  std::ofstream(user / "0x1") << "taken";
  GChLibrary* more = db->activeTuning()->createLibraryWithPath("", "more");
  more->addChordRangePriv(Grid({{2, 5, 3}}));
  ASSERT_TRUE(db->updateDatabaseFiles());
  EXPECT_EQ(mine->libraryPath(), (user / "0x2").string());
  EXPECT_EQ(more->libraryPath(), (user / "0x3").string());
  EXPECT_EQ(platform::DirectoryMembers(user)->size(), 4u);

  // A changed library is rewritten in place; a removed one is deleted, and only in the user
  // package.
  mine->addChordRangePriv(Grid({{1, 6, 1}}));
  EXPECT_TRUE(db->removeLibrary(more));
  EXPECT_TRUE(db->removeLibrary(db->allLibrariesForAnyTuning()[0]));  // a factory library
  ASSERT_TRUE(db->updateDatabaseFiles());
  EXPECT_FALSE(fs::exists(user / "0x3"));
  EXPECT_TRUE(fs::exists(factory / "0x1"));
  EXPECT_TRUE(db->pathsToDelete().empty());

  auto reread = GChDatabase::initWithDiskData("Gitarre", user, factory);
  // Both factory libraries (3 + 2 chords) and "mine" (2 chords); the junk "0x1" adds nothing.
  EXPECT_EQ(reread->numberOfActiveBasicChords(), 3 + 2 + 2);
  const auto libraries = reread->allUserLibrariesForAnyTuning();
  ASSERT_EQ(libraries.size(), 1u);
  EXPECT_EQ(libraries[0]->libraryName(), "mine");
  EXPECT_EQ(libraries[0]->numberOfBasicChords(), 2);
  // Factory chords are read first, so their ids do not move.
  EXPECT_EQ(reread->allChordsFilteringLibrary(nullptr, true).front().dbChordID(), 0);

  // Importing another package turns its libraries into user libraries saved here.
  auto imported = GChDatabase::initWithDiskData("Gitarre", user, "");
  ASSERT_TRUE(imported->importFromDbPackagesAtPaths({factory}));
  EXPECT_FALSE(imported->importFromDbPackagesAtPaths({temp.path() / "nothing"}));
  ASSERT_EQ(imported->allUserLibrariesForAnyTuning().size(), 3u);
  ASSERT_TRUE(imported->updateDatabaseFiles());
  EXPECT_EQ(platform::DirectoryMembers(user)->size(), 5u);  // GChInfo, junk, mine, 2 imported
  EXPECT_EQ(platform::DirectoryMembers(factory)->size(), 3u);

  EXPECT_EQ(GChDatabase::defaultUserPackageLocation().filename(), "GuitarChords.gchdb");
  EXPECT_EQ(GChDatabase::defaultUserPackageLocation().parent_path().filename(), "Chord Grids");
}

TEST(GChSimpleDatabase, ViewsFactoryAndUserChords) {
  ListFixture factory, user;
  auto view = GChSimpleDatabase::initWithFactoryDatabase(&factory.db, &user.db);
  EXPECT_EQ(view->allChordsFilteringLibrary(nullptr, true).size(), 10u);
  EXPECT_EQ(view->allChordsFilteringLibrary(user.second, true).size(), 2u);
  GChFilterParameter favorites;
  favorites.setIsFavoriteToFilter(1);
  EXPECT_EQ(view->allChordsFilteringLibrary(nullptr, true, &favorites).size(), 4u);
  EXPECT_EQ(GChSimpleDatabase::initWithFactoryDatabase(nullptr, &user.db)
                ->allChordsFilteringLibrary(nullptr, true)
                .size(),
            5u);

  TempFolder temp;
  const fs::path file = temp.path() / "lib";
  const auto bytes = factory.first->wholeLibraryFileContent();
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes->data()),
             static_cast<std::streamsize>(bytes->size()));
  auto single = GChSimpleDatabase::initWithLibraryFileAtPath(file, "Gitarre");
  ASSERT_NE(single, nullptr);
  EXPECT_EQ(single->allChordsFilteringLibrary(nullptr, true).size(), 3u);
  EXPECT_EQ(GChSimpleDatabase::initWithLibraryFileAtPath(temp.path() / "none", "x"), nullptr);
}

// The factory package lies in the library's data folder: inside the build tree the source
// tree's, or one a host names.
TEST(GChDatabasePackage, FactoryPackageIsFoundInTheDataFolder) {
  EXPECT_TRUE(fs::equivalent(DataFolder(), HARMONY_DATA_DIR));
  EXPECT_TRUE(fs::equivalent(GChDatabase::factoryPackageLocation(),
                             fs::path(HARMONY_DATA_DIR) / "Chord Grids" / "GuitarChords.gchdb"));
  TempFolder temp;
  SetDataFolder(temp.path());
  EXPECT_EQ(DataFolder(), temp.path());
  EXPECT_TRUE(GChDatabase::factoryPackageLocation().empty());
  fs::create_directories(temp.path() / "Chord Grids" / "GuitarChords.gchdb");
  EXPECT_EQ(GChDatabase::factoryPackageLocation(),
            temp.path() / "Chord Grids" / "GuitarChords.gchdb");
  SetDataFolder({});
  EXPECT_TRUE(fs::equivalent(DataFolder(), HARMONY_DATA_DIR));
}

}  // namespace
}  // namespace harmony
