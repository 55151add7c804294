// The chord vector form's vocabulary: which masks count as recognized, how any other chord
// is brought down to one of them, and the export names.

#include <algorithm>
#include <array>

#include "HarmAnlsChordForMetroKeys.h"
#include "harmony/analysis/HarmAnlsChordForMetro.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {

namespace {

using metro::IsRealKeyNr;

constexpr std::array<const char*, 12> kSharpNames = {"C",  "C#", "D",  "D#", "E",  "F",
                                                     "F#", "G",  "G#", "A",  "A#", "B"};

constexpr std::uint64_t kMajor = 145, kMinor = 137, kAug = 273, kDim = 73, kSus4 = 161, kSus2 = 133,
                        kPower = 129, kRootAlone = 1;
constexpr std::uint64_t kMinorSeventh = 1024, kMajorSeventhBit = 11, kMinorSeventhBit = 10;
constexpr std::uint64_t kDimSeventhChord = 585;

template <std::size_t N>
bool InTable(const std::array<CSemitones, N>& table, const CSemitones& semitones) {
  return std::find(table.begin(), table.end(), semitones) != table.end();
}

template <std::size_t N>
bool ContainsAnyOf(const CSemitones& semitones, const std::array<std::uint64_t, N>& masks) {
  return std::any_of(masks.begin(), masks.end(),
                     [&](std::uint64_t mask) { return semitones.Contain(mask); });
}

// The triad with its seventh (major: or its ninth) as the chord holds them.
std::uint64_t MajorFamily(const CSemitones& s) {
  if (s.Semitone(kMinorSeventhBit)) return 1169;
  if (s.Semitone(kMajorSeventhBit)) return 2193;
  if (s.Semitone(2)) return 149;
  return kMajor;
}

std::uint64_t MinorFamily(const CSemitones& s) {
  if (s.Semitone(kMinorSeventhBit)) return 1161;
  if (s.Semitone(kMajorSeventhBit)) return 2185;
  return kMinor;
}

// The recognized type closest to a mask of a defined chord; the order of the tests is the
// order in which a third, then an altered fifth, then a suspension decides the chord.
std::uint64_t RecognizedMask(const CSemitones& s) {
  const std::uint64_t word = s.Word();
  if (s.Contain(kMajor) || (s.Semitone(4) && !s.Contain(kAug))) return MajorFamily(s);
  if (s.Contain(kMinor) || (s.Semitone(3) && !s.Contain(kDim))) return MinorFamily(s);
  if (s.Contain(kDim)) return word & kDimSeventhChord;
  if (s.Contain(kAug)) return kAug | (word & kMinorSeventh);
  if (s.Contain(kSus4)) return kSus4;
  if (s.Contain(kSus2)) return kSus2;
  if (s.Contain(kPower)) return kPower | (word & kMinorSeventh);
  return kRootAlone;
}

// The root stays, the bass unless dropped; distances -1 and the key form of the JSON.
CHarmAnlsChordForMetro OnSameRoot(const CHarmAnlsChordForMetro& chord, std::uint64_t mask,
                                  bool dropBass) {
  const bool keepBass = chord.HasBassNote() && !dropBass;
  return CHarmAnlsChordForMetro(
      CChordLite(chord.RootKeyEnh, CSemitones(mask), keepBass ? chord.BassKeyEnh : CKeyEnh()));
}

}  // namespace

bool CHarmAnlsChordForMetro::IsMajorOrMinor(bool noBass) const {
  if (noBass && HasBassNote()) return false;
  return InTable(CSemitones::_sSemitones_Chords_MajorMinorMode, Semitones);
}

bool CHarmAnlsChordForMetro::IsRecognizedMetroChord(bool noBass) const {
  if (noBass && HasBassNote()) return false;
  return InTable(CSemitones::_sSemitones_Chords_MetroRecognizedMode, Semitones);
}

bool CHarmAnlsChordForMetro::IsCommonChord(bool noBass) const {
  if (noBass && HasBassNote()) return false;
  return InTable(CSemitones::_sSemitones_Chords_CommonMode, Semitones);
}

CHarmAnlsChordForMetro CHarmAnlsChordForMetro::SimplifiedToMajorOrMinor(bool dropBass) const {
  if (!IsRealKeyNr(RootKeyEnh.KeyNr) || Semitones.IsEmpty()) return CHarmAnlsChordForMetro();
  if (IsWildcard() || IsEADGBE()) return *this;
  // A major third, an augmented triad or a suspension sounds major; only a minor or
  // diminished triad sounds minor. (So a minor triad with an added second, which holds the
  // tones of sus2, counts as major.)
  constexpr std::array<std::uint64_t, 4> kHeardAsMajor = {kMajor, kAug, kSus4, kSus2};
  constexpr std::array<std::uint64_t, 2> kHeardAsMinor = {kMinor, kDim};
  std::uint64_t mask = kMajor;
  if (!ContainsAnyOf(Semitones, kHeardAsMajor) && ContainsAnyOf(Semitones, kHeardAsMinor)) {
    mask = kMinor;
  }
  return OnSameRoot(*this, mask, dropBass);
}

CHarmAnlsChordForMetro CHarmAnlsChordForMetro::SimplifiedToRecognizedMetroChord(
    bool dropBass) const {
  if (!IsRealKeyNr(RootKeyEnh.KeyNr) || Semitones.IsEmpty()) return CHarmAnlsChordForMetro();
  if (IsWildcard() || IsEADGBE()) return *this;
  if (Semitones.Word() == kRootAlone) return OnSameRoot(*this, kRootAlone, true);
  return OnSameRoot(*this, RecognizedMask(Semitones), dropBass);
}

std::string CHarmAnlsChordForMetro::NameForMetroExport(bool simple) const {
  if (IsWildcard()) return "*";
  if (IsEADGBE()) return "EADGBE";
  const int root = RootKeyEnh.KeyNr;
  if (!IsRealKeyNr(root)) {
    if (RootKeyEnh.Enh == TEnh_b) return "No Chord Force";
    if (RootKeyEnh.Enh == TEnh_bb) return "No Chord Yield";
    return "Undef ('No Chord')";
  }
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  if (!simple) return TraceName(prefs);
  const CChordHeavy heavy = ToChordHeavy(CIntvlSet::kDefaultWrapIntvl);
  std::string name = kSharpNames[static_cast<std::size_t>(root)] +
                     BasicChordName(heavy.BasicChordForNaming(), prefs) +
                     heavy.OptionsNameFromMap(heavy.OptionsMap(prefs), prefs);
  const int bass = BassKeyEnh.KeyNr;
  if (IsRealKeyNr(bass) && bass != root) {
    name += " / ";
    name += kSharpNames[static_cast<std::size_t>(bass)];
  }
  return name;
}

}  // namespace harmony
