#include <algorithm>
#include <cstdlib>

#include "foundation/Text.h"

namespace tavrix {
namespace {

/// The locale of the program on a machine that names no language.
constexpr const char* ownLocaleID = "ru_RU";

}  // namespace

std::string systemLocaleID() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    std::string id{value};
    id.erase(std::min(id.find_first_of(".@"), id.size()));
    return id == "C" || id == "POSIX" ? ownLocaleID : id;
  }
  return ownLocaleID;
}

}  // namespace tavrix
