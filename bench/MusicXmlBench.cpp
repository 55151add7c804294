// Speed of the harmony import: a real lead sheet (the bundled example, unpacked once) read
// from memory by the import, against the same bytes through a bare libxml2 SAX parse whose
// callbacks do nothing. The ratio is what the import itself costs on top of reading XML.

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <fstream>
#include <sstream>
#include <string>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/musicxml/MusicXMLDoc.h"
#include "musicxml/CompressedMusicXml.h"

namespace harmony {
namespace {

const std::string& LeadSheet() {
  static const std::string xml = [] {
    std::ifstream in(std::string(HARMONY_DATA_DIR) + "/examples/after-youve-gone.mxl",
                     std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    std::string error;
    return UnpackCompressedMusicXml(bytes.str(), error).value_or(std::string());
  }();
  return xml;
}

void SetBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(LeadSheet().size()));
}

void BM_HarmonyImport(benchmark::State& state) {
  const std::string& xml = LeadSheet();
  if (xml.empty()) state.SkipWithError("the bundled lead sheet is missing");
  for (auto _ : state) {
    TMusicXMLDoc doc;
    benchmark::DoNotOptimize(doc.LoadFromMusicXMLBytes(xml));
    benchmark::DoNotOptimize(doc.Harmonies.data());
  }
  SetBytes(state);
}
BENCHMARK(BM_HarmonyImport);

void StartElement(void*, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**, int,
                  int, const xmlChar**) {}
void EndElement(void*, const xmlChar*, const xmlChar*, const xmlChar*) {}
void Characters(void*, const xmlChar*, int) {}

void BM_BareSaxParse(benchmark::State& state) {
  const std::string& xml = LeadSheet();
  xmlSAXHandler handler{};
  handler.initialized = XML_SAX2_MAGIC;
  handler.startElementNs = &StartElement;
  handler.endElementNs = &EndElement;
  handler.characters = &Characters;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        xmlSAXUserParseMemory(&handler, nullptr, xml.data(), static_cast<int>(xml.size())));
  }
  SetBytes(state);
}
BENCHMARK(BM_BareSaxParse);

void BM_ImportAndAnalyse(benchmark::State& state) {
  const std::string& xml = LeadSheet();
  for (auto _ : state) {
    TMusicXMLDoc doc;
    doc.LoadFromMusicXMLBytes(xml);
    CHarmonicAnalyse analyse;
    analyse.AnalyseFromMusicXMLDoc(doc, CHarmonicAnalyse::kAnalyseTonicProgressions);
    benchmark::DoNotOptimize(analyse.HarmSignKeys().data());
  }
  SetBytes(state);
}
BENCHMARK(BM_ImportAndAnalyse);

}  // namespace
}  // namespace harmony
