#pragma once
// harmony markov holdout: a measure of how much a model learned that holds beyond its
// corpus. Every so many files are held out of learning; each sequence of those is rated
// against the same chords in a shuffled order, and the share of real orders that rate
// higher is printed.

#include <cstdint>
#include <string>
#include <vector>

#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony::tool {

struct THoldoutSettings {
  std::vector<std::string> Inputs;
  std::uint64_t History = 3;
  // The files whose index counted from 0, plus one, is a multiple of this are held out.
  int Every = 10;
  CHarmonicAnalyse::TAnalyse Method = CHarmonicAnalyse::kAnalyseCenterWeights;
  // Seeds the shuffles.
  std::uint32_t Seed = 1;
  bool Json = false;
};

void RunMarkovHoldout(const THoldoutSettings& settings);

}  // namespace harmony::tool
