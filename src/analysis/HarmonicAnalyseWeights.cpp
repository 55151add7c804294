// The analyser's fallback for finding centers: the weight census of each center's chords.

#include <cstddef>

#include "harmony/analysis/HarmCenterWeightAnalysis.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {

void CHarmonicAnalyse::_FindAndInsertHarmCentersUsingCenterWeightAnalysis(
    const CHarmCenterWeightAnalysisParams& /*params*/, TOnlyUndefCenters only) {
  for (CHarmAnlsSignKey& signKey : _HarmSignKeys) {
    CHarmAnlsCenters& centers = signKey.HarmCenters;
    for (auto center = centers.begin(); center != centers.end(); ++center) {
      if (only == kOnlyUndefCenters && !center->IsUndef()) continue;
      if (center->HarmChords.empty()) continue;

      CHarmCenterWeightAnalysis census;
      CHarmAnlsCenters results;
      census.DetectHarmCentersFromChords(center->HarmChords, results);
      for (std::size_t r = 0; r < results.size(); ++r) {
        const CHarmAnlsCenter& result = results[r];
        center->HarmCenter = result.HarmCenter;
        if (IsHarmAnlsUndef(center->Position)) center->Position = result.Position;
        const bool last = r + 1 == results.size();
        const double end = last ? kHarmAnlsMaxDouble : results[r + 1].Position;
        if (!last) center = centers.CreateNewHarmCenterWithChordsAfterPos(center, end);
        // The census gives one result, so its center reaches to the end of the row and
        // gathers the chords of every center behind it too.
        center = centers.ChangeRangeOfHarmCenter(center, result.Position, end);
      }
      if (signKey.IsUndef()) signKey.IfUndefFillWithHarmAnlsCenter(*center);
    }
  }
}

}  // namespace harmony
