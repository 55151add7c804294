#pragma once
// The symbols of the Markov chord model. A chord enters the model relative to its harmonic
// center and with its length, so the same progression in another key is the same symbol
// sequence. Besides chords there are the start and end of a sequence, a gap (a stretch
// without a chord) and indexed objects.

#include <cstdint>
#include <limits>
#include <list>
#include <ostream>
#include <string>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"

namespace harmony {

enum TMarkovObjectType : std::int32_t {
  kMarkovObjectChord = 1,
  // Two kinds no caller makes; they keep their place in the record and its order.
  kMarkovObjectReservedCount = 2,
  kMarkovObjectReservedValue = 3,
  kMarkovObjectStart = 4,
  kMarkovObjectEnd = 5,
  kMarkovObjectGap = 6,
  kMarkovObjectIndexed = 7,
};

class CMarkovObject : public TraceFamily<CMarkovObject> {
 public:
  std::int32_t Type = kMarkovObjectChord;
  // The number of an indexed object, -1 for all others.
  std::int32_t Index = -1;
  // The chord of a chord object. Other objects carry the undefined chord with distances -1;
  // their Length is 1.0 unless given.
  CHarmAnlsChordWithLength Chord{CHarmAnlsChord_Undef, 1.0};
  // The reserved fields: fixed in every object the system makes. The double is what the
  // reserved value kind compares, the last count what the reserved count kind compares.
  double ReservedValue = std::numeric_limits<double>::lowest();
  std::int32_t Reserved32First = 0;
  std::int32_t Reserved32Second = 0;
  std::int64_t Reserved64First = 0;
  std::int64_t Reserved64Second = 0;
  std::int32_t ReservedCount = 1;

  CMarkovObject() = default;

  static CMarkovObject Start();
  static CMarkovObject End();
  // A stretch without a chord; the default gap lasts one beat.
  static CMarkovObject Gap(double length = 1.0);
  static CMarkovObject Indexed(std::int32_t index);
  // A chord object: the record with its distances and length.
  static CMarkovObject FromChord(const CHarmAnlsChordWithLength& chord);

  bool IsChord() const { return Type == kMarkovObjectChord; }
  bool IsStart() const { return Type == kMarkovObjectStart; }
  bool IsEnd() const { return Type == kMarkovObjectEnd; }
  bool IsGap() const { return Type == kMarkovObjectGap; }
  // Chords and gaps take time; the other objects only mark places.
  bool CountsForLength() const { return IsChord() || IsGap(); }
  double Length() const { return Chord.Length; }

  // Two objects are the same symbol when they agree in everything but the chord's root and
  // bass keys and their directions: equal chord types at equal distances to their centers
  // and of equal length are one symbol, whatever their keys.
  bool operator==(const CMarkovObject& other) const;
  // By type; chords by root distance, length, bass distance and tones; the reserved kinds by
  // their fields, indexed objects by index; all other objects of one type are equivalent.
  bool operator<(const CMarkovObject& other) const;

  // {"Type":1,
  // "CHarmAnlsChordWithLength":
  // {"Length":  4.00, ...}}
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  struct JSONDeserialization_Helper {
    // Chords come back with their record; start and end as themselves, indexed objects with
    // their index; every other type reads as the default object (a chord object without
    // chord, one beat long), which is how the reserved kinds and gaps come back.
    static CMarkovObject CMarkovObjectFromJSONDictionary(const JsonDict& dict);
    // The same from the text of one object; the default object when it is no JSON.
    static CMarkovObject CMarkovObjectFromJSONString(const std::string& text);
  };
};

// The alphabet of a model: its objects in the order they were first met. A list, so that
// the iterators the model uses as symbols stay valid while it grows.
class CMarkovObjects : public std::list<CMarkovObject>, public TraceFamily<CMarkovObjects> {
 public:
  using std::list<CMarkovObject>::list;

  // The object equal to `object` (a linear search), appended when there is none.
  iterator insertObjectIfUnique(const CMarkovObject& object);
  // The object equal to `object`, or end().
  iterator getIteratorToObject(const CMarkovObject& object);
  const_iterator getIteratorToObject(const CMarkovObject& object) const;

  // The order of symbols by the objects they point to. end() stands for "no object": it
  // follows every object and equals itself, so that a history holding it stays comparable.
  bool Compare(const_iterator a, const_iterator b) const;

  // "[", the objects separated by "," and a line break, "]".
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  struct JSONDeserialization_Helper {
    // Each element of the array as one object, in order; anything but an array gives none.
    static CMarkovObjects CMarkovObjectsFromJSONDictionary(const JsonDict& array);
  };
};

using TMarkovSymbol = CMarkovObjects::iterator;

// Compares symbols by their objects through the alphabet they belong to (see Compare). A
// comparator without alphabet compares the objects directly and must not meet end().
struct CMarkovSymbolLess {
  const CMarkovObjects* Objects = nullptr;
  bool operator()(CMarkovObjects::const_iterator a, CMarkovObjects::const_iterator b) const {
    return Objects != nullptr ? Objects->Compare(a, b) : *a < *b;
  }
};

}  // namespace harmony
