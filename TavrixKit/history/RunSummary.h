#pragma once

#include "history/TransferRecord.h"

namespace tavrix {

/// The data of a run that a list of runs shows.
struct RunSummary {
  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  TransferRecord::Status status = TransferRecord::Status::completed;
  std::string phoneName;
  std::optional<std::string> phoneHash;
  std::string destinationPath;
  TransferRecord::Totals totals;

  friend bool operator==(const RunSummary&, const RunSummary&) = default;
};

RunSummary summaryOf(const TransferRecord& record);

}  // namespace tavrix
