#pragma once
// A log file for long training runs: each entry is stamped with the local date and time.

#include <fstream>
#include <ostream>
#include <string>

#include "harmony/Trace.h"

namespace harmony {

class LogWriter : public std::ofstream, public TraceFamily<LogWriter> {
 public:
  LogWriter() = default;

  // Empties the file and writes a header: 64 hyphens, "New log created on " with the time,
  // 64 hyphens.
  void open(const std::string& path);
  // Opens for appending and writes nothing.
  void open_for_append(const std::string& path);
  // Closes; a failure sets the stream's fail state.
  void close();

  // The time and "  \t\t\t\t\t\t\t\t\t| ", then `text` as a line. asctime's line feed comes
  // before the bar, so the text starts its own line.
  void append(const std::string& text);
  void append_plain(const std::string& text);
  void append_timestamp();
  // The local time as asctime writes it, with its final line feed.
  static std::string get_time();

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
