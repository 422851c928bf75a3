#include "foundation/files/platform/FolderListing.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"
#include "foundation/files/platform/PosixStatus.h"

namespace tavrix::FolderListing {
namespace {

/// Returns true if the error means that this process may not open the folder.
bool isRefusal(int code) { return code == EACCES || code == EPERM || code == ELOOP; }

/// The state that the threads of one listing share.
struct Listing {
  const std::string& path;  ///< of the folder that is listed
  const Folder::Visitor& visitor;
  std::mutex mutex;  ///< of the visitor and of everything below
  std::vector<UnreadableFolder> unreadable;
  std::exception_ptr failure;
};

/// Lists folders with everything below them, on one thread. Passes the entries on in batches.
class Walk {
 public:
  explicit Walk(Listing& listing) : listing_(listing) {}

  /// Visits what is in an open folder. Calls `enter` for each folder in it.
  template <typename Enter>
  void visit(int folder, const std::string& path, Enter enter) {
    for (const std::string& name : readableNames(folder, path)) {
      std::string inner = path;
      if (!path.empty()) inner += '/';
      inner += name;
      struct stat raw{};
      if (::fstatat(folder, name.c_str(), &raw, AT_SYMLINK_NOFOLLOW) != 0) {
        // An entry that disappeared after the listing is omitted.
        if (errno != ENOENT) unreadable_.push_back({std::move(inner), errno});
        continue;
      }
      batch_.push_back({std::move(inner), statusOf(raw)});
      if (S_ISDIR(raw.st_mode)) enter(folder, name, std::string{batch_.back().path});
      if (batch_.size() >= batchEntries) passOn();
    }
  }

  /// Visits a folder with everything below it. `name` is its name in an open folder.
  void visitBelow(int parent, const std::string& name, const std::string& path) {
    const FileDescriptor opened{::openat(parent, name.c_str(), folderFlags | O_NOFOLLOW)};
    if (opened.isOpen()) {
      visit(opened.number(), path,
            [this](int folder, const std::string& inner, const std::string& innerPath) {
              visitBelow(folder, inner, innerPath);
            });
    } else if (isRefusal(errno)) {
      unreadable_.push_back({path, errno});
    } else if (errno != ENOENT && errno != ENOTDIR) {
      throw FileError{FileOperation::list, listing_.path + "/" + path, errno};
    }
  }

  /// Passes the entries on to the visitor, and the folders that could not be read to the listing.
  void passOn() {
    const std::lock_guard lock{listing_.mutex};
    for (const Entry& entry : batch_) listing_.visitor(entry.path, entry.status);
    batch_.clear();
    for (UnreadableFolder& each : unreadable_) listing_.unreadable.push_back(std::move(each));
    unreadable_.clear();
  }

 private:
  struct Entry {
    std::string path;
    FileStatus status;
  };
  static constexpr std::size_t batchEntries = 512;

  std::vector<std::string> readableNames(int folder, const std::string& path) {
    try {
      return namesIn(openAgain(folder), path.empty() ? listing_.path : listing_.path + "/" + path);
    } catch (const FileError& error) {
      if (path.empty() || !isRefusal(error.code())) throw;
      unreadable_.push_back({path, error.code()});
      return {};
    }
  }

  Listing& listing_;
  std::vector<Entry> batch_;
  std::vector<UnreadableFolder> unreadable_;
};

/// Visits the folders with these names, each thread taking the next one, until one of them fails.
void visitTogether(int folder, const std::vector<std::string>& names, Listing& listing) {
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    try {
      Walk walk{listing};
      for (std::size_t i = 0; (i = next++) < names.size();) {
        walk.visitBelow(folder, names[i], names[i]);
      }
      walk.passOn();
    } catch (...) {
      next = names.size();
      const std::lock_guard lock{listing.mutex};
      listing.failure = std::current_exception();
    }
  };
  constexpr std::size_t mostThreads = 4;
  const std::size_t cores = std::max(2U, std::thread::hardware_concurrency());
  std::vector<std::jthread> others;
  try {
    while (others.size() + 1 < std::min({cores, mostThreads, names.size()})) {
      others.emplace_back(work);
    }
  } catch (const std::system_error&) {
    // The system has no more threads; this one does the rest.
  }
  work();
}

}  // namespace

int openAgain(int folder) { return ::openat(folder, ".", folderFlags); }

std::vector<std::string> namesIn(int folder, const std::string& path) {
  const auto fail = [&](int code) { throw FileError{FileOperation::list, path, code}; };
  if (folder < 0) fail(errno);
  const std::unique_ptr<DIR, int (*)(DIR*)> entries{::fdopendir(folder), ::closedir};
  if (entries == nullptr) fail(errno);
  std::vector<std::string> result;
  errno = 0;
  while (const struct dirent* const entry = ::readdir(entries.get()))
    result.emplace_back(entry->d_name);
  // With an incomplete listing, existing files would look missing.
  if (errno != 0 && errno != ENOENT) fail(errno);
  std::erase_if(result, [](const std::string& name) { return name == "." || name == ".."; });
  return result;
}

std::vector<UnreadableFolder> visitAll(int folder, const std::string& path,
                                       const Folder::Visitor& visitor) {
  Listing listing{path, visitor, {}, {}, {}};
  std::vector<std::string> folders;
  Walk walk{listing};
  walk.visit(folder, "",
             [&](int, const std::string& name, const std::string&) { folders.push_back(name); });
  walk.passOn();
  visitTogether(folder, folders, listing);
  if (listing.failure) std::rethrow_exception(listing.failure);
  std::sort(listing.unreadable.begin(), listing.unreadable.end(),
            [](const auto& a, const auto& b) { return a.path < b.path; });
  return std::move(listing.unreadable);
}

}  // namespace tavrix::FolderListing
