// The commands that plan and transfer.

#include <algorithm>

#include "PackedTransfer.h"
#include "Staging.h"
#include "TransferJob.h"
#include "cli/CliSentences.h"
#include "cli/Commands.h"
#include "cli/History.h"
#include "cli/KnownCard.h"
#include "cli/PhoneSource.h"
#include "cli/PlaceNames.h"
#include "cli/ProgressBar.h"
#include "cli/Quotes.h"
#include "cli/Source.h"
#include "cli/UnreadableReason.h"
#include "conversion/ProcessConverter.h"
#include "foundation/Text.h"
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

/// What lies in such folders is neither known nor written to.
void tellUnreadable(const CommandContext& context, const DestinationView& view) {
  const std::vector<UnreadableFolder>& folders = view.unreadableFolders();
  if (folders.empty()) return;
  const Language language = context.language();
  const std::string first = quoted(pathIn(destinationPath(context), folders.front().path));
  const std::string reason = unreadableReason(language, folders.front().code);
  warn(context,
       folders.size() == 1
           ? say(language, sentences::folderUnreadable, first, reason)
           : say(language, sentences::foldersUnreadable,
                 counted(language, folders.size(), tavrix::sentences::folders), first, reason));
}

std::optional<Packing> packingOf(const CommandContext& context) {
  return tavrix::packingOf(context.settings, deviceName(context),
                           context.settings.timeZone.dateAt(context.surroundings.now()));
}

/// Bytes that a run writes at most at one time: files that are to be packed lie beside the archive
/// that is being made of them.
std::uint64_t neededBytes(const CommandContext& context, const TransferPlan& plan) {
  std::uint64_t all = 0;
  for (const PlannedFile& file : plan.files) all += file.asset.sizeBytes();
  const auto packing = packingOf(context);
  if (!packing) return all;
  std::uint64_t largest = 0;
  for (const PlannedArchive& archive : plannedArchives(plan, *packing)) {
    std::uint64_t bytes = 0;
    for (const std::size_t index : archive.files) bytes += plan.files[index].asset.sizeBytes();
    largest = std::max(largest, bytes);
  }
  return all + largest;
}

/// What has to hold before the first byte is written.
void checkBeforeRun(const CommandContext& context, const TransferPlan& plan,
                    const Folder& destination) {
  if (plan.files.empty()) return;
  checkMedia(context);
  const std::uint64_t needed = neededBytes(context, plan);
  const std::uint64_t available = destination.freeBytes();
  if (needed <= available) return;
  warn(context,
       say(context.language(),
           packingOf(context) ? sentences::packingSpaceHint : sentences::spaceHint,
           bytesText(context.language(), needed), bytesText(context.language(), available)));
}

template <typename Job>
TransferOutcome run(const CommandContext& context, const TransferPlan& plan, Job job) {
  const Surroundings& surroundings = context.surroundings;
  const auto source = openMedia(context);
  if (!surroundings.errColumns) return job.run(plan, *source, {}, surroundings.catchInterrupts());
  ProgressBar bar{surroundings.err, *surroundings.errColumns, context.language()};
  return job.run(
      plan, *source,
      [&](const TransferProgressSnapshot& progress) {
        bar.show(progress, std::chrono::steady_clock::now());
      },
      surroundings.catchInterrupts());
}

TransferOutcome runUnpacked(const CommandContext& context, const TransferPlan& plan,
                            Folder& destination, Destination::Content content,
                            MediaConverter* converter) {
  TransferJob::Setup setup;
  setup.converter = converter;
  setup.phone = phoneOf(context);
  setup.language = writtenLanguage(context);
  setup.log = &context.log;
  setup.now = context.surroundings.now;
  return run(context, plan, TransferJob{std::move(setup), destination, std::move(content)});
}

/// Writes on a line of its own, where a bar may stand, why the run waits.
void tellPause(const CommandContext& context, const std::optional<std::string>& reason) {
  if (!reason) return;
  const bool mayHaveBar = context.surroundings.errColumns.has_value();
  context.surroundings.err.write((mayHaveBar ? "\r\x1b[Ktavrix: " : "tavrix: ") + *reason + '\n');
}

