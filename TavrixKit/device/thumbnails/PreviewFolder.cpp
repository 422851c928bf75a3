#include "device/thumbnails/PreviewFolder.h"

#include <algorithm>
#include <cerrno>
#include <set>

#include "foundation/Uuid.h"
#include "foundation/files/FileError.h"
#include "foundation/files/PrivateFolder.h"

namespace tavrix {
namespace {

constexpr std::string_view lockEnding = ".lock";

/// Returns the names of the folders of processes, also of those of which only the lock is left.
std::set<std::string> foldersOf(const Folder& base) {
  std::set<std::string> folders;
  for (std::string name : base.names()) {
    if (name.ends_with(lockEnding)) name.resize(name.size() - lockEnding.size());
    const auto uuid = Uuid::parse(name);
    // Any other name is not one of this program's.
    if (uuid && uuid->text() == name) folders.insert(name);
  }
  return folders;
}

}  // namespace

PreviewFolder::~PreviewFolder() {
  if (lock_ == nullptr) return;
  folder_.reset();
  try {
    openFolder(base())->removeAll(name_);
  } catch (...) {
    // The next start of the program tries again.
    return;
  }
  lock_->remove();
}

void PreviewFolder::removeLeftOvers() noexcept {
  try {
    const auto opened = openFolder(base());
    for (const std::string& name : foldersOf(*opened)) {
      const auto lock = LockFile::tryLock(base() + "/" + name + std::string{lockEnding});
      if (lock == nullptr) continue;
      opened->removeAll(name);
      lock->remove();
    }
  } catch (...) {
    // Left-overs only take space; the next start tries again.
    return;
  }
}

void PreviewFolder::openOrMakeFolder() {
  if (folder_ != nullptr && folder_->exists()) return;
  // The user may have emptied the cache.
  folder_.reset();
  if (lock_ != nullptr) lock_->remove();
  lock_.reset();
  entries_.clear();
  totalBytes_ = 0;
  makePrivateFolder(setup_.thumbnailFolder);
  makePrivateFolder(base());
  while (lock_ == nullptr) {
    name_ = randomUuid().text();
    // Another process that removes left-overs may be faster.
    lock_ = LockFile::tryLock(base() + "/" + name_ + std::string{lockEnding});
  }
  makePrivateFolder(base() + "/" + name_);
  folder_ = setup_.open(base() + "/" + name_);
}

std::optional<std::string> PreviewFolder::find(const std::string& key) {
  const auto found = entries_.find(key);
  if (found == entries_.end()) return std::nullopt;
  try {
    const auto status = folder_->status(found->second.path);
    if (status && status->type == FileStatus::Type::file && status->size == found->second.bytes) {
      found->second.lastUse = ++lastUse_;
      return folder_->path() + "/" + found->second.path;
    }
  } catch (const FileError&) {
    // It is fetched again.
  }
  remove(found);
  return std::nullopt;
}

std::string PreviewFolder::add(const std::string& key, const std::string& name, std::uint64_t bytes,
                               const Write& write) {
  openOrMakeFolder();
  makeRoom(bytes);
  const std::string own = std::to_string(++lastFolder_);
  const std::string path = own + "/" + name;
  const std::string temporary = own + "/.part";
  try {
    folder_->makeFolders(own);
    const auto file = folder_->createFile(temporary);
    write(*file);
    file->close();
    folder_->renameReplacing(temporary, path);
  } catch (...) {
    removeIfPossible(own);
    throw;
  }
  if (const auto old = entries_.find(key); old != entries_.end()) remove(old);
  entries_[key] = {own, path, bytes, ++lastUse_};
  totalBytes_ += bytes;
  return folder_->path() + "/" + path;
}

void PreviewFolder::makeRoom(std::uint64_t bytes) {
  const auto requireDisk = [&](std::uint64_t available) {
    if (available < bytes) throw FileError{FileOperation::write, folder_->path(), ENOSPC};
  };
  // If it cannot fit anyway, no other file is removed.
  requireDisk(folder_->freeBytes() + totalBytes_);
  const std::uint64_t room = setup_.maxBytes - std::min(bytes, setup_.maxBytes);
  while (!entries_.empty() && (totalBytes_ > room || folder_->freeBytes() < bytes)) {
    remove(std::min_element(entries_.begin(), entries_.end(), [](const auto& a, const auto& b) {
      return a.second.lastUse < b.second.lastUse;
    }));
  }
  requireDisk(folder_->freeBytes());
}

PreviewFolder::Entries::iterator PreviewFolder::remove(Entries::iterator entry) {
  removeIfPossible(entry->second.folder);
  totalBytes_ -= entry->second.bytes;
  return entries_.erase(entry);
}

void PreviewFolder::removeIfPossible(const std::string& path) noexcept {
  try {
    folder_->removeAll(path);
  } catch (...) {
    // It is removed with the folder of the process.
    return;
  }
}

}  // namespace tavrix
