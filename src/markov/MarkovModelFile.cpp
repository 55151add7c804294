// The model file: one JSON object holding the longest history, the alphabet, the transition
// map by alphabet positions and the history; written with statistics files beside it.

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <limits>
#include <sstream>

#include "harmony/markov/IteratorIndexConverter.h"
#include "harmony/markov/VariableLengthMarkovModel.h"
#include "platform/BoundedRead.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

constexpr int kIndexWidth = 4;
constexpr int kCountWidth = 3;

// An index or count of the file: a number, or a string read as atoll does.
long long IntegerValue(const JsonDict& value) {
  if (value.is_number_integer()) return value.get<long long>();
  if (value.is_number_unsigned()) return static_cast<long long>(value.get<unsigned long long>());
  if (value.is_number_float()) {
    constexpr double kLimit = 9.0e18;
    return static_cast<long long>(std::clamp(value.get<double>(), -kLimit, kLimit));
  }
  if (value.is_string()) return std::atoll(value.get_ref<const std::string&>().c_str());
  return 0;
}

const JsonDict& MemberOrNull(const JsonDict& dict, const char* key) {
  static const JsonDict kNull;
  const JsonDict* member = platform::JsonMember(dict, key);
  return member != nullptr ? *member : kNull;
}

void ReadHistory(const JsonDict& array, CIteratorIndexConverter& converter, TMarkovHistory& out) {
  out.clear();
  if (!array.is_array()) return;
  for (const JsonDict& index : array) {
    out.push_back(converter.InsertIfUniqueAndReturnPointer(IntegerValue(index)));
  }
}

void WriteIndices(std::ostream& out, const TMarkovHistory& history,
                  CIteratorIndexConverter& converter) {
  out << '[';
  for (std::size_t i = 0; i < history.size(); ++i) {
    if (i > 0) out << ',';
    out << std::setw(kIndexWidth) << converter.InsertIfUniqueAndReturnIndex(history[i]);
  }
  out << ']';
}

}  // namespace

// --- Writing

void VariableLengthMarkovModel::AppendJSONString(std::ostream& out) const {
  // The converter only reads the alphabet; it takes it as it takes a model being read.
  CIteratorIndexConverter converter(const_cast<CMarkovObjects&>(_Objects));
  out << "{\n\"VariableLengthMarkovModel\":\n{\n";
  out << "\"MaxHistoryLength\":" << _MaxHistoryLength << ",\n";
  out << "\"CMarkovObjects\":";
  _Objects.AppendJSONString(out);
  out << ",\n\"TransitionMap\":";
  TransitionMapAppendToJSON(out, converter);
  out << ",\n\"History\":";
  WriteIndices(out, _History, converter);
  out << "\n}\n}\n";
}

bool VariableLengthMarkovModel::SaveToFile(const std::string& path) const {
  std::ofstream file(path, std::ios::out | std::ios::trunc);
  if (!file) return false;
  AppendJSONString(file);
  file.flush();
  return static_cast<bool>(file);
}

void VariableLengthMarkovModel::TransitionMapAppendToJSON(
    std::ostream& out, CIteratorIndexConverter& converter) const {
  TMarkovStatsByHistoryLength stats;
  unsigned long longestHistory = 0;
  out << '[';
  for (auto entry = _TransitionMap.begin(); entry != _TransitionMap.end(); ++entry) {
    if (entry != _TransitionMap.begin()) out << ",\n";
    const TMarkovHistory& history = entry->first;
    out << '[';
    WriteIndices(out, history, converter);
    out << ",[";
    TMarkovHistoryStats& historyStats = stats[history.size()];
    for (auto next = entry->second.begin(); next != entry->second.end(); ++next) {
      if (next != entry->second.begin()) out << ',';
      out << '[' << std::setw(kIndexWidth) << converter.InsertIfUniqueAndReturnIndex(next->first)
          << ',' << std::setw(kCountWidth) << next->second << ']';
      historyStats.Counts.push_back(next->second);
    }
    historyStats.Possibilities.push_back(entry->second.size());
    longestHistory = std::max<unsigned long>(longestHistory, history.size());
    out << "]]";
  }
  out << ']';
  // One pair of files for each history length the map holds.
  const unsigned long last = std::min<unsigned long>(_MaxHistoryLength, longestHistory);
  for (unsigned long length = 1; length <= last; ++length) {
    DEBUG_PrintStatsForHistoryLength(length, kMarkovStatsFolder, stats);
  }
}

