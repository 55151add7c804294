#pragma once
// Localized strings. The English text is the key; gettext looks it up in the text domain
// "harmony" and gives the key back when no translation is installed.

#include <string>

namespace harmony::platform {

// The text of the current language for `englishKey`; the key itself when none exists.
const char* Localized(const char* englishKey);
std::string LocalizedString(const std::string& englishKey);

}  // namespace harmony::platform
