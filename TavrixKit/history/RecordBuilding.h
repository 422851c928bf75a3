#pragma once

#include "history/TransferRecord.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// A run that has ended, with what it was made of.
struct FinishedRun {
  /// Every shot of the run in plan order, those that are there already included; then the shots
  /// that were left out as reduced copies, which the plan does not have.
  std::vector<TransferRecord::ShotInput> shots;
  const TransferPlan& plan;
  const TransferReport& report;  ///< of what got through
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

/// The record of a run. A file that the plan has and the report does not was not reached; one that
/// neither has was left out by the settings. A shot failed when any of its files did, and was not
/// reached when any of them was not; else it is on the Mac when anything of it was written, and was
/// already there otherwise. Folders are in the order of their first shots. A pure function.
TransferRecord makeRecord(FinishedRun run);

}  // namespace tavrix