void VariableLengthMarkovModel::DEBUG_PrintStatsForHistoryLength(
    unsigned long historyLength, const std::string& path,
    const TMarkovStatsByHistoryLength& stats) {
  const auto found = stats.find(historyLength);
  const TMarkovHistoryStats none;
  const TMarkovHistoryStats& lengthStats = found != stats.end() ? found->second : none;
  const auto write = [&](const char* name, const std::vector<std::uint64_t>& values) {
    std::ofstream file(path + name + std::to_string(historyLength) + ".csv");
    for (std::uint64_t value : values) file << value << '\n';
  };
  write("transitionCountsH", lengthStats.Counts);
  write("transitionPossibilitiesH", lengthStats.Possibilities);
}

// --- Reading

bool VariableLengthMarkovModel::JSONDeserialization_Helper::VariableLengthMarkovModelFromJSONFile(
    const std::string& path, VariableLengthMarkovModel& model) {
  const platform::TBoundedRead read =
      platform::ReadBounded(path, platform::TReadKind::kMarkovModel);
  if (!read) {
    model.Clear();
    return false;
  }
  return VariableLengthMarkovModelFromJSONString(read.bytes, model);
}

bool VariableLengthMarkovModel::JSONDeserialization_Helper::VariableLengthMarkovModelFromJSONString(
    const std::string& text, VariableLengthMarkovModel& model) {
  model.Clear();
  // The alphabet keeps the trailing commas of the reserved kinds, so the relaxed reading.
  const std::optional<JsonDict> dict = platform::ParseRelaxedJson(text);
  if (!dict) return false;
  const JsonDict* member = platform::JsonMember(*dict, "VariableLengthMarkovModel");
  if (member == nullptr || !member->is_object()) return false;
  VariableLengthMarkovModelFromJSONDictionary(*member, model);
  return true;
}

void VariableLengthMarkovModel::JSONDeserialization_Helper::
    VariableLengthMarkovModelFromJSONDictionary(const JsonDict& dict,
                                                VariableLengthMarkovModel& model) {
  model.Clear();
  model._MaxHistoryLength =
      static_cast<std::uint64_t>(platform::JsonInteger(dict, "MaxHistoryLength", 0));
  // Splicing keeps the new objects where they are, so iterators to them stay valid.
  CMarkovObjects objects =
      CMarkovObjects::JSONDeserialization_Helper::CMarkovObjectsFromJSONDictionary(
          MemberOrNull(dict, "CMarkovObjects"));
  model._Objects.splice(model._Objects.end(), objects);
  CIteratorIndexConverter converter(model._Objects);
  MarkovTransitionMapFromJSONDictionary(MemberOrNull(dict, "TransitionMap"), converter, model);
  HistoryFromJSONDictionary(MemberOrNull(dict, "History"), converter, model);
}

void VariableLengthMarkovModel::JSONDeserialization_Helper::MarkovTransitionMapFromJSONDictionary(
    const JsonDict& array, CIteratorIndexConverter& converter, VariableLengthMarkovModel& model) {
  TMarkovTransitionMap map(model.HistoryLess());
  if (array.is_array()) {
    TMarkovHistory history;
    for (const JsonDict& entry : array) {
      if (!entry.is_array() || entry.size() < 2) continue;
      ReadHistory(entry[0], converter, history);
      TMarkovCounts& counts = map.try_emplace(history, model.SymbolLess()).first->second;
      if (!entry[1].is_array()) continue;
      for (const JsonDict& pair : entry[1]) {
        if (!pair.is_array() || pair.size() < 2) continue;
        counts[converter.InsertIfUniqueAndReturnPointer(IntegerValue(pair[0]))] =
            static_cast<std::uint64_t>(IntegerValue(pair[1]));
      }
    }
  }
  model._TransitionMap = std::move(map);
}

void VariableLengthMarkovModel::JSONDeserialization_Helper::HistoryFromJSONDictionary(
    const JsonDict& array, CIteratorIndexConverter& converter, VariableLengthMarkovModel& model) {
  ReadHistory(array, converter, model._History);
}

}  // namespace harmony
