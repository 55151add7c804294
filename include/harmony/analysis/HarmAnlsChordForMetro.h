#pragma once
// An analysis chord prepared for a consumer that knows only a few chord types: a fixed
// one-hot vector of 46 floats, a twelve-float chroma, a short export name, and the
// simplification into the recognized types. Besides the chords two special values exist:
// a wildcard that matches any chord, and the open strings of a guitar (EADGBE).
//
// The vector, index by index:
//   0        undefined chord (nothing else is set)
//   1        the open tuning EADGBE (nothing else is set)
//   2        the wildcard (nothing else is set)
//   3 + k    root key number k
//   15..21   the triad: major, minor, augmented, diminished, sus4, sus2, power
//   22 + k   bit k of the tones beyond the triad
//   34 + k   bass key number k, when the bass differs from the root
// The chord's flag byte chooses its JSON: false writes the keys and the mask, true the vector.

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"

namespace harmony {

class CHarmAnlsChordForMetro : public CHarmAnlsChord, public TraceFamily<CHarmAnlsChordForMetro> {
 public:
  using TraceFamily<CHarmAnlsChordForMetro>::Trace;
  using TraceFamily<CHarmAnlsChordForMetro>::TraceBrief;
  using TraceFamily<CHarmAnlsChordForMetro>::TraceStr;
  using TraceFamily<CHarmAnlsChordForMetro>::TraceString;
  using TraceFamily<CHarmAnlsChordForMetro>::TraceBriefString;
  using TraceFamily<CHarmAnlsChordForMetro>::TraceForInitializerList;
  using TraceFamily<CHarmAnlsChordForMetro>::StringForInitializerList;

  static constexpr std::size_t kVectorSize = 46;
  static constexpr std::size_t kVectorIxUndef = 0;
  static constexpr std::size_t kVectorIxEADGBE = 1;
  static constexpr std::size_t kVectorIxWildcard = 2;
  static constexpr std::size_t kVectorIxRoot = 3;
  static constexpr std::size_t kVectorIxBasicChord = 15;
  static constexpr std::size_t kVectorIxOptions = 22;
  static constexpr std::size_t kVectorIxBass = 34;
  // Every semitone: the mask of the two special values.
  static constexpr std::uint64_t kSpecialSemitones = 4095;

  using TChromaVector = std::array<float, 12>;

  constexpr CHarmAnlsChordForMetro() = default;
  constexpr explicit CHarmAnlsChordForMetro(const CChordLite& chord) : CHarmAnlsChord(chord) {}
  constexpr explicit CHarmAnlsChordForMetro(const CHarmAnlsChord& chord) : CHarmAnlsChord(chord) {}

  // The two special values, root spelled as in C major, no bass, every semitone.
  static CHarmAnlsChordForMetro Wildcard();
  static CHarmAnlsChordForMetro EADGBE();

  bool IsWildcard() const;
  bool IsEADGBE() const;
  // A defined chord, none of the special values, whose bass differs from the root in key
  // number or spelling.
  bool IsSlashChord() const;

  // Which JSON the record writes: false the keys and the mask, true the vector.
  bool WritesVectorRep() const { return Flag != 0; }
  void SetWritesVectorRep(bool vector) { Flag = vector ? 1 : 0; }

  // --- The one-hot vector
  std::vector<float> GetChordVectorRepresentation() const;
  // Reads a vector back; one that has not 46 elements or holds anything but 0.0 and 1.0
  // leaves the record as it is. Root, triad and bass that the vector does not set stay as
  // they were; see the .cpp for the order of decisions.
  void SetFromChordVectorRepresentation(const std::vector<float>& vector);

  // Twelve pitch classes from C: the root and every chord tone (and the bass when asked
  // for); all zero for a chord without root.
  void GetChromaVector(TChromaVector& out, bool withBass) const;

  // "*", "EADGBE", the three no-chord texts, or the name: with `simple` the root and bass
  // as fixed sharp names ("C#m7 / G#"), otherwise the name of the analysis traces.
  std::string NameForMetroExport(bool simple) const;

  // Whether the mask is one of the recognized types; with `noBass` a chord with a bass is
  // none of them.
  bool IsMajorOrMinor(bool noBass) const;
  bool IsRecognizedMetroChord(bool noBass) const;
  bool IsCommonChord(bool noBass) const;

  // The nearest major or minor triad on the same root (see the .cpp for the rules). The
  // bass stays unless `dropBass`; distances become -1.
  CHarmAnlsChordForMetro SimplifiedToMajorOrMinor(bool dropBass) const;
  // The nearest recognized type: triads with their sevenths, add9, diminished seventh,
  // augmented (seventh), sus, power (seventh) and the root alone.
  CHarmAnlsChordForMetro SimplifiedToRecognizedMetroChord(bool dropBass) const;
  void SimplifyToMajorOrMinor(bool dropBass) { *this = SimplifiedToMajorOrMinor(dropBass); }
  void SimplifyToRecognizedMetroChord(bool dropBass) {
    *this = SimplifiedToRecognizedMetroChord(dropBass);
  }

  // --- Wire forms
  // "{", the class substring, "}".
  void AppendJSONString(std::ostream& out) const;
  // Flag false: "RootKeyEnh", "BassKeyEnh" and "Semitones" as a chord writes them. Flag
  // true: "VectorRep":[0, 1, ...] with the 46 floats. The distances are not written.
  void AppendJSONClassSubstring(std::ostream& out) const;
  // Either form. With "VectorRep" the vector is read onto the undefined chord; without it
  // the chord's keys and mask. Distances are -1 and the flag false in both cases.
  static CHarmAnlsChordForMetro FromDictionary(const JsonDict& dict);

  // "CHarmAnlsChordForMetro:" and the chord part of the analysis traces.
  void WriteTrace(std::ostream& out) const;
  // The simple export name.
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

static_assert(std::is_trivially_copyable_v<CHarmAnlsChordForMetro>,
              "CHarmAnlsChordForMetro is a plain value");

}  // namespace harmony
