// Reads arbitrary text as a chord list and analyses it. The list must be in position order and
// closed by an undefined chord; without center finding the analysis must hold every chord and
// its result file must read back as the same tree. Each way of finding centers then runs on
// the same chords, and its result file must read back with the same shape (probabilities are
// written rounded, so the values may differ).

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace {

const harmony::TChordStringParse& DefaultParse() {
  static const harmony::TChordStringParse parse;
  return parse;
}

void CheckList(const harmony::CHarmAnlsChords& chords) {
  if (chords.empty()) return;
  if (!chords.back().IsUndef()) std::abort();
  for (std::size_t i = 1; i < chords.size(); ++i) {
    if (!(chords[i - 1].Position < chords[i].Position)) std::abort();
  }
}

std::size_t CenterCount(const harmony::CHarmAnlsSignKeys& signKeys) {
  std::size_t count = 0;
  for (const harmony::CHarmAnlsSignKey& signKey : signKeys) count += signKey.HarmCenters.size();
  return count;
}

void FindCenters(const harmony::CHarmAnlsChords& chords) {
  using harmony::CHarmonicAnalyse;
  for (CHarmonicAnalyse::TAnalyse method :
       {CHarmonicAnalyse::kAnalyseTonicProgressions, CHarmonicAnalyse::kAnalyseCadenceProgressions,
        CHarmonicAnalyse::kAnalyseCenterWeights}) {
    CHarmonicAnalyse analyse;
    analyse.AnalyseFromChords(chords, {}, method);
    std::ostringstream json;
    analyse.AppendJSONString(json);
    const harmony::CHarmAnlsSignKeys read =
        harmony::CHarmAnlsSignKeys::FromAnalysisJSONString(json.str());
    if (read.size() != analyse.HarmSignKeys().size()) std::abort();
    if (CenterCount(read) != CenterCount(analyse.HarmSignKeys())) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const CHarmAnlsChords chords =
      ParseStringIntoHarmAnlsChords::ParseIntoChords(text, DefaultParse());
  CheckList(chords);

  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChords(chords, {}, CHarmonicAnalyse::kAnalyseNone);
  CHarmAnlsChords all;
  analyse.ListAllHarmChords(all);
  if (all.size() > chords.size()) std::abort();
  CHarmAnlsChordsWithLength lengths;
  analyse.ListAllHarmChordsWithLength(lengths);

  std::ostringstream json;
  analyse.AppendJSONString(json);
  if (!(CHarmAnlsSignKeys::FromAnalysisJSONString(json.str()) == analyse.HarmSignKeys())) {
    std::abort();
  }
  (void)analyse.TraceBriefString();
  (void)HarmChordsFromChordString(text);
  FindCenters(chords);
  return 0;
}
