#include "harmony/chords/HarmCenter.h"

#include <array>

#include "harmony/pitch/KeyNames.h"

namespace harmony {

namespace {

constexpr int Mod12(int value) { return ((value % 12) + 12) % 12; }

struct TModeWord {
  std::uint64_t mask;
  const char* word;
};
constexpr std::array<TModeWord, 7> kModeWords = {{{1387, " Locrian"},
                                                  {1451, " Phrygian"},
                                                  {1453, " Minor"},
                                                  {1709, " Dorian"},
                                                  {1717, " Mixolydian"},
                                                  {2741, " Major"},
                                                  {2773, " Lydian"}}};

}  // namespace

CHarmCenterLite::CHarmCenterLite(const CSignKeyLite& signKey) {
  const CScaleLite scale = signKey.Scale();
  RootKeyEnh = scale.RootKeyEnh;
  Semitones = scale.Semitones;
}

int CHarmCenterLite::KeyNrToHarmCenterKeyNr(int keyNr) const {
  if (RootKeyEnh.IsUndef() || keyNr == kKeyNrUndef) return kKeyNrUndef;
  return Mod12(keyNr - RootKeyEnh.KeyNr);
}

int CHarmCenterLite::HarmCenterKeyNrToKeyNr(int harmCenterKeyNr) const {
  if (RootKeyEnh.IsUndef() || harmCenterKeyNr == kKeyNrUndef) return kKeyNrUndef;
  return Mod12(harmCenterKeyNr + RootKeyEnh.KeyNr);
}

std::string CHarmCenterLite::NameShort(const CChordNamePrefs& prefs) const {
  if (Semitones.Word() == 2741) return KeyNrAndEnhToName(RootKeyEnh.KeyNr, RootKeyEnh.Enh, prefs);
  if (Semitones.Word() == 1453) {
    return KeyNrAndEnhToName(RootKeyEnh.KeyNr, RootKeyEnh.Enh, prefs) + "m";
  }
  return NameLong(prefs);
}

std::string CHarmCenterLite::NameLong(const CChordNamePrefs& prefs) const {
  std::string name = KeyNrAndEnhToName(RootKeyEnh.KeyNr, RootKeyEnh.Enh, prefs);
  for (const TModeWord& mode : kModeWords) {
    if (mode.mask == Semitones.Word()) name += mode.word;
  }
  return name;
}

void CHarmCenterLite::WriteTrace(std::ostream& out) const {
  out << "CHarmCenterLite: " << NameLong() << ", RootKeyEnh ";
  RootKeyEnh.WriteTrace(out);
  out << ", Semitones ";
  Semitones.WriteTrace(out);
}

void CHarmCenterLite::WriteTraceBrief(std::ostream& out) const { out << NameShort(); }

void CHarmCenterLite::WriteInitializerList(std::ostream& out) const {
  out << "CHarmCenterLite(";
  RootKeyEnh.WriteInitializerList(out);
  out << ", ";
  Semitones.WriteInitializerList(out);
  out << ")";
}

}  // namespace harmony
