#include "model/RunControl.h"

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <utility>

#include "foundation/Log.h"
#include "library/PlanSummary.h"

namespace tavrix {
namespace {

using Status = TransferRecord::Status;

/// The interval of the looks for space, and for a destination that is away or in use.
constexpr std::chrono::seconds pollInterval{5};
/// The interval for retrying a phone that the system still reports as present.
constexpr std::chrono::seconds phoneRetryInterval{1};
/// The shortest time between two published states of progress.
constexpr std::chrono::milliseconds progressInterval{50};

bool isOutOfSpace(const RunOutcome& outcome) {
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

bool hasEndedByItself(const RunOutcome& outcome) {
  return outcome.status == Status::completed || outcome.status == Status::completedWithFailures;
}

/// Converts the progress of an attempt to progress of the whole run.
TransferProgressSnapshot ofRun(TransferProgressSnapshot attempt, const Run& run) {
  attempt.filesDone += run.outcome.report->files.size();
  attempt.verifiedCount +=
      run.outcome.report->copied + run.outcome.report->conversionFallbacks.size();
  attempt.convertedCount += run.converted;
  attempt.filesTotal = run.plan->files.size();
  const std::uint64_t total = run.totals.bytes;
  attempt.bytesDone += total - std::min(total, attempt.bytesTotal);
  attempt.bytesTotal = total;
  return attempt;
}

/// Returns nullopt if the destination of the run no longer exists.
std::optional<std::uint64_t> freeBytesAt(const std::string& path,
                                         const std::optional<FolderIdentity>& identity,
                                         const OpenFolder& open) {
  try {
    if (folderIdentity(path) != identity) return std::nullopt;
    const auto folder = open(path);
    return folder ? std::optional{folder->freeBytes()} : std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

/// Returns the identity by which a run recognises its destination, and what it counts there.
WrittenDestination writtenBy(const Run& run) {
  return {.path = run.destination,
          .place = run.place,
          .identity = run.folder,
          .phoneHash = run.source.phone.hash,
          .startedAt = run.startedAt,
          .report = run.outcome.report,
          .isPacked = run.outcome.isPacked,
          .plan = run.plan};
}

}  // namespace

RunTotals totalsOf(const std::vector<FolderNaming::Row>& rows, const TransferPlan& plan) {
  std::vector<TransferFolder> folders;
  for (const FolderPlan& folder : folderPlans(rows, plan)) {
    if (folder.newFiles > 0) folders.push_back({folder.name, folder.newFiles});
  }
  const auto conversions =
      std::count_if(plan.files.begin(), plan.files.end(),
                    [](const PlannedFile& file) { return isConverted(file.conversion); });
  return {plan.totalBytes(), static_cast<std::uint64_t>(conversions), std::move(folders)};
}

/// The latest progress of an attempt, passed from its thread to the main loop.
struct RunControl::ProgressSlot {
  std::mutex mutex;
  std::optional<TransferProgressSnapshot> latest;
  std::optional<MainLoop::Moment> shown;  ///< when progress was last published
  bool isPosted = false;

  MainLoop::Duration delayAt(MainLoop::Moment now) const {
    const auto due = shown ? *shown + progressInterval : now;
    return std::max(MainLoop::Duration::zero(), due - now);
  }
};

/// The destination after a pause, or the reason why it cannot be written to.
struct RunControl::Reopened {
  HeldDestination destination;
  std::exception_ptr failure;
};

std::shared_ptr<RunControl::Reopened> RunControl::reopen(const OpenFolder& open, const Run& run) {
  auto reopened = std::make_shared<Reopened>();
  try {
    if (folderIdentity(run.destination) != run.folder) {
      throw DestinationError{DestinationError::Kind::missing, run.destination};
    }
    reopened->destination.folder = open(run.destination);
    // Another volume may have taken its place meanwhile.
    if (folderIdentity(run.destination) != run.folder) {
      throw DestinationError{DestinationError::Kind::missing, run.destination};
    }
    reopened->destination.content =
        Destination::read(*reopened->destination.folder, run.source.phone);
  } catch (...) {
    reopened->failure = std::current_exception();
  }
  return reopened;
}

RunControl::RunControl(Surroundings surroundings, Run run)
    : surroundings_(std::move(surroundings)), run_(std::move(run)) {}

RunControl::~RunControl() {
  if (attempt_) attempt_->stop.request_stop();
}

MainLoop::Task RunControl::ifAlive(std::function<void()> task) const {
  return [life = std::weak_ptr{life_}, task = std::move(task)] {
    if (life.lock()) task();
  };
}

template <typename Stage>
void RunControl::postIfStill(std::chrono::milliseconds delay, std::function<void()> task) {
  services_.loop.postAfter(delay, ifAlive([this, task = std::move(task)] {
                             if (run_.is<Stage>()) task();
                           }));
}

void RunControl::publishPause(std::optional<RunPause> pause) {
  if (pause == surroundings_.state->pause) return;
  surroundings_.state.change([&](AppState& state) { state.pause = std::move(pause); });
}

void RunControl::begin(HeldDestination destination) {
  surroundings_.state.change([&](AppState& state) {
    state.phase = app_phase::Transferring{};
    state.transferFolders = run_.totals.folders;
    state.plannedConversions = run_.totals.conversions;
    TransferProgressSnapshot nothingYet;
    nothingYet.bytesTotal = run_.totals.bytes;
    state.progress = ofRun(std::move(nothingYet), run_);
    state.pause = std::nullopt;
    state.optimizedSkipped = 0;
  });
  // If the program ends before the run does, the run still has a record.
  if (!run_.plan->files.empty()) services_.transferring(recordTask(true));
  run_.outcome.isPacked = run_.settings->layout.packAsZip;
  // Observers are told first: nothing is copied before an interface can cancel.
  const auto held = std::make_shared<HeldDestination>(std::move(destination));
  postIfStill<run_stage::Copying>(std::chrono::milliseconds{0},
                                  [this, held] { startAttempt(std::move(*held)); });
}

std::function<bool()> RunControl::recordTask(bool isUnderWay) const {
  if (!services_.keepRecord) return [] { return false; };
  auto run = std::make_shared<Run>(run_);
  if (isUnderWay) run->outcome.status = Status::interrupted;
  return [keep = services_.keepRecord, naming = services_.placeNaming,
          localeID = services_.systemLocaleID, language = services_.writtenLanguage,
          run = std::shared_ptr<const Run>{std::move(run)}, isUnderWay] {
    return keep(recordOf({.library = *run->library,
                          .shownRows = run->shown->rows,
                          .settings = *run->settings,
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
                          .unchecked = *run->unchecked,
                          .choosing = run->choosing.get(),
                          .isUnderWay = isUnderWay}));
  };
}

std::shared_ptr<RunAttempt> RunControl::attemptOn(HeldDestination destination) {
  auto attempt = std::make_shared<RunAttempt>();
  attempt->setup.phone = run_.source.phone;
  attempt->setup.converter = services_.converter;
  attempt->setup.language = services_.writtenLanguage;
  attempt->setup.log = services_.log;
  attempt->setup.now = services_.now;
  attempt->setup.notes = run_.notes;
  attempt->plan = run_.plan;
  attempt->before = run_.outcome;
  attempt->files = run_.source.files;
  attempt->destination = std::move(destination);
  attempt->zone = run_.settings->gathering.timeZone;
  attempt->packing =
      packingOf(*run_.settings, run_.source.deviceName, attempt->zone.dateAt(run_.startedAt));
  return attempt;
}

void RunControl::follow(RunAttempt& attempt) {
  const auto slot = std::make_shared<ProgressSlot>();
  progressSlot_ = slot;
  // Ignores what an attempt posts after its end.
  const auto post = [this, life = std::weak_ptr{life_}, slot, &loop = services_.loop](
                        MainLoop::Duration delay, std::function<void()> task) {
    loop.postAfter(delay, [this, life, slot, task = std::move(task)] {
      if (life.lock() && slot == progressSlot_) task();
    });
  };
  attempt.awaitPhone = [this, post, gate = gate_,
                        stop = attempt.stop.get_token()](PhoneError::Kind kind) {
    post(MainLoop::Duration::zero(), [this, kind] { pauseForPhone(kind); });
    return gate->wait(stop);
  };
  attempt.paused = [this, post](const std::optional<run_pause::DiskFull>& shortage) {
    post(MainLoop::Duration::zero(), [this, shortage] { publishPause(shortage); });
  };
  attempt.progress = [this, post, slot,
                      &loop = services_.loop](const TransferProgressSnapshot& progress) {
    const std::lock_guard lock{slot->mutex};
    slot->latest = progress;
    if (std::exchange(slot->isPosted, true)) return;
    post(slot->delayAt(loop.now()), [this] { showProgress(); });
  };
}

void RunControl::startAttempt(HeldDestination destination) {
  run_.stage = run_stage::Copying{};
  attempt_ = attemptOn(std::move(destination));
  follow(*attempt_);
  computeThen(
      services_.transferring, services_.loop, life_,
      [attempt = attempt_] { return std::make_shared<AttemptEnd>(carryOut(*attempt)); },
      [this](const std::shared_ptr<AttemptEnd>& end) { land(std::move(*end)); });
}

void RunControl::showProgress() {
  std::optional<TransferProgressSnapshot> latest;
  {
    const std::lock_guard lock{progressSlot_->mutex};
    latest = std::exchange(progressSlot_->latest, std::nullopt);
    progressSlot_->isPosted = false;
    progressSlot_->shown = services_.loop.now();
  }
  if (!latest) return;
  surroundings_.state.change(
      [&](AppState& state) { state.progress = ofRun(*std::move(latest), run_); });
}

void RunControl::land(AttemptEnd end) {
  showProgress();
  progressSlot_.reset();
  // The old report is destroyed in the background.
  services_.background([attempt = std::exchange(attempt_, nullptr),
                        old = std::exchange(run_.outcome, std::move(end.outcome))] {});
  run_.outcome.phoneWaits = phoneWaits_;
  run_.converted = end.converted;
  if (end.hasLanded) losses_ = 0;
  remainingBytes_ = end.remainingBytes;
  const bool isWhole = !end.failure && !end.isPhoneLost && hasEndedByItself(run_.outcome);
  if (run_.is<run_stage::Cancelling>() && !isWhole) return concludeCancelled();
  if (end.isPhoneLost) {
    // The file during which the phone left is still to be copied.
    surroundings_.state.change([&](AppState& state) {
      if (state.progress) state.progress->filesDone = run_.outcome.report->files.size();
    });
    return pauseForPhone(PhoneError::Kind::gone);
  }
  if (isOutOfSpace(run_.outcome)) return meetFullDisk(end.hasLanded);
  if (run_.outcome.interruption) {
    const auto failure = std::make_exception_ptr(*run_.outcome.interruption);
    if (mayHaveLostVolume(failure)) return awaitDestination(failure);
  }
  if (end.failure) return concludeFailed(end.failure);
  conclude();
}

void RunControl::pauseForPhone(PhoneError::Kind kind) {
  if (run_.is<run_stage::Cancelling>()) return;
  run_.stage = run_stage::AwaitingPhone{};
  run_.outcome.phoneWaits = ++phoneWaits_;
  writeLog(*services_.log, "transfer paused: phone gone");
  publishPause(run_pause::Phone{run_.source.deviceName, kind});
  // The phone will be read again, and then the run continues.
  if (run_.source.files->reportLost()) return;
  // The watcher may notice the loss later than the reads, or earlier; then the phone is already
  // back.
  postIfStill<run_stage::AwaitingPhone>(phoneRetryInterval, [this] {
    if (!std::get<run_stage::AwaitingPhone>(run_.stage).isBack && surroundings_.isPhoneThere()) {
      resume();
    }
  });
}

void RunControl::phoneIsBack() {
  auto* const waiting = std::get_if<run_stage::AwaitingPhone>(&run_.stage);
  if (waiting == nullptr) return;
  waiting->isBack = true;
  publishPause(std::nullopt);
}

void RunControl::displayIsSettled() {
  const auto* const waiting = std::get_if<run_stage::AwaitingPhone>(&run_.stage);
  if (waiting == nullptr || !waiting->isBack) return;
  writeLog(*services_.log, "transfer: groups are back — resuming");
  resume();
}

void RunControl::meetFullDisk(bool hasLanded) {
  constexpr int mostRefusals = 3;
  refusals_ = hasLanded ? 0 : refusals_ + 1;
  // Packing waits for space itself. If writes keep failing despite free space, waiting does not
  // help.
  if (run_.outcome.isPacked || refusals_ > mostRefusals) return conclude();
  pauseForSpace();
}

void RunControl::pauseForSpace() {
  run_.stage = run_stage::AwaitingSpace{};
  computeThen(
      services_.looking, services_.loop, life_,
      [open = services_.destinations.openExisting, path = run_.destination,
       identity = run_.folder] { return freeBytesAt(path, identity, open); },
      [this](std::optional<std::uint64_t> free) {
        if (run_.is<run_stage::AwaitingSpace>()) landSpace(free);
      });
}

void RunControl::landSpace(std::optional<std::uint64_t> free) {
  if (!free) {
    run_.outcome.interruption = FileError{FileOperation::open, run_.destination, ENOENT};
    return awaitDestination(std::make_exception_ptr(*run_.outcome.interruption));
  }
  const bool isPublished = surroundings_.state->pause.has_value();
  if (*free < remainingBytes_) {
    if (!isPublished) writeLog(*services_.log, "transfer paused: disk full (free {})", *free);
    publishPause(run_pause::DiskFull{remainingBytes_ - *free, *free});
    return postIfStill<run_stage::AwaitingSpace>(pollInterval, [this] { pauseForSpace(); });
  }
  if (!isPublished) {
    return postIfStill<run_stage::AwaitingSpace>(pollInterval, [this] { resume(); });
  }
  writeLog(*services_.log, "transfer: space freed — continuing");
  resume();
}

void RunControl::awaitDestination(const std::exception_ptr& failure) {
  run_.stage = run_stage::AwaitingDestination{.failure = failure};
  lookForDestination();
}

void RunControl::lookForDestination() {
  computeThen(
      services_.looking, services_.loop, life_,
      [access = services_.destinations, destination = writtenBy(run_)] {
        return std::make_shared<DestinationLook>(lookFor(destination, access));
      },
      [this](const std::shared_ptr<DestinationLook>& look) {
        if (run_.is<run_stage::AwaitingDestination>()) landDestination(*look);
      });
}

void RunControl::lookAgain() {
  postIfStill<run_stage::AwaitingDestination>(pollInterval, [this] { lookForDestination(); });
}

void RunControl::landDestination(const DestinationLook& look) {
  using State = DestinationLook::State;
  constexpr int mostLosses = 3;
  constexpr int mostLooksAtDamage = 3;
  auto& waiting = std::get<run_stage::AwaitingDestination>(run_.stage);
  const bool isThere = look.state == State::there;
  if (look.state == State::gone) return concludeLost(waiting.failure);
  if (look.state == State::changed) {
    return concludeFailed(std::make_exception_ptr(
        DestinationError{DestinationError::Kind::changed, run_.destination}));
  }
  if (look.state == State::away) {
    if (!std::exchange(waiting.wasAway, true)) {
      writeLog(*services_.log, "transfer paused: destination gone");
    }
    publishPause(run_pause::Destination{run_.destination});
    return lookAgain();
  }
  // The system may notice a pulled disk a little later. One that stays and fails is damaged.
  if (!isThere || (!waiting.wasAway && isDiskError(waiting.failure))) {
    if (++waiting.looksAtDamage < mostLooksAtDamage) return lookAgain();
    return concludeLost(waiting.failure);
  }
  if (++losses_ > mostLosses) return concludeLost(waiting.failure);
  writeLog(*services_.log, "transfer: destination is back — continuing");
  run_.folder = look.identity;
  resume();
}

void RunControl::resume() {
  if (attempt_) {
    run_.stage = run_stage::Copying{};
    publishPause(std::nullopt);
    return gate_->open();
  }
  run_.stage = run_stage::Reopening{};
  // If it cannot be opened, that is the reason for the end.
  run_.outcome.interruption = std::nullopt;
  computeThen(
      services_.looking, services_.loop, life_,
      [open = services_.destinations.openRequiredForWriting, run = run_] {
        return reopen(open, run);
      },
      [this](std::shared_ptr<Reopened> destination) {
        if (run_.is<run_stage::Reopening>()) {
          landReopened(*destination);
        } else {
          // The end of a run leaves the folder free for others.
          destination->destination.folder.reset();
          concludeCancelled();
        }
        services_.background([destination = std::move(destination)] {});
      });
}

void RunControl::landReopened(Reopened& reopened) {
  if (!reopened.failure) {
    publishPause(std::nullopt);
    return startAttempt(std::move(reopened.destination));
  }
  if (isBusy(reopened.failure)) {
    publishPause(run_pause::Busy{});
    run_.stage = run_stage::Reopening{.isUnderWay = false};
    return postIfStill<run_stage::Reopening>(pollInterval, [this] { resume(); });
  }
  if (mayHaveLostVolume(reopened.failure)) return awaitDestination(reopened.failure);
  concludeFailed(reopened.failure);
}

void RunControl::cancel() {
  const bool isOver = run_.is<run_stage::Recording>() || run_.is<run_stage::Ended>();
  const auto* const reopening = std::get_if<run_stage::Reopening>(&run_.stage);
  if (attempt_) {
    run_.stage = run_stage::Cancelling{};
    attempt_->stop.request_stop();
  } else if (reopening != nullptr && reopening->isUnderWay) {
    run_.stage = run_stage::Cancelling{};
  } else if (!isOver && !run_.is<run_stage::Cancelling>()) {
    concludeCancelled();
  }
}

void RunControl::concludeCancelled() {
  run_.outcome.status = Status::cancelled;
  run_.outcome.interruption = std::nullopt;
  conclude();
}

void RunControl::concludeLost(const std::exception_ptr& failure) {
  return run_.outcome.interruption ? conclude() : concludeFailed(failure);
}

void RunControl::concludeFailed(const std::exception_ptr& failure) {
  run_.failure = failure;
  RunOutcome& outcome = run_.outcome;
  outcome.interruption = std::nullopt;
  outcome.status = Status::interrupted;
  if (services_.failureText) outcome.stopReason = services_.failureText(failure);
  writeLog(*services_.log, "transfer failed (local fs): {}",
           PrivateField{outcome.stopReason.value_or("")});
  conclude();
}

void RunControl::conclude() {
  run_.stage = run_stage::Recording{};
  run_.finishedAt = services_.now();
  RunOutcome& outcome = run_.outcome;
  if (outcome.interruption) {
    writeLog(*services_.log, "transfer failed (local fs): {}",
             PrivateField{outcome.interruption->path()});
  }
  outcome.unreadFolders = run_.source.unreadFolders;
  const bool isIncomplete = outcome.unreadFolders > 0 || !outcome.report->failures.empty();
  if (outcome.status == Status::completed && isIncomplete) {
    outcome.status = Status::completedWithFailures;
  }
  computeThen(services_.transferring, services_.loop, life_, recordTask(false),
              [this](bool hasRecord) { finish(hasRecord); });
}

void RunControl::finish(bool hasRecord) {
  run_.stage = run_stage::Ended{};
  surroundings_.state.change([&](AppState& state) {
    state.pause = std::nullopt;
    state.progress = std::nullopt;
    state.optimizedSkipped = run_.optimizedSkipped;
    state.lastRecordID = hasRecord ? std::optional{run_.id} : std::nullopt;
    state.phase = app_phase::Done{surroundings_.nextEvent(), run_.outcome.report};
  });
  surroundings_.ended();
}

}  // namespace tavrix
