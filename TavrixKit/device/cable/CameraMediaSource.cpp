#include "device/cable/CameraMediaSource.h"

#include <algorithm>
#include <cerrno>

#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

constexpr std::size_t blockBytes = 1024 * 1024;

SourceError sourceError(const FileError& error, const std::string& name) {
  const auto kind =
      error.code() == ENOENT ? SourceError::Kind::notFound : SourceError::Kind::unreadable;
  return {kind, name, error.code()};
}

/// Calls `work` and converts its FileError to a SourceError of the file `name`.
template <typename Work>
auto asSource(const std::string& name, const Work& work) {
  try {
    return work();
  } catch (const FileError& error) {
    throw sourceError(error, name);
  }
}

}  // namespace

void CameraMediaSource::deliver(RangedReader& file, Progress& progress,
                                DownloadDestination& destination) {
  buffer_.resize(blockBytes);
  while (progress.delivered < progress.status->size) {
    const std::size_t count =
        asSource(progress.name, [&] { return file.read(progress.delivered, buffer_); });
    if (count == 0) break;
    destination.append(std::as_bytes(std::span{buffer_}.first(count)));
    progress.delivered += count;
  }
}

FileStatus CameraMediaSource::expectedStatus(const Progress& progress) {
  const std::string& name = progress.name;
  const FileStatus status = asSource(name, [&] { return files_->status(progress.path); });
  const bool isExpected =
      progress.status ? status == *progress.status : status.type == FileStatus::Type::file;
  if (isExpected) return status;
  if (progress.status) throw SourceError{SourceError::Kind::changedWhileRead, name};
  const bool isFolder = status.type == FileStatus::Type::folder;
  throw SourceError{SourceError::Kind::unreadable, name, isFolder ? EISDIR : EINVAL};
}

void CameraMediaSource::goOn(Progress& progress, DownloadDestination& destination) {
  if (files_ == nullptr) files_ = setup_.browser.openFiles(setup_.deviceID, setup_.stop);
  const FileStatus status = expectedStatus(progress);
  // The phone may have left after the last byte; then nothing is left to read.
  if (progress.status && progress.delivered == status.size) return;
  const auto file =
      asSource(progress.name, [&] { return files_->open(progress.path, status.size, false); });
  progress.status = status;
  deliver(*file, progress, destination);
  expectedStatus(progress);
}

void CameraMediaSource::download(const MediaAsset& asset, DownloadDestination& destination) {
  Progress progress;
  progress.path = Phones::mediaFolder + "/" + setup_.oddPaths.pathOf(asset.id());
  progress.name = asset.name();
  for (;;) {
    try {
      return goOn(progress, destination);
    } catch (const PhoneError& error) {
      files_.reset();
      const bool isStopped = error.kind() == PhoneError::Kind::stopped;
      if (!isStopped && setup_.awaitPhone && setup_.awaitPhone(error.kind())) continue;
      // Lets the destination end with an error of its own instead, if it has one.
      destination.append({});
      throw SourceError{SourceError::Kind::disconnected, progress.name};
    }
  }
}

}  // namespace tavrix
