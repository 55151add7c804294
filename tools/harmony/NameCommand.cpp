// harmony name NOTE...: names the chord of played notes, finding its root first, e.g.
// `harmony name E4 G4 C5 Bb5` or `harmony name 64 67 72 82`.

#include <charconv>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Command.h"
#include "PlayedChordSupport.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony::tool {
namespace {

struct TNameOptions {
  std::vector<std::string> notes;
  std::string algo = "net";
  std::string key;
  bool json = false;
};

// Octaves as the MIDI convention counts them: note 60 is C4.
CChordNamePrefs NotePrefs() {
  CChordNamePrefs prefs = GetCurrentChordNamePrefs();
  prefs.OctaveNumbering = 1;
  return prefs;
}

// A MIDI note number 0..127 or a note name with its octave ("Bb5", "C#-1").
CNote ReadNote(const std::string& text) {
  long noteNr = -1;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, noteNr);
  if (!text.empty() && ec == std::errc{} && ptr == end) {
    if (noteNr < 0 || noteNr > 127) throw InputError("note number outside 0..127: " + text);
    return CNote(noteNr, TEnh_n);
  }
  CNote note;
  const bool hasDigit = text.find_first_of("0123456789") != std::string::npos;
  if (!hasDigit || !note.SetFromString(text, NotePrefs()) || note.IsUndef()) {
    throw InputError("not a note (a MIDI number or a name with octave such as Bb5): \"" + text +
                     "\"");
  }
  return note;
}

// "Eb major", "C# minor".
CSignKeyHeavy ReadSignKey(const std::string& text) {
  const CScaleHeavy scale(text);
  if (!scale.IsUndef() && scale.ScaleType() == st_maj) {
    return CSignKeyHeavy(scale.RootKeyEnh(), TSignKeyTypeNoUndef::Major);
  }
  if (!scale.IsUndef() && scale.ScaleType() == st_min) {
    return CSignKeyHeavy(scale.RootKeyEnh(), TSignKeyTypeNoUndef::Minor);
  }
  throw InputError("not a major or minor key: \"" + text + "\"");
}

void Run(const TNameOptions& options) {
  CMySet<CNote> notes;
  for (const std::string& text : options.notes) notes.insert(ReadNote(text));
  const CSignKeyHeavy signKey = options.key.empty() ? CSignKeyHeavy() : ReadSignKey(options.key);
  const CChordHeavy chord = ChordOfPlayedNotes(notes, options.algo == "net");
  if (options.json) {
    CChordLite lite;
    lite.SetFromChordHeavy(chord);
    lite.AppendJSONString(std::cout);
    std::cout << '\n';
    return;
  }
  std::cout << chord.Name() << '\n';
  std::cout << "  notes      " << PlayedNotesText(chord, true) << '\n';
  if (!options.key.empty()) {
    std::cout << "  closeness  " << chord.ClosenessToSignKey(signKey) << " to " << signKey.Name()
              << '\n';
  }
}

const CommandRegistration kRegistration{
    65, [](CLI::App& app) {
      auto* cmd = app.add_subcommand("name", "Find the root of played notes and name the chord");
      auto options = std::make_shared<TNameOptions>();
      cmd->add_option("NOTE", options->notes, "MIDI numbers or names with octave, e.g. E4 64")
          ->required();
      cmd->add_option("--algo", options->algo, "Root detection: net (default) or table")
          ->check(CLI::IsMember({"net", "table"}));
      cmd->add_option("--key", options->key, "Also score the fit to a key, e.g. \"Eb major\"");
      cmd->add_flag("--json", options->json, "Print the chord as the library writes it");
      cmd->callback([options] { Run(*options); });
    }};

}  // namespace

CChordHeavy ChordOfPlayedNotes(const CMySet<CNote>& notes, bool net) {
  CChordHeavy chord(CNote::Undef, notes, CIntvlSet::kDefaultWrapIntvl);
  if (net) chord.SetWrapIntvlToNeuronalNetInputCount();
  chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(net ? kSingleChordAnalysisAlgoNeuronalNet
                                                          : kSingleChordAnalysisAlgoProbTable);
  return chord;
}

std::string PlayedNotesText(const CChordHeavy& chord, bool withFoundRoot) {
  const CChordNamePrefs prefs = NotePrefs();
  std::string text;
  for (const CNote& note : chord.Notes()) {
    const bool foundRoot = note.NoteNr() < 12;
    if (foundRoot && !withFoundRoot) continue;
    if (!text.empty()) text += ' ';
    text += foundRoot ? "(" + note.KeyName(prefs) + ")" : note.KeyName(prefs) + note.OctName(prefs);
  }
  return text;
}
}  // namespace harmony::tool
