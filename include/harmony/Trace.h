#pragma once
// The trace family every class of harmony carries: full and brief debug forms, an
// initializer-list form that reads like a constructor call, and stream output.
//
// A class derives from TraceFamily<Itself> and provides three const members:
//   void WriteTrace(std::ostream&) const;            full form, begins with "ClassName: "
//   void WriteTraceBrief(std::ostream&) const;       brief form
//   void WriteInitializerList(std::ostream&) const;  e.g. "CKeyEnh(5, TEnh_n)"
// The base is empty, so value classes keep their size and stay trivially copyable.

#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

namespace harmony {

template <class Derived>
class TraceFamily {
 public:
  void Trace() const {
    self().WriteTrace(std::cout);
    std::cout << '\n';
  }
  void TraceBrief() const {
    self().WriteTraceBrief(std::cout);
    std::cout << '\n';
  }
  // For a debugger's watch window: one static buffer per class, overwritten by every call,
  // not thread-safe, cut at 1024 bytes.
  const char* TraceStr() const {
    static char buffer[1024];
    std::snprintf(buffer, sizeof buffer, "%s", TraceString().c_str());
    return buffer;
  }
  std::string TraceString() const {
    std::ostringstream out;
    self().WriteTrace(out);
    return out.str();
  }
  std::string TraceBriefString() const {
    std::ostringstream out;
    self().WriteTraceBrief(out);
    return out.str();
  }
  void TraceForInitializerList() const {
    self().WriteInitializerList(std::cout);
    std::cout << '\n';
  }
  std::string StringForInitializerList() const {
    std::ostringstream out;
    self().WriteInitializerList(out);
    return out.str();
  }
  friend std::ostream& operator<<(std::ostream& out, const Derived& value) {
    value.WriteTrace(out);
    return out;
  }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};

}  // namespace harmony
