// The scale-name reader on arbitrary bytes: the light and heavy readings must agree, the
// heavy scale's spelling and degree arithmetic must hold up, and its JSON must parse.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/ScaleNameReader.h"
#include "platform/JsonReader.h"

namespace {

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

void ExerciseHeavy(const harmony::CScaleHeavy& heavy) {
  std::ostringstream json;
  heavy.AppendJSONString(json);
  Check(harmony::platform::ParseJson(json.str()).has_value());
  (void)heavy.FullName();
  (void)heavy.TraceString();
  const int signs = heavy.SignsCount();
  Check(signs >= -14 && signs <= 18);
  for (int degree = -8; degree < 16; ++degree) {
    const int key = heavy.DegreeNrToKeyNr(degree);
    if (key != harmony::kKeyNrUndef) Check(heavy.KeyNrToDegreeNr(key) >= 0);
  }
  for (long noteNr : {0L, 59L, 61L, 127L}) {
    for (int steps : {-9, -1, 0, 1, 9}) {
      const long moved = heavy.MoveInScale(noteNr, steps, true);
      Check(moved >= 0 && moved <= 127);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (const harmony::CChordNamePrefs* prefs :
       {&harmony::GetCurrentChordNamePrefs(), &harmony::GetChordNamePrefsNonUTF8()}) {
    harmony::CScaleLite lite;
    harmony::SetFromString(text, lite, *prefs);
    harmony::CScaleHeavy heavy;
    harmony::SetFromString(text, heavy, *prefs);
    Check(harmony::CScaleLite(heavy) == lite);
    (void)lite.Name(*prefs);
    (void)harmony::CKeyEnh(3, lite);
    ExerciseHeavy(heavy);
  }
  int pos = size > 0 ? data[0] % 8 : 0;
  (void)harmony::_SemitonesScaleFromString(text, pos);
  Check(pos >= 0);
  return 0;
}
