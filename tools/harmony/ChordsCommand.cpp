// harmony chords FILE: the chord symbols of a MusicXML file as the harmony import lays them
// out in song time (repeats, endings and D.S. al coda played out), with keys, time
// signatures and the jumps back; as a table or --json.

#include <cmath>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include <nlohmann/json.hpp>

#include "Command.h"
#include "KeyCommandSupport.h"
#include "MusicXmlInput.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony::tool {

namespace {

struct ChordsOptions {
  std::string file;
  JsonMode json = JsonMode::kNone;
  bool ascii = false;
};

// A place in song time; a chord whose length the file leaves unset pushes the places after it
// out of any song, and those have none.
struct TBarAndBeat {
  bool known = false;
  long long bar = 1;  // from 1
  double beat = 1.0;  // quarter notes into the bar, from 1
};

// Bars follow the time signatures met in song time; before the first one a bar is 4/4.
TBarAndBeat BarAndBeat(const std::vector<TMusicXMLTimeSignature>& signatures, double position) {
  constexpr double kLongestSong = 1e9;  // quarter notes
  if (!(position >= 0.0 && position < kLongestSong)) return {};
  double start = 0.0;
  double barLength = 4.0;
  double barsBefore = 0.0;
  for (const TMusicXMLTimeSignature& signature : signatures) {
    if (signature.Position > position) break;
    if (!(signature.Position >= start)) continue;  // placed by a broken chord length
    barsBefore += std::floor((signature.Position - start) / barLength + 1e-9);
    start = signature.Position;
    if (signature.Beats > 0 && signature.BeatType > 0) {
      barLength = 4.0 * signature.Beats / signature.BeatType;
    }
  }
  const double bars = std::floor((position - start) / barLength + 1e-9);
  if (!(std::abs(barsBefore + bars) < kLongestSong)) return {};
  TBarAndBeat result;
  result.known = true;
  result.bar = static_cast<long long>(barsBefore + bars) + 1;
  result.beat = position - start - bars * barLength + 1.0;
  return result;
}

std::string Fixed(double value) {
  if (!std::isfinite(value) || value < -1e15 || value > 1e15) return "-";
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << value;
  return text.str();
}

std::string PitchText(const TMusicXMLPitch& pitch) {
  if (!pitch.IsDefined()) return "";
  std::string text = pitch.Step;
  for (int i = 0; i < pitch.Alter; ++i) text += '#';
  for (int i = 0; i > pitch.Alter; --i) text += 'b';
  return text;
}

std::string KindText(const TMusicXMLHarmony& harmony) {
  std::string text = harmony.Kind;
  for (const TMusicXMLDegree& degree : harmony.Degrees) {
    text += ' ' + degree.Type + ' ' + degree.Value;
    if (degree.Alter != 0) text += (degree.Alter > 0 ? "+" : "") + std::to_string(degree.Alter);
  }
  return text;
}

std::string ChordName(const TMusicXMLHarmony& harmony, const CChordNamePrefs& prefs) {
  if (IsMusicXmlNoChord(harmony)) return "N.C.";
  const CChordHeavy chord = CChordSetFromMusicXml(harmony, CIntvlSet::kDefaultWrapIntvl);
  return chord.IsUndef() ? "?" : chord.Name(prefs);
}

std::string KeyText(const CHarmAnlsSignKey& key, const CChordNamePrefs& prefs) {
  return key.SignKey.NameLong(prefs) +
         (IsHarmAnlsUndef(key.Position) ? std::string() : " from " + Fixed(key.Position));
}

void PrintText(const TMusicXMLDoc& doc, const CChordNamePrefs& prefs) {
  if (!doc.Title.empty()) std::cout << "title  " << doc.Title << '\n';
  for (const CHarmAnlsSignKey& key : doc.HarmSignKeys) {
    std::cout << "key    " << KeyText(key, prefs) << '\n';
  }
  for (const TMusicXMLTimeSignature& signature : doc.TimeSignatures) {
    std::cout << "time   " << signature.Beats << '/' << signature.BeatType << " from "
              << Fixed(signature.Position) << '\n';
  }
  for (const CHarmCopy& copy : doc.HarmCopies) {
    std::cout << "again  at " << Fixed(copy.TargetPos) << ", " << copy.LengthBars
              << (copy.LengthBars == 1 ? " bar" : " bars") << " back\n";
  }
  std::cout << doc.Harmonies.size() << (doc.Harmonies.size() == 1 ? " chord\n" : " chords\n");
  if (doc.Harmonies.empty()) return;
  KeyTextTable table({"position", "length", "bar", "beat", "chord", "root", "kind", "bass"},
                     {true, true, true, true});
  for (const TMusicXMLHarmony& harmony : doc.Harmonies) {
    const TBarAndBeat place = BarAndBeat(doc.TimeSignatures, harmony.Position);
    table.AddRow({Fixed(harmony.Position), Fixed(harmony.Length),
                  place.known ? std::to_string(place.bar) : "-",
                  place.known ? Fixed(place.beat) : "-", ChordName(harmony, prefs),
                  PitchText(harmony.Root), KindText(harmony), PitchText(harmony.Bass)});
  }
  table.Print(std::cout);
}

nlohmann::json NumberOrNull(double value) {
  if (!std::isfinite(value) || value <= std::numeric_limits<double>::lowest()) return nullptr;
  return value;
}

nlohmann::json PitchJson(const TMusicXMLPitch& pitch) {
  if (!pitch.IsDefined()) return nullptr;
  return {{"step", pitch.Step}, {"alter", pitch.Alter}};
}

nlohmann::json HarmonyJson(const TMusicXMLDoc& doc, const TMusicXMLHarmony& harmony,
                           const CChordNamePrefs& prefs) {
  nlohmann::json degrees = nlohmann::json::array();
  for (const TMusicXMLDegree& degree : harmony.Degrees) {
    degrees.push_back({{"value", degree.Value}, {"alter", degree.Alter}, {"type", degree.Type}});
  }
  const TBarAndBeat place = BarAndBeat(doc.TimeSignatures, harmony.Position);
  nlohmann::json json = {{"position", NumberOrNull(harmony.Position)},
                         {"length", NumberOrNull(harmony.Length)},
                         {"bar", place.known ? nlohmann::json(place.bar) : nullptr},
                         {"beat", place.known ? nlohmann::json(place.beat) : nullptr},
                         {"name", ChordName(harmony, prefs)},
                         {"root", PitchJson(harmony.Root)},
                         {"kind", harmony.Kind},
                         {"bass", PitchJson(harmony.Bass)},
                         {"degrees", degrees}};
  if (!IsMusicXmlNoChord(harmony)) {
    CChordLite chord;
    chord.SetFromChordHeavy(CChordSetFromMusicXml(harmony, CIntvlSet::kDefaultWrapIntvl));
    json["semitones"] = chord.Semitones.Word();
  }
  return json;
}

void PrintJson(const TMusicXMLDoc& doc, const CChordNamePrefs& prefs) {
  nlohmann::json keys = nlohmann::json::array();
  for (const CHarmAnlsSignKey& key : doc.HarmSignKeys) {
    keys.push_back({{"position", NumberOrNull(key.Position)},
                    {"root", key.SignKey.RootKeyEnh.KeyNr},
                    {"name", key.SignKey.NameLong(prefs)}});
  }
  nlohmann::json times = nlohmann::json::array();
  for (const TMusicXMLTimeSignature& signature : doc.TimeSignatures) {
    times.push_back({{"position", signature.Position},
                     {"beats", signature.Beats},
                     {"beatType", signature.BeatType}});
  }
  nlohmann::json copies = nlohmann::json::array();
  for (const CHarmCopy& copy : doc.HarmCopies) {
    copies.push_back({{"position", copy.TargetPos}, {"bars", copy.LengthBars}});
  }
  nlohmann::json chords = nlohmann::json::array();
  for (const TMusicXMLHarmony& harmony : doc.Harmonies) {
    chords.push_back(HarmonyJson(doc, harmony, prefs));
  }
  const nlohmann::json json = {{"title", doc.Title},
                               {"keys", keys},
                               {"timeSignatures", times},
                               {"repeats", copies},
                               {"chords", chords}};
  std::cout << json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void RunChords(const ChordsOptions& options) {
  CChordNamePrefs prefs = GetCurrentChordNamePrefs();
  if (options.ascii) prefs.AsciiAccidentals = 1;
  const std::string label = options.file == "-" ? "standard input" : options.file;
  const TMusicXMLDoc doc = ImportMusicXmlHarmonies(label, ReadInputBytes(options.file, platform::TReadKind::kMusicXml));
  if (options.json != JsonMode::kNone) {
    PrintJson(doc, prefs);
  } else {
    PrintText(doc, prefs);
  }
}

const CommandRegistration kRegistration{
    65, [](CLI::App& app) {
      auto options = std::make_shared<ChordsOptions>();
      CLI::App* cmd = app.add_subcommand(
          "chords", "List the chord symbols of a MusicXML file in song time (repeats played out)");
      cmd->add_option("FILE", options->file,
                      "MusicXML file (.musicxml, .xml or .mxl), - for standard input")
          ->required();
      AddJsonOption(cmd, options->json, false);
      AddLenientFlag(cmd);
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      cmd->footer(
          "Positions and lengths are in quarter notes from the song's start, as the harmony\n"
          "import reads them: a chord lasts as long as the last note of its bar after it, and\n"
          "bars without a chord add nothing. Bars and beats follow the time signatures.\n"
          "A chord symbol the import cannot read whole (an unknown kind, a root that is no\n"
          "note letter, a degree the chord steps over) is refused; --lenient lists it as the\n"
          "import reads it.");
      cmd->callback([options] { RunChords(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
