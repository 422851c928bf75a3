#include "settings/defaults/FileDefaults.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>
#include <utility>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/PrivateFolder.h"
#include "settings/defaults/DefaultsFile.h"

namespace tavrix {
namespace {

using Kind = DefaultsFault::Kind;

/// A file by its folder and its name in it.
struct FilePlace {
  std::string directory;
  std::string name;
};

/// Returns the file to which `path` leads through symbolic links, or `path` itself if it is none.
/// The file may be missing. Throws FileError: ELOOP if the links form a circle, EISDIR with the
/// path of the folder if they lead to one.
FilePlace followed(const std::string& path) {
  namespace fs = std::filesystem;
  constexpr int mostLinks = 40;
  fs::path current{path};
  for (int links = 0;; ++links) {
    std::error_code error;
    const fs::path target = fs::read_symlink(current, error);
    if (error) break;
    if (links == mostLinks) throw FileError{FileOperation::open, path, ELOOP};
    current = current.parent_path() / target;
    // "folder/" means the same as "folder".
    if (!current.has_filename()) current = current.parent_path();
  }
  std::error_code error;
  if (fs::is_directory(current, error)) {
    throw FileError{FileOperation::open, current.string(), EISDIR};
  }
  return {current.parent_path().string(), current.filename().string()};
}

bool isNoFile(const FileError& error) { return error.code() == EISDIR || error.code() == ELOOP; }

std::unique_ptr<Folder> openOrCreate(const std::string& directory, bool createsIt) {
  if (createsIt) return openPrivateFolder(directory);
  try {
    return openFolder(directory);
  } catch (const FileError& error) {
    if (error.code() != ENOENT && error.code() != ENOTDIR) throw;
    return nullptr;
  }
}

/// Returns false if other processes hold the lock for longer than any change takes.
bool lockPatiently(Folder& folder) {
  // Each attempt also waits for a moment: some seconds in all.
  constexpr int attempts = 25;
  constexpr std::chrono::milliseconds pause{1};
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (folder.lock()) return true;
    std::this_thread::sleep_for(pause);
  }
  return false;
}

/// Returns nullopt if there is no file. Throws FileError, and JsonError if the file is damaged.
std::optional<DefaultsObjects> readIn(const Folder& folder, const std::string& name) {
  if (!folder.status(name)) return std::nullopt;
  try {
    return DefaultsFile::decode(folder.readFile(name, DefaultsFile::largestBytes));
  } catch (const FileError& error) {
    if (error.code() == EFBIG) throw JsonError{JsonError::Kind::rejected, {}};
    // Another process has removed the file in the meantime.
    if (error.code() == ENOENT) return std::nullopt;
    throw;
  }
}

/// Returns true if the encoded text can be decoded again.
bool isReadable(const std::string& text) {
  if (text.size() > DefaultsFile::largestBytes) return false;
  try {
    DefaultsFile::decode(text);
    return true;
  } catch (const JsonError&) {
    return false;
  }
}

}  // namespace

FileDefaults::FileDefaults(const std::string& directory) : FileDefaults(directory, openOrCreate) {}

FileDefaults::FileDefaults(const std::string& directory, FolderOpener open)
    : path_(directory + "/" + std::string{DefaultsFile::fileName}), open_(std::move(open)) {
  load();
}

void FileDefaults::load() {
  try {
    const FilePlace file = followed(path_);
    const auto folder = open_(file.directory, false);
    if (folder != nullptr) objects_ = readIn(*folder, file.name).value_or(DefaultsObjects{});
  } catch (const JsonError& error) {
    DefaultsFault fault{.kind = Kind::damaged, .path = path_};
    if (error.kind() != JsonError::Kind::rejected) fault.position = error.position();
    report(std::move(fault));
  } catch (const FileError& error) {
    report(isNoFile(error)
               ? notFile(error)
               : DefaultsFault{.kind = Kind::unreadable, .path = path_, .code = error.code()});
  }
}

DefaultsFault FileDefaults::notFile(const FileError& error) const {
  DefaultsFault fault{.kind = Kind::notFile, .path = path_, .code = error.code()};
  if (error.path() != path_) fault.target = error.path();
  return fault;
}

