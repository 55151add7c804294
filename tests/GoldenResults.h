#pragma once
// The golden results: what the analysis, chord naming and root detection give for a large,
// fixed set of varied inputs. tests/MakeGoldenResults.cpp writes them into
// tests/data/golden-results.txt, and a test of the analysis program compares a fresh run with
// that file byte for byte, so that work on the speed of these paths can't change a result.
//
// The inputs come from a small fixed pseudo-random generator, so that they are the same on
// every machine and with every standard library.

#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordTypes.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony::golden {

// SplitMix64: small, and the same everywhere.
class TRandom {
 public:
  explicit TRandom(std::uint64_t seed) : _state(seed) {}
  std::uint64_t Next() {
    std::uint64_t z = (_state += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
  }
  // 0 .. count - 1.
  int Below(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }
  bool OneIn(int count) { return Below(count) == 0; }
  template <class T, std::size_t N>
  const T& Pick(const std::array<T, N>& items) {
    return items[static_cast<std::size_t>(Below(static_cast<int>(N)))];
  }

 private:
  std::uint64_t _state;
};

// --- Chord lists

// Roots of a key as a lead sheet spells them, by key number: flat keys and sharp keys.
inline const std::array<const char*, 12> kFlatRoots = {"C",  "Db", "D",  "Eb", "E",  "F",
                                                       "Gb", "G",  "Ab", "A",  "Bb", "B"};
inline const std::array<const char*, 12> kSharpRoots = {"C",  "C#", "D",  "D#", "E",  "F",
                                                        "F#", "G",  "G#", "A",  "A#", "B"};

inline std::string Root(int keyNr, bool sharps) {
  const int key = ((keyNr % 12) + 12) % 12;
  return (sharps ? kSharpRoots : kFlatRoots)[static_cast<std::size_t>(key)];
}

// Suffixes of every kind, usual and odd, including some that the symbol parser can't read.
inline const std::array<const char*, 40> kSuffixes = {
    "",    "m",     "7",     "m7",   "maj7", "m7b5",    "dim7",    "7b9",     "7#9",   "9",
    "m9",  "13",    "7sus4", "sus4", "sus2", "6/9",     "m6",      "add9",    "7(b9)", "aug",
    "7#5", "-7",    "mi7",   "ma7",  "j7",   "5",       "dim",     "m(maj7)", "11",    "7alt",
    "6",   "9sus4", "maj9",  "m11",  "7b13", "\u25B37", "\u00F87", "7#11",    "xyz",   "m7-5"};

// Chords of a major or minor key by degree: the root's distance and the suffix.
struct TDegreeChord {
  int dist;
  const char* suffix;
};
inline const std::array<TDegreeChord, 10> kMajorKeyChords = {{{0, "maj7"},
                                                              {2, "m7"},
                                                              {4, "m7"},
                                                              {5, "maj7"},
                                                              {7, "7"},
                                                              {9, "m7"},
                                                              {11, "m7b5"},
                                                              {0, ""},
                                                              {5, ""},
                                                              {7, ""}}};
inline const std::array<TDegreeChord, 9> kMinorKeyChords = {{{0, "m"},
                                                             {0, "m7"},
                                                             {2, "m7b5"},
                                                             {3, "maj7"},
                                                             {5, "m7"},
                                                             {7, "7"},
                                                             {7, "7b9"},
                                                             {8, "maj7"},
                                                             {10, "7"}}};

// Progressions that prove a center, by the distances of their roots from it.
inline const std::array<std::array<TDegreeChord, 4>, 8> kCadences = {{
    {{{2, "m7"}, {7, "7"}, {0, "maj7"}, {-1, ""}}},
    {{{5, ""}, {7, "7"}, {0, ""}, {-1, ""}}},
    {{{0, ""}, {9, "m"}, {2, "m7"}, {7, "7"}}},
    {{{2, "m7b5"}, {7, "7b9"}, {0, "m"}, {-1, ""}}},
    {{{7, "7"}, {0, ""}, {-1, ""}, {-1, ""}}},
    {{{4, "m7"}, {9, "7"}, {2, "m7"}, {7, "7"}}},
    {{{7, "7sus4"}, {7, "7"}, {0, "6"}, {-1, ""}}},
    {{{1, "7"}, {0, "maj7"}, {-1, ""}, {-1, ""}}},
}};

// Builds the text of a chord list chord by chord: each chord lasts one to four beats, and
// bars are marked when the beats fill one.
class TListWriter {
 public:
  TListWriter(TRandom& random, bool bars) : _random(random), _bars(bars) {}
  void Chord(const std::string& symbol) {
    _Add(symbol);
    const int beats = 1 + _random.Below(_random.OneIn(3) ? 4 : 2);
    for (int b = 1; b < beats; ++b) _Add(".");
  }
  std::string Text() const { return _text; }

