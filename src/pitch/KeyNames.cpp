#include "harmony/pitch/KeyNames.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <string_view>

#include "harmony/pitch/KeyNumbers.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

// Letters by key number: the letter a flat is written on, the letter of the plain or
// default spelling, and the letter a sharp is written on.
constexpr std::string_view kUpperLetter = "DDEEFGGAABBC";
constexpr std::string_view kNaturalLetter = "CCDEEFFGGABB";
constexpr std::string_view kLowerLetter = "BCCDDEFFGGAA";
// The second flat needed when the upper letter lies two semitones above (D double flat).
constexpr std::string_view kSecondFlat = "b b  b b b  ";
// The sign behind the lower letter: one sharp, or a double sharp two semitones above it.
constexpr std::string_view kSharpSign = "##x#x##x#x#x";
// The default sign of a black key written on its natural letter (C#, Eb, F#, G#, Bb).
constexpr std::string_view kBlackSign = " # b  # # b ";

using TSyllables = std::array<const char*, 12>;
constexpr TSyllables kRomanString1Ti = {"Re",  "Re", "Mi", "Mi", "Fa", "Sol",
                                        "Sol", "La", "La", "Ti", "Ti", "Do"};
constexpr TSyllables kRomanString2Ti = {"Ti", "Do", "Do",  "Re",  "Re", "Mi",
                                        "Fa", "Fa", "Sol", "Sol", "La", "La"};
constexpr TSyllables kRomanString3Ti = {"Do", "Do",  "Re",  "Mi", "Mi", "Fa",
                                        "Fa", "Sol", "Sol", "La", "Ti", "Ti"};
constexpr TSyllables kRomanString1Si = {"Re",  "Re", "Mi", "Mi", "Fa", "Sol",
                                        "Sol", "La", "La", "Si", "Si", "Do"};
constexpr TSyllables kRomanString2Si = {"Si", "Do", "Do",  "Re",  "Re", "Mi",
                                        "Fa", "Fa", "Sol", "Sol", "La", "La"};
constexpr TSyllables kRomanString3Si = {"Do", "Do",  "Re",  "Mi", "Mi", "Fa",
                                        "Fa", "Sol", "Sol", "La", "Si", "Si"};

// German endings behind the lower letter (sharp forms) and behind the natural letter.
constexpr TSyllables kSpellEnharm1 = {"is", "is",   "isis", "is",   "isis", "is",
                                      "is", "isis", "is",   "isis", "is",   "isis"};
constexpr TSyllables kSpellEnharm2 = {"", "is", "", "es", "", "", "is", "", "is", "", "es", ""};

constexpr std::array<const char*, 7> kSolfegeSyllables = {"Do",  "Re", "Mi", "Fa",
                                                          "Sol", "La", "Ti"};

// Names that the letter tables can't build: the letter lies too far from the key.
struct TSpecialName {
  int keyNr;
  TEnh enh;
  const char* name;
};
constexpr std::array<TSpecialName, 4> kLetterSpecials = {
    {{1, TEnh_ss, "Bx"}, {6, TEnh_ss, "Ex"}, {3, TEnh_bb, "Fbb"}, {10, TEnh_bb, "Cbb"}}};
constexpr std::array<TSpecialName, 4> kLetterSpecialsBare = {
    {{1, TEnh_ss, "B"}, {6, TEnh_ss, "E"}, {3, TEnh_bb, "F"}, {10, TEnh_bb, "C"}}};
constexpr std::array<TSpecialName, 5> kGermanSpecials = {{{10, TEnh_bb, "Ceses"},
                                                          {7, TEnh_bb, "Ases"},
                                                          {3, TEnh_bb, "Feses"},
                                                          {1, TEnh_ss, "Bisis"},
                                                          {6, TEnh_ss, "Eisis"}}};
constexpr std::array<TSpecialName, 4> kSolfegeSpecialsTi = {
    {{1, TEnh_ss, "Tix"}, {6, TEnh_ss, "Mix"}, {3, TEnh_bb, "Fabb"}, {10, TEnh_bb, "Dobb"}}};
constexpr std::array<TSpecialName, 4> kSolfegeSpecialsSi = {
    {{1, TEnh_ss, "Six"}, {6, TEnh_ss, "Mix"}, {3, TEnh_bb, "Fabb"}, {10, TEnh_bb, "Dobb"}}};
