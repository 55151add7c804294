// Chord names in layers: root, basic chord, options, bass.

#include <cctype>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ScaleHeavy.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

using TOption = CChordHeavy::TChordOption;

// After a flat or a sharp a following "b5", "5" or "b9" would read as part of the root.
bool HasMisinterpretableAccidental(TEnh enh) { return enh <= TEnh_b || enh == TEnh_s; }

bool BeginsWithAccidental(TOption option) {
  switch (option) {
    case CChordHeavy::kOption_b9:
    case CChordHeavy::kOption_sharp9:
    case CChordHeavy::kOption_b3:
    case CChordHeavy::kOption_sharp11:
    case CChordHeavy::kOption_b5:
    case CChordHeavy::kOption_b13:
    case CChordHeavy::kOption_sharp5:
      return true;
    default:
      return false;
  }
}

bool BeginsWithDigit(TOption option) {
  switch (option) {
    case CChordHeavy::kOption_9:
    case CChordHeavy::kOption_3:
    case CChordHeavy::kOption_5:
    case CChordHeavy::kOption_13:
    case CChordHeavy::kOption_7:
    case CChordHeavy::kOption_6:
      return true;
    default:
      return false;
  }
}

bool IsCommaForm(const CChordNamePrefs& prefs) { return prefs.CommaSeparatedNameParts != 0; }

}  // namespace

// --- The whole name

std::string CChordHeavy::Name(const CChordNamePrefs& prefs) const {
  if (prefs.NameWithoutSlashIfNarrow == 1 && IsNarrowChord()) return NameWithoutSlash(prefs);
  return NameWithSlash(prefs);
}

std::string CChordHeavy::NameWithoutSlash(const CChordNamePrefs& prefs) const {
  if (IsUndef()) {
    if (_RootNote.Enh() == TEnh_bb) return platform::Localized("No Chord Yield");
    if (_RootNote.Enh() == TEnh_b) return platform::Localized("No Chord");
    return {};
  }
  std::string name = _RootName(prefs);
  if (_Notes.size() >= 2) name += BasicChordAndOptionsName(prefs);
  return name;
}

std::string CChordHeavy::_RootName(const CChordNamePrefs& prefs) const {
  std::string name = _RootNote.KeyName(prefs);
  if (prefs.MinorChordNamingWithSmallLetter() && BasicChordForNaming() == kBasicChordMinor &&
      !name.empty()) {
    name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  }
  return name;
}

// The bass is spelled as the scale of the chord spells it, and keeps that spelling.
std::string CChordHeavy::NameWithSlash(const CChordNamePrefs& prefs) const {
  std::string name = NameWithoutSlash(prefs);
  if (IsUndef() || _Notes.empty()) return name;
  CNote lowest = *_Notes.begin();
  if (lowest.IsUndef() || lowest.KeyNr() == _RootNote.KeyNr()) return name;
  const TEnh enh = CScaleHeavy::Undef.ConstructScaleForChord(*this).EnhForKeyNr(lowest.KeyNr());
  if (enh != TEnh_Undef && enh != lowest.Enh()) {
    _Notes.erase(_Notes.begin());
    lowest.SetEnhAndDontMakeSenseful(enh);
    _Notes.insert(lowest);
  }
  const char* blank = prefs.NoSpaceAroundSlash == 0 ? " " : "";
  if (IsCommaForm(prefs)) {
    name += ",";
  } else {
    name += blank;
  }
  name += prefs.SlashString;
  name += blank;
  name += lowest.KeyName(prefs);
  return name;
}

// --- Basic chord and options

bool CChordHeavy::BasicChordNameAfterOptionsName() const {
  const TBasicChord basic = BasicChordForNaming();
  return basic == kBasicChordMajorFlat5 || basic == kBasicChordSus4 || basic == kBasicChordSus2;
}

bool CChordHeavy::
    _BasicChordAndOptionsName_NeedsClarifyingSeparatorBecauseOfMisinterpretableAccidental(
        const CChordNamePrefs& prefs) const {
  if (prefs.AccessibilitySpoken != 0 || prefs.CompactNameParts != 1) return false;
  const TBasicChord basic = BasicChordForNaming();
  return basic == kBasicChordMajorFlat5 ||
         (basic == kBasicChordPower && HasMisinterpretableAccidental(_RootNote.Enh()));
}

