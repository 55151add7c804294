#include "AnalyseInput.h"

#include <utility>

#include "harmony/analysis/ChordStringParser.h"

namespace harmony::tool {

TChordsFile ReadChordsArguments(const std::vector<std::string>& words, const std::string& file) {
  const bool fromInput = words.size() == 1 && words[0] == "-";
  TChordsFile chords;
  if (!file.empty() || fromInput) {
    chords = ReadChordsFile(fromInput ? "-" : file);
  } else {
    for (const std::string& word : words) {
      chords.chordList += (chords.chordList.empty() ? "" : " ") + word;
    }
  }
  return chords;
}

void AnalyseChords(CHarmonicAnalyse& analyse, TChordsFile chords,
                   const CHarmAnlsSignKeys& givenKeys, CHarmonicAnalyse::TAnalyse method) {
  if (chords.musicXml) {
    AnalyseMusicXml(analyse, std::move(*chords.musicXml), givenKeys, method);
  } else {
    const TChordStringParse parse;
    CheckChordList(chords.chordList, parse.ChordPrefs, parse.NamePrefs);
    analyse.AnalyseFromChordString(chords.chordList, givenKeys, method, parse);
  }
}

}  // namespace harmony::tool
