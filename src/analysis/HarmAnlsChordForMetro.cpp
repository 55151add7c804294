#include "harmony/analysis/HarmAnlsChordForMetro.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "HarmAnlsChordForMetroKeys.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

using metro::IsRealKeyNr;
using metro::KeyAsInCMajor;

// The triads the vector knows, in the order of their indices from 15. A major triad with a
// flat fifth and a chord without triad have no index.
constexpr std::array<TBasicChord, 7> kVectorTriads = {
    kBasicChordMajor, kBasicChordMinor, kBasicChordAug,  kBasicChordDim,
    kBasicChordSus4,  kBasicChordSus2,  kBasicChordPower};

constexpr float kSet = 1.0f;

// The offset of the first set element in [from, from + count), or -1.
int FirstSet(const std::vector<float>& vector, std::size_t from, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (vector[from + i] == kSet) return static_cast<int>(i);
  }
  return -1;
}

// A JSON number as the float the vector holds; anything a float can't hold reads as NaN and
// so makes the vector malformed.
float VectorElement(const JsonDict& element) {
  if (!element.is_number()) return std::numeric_limits<float>::quiet_NaN();
  const double value = element.get<double>();
  if (!std::isfinite(value) || std::fabs(value) > FLT_MAX) {
    return std::numeric_limits<float>::quiet_NaN();
  }
  return static_cast<float>(value);
}

CHarmAnlsChordForMetro Special(int rootKeyNr) {
  return CHarmAnlsChordForMetro(
      CChordLite(KeyAsInCMajor(rootKeyNr), CSemitones(CHarmAnlsChordForMetro::kSpecialSemitones)));
}

}  // namespace

CHarmAnlsChordForMetro CHarmAnlsChordForMetro::Wildcard() { return Special(0); }
CHarmAnlsChordForMetro CHarmAnlsChordForMetro::EADGBE() { return Special(4); }

bool CHarmAnlsChordForMetro::IsWildcard() const {
  return RootKeyEnh.KeyNr == 0 && Semitones.Word() == kSpecialSemitones;
}

bool CHarmAnlsChordForMetro::IsEADGBE() const {
  return RootKeyEnh.KeyNr == 4 && Semitones.Word() == kSpecialSemitones;
}

bool CHarmAnlsChordForMetro::IsSlashChord() const {
  if (IsUndef() || IsWildcard() || IsEADGBE()) return false;
  return BassKeyEnh.KeyNr != kKeyNrUndef && BassKeyEnh != RootKeyEnh;
}

std::vector<float> CHarmAnlsChordForMetro::GetChordVectorRepresentation() const {
  std::vector<float> vector(kVectorSize, 0.0f);
  const int root = RootKeyEnh.KeyNr;
  if (!IsRealKeyNr(root)) {
    vector[kVectorIxUndef] = kSet;
    return vector;
  }
  if (IsEADGBE() || IsWildcard()) {
    vector[IsEADGBE() ? kVectorIxEADGBE : kVectorIxWildcard] = kSet;
    return vector;
  }
  vector[kVectorIxRoot + static_cast<std::size_t>(root)] = kSet;
  const TBasicChord triad = BasicChord();
  const auto found = std::find(kVectorTriads.begin(), kVectorTriads.end(), triad);
  if (found != kVectorTriads.end()) {
    vector[kVectorIxBasicChord + static_cast<std::size_t>(found - kVectorTriads.begin())] = kSet;
  }
  // Set difference: the tones of the triad that the chord lacks (a third without fifth is
  // still major) don't turn up as options.
  const CSemitones options = Semitones - SemitonesForBasicChord(triad);
  for (std::size_t k = 0; k < 12; ++k) {
    if (options.Semitone(k)) vector[kVectorIxOptions + k] = kSet;
  }
  // By key number: the vector has no spelling, so C/B# is no slash chord here.
  const int bass = BassKeyEnh.KeyNr;
  if (IsRealKeyNr(bass) && bass != root)
    vector[kVectorIxBass + static_cast<std::size_t>(bass)] = kSet;
  return vector;
}

