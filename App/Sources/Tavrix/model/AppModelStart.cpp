// The part of the model from the press of the button to the run.

#include <algorithm>
#include <utility>

#include "library/PlanSummary.h"
#include "model/AppModel.h"

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
  if (isSettled()) prepare();  // otherwise, once the display lands
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
  computeThen(
      services_.transferring, services_.loop, life_,
      [prepared, source = *source_, open = services_.openForWriting,
       packing = packingOf(*state_.settings, source_->deviceName,
                           state_.settings->timeZone.dateAt(services_.now()))] {
        look(*prepared, source, packing, open);
        return prepared;
      },
      [this](const std::shared_ptr<Prepared>& done) { land(*done); });
}

void AppModel::look(Prepared& prepared, const ConnectedSource& source,
                    const std::optional<Packing>& packing, const ModelServices::OpenFolder& open) {
  try {
    source.files->checkDestination(prepared.path);
    HeldDestination& destination = prepared.destination;
    destination.folder = open(prepared.path);
    prepared.folder = folderIdentity(prepared.path);
    destination.content = Destination::read(*destination.folder, source.phone);
    prepared.plan = std::make_shared<const TransferPlan>(
        planOf(prepared.rows, transferOptions(*prepared.settings, source.deviceName),
               destination.content.view));
    if (!prepared.plan->files.empty()) source.files->checkMedia();
    prepared.findings = findingsOf(*prepared.plan, packing, *destination.folder,
                                   destination.content, source.phone, source.isCard);
  } catch (...) {
    prepared.failure = std::current_exception();
  }
}

void AppModel::land(Prepared& prepared) {
  isPreparing_ = false;
  const Start start = std::exchange(start_, Start::none);
  if (start == Start::none) return;  // cancelled in the meantime
  const bool isOfNow = isSettled() && hasSource() && source_->phone == prepared.phone &&
                       state_.destination == prepared.path &&
                       isSame(state_.settings, prepared.settings) &&
                       isSame(state_.visibleGroups, prepared.visible);
  if (!isOfNow) {
    // The choices have changed in the meantime: prepare again, so that what is shown is
    // transferred.
    start_ = start;
    prepared.destination.folder.reset();
    return proceedWithStart();
  }
  if (prepared.failure) {
    startFailure_ = prepared.failure;
    // Notifies observers through a change without a visible effect.
    return change([](AppState&) {});
  }
  if (prepared.plan->files.empty() && !runsWithoutFiles_) {
    return block(TransferBlocker::nothingSelected);
  }
  const bool asks = start == Start::asked && !state_.settings->skipOptimized &&
                    holdsOptimized(*prepared.plan) && asksAboutOptimized_;
  if (asks) {
    return change([](AppState& state) { state.optimizedConfirmPresented = true; });
  }
  beginRun(prepared);
}

void AppModel::beginRun(Prepared& prepared) {
  RunInProgress run;
  run.id = services_.newID();
  run.startedAt = run.finishedAt = services_.now();
  run.source = *source_;
  run.destination = prepared.path;
  run.folder = prepared.folder;
  run.settings = *state_.settings;
  run.savedPresets = state_.savedPresets;
  run.unchecked.insert(state_.excludedKeys->begin(), state_.excludedKeys->end());
  run.plan = prepared.plan;
  run.findings = std::move(prepared.findings);
  run.optimizedSkipped = state_.settings->skipOptimized ? state_.optimizedCount : 0;
  run.shown = library_;
  Library chosen = *library_;
  chosen.rows = std::move(prepared.rows);
  run.library = std::make_shared<const Library>(std::move(chosen));
  RunControl::Surroundings surroundings{.services = services_,
                                        .change = [this](const auto& edit) { change(edit); },
                                        .isPhoneThere = [this] { return isSourcePresent_; },
                                        .ended = [this] { refreshDestination(); }};
  run_ = std::make_unique<RunControl>(std::move(surroundings), std::move(run));
  run_->begin(std::move(prepared.destination));
}

void AppModel::cancelTransfer() {
  start_ = Start::none;
  if (run_ && std::holds_alternative<app_phase::Transferring>(state_.phase)) run_->cancel();
}

void AppModel::leaveSummary() {
  if (!std::holds_alternative<app_phase::Done>(state_.phase)) return;
  change([](AppState& state) { state.phase = app_phase::Browse{}; });
  const bool isDevice = std::holds_alternative<data_origin::Device>(state_.origin);
  if (!isDevice || isSourcePresent_) return;
  clearCatalogue();
  writeLog(*services_.log, "device gone during transfer screen: cleared catalog");
}

}  // namespace tavrix
