// Feeds arbitrary bytes to the harmony import of MusicXML and, whatever it read, analyses the
// result by every way of finding centers and searches it for repeated passages. Compressed
// input is unpacked first, as the tool does. Nothing may crash, and the played-out chords
// must keep their order of appearance and stay within the import's limits.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/musicxml/MusicXMLDoc.h"
#include "musicxml/CompressedMusicXml.h"
#include "musicxml/MusicXmlParserHarmonyDelegate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  if (IsZipArchive(bytes)) {
    std::string error;
    bytes = UnpackCompressedMusicXml(std::move(bytes), error).value_or(std::string());
  }
  TMusicXMLDoc doc;
  TMusicXMLParseError error;
  doc.LoadFromMusicXMLBytes(bytes, &error);
  if (doc.Harmonies.size() > MusicXmlParserHarmonyDelegate::kMaxHarmoniesPlayed) std::abort();
  for (CHarmonicAnalyse::TAnalyse method :
       {CHarmonicAnalyse::kAnalyseNone, CHarmonicAnalyse::kAnalyseTonicProgressions,
        CHarmonicAnalyse::kAnalyseCadenceProgressions, CHarmonicAnalyse::kAnalyseCenterWeights}) {
    CHarmonicAnalyse analyse;
    analyse.AnalyseFromMusicXMLDoc(doc, method);
    if (analyse.HarmSignKeys().empty()) std::abort();
    if (method == CHarmonicAnalyse::kAnalyseNone && analyse.InputChords().size() > 300) continue;
    if (method == CHarmonicAnalyse::kAnalyseNone) {
      CHarmCopies copies;
      analyse.FindHarmCopies(copies);
    }
  }
  return 0;
}
