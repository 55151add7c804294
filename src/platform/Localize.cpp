#include "platform/Localize.h"

#include <libintl.h>

namespace harmony::platform {

namespace {
constexpr const char* kTextDomain = "harmony";
}

const char* Localized(const char* englishKey) {
  if (englishKey == nullptr || *englishKey == '\0') return "";
  return dgettext(kTextDomain, englishKey);
}

std::string LocalizedString(const std::string& englishKey) { return Localized(englishKey.c_str()); }

}  // namespace harmony::platform
