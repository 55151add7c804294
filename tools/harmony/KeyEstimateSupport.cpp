#include "KeyEstimateSupport.h"

#include <utility>

#include "Command.h"
#include "HarteChordList.h"
#include "MusicXmlInput.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmKeyEstimator.h"

namespace harmony::tool {

CHarmAnlsChords ChordsForKeyEstimate(const std::string& text, const std::string& path) {
  if (path.empty()) {
    const std::string list = WithStandardInput(text);
    CheckChordList(list, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
    return CHarmAnlsChords(list, ChordListParse());
  }
  TChordsFile file = ReadChordsFile(path);
  if (file.musicXml) {
    CHarmonicAnalyse analyse;
    analyse.AnalyseFromMusicXMLDoc(*file.musicXml, CHarmonicAnalyse::kAnalyseNone);
    return analyse.InputChords();
  }
  if (LooksLikeHarteAnnotation(file.chordList)) {
    return CHarmAnlsChords(HarteAnnotationToChordList(file.chordList), ChordListParse());
  }
  CheckChordList(file.chordList, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
  return CHarmAnlsChords(file.chordList, ChordListParse());
}

void ReanalyseFromEstimatedKey(CHarmonicAnalyse& analyse, CHarmonicAnalyse::TAnalyse method) {
  const CHarmAnlsChords chords = analyse.InputChords();
  const CHarmAnlsSignKeys keys = HarmEstimatedSignKeys(chords);
  if (keys.empty()) return;
  analyse.AnalyseFromChords(chords, keys, method);
}

}  // namespace harmony::tool
