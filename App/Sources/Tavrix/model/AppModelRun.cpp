// The part of the model that carries out a run.

#include <algorithm>
#include <cerrno>
#include <utility>

#include "DeviceText.h"
#include "PlanSummary.h"
#include "RunSentences.h"
#include "model/AppModel.h"
#include "model/ModelSentences.h"

namespace tavrix {
namespace {

using Stage = RunInProgress::Stage;

constexpr std::chrono::seconds spacePollInterval{5};
/// A phone that the system still takes for present is asked again after so long.
constexpr std::chrono::seconds phoneRetryInterval{1};

bool isOutOfSpace(const TransferOutcome& outcome) {
  if (!outcome.interruption) return false;
  const int code = outcome.interruption->code();
  return code == ENOSPC || code == EDQUOT;
}

/// Whether another run is at work in the destination.
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
  return outcome.status == TransferRecord::Status::completed ||
         outcome.status == TransferRecord::Status::completedWithFailures;
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

bool holdsOptimized(const TransferPlan& plan) {
  return std::any_of(plan.files.begin(), plan.files.end(),
                     [](const PlannedFile& file) { return file.bundle.original().isOptimized(); });
}

std::vector<TransferFolder> foldersOf(const std::vector<FolderNaming::Row>& rows,
                                      const TransferPlan& plan) {
  std::vector<TransferFolder> folders;
  for (const FolderPlan& folder : folderPlans(rows, plan)) {
    if (folder.newFiles > 0) folders.push_back({folder.name, folder.newFiles});
  }
  return folders;
}

std::set<std::string, std::less<>> idsOutside(const DisplayGroups& groups,
                                              const std::vector<FolderNaming::Row>& chosen) {
  std::set<std::string, std::less<>> ids;
  for (const auto& group : *groups) ids.insert(group->id);
  for (const FolderNaming::Row& row : chosen) ids.erase(row.group.id);
  return ids;
}

/// Progress of a leg as progress of the whole run.
TransferProgressSnapshot ofRun(TransferProgressSnapshot leg, const TransferPlan& plan,
                               const TransferReport& before) {
  leg.filesDone += before.files.size();
  leg.filesTotal = plan.files.size();
  const std::uint64_t total = bytesOf(plan);
  leg.bytesDone += total - std::min(total, leg.bytesTotal);
  leg.bytesTotal = total;
  return leg;
}

}  // namespace

/// What a start found at the destination.
struct AppModel::Prepared {
  // What it was made from.
  DisplayGroups visible;
  Shared<Settings> settings;
  std::string path;
  PhoneIdentity phone;

