#include "HarteChordList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <vector>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony::tool {

namespace {

constexpr int kBeatsPerBarOfList = 4;
constexpr int kDefaultBeatsPerBar = 4;
constexpr const char* kNoChord = "N.C.";

struct THarteQuality {
  std::string_view name;
  std::initializer_list<int> semitones;
};

// The shorthands with the semitones of their degrees above the root.
const std::array<THarteQuality, 25> kQualities{{
    {"maj", {0, 4, 7}},
    {"min", {0, 3, 7}},
    {"dim", {0, 3, 6}},
    {"aug", {0, 4, 8}},
    {"maj7", {0, 4, 7, 11}},
    {"min7", {0, 3, 7, 10}},
    {"7", {0, 4, 7, 10}},
    {"dim7", {0, 3, 6, 9}},
    {"hdim7", {0, 3, 6, 10}},
    {"minmaj7", {0, 3, 7, 11}},
    {"maj6", {0, 4, 7, 9}},
    {"min6", {0, 3, 7, 9}},
    {"9", {0, 4, 7, 10, 2}},
    {"maj9", {0, 4, 7, 11, 2}},
    {"min9", {0, 3, 7, 10, 2}},
    {"11", {0, 4, 7, 10, 2, 5}},
    {"maj11", {0, 4, 7, 11, 2, 5}},
    {"min11", {0, 3, 7, 10, 2, 5}},
    {"13", {0, 4, 7, 10, 2, 5, 9}},
    {"maj13", {0, 4, 7, 11, 2, 5, 9}},
    {"min13", {0, 3, 7, 10, 2, 5, 9}},
    {"sus2", {0, 2, 7}},
    {"sus4", {0, 5, 7}},
    {"5", {0, 7}},
    {"1", {0}},
}};

// Degree 1..13 above the root in semitones, before accidentals.
constexpr std::array<int, 14> kDegreeSemitones{0, 0, 2, 4, 5, 7, 9, 11, 12, 14, 16, 17, 19, 21};
// The key numbers of the letters C D E F G A B.
constexpr std::array<int, 7> kLetterKeys{0, 2, 4, 5, 7, 9, 11};
constexpr std::string_view kLetters = "CDEFGAB";

struct TDegree {
  int number = 0;     // 1..13
  int semitones = 0;  // above the root, accidentals applied
  bool omitted = false;
};

int Wrap12(int value) { return ((value % 12) + 12) % 12; }

// Accidentals in front of (a degree) or behind (a root) the letter or number.
bool ReadAccidentals(std::string_view& text, int& accidentals) {
  accidentals = 0;
  while (!text.empty() && (text.front() == 'b' || text.front() == '#')) {
    accidentals += text.front() == '#' ? 1 : -1;
    text.remove_prefix(1);
  }
  return accidentals >= -3 && accidentals <= 3;
}

std::optional<TDegree> ReadDegree(std::string_view text) {
  TDegree degree;
  if (!text.empty() && text.front() == '*') {
    degree.omitted = true;
    text.remove_prefix(1);
  }
  int accidentals = 0;
  if (!ReadAccidentals(text, accidentals)) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), degree.number);
  if (error != std::errc() || end != text.data() + text.size() || degree.number < 1 ||
      degree.number > 13) {
    return std::nullopt;
  }
  degree.semitones = kDegreeSemitones[static_cast<std::size_t>(degree.number)] + accidentals;
  return degree;
}

struct TRoot {
  int letter = 0;
  CKeyEnh key;
};

std::optional<TRoot> ReadRoot(std::string_view& text) {
  if (text.empty()) return std::nullopt;
  const std::size_t letter = kLetters.find(text.front());
  if (letter == std::string_view::npos) return std::nullopt;
  text.remove_prefix(1);
  int accidentals = 0;
  if (!ReadAccidentals(text, accidentals)) return std::nullopt;
  const int keyNr = Wrap12(kLetterKeys[letter] + accidentals);
  return TRoot{static_cast<int>(letter), CKeyEnh(keyNr, static_cast<TEnh>(TEnh_n + accidentals))};
}

