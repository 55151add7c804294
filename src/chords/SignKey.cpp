// CSignKeyLite and CSignKeyNoEnh, and the spelling of a key by a sign key.

#include "harmony/chords/SignKey.h"

#include <cstdlib>

#include "chords/LeastSigns.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/pitch/KeyNames.h"
#include "platform/JsonReader.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

constexpr int Mod12(int value) { return ((value % 12) + 12) % 12; }

bool IsMajorOrMinor(TSignKeyType type) {
  return type == TSignKeyType::Major || type == TSignKeyType::Minor;
}

TSignKeyType SignKeyTypeFromJSONText(const std::string& text) {
  if (text == "major") return TSignKeyType::Major;
  if (text == "minor") return TSignKeyType::Minor;
  return TSignKeyType::Undef;
}

// The spelling of the relative key, from the old key's signed sign count.
TEnh ParallelKeyEnh(int newKeyNr, int signsCount) {
  if (IsBlackKey(newKeyNr)) return signsCount > 0 ? TEnh_s : TEnh_b;
  if (std::abs(signsCount) < 7) return TEnh_n;
  if (newKeyNr == 0 || newKeyNr == 4 || newKeyNr == 5 || newKeyNr == 11) {
    return signsCount > 0 ? TEnh_s : TEnh_b;
  }
  return signsCount >= 1 ? TEnh_ss : TEnh_bb;
}

}  // namespace

CKeyEnh::CKeyEnh(int keyNr, const CSignKeyLite& signKey) : CKeyEnh(keyNr, signKey.Scale()) {}

// --- CSignKeyLite

CSignKeyLite::CSignKeyLite(const CSignKeyHeavy& heavy)
    : RootKeyEnh(heavy.RootKeyEnh()), SignKeyType(FromSignKeyTypeNoUndef(heavy.SignKeyType())) {}

CSignKeyLite::CSignKeyLite(const std::string& text, const CChordNamePrefs& prefs) {
  const CScaleLite scale(text, prefs);
  RootKeyEnh = scale.RootKeyEnh;
  SignKeyType = SignKeyTypeFromSemitones(scale.Semitones);
}

CSignKeyLite::CSignKeyLite(const char* text, const CChordNamePrefs& prefs)
    : CSignKeyLite(std::string(text != nullptr ? text : ""), prefs) {}

CScaleLite CSignKeyLite::Scale() const {
  if (!IsMajorOrMinor(SignKeyType)) return CScaleLite();
  return CScaleLite(RootKeyEnh, Semitones());
}

CSignKeyHeavy CSignKeyLite::ToSignKeyHeavy() const {
  return CSignKeyHeavy(RootKeyEnh, FromSignKeyType(SignKeyType));
}

CSignKeyNoEnh CSignKeyLite::ToSignKeyNoEnh() const { return CSignKeyNoEnh(*this); }

CHarmCenterLite CSignKeyLite::ToHarmCenter() const {
  return CHarmCenterLite(RootKeyEnh, Semitones());
}

void CSignKeyLite::SetFromHarmCenter(const CHarmCenterLite& center) {
  RootKeyEnh = center.RootKeyEnh;
  SignKeyType = center.Semitones.Word() == 1453 ? TSignKeyType::Minor : TSignKeyType::Major;
}

int CSignKeyLite::DistToSignKeyRoot(int keyNr) const {
  return IsUndef() ? -1 : Mod12(keyNr - RootKeyEnh.KeyNr);
}

int CSignKeyLite::KeyNrToSignKeyKeyNr(int keyNr) const {
  if (IsUndef() || keyNr == kKeyNrUndef) return kKeyNrUndef;
  return Mod12(keyNr - RootKeyEnh.KeyNr);
}

int CSignKeyLite::SignKeyKeyNrToKeyNr(int signKeyKeyNr) const {
  if (IsUndef() || signKeyKeyNr == kKeyNrUndef) return kKeyNrUndef;
  return Mod12(signKeyKeyNr + RootKeyEnh.KeyNr);
}

