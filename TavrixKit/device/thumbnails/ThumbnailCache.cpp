#include "device/thumbnails/ThumbnailCache.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <vector>

#include "foundation/Digest.h"
#include "foundation/Uuid.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/PrivateFolder.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t folderDigits = 2;
constexpr std::size_t nameDigits = 62;
/// The modification time is the last use, to the day: to write it at every use would wear the disk.
constexpr std::chrono::hours touchInterval{24};
constexpr std::chrono::hours leftOverAge{1};

std::string nameOf(const ThumbnailKey& key) {
  const std::string digest = sha256Hex(key.text());
  return digest.substr(0, folderDigits) + "/" + digest.substr(folderDigits);
}

bool areDigits(std::string_view text, std::size_t count) {
  return text.size() == count &&
         text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

struct EntryFile {
  std::string path;
  FileStatus status;
};

/// The files in a folder of the cache; any others are of no interest here.
struct Listing {
  std::vector<EntryFile> entries;
  std::vector<EntryFile> temporaries;
};

/// Returns what of the folder can be listed. Throws FileError.
Listing list(const Folder& folder) {
  Listing listing;
  folder.visitAll([&](const std::string& path, const FileStatus& status) {
    if (status.type != FileStatus::Type::file) return;
    const std::string name = lastPathComponent(path);
    if (!areDigits(parentPath(path), folderDigits)) return;
    if (areDigits(name, nameDigits)) {
      listing.entries.push_back({path, status});
    } else if (isTemporaryOf(name, name.substr(0, nameDigits))) {
      listing.temporaries.push_back({path, status});
    }
  });
  return listing;
}

std::uint64_t bytesOf(const std::vector<EntryFile>& files) {
  std::uint64_t bytes = 0;
  for (const EntryFile& file : files) bytes += file.status.size;
  return bytes;
}

void removeIfPossible(Folder& folder, const std::string& path) {
  try {
    folder.removeFile(path);
  } catch (const FileError&) {
    // It stays and only takes space.
    return;
  }
}

/// Writes a file in one step for other readers, without waiting for the disk: after a loss of power
/// the digest of a torn entry does not fit, and a lost one is made again.
void writeWhole(Folder& folder, const std::string& name, const std::string& bytes) {
  const std::string random = randomUuid().text();
  const std::string temporary = name + "." + random.substr(random.size() - 12) + ".part";
  try {
    const auto file = folder.createFile(temporary);
    file->append(std::as_bytes(std::span{bytes}));
    file->close();
    folder.renameReplacing(temporary, name);
  } catch (const FileError&) {
    removeIfPossible(folder, temporary);
    throw;
  }
}

}  // namespace

std::shared_ptr<Folder> ThumbnailCache::openFolderIfAny() {
  const std::lock_guard lock{mutex_};
  if (folder_ == nullptr) folder_ = openFolder(setup_.folder);
  return folder_;
}

std::shared_ptr<Folder> ThumbnailCache::openOrMakeFolder() {
  const std::lock_guard lock{mutex_};
  if (folder_ != nullptr && folder_->exists()) return folder_;
  // Pictures are private; other users must not see them here.
  return folder_ = openPrivateFolder(setup_.folder);
}

std::optional<ThumbnailEntry> ThumbnailCache::find(const ThumbnailKey& key) {
  try {
    const auto folder = openFolderIfAny();
    const std::string name = nameOf(key);
    const auto status = folder->status(name);
    if (!status || status->type != FileStatus::Type::file) return std::nullopt;
    auto entry = ThumbnailFile::decode(folder->readFile(name, ThumbnailFile::maxBytes), key.text(),
                                       setup_.programVersion);
    const Instant now = setup_.now();
    const auto age = now - status->modified;
    const bool isOldUse = age >= touchInterval || age <= -touchInterval;
    if (entry && isOldUse) {
      try {
        folder->setModificationTime(name, now);
      } catch (const FileError&) {
        // The entry may be evicted early; that costs no more than making it again.
        return entry;
      }
    }
    return entry;
  } catch (const FileError&) {
    return std::nullopt;
  }
}

