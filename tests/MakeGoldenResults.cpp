// Writes the golden results (see GoldenResults.h) to the file named on the command line, or
// to standard output. Run it only when a change of results is meant, and read the diff.

#include <fstream>
#include <iostream>

#include "GoldenResults.h"

int main(int argc, char** argv) {
  if (argc > 2) {
    std::cerr << "usage: " << argv[0] << " [FILE]\n";
    return 2;
  }
  if (argc == 1) {
    harmony::golden::WriteGoldenResults(std::cout);
    return 0;
  }
  std::ofstream out(argv[1], std::ios::binary);
  harmony::golden::WriteGoldenResults(out);
  out.close();
  if (!out) {
    std::cerr << "can't write " << argv[1] << '\n';
    return 1;
  }
  return 0;
}
