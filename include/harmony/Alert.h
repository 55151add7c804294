#pragma once
// Alerts the library shows a person: today the parse errors of a MusicXML import. A host
// installs its own handler to show them in its window (or to collect them); the default
// writes them to standard error.

#include <functional>
#include <string>
#include <vector>

namespace harmony {

struct TAlert {
  std::string messageText;      // the headline ("MusicXML Parsing Error")
  std::string informativeText;  // what went wrong and where
  std::vector<std::string> buttonTitles;
};

using TAlertHandler = std::function<void(const TAlert& alert)>;

// Replaces the handler for all threads; an empty handler restores the default. Returns the
// one installed before, so a caller can put it back.
TAlertHandler SetAlertHandler(TAlertHandler handler);
// Hands the alert to the installed handler.
void ShowAlert(const TAlert& alert);

}  // namespace harmony
