// harmony_key_eval BILLBOARD_DIR [--print-fit] [--misses] [--all]: how often the key estimator, a
// plain Krumhansl-Schmuckler correlation, the first chord's root and the analyser's three ways of
// finding centers name the key of the Billboard songs.
//
// The label of a song is the tonic of its "# tonic:" lines that lasts the most beats; its mode
// is major when the chords on that tonic last longer as major or dominant chords than as
// minor ones, minor in the opposite case, and not known otherwise. Every fifth song in the
// order of the folder names (the fifth, tenth, ...) is held out: the function table and the
// weights are fitted on the other four fifths, all figures are told on the held-out fifth.
//
// --print-fit prints the fitted table and weights (as HarmKeyTables.cpp holds them) and the
// tonic accuracy of a four-fold cross-validation within the fitting songs, by which designs
// are compared; --misses lists the held-out songs whose tonic the estimator misses; --all
// tells the figures on all songs instead (most of which the fit has seen).

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "../harmony/HarteChordList.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmKeyEstimator.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace {

using namespace harmony;

struct TSong {
  std::string id;
  std::string chordList;
  CHarmAnlsChords chords;
  THarmKeyEvidence evidence;
  int tonic = -1;
  int mode = -1;  // 0 major, 1 minor, -1 not known
};

// A guess: tonic 0..11 (-1 none) and mode (-1 not known).
struct TGuess {
  int tonic = -1;
  int mode = -1;
};

int Wrap12(int value) { return ((value % 12) + 12) % 12; }

int PitchClassFromName(const std::string& name) {
  static const std::string kLetters = "CDEFGAB";
  static const std::array<int, 7> kKeys{0, 2, 4, 5, 7, 9, 11};
  if (name.empty() || kLetters.find(name[0]) == std::string::npos) return -1;
  int key = kKeys[kLetters.find(name[0])];
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (name[i] == '#') ++key;
    if (name[i] == 'b') --key;
  }
  return Wrap12(key);
}

std::string Trim(std::string text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.pop_back();
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string::npos ? std::string() : text.substr(first);
}

int CountBeats(const std::string& chordList) {
  std::istringstream tokens(chordList);
  int beats = 0;
  for (std::string token; tokens >> token;) beats += token != "|";
  return beats;
}

// The tonic with the most beats: each "# tonic:" line starts a stretch that lasts until the
// next one.
int LabelTonic(const std::string& text) {
  std::istringstream lines(text);
  std::string metre = "# metre: 4/4", stretch;
  int tonic = -1;
  std::map<int, int> beats;
  const auto close = [&] {
    if (tonic >= 0) beats[tonic] += CountBeats(tool::HarteAnnotationToChordList(stretch));
  };
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("# tonic:", 0) == 0) {
      close();
      tonic = PitchClassFromName(Trim(line.substr(8)));
      stretch = metre + "\n";
      continue;
    }
    if (line.rfind("# metre:", 0) == 0) metre = line;
    stretch += line + "\n";
  }
  close();
  int best = -1;
  for (const auto& [key, count] : beats) {
    if (best < 0 || count > beats[best]) best = key;
  }
  return best;
}

int ModeOnTonic(const THarmKeyEvidence& evidence, int tonic) {
  const auto& classes = evidence.RootClasses[tonic];
  const double major = classes[static_cast<int>(THarmKeyChordClass::Major)] +
                       classes[static_cast<int>(THarmKeyChordClass::Dominant)];
  const double minor = classes[static_cast<int>(THarmKeyChordClass::Minor)];
  return major > minor ? 0 : (minor > major ? 1 : -1);
}

std::vector<TSong> ReadSongs(const std::filesystem::path& dir) {
  std::vector<std::filesystem::path> folders;
  for (const auto& entry : std::filesystem::directory_iterator(dir)) {
    if (entry.is_directory()) folders.push_back(entry.path());
  }
  std::sort(folders.begin(), folders.end());
  std::vector<TSong> songs;
  for (const auto& folder : folders) {
    std::ifstream in(folder / "salami_chords.txt");
    std::stringstream text;
    text << in.rdbuf();
    TSong song;
    song.id = folder.filename().string();
    song.tonic = LabelTonic(text.str());
    song.chordList = tool::HarteAnnotationToChordList(text.str());
    song.chords = CHarmAnlsChords(song.chordList, TChordStringParse());
    song.evidence = CHarmKeyEstimator::Gather(song.chords);
    if (song.tonic < 0 || song.evidence.Duration <= 0.0) continue;
    song.mode = ModeOnTonic(song.evidence, song.tonic);
    songs.push_back(std::move(song));
  }
  return songs;
}

// --- Fitting

