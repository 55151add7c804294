// The lead-sheet chord reader: root, quality, number, tail of tensions and words, bass. The
// spellings are the tables of LeadSheetNotation.cpp. Where a spelling can be read in more than
// one way (a German or solfege root, a quality word), every reading is tried and the one that
// reads furthest wins; a reading is a handful of table look-ups on a view, so this stays
// cheap and never allocates.

#include "harmony/chords/LeadSheetChordReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

#include "LeadSheetNotation.h"

namespace harmony {

namespace {

using namespace leadsheet;

constexpr std::size_t kNoPos = std::string_view::npos;

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// The tables are scanned often; the first byte settles most comparisons.
bool StartsWith(std::string_view text, std::size_t pos, std::string_view word) {
  if (word.empty()) return true;
  if (pos >= text.size() || text[pos] != word[0]) return false;
  return text.substr(pos, word.size()) == word;
}

bool StartsWithNoCase(std::string_view text, std::size_t pos, std::string_view word) {
  if (pos > text.size() || text.size() - pos < word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (Lower(text[pos + i]) != word[i]) return false;
  }
  return true;
}

bool IsDigitAt(std::string_view text, std::size_t pos) {
  return pos < text.size() && text[pos] >= '0' && text[pos] <= '9';
}

std::size_t SkipBlanks(std::string_view text, std::size_t pos) {
  while (pos < text.size() && text[pos] == ' ') ++pos;
  return pos;
}

// ---- Note names

struct TNote {
  CKeyEnh key;
  std::size_t end = 0;
};

constexpr std::array<int, 8> kLetterKeys{9, 11, 0, 2, 4, 5, 7, 11};  // A..H

CKeyEnh KeyFor(int natural, int alteration) {
  if (alteration < -2 || alteration > 2) return CKeyEnh();
  return CKeyEnh((natural + alteration + 24) % 12, static_cast<TEnh>(TEnh_n + alteration));
}

// Signs behind an English or solfege name: b # x and the Unicode flat, sharp and double signs,
// at most two steps, all in one direction.
int ReadAccidentals(std::string_view text, std::size_t& pos) {
  struct TSpelling {
    std::string_view text;
    int steps;
  };
  static constexpr std::array<TSpelling, 7> kSpellings{
      TSpelling{"b", -1},         TSpelling{"\u266D", -1}, TSpelling{"#", 1},
      TSpelling{"\u266F", 1},     TSpelling{"x", 2},       TSpelling{"\U0001D12A", 2},
      TSpelling{"\U0001D12B", -2}};
  int alteration = 0;
  for (bool found = true; found && alteration > -2 && alteration < 2;) {
    found = false;
    for (const TSpelling& spelling : kSpellings) {
      const bool sameWay = alteration == 0 || (alteration < 0) == (spelling.steps < 0);
      if (sameWay && std::abs(alteration + spelling.steps) <= 2 &&
          StartsWith(text, pos, spelling.text)) {
        alteration += spelling.steps;
        pos += spelling.text.size();
        found = true;
        break;
      }
    }
  }
  return alteration;
}

bool EnglishNote(std::string_view text, std::size_t pos, const CChordNamePrefs& prefs,
                 TNote& note) {
  const char letter = pos < text.size() ? Lower(text[pos]) : '\0';
  if (letter < 'a' || letter > 'h') return false;
  int alteration = (letter == 'b' && prefs.BIsBFlat != 0) ? -1 : 0;
  ++pos;
  alteration += ReadAccidentals(text, pos);
  note = {KeyFor(kLetterKeys[letter - 'a'], alteration), pos};
  return note.key.KeyNr != kKeyNrUndef;
}

// Cis Des Es As Ais H His Hes, and the double forms Cisis Deses Eses Ases.
bool GermanNote(std::string_view text, std::size_t pos, TNote& note) {
  const char letter = pos < text.size() ? text[pos] : '\0';
  if (letter < 'A' || letter > 'H' || letter == 'B') return false;
  ++pos;
  int alteration = 0;
  if ((letter == 'A' || letter == 'E') && StartsWith(text, pos, "s")) {
    alteration = -1;
    pos += 1;
  }
  for (int syllables = 0; syllables < 2 && alteration > -2 && alteration < 2; ++syllables) {
    if (alteration <= 0 && StartsWith(text, pos, "es")) {
      --alteration;
    } else if (alteration >= 0 && StartsWith(text, pos, "is")) {
      ++alteration;
    } else {
      break;
    }
    pos += 2;
  }
  if (alteration == 0) return false;
  note = {KeyFor(kLetterKeys[letter - 'A'], alteration), pos};
  return true;
}

// Do Re Mi Fa Sol La Si Ti, with signs behind.
bool SolfegeNote(std::string_view text, std::size_t pos, TNote& note) {
  struct TSyllable {
    std::string_view text;
    int key;
  };
  static constexpr std::array<TSyllable, 8> kSyllables{
      TSyllable{"do", 0},  TSyllable{"re", 2}, TSyllable{"mi", 4},  TSyllable{"fa", 5},
      TSyllable{"sol", 7}, TSyllable{"la", 9}, TSyllable{"si", 11}, TSyllable{"ti", 11}};
  for (const TSyllable& syllable : kSyllables) {
    if (!StartsWithNoCase(text, pos, syllable.text)) continue;
    pos += syllable.text.size();
    const int alteration = ReadAccidentals(text, pos);
    note = {KeyFor(syllable.key, alteration), pos};
    return note.key.KeyNr != kKeyNrUndef;
  }
  return false;
}

// The readings of a note name at `pos`, the preferred first: solfege, German, English.
std::size_t NoteReadings(std::string_view text, std::size_t pos, const CChordNamePrefs& prefs,
                         std::array<TNote, 3>& notes) {
  std::size_t count = 0;
  if (SolfegeNote(text, pos, notes[count])) ++count;
  if (GermanNote(text, pos, notes[count])) ++count;
  if (EnglishNote(text, pos, prefs, notes[count])) ++count;
  return count;
}

// ---- Tones

struct TTones {
  std::int8_t third = 4;
  std::int8_t fifth = 7;
  std::int8_t seventh = -1;
  std::int8_t qualitySeventh = 10;  // the seventh a number or a plain 7 brings
  std::uint16_t tensions = 0;
  std::uint16_t omitted = 0;

