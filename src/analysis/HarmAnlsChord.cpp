#include "harmony/analysis/HarmAnlsChord.h"

#include <algorithm>
#include <iomanip>
#include <ios>

#include "HarmAnlsText.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/SemitonesMatch.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

constexpr unsigned long kMajorTriad = 145;
constexpr unsigned long kMinorTriad = 137;
constexpr double kBarLength = 4.0;

// Root, major third and fifth; anything else may sound.
const CSemitonesMatch& MajorTriadWithAnything() {
  static const CSemitonesMatch match({0, 4, 7}, {1, 2, 3, 5, 6, 8, 9, 10, 11});
  return match;
}

// Root, minor third and fifth, no major third; anything else may sound.
const CSemitonesMatch& MinorTriadWithAnything() {
  static const CSemitonesMatch match({0, 3, 7}, {1, 2, 5, 6, 8, 9, 10, 11});
  return match;
}

void WriteDist(std::ostream& out, std::int32_t dist) { out << std::setw(2) << dist; }

double DoubleMember(const JsonDict& dict, const char* key) {
  return platform::JsonDouble(dict, key, kHarmAnlsUndefDouble);
}

}  // namespace

void AppendHarmAnlsFixedDouble(std::ostream& out, double value) {
  const std::ios_base::fmtflags flags = out.flags();
  const std::streamsize precision = out.precision();
  out << std::fixed << std::setprecision(2) << std::setw(6) << value;
  out.flags(flags);
  out.precision(precision);
}

// --- CHarmAnlsChord

void CHarmAnlsChord::AppendJSONString(std::ostream& out) const {
  out << '{';
  AppendJSONClassSubstring(out);
  out << '}';
}

void CHarmAnlsChord::AppendJSONClassSubstring(std::ostream& out) const {
  CChordLite::AppendJSONClassSubstring(out);
  out << ", \"RootDistToHarmCenter\":";
  WriteDist(out, RootDistToHarmCenter);
  out << ", \"BassDistToHarmCenter\":";
  WriteDist(out, BassDistToHarmCenter);
}

std::string CHarmAnlsChord::TraceName(const CChordNamePrefs& prefs) const {
  return ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs);
}

void CHarmAnlsChord::WriteTraceChordPart(std::ostream& out) const {
  // The mask runs straight into the first distance, as the trace has always been read.
  out << TraceName(GetCurrentChordNamePrefs()) << "  RootKeyEnh " << RootKeyEnh << ", BassKeyEnh "
      << BassKeyEnh << ", Semitones " << Semitones << "RootDistToHarmCenter ";
  WriteDist(out, RootDistToHarmCenter);
  out << ", BassDistToHarmCenter ";
  WriteDist(out, BassDistToHarmCenter);
  out << ", ";
}

void CHarmAnlsChord::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsChord:";
  WriteTraceChordPart(out);
}

void CHarmAnlsChord::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CHarmAnlsChord::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsChord(";
  CChordLite::WriteInitializerList(out);
  out << ", " << RootDistToHarmCenter << ", " << BassDistToHarmCenter << ')';
}

// --- CHarmAnlsChordWithPos

void CHarmAnlsChordWithPos::AppendJSONString(std::ostream& out) const {
  out << "{\"Position\":";
  AppendHarmAnlsFixedDouble(out, Position);
  out << ", ";
  AppendJSONClassSubstring(out);
  out << '}';
}

void CHarmAnlsChordWithPos::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsChordWithPos: Pos ";
  AppendHarmAnlsFixedDouble(out, Position);
  out << ", ";
  WriteTraceChordPart(out);
}

void CHarmAnlsChordWithPos::WriteTraceBrief(std::ostream& out) const {
  if (IsUndef()) {
    out << '-';
    return;
  }
  out << TraceName(GetChordNamePrefsNonUTF8());
}

void CHarmAnlsChordWithPos::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsChordWithPos(";
  CHarmAnlsChord::WriteInitializerList(out);
  out << ", ";
  harmanls::WriteInitializerDouble(out, Position);
  out << ')';
}

// --- CHarmAnlsChordWithLength

