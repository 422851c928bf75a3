#pragma once

#include <optional>
#include <string>

namespace tavrix {

/// What tells where the program keeps its state; each may be missing.
struct StateFolderChoice {
  std::optional<std::string> chosen;     ///< named by the person for this call
  std::optional<std::string> demo;       ///< the demo's own
  std::optional<std::string> stateHome;  ///< XDG_STATE_HOME
  std::optional<std::string> home;       ///< HOME
};

/// The state folder: the first of these that is there, for the last two with "Tavrix/state" below
/// (XDG Base Directory Specification: a path that is not absolute is passed over). Nothing when
/// none is.
inline std::optional<std::string> stateFolderPath(const StateFolderChoice& choice) {
  if (choice.chosen) return choice.chosen;
  if (choice.demo) return choice.demo;
  const auto isAbsolute = [](const auto& path) { return path && path->starts_with('/'); };
  if (isAbsolute(choice.stateHome)) return *choice.stateHome + "/Tavrix/state";
  if (isAbsolute(choice.home)) return *choice.home + "/.local/state/Tavrix/state";
  return std::nullopt;
}

}  // namespace tavrix
