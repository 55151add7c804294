#pragma once
// The pieces the markov commands learn from and rate, read from files or given as text, and
// how a piece becomes symbols of the model: its chords are analysed, each takes its length
// and its distances to its harmonic center, and the stretches of known chords between
// no-chords (and chords no center holds) are the sequences the model learns.

#include <filesystem>
#include <string>
#include <vector>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/markov/MarkovObject.h"
#include "harmony/musicxml/MusicXMLDoc.h"

namespace harmony::tool {

enum class TMarkovPieceKind {
  kChordList,   // the chord-list grammar of `harmony analyse`
  kPositioned,  // "(0.0,C);(4.0,G7);(8.0,U)": distances counted from C, not analysed
  kAnnotation,  // a Billboard annotation in Harte's syntax, read as a chord list
  kMusicXml,    // the chord symbols of a MusicXML lead sheet, plain or compressed
};

struct TMarkovPiece {
  std::string Source;
  TMarkovPieceKind Kind = TMarkovPieceKind::kChordList;
  // The chord list (an annotation already converted, a lead sheet's chords rounded to
  // beats) or the positioned string.
  std::string Text;
  // The harmony import of a lead sheet, which is what is analysed.
  TMusicXMLDoc Doc;
};

// The files named, and the files of named folders (searched through, in name order) that end
// in ".txt", ".chords", ".musicxml", ".xml" or ".mxl". A path that doesn't exist is an
// InputError.
std::vector<std::filesystem::path> MarkovInputFiles(const std::vector<std::string>& arguments);

// The piece of one file, its kind told by its content. A file that can't be read, or MusicXML
// that is no well-formed XML, is an InputError.
TMarkovPiece ReadMarkovPiece(const std::filesystem::path& file);

// A piece after the analysis: its chords by lengths with their distances, where each starts,
// and the center that names it (the undefined center where none does).
struct TAnalysedPiece {
  CHarmAnlsChordsWithLength Chords;
  std::vector<double> Positions;
  std::vector<CHarmCenterLite> Centers;
};

// The analyser is given the chords without the no-chords, which it reads better so; the
// no-chords keep their place as chords without distances.
TAnalysedPiece AnalysePiece(const TMarkovPiece& piece, CHarmonicAnalyse::TAnalyse method);
TAnalysedPiece AnalyseChordList(const std::string& text, CHarmonicAnalyse::TAnalyse method);

// The stretches of at least `minimum` chords between gaps, as model objects.
std::vector<std::vector<CMarkovObject>> MarkovChordRuns(const CHarmAnlsChordsWithLength& chords,
                                                        std::size_t minimum);

}  // namespace harmony::tool