constexpr std::array<TSpecialName, 4> kSolfegeSpecialsBareTi = {
    {{1, TEnh_ss, "Ti"}, {6, TEnh_ss, "Mi"}, {3, TEnh_bb, "Fa"}, {10, TEnh_bb, "Do"}}};
constexpr std::array<TSpecialName, 4> kSolfegeSpecialsBareSi = {
    {{1, TEnh_ss, "Si"}, {6, TEnh_ss, "Mi"}, {3, TEnh_bb, "Fa"}, {10, TEnh_bb, "Do"}}};

const char* FindSpecial(std::span<const TSpecialName> specials, int i, TEnh enh) {
  for (const TSpecialName& special : specials) {
    if (special.keyNr == i && special.enh == enh) return special.name;
  }
  return nullptr;
}

// Which of the three letters (or syllable tables) a spelling is written on.
enum class TForm { Flat, Sharp, Plain };
TForm FormOf(TEnh enh) {
  if (enh == TEnh_bb || enh == TEnh_b) return TForm::Flat;
  if (enh == TEnh_s || enh == TEnh_ss) return TForm::Sharp;
  return TForm::Plain;
}

struct TSolfegeTables {
  const TSyllables& flat;
  const TSyllables& sharp;
  const TSyllables& plain;
  std::span<const TSpecialName> specials;
  std::span<const TSpecialName> bareSpecials;
};
TSolfegeTables SolfegeTables(const CChordNamePrefs& prefs) {
  if (prefs.Solfege == 2) {
    return {kRomanString1Si, kRomanString2Si, kRomanString3Si, kSolfegeSpecialsSi,
            kSolfegeSpecialsBareSi};
  }
  return {kRomanString1Ti, kRomanString2Ti, kRomanString3Ti, kSolfegeSpecialsTi,
          kSolfegeSpecialsBareTi};
}

void AppendIfSign(std::string& name, char sign) {
  if (sign != ' ') name += sign;
}

std::string SolfegeName(int i, TEnh enh, const CChordNamePrefs& prefs) {
  const TSolfegeTables tables = SolfegeTables(prefs);
  if (const char* special = FindSpecial(tables.specials, i, enh)) return special;
  std::string name;
  switch (FormOf(enh)) {
    case TForm::Flat:
      name = std::string(tables.flat[i]) + 'b';
      AppendIfSign(name, kSecondFlat[i]);
      break;
    case TForm::Sharp:
      name = std::string(tables.sharp[i]) + kSharpSign[i];
      break;
    case TForm::Plain:
      name = tables.plain[i];
      AppendIfSign(name, kBlackSign[i]);
      break;
  }
  return name;
}

std::string LetterName(int i, TEnh enh, const CChordNamePrefs& prefs) {
  std::string name;
  if (const char* special = FindSpecial(kLetterSpecials, i, enh)) {
    name = special;
  } else if (FormOf(enh) == TForm::Flat) {
    name = std::string(1, kUpperLetter[i]) + 'b';
    AppendIfSign(name, kSecondFlat[i]);
  } else if (FormOf(enh) == TForm::Sharp) {
    name = std::string(1, kLowerLetter[i]) + kSharpSign[i];
  } else {
    name = std::string(1, kNaturalLetter[i]);
    AppendIfSign(name, kBlackSign[i]);
  }
  if (prefs.BIsH == 1 && name[0] == 'B' && name != "Bb") name[0] = 'H';
  if (prefs.BIsBFlat == 1 && name == "Bb") name = "B";
  if (prefs.AccessibilitySpoken == 1) {
    name = _ReplaceAccidentalNamesNormalWithAccessibilitySpoken(name);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  }
  return name;
}

std::string GermanName(int i, TEnh enh, const CChordNamePrefs& prefs) {
  std::string name;
  if (const char* special = FindSpecial(kGermanSpecials, i, enh)) {
    name = special;
  } else if (FormOf(enh) == TForm::Flat) {
    // E flat and A flat drop the vowel of the ending: Es, As.
    name = std::string(1, kUpperLetter[i]) + (i == 3 || i == 8 ? "s" : "es");
    if (kSecondFlat[i] != ' ') name += "es";
  } else if (FormOf(enh) == TForm::Sharp) {
    name = std::string(1, kLowerLetter[i]) + kSpellEnharm1[i];
  } else {
    name = std::string(1, kNaturalLetter[i]) + kSpellEnharm2[i];
  }
  if (prefs.BIsH == 1 && name[0] == 'B' && name != "Bes") name[0] = 'H';
  if (prefs.BIsBFlat == 1 && name == "Bes") name = "B";
  return name;
}

