// harmony transpose KEY INTERVAL: moves a spelled key by an interval in semitones.
// harmony transpose --to KEY | --by N CHORDS...: moves a chord list into another key. The list's
// key is found by the analysis; every root and bass moves by the same letter distance as the
// key's tonic, so the chords are spelled as the new key writes them (Dm7 G7 C up a minor
// third is Fm7 Bb7 Eb, never E#m7). Only roots and basses change: the rest of each symbol, the
// bar lines and the blanks stay as written.

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Command.h"
#include "KeyCommandSupport.h"
#include "SpellingSupport.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/LeadSheetChordReader.h"

namespace harmony::tool {

namespace {

struct TransposeOptions {
  std::vector<std::string> words;
  std::string to;
  std::string by;
  JsonMode json = JsonMode::kNone;
};

// --- A single key, by an interval.

void RunKeyTranspose(const TransposeOptions& options) {
  const std::vector<std::string> words = WithStandardInput(options.words, TSplit::kWords);
  if (words.size() != 2) {
    throw CLI::ValidationError("transpose", "give KEY INTERVAL, or --to KEY or --by N with chords");
  }
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  const CKeyEnh from = ReadKeyName(words[0], prefs);
  const int intvl = static_cast<int>(ReadInteger(words[1], -127, 127, "interval"));
  CKeyEnh to = from;
  to.TranposeThis(intvl);
  if (options.json != JsonMode::kNone) {
    return PrintJson(Json::Object()
                         .Add("interval", intvl)
                         .Add("from", KeyJson(from, prefs))
                         .Add("to", KeyJson(to, prefs)));
  }
  KeyTextTable table({"", "key", "spelling", "name"}, {false, true, false, false});
  table.AddRow({"from", std::to_string(from.KeyNr), EnhText(from.Enh),
                KeyNrAndEnhToName(from.KeyNr, from.Enh, prefs)});
  table.AddRow({"to", std::to_string(to.KeyNr), EnhText(to.Enh),
                KeyNrAndEnhToName(to.KeyNr, to.Enh, prefs)});
  std::cout << "interval " << intvl << '\n';
  table.Print(std::cout);
}

// --- A chord list, into another key.

int Mod(int value, int modulus) { return ((value % modulus) + modulus) % modulus; }

// The key the analysis finds first; else the first chord's root, major or minor as its triad.
CSignKeyLite KeyOfList(const std::string& text) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(text, {}, CHarmonicAnalyse::kAnalyseTonicProgressions,
                                 ChordListParse());
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    if (!signKey.SignKey.IsUndef()) return signKey.SignKey;
  }
  for (const CHarmAnlsChordWithPos& chord : analyse.InputChords()) {
    if (chord.RootKeyEnh.KeyNr == kKeyNrUndef) continue;
    return CSignKeyLite(chord.RootKeyEnh,
                        chord.Semitones.IsMinorOrDim() ? TSignKeyType::Minor : TSignKeyType::Major);
  }
  throw InputError("the chord list holds no chord to transpose");
}

// The tonic `semitones` above `from`, spelled with the fewest signs for the key's type.
CKeyEnh TonicAbove(const CSignKeyLite& from, int semitones) {
  const int keyNr = Mod(from.RootKeyEnh.KeyNr + semitones, 12);
  CKeyEnh best;
  for (const TEnh enh : {TEnh_n, TEnh_b, TEnh_s}) {
    const CKeyEnh candidate(keyNr, enh);
    if (!IsSensefulEnhForKeyNr(keyNr, enh)) continue;
    const int signs = SignsCountAbsForSignKeyWithKeyEnhAndSignKeyType(candidate, from.SignKeyType);
    if (best.KeyNr == kKeyNrUndef ||
        signs < SignsCountAbsForSignKeyWithKeyEnhAndSignKeyType(best, from.SignKeyType)) {
      best = candidate;
    }
  }
  return best;
}

struct TMove {
  int letters = 0;
  int semitones = 0;
};

CKeyEnh Moved(const CKeyEnh& key, const TMove& move) {
  const int letter = LetterOfKey(key);
  const int keyNr = Mod(key.KeyNr + move.semitones, 12);
  if (letter >= 0) {
    if (const auto spelled = KeyOnLetter(letter + move.letters, keyNr)) return *spelled;
  }
  return CKeyEnh(keyNr, MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(keyNr, TEnh_Undef));
}

// Bytes of `text` from `from` that hold `count` characters of its form with Unicode sharps and
// flats turned into "#" and "b", the form whose positions the key reader counts.
std::size_t OriginalLength(const std::string& text, std::size_t from, int count) {
  std::size_t at = from;
  for (int i = 0; i < count && at < text.size(); ++i) {
    const bool sign = text.compare(at, 3, kUtf8Sharp) == 0 || text.compare(at, 3, kUtf8Flat) == 0;
    at += sign ? 3 : 1;
  }
  return at - from;
}

