#include "model/RunAttempt.h"

#include <mutex>
#include <optional>

#include "foundation/StringMap.h"
#include "runs/Staging.h"
#include "transfer/LeftParts.h"

namespace tavrix {
namespace {

/// Ends the run when the phone is lost, instead of failing every remaining file.
class WatchedSource : public MediaSource {
 public:
  WatchedSource(MediaSource& inner, std::stop_source stop)
      : inner_(inner), stop_(std::move(stop)) {}

  void download(const MediaAsset& asset, DownloadDestination& destination) override {
    try {
      inner_.download(asset, destination);
    } catch (const SourceError& error) {
      if (error.kind() == SourceError::Kind::disconnected) noteLoss(asset);
      throw;
    }
  }
  int concurrentDownloads() const override { return inner_.concurrentDownloads(); }

  bool isLost() const { return !interrupted_.empty(); }
  bool wasInterrupted(const std::string& assetID) const { return interrupted_.contains(assetID); }

 private:
  void noteLoss(const MediaAsset& asset) {
    const std::lock_guard lock{mutex_};
    interrupted_.insert(std::string{asset.id()});
    stop_.request_stop();
  }

  MediaSource& inner_;
  std::stop_source stop_;
  std::mutex mutex_;
  StringSet interrupted_;
};

/// Recomputes the lists of failures and kept originals from the files of the report.
void recount(TransferReport& report) {
  report.failures.clear();
  report.conversionFallbacks.clear();
  for (const FileOutcome& file : report.files) {
    if (const auto* const failed = std::get_if<FileOutcome::Failed>(&file.kind)) {
      report.failures.push_back(file.name + ": " + failed->reason);
    }
    if (file.is<FileOutcome::KeptOriginal>()) report.conversionFallbacks.push_back(file.name);
  }
}

StringSet idsOf(const TransferReport& report) {
  StringSet ids;
  for (const FileOutcome& file : report.files) ids.insert(file.assetID);
  return ids;
}

/// Returns the number of files of a report that were converted. The report is of a part of the
/// plan.
std::uint64_t convertedFiles(const TransferPlan& plan, const TransferReport& report) {
  std::uint64_t count = 0;
  auto outcome = report.files.begin();
  for (const PlannedFile& file : plan.files) {
    if (outcome == report.files.end()) break;
    if (outcome->assetID != file.asset.id()) continue;
    if (isConverted(file.conversion) && outcome->is<FileOutcome::Copied>()) ++count;
    ++outcome;
  }
  return count;
}

/// A source without files, for a plan that needs none.
struct NoMedia : MediaSource {
  void download(const MediaAsset& asset, DownloadDestination&) override {
    throw SourceError{SourceError::Kind::notFound, std::string{asset.name()}};
  }
};

RunOutcome runTransfer(RunAttempt& attempt, const TransferPlan& plan, MediaSource& source,
                       const std::stop_token& stop) {
  Folder& folder = *attempt.destination.folder;
  Destination::Content& content = attempt.destination.content;
  auto leftOvers = Staging::settleLeftOvers(folder, content.view.filesOnDisk(), *attempt.plan);
  leftOvers.removedParts = LeftParts::remove(folder, content.view.filesOnDisk(), *content.marker);
  RunOutcome outcome;
  if (attempt.packing) {
    PackedTransfer::Setup setup;
    setup.phone = attempt.setup.phone;
    setup.packing = *attempt.packing;
    setup.zone = attempt.zone;
    setup.converter = attempt.setup.converter;
    setup.language = attempt.setup.language;
    setup.log = attempt.setup.log;
    setup.now = attempt.setup.now;
    setup.spaceWait.paused = attempt.paused;
    PackedTransfer transfer{std::move(setup), folder, std::move(content)};
    outcome = transfer.run(plan, source, attempt.progress, stop);
  } else {
    FolderTransfer transfer{attempt.setup, folder, std::move(content)};
    outcome = transfer.run(plan, source, attempt.progress, stop);
  }
  outcome.leftOvers = std::move(leftOvers);
  return outcome;
}

/// As runTransfer(), but an error before the first file, too, is an interruption by the
/// destination.
RunOutcome transferInto(RunAttempt& attempt, const TransferPlan& plan, MediaSource& source,
                        const std::stop_token& stop) {
  try {
    return runTransfer(attempt, plan, source, stop);
  } catch (const FileError& error) {
    RunOutcome outcome;
    outcome.status = TransferRecord::Status::interrupted;
    outcome.interruption = interruptionOf(error, *attempt.destination.folder);
    return outcome;
  }
}

/// Returns the report without the files during which the phone was lost.
TransferReport withoutInterrupted(TransferReport report, const WatchedSource& source) {
  std::erase_if(report.files, [&](const FileOutcome& file) {
    return file.is<FileOutcome::Failed>() && source.wasInterrupted(file.assetID);
  });
  recount(report);
  return report;
}

/// Carries out the rest of the plan.
AttemptEnd carryOutRest(RunAttempt& attempt, const TransferPlan& plan) {
  AttemptEnd end;
  try {
    // Without files there is nothing to open.
    const auto inner = plan.files.empty()
                           ? nullptr
                           : attempt.files->openMedia(attempt.awaitPhone, attempt.stop.get_token());
    NoMedia none;
    // A separate stop source, so that a lost phone is not mistaken for a cancel.
    std::stop_source stop;
    const std::stop_callback forward{attempt.stop.get_token(), [&] { stop.request_stop(); }};
    WatchedSource source{inner ? *inner : static_cast<MediaSource&>(none), stop};
    end.outcome = transferInto(attempt, plan, source, stop.get_token());
    end.isPhoneLost = source.isLost() && !attempt.stop.stop_requested();
    if (source.isLost()) {
      end.outcome.report = withoutInterrupted(*end.outcome.report, source);
    }
  } catch (const SourceError& error) {
    end.isPhoneLost = error.kind() == SourceError::Kind::disconnected;
    if (!end.isPhoneLost) end.failure = std::current_exception();
  } catch (...) {
    end.failure = std::current_exception();
  }
  attempt.destination.folder.reset();  // released for other runs during the pause
  return end;
}

}  // namespace

AttemptEnd carryOut(RunAttempt& attempt) {
  const std::size_t filesBefore = attempt.before.report->files.size();
  std::optional<TransferPlan> rest;
  if (filesBefore > 0) rest = remainingPlan(*attempt.plan, *attempt.before.report);
  const TransferPlan& plan = rest ? *rest : *attempt.plan;
  AttemptEnd end = carryOutRest(attempt, plan);
  const TransferReport& report = *end.outcome.report;
  end.hasLanded = !report.files.empty();
  if (report.files.size() < plan.files.size()) {
    end.remainingBytes = remainingPlan(plan, report).totalBytes();
  }
  end.outcome = joined(attempt.before, std::move(end.outcome), *attempt.plan);
  end.converted = convertedFiles(*attempt.plan, *end.outcome.report);
  return end;
}

TransferPlan remainingPlan(const TransferPlan& plan, const TransferReport& report) {
  const StringSet done = idsOf(report);
  TransferPlan rest = plan;
  std::erase_if(rest.files,
                [&](const PlannedFile& file) { return done.contains(file.asset.id()); });
  return rest;
}

TransferReport joined(TransferReport first, const TransferReport& second,
                      const TransferPlan& plan) {
  first.copied += second.copied;
  first.copiedPictures += second.copiedPictures;
  first.resumedSkips += second.resumedSkips;
  first.bytesCopied += second.bytesCopied;
  first.bytesWritten += second.bytesWritten;
  first.convertedSizeMismatches += second.convertedSizeMismatches;
  StringMap<const FileOutcome*> outcomes;
  for (const FileOutcome& file : first.files) outcomes.emplace(file.assetID, &file);
  for (const FileOutcome& file : second.files) outcomes.emplace(file.assetID, &file);
  std::vector<FileOutcome> files;
  files.reserve(outcomes.size());
  for (const PlannedFile& file : plan.files) {
    const auto found = outcomes.find(file.asset.id());
    if (found != outcomes.end()) files.push_back(*found->second);
  }
  first.files = std::move(files);
  recount(first);
  return first;
}

RunOutcome joined(const RunOutcome& first, RunOutcome second, const TransferPlan& plan) {
  if (!isSame(first.report, Shared<TransferReport>{})) {
    second.report = joined(*first.report, *second.report, plan);
  }
  second.unpackedFolders.insert(second.unpackedFolders.begin(), first.unpackedFolders.begin(),
                                first.unpackedFolders.end());
  auto& rescued = second.leftOvers.rescued;
  rescued.insert(rescued.begin(), first.leftOvers.rescued.begin(), first.leftOvers.rescued.end());
  second.isPacked = second.isPacked || first.isPacked;
  second.leftOvers.removed += first.leftOvers.removed;
  second.leftOvers.removedParts += first.leftOvers.removedParts;
  return second;
}

}  // namespace tavrix
