#include "harmony/analysis/HarmonicAnalyse.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace harmony {

// --- Ways in

void CHarmonicAnalyse::AnalyseFromChords(const CHarmAnlsChords& chords,
                                         const CHarmAnlsSignKeys& signKeys, TAnalyse analyse) {
  _FillAnalyserWithSignKeysAndChords(signKeys, chords);
  Analyse(analyse);
}

void CHarmonicAnalyse::AnalyseFromChordString(const std::string& text,
                                              const CHarmAnlsSignKeys& signKeys, TAnalyse analyse,
                                              const TChordStringParse& parse) {
  _FillAnalyserWithSignKeysAndChordString(signKeys, text, parse);
  Analyse(analyse);
}

void CHarmonicAnalyse::AnalyseFromChordStringFile(const std::string& path,
                                                  const CHarmAnlsSignKeys& /*signKeys*/,
                                                  TAnalyse /*analyse*/,
                                                  const TChordStringParse& /*parse*/) {
  // A file stands alone: no sign keys, the default parse and tonic progressions, whatever
  // the caller passed.
  AnalyseFromChordString(ReadChordStringFile(path).value_or(std::string()), CHarmAnlsSignKeys(),
                         kAnalyseTonicProgressions, TChordStringParse());
}

void CHarmonicAnalyse::Analyse(TAnalyse analyse) {
  // Center finding comes ahead of the merges. The progression finders plug in here: tonic
  // progressions on all centers, or cadence progressions on all centers of each sign key,
  // each followed by center weights on the centers they left undefined. Until they exist
  // those two values run as kAnalyseNone, which finds no centers and leaves what the caller
  // gave.
  if (analyse == kAnalyseCenterWeights) {
    _FindAndInsertHarmCentersUsingCenterWeightAnalysis(CHarmCenterWeightAnalysisParams(),
                                                       kAllCenters);
  }
  _MergeAdjacentSameSignKeys();
  _MergeAdjacentSameHarmCenters();
  _FillUndefKeysAndCentersAndAnalyseFunctions();
}

void CHarmonicAnalyse::_FillUndefKeysAndCentersAndAnalyseFunctions() {
  for (CHarmAnlsSignKey& signKey : _HarmSignKeys) {
    if (signKey.IsUndef()) {
      // A last resort that usually stays undefined (see FindMostOccurentHarmCenter).
      const CHarmCenterLite center = signKey.HarmCenters.FindMostOccurentHarmCenter();
      signKey.SignKey.RootKeyEnh = center.RootKeyEnh;
      signKey.SignKey.SignKeyType = SignKeyTypeFromSemitones(center.Semitones);
    }
    for (CHarmAnlsCenter& center : signKey.HarmCenters) {
      if (center.IsUndef()) {
        center.HarmCenter = CHarmCenterLite(signKey.SignKey.RootKeyEnh,
                                            SemitonesFromSignKeyType(signKey.SignKey.SignKeyType));
        if (IsHarmAnlsUndef(center.Position)) center.Position = signKey.Position;
        if (center.IsUndef()) continue;
      }
      center.AnalyseHarmFunctionsOfChords();
    }
  }
}

// --- Filling

void CHarmonicAnalyse::_FillAnalyserWithSignKeysAndChords(const CHarmAnlsSignKeys& signKeys,
                                                          const CHarmAnlsChords& chords) {
  _InputChords = chords;
  _EraseIntermediateUndefInputChords();
  _FillAnalyserWithSignKeysOrCreateDefault(signKeys);
  _PutInputChordsIntoLastCenter();
}

void CHarmonicAnalyse::_FillAnalyserWithSignKeysAndChordString(const CHarmAnlsSignKeys& signKeys,
                                                               const std::string& text,
                                                               const TChordStringParse& parse) {
  _InputChords = ParseStringIntoHarmAnlsChords::ParseIntoChords(text, parse);
  _FillAnalyserWithSignKeysOrCreateDefault(signKeys);
  _PutInputChordsIntoLastCenter();
}

