// harmony semitones MASK...: what the library sees in a semitone mask (bit n = n semitones
// above the root), e.g. `harmony semitones 145 2741 1371`.

#include <charconv>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "BasicChordText.h"
#include "Command.h"
#include "harmony/chords/BasicChord.h"
#include "harmony/pitch/Semitones.h"

namespace harmony::tool {

namespace {

struct TPredicate {
  const char* name;
  bool (CSemitones::*test)() const;
};

constexpr TPredicate kPredicates[] = {
    {"IsMajor", &CSemitones::IsMajor},
    {"IsMinor", &CSemitones::IsMinor},
    {"IsMajorOrAug", &CSemitones::IsMajorOrAug},
    {"IsMinorOrDim", &CSemitones::IsMinorOrDim},
    {"IsAug", &CSemitones::IsAug},
    {"IsMajorb5", &CSemitones::IsMajorb5},
    {"IsDim", &CSemitones::IsDim},
    {"IsSus4", &CSemitones::IsSus4},
    {"IsSus2", &CSemitones::IsSus2},
    {"IsDrone5", &CSemitones::IsDrone5},
    {"IsModalScale", &CSemitones::IsModalScale},
    {"IsModalScaleMajor", &CSemitones::IsModalScaleMajor},
    {"IsModalScaleMinor", &CSemitones::IsModalScaleMinor},
};

constexpr struct {
  TChordOption option;
  const char* name;
} kOptions[] = {
    {kChordOption7, "7"}, {kChordOption9, "9"}, {kChordOption11, "11"}, {kChordOption13, "13"}};

CSemitones ParseMask(const std::string& text) {
  std::uint64_t word = 0;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, word);
  if (text.empty() || ec != std::errc{} || ptr != end || word > CSemitones::kOctaveMask) {
    throw InputError("not a semitone mask (a number 0..4095): \"" + text + "\"");
  }
  return CSemitones(word);
}

std::string Joined(const std::vector<std::string>& words) {
  if (words.empty()) return "-";
  std::string result;
  for (const std::string& word : words) result += (result.empty() ? "" : " ") + word;
  return result;
}

void Describe(const CSemitones& semitones, std::ostream& out) {
  std::vector<std::string> holds;
  for (const TPredicate& predicate : kPredicates) {
    if ((semitones.*predicate.test)()) holds.emplace_back(predicate.name);
  }
  std::vector<std::string> options;
  for (const auto& option : kOptions) {
    if (semitones.HasChordOption(option.option)) options.emplace_back(option.name);
  }
  out << semitones.Word() << "  " << semitones.GenericName() << '\n';
  out << "  basic chord  " << BasicChordMemberName(semitones.BasicChord()) << '\n';
  out << "  holds        " << Joined(holds) << '\n';
  out << "  options      " << Joined(options) << '\n';
  const std::string& scaleName = Semitones::LocalizedNameForScale(semitones);
  if (!scaleName.empty()) out << "  scale        " << scaleName << '\n';
  out << "  json         ";
  semitones.AppendJSONString(out);
  out << '\n';
}

const CommandRegistration kRegistration{
    30, [](CLI::App& app) {
      auto* cmd = app.add_subcommand(
          "semitones", "Describe semitone masks: bit n is the tone n semitones above the root");
      auto masks = std::make_shared<std::vector<std::string>>();
      cmd->add_option("MASK", *masks, "Decimal masks 0..4095, e.g. 145 (major triad)")->required();
      cmd->callback([masks] {
        std::vector<CSemitones> parsed;
        for (const std::string& text : *masks) parsed.push_back(ParseMask(text));
        for (std::size_t i = 0; i < parsed.size(); ++i) {
          if (i > 0) std::cout << '\n';
          Describe(parsed[i], std::cout);
        }
      });
    }};

}  // namespace

}  // namespace harmony::tool