// The bass degree spelled by its letter distance from the root.
CKeyEnh SpelledDegree(const TRoot& root, const TDegree& degree) {
  const int letter = (root.letter + degree.number - 1) % 7;
  const int keyNr = Wrap12(root.key.KeyNr + degree.semitones);
  int accidentals = Wrap12(keyNr - kLetterKeys[static_cast<std::size_t>(letter)]);
  if (accidentals > 6) accidentals -= 12;
  if (accidentals < -3 || accidentals > 3) return CKeyEnh(keyNr, TEnh_Undef);
  return CKeyEnh(keyNr, static_cast<TEnh>(TEnh_n + accidentals));
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i == text.size() || text[i] == separator) {
      parts.push_back(text.substr(start, i - start));
      start = i + 1;
    }
  }
  return parts;
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
    const std::size_t start = i;
    while (i < text.size() && !std::isspace(static_cast<unsigned char>(text[i]))) ++i;
    if (i > start) words.push_back(text.substr(start, i - start));
  }
  return words;
}

std::string_view Trimmed(std::string_view text) {
  const std::vector<std::string_view> words = Words(text);
  if (words.empty()) return {};
  return text.substr(
      static_cast<std::size_t>(words.front().data() - text.data()),
      static_cast<std::size_t>(words.back().data() + words.back().size() - words.front().data()));
}

// Beats of a bar of N/D; 0 for what is no metre.
int BeatsOfMetre(std::string_view metre) {
  const std::vector<std::string_view> parts = Split(Trimmed(metre), '/');
  int count = 0;
  int unit = 0;
  if (parts.size() != 2 ||
      std::from_chars(parts[0].data(), parts[0].data() + parts[0].size(), count).ec !=
          std::errc() ||
      std::from_chars(parts[1].data(), parts[1].data() + parts[1].size(), unit).ec != std::errc() ||
      count <= 0 || count > 64) {
    return 0;
  }
  switch (unit) {
    case 2:
      return 2 * count;
    case 4:
      return count;
    case 8:
      return count % 3 == 0 ? count / 3 : (count + 1) / 2;
    default:
      return 0;
  }
}