void ThumbnailCache::keep(const ThumbnailKey& key, const ThumbnailEntry& entry) {
  const std::string bytes = ThumbnailFile::encode(key.text(), entry, setup_.programVersion);
  if (bytes.size() > ThumbnailFile::maxBytes) return;
  // Another process may remove the folder or a part of it at any moment: then once more.
  for (int attempt = 0; attempt < 2; ++attempt) {
    try {
      write(nameOf(key), bytes);
      addedBytes_ += bytes.size();
      return;
    } catch (const FileError&) {
      continue;
    }
  }
}

void ThumbnailCache::write(const std::string& name, const std::string& bytes) {
  const auto folder = openOrMakeFolder();
  folder->makeFolders(parentPath(name));
  writeWhole(*folder, name, bytes);
}

void ThumbnailCache::trim() {
  // Other processes add entries, too, so the folder is measured each time this one has added a
  // twentieth of the limit.
  if (isMeasured_ && addedBytes_ < setup_.maxBytes / 20) return;
  const std::unique_lock trimming{trimming_, std::try_to_lock};
  if (!trimming) return;
  isMeasured_ = true;
  addedBytes_ = 0;
  try {
    const auto folder = openFolderIfAny();
    Listing listing = list(*folder);
    const Instant now = setup_.now();
    for (const EntryFile& file : listing.temporaries) {
      if (file.status.modified < now - leftOverAge) removeIfPossible(*folder, file.path);
    }
    std::uint64_t bytes = bytesOf(listing.entries);
    if (bytes <= setup_.maxBytes) return;
    // A date in the future says nothing about the last use. If the entry is used, find() mends it.
    const auto lastUse = [&](const EntryFile& file) {
      const bool isPossible = file.status.modified <= now + touchInterval;
      return isPossible ? file.status.modified : earliestInstant;
    };
    std::sort(listing.entries.begin(), listing.entries.end(),
              [&](const EntryFile& a, const EntryFile& b) {
                return std::pair{lastUse(a), a.path} < std::pair{lastUse(b), b.path};
              });
    const std::uint64_t goal = setup_.maxBytes - setup_.maxBytes / 10;
    for (const EntryFile& file : listing.entries) {
      if (bytes <= goal) return;
      removeIfPossible(*folder, file.path);
      bytes -= file.status.size;
    }
  } catch (const FileError&) {
    return;
  }
}

ThumbnailCache::Contents ThumbnailCache::contents(const std::string& folder) {
  try {
    const Listing listing = list(*openFolder(folder));
    return {.files = listing.entries.size(), .bytes = bytesOf(listing.entries)};
  } catch (const FileError&) {
    return {};
  }
}

ThumbnailCache::Removal ThumbnailCache::reset(const std::string& folder) {
  Removal removal;
  try {
    const auto opened = openFolder(folder);
    const Listing listing = list(*opened);
    for (const EntryFile& file : listing.temporaries) removeIfPossible(*opened, file.path);
    for (const EntryFile& file : listing.entries) {
      try {
        opened->removeFile(file.path);
        ++removal.removed;
      } catch (const FileError&) {
        ++removal.failed;
      }
    }
    for (const std::string& name : opened->names()) {
      if (!areDigits(name, folderDigits)) continue;
      // Fails if the folder is not empty, which is right.
      std::error_code ignored;
      fs::remove(fs::path{folder} / name, ignored);
    }
  } catch (const FileError&) {
    return removal;
  }
  return removal;
}

std::optional<std::string> ThumbnailCache::userFolder(const std::optional<std::string>& cacheHome,
                                                      const std::optional<std::string>& home) {
  const std::string name = "/Tavrix/thumbnails";
  if (cacheHome && cacheHome->starts_with('/')) return *cacheHome + name;
  if (home && home->starts_with('/')) return *home + "/.cache" + name;
  return std::nullopt;
}

}  // namespace tavrix
