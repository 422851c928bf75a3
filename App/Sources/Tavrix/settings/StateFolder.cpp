#include "settings/StateFolder.h"

#include "foundation/files/PrivateFolder.h"

namespace tavrix {

std::optional<std::string> stateFolderPath(const StateFolderChoice& choice) {
  if (choice.chosen) return choice.chosen;
  if (choice.demo) return choice.demo;
  const std::string name = choice.isDemo ? "/Tavrix/demo-state" : "/Tavrix/state";
  if (choice.stateHome && choice.stateHome->starts_with('/')) return *choice.stateHome + name;
  if (choice.home && choice.home->starts_with('/')) return *choice.home + "/.local/state" + name;
  return std::nullopt;
}

std::unique_ptr<Folder> openStateFolder(const std::string& stateFolder, const std::string& name) {
  const std::string path = name.empty() ? stateFolder : stateFolder + "/" + name;
  return openPrivateFolder(path);
}

}  // namespace tavrix
