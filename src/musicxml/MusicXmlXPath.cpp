#include "harmony/musicxml/MusicXmlXPath.h"

#include "musicxml/MusicXmlText.h"

namespace harmony {

CXMLElement XMLElementForXPath(const CXMLElement& node, std::string_view path) {
  std::vector<CXMLElement> found = node.NodesForXPath(path);
  return found.empty() ? CXMLElement() : std::move(found.front());
}

bool XPathExists(const CXMLElement& node, std::string_view path) {
  return !XMLElementForXPath(node, path).IsNone();
}

std::optional<std::string> StringObjectForXPath(const CXMLElement& node, std::string_view path,
                                                std::optional<std::string> fallback) {
  const CXMLElement found = XMLElementForXPath(node, path);
  return found.IsNone() ? fallback : std::optional<std::string>(found.StringValue());
}

std::string StringValueForXPath(const CXMLElement& node, std::string_view path,
                                const std::string& fallback) {
  return StringObjectForXPath(node, path).value_or(fallback);
}

std::string LowercaseStringValueForXPath(const CXMLElement& node, std::string_view path,
                                         const std::string& fallback) {
  const std::optional<std::string> text = StringObjectForXPath(node, path);
  return text ? musicxml::LowercaseText(*text) : fallback;
}

int IntValueForXPath(const CXMLElement& node, std::string_view path, int fallback) {
  const std::optional<std::string> text = StringObjectForXPath(node, path);
  return text ? musicxml::IntValueOfText(*text) : fallback;
}

double DoubleValueForXPath(const CXMLElement& node, std::string_view path, double fallback) {
  const std::optional<std::string> text = StringObjectForXPath(node, path);
  return text ? musicxml::DoubleValueOfText(*text) : fallback;
}

}  // namespace harmony
