#include "harmony/markov/MarkovObject.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "harmony/chords/HarmCenter.h"
#include "harmony/markov/MarkovHarmChords.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "platform/JsonReader.h"
#include "platform/TraceOut.h"

namespace harmony {

// --- CMarkovObject

CMarkovObject CMarkovObject::Start() {
  CMarkovObject object;
  object.Type = kMarkovObjectStart;
  return object;
}

CMarkovObject CMarkovObject::End() {
  CMarkovObject object;
  object.Type = kMarkovObjectEnd;
  return object;
}

CMarkovObject CMarkovObject::Gap(double length) {
  CMarkovObject object;
  object.Type = kMarkovObjectGap;
  object.Chord.Length = length;
  return object;
}

CMarkovObject CMarkovObject::Indexed(std::int32_t index) {
  CMarkovObject object;
  object.Type = kMarkovObjectIndexed;
  object.Index = index;
  return object;
}

CMarkovObject CMarkovObject::FromChord(const CHarmAnlsChordWithLength& chord) {
  CMarkovObject object;
  object.Chord = chord;
  return object;
}

bool CMarkovObject::operator==(const CMarkovObject& other) const {
  return Type == other.Type && Index == other.Index && Chord.Semitones == other.Chord.Semitones &&
         Chord.RootDistToHarmCenter == other.Chord.RootDistToHarmCenter &&
         Chord.BassDistToHarmCenter == other.Chord.BassDistToHarmCenter &&
         Chord.Length == other.Chord.Length && ReservedValue == other.ReservedValue &&
         Reserved32First == other.Reserved32First && Reserved32Second == other.Reserved32Second &&
         Reserved64First == other.Reserved64First && Reserved64Second == other.Reserved64Second &&
         ReservedCount == other.ReservedCount;
}

bool CMarkovObject::operator<(const CMarkovObject& other) const {
  if (Type != other.Type) return Type < other.Type;
  switch (Type) {
    case kMarkovObjectChord:
      if (Chord.RootDistToHarmCenter != other.Chord.RootDistToHarmCenter) {
        return Chord.RootDistToHarmCenter < other.Chord.RootDistToHarmCenter;
      }
      if (Chord.Length != other.Chord.Length) return Chord.Length < other.Chord.Length;
      if (Chord.BassDistToHarmCenter != other.Chord.BassDistToHarmCenter) {
        return Chord.BassDistToHarmCenter < other.Chord.BassDistToHarmCenter;
      }
      return Chord.Semitones < other.Chord.Semitones;
    case kMarkovObjectReservedCount:
      return ReservedCount < other.ReservedCount;
    case kMarkovObjectReservedValue:
      return ReservedValue < other.ReservedValue;
    case kMarkovObjectIndexed:
      return Index < other.Index;
    default:
      return false;
  }
}

void CMarkovObject::AppendJSONString(std::ostream& out) const {
  out << "{\"Type\":" << Type;
  switch (Type) {
    case kMarkovObjectChord:
      out << ",\n\"CHarmAnlsChordWithLength\":\n";
      Chord.AppendJSONString(out);
      out << '}';
      return;
    case kMarkovObjectReservedCount:
    case kMarkovObjectReservedValue:
      // Nothing follows the comma: the reserved kinds never leave this system.
      out << ",\n}";
      return;
    case kMarkovObjectIndexed:
      out << ",\n\"Index\":" << Index << ",\n}";
      return;
    default:
      out << '}';
  }
}

void CMarkovObject::WriteTrace(std::ostream& out) const {
  out << "CMarkovObject: Type " << Type << ", Index " << Index << ", ";
  Chord.WriteTrace(out);
}

void CMarkovObject::WriteTraceBrief(std::ostream& out) const {
  // Chords by their name on C, so that the distances read as chords.
  switch (Type) {
    case kMarkovObjectStart:
      out << '^';
      return;
    case kMarkovObjectEnd:
      out << '$';
      return;
    case kMarkovObjectIndexed:
      out << '#' << Index;
      return;
    case kMarkovObjectGap:
      out << '_';
      break;
    case kMarkovObjectChord: {
      const CHarmCenterLite cMajor(CKeyEnh(0, TEnh_n), CSemitones(2741));
      const CHarmAnlsChordWithPos chord = HarmChordForMarkovObject(*this, cMajor, 0.0);
      chord.WriteTraceBrief(out);
      break;
    }
    default:
      out << "T" << Type;
  }
  out << ':' << Chord.Length;
}

void CMarkovObject::WriteInitializerList(std::ostream& out) const {
  out << "CMarkovObject(" << Type << ", " << Index << ", ";
  Chord.WriteInitializerList(out);
  out << ')';
}

CMarkovObject CMarkovObject::JSONDeserialization_Helper::CMarkovObjectFromJSONDictionary(
    const JsonDict& dict) {
  using Reader = CHarmAnlsChordWithLength::JSONDeserializer_Helper;
  switch (platform::JsonInteger(dict, "Type", 0)) {
    case kMarkovObjectChord: {
      const JsonDict* chord =
          platform::JsonMember(dict, Reader::HarmChordJSONKey_CHarmAnlsChordWithLength);
      return FromChord(Reader::CHarmAnlsChordWithLengthFromJSONDictionary(
          chord != nullptr ? *chord : JsonDict::object()));
    }
    case kMarkovObjectStart:
      return Start();
    case kMarkovObjectEnd:
      return End();
    case kMarkovObjectIndexed:
      return Indexed(static_cast<std::int32_t>(platform::JsonInteger(dict, "Index", 0)));
    default:
      return CMarkovObject();
  }
}

CMarkovObject CMarkovObject::JSONDeserialization_Helper::CMarkovObjectFromJSONString(
    const std::string& text) {
  const std::optional<JsonDict> dict = platform::ParseRelaxedJson(text);
  return dict ? CMarkovObjectFromJSONDictionary(*dict) : CMarkovObject();
}

// --- CMarkovObjects

CMarkovObjects::iterator CMarkovObjects::insertObjectIfUnique(const CMarkovObject& object) {
  const iterator found = getIteratorToObject(object);
  if (found != end()) return found;
  push_back(object);
  return std::prev(end());
}

CMarkovObjects::iterator CMarkovObjects::getIteratorToObject(const CMarkovObject& object) {
  return std::find(begin(), end(), object);
}

CMarkovObjects::const_iterator CMarkovObjects::getIteratorToObject(
    const CMarkovObject& object) const {
  return std::find(begin(), end(), object);
}

bool CMarkovObjects::Compare(const_iterator a, const_iterator b) const {
  const bool aIsEnd = a == end();
  const bool bIsEnd = b == end();
  if (aIsEnd || bIsEnd) return !aIsEnd && bIsEnd;
  return *a < *b;
}

void CMarkovObjects::AppendJSONString(std::ostream& out) const {
  out << '[';
  for (auto it = begin(); it != end(); ++it) {
    if (it != begin()) out << ",\n";
    it->AppendJSONString(out);
  }
  out << ']';
}

void CMarkovObjects::WriteTrace(std::ostream& out) const {
  out << "CMarkovObjects: ";
  platform::TraceOutContainerBeginEndl(out);
  for (const CMarkovObject& object : *this) {
    object.WriteTrace(out);
    platform::TraceOutContainerEndl(out);
  }
  platform::TraceOutContainerEndEndl(out);
}

void CMarkovObjects::WriteTraceBrief(std::ostream& out) const {
  out << '{';
  for (const CMarkovObject& object : *this) {
    object.WriteTraceBrief(out);
    out << ' ';
  }
  out << '}';
}

void CMarkovObjects::WriteInitializerList(std::ostream& out) const {
  out << "CMarkovObjects{";
  for (auto it = begin(); it != end(); ++it) {
    if (it != begin()) out << ", ";
    it->WriteInitializerList(out);
  }
  out << '}';
}

CMarkovObjects CMarkovObjects::JSONDeserialization_Helper::CMarkovObjectsFromJSONDictionary(
    const JsonDict& array) {
  CMarkovObjects objects;
  if (!array.is_array()) return objects;
  for (const JsonDict& element : array) {
    objects.push_back(
        CMarkovObject::JSONDeserialization_Helper::CMarkovObjectFromJSONDictionary(element));
  }
  return objects;
}

}  // namespace harmony