// The first set element decides, in this order: undefined, EADGBE, wildcard; else the first
// root (none: nothing changes), the first triad (none: the old tones stay) with every option
// added, and the first bass (none: the old bass stays).
void CHarmAnlsChordForMetro::SetFromChordVectorRepresentation(const std::vector<float>& vector) {
  if (vector.size() != kVectorSize) return;
  if (!std::all_of(vector.begin(), vector.end(), [](float x) { return x == 0.0f || x == kSet; })) {
    return;
  }
  if (vector[kVectorIxUndef] == kSet) {
    RootKeyEnh = CKeyEnh();
    BassKeyEnh = CKeyEnh();
    Semitones = CSemitones();
    return;
  }
  if (vector[kVectorIxEADGBE] == kSet || vector[kVectorIxWildcard] == kSet) {
    const CHarmAnlsChordForMetro special = vector[kVectorIxEADGBE] == kSet ? EADGBE() : Wildcard();
    RootKeyEnh = special.RootKeyEnh;
    BassKeyEnh = special.BassKeyEnh;
    Semitones = special.Semitones;
    return;
  }
  const int root = FirstSet(vector, kVectorIxRoot, 12);
  if (root < 0) return;
  RootKeyEnh = KeyAsInCMajor(root);
  if (const int triad = FirstSet(vector, kVectorIxBasicChord, kVectorTriads.size()); triad >= 0) {
    Semitones = SemitonesForBasicChord(kVectorTriads[static_cast<std::size_t>(triad)]);
  }
  for (std::size_t k = 0; k < 12; ++k) {
    if (vector[kVectorIxOptions + k] == kSet) Semitones.SetSemitone(k, true);
  }
  if (const int bass = FirstSet(vector, kVectorIxBass, 12); bass >= 0) {
    BassKeyEnh = KeyAsInCMajor(bass);
  }
}

void CHarmAnlsChordForMetro::GetChromaVector(TChromaVector& out, bool withBass) const {
  out.fill(0.0f);
  const int root = RootKeyEnh.KeyNr;
  if (!IsRealKeyNr(root)) return;
  out[static_cast<std::size_t>(root)] = kSet;
  const int bass = BassKeyEnh.KeyNr;
  if (withBass && IsRealKeyNr(bass)) out[static_cast<std::size_t>(bass)] = kSet;
  for (std::size_t k = 0; k < 12; ++k) {
    if (Semitones.Semitone(k)) out[(static_cast<std::size_t>(root) + k) % 12] = kSet;
  }
}

// --- Wire forms

void CHarmAnlsChordForMetro::AppendJSONString(std::ostream& out) const {
  out << '{';
  AppendJSONClassSubstring(out);
  out << '}';
}

void CHarmAnlsChordForMetro::AppendJSONClassSubstring(std::ostream& out) const {
  if (!WritesVectorRep()) {
    CChordLite::AppendJSONClassSubstring(out);
    return;
  }
  const std::vector<float> vector = GetChordVectorRepresentation();
  out << "\"VectorRep\":[";
  for (std::size_t i = 0; i < vector.size(); ++i) {
    if (i > 0) out << ", ";
    out << vector[i];
  }
  out << ']';
}

CHarmAnlsChordForMetro CHarmAnlsChordForMetro::FromDictionary(const JsonDict& dict) {
  const JsonDict* rep = platform::JsonMember(dict, "VectorRep");
  if (rep == nullptr) return CHarmAnlsChordForMetro(CChordLite::FromDictionary(dict));
  std::vector<float> vector;
  if (rep->is_array()) {
    vector.reserve(rep->size());
    for (const JsonDict& element : *rep) vector.push_back(VectorElement(element));
  }
  CHarmAnlsChordForMetro chord;
  chord.SetFromChordVectorRepresentation(vector);
  return chord;
}

// --- Traces

void CHarmAnlsChordForMetro::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsChordForMetro: ";
  WriteTraceChordPart(out);
}

void CHarmAnlsChordForMetro::WriteTraceBrief(std::ostream& out) const {
  out << NameForMetroExport(true);
}

void CHarmAnlsChordForMetro::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsChordForMetro(";
  CHarmAnlsChord::WriteInitializerList(out);
  out << ')';
}

}  // namespace harmony
