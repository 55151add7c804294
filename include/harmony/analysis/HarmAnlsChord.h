#pragma once
// The chords of the analysis tree: a chord with its distances to the harmonic center, the
// same placed at a position or given a length, and the lists of them. Positions and lengths
// are quarter notes from the start of the piece; the most negative finite double stands for
// "not known".

#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/chords/ChordLite.h"

namespace harmony {

struct TChordStringParse;

// The undefined position, length or probability of every analysis record.
inline constexpr double kHarmAnlsUndefDouble = std::numeric_limits<double>::lowest();
inline constexpr double kHarmAnlsMaxDouble = std::numeric_limits<double>::max();
inline constexpr bool IsHarmAnlsUndef(double value) { return value <= kHarmAnlsUndefDouble; }

// The position, length and probability form of the analysis JSON and traces: fixed, two
// decimals, right-aligned in six columns. The stream's own format is left as it was.
void AppendHarmAnlsFixedDouble(std::ostream& out, double value);

class CHarmAnlsChord : public CChordLite, public TraceFamily<CHarmAnlsChord> {
 public:
  using TraceFamily<CHarmAnlsChord>::Trace;
  using TraceFamily<CHarmAnlsChord>::TraceBrief;
  using TraceFamily<CHarmAnlsChord>::TraceStr;
  using TraceFamily<CHarmAnlsChord>::TraceString;
  using TraceFamily<CHarmAnlsChord>::TraceBriefString;
  using TraceFamily<CHarmAnlsChord>::TraceForInitializerList;
  using TraceFamily<CHarmAnlsChord>::StringForInitializerList;

  // Semitones from the center up to the root or bass, 0..11; -1 while not known, or when
  // the chord has no root or no separate bass.
  std::int32_t RootDistToHarmCenter = -1;
  std::int32_t BassDistToHarmCenter = -1;

  constexpr CHarmAnlsChord() = default;
  constexpr explicit CHarmAnlsChord(const CChordLite& chord, std::int32_t rootDist = -1,
                                    std::int32_t bassDist = -1)
      : CChordLite(chord), RootDistToHarmCenter(rootDist), BassDistToHarmCenter(bassDist) {}

  const CChordLite& ChordLite() const { return *this; }

  bool operator==(const CHarmAnlsChord& other) const {
    return RootKeyEnh == other.RootKeyEnh && BassKeyEnh == other.BassKeyEnh &&
           _EqualDistsAndSemitones(other);
  }
  bool EqualWithoutEnh(const CHarmAnlsChord& other) const {
    return RootKeyEnh.KeyNr == other.RootKeyEnh.KeyNr &&
           BassKeyEnh.KeyNr == other.BassKeyEnh.KeyNr && _EqualDistsAndSemitones(other);
  }
  bool EqualExceptRootAndBass(const CHarmAnlsChord& other) const {
    return _EqualDistsAndSemitones(other);
  }
  // The order of the plain chords; the distances take no part.
  bool operator<(const CHarmAnlsChord& other) const {
    return (ChordLite() <=> other.ChordLite()) < 0;
  }

  // {"RootKeyEnh":{...}, "BassKeyEnh":{...}, "Semitones":145, "RootDistToHarmCenter": 7, ...}
  void AppendJSONString(std::ostream& out) const;
  void AppendJSONClassSubstring(std::ostream& out) const;
  // "CHarmAnlsChord:" followed by the chord part.
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
  // The name under the current preferences, then keys, mask and distances; what the traces
  // of the positioned records write behind their own fields.
  void WriteTraceChordPart(std::ostream& out) const;
  // The name in the form of the traces: wrap interval 24, the bass left out of a narrow
  // chord when the preferences say so.
  std::string TraceName(const CChordNamePrefs& prefs) const;

 private:
  bool _EqualDistsAndSemitones(const CHarmAnlsChord& other) const {
    return RootDistToHarmCenter == other.RootDistToHarmCenter &&
           BassDistToHarmCenter == other.BassDistToHarmCenter && Semitones == other.Semitones;
  }
};

static_assert(std::is_trivially_copyable_v<CHarmAnlsChord>, "CHarmAnlsChord is a plain value");

inline constexpr CHarmAnlsChord CHarmAnlsChord_Undef{};

class CHarmAnlsChordWithPos : public CHarmAnlsChord, public TraceFamily<CHarmAnlsChordWithPos> {
 public:
  using TraceFamily<CHarmAnlsChordWithPos>::Trace;
  using TraceFamily<CHarmAnlsChordWithPos>::TraceBrief;
  using TraceFamily<CHarmAnlsChordWithPos>::TraceStr;
  using TraceFamily<CHarmAnlsChordWithPos>::TraceString;
  using TraceFamily<CHarmAnlsChordWithPos>::TraceBriefString;
  using TraceFamily<CHarmAnlsChordWithPos>::TraceForInitializerList;
  using TraceFamily<CHarmAnlsChordWithPos>::StringForInitializerList;

  double Position = kHarmAnlsUndefDouble;

  constexpr CHarmAnlsChordWithPos() = default;
  constexpr CHarmAnlsChordWithPos(const CHarmAnlsChord& chord, double position)
      : CHarmAnlsChord(chord), Position(position) {}
  constexpr CHarmAnlsChordWithPos(const CChordLite& chord, double position)
      : CHarmAnlsChord(chord), Position(position) {}

