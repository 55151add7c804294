// harmony dialog CHORD: the two rows of buttons a host's chord editor shows for a chord,
// which are available, which are lit and which title they bear; with --press, the chords
// that pressing buttons one after the other produces, so the rules can be explored.

#include <array>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "ChordCommandSupport.h"
#include "ChordSymbolInput.h"
#include "Command.h"
#include "KeyCommandSupport.h"
#include "harmony/dialog/DialogChordHarmonyKnowHow.h"

namespace harmony::tool {

namespace {

using Json = nlohmann::ordered_json;

// The tool's own button texts; a host writes its own.
constexpr std::array<const char*, kDialogChordTypeCount> kTypeButtons = {
    "major", "minor", "augmented", "diminished", "sus4", "sus2", "power", "other"};
constexpr std::array<const char*, kDialogChordOptionCount> kOptionButtons = {
    "flat fifth", "sharp fifth", "sixth",    "minor seventh",  "major seventh",   "flat ninth",
    "ninth",      "sharp ninth", "eleventh", "sharp eleventh", "flat thirteenth", "thirteenth"};

struct DialogOptions {
  std::string symbol;
  std::string mask;
  std::vector<std::string> presses;
  ChordNameOptions names;
  JsonMode json = JsonMode::kNone;
};

enum class TPressState { Toggle, On, Off };

struct TPress {
  bool isType = false;
  int value = 0;
  TPressState state = TPressState::Toggle;
};

const DialogChordHarmonyKnowHow& KnowHow() {
  static const DialogChordHarmonyKnowHow knowHow;
  return knowHow;
}

std::vector<std::string> SplitAtColons(const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ':') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// A whole number of one or two digits, else -1.
int SmallNumber(const std::string& text) {
  if (text.empty() || text.size() > 2) return -1;
  if (text.find_first_not_of("0123456789") != std::string::npos) return -1;
  return std::stoi(text);
}

TPress ReadPress(const std::string& text) {
  const std::vector<std::string> parts = SplitAtColons(text);
  const bool isType = parts[0] == "type";
  const bool shape = (isType && parts.size() == 2) ||
                     (parts[0] == "option" && (parts.size() == 2 || parts.size() == 3));
  TPress press{isType, shape ? SmallNumber(parts[1]) : -1, TPressState::Toggle};
  if (parts.size() == 3) {
    if (parts[2] == "on") press.state = TPressState::On;
    if (parts[2] == "off") press.state = TPressState::Off;
  }
  if (press.value < 0 || (parts.size() == 3 && press.state == TPressState::Toggle)) {
    throw InputError("bad press \"" + text + "\": use type:1..8 or option:1..12[:on|off]");
  }
  const int count = isType ? kDialogChordTypeCount : kDialogChordOptionCount;
  if (press.value < 1 || press.value > count) {
    throw InputError("press \"" + text + "\" is out of range: the " +
                     (isType ? "type buttons are 1..8" : "option buttons are 1..12"));
  }
  return press;
}

CChordLite ReadDialogChord(const DialogOptions& options) {
  CChordLite chord = ReadChordSymbol(WithStandardInput(options.symbol), options.names.ParsePrefs());
  if (options.mask.empty()) return chord;
  const bool digits =
      options.mask.size() <= 4 && options.mask.find_first_not_of("0123456789") == std::string::npos;
  if (!digits || std::stoi(options.mask) > 4095) {
    throw InputError("bad mask \"" + options.mask + "\": use 0..4095 (bit n: n semitones up)");
  }
  chord.Semitones = CSemitones(static_cast<std::uint64_t>(std::stoi(options.mask)));
  return chord;
}

const char* StateText(const TDialogButton& button) {
  if (!button.IsEnabled()) return "disabled";
  return button.IsOn() ? "on" : "off";
}

std::string TypeText(TDialogChordType type) {
  if (type < 1 || type > kDialogChordTypeCount) return std::to_string(type) + " (none)";
  return std::to_string(type) + " (" + kTypeButtons[static_cast<std::size_t>(type - 1)] + ")";
}

Json ButtonJson(const char* key, const TDialogButton& button, const char* text) {
  return Json{{key, button.Value},
              {"button", text},
              {"status", button.Status},
              {"state", StateText(button)},
              {"title", button.TitleID}};
}

void PrintRows(const CChordLite& chord, const DialogOptions& options) {
  const CScaleLite noScale;
  const std::vector<TDialogButton> types = KnowHow().DialogChordTypesFor(chord, noScale);
  const std::vector<TDialogButton> buttons = KnowHow().DialogChordOptionsFor(chord, noScale);
  const TDialogChordType type =
      DialogChordHarmonyKnowHow::_DialogChordTypeForBasicChord(chord.Semitones);
  const std::string name = ChordSymbolName(chord, options.names.NamePrefs());
  if (options.json != JsonMode::kNone) {
    Json json{{"chord", name}, {"mask", chord.Semitones.Word()}, {"type", type}};
    for (const TDialogButton& button : types) {
      json["types"].push_back(ButtonJson("type", button, kTypeButtons[button.Value - 1u]));
    }
    for (const TDialogButton& button : buttons) {
      Json entry = ButtonJson("option", button, kOptionButtons[button.Value - 1u]);
      entry["semitone"] = kDialogChordOptionSemitones[button.Value - 1u];
      json["options"].push_back(entry);
    }
    std::cout << json.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    return;
  }
  std::cout << name << "  mask " << chord.Semitones.Word() << " (" << chord.Semitones.GenericName()
            << "), type " << TypeText(type) << "\n\n";
  KeyTextTable typeRow({"type", "button", "state", "title"});
  for (const TDialogButton& button : types) {
    typeRow.AddRow({std::to_string(button.Value), kTypeButtons[button.Value - 1u],
                    StateText(button), std::to_string(button.TitleID)});
  }
  typeRow.Print(std::cout);
  std::cout << '\n';
  KeyTextTable optionRow({"option", "button", "semitone", "state", "title"}, {true, false, true});
  for (const TDialogButton& button : buttons) {
    optionRow.AddRow({std::to_string(button.Value), kOptionButtons[button.Value - 1u],
                      std::to_string(kDialogChordOptionSemitones[button.Value - 1u]),
                      StateText(button), std::to_string(button.TitleID)});
  }
  optionRow.Print(std::cout);
}

// Presses the button; a press without :on or :off switches it as a click would, and a
// click on a disabled button is refused.
CChordLite Press(const TPress& press, const CChordLite& chord, const std::string& name,
                 std::string& pressText) {
  const CScaleLite noScale;
  if (press.isType) {
    pressText = "type " + TypeText(press.value);
    return KnowHow().SetChordFomChangedDialogChordType(press.value, chord, noScale);
  }
  const std::size_t index = static_cast<std::size_t>(press.value - 1);
  const TDialogButton button = KnowHow().DialogChordOptionsFor(chord, noScale)[index];
  if (press.state == TPressState::Toggle && !button.IsEnabled()) {
    throw InputError("option " + std::to_string(press.value) + " (" + kOptionButtons[index] +
                     ") is disabled on " + name + "; add :on or :off to press it anyway");
  }
  const bool on =
      press.state == TPressState::Toggle ? !button.IsOn() : press.state == TPressState::On;
  pressText = "option " + std::to_string(press.value) + " (" + kOptionButtons[index] + ") " +
              (on ? "on" : "off");
  return KnowHow().SetChordFomChangedDialogChordOption(press.value, on, chord, noScale);
}

void RunPresses(CChordLite chord, const DialogOptions& options) {
  std::vector<TPress> presses;
  for (const std::string& text : options.presses) presses.push_back(ReadPress(text));
  const CChordNamePrefs prefs = options.names.NamePrefs();
  KeyTextTable table({"press", "chord", "mask", "tones"}, {false, false, true});
  Json steps = Json::array();
  const auto add = [&](const std::string& pressText) {
    table.AddRow({pressText, ChordSymbolName(chord, prefs), std::to_string(chord.Semitones.Word()),
                  chord.Semitones.GenericName()});
    steps.push_back(Json{{"press", pressText},
                         {"chord", ChordSymbolName(chord, prefs)},
                         {"mask", chord.Semitones.Word()}});
  };
  add("(start)");
  for (const TPress& press : presses) {
    std::string pressText;
    chord = Press(press, chord, ChordSymbolName(chord, prefs), pressText);
    add(pressText);
  }
  if (options.json != JsonMode::kNone) {
    std::cout << Json{{"steps", steps}}.dump(-1, ' ', false, Json::error_handler_t::replace)
              << '\n';
  } else {
    table.Print(std::cout);
  }
}

const CommandRegistration kRegistration{
    75, [](CLI::App& app) {
      auto options = std::make_shared<DialogOptions>();
      CLI::App* cmd = app.add_subcommand(
          "dialog", "The chord editor's type and option buttons for a chord, and what presses do");
      cmd->add_option("CHORD", options->symbol,
                      "A chord symbol, e.g. Cm7, \"F#dim\", Bb13; - reads standard input")
          ->required();
      cmd->add_option("--press", options->presses,
                      "Press a button: type:1..8, or option:1..12 with :on or :off (without, the "
                      "button switches as a click would). Repeat to press several in turn");
      cmd->add_option("--mask", options->mask,
                      "Replace the chord's tones by this mask (0..4095, bit n = n semitones up)");
      AddJsonOption(cmd, options->json, false);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      options->names.AddTo(cmd);
      cmd->footer(
          "Types: 1 major, 2 minor, 3 augmented, 4 diminished, 5 sus4, 6 sus2, 7 power, 8 other.\n"
          "Options: 1 flat fifth, 2 sharp fifth, 3 sixth, 4 minor seventh, 5 major seventh,\n"
          "6 flat ninth, 7 ninth, 8 sharp ninth, 9 eleventh, 10 sharp eleventh, 11 flat\n"
          "thirteenth, 12 thirteenth. Title 2 is a button's alternative title.");
      cmd->callback([options] {
        const CChordLite chord = ReadDialogChord(*options);
        if (options->presses.empty()) {
          PrintRows(chord, *options);
        } else {
          RunPresses(chord, *options);
        }
      });
    }};

}  // namespace

}  // namespace harmony::tool
