#pragma once
// The harmonic analysis of a piece: from a list of positioned chords to the tree of sign
// keys, harmonic centers and chords, with each chord's distance to its center. The object
// keeps input and result until the next analysis; a caller may also build a tree by hand.

#include <cstddef>
#include <cstdint>
#include <ios>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmAnlsProgressions.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/analysis/HarmCenterWeightAnalysis.h"
#include "harmony/analysis/HarmCopy.h"

namespace harmony {

class TMusicXMLDoc;

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
  // What one look for a tonic progression at one chord finds.
  struct TFoundHarmCenter {
    bool Found = false;
    CHarmCenterLite HarmCenter;
    CHarmAnlsChords::const_iterator Chord;
  };
  // A run of chords that comes again: the indices where it starts, ascending, and its
  // length in chords.
  using TRepeatingSequence = std::pair<std::vector<std::size_t>, std::size_t>;
  using TRepeatingSequences = std::vector<TRepeatingSequence>;

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
  // The chord symbols, keys and repeats of a MusicXML file (plain, not compressed), laid out
  // in song time by the harmony import; the sign keys already held stay ahead of the
  // file's. A file that cannot be read or parsed gives the default sign key and no chords.
  void AnalyseFromMusicXMLFile(const std::string& path, TAnalyse analyse);
  // The same from a document the caller has imported already.
  void AnalyseFromMusicXMLDoc(const TMusicXMLDoc& doc, TAnalyse analyse);
  // The analysis on what the object holds.
  void Analyse(TAnalyse analyse);

  // --- The result
  const CHarmAnlsChords& InputChords() const { return _InputChords; }
  const CHarmAnlsSignKeys& HarmSignKeys() const { return _HarmSignKeys; }
  // Where the bars marked with a slash begin, as indices into the harmonies of the last
  // MusicXML import; nothing in the analysis reads them.
  const std::vector<std::uint64_t>& ChordSequences() const { return _ChordSequences; }
  // The progressions of the last analysis by progressions: a copy of one of the tables.
  const CHarmAnlsProgressions& Progressions() const { return _Progressions; }
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

  // --- Repeated passages of the input chords, in bars of four quarter notes. Each copy
  // points back to the first occurrence of its run; runs nest.
  void FindHarmCopies(CHarmCopies& copies) const;
  // Every run of two or more chords (equal chords of equal length) that comes again, with
  // its starts; longest runs first, then by their starts.
  void GenerateVectorWithRepeatingSequenceIndices(TRepeatingSequences& sequences,
                                                  const CHarmAnlsChordsWithLength& chords) const;
  // The copies within `chords`, a part of the whole list whose first chord has the index
  // `startIndex` and which begins at `offset` quarter notes.
  void RecursiveFillWithSequences(const CHarmAnlsChordsWithLength& chords,
                                  const TRepeatingSequences& sequences, std::size_t startIndex,
                                  double offset, CHarmCopies& copies) const;
  // The indices behind `index` whose chord and length equal those at `index`.
  void FindRecurringChordIndices(std::vector<std::size_t>& indices,
                                 const CHarmAnlsChordsWithLength& chords, std::size_t index) const;
  // Adds `start` unless it is listed or a listed range of `length` chords reaches it.
  static void InsertRangeStartIfNoCollision(std::vector<std::size_t>& starts, std::size_t start,
                                            std::size_t length);

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
  // The input chords and the tree from an imported MusicXML document.
  void _FillAnalyserWithMusicXMLDoc(const TMusicXMLDoc& doc);
  // Each center with chords (with kOnlyUndefCenters only one without key) takes the key of
  // the weight census of its chords, and with it every chord from its first on, also those
  // of the centers behind; an undefined sign key takes the center's key. `params` is not
  // read.
  void _FindAndInsertHarmCentersUsingCenterWeightAnalysis(
      const CHarmCenterWeightAnalysisParams& params, TOnlyUndefCenters only);
  void _MergeAdjacentSameSignKeys() { _HarmSignKeys.MergeAdjacentSameSignKeys(); }
  void _MergeAdjacentSameHarmCenters() { _HarmSignKeys.MergeAdjacentSameHarmCenters(); }

  // --- Centers by progressions (they use the progressions Analyse put in)
  // The alternative readings of the input chords by the tonic table become the first sign
  // key's centers; when there are none, each sign key is walked.
  void _FindAndInsertHarmCentersUsingTonicProgressions(TOnlyUndefCenters only);
  // Walks the centers of the sign key and cuts each where the best progression at a chord
  // proves a center, as far as the neighbours fit it.
  void _FindAndInsertHarmCenterUsingTonicProgressions_ForSignKey(CHarmAnlsSignKey& signKey,
                                                                 TOnlyUndefCenters only);
  void _FindAndInsertHarmCentersUsingCadenceProgressions(TOnlyUndefCenters only);
  // The first cadence in each center proves the center from there to the end of its chords.
  void _FindAndInsertHarmCentersUsingCadenceProgression_ForSignKey(CHarmAnlsSignKey& signKey,
                                                                   TOnlyUndefCenters only);
  // One look at one chord: the center the best progression there proves. `signKey` is not
  // read.
  TFoundHarmCenter _FindHarmCenterViaTonicProgression(CHarmAnlsChords::const_iterator it,
                                                      const CHarmAnlsChords& chords,
                                                      const CHarmAnlsSignKey& signKey) const;
  // Grows [begin, end] over the neighbours that fit the center; end then steps behind the
  // range unless it is the end of the chords.
  void _ExtendRangeOfHarmCenter(const CHarmCenterLite& center, const CHarmAnlsChords& chords,
                                CHarmAnlsChords::const_iterator& begin,
                                CHarmAnlsChords::const_iterator& end) const;

 private:
  // The input chords become those of the last center of the last sign key.
  void _PutInputChordsIntoLastCenter();
  // Undefined sign keys and centers take what the level above or below tells, then every
  // chord of a known center gets its distances.
  void _FillUndefKeysAndCentersAndAnalyseFunctions();

  CHarmAnlsChords _InputChords;
  CHarmAnlsSignKeys _HarmSignKeys;
  std::vector<std::uint64_t> _ChordSequences;
  CHarmAnlsProgressions _Progressions;
};

}  // namespace harmony
