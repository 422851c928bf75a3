#include "runs/Staging.h"

#include <algorithm>
#include <cerrno>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "transfer/FileDigester.h"
#include "transfer/FileNames.h"
#include "transfer/SafeNames.h"
#include "transfer/TransferEngine.h"

namespace tavrix {
namespace {

bool hasBytes(const Folder& destination, const std::string& path, std::uint64_t size,
              const std::string& sha256) {
  const auto status = destination.status(path);
  if (!status || status->type != FileStatus::Type::file || status->size != size) return false;
  const auto digest = FileDigester{{}}.digest(destination, path);
  return digest && digest->sha256 == sha256;
}

/// Checks whether the phone still has the files of a killed run.
class FilesOfPlan {
 public:
  explicit FilesOfPlan(const TransferPlan& plan) {
    for (const PlannedFile& file : plan.files) {
      add(file.asset);
      // A converted file has different bytes, and the destination may have refused a name: then
      // the path identifies the file.
      const std::string folder = parentPath(file.relativePath);
      const std::string& path = file.relativePath;
      const std::string safe = SafeNames::safePath(path);
      if (isConverted(file.conversion)) {
        add(path);
        add((folder.empty() ? "" : folder + "/") + TransferEngine::fallbackName(file));
      } else if (safe != path) {
        paths_.insert(safe);
      }
    }
    for (const MediaAsset& asset : plan.skippedKnown) add(asset);
  }

  bool hold(const std::string& path, std::uint64_t size) const {
    if (paths_.contains(unnumberedName(path)) || paths_.contains(path)) return true;
    const auto found = namesBySize_.find(size);
    if (found == namesBySize_.end()) return false;
    // The name on the phone may have a prefix before it and a number after it.
    const std::string name = unnumberedName(lastPathComponent(path));
    return std::any_of(found->second.begin(), found->second.end(), [&](std::string_view each) {
      return name.ends_with(each) || path.ends_with(each);
    });
  }

 private:
  void add(std::string path) {
    paths_.insert(SafeNames::safePath(path));
    paths_.insert(std::move(path));
  }
  void add(const MediaAsset& asset) { namesBySize_[asset.sizeBytes()].push_back(asset.name()); }

  absl::flat_hash_map<std::uint64_t, std::vector<std::string_view>> namesBySize_;
  StringSet paths_;
};

}  // namespace

std::string Staging::stagedPath(const std::string& path) {
  std::string staged{stagingFolder};
  staged += '/';
  return staged += path;
}

std::string Staging::finalPath(const std::string& staged) {
  return staged.substr(stagingFolder.size() + 1);
}

TransferPlan Staging::staged(const TransferPlan& plan) {
  TransferPlan result = plan;
  for (PlannedFile& file : result.files) file.relativePath = stagedPath(file.relativePath);
  return result;
}

std::string Staging::moveOut(Folder& destination, const std::string& staged,
                             const std::optional<std::string>& sha256) {
  const std::string wanted = finalPath(staged);
  const auto status = destination.status(staged);
  if (!status) throw FileError{FileOperation::rename, destination.path() + "/" + staged, ENOENT};
  destination.makeFolders(parentPath(wanted));
  for (std::uint64_t number = 1;; ++number) {
    const std::string path = numberedPath(wanted, number);
    if (destination.renameWithoutReplacing(staged, path)) return path;
    if (!sha256 || !hasBytes(destination, path, status->size, *sha256)) continue;
    destination.removeFile(staged);
    return path;
  }
}

void Staging::removeQuietly(Folder& destination) {
  try {
    destination.removeAll(std::string{stagingFolder});
  } catch (const FileError&) {
    // They are copies, and the next run removes them.
  }
}

StagingLeftOvers Staging::settleLeftOvers(Folder& destination, const FilesOnDisk& listed,
                                          const TransferPlan& plan) {
  StagingLeftOvers leftOvers;
  if (!destination.status(std::string{stagingFolder})) return leftOvers;
  std::optional<FilesOfPlan> phone;
  for (const auto& [path, onDisk] : listed) {
    if (!isStaged(path)) continue;
    if (!phone) phone.emplace(plan);
    // A partial file or archive cannot be completed.
    if (path.ends_with(".part") || phone->hold(finalPath(std::string{path}), onDisk.size)) {
      ++leftOvers.removed;
    } else {
      leftOvers.rescued.push_back(moveOut(destination, std::string{path}, std::nullopt));
    }
  }
  if (!leftOvers.rescued.empty()) destination.syncVolume();
  removeQuietly(destination);
  std::sort(leftOvers.rescued.begin(), leftOvers.rescued.end());
  return leftOvers;
}

}  // namespace tavrix