// The symbol with its root, and its bass behind the last slash, moved; the rest as written.
std::string MovedSymbol(const std::string& symbol, const TMove& move) {
  CChordNamePrefs names = GetCurrentChordNamePrefs();
  const bool unicode =
      symbol.find(kUtf8Sharp) != std::string::npos || symbol.find(kUtf8Flat) != std::string::npos;
  names.AsciiAccidentals = unicode ? 0 : 1;
  const auto name = [&](const CKeyEnh& key) {
    const CKeyEnh moved = Moved(key, move);
    return KeyNrAndEnhToName(moved.KeyNr, moved.Enh, names);
  };
  if (SymbolReader() == TSymbolReader::kLeadSheet) {
    // The reader tells where root and bass stand, whatever their spelling (Es7/B, Sol7).
    const TLeadSheetChordRead read = ReadLeadSheetChord(symbol);
    if (read.Kind != TLeadSheetSymbolKind::kChord) return symbol;
    std::string moved = symbol;
    if (read.BassLength > 0) {
      moved.replace(read.BassOffset, read.BassLength, name(read.Chord.BassKeyEnh));
    }
    return moved.replace(read.RootOffset, read.RootLength, name(read.Chord.RootKeyEnh));
  }
  const CChordLite chord(symbol, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
  if (chord.RootKeyEnh.KeyNr == kKeyNrUndef) return symbol;
  int consumed = 0;
  CKeyEnh root;
  root.SetFromString(symbol, &consumed, GetCurrentChordNamePrefs());
  const std::size_t rootEnd = OriginalLength(symbol, 0, consumed);
  std::string moved = name(root) + symbol.substr(rootEnd);
  const std::size_t slash = moved.find_last_of('/');
  if (chord.BassKeyEnh.KeyNr == kKeyNrUndef || slash == std::string::npos) return moved;
  CKeyEnh bass;
  bass.SetFromString(moved.substr(slash + 1), &consumed, GetCurrentChordNamePrefs());
  const std::size_t bassEnd = slash + 1 + OriginalLength(moved, slash + 1, consumed);
  return moved.substr(0, slash + 1) + name(chord.BassKeyEnh) + moved.substr(bassEnd);
}

struct TMovedList {
  std::string text;
  Json chords = Json::Array();
};

// Every word of the list that is a chord symbol, moved; blanks, bar lines and beats kept.
TMovedList MovedList(const std::string& text, const TMove& move) {
  TMovedList result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(" \t\r\n", at), text.size());
    if (end == at) {
      result.text += text[at++];
      continue;
    }
    const std::string word = text.substr(at, end - at);
    const bool chord = word != "|" && word != "." && word.rfind("ma", 0) != 0;
    const std::string moved = chord ? MovedSymbol(word, move) : word;
    result.text += moved;
    if (chord) {
      const CChordLite read = SymbolReader() == TSymbolReader::kLeadSheet
                                  ? ReadLeadSheetChord(moved).Chord
                                  : CChordLite(moved, {}, GetCurrentChordNamePrefs());
      result.chords.Push(Json::Object()
                             .Add("symbol", word)
                             .Add("transposed", moved)
                             .Add("chord", ChordJson(read, GetCurrentChordNamePrefs())));
    }
    at = end;
  }
  return result;
}

void RunListTranspose(const TransposeOptions& options) {
  std::string text;
  for (const std::string& word : WithStandardInput(options.words, TSplit::kLines)) {
    text += (text.empty() ? "" : " ") + word;
  }
  CheckChordList(text, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
  const CSignKeyLite from = KeyOfList(text);
  // The list's tonic moves to the tonic of --to (a minor piece stays minor), or by --by.
  CSignKeyLite to = from;
  int interval = 0;
  if (!options.to.empty()) {
    to.RootKeyEnh = ReadSignKey(options.to).RootKeyEnh;
    interval = Mod(to.RootKeyEnh.KeyNr - from.RootKeyEnh.KeyNr, 12);
  } else {
    interval = static_cast<int>(ReadInteger(options.by, -127, 127, "interval"));
    to.RootKeyEnh = TonicAbove(from, interval);
  }
  const TMove move{Mod(LetterOfKey(to.RootKeyEnh) - LetterOfKey(from.RootKeyEnh), 7),
                   Mod(interval, 12)};
  TMovedList moved = MovedList(text, move);
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  if (options.json != JsonMode::kNone) {
    return PrintJson(Json::Object()
                         .Add("from", SignKeyJson(from, prefs))
                         .Add("to", SignKeyJson(to, prefs))
                         .Add("interval", interval)
                         .Add("text", moved.text)
                         .Add("chords", std::move(moved.chords)));
  }
  const int steps = interval < 0 ? -interval : interval;
  std::cout << from.NameLong(prefs) << " to " << to.NameLong(prefs) << ", " << steps << " semitone"
            << (steps == 1 ? "" : "s") << (interval < 0 ? " down\n" : " up\n") << moved.text
            << '\n';
}

const CommandRegistration kRegistration{
    20, [](CLI::App& app) {
      auto options = std::make_shared<TransposeOptions>();
      CLI::App* cmd = app.add_subcommand(
          "transpose", "Transpose a spelled key by an interval, or a chord list into another key");
      cmd->add_option("KEY INTERVAL | CHORDS", options->words,
                      "A key and semitones (negative downwards), or with --to or --by a chord "
                      "list, e.g. \"Dm7 G7 | Cmaj7\" (- reads standard input)")
          ->required();
      CLI::Option* to = cmd->add_option(
          "--to", options->to, "Move the chord list into this key, e.g. F, Eb, \"A minor\"");
      CLI::Option* by =
          cmd->add_option("--by", options->by, "Move the chord list by these semitones, e.g. 3");
      to->excludes(by);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      AddJsonOption(cmd, options->json, false);
      cmd->footer(
          "Negative intervals are accepted as they stand: harmony transpose C -2\n"
          "A chord list keeps its words: only roots and basses change, spelled by the new key;\n"
          "--to moves the list's tonic to the key's tonic (a minor piece stays minor), --by\n"
          "to the spelling with the fewest signs (C by 3 is E flat).");
      cmd->callback([options, to, by] {
        if (to->count() > 0 || by->count() > 0) return RunListTranspose(*options);
        RunKeyTranspose(*options);
      });
    }};

}  // namespace

}  // namespace harmony::tool
