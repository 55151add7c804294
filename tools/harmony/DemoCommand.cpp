// harmony demo: a short tour of what the library does, on built-in examples.
// Each section shows one road through the library with real results.

#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "../make-factory-grids/GridFromFrets.h"
#include "AnalyseSupport.h"
#include "BasicChordText.h"
#include "Command.h"
#include "GridDiagram.h"
#include "KeyCommandSupport.h"
#include "MidiFile.h"
#include "MusicXmlEventPrinter.h"
#include "MarkovSupport.h"
#include "MusicXmlInput.h"
#include "PlayedChordSupport.h"
#include "ScaleCommandSupport.h"
#include "ScalesSupport.h"
#include "harmony/DataFolder.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleNameReader.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/chords/SignKeyInEv.h"
#include "harmony/chords/Voicing.h"
#include "harmony/guitar/GChHarmony.h"
#include "harmony/musicxml/MusicXmlParser.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/Semitones.h"
#include "platform/Random.h"

namespace harmony::tool {

namespace {

void Heading(const std::string& title) { std::cout << "\n== " << title << " ==\n"; }

// German names: syllables for the accidentals and H for B natural.
CChordNamePrefs GermanPrefs() {
  CChordNamePrefs german = GetCurrentChordNamePrefs();
  german.GermanAccidentals = 1;
  german.BIsH = 1;
  return german;
}

// Keys as a person types them, in the spellings and languages a score may use.
void DemoKeys() {
  Heading("Keys read from text and named in several languages");
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  const CChordNamePrefs german = GermanPrefs();
  CChordNamePrefs solfege = prefs;
  solfege.Solfege = 1;
  KeyTextTable table({"text", "key", "name", "German", "solfege"}, {false, true});
  for (const char* text : {"C", "F#", "Bb", "Cis", "Ebb", "H", "Gx"}) {
    CKeyEnh key;
    key.SetFromString(text, nullptr, prefs);
    table.AddRow({text, std::to_string(key.KeyNr), KeyNrAndEnhToName(key.KeyNr, key.Enh, prefs),
                  KeyNrAndEnhToName(key.KeyNr, key.Enh, german),
                  KeyNrAndEnhToName(key.KeyNr, key.Enh, solfege)});
  }
  table.Print(std::cout);
}

// Transposition keeps the written letter distance: up a fourth from C gives F, then B flat,
// E flat..., the flat side of the circle of fifths, spelled as a musician writes it.
void DemoCircleOfFifths() {
  Heading("Around the circle of fifths by transposition");
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  for (int step : {7, -7}) {
    CKeyEnh key(0, TEnh_n);
    std::cout << (step > 0 ? "up a fifth:   " : "down a fifth: ");
    for (int i = 0; i < 8; ++i) {
      std::cout << KeyNrAndEnhToName(key.KeyNr, key.Enh, prefs) << (i < 7 ? " " : "\n");
      key.TranposeThis(step);
    }
  }
}

// Chords and scales are masks of semitones above a root; the mask answers what kind it is.
void DemoSemitones() {
  Heading("Semitone sets: chords and scales as masks");
  KeyTextTable table({"mask", "tones", "basic chord", "scale"}, {true});
  for (unsigned mask : {145u, 137u, 1169u, 73u, 2741u, 1453u, 1371u}) {
    const CSemitones semitones(mask);
    table.AddRow({std::to_string(mask), semitones.GenericName(),
                  BasicChordMemberName(semitones.BasicChord()),
                  Semitones::LocalizedNameForScale(semitones)});
  }
  table.Print(std::cout);
}

// Scales as a musician names them, each spelled in its own key signature.
void DemoScales() {
  Heading("Scales read by name and spelled");
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  KeyTextTable table({"name", "type", "degrees", "signs"});
  for (const char* text : {"D dorian", "Eb melodic minor", "F# lydian", "Bb bebop dominant",
                           "A harmonic minor", "E phrygian"}) {
    CScaleHeavy scale;
    SetFromString(text, scale, prefs);
    table.AddRow({text, CScaleHeavy::GetNameForScaleType(scale.ScaleType()),
                  SpelledDegrees(scale, prefs), SignsText(scale.SignsCount())});
  }
  table.Print(std::cout);
}

// Key signatures: the sign count, the one-byte form a host's events carry, the relative key.
void DemoKeySignatures() {
  Heading("Key signatures");
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  KeyTextTable table({"key", "signs", "event byte", "relative"}, {false, true, true});
  for (const char* text : {"C", "A minor", "E major", "Db", "F# minor", "Eb minor"}) {
    const CSignKeyLite key(text);
    table.AddRow({key.NameShort(prefs), SignsText(key.SignsCount()),
                  std::to_string(ToSignKeyInEv(key.RootKeyEnh, key.SignKeyType)),
                  key.ParallelSignKey().NameShort(prefs)});
  }
  table.Print(std::cout);
}

// Chord symbols as people type them, read and written back in a lead sheet's and in other
// naming styles.
void DemoChordSymbols() {
  Heading("Chord symbols read and named");
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  const CChordNamePrefs german = GermanPrefs();
  CChordNamePrefs each = prefs;
  each.TensionStyle = 1;
  KeyTextTable table({"typed", "mask", "named", "German", "each tension"}, {false, true});
  for (const char* symbol : {"CMaj7", "A-7", "Dmi7", "G7(b9)", "Em7b5", "A7#9", "Db7(#11)",
                             "C13#11", "C6/9", "Bbsus4", "F/A", "C/A"}) {
    const CChordLite chord(symbol, ChordSetFromStringPrefs(), prefs);
    const CChordHeavy heavy = chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl);
    table.AddRow({symbol, std::to_string(chord.Semitones.Word()), heavy.Name(prefs),
                  heavy.Name(german), heavy.Name(each)});
  }
  table.Print(std::cout);
  const CChordLite simplified(
      "C/A", ChordSetFromStringPrefs(ChordSetFromStringPrefs::kSimplifyBassNote), prefs);
  std::cout << "C/A read with bass simplification: "
            << simplified.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs) << '\n';
}

