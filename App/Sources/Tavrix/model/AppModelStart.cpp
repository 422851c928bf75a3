// The part of the model from the press of the button to the run.

#include <algorithm>
#include <filesystem>
#include <utility>

#include "library/PlanSummary.h"
#include "model/AppModel.h"
#include "settings/FolderMaking.h"

namespace tavrix {
namespace {

bool holdsOptimized(const TransferPlan& plan) {
  return std::any_of(plan.files.begin(), plan.files.end(),
                     [](const PlannedFile& file) { return file.bundle.original().isOptimized(); });
}

}  // namespace

/// The result of preparing a start at the destination.
struct AppModel::Prepared {
  // The choices it was made from.
  DisplayGroups visible;
  Shared<CheckMarks> checks;
  Shared<Settings> settings;
  std::string path;
  PhoneIdentity phone;
  std::shared_ptr<const Library> shown;
  std::vector<std::string> excludedKeys;
  std::optional<Packing> packing;
  ContinuationContext naming;
  Choice choice;

  std::shared_ptr<const Choosing> choosing;  ///< nullptr if the choice is everything
  std::shared_ptr<const Library> library;    ///< with the chosen folders only
  HeldDestination destination;
  std::shared_ptr<const TransferPlan> plan;
  Shared<std::vector<DestinationMarker::FolderNote>> notes;
  bool holdsOptimized = false;
  RunTotals totals;
  DestinationFindings findings;
  Shared<Run::GroupIDs> unchecked;
  std::optional<FolderIdentity> folder;
  std::string place;  ///< see Run
  std::exception_ptr failure;
};

bool AppModel::isStarting() const {
  if (std::holds_alternative<Awaiting>(start_)) return true;
  const auto* const preparing = std::get_if<Preparing>(&start_);
  return preparing != nullptr && preparing->wanted;
}

void AppModel::startTransfer() {
  if (!std::holds_alternative<app_phase::Browse>(state_->phase)) return;
  closeOverlay();
  if (auto* const preparing = std::get_if<Preparing>(&start_)) {
    preparing->wanted = Awaiting{};
  } else {
    start_ = Awaiting{};
  }
  proceedWithStart();
}

void AppModel::transferEverything() {
  if (!state_->overlay.is<overlay::OptimizedQuestion>()) return;
  closeOverlay();
  if (!std::holds_alternative<app_phase::Browse>(state_->phase)) return;
  if (auto* const preparing = std::get_if<Preparing>(&start_)) {
    preparing->wanted = Awaiting{.isAnswered = true};
  } else {
    start_ = Awaiting{.isAnswered = true};
  }
  proceedWithStart();
}

void AppModel::skipOptimizedAndTransfer() {
  if (!state_->overlay.is<overlay::OptimizedQuestion>()) return;
  closeOverlay();
  Settings settings = *state_->settings;
  settings.content.skipOptimized = true;
  changeSettings(std::move(settings));
  startTransfer();
}

void AppModel::block(TransferBlocker blocker) {
  if (auto* const preparing = std::get_if<Preparing>(&start_)) {
    preparing->wanted = std::nullopt;
  } else {
    start_ = NotStarting{};
  }
  open(overlay::Blocker{blocker});
}

void AppModel::proceedWithStart() {
  if (std::holds_alternative<Preparing>(start_)) return;  // otherwise, once that lands
  if (!hasSource()) return block(TransferBlocker::noDevice);
  if (!state_->destination) return block(TransferBlocker::noDestination);
  if (isSettled()) prepare(std::get<Awaiting>(start_));  // otherwise, once the display lands
}

void AppModel::prepare(Awaiting awaiting) {
  const bool isNoneChosen = inclusion(*state_) == InclusionState::none;
  if (isNoneChosen && !runsWithoutFiles_) return block(TransferBlocker::nothingSelected);
  auto prepared = std::make_shared<Prepared>();
  prepared->visible = state_->visibleGroups;
  prepared->checks = state_->checks;
  prepared->settings = state_->settings;
  prepared->path = *state_->destination;
  prepared->phone = source()->phone;
  prepared->shown = library_;
  prepared->packing = packingOf(*state_->settings, source()->deviceName,
                                state_->settings->gathering.timeZone.dateAt(services_.now()));
  prepared->naming = continuationContext();
  prepared->choice = choice_;
  start_ = Preparing{awaiting};
  computeThen(
      services_.transferring, services_.loop, life_,
      [prepared, keys = keys_, source = *source(), services = services_] {
        Run::GroupIDs unchecked;
        for (const std::uint32_t key : prepared->checks->excluded()) {
          unchecked.insert(keys->keyOf(key));
        }
        prepared->unchecked = std::move(unchecked);
        look(*prepared, source, services);
        return prepared;
      },
      [this](std::shared_ptr<Prepared> done) {
        land(*done);
        // The rest of the preparation is destroyed in the background.
        services_.background([done = std::move(done)] {});
      });
}

std::shared_ptr<const Choosing> AppModel::choosingFor(const Prepared& prepared,
                                                      const ConnectedSource& source,
                                                      const ModelServices& services) {
  const Choice& choice = prepared.choice;
  if (choice.isEverything()) return nullptr;
  StringSet recorded;
  if (choice.isSinceLast && services.recordedFiles) {
    recorded = services.recordedFiles(source.phone, *prepared.shown->bundles);
  }
  auto choosing =
      std::make_shared<const Choosing>(choice, prepared.shown->clock, std::move(recorded));
  if (choosing->knowsAll(foldersOf(prepared.shown->rows))) return choosing;
  // The missing name may be one that a folder has only in the destination.
  const auto folder = services.destinations.openExisting(prepared.path);
  const auto content = folder ? Destination::read(*folder, source.phone) : Destination::Content{};
  choosing->check(continuedFolders(prepared.shown->rows, prepared.naming, content.view));
  return choosing;
}

void AppModel::look(Prepared& prepared, const ConnectedSource& source,
                    const ModelServices& services) {
  try {
    source.files->checkDestination(prepared.path);
    // A wrong choice is reported before anything is written.
    prepared.choosing = choosingFor(prepared, source, services);
    HeldDestination& destination = prepared.destination;
    destination.folder = services.destinations.openForWriting(prepared.path);
    prepared.folder = folderIdentity(prepared.path);
    std::error_code fault;
    prepared.place = std::filesystem::canonical(prepared.path, fault).string();
    destination.content = Destination::read(*destination.folder, source.phone);
    Library chosen = *prepared.shown;
    const DestinationView& view = destination.content.view;
    auto folders = chosenFolders(continuedFolders(prepared.shown->rows, prepared.naming, view),
                                 prepared.visible, *prepared.checks);
    TransferPlan plan = TransferPlanner::plan(folders, prepared.naming.options, view);
    if (prepared.choosing) {
      folders = prepared.choosing->partOf(folders);
      plan = partOf(plan, folders);
      chosen = partOf(std::move(chosen), rowsOf(folders));
    } else if (folders.size() < chosen.rows.size()) {
      chosen = partOf(std::move(chosen), rowsOf(folders));
    } else {
      chosen.rows = rowsOf(folders);
    }
    prepared.notes = notesOf(folders, prepared.naming);
    prepared.plan = std::make_shared<const TransferPlan>(std::move(plan));
    if (!prepared.plan->files.empty()) source.files->checkMedia();
    prepared.holdsOptimized = tavrix::holdsOptimized(*prepared.plan);
    prepared.totals = totalsOf(chosen.rows, *prepared.plan);
    prepared.findings =
        findingsOf(*prepared.plan, prepared.packing,
                   folderMaking(*prepared.settings, prepared.naming.systemLocaleID),
                   *destination.folder, destination.content, source.phone, source.isCard);
    prepared.library = std::make_shared<const Library>(std::move(chosen));
  } catch (...) {
    prepared.failure = std::current_exception();
  }
}

void AppModel::land(Prepared& prepared) {
  const auto wanted = std::get<Preparing>(start_).wanted;
  start_ = NotStarting{};
  if (!wanted) return prepared.destination.folder.reset();  // cancelled in the meantime
  const bool isOfNow =
      isSettled() && hasSource() && source()->phone == prepared.phone &&
      state_->destination == prepared.path && isSame(state_->settings, prepared.settings) &&
      isSame(state_->checks, prepared.checks) && isSame(state_->visibleGroups, prepared.visible);
  if (!isOfNow) {
    // The choices have changed in the meantime: prepare again, so that what is shown is
    // transferred.
    start_ = *wanted;
    prepared.destination.folder.reset();
    return proceedWithStart();
  }
  if (prepared.failure) {
    prepared.destination.folder.reset();
    return open(overlay::StartFailure{prepared.failure});
  }
  const bool asks = !wanted->isAnswered && !state_->settings->content.skipOptimized &&
                    prepared.holdsOptimized && asksAboutOptimized_;
  const bool isEmpty = prepared.plan->files.empty() && !runsWithoutFiles_;
  if (isEmpty || asks) prepared.destination.folder.reset();
  if (isEmpty) return block(TransferBlocker::nothingSelected);
  if (asks) return open(overlay::OptimizedQuestion{});
  beginRun(prepared);
}

void AppModel::beginRun(Prepared& prepared) {
  Run run;
  run.id = services_.newID();
  run.startedAt = run.finishedAt = services_.now();
  run.source = *source();
  run.destination = prepared.path;
  run.folder = prepared.folder;
  run.place = prepared.place;
  run.settings = state_->settings;
  run.savedPresets = state_->savedPresets;
  run.unchecked = prepared.unchecked;
  run.choosing = prepared.choosing;
  run.plan = prepared.plan;
  run.notes = prepared.notes;
  run.totals = prepared.totals;
  run.findings = std::move(prepared.findings);
  run.optimizedSkipped = state_->settings->content.skipOptimized ? state_->optimizedCount : 0;
  run.shown = prepared.shown;
  run.library = prepared.library;
  RunControl::Surroundings surroundings{.services = services_,
                                        .state = state_,
                                        .isPhoneThere = [this] { return hasSource(); },
                                        .nextEvent = [this] { return nextEvent(); },
                                        .ended = [this] { runEnded(); }};
  // An earlier run is destroyed in the background: its report may be large.
  std::optional<Run> earlier;
  if (run_) earlier = run_->now();
  run_ = std::make_unique<RunControl>(std::move(surroundings), std::move(run));
  services_.background([earlier = std::move(earlier)] {});
  if (steer_) steer_(true);
  run_->begin(std::move(prepared.destination));
}

void AppModel::runEnded() {
  if (steer_) steer_(false);
  refreshDestination();
}

void AppModel::cancelTransfer() {
  if (auto* const preparing = std::get_if<Preparing>(&start_)) {
    preparing->wanted = std::nullopt;
  } else {
    start_ = NotStarting{};
  }
  if (run_ && std::holds_alternative<app_phase::Transferring>(state_->phase)) run_->cancel();
}

void AppModel::leaveSummary() {
  if (!std::holds_alternative<app_phase::Done>(state_->phase)) return;
  services_.background([phase = state_->phase] {});
  state_.change([](AppState& state) { state.phase = app_phase::Browse{}; });
  const bool isDevice = std::holds_alternative<data_origin::Device>(state_->origin);
  if (!isDevice || hasSource()) return;
  clearCatalogue();
  writeLog(*services_.log, "device gone during transfer screen: cleared catalog");
}

}  // namespace tavrix
