#pragma once
// The dictionary type that the FromDictionary readers of harmony take. The JSON that the
// classes write is produced by their own AppendJSONString; this type is only for reading.

#include <nlohmann/json_fwd.hpp>

namespace harmony {
using JsonDict = nlohmann::json;
}