std::string ChordToken(std::string_view symbol) {
  const std::optional<CChordLite> chord = ChordFromHarteSymbol(symbol);
  if (!chord) return kNoChord;
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = 1;
  std::string name = CHarmAnlsChord(*chord).TraceName(prefs);
  // A token may not hold a blank ("Cadd 9" reads as "Cadd9").
  std::erase_if(name, [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
  return name;
}

// Writes the tokens of the chord list, one per beat, with bar lines where whole bars of
// four are full.
class CChordListWriter {
 public:
  void Bar(std::string_view bar, int beatsPerBar) {
    std::vector<std::string> slots;
    for (std::string_view word : Words(bar)) {
      if (word.size() > 2 && word.front() == '(' && word.back() == ')') {
        if (const int beats = BeatsOfMetre(word.substr(1, word.size() - 2)); beats > 0) {
          beatsPerBar = beats;
          continue;
        }
      }
      slots.push_back(word == "." ? std::string(".") : ChordToken(word));
    }
    if (slots.empty()) return;
    const int count = static_cast<int>(slots.size());
    const bool share = count <= beatsPerBar;
    for (int i = 0; i < count; ++i) {
      const int beats = share ? beatsPerBar / count + (i == 0 ? beatsPerBar % count : 0) : 1;
      for (int beat = 0; beat < beats; ++beat)
        Token(beat == 0 ? slots[static_cast<std::size_t>(i)] : ".");
    }
    if (_beat % kBeatsPerBarOfList == 0) Token("|");
  }
  void LineEnd() {
    if (_lineHasTokens) _out << '\n';
    _lineHasTokens = false;
  }
  std::string Text() const { return _out.str(); }

 private:
  void Token(const std::string& token) {
    if (_lineHasTokens) _out << ' ';
    _out << token;
    _lineHasTokens = true;
    if (token != "|") ++_beat;
  }

  std::ostringstream _out;
  long _beat = 0;
  bool _lineHasTokens = false;
};

// The bars of a line, from its first bar line to its last, and how often they are played.
// (Degree lists hold commas too, so the line isn't cut at its commas.)
void WriteBars(std::string_view line, int beatsPerBar, CChordListWriter& writer) {
  const std::size_t first = line.find('|');
  const std::size_t last = line.rfind('|');
  if (first == std::string_view::npos || first == last) return;
  int repeats = 1;
  std::string_view tail = line.substr(last + 1);
  tail = Trimmed(tail.substr(0, tail.find(',')));
  if (tail.size() > 1 && tail.front() == 'x') {
    int count = 0;
    if (std::from_chars(tail.data() + 1, tail.data() + tail.size(), count).ec == std::errc() &&
        count > 0 && count <= 64) {
      repeats = count;
    }
  }
  const std::vector<std::string_view> bars = Split(line.substr(first + 1, last - first - 1), '|');
  for (int repeat = 0; repeat < repeats; ++repeat) {
    for (std::string_view bar : bars) writer.Bar(bar, beatsPerBar);
  }
}

}  // namespace

std::optional<CChordLite> ChordFromHarteSymbol(std::string_view symbol) {
  std::string_view text = symbol;
  const std::optional<TRoot> root = ReadRoot(text);
  if (!root) return std::nullopt;
  std::string_view bassText;
  if (const std::size_t slash = text.find('/'); slash != std::string_view::npos) {
    bassText = text.substr(slash + 1);
    text = text.substr(0, slash);
  }
  std::string_view degreesText;
  if (const std::size_t open = text.find('('); open != std::string_view::npos) {
    if (text.back() != ')') return std::nullopt;
    degreesText = text.substr(open + 1, text.size() - open - 2);
    text = text.substr(0, open);
  }
  CSemitones semitones;
  if (text.empty() || text == ":") {
    // A bare root is major; a degree list without shorthand stands alone.
    if (degreesText.empty()) semitones = CSemitones(145);
  } else {
    if (text.front() != ':') return std::nullopt;
    const std::string_view name = text.substr(1);
    const auto quality = std::find_if(kQualities.begin(), kQualities.end(),
                                      [name](const THarteQuality& q) { return q.name == name; });
    if (quality == kQualities.end()) return std::nullopt;
    for (int step : quality->semitones)
      semitones.SetSemitone(static_cast<unsigned long>(step), true);
  }
  if (!degreesText.empty()) {
    for (std::string_view part : Split(degreesText, ',')) {
      const std::optional<TDegree> degree = ReadDegree(Trimmed(part));
      if (!degree) return std::nullopt;
      semitones.SetSemitone(static_cast<unsigned long>(Wrap12(degree->semitones)),
                            !degree->omitted);
    }
  }
  CKeyEnh bass;
  if (!bassText.empty()) {
    const std::optional<TDegree> degree = ReadDegree(bassText);
    if (!degree || degree->omitted) return std::nullopt;
    if (Wrap12(degree->semitones) != 0) bass = SpelledDegree(*root, *degree);
  }
  if (semitones.IsEmpty()) return std::nullopt;
  return CChordLite(root->key, semitones, bass);
}

bool LooksLikeHarteAnnotation(std::string_view text) {
  const bool header = text.find("# metre:") != std::string_view::npos ||
                      text.find("# tonic:") != std::string_view::npos;
  return header && text.find('|') != std::string_view::npos;
}

std::string HarteAnnotationToChordList(std::string_view text) {
  CChordListWriter writer;
  int beatsPerBar = kDefaultBeatsPerBar;
  for (std::string_view line : Split(text, '\n')) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.starts_with("#")) {
      constexpr std::string_view kMetre = "# metre:";
      if (line.starts_with(kMetre)) {
        if (const int beats = BeatsOfMetre(line.substr(kMetre.size())); beats > 0) {
          beatsPerBar = beats;
        }
      }
      continue;
    }
    const std::size_t tab = line.find('\t');
    const std::string_view annotation = tab == std::string_view::npos ? line : line.substr(tab + 1);
    WriteBars(annotation, beatsPerBar, writer);
    writer.LineEnd();
  }
  return writer.Text();
}

}  // namespace harmony::tool
