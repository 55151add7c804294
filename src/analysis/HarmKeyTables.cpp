// The function table and the weights of the key estimator, as the key-eval program fitted
// them on the training four fifths of the Billboard songs (harmony_key_eval --print-fit).
// Rows are the degrees 0..11 of the root above the tonic; columns the chord classes major,
// minor, dominant seventh, diminished and other. Read in major: I (-1.18) and IV (-1.88)
// and V (-2.32) major, vi (-2.89) and ii (-3.09) minor, V7 (-2.99) and bVII (-3.74) lead;
// in minor: i (-0.96) far ahead, then bVI (-2.48), bVII (-2.57), iv (-2.87) and bIII (-3.07).

#include "harmony/analysis/HarmKeyEstimator.h"

namespace harmony {

namespace {

// clang-format off
const THarmKeyFunctionTable kFunctionTable{{
    {{
        {-1.184f, -5.368f, -3.167f, -7.550f, -3.778f},
        {-4.738f, -7.599f, -6.617f, -7.232f, -7.129f},
        {-4.126f, -3.090f, -4.570f, -6.755f, -6.187f},
        {-4.732f, -6.127f, -6.557f, -7.178f, -7.404f},
        {-5.597f, -3.924f, -5.454f, -7.112f, -6.696f},
        {-1.883f, -4.520f, -4.258f, -7.610f, -5.593f},
        {-5.116f, -6.716f, -6.412f, -6.754f, -7.575f},
        {-2.323f, -5.049f, -2.991f, -7.909f, -4.025f},
        {-4.692f, -6.526f, -5.924f, -7.344f, -6.642f},
        {-4.772f, -2.892f, -5.108f, -7.388f, -5.897f},
        {-3.736f, -6.293f, -5.808f, -7.547f, -6.139f},
        {-5.877f, -6.086f, -6.819f, -7.071f, -7.056f},
    }},
    {{
        {-4.091f, -0.957f, -5.758f, -6.544f, -3.193f},
        {-5.529f, -5.348f, -6.092f, -6.364f, -6.231f},
        {-5.518f, -4.632f, -6.250f, -5.956f, -5.798f},
        {-3.074f, -5.358f, -5.535f, -6.544f, -5.099f},
        {-6.068f, -6.337f, -6.515f, -6.523f, -6.223f},
        {-3.537f, -2.866f, -3.952f, -6.407f, -3.970f},
        {-6.039f, -6.069f, -6.544f, -6.544f, -6.073f},
        {-3.979f, -3.383f, -3.713f, -6.166f, -4.194f},
        {-2.479f, -6.088f, -5.166f, -6.384f, -5.458f},
        {-5.967f, -5.561f, -6.157f, -6.449f, -6.307f},
        {-2.566f, -5.784f, -5.125f, -6.544f, -4.550f},
        {-6.345f, -6.195f, -6.544f, -6.443f, -6.322f},
    }},
}};
// clang-format on

}  // namespace

const THarmKeyFunctionTable& HarmKeyDefaultFunctionTable() { return kFunctionTable; }

THarmKeyWeights HarmKeyDefaultWeights() { return {2.0, 1.0, 0.5, 0.5, 0.0}; }

}  // namespace harmony
