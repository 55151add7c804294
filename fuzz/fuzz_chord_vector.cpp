// Reads arbitrary text as the JSON of a chord in vector form or key form, writes it in both
// forms and reads them back: the key form must give the same chord, the vector form the same
// vector (but for the two ways the form loses a chord, below), and every simplification must
// land on a recognized type.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "harmony/analysis/HarmAnlsChordForMetro.h"
#include "platform/JsonReader.h"

namespace {

using harmony::CHarmAnlsChordForMetro;

CHarmAnlsChordForMetro ReadOwnForm(const CHarmAnlsChordForMetro& chord) {
  std::ostringstream written;
  chord.AppendJSONString(written);
  const auto dict = harmony::platform::ParseJson(written.str());
  if (!dict) std::abort();  // both of our forms must be strict JSON
  return CHarmAnlsChordForMetro::FromDictionary(*dict);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony;
  const auto dict =
      platform::ParseJson(std::string_view(reinterpret_cast<const char*>(data), size));
  if (!dict) return 0;
  CHarmAnlsChordForMetro chord = CHarmAnlsChordForMetro::FromDictionary(*dict);

  const std::vector<float> vector = chord.GetChordVectorRepresentation();
  if (vector.size() != CHarmAnlsChordForMetro::kVectorSize) std::abort();
  for (const float x : vector) {
    if (x != 0.0f && x != 1.0f) std::abort();
  }

  if (!(ReadOwnForm(chord).ChordLite() == chord.ChordLite())) std::abort();
  chord.SetWritesVectorRep(true);
  const CHarmAnlsChordForMetro fromVector = ReadOwnForm(chord);
  // A chord on C or E that sounds all twelve tones without being the word 4095 (no root bit,
  // or bits beyond the octave) reads back as the wildcard or EADGBE.
  const bool special = chord.IsWildcard() || chord.IsEADGBE();
  const bool becameSpecial = !special && (fromVector.IsWildcard() || fromVector.IsEADGBE());
  if (chord.BasicChord() != kBasicChordMajorFlat5 && !becameSpecial &&
      fromVector.GetChordVectorRepresentation() != vector) {
    std::abort();
  }

  for (const bool dropBass : {false, true}) {
    const CHarmAnlsChordForMetro recognized = chord.SimplifiedToRecognizedMetroChord(dropBass);
    const CHarmAnlsChordForMetro majorOrMinor = chord.SimplifiedToMajorOrMinor(dropBass);
    if (!recognized.IsRecognizedMetroChord(false) || !majorOrMinor.IsMajorOrMinor(false)) {
      std::abort();
    }
    // The special values pass unchanged, bass and all; every other chord drops it on request.
    if (dropBass && !special && (recognized.HasBassNote() || majorOrMinor.HasBassNote())) {
      std::abort();
    }
  }

  CHarmAnlsChordForMetro::TChromaVector chroma;
  chord.GetChromaVector(chroma, true);
  (void)chord.NameForMetroExport(true);
  (void)chord.NameForMetroExport(false);
  (void)chord.TraceString();
  return 0;
}
