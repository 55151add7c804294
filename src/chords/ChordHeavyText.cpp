// The JSON and trace forms of the heavy chord.

#include "harmony/chords/ChordHeavy.h"

namespace harmony {

namespace {

// {"name":"C4","nr":60,"enh":"neutral"}, as the heavy scale writes its root.
void AppendNoteJSONString(std::ostream& out, const CNote& note) {
  out << "{\"name\":\"" << note.KeyName() << note.OctName() << "\",\"nr\":" << note.NoteNr()
      << ",\"enh\":\"" << note.Enh() << "\"}";
}

void WriteNoteWithEnh(std::ostream& out, const CNote& note) {
  note.WriteTraceBrief(out);
  out << " (Enh " << note.Enh() << ")";
}

}  // namespace

// The basic chord is written as one raw byte, not as a number: readers of this JSON expect it.
void CChordHeavy::AppendJSONString(std::ostream& out) const {
  out << "{\"root\":";
  AppendNoteJSONString(out, _RootNote);
  out << ",\"basic\":" << static_cast<char>(BasicChordForNaming()) << ",\"notes\":[";
  const char* separator = "";
  for (const CNote& note : _Notes) {
    out << separator;
    AppendNoteJSONString(out, note);
    separator = ",";
  }
  out << "]}";
}

void CChordHeavy::WriteTrace(std::ostream& out) const {
  out << "CChordHeavy: Name " << Name() << ", RootNote ";
  WriteNoteWithEnh(out, _RootNote);
  out << ", BassNote ";
  WriteNoteWithEnh(out, BassNote());
  out << ", Notes: ";
  const char* separator = "";
  for (const CNote& note : _Notes) {
    out << separator;
    note.WriteTraceBrief(out);
    separator = " ";
  }
}

void CChordHeavy::WriteTraceBrief(std::ostream& out) const { out << Name(); }

// Reads as the constructor call from root, notes and wrap interval that rebuilds the chord.
void CChordHeavy::WriteInitializerList(std::ostream& out) const {
  out << "CChordHeavy(";
  _RootNote.WriteInitializerList(out);
  out << ", {";
  const char* separator = "";
  for (const CNote& note : _Notes) {
    out << separator;
    note.WriteInitializerList(out);
    separator = ", ";
  }
  out << "}, " << _IntvlSet.WrapIntvl() << ')';
}

}  // namespace harmony
