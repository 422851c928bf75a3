// The commands that plan and transfer.

#include <algorithm>

#include "cli/commands/Commands.h"
#include "cli/printing/ProgressBar.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/RepairSentences.h"
#include "cli/sentences/WindowSentences.h"
#include "cli/sessions/ChosenShots.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/FindingsText.h"
#include "cli/sessions/ModelSession.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/PhoneSession.h"
#include "cli/sessions/SettingWarnings.h"
#include "cli/sessions/Source.h"
#include "foundation/Log.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "services/SleepInhibitor.h"
#include "settings/FolderMaking.h"
#include "text/PhoneSentences.h"

namespace tavrix::cli {
namespace {

bool isTransferring(const AppState& state) {
  return std::holds_alternative<app_phase::Transferring>(state.phase);
}

void tellLoaded(const CommandContext& context, const Library& library, const TransferPlan& plan) {
  if (sourceOf(context).kind() != PictureSource::Kind::snapshot) return;
  writeLog(context.log, "snapshot loaded: assets={}, groups={}, new={}", library.fileCount,
           library.rows.size(), plan.files.size());
}

/// Returns the sentence for the end of a pause.
const Sentence<>& endOf(const RunPause& pause) {
  if (std::holds_alternative<run_pause::DiskFull>(pause)) return sentences::spaceIsFree;
  if (std::holds_alternative<run_pause::Destination>(pause)) return sentences::destinationIsBack;
  const bool wasBusy = std::holds_alternative<run_pause::Busy>(pause);
  return wasBusy ? sentences::folderIsFree : sentences::phoneIsBack;
}

/// A transfer by the model, with its progress reported on standard error.
class TransferSession {
 public:
  TransferSession(const CommandContext& context, PlaceNaming* naming)
      : context_(context), session_(context, naming, false) {
    subscription_ = model().subscribe([this](const StateChange& change) { follow(change); });
  }

  AppModel& model() { return session_.model(); }
  const std::optional<std::string>& recordFailure() const { return session_.recordFailure(); }

  /// Returns when the run has ended. Throws the error that stopped it before its first byte.
  const Run& carryOut() {
    if (isPhone(context_.call.source())) {
      heedInterrupts();
      phone_.emplace(session_);
    }
    // If the phone leaves before the run begins, wait for it again.
    do {
      open();
      model().startTransfer();
      session_.runUntil([this] { return hasEnded(); });
      if (const auto* const failure = startFailure()) std::rethrow_exception(failure->error);
      if (isGivenUp_) {
        throw CommandFailure{ExitStatus::cancelled,
                             say(context_.language(), sentences::runCancelled)};
      }
    } while (model().run() == nullptr);
    bar_.reset();
    return *model().run();
  }

 private:
  void open() {
    if (!phone_) return session_.open();
    phone_->connect(stop_);
    session_.openDestination();
  }
  const overlay::StartFailure* startFailure() {
    return model().state().overlay.as<overlay::StartFailure>();
  }
  /// Returns true if the run, or the attempt to start one, has ended.
  bool hasEnded() {
    const Run* const run = model().run();
    if (run != nullptr) return run->is<run_stage::Ended>();
    return startFailure() != nullptr || transferBlocker(model().state()) || isGivenUp_;
  }

  void heedInterrupts() {
    if (onStop_) return;
    stop_ = context_.surroundings.catchInterrupts();
    onStop_.emplace(stop_, [this] {
      session_.loop().post([this] {
        if (phone_) phone_->interrupted();
        isGivenUp_ = model().run() == nullptr;
        model().cancelTransfer();
      });
    });
  }

  void follow(const StateChange& change) {
    if (!isTransferring(change.before) && isTransferring(change.after)) begin();
    if (change.before.pause != change.after.pause) followPause(change.before, change.after);
    if (change.after.progress && change.has(StateTopic::progress)) show(*change.after.progress);
  }

  void begin() {
    const Run& run = *model().run();
    tellLoaded(context_, *run.library, *run.plan);
    tellPlacesFault(context_);
    tellChoice(context_, run.source.phone, *run.library->bundles);
    tellIdleSettings(context_, run.library->rows);
    tellFindings(context_, run.findings);
    tellSpace(context_, run.findings);
    bar_.emplace(context_.messages);
    heedInterrupts();
    if (stop_.stop_requested()) model().cancelTransfer();
  }

  void followPause(const AppState& before, const AppState& after) {
    if (after.pause) {
      session_.tell(pauseText(context_.language(), *after.pause));
      if (phone_) phone_->tellOtherPhones();
      return;
    }
    // The pause may have ended with the run.
    if (!isTransferring(after) || !before.pause) return;
    session_.tell(say(context_.language(), endOf(*before.pause)));
  }

  void show(const TransferProgressSnapshot& progress) {
    if (bar_) bar_->show(progress, std::chrono::steady_clock::now());
  }

