// harmony vector SYMBOL...: chords in the form a consumer with a small chord vocabulary
// takes: the export name, the chroma (twelve pitch classes from C, bass included) and the
// set elements of the 46-element one-hot vector; --json writes the wire form, --read reads
// it back. "*" is the wildcard and "EADGBE" the open strings of a guitar.

#include <algorithm>
#include <cctype>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "ChordSymbolInput.h"
#include "Command.h"
#include "KeyCommandSupport.h"
#include "harmony/analysis/HarmAnlsChordForMetro.h"
#include "platform/JsonReader.h"

namespace harmony::tool {

namespace {

struct VectorOptions {
  std::vector<std::string> symbols;
  std::vector<std::string> reads;
  std::string simplify;
  bool dropBass = false;
  bool json = false;
  bool keys = false;
};

struct TInput {
  std::string label;
  CHarmAnlsChordForMetro chord;
};

CHarmAnlsChordForMetro ReadVectorSymbol(const std::string& text) {
  if (text == "*") return CHarmAnlsChordForMetro::Wildcard();
  std::string upper = text;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  if (upper == "EADGBE") return CHarmAnlsChordForMetro::EADGBE();
  return CHarmAnlsChordForMetro(ReadChordSymbol(text));
}

// The library reads any dictionary; the tool insists on one of the two wire forms.
CHarmAnlsChordForMetro ReadWireForm(const std::string& text) {
  const auto dict = platform::ParseJson(text);
  if (!dict || !dict->is_object()) throw InputError("not a JSON object: " + text);
  if (const JsonDict* rep = platform::JsonMember(*dict, "VectorRep")) {
    const bool zerosAndOnes =
        rep->is_array() && rep->size() == CHarmAnlsChordForMetro::kVectorSize &&
        std::all_of(rep->begin(), rep->end(), [](const JsonDict& x) {
          return x.is_number() && (x.get<double>() == 0.0 || x.get<double>() == 1.0);
        });
    if (!zerosAndOnes) throw InputError("\"VectorRep\" must hold 46 numbers, each 0 or 1");
  } else if (!dict->contains("RootKeyEnh") && !dict->contains("RootKeyNr")) {
    throw InputError("neither \"VectorRep\" nor \"RootKeyEnh\" or \"RootKeyNr\" in " + text);
  }
  return CHarmAnlsChordForMetro::FromDictionary(*dict);
}

std::string ChromaText(const CHarmAnlsChordForMetro& chord) {
  CHarmAnlsChordForMetro::TChromaVector chroma;
  chord.GetChromaVector(chroma, true);
  std::string digits;
  for (const float x : chroma) digits += x == 1.0f ? '1' : '0';
  return digits;
}

std::string OneHotText(const CHarmAnlsChordForMetro& chord) {
  const std::vector<float> vector = chord.GetChordVectorRepresentation();
  std::string indices;
  for (std::size_t i = 0; i < vector.size(); ++i) {
    if (vector[i] == 1.0f) indices += (indices.empty() ? "" : " ") + std::to_string(i);
  }
  return indices;
}

void Simplify(CHarmAnlsChordForMetro& chord, const VectorOptions& options) {
  if (options.simplify == "recognized") chord.SimplifyToRecognizedMetroChord(options.dropBass);
  if (options.simplify == "major-minor") chord.SimplifyToMajorOrMinor(options.dropBass);
}

void RunVector(const VectorOptions& options) {
  if (options.symbols.empty() && options.reads.empty()) {
    throw CLI::RequiredError("SYMBOL or --read");
  }
  std::vector<TInput> inputs;
  for (const std::string& symbol : options.symbols)
    inputs.push_back({symbol, ReadVectorSymbol(symbol)});
  for (std::size_t i = 0; i < options.reads.size(); ++i) {
    inputs.push_back({"json " + std::to_string(i + 1), ReadWireForm(options.reads[i])});
  }
  KeyTextTable table({"input", "export", "chroma", "one-hot", "recognized", "common"});
  for (TInput& input : inputs) {
    CHarmAnlsChordForMetro& chord = input.chord;
    Simplify(chord, options);
    if (options.json) {
      chord.SetWritesVectorRep(!options.keys);
      chord.AppendJSONString(std::cout);
      std::cout << '\n';
      continue;
    }
    table.AddRow({input.label, chord.NameForMetroExport(true), ChromaText(chord), OneHotText(chord),
                  chord.IsRecognizedMetroChord(false) ? "yes" : "no",
                  chord.IsCommonChord(false) ? "yes" : "no"});
  }
  if (!options.json) table.Print(std::cout);
}

const CommandRegistration kRegistration{
    78, [](CLI::App& app) {
      auto options = std::make_shared<VectorOptions>();
      CLI::App* cmd = app.add_subcommand(
          "vector",
          "Chords as export name, chroma and one-hot vector for a small chord vocabulary");
      cmd->add_option("SYMBOL", options->symbols,
                      "Chord symbols, e.g. C7/E F#m7b5; \"*\" is the wildcard, EADGBE the open "
                      "strings");
      cmd->add_option("--read", options->reads,
                      "Read a chord's JSON wire form ({\"VectorRep\":[...]} or the key form)");
      cmd->add_option("--simplify", options->simplify,
                      "First reduce each chord to a recognized type or to a major or minor triad")
          ->check(CLI::IsMember({"recognized", "major-minor"}));
      cmd->add_flag("--drop-bass", options->dropBass, "With --simplify: leave the bass out");
      cmd->add_flag("--json", options->json, "Print each chord's wire form, one line per chord");
      cmd->add_flag("--keys", options->keys,
                    "With --json: the key form (root, bass, mask) instead of the vector");
      cmd->footer(
          "One-hot elements: 0 undefined, 1 EADGBE, 2 wildcard, 3+k root key k (C = 0),\n"
          "15..21 major, minor, augmented, diminished, sus4, sus2, power; 22+n tone n semitones\n"
          "up beyond the triad; 34+k bass key k. The chroma counts from C and includes the bass.");
      cmd->callback([options] { RunVector(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
