#pragma once
// Chord symbols as MusicXML writes them (a `harmony` element: root, kind, bass and degrees),
// the table of MusicXML's chord kinds both ways, and the chord a symbol stands for.

#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

// A note name as MusicXML splits it: the letter and the semitones it is raised by.
struct TMusicXMLPitch {
  std::string Step;
  std::int32_t Alter = 0;

  bool IsDefined() const { return !Step.empty(); }
  // The letter read as a key, raised by the alter (limited to two semitones either way) and
  // spelled with that many accidentals; undefined when the letter is no key.
  CKeyEnh ToKeyEnh(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  int ToKeyNr(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  std::pair<int, TEnh> ToKeyNrAndEnh(
      const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  bool operator==(const TMusicXMLPitch& other) const = default;
};

// One `degree` of a chord symbol: a tone added to, altered in or taken from the kind.
struct TMusicXMLDegree {
  std::string Value;  // the text of degree-value ("9", "5")
  std::int32_t Alter = 0;
  std::string Type;  // "add", "alter" or "subtract"
};

class TMusicXMLHarmony : public TraceFamily<TMusicXMLHarmony> {
 public:
  enum TComparePos : std::int32_t { kComparePos = 0, kDontComparePos = 1 };

  double Position = std::numeric_limits<double>::lowest();  // quarter notes in song time
  double Length = std::numeric_limits<double>::lowest();    // quarter notes
  TMusicXMLPitch Root;
  std::string SpareText1;  // carried and compared; the import never fills it
  std::string Kind;
  TMusicXMLPitch Bass;
  std::vector<TMusicXMLDegree> Degrees;
  std::string SpareText2;  // carried; the import never fills it

  // Kind, root, bass, length and the first spare text, with the position unless told not
  // to; the degrees take no part.
  bool CompareAllMembers(const TMusicXMLHarmony& other, TComparePos comparePos) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// Whether the chord a symbol stands for takes this degree into account: an added degree of
// the degree table, or the fifth subtracted or altered. Other degrees are stepped over.
bool IsReadMusicXmlDegree(const TMusicXMLDegree& degree);

// --- MusicXML's chord kinds ("major", "dominant-ninth", ...)

// The intervals above the root that the kind stands for, in register (a ninth is 14); empty
// for "none", "pedal", "" and every kind MusicXML does not define.
CIntvlSet XMLHarmonyKindToIntvlSetExceptRoot(std::string_view kind);
// The same folded into an octave, with the root.
CSemitones XMLHarmonyKindToSemitones(std::string_view kind);
// The first kind whose tones are exactly these; "none" when no kind has them.
std::string_view SemitonesToXMLHarmonyKind(const CSemitones& semitones);
std::string_view ChordToXMLHarmonyKind(const CHarmAnlsChord& chord);

// The chord a MusicXML chord symbol names: its kind's intervals on the root, changed by the
// degrees in order, over the bass.
CChordHeavy CChordSetFromMusicXml(const TMusicXMLHarmony& harmony, int wrapIntvl,
                                  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
// The same into `chord`, which keeps its wrap interval.
void CChordSetFromMusicXml(const TMusicXMLHarmony& harmony, CChordHeavy& chord,
                           const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

}  // namespace harmony
