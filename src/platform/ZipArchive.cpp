#include "platform/ZipArchive.h"

#include <zip.h>

#include <algorithm>
#include <cstdint>

namespace harmony::platform {

namespace {

std::string LibzipMessage(zip_error_t* error) {
  std::string message = zip_error_strerror(error);
  zip_error_fini(error);
  return message;
}

}  // namespace

std::unique_ptr<ZipArchive> ZipArchive::FromBytes(std::string bytes, std::string& error) {
  std::unique_ptr<ZipArchive> archive(new ZipArchive());
  archive->_bytes = std::move(bytes);
  zip_error_t zipError;
  zip_error_init(&zipError);
  zip_source_t* source =
      zip_source_buffer_create(archive->_bytes.data(), archive->_bytes.size(), 0, &zipError);
  if (source == nullptr) {
    error = LibzipMessage(&zipError);
    return nullptr;
  }
  zip_t* zip = zip_open_from_source(source, ZIP_RDONLY, &zipError);
  if (zip == nullptr) {
    zip_source_free(source);
    error = LibzipMessage(&zipError);
    return nullptr;
  }
  zip_error_fini(&zipError);
  archive->_archive = zip;
  const zip_int64_t count = zip_get_num_entries(zip, 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    const char* name = zip_get_name(zip, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS);
    archive->_names.emplace_back(name == nullptr ? "" : name);
  }
  return archive;
}

ZipArchive::~ZipArchive() {
  if (_archive != nullptr) zip_discard(static_cast<zip_t*>(_archive));
}

bool ZipArchive::HasEntry(std::string_view name) const {
  return std::find(_names.begin(), _names.end(), name) != _names.end();
}

std::optional<std::string> ZipArchive::Read(std::string_view name, std::size_t maxSize,
                                            std::string& error) const {
  const auto found = std::find(_names.begin(), _names.end(), name);
  if (found == _names.end()) {
    error = "no entry \"" + std::string(name) + "\" in the archive";
    return std::nullopt;
  }
  zip_t* zip = static_cast<zip_t*>(_archive);
  const auto index = static_cast<zip_uint64_t>(found - _names.begin());
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_stat_index(zip, index, 0, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE) != 0 &&
      stat.size > maxSize) {
    error = "the entry \"" + std::string(name) + "\" is larger than " + std::to_string(maxSize) +
            " bytes";
    return std::nullopt;
  }
  zip_file_t* file = zip_fopen_index(zip, index, 0);
  if (file == nullptr) {
    error = zip_strerror(zip);
    return std::nullopt;
  }
  std::string bytes;
  char buffer[65536];
  for (;;) {
    const zip_int64_t got = zip_fread(file, buffer, sizeof buffer);
    if (got < 0) {
      error = zip_file_strerror(file);
      zip_fclose(file);
      return std::nullopt;
    }
    if (got == 0) break;
    // The size in the directory may lie: the bound holds for what is really inflated.
    if (bytes.size() + static_cast<std::size_t>(got) > maxSize) {
      zip_fclose(file);
      error = "the entry \"" + std::string(name) + "\" is larger than " + std::to_string(maxSize) +
              " bytes";
      return std::nullopt;
    }
    bytes.append(buffer, static_cast<std::size_t>(got));
  }
  zip_fclose(file);
  return bytes;
}

}  // namespace harmony::platform
