#pragma once
// What the choice of a scale over a chord depends on: the chord, its neighbours, the scale the
// harmonic analysis found for each of them, and what kind of guest the chord is in that scale
// (a borrowed chord, a Neapolitan, a passing diminished chord). Nothing here computes scales.

#include <cstddef>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/BasicChord.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/ScaleLite.h"

namespace harmony {

// One chord in the scale it sounds in.
class CScaleAlternativesChordContext : public TraceFamily<CScaleAlternativesChordContext> {
 public:
  CChordLite Chord;
  TBasicChord BasicChord = kBasicChordNone;
  // Every key of the chord, tensions and bass included, is a scale key.
  bool ChordIncludingOptionsIsDiatonic = false;
  // The triad and the bass are scale keys.
  bool ChordExcludingOptionsIsDiatonic = false;
  // Diatonic, a usual guest of a major key, or a dominant on the fifth degree.
  bool ChordIsCompatible = false;
  CHarmCenterLite HarmCenter;
  // Semitones from the scale's root up to the chord's root, 0..11; -1 when either is undefined.
  int Degree = -1;
  CScaleLite Scale;

  // Everything from the chord and the scale; the scale also becomes the harmonic center.
  void FillFrom(const CChordLite& chord, const CScaleLite& scale);
  // The chord has a root: a neighbour beyond the end of the piece does not.
  bool Exists() const { return Chord.RootKeyEnh.KeyNr != kKeyNrUndef; }

  // "CScaleAlternativesChordContext: Dm7 in C Major, Degree 2, diatonic with options, ..."
  void WriteTrace(std::ostream& out) const;
  // "Dm7 in C Major"
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// A chord with the two chords after it and the one before it, and its special case.
class CScaleAlternativesContext : public TraceFamily<CScaleAlternativesContext> {
 public:
  // The kinds of guest a chord can be. The numbers are those hosts store; 1 and 2 are unused.
  enum TSpecialCase : int {
    kSpecialCaseNone = -1,  // none found (the value before any detection)
    kSpecialCaseDiatonic = 0,
    kSpecialCaseFlat6ToFlat7 = 3,
    kSpecialCaseFlat7AfterFlat6 = 4,
    kSpecialCaseNeapolitan = 5,
    kSpecialCaseFlat3 = 6,
    kSpecialCaseMinorIV = 7,
    kSpecialCaseMinorV = 8,
    kSpecialCaseFlat6 = 9,
    kSpecialCaseFlat7 = 10,
    kSpecialCasePassingDim = 11,
    kSpecialCaseChromaticMediant = 12,
    kSpecialCaseSusToSameRoot = 13,
  };

  CScaleAlternativesChordContext CurrentChord;
  CScaleAlternativesChordContext NextChord;
  CScaleAlternativesChordContext NextNextChord;
  CScaleAlternativesChordContext PreviousChord;
  int SpecialCase = kSpecialCaseNone;

  // The context of chord `index` among the chords of a piece, each already filled with its
  // own scale. A neighbour beyond either end stays empty; the special case is found anew.
  void FillFrom(const std::vector<CScaleAlternativesChordContext>& chords, std::size_t index);

  // Classifies the current chord; when no rule applies, SpecialCase keeps its value.
  void _DetectSpecialCases();

  // A diminished triad or seventh a semitone below a tone of `b`, which is diatonic.
  static bool _IsPassingDimChordToOtherChord(const CScaleAlternativesChordContext& a,
                                             const CScaleAlternativesChordContext& b);
  // A minor chord on the flat third or flat sixth degree.
  static bool _IsChromaticMediant(const CScaleAlternativesChordContext& a);
  // A major chord a fifth above `b`, with a minor seventh or foreign to its scale, resolving
  // to a chord whose triad is diatonic.
  static bool _IsSecondaryVToOtherChord(const CScaleAlternativesChordContext& a,
                                        const CScaleAlternativesChordContext& b);
  // A minor (or half-diminished) chord a whole step above `b`, whose triad is diatonic.
  static bool _IsIImToOtherChord(const CScaleAlternativesChordContext& a,
                                 const CScaleAlternativesChordContext& b);
  // `a` and `b` are the II and V leading to `c`.
  static bool _AreSecondaryIImAndSecondaryVToOtherChord(const CScaleAlternativesChordContext& a,
                                                        const CScaleAlternativesChordContext& b,
                                                        const CScaleAlternativesChordContext& c);

  // The current and the next chord exist and share root, spelling and mask of their center.
  bool NextChordHasSameHarmonicCenter() const;
  // The same over the current chord and the two after it.
  bool NextTwoChordsHaveSameHarmonicCenter() const;

  void WriteTrace(std::ostream& out) const;
  // "Dm7 in C Major: diatonic"
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// The special case in words: "diatonic", "flat 6 to flat 7", "Neapolitan", ...; "none" for
// kSpecialCaseNone and "unknown" for a number without a case.
const char* ScaleAlternativesSpecialCaseName(int specialCase);

}  // namespace harmony