  const CommandContext& context_;
  ModelSession session_;
  std::optional<PhoneSession> phone_;
  std::optional<ProgressBar> bar_;
  AppModel::Subscription subscription_;
  bool isGivenUp_ = false;  ///< the user stopped the call before the run began
  std::stop_token stop_;
  std::optional<std::stop_callback<std::function<void()>>> onStop_;
};

ExitStatus statusOf(const RunOutcome& outcome) {
  switch (outcome.status) {
    case TransferRecord::Status::completed:
      return ExitStatus::done;
    case TransferRecord::Status::completedWithFailures:
      return ExitStatus::someFailed;
    case TransferRecord::Status::cancelled:
      return ExitStatus::cancelled;
    case TransferRecord::Status::interrupted:
      return ExitStatus::stopped;
  }
  return ExitStatus::stopped;
}

/// Returns true if at least one file is in a finished archive.
bool hasArchive(const TransferReport& report) {
  return std::any_of(report.files.begin(), report.files.end(), [](const FileOutcome& file) {
    return file.path && file.path->find(".zip/") != std::string::npos;
  });
}

/// Reports on standard error the ends of a run that are not regular: cancellation, interruption,
/// and failures.
void tellEnd(const CommandContext& context, const Run& run) {
  const Language language = context.language();
  const RunOutcome& outcome = run.outcome;
  if (outcome.status == TransferRecord::Status::cancelled) {
    const Sentence<>& packing = hasArchive(*outcome.report) ? sentences::packingCancelled
                                                            : sentences::packingCancelledEarly;
    context.warn(say(language, outcome.isPacked ? packing : sentences::runCancelled));
  }
  if (run.failure) {
    context.warn(failureOf(language, context.call.destination(), run.failure).sentence());
  }
  if (outcome.interruption) {
    context.warn(say(language,
                     outcome.isPacked ? sentences::packingInterrupted : sentences::runInterrupted,
                     tavrix::sentences::systemErrorText(language, outcome.interruption->code()),
                     printable(outcome.interruption->path())));
  }
  if (outcome.markerFailure) {
    context.warn(say(language, sentences::markerNotSaved, printable(outcome.markerFailure->path()),
                     tavrix::sentences::systemErrorText(language, outcome.markerFailure->code())));
  }
}

}  // namespace

ExitStatus showPlan(const CommandContext& context) {
  checkApart(context, context.call.destination());
  Destination::checkWritable(context.call.destination());
  // A plan writes nothing at all.
  const auto naming = openPlaceNaming(context, false);
  ModelSession session{context, naming.get(), true};
  session.open();
  const AppModel& model = session.model();
  if (const auto* const refused =
          std::get_if<destination_state::Refused>(&model.state().destinationState)) {
    std::rethrow_exception(refused->error);
  }
  const auto [library, chosenPlan] =
      chosenPart(context, *model.library(), *model.plan().folders, model.plan().plan);
  const TransferPlan& plan = *chosenPlan;
  tellLoaded(context, library, plan);
  tellIdleSettings(context, rowsOf(*model.plan().folders));
  const auto packing =
      packingOf(context.settings, deviceName(context),
                context.settings.gathering.timeZone.dateAt(context.surroundings.now()));
  std::optional<std::uint64_t> freeBytes;
  const auto folder = Destination::openExisting(context.call.destination());
  const auto& content = model.plan().destination;
  if (folder && content) {
    const DestinationFindings findings = findingsOf(
        plan, packing, folderMaking(context.settings, context.surroundings.systemLocaleID), *folder,
        *content, phoneOf(context), sourceOf(context).kind() == PictureSource::Kind::card);
    tellFindings(context, findings);
    freeBytes = findings.freeBytes;
  }
  const bool isFlat = context.settings.gathering.uiMode == UIGroupingMode::flat;
  context.printer.plan({library, plan, context.call.destination(), isFlat, freeBytes,
                        neededBytes(plan, packing),
                        packing ? plannedArchives(plan, *packing) : std::vector<PlannedArchive>{},
                        context.call.listsFiles});
  return ExitStatus::done;
}

ExitStatus transfer(const CommandContext& context) {
  if (context.call.isRehearsal) return showPlan(context);
  checkApart(context, context.call.destination());
  const auto naming = openPlaceNaming(context);
  const SleepHold awake{context.surroundings.sleep,
                        say(context.language(), sentences::awakeForTransfer)};
  TransferSession session{context, naming.get()};
  const Run& run = session.carryOut();
  tellEnd(context, run);
  if (const auto& failure = session.recordFailure()) context.warn(*failure);
  if (naming) naming->save();
  try {
    context.printer.transfer({*run.library, *run.plan, context.call.destination(), run.outcome,
                              session.model().state().lastRecordID});
  } catch (const OutputClosed&) {
    // The status of the run does not depend on whether the output is read.
    return statusOf(run.outcome);
  }
  return statusOf(run.outcome);
}

}  // namespace tavrix::cli
