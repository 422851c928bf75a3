#include "runs/RepairRun.h"

#include <algorithm>
#include <cerrno>
#include <numeric>
#include <utility>

#include "runs/RunOutcome.h"

namespace tavrix {
namespace {

using CopyRepair::KeptFile;
using CopyRepair::KeptReason;

/// The most refusals in a row for lack of space although the disk reports free space.
constexpr int mostRefusals = 3;

}  // namespace

/// The state of one file of the plan.
struct RepairRun::Step {
  std::optional<FileOutcome> outcome{};
  std::optional<std::string> sha256{};  ///< of a file that landed
  std::optional<std::string> aside{};   ///< the new path of the damaged file
};

std::uint64_t RepairOutcome::bytesWritten() const {
  return std::accumulate(
      repaired.begin(), repaired.end(), std::uint64_t{0},
      [](std::uint64_t sum, const RepairedFile& file) { return sum + file.bytesOnDisk; });
}

RepairRun::RepairRun(Setup setup, Folder& destination, const DestinationMarker::Marker& marker,
                     const CopyRepair::Plan& plan)
    : setup_(std::move(setup)),
      destination_(destination),
      marker_(marker),
      plan_(plan),
      steps_(plan.files.files.size()) {
  setup_.spaceWait.log = setup_.log;
}

RepairRun::~RepairRun() = default;

RepairOutcome RepairRun::run(MediaSource& source, const TransferEngine::Progress& progress,
                             const std::stop_token& stop) {
  SpaceWait spaceWait{setup_.spaceWait, destination_, stop};
  outcome_.kept = plan_.kept;
  for (int number = 1;; ++number) {
    const std::uint64_t before = remainingBytes();
    auto error = attempt(source, progress, stop);
    if (!error) break;
    if (remainingBytes() < before) number = 1;
    bool goesOn = false;
    try {
      goesOn = error->code() == ENOSPC && number < mostRefusals &&
               spaceWait.await(
                   remainingBytes(), true,
                   [](Log& log, std::uint64_t, std::uint64_t free) {
                     writeLog(log, "repair paused: disk full (free {})", free);
                   });
    } catch (const FileError& gone) {
      error = gone;
    }
    if (goesOn) continue;
    if (stop.stop_requested()) break;
    outcome_.interruption = interruptionOf(*error, destination_);
    break;
  }
  const bool isComplete = std::all_of(steps_.begin(), steps_.end(),
                                      [](const Step& step) { return step.outcome.has_value(); });
  outcome_.isCancelled = stop.stop_requested() && !isComplete;
  conclude();
  return std::move(outcome_);
}

std::optional<FileError> RepairRun::attempt(MediaSource& source,
                                            const TransferEngine::Progress& progress,
                                            const std::stop_token& stop) {
  TransferPlan plan;
  attempted_.clear();
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    if (steps_[i].outcome) continue;
    attempted_.push_back(i);
    plan.files.push_back(plan_.files.files[i]);
  }
  if (plan.files.empty()) return std::nullopt;
  try {
    take(engine(plan).run(plan, source, destination_, progress, stop));
  } catch (const TransferEngine::Cancelled& cancelled) {
    take(cancelled.report());
  } catch (const TransferEngine::Interrupted& interrupted) {
    take(interrupted.report());
    if (interrupted.underlying().code() != ENOSPC) dropUnsynced(interrupted.report());
    return interrupted.underlying();
  }
  return std::nullopt;
}

TransferEngine RepairRun::engine(const TransferPlan& plan) {
  // The callbacks come from several threads, each for a step of its own.
  const auto indexOf = [this, first = plan.files.data()](const PlannedFile& file) {
    return attempted_[static_cast<std::size_t>(&file - first)];
  };
  TransferEngine::Setup setup;
  setup.log = setup_.log;
  setup.language = setup_.language;
  setup.landed = [this, indexOf](const LandedFile& file) {
    Step& step = steps_[indexOf(file.planned)];
    step.outcome = file.outcome;
    step.sha256 = file.sha256;
  };
  setup.replacement = TransferEngine::Replacement{
      [this, indexOf](const PlannedFile& file, const std::string& sha256) {
        return CopyRepair::refusal(plan_.records[indexOf(file)], sha256);
      },
      [this, indexOf](const PlannedFile& file, const std::string& aside) {
        steps_[indexOf(file)].aside = aside;
      }};
  return TransferEngine{std::move(setup)};
}

