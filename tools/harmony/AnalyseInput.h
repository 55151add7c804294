#pragma once
// What the commands that analyse a chord list read from the command line: the chords (words,
// standard input or a file), the way of finding centers by its name, and the sign key a user
// may give.

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "Command.h"
#include "MusicXmlInput.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/SignKey.h"

namespace harmony::tool {

struct TMethodName {
  const char* name;
  CHarmonicAnalyse::TAnalyse analyse;
};

inline constexpr std::array<TMethodName, 4> kAnalyseMethods{{
    {"none", CHarmonicAnalyse::kAnalyseNone},
    {"tonic", CHarmonicAnalyse::kAnalyseTonicProgressions},
    {"cadence", CHarmonicAnalyse::kAnalyseCadenceProgressions},
    {"weights", CHarmonicAnalyse::kAnalyseCenterWeights},
}};

inline CHarmonicAnalyse::TAnalyse AnalyseMethodFromName(const std::string& name) {
  for (const TMethodName& method : kAnalyseMethods) {
    if (name == method.name) return method.analyse;
  }
  return CHarmonicAnalyse::kAnalyseNone;
}

// The sign key the text names ("G", "Em", "Bb minor"), starting at the beginning of the piece;
// none for an empty text, InputError for a text that is no key (read strictly unless --lenient).
inline CHarmAnlsSignKeys GivenSignKeys(const std::string& text, const CChordNamePrefs& prefs) {
  if (text.empty()) return {};
  return {CHarmAnlsSignKey(kHarmAnlsUndefDouble, 0.0, ReadSignKey(text, prefs))};
}

// TEXT (the chord list, e.g. `example`, or "-") and --file, which exclude each other. The
// function returned, called from the command's callback, throws when neither was given.
std::function<void()> AddChordsOptions(CLI::App* cmd, std::vector<std::string>& text,
                                       std::string& file, const std::string& example);

// The chords given: the words of a chord list (a progression may come as several arguments),
// "-" alone for standard input, or the file of --file; standard input and files may hold
// MusicXML.
TChordsFile ReadChordsArguments(const std::vector<std::string>& words, const std::string& file);

// The analysis of those chords under the keys given, if any; a chord list is read strictly
// unless --lenient.
void AnalyseChords(CHarmonicAnalyse& analyse, TChordsFile chords,
                   const CHarmAnlsSignKeys& givenKeys, CHarmonicAnalyse::TAnalyse method);

}  // namespace harmony::tool
