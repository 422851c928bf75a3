#pragma once

#include "history/TransferRecord.h"

namespace tavrix {

/// The data of a run that a list of runs shows.
struct RecordSummary {
  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  TransferRecord::Status status = TransferRecord::Status::completed;
  std::string phoneName;
  std::optional<std::string> phoneHash;
  std::string destinationPath;
  TransferRecord::Totals totals;

  friend bool operator==(const RecordSummary&, const RecordSummary&) = default;
};

RecordSummary summaryOf(const TransferRecord& record);

}  // namespace tavrix