  std::uint64_t Mask() const {
    std::uint16_t bits = Bit(0) | tensions;
    for (const std::int8_t tone : {third, fifth, seventh}) {
      if (tone >= 0) bits |= Bit(tone);
    }
    return bits & static_cast<std::uint16_t>(~omitted);
  }
};

// A reading of everything behind the root: the tones, the bass, and where reading stopped.
struct TReading {
  TTones tones;
  CKeyEnh bass;
  std::size_t bassOffset = 0;
  std::size_t bassEnd = 0;
  std::size_t end = 0;
};

bool ReadSign(std::string_view text, std::size_t& pos, TSign& sign, bool& plus) {
  for (const TSignSpelling& spelling : SignSpellings()) {
    if (StartsWith(text, pos, spelling.text)) {
      sign = spelling.sign;
      plus = spelling.text == "+";
      pos += spelling.text.size();
      return true;
    }
  }
  sign = kSignNone;
  plus = false;
  return false;
}

void ApplyDegree(const TDegree& degree, bool added, TTones& tones) {
  if (degree.tone == 10) {
    if (tones.seventh < 0) tones.seventh = tones.qualitySeventh;
  } else if (degree.replacesFifth && !added) {
    tones.fifth = degree.tone;
  } else {
    tones.tensions =
        static_cast<std::uint16_t>((tones.tensions & ~degree.clears) | Bit(degree.tone));
  }
}

// A degree with or without a sign (b9, +5, 13); a lone "+" is the sharp fifth (C7+).
bool ReadDegree(std::string_view text, std::size_t& pos, bool added, TTones& tones) {
  std::size_t p = pos;
  TSign sign;
  bool plus;
  ReadSign(text, p, sign, plus);
  for (const TDegree& degree : Degrees()) {
    if (degree.sign != sign || !StartsWith(text, p, degree.digits)) continue;
    if (IsDigitAt(text, p + degree.digits.size())) continue;
    ApplyDegree(degree, added, tones);
    pos = p + degree.digits.size();
    return true;
  }
  if (!plus || added || IsDigitAt(text, p)) return false;
  tones.fifth = 8;
  pos = p;
  return true;
}

bool ReadOmission(std::string_view text, std::size_t& pos, TTones& tones) {
  for (const TOmission& omission : Omissions()) {
    if (!StartsWith(text, pos, omission.digits)) continue;
    if (IsDigitAt(text, pos + omission.digits.size())) continue;
    if (omission.part == 3) tones.third = -1;
    if (omission.part == 5) tones.fifth = -1;
    if (omission.part == 7) tones.seventh = -1;
    tones.omitted |= omission.tensions;
    pos += omission.digits.size();
    return true;
  }
  return false;
}

void ApplyAlt(TTones& tones) {
  if (tones.seventh < 0) tones.seventh = 10;
  tones.fifth = -1;
  tones.tensions = static_cast<std::uint16_t>((tones.tensions & ~(Bit(2) | Bit(5) | Bit(9))) |
                                              Bit(1) | Bit(3) | Bit(6) | Bit(8));
}

bool ReadWord(std::string_view text, std::size_t& pos, TTones& tones) {
  for (const TWord& word : Words()) {
    if (!StartsWithNoCase(text, pos, word.text)) continue;
    std::size_t p = pos + word.text.size();
    switch (word.action) {
      case kSus4:
        tones.third = 5;
        break;
      case kSus2:
        tones.third = 2;
        break;
      case kAlt:
        ApplyAlt(tones);
        break;
      case kSharpFifth:
        tones.fifth = 8;
        break;
      case kAdd:
        p = SkipBlanks(text, p);
        if (!ReadDegree(text, p, true, tones)) continue;
        break;
      case kOmit:
        p = SkipBlanks(text, p);
        if (!ReadOmission(text, p, tones)) continue;
        break;
    }
    pos = p;
    return true;
  }
  return false;
}

// A number behind the quality (or behind a major-seventh word): the seventh and tones it brings.
bool ReadNumber(std::string_view text, std::size_t& pos, std::uint16_t allowed, bool plain,
                TTones& tones) {
  for (const TNumber& number : Numbers()) {
    if ((allowed & (1u << number.id)) == 0 || !StartsWith(text, pos, number.text)) continue;
    if (IsDigitAt(text, pos + number.text.size())) continue;
    if (number.seventh) tones.seventh = tones.qualitySeventh;
    if (number.id == kNum5) tones.third = -1;
    if (number.id == kNum4 && plain) {
      tones.third = 5;  // C4 stands alone: sus4
    } else {
      tones.tensions |= number.tensions;
    }
    pos += number.text.size();
    return true;
  }
  return false;
}

constexpr std::uint16_t kSeventhNumbers =
    (1u << kNum7) | (1u << kNum9) | (1u << kNum11) | (1u << kNum13);

// maj7, M9, Δ, ^7: the major seventh, with the number that follows a word (a sign may stand
// alone).
bool ReadMajorSeventh(std::string_view text, std::size_t& pos, TTones& tones) {
  for (const TQuality& word : MajorSeventhWords()) {
    if (!StartsWith(text, pos, word.text)) continue;
    TTones with = tones;
    with.qualitySeventh = 11;
    std::size_t p = pos + word.text.size();
    if (!ReadNumber(text, p, kSeventhNumbers, false, with)) {
      if (!word.seventhAlone) continue;
      with.seventh = 11;
    }
    tones = with;
    pos = p;
    return true;
  }
  return false;
}

// Tensions, words and separators in any order; a "/" followed by a degree is a tone (6/9).
std::size_t ReadTail(std::string_view text, std::size_t pos, TTones& tones) {
  int depth = 0;
  while (pos < text.size()) {
    const char c = text[pos];
    if (c == ' ' || c == ',' || c == '(' || (c == ')' && depth > 0)) {
      depth += c == '(' ? 1 : c == ')' ? -1 : 0;
      ++pos;
      continue;
    }
    if (c == '/') {
      std::size_t p = SkipBlanks(text, pos + 1);
      if (!ReadDegree(text, p, false, tones)) break;
      pos = p;
      continue;
    }
    if (!ReadDegree(text, pos, false, tones) && !ReadWord(text, pos, tones) &&
        !ReadMajorSeventh(text, pos, tones)) {
      break;
    }
  }
  return pos;
}

// "/" and a bass note, the reading that leaves nothing behind preferred.
std::size_t ReadBass(std::string_view text, std::size_t pos, const CChordNamePrefs& prefs,
                     CKeyEnh& bass, std::size_t& bassOffset) {
  if (pos >= text.size() || text[pos] != '/') return pos;
  std::array<TNote, 3> notes;
  bassOffset = SkipBlanks(text, pos + 1);
  const std::size_t count = NoteReadings(text, bassOffset, prefs, notes);
  if (count == 0) return pos;
  const TNote* best = &notes[0];
  for (std::size_t i = 0; i < count; ++i) {
    if (SkipBlanks(text, notes[i].end) == text.size()) {
      best = &notes[i];
      break;
    }
  }
  bass = best->key;
  return best->end;
}

constexpr TQuality kPlain{"", 4, 7, 10, false, false, 0x1FF};

TReading ReadWithQuality(std::string_view text, std::size_t pos, const TQuality& quality,
                         const CChordNamePrefs& prefs) {
  TReading reading;
  TTones& tones = reading.tones;
  tones.third = quality.third;
  tones.fifth = quality.fifth;
  tones.qualitySeventh = quality.seventh;
  if (quality.seventhAlone) tones.seventh = quality.seventh;
  pos += quality.text.size();
  if (quality.takesMajorSeventh) ReadMajorSeventh(text, pos, tones);
  ReadNumber(text, pos, quality.numbers, quality.text.empty(), tones);
  pos = ReadTail(text, pos, tones);
  pos = ReadBass(text, pos, prefs, reading.bass, reading.bassOffset);
  reading.bassEnd = pos;
  reading.end = SkipBlanks(text, pos);
  return reading;
}

// Every quality word that fits, longest first, and the plain chord last: the reading that
// gets furthest wins.
TReading ReadAfterRoot(std::string_view text, std::size_t pos, const CChordNamePrefs& prefs) {
  pos = SkipBlanks(text, pos);
  std::array<const TQuality*, 8> candidates{};
  std::size_t count = 0;
  for (const TQuality& quality : Qualities()) {
    if (count + 1 >= candidates.size() || !StartsWith(text, pos, quality.text)) continue;
    std::size_t i = count++;
    for (; i > 0 && candidates[i - 1]->text.size() < quality.text.size(); --i) {
      candidates[i] = candidates[i - 1];
    }
    candidates[i] = &quality;
  }
  candidates[count++] = &kPlain;
  TReading best;
  best.end = kNoPos;
  for (std::size_t i = 0; i < count; ++i) {
    const TReading reading = ReadWithQuality(text, pos, *candidates[i], prefs);
    if (best.end == kNoPos || reading.end > best.end) best = reading;
    if (best.end == text.size()) break;
  }
  return best;
}

bool ReadWord(std::string_view text, std::size_t pos, std::string_view word, std::size_t& end) {
  if (!StartsWithNoCase(text, pos, word)) return false;
  end = pos + word.size();
  return true;
}

void SetUnread(std::string_view text, std::size_t end, TLeadSheetChordRead& read) {
  end = std::min(SkipBlanks(text, end), text.size());
  read.UnreadOffset = static_cast<std::uint32_t>(end);
  read.UnreadLength = static_cast<std::uint32_t>(text.size() - end);
}

}  // namespace

TLeadSheetChordRead ReadLeadSheetChord(std::string_view text, const CChordNamePrefs& prefs,
                                       const CChordLite& previous) {
  TLeadSheetChordRead read;
  const std::size_t start = SkipBlanks(text, 0);
  std::size_t end = 0;
  for (std::string_view word : NoChordWords()) {
    if (ReadWord(text, start, word, end)) {
      read.Chord = CChordLite_NoChordForce;
      read.Kind = TLeadSheetSymbolKind::kNoChord;
      SetUnread(text, end, read);
      return read;
    }
  }
  if (ReadWord(text, start, "%", end)) {
    read.Chord = previous;
    read.Kind = TLeadSheetSymbolKind::kRepeat;
    SetUnread(text, end, read);
    return read;
  }
  std::array<TNote, 3> roots;
  const std::size_t count = NoteReadings(text, start, prefs, roots);
  if (count == 0) {
    SetUnread(text, start, read);
    return read;
  }
  TReading best;
  std::size_t bestRoot = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const TReading reading = ReadAfterRoot(text, roots[i].end, prefs);
    if (i == 0 || reading.end > best.end) {
      best = reading;
      bestRoot = i;
    }
    if (best.end >= text.size()) break;  // a later reading wins only by reading further
  }
  read.Chord = CChordLite(roots[bestRoot].key, CSemitones(best.tones.Mask()), best.bass);
  read.Kind = TLeadSheetSymbolKind::kChord;
  read.RootOffset = static_cast<std::uint32_t>(start);
  read.RootLength = static_cast<std::uint32_t>(roots[bestRoot].end - start);
  if (best.bass.KeyNr != kKeyNrUndef) {
    read.BassOffset = static_cast<std::uint32_t>(best.bassOffset);
    read.BassLength = static_cast<std::uint32_t>(best.bassEnd - best.bassOffset);
  }
  SetUnread(text, best.end, read);
  return read;
}

TLeadSheetChordRead ReadLeadSheetChord(std::string_view text, CChordHeavy& chord,
                                       const CChordNamePrefs& prefs) {
  const TLeadSheetChordRead read = ReadLeadSheetChord(text, prefs);
  chord = read.Chord.ToChordHeavy(chord.IntvlSet().WrapIntvl());
  return read;
}

}  // namespace harmony
