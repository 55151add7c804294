#include "platform/CompressedFileWrapper.h"

#include <sstream>

#include "platform/BoundedRead.h"

namespace harmony::platform {

namespace {

// Files and folders of an archive as a tree: "a/b/c.xml" makes the folders a and a/b.
void AddEntry(std::map<std::string, CompressedFileWrapper::Entry>& level, const std::string& fullName) {
  std::map<std::string, CompressedFileWrapper::Entry>* children = &level;
  std::size_t start = 0;
  for (std::size_t slash = fullName.find('/'); slash != std::string::npos;
       slash = fullName.find('/', start)) {
    CompressedFileWrapper::Entry& folder = (*children)[fullName.substr(start, slash - start)];
    folder.isDirectory = true;
    folder.fullName = fullName.substr(0, slash + 1);
    children = &folder.children;
    start = slash + 1;
  }
  if (start < fullName.size()) {
    CompressedFileWrapper::Entry& file = (*children)[fullName.substr(start)];
    file.fullName = fullName;
  }
}

}  // namespace

std::unique_ptr<CompressedFileWrapper> CompressedFileWrapper::Open(const std::string& path,
                                                                   std::size_t maxFileSize,
                                                                   std::string& error) {
  TBoundedRead read = ReadBounded(path, maxFileSize);
  if (!read) {
    error = read.error->Message();
    return nullptr;
  }
  return FromBytes(std::move(read.bytes), error);
}

std::unique_ptr<CompressedFileWrapper> CompressedFileWrapper::FromBytes(std::string bytes,
                                                                        std::string& error) {
  std::unique_ptr<ZipArchive> archive = ZipArchive::FromBytes(std::move(bytes), error);
  if (!archive) return nullptr;
  std::unique_ptr<CompressedFileWrapper> wrapper(new CompressedFileWrapper());
  for (const std::string& name : archive->EntryNames()) AddEntry(wrapper->_top, name);
  wrapper->_archive = std::move(archive);
  return wrapper;
}

std::optional<std::string> CompressedFileWrapper::regularFileContents(const Entry& entry,
                                                                      std::size_t maxSize,
                                                                      std::string& error) const {
  if (entry.isDirectory) {
    error = "\"" + entry.fullName + "\" is a folder";
    return std::nullopt;
  }
  return _archive->Read(entry.fullName, maxSize, error);
}

}  // namespace harmony::platform
