#include "harmony/analysis/HarmAnlsSignKey.h"

#include <iterator>
#include <ostream>

#include "HarmAnlsText.h"
#include "platform/JsonReader.h"

namespace harmony {

// --- CHarmAnlsSignKey

void CHarmAnlsSignKey::IfUndefFillWithHarmAnlsCenter(const CHarmAnlsCenter& center) {
  if (IsUndef()) {
    SignKey.RootKeyEnh = center.HarmCenter.RootKeyEnh;
    SignKey.SignKeyType = SignKeyTypeFromSemitones(center.HarmCenter.Semitones);
  }
  if (IsHarmAnlsUndef(Position)) Position = center.Position;
}

CHarmAnlsSignKey CHarmAnlsSignKey::FromDictionary(const JsonDict& dict) {
  CHarmAnlsSignKey signKey;
  signKey.Probability = HarmAnlsProbabilityFromDictionary(dict);
  signKey.Position = platform::JsonDouble(dict, "Position", kHarmAnlsUndefDouble);
  if (const JsonDict* key = platform::JsonMember(dict, "SignKey")) {
    signKey.SignKey = CSignKeyLite::FromJSONDict(*key);
  }
  if (const JsonDict* centers = platform::JsonMember(dict, "HarmCenters")) {
    signKey.HarmCenters = CHarmAnlsCenters::FromDictionary(*centers);
  }
  return signKey;
}

void CHarmAnlsSignKey::AppendJSONString(std::ostream& out) const {
  out << "{\"Probability\":";
  AppendHarmAnlsProbability(out, Probability);
  out << ", \"Position\":";
  AppendHarmAnlsFixedDouble(out, Position);
  out << ", \"SignKey\":";
  SignKey.AppendJSONString(out);
  out << ", " << std::endl << "\"HarmCenters\":" << std::endl;
  HarmCenters.AppendJSONString(out);
  out << '}';
}

void CHarmAnlsSignKey::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsSignKey: ";
  AppendJSONString(out);
}

void CHarmAnlsSignKey::WriteTraceBrief(std::ostream& out) const {
  out << "(HK " << SignKey.NameShort(GetChordNamePrefsNonUTF8());
  if (!IsHarmAnlsUndef(Probability)) out << ' ' << HarmAnlsPercentText(Probability);
  out << ": ";
  HarmCenters.WriteTraceBrief(out);
  out << ')';
}

void CHarmAnlsSignKey::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsSignKey(";
  harmanls::WriteInitializerDouble(out, Probability);
  out << ", ";
  harmanls::WriteInitializerDouble(out, Position);
  out << ", ";
  SignKey.WriteInitializerList(out);
  out << ", ";
  HarmCenters.WriteInitializerList(out);
  out << ')';
}

// --- CHarmAnlsSignKeys

void CHarmAnlsSignKeys::_MergeSignKeysAndEraseSecond(iterator first) {
  const iterator second = std::next(first);
  first->HarmCenters.insert(first->HarmCenters.end(), second->HarmCenters.begin(),
                            second->HarmCenters.end());
  erase(second);
}

void CHarmAnlsSignKeys::MergeAdjacentSameSignKeys() {
  for (std::size_t i = 1; i < size();) {
    // Key number, spelling and type: CSignKeyLite's equality.
    if ((*this)[i].SignKey == (*this)[i - 1].SignKey) {
      _MergeSignKeysAndEraseSecond(begin() + static_cast<std::ptrdiff_t>(i - 1));
    } else {
      ++i;
    }
  }
}

void CHarmAnlsSignKeys::MergeAdjacentSameHarmCenters() {
  for (CHarmAnlsSignKey& signKey : *this) signKey.HarmCenters.MergeAdjacentSameHarmCenters();
}

CHarmAnlsSignKeys CHarmAnlsSignKeys::FromDictionary(const JsonDict& array) {
  CHarmAnlsSignKeys signKeys;
  if (!array.is_array()) return signKeys;
  for (const JsonDict& signKey : array) {
    signKeys.push_back(CHarmAnlsSignKey::FromDictionary(signKey));
  }
  return signKeys;
}

CHarmAnlsSignKeys CHarmAnlsSignKeys::FromAnalysisJSONString(std::string_view text) {
  const std::optional<JsonDict> parsed = platform::ParseRelaxedJson(text);
  if (!parsed) return {};
  if (const JsonDict* signKeys = platform::JsonMember(*parsed, "HarmSignKeys")) {
    return FromDictionary(*signKeys);
  }
  return FromDictionary(*parsed);
}

void CHarmAnlsSignKeys::AppendJSONString(std::ostream& out) const {
  harmanls::AppendJSONList(out, *this);
}

void CHarmAnlsSignKeys::WriteTrace(std::ostream& out) const {
  harmanls::WriteTraceBlock(out, "CHarmAnlsSignKeys", *this);
}

void CHarmAnlsSignKeys::WriteTraceBrief(std::ostream& out) const {
  harmanls::WriteBriefList(out, *this);
}

void CHarmAnlsSignKeys::WriteInitializerList(std::ostream& out) const {
  harmanls::WriteInitializerBlock(out, "CHarmAnlsSignKeys", *this);
}

}  // namespace harmony
