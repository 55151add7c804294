// The options of a chord name: which option each interval is, the sort key that puts it in
// its place in the name, and the option texts.

#include <array>
#include <cstdint>

#include "chords/ChordHeavyDetail.h"
#include "chords/naming/NamingDetail.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony {

using chords_detail::FloorMod12;

namespace {

using TOption = CChordHeavy::TChordOption;

enum class TSign : std::uint8_t { None, Flat, Sharp };

// Written text: prefix, sign, rest ("add ", flat, "9"); spoken text as a whole.
struct TOptionText {
  const char* prefix;
  TSign sign;
  const char* rest;
  const char* spoken;
};

constexpr std::array<TOptionText, 20> kOptionTexts{{
    {"", TSign::Flat, "9", "flat 9"},      {"add ", TSign::Flat, "9", "add flat 9"},
    {"", TSign::None, "9", "9"},           {"add 9", TSign::None, "", "add 9"},
    {"", TSign::Sharp, "9", "sharp 9"},    {"", TSign::Flat, "3", "flat 3"},
    {"3", TSign::None, "", "3"},           {"11", TSign::None, "", "11"},
    {"add 11", TSign::None, "", "add 11"}, {"", TSign::Sharp, "11", "sharp 11"},
    {"", TSign::Flat, "5", "flat 5"},      {"5", TSign::None, "", "5"},
    {"", TSign::Flat, "13", "flat 13"},    {"", TSign::Sharp, "5", "sharp 5"},
    {"13", TSign::None, "", "13"},         {"7", TSign::None, "", "7"},
    {"6", TSign::None, "", "6"},           {"ma7", TSign::None, "", "major 7"},
    {"j7", TSign::None, "", "major 7"},    {"maj7", TSign::None, "", "major 7"},
}};

// The sort keys: the order of the options in a name.
constexpr int kKeyFlat3 = 3, kKey3 = 4, kKey5 = 7, kKey6 = 9, kKey7 = 10, kKeyMaj7 = 11;
constexpr int kKeyFlat9 = 13, kKey9 = 14, kKeySharp9 = 15, kKey11 = 17, kKeySharp11 = 18;
constexpr int kKeyFlat13 = 20, kKey13 = 21, kKeyAlteredFifth = 99;

constexpr std::uint64_t Mask(std::initializer_list<int> intvls) {
  std::uint64_t mask = 0;
  for (int intvl : intvls) mask |= std::uint64_t{1} << intvl;
  return mask;
}

// A ninth or eleventh is "add" when nothing but the triad tones and itself is there.
constexpr std::uint64_t kAddFlat9Tones = Mask({0, 1, 3, 4, 7});
constexpr std::uint64_t kAdd9Tones = Mask({0, 2, 3, 4, 7});
constexpr std::uint64_t kAdd11Tones = Mask({0, 3, 4, 5, 7});

TOption MajorSeventhOption(const CChordNamePrefs& prefs) {
  switch (prefs.MajorSeventhStyle) {
    case 1:
      return CChordHeavy::kOption_j7;
    case 2:
      return CChordHeavy::kOption_maj7;
    default:
      return CChordHeavy::kOption_ma7;
  }
}

}  // namespace

std::string CChordHeavy::OptionName(TChordOption option, const CChordNamePrefs& prefs) {
  std::string name;
  chords_detail::AppendOptionName(name, option, prefs);
  return name;
}

void chords_detail::AppendOptionName(std::string& text, CChordHeavy::TChordOption option,
                                     const CChordNamePrefs& prefs) {
  if (option >= kOptionTexts.size()) return;
  const TOptionText& entry = kOptionTexts[option];
  if (prefs.AccessibilitySpoken == 1) {
    text += entry.spoken;
    return;
  }
  text += entry.prefix;
  if (entry.sign == TSign::Flat) text += FlatAsUTF8OrNot(prefs);
  if (entry.sign == TSign::Sharp) text += SharpAsUTF8OrNot(prefs);
  text += entry.rest;
}

CChordHeavy::COptionsMap CChordHeavy::OptionsMap(const CChordNamePrefs& prefs) const {
  return chords_detail::OptionsMapFor(*this, BasicChordForNaming(), prefs);
}

