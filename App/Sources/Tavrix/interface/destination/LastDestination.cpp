#include "interface/destination/LastDestination.h"

#include <filesystem>

#include "foundation/files/FileError.h"
#include "services/HistoryFolder.h"

namespace tavrix::window {

std::optional<std::string> lastDestination(const std::string& stateFolder,
                                           const std::string& phoneHash, Log& log) {
  try {
    auto history = HistoryFolder::open(stateFolder, log);
    if (!history) return std::nullopt;
    const auto runs = history->store().runs({.phone = phoneHash});
    std::error_code fault;
    if (runs.empty() || !std::filesystem::is_directory(runs.front().destinationPath, fault)) {
      return std::nullopt;
    }
    return runs.front().destinationPath;
  } catch (const FileError& error) {
    writeLog(log, "history: not read: path={}, code={}", PrivateField{error.path()}, error.code());
    return std::nullopt;
  }
}

}  // namespace tavrix::window
