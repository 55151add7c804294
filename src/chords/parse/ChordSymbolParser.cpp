#include "harmony/chords/ChordSymbolParser.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <span>
#include <string_view>

#include "analysis/ChordSimplifierHook.h"
#include "harmony/chords/BasicChord.h"
#include "harmony/chords/ScaleNameReader.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/SetFromStringHelper.h"

namespace harmony {

namespace {

using SetFromStringHelper::CompareLowercaseStrs;
using SetFromStringHelper::CompareLowercaseStrsAndOnMatchAdvanceStringPos;
using SetFromStringHelper::TSpaces_Prefix;
using TKeywordList = std::span<const std::string_view>;

// Every list puts a longer spelling before its own prefix, so that prefix matching takes the
// longest spelling. The lists are constant data: nothing is built while a symbol is read.
constexpr std::string_view kUndefWords[] = {"undef", "-"};
constexpr std::string_view kNoChordYieldWords[] = {"nochordyield"};
constexpr std::string_view kNoChordForceWords[] = {"nochordforce", "nochord"};
constexpr std::string_view kMinorWords[] = {"moll", "min", "mi", "m", "-"};
constexpr std::string_view kAugWords[] = {"aug"};
constexpr std::string_view kDimWords[] = {"dim"};
constexpr std::string_view kSus2Words[] = {"sus 2", "sus2", "s 2", "s2"};
constexpr std::string_view kSus4Words[] = {"sus 4", "sus4", "sus", "s 4", "s4"};
constexpr std::string_view kDroneWords[] = {"drone"};
// The white triangle U+25B3 and the small white triangle U+25B5 are the jazz signs of a major
// seventh.
constexpr std::string_view kMajSeventhWords[] = {
    "maj 7", "maj7", "ma 7", "ma7", "maj", "\xE2\x96\xB3", "\xE2\x96\xB5", "j 7", "j7"};
constexpr std::string_view kMajNinthWords[] = {"maj 9", "maj9", "ma 9", "ma9", "j 9", "j9"};

constexpr std::string_view kFlat5[] = {"b5"};
constexpr std::string_view kFifth[] = {"5"};
constexpr std::string_view kSharp5[] = {"#5"};
constexpr std::string_view kFlat6[] = {"b6"};
constexpr std::string_view kSixth[] = {"6"};
constexpr std::string_view kSeventh[] = {"seventh", "7"};
constexpr std::string_view kFlat9[] = {"b9"};
constexpr std::string_view kAddFlat9[] = {"add b9", "addb9"};
constexpr std::string_view kNinth[] = {"9"};
constexpr std::string_view kAddNinth[] = {"add 9", "add 2", "add9", "add2"};
constexpr std::string_view kAddSharp9[] = {"add #9", "add #2", "add#9", "add#2"};
constexpr std::string_view kSharp9[] = {"#9"};
constexpr std::string_view kFlat3[] = {"b3"};
constexpr std::string_view kThird[] = {"3"};
constexpr std::string_view kEleventh[] = {"11"};
constexpr std::string_view kSharp11[] = {"#11"};
constexpr std::string_view kAddEleventh[] = {"add 11", "add11", "add 4", "add4"};
constexpr std::string_view kAddSharp11[] = {"add #11", "add#11", "add #4", "add#4"};
constexpr std::string_view kThirteenth[] = {"13"};
constexpr std::string_view kFlat13[] = {"b13"};
constexpr std::string_view kOmitThird[] = {"omit 3", "omit3", "no 3", "no3"};

constexpr int kNone = -1;
using TIntvls = std::array<int, 2>;
constexpr TIntvls kNoIntvls{kNone, kNone};
constexpr TIntvls kThirds{3, 4};
constexpr TIntvls kSeventhAndNinth{10, 14};

// One option of a chord symbol. "Alone" intervals are added only while no option has added
// anything yet: "9" alone means a dominant ninth chord, after "6" only the ninth.
struct TOptionRow {
  TKeywordList Keywords;
  TIntvls AddIfAlone;
  TIntvls Add;
  TIntvls Erase;
  // "7": the diminished seventh (9) on a diminished triad, else the minor seventh (10).
  bool SeventhOfBasicChord = false;
};

// Tried in this order; the first row whose keyword begins the text wins. The order decides
// real cases: "maj" is taken before "maj9" can be, "b13" adds the flat sixth.
constexpr TOptionRow kOptionRows[] = {
    {kFlat5, kNoIntvls, {6, kNone}, {7, kNone}},
    {kFifth, kNoIntvls, {7, kNone}, kThirds},
    {kSharp5, kNoIntvls, {8, kNone}, {7, kNone}},
    {kFlat6, kNoIntvls, {8, kNone}, kNoIntvls},
    {kSixth, kNoIntvls, {9, kNone}, kNoIntvls},
    {kSeventh, kNoIntvls, kNoIntvls, kNoIntvls, true},
    {kMajSeventhWords, kNoIntvls, {11, kNone}, kNoIntvls},
    {kFlat9, {10, kNone}, {13, kNone}, kNoIntvls},
    {kAddFlat9, kNoIntvls, {13, kNone}, kNoIntvls},
    {kNinth, {10, kNone}, {14, kNone}, kNoIntvls},
    {kAddNinth, kNoIntvls, {14, kNone}, kNoIntvls},
    {kMajNinthWords, kNoIntvls, {11, 14}, kNoIntvls},
    {kAddSharp9, kNoIntvls, {15, kNone}, kNoIntvls},
    {kSharp9, {10, kNone}, {15, kNone}, kNoIntvls},
    {kFlat3, kNoIntvls, {3, kNone}, kNoIntvls},
    {kThird, kNoIntvls, {4, kNone}, kNoIntvls},
    {kEleventh, kSeventhAndNinth, {17, kNone}, kNoIntvls},
    {kSharp11, kSeventhAndNinth, {18, kNone}, kNoIntvls},
    {kAddEleventh, kNoIntvls, {17, kNone}, kNoIntvls},
    {kAddSharp11, kNoIntvls, {18, kNone}, kNoIntvls},
    {kThirteenth, kSeventhAndNinth, {21, kNone}, kNoIntvls},
    {kFlat13, kSeventhAndNinth, {8, kNone}, kNoIntvls},
    {kOmitThird, kNoIntvls, kNoIntvls, kThirds},
    {kSus2Words, kNoIntvls, {2, kNone}, kThirds},
    {kSus4Words, kNoIntvls, {5, kNone}, kThirds},
};

// The basic chords after the minor test, in the order they are tried.
struct TBasicChordRow {
  TKeywordList Keywords;
  TBasicChord Code;
};
constexpr TBasicChordRow kBasicChordRows[] = {
    {kAugWords, kBasicChordAug},   {kDimWords, kBasicChordDim},     {kSus2Words, kBasicChordSus2},
    {kSus4Words, kBasicChordSus4}, {kDroneWords, kBasicChordPower},
};

constexpr bool AllListsAreSorted() {
  using SetFromStringHelper::_AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase;
  for (const TOptionRow& row : kOptionRows) {
    if (!_AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(row.Keywords)) return false;
  }
  for (const TBasicChordRow& row : kBasicChordRows) {
    if (!_AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(row.Keywords)) return false;
  }
  return _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(kMinorWords) &&
         _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(kUndefWords) &&
         _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(kNoChordForceWords);
}
static_assert(AllListsAreSorted(), "a keyword would hide a longer spelling behind it");

bool Matches(TKeywordList keywords, std::string_view text, int pos) {
  return CompareLowercaseStrs(TSpaces_Prefix, keywords, text, pos).first;
}

bool MatchAndAdvance(TKeywordList keywords, std::string_view text, int& pos) {
  return CompareLowercaseStrsAndOnMatchAdvanceStringPos(TSpaces_Prefix, keywords, text, pos).first;
}

void InsertIntvls(const TIntvls& intvls, CIntvlSet& set) {
  for (const int intvl : intvls) {
    if (intvl != kNone) set.insert(intvl);
  }
}

constexpr char LowerAscii(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The simplifier of slash chords by default; a host may replace it, or clear it to read every
// bass as written. Read by every parse that asks for simplification.
constinit std::atomic<CChordSetFromStringHelper::TSimplifyBassNoteHook> gSimplifyBassNoteHook{
    &analysis_detail::SimplifyBassNoteForParser};

CIntvlSet EmptyOptionSet() {
  CIntvlSet set;
  set.SetWrapIntvl(CIntvlSet::kDefaultWrapIntvl);
  return set;
}

}  // namespace

void ChordSetFromStringPrefs::WriteTrace(std::ostream& out) const {
  out << "ChordSetFromStringPrefs: " << static_cast<int>(Value);
}

void ChordSetFromStringPrefs::WriteTraceBrief(std::ostream& out) const {
  out << static_cast<int>(Value);
}

void ChordSetFromStringPrefs::WriteInitializerList(std::ostream& out) const {
  out << "ChordSetFromStringPrefs(" << static_cast<int>(Value) << ')';
}

void CChordSetFromStringHelper::SetFromString(const std::string& text, CChordLite& chord,
                                              const ChordSetFromStringPrefs& prefs,
                                              const CChordNamePrefs& namePrefs) {
  chord = CChordLite();
  BasicChordCode = 0;
  LoweredText.resize(text.size());
  bool hasUnicodeSign = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    LoweredText[i] = LowerAscii(text[i]);
    hasUnicodeSign = hasUnicodeSign || text[i] == '\xE2';
  }
  if (hasUnicodeSign) ConvertUtf8SharpAndFlatToAscii(LoweredText);
  if (_StringShouldSetUndefOrNoChord(chord)) return;

