#include "device/folders/FolderMediaSource.h"

#include <cerrno>
#include <utility>

#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

constexpr std::size_t bufferBytes = 512 * 1024;

std::span<char> threadBuffer() {
  thread_local const auto buffer = std::make_unique<char[]>(bufferBytes);
  return {buffer.get(), bufferBytes};
}

SourceError sourceError(const FileError& error, const std::string& name) {
  const bool isGone = error.code() == ENOENT || error.code() == ENOTDIR;
  return {isGone ? SourceError::Kind::notFound : SourceError::Kind::unreadable, name, error.code()};
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

FolderMediaSource::FolderMediaSource(const std::string& folder, OddPaths oddPaths)
    : folder_(openFolder(folder)), oddPaths_(std::move(oddPaths)) {}

FileStatus FolderMediaSource::statusOf(const std::string& path, const std::string& name) const {
  const auto status = asSource(name, [&] { return folder_->status(path); });
  if (!status) throw SourceError{SourceError::Kind::notFound, name, ENOENT};
  return *status;
}

void FolderMediaSource::download(const MediaAsset& asset, DownloadDestination& destination) {
  const std::string name{asset.name()};
  const std::string path = oddPaths_.pathOf(asset.id());
  const FileStatus before = statusOf(path, name);
  const auto file = asSource(name, [&] { return folder_->openFile(path); });
  const std::span<char> buffer = threadBuffer();
  for (;;) {
    const std::size_t count = asSource(name, [&] { return file->read(buffer); });
    if (count == 0) break;
    destination.append(std::as_bytes(std::span{buffer.data(), count}));
  }
  if (statusOf(path, name) != before) throw SourceError{SourceError::Kind::changedWhileRead, name};
}

}  // namespace tavrix
