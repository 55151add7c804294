#include "harmony/pitch/KeyEnh.h"

#include <array>
#include <iomanip>
#include <optional>

#include "harmony/pitch/KeyNames.h"
#include "pitch/KeyEnhTransposeTable.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

// Reading a key name: the key number of each letter A..H.
constexpr std::array<int, 8> kLetterKeyNrs = {9, 11, 0, 2, 4, 5, 7, 11};

bool IsWhiteOldKeyWith(bool wasWhite, TEnh enh, TEnh wanted) { return wasWhite && enh == wanted; }

// Rules that decide the spelling from the interval and the old accidental alone. Returns
// false when none applies.
bool ApplyDirectRule(int r, bool wasWhite, TEnh oldEnh, int newKey, CKeyEnh& key) {
  const bool newBlack = IsBlackKey(newKey);
  TEnh result = TEnh_Undef;
  if (r == 1 && IsWhiteOldKeyWith(wasWhite, oldEnh, TEnh_b)) {
    result = TEnh_bb;
  } else if (r == 2 && oldEnh == TEnh_s) {
    result = wasWhite ? TEnh_ss : TEnh_s;
  } else if (r == -1 && IsWhiteOldKeyWith(wasWhite, oldEnh, TEnh_s)) {
    result = TEnh_ss;
  } else if ((r == -11 || r == -4) && IsWhiteOldKeyWith(wasWhite, oldEnh, TEnh_n) && newBlack) {
    result = TEnh_b;
  } else if (r == -9 && wasWhite && (oldEnh == TEnh_n || oldEnh == TEnh_Undef) && newBlack) {
    result = TEnh_b;
  } else {
    return false;
  }
  key = CKeyEnh(newKey, result);
  return true;
}

void ApplyFallback(bool wasWhite, TEnh oldEnh, int newKey, CKeyEnh& key) {
  key.KeyNr = newKey;
  if (IsBlackKey(newKey)) {
    const TEnh candidate = oldEnh <= TEnh_b ? TEnh_b : TEnh_s;
    key.Enh = IsSensefulEnhForKeyNr(newKey, candidate) ? candidate : TEnh_s;
  } else if (!(wasWhite && oldEnh != TEnh_n)) {
    key.Enh = TEnh_n;
  }
  // A white key spelled with an accidental keeps it on the new white key.
}

// One transposition by the rules: the direct rules first, then the table of special
// spellings, then the fallback. `r` is the interval reduced to -11..11, not 0.
CKeyEnh TransposedByRules(CKeyEnh key, int r) {
  const bool wasWhite = IsWhiteKey(key.KeyNr);
  const int newKey = static_cast<int>(((static_cast<long>(key.KeyNr) + r) % 12 + 12) % 12);
  CKeyEnh result = key;
  if (ApplyDirectRule(r, wasWhite, key.Enh, newKey, result)) return result;
  if (const std::optional<CKeyEnh> special =
          pitch_detail::SpecialTransposition(r, key.KeyNr, key.Enh)) {
    return *special;
  }
  ApplyFallback(wasWhite, key.Enh, newKey, result);
  return result;
}

// Transposition runs in the inner loops of naming and analysis. Every defined key with every
// spelling from triple flat to undefined and every interval -11..11 has its answer worked out
// once, so a call is a single load.
class TransposeCache {
 public:
  TransposeCache() {
    for (int key = 0; key < 12; ++key) {
      for (int enh = TEnh_bbb; enh <= TEnh_Undef; ++enh) {
        for (int r = -11; r <= 11; ++r) {
          const CKeyEnh from(key, static_cast<TEnh>(enh));
          _entries[Index(key, enh, r)] = r == 0 ? from : TransposedByRules(from, r);
        }
      }
    }
  }
  const CKeyEnh& At(int key, TEnh enh, int r) const { return _entries[Index(key, enh, r)]; }

 private:
  static constexpr int kEnhCount = TEnh_Undef - TEnh_bbb + 1;
  static constexpr int kIntvlCount = 23;
  static std::size_t Index(int key, int enh, int r) {
    return static_cast<std::size_t>((key * kEnhCount + (enh - TEnh_bbb)) * kIntvlCount + r + 11);
  }
  std::array<CKeyEnh, 12 * kEnhCount * kIntvlCount> _entries{};
};

// The accidental behind a key letter: "#", "is", "b", "bb" or "x".
struct TAccidental {
  int semitones = 0;
  TEnh enh = TEnh_n;
  std::size_t length = 0;
};