int CSignKeyLite::SignsCount() const {
  return SignsCountForSignKeyWithKeyEnhAndSignKeyType(RootKeyEnh, SignKeyType);
}

int CSignKeyLite::SignsCountAbs() const { return std::abs(SignsCount()); }

CSignKeyLite CSignKeyLite::ParallelSignKey() const {
  if (IsUndef() || !IsMajorOrMinor(SignKeyType)) return Undef;
  const bool major = SignKeyType == TSignKeyType::Major;
  const int newKeyNr = Mod12(RootKeyEnh.KeyNr + (major ? -3 : 3));
  return CSignKeyLite(CKeyEnh(newKeyNr, ParallelKeyEnh(newKeyNr, SignsCount())),
                      major ? TSignKeyType::Minor : TSignKeyType::Major);
}

CSignKeyLite CSignKeyLite::IonicSignKey() const {
  return SignKeyType == TSignKeyType::Minor ? ParallelSignKey() : *this;
}

void CSignKeyLite::SetRootNoteEnhWithLeastSigns() {
  if (IsUndef()) return;
  const TScaleType scaleType = SignKeyType == TSignKeyType::Minor ? st_min : st_maj;
  RootKeyEnh.Enh = chords_detail::RootKeyEnhWithLeastSigns(RootKeyEnh, scaleType).Enh;
}

void CSignKeyLite::TransposeDestructiveBy(int intvl, const CScaleLite& scale) {
  RootKeyEnh.TranposeThisAndAdjustEnh(intvl, scale);
}

std::string CSignKeyLite::NameShort(const CChordNamePrefs& prefs) const {
  if (IsUndef()) return platform::Localized("Undefined");
  std::string name = KeyNrAndEnhToName(RootKeyEnh.KeyNr, RootKeyEnh.Enh, prefs);
  if (SignKeyType == TSignKeyType::Minor) name += "m";
  return name;
}

std::string CSignKeyLite::NameLong(const CChordNamePrefs& prefs) const {
  if (IsUndef()) return platform::Localized("Undefined");
  const char* mode = SignKeyType == TSignKeyType::Minor ? "Minor" : "Major";
  return KeyNrAndEnhToName(RootKeyEnh.KeyNr, RootKeyEnh.Enh, prefs) + " " +
         platform::Localized(mode);
}

bool CSignKeyLite::operator<(const CSignKeyLite& other) const {
  if (const auto byRoot = RootKeyEnh <=> other.RootKeyEnh; byRoot != 0) return byRoot < 0;
  return SignKeyType < other.SignKeyType;
}

void CSignKeyLite::AppendJSONString(std::ostream& out) const {
  out << "{\"CKeyEnh\":";
  RootKeyEnh.AppendJSONString(out);
  out << ",\"Type\":\"";
  ToJSONString(out, SignKeyType);
  out << "\"}";
}

CSignKeyLite CSignKeyLite::FromJSONDict(const JsonDict& dict) {
  CSignKeyLite signKey;
  if (const JsonDict* key = platform::JsonMember(dict, "CKeyEnh")) {
    signKey.RootKeyEnh = CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*key);
  }
  signKey.SignKeyType = SignKeyTypeFromJSONText(platform::JsonString(dict, "Type"));
  return signKey;
}

void CSignKeyLite::WriteTrace(std::ostream& out) const {
  out << "CSignKeyLite: " << NameShort() << ", RootKeyEnh ";
  RootKeyEnh.WriteTrace(out);
  out << ", SignKeyType " << SignKeyType;
}

void CSignKeyLite::WriteTraceBrief(std::ostream& out) const { out << NameShort(); }

void CSignKeyLite::WriteInitializerList(std::ostream& out) const {
  out << "CSignKeyLite(CKeyEnh(";
  RootKeyEnh.WriteInitializerList(out);
  out << "), " << InitializerText(SignKeyType) << ")";
}

