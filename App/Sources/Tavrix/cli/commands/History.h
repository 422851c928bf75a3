#pragma once

#include <memory>

#include "cli/Commands.h"
#include "history/HistoryStore.h"

namespace tavrix::cli {

/// The history in the state folder of a call, with the folder that holds it.
class History {
 public:
  /// Creates the folder when it is missing. Throws CommandFailure when nothing tells where it is,
  /// and FileError.
  static History create(const CommandContext& context);
  /// Nothing when the folder is missing. Throws the same.
  static std::optional<History> open(const CommandContext& context);

  HistoryStore& store() { return store_; }

 private:
  History(const CommandContext& context, std::unique_ptr<Folder> folder)
      : folder_(std::move(folder)), store_(*folder_, context.log) {}

  std::unique_ptr<Folder> folder_;
  HistoryStore store_;
};

/// Writes the record of a run; a later one of the same run replaces it. Nothing when there is a
/// record now, otherwise the sentence that says why there is none.
std::optional<std::string> writeRecord(const CommandContext& context, const TransferRecord& record);

/// The path as records name it, whatever the working folder is.
std::string absolutePath(const std::string& path);

}  // namespace tavrix::cli
