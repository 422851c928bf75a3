#pragma once

#include <memory>
#include <optional>
#include <string>

#include "foundation/files/Folder.h"

namespace tavrix {

/// What tells where the program keeps its state; each may be missing.
struct StateFolderChoice {
  std::optional<std::string> chosen;     ///< named by the person for this call
  std::optional<std::string> demo;       ///< named for demos
  std::optional<std::string> stateHome;  ///< XDG_STATE_HOME
  std::optional<std::string> home;       ///< HOME
  bool isDemo = false;                   ///< what is the person's stays untouched
};

/// The state folder: the first of these that is there, for the last two with "Tavrix/state" below,
/// in a demo "Tavrix/demo-state" (as XDG base directories go, a path that is not absolute is passed
/// over). Nothing when none is.
std::optional<std::string> stateFolderPath(const StateFolderChoice& choice);

/// A folder of the state folder, such as "history" ("" for itself), created with all above it when
/// it is missing. Throws FileError.
std::unique_ptr<Folder> openStateFolder(const std::string& stateFolder, const std::string& name);

}  // namespace tavrix
