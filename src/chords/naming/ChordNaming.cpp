// Chord names in layers: root, basic chord, options, bass.

#include <cctype>

#include "chords/ChordScaleSpelling.h"
#include "chords/naming/NamingDetail.h"
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

// Major flat 5, sus4 and sus2 come after the options: C7sus4, C7♭5.
bool BasicNameAfterOptions(TBasicChord basic) {
  return basic == kBasicChordMajorFlat5 || basic == kBasicChordSus4 || basic == kBasicChordSus2;
}

// The layers of a name, for the basic chord read once by the member that asks.

std::string RootNameFor(const CChordHeavy& chord, TBasicChord basic, const CChordNamePrefs& prefs) {
  std::string name = chord.RootNote().KeyName(prefs);
  if (prefs.MinorChordNamingWithSmallLetter() && basic == kBasicChordMinor && !name.empty()) {
    name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
  }
  return name;
}

bool ClarifyBasicChordFor(const CChordHeavy& chord, TBasicChord basic,
                          const CChordNamePrefs& prefs) {
  if (prefs.AccessibilitySpoken != 0 || prefs.CompactNameParts != 1) return false;
  return basic == kBasicChordMajorFlat5 ||
         (basic == kBasicChordPower && HasMisinterpretableAccidental(chord.RootNote().Enh()));
}

// What the first option follows decides: the basic chord's symbol when it comes first, or
// else the root itself (C7sus4 needs no separator, B♭(7)sus4 does).
bool ClarifyFirstOptionFor(const CChordHeavy& chord, TBasicChord basic, TOption option,
                           const CChordNamePrefs& prefs) {
  if (prefs.AccessibilitySpoken != 0 || prefs.CompactNameParts != 1) return false;
  const bool accidental = BeginsWithAccidental(option);
  const std::string basicName =
      BasicNameAfterOptions(basic) ? std::string() : BasicChordName(basic, prefs);
  if (basicName.empty()) return accidental || HasMisinterpretableAccidental(chord.RootNote().Enh());
  return (accidental || BeginsWithDigit(option)) &&
         std::isdigit(static_cast<unsigned char>(basicName.back())) != 0;
}

std::string OptionsNameFor(const CChordHeavy& chord, TBasicChord basic,
                           const CChordHeavy::COptionsMap& map, const CChordNamePrefs& prefs) {
  if (chord.IsUndef() || map.empty()) return {};
  std::string text;
  if (prefs.AccessibilitySpoken == 1) {
    for (const CChordHeavy::TOptionsMapEntry& entry : map) {
      if (!text.empty()) text += ' ';
      chords_detail::AppendOptionName(text, entry.Option, prefs);
    }
    return text;
  }
  const bool clarify = ClarifyFirstOptionFor(chord, basic, map.begin()->Option, prefs);
  const std::size_t firstInParens = clarify ? 0 : 1;
  std::size_t place = 0;
  for (const CChordHeavy::TOptionsMapEntry& entry : map) {
    if (prefs.TensionStyle == 1) {
      if (place >= firstInParens) text += '(';
      chords_detail::AppendOptionName(text, entry.Option, prefs);
      if (place >= firstInParens) text += ')';
    } else if (prefs.TensionStyle == 2) {
      if (place == firstInParens) text += '(';
      if (place > firstInParens) text += ',';
      chords_detail::AppendOptionName(text, entry.Option, prefs);
    } else {
      if (place == 0 && clarify) text += ' ';
      if (place > 0) text += '/';
      chords_detail::AppendOptionName(text, entry.Option, prefs);
    }
    ++place;
  }
  if (prefs.TensionStyle == 2 && map.size() >= (clarify ? 1U : 2U)) text += ')';
  return text;
}