std::optional<JsonValue> FileDefaults::object(std::string_view key) const {
  const std::lock_guard lock{mutex_};
  const auto found = objects_.find(key);
  if (found == objects_.end()) return std::nullopt;
  return found->second;
}

std::vector<std::string> FileDefaults::keys() const {
  const std::lock_guard lock{mutex_};
  std::vector<std::string> keys;
  std::transform(objects_.begin(), objects_.end(), std::back_inserter(keys),
                 [](const auto& entry) { return entry.first; });
  return keys;
}

/// Returns true if there is nothing to write. Removing an absent key does not touch the disk, so a
/// program that only reads never writes.
bool FileDefaults::changesNothing(const DefaultsChanges& changes) const {
  return unstored_.empty() && std::all_of(changes.begin(), changes.end(), [&](const auto& change) {
           return !change.second && !objects_.contains(change.first);
         });
}

void FileDefaults::apply(const DefaultsChanges& changes) {
  const std::lock_guard lock{mutex_};
  if (changesNothing(changes)) return;
  objects_ = withChanges(std::move(objects_), changes);
  for (const auto& [key, object] : changes) {
    unstored_.insert_or_assign(key, object);
    unstorable_.erase(key);
  }
  store();
}

void FileDefaults::store() {
  std::unique_ptr<Folder> folder;
  try {
    const FilePlace file = followed(path_);
    // The folder of another place, such as a disk that is not mounted, is not created.
    const bool isOwn = file.directory == parentPath(path_);
    folder = open_(file.directory, isOwn);
    if (folder == nullptr) throw FileError{FileOperation::open, file.directory, ENOENT};
    if (!lockPatiently(*folder)) return report({.kind = Kind::busy, .path = path_});
    storeIn(*folder, file.name);
  } catch (const FileError& error) {
    if (isNoFile(error)) return report(notFile(error));
    // An unreadable file may contain the user's choices, so it is not replaced.
    const bool isReading = error.operation() == FileOperation::open ||
                           error.operation() == FileOperation::read ||
                           error.operation() == FileOperation::status;
    report({.kind = isReading && folder != nullptr ? Kind::unreadable : Kind::unwritable,
            .path = path_,
            .code = error.code()});
  }
}

void FileDefaults::storeIn(Folder& folder, const std::string& name) {
  const DefaultsObjects stored = storedIn(folder, name);
  DefaultsObjects changed = withChanges(stored, unstored_);
  const std::string text = DefaultsFile::encode(changed);
  if (!isReadable(text)) {
    // This change must not make later changes fail.
    unstorable_.merge(unstored_);
    unstored_.clear();
    return report({.kind = Kind::tooLarge, .path = path_});
  }
  if (text != DefaultsFile::encode(stored)) {
    writeFileAtomically(folder, name, text);
    removeLeftOvers(folder, name);
  }
  objects_ = withChanges(std::move(changed), unstorable_);
  unstored_.clear();
}

/// Returns the content of the file. A damaged file is set aside.
DefaultsObjects FileDefaults::storedIn(Folder& folder, const std::string& name) {
  try {
    return readIn(folder, name).value_or(DefaultsObjects{});
  } catch (const JsonError&) {
    setAside(folder, name);
    return {};
  }
}

void FileDefaults::setAside(Folder& folder, const std::string& name) {
  std::string aside = name + ".damaged";
  for (int number = 2; !folder.renameWithoutReplacing(name, aside); ++number) {
    aside = name + ".damaged-" + std::to_string(number);
  }
  report({.kind = Kind::setAside, .path = path_, .keptAs = folder.path() + "/" + aside});
}

void FileDefaults::report(DefaultsFault fault) {
  if (std::find(faults_.begin(), faults_.end(), fault) == faults_.end()) {
    faults_.push_back(std::move(fault));
  }
}

std::vector<DefaultsFault> FileDefaults::takeFaults() {
  const std::lock_guard lock{mutex_};
  return std::exchange(faults_, {});
}

std::optional<std::string> defaultsFolderPath(const std::optional<std::string>& configHome,
                                              const std::optional<std::string>& home) {
  if (configHome && configHome->starts_with('/')) return *configHome + "/Tavrix";
  if (home && home->starts_with('/')) return *home + "/.config/Tavrix";
  return std::nullopt;
}

}  // namespace tavrix
