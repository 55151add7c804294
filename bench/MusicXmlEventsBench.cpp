// Speed of the event import of MusicXML: an orchestral sample score of 1.3 MB through the
// import, with and without the document-type check, against a bare libxml2 SAX parse of the
// same bytes whose callbacks do nothing; and the same score with its bars repeated, to see
// that the cost grows with the file and not faster.

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "harmony/musicxml/MusicXmlParser.h"
#include "platform/XmlDocument.h"

namespace harmony {
namespace {

namespace fs = std::filesystem;

const fs::path kScore =
    fs::path(HARMONY_TESTDATA_DIR) / "musicxml" / "sample-scores" / "ActorPreludeSample.xml";

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

// The repeated scores are written once per run and removed when it ends.
struct TemporaryFiles {
  std::vector<fs::path> paths;
  ~TemporaryFiles() {
    for (const fs::path& path : paths) fs::remove(path);
  }
};

// The score with the bars of every part written `times` times in a row, in a file of its own.
fs::path RepeatedScore(int times) {
  static TemporaryFiles written;
  const fs::path path =
      fs::temp_directory_path() /
      ("harmony-bench-" + std::to_string(::getpid()) + "-" + std::to_string(times) + ".xml");
  if (fs::exists(path)) return path;
  const std::string xml = ReadAll(kScore);
  std::string repeated;
  std::size_t done = 0;
  for (std::size_t part = xml.find("<part id="); part != std::string::npos;
       part = xml.find("<part id=", done)) {
    const std::size_t bars = xml.find('>', part) + 1;
    const std::size_t end = xml.find("</part>", bars);
    repeated.append(xml, done, bars - done);
    for (int i = 0; i < times; ++i) repeated.append(xml, bars, end - bars);
    done = end;
  }
  repeated.append(xml, done, std::string::npos);
  std::ofstream(path, std::ios::binary) << repeated;
  written.paths.push_back(path);
  return path;
}

class NoteCounter : public MusicXmlParserDelegate {
 public:
  void didEncounterNote(const CMuxmlNote*) override { ++notes; }
  std::int64_t notes = 0;
};

void Import(benchmark::State& state, const fs::path& path, bool validate) {
  if (!fs::exists(path)) {
    state.SkipWithError("the sample score is missing");
    return;
  }
  std::int64_t notes = 0;
  for (auto _ : state) {
    MusicXmlParser parser;
    parser.setValidatesDocumentType(validate);
    NoteCounter counter;
    TMusicXmlError error;
    if (!parser.parseURL(path.string(), &counter, &error)) {
      state.SkipWithError(error.description.c_str());
      return;
    }
    notes += counter.notes;
  }
  state.counters["notes/s"] = benchmark::Counter(static_cast<double>(notes), benchmark::Counter::kIsRate);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(fs::file_size(path)));
}

void BM_EventImport(benchmark::State& state) { Import(state, kScore, true); }
BENCHMARK(BM_EventImport)->Unit(benchmark::kMillisecond);

void BM_EventImportUnchecked(benchmark::State& state) { Import(state, kScore, false); }
BENCHMARK(BM_EventImportUnchecked)->Unit(benchmark::kMillisecond);

// The score's bars 1, 2, 4 and 8 times over.
void BM_EventImportRepeated(benchmark::State& state) {
  if (!fs::exists(kScore)) {
    state.SkipWithError("the sample score is missing");
    return;
  }
  Import(state, RepeatedScore(static_cast<int>(state.range(0))), false);
}
BENCHMARK(BM_EventImportRepeated)->RangeMultiplier(2)->Range(1, 8)->Unit(benchmark::kMillisecond);

// The tree alone, which the import builds before its events so that it can look ahead.
void BM_TreeParse(benchmark::State& state) {
  const std::string xml = fs::exists(kScore) ? ReadAll(kScore) : std::string();
  if (xml.empty()) state.SkipWithError("the sample score is missing");
  for (auto _ : state) {
    platform::XmlError error;
    benchmark::DoNotOptimize(platform::XmlDocument::Parse(xml, {false, {}}, error));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(xml.size()));
}
BENCHMARK(BM_TreeParse)->Unit(benchmark::kMillisecond);

void StartElement(void*, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**, int,
                  int, const xmlChar**) {}
void EndElement(void*, const xmlChar*, const xmlChar*, const xmlChar*) {}
void Characters(void*, const xmlChar*, int) {}

void BM_BareSaxParse(benchmark::State& state) {
  const std::string xml = fs::exists(kScore) ? ReadAll(kScore) : std::string();
  if (xml.empty()) state.SkipWithError("the sample score is missing");
  xmlSAXHandler handler{};
  handler.initialized = XML_SAX2_MAGIC;
  handler.startElementNs = &StartElement;
  handler.endElementNs = &EndElement;
  handler.characters = &Characters;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        xmlSAXUserParseMemory(&handler, nullptr, xml.data(), static_cast<int>(xml.size())));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(xml.size()));
}
BENCHMARK(BM_BareSaxParse)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace harmony
