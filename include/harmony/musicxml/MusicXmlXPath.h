#pragma once
// Look-ups in a MusicXML document tree by XPath 1.0. Each evaluates the expression once from
// `node` and takes the first node it finds; an expression that is not valid XPath, or finds
// nothing, gives the default. Numbers are read the forgiving way of notation programs:
// leading blanks, then as many digits as stand there.

#include <optional>
#include <string>
#include <string_view>

#include "harmony/musicxml/XMLElement.h"

namespace harmony {

// The text of the first node found: an attribute's value or an element's whole text.
std::optional<std::string> StringObjectForXPath(const CXMLElement& node, std::string_view path,
                                                std::optional<std::string> fallback = std::nullopt);
std::string StringValueForXPath(const CXMLElement& node, std::string_view path,
                                const std::string& fallback);
// The same with ASCII letters lowered; the default comes back as it was given.
std::string LowercaseStringValueForXPath(const CXMLElement& node, std::string_view path,
                                         const std::string& fallback);
int IntValueForXPath(const CXMLElement& node, std::string_view path, int fallback);
double DoubleValueForXPath(const CXMLElement& node, std::string_view path, double fallback);
// The first node found, or none.
CXMLElement XMLElementForXPath(const CXMLElement& node, std::string_view path);
bool XPathExists(const CXMLElement& node, std::string_view path);

}  // namespace harmony