  int pos = 0;
  chord.RootKeyEnh.SetFromString(text, &pos, namePrefs);
  chord.Semitones = _BasicChordSemitonesFromString(pos);
  chord.BassKeyEnh = _BassKeyNrAndEnhFromString(namePrefs);

  CIntvlSet add = EmptyOptionSet();
  CIntvlSet erase = EmptyOptionSet();
  _AddAndEraseIntvlsForOptionsFromString(pos, add, erase);
  // Erasing comes last, so an omitted tone stays out whatever options name it.
  for (const int intvl : add) chord.Semitones.AddIntvl(intvl);
  for (const int intvl : erase) chord.Semitones.EraseIntvl(intvl);

  if (!prefs.SimplifiesBassNote()) return;
  if (const TSimplifyBassNoteHook simplify = SimplifyBassNoteHook()) {
    const std::pair<bool, CChordLite> simplified =
        simplify(chord, CHarmCenterLite::Undef, CSignKeyLite::Undef);
    if (simplified.first) chord = simplified.second;
  }
}

void CChordSetFromStringHelper::SetSimplifyBassNoteHook(TSimplifyBassNoteHook hook) {
  gSimplifyBassNoteHook.store(hook, std::memory_order_release);
}

CChordSetFromStringHelper::TSimplifyBassNoteHook CChordSetFromStringHelper::SimplifyBassNoteHook() {
  return gSimplifyBassNoteHook.load(std::memory_order_acquire);
}

bool CChordSetFromStringHelper::_StringShouldSetUndefOrNoChord(CChordLite& chord) const {
  // Prefix tests: "-7" and "undefined" are the undefined chord as well.
  if (Matches(kUndefWords, LoweredText, 0)) {
    chord = CChordLite();
  } else if (Matches(kNoChordYieldWords, LoweredText, 0)) {
    chord = CChordLite_NoChordYield;
  } else if (Matches(kNoChordForceWords, LoweredText, 0)) {
    chord = CChordLite_NoChordForce;
  } else {
    return false;
  }
  return true;
}

CSemitones CChordSetFromStringHelper::_BasicChordSemitonesFromString(int& pos) {
  const std::string_view text = LoweredText;
  SetFromStringHelper::SkipLeadingBlanks(text, pos);
  if (pos < 0 || static_cast<std::size_t>(pos) >= text.size()) {
    return SemitonesForBasicChord(kBasicChordMajor);
  }
  // "maj7" begins with "m" but is no minor chord; the option pass reads it.
  const bool majorSeventhFollows =
      Matches(kMajSeventhWords, text, pos) || Matches(kMajNinthWords, text, pos);
  if (!majorSeventhFollows && MatchAndAdvance(kMinorWords, text, pos)) {
    BasicChordCode = kBasicChordMinor;
    return SemitonesForBasicChord(kBasicChordMinor);
  }
  for (const TBasicChordRow& row : kBasicChordRows) {
    if (MatchAndAdvance(row.Keywords, text, pos)) {
      BasicChordCode = row.Code;
      return SemitonesForBasicChord(row.Code);
    }
  }
  return SemitonesForBasicChord(kBasicChordMajor);
}

CKeyEnh CChordSetFromStringHelper::_BassKeyNrAndEnhFromString(
    const CChordNamePrefs& namePrefs) const {
  CKeyEnh bass;
  if (namePrefs.SlashString.empty()) return bass;
  const std::size_t slash = LoweredText.find_last_of(namePrefs.SlashString);
  if (slash == std::string::npos) return bass;
  const std::string_view behind = std::string_view(LoweredText).substr(slash + 1);
  // C6/9 is a sixth chord with an added ninth, not a chord over a bass.
  for (const char c : behind) {
    if (IsDigit(c)) return bass;
  }
  bass.SetFromString(behind, nullptr, namePrefs);
  return bass;
}

void CChordSetFromStringHelper::_AddAndEraseIntvlsForOptionsFromString(int& pos, CIntvlSet& add,
                                                                       CIntvlSet& erase) const {
  SetFromStringHelper::SkipLeadingBlanks(LoweredText, pos);
  if (pos < 0) return;
  while (static_cast<std::size_t>(pos) < LoweredText.size()) {
    _AddAndEraseIntvlsForSingleOptionFromString(pos, add, erase);
  }
}

void CChordSetFromStringHelper::_AddAndEraseIntvlsForSingleOptionFromString(
    int& pos, CIntvlSet& add, CIntvlSet& erase) const {
  const std::string_view text = LoweredText;
  for (const TOptionRow& row : kOptionRows) {
    if (!MatchAndAdvance(row.Keywords, text, pos)) continue;
    if (add.empty()) InsertIntvls(row.AddIfAlone, add);
    if (row.SeventhOfBasicChord) add.insert(BasicChordCode == kBasicChordDim ? 9 : 10);
    InsertIntvls(row.Add, add);
    InsertIntvls(row.Erase, erase);
    return;
  }
  _SkipLetterOrAllSequentialNumbers(pos);
}

void CChordSetFromStringHelper::_SkipLetterOrAllSequentialNumbers(int& pos) const {
  const auto size = static_cast<int>(LoweredText.size());
  if (pos < 0 || pos >= size) return;
  if (!IsDigit(LoweredText[static_cast<std::size_t>(pos)])) {
    ++pos;
    return;
  }
  while (pos < size && IsDigit(LoweredText[static_cast<std::size_t>(pos)])) ++pos;
}

void CChordSetFromStringHelper::WriteTrace(std::ostream& out) const {
  out << "CChordSetFromStringHelper: BasicChordCode " << BasicChordCode << ", LoweredText \""
      << LoweredText << '"';
}

void CChordSetFromStringHelper::WriteTraceBrief(std::ostream& out) const { out << LoweredText; }

void CChordSetFromStringHelper::WriteInitializerList(std::ostream& out) const {
  out << "CChordSetFromStringHelper{" << BasicChordCode << ", \"" << LoweredText << "\"}";
}

void SetFromString(const std::string& text, CChordLite& chord, const ChordSetFromStringPrefs& prefs,
                   const CChordNamePrefs& namePrefs) {
  CChordSetFromStringHelper helper;
  helper.SetFromString(text, chord, prefs, namePrefs);
}

std::pair<CChordLite, CScaleLite> ChordAndScaleFromString(const std::string& text,
                                                          const ChordSetFromStringPrefs& prefs,
                                                          const CChordNamePrefs& namePrefs) {
  std::pair<CChordLite, CScaleLite> result;
  // Splitting always gives at least one part, so an empty text is read as an empty symbol.
  const std::size_t first = text.find(';');
  SetFromString(text.substr(0, first), result.first, prefs, namePrefs);
  if (first != std::string::npos) {
    const std::size_t second = text.find(';', first + 1);
    const std::size_t length = second == std::string::npos ? second : second - first - 1;
    harmony::SetFromString(text.substr(first + 1, length), result.second, namePrefs);
  }
  return result;
}

}  // namespace harmony