// A guitar grid from its frets: drawn, and named on the root that gives the plainest name.
void DemoGuitarGrid() {
  Heading("A guitar grid named from its frets");
  std::string error;
  const auto basic = grid_tools::GridFromFrets(GChDefaultGuitarShortTuning(), {-1, 3, 2, 3, 1, 0},
                                               {0, 3, 2, 4, 1, 0}, &error);
  const GChChord chord(basic, 0);
  const int root = GChProposedRootNoteFromChord(chord, 0);
  std::cout << "x32310: " << GChHarmonyStringFromChord(chord, root, -1, 0).value_or("") << "\n\n";
  PrintGridDiagram(*basic, std::cout);
  std::cout << "\nPitches: " << chord.stringFromPitches(0) << '\n';
}

// The bundled lead sheet: a traditional tune as a chord-string file. Its keys and centers are
// found by the progressions that prove a tonic, and each chord is told by its function there.
void DemoLeadSheet() {
  const std::string path =
      (DataFolder() / "examples" / "when-the-saints-go-marching-in.txt").string();
  Heading("A lead sheet analysed: " + path.substr(path.rfind('/') + 1));
  const std::optional<std::string> text = ReadChordStringFile(path);
  if (!text) {
    std::cout << "(the bundled example is missing)\n";
    return;
  }
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(*text, {}, CHarmonicAnalyse::kAnalyseTonicProgressions,
                                 TChordStringParse());
  PrintAnalysisTree(analyse, GetCurrentChordNamePrefs());

  Heading("A minor II-V-I, its functions by letters");
  CChordNamePrefs letters = GetCurrentChordNamePrefs();
  letters.FunctionLetters = 1;
  analyse.AnalyseFromChordString("Bm7b5 . E7 . | Am . . .", {},
                                 CHarmonicAnalyse::kAnalyseTonicProgressions, TChordStringParse());
  PrintAnalysisTree(analyse, letters);
}

