#include "model/TransferLeg.h"

#include <mutex>

#include "foundation/StringMap.h"
#include "runs/Staging.h"

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

/// A source without files, for a plan that needs none.
struct NoMedia : MediaSource {
  void download(const MediaAsset& asset, DownloadDestination&) override {
    throw SourceError{SourceError::Kind::notFound, std::string{asset.name()}};
  }
};

TransferOutcome runJob(TransferLeg& leg, MediaSource& source, const std::stop_token& stop) {
  Folder& folder = *leg.destination.folder;
  Destination::Content& content = leg.destination.content;
  auto leftOvers = Staging::settleLeftOvers(folder, content.view.filesOnDisk(), *leg.whole);
  TransferOutcome outcome;
  if (leg.packing) {
    PackedTransfer::Setup setup;
    setup.phone = leg.setup.phone;
    setup.packing = *leg.packing;
    setup.zone = leg.zone;
    setup.converter = leg.setup.converter;
    setup.language = leg.setup.language;
    setup.log = leg.setup.log;
    setup.now = leg.setup.now;
    setup.spaceWait.language = leg.language;
    setup.spaceWait.paused = leg.paused;
    PackedTransfer job{std::move(setup), folder, std::move(content)};
    outcome = job.run(leg.plan, source, leg.progress, stop);
  } else {
    TransferJob job{leg.setup, folder, std::move(content)};
    outcome = job.run(leg.plan, source, leg.progress, stop);
  }
  outcome.leftOvers = std::move(leftOvers);
  return outcome;
}

}  // namespace

LegEnd carryOut(TransferLeg& leg) {
  LegEnd end;
  try {
    // Without files there is nothing to open.
    const auto inner = leg.plan.files.empty()
                           ? nullptr
                           : leg.files->openMedia(leg.awaitPhone, leg.stop.get_token());
    NoMedia none;
    // A separate stop source, so that a lost phone is not mistaken for a cancel.
    std::stop_source stop;
    const std::stop_callback forward{leg.stop.get_token(), [&] { stop.request_stop(); }};
    WatchedSource source{inner ? *inner : static_cast<MediaSource&>(none), stop};
    end.outcome = runJob(leg, source, stop.get_token());
    end.isPhoneLost = source.isLost() && !leg.stop.stop_requested();
    std::erase_if(end.outcome.report.files, [&](const FileOutcome& file) {
      return file.is<FileOutcome::Failed>() && source.wasInterrupted(file.assetID);
    });
    recount(end.outcome.report);
  } catch (const SourceError& error) {
    end.isPhoneLost = error.kind() == SourceError::Kind::disconnected;
    if (!end.isPhoneLost) end.failure = std::current_exception();
  } catch (...) {
    end.failure = std::current_exception();
  }
  leg.destination.folder.reset();  // released for other runs during the pause
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

TransferOutcome joined(TransferOutcome first, TransferOutcome second, const TransferPlan& plan) {
  second.report = joined(std::move(first.report), second.report, plan);
  second.phoneWaits += first.phoneWaits;
  second.unpackedFolders.insert(second.unpackedFolders.begin(), first.unpackedFolders.begin(),
                                first.unpackedFolders.end());
  auto& rescued = second.leftOvers.rescued;
  rescued.insert(rescued.begin(), first.leftOvers.rescued.begin(), first.leftOvers.rescued.end());
  second.leftOvers.removed += first.leftOvers.removed;
  return second;
}

}  // namespace tavrix
