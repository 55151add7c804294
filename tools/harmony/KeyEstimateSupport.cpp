#include "KeyEstimateSupport.h"

#include <utility>

#include "HarteChordList.h"
#include "MusicXmlInput.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmKeyEstimator.h"

namespace harmony::tool {

CHarmAnlsChords ChordsForKeyEstimate(const std::string& text, const std::string& path) {
  if (path.empty()) return CHarmAnlsChords(text, TChordStringParse());
  TChordsFile file = ReadChordsFile(path);
  if (file.musicXml) {
    CHarmonicAnalyse analyse;
    analyse.AnalyseFromMusicXMLDoc(*file.musicXml, CHarmonicAnalyse::kAnalyseNone);
    return analyse.InputChords();
  }
  if (LooksLikeHarteAnnotation(file.chordList)) {
    return CHarmAnlsChords(HarteAnnotationToChordList(file.chordList), TChordStringParse());
  }
  return CHarmAnlsChords(file.chordList, TChordStringParse());
}

void ReanalyseFromEstimatedKey(CHarmonicAnalyse& analyse, CHarmonicAnalyse::TAnalyse method) {
  const CHarmAnlsChords chords = analyse.InputChords();
  const CHarmAnlsSignKeys keys = HarmEstimatedSignKeys(chords);
  if (keys.empty()) return;
  analyse.AnalyseFromChords(chords, keys, method);
}

}  // namespace harmony::tool