THarmKeyFunctionTable FitFunctionTable(const std::vector<const TSong*>& songs) {
  std::array<std::array<std::array<double, kHarmKeyChordClasses>, 12>, 2> counts{};
  std::array<double, 2> totals{};
  for (const TSong* song : songs) {
    if (song->mode < 0) continue;
    const int mode = std::max(song->mode, 0);
    for (int root = 0; root < 12; ++root) {
      for (int cls = 0; cls < kHarmKeyChordClasses; ++cls) {
        const double share = song->evidence.RootClasses[root][cls] / song->evidence.Duration;
        counts[mode][Wrap12(root - song->tonic)][cls] += share;
        totals[mode] += share;
      }
    }
  }
  // Add-one smoothing of the song-normalized counts: no degree is impossible.
  THarmKeyFunctionTable table{};
  constexpr double kPrior = 0.2;
  for (int mode = 0; mode < 2; ++mode) {
    for (int degree = 0; degree < 12; ++degree) {
      for (int cls = 0; cls < kHarmKeyChordClasses; ++cls) {
        table[mode][degree][cls] =
            static_cast<float>(std::log((counts[mode][degree][cls] + kPrior) /
                                        (totals[mode] + kPrior * 12 * kHarmKeyChordClasses)));
      }
    }
  }
  return table;
}

int Correct(const TSong& song, int key) {
  const int tonic = key % 12, mode = key / 12;
  return (tonic == song.tonic ? 2 : 0) +
         (song.mode >= 0 && tonic == song.tonic && mode == song.mode);
}

int BestKeyOf(const CHarmKeyEstimator& estimator, const std::vector<THarmKeyFeatures>& features) {
  int best = 0;
  double bestScore = estimator.Score(features[0]);
  for (int key = 1; key < kHarmKeyCount; ++key) {
    const double score = estimator.Score(features[key]);
    if (score > bestScore) {
      best = key;
      bestScore = score;
    }
  }
  return best;
}

// The tables from the counts, then a grid search of the profile and the weights (the weight
// of the functions stays 1: it sets the scale) for the most right tonics, then right modes,
// on the fitting songs.
THarmKeyParams FitParams(const std::vector<const TSong*>& songs) {
  THarmKeyParams best;
  best.Functions = FitFunctionTable(songs);
  int bestCorrect = -1;
  const std::array<double, 9> profileWeights{0.0, 0.5, 1.0, 1.5, 2.0, 3.0, 4.0, 6.0, 8.0};
  const std::array<double, 8> smallWeights{0.0, 0.1, 0.2, 0.35, 0.5, 0.75, 1.0, 2.0};
  const std::array<double, 4> lastWeights{0.0, 0.1, 0.25, 0.5};
  for (int profile = 0; profile < 3; ++profile) {
    THarmKeyParams params = best;
    params.Profile = static_cast<THarmKeyProfile>(profile);
    const CHarmKeyEstimator featureEstimator(params);
    std::vector<std::vector<THarmKeyFeatures>> features;
    for (const TSong* song : songs) {
      std::vector<THarmKeyFeatures> keys(kHarmKeyCount);
      for (int key = 0; key < kHarmKeyCount; ++key) {
        keys[key] = featureEstimator.Features(song->evidence, key);
      }
      features.push_back(std::move(keys));
    }
    for (double p : profileWeights) {
      for (double c : smallWeights) {
        for (double f : smallWeights) {
          for (double l : lastWeights) {
            params.Weights = {p, 1.0, c, f, l};
            const CHarmKeyEstimator estimator(params);
            int correct = 0;
            for (std::size_t i = 0; i < songs.size(); ++i) {
              correct += Correct(*songs[i], BestKeyOf(estimator, features[i]));
            }
            if (correct > bestCorrect) {
              bestCorrect = correct;
              best.Profile = params.Profile;
              best.Weights = params.Weights;
            }
          }
        }
      }
    }
  }
  return best;
}

// Four-fold cross-validation within the training songs: the tonic accuracy a fit reaches on
// songs it has not seen, for choosing among designs without looking at the held-out fifth.
double CrossValidatedTonics(const std::vector<const TSong*>& songs) {
  int correct = 0;
  for (std::size_t fold = 0; fold < 4; ++fold) {
    std::vector<const TSong*> fit, test;
    for (std::size_t i = 0; i < songs.size(); ++i) (i % 4 == fold ? test : fit).push_back(songs[i]);
    const CHarmKeyEstimator estimator(FitParams(fit));
    for (const TSong* song : test) {
      correct += HarmKeyNumber(estimator.Rank(song->evidence)[0].Key) % 12 == song->tonic;
    }
  }
  return 100.0 * correct / std::max<std::size_t>(songs.size(), 1);
}

// --- The methods compared

TGuess EstimatorGuess(const CHarmKeyEstimator& estimator, const TSong& song) {
  const int key = HarmKeyNumber(estimator.Rank(song.evidence)[0].Key);
  return {key % 12, key / 12};
}

