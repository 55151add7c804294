#include "harmony/musicxml/MusicXMLHarmony.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "harmony/pitch/SemitonesMatch.h"

namespace harmony {

namespace {

// One chord kind of MusicXML: the tones it has, as searched for when a chord is written back,
// and the intervals above the root in register, as read. "pedal" has intervals but no row in
// the search.
struct TKindRow {
  std::string_view kind;
  bool searched;
  std::initializer_list<int> semitones;
  std::initializer_list<int> intervals;
};

// Order matters for the search: the first row whose tones match wins.
const std::array<TKindRow, 29>& KindRows() {
  static const std::array<TKindRow, 29> rows{{
      {"major", true, {0, 4, 7}, {4, 7}},
      {"minor", true, {0, 3, 7}, {3, 7}},
      {"augmented", true, {0, 4, 8}, {4, 8}},
      {"diminished", true, {0, 3, 6}, {3, 6}},
      {"dominant", true, {0, 4, 7, 10}, {4, 7, 10}},
      {"major-seventh", true, {0, 4, 7, 11}, {4, 7, 11}},
      {"minor-seventh", true, {0, 3, 7, 10}, {3, 7, 10}},
      {"diminished-seventh", true, {0, 3, 6, 9}, {3, 6, 9}},
      {"augmented-seventh", true, {0, 4, 8, 10}, {4, 8, 10}},
      {"half-diminished", true, {0, 3, 6, 10}, {3, 6, 10}},
      {"major-minor", true, {0, 3, 7, 11}, {3, 7, 11}},
      {"major-sixth", true, {0, 4, 7, 9}, {4, 7, 9}},
      {"minor-sixth", true, {0, 3, 7, 9}, {3, 7, 9}},
      {"dominant-ninth", true, {0, 4, 7, 10, 2}, {4, 7, 10, 14}},
      {"major-ninth", true, {0, 4, 7, 11, 2}, {4, 7, 11, 14}},
      {"minor-ninth", true, {0, 3, 7, 10, 2}, {3, 7, 10, 14}},
      {"dominant-11th", true, {0, 4, 7, 10, 2, 5}, {4, 7, 10, 14, 17}},
      {"major-11th", true, {0, 4, 7, 11, 2, 5}, {4, 7, 11, 14, 17}},
      {"minor-11th", true, {0, 3, 7, 10, 2, 5}, {3, 7, 10, 14, 17}},
      {"dominant-13th", true, {0, 4, 7, 10, 2, 5, 9}, {4, 7, 10, 14, 17, 21}},
      {"major-13th", true, {0, 4, 7, 11, 2, 5, 9}, {4, 7, 11, 14, 17, 21}},
      {"minor-13th", true, {0, 3, 7, 10, 2, 5, 9}, {3, 7, 10, 14, 17, 21}},
      {"suspended-second", true, {0, 2, 7}, {2, 7}},
      {"suspended-fourth", true, {0, 5, 7}, {5, 7}},
      {"Neapolitan", true, {0, 3, 8}, {3, 8}},
      {"Italian", true, {0, 4, 10}, {4, 10}},
      {"French", true, {0, 4, 6, 10}, {4, 6, 10}},
      {"pedal", false, {}, {}},
      {"power", true, {0, 7}, {7}},
  }};
  return rows;
}

// What a degree value adds. `altered` is the index of the interval the degree's alter moves,
// or -1 when the alter is not read.
struct TDegreeRow {
  std::string_view value;
  std::initializer_list<int> intervals;
  int altered;
};

constexpr std::array<TDegreeRow, 20> kDegreeRows{{
    {"7", {10}, 0},
    {"ma7", {11}, -1},
    {"j7", {11}, -1},
    {"maj7", {11}, -1},
    {"b9", {10, 13}, -1},
    {"add b9", {13}, -1},
    {"9", {10, 14}, 1},
    {"add 9", {14}, 0},
    {"#9", {10, 15}, -1},
    {"b3", {3}, -1},
    // Below the thirteenth, as chord books sometimes write the flat six.
    {"b13", {8}, -1},
    {"3", {4}, -1},
    {"11", {10, 14, 17}, 2},
    {"add 11", {17}, 0},
    {"#11", {10, 14, 18}, -1},
    {"5", {7}, -1},
    {"b5", {6}, -1},
    {"#5", {8}, -1},
    {"6", {9}, -1},
    {"13", {10, 14, 17, 21}, 3},
}};

// An alter comes from the file; keep absurd ones from overflowing the interval arithmetic.
int AlteredIntvl(int intvl, std::int32_t alter) {
  const long long value = static_cast<long long>(intvl) + alter;
  return static_cast<int>(std::clamp(value, -1000LL, 1000LL));
}

const TDegreeRow* AddedDegreeRow(const std::string& value) {
  const auto row = std::find_if(kDegreeRows.begin(), kDegreeRows.end(),
                                [&](const TDegreeRow& r) { return r.value == value; });
  return row == kDegreeRows.end() ? nullptr : &*row;
}

void ApplyDegree(const TMusicXMLDegree& degree, CIntvlSet& intvls) {
  if (degree.Type == "add") {
    const TDegreeRow* row = AddedDegreeRow(degree.Value);
    if (row == nullptr) return;
    int index = 0;
    for (const int intvl : row->intervals) {
      intvls.insert(index++ == row->altered ? AlteredIntvl(intvl, degree.Alter) : intvl);
    }
  } else if (degree.Type == "subtract") {
    if (degree.Value == "5") intvls.erase(7);
  } else if (degree.Type == "alter") {
    if (degree.Value != "5") return;
    intvls.erase(7);
    intvls.insert(AlteredIntvl(7, degree.Alter));
  }
}

}  // namespace

bool IsReadMusicXmlDegree(const TMusicXMLDegree& degree) {
  if (degree.Type == "add") return AddedDegreeRow(degree.Value) != nullptr;
  return (degree.Type == "subtract" || degree.Type == "alter") && degree.Value == "5";
}

// --- Pitch

CKeyEnh TMusicXMLPitch::ToKeyEnh(const CChordNamePrefs& prefs) const {
  CKeyEnh key;
  key.SetFromString(Step, nullptr, prefs);
  if (key.IsUndef()) return key;
  const int alter = std::clamp(Alter, -2, 2);
  return CKeyEnh(((key.KeyNr + alter) % 12 + 12) % 12, static_cast<TEnh>(alter + 2));
}

int TMusicXMLPitch::ToKeyNr(const CChordNamePrefs& prefs) const { return ToKeyEnh(prefs).KeyNr; }

std::pair<int, TEnh> TMusicXMLPitch::ToKeyNrAndEnh(const CChordNamePrefs& prefs) const {
  const CKeyEnh key = ToKeyEnh(prefs);
  return {key.KeyNr, key.Enh};
}

// --- Harmony

bool TMusicXMLHarmony::CompareAllMembers(const TMusicXMLHarmony& other,
                                         TComparePos comparePos) const {
  if (comparePos == kComparePos && Position != other.Position) return false;
  return Kind == other.Kind && Root == other.Root && Bass == other.Bass && Length == other.Length &&
         SpareText1 == other.SpareText1;
}

void TMusicXMLHarmony::WriteTrace(std::ostream& out) const {
  out << "TMusicXMLHarmony: Position " << Position << " Length " << Length << " Root " << Root.Step
      << ' ' << Root.Alter << " Kind " << Kind << " Bass " << Bass.Step << ' ' << Bass.Alter
      << " Degrees " << Degrees.size();
}

void TMusicXMLHarmony::WriteTraceBrief(std::ostream& out) const {
  out << Root.Step << (Root.Alter != 0 ? std::to_string(Root.Alter) : "") << ' ' << Kind;
  if (Bass.IsDefined()) out << '/' << Bass.Step;
}

void TMusicXMLHarmony::WriteInitializerList(std::ostream& out) const {
  out << "TMusicXMLHarmony{" << Position << ", " << Length << ", {\"" << Root.Step << "\", "
      << Root.Alter << "}, \"" << Kind << "\", {\"" << Bass.Step << "\", " << Bass.Alter << "}}";
}

// --- Kinds

CIntvlSet XMLHarmonyKindToIntvlSetExceptRoot(std::string_view kind) {
  CIntvlSet intvls;
  for (const TKindRow& row : KindRows()) {
    if (row.kind != kind) continue;
    for (const int intvl : row.intervals) intvls.insert(intvl);
    break;
  }
  return intvls;
}

CSemitones XMLHarmonyKindToSemitones(std::string_view kind) {
  CSemitones semitones = XMLHarmonyKindToIntvlSetExceptRoot(kind).ToSemitones();
  semitones.SetSemitone(0, true);
  return semitones;
}

std::string_view SemitonesToXMLHarmonyKind(const CSemitones& semitones) {
  for (const TKindRow& row : KindRows()) {
    if (!row.searched) continue;
    CSemitonesMatch match;
    for (const int semitone : row.semitones) {
      match.SetSemitone(static_cast<unsigned long>(semitone), kSemiMatch_Required);
    }
    if (match.Matches(semitones)) return row.kind;
  }
  return "none";
}

std::string_view ChordToXMLHarmonyKind(const CHarmAnlsChord& chord) {
  return SemitonesToXMLHarmonyKind(chord.Semitones);
}

// --- The chord of a symbol

CChordHeavy CChordSetFromMusicXml(const TMusicXMLHarmony& harmony, int wrapIntvl,
                                  const CChordNamePrefs& prefs) {
  CIntvlSet intvls = XMLHarmonyKindToIntvlSetExceptRoot(harmony.Kind);
  for (const TMusicXMLDegree& degree : harmony.Degrees) ApplyDegree(degree, intvls);
  return CChordHeavy(harmony.Root.ToKeyEnh(prefs), intvls, harmony.Bass.ToKeyEnh(prefs), wrapIntvl);
}

void CChordSetFromMusicXml(const TMusicXMLHarmony& harmony, CChordHeavy& chord,
                           const CChordNamePrefs& prefs) {
  const int wrapIntvl = chord.IntvlSet().WrapIntvl();  // makes a stale interval set current
  chord = CChordSetFromMusicXml(harmony, wrapIntvl, prefs);
}

}  // namespace harmony