  std::vector<FolderNaming::Row> rows;
  HeldDestination destination;
  std::shared_ptr<const TransferPlan> plan;
  RunFindings findings;
  std::optional<FolderIdentity> folder;
  std::exception_ptr failure;
};

std::unique_ptr<Folder> AppModel::open(const std::string& path, bool forWriting) const {
  const auto& own = forWriting ? services_.openForWriting : services_.openExisting;
  if (own) return own(path);
  return forWriting ? Destination::openForWriting(path) : Destination::openExisting(path);
}

void AppModel::startTransfer() {
  if (!std::holds_alternative<app_phase::Browse>(state_.phase)) return;
  start_ = Start::asked;
  startFailure_ = nullptr;
  change([](AppState& state) { state.transferBlocker = std::nullopt; });
  proceedWithStart();
}

void AppModel::transferEverything() {
  if (!state_.optimizedConfirmPresented) return;
  dismissOptimizedQuestion();
  startTransfer();
  start_ = start_ == Start::asked ? Start::answered : start_;
}

void AppModel::skipOptimizedAndTransfer() {
  if (!state_.optimizedConfirmPresented) return;
  dismissOptimizedQuestion();
  Settings settings = *state_.settings;
  settings.skipOptimized = true;
  changeSettings(std::move(settings));
  startTransfer();
}

void AppModel::dismissOptimizedQuestion() {
  change([](AppState& state) { state.optimizedConfirmPresented = false; });
}

void AppModel::dismissBlocker() {
  change([](AppState& state) { state.transferBlocker = std::nullopt; });
}

void AppModel::block(TransferBlocker blocker) {
  start_ = Start::none;
  change([&](AppState& state) { state.transferBlocker = blocker; });
}

void AppModel::proceedWithStart() {
  if (isPreparing_) return;
  if (!hasSource()) return block(TransferBlocker::noDevice);
  if (!state_.destination) return block(TransferBlocker::noDestination);
  if (isSettled()) prepare();  // else when the display lands
}

void AppModel::prepare() {
  auto prepared = std::make_shared<Prepared>();
  prepared->visible = state_.visibleGroups;
  prepared->settings = state_.settings;
  prepared->path = *state_.destination;
  prepared->phone = source_->phone;
  prepared->rows = chosenRows(state_.visibleGroups);
  if (prepared->rows.empty() && !runsWithoutFiles_) {
    return block(TransferBlocker::nothingSelected);
  }
  isPreparing_ = true;
  services_.transferring([this, life = std::weak_ptr{life_}, prepared, &loop = services_.loop,
                          path = prepared->path, source = *source_,
                          options = transferOptions(*state_.settings, source_->deviceName),
                          packing = packingOf(*state_.settings, source_->deviceName,
                                              state_.settings->timeZone.dateAt(services_.now())),
                          openForWriting = services_.openForWriting] {
    try {
      if (source.checkDestination) source.checkDestination(path);
      HeldDestination& destination = prepared->destination;
      destination.folder =
          openForWriting ? openForWriting(path) : Destination::openForWriting(path);
      prepared->folder = folderIdentity(path);
      destination.content = Destination::read(*destination.folder, source.phone);
      prepared->plan = std::make_shared<const TransferPlan>(
          planOf(prepared->rows, options, destination.content.view));
      if (source.checkMedia && !prepared->plan->files.empty()) source.checkMedia();
      prepared->findings = findingsOf(*prepared->plan, packing, *destination.folder,
                                      destination.content, source.phone, source.isCard);
    } catch (...) {
      prepared->failure = std::current_exception();
    }
    loop.post([this, life, prepared] {
      if (life.lock()) land(prepared);
    });
  });
}

void AppModel::land(const std::shared_ptr<Prepared>& prepared) {
  isPreparing_ = false;
  const Start start = std::exchange(start_, Start::none);
  if (start == Start::none) return;  // cancelled meanwhile
  const bool isOfNow = isSettled() && hasSource() && source_->phone == prepared->phone &&
                       state_.destination == prepared->path &&
                       isSame(state_.settings, prepared->settings) &&
                       isSame(state_.visibleGroups, prepared->visible);
  if (!isOfNow) {
    // Something was chosen otherwise meanwhile: what is shown now is what is transferred.
    start_ = start;
    prepared->destination.folder.reset();
    return proceedWithStart();
  }
  if (prepared->failure) {
    startFailure_ = prepared->failure;
    // Observers learn of it by a change that changes nothing they see.
    return change([](AppState&) {});
  }
  if (prepared->plan->files.empty() && !runsWithoutFiles_) {
    return block(TransferBlocker::nothingSelected);
  }
  const bool asks = start == Start::asked && !state_.settings->skipOptimized &&
                    holdsOptimized(*prepared->plan) && asksAboutOptimized_;
  if (asks) {
    return change([](AppState& state) { state.optimizedConfirmPresented = true; });
  }
  beginRun(*prepared);
}

void AppModel::beginRun(Prepared& prepared) {
  const auto& plan = prepared.plan;
  run_ = std::make_unique<RunInProgress>();
  run_->id = services_.newID();
  run_->startedAt = run_->finishedAt = services_.now();
  run_->source = *source_;
  run_->destination = prepared.path;
  run_->folder = prepared.folder;
  run_->settings = *state_.settings;
  run_->unchecked = idsOutside(state_.displayGroups, prepared.rows);
  run_->unchecked.insert(state_.excludedKeys->begin(), state_.excludedKeys->end());
  run_->plan = plan;
  run_->findings = std::move(prepared.findings);
  run_->optimizedSkipped = state_.settings->skipOptimized ? state_.optimizedCount : 0;
  Library chosen = *library_;
  chosen.rows = std::move(prepared.rows);
  run_->library = std::make_shared<const Library>(std::move(chosen));
  change([&](AppState& state) {
    state.phase = app_phase::Transferring{};
    state.transferFolders = foldersOf(run_->library->rows, *plan);
    state.plannedConversions = conversionsOf(*plan);
    TransferProgressSnapshot nothingYet;
    nothingYet.bytesTotal = bytesOf(*plan);
    state.progress = ofRun(std::move(nothingYet), *plan, {});
    state.transferPausedReason = std::nullopt;
    state.optimizedSkipped = 0;
  });
  startLeg(std::move(prepared.destination));
}

std::function<bool()> AppModel::recordTask(bool isUnderWay) const {
  if (!services_.keepRecord) return [] { return false; };
  const RunInProgress& run = *run_;
  TransferOutcome outcome = run.outcome;
  if (isUnderWay) outcome.status = TransferRecord::Status::interrupted;
  return [keep = services_.keepRecord, naming = services_.placeNaming, library = run.library,
          settings = std::make_shared<const Settings>(run.settings), plan = run.plan,
          outcome = std::move(outcome), phone = run.source.phone, destination = run.destination,
          localeID = services_.systemLocaleID, language = services_.writtenLanguage, id = run.id,
          startedAt = run.startedAt, finishedAt = run.finishedAt, unchecked = run.unchecked,
          isUnderWay] {
    return keep(recordOf({.library = *library,
                          .settings = *settings,
                          .plan = *plan,
                          .outcome = outcome,
                          .phone = phone,
                          .destinationPath = destination,
                          .systemLocaleID = localeID,
                          .language = language,
                          .id = id,
                          .startedAt = startedAt,
                          .finishedAt = finishedAt,
                          .placeNaming = naming,
                          .unchecked = unchecked,
                          .isUnderWay = isUnderWay}));
  };
}

void AppModel::startLeg(HeldDestination destination) {
  const bool isFirst = run_->stage == Stage::running;
  run_->stage = Stage::running;
  auto leg = std::make_shared<TransferLeg>();
  const auto slot = std::make_shared<ProgressSlot>();
  progressSlot_ = slot;
  leg->setup.phone = run_->source.phone;
  leg->setup.converter = services_.converter;
  leg->setup.language = services_.writtenLanguage;
  leg->setup.log = services_.log;
  leg->setup.now = services_.now;
  leg->language = services_.language;
  leg->whole = run_->plan;
  leg->plan = remainingPlan(*run_->plan, run_->outcome.report);
  leg->openMedia = run_->source.openMedia;
  leg->awaitPhone = [this, life = std::weak_ptr{life_}, slot, gate = run_->gate,
                     stop = leg->stop.get_token(), &loop = services_.loop](PhoneError::Kind kind) {
    loop.post([this, life, slot, kind] {
      if (life.lock() && slot == progressSlot_) pauseForPhone(kind);
    });
    return gate->wait(stop);
  };
  leg->destination = std::move(destination);
  leg->zone = run_->settings.timeZone;
  leg->packing =
      packingOf(run_->settings, run_->source.deviceName, leg->zone.dateAt(run_->startedAt));
  leg->paused = [this, life = std::weak_ptr{life_}, slot,
                 &loop = services_.loop](const std::optional<std::string>& reason) {
    loop.post([this, life, slot, reason] {
      if (!life.lock() || slot != progressSlot_) return;
      change([&](AppState& state) { state.transferPausedReason = reason; });
    });
  };
  leg->progress = [this, life = std::weak_ptr{life_}, slot,
                   &loop = services_.loop](const TransferProgressSnapshot& progress) {
    const std::lock_guard lock{slot->mutex};
    slot->latest = progress;
    if (std::exchange(slot->isPosted, true)) return;
    loop.post([this, life, slot] {
      if (life.lock() && slot == progressSlot_) showProgress();
    });
  };
  if (run_->isCancelled) leg->stop.request_stop();
  run_->leg = leg;
  // Should the program not live to the end, the run has its record all the same.
  auto record = isFirst && !leg->plan.files.empty() ? recordTask(true) : nullptr;
  services_.transferring(
      [this, life = std::weak_ptr{life_}, leg, &loop = services_.loop, record = std::move(record)] {
        if (record) record();
        loop.post([this, life, end = carryOut(*leg)]() mutable {
          if (life.lock()) landLeg(std::move(end));
        });
      });
}

void AppModel::showProgress() {
  std::optional<TransferProgressSnapshot> latest;
  {
    const std::lock_guard lock{progressSlot_->mutex};
    latest = std::exchange(progressSlot_->latest, std::nullopt);
    progressSlot_->isPosted = false;
  }
  if (!latest || !run_) return;
  change([&](AppState& state) {
    state.progress = ofRun(*std::move(latest), *run_->plan, run_->outcome.report);
  });
}

void AppModel::landLeg(LegEnd end) {
  run_->leg.reset();
  progressSlot_.reset();
  TransferOutcome& outcome = run_->outcome;
  const std::size_t filesBefore = outcome.report.files.size();
  outcome = joined(std::move(outcome), std::move(end.outcome), *run_->plan);
  run_->failure = end.failure;
  const bool isWhole = !end.failure && !end.isPhoneLost && hasEndedByItself(outcome);
  if (run_->isCancelled && !isWhole) {
    outcome.status = TransferRecord::Status::cancelled;
    outcome.interruption = std::nullopt;
    return endRun();
  }
  if (end.isPhoneLost) return pauseForPhone(PhoneError::Kind::gone);
  if (isOutOfSpace(outcome)) return meetFullDisk(filesBefore);
  if (end.failure) outcome.status = TransferRecord::Status::interrupted;
  endRun();
}

void AppModel::pauseForPhone(PhoneError::Kind kind) {
  if (run_->isCancelled) return;
  run_->stage = Stage::pausedForPhone;
  ++run_->outcome.phoneWaits;
  writeLog(log(), "transfer paused: phone gone");
  change([&](AppState& state) {
    state.transferPausedReason = waitingText(
        services_.language, lossText(services_.language, run_->source.deviceName, kind));
  });
  // It is read anew, and then the run goes on.
  if (run_->source.lost) return run_->source.lost();
  // The watcher may be slower to notice than the reads were, or faster: then it is back already.
  services_.loop.postAfter(phoneRetryInterval, ifAlive([this] {
                             const bool waits = run_ && run_->stage == Stage::pausedForPhone &&
                                                !resumesWhenDisplayLands_;
                             if (waits && isSourcePresent_) resume();
                           }));
}

void AppModel::meetFullDisk(std::size_t filesBefore) {
  constexpr int mostRefusals = 3;
  TransferOutcome& outcome = run_->outcome;
  run_->refusals = outcome.report.files.size() > filesBefore ? 0 : run_->refusals + 1;
  // Packing has waited by itself. And what is no lack of bytes is not mended by more of them.
  if (outcome.isPacked || run_->refusals > mostRefusals) return endRun();
  pauseForSpace();
}

void AppModel::pauseForSpace() {
  run_->stage = Stage::pausedForSpace;
  const std::uint64_t needed = bytesOf(remainingPlan(*run_->plan, run_->outcome.report));
  services_.transferring([this, life = std::weak_ptr{life_}, &loop = services_.loop, needed,
                          path = run_->destination, identity = run_->folder,
                          openExisting = services_.openExisting] {
    std::optional<std::uint64_t> free;
    try {
      const bool isThere = folderIdentity(path) == identity;
      const auto folder = !isThere       ? nullptr
                          : openExisting ? openExisting(path)
                                         : Destination::openExisting(path);
      if (folder) free = folder->freeBytes();
    } catch (const std::exception&) {
      // Without its destination the run cannot go on either.
    }
    loop.post([this, life, free, needed] {
      if (life.lock()) landSpace(free, needed);
    });
  });
}

void AppModel::landSpace(std::optional<std::uint64_t> free, std::uint64_t needed) {
  if (!run_ || run_->stage != Stage::pausedForSpace) return;  // cancelled meanwhile
  if (!free) {
    run_->outcome.interruption = FileError{FileOperation::open, run_->destination, ENOENT};
    return endRun();
  }
  if (*free >= needed && state_.transferPausedReason) {
    writeLog(log(), "transfer: space freed — continuing");
    return resume();
  }
  if (*free >= needed) {
    services_.loop.postAfter(spacePollInterval, ifAlive([this] {
                               if (run_ && run_->stage == Stage::pausedForSpace) resume();
                             }));
    return;
  }
  const std::string reason = say(services_.language, sentences::diskFull,
                                 bytesText(services_.language, needed - std::min(needed, *free)),
                                 bytesText(services_.language, *free));
  if (!state_.transferPausedReason) {
    writeLog(log(), "transfer paused: disk full (free {})", *free);
  }
  if (state_.transferPausedReason != reason) {
    change([&](AppState& state) { state.transferPausedReason = reason; });
  }
  services_.loop.postAfter(spacePollInterval, ifAlive([this] {
                             if (run_ && run_->stage == Stage::pausedForSpace) pauseForSpace();
                           }));
}

void AppModel::resume() {
  if (run_->leg) {
    change([](AppState& state) { state.transferPausedReason = std::nullopt; });
    run_->stage = Stage::running;
    run_->gate->open();
    return;
  }
  run_->stage = Stage::resuming;
  auto held = std::make_shared<Prepared>();
  services_.transferring([this, life = std::weak_ptr{life_}, held, &loop = services_.loop,
                          path = run_->destination, identity = run_->folder,
                          phone = run_->source.phone, openForWriting = services_.openForWriting] {
    try {
      if (folderIdentity(path) != identity) {
        throw DestinationError{DestinationError::Kind::missing, path};
      }
      held->destination.folder =
          openForWriting ? openForWriting(path) : Destination::openForWriting(path);
      held->destination.content = Destination::read(*held->destination.folder, phone);
    } catch (...) {
      held->failure = std::current_exception();
    }
    loop.post([this, life, held] {
      if (life.lock() && run_ && run_->stage == Stage::resuming) startLegWith(held);
    });
  });
}

void AppModel::startLegWith(const std::shared_ptr<Prepared>& held) {
  if (!held->failure) {
    change([](AppState& state) { state.transferPausedReason = std::nullopt; });
    return startLeg(std::move(held->destination));
  }
  if (isBusy(held->failure)) {
    services_.loop.postAfter(spacePollInterval, ifAlive([this] {
                               if (run_ && run_->stage == Stage::resuming) resume();
                             }));
    return;
  }
  run_->failure = held->failure;
  run_->outcome.interruption = std::nullopt;
  run_->outcome.status = TransferRecord::Status::interrupted;
  endRun();
}

void AppModel::cancelTransfer() {
  start_ = Start::none;
  if (!run_ || !std::holds_alternative<app_phase::Transferring>(state_.phase)) return;
  run_->isCancelled = true;
  const bool isBetweenLegs = run_->stage == Stage::pausedForPhone ||
                             run_->stage == Stage::pausedForSpace || run_->stage == Stage::resuming;
  if (run_->leg) {
    run_->leg->stop.request_stop();
  } else if (isBetweenLegs) {
    run_->outcome.status = TransferRecord::Status::cancelled;
    run_->outcome.interruption = std::nullopt;
    endRun();
  }
}

void AppModel::endRun() {
  run_->stage = Stage::ending;
  resumesWhenDisplayLands_ = false;
  run_->finishedAt = services_.now();
  TransferOutcome& outcome = run_->outcome;
  outcome.unreadFolders = run_->source.unreadFolders;
  const bool isIncomplete = outcome.unreadFolders > 0 || !outcome.report.failures.empty();
  if (outcome.status == TransferRecord::Status::completed && isIncomplete) {
    outcome.status = TransferRecord::Status::completedWithFailures;
  }
  services_.transferring(
      [this, life = std::weak_ptr{life_}, &loop = services_.loop, record = recordTask(false)] {
        loop.post([this, life, hasRecord = record()] {
          if (life.lock()) finish(hasRecord);
        });
      });
}

void AppModel::finish(bool hasRecord) {
  run_->stage = Stage::ended;
  change([&](AppState& state) {
    state.transferPausedReason = std::nullopt;
    state.progress = std::nullopt;
    state.optimizedSkipped = run_->optimizedSkipped;
    state.lastRecordID = hasRecord ? std::optional{run_->id} : std::nullopt;
    state.phase = app_phase::Done{run_->outcome.report};
  });
  refreshDestination();
}

void AppModel::leaveSummary() {
  if (!std::holds_alternative<app_phase::Done>(state_.phase)) return;
  change([](AppState& state) { state.phase = app_phase::Browse{}; });
  const bool isDevice = std::holds_alternative<data_origin::Device>(state_.origin);
  if (!isDevice || isSourcePresent_) return;
  clearCatalogue();
  writeLog(log(), "device gone during transfer screen: cleared catalog");
}

}  // namespace tavrix
