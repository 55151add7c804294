#pragma once
// The score inside a compressed MusicXML file (a zip archive, extension "mxl"): the root file
// that META-INF/container.xml names, or, where the container cannot be read (many exports
// write one with a quote inside a quoted name), the first .xml file at the top of the
// archive. The harmony import reads plain files only; the tool and the tests unpack first.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace harmony {

// A score larger than this is refused rather than inflated.
inline constexpr std::size_t kMaxUnpackedMusicXmlBytes = std::size_t{64} << 20;

// Whether the bytes begin like a zip archive.
bool IsZipArchive(std::string_view bytes);

// The plain MusicXML of a compressed file, or nothing with `error` telling why.
std::optional<std::string> UnpackCompressedMusicXml(std::string bytes, std::string& error);

}  // namespace harmony
