#include "model/RunControl.h"

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <utility>

#include "foundation/Log.h"
#include "library/PlanSummary.h"
#include "text/DeviceText.h"
#include "text/ModelSentences.h"
#include "text/RunSentences.h"

namespace tavrix {
namespace {

using Stage = RunInProgress::Stage;
using Status = TransferRecord::Status;

constexpr std::chrono::seconds spacePollInterval{5};
/// The interval for retrying a phone that the system still reports as present.
constexpr std::chrono::seconds phoneRetryInterval{1};

bool isOutOfSpace(const TransferOutcome& outcome) {
  if (!outcome.interruption) return false;
  const int code = outcome.interruption->code();
  return code == ENOSPC || code == EDQUOT;
}

/// Returns true if another run is writing to the destination.
bool isBusy(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const DestinationError& error) {
    return error.kind() == DestinationError::Kind::busy;
  } catch (...) {
    return false;
  }
}

bool hasEndedByItself(const TransferOutcome& outcome) {
  return outcome.status == Status::completed || outcome.status == Status::completedWithFailures;
}

std::uint64_t bytesOf(const TransferPlan& plan) {
  std::uint64_t bytes = 0;
  for (const PlannedFile& file : plan.files) bytes += file.asset.sizeBytes();
  return bytes;
}

std::uint64_t conversionsOf(const TransferPlan& plan) {
  return static_cast<std::uint64_t>(
      std::count_if(plan.files.begin(), plan.files.end(),
                    [](const PlannedFile& file) { return isConverted(file.conversion); }));
}

std::vector<TransferFolder> foldersOf(const std::vector<FolderNaming::Row>& rows,
                                      const TransferPlan& plan) {
  std::vector<TransferFolder> folders;
  for (const FolderPlan& folder : folderPlans(rows, plan)) {
    if (folder.newFiles > 0) folders.push_back({folder.name, folder.newFiles});
  }
  return folders;
}

/// Converts the progress of a leg to progress of the whole run.
TransferProgressSnapshot ofRun(TransferProgressSnapshot leg, const TransferPlan& plan,
                               const TransferReport& before) {
  leg.filesDone += before.files.size();
  leg.filesTotal = plan.files.size();
  const std::uint64_t total = bytesOf(plan);
  leg.bytesDone += total - std::min(total, leg.bytesTotal);
  leg.bytesTotal = total;
  return leg;
}

/// Returns nullopt if the destination of the run no longer exists.
std::optional<std::uint64_t> freeBytesAt(const std::string& path,
                                         const std::optional<FolderIdentity>& identity,
                                         const ModelServices::OpenFolder& open) {
  try {
    if (folderIdentity(path) != identity) return std::nullopt;
    const auto folder = open(path);
    return folder ? std::optional{folder->freeBytes()} : std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace

/// The latest progress of a leg, passed from its thread to the main loop.
struct RunControl::ProgressSlot {
  std::mutex mutex;
  std::optional<TransferProgressSnapshot> latest;
  bool isPosted = false;
};

/// The destination after a pause, or the reason why it cannot be written to.
struct RunControl::Reopened {
  HeldDestination destination;
  std::exception_ptr failure;
};

std::shared_ptr<RunControl::Reopened> RunControl::reopen(const ModelServices::OpenFolder& open,
                                                         const RunInProgress& run) {
  auto reopened = std::make_shared<Reopened>();
  try {
    if (folderIdentity(run.destination) != run.folder) {
      throw DestinationError{DestinationError::Kind::missing, run.destination};
    }
    reopened->destination.folder = open(run.destination);
    reopened->destination.content =
        Destination::read(*reopened->destination.folder, run.source.phone);
  } catch (...) {
    reopened->failure = std::current_exception();
  }
  return reopened;
}

RunControl::RunControl(Surroundings surroundings, RunInProgress run)
    : surroundings_(std::move(surroundings)), run_(std::move(run)) {}

RunControl::~RunControl() {
  if (leg_) leg_->stop.request_stop();
}

MainLoop::Task RunControl::ifAlive(std::function<void()> task) const {
  return [life = std::weak_ptr{life_}, task = std::move(task)] {
    if (life.lock()) task();
  };
}

void RunControl::postIfStill(Stage stage, std::chrono::milliseconds delay,
                             std::function<void()> task) {
  services_.loop.postAfter(delay, ifAlive([this, stage, task = std::move(task)] {
                             if (run_.stage == stage) task();
                           }));
}

void RunControl::tellPause(std::optional<std::string> reason) {
  if (reason == pausedReason_) return;
  pausedReason_ = std::move(reason);
  change([&](AppState& state) { state.transferPausedReason = pausedReason_; });
}

void RunControl::begin(HeldDestination destination) {
  const TransferPlan& plan = *run_.plan;
  change([&](AppState& state) {
    state.phase = app_phase::Transferring{};
    state.transferFolders = foldersOf(run_.library->rows, plan);
    state.plannedConversions = conversionsOf(plan);
    TransferProgressSnapshot nothingYet;
    nothingYet.bytesTotal = bytesOf(plan);
    state.progress = ofRun(std::move(nothingYet), plan, {});
    state.transferPausedReason = std::nullopt;
    state.optimizedSkipped = 0;
  });
  // If the program ends before the run does, the run still has a record.
  if (!plan.files.empty()) services_.transferring(recordTask(true));
  startLeg(std::move(destination));
}

std::function<bool()> RunControl::recordTask(bool isUnderWay) const {
  if (!services_.keepRecord) return [] { return false; };
  auto run = std::make_shared<RunInProgress>(run_);
  if (isUnderWay) run->outcome.status = Status::interrupted;
  return [keep = services_.keepRecord, naming = services_.placeNaming,
          localeID = services_.systemLocaleID, language = services_.writtenLanguage,
          run = std::shared_ptr<const RunInProgress>{std::move(run)}, isUnderWay] {
    return keep(recordOf({.library = *run->library,
                          .shownRows = run->shown->rows,
                          .settings = run->settings,
                          .savedPresets = *run->savedPresets,
                          .plan = *run->plan,
                          .outcome = run->outcome,
                          .phone = run->source.phone,
                          .destinationPath = run->destination,
                          .systemLocaleID = localeID,
                          .language = language,
                          .id = run->id,
                          .startedAt = run->startedAt,
                          .finishedAt = run->finishedAt,
                          .placeNaming = naming,
                          .unchecked = run->unchecked,
                          .isUnderWay = isUnderWay}));
  };
}

std::shared_ptr<TransferLeg> RunControl::legOf(HeldDestination destination) {
  auto leg = std::make_shared<TransferLeg>();
  leg->setup.phone = run_.source.phone;
  leg->setup.converter = services_.converter;
  leg->setup.language = services_.writtenLanguage;
  leg->setup.log = services_.log;
  leg->setup.now = services_.now;
  leg->language = services_.language;
  leg->whole = run_.plan;
  leg->plan = remainingPlan(*run_.plan, run_.outcome.report);
  leg->files = run_.source.files;
  leg->destination = std::move(destination);
  leg->zone = run_.settings.timeZone;
  leg->packing = packingOf(run_.settings, run_.source.deviceName, leg->zone.dateAt(run_.startedAt));
  return leg;
}

void RunControl::followLeg(TransferLeg& leg) {
  const auto slot = std::make_shared<ProgressSlot>();
  progressSlot_ = slot;
  // Ignores what a leg posts after its end.
  const auto post = [this, life = std::weak_ptr{life_}, slot,
                     &loop = services_.loop](std::function<void()> task) {
    loop.post([this, life, slot, task = std::move(task)] {
      if (life.lock() && slot == progressSlot_) task();
    });
  };
  leg.awaitPhone = [this, post, gate = gate_, stop = leg.stop.get_token()](PhoneError::Kind kind) {
    post([this, kind] { pauseForPhone(kind); });
    return gate->wait(stop);
  };
  leg.paused = [this, post](const std::optional<std::string>& reason) {
    post([this, reason] { tellPause(reason); });
  };
  leg.progress = [this, post, slot](const TransferProgressSnapshot& progress) {
    const std::lock_guard lock{slot->mutex};
    slot->latest = progress;
    if (!std::exchange(slot->isPosted, true)) post([this] { showProgress(); });
  };
}

void RunControl::startLeg(HeldDestination destination) {
  run_.stage = Stage::running;
  leg_ = legOf(std::move(destination));
  followLeg(*leg_);
  if (run_.isCancelled) leg_->stop.request_stop();
  computeThen(
      services_.transferring, services_.loop, life_, [leg = leg_] { return carryOut(*leg); },
      [this](LegEnd end) { landLeg(std::move(end)); });
}

void RunControl::showProgress() {
  std::optional<TransferProgressSnapshot> latest;
  {
    const std::lock_guard lock{progressSlot_->mutex};
    latest = std::exchange(progressSlot_->latest, std::nullopt);
    progressSlot_->isPosted = false;
  }
  if (!latest) return;
  change([&](AppState& state) {
    state.progress = ofRun(*std::move(latest), *run_.plan, run_.outcome.report);
  });
}

void RunControl::landLeg(LegEnd end) {
  leg_.reset();
  progressSlot_.reset();
  TransferOutcome& outcome = run_.outcome;
  const std::size_t filesBefore = outcome.report.files.size();
  outcome = joined(std::move(outcome), std::move(end.outcome), *run_.plan);
  const bool isWhole = !end.failure && !end.isPhoneLost && hasEndedByItself(outcome);
  if (run_.isCancelled && !isWhole) return concludeCancelled();
  if (end.isPhoneLost) return pauseForPhone(PhoneError::Kind::gone);
  if (isOutOfSpace(outcome)) return meetFullDisk(filesBefore);
  if (end.failure) return concludeFailed(end.failure);
  conclude();
}

void RunControl::pauseForPhone(PhoneError::Kind kind) {
  if (run_.isCancelled) return;
  run_.stage = Stage::pausedForPhone;
  ++run_.outcome.phoneWaits;
  writeLog(*services_.log, "transfer paused: phone gone");
  tellPause(
      waitingText(services_.language, lossText(services_.language, run_.source.deviceName, kind)));
  if (run_.stage != Stage::pausedForPhone) return;  // an observer has cancelled
  // The phone will be read again, and then the run continues.
  if (run_.source.files->reportLost()) return;
  // The watcher may notice the loss later than the reads, or earlier; then the phone is already
  // back.
  postIfStill(Stage::pausedForPhone, phoneRetryInterval, [this] {
    if (!isPhoneBack_ && surroundings_.isPhoneThere()) resume();
  });
}

void RunControl::phoneIsBack() {
  if (run_.stage != Stage::pausedForPhone) return;
  isPhoneBack_ = true;
  tellPause(std::nullopt);
}

void RunControl::displayIsSettled() {
  if (!std::exchange(isPhoneBack_, false) || run_.stage != Stage::pausedForPhone) return;
  writeLog(*services_.log, "transfer: groups are back — resuming");
  resume();
}

void RunControl::meetFullDisk(std::size_t filesBefore) {
  constexpr int mostRefusals = 3;
  const TransferOutcome& outcome = run_.outcome;
  refusals_ = outcome.report.files.size() > filesBefore ? 0 : refusals_ + 1;
  // Packing waits for space itself. If writes keep failing despite free space, waiting does not
  // help.
  if (outcome.isPacked || refusals_ > mostRefusals) return conclude();
  pauseForSpace();
}

void RunControl::pauseForSpace() {
  run_.stage = Stage::pausedForSpace;
  const std::uint64_t needed = bytesOf(remainingPlan(*run_.plan, run_.outcome.report));
  computeThen(
      services_.transferring, services_.loop, life_,
      [open = services_.openExisting, path = run_.destination, identity = run_.folder] {
        return freeBytesAt(path, identity, open);
      },
      [this, needed](std::optional<std::uint64_t> free) {
        if (run_.stage == Stage::pausedForSpace) landSpace(free, needed);
      });
}

void RunControl::landSpace(std::optional<std::uint64_t> free, std::uint64_t needed) {
  if (!free) {
    run_.outcome.interruption = FileError{FileOperation::open, run_.destination, ENOENT};
    return conclude();
  }
  const bool isTold = pausedReason_.has_value();
  if (*free < needed) {
    if (!isTold) writeLog(*services_.log, "transfer paused: disk full (free {})", *free);
    tellPause(say(services_.language, sentences::diskFull,
                  bytesText(services_.language, needed - *free),
                  bytesText(services_.language, *free)));
    return postIfStill(Stage::pausedForSpace, spacePollInterval, [this] { pauseForSpace(); });
  }
  if (!isTold) return postIfStill(Stage::pausedForSpace, spacePollInterval, [this] { resume(); });
  writeLog(*services_.log, "transfer: space freed — continuing");
  resume();
}

void RunControl::resume() {
  if (leg_) {
    run_.stage = Stage::running;
    tellPause(std::nullopt);
    return gate_->open();
  }
  run_.stage = Stage::resuming;
  computeThen(
      services_.transferring, services_.loop, life_,
      [open = services_.openForWriting, run = run_] { return reopen(open, run); },
      [this](const std::shared_ptr<Reopened>& destination) {
        if (run_.stage == Stage::resuming) landReopened(*destination);
      });
}

void RunControl::landReopened(Reopened& reopened) {
  if (!reopened.failure) {
    tellPause(std::nullopt);
    if (run_.stage != Stage::resuming) return;  // an observer has cancelled
    return startLeg(std::move(reopened.destination));
  }
  if (isBusy(reopened.failure)) {
    return postIfStill(Stage::resuming, spacePollInterval, [this] { resume(); });
  }
  concludeFailed(reopened.failure);
}

void RunControl::cancel() {
  run_.isCancelled = true;
  const bool isBetweenLegs = run_.stage == Stage::pausedForPhone ||
                             run_.stage == Stage::pausedForSpace || run_.stage == Stage::resuming;
  if (leg_) {
    leg_->stop.request_stop();
  } else if (isBetweenLegs) {
    concludeCancelled();
  }
}

void RunControl::concludeCancelled() {
  run_.outcome.status = Status::cancelled;
  run_.outcome.interruption = std::nullopt;
  conclude();
}

void RunControl::concludeFailed(const std::exception_ptr& failure) {
  run_.failure = failure;
  TransferOutcome& outcome = run_.outcome;
  outcome.interruption = std::nullopt;
  outcome.status = Status::interrupted;
  if (services_.failureText) outcome.stopReason = services_.failureText(failure);
  writeLog(*services_.log, "transfer failed (local fs): {}",
           PrivateField{outcome.stopReason.value_or("")});
  conclude();
}

void RunControl::conclude() {
  run_.stage = Stage::ending;
  run_.finishedAt = services_.now();
  TransferOutcome& outcome = run_.outcome;
  if (outcome.interruption) {
    writeLog(*services_.log, "transfer failed (local fs): {}",
             PrivateField{outcome.interruption->path()});
  }
  outcome.unreadFolders = run_.source.unreadFolders;
  const bool isIncomplete = outcome.unreadFolders > 0 || !outcome.report.failures.empty();
  if (outcome.status == Status::completed && isIncomplete) {
    outcome.status = Status::completedWithFailures;
  }
  computeThen(services_.transferring, services_.loop, life_, recordTask(false),
              [this](bool hasRecord) { finish(hasRecord); });
}

void RunControl::finish(bool hasRecord) {
  run_.stage = Stage::ended;
  change([&](AppState& state) {
    state.transferPausedReason = std::nullopt;
    state.progress = std::nullopt;
    state.optimizedSkipped = run_.optimizedSkipped;
    state.lastRecordID = hasRecord ? std::optional{run_.id} : std::nullopt;
    state.phase = app_phase::Done{run_.outcome.report};
  });
  surroundings_.ended();
}

}  // namespace tavrix
