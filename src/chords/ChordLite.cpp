#include "harmony/chords/ChordLite.h"

#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ChordHeavy.h"

#include "harmony/pitch/IntvlSet.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

// Bit positions of the fields in the chord hash code.
constexpr unsigned kHashRootKeyShift = 24;
constexpr unsigned kHashRootEnhShift = 28;
constexpr unsigned kHashBassKeyShift = 32;
constexpr unsigned kHashBassEnhShift = 36;
constexpr std::uint64_t kHashSemitonesMask = 0xFFFFFF;
constexpr std::uint64_t kHashNibble = 0xF;

// The mask of a half-diminished chord's minor third, flat fifth and minor seventh.
constexpr std::uint64_t kHalfDimTones = (1U << 3) | (1U << 6) | (1U << 10);

// A signed field placed at its position, in two's complement like a plain 64-bit sum.
std::uint64_t HashField(std::int64_t value, unsigned shift) {
  return static_cast<std::uint64_t>(value) << shift;
}

int HashNibble(std::uint64_t code, unsigned shift) {
  return static_cast<int>((code >> shift) & kHashNibble);
}

int FloorMod12(long long value) { return static_cast<int>(((value % 12) + 12) % 12); }

// A spelled key from its dictionary, or else the key number alone with an undefined enh.
CKeyEnh KeyFromDictionary(const JsonDict& dict, const char* keyEnhKey, const char* keyNrKey) {
  if (const JsonDict* keyEnh = platform::JsonMember(dict, keyEnhKey)) {
    return CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*keyEnh);
  }
  const auto keyNr = static_cast<int>(platform::JsonInteger(dict, keyNrKey, kKeyNrUndef));
  return CKeyEnh(keyNr, TEnh_Undef);
}

}  // namespace

CChordLite::CChordLite(const std::string& text, const ChordSetFromStringPrefs& prefs,
                       const CChordNamePrefs& namePrefs) {
  SetFromString(text, prefs, namePrefs);
}

CChordLite::CChordLite(const char* text, const ChordSetFromStringPrefs& prefs,
                       const CChordNamePrefs& namePrefs)
    : CChordLite(std::string(text != nullptr ? text : ""), prefs, namePrefs) {}

void CChordLite::SetFromString(const std::string& text, const ChordSetFromStringPrefs& prefs,
                               const CChordNamePrefs& namePrefs) {
  harmony::SetFromString(text, *this, prefs, namePrefs);
}

CChordLite CChordLite::FromDictionary(const JsonDict& dict) {
  CChordLite chord;
  chord.RootKeyEnh = KeyFromDictionary(dict, "RootKeyEnh", "RootKeyNr");
  chord.BassKeyEnh = KeyFromDictionary(dict, "BassKeyEnh", "BassKeyNr");
  // Stored as a 32-bit number.
  const auto word = static_cast<std::uint32_t>(platform::JsonInteger(dict, "Semitones", 0));
  chord.Semitones = CSemitones(word);
  return chord;
}

long long CChordLite::GetChordHashCode() const {
  const std::uint64_t code = Semitones.Word() + HashField(RootKeyEnh.KeyNr, kHashRootKeyShift) +
                             HashField(RootKeyEnh.Enh, kHashRootEnhShift) +
                             HashField(BassKeyEnh.KeyNr, kHashBassKeyShift) +
                             HashField(BassKeyEnh.Enh, kHashBassEnhShift);
  return static_cast<long long>(code);
}

void CChordLite::SetFromChordHashCode(long long code) {
  const auto bits = static_cast<std::uint64_t>(code);
  Semitones = CSemitones(bits & kHashSemitonesMask);
  RootKeyEnh = CKeyEnh(HashNibble(bits, kHashRootKeyShift),
                       static_cast<TEnh>(HashNibble(bits, kHashRootEnhShift)));
  BassKeyEnh = CKeyEnh(HashNibble(bits, kHashBassKeyShift),
                       static_cast<TEnh>(HashNibble(bits, kHashBassEnhShift)));
}

TBasicChord CChordLite::BasicChordForNaming() const {
  if (Semitones.Contain(kHalfDimTones)) return kBasicChordMinor;
  return BasicChord();
}

bool CChordLite::BassKeyEnhHasThisIntvlAlone(int intvl) const {
  const int bassIntvl = AbsKeyIntvlFromRootToBass();
  return bassIntvl != kIntvlUndef && bassIntvl == intvl && !Semitones.HasIntvl(intvl);
}

