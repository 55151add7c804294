#include "MarkovHoldout.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>
#include <utility>

#include "MarkovPieces.h"
#include "MarkovSupport.h"
#include "platform/Random.h"

namespace harmony::tool {

namespace {

// Reshuffles of a sequence that came out in its own order before it counts as unrankable.
constexpr int kShuffleTries = 20;

struct THoldoutCounts {
  std::size_t Files = 0;
  std::size_t HeldOutFiles = 0;
  std::size_t Sequences = 0;
  std::size_t Above = 0;
  std::size_t Below = 0;
  std::size_t Equal = 0;
  std::size_t Unshuffled = 0;
};

// Fisher-Yates with the platform's source, so that the seed repeats the measure.
void Shuffle(std::vector<CMarkovObject>& objects) {
  for (std::size_t i = objects.size(); i > 1; --i) {
    std::swap(objects[i - 1], objects[platform::Random32() % i]);
  }
}

bool Shuffled(const std::vector<CMarkovObject>& real, std::vector<CMarkovObject>& shuffled) {
  for (int attempt = 0; attempt < kShuffleTries; ++attempt) {
    shuffled = real;
    Shuffle(shuffled);
    if (shuffled != real) return true;
  }
  return false;
}

void Print(const THoldoutCounts& counts, bool asJson) {
  const std::size_t ranked = counts.Above + counts.Below + counts.Equal;
  const double share = ranked == 0 ? 0.0 : static_cast<double>(counts.Above) / ranked;
  if (asJson) {
    std::cout << nlohmann::json{{"files", counts.Files},
                                {"held_out_files", counts.HeldOutFiles},
                                {"sequences", counts.Sequences},
                                {"above", counts.Above},
                                {"below", counts.Below},
                                {"equal", counts.Equal},
                                {"unshuffled", counts.Unshuffled},
                                {"share_above", share}}
                     .dump(2)
              << '\n';
    return;
  }
  std::cout << "Held out " << counts.HeldOutFiles << " of " << counts.Files << " files, "
            << counts.Sequences << " sequences: the real order rates above the shuffled one in "
            << counts.Above << " (" << std::fixed << std::setprecision(1) << 100.0 * share
            << "%), below in " << counts.Below << ", equal in " << counts.Equal;
  if (counts.Unshuffled > 0) {
    std::cout << "; " << counts.Unshuffled << " could not be put in another order";
  }
  std::cout << '\n';
}

}  // namespace

void RunMarkovHoldout(const THoldoutSettings& settings) {
  const std::vector<std::filesystem::path> files = MarkovInputFiles(settings.Inputs);
  VariableLengthMarkovModel model(settings.History);
  std::vector<std::vector<CMarkovObject>> heldOut;
  THoldoutCounts counts;
  counts.Files = files.size();
  for (std::size_t i = 0; i < files.size(); ++i) {
    const TAnalysedPiece piece = AnalysePiece(ReadMarkovPiece(files[i]), settings.Method);
    std::vector<std::vector<CMarkovObject>> runs = MarkovChordRuns(piece.Chords, 2);
    if ((i + 1) % static_cast<std::size_t>(settings.Every) == 0) {
      ++counts.HeldOutFiles;
      for (auto& run : runs) heldOut.push_back(std::move(run));
      continue;
    }
    for (const std::vector<CMarkovObject>& run : runs) {
      model.StartSequence();
      for (const CMarkovObject& object : run) model.LearnAddSymbol(object);
      model.EndSequence();
    }
  }
  platform::SeedRandom(settings.Seed);
  std::vector<CMarkovObject> shuffled;
  for (const std::vector<CMarkovObject>& real : heldOut) {
    ++counts.Sequences;
    if (!Shuffled(real, shuffled)) {
      ++counts.Unshuffled;
      continue;
    }
    const double realEvidence = RateMarkovObjects(model, real).Evidence;
    const double shuffledEvidence = RateMarkovObjects(model, shuffled).Evidence;
    if (realEvidence > shuffledEvidence) {
      ++counts.Above;
    } else if (realEvidence < shuffledEvidence) {
      ++counts.Below;
    } else {
      ++counts.Equal;
    }
  }
  Print(counts, settings.Json);
}

}  // namespace harmony::tool
