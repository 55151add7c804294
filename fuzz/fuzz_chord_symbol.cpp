// Reads arbitrary bytes as a chord symbol, and as a chord and scale, with both parser
// preferences and several name preferences, checks that the result is a well-formed chord, and
// names it in every style.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "harmony/chords/ChordSymbolParser.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

bool IsKeyOrUndef(const harmony::CKeyEnh& key) {
  return (key.KeyNr >= 0 && key.KeyNr <= 11) || key.KeyNr == harmony::kKeyNrUndef;
}

const std::vector<harmony::CChordNamePrefs>& NamePrefsToTry() {
  static const std::vector<harmony::CChordNamePrefs> prefs = [] {
    std::vector<harmony::CChordNamePrefs> all(4, harmony::GetCurrentChordNamePrefs());
    all[1].BIsBFlat = 1;
    all[2].SlashString.clear();
    all[3].SlashString = " |/";
    all[3].BIsH = 1;
    return all;
  }();
  return prefs;
}

// The naming styles a host may choose: German, solfege, spoken, the comma form, tension styles.
const std::vector<harmony::CChordNamePrefs>& NameStylesToTry() {
  static const std::vector<harmony::CChordNamePrefs> styles = [] {
    std::vector<harmony::CChordNamePrefs> all(7, harmony::GetCurrentChordNamePrefs());
    all[1].GermanAccidentals = 1;
    all[2].Solfege = 2;
    all[3].AccessibilitySpoken = 1;
    all[4].CommaSeparatedNameParts = 1;
    all[5].TensionStyle = 0;
    all[6].MinorNaming = 2;
    return all;
  }();
  return styles;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (const std::uint8_t value : {std::uint8_t{0}, std::uint8_t{1}}) {
    const harmony::ChordSetFromStringPrefs prefs(value);
    for (const harmony::CChordNamePrefs& namePrefs : NamePrefsToTry()) {
      harmony::CChordLite chord;
      harmony::SetFromString(text, chord, prefs, namePrefs);
      Check(IsKeyOrUndef(chord.RootKeyEnh) && IsKeyOrUndef(chord.BassKeyEnh));
      Check(chord.Semitones.Word() <= harmony::CSemitones::kOctaveMask);
      Check(chord.RootDir == 0 && chord.BassDir == 0 && chord.Flag == 0);
      // A defined chord always keeps its root as a chord tone.
      if (!chord.IsUndef()) Check(chord.Semitones.HasIntvl(0));
      // A simplified chord has given up its bass, which became the root.
      if (value == 1) {
        harmony::CChordLite plain;
        harmony::SetFromString(text, plain, harmony::ChordSetFromStringPrefs(), namePrefs);
        if (!(plain == chord)) {
          Check(!chord.HasBassNote() && chord.RootKeyEnh == plain.BassKeyEnh);
          Check(chord.Semitones.size() >= plain.Semitones.size());
        }
      }
      // Reading is deterministic and the constructor reads the same way.
      Check(harmony::CChordLite(text, prefs, namePrefs) == chord);

      const auto [scaleChord, scale] = harmony::ChordAndScaleFromString(text, prefs, namePrefs);
      Check(IsKeyOrUndef(scaleChord.RootKeyEnh) && IsKeyOrUndef(scale.RootKeyEnh));
      if (text.find(';') == std::string::npos) Check(scaleChord == chord && scale.IsUndef());

      // Whatever was read can be named, in every style, and the name reads back to a chord on
      // the same root. Not where B-flat is written "B" without natural B being "H": there the
      // name "B" means two keys.
      const harmony::CChordHeavy heavy = chord.ToChordHeavy(24);
      for (const harmony::CChordNamePrefs& style : NameStylesToTry()) {
        const std::string name = heavy.Name(style);
        Check(chord.IsUndef() || !name.empty());
      }
      const std::string name = heavy.Name(namePrefs);
      const bool ambiguousB = namePrefs.BIsBFlat != 0 && namePrefs.BIsH == 0;
      if (!chord.IsUndef() && !namePrefs.SlashString.empty() && !ambiguousB) {
        const harmony::CChordLite again(name, harmony::ChordSetFromStringPrefs(), namePrefs);
        Check(again.RootKeyEnh.KeyNr == chord.RootKeyEnh.KeyNr);
      }
      Check(!harmony::ChordAndScaleToString(chord, scale, namePrefs).empty() || chord.IsUndef());
    }
  }
  return 0;
}
