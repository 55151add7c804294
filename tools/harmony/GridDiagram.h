#pragma once
// A chord grid drawn in the terminal: string names, muted and open strings, the nut or the
// first shown fret, fingers and barres.

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <string>

#include "harmony/guitar/GChBasicChord.h"
#include "harmony/guitar/GChChordFunctions.h"

namespace harmony::tool {

// One cell of the diagram: a finger digit, '*' for a spot without finger, '?' for an optional
// spot, '|' for a bare string. Barres join their strings with dashes.
inline std::string DiagramRow(const GChBasicChord& grid, int fret) {
  std::string row;
  const int strings = grid.numberOfStrings();
  for (int s = 0; s < strings; ++s) {
    const GChChordElem* spot = grid.spotAtAbsFretIndex(fret, s);
    char mark = '|';
    if (spot != nullptr) {
      mark = !spot->isRealSpot()
                 ? '?'
                 : (spot->fingerNumber() > 0 ? char('0' + spot->fingerNumber()) : '*');
    }
    const bool joined = spot != nullptr && spot->isBarre() && s < spot->coveredMaxStr();
    row += mark;
    if (s + 1 < strings) row += joined ? "--" : "  ";
  }
  return row;
}

inline void PrintGridDiagram(const GChBasicChord& grid, std::ostream& out) {
  const int strings = grid.numberOfStrings();
  std::string names = "     ", marks = "     ";
  for (int s = 0; s < strings; ++s) {
    std::string name = GChOctPitchDefaultName(grid.shortTuning()[s] % 12);
    name.resize(3, ' ');
    names += name;
    marks += grid.isMutedForStringIndex(s) ? "x  " : (grid.isOpenForStringIndex(s) ? "o  " : "   ");
  }
  const auto trimmed = [](std::string line) { return line.erase(line.find_last_not_of(' ') + 1); };
  out << trimmed(names) << '\n' << trimmed(marks) << '\n';
  constexpr int kShownFrets = 5;
  const int first = grid.firstShownFretForNumberOfFrets(kShownFrets);
  int highest = first;
  for (const auto& elem : grid.chordElems()) highest = std::max<int>(highest, elem.absFretIndex());
  const int rows = std::max(kShownFrets, highest - first + 1);
  if (first == 0) out << "     " << std::string(3 * strings - 2, '=') << '\n';
  for (int fret = first; fret < first + rows; ++fret) {
    out << std::setw(3) << fret + 1 << "  " << DiagramRow(grid, fret) << '\n';
  }
}

}  // namespace harmony::tool