// Behind the first character, "#" and "b" become the Unicode signs.
std::string WithUtf8Signs(const std::string& name) {
  if (name.empty()) return name;
  std::string result(1, name[0]);
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (name[i] == '#') {
      result += kUtf8Sharp;
    } else if (name[i] == 'b') {
      result += kUtf8Flat;
    } else {
      result += name[i];
    }
  }
  return result;
}

// Each solfege syllable replaced by its form in the current language.
std::string LocalizeSyllables(const std::string& name) {
  std::string result;
  std::size_t pos = 0;
  while (pos < name.size()) {
    const std::string_view rest = std::string_view(name).substr(pos);
    const auto match = std::find_if(kSolfegeSyllables.begin(), kSolfegeSyllables.end(),
                                    [&](const char* s) { return rest.starts_with(s); });
    if (match == kSolfegeSyllables.end()) {
      result += name[pos++];
    } else {
      result += platform::Localized(*match);
      pos += std::string_view(*match).size();
    }
  }
  return result;
}

}  // namespace

std::string KeyNrAndEnhToName(int keyNr, TEnh enh, const CChordNamePrefs& prefs) {
  if (keyNr == kKeyNrUndef) return platform::Localized("Undef");
  const int i = std::clamp(keyNr, 0, 11);
  std::string name;
  if (prefs.Solfege != 0) {
    name = SolfegeName(i, enh, prefs);
  } else if (prefs.GermanAccidentals != 1) {
    name = LetterName(i, enh, prefs);
  } else {
    name = GermanName(i, enh, prefs);
  }
  if (prefs.AsciiAccidentals == 0 && prefs.AccessibilitySpoken != 1) name = WithUtf8Signs(name);
  if (prefs.Solfege == 3) name = LocalizeSyllables(name);
  return name;
}

std::string KeyNrToNameIgnoringEnh(int keyNr, TEnh enh, const CChordNamePrefs& prefs) {
  if (prefs.GermanAccidentals == 1 || keyNr == kKeyNrUndef) {
    return KeyNrAndEnhToName(keyNr, enh, prefs);
  }
  const int i = std::clamp(keyNr, 0, 11);
  if (prefs.Solfege != 0) {
    const TSolfegeTables tables = SolfegeTables(prefs);
    std::string name;
    if (const char* special = FindSpecial(tables.bareSpecials, i, enh)) {
      name = special;
    } else {
      const TForm form = FormOf(enh);
      name = form == TForm::Flat    ? tables.flat[i]
             : form == TForm::Sharp ? tables.sharp[i]
                                    : tables.plain[i];
    }
    return prefs.Solfege == 3 ? LocalizeSyllables(name) : name;
  }
  std::string name;
  if (const char* special = FindSpecial(kLetterSpecialsBare, i, enh)) {
    name = special;
  } else {
    const TForm form = FormOf(enh);
    name = std::string(1, form == TForm::Flat    ? kUpperLetter[i]
                          : form == TForm::Sharp ? kLowerLetter[i]
                                                 : kNaturalLetter[i]);
  }
  if (prefs.BIsH == 1 && name == "B" && i != 10) name = "H";
  if (prefs.BIsBFlat == 1 && i == 10) name = "B";
  return name;
}

const char* SharpAsUTF8OrNot(const CChordNamePrefs& prefs) {
  return prefs.AsciiAccidentals == 0 ? kUtf8Sharp : "#";
}

const char* FlatAsUTF8OrNot(const CChordNamePrefs& prefs) {
  return prefs.AsciiAccidentals == 0 ? kUtf8Flat : "b";
}

void ConvertUtf8SharpAndFlatToAscii(std::string& text) {
  const auto replaceAll = [&text](std::string_view from, char to) {
    for (std::size_t pos = text.find(from); pos != std::string::npos;
         pos = text.find(from, pos + 1)) {
      text.replace(pos, from.size(), 1, to);
    }
  };
  replaceAll(kUtf8Sharp, '#');
  replaceAll(kUtf8Flat, 'b');
}

std::string _ReplaceAccidentalNamesNormalWithAccessibilitySpoken(const std::string& name) {
  if (name.empty()) return name;
  const std::string first(1, name[0]);
  if (name.find("bb") != std::string::npos) return first + " double flat";
  if (name.find('b') != std::string::npos) return first + " flat";
  if (name.find('x') != std::string::npos) return first + " double sharp";
  if (name.find('#') != std::string::npos) return first + " sharp";
  return name;
}

}  // namespace harmony
