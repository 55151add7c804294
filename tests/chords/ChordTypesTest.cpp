#include "harmony/chords/ChordTypes.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "harmony/chords/ChordLite.h"

namespace harmony {
namespace {

// The name of each row begins with its triad.
TBasicChord TriadOfName(const std::string& name) {
  if (name.rfind("minor", 0) == 0) return kBasicChordMinor;
  if (name.rfind("dim", 0) == 0) return kBasicChordDim;
  if (name.rfind("aug", 0) == 0) return kBasicChordAug;
  if (name == "sus2") return kBasicChordSus2;
  if (name == "sus4") return kBasicChordSus4;
  return name.find("b5") != std::string::npos ? kBasicChordMajorFlat5 : kBasicChordMajor;
}

TEST(ChordTypes, BuiltInRows) {
  const std::vector<CChordTypeId> ids{1,  9,  34, 33, 3,   119, 120, 118, 25,  27,
                                      28, 5,  2,  7,  20,  22,  26,  101, 121, 11,
                                      12, 16, 13, 10, 104, 100, 18,  19,  8,   30};
  const CChordTypeVec& rows = SharedChordTypes().BuiltIn();
  ASSERT_EQ(rows.size(), ids.size());
  EXPECT_TRUE(SharedChordTypes().User().empty());
  std::set<CChordTypeId> distinct;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const TChordType& row = rows[i];
    EXPECT_EQ(row.Id, ids[i]) << i;
    EXPECT_EQ(row.Reserved, 0U) << i;
    distinct.insert(row.Id);
    // The tones agree with the name, and rows beyond three tones carry a tension.
    const CChordLite chord(CKeyEnh(0, TEnh_n), row.Intvls.ToSemitones());
    EXPECT_EQ(chord.BasicChordForNaming(), TriadOfName(row.Name)) << row.Name;
    EXPECT_EQ(chord.OptionsSemitones().IsEmpty(), row.Intvls.size() == 3) << row.Name;
    EXPECT_EQ(rows.FindChordTypeForIntvls(row.Intvls), rows.begin() + i) << row.Name;
  }
  EXPECT_EQ(distinct.size(), ids.size());
  EXPECT_EQ(rows[17].Name, "maj7 b5 #9");
  EXPECT_EQ(&SharedChordTypes(), &SharedChordTypes());
  // Ninths above the octave, elevenths and thirteenths inside it.
  EXPECT_EQ(rows[11].Intvls, (CIntvlSet{0, 4, 7, 14}));
  EXPECT_EQ(rows[7].Intvls, (CIntvlSet{0, 4, 5, 7, 10}));
}

TEST(ChordTypes, LookUpsBuiltInBeforeUser) {
  CChordTypes types;
  const CChordTypeVec& rows = types.BuiltIn();
  // "add9" holds 14, so the folded form is no match; the wrap interval does not count.
  EXPECT_EQ(rows.FindChordTypeForIntvls(CIntvlSet{0, 4, 7, 2}), rows.end());
  CIntvlSet minor7{0, 3, 7, 10};
  minor7.SetWrapIntvl(12);
  EXPECT_EQ(types.FindChordTypeVecAndChordTypeFromIntvls(minor7),
            TChordTypeVecAndChordType(kChordTypeVecSel_BuiltIn, &rows[19]));
  EXPECT_EQ(types.ChordTypeBuiltInFromId(4), rows.end());  // a gap in the ids
  EXPECT_EQ(types.ChordTypeFromId(30).second->Name, "aug 7");

  TChordType quartal;
  quartal.Id = 500;
  quartal.Intvls = CIntvlSet{0, 5, 10};
  types.AddUserChordType(quartal);
  TChordType shadow;  // the id and the tones of "major" again
  shadow.Id = 1;
  shadow.Intvls = CIntvlSet{0, 4, 7};
  types.AddUserChordType(shadow);
  const TChordTypeVecAndChordType user(kChordTypeVecSel_User, &types.User()[0]);
  EXPECT_EQ(types.ChordTypeFromId(500), user);
  EXPECT_EQ(types.FindChordTypeVecAndChordTypeFromIntvls(CIntvlSet{0, 5, 10}), user);
  EXPECT_EQ(types.ChordTypeFromId(1).second, &rows[0]);
  EXPECT_EQ(types.FindChordTypeVecAndChordTypeFromIntvls(CIntvlSet{0, 4, 7}).second, &rows[0]);
  EXPECT_EQ(types.ChordTypeUserFromId(1), types.User().begin() + 1);
  EXPECT_EQ(types.ChordTypeFromId(999), TChordTypeVecAndChordType(kChordTypeVecSel_None, nullptr));
  EXPECT_TRUE(SharedChordTypes().User().empty());
}

}  // namespace
}  // namespace harmony
