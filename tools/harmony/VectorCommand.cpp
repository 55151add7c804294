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
  JsonMode json = JsonMode::kNone;
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

// A key number of the key form, as a number or the text of one: 0..11, or 15 for none.
void CheckKeyNumber(const JsonDict* number, const std::string& what) {
  if (number == nullptr) return;
  std::string text = number->is_string() ? number->get<std::string>() : number->dump();
  text.erase(0, text.find_first_not_of(' '));
  const long long key = ReadInteger(text, 0, kKeyNrUndef, what);
  if (key >= 12 && key != kKeyNrUndef) {
    throw InputError(what + " " + text + " is no key: 0..11, or 15 for none");
  }
}

// What the key form holds must fit the chord it becomes: keys 0..11 (15 for none) and a
// mask of twelve semitones.
void CheckKeyForm(const JsonDict& dict) {
  for (const char* name : {"Root", "Bass"}) {
    const std::string keyEnh = std::string(name) + "KeyEnh";
    const std::string keyNr = std::string(name) + "KeyNr";
    if (const JsonDict* key = platform::JsonMember(dict, keyEnh.c_str())) {
      const JsonDict* number = key->is_object() ? platform::JsonMember(*key, "KeyNr") : nullptr;
      if (number == nullptr) {
        throw InputError("\"" + keyEnh + "\" is an object with a \"KeyNr\", as in " +
                         "{\"KeyNr\":\" 9\",\"Enh\":\"neutral\"}");
      }
      CheckKeyNumber(number, keyEnh);
    } else {
      CheckKeyNumber(platform::JsonMember(dict, keyNr.c_str()), keyNr);
    }
  }
  if (const JsonDict* mask = platform::JsonMember(dict, "Semitones")) {
    ReadInteger(mask->dump(), 0, 4095, "\"Semitones\"");
  }
}

// The library reads any dictionary; the tool insists on one of the two wire forms, and unless
// --lenient on values the chord can hold.
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
  } else if (!Lenient()) {
    CheckKeyForm(*dict);
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

Json ChromaJson(const CHarmAnlsChordForMetro& chord) {
  CHarmAnlsChordForMetro::TChromaVector chroma;
  chord.GetChromaVector(chroma, true);
  Json array = Json::Array();
  for (const float x : chroma) array.Push(x == 1.0f ? 1 : 0);
  return array;
}

Json OneHotJson(const CHarmAnlsChordForMetro& chord) {
  const std::vector<float> vector = chord.GetChordVectorRepresentation();
  Json array = Json::Array();
  for (std::size_t i = 0; i < vector.size(); ++i) {
    if (vector[i] == 1.0f) array.Push(i);
  }
  return array;
}

Json ChordVectorJson(const TInput& input) {
  const CHarmAnlsChordForMetro& chord = input.chord;
  return Json::Object()
      .Add("input", input.label)
      .Add("export", chord.NameForMetroExport(true))
      .Add("chord", ChordJson(chord, GetCurrentChordNamePrefs()))
      .Add("chroma", ChromaJson(chord))
      .Add("oneHot", OneHotJson(chord))
      .Add("recognized", chord.IsRecognizedMetroChord(false))
      .Add("common", chord.IsCommonChord(false));
}

void RunVector(const VectorOptions& options) {
  if (options.symbols.empty() && options.reads.empty()) {
    throw CLI::RequiredError("SYMBOL or --read");
  }
  std::vector<TInput> inputs;
  for (const std::string& symbol : WithStandardInput(options.symbols, TSplit::kWords)) {
    inputs.push_back({symbol, ReadVectorSymbol(symbol)});
  }
  const std::vector<std::string> reads = WithStandardInput(options.reads, TSplit::kLines);
  for (std::size_t i = 0; i < reads.size(); ++i) {
    inputs.push_back({"json " + std::to_string(i + 1), ReadWireForm(reads[i])});
  }
  KeyTextTable table({"input", "export", "chroma", "one-hot", "recognized", "common"});
  Json chords = Json::Array();
  for (TInput& input : inputs) {
    CHarmAnlsChordForMetro& chord = input.chord;
    Simplify(chord, options);
    if (options.json == JsonMode::kNative) {
      chord.SetWritesVectorRep(!options.keys);
      PrintNativeJson(chord);
    } else if (options.json == JsonMode::kStrict) {
      chords.Push(ChordVectorJson(input));
    } else {
      table.AddRow({input.label, chord.NameForMetroExport(true), ChromaText(chord),
                    OneHotText(chord), chord.IsRecognizedMetroChord(false) ? "yes" : "no",
                    chord.IsCommonChord(false) ? "yes" : "no"});
    }
  }
  if (options.json == JsonMode::kStrict) PrintJson(Json::Object().Add("chords", std::move(chords)));
  if (options.json == JsonMode::kNone) table.Print(std::cout);
}

const CommandRegistration kRegistration{
    78, [](CLI::App& app) {
      auto options = std::make_shared<VectorOptions>();
      CLI::App* cmd = app.add_subcommand(
          "vector",
          "Chords as export name, chroma and one-hot vector for a small chord vocabulary");
      cmd->add_option("SYMBOL", options->symbols,
                      "Chord symbols, e.g. C7/E F#m7b5; \"*\" is the wildcard, EADGBE the open "
                      "strings; - reads them from standard input");
      cmd->add_option("--read", options->reads,
                      "Read a chord's JSON wire form ({\"VectorRep\":[...]} or the key form); - "
                      "reads one per line from standard input");
      cmd->add_option("--simplify", options->simplify,
                      "First reduce each chord to a recognized type or to a major or minor triad")
          ->check(CLI::IsMember({"recognized", "major-minor"}));
      cmd->add_flag("--drop-bass", options->dropBass, "With --simplify: leave the bass out");
      AddJsonOption(cmd, options->json, true);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      cmd->add_flag("--keys", options->keys,
                    "With --json=native: the key form (root, bass, mask) instead of the vector");
      cmd->footer(
          "One-hot elements: 0 undefined, 1 EADGBE, 2 wildcard, 3+k root key k (C = 0),\n"
          "15..21 major, minor, augmented, diminished, sus4, sus2, power; 22+n tone n semitones\n"
          "up beyond the triad; 34+k bass key k. The chroma counts from C and includes the bass.\n"
          "--json=native prints each chord's wire form on a line of its own, as --read reads it.");
      cmd->callback([options] { RunVector(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
