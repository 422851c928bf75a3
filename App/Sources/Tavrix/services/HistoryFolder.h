#pragma once

#include <memory>
#include <optional>
#include <string>

#include "foundation/Log.h"
#include "history/HistoryStore.h"

namespace tavrix {

/// The history of runs in a state folder, together with the open folder that holds it.
class HistoryFolder {
 public:
  /// Opens the history, and creates its folder if it does not exist. Throws FileError. `log` must
  /// outlive the result.
  static HistoryFolder create(const std::string& stateFolder, Log& log);
  /// Opens the history. Returns nullopt if its folder does not exist. Throws FileError.
  static std::optional<HistoryFolder> open(const std::string& stateFolder, Log& log);

  HistoryStore& store() { return store_; }

 private:
  HistoryFolder(std::unique_ptr<Folder> folder, Log& log)
      : folder_(std::move(folder)), store_(*folder_, log) {}

  std::unique_ptr<Folder> folder_;
  HistoryStore store_;
};

/// Returns an absolute form of the path for records, which do not depend on the working directory.
std::string absolutePath(const std::string& path);

}  // namespace tavrix
