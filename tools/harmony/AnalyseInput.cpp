#include "AnalyseInput.h"

#include <utility>

#include "harmony/analysis/ChordStringParser.h"

namespace harmony::tool {

std::function<void()> AddChordsOptions(CLI::App* cmd, std::vector<std::string>& text,
                                       std::string& file, const std::string& example) {
  CLI::Option* textOption = cmd->add_option(
      "TEXT", text,
      "Chord list, e.g. \"" + example +
          "\" or its words as several arguments; - reads standard input (a chord list or "
          "MusicXML)");
  CLI::Option* fileOption = cmd->add_option(
      "--file", file,
      "Read the chords from a file: a chord-string file or MusicXML (.musicxml, .xml, .mxl); "
      "- for standard input");
  textOption->excludes(fileOption);
  return [textOption, fileOption] {
    if (textOption->count() == 0 && fileOption->count() == 0) {
      throw CLI::RequiredError("TEXT or --file");
    }
  };
}

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
    const TChordStringParse parse = ChordListParse();
    CheckChordList(chords.chordList, parse.ChordPrefs, parse.NamePrefs);
    analyse.AnalyseFromChordString(chords.chordList, givenKeys, method, parse);
  }
}

}  // namespace harmony::tool
