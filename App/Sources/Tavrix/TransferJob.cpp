#include "TransferJob.h"

#include <array>
#include <cerrno>
#include <utility>

namespace tavrix {
namespace {

std::uint64_t bytesOf(const TransferPlan& plan) {
  std::uint64_t bytes = 0;
  for (const PlannedFile& file : plan.files) bytes += file.asset.sizeBytes();
  return bytes;
}

std::optional<std::string> owned(MediaAsset::Text text) {
  return text ? std::optional<std::string>{*text} : std::nullopt;
}

}  // namespace

std::string_view textOf(TransferStatus status) {
  constexpr std::array<std::string_view, 4> texts{"completed", "completedWithFailures", "cancelled",
                                                  "interrupted"};
  return texts.at(static_cast<std::size_t>(status));
}

TransferJob::TransferJob(Setup setup, Folder& destination, Destination::Content content)
    : setup_(std::move(setup)), destination_(destination), content_(std::move(content)) {}

void TransferJob::remember(const LandedFile& file) {
  const FileOutcome& outcome = file.outcome;
  const MediaAsset& asset = file.planned.asset;
  const auto* const known = content_.view.knownAssets().record(asset);
  // An earlier entry of the same file knows its digest.
  const bool isRemembered = outcome.is<FileOutcome::AlreadyThere>() && !file.sha256 &&
                            known != nullptr && known->path == outcome.path &&
                            known->size == outcome.bytesOnDisk;
  if (isRemembered || !outcome.path) return;
  landed_.push_back({*outcome.path, outcome.bytesOnDisk, file.sha256, std::string{asset.id()},
                     owned(asset.cloudID())});
  if (setup_.now() - savedAt_ >= setup_.saveInterval) saveQuietly();
}

void TransferJob::saveMarker() {
  savedAt_ = setup_.now();
  DestinationMarker::PhoneRecord record;
  record.phoneHash = setup_.phone.hash;
  record.label = setup_.phone.label;
  record.model = setup_.phone.model;
  record.firstTransfer = startedAt_;
  record.lastTransfer = savedAt_;
  record.files = landed_;
  const auto* const earlier = content_.marker.record(setup_.phone.hash);
  DestinationMarker::save(destination_, DestinationMarker::updated(earlier, std::move(record),
                                                                   content_.view.filesOnDisk()));
}

void TransferJob::saveQuietly() {
  try {
    saveMarker();
  } catch (const FileError& error) {
    // The run itself meets the same disk and tells; the end of the run saves again.
    writeLog(log(), "marker not saved: {}", PrivateField{error.path()});
  } catch (const DestinationMarker::MarkerError& error) {
    writeLog(log(), "marker not saved: {}", PrivateField{error.fileName()});
  }
}

TransferOutcome TransferJob::execute(const TransferPlan& plan, MediaSource& source,
                                     const TransferEngine::Progress& progress,
                                     std::stop_token stop) {
  TransferEngine::Setup setup;
  setup.converter = setup_.converter;
  setup.log = setup_.log;
  setup.language = setup_.language;
  setup.landed = [this](const LandedFile& file) { remember(file); };
  TransferOutcome outcome;
  try {
    outcome.report =
        TransferEngine{setup}.run(plan, source, destination_, progress, std::move(stop));
    if (!outcome.report.failures.empty()) outcome.status = TransferStatus::completedWithFailures;
  } catch (const TransferEngine::Cancelled& cancelled) {
    outcome.status = TransferStatus::cancelled;
    outcome.report = cancelled.report();
  } catch (const TransferEngine::Interrupted& interrupted) {
    outcome.status = TransferStatus::interrupted;
    outcome.report = interrupted.report();
    outcome.interruption = interrupted.underlying();
    writeLog(log(), "transfer failed (local fs): {}", PrivateField{outcome.interruption->path()});
  }
  return outcome;
}

TransferOutcome TransferJob::run(const TransferPlan& plan, MediaSource& source,
                                 const TransferEngine::Progress& progress, std::stop_token stop) {
  if (plan.files.empty()) return {};
  startedAt_ = setup_.now();
  savedAt_ = startedAt_;
  landed_.clear();
  writeLog(log(), "transfer start: files={}, bytes={}, dest={}, zip={}", plan.files.size(),
           bytesOf(plan), PrivateField{destination_.path()}, false);
  TransferOutcome outcome = execute(plan, source, progress, std::move(stop));
  if (landed_.empty()) return outcome;
  try {
    saveMarker();
  } catch (const FileError& error) {
    outcome.markerFailure = error;
  } catch (const DestinationMarker::MarkerError& error) {
    outcome.markerFailure = FileError{FileOperation::write, error.fileName(), EEXIST};
  }
  return outcome;
}

}  // namespace tavrix