std::string BasicChordAndOptionsNameFor(const CChordHeavy& chord, TBasicChord basic,
                                        const CChordNamePrefs& prefs) {
  const CChordHeavy::COptionsMap map = chords_detail::OptionsMapFor(chord, basic, prefs);
  const bool after = BasicNameAfterOptions(basic);
  if (IsCommaForm(prefs)) {
    const std::string basicName = BasicChordName(basic, prefs);
    const std::string options = OptionsNameFor(chord, basic, map, prefs);
    return after ? "," + options + "," + basicName : "," + basicName + "," + options;
  }
  const bool clarify = ClarifyBasicChordFor(chord, basic, prefs);
  const std::string basicName = BasicChordNameWithPreceedingOptionalSpace(basic, prefs);
  std::string options;
  if (!map.empty()) {
    options = OptionalSpaceBetweenNameParts(prefs) + OptionsNameFor(chord, basic, map, prefs);
  }
  if (!after) return clarify ? "(" + basicName + ")" + options : basicName + options;
  if (clarify && map.empty()) return "(" + basicName + ")";
  return options + basicName;
}

std::string NameWithoutSlashFor(const CChordHeavy& chord, const CChordNamePrefs& prefs) {
  if (chord.IsUndef()) {
    if (chord.RootNote().Enh() == TEnh_bb) return platform::Localized("No Chord Yield");
    if (chord.RootNote().Enh() == TEnh_b) return platform::Localized("No Chord");
    return {};
  }
  const TBasicChord basic = chord.BasicChordForNaming();
  std::string name = RootNameFor(chord, basic, prefs);
  if (chord.NotesCount() >= 2) name += BasicChordAndOptionsNameFor(chord, basic, prefs);
  return name;
}

}  // namespace

// --- The whole name

std::string CChordHeavy::Name(const CChordNamePrefs& prefs) const {
  if (prefs.NameWithoutSlashIfNarrow == 1 && IsNarrowChord()) return NameWithoutSlash(prefs);
  return NameWithSlash(prefs);
}

std::string CChordHeavy::NameWithoutSlash(const CChordNamePrefs& prefs) const {
  return NameWithoutSlashFor(*this, prefs);
}

std::string CChordHeavy::_RootName(const CChordNamePrefs& prefs) const {
  return RootNameFor(*this, BasicChordForNaming(), prefs);
}

// The bass is spelled as the scale of the chord spells it, and keeps that spelling.
std::string CChordHeavy::NameWithSlash(const CChordNamePrefs& prefs) const {
  std::string name = NameWithoutSlash(prefs);
  if (IsUndef() || _Notes.empty()) return name;
  CNote lowest = *_Notes.begin();
  if (lowest.IsUndef() || lowest.KeyNr() == _RootNote.KeyNr()) return name;
  const TEnh enh =
      chords_detail::ChordScaleEnhByKey(*this)[static_cast<std::size_t>(lowest.KeyNr())];
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
  return BasicNameAfterOptions(BasicChordForNaming());
}

bool CChordHeavy::
    _BasicChordAndOptionsName_NeedsClarifyingSeparatorBecauseOfMisinterpretableAccidental(
        const CChordNamePrefs& prefs) const {
  return ClarifyBasicChordFor(*this, BasicChordForNaming(), prefs);
}

std::string CChordHeavy::BasicChordAndOptionsName(const CChordNamePrefs& prefs) const {
  return BasicChordAndOptionsNameFor(*this, BasicChordForNaming(), prefs);
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

bool CChordHeavy::_OptionsNameFromMap_NeedsClarifyingSeparatorBeforeFirstOption(
    TChordOption option, const CChordNamePrefs& prefs) const {
  return ClarifyFirstOptionFor(*this, BasicChordForNaming(), option, prefs);
}

std::string CChordHeavy::OptionsNameFromMap(const COptionsMap& map,
                                            const CChordNamePrefs& prefs) const {
  if (IsUndef() || map.empty()) return {};
  return OptionsNameFor(*this, BasicChordForNaming(), map, prefs);
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
