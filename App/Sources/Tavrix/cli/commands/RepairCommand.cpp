// The command that copies again what has changed or is missing in a destination.

#include <algorithm>

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/RepairSentences.h"
#include "cli/sentences/VerifySentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/PhoneWait.h"
#include "cli/sessions/ReadingProgress.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "media/BundleBuilder.h"
#include "text/SentenceParts.h"
#include "transfer/CopyRepair.h"
#include "transfer/FileDigester.h"

namespace tavrix::cli {
namespace {

using CopyRepair::KeptFile;
using CopyRepair::KeptReason;

/// Throws CommandFailure if the destination has no record of the phone.
void checkRecord(const CommandContext& context, const DestinationMarker::Marker& marker,
                 const PhoneIdentity& phone) {
  const Language language = context.language();
  const std::string folder = forSentence(context.call.destination());
  const bool isRecorded = marker.record(phone.hash) != nullptr;
  const std::string ownName = DestinationMarker::fileName(phone.hash);
  for (const std::string& name : marker.damaged) {
    if (!isRecorded && name == ownName) {
      throw CommandFailure{ExitStatus::stopped,
                           say(language, sentences::recordsDamaged, folder, forSentence(name))};
    }
    context.warn(say(language, sentences::recordDamaged, forSentence(name), forSentence(name)));
  }
  if (isRecorded) return;
  if (marker.records.empty()) {
    throw CommandFailure{ExitStatus::stopped, say(language, sentences::recordsMissing, folder)};
  }
  std::string others;
  for (const std::string& label : marker.labels()) {
    others += (others.empty() ? "" : ", ") + label;
  }
  throw CommandFailure{ExitStatus::stopped, say(language, sentences::repairNoRecord, folder,
                                                forSentence(phone.label), forSentence(others))};
}

/// Reads the shots of the source. Waits for a phone that is not ready.
std::vector<AssetBundle> readShots(const CommandContext& context, PhoneWait& wait) {
  context.source.awaitPhone = [&](const std::string& obstacle) { return wait.await(obstacle); };
  auto bundles = BundleBuilder::makeBundles(readCatalogue(context));
  context.source.awaitPhone = nullptr;
  wait.phoneAnswered();
  return bundles;
}

void tellSpace(const CommandContext& context, const TransferPlan& files, const Folder& folder) {
  const std::uint64_t free = folder.freeBytes();
  if (files.totalBytes() <= free) return;
  context.warn(say(context.language(), sentences::repairSpaceHint,
                   bytesText(context.language(), files.totalBytes()),
                   bytesText(context.language(), free)));
}

/// Returns the outcome of a repair that fetches nothing.
RepairOutcome untouched(const CopyRepair::Plan& plan, bool isCancelled) {
  RepairOutcome outcome;
  outcome.kept = plan.kept;
  for (const PlannedFile& file : plan.files.files) {
    outcome.kept.push_back({.path = file.relativePath,
                            .reason = KeptReason::notReached,
                            .assetID = std::string{file.asset.id()}});
  }
  std::sort(outcome.kept.begin(), outcome.kept.end(),
            [](const KeptFile& a, const KeptFile& b) { return a.path < b.path; });
  outcome.isCancelled = isCancelled;
  return outcome;
}

/// Fetches the planned files.
RepairOutcome carryOut(const CommandContext& context, Folder& folder,
                       const DestinationMarker::Marker& marker, const CopyRepair::Plan& plan,
                       PhoneWait& wait, const std::stop_token& stop) {
  tellSpace(context, plan.files, folder);
  const auto files = sourceOf(context).files();
  files->checkMedia();
  const std::string name = deviceName(context);
  const auto source =
      files->openMedia([&](PhoneError::Kind kind) { return wait.await(name, kind); }, stop);
  RepairRun::Setup setup;
  setup.phone = phoneOf(context);
  // Sentences in JSON do not depend on the language.
  setup.language = context.call.json ? Language::russian : context.language();
  setup.log = &context.log;
  setup.now = context.surroundings.now;
  setup.spaceWait.paused = [&](const std::optional<run_pause::DiskFull>& shortage) {
    context.warn(shortage ? pauseText(context.language(), *shortage)
                          : say(context.language(), sentences::spaceIsFree));
  };
  ReadingProgress bar{context};
  std::uint64_t bytesDone = 0;
  return RepairRun{std::move(setup), folder, marker, plan}.run(
      *source,
      [&, show = bar.receiver()](const TransferProgressSnapshot& progress) {
        if (progress.bytesDone > bytesDone) wait.phoneAnswered();
        bytesDone = progress.bytesDone;
        if (show) show(progress);
      },
      stop);
}

RepairOutcome repaired(const CommandContext& context, Folder& folder,
                       const std::vector<AssetBundle>& bundles, PhoneWait& wait,
                       const std::stop_token& stop) {
  const DestinationListing listing = listDestination(folder);
  const PhoneIdentity phone = phoneOf(context);
  checkRecord(context, *listing.marker, phone);
  const CopyVerification::Report report = [&] {
    ReadingProgress progress{context};
    return CopyVerification::verify(folder, listing, {.threads = workerCount()},
                                    progress.receiver(), stop);
  }();
  const CopyRepair::Plan plan = CopyRepair::plan(report, *listing.marker, phone.hash, bundles);
  if (report.isStopped || plan.files.files.empty()) return untouched(plan, report.isStopped);
  return carryOut(context, folder, *listing.marker, plan, wait, stop);
}

/// Reports on standard error the ends that are not regular.
void tellEnd(const CommandContext& context, const RepairOutcome& outcome) {
  const Language language = context.language();
  if (outcome.isCancelled) context.warn(say(language, sentences::repairCancelled));
  if (const auto& error = outcome.interruption) {
    context.warn(say(language, sentences::repairInterrupted,
                     tavrix::sentences::systemErrorText(language, error->code()),
                     forSentence(error->path())));
  }
  if (const auto& error = outcome.markerFailure) {
    context.warn(say(language, sentences::repairNotRecorded, forSentence(error->path()),
                     tavrix::sentences::systemErrorText(language, error->code())));
  }
}

ExitStatus statusOf(const RepairOutcome& outcome) {
  if (outcome.isCancelled) return ExitStatus::cancelled;
  if (outcome.interruption) return ExitStatus::stopped;
  const bool isAll = outcome.failed.empty() && outcome.kept.empty();
  return isAll ? ExitStatus::done : ExitStatus::someFailed;
}

}  // namespace

ExitStatus repair(const CommandContext& context) {
  const std::string& path = context.call.destination();
  checkApart(context, path);
  // Says so before a phone is read.
  Destination::openRequired(path);
  const std::stop_token stop = context.surroundings.catchInterrupts();
  PhoneWait wait{context, stop};
  const std::vector<AssetBundle> bundles = readShots(context, wait);
  const auto folder = Destination::openRequiredForWriting(path);
  const RepairOutcome outcome = repaired(context, *folder, bundles, wait, stop);
  tellEnd(context, outcome);
  try {
    context.printer.repaired(outcome);
  } catch (const OutputClosed&) {
    // The status of the repair does not depend on whether the output is read.
    return statusOf(outcome);
  }
  return statusOf(outcome);
}

}  // namespace tavrix::cli