 private:
  void _Add(const std::string& token) {
    if (!_text.empty()) _text += _random.OneIn(20) ? "\n" : " ";
    _text += token;
    if (_bars && ++_beat % 4 == 0) _text += " |";
  }
  TRandom& _random;
  bool _bars;
  int _beat = 0;
  std::string _text;
};

// Functional progressions in keys that change now and then, with chords of the key between.
inline std::string FunctionalList(TRandom& random, int chords) {
  TListWriter list(random, !random.OneIn(4));
  int key = random.Below(12);
  bool sharps = random.OneIn(2);
  bool minor = random.OneIn(3);
  for (int count = 0; count < chords;) {
    if (random.OneIn(6)) {  // a modulation
      key = (key + random.Pick(std::array<int, 6>{2, 5, 7, 3, 4, 10})) % 12;
      sharps = random.OneIn(2);
      minor = random.OneIn(3);
    }
    if (random.OneIn(2)) {
      for (const TDegreeChord& chord : random.Pick(kCadences)) {
        if (chord.dist < 0) break;
        list.Chord(Root(key + chord.dist, sharps) + chord.suffix);
        ++count;
      }
    } else {
      const TDegreeChord chord =
          minor ? random.Pick(kMinorKeyChords) : random.Pick(kMajorKeyChords);
      std::string symbol = Root(key + chord.dist, sharps) + chord.suffix;
      if (random.OneIn(8)) symbol += "/" + Root(key + chord.dist + 4, sharps);
      list.Chord(symbol);
      ++count;
    }
  }
  return list.Text();
}

// Any chords at all, with the tokens a typed list may hold: split and hyphenated symbols,
// braces, "no chord", bar lines in odd places.
inline std::string RandomList(TRandom& random, int chords) {
  TListWriter list(random, random.OneIn(2));
  for (int count = 0; count < chords; ++count) {
    std::string symbol = Root(random.Below(12), random.OneIn(2)) + random.Pick(kSuffixes);
    switch (random.Below(16)) {
      case 0:
        symbol += " maj7";
        break;
      case 1:
        symbol = "{" + symbol + "}";
        break;
      case 2:
        symbol = "N.C.";
        break;
      case 3:
        symbol += "/" + Root(random.Below(12), random.OneIn(2));
        break;
      case 4:
        symbol += " |";
        break;
      default:
        break;
    }
    list.Chord(symbol);
  }
  return list.Text();
}

// Chords of one key in any order: many progressions fit, and their readings overlap.
inline std::string DiatonicList(TRandom& random, int chords) {
  TListWriter list(random, true);
  const int key = random.Below(12);
  const bool sharps = random.OneIn(2);
  const bool minor = random.OneIn(3);
  for (int count = 0; count < chords; ++count) {
    const TDegreeChord chord = minor ? random.Pick(kMinorKeyChords) : random.Pick(kMajorKeyChords);
    list.Chord(Root(key + chord.dist, sharps) + chord.suffix);
  }
  return list.Text();
}

// Lists made by hand for the corners: nothing, one chord, only bars, odd white space.
inline const std::array<const char*, 16> kCornerLists = {
    "",
    " ",
    "| | |",
    ". . |",
    "C",
    "C C C C",
    "Bdim Bdim Bdim",
    "Am . . . | Am . . .",
    " maj7 C G7 C",
    "C maj7 maj9 G",
    "\tDm7\t.\tG7\t.\n|\nCmaj7\r\n",
    "Am-7 D-7 G7 {C}",
    "C F G7 C C F G7 C C F G7 C",
    "Em7 . A7 . | Dm7 . G7 . | C . . . | F . Bb . |",
    "N.C. C . . . | xyz . G7 . | C",
    "F7 Bb7 F7 F7 Bb7 Bb7 F7 D7 Gm7 C7 F7 D7 Gm7 C7 F7",
};

struct TChordList {
  std::string text;
  int parse = 0;     // 0: the default; see ParseOf for the others
  int signKeys = 0;  // 0: none; see SignKeysOf for the others
};

inline std::vector<TChordList> ChordLists() {
  std::vector<TChordList> lists;
  for (const char* text : kCornerLists) lists.push_back({text});
  TRandom random(19);
  for (int i = 0; i < 90; ++i) lists.push_back({FunctionalList(random, 2 + random.Below(22))});
  for (int i = 0; i < 50; ++i) lists.push_back({RandomList(random, 1 + random.Below(16))});
  for (int i = 0; i < 50; ++i) lists.push_back({DiatonicList(random, 2 + random.Below(16))});
  // Long pieces, where readings pile up.
  for (int chords : {64, 150}) {
    lists.push_back({FunctionalList(random, chords)});
    lists.push_back({DiatonicList(random, chords)});
  }
  lists.push_back({RandomList(random, 64)});
  // Other ways of parsing, and sign keys given by the caller.
  for (int i = 0; i < 15; ++i) {
    lists.push_back({FunctionalList(random, 4 + random.Below(16)), 1 + i % 3, 0});
    lists.push_back({FunctionalList(random, 4 + random.Below(16)), 0, 1 + i % 3});
  }
  return lists;
}

inline TChordStringParse ParseOf(int kind) {
  TChordStringParse parse;
  switch (kind) {
    case 1:  // waltz bars, commas between tokens
      parse.Tokenizer = ChordListTokenizer("[\\s,]+");
      parse.BarLength = 3.0;
      break;
    case 2:  // half beats, a slash as a beat
      parse.BeatLength = 0.5;
      parse.BarLength = 2.0;
      parse.BeatTokens = {".", "/"};
      break;
    case 3:  // an odd separator, no bar tokens
      parse.Tokenizer = ChordListTokenizer(" +|\\n");
      parse.BarTokens = {};
      break;
    default:
      break;
  }
  return parse;
}

inline CHarmAnlsSignKeys SignKeysOf(int kind) {
  CHarmAnlsSignKeys keys;
  const auto key = [&](double position, int keyNr, TEnh enh, TSignKeyType type) {
    keys.emplace_back(kHarmAnlsUndefDouble, position, CSignKeyLite(CKeyEnh(keyNr, enh), type));
  };
  switch (kind) {
    case 1:
      key(0.0, 5, TEnh_n, TSignKeyType::Major);
      break;
    case 2:
      key(0.0, 2, TEnh_n, TSignKeyType::Minor);
      key(16.0, 10, TEnh_b, TSignKeyType::Major);
      break;
    case 3:
      key(kHarmAnlsUndefDouble, kKeyNrUndef, TEnh_Undef, TSignKeyType::Undef);
      break;
    default:
      break;
  }
  return keys;
}

// Line ends and tabs of a list written visibly, so that each list stands on one line.
inline std::string OneLine(const std::string& text) {
  std::string line;
  for (char c : text) {
    if (c == '\n') {
      line += "\\n";
    } else if (c == '\t') {
      line += "\\t";
    } else if (c == '\r') {
      line += "\\r";
    } else {
      line += c;
    }
  }
  return line;
}

inline void WriteAnalyses(std::ostream& out) {
  const std::vector<TChordList> lists = ChordLists();
  for (std::size_t i = 0; i < lists.size(); ++i) {
    const TChordList& list = lists[i];
    for (int method = 0; method < 4; ++method) {
      out << "== analyse " << i << " method " << method << " parse " << list.parse << " sign keys "
          << list.signKeys << ": " << OneLine(list.text) << '\n';
      CHarmonicAnalyse analyse;
      analyse.AnalyseFromChordString(list.text, SignKeysOf(list.signKeys),
                                     static_cast<CHarmonicAnalyse::TAnalyse>(method),
                                     ParseOf(list.parse));
      analyse.AppendJSONString(out);
      out << '\n';
    }
  }
}

// --- Clean-up of alternative readings

// Readings with ranges over a short list, so that they contain, repeat and meet each other;
// now and then a reading of two or three centers.
inline CHarmAnlsCenterAlternatives RandomAlternatives(TRandom& random) {
  const std::array<double, 5> probabilities = {1.0, 0.5, 1.0 / 3.0, 0.25, 1.0};
  const int span = 3 + random.Below(8);
  const auto randomCenter = [&] {
    return CHarmCenterLite(
        CKeyEnh(random.Below(3) * 7 % 12, TEnh_n),
        SemitonesFromSignKeyType(random.OneIn(3) ? TSignKeyType::Minor : TSignKeyType::Major));
  };
  CHarmAnlsCenterAlternatives alternatives;
  const int count = random.Below(30);
  for (int a = 0; a < count; ++a) {
    const double probability = random.Pick(probabilities);
    if (!alternatives.empty() && random.OneIn(4)) {
      // The same reading again, or the same ranges with another center.
      CHarmAnlsCentersInChords centers = alternatives[static_cast<std::size_t>(random.Below(
                                                          static_cast<int>(alternatives.size())))]
                                             .Centers;
      if (random.OneIn(2)) centers.front().HarmCenter = randomCenter();
      alternatives.emplace_back(probability, centers);
      continue;
    }
    CHarmAnlsCentersInChords centers;
    const int entries = random.OneIn(5) ? 2 + random.Below(2) : 1;
    for (int e = 0; e < entries; ++e) {
      const auto begin = static_cast<std::size_t>(random.Below(span));
      const auto end = begin + 1 + static_cast<std::size_t>(random.Below(span / 2));
      centers.emplace_back(randomCenter(), begin, end);
    }
    alternatives.emplace_back(probability, centers);
  }
  return alternatives;
}

inline void WriteAlternativesCleanUp(std::ostream& out) {
  TRandom random(1906);
  for (int i = 0; i < 600; ++i) {
    CHarmAnlsCenterAlternatives alternatives = RandomAlternatives(random);
    out << "== alternatives " << i << ": ";
    alternatives.WriteTraceBrief(out);
    alternatives.RemoveShorterContainedAlternatives();
    out << "\nouter: ";
    alternatives.WriteTraceBrief(out);
    alternatives.Deduplication();
    out << "\nunique: ";
    alternatives.WriteTraceBrief(out);
    alternatives.RemoveNonSureAlternativesWithSameRangeAsSureAlternative();
    out << "\nsure: ";
    alternatives.WriteTraceBrief(out);
    out << '\n';
  }
}

// --- Chord records: names, compatibility with scales, fit to keys

// Roots with every spelling a lead sheet may use.
inline const std::array<CKeyEnh, 21> kSpelledRoots = {
    {{0, TEnh_n},  {1, TEnh_s},  {1, TEnh_b}, {2, TEnh_n}, {3, TEnh_s},  {3, TEnh_b},
     {4, TEnh_n},  {4, TEnh_b},  {5, TEnh_s}, {5, TEnh_n}, {6, TEnh_s},  {6, TEnh_b},
     {7, TEnh_n},  {8, TEnh_s},  {8, TEnh_b}, {9, TEnh_n}, {10, TEnh_s}, {10, TEnh_b},
     {11, TEnh_n}, {11, TEnh_b}, {0, TEnh_s}}};

inline std::vector<CChordLite> ChordRecords() {
  std::vector<CChordLite> chords;
  TRandom random(2007);
  for (const TChordType& type : SharedChordTypes().BuiltIn()) {
    CSemitones mask;
    mask.AddIntvls(type.Intvls);
    for (const CKeyEnh& root : kSpelledRoots) {
      chords.emplace_back(root, mask);
      // A bass from the chord or from outside it, spelled either way.
      const int bassKey = (root.KeyNr + random.Below(12)) % 12;
      chords.emplace_back(root, mask, CKeyEnh(bassKey, random.OneIn(2) ? TEnh_b : TEnh_s));
    }
  }
  for (int i = 0; i < 1200; ++i) {
    const CSemitones mask(1 | (random.Next() & 0xffe));
    const CKeyEnh root = random.Pick(kSpelledRoots);
    const CKeyEnh bass = random.OneIn(3) ? random.Pick(kSpelledRoots) : CKeyEnh();
    chords.emplace_back(root, mask, bass);
  }
  chords.emplace_back();  // undefined
  return chords;
}

// Naming preferences that change the text in different places.
inline std::vector<CChordNamePrefs> NamePrefsVariants() {
  std::vector<CChordNamePrefs> variants;
  variants.push_back(GetCurrentChordNamePrefs());
  variants.push_back(GetChordNamePrefsNonUTF8());
  variants.push_back(GetCurrentChordNamePrefs_Loftbox());
  variants.push_back(CurrentChordNamePrefs_SpaceBetweenNamePartsAndSlash());
  CChordNamePrefs prefs = GetChordNamePrefsNonUTF8();
  prefs.AccessibilitySpoken = 1;
  variants.push_back(prefs);
  prefs = GetChordNamePrefsNonUTF8();
  prefs.TensionStyle = 0;
  prefs.MajorSeventhStyle = 1;
  prefs.MinorNaming = 2;
  prefs.NameWithoutSlashIfNarrow = 0;
  variants.push_back(prefs);
  prefs = GetChordNamePrefsNonUTF8();
  prefs.TensionStyle = 1;
  prefs.MajorSeventhStyle = 2;
  prefs.MinorNaming = 1;
  prefs.HideBassIntvlInWideChords = 0;
  prefs.GermanAccidentals = 1;
  prefs.BIsH = 1;
  variants.push_back(prefs);
  return variants;
}

inline void WriteKeyEnh(std::ostream& out, const CKeyEnh& key) {
  out << key.KeyNr << ':' << static_cast<int>(key.Enh);
}

// Major and minor on every key, then other scales on a few roots.
inline std::vector<CScaleLite> Scales() {
  std::vector<CScaleLite> scales;
  for (const TSignKeyType type : {TSignKeyType::Major, TSignKeyType::Minor}) {
    for (int key = 0; key < 12; ++key) {
      const TEnh enh =
          (key == 1 || key == 3 || key == 6 || key == 8 || key == 10) ? TEnh_b : TEnh_n;
      scales.emplace_back(CKeyEnh(key, enh), SemitonesFromSignKeyType(type));
    }
  }
  // Dorian, harmonic and melodic minor, mixolydian, phrygian, major pentatonic.
  for (std::uint64_t mask : {1709ULL, 2477ULL, 2733ULL, 1717ULL, 1451ULL, 661ULL}) {
    for (const CKeyEnh& root : {CKeyEnh(2, TEnh_n), CKeyEnh(6, TEnh_s), CKeyEnh(10, TEnh_b)}) {
      scales.emplace_back(root, CSemitones(mask));
    }
  }
  scales.emplace_back();  // undefined
  return scales;
}

inline void WriteChordRecords(std::ostream& out) {
  const std::vector<CChordNamePrefs> variants = NamePrefsVariants();
  const std::vector<CScaleLite> scales = Scales();
  std::vector<CSignKeyHeavy> keys;
  for (const TSignKeyTypeNoUndef type : {TSignKeyTypeNoUndef::Major, TSignKeyTypeNoUndef::Minor}) {
    for (int key = 0; key < 12; ++key) keys.emplace_back(key, type);
  }
  for (const CChordLite& chord : ChordRecords()) {
    out << "== chord ";
    WriteKeyEnh(out, chord.RootKeyEnh);
    out << ' ' << chord.Semitones.Word() << ' ';
    WriteKeyEnh(out, chord.BassKeyEnh);
    out << '\n';
    const CChordHeavy heavy = chord.ToChordHeavy(24);
    for (const CChordNamePrefs& prefs : variants) out << heavy.Name(prefs) << " | ";
    CChordHeavy respelled = heavy;
    respelled.SetRootNoteEnhWithLeastSigns();
    out << respelled.Name(GetChordNamePrefsNonUTF8()) << '\n';
    for (const CScaleLite& scale : scales) {
      out << (ScaleLite::ChordIsCompatibleWithScale(chord, scale) ? '1' : '0');
    }
    out << ' ';
    for (const CSignKeyHeavy& key : keys) {
      out << (heavy.IsInSignKeyRegardlessOfEnh(key) ? '1' : '0');
    }
    out << '\n';
  }
}

// --- Played notes

inline std::vector<std::vector<int>> PlayedNoteSets() {
  std::vector<std::vector<int>> sets;
  // Triads and seventh chords of every kind in every inversion, in close and open voicings.
  const std::array<std::array<int, 4>, 9> shapes = {{{0, 4, 7, -1},
                                                     {0, 3, 7, -1},
                                                     {0, 3, 6, -1},
                                                     {0, 4, 8, -1},
                                                     {0, 4, 7, 10},
                                                     {0, 4, 7, 11},
                                                     {0, 3, 7, 10},
                                                     {0, 3, 6, 10},
                                                     {0, 3, 6, 9}}};
  for (const std::array<int, 4>& shape : shapes) {
    for (int root = 48; root < 60; ++root) {
      const int size = shape[3] < 0 ? 3 : 4;
      for (int inversion = 0; inversion < size; ++inversion) {
        std::vector<int> close, open;
        for (int n = 0; n < size; ++n) {
          const int index = (inversion + n) % size;
          const int note =
              root + shape[static_cast<std::size_t>(index)] + (index < inversion ? 12 : 0);
          close.push_back(note);
          open.push_back(note + (n % 2 == 1 ? 12 : 0));
        }
        sets.push_back(close);
        sets.push_back(open);
      }
    }
  }
  // Any notes: two to seven of them over five octaves, doubled keys included.
  TRandom random(4711);
  for (int i = 0; i < 2200; ++i) {
    std::vector<int> notes;
    const int count = 2 + random.Below(6);
    const int low = 28 + random.Below(40);
    for (int n = 0; n < count; ++n) notes.push_back(low + random.Below(30));
    sets.push_back(notes);
  }
  sets.push_back({});
  return sets;
}

inline void WritePlayedNotes(std::ostream& out) {
  const CChordNamePrefs& prefs = GetChordNamePrefsNonUTF8();
  for (const std::vector<int>& notes : PlayedNoteSets()) {
    out << "== notes";
    CMySet<unsigned char> set;
    for (int note : notes) {
      out << ' ' << note;
      set.insert(static_cast<unsigned char>(note));
    }
    out << '\n';
    for (const bool net : {true, false}) {
      CChordHeavy chord(CNote::Undef, set, CIntvlSet::kDefaultWrapIntvl);
      if (net) chord.SetWrapIntvlToNeuronalNetInputCount();
      chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(net ? kSingleChordAnalysisAlgoNeuronalNet
                                                              : kSingleChordAnalysisAlgoProbTable);
      out << (net ? "net " : "table ") << chord.RootNote().KeyName(prefs) << ' '
          << chord.Name(prefs) << " |";
      for (const CNote& note : chord.Notes()) out << ' ' << note.NoteNr() << note.KeyName(prefs);
      out << '\n';
    }
  }
}

inline void WriteGoldenResults(std::ostream& out) {
  WriteAnalyses(out);
  WriteAlternativesCleanUp(out);
  WriteChordRecords(out);
  WritePlayedNotes(out);
}

}  // namespace harmony::golden
