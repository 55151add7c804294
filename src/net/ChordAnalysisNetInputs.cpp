// The input form of the root-detection net, shared by the library and the net's trainer so
// that both fill the net the same way.

#include <algorithm>

#include "harmony/net/ChordAnalysisNet.h"
#include "harmony/pitch/IntvlSet.h"

namespace harmony {

void FillChordAnalysisNetInputs(const CIntvlSet& intvls, std::size_t inputCount,
                                std::vector<double>& inputs) {
  inputs.resize(inputCount);
  std::fill(inputs.begin(), inputs.end(), 0.0);
  for (int intvl : intvls) {
    if (intvl >= 0 && static_cast<std::size_t>(intvl) < inputCount) {
      inputs[static_cast<std::size_t>(intvl)] = 1.0;
    }
  }
}

}  // namespace harmony
