#include "Destination.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "foundation/Digest.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;

/// The full path with links resolved as far as it exists; as it stands where that fails.
fs::path resolved(const std::string& path) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  fs::path full = fs::weakly_canonical(absolute, error);
  if (error) full = absolute.lexically_normal();
  return full.has_filename() ? full : full.parent_path();
}

bool isInside(const fs::path& inner, const fs::path& outer) {
  const auto [end, innerEnd] =
      std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
  return end == outer.end();
}

void create(const std::string& path) {
  const fs::path full = resolved(path);
  try {
    const auto parent = openFolder(full.parent_path().string());
    parent->makeFolders(full.filename().string());
    parent->syncEntries("");
  } catch (const FileError& error) {
    if (error.operation() != FileOperation::open || error.code() != ENOENT) throw;
    throw DestinationError{DestinationError::Kind::parentMissing, path};
  }
}

std::unique_ptr<Folder> held(std::unique_ptr<Folder> folder) {
  if (!folder->lock()) throw DestinationError{DestinationError::Kind::busy, folder->path()};
  DestinationMarker::removeLeftOvers(*folder);
  return folder;
}

}  // namespace

PhoneIdentity snapshotPhone(const std::string& deviceName) {
  return {sha256Hex("snapshot:" + deviceName), deviceName, "iPhone"};
}

void Destination::checkApart(const std::string& source, const std::string& destination) {
  using enum DestinationError::Kind;
  const fs::path target = resolved(destination);
  if (isInside(target, resolved(source + "/media"))) {
    throw DestinationError{insideMedia, destination};
  }
  if (isInside(resolved(source), target)) throw DestinationError{holdsSource, destination};
}

std::unique_ptr<Folder> Destination::openExisting(const std::string& path) {
  try {
    return openFolder(path);
  } catch (const FileError& error) {
    if (error.code() == ENOENT) return nullptr;
    if (error.code() != ENOTDIR) throw;
    throw DestinationError{DestinationError::Kind::notFolder, path};
  }
}

std::unique_ptr<Folder> Destination::openOrCreate(const std::string& path) {
  if (auto folder = openExisting(path)) return folder;
  create(path);
  return openFolder(path);
}

std::unique_ptr<Folder> Destination::openForWriting(const std::string& path) {
  return held(openOrCreate(path));
}

std::unique_ptr<Folder> Destination::openRequired(const std::string& path) {
  auto folder = openExisting(path);
  if (folder == nullptr) throw DestinationError{DestinationError::Kind::missing, path};
  return folder;
}

std::unique_ptr<Folder> Destination::openRequiredForWriting(const std::string& path) {
  return held(openRequired(path));
}

bool Destination::isBusy(const std::string& path) { return !openFolder(path)->lock(); }

Destination::Content Destination::read(const Folder& destination, const PhoneIdentity& phone) {
  return readDestination(destination, phone.hash);
}

}  // namespace tavrix
