#include "runs/Destination.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "foundation/Digest.h"
#include "foundation/files/FileError.h"
#include "runs/Mounts.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;

/// Returns the absolute path with links resolved as far as it exists. If that fails, returns it
/// normalised lexically.
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

/// Returns true if `inner` or one of its parents is the same folder on disk as `outer`; a folder
/// may have several paths.
bool isBelow(const fs::path& inner, const fs::path& outer) {
  for (fs::path path = inner;; path = path.parent_path()) {
    std::error_code error;
    if (fs::equivalent(path, outer, error)) return true;
    if (path == path.parent_path()) return false;
  }
}

void checkHoldsNot(const std::string& source, const std::string& destination) {
  if (Destination::liesIn(source, destination)) {
    throw DestinationError{DestinationError::Kind::holdsSource, destination};
  }
}

/// Opens the folder in which a destination can be created.
std::unique_ptr<Folder> parentOf(const std::string& path) {
  try {
    return openFolder(resolved(path).parent_path().string());
  } catch (const FileError& error) {
    if (error.operation() != FileOperation::open || error.code() != ENOENT) throw;
    throw DestinationError{DestinationError::Kind::parentMissing, path};
  }
}

void create(const std::string& path) {
  const auto parent = parentOf(path);
  parent->makeFolders(resolved(path).filename().string());
  parent->syncEntries("");
}

std::unique_ptr<Folder> held(std::unique_ptr<Folder> folder) {
  folder->checkWritable();
  if (!folder->lock()) throw DestinationError{DestinationError::Kind::busy, folder->path()};
  DestinationMarker::removeLeftOvers(*folder);
  return folder;
}

}  // namespace

PhoneIdentity snapshotPhone(const std::string& deviceName) {
  return {sha256Hex("snapshot:" + deviceName), deviceName, "iPhone", false};
}

PhoneIdentity folderPhone(const std::string& folder, const std::string& deviceName) {
  return {sha256Hex("folder:" + resolved(folder).string()), deviceName, "iPhone", false};
}

void Destination::checkApart(const std::string& source, const std::string& destination) {
  checkHoldsNot(source, destination);
  // The media may be elsewhere, behind a link.
  if (liesIn(destination, source) || liesIn(destination, source + "/media")) {
    throw DestinationError{DestinationError::Kind::insideMedia, destination};
  }
}

void Destination::checkApartFromFolder(const std::string& source,
                                       const std::string& catalogueFolder,
                                       const std::string& destination) {
  // If the destination is both, reports that it contains the source, which is more specific.
  checkHoldsNot(source, destination);
  checkHoldsNot(catalogueFolder, destination);
  if (liesIn(destination, source) || liesIn(destination, catalogueFolder)) {
    throw DestinationError{DestinationError::Kind::insideMedia, destination};
  }
}

bool Destination::liesIn(const std::string& path, const std::string& folder) {
  const fs::path inner = resolved(path);
  const fs::path outer = resolved(folder);
  return isInside(inner, outer) || isBelow(inner, outer) ||
         liesInByMounts(inner.string(), outer.string(), readMounts());
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

void Destination::checkWritable(const std::string& path) {
  const auto folder = openExisting(path);
  (folder ? *folder : *parentOf(path)).checkWritable();
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
