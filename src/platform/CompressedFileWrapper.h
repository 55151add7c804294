#pragma once
// A compressed file opened as a tree of named entries, whatever its name or content claims:
// the top-level entries by name, the entries of a folder by name, the bytes of a file. Built
// on ZipArchive; every read is bounded.

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/ZipArchive.h"

namespace harmony::platform {

class CompressedFileWrapper {
 public:
  struct Entry {
    bool isDirectory = false;
    std::string fullName;                  // the name in the archive ("META-INF/container.xml")
    std::map<std::string, Entry> children;  // of a folder, by their own names
  };

  // The archive in the file at `path` (at most `maxFileSize` bytes); nothing, with `error`
  // set, when the file cannot be read or is no zip archive.
  static std::unique_ptr<CompressedFileWrapper> Open(const std::string& path,
                                                     std::size_t maxFileSize, std::string& error);
  static std::unique_ptr<CompressedFileWrapper> FromBytes(std::string bytes, std::string& error);

  // The top-level entries by name; a folder appears once, with its entries below it.
  const std::map<std::string, Entry>& fileWrappers() const { return _top; }
  // The bytes of a file entry, at most `maxSize`; nothing for a folder or on error.
  std::optional<std::string> regularFileContents(const Entry& entry, std::size_t maxSize,
                                                 std::string& error) const;

 private:
  CompressedFileWrapper() = default;
  std::unique_ptr<ZipArchive> _archive;
  std::map<std::string, Entry> _top;
};

}  // namespace harmony::platform
