#pragma once
// Small MusicXML scores written inline for the tests of the harmony import: one part, one
// division per quarter note, a chord symbol with a note of the chord's length.

#include <string>

namespace harmony::musicxml_scores {

// A one-part score; the first bar sets one division per quarter note.
inline std::string Score(const std::string& bars) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<score-partwise version=\"3.1\">\n"
         "<movement-title>Test</movement-title><part-list><score-part id=\"P1\"/></part-list>\n"
         "<part id=\"P1\">\n" +
         bars + "</part>\n</score-partwise>\n";
}

// A chord symbol followed by a note of `quarters` quarter notes.
inline std::string Chord(const std::string& step, const std::string& kind = "major",
                         int quarters = 4) {
  return "<harmony><root><root-step>" + step + "</root-step></root><kind>" + kind +
         "</kind></harmony><note><pitch><step>C</step><octave>4</octave></pitch><duration>" +
         std::to_string(quarters) + "</duration></note>\n";
}

inline std::string Bar(const std::string& content) {
  return "<measure>" + content + "</measure>\n";
}
inline std::string FirstBar(const std::string& content) {
  return Bar("<attributes><divisions>1</divisions></attributes>" + content);
}
inline const std::string kForward =
    "<barline location=\"left\"><repeat direction=\"forward\"/></barline>";
inline const std::string kBackward =
    "<barline location=\"right\"><repeat direction=\"backward\"/></barline>";
inline std::string Ending(int number) {
  return "<barline><ending number=\"" + std::to_string(number) +
         "\" type=\"discontinue\"/></barline>";
}
inline std::string Words(const std::string& text) {
  return "<direction><direction-type><words>" + text + "</words></direction-type></direction>";
}
inline const std::string kSegno =
    "<direction><direction-type><segno/></direction-type></direction>";
inline const std::string kCoda = "<direction><direction-type><coda/></direction-type></direction>";

}  // namespace harmony::musicxml_scores
