#include "device/folders/SourceFolder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>

#include "foundation/Digest.h"
#include "foundation/Text.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

using SourceFolder::Listing;
using SourceFolder::Reason;
using Type = FileStatus::Type;

constexpr std::string_view mediaFolderName = "dcim";

bool isMediaFolderName(std::string_view name) { return lowerCased(name) == mediaFolderName; }

/// Returns true for a name that synchronising programs use in place of a file whose bytes are
/// elsewhere.
bool isPlaceholder(std::string_view name) {
  constexpr std::array<std::string_view, 2> suffixes{".nextcloud", ".owncloud"};
  const auto ends = [&](std::string_view suffix) {
    return name.size() > suffix.size() && name.ends_with(suffix);
  };
  return (name.starts_with('.') && ends(".icloud")) ||
         std::any_of(suffixes.begin(), suffixes.end(), ends);
}

SnapshotItem itemOf(const std::string& name, const std::string& directory,
                    const FileStatus& status) {
  SnapshotItem item;
  item.name = replacingInvalidUtf8(name);
  if (!directory.empty()) item.dir = replacingInvalidUtf8(directory);
  item.kind = textOf(mediaKindOfFileName(item.name));
  item.size = status.size;
  item.itemDate = static_cast<double>(status.modified.time_since_epoch().count()) / 1000;
  return item;
}

using Entries = std::function<std::vector<FolderEntry>(const std::string& folder)>;

std::optional<Reason> reasonAgainst(const FolderEntry& entry) {
  if (entry.name.size() > SourceFolder::maxNameBytes) return Reason::longName;
  if (isPlaceholder(entry.name)) return Reason::placeholder;
  if (entry.name.starts_with('.')) return Reason::hidden;
  if (entry.status.type == Type::link) return Reason::link;
  if (entry.status.type == Type::other) return Reason::special;
  // A folder may open nevertheless; if it does not, it is left out later.
  if (entry.failure != 0 && entry.status.type == Type::file) return Reason::unreadableFile;
  const bool isFile = entry.status.type == Type::file;
  if (isFile && entry.status.size > SourceFolder::maxFileBytes) return Reason::tooLarge;
  return std::nullopt;
}

/// Returns the name, or the beginning of one that is too long to be shown.
std::string shortened(const std::string& name) {
  constexpr std::size_t shownBytes = 60;
  if (name.size() <= SourceFolder::maxNameBytes) return name;
  return replacingInvalidUtf8(name.substr(0, shownBytes)) + "…";
}

/// The entries of one folder and the folders in it, by name.
struct ListedFolder {
  std::string path;
  int depth = 0;
  std::vector<FolderEntry> files;
  std::vector<SourceFolder::LeftOut> leftOut;
  std::vector<std::unique_ptr<ListedFolder>> inner;

  std::string pathOf(const std::string& name) const {
    return path.empty() ? name : path + "/" + name;
  }

  void take(std::vector<FolderEntry>&& entries) {
    for (const FolderEntry& entry : entries) {
      if (const auto reason = reasonAgainst(entry)) {
        leftOut.push_back({pathOf(shortened(entry.name)), *reason});
      } else if (entry.status.type == Type::folder) {
        inner.push_back(std::make_unique<ListedFolder>());
        inner.back()->path = pathOf(entry.name);
        inner.back()->depth = depth + 1;
      }
    }
    std::erase_if(entries, [](const FolderEntry& entry) {
      return reasonAgainst(entry) || entry.status.type == Type::folder;
    });
    files = std::move(entries);
  }

  /// Moves the entries to `listing`: files come before the content of the folders beside them.
  void moveInto(Listing& listing) {
    for (const FolderEntry& file : files) {
      listing.items.push_back(itemOf(file.name, path, file.status));
      listing.paths.push_back(pathOf(file.name));
    }
    std::move(leftOut.begin(), leftOut.end(), std::back_inserter(listing.leftOut));
    for (const auto& folder : inner) folder->moveInto(listing);
  }
  std::size_t fileCount() const {
    std::size_t count = files.size();
    for (const auto& folder : inner) count += folder->fileCount();
    return count;
  }
};

/// Lists folders on several threads in any order; the order of the result is fixed.
class Lister {
 public:
  Lister(const Entries& list, const std::stop_token& stop) : list_(list), stop_(stop) {}

  Listing list(int threads) {
    root_.take(list_(""));
    enqueue(root_);
    {
      const int wanted = waiting_.empty() ? 1 : threads;
      std::vector<std::jthread> others;
      for (int i = 1; i < wanted; ++i) others.emplace_back([this] { work(); });
      work();
    }
    if (failure_) std::rethrow_exception(failure_);
    Listing listing;
    listing.isComplete = !stop_.stop_requested();
    const std::size_t count = root_.fileCount();
    listing.items.reserve(count);
    listing.paths.reserve(count);
    root_.moveInto(listing);
    return listing;
  }