void CHarmAnlsChordWithLength::SimplifyChord() {
  if (MajorTriadWithAnything().Matches(Semitones)) {
    Semitones = CSemitones(kMajorTriad);
  } else if (MinorTriadWithAnything().Matches(Semitones)) {
    Semitones = CSemitones(kMinorTriad);
  } else {
    Semitones = CSemitones(kMajorTriad);
  }
  BassDistToHarmCenter = -1;
  BassKeyEnh = CKeyEnh(kKeyNrUndef, TEnh_Undef);
  Length = kBarLength;
}

void CHarmAnlsChordWithLength::AppendJSONString(std::ostream& out) const {
  out << "{\"Length\":";
  AppendHarmAnlsFixedDouble(out, Length);
  out << ", ";
  AppendJSONClassSubstring(out);
  out << '}';
}

void CHarmAnlsChordWithLength::WriteTrace(std::ostream& out) const {
  out << "CHarmAnlsChordWithLength: Length ";
  AppendHarmAnlsFixedDouble(out, Length);
  out << ", ";
  WriteTraceChordPart(out);
}

void CHarmAnlsChordWithLength::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CHarmAnlsChordWithLength::WriteInitializerList(std::ostream& out) const {
  out << "CHarmAnlsChordWithLength(";
  CHarmAnlsChord::WriteInitializerList(out);
  out << ", ";
  harmanls::WriteInitializerDouble(out, Length);
  out << ')';
}

CHarmAnlsChordWithLength
CHarmAnlsChordWithLength::JSONDeserializer_Helper::CHarmAnlsChordWithLengthFromJSONDictionary(
    const JsonDict& dict) {
  using platform::JsonInteger;
  CHarmAnlsChordWithLength chord;
  // A key number without its spelling keeps the undefined spelling.
  const auto readKey = [&dict](CKeyEnh& key, const char* enhKey, const char* nrKey) {
    if (const JsonDict* keyEnh = platform::JsonMember(dict, enhKey)) {
      key = CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*keyEnh);
    } else {
      key.KeyNr = static_cast<int>(JsonInteger(dict, nrKey, 0));
    }
  };
  readKey(chord.RootKeyEnh, HarmChordJSONKey_RootKeyEnh, HarmChordJSONKey_RootKeyNr);
  readKey(chord.BassKeyEnh, HarmChordJSONKey_BassKeyEnh, HarmChordJSONKey_BassKeyNr);
  chord.RootDistToHarmCenter =
      static_cast<std::int32_t>(JsonInteger(dict, HarmChordJSONKey_RootDistToHarmCenter, 0));
  chord.BassDistToHarmCenter =
      static_cast<std::int32_t>(JsonInteger(dict, HarmChordJSONKey_BassDistToHarmCenter, 0));
  chord.Semitones =
      CSemitones(static_cast<std::uint32_t>(JsonInteger(dict, HarmChordJSONKey_Semitones, 0)));
  chord.Length = platform::JsonDouble(dict, HarmChordJSONKey_Length, 0.0);
  return chord;
}

// --- Readers of the analysis JSON

namespace CHarmAnls {

CHarmAnlsChord Chord::FromDictionary(const JsonDict& dict) {
  CHarmAnlsChord chord(CChordLite::FromDictionary(dict));
  if (platform::JsonMember(dict, "RootDistToHarmCenter") != nullptr &&
      platform::JsonMember(dict, "BassDistToHarmCenter") != nullptr) {
    chord.RootDistToHarmCenter =
        static_cast<std::int32_t>(platform::JsonInteger(dict, "RootDistToHarmCenter", -1));
    chord.BassDistToHarmCenter =
        static_cast<std::int32_t>(platform::JsonInteger(dict, "BassDistToHarmCenter", -1));
  }
  return chord;
}

CHarmAnlsChordWithPos ChordWithPos::FromDictionary(const JsonDict& dict) {
  return CHarmAnlsChordWithPos(Chord::FromDictionary(dict), DoubleMember(dict, "Position"));
}

CHarmAnlsChordWithLength ChordWithLength::FromDictionary(const JsonDict& dict) {
  return CHarmAnlsChordWithLength(CChordLite::FromDictionary(dict), DoubleMember(dict, "Length"));
}

}  // namespace CHarmAnls

}  // namespace harmony