TAccidental ReadAccidental(std::string_view text, std::size_t p) {
  const auto at = [text](std::size_t i) { return i < text.size() ? text[i] : '\0'; };
  const char c = at(p);
  if (c == '#') return {1, TEnh_s, 1};
  if ((c == 'i' || c == 'I') && (at(p + 1) == 's' || at(p + 1) == 'S')) return {1, TEnh_s, 2};
  if (c == 'x') return {2, TEnh_ss, 1};
  if (c != 'b') return {};
  // "bb" followed by 5, 6, 7, 9 or 13 is a flat and the start of an option: Cbb5 = Cb b5.
  const std::string_view after = p + 2 <= text.size() ? text.substr(p + 2) : std::string_view();
  const bool optionFollows =
      !after.empty() && (after[0] == '5' || after[0] == '6' || after[0] == '7' || after[0] == '9' ||
                         after.starts_with("13"));
  if (at(p + 1) == 'b' && !optionFollows) return {-2, TEnh_bb, 2};
  return {-1, TEnh_b, 1};
}

}  // namespace

void CKeyEnh::TranposeThis(int intvl) {
  const int r = intvl % 12;
  if (r == 0 || KeyNr == kKeyNrUndef) return;
  if (KeyNr >= 0 && KeyNr < 12 && Enh >= TEnh_bbb && Enh <= TEnh_Undef) {
    static const TransposeCache cache;
    *this = cache.At(KeyNr, Enh, r);
    return;
  }
  *this = TransposedByRules(*this, r);
}

void CKeyEnh::IncEnh() {
  if (KeyNr == kKeyNrUndef) return;
  if (Enh < TEnh_sss) Enh = static_cast<TEnh>(Enh + 1);
}

void CKeyEnh::DecEnh() {
  if (KeyNr == kKeyNrUndef) return;
  // Read unsigned, TEnh_bbb is 255 and the bottom.
  if (static_cast<std::uint8_t>(Enh) < 255) Enh = static_cast<TEnh>(Enh - 1);
}

std::strong_ordering CKeyEnh::operator<=>(const CKeyEnh& other) const {
  if (const auto byKey = KeyNr <=> other.KeyNr; byKey != 0) return byKey;
  return other.Enh <=> Enh;
}

std::int16_t CKeyEnh::HashValue() const {
  const auto high = static_cast<std::uint32_t>(KeyNr) << 8;
  return static_cast<std::int16_t>(high | static_cast<std::uint32_t>(harmony::HashValue(Enh)));
}

void CKeyEnh::SetFromString(std::string_view text, int* consumed, const CChordNamePrefs& prefs) {
  *this = CKeyEnh();
  if (consumed != nullptr) *consumed = 0;
  // Convert only when a Unicode sign may be present, so plain text is read without a copy.
  std::string converted;
  if (text.find('\xE2') != std::string_view::npos) {
    converted = text;
    ConvertUtf8SharpAndFlatToAscii(converted);
    text = converted;
  }
  std::size_t p = text.find_first_not_of(' ');
  if (p == std::string_view::npos) return;
  const char letter = text[p];
  const char upper =
      (letter >= 'a' && letter <= 'h') ? static_cast<char>(letter - 'a' + 'A') : letter;
  if (upper < 'A' || upper > 'H') return;
  if (upper == 'B' && prefs.BIsBFlat != 0) {
    *this = CKeyEnh(10, TEnh_b);
  } else {
    *this = CKeyEnh(kLetterKeyNrs[upper - 'A'], TEnh_n);
  }
  const TAccidental accidental = ReadAccidental(text, p + 1);
  KeyNr = NormalizedKeyNr(KeyNr + accidental.semitones);
  if (accidental.length > 0) Enh = accidental.enh;
  p += 1 + accidental.length;
  if (consumed != nullptr) *consumed = static_cast<int>(p);
}

void CKeyEnh::AppendJSONString(std::ostream& out) const {
  out << "{\"KeyNr\":\"" << std::setw(2) << KeyNr << "\",\"Enh\":\"" << Enh << "\"}";
}

CKeyEnh CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(const JsonDict& dict) {
  const auto keyNr = static_cast<int>(platform::JsonInteger(dict, "KeyNr", kKeyNrUndef));
  return CKeyEnh(keyNr, EnhFromStdString(platform::JsonString(dict, "Enh")));
}

void CKeyEnh::WriteTrace(std::ostream& out) const {
  out << "CKeyEnh: (" << KeyNr << ", " << Enh << ") ";
  WriteTraceBrief(out);
}

void CKeyEnh::WriteTraceBrief(std::ostream& out) const {
  out << KeyNrAndEnhToName(KeyNr, Enh, GetCurrentChordNamePrefs());
}

void CKeyEnh::WriteInitializerList(std::ostream& out) const {
  out << "CKeyEnh(" << KeyNr << ", " << EnhInitializerText(Enh) << ")";
}

}  // namespace harmony