  // {"Position":  4.00, <the chord's members>}
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  // The chord's name in ASCII accidentals, "-" for an undefined chord.
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

static_assert(std::is_trivially_copyable_v<CHarmAnlsChordWithPos>,
              "CHarmAnlsChordWithPos is a plain value");

class CHarmAnlsChordWithLength : public CHarmAnlsChord,
                                 public TraceFamily<CHarmAnlsChordWithLength> {
 public:
  using TraceFamily<CHarmAnlsChordWithLength>::Trace;
  using TraceFamily<CHarmAnlsChordWithLength>::TraceBrief;
  using TraceFamily<CHarmAnlsChordWithLength>::TraceStr;
  using TraceFamily<CHarmAnlsChordWithLength>::TraceString;
  using TraceFamily<CHarmAnlsChordWithLength>::TraceBriefString;
  using TraceFamily<CHarmAnlsChordWithLength>::TraceForInitializerList;
  using TraceFamily<CHarmAnlsChordWithLength>::StringForInitializerList;

  double Length = kHarmAnlsUndefDouble;

  constexpr CHarmAnlsChordWithLength() = default;
  constexpr CHarmAnlsChordWithLength(const CHarmAnlsChord& chord, double length)
      : CHarmAnlsChord(chord), Length(length) {}
  constexpr CHarmAnlsChordWithLength(const CChordLite& chord, double length)
      : CHarmAnlsChord(chord), Length(length) {}

  // Equal as chords and of exactly the same length: the test that finds repeated passages.
  bool operator==(const CHarmAnlsChordWithLength& other) const {
    return CHarmAnlsChord::operator==(other) && Length == other.Length;
  }

  // A plain major or minor triad of one bar on the same root, without bass.
  void SimplifyChord();

  // {"Length":  4.00, <the chord's members>}
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  // The reader of the chord objects of a Markov model file.
  struct JSONDeserializer_Helper {
    static constexpr const char* HarmChordJSONKey_CHarmAnlsChordWithLength =
        "CHarmAnlsChordWithLength";
    static constexpr const char* HarmChordJSONKey_Length = "Length";
    static constexpr const char* HarmChordJSONKey_RootKeyEnh = "RootKeyEnh";
    static constexpr const char* HarmChordJSONKey_BassKeyEnh = "BassKeyEnh";
    static constexpr const char* HarmChordJSONKey_RootKeyNr = "RootKeyNr";
    static constexpr const char* HarmChordJSONKey_BassKeyNr = "BassKeyNr";
    static constexpr const char* HarmChordJSONKey_RootDistToHarmCenter = "RootDistToHarmCenter";
    static constexpr const char* HarmChordJSONKey_BassDistToHarmCenter = "BassDistToHarmCenter";
    static constexpr const char* HarmChordJSONKey_Semitones = "Semitones";

    // Keys by spelled key or by key number; distances, mask and length read as 0 when they
    // are missing (the model file always writes them).
    static CHarmAnlsChordWithLength CHarmAnlsChordWithLengthFromJSONDictionary(
        const JsonDict& dict);
  };
};

static_assert(std::is_trivially_copyable_v<CHarmAnlsChordWithLength>,
              "CHarmAnlsChordWithLength is a plain value");

class CHarmAnlsChordsSet : public std::set<CHarmAnlsChord>, public TraceFamily<CHarmAnlsChordsSet> {
 public:
  using std::set<CHarmAnlsChord>::set;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// A piece as chords in ascending position. A list that tells a whole piece ends in an
// undefined chord at the end position; each chord lasts until the next one.
class CHarmAnlsChords : public std::vector<CHarmAnlsChordWithPos>,
                        public TraceFamily<CHarmAnlsChords> {
 public:
  using std::vector<CHarmAnlsChordWithPos>::vector;

  CHarmAnlsChords() = default;
  // The chords of a chord list in text (see harmony/analysis/ChordStringParser.h).
  CHarmAnlsChords(const std::string& text, const TChordStringParse& parse);
  void ParseStringIntoChords(const std::string& text, const TChordStringParse& parse);

  // Puts the chords in at the first one's place and sorts the whole list by position.
  void InsertAtCorrectPosition(const_iterator first, const_iterator last);
  void InsertAtCorrectPosition(const_iterator where, const_iterator first, const_iterator last);
  // Ascending positions; chords at equal positions keep their order.
  void SortByPosition();

  // The last position plus one quarter note, whatever the chord; undefined when empty.
  double LastChordEndPos() const;
  // The last chord with a root, or end().
  iterator LastNonUndefChord();
  const_iterator LastNonUndefChord() const;
  // An element equal as a chord; positions are not compared.
  bool Contain(const CHarmAnlsChord& chord) const;
  CHarmAnlsChordsSet CreateSetOfNonUndefChords() const;
  std::size_t CountDifferentNonUndefChords() const;

  // "[", a line per chord followed by ",", "]" and a line end.
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// The same music told by lengths.
class CHarmAnlsChordsWithLength : public std::vector<CHarmAnlsChordWithLength>,
                                  public TraceFamily<CHarmAnlsChordsWithLength> {
 public:
  using std::vector<CHarmAnlsChordWithLength>::vector;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// Chords read back from the dictionaries of the analysis JSON.
namespace CHarmAnls {
namespace Chord {
// The plain chord; the distances only when both are present, else -1.
CHarmAnlsChord FromDictionary(const JsonDict& dict);
}  // namespace Chord
namespace ChordWithPos {
// As above, with "Position" when present.
CHarmAnlsChordWithPos FromDictionary(const JsonDict& dict);
}  // namespace ChordWithPos
namespace ChordWithLength {
// The plain chord with distances -1 and "Length" when present.
CHarmAnlsChordWithLength FromDictionary(const JsonDict& dict);
}  // namespace ChordWithLength
}  // namespace CHarmAnls

}  // namespace harmony
