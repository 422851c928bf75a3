#include "device/FolderMediaSource.h"

#include <cerrno>

#include "device/SourceFolder.h"
#include "foundation/files/FileError.h"
#include "media/Snapshot.h"

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

/// Calls `work` and names its failure as one of the source.
template <typename Work>
auto asSource(const std::string& name, const Work& work) {
  try {
    return work();
  } catch (const FileError& error) {
    throw sourceError(error, name);
  }
}

/// An id may differ from its path where the disk's name is no UTF-8 or the id is numbered.
bool mayBeOdd(std::string_view id) {
  return id.find("\xEF\xBF\xBD") != std::string_view::npos ||
         id.find('#') != std::string_view::npos;
}

StringMap<std::string> oddPathsIn(const std::string& folder) {
  const auto listing = SourceFolder::list(folder);
  std::vector<SnapshotItem> items;
  items.reserve(listing.files.size());
  for (const SourceFolder::File& file : listing.files) items.push_back(file.item);
  const auto assets = Snapshot::assetsOf(items, TimeZone::utc());
  StringMap<std::string> paths;
  for (std::size_t i = 0; i < assets.size(); ++i) {
    if (assets[i].id() != listing.files[i].path) paths[assets[i].id()] = listing.files[i].path;
  }
  return paths;
}

}  // namespace

FolderMediaSource::FolderMediaSource(const std::string& folder) : folder_(openFolder(folder)) {}

std::string FolderMediaSource::pathOf(std::string_view id) {
  if (!mayBeOdd(id)) return std::string{id};
  const std::lock_guard lock{mutex_};
  if (!oddPaths_) oddPaths_ = oddPathsIn(folder_->path());
  const auto found = oddPaths_->find(id);
  return found == oddPaths_->end() ? std::string{id} : found->second;
}

FileStatus FolderMediaSource::statusOf(const std::string& path, const std::string& name) const {
  const auto status = asSource(name, [&] { return folder_->status(path); });
  if (!status) throw SourceError{SourceError::Kind::notFound, name, ENOENT};
  return *status;
}

void FolderMediaSource::download(const MediaAsset& asset, DownloadDestination& destination) {
  const std::string name{asset.name()};
  const std::string path = asSource(name, [&] { return pathOf(asset.id()); });
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
