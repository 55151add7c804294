#pragma once
// The text forms shared by the containers of the analysis tree: a titled trace block, the
// brief list and the initializer list.

#include <limits>
#include <ostream>

#include "platform/TraceOut.h"

namespace harmony::harmanls {

// "Title: {", one element's full trace a line, "}".
template <class TContainer>
void WriteTraceBlock(std::ostream& out, const char* title, const TContainer& elements) {
  out << title << ": ";
  platform::TraceOutContainerBeginEndl(out);
  for (const auto& element : elements) {
    element.WriteTrace(out);
    platform::TraceOutContainerEndl(out);
  }
  platform::TraceOutContainerEndEndl(out);
}

// "{", each element's brief form followed by a blank, "}".
template <class TContainer>
void WriteBriefList(std::ostream& out, const TContainer& elements) {
  out << '{';
  for (const auto& element : elements) {
    element.WriteTraceBrief(out);
    out << ' ';
  }
  out << '}';
}

// A position, length or probability as code would write it.
inline void WriteInitializerDouble(std::ostream& out, double value) {
  if (value <= std::numeric_limits<double>::lowest()) {
    out << "kHarmAnlsUndefDouble";
  } else {
    out << value;
  }
}

// "Name({a, b, c})"
template <class TContainer>
void WriteInitializerBlock(std::ostream& out, const char* name, const TContainer& elements) {
  out << name << "({";
  bool first = true;
  for (const auto& element : elements) {
    if (!first) out << ", ";
    first = false;
    element.WriteInitializerList(out);
  }
  out << "})";
}

// "[", a line end, each element's JSON followed by "," and a line end (the last one too),
// "]" and a line end. Each line end flushes.
template <class TContainer>
void AppendJSONList(std::ostream& out, const TContainer& elements) {
  out << '[' << std::endl;
  for (const auto& element : elements) {
    element.AppendJSONString(out);
    out << ',' << std::endl;
  }
  out << ']' << std::endl;
}

}  // namespace harmony::harmanls
