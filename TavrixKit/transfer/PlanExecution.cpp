#include "transfer/PlanExecution.h"

#include <algorithm>
#include <cerrno>
#include <thread>

#include "transfer/TransferWorker.h"

namespace tavrix {

bool stopsRun(const FileError& error, const Folder& destination) {
  const int code = error.code();
  return code == ENOSPC || code == EDQUOT || code == EROFS || meansLostVolume(code) ||
         !destination.exists();
}

PlanExecution::PlanExecution(const TransferEngine::Setup& setup, const TransferPlan& plan,
                             MediaSource& source, Folder& destination,
                             const TransferEngine::Progress& progress, std::stop_token stop)
    : setup_(setup),
      plan_(plan),
      source_(source),
      destination_(destination),
      log_(setup.log == nullptr ? silentLog() : *setup.log),
      stop_(std::move(stop)),
      downloads_(downloadCount()),
      conversions_(conversionCount()),
      meter_(plan, progress),
      ledger_(plan, setup),
      safeNumbers_(plan, destination) {}

int PlanExecution::downloadCount() const { return std::clamp(source_.concurrentDownloads(), 1, 8); }

int PlanExecution::conversionCount() const {
  const bool converts =
      setup_.converter != nullptr &&
      std::any_of(plan_.files.begin(), plan_.files.end(),
                  [](const PlannedFile& file) { return isConverted(file.conversion); });
  return converts ? std::clamp(setup_.limits.conversions, 1, 8) : 0;
}

TransferReport PlanExecution::execute() {
  {
    const std::stop_callback onStop{stop_, [this] { conversionStop_.request_stop(); }};
    const int count = downloadCount() + conversionCount();
    std::vector<std::jthread> helpers;
    for (int i = 1; i < count; ++i) helpers.emplace_back([this] { TransferWorker{*this}.work(); });
    TransferWorker{*this}.work();
  }
  finish();
  TransferReport report = ledger_.report();
  writeFinishLog(report);
  return report;
}

std::optional<std::size_t> PlanExecution::nextIndex() {
  if (isHalted_ || stop_.stop_requested()) return std::nullopt;
  const std::size_t index = next_++;
  return index < plan_.files.size() ? std::optional{index} : std::nullopt;
}

void PlanExecution::carryOut(const std::function<bool(bool isAlone)>& step) {
  {
    const std::shared_lock together{steps_};
    if (step(false)) return;
  }
  const std::unique_lock alone{steps_};
  step(true);
}

void PlanExecution::halt(std::exception_ptr cause) {
  const std::lock_guard lock{mutex_};
  if (!cause_) cause_ = std::move(cause);
  isHalted_ = true;
  conversionStop_.request_stop();
}

bool PlanExecution::isPlanned(const std::string& path) {
  const std::lock_guard lock{mutex_};
  if (!plannedPaths_) {
    plannedPaths_.emplace();
    for (const PlannedFile& file : plan_.files) plannedPaths_->add(file.relativePath);
  }
  return plannedPaths_->contains(path);
}

void PlanExecution::syncVolume() {
  const std::lock_guard lock{syncMutex_};
  if (syncFailure_) throw FileError{*syncFailure_};
  ledger_.syncBegins();
  try {
    destination_.syncVolume();
    ledger_.syncEnded();
  } catch (const FileError& error) {
    syncFailure_ = error;
    throw;
  }
}

bool PlanExecution::isVolumeBroken() const {
  try {
    if (cause_) std::rethrow_exception(cause_);
  } catch (const FileError& error) {
    return meansLostVolume(error.code()) || error.code() == EROFS;
  } catch (...) {
  }
  return false;
}

void PlanExecution::finish() {
  if (isVolumeBroken()) {
    // A volume that has failed may say that it is synced, and lose what it has not written.
    ledger_.takeBackUnsynced();
  } else {
    try {
      // The data were synced before the renames; this syncs the new names.
      syncVolume();
    } catch (const FileError&) {
      ledger_.takeBackUnsynced();
      halt(std::current_exception());
    }
  }
  if (cause_) {
    try {
      std::rethrow_exception(cause_);
    } catch (const FileError& error) {
      writeFinishLog(ledger_.report());
      throw TransferEngine::Interrupted{ledger_.report(), error};
    }
  }
  if (ledger_.isComplete()) return;
  writeFinishLog(ledger_.report());
  throw TransferEngine::Cancelled{ledger_.report()};
}

void PlanExecution::writeFinishLog(const TransferReport& report) const {
  std::string list;
  for (const std::string& failure : report.failures) list += " " + failure + ";";
  writeLog(log_, "transfer finish: copied={}, resumed={}, bytes={}, failures={}{}", report.copied,
           report.resumedSkips, report.bytesCopied, report.failures.size(), PrivateField{list});
}

TransferReport TransferEngine::run(const TransferPlan& plan, MediaSource& source,
                                   Folder& destination, const Progress& progress,
                                   std::stop_token stop) const {
  return PlanExecution{setup_, plan, source, destination, progress, std::move(stop)}.execute();
}

}  // namespace tavrix