CChordHeavy::COptionsMap chords_detail::OptionsMapFor(const CChordHeavy& chord, TBasicChord b,
                                                      const CChordNamePrefs& prefs) {
  using C = CChordHeavy;
  C::COptionsMap map;
  const CIntvlSet& intvls = chord.IntvlSet();
  const std::uint64_t tones = chord.Semitones().Word();
  const std::uint32_t anyOctave = chords_detail::TonesInAnyOctave(intvls);
  const auto H = [anyOctave](int intvl) { return ((anyOctave >> intvl) & 1u) != 0; };
  const auto isBasic = [b](std::initializer_list<TBasicChord> basics) {
    for (TBasicChord basic : basics) {
      if (b == basic) return true;
    }
    return false;
  };
  // The bass-only tone of a wide chord is told by the slash, not as an option.
  const bool hideBass = prefs.HideBassIntvlInWideChords == 1 && chord.BassNoteHasIntvlAlone() &&
                        !chord.IsNarrowChord() && !chord.IsUndef();
  const int bassIntvl =
      hideBass ? FloorMod12(chord.BassNote().KeyNr() - chord.RootNote().KeyNr()) : -1;
  for (int intvl : intvls) {
    if (hideBass && intvl == bassIntvl) continue;
    switch (FloorMod12(intvl)) {
      case 1:
        map.Set(kKeyFlat9, (tones & ~kAddFlat9Tones) != 0 ? C::kOption_b9 : C::kOption_add_b9);
        break;
      case 2:
        if (b == kBasicChordSus2) break;
        map.Set(kKey9, (tones & ~kAdd9Tones) != 0 ? C::kOption_9 : C::kOption_add_9);
        break;
      case 3:
        if (H(4)) {
          map.Set(kKeySharp9, C::kOption_sharp9);
        } else if (!isBasic({kBasicChordMinor, kBasicChordDim})) {
          map.Set(kKeyFlat3, C::kOption_b3);
        }
        break;
      case 4:
        if (!isBasic({kBasicChordMajor, kBasicChordAug, kBasicChordMajorFlat5})) {
          map.Set(kKey3, C::kOption_3);
        }
        break;
      case 5:
        if (b == kBasicChordSus4) break;
        map.Set(kKey11, (tones & ~kAdd11Tones) != 0 ? C::kOption_11 : C::kOption_add_11);
        break;
      case 6:
        if (isBasic({kBasicChordDim, kBasicChordMajorFlat5})) break;
        if (H(7) || H(8)) {
          map.Set(kKeySharp11, C::kOption_sharp11);
        } else {
          map.Set(kKeyAlteredFifth, C::kOption_b5);
        }
        break;
      case 7:
        if (isBasic({kBasicChordDim, kBasicChordAug, kBasicChordMajorFlat5, kBasicChordNone})) {
          map.Set(kKey5, C::kOption_5);
        }
        break;
      case 8:
        if (b == kBasicChordAug) break;
        map.Set(H(7) ? kKeyFlat13 : kKeyAlteredFifth, H(7) ? C::kOption_b13 : C::kOption_sharp5);
        break;
      case 9:
        if (!H(8) && (H(10) || H(11))) {
          map.Set(kKey13, C::kOption_13);
        } else {
          map.Set(kKey6, b == kBasicChordDim ? C::kOption_7 : C::kOption_6);  // dim 7 is a sixth
        }
        break;
      case 10:
        if (b == kBasicChordDim) map.Set(kKeyAlteredFifth, C::kOption_b5);
        map.Set(kKey7, C::kOption_7);
        break;
      case 11:
        map.Set(kKeyMaj7, MajorSeventhOption(prefs));
        break;
      default:
        break;
    }
  }
  return map;
}

std::vector<std::string> CChordHeavy::OptionsStringVector(const CChordNamePrefs& prefs) const {
  std::vector<std::string> texts;
  for (const TOptionsMapEntry& entry : OptionsMap(prefs)) {
    texts.push_back(OptionName(entry.Option, prefs));
  }
  return texts;
}

}  // namespace harmony
