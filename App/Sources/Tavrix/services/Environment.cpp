#include "services/Environment.h"

#include <cstdlib>

#include "device/thumbnails/ThumbnailCache.h"
#include "settings/StateFolder.h"
#include "settings/defaults/FileDefaults.h"

namespace tavrix {

Environment processEnvironment() {
  Environment environment;
  for (const std::string_view name : usedVariables) {
    const char* const value = std::getenv(std::string{name}.c_str());
    if (value != nullptr) environment.emplace(name, value);
  }
  return environment;
}

std::optional<std::string> variable(const Environment& environment, std::string_view name) {
  const auto found = environment.find(name);
  if (found == environment.end() || found->second.empty()) return std::nullopt;
  return found->second;
}

bool isDemo(const Environment& environment) {
  return variable(environment, "DEMO_DIR").has_value();
}

bool keepsGroupsDebug(const Environment& environment) {
  return variable(environment, "DEBUG_SNAPSHOT") || variable(environment, "UI_SNAPSHOT_VIEWS");
}

std::optional<std::string> stateFolderOf(const Environment& environment,
                                         const std::optional<std::string>& chosen) {
  return stateFolderPath({.chosen = chosen,
                          .demo = variable(environment, "DEMO_STATE_DIR"),
                          .stateHome = variable(environment, "XDG_STATE_HOME"),
                          .home = variable(environment, "HOME"),
                          .isDemo = isDemo(environment)});
}

std::optional<std::string> thumbnailFolderOf(const Environment& environment,
                                             const std::optional<std::string>& chosen) {
  const auto state = chosen ? chosen : variable(environment, "DEMO_STATE_DIR");
  if (state) return *state + "/thumbnails";
  if (isDemo(environment)) return std::nullopt;
  return ThumbnailCache::userFolder(variable(environment, "XDG_CACHE_HOME"),
                                    variable(environment, "HOME"));
}

std::unique_ptr<UserDefaults> openDefaults(const Environment& environment) {
  if (const auto demo = variable(environment, "DEMO_STATE_DIR")) {
    return std::make_unique<FileDefaults>(*demo);
  }
  const auto folder =
      defaultsFolderPath(variable(environment, "XDG_CONFIG_HOME"), variable(environment, "HOME"));
  return folder ? std::make_unique<FileDefaults>(*folder) : nullptr;
}

}  // namespace tavrix
