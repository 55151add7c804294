#pragma once
// A small table printer shared by the commands, whose columns are padded by code points, so
// names with Unicode sharp and flat signs line up.

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/TextUtil.h"

namespace harmony::tool {

class KeyTextTable {
 public:
  // Columns whose index is in `rightAligned` are padded on the left (numbers).
  explicit KeyTextTable(std::vector<std::string> header, std::vector<bool> rightAligned = {})
      : _rightAligned(std::move(rightAligned)) {
    _rows.push_back(std::move(header));
  }

  void AddRow(std::vector<std::string> row) { _rows.push_back(std::move(row)); }

  void Print(std::ostream& out) const {
    std::vector<std::size_t> widths;
    for (const auto& row : _rows) {
      widths.resize(std::max(widths.size(), row.size()), 0);
      for (std::size_t c = 0; c < row.size(); ++c) {
        widths[c] = std::max(widths[c], _UTF8StringLength(row[c]));
      }
    }
    for (const auto& row : _rows) {
      std::string line;
      for (std::size_t c = 0; c < row.size(); ++c) {
        const std::string padding(widths[c] - _UTF8StringLength(row[c]), ' ');
        const bool right = c < _rightAligned.size() && _rightAligned[c];
        if (c > 0) line += "  ";
        line += right ? padding + row[c] : row[c] + padding;
      }
      line.erase(line.find_last_not_of(' ') + 1);
      out << line << '\n';
    }
  }

 private:
  std::vector<std::vector<std::string>> _rows;
  std::vector<bool> _rightAligned;
};

}  // namespace harmony::tool