// A plain correlation with one profile: Krumhansl and Schmuckler's method.
THarmKeyParams ProfileOnly(THarmKeyProfile profile) {
  THarmKeyParams params;
  params.Profile = profile;
  params.Weights = {1.0, 0.0, 0.0, 0.0, 0.0};
  return params;
}

// The key whose sections last longest: the label counts beats per tonic the same way.
TGuess LongestSectionGuess(const CHarmKeyEstimator& estimator, const TSong& song) {
  const std::vector<THarmKeySection> sections = estimator.Sections(song.chords);
  std::array<double, kHarmKeyCount> lengths{};
  const double end = song.chords.back().Position;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const double until = i + 1 < sections.size() ? sections[i + 1].Position : end;
    lengths[HarmKeyNumber(sections[i].Key)] += until - sections[i].Position;
  }
  const int key =
      static_cast<int>(std::max_element(lengths.begin(), lengths.end()) - lengths.begin());
  return {key % 12, key / 12};
}

TGuess FirstChordGuess(const TSong& song) {
  const THarmKeyChordClass cls = song.evidence.FirstClass;
  const int mode =
      cls == THarmKeyChordClass::Minor
          ? 1
          : (cls == THarmKeyChordClass::Major || cls == THarmKeyChordClass::Dominant ? 0 : -1);
  return {song.evidence.FirstRoot, mode};
}

// The root whose centers last the most quarter notes, with the type that lasts longest on it.
TGuess AnalyserGuess(CHarmonicAnalyse::TAnalyse method, const TSong& song) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(song.chordList, {}, method, TChordStringParse());
  const CHarmAnlsChords& input = analyse.InputChords();
  std::array<std::array<double, 3>, 12> lengths{};  // major, minor, other type
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      if (center.IsUndef() || center.HarmCenter.RootKeyEnh.KeyNr >= 12) continue;
      const TSignKeyType type = SignKeyTypeFromSemitones(center.HarmCenter.Semitones);
      const int kind = type == TSignKeyType::Major ? 0 : (type == TSignKeyType::Minor ? 1 : 2);
      for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
        const auto next = std::upper_bound(input.begin(), input.end(), chord.Position,
                                           [](double position, const CHarmAnlsChordWithPos& other) {
                                             return position < other.Position;
                                           });
        if (next != input.end()) {
          lengths[center.HarmCenter.RootKeyEnh.KeyNr][kind] += next->Position - chord.Position;
        }
      }
    }
  }
  TGuess guess;
  double best = 0.0;
  for (int root = 0; root < 12; ++root) {
    const auto& kinds = lengths[root];
    const double total = kinds[0] + kinds[1] + kinds[2];
    if (total <= best) continue;
    best = total;
    const int kind = static_cast<int>(std::max_element(kinds.begin(), kinds.end()) - kinds.begin());
    guess = {root, kind == 2 ? -1 : kind};
  }
  return guess;
}

struct TTally {
  int songs = 0, tonics = 0, withMode = 0, keys = 0;
  int relative = 0, parallel = 0, fifthUp = 0, fifthDown = 0, other = 0;

  void Add(const TSong& song, const TGuess& guess) {
    ++songs;
    tonics += guess.tonic == song.tonic;
    if (song.mode < 0) return;
    ++withMode;
    const int up = Wrap12(guess.tonic - song.tonic);
    if (guess.tonic == song.tonic && guess.mode == song.mode) {
      ++keys;
    } else if (guess.tonic == song.tonic) {
      ++parallel;
    } else if (guess.mode >= 0 && guess.mode != song.mode && up == (song.mode == 0 ? 9 : 3)) {
      ++relative;
    } else if (up == 7) {
      ++fifthUp;
    } else if (up == 5) {
      ++fifthDown;
    } else {
      ++other;
    }
  }
};

void PrintRow(const std::string& name, const TTally& t) {
  std::printf("| %-34s | %5.1f %% | %5.1f %% | %8d | %8d | %8d | %10d | %5d |\n", name.c_str(),
              100.0 * t.tonics / std::max(t.songs, 1), 100.0 * t.keys / std::max(t.withMode, 1),
              t.relative, t.parallel, t.fifthUp, t.fifthDown, t.other);
}

void PrintFit(const THarmKeyParams& params) {
  static const std::array<const char*, 3> kProfileNames{"KrumhanslKessler", "Temperley", "Aarden"};
  std::printf(
      "profile %s, weights profile %.2f functions %.2f cadences %.2f first %.2f last %.2f\n",
      kProfileNames[static_cast<int>(params.Profile)], params.Weights.Profile,
      params.Weights.Functions, params.Weights.Cadences, params.Weights.FirstChord,
      params.Weights.LastChord);
  std::printf("function table (mode, degree: major minor dominant diminished other):\n");
  for (int mode = 0; mode < 2; ++mode) {
    std::printf("    {{\n");
    for (int degree = 0; degree < 12; ++degree) {
      const auto& row = params.Functions[mode][degree];
      std::printf("        {%.3ff, %.3ff, %.3ff, %.3ff, %.3ff},\n", row[0], row[1], row[2], row[3],
                  row[4]);
    }
    std::printf("    }},\n");
  }
}

}  // namespace

