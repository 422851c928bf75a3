#include "device/SourceFolder.h"

#include <algorithm>
#include <array>
#include <filesystem>

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

/// What synchronising programs leave in place of a file whose bytes are elsewhere.
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

class Lister {
 public:
  using Entries = std::function<std::vector<FolderEntry>(const std::string& folder)>;

  explicit Lister(const Entries& entries) : entries_(entries) {}

  Listing list() {
    listFolder("", entries_(""), 0);
    return std::move(listing_);
  }

 private:
  void leaveOut(const std::string& path, Reason reason) {
    listing_.leftOut.push_back({path, reason});
  }

  /// Files come before what lies in folders beside them.
  void listFolder(const std::string& folder, const std::vector<FolderEntry>& entries, int depth) {
    std::vector<std::string> folders;
    for (const FolderEntry& entry : entries) {
      const std::string path = folder.empty() ? entry.name : folder + "/" + entry.name;
      if (const auto reason = reasonAgainst(entry)) {
        leaveOut(path, *reason);
      } else if (entry.status.type == Type::folder) {
        folders.push_back(path);
      } else {
        listing_.files.push_back({itemOf(entry.name, folder, entry.status), path});
      }
    }
    for (const std::string& inner : folders) listInner(inner, depth + 1);
  }

  static std::optional<Reason> reasonAgainst(const FolderEntry& entry) {
    if (isPlaceholder(entry.name)) return Reason::placeholder;
    if (entry.name.starts_with('.')) return Reason::hidden;
    if (entry.status.type == Type::link) return Reason::link;
    if (entry.status.type == Type::other) return Reason::special;
    return std::nullopt;
  }

  void listInner(const std::string& folder, int depth) {
    if (depth > SourceFolder::maxDepth) return leaveOut(folder, Reason::tooDeep);
    std::vector<FolderEntry> entries;
    try {
      entries = entries_(folder);
    } catch (const FileError&) {
      return leaveOut(folder, Reason::unreadableFolder);
    }
    listFolder(folder, entries, depth);
  }

  const Entries& entries_;
  Listing listing_;
};

std::filesystem::path fullPath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(path, error);
  auto full = std::filesystem::weakly_canonical(absolute, error);
  if (error) full = absolute.lexically_normal();
  return full.has_filename() ? full : full.parent_path();
}

}  // namespace

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
  const std::filesystem::path base{path};
  for (const FolderEntry& entry : entries) {
    if (!isMediaFolderName(entry.name)) continue;
    std::error_code error;
    if (std::filesystem::is_directory(base / entry.name, error)) return base / entry.name;
  }
  const bool holdsCameraFolders =
      std::any_of(entries.begin(), entries.end(), [](const FolderEntry& entry) {
        return entry.status.type == Type::folder && isCameraFolderName(entry.name);
      });
  const std::string name = fullPath(path).filename().string();
  if (holdsCameraFolders || isMediaFolderName(name) || isCameraFolderName(name)) return path;
  return std::nullopt;
}

SourceFolder::Listing SourceFolder::list(const std::string& folder) {
  return list([&](const std::string& inner) {
    return inner.empty() ? folderEntries(folder, true) : folderEntries(folder + "/" + inner, false);
  });
}

SourceFolder::Listing SourceFolder::list(
    const std::function<std::vector<FolderEntry>(const std::string& folder)>& entries) {
  return Lister{entries}.list();
}

std::string SourceFolder::phoneKey(const std::string& folder) {
  constexpr std::size_t digits = 16;
  return "folder-" + sha256Hex(fullPath(folder).string()).substr(0, digits);
}

}  // namespace tavrix
