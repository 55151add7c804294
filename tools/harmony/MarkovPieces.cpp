#include "MarkovPieces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <system_error>
#include <utility>

#include "Command.h"
#include "HarteChordList.h"
#include "MarkovSupport.h"
#include "MusicXmlInput.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/markov/MarkovHarmChords.h"

namespace harmony::tool {

namespace fs = std::filesystem;

namespace {

bool IsChordFile(const fs::path& file) {
  static const std::array<const char*, 5> kExtensions{".txt", ".chords", ".musicxml", ".xml",
                                                      ".mxl"};
  const std::string extension = file.extension().string();
  return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

std::string FirstWord(const std::string& text) {
  std::istringstream words(text);
  std::string word;
  words >> word;
  return word;
}

const CHarmCenterLite& CMajor() {
  static const CHarmCenterLite center(CKeyEnh(0, TEnh_n), CSemitones(2741));
  return center;
}

// Each chord's center: the center of the analysed chord it became; chords without one take
// the center of the chord before them, or after them at the start.
std::vector<CHarmCenterLite> CentersOfChords(const CHarmonicAnalyse& analyse,
                                             const CHarmAnlsChords& chords,
                                             const std::vector<double>& positions) {
  std::multimap<double, std::pair<const CHarmAnlsChordWithPos*, const CHarmAnlsCenter*>> tree;
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
        tree.emplace(chord.Position, std::make_pair(&chord, &center));
      }
    }
  }
  std::vector<CHarmCenterLite> centers;
  for (double position : positions) {
    CHarmCenterLite found;
    const auto input = std::find_if(chords.begin(), chords.end(), [position](const auto& chord) {
      return chord.Position == position;
    });
    const auto [first, last] = tree.equal_range(position);
    for (auto it = first; it != last && input != chords.end() && !input->IsUndef(); ++it) {
      if (it->second.first->Semitones == input->Semitones && !it->second.second->IsUndef()) {
        found = it->second.second->HarmCenter;
        break;
      }
    }
    centers.push_back(found);
  }
  for (std::size_t i = 1; i < centers.size(); ++i) {
    if (centers[i].RootKeyEnh.IsUndef()) centers[i] = centers[i - 1];
  }
  for (std::size_t i = centers.size(); i-- > 1;) {
    if (centers[i - 1].RootKeyEnh.IsUndef()) centers[i - 1] = centers[i];
  }
  return centers;
}

std::vector<double> PositionsOf(const CHarmAnlsChords& chords,
                                const CHarmAnlsChordsWithLength& withLength) {
  std::vector<double> positions;
  double position = chords.empty() ? 0.0 : chords.front().Position;
  for (const CHarmAnlsChordWithLength& chord : withLength) {
    positions.push_back(position);
    position += chord.Length;
  }
  return positions;
}

TAnalysedPiece AnalysedPiece(const CHarmAnlsChords& chords, const CHarmonicAnalyse& analyse) {
  TAnalysedPiece piece;
  HarmChordsWithLengthFromAnalysis(chords, analyse, piece.Chords);
  piece.Positions = PositionsOf(chords, piece.Chords);
  piece.Centers = CentersOfChords(analyse, chords, piece.Positions);
  return piece;
}

TAnalysedPiece AnalyseChords(const CHarmAnlsChords& chords, CHarmonicAnalyse::TAnalyse method) {
  if (chords.empty()) return {};
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChords(chords, {}, method);
  return AnalysedPiece(chords, analyse);
}

// A lead sheet's chords on the nearest whole beat (quarter note), as the chord lists and the
// annotations place theirs: a chord played a fraction of a beat early or late is heard on the
// beat, and of chords that land on the same beat the last one stays (the analysis drops a
// chord that takes no time). Without this, the few chords of a quarter or half beat would
// let the search fill the last beats of a progression with runs of fragments.
void PlaceOnWholeBeats(TMusicXMLDoc& doc) {
  for (TMusicXMLHarmony& harmony : doc.Harmonies) {
    const double start = std::round(harmony.Position);
    const double end = std::round(harmony.Position + harmony.Length);
    harmony.Position = start;
    harmony.Length = std::max(0.0, end - start);
  }
}

// The chord symbols of a lead sheet as a chord list, to show what is read; the analysis
// reads the document itself, with its keys and exact positions.
std::string LeadSheetChordList(const TMusicXMLDoc& doc) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromMusicXMLDoc(doc, CHarmonicAnalyse::kAnalyseNone);
  CHarmAnlsChords chords = analyse.InputChords();
  if (chords.empty()) return {};
  // The closing chord stands in the tree only.
  double end = chords.back().Position;
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
        if (chord.IsUndef()) end = std::max(end, chord.Position);
      }
    }
  }
  chords.emplace_back(CHarmAnlsChord_Undef, end);
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = 1;
  return ChordListText(chords, prefs, "N.C.") + "\n";
}