void RepairRun::take(const TransferReport& report) {
  // The outcomes are in plan order, but those of files that were not reached are missing.
  auto next = attempted_.begin();
  for (const FileOutcome& outcome : report.files) {
    next = std::find_if(next, attempted_.end(), [&](std::size_t index) {
      const Step& step = steps_[index];
      const bool isSame = plan_.files.files[index].asset.id() == outcome.assetID;
      return isSame && step.outcome.has_value() == outcome.path.has_value();
    });
    if (next == attempted_.end()) return;
    steps_[*next++].outcome = outcome;
  }
}

void RepairRun::dropUnsynced(const TransferReport& report) {
  StringSet paths;
  for (const FileOutcome& outcome : report.files) {
    if (outcome.path) paths.insert(*outcome.path);
  }
  for (const std::size_t index : attempted_) {
    Step& step = steps_[index];
    if (!step.outcome || !step.outcome->path || paths.contains(*step.outcome->path)) continue;
    step.outcome.reset();
    step.sha256.reset();
  }
}

std::uint64_t RepairRun::remainingBytes() const {
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    if (!steps_[i].outcome) bytes += plan_.files.files[i].asset.sizeBytes();
  }
  return bytes;
}

void RepairRun::conclude() {
  for (std::size_t i = 0; i < steps_.size(); ++i) conclude(i);
  std::sort(outcome_.kept.begin(), outcome_.kept.end(),
            [](const KeptFile& a, const KeptFile& b) { return a.path < b.path; });
  outcome_.markerFailure = recordDigests();
  if (setup_.log == nullptr) return;
  writeLog(*setup_.log, "repair finish: repaired={}, failed={}, kept={}, bytes={}",
           outcome_.repaired.size(), outcome_.failed.size(), outcome_.kept.size(),
           outcome_.bytesWritten());
}

void RepairRun::conclude(std::size_t index) {
  const PlannedFile& file = plan_.files.files[index];
  const Step& step = steps_[index];
  const std::string assetID{file.asset.id()};
  if (!step.outcome) {
    outcome_.kept.push_back(
        {.path = file.relativePath, .reason = KeptReason::notReached, .assetID = assetID});
    return;
  }
  const auto* const failed = std::get_if<FileOutcome::Failed>(&step.outcome->kind);
  if (failed == nullptr) {
    outcome_.repaired.push_back(
        {file.relativePath, assetID, step.outcome->bytesOnDisk, step.aside});
  } else if (auto kept = CopyRepair::keptInsteadOf(*failed)) {
    kept->path = file.relativePath;
    kept->assetID = assetID;
    outcome_.kept.push_back(*std::move(kept));
  } else {
    outcome_.failed.push_back({file.relativePath, assetID, *failed});
  }
}

std::optional<FileError> RepairRun::recordDigests() {
  const auto* const earlier = marker_.record(setup_.phone.hash);
  if (earlier == nullptr) return std::nullopt;
  DestinationMarker::PhoneRecord record = *earlier;
  record.files.clear();
  record.folders.clear();
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    if (!steps_[i].sha256 || plan_.records[i].sha256) continue;
    record.files.push_back(plan_.records[i]);
    record.files.back().sha256 = steps_[i].sha256;
  }
  if (record.files.empty()) return std::nullopt;
  record.lastTransfer = setup_.now();
  // Files that are still missing stay recorded, so that another repair can bring them.
  const auto staysRecorded = [](const std::string&) { return true; };
  try {
    DestinationMarker::save(destination_,
                            DestinationMarker::updated(earlier, std::move(record), staysRecorded));
    return std::nullopt;
  } catch (const FileError& error) {
    return error;
  }
}

}  // namespace tavrix
