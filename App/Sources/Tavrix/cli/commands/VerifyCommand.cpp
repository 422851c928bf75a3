// The command that checks a destination against its records.

#include <algorithm>

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/VerifySentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/ReadingProgress.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "foundation/files/FileError.h"
#include "runs/Destination.h"
#include "sources/SnapshotSource.h"
#include "text/SentenceParts.h"
#include "transfer/ChecksumMerge.h"
#include "transfer/CopyVerification.h"
#include "transfer/FileDigester.h"
#include "transfer/RunningTransfer.h"

namespace tavrix::cli {
namespace {

using CopyVerification::CheckedFile;
using Check = CopyVerification::State;

std::string checksumPath(const CommandContext& context) {
  return pathIn(context.call.destination(), ChecksumFile::name);
}

std::unique_ptr<Folder> open(const CommandContext& context) {
  // Only one process may write the list, and no transfer may write files meanwhile.
  if (context.call.writeChecksums) {
    return Destination::openRequiredForWriting(context.call.destination());
  }
  return Destination::openRequired(context.call.destination());
}

/// Notices a transfer that writes into the folder during the check.
class TransferWatch {
 public:
  explicit TransferWatch(const CommandContext& context) : context_(context) {}

  /// Looks whether a transfer is at work. Reports it once on standard error.
  void look() {
    // This command holds the lock itself if it writes the list.
    if (isRunning_ || context_.call.writeChecksums) return;
    const std::string& folder = context_.call.destination();
    isRunning_ = Destination::isBusy(folder);
    if (!isRunning_) return;
    context_.warn(say(context_.language(), sentences::transferAtWork, forSentence(folder)));
  }
  bool isRunning() const { return isRunning_; }

 private:
  const CommandContext& context_;
  bool isRunning_ = false;
};

void checkRecords(const CommandContext& context, const DestinationMarker::Marker& marker) {
  const Language language = context.language();
  const std::string folder = forSentence(context.call.destination());
  if (!marker.records.empty()) {
    for (const std::string& name : marker.damaged) {
      context.warn(say(language, sentences::recordDamaged, forSentence(name), forSentence(name)));
    }
    return;
  }
  throw CommandFailure{ExitStatus::stopped, marker.damaged.empty()
                                                ? say(language, sentences::recordsMissing, folder)
                                                : say(language, sentences::recordsDamaged, folder,
                                                      forSentence(marker.damaged.front()))};
}

/// Returns the existing list. Throws CommandFailure if the file of that name is not a list, or was
/// copied from a phone.
std::vector<ChecksumFile::Entry> readChecksums(const CommandContext& context, const Folder& folder,
                                               const DestinationMarker::Marker& marker) {
  auto list = ChecksumFile::read(folder);
  bool isForeign = !list;
  for (const auto& record : marker.records) {
    for (const auto& file : record.files) isForeign = isForeign || file.path == ChecksumFile::name;
  }
  if (!isForeign) return *std::move(list);
  throw CommandFailure{ExitStatus::stopped, say(context.language(), sentences::checksumsForeign,
                                                forSentence(checksumPath(context)))};
}

/// Returns the number of files whose digest was computed now and could not be compared
/// with an earlier one.
std::uint64_t newDigests(const CopyVerification::Report& report) {
  return static_cast<std::uint64_t>(
      std::count_if(report.files.begin(), report.files.end(), [](const CheckedFile& file) {
        return file.state == Check::withoutChecksum && file.sha256 && !file.listedSha256;
      }));
}

ExitStatus statusOf(const CopyVerification::Report& report) {
  if (report.isStopped) return ExitStatus::cancelled;
  return report.hasLosses() ? ExitStatus::someFailed : ExitStatus::done;
}

void tellCancelled(const CommandContext& context, const CopyVerification::Report& report) {
  const std::uint64_t total = report.files.size();
  context.warn(say(context.language(), sentences::checkCancelled,
                   numberText(context.language(), total - report.count(Check::notReached)),
                   counted(context.language(), total, sentences::outOfFiles)));
}

}  // namespace

ExitStatus verify(const CommandContext& context) {
  const bool writesChecksums = context.call.writeChecksums;
  const auto folder = open(context);
  TransferWatch watch{context};
  watch.look();
  const DestinationListing listing = listDestination(*folder);
  watch.look();
  checkRecords(context, *listing.marker);
  CopyVerification::Options options{workerCount(), writesChecksums};
  std::vector<ChecksumFile::Entry> earlier;
  if (writesChecksums) {
    earlier = readChecksums(context, *folder, *listing.marker);
    options.listed = ChecksumMerge::digests(earlier);
  }
  const std::stop_token stop = context.surroundings.catchInterrupts();
  CopyVerification::Report report = [&] {
    ReadingProgress progress{context};
    return CopyVerification::verify(*folder, listing, options, progress.receiver(), stop);
  }();
  watch.look();
  if (watch.isRunning()) {
    RunningTransfer::leaveOut(report, *listing.marker, DestinationMarker::load(*folder));
  }
  writeLog(context.log, "verify finish: files={}, bytes={}, losses={}, stopped={}",
           report.files.size(), report.bytesRead, report.hasLosses(), report.isStopped);
  ExitStatus status = statusOf(report);
  VerificationResult result{report, context.call.destination(), std::nullopt};
  if (report.isStopped) {
    tellCancelled(context, report);
  } else if (writesChecksums) {
    const auto entries = ChecksumMerge::merged(report, earlier);
    try {
      ChecksumFile::write(*folder, entries);
      result.checksums = {checksumPath(context), entries.size(), newDigests(report)};
    } catch (const FileError& error) {
      context.warn(say(context.language(), sentences::checksumsNotWritten,
                       forSentence(error.path()),
                       tavrix::sentences::systemErrorText(context.language(), error.code())));
      status = ExitStatus::stopped;
    }
  }
  try {
    context.printer.verification(result);
  } catch (const OutputClosed&) {
    // The status of the check does not depend on whether the output is read.
    return status;
  }
  return status;
}

}  // namespace tavrix::cli