bool HasFlag(int argc, char** argv, const std::string& flag) {
  for (int i = 2; i < argc; ++i) {
    if (argv[i] == flag) return true;
  }
  return false;
}

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: harmony_key_eval BILLBOARD_DIR [--print-fit] [--misses] [--all]\n";
    return 2;
  }
  try {
    const std::vector<TSong> songs =
        ReadSongs(std::filesystem::path(argv[1]) / "billboard-2.0-salami_chords");
    std::vector<const TSong*> training, heldOut;
    const bool all = HasFlag(argc, argv, "--all");
    for (std::size_t i = 0; i < songs.size(); ++i) {
      (i % 5 == 4 ? heldOut : training).push_back(&songs[i]);
    }
    std::vector<const TSong*> reported = heldOut;
    if (all) {
      reported.clear();
      for (const TSong& song : songs) reported.push_back(&song);
    }
    const THarmKeyParams fitted = FitParams(training);
    if (HasFlag(argc, argv, "--print-fit")) {
      PrintFit(fitted);
      std::printf("tonic accuracy of four-fold cross-validation on the fitting songs: %.1f %%\n",
                  CrossValidatedTonics(training));
    }

    if (HasFlag(argc, argv, "--misses")) {
      // Song, labelled tonic and mode (0 major, 1 minor, -1 not known), the estimate, and the
      // first bars.
      const CHarmKeyEstimator estimator(fitted);
      for (const TSong* song : heldOut) {
        const TGuess guess = EstimatorGuess(estimator, *song);
        if (guess.tonic == song->tonic) continue;
        std::string bars = song->chordList.substr(0, 120);
        std::replace(bars.begin(), bars.end(), '\n', ' ');
        std::printf("%s label %d/%d estimate %d/%d  %s\n", song->id.c_str(), song->tonic,
                    song->mode, guess.tonic, guess.mode, bars.c_str());
      }
    }
    const THarmKeyParams ks = ProfileOnly(THarmKeyProfile::KrumhanslKessler);
    const std::vector<std::pair<std::string, std::function<TGuess(const TSong&)>>> methods{
        {"estimator (fitted in this run)",
         [est = CHarmKeyEstimator(fitted)](const TSong& s) { return EstimatorGuess(est, s); }},
        {"estimator (built-in defaults)",
         [est = CHarmKeyEstimator()](const TSong& s) { return EstimatorGuess(est, s); }},
        {"estimator, longest section",
         [est = CHarmKeyEstimator(fitted)](const TSong& s) { return LongestSectionGuess(est, s); }},
        {"Krumhansl-Schmuckler (KK profile)",
         [est = CHarmKeyEstimator(ks)](const TSong& s) { return EstimatorGuess(est, s); }},
        {"profile only: Temperley",
         [est = CHarmKeyEstimator(ProfileOnly(THarmKeyProfile::Temperley))](const TSong& s) {
           return EstimatorGuess(est, s);
         }},
        {"profile only: Aarden", [est = CHarmKeyEstimator(ProfileOnly(THarmKeyProfile::Aarden))](
                                     const TSong& s) { return EstimatorGuess(est, s); }},
        {"first chord's root", FirstChordGuess},
        {"analyser: tonic progressions",
         [](const TSong& s) {
           return AnalyserGuess(CHarmonicAnalyse::kAnalyseTonicProgressions, s);
         }},
        {"analyser: cadence progressions",
         [](const TSong& s) {
           return AnalyserGuess(CHarmonicAnalyse::kAnalyseCadenceProgressions, s);
         }},
        {"analyser: center weights",
         [](const TSong& s) { return AnalyserGuess(CHarmonicAnalyse::kAnalyseCenterWeights, s); }},
    };
    std::printf("%zu songs read, %zu for fitting, %zu held out\n\n", songs.size(), training.size(),
                heldOut.size());
    std::printf("| %-34s | %7s | %7s | %8s | %8s | %8s | %10s | %5s |\n",
                all ? "method (all songs)" : "method (held-out fifth)", "tonic", "key", "relative",
                "parallel", "fifth up", "fifth down", "other");
    std::printf("|%s|---------|---------|----------|----------|----------|------------|-------|\n",
                std::string(36, '-').c_str());
    for (const auto& [name, guess] : methods) {
      TTally tally;
      for (const TSong* song : reported) tally.Add(*song, guess(*song));
      PrintRow(name, tally);
    }
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
