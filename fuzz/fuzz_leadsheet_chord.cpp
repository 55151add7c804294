// Reads arbitrary bytes as a lead-sheet chord symbol, with and without the German B, checks
// that the result is a well-formed chord whose unread rest and root and bass places lie inside
// the text, that reading is deterministic, and that what it read can be named and read again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "harmony/chords/LeadSheetChordReader.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

bool IsKeyOrUndef(const harmony::CKeyEnh& key) {
  return (key.KeyNr >= 0 && key.KeyNr <= 11) || key.KeyNr == harmony::kKeyNrUndef;
}

bool Inside(std::uint32_t offset, std::uint32_t length, std::size_t size) {
  return offset <= size && length <= size - offset;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  static const harmony::CChordNamePrefs german = [] {
    harmony::CChordNamePrefs prefs = harmony::GetCurrentChordNamePrefs();
    prefs.BIsBFlat = 1;
    prefs.BIsH = 1;
    return prefs;
  }();
  const harmony::CChordLite previous(harmony::CKeyEnh(7, harmony::TEnh_n),
                                     harmony::CSemitones(1169));
  for (const harmony::CChordNamePrefs* prefs : {&harmony::GetCurrentChordNamePrefs(), &german}) {
    const harmony::TLeadSheetChordRead read = harmony::ReadLeadSheetChord(text, *prefs, previous);
    const harmony::CChordLite& chord = read.Chord;
    Check(IsKeyOrUndef(chord.RootKeyEnh) && IsKeyOrUndef(chord.BassKeyEnh));
    Check(chord.Semitones.Word() <= harmony::CSemitones::kOctaveMask);
    Check(Inside(read.UnreadOffset, read.UnreadLength, size));
    Check(read.UnreadLength == 0 || read.UnreadOffset + read.UnreadLength == size);
    Check(Inside(read.RootOffset, read.RootLength, size) &&
          Inside(read.BassOffset, read.BassLength, size));
    switch (read.Kind) {
      case harmony::TLeadSheetSymbolKind::kChord:
        Check(!chord.IsUndef() && chord.Semitones.HasIntvl(0) && read.RootLength > 0);
        Check(chord.HasBassNote() == (read.BassLength > 0));
        break;
      case harmony::TLeadSheetSymbolKind::kNoChord:
        Check(chord.IsNoChordForce());
        break;
      case harmony::TLeadSheetSymbolKind::kRepeat:
        Check(chord == previous);
        break;
      case harmony::TLeadSheetSymbolKind::kNothing:
        Check(chord.IsUndef());
        break;
    }
    const harmony::TLeadSheetChordRead again = harmony::ReadLeadSheetChord(text, *prefs, previous);
    Check(again.Chord == chord && again.UnreadOffset == read.UnreadOffset);
    if (read.Kind != harmony::TLeadSheetSymbolKind::kChord) continue;
    // The name written back reads again, on the same root.
    const std::string name = chord.ToChordHeavy(24).Name(*prefs);
    Check(!name.empty());
    const harmony::TLeadSheetChordRead named = harmony::ReadLeadSheetChord(name, *prefs);
    Check(named.Kind == harmony::TLeadSheetSymbolKind::kChord);
    Check(named.Chord.RootKeyEnh.KeyNr == chord.RootKeyEnh.KeyNr);
  }
  return 0;
}
