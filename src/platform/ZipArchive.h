#pragma once
// Zip archives read from memory through libzip: the names of the entries and the bytes of
// one. Compressed MusicXML files are such archives. An archive comes from outside, so every
// read is bounded by a size the caller gives, whatever the archive claims.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harmony::platform {

class ZipArchive {
 public:
  // The archive held in `bytes`; nothing, with `error` set, when they are no zip archive.
  static std::unique_ptr<ZipArchive> FromBytes(std::string bytes, std::string& error);
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  // The full names of the entries in archive order ("META-INF/container.xml"); folders end
  // in "/".
  const std::vector<std::string>& EntryNames() const { return _names; }
  bool HasEntry(std::string_view name) const;
  // The bytes of the entry `name`; nothing, with `error` set, when it is missing, cannot be
  // decompressed, or would be larger than `maxSize`.
  std::optional<std::string> Read(std::string_view name, std::size_t maxSize,
                                  std::string& error) const;

 private:
  ZipArchive() = default;

  std::string _bytes;  // libzip reads from here while the archive is open
  void* _archive = nullptr;
  std::vector<std::string> _names;
};

}  // namespace harmony::platform
