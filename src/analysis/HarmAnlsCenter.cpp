#include "harmony/analysis/HarmAnlsCenter.h"

#include <cstdint>
#include <iomanip>
#include <optional>
#include <sstream>
#include <string>

#include "HarmAnlsText.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

int DistToCenter(int keyNr, int centerKeyNr) { return ((keyNr - centerKeyNr) % 12 + 12) % 12; }

// The mask of a scale's JSON: the twelve-slot array as a string, as an array, or a number.
CSemitones SemitonesFromJson(const JsonDict* member) {
  if (member == nullptr) return CSemitones();
  if (member->is_number_integer()) {
    return CSemitones(static_cast<std::uint32_t>(member->get<long long>()));
  }
  std::optional<JsonDict> slots;
  if (member->is_string()) slots = platform::ParseJson(member->get_ref<const std::string&>());
  const JsonDict& array = slots ? *slots : *member;
  CSemitones semitones;
  if (!array.is_array()) return semitones;
  for (std::size_t i = 0; i < array.size() && i < 12; ++i) {
    if (array[i].is_number() && array[i].get<double>() != 0.0) {
      semitones.AddIntvl(static_cast<int>(i));
    }
  }
  return semitones;
}

CHarmCenterLite HarmCenterFromDictionary(const JsonDict* dict) {
  if (dict == nullptr) return CHarmCenterLite();
  CKeyEnh root;
  if (const JsonDict* key = platform::JsonMember(*dict, "CKeyEnh")) {
    root = CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*key);
  }
  return CHarmCenterLite(root, SemitonesFromJson(platform::JsonMember(*dict, "Semitones")));
}

}  // namespace

void AppendHarmAnlsProbability(std::ostream& out, double probability) {
  // Not strict JSON, on purpose: the readers of this system know the word.
  if (IsHarmAnlsUndef(probability)) {
    out << "Undef";
  } else {
    AppendHarmAnlsFixedDouble(out, probability);
  }
}

std::string HarmAnlsPercentText(double probability) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(0) << probability * 100.0;
  return text.str();
}

double HarmAnlsProbabilityFromDictionary(const JsonDict& dict) {
  const JsonDict* member = platform::JsonMember(dict, "Probability");
  if (member == nullptr || !member->is_number()) return kHarmAnlsUndefDouble;
  return member->get<double>();
}

// --- CHarmAnlsCenter

bool CHarmAnlsCenter::operator==(const CHarmAnlsCenter& other) const {
  if (Position != other.Position || HarmCenter != other.HarmCenter) return false;
  if (HarmChords.size() != other.HarmChords.size()) return false;
  for (std::size_t i = 0; i < HarmChords.size(); ++i) {
    const CHarmAnlsChordWithPos& a = HarmChords[i];
    const CHarmAnlsChordWithPos& b = other.HarmChords[i];
    if (!(a == b) || a.Position != b.Position) return false;
  }
  return true;
}

void CHarmAnlsCenter::IfUndefFillWithHarmSignKey(const CHarmAnlsSignKey& signKey) {
  if (IsUndef()) {
    HarmCenter = CHarmCenterLite(signKey.SignKey.RootKeyEnh,
                                 SemitonesFromSignKeyType(signKey.SignKey.SignKeyType));
  }
  if (IsHarmAnlsUndef(Position)) Position = signKey.Position;
}

void CHarmAnlsCenter::AnalyseHarmFunctionsOfChords() {
  if (IsUndef()) return;
  const int center = HarmCenter.RootKeyEnh.KeyNr;
  for (CHarmAnlsChordWithPos& chord : HarmChords) {
    const bool hasRoot = !chord.IsUndef();
    chord.RootDistToHarmCenter = hasRoot ? DistToCenter(chord.RootKeyEnh.KeyNr, center) : -1;
    chord.BassDistToHarmCenter =
        hasRoot && chord.HasBassNote() ? DistToCenter(chord.BassKeyEnh.KeyNr, center) : -1;
  }
}

CHarmAnlsCenter CHarmAnlsCenter::FromDictionary(const JsonDict& dict) {
  CHarmAnlsCenter center;
  center.Probability = HarmAnlsProbabilityFromDictionary(dict);
  center.Position = platform::JsonDouble(dict, "Position", kHarmAnlsUndefDouble);
  center.HarmCenter = HarmCenterFromDictionary(platform::JsonMember(dict, "HarmCenter"));
  if (const JsonDict* chords = platform::JsonMember(dict, "HarmChords")) {
    if (chords->is_array()) {
      for (const JsonDict& chord : *chords) {
        center.HarmChords.push_back(CHarmAnls::ChordWithPos::FromDictionary(chord));
      }
    }
  }
  return center;
}

void CHarmAnlsCenter::AppendJSONString(std::ostream& out) const {
  out << "{\"Probability\":";
  AppendHarmAnlsProbability(out, Probability);
  out << ", \"Position\":";
  AppendHarmAnlsFixedDouble(out, Position);
  out << ", \"HarmCenter\":";
  HarmCenter.AppendJSONString(out);
  out << ", \"HarmChords\":" << std::endl;
  HarmChords.AppendJSONString(out);
  out << '}';
}

void CHarmAnlsCenter::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsCenter: Position ";
  AppendHarmAnlsFixedDouble(out, Position);
  out << ", HarmCenter " << HarmCenter << ", ";
  if (!IsHarmAnlsUndef(Probability)) {
    out << "Probability " << HarmAnlsPercentText(Probability) << "%, ";
  }
  out << "HarmChords:\n";
  HarmChords.WriteTrace(out);
}

void CHarmAnlsCenter::WriteTraceBrief(std::ostream& out) const {
  out << "(HC " << HarmCenter.NameShort(GetChordNamePrefsNonUTF8());
  if (!IsHarmAnlsUndef(Probability)) out << ' ' << HarmAnlsPercentText(Probability);
  out << ": ";
  HarmChords.WriteTraceBrief(out);
  out << ')';
}

void CHarmAnlsCenter::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsCenter(";
  harmanls::WriteInitializerDouble(out, Probability);
  out << ", ";
  harmanls::WriteInitializerDouble(out, Position);
  out << ", ";
  HarmCenter.WriteInitializerList(out);
  out << ", ";
  HarmChords.WriteInitializerList(out);
  out << ')';
}

// --- CHarmAnlsCenters

CHarmAnlsCenters CHarmAnlsCenters::FromDictionary(const JsonDict& array) {
  CHarmAnlsCenters centers;
  if (!array.is_array()) return centers;
  for (const JsonDict& center : array) centers.push_back(CHarmAnlsCenter::FromDictionary(center));
  return centers;
}

void CHarmAnlsCenters::AppendJSONString(std::ostream& out) const {
  harmanls::AppendJSONList(out, *this);
}

void CHarmAnlsCenters::WriteTrace(std::ostream& out) const {
  harmanls::WriteTraceBlock(out, "CHarmAnlsCenters", *this);
}

void CHarmAnlsCenters::WriteTraceBrief(std::ostream& out) const {
  harmanls::WriteBriefList(out, *this);
}

void CHarmAnlsCenters::WriteInitializerList(std::ostream& out) const {
  harmanls::WriteInitializerBlock(out, "CHarmAnlsCenters", *this);
}

}  // namespace harmony
