#pragma once
// Shared by the key commands: reading a whole key name, and a small table printer whose
// columns are padded by code points, so names with Unicode sharp and flat signs line up.

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "Command.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/TextUtil.h"

namespace harmony::tool {

// The key that the whole text names ("F#", "Bbb", "Cis"); InputError for anything else.
inline CKeyEnh ReadWholeKey(const std::string& text, const CChordNamePrefs& prefs) {
  CKeyEnh key;
  int consumed = 0;
  key.SetFromString(text, &consumed, prefs);
  std::string converted = text;
  ConvertUtf8SharpAndFlatToAscii(converted);
  const bool onlyBlanksLeft =
      converted.find_first_not_of(' ', static_cast<std::size_t>(consumed)) == std::string::npos;
  if (key.KeyNr == kKeyNrUndef || !onlyBlanksLeft) {
    throw InputError("\"" + text + "\" is not a key name (a letter A..H with #, b, bb, x or is)");
  }
  return key;
}

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