TransferOutcome runPacked(const CommandContext& context, const TransferPlan& plan,
                          Folder& destination, Destination::Content content,
                          MediaConverter* converter) {
  PackedTransfer::Setup setup;
  setup.converter = converter;
  setup.phone = phoneOf(context);
  setup.packing = packingOf(context).value();
  setup.zone = context.settings.timeZone;
  setup.language = writtenLanguage(context);
  setup.log = &context.log;
  setup.now = context.surroundings.now;
  setup.spaceWait.language = context.language();
  setup.spaceWait.paused = [&](const auto& reason) { tellPause(context, reason); };
  return run(context, plan, PackedTransfer{std::move(setup), destination, std::move(content)});
}

/// Clears away what a killed run left and does the run.
TransferOutcome run(const CommandContext& context, const TransferPlan& plan, Folder& destination,
                    Destination::Content content) {
  auto rescued = Staging::settleLeftOvers(destination, content.view.filesOnDisk(), plan);
  std::optional<ProcessConverter> process;
  const auto& program = context.surroundings.conversionProgram;
  if (program) process.emplace(*program);
  MediaConverter* const converter = process ? &*process : nullptr;
  const auto carryOut = packingOf(context) ? runPacked : runUnpacked;
  TransferOutcome outcome = carryOut(context, plan, destination, std::move(content), converter);
  outcome.rescuedFiles = std::move(rescued);
  return outcome;
}

/// The run as it stands before its first byte.
RunToRecord runToRecord(const CommandContext& context, const Library& library,
                        const TransferPlan& plan) {
  const Instant now = context.surroundings.now();
  TransferOutcome outcome;
  outcome.status = TransferRecord::Status::interrupted;
  return {.library = library,
          .settings = context.settings,
          .plan = plan,
          .outcome = std::move(outcome),
          .phone = phoneOf(context),
          .destinationPath = absolutePath(destinationPath(context)),
          .systemLocaleID = context.surroundings.systemLocaleID,
          .language = writtenLanguage(context),
          .id = context.surroundings.newID(),
          .startedAt = now,
          .finishedAt = now,
          .isUnderWay = true};
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

/// A run that saw only a part of its source has not completed.
TransferOutcome withUnread(const CommandContext& context, TransferOutcome outcome) {
  outcome.unreadFolders = context.source.unreadFolders;
  outcome.phoneWaits = context.source.phoneWaits;
  if (outcome.unreadFolders > 0 && outcome.status == TransferRecord::Status::completed) {
    outcome.status = TransferRecord::Status::completedWithFailures;
  }
  return outcome;
}

/// Tells on standard error how a run ended that did not end by itself.
void tellEnd(const CommandContext& context, const TransferOutcome& outcome) {
  const Language language = context.language();
  if (outcome.status == TransferRecord::Status::cancelled) {
    warn(context,
         say(language, outcome.isPacked ? sentences::packingCancelled : sentences::runCancelled));
  }
  if (outcome.interruption) {
    warn(context,
         say(language, outcome.isPacked ? sentences::packingInterrupted : sentences::runInterrupted,
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
  checkApart(context, destinationPath(context));
  Destination::Content content;
  const DestinationView& view = content.view;
  std::optional<std::uint64_t> freeBytes;
  if (destination != nullptr) {
    content = Destination::read(*destination, phoneOf(context));
    freeBytes = destination->freeBytes();
    tellUnreadable(context, view);
  }
  const TransferPlan plan = makePlan(context, library, view);
  tellKnownCard(context, content.marker, plan);
  const bool isFlat = context.settings.uiMode == UIGroupingMode::flat;
  context.printer.plan({library, plan, destinationPath(context), isFlat, freeBytes,
                        neededBytes(context, plan), packingOf(context).has_value()});
  return ExitStatus::done;
}

ExitStatus transfer(const CommandContext& context) {
  checkApart(context, destinationPath(context));
  const auto naming = placeNaming(context);
  const Library library = readLibrary(context, naming.get());
  const auto destination = Destination::openForWriting(destinationPath(context));
  Destination::Content content = Destination::read(*destination, phoneOf(context));
  const TransferPlan plan = makePlan(context, library, content.view);
  tellUnreadable(context, content.view);
  tellKnownCard(context, content.marker, plan);
  checkBeforeRun(context, plan, *destination);
  RunToRecord record = runToRecord(context, library, plan);
  record.placeNaming = naming.get();
  if (!plan.files.empty()) writeRecord(context, record);
  const TransferOutcome outcome =
      withUnread(context, run(context, plan, *destination, std::move(content)));
  tellEnd(context, outcome);
  record.outcome = outcome;
  record.finishedAt = context.surroundings.now();
  record.isUnderWay = false;
  const auto recordID = writeRecord(context, record) ? std::optional{record.id} : std::nullopt;
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
