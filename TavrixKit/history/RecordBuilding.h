#pragma once

#include "history/TransferRecord.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// A run that has ended, with its inputs and results.
struct FinishedRun {
  /// Every shot of the run in plan order, including those that are already there; then the shots
  /// that were left out as reduced copies, which are not in the plan.
  std::vector<TransferRecord::ShotInput> shots;
  const TransferPlan& plan;
  const TransferReport& report;  ///< of the files that got an outcome
  TransferRecord::Status status = TransferRecord::Status::completed;
  Uuid id{};
  Instant startedAt{};
  Instant finishedAt{};
  std::string phoneName{};
  std::optional<std::string> phoneHash{};
  std::string destinationPath{};
  TransferRecord::Options options{};
  std::vector<std::string> notes{};
};

/// Creates the record of a run. A file in the plan but not in the report was not reached; a file in
/// neither was left out by the settings. A shot failed if any of its files failed. Otherwise it was
/// not reached if any of its files was not reached, is on the Mac if any of its files was written,
/// and was already there in all other cases. Folders are in the order of their first shots. A pure
/// function.
TransferRecord makeRecord(FinishedRun run);

}  // namespace tavrix
