#include "harmony/net/LogWriter.h"

#include "platform/Clock.h"

namespace harmony {
namespace {

const std::string kRule(64, '-');

}  // namespace

void LogWriter::open(const std::string& path) {
  std::ofstream::open(path, std::ios::out | std::ios::trunc);
  *this << kRule << "\n"
        << "New log created on ";
  append_timestamp();
  *this << kRule << "\n";
}

void LogWriter::open_for_append(const std::string& path) {
  std::ofstream::open(path, std::ios::out | std::ios::app);
}

void LogWriter::close() { std::ofstream::close(); }

std::string LogWriter::get_time() { return platform::AsctimeNow(); }

void LogWriter::append_timestamp() { *this << get_time() << "\n"; }

void LogWriter::append(const std::string& text) {
  *this << get_time() << "  \t\t\t\t\t\t\t\t\t| " << text << "\n";
  flush();
}

void LogWriter::append_plain(const std::string& text) {
  *this << text << "\n";
  flush();
}

void LogWriter::WriteTrace(std::ostream& out) const {
  out << "LogWriter: " << (is_open() ? "open" : "closed") << (good() ? "" : ", failed");
}

void LogWriter::WriteTraceBrief(std::ostream& out) const { out << (is_open() ? "open" : "closed"); }

void LogWriter::WriteInitializerList(std::ostream& out) const { out << "LogWriter()"; }

}  // namespace harmony
