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
  JsonMode json = JsonMode::kNone;
};

std::vector<CChordLite> ReadChords(const ChordOptions& options) {
  std::vector<CChordLite> chords;
  for (const std::string& symbol : options.symbols) {
    const CChordLite* previous = chords.empty() ? nullptr : &chords.back();
    chords.push_back(ReadChordSymbol(symbol, options.names.ParsePrefs(), ReadingPrefs(), previous));
  }
  return chords;
}

std::string KeyText(const CKeyEnh& key, const CChordNamePrefs& prefs) {
  if (key.KeyNr == kKeyNrUndef) return "-";
  return KeyNrAndEnhToName(key.KeyNr, key.Enh, prefs) + " (" + std::to_string(key.KeyNr) + ")";
}

// The heavy chord's notes, spelled as the chord's own scale spells them: E♭m7 is E♭ G♭ B♭ D♭,
// not E♭ F♯ B♭ C♯. The bass stands in its own slot (octave -1) below the chord.
std::vector<CNote> SpelledNotes(const CChordHeavy& heavy) {
  const CScaleHeavy scale = CScaleHeavy().ConstructScaleForChord(heavy);
  std::vector<CNote> notes;
  for (CNote note : heavy.Notes()) {
    if (scale.EnhForKeyNr(note.KeyNr()) != TEnh_Undef) note.AdjustEnhToScale(scale);
    notes.push_back(note);
  }
  return notes;
}

// With scientific octaves (middle C is C4): "bass E, C4 E4 G4 B♭4".
std::string NotesText(const CChordHeavy& heavy, CChordNamePrefs prefs) {
  prefs.OctaveNumbering = 1;
  std::string bass, chord;
  for (const CNote& note : SpelledNotes(heavy)) {
    if (note.NoteNr() < 12) {
      bass = "bass " + note.KeyName(prefs) + ", ";
    } else {
      chord += (chord.empty() ? "" : " ") + note.KeyName(prefs) + note.OctName(prefs);
    }
  }
  return chord.empty() ? "-" : bass + chord;
}

Json ChordDetailsJson(const std::string& symbol, const CChordLite& chord,
                      const CChordNamePrefs& prefs) {
  const CChordHeavy heavy = chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl);
  Json intervals = Json::Array();
  for (int intvl : heavy.IntvlSet()) intervals.Push(intvl);
  Json notes = Json::Array();
  for (const CNote& note : SpelledNotes(heavy)) {
    if (note.NoteNr() >= 12) notes.Push(NoteJson(note, prefs));
  }
  return Json::Object()
      .Add("symbol", symbol)
      .Add("chord", ChordJson(chord, prefs))
      .Add("intervals", std::move(intervals))
      .Add("notes", std::move(notes))
      .Add("reader", SymbolReaderName());
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
            << "  notes      " << NotesText(heavy, prefs) << '\n'
            << "  reader     " << SymbolReaderName() << '\n';
}

void RunChord(const ChordOptions& options) {
  const CChordNamePrefs prefs = options.names.NamePrefs();
  const std::vector<CChordLite> chords = ReadChords(options);
  Json array = Json::Array();
  for (std::size_t i = 0; i < chords.size(); ++i) {
    if (options.json == JsonMode::kNative) {
      PrintNativeJson(chords[i]);
    } else if (options.json == JsonMode::kStrict) {
      array.Push(ChordDetailsJson(options.symbols[i], chords[i], prefs));
    } else {
      if (i > 0) std::cout << '\n';
      PrintChord(options.symbols[i], chords[i], prefs);
    }
  }
  if (options.json == JsonMode::kStrict) PrintJson(array);
}

void RunRename(const ChordOptions& options) {
  const CChordNamePrefs prefs = options.names.NamePrefs();
  const std::vector<CChordLite> chords = ReadChords(options);
  KeyTextTable table({"symbol", "name"});
  Json array = Json::Array();
  for (std::size_t i = 0; i < chords.size(); ++i) {
    const std::string name = chords[i].ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs);
    table.AddRow({options.symbols[i], name});
    array.Push(Json::Object().Add("symbol", options.symbols[i]).Add("name", name));
  }
  if (options.json != JsonMode::kNone) return PrintJson(array);
  table.Print(std::cout);
}

// Symbols from the command line, or with "-" the words of standard input.
void TakeStandardInput(ChordOptions& options) {
  options.symbols = WithStandardInput(options.symbols, TSplit::kWords);
}

const CommandRegistration kChord{
    50, [](CLI::App& app) {
      auto options = std::make_shared<ChordOptions>();
      CLI::App* cmd = app.add_subcommand(
          "chord", "Read chord symbols: root, bass, tones, notes and the name written back");
      cmd->add_option("SYMBOL", options->symbols,
                      "Chord symbols, e.g. C#m7b5/G# Bbmaj7 \"F 6 add9\" (- reads standard input)")
          ->required();
      AddJsonOption(cmd, options->json, true);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      options->names.AddTo(cmd);
      cmd->footer(
          "Symbols are read as lead sheets write them (C-7, C^7, Cø, C+, Es7, Sol7/Si, N.C., %).\n"
          "A symbol with characters the reader does not understand is refused; --lenient keeps\n"
          "what was read before them. --parser seed reads with the library's forgiving parser,\n"
          "which steps over them (C+ is then plain C).");
      cmd->callback([options] {
        TakeStandardInput(*options);
        RunChord(*options);
      });
    }};

const CommandRegistration kRename{
    55, [](CLI::App& app) {
      auto options = std::make_shared<ChordOptions>();
      CLI::App* cmd = app.add_subcommand(
          "rename", "Read chord symbols and write them back as the library names them");
      cmd->add_option("SYMBOL", options->symbols, "Chord symbols (- reads standard input)")
          ->required();
      AddJsonOption(cmd, options->json, false);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      options->names.AddTo(cmd);
      cmd->callback([options] {
        TakeStandardInput(*options);
        RunRename(*options);
      });
    }};

}  // namespace

}  // namespace harmony::tool
