#include "runs/StagedFiles.h"

#include "foundation/StringMap.h"
#include "foundation/files/AtomicFile.h"
#include "runs/Staging.h"
#include "text/RunSentences.h"

namespace tavrix {
namespace {

/// A file that a desktop creates in folders it displays; never archived.
constexpr std::string_view desktopFile = ".DS_Store";

}  // namespace

void StagedFiles::staged(std::size_t index, const LandedFile& landed) {
  File& file = files_[index];
  const bool wasThere = landed.outcome.is<FileOutcome::AlreadyThere>();
  // A file found again after a pause has no digest and is already recorded.
  if (file.outcome && wasThere) return;
  file.outcome = landed.outcome;
  file.sha256 = landed.sha256;
  file.isSettled = false;
  // The staging folder contains only files of this run.
  if (wasThere) file.outcome->kind = FileOutcome::Copied{};
}

void StagedFiles::takeFailures(const TransferReport& report) {
  StringMap<const FileOutcome*> failures;
  for (const FileOutcome& outcome : report.files) {
    if (outcome.is<FileOutcome::Failed>()) failures.emplace(outcome.assetID, &outcome);
  }
  for (std::size_t i = 0; i < files_.size() && !failures.empty(); ++i) {
    const auto found = failures.find(plan_.files[i].asset.id());
    if (found == failures.end()) continue;
    files_[i].outcome = *found->second;
    files_[i].isSettled = true;
  }
}

std::uint64_t StagedFiles::bytesToStage() const {
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    if (!files_[i].outcome) bytes += plan_.files[i].asset.sizeBytes();
  }
  return bytes;
}

void StagedFiles::refuse(File& file) const {
  file.outcome->kind =
      FileOutcome::Failed{say(language_, sentences::notForArchives), {.code = "notForArchives"}};
  file.outcome->path.reset();
  file.outcome->bytesOnDisk = 0;
}

std::string StagedFiles::plannedPath(std::size_t index) const {
  const PlannedFile& file = plan_.files[index];
  if (!files_[index].outcome->is<FileOutcome::KeptOriginal>()) return file.relativePath;
  const std::string folder = parentPath(file.relativePath);
  return (folder.empty() ? "" : folder + "/") + TransferEngine::fallbackName(file);
}

ArchiveContent StagedFiles::contentOf(const PlannedArchive& archive, Instant undated) {
  ArchiveContent content;
  std::vector<std::string> names;
  std::vector<File*> files;
  for (const std::size_t index : archive.files) {
    File& file = files_[index];
    if (!isUnsettled(file)) continue;
    const std::string& path = *file.outcome->path;
    if (lastPathComponent(path) == desktopFile) {
      refuse(file);
      continue;
    }
    const Instant modified = plan_.files[index].asset.captureDate().value_or(undated);
    content.entries.push_back({{}, file.outcome->bytesOnDisk, modified});
    content.paths.push_back(path);
    names.push_back(file.outcome->hasSafeName ? plannedPath(index) : Staging::finalPath(path));
    files.push_back(&file);
  }
  names = entryNames(std::move(names));
  for (std::size_t i = 0; i < files.size(); ++i) {
    content.entries[i].name = names[i];
    files[i]->entryName = std::move(names[i]);
  }
  return content;
}

void StagedFiles::packed(const PlannedArchive& archive, const std::string& path) {
  for (const std::size_t index : archive.files) {
    File& file = files_[index];
    if (!isUnsettled(file)) continue;
    file.outcome->path = path + "/" + file.entryName;
    file.outcome->name = lastPathComponent(file.entryName);
    file.outcome->hasSafeName = false;
    file.isSettled = true;
  }
}

void StagedFiles::moveOut(const PlannedArchive& archive, Folder& destination,
                          const std::function<void(DestinationMarker::FileRecord)>& landed) {
  for (const std::size_t index : archive.files) {
    File& file = files_[index];
    if (!isUnsettled(file)) continue;
    const MediaAsset& asset = plan_.files[index].asset;
    FileOutcome& outcome = *file.outcome;
    outcome.path = Staging::moveOut(destination, *outcome.path, file.sha256);
    outcome.name = lastPathComponent(*outcome.path);
    file.isSettled = true;
    landed({*outcome.path, outcome.bytesOnDisk, file.sha256, std::string{asset.id()},
            owned(asset.cloudID()), std::nullopt, std::nullopt, outcome.hasSafeName});
  }
}

TransferReport StagedFiles::report(TransferReport report) const {
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const File& file = files_[i];
    // Files that were only staged have been removed.
    if (!file.outcome || isUnsettled(file)) continue;
    const FileOutcome& outcome = report.files.emplace_back(*file.outcome);
    if (const auto* const failed = std::get_if<FileOutcome::Failed>(&outcome.kind)) {
      report.failures.push_back(outcome.name + ": " + failed->reason);
      continue;
    }
    report.bytesWritten += outcome.bytesOnDisk;
    if (outcome.is<FileOutcome::KeptOriginal>()) {
      report.conversionFallbacks.push_back(outcome.name);
    } else {
      ++report.copied;
      if (plan_.files[i].isPicture) ++report.copiedPictures;
    }
  }
  return report;
}

}  // namespace tavrix
