// harmony name NOTE...: names the chord of played notes, finding its root first, e.g.
// `harmony name E4 G4 C5 Bb5` or `harmony name 64 67 72 82`.

#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
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
  JsonMode json = JsonMode::kNone;
};

// Octaves as the MIDI convention counts them: note 60 is C4.
CChordNamePrefs NotePrefs() {
  CChordNamePrefs prefs = GetCurrentChordNamePrefs();
  prefs.OctaveNumbering = 1;
  return prefs;
}

// A chord keeps octave -1 (notes 0..11) for its root, so played notes that low are named an
// octave higher; the notes are shown where they were played.
long OctaveShift(const CMySet<CNote>& notes) {
  if (notes.empty() || notes.begin()->NoteNr() >= 12) return 0;
  if (std::prev(notes.end())->NoteNr() + 12 > 127) {
    throw InputError("notes from octave -1 up to the top octave cannot be named together");
  }
  return 12;
}

Json PlayedChordJson(const CChordHeavy& chord, long shift, const std::optional<CSignKeyLite>& key) {
  const CChordNamePrefs prefs = NotePrefs();
  const CChordLite lite = PlayedChordSymbol(chord);
  Json notes = Json::Array();
  for (const CNote& note : chord.Notes()) {
    if (note.NoteNr() >= 12) notes.Push(NoteJson(CNote(note.NoteNr() - shift, note.Enh()), prefs));
  }
  Json json = ChordJson(lite, prefs).Add("notes", std::move(notes));
  if (!key) return json;
  return json.Add("closeness", Json::Object()
                                   .Add("key", SignKeyJson(*key, prefs))
                                   .Add("value", chord.ClosenessToSignKey(key->ToSignKeyHeavy())));
}

void Run(const TNameOptions& options) {
  CMySet<CNote> played;
  for (const std::string& text : WithStandardInput(options.notes, TSplit::kWords)) {
    played.insert(ReadNote(text));
  }
  const long shift = OctaveShift(played);
  CMySet<CNote> notes;
  for (const CNote& note : played) notes.insert(CNote(note.NoteNr() + shift, note.Enh()));
  std::optional<CSignKeyLite> key;
  if (!options.key.empty()) key = ReadSignKey(options.key);
  const CChordHeavy chord = ChordOfPlayedNotes(notes, options.algo == "net");
  if (options.json == JsonMode::kNative) return PrintNativeJson(PlayedChordSymbol(chord));
  if (options.json == JsonMode::kStrict) return PrintJson(PlayedChordJson(chord, shift, key));
  std::cout << PlayedChordName(chord) << '\n';
  std::cout << "  notes      " << PlayedNotesText(chord, true, shift) << '\n';
  if (key) {
    const CSignKeyHeavy signKey = key->ToSignKeyHeavy();
    std::cout << "  closeness  " << chord.ClosenessToSignKey(signKey) << " to " << signKey.Name()
              << '\n';
  }
}

const CommandRegistration kRegistration{
    65, [](CLI::App& app) {
      auto* cmd = app.add_subcommand("name", "Find the root of played notes and name the chord");
      auto options = std::make_shared<TNameOptions>();
      cmd->add_option("NOTE", options->notes,
                      "MIDI numbers or names with octave, e.g. E4 64 (- reads standard input)")
          ->required();
      cmd->add_option("--algo", options->algo, "Root detection: net (default) or table")
          ->check(CLI::IsMember({"net", "table"}));
      cmd->add_option("--key", options->key, "Also score the fit to a key, e.g. \"Eb major\"");
      AddLenientFlag(cmd);
      AddJsonOption(cmd, options->json, true);
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

CChordLite PlayedChordSymbol(const CChordHeavy& chord) {
  CChordLite symbol;
  symbol.SetFromChordHeavy(chord);
  for (const CNote& note : chord.Notes()) {
    if (note.NoteNr() < 12) continue;  // the slot of the found root
    if (note.KeyNr() != symbol.RootKeyEnh.KeyNr) symbol.BassKeyEnh = note.KeyEnh();
    break;
  }
  return symbol;
}

std::string PlayedChordName(const CChordHeavy& chord) {
  return PlayedChordSymbol(chord).ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name();
}

std::string PlayedNotesText(const CChordHeavy& chord, bool withFoundRoot, long octaveShift) {
  const CChordNamePrefs prefs = NotePrefs();
  std::string text;
  for (const CNote& note : chord.Notes()) {
    const bool foundRoot = note.NoteNr() < 12;
    if (foundRoot && !withFoundRoot) continue;
    if (!text.empty()) text += ' ';
    const CNote played(note.NoteNr() - octaveShift, note.Enh());
    text +=
        foundRoot ? "(" + note.KeyName(prefs) + ")" : played.KeyName(prefs) + played.OctName(prefs);
  }
  return text;
}

}  // namespace harmony::tool
