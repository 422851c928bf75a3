// The command that recognises earlier copies in a destination that has lost its record of them.

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/VerifySentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/ReadingProgress.h"
#include "cli/sessions/Source.h"
#include "runs/Destination.h"
#include "transfer/FileDigester.h"
#include "transfer/MarkerRebuild.h"
#include "transfer/TransferPlanner.h"

namespace tavrix::cli {
namespace {

using Recognition = MarkerRebuild::State;

/// Returns the plan of a transfer into an empty destination.
TransferPlan planIntoNothing(const CommandContext& context, const Library& library) {
  std::vector<TransferPlanner::NamedGroup> groups;
  groups.reserve(library.rows.size());
  for (const FolderNaming::Row& row : library.rows) groups.push_back({row.name, row.group});
  return TransferPlanner::plan(groups, transferOptions(context.settings, deviceName(context)));
}

std::vector<MediaAsset> assetsOf(const Library& library) {
  std::vector<MediaAsset> assets;
  assets.reserve(library.fileCount);
  for (const AssetBundle& bundle : *library.bundles) {
    assets.insert(assets.end(), bundle.assets().begin(), bundle.assets().end());
  }
  return assets;
}

/// Adds the recognised files to the record of the phone. Keeps all its earlier entries, so a file
/// that was deleted since is still known as missing.
void save(const CommandContext& context, Folder& folder, const DestinationMarker::Marker& marker,
          const PhoneIdentity& phone, const MarkerRebuild::Report& report,
          const std::vector<AssetBundle>& bundles) {
  if (report.count(Recognition::recognised) == 0) return;
  DestinationMarker::PhoneRecord record;
  record.phoneHash = phone.hash;
  record.label = phone.label;
  record.model = phone.model;
  record.firstTransfer = record.lastTransfer = context.surroundings.now();
  record.files = MarkerRebuild::records(report, bundles, phone.hasSerialNumber);
  DestinationMarker::save(folder,
                          DestinationMarker::updated(marker.record(phone.hash), std::move(record),
                                                     [](const std::string&) { return true; }));
}

ExitStatus statusOf(const MarkerRebuild::Report& report) {
  if (report.isStopped) return ExitStatus::cancelled;
  return report.hasFailures() ? ExitStatus::someFailed : ExitStatus::done;
}

void tellCancelled(const CommandContext& context, const MarkerRebuild::Report& report) {
  const std::uint64_t total = report.files.size();
  const bool isSaved = report.count(Recognition::recognised) > 0;
  const std::string sentence = say(
      context.language(), isSaved ? sentences::rebuildCancelled : sentences::rebuildCancelledEarly,
      numberText(context.language(), total - report.count(Recognition::notReached)),
      counted(context.language(), total, sentences::outOfFiles));
  context.warn(sentence);
}

}  // namespace

ExitStatus rebuildMarker(const CommandContext& context) {
  const std::string& path = context.call.operands.at(1);
  checkApart(context, path);
  const auto naming = openPlaceNaming(context);
  const Library library = readLibrary(context, naming.get());
  const auto files = sourceOf(context).files();
  files->checkMedia();
  const auto folder = Destination::openRequiredForWriting(path);
  const DestinationListing listing = listDestination(*folder);
  const PhoneIdentity phone = phoneOf(context);
  const TransferPlan plan = planIntoNothing(context, library);
  const std::vector<MediaAsset> assets = assetsOf(library);
  const std::stop_token stop = context.surroundings.catchInterrupts();
  const auto source = files->openMedia({}, stop);
  const MarkerRebuild::Report report = [&] {
    ReadingProgress progress{context};
    return MarkerRebuild::recognise(*folder, *source,
                                    {listing, phone.hash, assets, plan, workerCount()},
                                    progress.receiver(), stop);
  }();
  save(context, *folder, *listing.marker, phone, report, *library.bundles);
  writeLog(context.log, "marker rebuilt: files={}, recognised={}, bytes={}, stopped={}",
           report.files.size(), report.count(Recognition::recognised), report.bytesRead,
           report.isStopped);
  if (report.isStopped) tellCancelled(context, report);
  try {
    context.printer.rebuilt({report, phone.label, listing.marker->record(phone.hash) != nullptr});
  } catch (const OutputClosed&) {
    // The files are recorded, even if the reader has closed the output.
    return statusOf(report);
  }
  return statusOf(report);
}

}  // namespace tavrix::cli