 private:
  void enqueue(ListedFolder& folder) {
    folders_ += folder.inner.size();
    entries_ += folder.files.size() + folder.leftOut.size();
    if (folders_ > SourceFolder::maxFolders || entries_ > SourceFolder::maxEntries)
      isTooMany_ = true;
    for (const auto& inner : folder.inner) waiting_.push_back(inner.get());
    open_ += folder.inner.size();
  }

  void work() {
    std::unique_lock lock{mutex_};
    while (true) {
      changed_.wait(lock, [&] { return open_ == 0 || !waiting_.empty(); });
      if (waiting_.empty()) return;
      ListedFolder& folder = *waiting_.front();
      waiting_.pop_front();
      lock.unlock();
      const std::exception_ptr failure = visit(folder);
      lock.lock();
      if (failure) failure_ = failure;
      if (!failure_) enqueue(folder);
      --open_;
      changed_.notify_all();
    }
  }

  /// Lists a folder. Returns an exception that is not an error of this folder, else nullptr.
  std::exception_ptr visit(ListedFolder& folder) const {
    if (stop_.stop_requested()) return nullptr;
    if (isTooMany_) {
      folder.leftOut.push_back({folder.path, Reason::tooMany});
      return nullptr;
    }
    if (folder.depth > SourceFolder::maxDepth) {
      folder.leftOut.push_back({folder.path, Reason::tooDeep});
      return nullptr;
    }
    try {
      folder.take(list_(folder.path));
    } catch (const FileError&) {
      folder.leftOut.push_back({folder.path, Reason::unreadableFolder});
    } catch (...) {
      return std::current_exception();
    }
    return nullptr;
  }

  const Entries& list_;
  const std::stop_token& stop_;
  ListedFolder root_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<ListedFolder*> waiting_;
  std::size_t open_ = 0;     ///< folders that are waiting or being visited
  std::size_t folders_ = 0;  ///< folders that were found so far
  std::size_t entries_ = 0;  ///< files and entries that are left out, so far
  std::atomic<bool> isTooMany_ = false;
  std::exception_ptr failure_;
};

std::vector<std::string> mediaFolders(const std::string& path,
                                      const std::vector<FolderEntry>& entries) {
  std::vector<std::string> folders;
  const std::filesystem::path base{path};
  for (const FolderEntry& entry : entries) {
    std::error_code error;
    if (isMediaFolderName(entry.name) && std::filesystem::is_directory(base / entry.name, error)) {
      folders.push_back(base / entry.name);
    }
  }
  return folders;
}

std::filesystem::path fullPath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(path, error);
  auto full = std::filesystem::weakly_canonical(absolute, error);
  if (error) full = absolute.lexically_normal();
  return full.has_filename() ? full : full.parent_path();
}

}  // namespace

bool SourceFolder::LeftOut::isUnseen() const {
  return reason == Reason::unreadableFolder || reason == Reason::unreadableFile ||
         reason == Reason::tooDeep || reason == Reason::tooMany || reason == Reason::tooLarge ||
         reason == Reason::longName;
}

bool SourceFolder::isCameraFolderName(std::string_view name) {
  constexpr std::size_t length = 8;
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isFree = [&](char c) {
    return isDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
  };
  return name.size() == length && name[0] != '0' &&
         std::all_of(name.begin(), name.begin() + 3, isDigit) &&
         std::all_of(name.begin() + 3, name.end(), isFree);
}

std::optional<std::string> SourceFolder::catalogueFolder(const std::string& path) {
  const auto entries = folderEntries(path, true);
  if (auto folders = mediaFolders(path, entries); !folders.empty()) return folders.front();
  const bool holdsCameraFolders =
      std::any_of(entries.begin(), entries.end(), [](const FolderEntry& entry) {
        return entry.status.type == Type::folder && isCameraFolderName(entry.name);
      });
  const std::string name = fullPath(path).filename().string();
  if (holdsCameraFolders || isMediaFolderName(name) || isCameraFolderName(name)) return path;
  return std::nullopt;
}

std::vector<std::string> SourceFolder::otherCatalogueFolders(const std::string& path) {
  auto folders = mediaFolders(path, folderEntries(path, true));
  if (!folders.empty()) folders.erase(folders.begin());
  return folders;
}

SourceFolder::Listing SourceFolder::list(const std::string& folder, const std::stop_token& stop) {
  // Most of the time is spent waiting for the disk.
  constexpr int threads = 4;
  const Entries entries = [&](const std::string& inner) {
    return inner.empty() ? folderEntries(folder, true, stop)
                         : folderEntries(folder + "/" + inner, false, stop);
  };
  return Lister{entries, stop}.list(threads);
}

SourceFolder::Listing SourceFolder::list(const Entries& entries, const std::stop_token& stop) {
  return Lister{entries, stop}.list(1);
}

std::string SourceFolder::phoneKey(const std::string& folder) {
  constexpr std::size_t digits = 16;
  return "folder-" + sha256Hex(fullPath(folder).string()).substr(0, digits);
}

}  // namespace tavrix
