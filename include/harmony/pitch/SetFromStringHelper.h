#pragma once
// Keyword matching shared by the readers of keys, chord symbols and scale names.

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "harmony/Trace.h"

namespace harmony {

namespace SetFromStringHelper {

enum TSpaces : int {
  // The keyword must begin the text at the position; anything may follow.
  TSpaces_Prefix = 0,
  // The keyword must use up the rest of the text, blanks aside.
  TSpaces_WholeRest = 1,
};

using TKeywords = std::vector<std::string>;

// Moves `pos` over blanks (code 32 only).
void SkipLeadingBlanks(std::string_view text, int& pos);

// Tries the keywords in order at `pos`; the first that matches gives (true, its length).
// Keywords and text are compared byte for byte: callers lower the text first. A negative
// position never matches.
std::pair<bool, int> CompareLowercaseStrs(TSpaces spaces, const TKeywords& keywords,
                                          std::string_view text, int pos);
std::pair<bool, int> CompareLowercaseStrs(TSpaces spaces,
                                          std::span<const std::string_view> keywords,
                                          std::string_view text, int pos);
// The same; on a match `pos` moves behind the keyword.
std::pair<bool, int> CompareLowercaseStrsAndOnMatchAdvanceStringPos(TSpaces spaces,
                                                                    const TKeywords& keywords,
                                                                    std::string_view text,
                                                                    int& pos);
std::pair<bool, int> CompareLowercaseStrsAndOnMatchAdvanceStringPos(
    TSpaces spaces, std::span<const std::string_view> keywords, std::string_view text, int& pos);

// Lowers a copy of the text (C locale) and compares at position 0.
std::pair<bool, int> CompareStrs(TSpaces spaces, const TKeywords& keywords, std::string_view text);

// Whether the non-blank characters left in the text from `pos` differ in number from those
// of the keyword; true for a negative position.
bool _RemainingLengthWithoutSpacesDiffers(std::string_view keyword, std::string_view text, int pos);

// The development check of a keyword list for prefix matching: no keyword is empty, none
// is longer than the one before it (so a spelling always comes before its own prefix), and
// none holds a capital ASCII letter (the text is lowered before matching). True when the
// list passes; constexpr so that constant lists are checked by the compiler.
constexpr bool _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(
    std::span<const std::string_view> keywords) {
  std::size_t previousSize = 0;
  for (std::size_t i = 0; i < keywords.size(); ++i) {
    const std::string_view keyword = keywords[i];
    if (keyword.empty() || (i > 0 && keyword.size() > previousSize)) return false;
    for (const char c : keyword) {
      if (c >= 'A' && c <= 'Z') return false;
    }
    previousSize = keyword.size();
  }
  return true;
}
bool _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(const TKeywords& keywords);

}  // namespace SetFromStringHelper

// A display name with the keywords that read as it.
class CKeywordsAndName : public TraceFamily<CKeywordsAndName> {
 public:
  SetFromStringHelper::TKeywords Keywords;
  std::string Name;

  CKeywordsAndName() = default;
  CKeywordsAndName(SetFromStringHelper::TKeywords keywords, std::string name)
      : Keywords(std::move(keywords)), Name(std::move(name)) {}

  std::pair<bool, int> MatchesKeywords(SetFromStringHelper::TSpaces spaces, std::string_view text,
                                       int pos) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CKeywordsAndNames : public std::vector<CKeywordsAndName>,
                          public TraceFamily<CKeywordsAndNames> {
 public:
  using std::vector<CKeywordsAndName>::vector;

  // The first pair whose keywords match at `pos`, or nullptr; `matchLength` (if given)
  // receives the length of the matching keyword, 0 without a match.
  const CKeywordsAndName* FindFirstMatching(SetFromStringHelper::TSpaces spaces,
                                            std::string_view text, int pos,
                                            int* matchLength = nullptr) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
