#pragma once
// Translates between the symbols of a model (iterators into its alphabet) and the integers
// of the model file: an index is the position of the object in the alphabet, from 0.

#include <map>
#include <ostream>

#include "harmony/Trace.h"
#include "harmony/markov/MarkovObject.h"

namespace harmony {

class CIteratorIndexConverter : public TraceFamily<CIteratorIndexConverter> {
 public:
  explicit CIteratorIndexConverter(CMarkovObjects& objects);

  // For writing: the position of the first alphabet object equal to the symbol's, -1 when
  // there is none. Positions are cached by object, so objects that the order can't tell
  // apart (gaps of different lengths) share the first one's index.
  int InsertIfUniqueAndReturnIndex(CMarkovObjects::const_iterator symbol);
  // For reading: the symbol at that position; end() for a negative index or one beyond
  // the alphabet.
  TMarkovSymbol InsertIfUniqueAndReturnPointer(long long index);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  CMarkovObjects& _Objects;
  std::map<CMarkovObject, int> _IndexByObject;
  std::map<long long, TMarkovSymbol> _SymbolByIndex;
};

}  // namespace harmony