// A chord's function in the key of its center, when the center is a major or minor key.
std::string FunctionIn(const CHarmAnlsChord& chord, const CHarmAnlsCenter& center,
                       const CChordNamePrefs& prefs) {
  const TSignKeyType type = SignKeyTypeFromSemitones(center.HarmCenter.Semitones);
  if (center.IsUndef() || type == TSignKeyType::Undef) return "-";
  const CSignKeyHeavy key(center.HarmCenter.RootKeyEnh, type == TSignKeyType::Minor
                                                            ? TSignKeyTypeNoUndef::Minor
                                                            : TSignKeyTypeNoUndef::Major);
  return chord.HarmFuncNameIn(key, prefs);
}

// A bundled MusicXML lead sheet: its chord symbols played out through the repeat, the
// centers the tonic progressions find, one line each with the chords' functions there.
void DemoMusicXmlLeadSheet() {
  const std::string path = (DataFolder() / "examples" / "after-youve-gone.mxl").string();
  Heading("A MusicXML lead sheet: " + path.substr(path.rfind('/') + 1));
  TMusicXMLDoc doc;
  try {
    doc = ImportMusicXmlHarmonies(path, ReadInputBytes(path, platform::TReadKind::kMusicXml));
  } catch (const InputError& error) {
    std::cout << "(the bundled example cannot be read: " << error.what() << ")\n";
    return;
  }
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  std::cout << doc.Title << ", " << doc.HarmSignKeys.front().SignKey.NameLong(prefs) << ": "
            << doc.Harmonies.size() << " chords in song order";
  for (const CHarmCopy& copy : doc.HarmCopies) {
    std::cout << ", " << copy.LengthBars << " bars played again at " << copy.TargetPos;
  }
  std::cout << "\n\nCenters by tonic progressions, each chord with its function there:\n";
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromMusicXMLDoc(doc, CHarmonicAnalyse::kAnalyseTonicProgressions);
  KeyTextTable table({"  center", "from", "chords"}, {false, true, false});
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      std::ostringstream from;
      from << std::fixed << std::setprecision(2) << center.Position;
      std::string chords;
      for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
        if (chord.IsUndef()) continue;
        chords += (chords.empty() ? "" : " ") + chord.TraceName(prefs) + " (" +
                  FunctionIn(chord, center, prefs) + ")";
      }
      table.AddRow({"  " + center.HarmCenter.NameLong(prefs), from.str(), chords});
    }
  }
  table.Print(std::cout);
}

// A whole score as the events a DAW's importer receives: the first bars of a public-domain
// lead sheet's melody, and all of it as a standard MIDI file in the temporary folder.
void DemoMusicXmlEvents() {
  const std::string path = (DataFolder() / "examples" / "home-sweet-home.mxl").string();
  Heading("A MusicXML score as events and as MIDI: " + path.substr(path.rfind('/') + 1));
  std::ostringstream events;
  MusicXmlEventPrinter printer(events, false, "", 960);
  MusicXmlParser parser;
  TMusicXmlError error;
  if (!parser.parseURL(path, &printer, &error)) {
    std::cout << "(the bundled example cannot be read: " << error.description << ")\n";
    return;
  }
  std::istringstream lines(events.str());
  std::string line;
  for (int shown = 0; shown < 3 && std::getline(lines, line);) {
    std::cout << line << '\n';
    if (line.rfind("bar end", 0) == 0) ++shown;
  }
  std::cout << "... " << printer.NoteCount() << " notes in all\n";
  const std::string midi =
      (std::filesystem::temp_directory_path() / "harmony-demo-home-sweet-home.mid").string();
  std::string midiError;
  if (WriteMidiFile(printer.Song(), midi, midiError)) {
    std::cout << "Written as a standard MIDI file: " << midi << '\n';
  } else {
    std::cout << "(no MIDI file: " << midiError << ")\n";
  }
}

