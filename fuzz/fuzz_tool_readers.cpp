// The tool's strict readers and its JSON writer on arbitrary bytes: a reader either refuses
// the text with InputError or reads exactly what the library's forgiving reading gives, and
// any text written as a JSON string reads back strictly as the same text, or as the text with
// its bytes that are no UTF-8 replaced. The readers of the grids commands (frets, fingers,
// ids, keys, types) give values within their ranges or refuse.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "../tools/harmony/Command.h"
#include "../tools/harmony/GridsSupport.h"
#include "../tools/make-factory-grids/GridFromFrets.h"
#include "platform/JsonReader.h"

namespace {

using namespace harmony;

void Check(bool condition) {
  if (!condition) std::abort();
}

template <class Read>
bool Accepted(Read read) {
  try {
    read();
    return true;
  } catch (const tool::InputError&) {
    return false;
  }
}

void CheckChordSymbol(const std::string& text) {
  CChordLite strict;
  tool::SetLenient(false);
  if (!Accepted([&] { strict = tool::ReadChordSymbol(text); })) return;
  tool::SetLenient(true);
  Check(tool::ReadChordSymbol(text) == strict);
  // Only no-chord symbols (the library's words, the lead sheets' N.C.) are accepted without a
  // root.
  std::string lowered;
  for (const char c : text) lowered += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  Check(strict.RootKeyEnh.KeyNr != kKeyNrUndef || strict.IsNoChordForce() ||
        lowered.find("nochord") != std::string::npos ||
        lowered.find("undef") != std::string::npos || lowered.find('-') != std::string::npos);
}

void CheckNoteAndNumbers(const std::string& text) {
  for (const bool lenient : {false, true}) {
    tool::SetLenient(lenient);
    CNote note;
    if (Accepted([&] { note = tool::ReadNote(text); })) {
      Check(note.NoteNr() >= 0 && note.NoteNr() <= 127);
    }
    long long value = 0;
    if (Accepted([&] { value = tool::ReadInteger(text, -12, 4095, "number"); })) {
      Check(value >= -12 && value <= 4095);
    }
    Accepted([&] { tool::ReadKeyName(text); });
    Accepted([&] { tool::ReadScaleName(text); });
    Accepted([&] { tool::ReadSignKey(text); });
    Accepted(
        [&] { tool::CheckChordList(text, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs()); });
  }
}

void CheckGridReaders(const std::string& text) {
  if (const auto frets = grid_tools::ParseFrets(text)) {
    for (const int fret : *frets)
      Check(fret >= grid_tools::kMuted && fret <= kGChMaxAbsFretIndex + 1);
  }
  if (const auto fingers = grid_tools::ParseFingers(text)) {
    for (const int finger : *fingers) Check(finger >= 0 && finger <= 5);
  }
  tool::SetLenient(false);
  std::vector<int> frets;
  if (Accepted([&] { frets = tool::ReadGridFrets(text); })) Check(!frets.empty());
  long id = 0;
  if (Accepted([&] { id = tool::ReadGridId(text); })) Check(id >= 0);
  int key = 0;
  if (Accepted([&] { key = tool::ReadGridKey(text, "root"); })) Check(key >= -1 && key <= 11);
  Accepted([&] { tool::ReadGridType(text); });
  double decimal = 0.0;
  if (Accepted([&] { decimal = tool::ReadDecimal(text, 0.0, 1.0, "number"); })) {
    Check(decimal >= 0.0 && decimal <= 1.0);
  }
}

void CheckJson(const std::string& text) {
  const std::string quoted = tool::JsonQuoted(text);
  Check(tool::IsUtf8(quoted));
  const auto parsed = platform::ParseJson("[" + quoted + "]");
  Check(parsed.has_value());
  if (tool::IsUtf8(text)) Check((*parsed)[0].get<std::string>() == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckChordSymbol(text);
  CheckNoteAndNumbers(text);
  CheckGridReaders(text);
  CheckJson(text);
  return 0;
}
