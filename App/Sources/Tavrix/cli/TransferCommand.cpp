// The commands that plan and transfer.

#include "TransferJob.h"
#include "cli/CliSentences.h"
#include "cli/Commands.h"
#include "cli/History.h"
#include "cli/PlaceNames.h"
#include "cli/ProgressBar.h"
#include "cli/Source.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "media/LocalMediaSource.h"
#include "transfer/TransferPlanner.h"

namespace tavrix::cli {
namespace {

const std::string& destinationPath(const CommandContext& context) {
  return context.call.operands.at(1);
}

/// What programs read is the same in every language.
Language writtenLanguage(const CommandContext& context) {
  return context.call.json ? Language::russian : context.language();
}

TransferPlan makePlan(const CommandContext& context, const Library& library,
                      const DestinationView& destination) {
  std::vector<TransferPlanner::NamedGroup> groups;
  groups.reserve(library.rows.size());
  for (const FolderNaming::Row& row : library.rows) groups.push_back({row.name, row.group});
  TransferPlan plan = TransferPlanner::plan(
      groups, transferOptions(context.settings, deviceName(context)), destination);
  writeLog(context.log, "snapshot loaded: assets={}, groups={}, new={}", library.fileCount,
           library.rows.size(), plan.files.size());
  return plan;
}

void warn(const CommandContext& context, const std::string& sentence) {
  context.surroundings.err.write("tavrix: " + sentence + '\n');
}

void checkTransferable(const CommandContext& context) {
  if (!context.settings.packAsZip) return;
  throw CommandFailure{ExitStatus::usage, say(context.language(), sentences::archivesNotThere)};
}

/// What has to hold before the first byte is written.
void checkBeforeRun(const CommandContext& context, const TransferPlan& plan,
                    const Folder& destination) {
  if (plan.files.empty()) return;
  checkMedia(context);
  std::uint64_t needed = 0;
  for (const PlannedFile& file : plan.files) needed += file.asset.sizeBytes();
  const std::uint64_t available = destination.freeBytes();
  if (needed <= available) return;
  warn(context, say(context.language(), sentences::spaceHint, bytesText(context.language(), needed),
                    bytesText(context.language(), available)));
}

TransferOutcome run(const CommandContext& context, const TransferPlan& plan, Folder& destination,
                    Destination::Content content) {
  const Surroundings& surroundings = context.surroundings;
  TransferJob::Setup setup;
  setup.phone = snapshotPhone(deviceName(context));
  setup.language = writtenLanguage(context);
  setup.log = &context.log;
  setup.now = surroundings.now;
  TransferJob job{std::move(setup), destination, std::move(content)};
  LocalMediaSource source{mediaFolder(context)};
  if (!surroundings.errColumns) return job.run(plan, source, {}, surroundings.catchInterrupts());
  ProgressBar bar{surroundings.err, *surroundings.errColumns, context.language()};
  return job.run(
      plan, source,
      [&](const TransferProgressSnapshot& progress) {
        bar.show(progress, std::chrono::steady_clock::now());
      },
      surroundings.catchInterrupts());
}

ExitStatus statusOf(const TransferOutcome& outcome) {
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

/// Tells on standard error how a run ended that did not end by itself.
void tellEnd(const CommandContext& context, const TransferOutcome& outcome) {
  const Language language = context.language();
  if (outcome.status == TransferRecord::Status::cancelled) {
    warn(context, say(language, sentences::runCancelled));
  }
  if (outcome.interruption) {
    warn(context, say(language, sentences::runInterrupted,
                      tavrix::sentences::systemErrorText(language, outcome.interruption->code()),
                      printable(outcome.interruption->path())));
  }
  if (outcome.markerFailure) {
    warn(context, say(language, sentences::markerNotSaved, printable(outcome.markerFailure->path()),
                      tavrix::sentences::systemErrorText(language, outcome.markerFailure->code())));
  }
}

}  // namespace

ExitStatus showPlan(const CommandContext& context) {
  const auto naming = placeNaming(context);
  const Library library = readLibrary(context, naming.get());
  const auto destination = Destination::openExisting(destinationPath(context));
  Destination::checkApart(context.call.source(), destinationPath(context));
  DestinationView view;
  std::optional<std::uint64_t> freeBytes;
  if (destination != nullptr) {
    view = Destination::read(*destination, snapshotPhone(deviceName(context))).view;
    freeBytes = destination->freeBytes();
  }
  const TransferPlan plan = makePlan(context, library, view);
  const bool isFlat = context.settings.uiMode == UIGroupingMode::flat;
  context.printer.plan({library, plan, destinationPath(context), isFlat, freeBytes});
  return ExitStatus::done;
}

ExitStatus transfer(const CommandContext& context) {
  checkTransferable(context);
  Destination::checkApart(context.call.source(), destinationPath(context));
  const auto naming = placeNaming(context);
  const Library library = readLibrary(context, naming.get());
  const auto destination = Destination::openForWriting(destinationPath(context));
  Destination::Content content =
      Destination::read(*destination, snapshotPhone(deviceName(context)));
  const TransferPlan plan = makePlan(context, library, content.view);
  checkBeforeRun(context, plan, *destination);
  const Instant startedAt = context.surroundings.now();
  const TransferOutcome outcome = run(context, plan, *destination, std::move(content));
  tellEnd(context, outcome);
  const auto recordID = recordRun(context, {.library = library,
                                            .settings = context.settings,
                                            .plan = plan,
                                            .outcome = outcome,
                                            .phone = snapshotPhone(deviceName(context)),
                                            .destinationPath = destinationPath(context),
                                            .systemLocaleID = context.surroundings.systemLocaleID,
                                            .language = writtenLanguage(context),
                                            .id = {},
                                            .startedAt = startedAt,
                                            .finishedAt = context.surroundings.now(),
                                            .placeNaming = naming.get()});
  if (naming) naming->save();
  try {
    context.printer.transfer({library, plan, destinationPath(context), outcome, recordID});
  } catch (const OutputClosed&) {
    // The run is over, and its status stands, whoever reads of it.
    return statusOf(outcome);
  }
  return statusOf(outcome);
}

}  // namespace tavrix::cli