// --- CSignKeyNoEnh

CSignKeyNoEnh::CSignKeyNoEnh(const CSignKeyLite& signKey) {
  if (signKey.IsUndef()) return;
  RootKeyNr = NormalizedKeyNr(signKey.RootKeyEnh.KeyNr);
  Type = FromSignKeyType(signKey.SignKeyType);
}

CSignKeyNoEnh::CSignKeyNoEnh(const CSignKeyHeavy& signKey) : CSignKeyNoEnh(CSignKeyLite(signKey)) {}

CSignKeyLite CSignKeyNoEnh::SignKey() const {
  if (IsUndef()) return CSignKeyLite::Undef;
  CSignKeyLite signKey(CKeyEnh(NormalizedKeyNr(RootKeyNr), TEnh_Undef),
                       FromSignKeyTypeNoUndef(Type));
  signKey.SetRootNoteEnhWithLeastSigns();
  return signKey;
}

int CSignKeyNoEnh::DistToSignKeyRoot(int keyNr) const {
  return IsUndef() ? -1 : Mod12(keyNr - RootKeyNr);
}

CSignKeyNoEnh CSignKeyNoEnh::ParallelSignKey() const {
  if (IsUndef()) return Undef;
  const bool major = Type == TSignKeyTypeNoUndef::Major;
  return CSignKeyNoEnh(Mod12(RootKeyNr + (major ? -3 : 3)),
                       major ? TSignKeyTypeNoUndef::Minor : TSignKeyTypeNoUndef::Major);
}

CSignKeyNoEnh CSignKeyNoEnh::IonicSignKey() const {
  return Type == TSignKeyTypeNoUndef::Minor ? ParallelSignKey() : *this;
}

int CSignKeyNoEnh::KeyNrToSignKeyKeyNr(int keyNr) const {
  if (IsUndef() || keyNr == kKeyNrUndef) return kKeyNrUndef;
  return Mod12(keyNr - RootKeyNr);
}

int CSignKeyNoEnh::SignKeyKeyNrToKeyNr(int signKeyKeyNr) const {
  if (IsUndef() || signKeyKeyNr == kKeyNrUndef) return kKeyNrUndef;
  return Mod12(signKeyKeyNr + RootKeyNr);
}

std::string CSignKeyNoEnh::Name(const CChordNamePrefs& prefs) const {
  return SignKey().NameShort(prefs);
}

void CSignKeyNoEnh::AppendJSONString(std::ostream& out) const {
  out << "{\"RootKeyNr\":" << RootKeyNr << ",\"Type\":\"";
  ToJSONString(out, Type);
  out << "\"}";
}

CSignKeyNoEnh CSignKeyNoEnh::FromJSONDict(const JsonDict& dict) {
  CSignKeyNoEnh signKey;
  signKey.RootKeyNr = static_cast<int>(platform::JsonInteger(dict, "RootKeyNr", kKeyNrUndef));
  signKey.Type = FromSignKeyType(SignKeyTypeFromJSONText(platform::JsonString(dict, "Type")));
  return signKey;
}

void CSignKeyNoEnh::WriteTrace(std::ostream& out) const {
  if (IsUndef()) {
    out << "CSignKeyNoEnh_Undef";
    return;
  }
  out << "CSignKeyNoEnh: Name " << Name() << ", RootKeyNr " << RootKeyNr << ", Type " << Type;
}

void CSignKeyNoEnh::WriteTraceBrief(std::ostream& out) const {
  out << (IsUndef() ? "CSignKeyNoEnh_Undef" : Name());
}

void CSignKeyNoEnh::WriteInitializerList(std::ostream& out) const {
  out << "CSignKeyNoEnh(" << RootKeyNr << ", TSignKeyTypeNoUndef::" << Type << ")";
}

}  // namespace harmony
