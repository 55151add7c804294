#include "harmony/pitch/SetFromStringHelper.h"

#include <algorithm>
#include <cctype>

#include "platform/TraceOut.h"

namespace harmony {

namespace SetFromStringHelper {

namespace {

std::size_t NonBlankCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return c != ' '; }));
}

bool MatchesAt(TSpaces spaces, std::string_view keyword, std::string_view text, int pos) {
  if (pos < 0 || static_cast<std::size_t>(pos) > text.size()) return false;
  if (!text.substr(static_cast<std::size_t>(pos)).starts_with(keyword)) return false;
  return spaces != TSpaces_WholeRest || !_RemainingLengthWithoutSpacesDiffers(keyword, text, pos);
}

template <class Keywords>
std::pair<bool, int> Compare(TSpaces spaces, const Keywords& keywords, std::string_view text,
                             int pos) {
  for (const auto& keyword : keywords) {
    if (MatchesAt(spaces, keyword, text, pos)) {
      return {true, static_cast<int>(std::string_view(keyword).size())};
    }
  }
  return {false, 0};
}

template <class Keywords>
std::pair<bool, int> CompareAndAdvance(TSpaces spaces, const Keywords& keywords,
                                       std::string_view text, int& pos) {
  const std::pair<bool, int> result = Compare(spaces, keywords, text, pos);
  if (result.first) pos += result.second;
  return result;
}

}  // namespace

void SkipLeadingBlanks(std::string_view text, int& pos) {
  if (pos < 0) return;
  while (static_cast<std::size_t>(pos) < text.size() &&
         text[static_cast<std::size_t>(pos)] == ' ') {
    ++pos;
  }
}

std::pair<bool, int> CompareLowercaseStrs(TSpaces spaces, const TKeywords& keywords,
                                          std::string_view text, int pos) {
  return Compare(spaces, keywords, text, pos);
}

std::pair<bool, int> CompareLowercaseStrs(TSpaces spaces,
                                          std::span<const std::string_view> keywords,
                                          std::string_view text, int pos) {
  return Compare(spaces, keywords, text, pos);
}

std::pair<bool, int> CompareLowercaseStrsAndOnMatchAdvanceStringPos(TSpaces spaces,
                                                                    const TKeywords& keywords,
                                                                    std::string_view text,
                                                                    int& pos) {
  return CompareAndAdvance(spaces, keywords, text, pos);
}

std::pair<bool, int> CompareLowercaseStrsAndOnMatchAdvanceStringPos(
    TSpaces spaces, std::span<const std::string_view> keywords, std::string_view text, int& pos) {
  return CompareAndAdvance(spaces, keywords, text, pos);
}

std::pair<bool, int> CompareStrs(TSpaces spaces, const TKeywords& keywords, std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return Compare(spaces, keywords, lowered, 0);
}

bool _RemainingLengthWithoutSpacesDiffers(std::string_view keyword, std::string_view text,
                                          int pos) {
  if (pos < 0) return true;
  const std::size_t start = std::min(static_cast<std::size_t>(pos), text.size());
  return NonBlankCount(text.substr(start)) != NonBlankCount(keyword);
}

bool _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(const TKeywords& keywords) {
  const std::vector<std::string_view> views(keywords.begin(), keywords.end());
  return _AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(
      std::span<const std::string_view>(views));
}

}  // namespace SetFromStringHelper

std::pair<bool, int> CKeywordsAndName::MatchesKeywords(SetFromStringHelper::TSpaces spaces,
                                                       std::string_view text, int pos) const {
  return SetFromStringHelper::CompareLowercaseStrs(spaces, Keywords, text, pos);
}

void CKeywordsAndName::WriteTrace(std::ostream& out) const {
  out << "CKeywordsAndName: " << Name << " ";
  platform::TraceOutContainerBegin(out);
  for (std::size_t i = 0; i < Keywords.size(); ++i) {
    out << (i == 0 ? "\"" : ", \"") << Keywords[i] << '"';
  }
  platform::TraceOutContainerEnd(out);
}

void CKeywordsAndName::WriteTraceBrief(std::ostream& out) const { out << Name; }

void CKeywordsAndName::WriteInitializerList(std::ostream& out) const {
  out << "CKeywordsAndName({";
  for (std::size_t i = 0; i < Keywords.size(); ++i) {
    out << (i == 0 ? "\"" : ", \"") << Keywords[i] << '"';
  }
  out << "}, \"" << Name << "\")";
}

const CKeywordsAndName* CKeywordsAndNames::FindFirstMatching(SetFromStringHelper::TSpaces spaces,
                                                             std::string_view text, int pos,
                                                             int* matchLength) const {
  if (matchLength != nullptr) *matchLength = 0;
  for (const CKeywordsAndName& entry : *this) {
    const std::pair<bool, int> match = entry.MatchesKeywords(spaces, text, pos);
    if (match.first) {
      if (matchLength != nullptr) *matchLength = match.second;
      return &entry;
    }
  }
  return nullptr;
}

void CKeywordsAndNames::WriteTrace(std::ostream& out) const {
  out << "CKeywordsAndNames: ";
  platform::TraceOutContainerBeginEndl(out);
  for (const CKeywordsAndName& entry : *this) {
    entry.WriteTrace(out);
    platform::TraceOutContainerEndl(out);
  }
  platform::TraceOutContainerEndEndl(out);
}

void CKeywordsAndNames::WriteTraceBrief(std::ostream& out) const {
  for (std::size_t i = 0; i < size(); ++i) {
    if (i > 0) out << ", ";
    (*this)[i].WriteTraceBrief(out);
  }
}

void CKeywordsAndNames::WriteInitializerList(std::ostream& out) const {
  out << "CKeywordsAndNames{";
  for (std::size_t i = 0; i < size(); ++i) {
    if (i > 0) out << ", ";
    (*this)[i].WriteInitializerList(out);
  }
  out << '}';
}

}  // namespace harmony
