#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "foundation/Text.h"

namespace tavrix {
namespace {

/// The locale of the program on a machine that names no language.
constexpr const char* ownLocaleID = "ru_RU";

/// Returns the locale that the first of the variables names that is set.
std::string localeOf(std::initializer_list<const char*> variables) {
  for (const char* const variable : variables) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    std::string id{value};
    id.erase(std::min(id.find_first_of(".@"), id.size()));
    return id == "C" || id == "POSIX" ? ownLocaleID : id;
  }
  return ownLocaleID;
}

}  // namespace

std::string systemLocaleID() { return localeOf({"LC_ALL", "LC_TIME", "LANG"}); }

std::string systemMessagesLocaleID() { return localeOf({"LC_ALL", "LC_MESSAGES", "LANG"}); }

}  // namespace tavrix
