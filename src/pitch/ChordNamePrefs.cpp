#include "harmony/pitch/ChordNamePrefs.h"

#include "harmony/pitch/TextUtil.h"

namespace harmony {

namespace {

CChordNamePrefs MakeSpacedPrefs() {
  CChordNamePrefs prefs;
  prefs.CompactNameParts = 0;
  prefs.NoSpaceAroundSlash = 0;
  return prefs;
}

}  // namespace

const CChordNamePrefs& GetCurrentChordNamePrefs() {
  static const CChordNamePrefs prefs;
  return prefs;
}

const CChordNamePrefs& GetCurrentChordNamePrefs_Loftbox() {
  static const CChordNamePrefs prefs = [] {
    CChordNamePrefs p = MakeSpacedPrefs();
    p.CommaSeparatedNameParts = 1;
    return p;
  }();
  return prefs;
}

const CChordNamePrefs& GetChordNamePrefsNonUTF8() {
  static const CChordNamePrefs prefs = [] {
    CChordNamePrefs p;
    p.AsciiAccidentals = 1;
    return p;
  }();
  return prefs;
}

CChordNamePrefs CurrentChordNamePrefs_SpaceBetweenNamePartsAndSlash() { return MakeSpacedPrefs(); }

const char* OptionalSpaceBetweenNameParts(const CChordNamePrefs& prefs) {
  return prefs.CompactNameParts != 0 && prefs.AccessibilitySpoken != 1 ? "" : " ";
}

const char* OptionalSpaceAroundSlash(const CChordNamePrefs& prefs) {
  return prefs.NoSpaceAroundSlash != 0 ? "" : " ";
}

void CChordNamePrefs::WriteTrace(std::ostream& out) const {
  out << "CChordNamePrefs: BIsH " << _BoolStr(BIsH) << ", BIsBFlat " << _BoolStr(BIsBFlat)
      << ", GermanAccidentals " << _BoolStr(GermanAccidentals) << ", AsciiAccidentals "
      << AsciiAccidentals << ", Solfege " << Solfege << ", OctaveNumbering " << OctaveNumbering
      << ", AccessibilitySpoken " << AccessibilitySpoken << ", MinorNaming " << MinorNaming
      << ", NameWithoutSlashIfNarrow " << _BoolStr(NameWithoutSlashIfNarrow)
      << ", HideBassIntvlInWideChords " << _BoolStr(HideBassIntvlInWideChords)
      << ", MajorSeventhStyle " << MajorSeventhStyle << ", SecondStyleValue " << SecondStyleValue
      << ", CommaSeparatedNameParts " << CommaSeparatedNameParts << ", ThirdStyleValue "
      << ThirdStyleValue << ", TensionStyle " << TensionStyle << ", FunctionLetters "
      << FunctionLetters << ", CompactNameParts " << CompactNameParts << ", NoSpaceAroundSlash "
      << NoSpaceAroundSlash << ", SlashString \"" << SlashString << "\"";
}

void CChordNamePrefs::WriteTraceBrief(std::ostream& out) const {
  out << (GermanAccidentals == 1 ? "German"
          : Solfege != 0         ? "solfege"
                                 : "letters")
      << (AsciiAccidentals != 0 ? ", ASCII" : ", UTF-8") << (BIsH == 1 ? ", B is H" : "")
      << (BIsBFlat == 1 ? ", B is B flat" : "") << (AccessibilitySpoken == 1 ? ", spoken" : "")
      << ", octaves " << OctaveNumbering;
}

void CChordNamePrefs::WriteInitializerList(std::ostream& out) const {
  out << "CChordNamePrefs{" << int{BIsH} << ", " << int{BIsBFlat} << ", " << int{GermanAccidentals}
      << ", " << AsciiAccidentals << ", " << Solfege << ", " << OctaveNumbering << ", "
      << AccessibilitySpoken << ", " << MinorNaming << ", " << int{NameWithoutSlashIfNarrow} << ", "
      << int{HideBassIntvlInWideChords} << ", " << MajorSeventhStyle << ", " << SecondStyleValue
      << ", " << CommaSeparatedNameParts << ", " << ThirdStyleValue << ", " << TensionStyle << ", "
      << FunctionLetters << ", " << CompactNameParts << ", " << NoSpaceAroundSlash << ", \""
      << SlashString << "\"}";
}

}  // namespace harmony
