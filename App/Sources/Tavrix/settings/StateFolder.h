#pragma once

#include <memory>
#include <optional>
#include <string>

#include "foundation/files/Folder.h"

namespace tavrix {

/// The inputs that determine the state folder; each may be missing.
struct StateFolderChoice {
  std::optional<std::string> chosen;     ///< named by the user for this call
  std::optional<std::string> demo;       ///< named for demo mode
  std::optional<std::string> stateHome;  ///< XDG_STATE_HOME
  std::optional<std::string> home;       ///< HOME
  bool isDemo = false;                   ///< the user's own data stays untouched
};

/// Returns the path of the state folder: the first of these inputs that is present. The last two
/// get "Tavrix/state" appended, or "Tavrix/demo-state" in demo mode; according to the XDG base
/// directory rules they are ignored unless absolute. Returns nullopt if none is present.
std::optional<std::string> stateFolderPath(const StateFolderChoice& choice);

/// Opens a subfolder of the state folder, such as "history" ("" is the state folder itself).
/// Creates it and all its parents if missing. Only the user
/// can read what is created. Throws FileError.
std::unique_ptr<Folder> openStateFolder(const std::string& stateFolder, const std::string& name);

}  // namespace tavrix
