#include "harmony/markov/IteratorIndexConverter.h"

#include <algorithm>
#include <iterator>

namespace harmony {

CIteratorIndexConverter::CIteratorIndexConverter(CMarkovObjects& objects) : _Objects(objects) {}

int CIteratorIndexConverter::InsertIfUniqueAndReturnIndex(CMarkovObjects::const_iterator symbol) {
  if (symbol == _Objects.cend()) return -1;
  const auto cached = _IndexByObject.find(*symbol);
  if (cached != _IndexByObject.end()) return cached->second;
  const auto found = std::find(_Objects.cbegin(), _Objects.cend(), *symbol);
  const int index =
      found == _Objects.cend() ? -1 : static_cast<int>(std::distance(_Objects.cbegin(), found));
  _IndexByObject.emplace(*symbol, index);
  return index;
}

TMarkovSymbol CIteratorIndexConverter::InsertIfUniqueAndReturnPointer(long long index) {
  const auto cached = _SymbolByIndex.find(index);
  if (cached != _SymbolByIndex.end()) return cached->second;
  TMarkovSymbol symbol = _Objects.end();
  if (index >= 0 && static_cast<unsigned long long>(index) < _Objects.size()) {
    symbol = std::next(_Objects.begin(), static_cast<std::ptrdiff_t>(index));
  }
  _SymbolByIndex.emplace(index, symbol);
  return symbol;
}

void CIteratorIndexConverter::WriteTrace(std::ostream& out) const {
  out << "CIteratorIndexConverter: " << _Objects.size() << " objects, " << _IndexByObject.size()
      << " indices cached, " << _SymbolByIndex.size() << " symbols cached";
}

void CIteratorIndexConverter::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void CIteratorIndexConverter::WriteInitializerList(std::ostream& out) const {
  out << "CIteratorIndexConverter(" << _Objects.size() << " objects)";
}

}  // namespace harmony
