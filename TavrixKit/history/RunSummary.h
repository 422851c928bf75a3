#pragma once

#include "history/TransferRecord.h"

namespace tavrix {

/// What a list of runs shows of one.
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