void CHarmonicAnalyse::_EraseIntermediateUndefInputChords() {
  if (_InputChords.empty()) return;
  const auto last = std::prev(_InputChords.end());
  const auto kept = std::remove_if(_InputChords.begin(), last,
                                   [](const CHarmAnlsChordWithPos& c) { return c.IsUndef(); });
  _InputChords.erase(kept, last);
}

void CHarmonicAnalyse::_FillAnalyserWithSignKeysOrCreateDefault(const CHarmAnlsSignKeys& signKeys) {
  _HarmSignKeys = signKeys;
  if (_HarmSignKeys.empty()) {
    _HarmSignKeys.emplace_back(kHarmAnlsUndefDouble, kHarmAnlsUndefDouble, CSignKeyLite::Undef);
  }
}

void CHarmonicAnalyse::_PutInputChordsIntoLastCenter() {
  CHarmAnlsSignKey& signKey = _HarmSignKeys.back();
  if (signKey.HarmCenters.empty()) {
    const CSignKeyLite& key = signKey.SignKey;
    signKey.HarmCenters.emplace_back(
        kHarmAnlsUndefDouble, signKey.Position,
        CHarmCenterLite(key.RootKeyEnh, SemitonesFromSignKeyType(key.SignKeyType)));
  }
  signKey.HarmCenters.back().HarmChords = _InputChords;
}

CHarmAnlsSignKeys::iterator CHarmonicAnalyse::FillManually_AppendSignKey(
    const CHarmAnlsSignKey& signKey) {
  _HarmSignKeys.push_back(signKey);
  return std::prev(_HarmSignKeys.end());
}

CHarmAnlsCenters::iterator CHarmonicAnalyse::FillManually_AppendHarmCenterInSignKey(
    CHarmAnlsSignKeys::iterator signKey, const CHarmAnlsCenter& center) {
  signKey->HarmCenters.push_back(center);
  return std::prev(signKey->HarmCenters.end());
}

CHarmAnlsChords::iterator CHarmonicAnalyse::FillManually_AppendChordInHarmCenter(
    CHarmAnlsCenters::iterator center, const CHarmAnlsChordWithPos& chord) {
  center->HarmChords.push_back(chord);
  return std::prev(center->HarmChords.end());
}

// --- The result

void CHarmonicAnalyse::ListAllHarmChords(CHarmAnlsChords& chords) const {
  chords.clear();
  for (const CHarmAnlsSignKey& signKey : _HarmSignKeys) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      chords.insert(chords.end(), center.HarmChords.begin(), center.HarmChords.end());
    }
  }
}

void CHarmonicAnalyse::ListAllHarmChordsWithLength(CHarmAnlsChordsWithLength& chords) const {
  chords.clear();
  chords.reserve(_InputChords.size());
  for (std::size_t i = 0; i < _InputChords.size(); ++i) {
    if (i > 0) chords.back().Length = _InputChords[i].Position - _InputChords[i - 1].Position;
    chords.emplace_back(_InputChords[i].ChordLite(), kHarmAnlsUndefDouble);
  }
}

void CHarmonicAnalyse::AppendJSONString(std::ostream& out) const {
  out << "{\"HarmSignKeys\":" << std::endl;
  _HarmSignKeys.AppendJSONString(out);
  out << '}';
}

void CHarmonicAnalyse::WriteAnalysisResultToFile(const std::string& path,
                                                 std::ios_base::openmode openMode) const {
  std::ofstream out(path, openMode | std::ios_base::out);
  AppendJSONString(out);
}

void CHarmonicAnalyse::WriteTrace(std::ostream& out) const {
  out << "CHarmonicAnalyse: ";
  _HarmSignKeys.WriteTrace(out);
}

void CHarmonicAnalyse::WriteTraceBrief(std::ostream& out) const {
  _HarmSignKeys.WriteTraceBrief(out);
}

void CHarmonicAnalyse::WriteInitializerList(std::ostream& out) const {
  out << "CHarmonicAnalyse(";
  _HarmSignKeys.WriteInitializerList(out);
  out << ')';
}

}  // namespace harmony
