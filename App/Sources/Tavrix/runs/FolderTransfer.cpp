#include "runs/FolderTransfer.h"

#include <cerrno>
#include <utility>

#include "transfer/PlanExecution.h"

namespace tavrix {
FileError interruptionOf(const FileError& error, const Folder& destination) {
  if (!stopsRun(error, destination)) return error;
  return {error.operation(), destination.path(), error.code()};
}

bool isOfLostVolume(const FileError& error) {
  return error.code() == ENOENT || (meansLostVolume(error.code()) && error.code() != EIO);
}

FolderTransfer::FolderTransfer(Setup setup, Folder& destination, Destination::Content content)
    : setup_(std::move(setup)),
      destination_(destination),
      memory_({setup_.phone, setup_.log, setup_.now, setup_.notes, setup_.saveInterval},
              destination, std::move(content)) {}

RunOutcome FolderTransfer::execute(const TransferPlan& plan, MediaSource& source,
                                   const TransferEngine::Progress& progress, std::stop_token stop) {
  TransferEngine::Setup setup;
  setup.converter = setup_.converter;
  setup.log = setup_.log;
  setup.language = setup_.language;
  setup.landed = [this](const LandedFile& file) { memory_.landed(file); };
  setup.syncBegins = [this] { memory_.syncBegins(); };
  setup.syncEnded = [this] { memory_.syncEnded(); };
  RunOutcome outcome;
  try {
    outcome.report =
        TransferEngine{setup}.run(plan, source, destination_, progress, std::move(stop));
    if (!outcome.report->failures.empty())
      outcome.status = TransferRecord::Status::completedWithFailures;
  } catch (const TransferEngine::Cancelled& cancelled) {
    outcome.status = TransferRecord::Status::cancelled;
    outcome.report = cancelled.report();
  } catch (const TransferEngine::Interrupted& interrupted) {
    outcome.status = TransferRecord::Status::interrupted;
    outcome.report = interrupted.report();
    outcome.interruption = interruptionOf(interrupted.underlying(), destination_);
  }
  return outcome;
}

RunOutcome FolderTransfer::run(const TransferPlan& plan, MediaSource& source,
                               const TransferEngine::Progress& progress, std::stop_token stop) {
  RunOutcome outcome;
  if (plan.files.empty()) {
    outcome.markerFailure = memory_.settleWithoutFiles();
    return outcome;
  }
  memory_.begin(&plan);
  writeLog(log(), "transfer start: files={}, bytes={}, dest={}, zip={}", plan.files.size(),
           plan.totalBytes(), PrivateField{destination_.path()}, false);
  outcome = execute(plan, source, progress, std::move(stop));
  const bool mayGoOn = outcome.interruption && isOfLostVolume(*outcome.interruption);
  outcome.markerFailure = memory_.settle(mayGoOn);
  return outcome;
}

}  // namespace tavrix
