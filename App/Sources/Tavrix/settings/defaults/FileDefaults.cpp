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
#include "settings/defaults/DefaultsFile.h"

namespace tavrix {
namespace {

using Kind = DefaultsFault::Kind;

const std::string fileName{DefaultsFile::fileName};

std::unique_ptr<Folder> openOrCreate(const std::string& directory, bool createsIt) {
  if (createsIt) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) throw FileError{FileOperation::makeFolder, directory, error.value()};
  }
  try {
    return openFolder(directory);
  } catch (const FileError& error) {
    if (error.code() != ENOENT && error.code() != ENOTDIR) throw;
    if (createsIt) throw;
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
std::optional<DefaultsObjects> readIn(const Folder& folder) {
  if (!folder.status(fileName)) return std::nullopt;
  try {
    return DefaultsFile::decode(folder.readFile(fileName, DefaultsFile::largestBytes));
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

FileDefaults::FileDefaults(const std::string& directory)
    : FileDefaults(directory,
                   [directory](bool createsIt) { return openOrCreate(directory, createsIt); }) {}

FileDefaults::FileDefaults(const std::string& directory, FolderOpener open)
    : path_(directory + "/" + fileName), open_(std::move(open)) {
  load();
}

void FileDefaults::load() {
  try {
    const auto folder = open_(false);
    if (folder != nullptr) objects_ = readIn(*folder).value_or(DefaultsObjects{});
  } catch (const JsonError& error) {
    DefaultsFault fault{.kind = Kind::damaged, .path = path_};
    if (error.kind() != JsonError::Kind::rejected) fault.position = error.position();
    report(std::move(fault));
  } catch (const FileError& error) {
    report({.kind = Kind::unreadable, .path = path_, .code = error.code()});
  }
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
    folder = open_(true);
    if (!lockPatiently(*folder)) return report({.kind = Kind::busy, .path = path_});
    storeIn(*folder);
  } catch (const FileError& error) {
    // An unreadable file may contain the user's choices, so it is not replaced.
    const bool isReading = error.operation() == FileOperation::open ||
                           error.operation() == FileOperation::read ||
                           error.operation() == FileOperation::status;
    report({.kind = isReading && folder != nullptr ? Kind::unreadable : Kind::unwritable,
            .path = path_,
            .code = error.code()});
  }
}

void FileDefaults::storeIn(Folder& folder) {
  const DefaultsObjects stored = storedIn(folder);
  DefaultsObjects changed = withChanges(stored, unstored_);
  const std::string text = DefaultsFile::encode(changed);
  if (!isReadable(text)) {
    // This change must not make later changes fail.
    unstorable_.merge(unstored_);
    unstored_.clear();
    return report({.kind = Kind::tooLarge, .path = path_});
  }
  if (text != DefaultsFile::encode(stored)) {
    writeFileAtomically(folder, fileName, text);
    removeLeftOvers(folder, fileName);
  }
  objects_ = withChanges(std::move(changed), unstorable_);
  unstored_.clear();
}

/// Returns the content of the file. A damaged file is set aside.
DefaultsObjects FileDefaults::storedIn(Folder& folder) {
  try {
    return readIn(folder).value_or(DefaultsObjects{});
  } catch (const JsonError&) {
    setAside(folder);
    return {};
  }
}

void FileDefaults::setAside(Folder& folder) {
  std::string aside = fileName + ".damaged";
  for (int number = 2; !folder.renameWithoutReplacing(fileName, aside); ++number) {
    aside = fileName + ".damaged-" + std::to_string(number);
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
