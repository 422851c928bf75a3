#include "interface/destination/LastRuns.h"

#include <algorithm>
#include <filesystem>

#include "foundation/files/FileError.h"
#include "services/HistoryFolder.h"

namespace tavrix::window {

LastRuns lastRuns(const std::string& stateFolder, const std::string& phoneHash,
                  const std::optional<std::string>& destination, Log& log) {
  LastRuns last;
  try {
    auto history = HistoryFolder::open(stateFolder, log);
    if (!history) return last;
    const auto runs = history->store().runs({.phone = phoneHash});
    std::error_code fault;
    if (!runs.empty() && std::filesystem::is_directory(runs.front().destinationPath, fault)) {
      last.destination = runs.front().destinationPath;
    }
    if (!destination) return last;
    const auto here =
        std::ranges::find(runs, absolutePath(*destination), &RecordSummary::destinationPath);
    if (here != runs.end()) last.here = here->startedAt;
  } catch (const FileError& error) {
    writeLog(log, "history: not read: path={}, code={}", PrivateField{error.path()}, error.code());
  }
  return last;
}

}  // namespace tavrix::window
