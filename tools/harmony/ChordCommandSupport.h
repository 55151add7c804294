#pragma once
// The naming preferences a user can choose on the command line, shared by the commands that
// read and write chord symbols (chord, rename).

#include <map>
#include <string>

#include <CLI/CLI.hpp>

#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony::tool {

struct ChordNameOptions {
  bool ascii = false;
  bool german = false;
  bool solfege = false;
  bool spoken = false;
  bool simplify = false;
  std::string tensions = "common";

  void AddTo(CLI::App* cmd) {
    cmd->add_flag("--ascii", ascii, "Write # and b instead of the signs \u266F and \u266D");
    cmd->add_flag("--german", german, "German note names (Fis, Es, H)");
    cmd->add_flag("--solfege", solfege, "Solfege note names (Do, Re, Mi)");
    cmd->add_flag("--spoken", spoken, "Spell names out for speech");
    cmd->add_option("--tensions", tensions,
                    "How tensions are written: slash (C7/9), each (C7(9)(13)), common (C7(9,13))")
        ->check(CLI::IsMember({"slash", "each", "common"}));
    cmd->add_flag(
        "--simplify", simplify,
        "Read a slash chord that completes a stacked-third chord as that chord (C/A is Am7)");
  }

  CChordNamePrefs NamePrefs() const {
    CChordNamePrefs prefs = GetCurrentChordNamePrefs();
    if (ascii) prefs.AsciiAccidentals = 1;
    if (german) {
      prefs.GermanAccidentals = 1;
      prefs.BIsH = 1;
    }
    if (solfege) prefs.Solfege = 1;
    if (spoken) prefs.AccessibilitySpoken = 1;
    static const std::map<std::string, int> kTensionStyles = {
        {"slash", 0}, {"each", 1}, {"common", 2}};
    prefs.TensionStyle = kTensionStyles.at(tensions);
    return prefs;
  }

  ChordSetFromStringPrefs ParsePrefs() const {
    return ChordSetFromStringPrefs(simplify ? ChordSetFromStringPrefs::kSimplifyBassNote : 0);
  }
};

// Symbols are read with the letters, accidentals and slash that every lead sheet uses; the
// naming options choose only how names are written.
inline const CChordNamePrefs& ReadingPrefs() { return GetCurrentChordNamePrefs(); }

}  // namespace harmony::tool