std::string CChordHeavy::BasicChordAndOptionsName(const CChordNamePrefs& prefs) const {
  const TBasicChord basic = BasicChordForNaming();
  const COptionsMap map = OptionsMap(prefs);
  const bool after = BasicChordNameAfterOptionsName();
  if (IsCommaForm(prefs)) {
    const std::string basicName = BasicChordName(basic, prefs);
    const std::string options = OptionsNameFromMap(map, prefs);
    return after ? "," + options + "," + basicName : "," + basicName + "," + options;
  }
  const bool clarify =
      _BasicChordAndOptionsName_NeedsClarifyingSeparatorBecauseOfMisinterpretableAccidental(prefs);
  const std::string basicName = BasicChordNameWithPreceedingOptionalSpace(basic, prefs);
  std::string options;
  if (!map.empty()) options = OptionalSpaceBetweenNameParts(prefs) + OptionsNameFromMap(map, prefs);
  if (!after) return clarify ? "(" + basicName + ")" + options : basicName + options;
  if (clarify && map.empty()) return "(" + basicName + ")";
  return options + basicName;
}

std::string CChordHeavy::OptionsName(const CChordNamePrefs& prefs) const {
  return OptionsNameFromMap(OptionsMap(prefs), prefs);
}

std::string CChordHeavy::OptionsNameWithPreceedingOptionalSpace(
    const CChordNamePrefs& prefs) const {
  const COptionsMap map = OptionsMap(prefs);
  if (map.empty()) return {};
  return OptionalSpaceBetweenNameParts(prefs) + OptionsNameFromMap(map, prefs);
}

// What the first option follows decides: the basic chord's symbol when it comes first, or
// else the root itself (C7sus4 needs no separator, B♭(7)sus4 does).
bool CChordHeavy::_OptionsNameFromMap_NeedsClarifyingSeparatorBeforeFirstOption(
    TChordOption option, const CChordNamePrefs& prefs) const {
  if (prefs.AccessibilitySpoken != 0 || prefs.CompactNameParts != 1) return false;
  const bool accidental = BeginsWithAccidental(option);
  const std::string basicName = BasicChordNameAfterOptionsName()
                                    ? std::string()
                                    : BasicChordName(BasicChordForNaming(), prefs);
  if (basicName.empty()) return accidental || HasMisinterpretableAccidental(_RootNote.Enh());
  return (accidental || BeginsWithDigit(option)) &&
         std::isdigit(static_cast<unsigned char>(basicName.back())) != 0;
}

std::string CChordHeavy::OptionsNameFromMap(const COptionsMap& map,
                                            const CChordNamePrefs& prefs) const {
  if (IsUndef() || map.empty()) return {};
  std::string text;
  if (prefs.AccessibilitySpoken == 1) {
    for (const TOptionsMapEntry& entry : map) {
      if (!text.empty()) text += ' ';
      text += OptionName(entry.Option, prefs);
    }
    return text;
  }
  const bool clarify =
      _OptionsNameFromMap_NeedsClarifyingSeparatorBeforeFirstOption(map.begin()->Option, prefs);
  const std::size_t firstInParens = clarify ? 0 : 1;
  std::size_t place = 0;
  for (const TOptionsMapEntry& entry : map) {
    const std::string option = OptionName(entry.Option, prefs);
    if (prefs.TensionStyle == 1) {
      text += place < firstInParens ? option : "(" + option + ")";
    } else if (prefs.TensionStyle == 2) {
      if (place == firstInParens) text += '(';
      if (place > firstInParens) text += ',';
      text += option;
    } else {
      if (place == 0 && clarify) text += ' ';
      if (place > 0) text += '/';
      text += option;
    }
    ++place;
  }
  if (prefs.TensionStyle == 2 && map.size() >= (clarify ? 1U : 2U)) text += ')';
  return text;
}

// --- Other roots

std::string CChordHeavy::NameForThisRootNote(const CNote& note,
                                             const CChordNamePrefs& prefs) const {
  static const CScaleHeavy cMajor(0, st_maj);
  CNote root = note;
  if (!IsSensefulEnhForKeyNr(note.KeyNr(), note.Enh())) {
    root.SetEnhAndDontMakeSenseful(cMajor.EnhForKeyNr(note.KeyNr()));
  }
  return _RootedOn(root).Name(prefs);
}

std::string CChordHeavy::NameWithLeastSignsForThisRootNote(const CNote& note,
                                                           const CChordNamePrefs& prefs) const {
  CNote root = note;
  root.MakeSensefulEnhAssumingCMajor();
  root.SetEnhAndDontMakeSenseful(_EnhWithLeastSigns(root));
  return _RootedOn(root).Name(prefs);
}

CChordHeavy CChordHeavy::_RootedOn(const CNote& note) const {
  CChordHeavy copy = *this;
  copy.SetRootNote(note);  // a defined root also replaces the bass slot
  return copy;
}

}  // namespace harmony
