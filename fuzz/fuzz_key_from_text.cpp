// Reads arbitrary bytes as a key name and as a note name under several preferences.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/Note.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

harmony::CChordNamePrefs PrefsFromByte(std::uint8_t byte) {
  harmony::CChordNamePrefs prefs;
  prefs.BIsH = byte & 1;
  prefs.BIsBFlat = (byte >> 1) & 1;
  prefs.GermanAccidentals = (byte >> 2) & 1;
  prefs.AsciiAccidentals = (byte >> 3) & 1;
  prefs.Solfege = (byte >> 4) & 3;
  prefs.OctaveNumbering = (byte >> 6) & 3;
  prefs.AccessibilitySpoken = byte == 0xFF;
  return prefs;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const harmony::CChordNamePrefs prefs = PrefsFromByte(data[0]);
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);

  harmony::CKeyEnh key;
  int consumed = -1;
  key.SetFromString(text, &consumed, prefs);
  Check(consumed >= 0 && static_cast<std::size_t>(consumed) <= text.size());
  if (key.KeyNr != harmony::kKeyNrUndef) {
    Check(key.KeyNr >= 0 && key.KeyNr <= 11);
    Check(consumed >= 1);
    Check(!harmony::KeyNrAndEnhToName(key.KeyNr, key.Enh, prefs).empty());
    key.TranposeThis(static_cast<int>(size));
    Check(key.KeyNr >= 0 && key.KeyNr <= 11);
  } else {
    Check(consumed == 0);
  }

  harmony::CNote note(60, harmony::TEnh_n);
  const bool read = note.SetFromString(text, prefs);
  if (!read) Check(note.IsUndef());
  // An octave below -1 gives the negated key number, which is -1 (undefined) for key 1.
  if (read && !note.IsUndef()) {
    Check(note.KeyNr() >= 0 && note.KeyNr() <= 11);
    (void)note.KeyName(prefs);
    (void)note.OctName(prefs);
  }
  return 0;
}