// Chords with their positions named; the distances are the key numbers, so the center is C.
TAnalysedPiece PositionedPiece(const std::string& text) {
  CHarmAnlsChords chords = HarmChordsFromChordString(text);
  std::stable_sort(chords.begin(), chords.end(),
                   [](const auto& a, const auto& b) { return a.Position < b.Position; });
  TAnalysedPiece piece;
  for (std::size_t i = 0; i + 1 < chords.size(); ++i) {
    const double length = chords[i + 1].Position - chords[i].Position;
    if (!(length > 0.0)) continue;
    piece.Chords.emplace_back(static_cast<const CHarmAnlsChord&>(chords[i]), length);
    piece.Positions.push_back(chords[i].Position);
    piece.Centers.push_back(CMajor());
  }
  return piece;
}

}  // namespace

std::vector<fs::path> MarkovInputFiles(const std::vector<std::string>& arguments) {
  std::vector<fs::path> files;
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (fs::is_directory(argument, error)) {
      std::vector<fs::path> found;
      for (const auto& entry : fs::recursive_directory_iterator(argument, error)) {
        if (entry.is_regular_file(error) && IsChordFile(entry.path()))
          found.push_back(entry.path());
      }
      std::sort(found.begin(), found.end());
      files.insert(files.end(), found.begin(), found.end());
    } else if (fs::exists(argument, error)) {
      files.emplace_back(argument);
    } else {
      throw InputError("no such file or folder \"" + argument + "\"");
    }
  }
  return files;
}

TMarkovPiece ReadMarkovPiece(const fs::path& file) {
  std::string bytes = ReadInputBytes(file.string(), platform::TReadKind::kMusicXml);
  TMarkovPiece piece{file.string(), TMarkovPieceKind::kChordList, {}, {}};
  if (LooksLikeMusicXml(bytes)) {
    piece.Kind = TMarkovPieceKind::kMusicXml;
    piece.Doc = ImportMusicXmlHarmonies(piece.Source, std::move(bytes));
    PlaceOnWholeBeats(piece.Doc);
    piece.Text = LeadSheetChordList(piece.Doc);
    return piece;
  }
  CheckInputSize(file.string(), bytes.size(), platform::TReadKind::kChordList);
  CheckInputText(file.string(), bytes);
  if (LooksLikeHarteAnnotation(bytes)) {
    piece.Kind = TMarkovPieceKind::kAnnotation;
    piece.Text = HarteAnnotationToChordList(bytes);
  } else {
    piece.Kind = FirstWord(bytes).starts_with("(") ? TMarkovPieceKind::kPositioned
                                                   : TMarkovPieceKind::kChordList;
    piece.Text = std::move(bytes);
  }
  return piece;
}

TAnalysedPiece AnalysePiece(const TMarkovPiece& piece, CHarmonicAnalyse::TAnalyse method) {
  switch (piece.Kind) {
    case TMarkovPieceKind::kPositioned:
      return PositionedPiece(piece.Text);
    case TMarkovPieceKind::kMusicXml: {
      CHarmonicAnalyse analyse;
      analyse.AnalyseFromMusicXMLDoc(piece.Doc, method);
      return AnalysedPiece(analyse.InputChords(), analyse);
    }
    default:
      return AnalyseChordList(piece.Text, method);
  }
}

TAnalysedPiece AnalyseChordList(const std::string& text, CHarmonicAnalyse::TAnalyse method) {
  return AnalyseChords(ParseStringIntoHarmAnlsChords::ParseIntoChords(text, ChordListParse()),
                       method);
}

std::vector<std::vector<CMarkovObject>> MarkovChordRuns(const CHarmAnlsChordsWithLength& chords,
                                                        std::size_t minimum) {
  std::vector<CMarkovObject> objects;
  MarkovObjectsVectorForHarmChords(chords, objects);
  std::vector<std::vector<CMarkovObject>> runs(1);
  for (const CMarkovObject& object : objects) {
    if (object.IsGap()) {
      if (!runs.back().empty()) runs.emplace_back();
      continue;
    }
    runs.back().push_back(object);
  }
  std::erase_if(runs, [minimum](const auto& run) { return run.size() < minimum || run.empty(); });
  return runs;
}

}  // namespace harmony::tool
