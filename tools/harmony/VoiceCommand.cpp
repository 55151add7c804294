// harmony voice SYMBOL...: chord symbols as the MIDI notes an accompaniment plays, voiced
// around the comping range, with their spelled names. --root-below adds the root an octave
// lower; --lead moves the first voicing toward a note and every later one toward the top of
// the voicing before it, so the top voice moves in small steps. --midi writes the voicings
// as a standard MIDI file, one chord after the other, so they can be heard.

#include <array>
#include <cctype>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Command.h"
#include "KeyCommandSupport.h"
#include "ChordMidi.h"
#include "SpellingSupport.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/Voicing.h"
#include "harmony/pitch/Note.h"

namespace harmony::tool {

namespace {

struct VoiceOptions {
  std::vector<std::string> symbols;
  bool rootBelow = false;
  std::string lead;
  bool ascii = false;
  JsonMode json = JsonMode::kNone;
  std::string midi;
  int beats = 4;
};

CChordLite ReadChord(const std::string& text, const CChordNamePrefs& prefs) {
  const CChordLite chord = ReadChordSymbol(text, ChordSetFromStringPrefs(), prefs);
  if (chord.IsUndef() && !chord.IsNoChordYield() && !chord.IsNoChordForce()) {
    throw InputError("\"" + text +
                     "\" is not a chord symbol (a root A..H, then e.g. m7, 7#9, maj9, /E)");
  }
  return chord;
}

// Letter steps above the root for each place a voicing puts a tone, from an octave below
// the root (-12) to the thirteenth (21): seconds and ninths one step, thirds two, fourths
// and elevenths three, fifths four, sixths and thirteenths five, sevenths six. -1 marks the
// places no chord tone takes (only a slash bass, which keeps its own spelling).
constexpr std::array<int, 34> kLetterSteps{
    0,  -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,  // below the root
    0,  1,  1,  2,  2,  3,  4,  4,  4,  5,  6,  6,   // 0..11
    -1, 1,  1,  1,  -1, 3,  -1, -1, 5,  5,           // 12..21
};
// The note spelled as the tone it is above the root: the minor third over a major third of
// C7#9 is D sharp, the seventh of a diminished seventh chord is a double flat.
CNote SpelledNote(const CChordLite& chord, long root, unsigned char noteNr) {
  CNote note;
  note.SetNoteNrAndMakeSensefulEnhAssumingCMajor(noteNr);
  const long place = noteNr - root;
  if (noteNr % 12 == chord.BassKeyEnh.KeyNr && place < 0) {
    note.SetNoteNrAndEnh(noteNr, chord.BassKeyEnh.Enh);
    return note;
  }
  const int rootLetter = LetterOfKey(chord.RootKeyEnh);
  if (place < -12 || place > 21 || rootLetter < 0) return note;
  int steps = kLetterSteps[static_cast<std::size_t>(place + 12)];
  if (place == 9 && chord.Semitones.IsDim() && !chord.Semitones.HasIntvl(10)) steps = 6;
  if (steps < 0) return note;
  if (const auto key = KeyOnLetter(rootLetter + steps, static_cast<int>(noteNr % 12))) {
    note.SetNoteNrAndEnh(noteNr, key->Enh);
  }
  return note;
}

// The spelling of each key of the voicing, fixed before a lead moves notes by octaves.
std::array<TEnh, 12> KeySpellings(const CChordLite& chord,
                                  const std::vector<unsigned char>& voicing) {
  std::array<TEnh, 12> enhs;
  enhs.fill(TEnh_Undef);
  const long root = ToCompingRangeNoteNr(chord.RootKeyEnh.KeyNr);
  for (const unsigned char noteNr : voicing) {
    enhs[noteNr % 12] = SpelledNote(chord, root, noteNr).Enh();
  }
  return enhs;
}

std::vector<CNote> SpelledNotes(const std::array<TEnh, 12>& enhs,
                                const std::vector<unsigned char>& notes) {
  std::vector<CNote> spelled;
  for (const unsigned char noteNr : notes) {
    CNote note;
    note.SetNoteNrAndEnh(noteNr, enhs[noteNr % 12]);
    spelled.push_back(note);
  }
  return spelled;
}

std::string NoteNames(const std::array<TEnh, 12>& enhs, const std::vector<unsigned char>& notes,
                      const CChordNamePrefs& prefs) {
  std::string names;
  for (const CNote& note : SpelledNotes(enhs, notes)) {
    if (!names.empty()) names += ' ';
    names += note.KeyName(prefs) + note.OctName(prefs);
  }
  return names;
}

std::string NumbersText(const std::vector<unsigned char>& notes) {
  std::string text;
  for (const unsigned char noteNr : notes) {
    if (!text.empty()) text += ' ';
    text += std::to_string(noteNr);
  }
  return text;
}

void RunVoice(const VoiceOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  prefs.OctaveNumbering = 1;  // scientific octaves: note 60 is C4, as in the other commands
  const std::vector<std::string> symbols = WithStandardInput(options.symbols, TSplit::kWords);
  std::vector<CChordLite> chords;
  for (const std::string& text : symbols) chords.push_back(ReadChord(text, prefs));
  const bool lead = !options.lead.empty();
  long target = lead ? ReadNote(options.lead).NoteNr() : 0;
  TChordVoicingPrefs voicingPrefs;
  voicingPrefs.AddRootOctaveBelow = options.rootBelow ? 1 : 0;

  TMidiSong song = ChordSong();

  KeyTextTable table({"chord", "notes", "names"});
  Json array = Json::Array();
  for (std::size_t i = 0; i < chords.size(); ++i) {
    std::vector<unsigned char> notes = chords[i].VoicingNotesNrs(voicingPrefs);
    Json voiced =
        Json::Object().Add("symbol", symbols[i]).Add("chord", ChordJson(chords[i], prefs));
    if (notes.empty()) {  // no chord: silence for its beats
      table.AddRow({symbols[i], "-", "no chord"});
      array.Push(voiced.Add("notes", Json::Array()));
      continue;
    }
    const std::array<TEnh, 12> enhs = KeySpellings(chords[i], notes);
    if (lead) {
      TransposeChordBasedOnPreviousChords(notes, static_cast<int>(target));
      target = notes.back();
    }
    Json spelled = Json::Array();
    for (const CNote& note : SpelledNotes(enhs, notes)) spelled.Push(NoteJson(note, prefs));
    array.Push(voiced.Add("notes", std::move(spelled)));
    table.AddRow({symbols[i], NumbersText(notes), NoteNames(enhs, notes, prefs)});
    AddChordNotes(song, notes, static_cast<double>(i * options.beats), options.beats);
  }
  std::string midiError;
  if (!options.midi.empty() && !WriteMidiFile(song, options.midi, midiError)) {
    throw InputError(midiError);
  }
  if (options.json != JsonMode::kNone) return PrintJson(array);
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    70, [](CLI::App& app) {
      auto options = std::make_shared<VoiceOptions>();
      CLI::App* cmd = app.add_subcommand(
          "voice", "Voice chord symbols as MIDI notes around the comping range (53..65)");
      cmd->add_option("SYMBOL", options->symbols,
                      "Chord symbols, e.g. C7#9 Dm9 F/C (- reads standard input)")
          ->required();
      cmd->add_flag("--root-below", options->rootBelow, "Add the root an octave lower");
      cmd->add_option(
          "--lead", options->lead,
          "Move the first voicing's top toward this note (number or name, e.g. 60 or C4)"
          " and each later one toward the top of the one before");
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      AddJsonOption(cmd, options->json, false);
      cmd->add_option("--midi", options->midi,
                      "Write the voicings as a standard MIDI file, one chord after the other");
      AddIntegerOption(cmd, "--beats", options->beats, 1, 64,
                       "Quarter notes each chord lasts in the MIDI file (default 4)");
      cmd->footer(
          "Note 60 is middle C, written C4. The root sits in 53..65 with the chord tones above it; "
          "ninths,\n"
          "elevenths and thirteenths go up an octave where the chord makes them tensions, and\n"
          "a slash bass goes below the root.");
      cmd->callback([options] { RunVoice(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
