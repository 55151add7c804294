// harmony chord SYMBOL...: reads chord symbols as a person types them and shows what the library
// understood: root, bass, tones, the notes it would voice and the name it writes back.
// harmony rename SYMBOL...: the names alone, to normalise the symbols of a lead sheet.

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ChordCommandSupport.h"
#include "Command.h"
#include "KeyCommandSupport.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony::tool {

namespace {

struct ChordOptions {
  std::vector<std::string> symbols;
  ChordNameOptions names;
  bool json = false;
};

std::string KeyText(const CKeyEnh& key, const CChordNamePrefs& prefs) {
  if (key.KeyNr == kKeyNrUndef) return "-";
  return KeyNrAndEnhToName(key.KeyNr, key.Enh, prefs) + " (" + std::to_string(key.KeyNr) + ")";
}

// The heavy chord's notes with scientific octaves (middle C is C4); the bass stands in its own
// slot below the chord: "bass E, C4 E4 G4 B♭4".
std::string NotesText(const CChordHeavy& heavy, CChordNamePrefs prefs) {
  prefs.OctaveNumbering = 1;
  // Spelled as the chord's own scale spells them: E♭m7 is E♭ G♭ B♭ D♭, not E♭ F♯ B♭ C♯.
  const CScaleHeavy scale = CScaleHeavy().ConstructScaleForChord(heavy);
  std::string bass, chord;
  for (CNote note : heavy.Notes()) {
    if (scale.EnhForKeyNr(note.KeyNr()) != TEnh_Undef) note.AdjustEnhToScale(scale);
    if (note.NoteNr() < 12) {
      bass = "bass " + note.KeyName(prefs) + ", ";
    } else {
      chord += (chord.empty() ? "" : " ") + note.KeyName(prefs) + note.OctName(prefs);
    }
  }
  return chord.empty() ? "-" : bass + chord;
}

std::string IntervalsText(const CChordHeavy& heavy) {
  std::string text;
  for (int intvl : heavy.IntvlSet()) text += (text.empty() ? "" : " ") + std::to_string(intvl);
  return text.empty() ? "-" : text;
}

void PrintChord(const std::string& symbol, const CChordLite& chord, const CChordNamePrefs& prefs) {
  const CChordHeavy heavy = chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl);
  const bool undefined = chord.IsUndef() && !chord.IsNoChordYield() && !chord.IsNoChordForce();
  std::cout << symbol << '\n'
            << "  name       " << (undefined ? "(undefined)" : heavy.Name(prefs)) << '\n'
            << "  root       " << KeyText(chord.RootKeyEnh, prefs) << '\n'
            << "  bass       " << KeyText(chord.BassKeyEnh, prefs) << '\n'
            << "  mask       " << chord.Semitones.Word() << "  " << chord.Semitones.GenericName()
            << '\n'
            << "  intervals  " << IntervalsText(heavy) << '\n'
            << "  notes      " << NotesText(heavy, prefs) << '\n';
}

void RunChord(const ChordOptions& options) {
  const CChordNamePrefs prefs = options.names.NamePrefs();
  bool first = true;
  for (const std::string& symbol : options.symbols) {
    const CChordLite chord(symbol, options.names.ParsePrefs(), ReadingPrefs());
    if (options.json) {
      chord.AppendJSONString(std::cout);
      std::cout << '\n';
      continue;
    }
    if (!first) std::cout << '\n';
    first = false;
    PrintChord(symbol, chord, prefs);
  }
}

void RunRename(const ChordOptions& options) {
  const CChordNamePrefs prefs = options.names.NamePrefs();
  KeyTextTable table({"symbol", "name"});
  for (const std::string& symbol : options.symbols) {
    const CChordLite chord(symbol, options.names.ParsePrefs(), ReadingPrefs());
    table.AddRow({symbol, chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs)});
  }
  table.Print(std::cout);
}

const CommandRegistration kChord{
    50, [](CLI::App& app) {
      auto options = std::make_shared<ChordOptions>();
      CLI::App* cmd = app.add_subcommand(
          "chord", "Read chord symbols: root, bass, tones, notes and the name written back");
      cmd->add_option("SYMBOL", options->symbols,
                      "Chord symbols, e.g. C#m7b5/G# Bbmaj7 \"F 6 add9\"")
          ->required();
      cmd->add_flag("--json", options->json, "Print each chord's JSON, one line per symbol");
      options->names.AddTo(cmd);
      cmd->footer("A symbol never fails: what can't be read is stepped over.");
      cmd->callback([options] { RunChord(*options); });
    }};

const CommandRegistration kRename{
    55, [](CLI::App& app) {
      auto options = std::make_shared<ChordOptions>();
      CLI::App* cmd = app.add_subcommand(
          "rename", "Read chord symbols and write them back as the library names them");
      cmd->add_option("SYMBOL", options->symbols, "Chord symbols")->required();
      options->names.AddTo(cmd);
      cmd->callback([options] { RunRename(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
