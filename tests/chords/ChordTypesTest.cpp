#include "harmony/chords/ChordTypes.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "harmony/chords/ChordLite.h"

namespace harmony {
namespace {

TEST(ChordTypes, BuiltInRowsInLibraryOrder) {
  const std::vector<CChordTypeId> ids{1,  9,  34, 33, 3,   119, 120, 118, 25,  27,
                                      28, 5,  2,  7,  20,  22,  26,  101, 121, 11,
                                      12, 16, 13, 10, 104, 100, 18,  19,  8,   30};
  const CChordTypeVec& rows = SharedChordTypes().BuiltIn();
  ASSERT_EQ(rows.size(), ids.size());
  std::set<CChordTypeId> distinct;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].Id, ids[i]) << i;
    EXPECT_EQ(rows[i].Reserved, 0U) << i;
    distinct.insert(rows[i].Id);
  }
  EXPECT_EQ(distinct.size(), ids.size());
  EXPECT_EQ(rows[0].Name, "major");
  EXPECT_EQ(rows[17].Name, "maj7 b5 #9");
  EXPECT_EQ(rows[24].Name, "minor 6 add9");
  EXPECT_EQ(rows[29].Name, "aug 7");
  // Ninths above the octave, elevenths and thirteenths inside it.
  EXPECT_EQ(rows[11].Intvls, (CIntvlSet{0, 4, 7, 14}));
  EXPECT_EQ(rows[7].Intvls, (CIntvlSet{0, 4, 5, 7, 10}));
  EXPECT_EQ(rows[17].Intvls, (CIntvlSet{0, 4, 6, 11, 15}));
  EXPECT_EQ(rows[18].Intvls, (CIntvlSet{0, 4, 7, 9, 11}));
  EXPECT_TRUE(SharedChordTypes().User().empty());
  EXPECT_EQ(&SharedChordTypes(), &SharedChordTypes());
}

// The name of each row begins with its triad; the tones must say the same.
TEST(ChordTypes, RowTonesMatchTheirNames) {
  for (const TChordType& row : SharedChordTypes().BuiltIn()) {
    CChordLite chord(CKeyEnh(0, TEnh_n), row.Intvls.ToSemitones());
    const std::string& name = row.Name;
    TBasicChord expected = kBasicChordMajor;
    if (name.rfind("minor", 0) == 0) {
      expected = kBasicChordMinor;
    } else if (name.rfind("dim", 0) == 0) {
      expected = kBasicChordDim;
    } else if (name.rfind("aug", 0) == 0) {
      expected = kBasicChordAug;
    } else if (name == "sus2") {
      expected = kBasicChordSus2;
    } else if (name == "sus4") {
      expected = kBasicChordSus4;
    } else if (name.find("b5") != std::string::npos) {
      expected = kBasicChordMajorFlat5;
    }
    EXPECT_EQ(chord.BasicChordForNaming(), expected) << name;
    // Rows of three tones are bare triads; every longer row has a tension.
    EXPECT_EQ(chord.OptionsSemitones().IsEmpty(), row.Intvls.size() == 3) << name;
  }
}

TEST(ChordTypes, FindByIntervals) {
  const CChordTypeVec& rows = SharedChordTypes().BuiltIn();
  for (auto it = rows.begin(); it != rows.end(); ++it) {
    EXPECT_EQ(rows.FindChordTypeForIntvls(it->Intvls), it) << it->Name;  // no row twice
  }
  // "add9" holds 14, so the folded form is no match.
  EXPECT_EQ(rows.FindChordTypeForIntvls(CIntvlSet{0, 4, 7, 2}), rows.end());
  EXPECT_EQ(rows.FindChordTypeForIntvls(CIntvlSet{0, 4, 7, 14})->Name, "add9");
  EXPECT_EQ(rows.FindChordTypeForIntvls(CIntvlSet{0, 4, 7, 10, 21}), rows.end());
  EXPECT_EQ(rows.FindChordTypeForIntvls(CIntvlSet{}), rows.end());
  // The wrap interval does not count.
  CIntvlSet minor7{0, 3, 7, 10};
  minor7.SetWrapIntvl(12);
  EXPECT_EQ(rows.FindChordTypeForIntvls(minor7)->Id, 11U);

  const auto [sel, row] = SharedChordTypes().FindChordTypeVecAndChordTypeFromIntvls(minor7);
  EXPECT_EQ(sel, kChordTypeVecSel_BuiltIn);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->Name, "minor 7");
  EXPECT_EQ(SharedChordTypes().FindChordTypeVecAndChordTypeFromIntvls(CIntvlSet{0, 1}),
            TChordTypeVecAndChordType(kChordTypeVecSel_None, nullptr));
}

TEST(ChordTypes, FindById) {
  const CChordTypes& types = SharedChordTypes();
  EXPECT_EQ(types.ChordTypeBuiltInFromId(101)->Name, "maj7 b5 #9");
  EXPECT_EQ(types.ChordTypeBuiltInFromId(4), types.BuiltIn().end());  // a gap in the ids
  EXPECT_EQ(types.ChordTypeBuiltInFromId(0), types.BuiltIn().end());
  EXPECT_EQ(types.ChordTypeUserFromId(1), types.User().end());
  const auto [sel, row] = types.ChordTypeFromId(30);
  EXPECT_EQ(sel, kChordTypeVecSel_BuiltIn);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->Name, "aug 7");
  EXPECT_EQ(types.ChordTypeFromId(999).first, kChordTypeVecSel_None);
}

TEST(ChordTypes, UserRowsComeAfterBuiltIn) {
  CChordTypes types;
  TChordType quartal;
  quartal.Id = 500;
  quartal.Name = "quartal";
  quartal.Intvls = CIntvlSet{0, 5, 10};
  types.AddUserChordType(quartal);
  TChordType shadow;  // the id and the tones of "major" again
  shadow.Id = 1;
  shadow.Name = "user major";
  shadow.Intvls = CIntvlSet{0, 4, 7};
  types.AddUserChordType(shadow);

  EXPECT_EQ(types.ChordTypeFromId(500),
            TChordTypeVecAndChordType(kChordTypeVecSel_User, &types.User()[0]));
  EXPECT_EQ(types.FindChordTypeVecAndChordTypeFromIntvls(CIntvlSet{0, 5, 10}).first,
            kChordTypeVecSel_User);
  EXPECT_EQ(types.ChordTypeFromId(1).second->Name, "major");
  EXPECT_EQ(types.FindChordTypeVecAndChordTypeFromIntvls(CIntvlSet{0, 4, 7}).second->Name, "major");
  EXPECT_EQ(types.ChordTypeUserFromId(1)->Name, "user major");
  EXPECT_EQ(types.ChordTypeBuiltInFromId(500), types.BuiltIn().end());
  EXPECT_TRUE(SharedChordTypes().User().empty());
  EXPECT_EQ(types.TraceBriefString(), "30 built-in, 2 user chord types");
}

}  // namespace
}  // namespace harmony