bool CChordLite::BassKeyEnhHasIntvlAlone() const {
  const int bassIntvl = AbsKeyIntvlFromRootToBass();
  if (bassIntvl < 0 || bassIntvl >= 12) return true;
  return !Semitones.HasIntvl(bassIntvl);
}

CMySet<int> CChordLite::KeyNrSet() const {
  return ConvertIntvlSetToKeyNrSet(Semitones.IntvlSet(), RootKeyEnh.KeyNr);
}

int CChordLite::KeyIntvlFromRootToBass() const {
  return KeyIntvlFromTo(RootKeyEnh.KeyNr, BassKeyEnh.KeyNr);
}

int CChordLite::AbsKeyIntvlFromRootToBass() const {
  return AbsKeyIntvlFromTo(RootKeyEnh.KeyNr, BassKeyEnh.KeyNr);
}

int CChordLite::SmallestKeyIntvlBetweenRootAndBass() const {
  return SmallestKeyIntvlBetween(RootKeyEnh.KeyNr, BassKeyEnh.KeyNr);
}

int CChordLite::KeyDistanceBetweenRootAndBass() const {
  return KeyDistanceBetween(RootKeyEnh.KeyNr, BassKeyEnh.KeyNr);
}

int CChordLite::ChordKeyNrFromKeyNr(int keyNr) const {
  if (IsUndef() || keyNr == kKeyNrUndef) return kKeyNrUndef;
  return FloorMod12(static_cast<long long>(keyNr) - RootKeyEnh.KeyNr);
}

int CChordLite::KeyNrFromChordKeyNr(int chordKeyNr) const {
  if (IsUndef() || chordKeyNr == kKeyNrUndef) return kKeyNrUndef;
  return FloorMod12(static_cast<long long>(RootKeyEnh.KeyNr) + chordKeyNr);
}

// The mask is re-read from the new root, so the chord tones keep their keys. The bass does
// not stay: a bass on the old root (spelled alike) becomes the new root; any other bass moves
// with the root by the same interval and, unless either ends natural, is spelled with the new
// root's accidental so that root and bass agree in flats or sharps.
void CChordLite::RotateRootToKeyEnh(const CKeyEnh& newRoot) {
  if (IsUndef() || newRoot.IsUndef()) return;
  const CKeyEnh oldRoot = RootKeyEnh;
  const int intvl = AbsKeyIntvlFromTo(oldRoot.KeyNr, newRoot.KeyNr);
  Semitones.RotateRootToIx(static_cast<unsigned long>(intvl));
  RootKeyEnh = newRoot;
  if (BassKeyEnh.KeyNr != oldRoot.KeyNr) {
    if (!HasBassNote()) return;
  } else if (BassKeyEnh.Enh == oldRoot.Enh) {
    BassKeyEnh = newRoot;
    return;
  }
  BassKeyEnh.TranposeThis(intvl);
  if (BassKeyEnh.Enh == TEnh_n || newRoot.Enh == TEnh_n) return;
  BassKeyEnh.Enh = newRoot.Enh;
}

void CChordLite::RotateRootToBassKeyEnh() {
  if (IsUndef()) return;
  if (HasBassNote()) {
    Semitones.RotateRootToIx(static_cast<unsigned long>(AbsKeyIntvlFromRootToBass()));
    RootKeyEnh = BassKeyEnh;
  }
  BassKeyEnh = CKeyEnh();
  Semitones.SetSemitone(0, true);
}

void CChordLite::AppendJSONString(std::ostream& out) const {
  out << '{';
  AppendJSONClassSubstring(out);
  out << '}';
}

void CChordLite::AppendJSONClassSubstring(std::ostream& out) const {
  out << "\"RootKeyEnh\":";
  RootKeyEnh.AppendJSONString(out);
  out << ", \"BassKeyEnh\":";
  BassKeyEnh.AppendJSONString(out);
  out << ", \"Semitones\":" << Semitones.Word();
}

// The name is that of the heavy form under the current preferences.
void CChordLite::WriteTrace(std::ostream& out) const {
  out << "CChordLite: " << ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name() << "  RootKeyEnh "
      << RootKeyEnh << ", BassKeyEnh " << BassKeyEnh << ", Semitones " << Semitones;
}

void CChordLite::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CChordLite::WriteInitializerList(std::ostream& out) const {
  out << "CChordLite(";
  RootKeyEnh.WriteInitializerList(out);
  out << ", ";
  Semitones.WriteInitializerList(out);
  out << ", ";
  BassKeyEnh.WriteInitializerList(out);
  out << ')';
}

}  // namespace harmony
