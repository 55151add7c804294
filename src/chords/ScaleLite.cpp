#include "harmony/chords/ScaleLite.h"

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleNameReader.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony {

namespace {

constexpr std::uint64_t kMajorMask = 2741;
constexpr std::uint64_t kMinorMask = 1453;

constexpr int Mod12(int value) { return ((value % 12) + 12) % 12; }

// The key of a note number, 15 for an undefined note.
int KeyNrOfNoteNr(long noteNr) {
  if (IsUndefNoteNr(noteNr)) return kKeyNrUndef;
  return static_cast<int>(((noteNr % 12) + 12) % 12);
}

}  // namespace

CScaleLite::CScaleLite(const CScaleHeavy& heavy)
    : RootKeyEnh(heavy.RootKeyEnh()), Semitones(heavy.ToIntvlSet().ToSemitones()) {}

CScaleLite::CScaleLite(const std::string& text, const CChordNamePrefs& prefs) {
  SetFromString(text, prefs);
}

CScaleLite::CScaleLite(const char* text, const CChordNamePrefs& prefs)
    : CScaleLite(std::string(text != nullptr ? text : ""), prefs) {}

void CScaleLite::SetFromString(const std::string& text, const CChordNamePrefs& prefs) {
  harmony::SetFromString(text, *this, prefs);
}

bool CScaleLite::HasKeyNr(int keyNr) const {
  if (RootKeyEnh.IsUndef() || keyNr == kKeyNrUndef) return false;
  return Semitones.HasIntvl(Mod12(keyNr - RootKeyEnh.KeyNr));
}

bool CScaleLite::HasSameKeysAsScale(const CScaleLite& other) const {
  if (RootKeyEnh.IsUndef() || other.RootKeyEnh.IsUndef()) return false;
  if (!HasKeyNr(other.RootKeyEnh.KeyNr)) return false;
  CSemitones rotated = other.Semitones;
  rotated.RotateRootToIx(
      static_cast<unsigned long>(Mod12(RootKeyEnh.KeyNr - other.RootKeyEnh.KeyNr)));
  return rotated == Semitones;
}

void CScaleLite::RotateRootToKeyEnh(const CKeyEnh& newRoot) {
  if (RootKeyEnh.IsUndef() || newRoot.IsUndef()) return;
  Semitones.RotateRootToIx(static_cast<unsigned long>(Mod12(newRoot.KeyNr - RootKeyEnh.KeyNr)));
  RootKeyEnh = newRoot;
}

long CScaleLite::QuantizeToScale(long noteNr, TQuantizeDirection direction) const {
  const int key = KeyNrOfNoteNr(noteNr);
  if (key == kKeyNrUndef || RootKeyEnh.IsUndef()) return kNoteNrUndef;
  const int intvl = Semitones.QuantizeToActiveSemitonesAsIntvl(
      static_cast<unsigned long>(Mod12(key - RootKeyEnh.KeyNr)),
      {direction, _Quantize_WrapAtOctave_No});
  return noteNr + (intvl == kIntvlUndef ? 0 : intvl);
}

int CScaleLite::ScaleKeyNrFromKeyNr(int keyNr) const {
  if (keyNr == kKeyNrUndef || RootKeyEnh.IsUndef()) return kKeyNrUndef;
  return Mod12(keyNr - RootKeyEnh.KeyNr);
}

int CScaleLite::KeyNrFromScaleKeyNr(int scaleKeyNr) const {
  if (scaleKeyNr == kKeyNrUndef || RootKeyEnh.IsUndef()) return kKeyNrUndef;
  return Mod12(scaleKeyNr + RootKeyEnh.KeyNr);
}

int CScaleLite::DegreeNrToKeyNr(int degreeNr) const {
  if (degreeNr == -1 || RootKeyEnh.IsUndef()) return kKeyNrUndef;
  if (degreeNr < 0) return RootKeyEnh.KeyNr;
  if (Semitones.IsEmpty()) return kKeyNrUndef;
  return Mod12(RootKeyEnh.KeyNr + Semitones.DegreeNrToIntvl(degreeNr));
}

int CScaleLite::KeyNrToDegreeNr(int keyNr) const {
  if (RootKeyEnh.IsUndef()) return -1;
  const int key = NormalizedKeyNr(keyNr);
  for (int degree = 0; degree < DegreesPerOctave(); ++degree) {
    if (DegreeNrToKeyNr(degree) == key) return degree;
  }
  return -1;
}

long CScaleLite::DegreeNrToNoteNr(int degreeNr, int octaveIndex) const {
  if (degreeNr == -1 || RootKeyEnh.IsUndef()) return kNoteNrUndef;
  const long base = octaveIndex < 0 ? 0 : 12L * octaveIndex;
  if (degreeNr < 0) return RootKeyEnh.KeyNr + base;
  if (Semitones.IsEmpty()) return kNoteNrUndef;
  return DegreeNrToKeyNr(degreeNr) + base;
}

int CScaleLite::NoteNrToDegreeNr(long noteNr) const {
  const int key = KeyNrOfNoteNr(noteNr);
  return key == kKeyNrUndef ? -1 : KeyNrToDegreeNr(key);
}

int CScaleLite::DistToRootKey(int keyNr) const {
  if (RootKeyEnh.IsUndef()) return -1;
  return Mod12(keyNr - RootKeyEnh.KeyNr);
}

void CScaleLite::TransposeAndAdjustEnh(int intvl, const CScaleLite& scale) {
  if (RootKeyEnh.IsUndef()) return;
  RootKeyEnh.TranposeThisAndAdjustEnh(intvl, scale);
}

CScaleLite CScaleLite::ParallelModalScale() const {
  if (Semitones.Word() == kMinorMask) {
    return CScaleLite(RootKeyEnh.Transpose(3), CSemitones(kMajorMask));
  }
  if (Semitones.Word() == kMajorMask) {
    return CScaleLite(RootKeyEnh.Transpose(-3), CSemitones(kMinorMask));
  }
  return CScaleLite();
}

CScaleLite CScaleLite::RelatedIonianModalScale() const {
  if (RootKeyEnh.IsUndef()) return CScaleLite();
  return CScaleLite(CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(RootKeyEnh, Semitones),
                    CSemitones(kMajorMask));
}

std::uint64_t CScaleLite::HashValue() const {
  const auto keyHash = static_cast<std::int64_t>(RootKeyEnh.HashValue());
  return Semitones.Word() + (static_cast<std::uint64_t>(keyHash) << 24);
}

TEnh CScaleLite::EnhForKeyNr(int keyNr) const {
  return CScaleHeavy(RootKeyEnh, Semitones).EnhForKeyNr(keyNr);
}

bool CScaleLite::operator<(const CScaleLite& other) const {
  if (const auto byRoot = RootKeyEnh <=> other.RootKeyEnh; byRoot != 0) return byRoot < 0;
  return Semitones < other.Semitones;
}

std::string CScaleLite::Name(const CChordNamePrefs& prefs) const {
  std::string name = KeyNrAndEnhToName(RootKeyEnh.KeyNr, RootKeyEnh.Enh, prefs);
  const std::string scaleName = ScaleName();
  if (!scaleName.empty()) name += " " + scaleName;
  return name;
}

std::string CScaleLite::ScaleName() const {
  const std::string& localized = harmony::Semitones::LocalizedNameForScale(Semitones);
  return localized.empty() ? Semitones.GenericName() : localized;
}

void CScaleLite::AppendJSONString(std::ostream& out) const {
  out << "{\"CKeyEnh\":";
  RootKeyEnh.AppendJSONString(out);
  out << ",\"Semitones\":\"";
  Semitones.AppendJSONString(out);
  out << "\"}";
}

void CScaleLite::WriteTrace(std::ostream& out) const {
  out << "CScaleLite: " << Name() << ", RootKeyEnh ";
  RootKeyEnh.WriteTrace(out);
  out << ", Semitones ";
  Semitones.WriteTrace(out);
}

void CScaleLite::WriteTraceBrief(std::ostream& out) const { out << Name(); }

void CScaleLite::WriteInitializerList(std::ostream& out) const {
  out << "CScaleLite(";
  RootKeyEnh.WriteInitializerList(out);
  out << ", ";
  Semitones.WriteInitializerList(out);
  out << ")";
}

std::ostream& operator<<(std::ostream& out, CScaleLite::IsAutomatic isAutomatic) {
  return out << "isAutomatic: " << (isAutomatic == CScaleLite::IsAutomatic::Yes ? "Yes" : "No");
}

}  // namespace harmony