// What to play over a II-V-I in major and in minor: each chord measured against the key the
// analysis found, the three best scales first.
void DemoScaleSuggestions() {
  for (const char* list : {"Dm7 . G7 . | Cmaj7 . . .", "Dm7b5 . G7b9 . | Cm6 . . ."}) {
    Heading(std::string("Scales to play over ") + list);
    std::vector<TChordSuggestions> entries = SuggestScalesForChordList(
        list, {}, CHarmonicAnalyse::kAnalyseTonicProgressions, {}, std::nullopt);
    KeepFirstScales(entries, 3);
    PrintScaleSuggestions(entries, GetCurrentChordNamePrefs());
  }
}

// Chords a player holds, by MIDI note numbers, with the root found by the trained net and by
// the weight tables. The spelled notes are those of the net's reading.
void DemoPlayedChords() {
  Heading("Played notes named: root by the net and by the weight tables");
  KeyTextTable table({"notes", "net", "tables"}, {false, false, false});
  for (std::initializer_list<long> notes : {std::initializer_list<long>{64, 67, 72, 82},
                                            {57, 60, 64, 67},
                                            {60, 64, 67, 69},
                                            {43, 53, 59, 64},
                                            {50, 57, 60, 65},
                                            {54, 57, 60, 64}}) {
    CMySet<CNote> played;
    for (long noteNr : notes) played.insert(CNote(noteNr, TEnh_n));
    const CChordHeavy net = ChordOfPlayedNotes(played, true);
    const CChordHeavy tables = ChordOfPlayedNotes(played, false);
    table.AddRow({PlayedNotesText(net, false), PlayedChordName(net), PlayedChordName(tables)});
  }
  table.Print(std::cout);
}

// Chords voiced as MIDI notes in the comping range, each led toward the one before.
void DemoVoicing() {
  Heading("Chords voiced as MIDI notes, led smoothly");
  std::vector<unsigned char> previous;
  for (const char* symbol : {"Dm7", "G7", "Cmaj7", "A7b9"}) {
    const CChordLite chord(symbol, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
    std::vector<unsigned char> notes = chord.VoicingNotesNrs(TChordVoicingPrefs{});
    if (!previous.empty()) TransposeChordBasedOnPreviousChords(notes, previous.back());
    std::cout << std::left << std::setw(7) << symbol << std::right;
    for (unsigned char note : notes) std::cout << ' ' << static_cast<int>(note);
    std::cout << '\n';
    previous = notes;
  }
}

// The chord model learned chords relative to their harmonic center, so one seed draws the same
// progression in every key.
void DemoMarkov() {
  Heading("Progressions drawn from the bundled chord model");
  std::unique_ptr<VariableLengthMarkovModel> model;
  try {
    model = LoadMarkovModel("");
  } catch (const InputError&) {
    std::cout << "(the bundled model is missing)\n";
    return;
  }
  const CChordNamePrefs prefs = GetCurrentChordNamePrefs();
  for (const char* key : {"C", "Eb", "F#"}) {
    platform::SeedRandom(1);
    const CHarmCenterLite center{CSignKeyLite(key, prefs)};
    const TMarkovBars generated = GenerateMarkovBars(*model, 4, center, 20, 0.0);
    std::cout << std::left << std::setw(3) << key << std::right
              << " seed 1: " << ChordListText(generated.Chords, prefs, "N.C.") << '\n';
  }
}

void RunDemo() {
  std::cout << "harmony demo: music theory for a digital audio workstation\n";
  DemoKeys();
  DemoCircleOfFifths();
  DemoSemitones();
  DemoScales();
  DemoKeySignatures();
  DemoChordSymbols();
  DemoLeadSheet();
  DemoMusicXmlLeadSheet();
  DemoMusicXmlEvents();
  DemoScaleSuggestions();
  DemoVoicing();
  DemoPlayedChords();
  DemoGuitarGrid();
  DemoMarkov();
}

const CommandRegistration kRegistration{
    0, [](CLI::App& app) {
      CLI::App* cmd = app.add_subcommand("demo", "A short tour of harmony on built-in examples");
      cmd->callback([] { RunDemo(); });
    }};

}  // namespace

}  // namespace harmony::tool
