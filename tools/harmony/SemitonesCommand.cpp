// harmony semitones MASK...: what the library sees in a semitone mask (bit n = n semitones
// above the root), e.g. `harmony semitones 145 2741 1371`.

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
  return CSemitones(static_cast<std::uint64_t>(
      ReadInteger(text, 0, static_cast<long long>(CSemitones::kOctaveMask), "semitone mask")));
}

std::string Joined(const std::vector<std::string>& words) {
  if (words.empty()) return "-";
  std::string result;
  for (const std::string& word : words) result += (result.empty() ? "" : " ") + word;
  return result;
}

struct TDescription {
  std::vector<std::string> holds;
  std::vector<std::string> options;
};

TDescription Described(const CSemitones& semitones) {
  TDescription description;
  for (const TPredicate& predicate : kPredicates) {
    if ((semitones.*predicate.test)()) description.holds.emplace_back(predicate.name);
  }
  for (const auto& option : kOptions) {
    if (semitones.HasChordOption(option.option)) description.options.emplace_back(option.name);
  }
  return description;
}

void Describe(const CSemitones& semitones, std::ostream& out) {
  const TDescription description = Described(semitones);
  out << semitones.Word() << "  " << semitones.GenericName() << '\n';
  out << "  basic chord  " << BasicChordMemberName(semitones.BasicChord()) << '\n';
  out << "  holds        " << Joined(description.holds) << '\n';
  out << "  options      " << Joined(description.options) << '\n';
  const std::string& scaleName = Semitones::LocalizedNameForScale(semitones);
  if (!scaleName.empty()) out << "  scale        " << scaleName << '\n';
  out << "  json         ";
  semitones.AppendJSONString(out);
  out << '\n';
}

Json DescriptionJson(const CSemitones& semitones) {
  const TDescription description = Described(semitones);
  const std::string& scaleName = Semitones::LocalizedNameForScale(semitones);
  return SemitonesJson(semitones)
      .Add("name", semitones.GenericName())
      .Add("basicChord", BasicChordMemberName(semitones.BasicChord()))
      .Add("holds", Json::ArrayOf(description.holds))
      .Add("options", Json::ArrayOf(description.options))
      .Add("scale", scaleName.empty() ? Json() : Json(scaleName));
}

struct SemitonesOptions {
  std::vector<std::string> masks;
  JsonMode json = JsonMode::kNone;
};

void RunSemitones(const SemitonesOptions& options) {
  std::vector<CSemitones> parsed;
  for (const std::string& text : WithStandardInput(options.masks, TSplit::kWords)) {
    parsed.push_back(ParseMask(text));
  }
  Json array = Json::Array();
  for (std::size_t i = 0; i < parsed.size(); ++i) {
    if (options.json == JsonMode::kNative) {
      PrintNativeJson(parsed[i]);
    } else if (options.json == JsonMode::kStrict) {
      array.Push(DescriptionJson(parsed[i]));
    } else {
      if (i > 0) std::cout << '\n';
      Describe(parsed[i], std::cout);
    }
  }
  if (options.json == JsonMode::kStrict) PrintJson(array);
}

const CommandRegistration kRegistration{
    30, [](CLI::App& app) {
      auto* cmd = app.add_subcommand(
          "semitones", "Describe semitone masks: bit n is the tone n semitones above the root");
      auto options = std::make_shared<SemitonesOptions>();
      cmd->add_option("MASK", options->masks,
                      "Decimal masks 0..4095, e.g. 145 (major triad); - reads standard input")
          ->required();
      AddJsonOption(cmd, options->json, true);
      cmd->callback([options] { RunSemitones(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
