#pragma once
// The harmonic analysis of a piece: from a list of positioned chords to the tree of sign
// keys, harmonic centers and chords, with each chord's distance to its center. The object
// keeps input and result until the next analysis; a caller may also build a tree by hand.

#include <cstdint>
#include <ios>
#include <ostream>
#include <string>

#include "harmony/Trace.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/analysis/HarmCenterWeightAnalysis.h"

namespace harmony {

class CHarmonicAnalyse : public TraceFamily<CHarmonicAnalyse> {
 public:
  // How centers are found. Any other value acts as kAnalyseNone.
  enum TAnalyse : std::int32_t {
    kAnalyseNone = 0,                 // only the merges and the distances
    kAnalyseTonicProgressions = 1,    // tonic progressions, then weights on what stays undefined
    kAnalyseCadenceProgressions = 2,  // cadence progressions, then weights likewise
    kAnalyseCenterWeights = 3,        // center weights on all centers
  };
  // Whether a center finder may overwrite a center whose key is known.
  enum TOnlyUndefCenters : std::int32_t { kOnlyUndefCenters = 0, kAllCenters = 1 };

  // --- Ways in. Each replaces the input chords and the sign keys.
  // The chords go into the last center of the last sign key (made when missing); undefined
  // chords amid them are dropped, the last element stays.
  void AnalyseFromChords(const CHarmAnlsChords& chords, const CHarmAnlsSignKeys& signKeys,
                         TAnalyse analyse);
  // The chord list in text; undefined chords of the parse stay.
  void AnalyseFromChordString(const std::string& text, const CHarmAnlsSignKeys& signKeys,
                              TAnalyse analyse, const TChordStringParse& parse);
  // The whole file as a chord list (an unreadable file reads as empty), always without sign
  // keys, with the default parse and by tonic progressions: the last three arguments are
  // not read.
  void AnalyseFromChordStringFile(const std::string& path, const CHarmAnlsSignKeys& signKeys,
                                  TAnalyse analyse, const TChordStringParse& parse);
  // The analysis on what the object holds.
  void Analyse(TAnalyse analyse);

  // --- The result
  const CHarmAnlsChords& InputChords() const { return _InputChords; }
  const CHarmAnlsSignKeys& HarmSignKeys() const { return _HarmSignKeys; }
  // All chords of the tree in sign-key, center, chord order.
  void ListAllHarmChords(CHarmAnlsChords& chords) const;
  // The input chords told by lengths up to the next chord; the last has no length.
  void ListAllHarmChordsWithLength(CHarmAnlsChordsWithLength& chords) const;

  // --- Building a tree by hand; the input chords stay as they are.
  CHarmAnlsSignKeys::iterator FillManually_AppendSignKey(const CHarmAnlsSignKey& signKey);
  CHarmAnlsCenters::iterator FillManually_AppendHarmCenterInSignKey(
      CHarmAnlsSignKeys::iterator signKey, const CHarmAnlsCenter& center);
  CHarmAnlsChords::iterator FillManually_AppendChordInHarmCenter(
      CHarmAnlsCenters::iterator center, const CHarmAnlsChordWithPos& chord);

  // {"HarmSignKeys": and the sign keys }
  void AppendJSONString(std::ostream& out) const;
  // Writes the JSON to a file opened with `openMode` (output added); failures pass silently.
  void WriteAnalysisResultToFile(const std::string& path,
                                 std::ios_base::openmode openMode = std::ios_base::trunc) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  // --- Steps, reachable for tests
  void _FillAnalyserWithSignKeysAndChords(const CHarmAnlsSignKeys& signKeys,
                                          const CHarmAnlsChords& chords);
  void _FillAnalyserWithSignKeysAndChordString(const CHarmAnlsSignKeys& signKeys,
                                               const std::string& text,
                                               const TChordStringParse& parse);
  // Drops every undefined input chord but the very last element.
  void _EraseIntermediateUndefInputChords();
  // The given sign keys, or one undefined sign key without centers when none is given.
  void _FillAnalyserWithSignKeysOrCreateDefault(const CHarmAnlsSignKeys& signKeys);
  // Each center with chords (with kOnlyUndefCenters only one without key) takes the key of
  // the weight census of its chords, and with it every chord from its first on, also those
  // of the centers behind; an undefined sign key takes the center's key. `params` is not
  // read.
  void _FindAndInsertHarmCentersUsingCenterWeightAnalysis(
      const CHarmCenterWeightAnalysisParams& params, TOnlyUndefCenters only);
  void _MergeAdjacentSameSignKeys() { _HarmSignKeys.MergeAdjacentSameSignKeys(); }
  void _MergeAdjacentSameHarmCenters() { _HarmSignKeys.MergeAdjacentSameHarmCenters(); }

 private:
  // The input chords become those of the last center of the last sign key.
  void _PutInputChordsIntoLastCenter();
  // Undefined sign keys and centers take what the level above or below tells, then every
  // chord of a known center gets its distances.
  void _FillUndefKeysAndCentersAndAnalyseFunctions();

  CHarmAnlsChords _InputChords;
  CHarmAnlsSignKeys _HarmSignKeys;
};

}  // namespace harmony
