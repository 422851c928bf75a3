#include "transfer/TransferPlanner.h"

#include <algorithm>
#include <functional>
#include <span>

#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "transfer/FileNames.h"
#include "transfer/PathRegister.h"

namespace tavrix::TransferPlanner {
namespace {

/// A file whose path is not final yet.
struct PendingFile {
  MediaAsset asset;
  std::string dirPath;     ///< with a "/" at its end, or empty
  std::string outputName;  ///< with prefix and final extension
  PlannedConversion conversion;
  bool isPicture;
  AssetBundle bundle;
  MediaAsset lead;  ///< the original of its bundle

  std::string basePath() const { return dirPath + outputName; }
  bool isLead() const { return asset.id() == lead.id(); }
};

bool isInVideoBundle(const AssetBundle& bundle) { return bundle.original().kind() == MediaKind::video; }

std::string directory(const MediaAsset& asset, const FilePlacement& placement, const TransferOptions& options) {
  std::string result;
  if (!options.flatLayout) result = replacingInvalidUtf8(placement.folderName) + "/";
  const bool isSeparated = options.separatePhotoVideo && (placement.groupIsMixed || !options.flattenSingleKind);
  if (!isSeparated) return result;
  return result +
         (goesIntoVideo(asset, placement.isLivePhoto, placement.inVideoBundle) ? "Video/" : "Photo/");
}

bool isJpeg(std::string_view name) {
  const std::string extension = lowerExtension(name);
  return extension == "jpg" || extension == "jpeg";
}

std::string outputName(const MediaAsset& asset, const TransferOptions& options) {
  std::string name = options.fileNamePrefix.value_or("") + replacingInvalidUtf8(asset.name());
  if (asset.kind() == MediaKind::photo && options.photoFormat == PhotoOutputFormat::jpeg) {
    name = withExtension(name, "jpg");
  } else if (asset.kind() == MediaKind::video && options.videoFormat == VideoOutputFormat::h264) {
    name = withExtension(name, "mp4");
  }
  return fittingName(std::move(name));
}

std::vector<PendingFile> pendingFiles(const AssetBundle& bundle, FilePlacement placement,
                                      const TransferOptions& options) {
  placement.isLivePhoto = bundle.isLivePhoto();
  placement.inVideoBundle = isInVideoBundle(bundle);
  std::vector<PendingFile> files;
  files.reserve(bundle.assets().size());
  for (const MediaAsset& asset : bundle.assets()) {
    files.push_back({asset, directory(asset, placement, options), outputName(asset, options),
                     conversion(asset, options), bundle.isPicture(asset), bundle, bundle.original()});
  }
  return files;
}

/// Whether a path may be given to an asset.
using IsFree = std::function<bool(const std::string& path, const MediaAsset& asset)>;

/// Paths of one bundle's files under one number, the lead's first; of two files with one path the later
/// alone counts on. Nothing when a path is not free.
std::vector<std::string> numberedPaths(const std::vector<PendingFile>& files, std::uint64_t number,
                                       const IsFree& isFree) {
  std::vector<std::string> paths(files.size());
  PathRegister own;
  const auto give = [&](std::size_t i) {
    std::string path = numberedPath(files[i].basePath(), number);
    if (!isFree(path, files[i].asset)) return false;
    for (std::uint64_t next = number + 1; own.contains(path) || !isFree(path, files[i].asset); ++next) {
      path = numberedPath(files[i].basePath(), next);
    }
    own.add(path);
    paths[i] = std::move(path);
    return true;
  };
  for (const bool leads : {true, false}) {
    for (std::size_t i = 0; i < files.size(); ++i) {
      if (files[i].isLead() == leads && !give(i)) return {};
    }
  }
  return paths;
}

std::vector<std::string> freePaths(const std::vector<PendingFile>& files, std::uint64_t firstNumber,
                                   const IsFree& isFree) {
  for (std::uint64_t number = firstNumber;; ++number) {
    std::vector<std::string> paths = numberedPaths(files, number, isFree);
    if (!paths.empty()) return paths;
  }
}

/// Gives every file of the chosen groups a path of its own.
class Layout {
 public:
  Layout(const TransferOptions& options, const DestinationView& destination)
      : options_(options), destination_(destination) {}

  TransferPlan plan(const std::vector<NamedGroup>& groups) {
    nameAll(groups);
    TransferPlan result;
    result.onlyNew = options_.onlyNew;
    std::size_t next = 0;
    std::vector<PlannedFile> files = std::move(files_);
    // Names stand over all files before any is left out; only then does the destination have its say.
    if (!consultsDestination()) {
      result.files = std::move(files);
      return result;
    }
    for (const NamedGroup& named : groups) {
      const FilePlacement placement = placementOf(named);
      for (const AssetBundle& bundle : named.group.bundles) {
        sift(bundle, placement, std::span{files}.subspan(next, bundle.assets().size()), result);
        next += bundle.assets().size();
      }
    }
    result.files.shrink_to_fit();
    return result;
  }

 private:
  bool consultsDestination() const {
    return options_.container == TransferOptions::Container::folder && !destination_.isEmpty();
  }

  FilePlacement placementOf(const NamedGroup& named) const {
    const bool matters = options_.separatePhotoVideo && options_.flattenSingleKind;
    return {named.folderName, matters && isMixed(named.group), false, false};
  }

  void nameAll(const std::vector<NamedGroup>& groups) {
    std::size_t count = 0;
    for (const NamedGroup& named : groups) {
      for (const AssetBundle& bundle : named.group.bundles) count += bundle.assets().size();
    }
    files_.reserve(count);
    given_.reserve(count);
    const IsFree isFree = [this](const std::string& path, const MediaAsset&) { return !given_.contains(path); };
    for (const NamedGroup& named : groups) {
      const FilePlacement placement = placementOf(named);
      for (const AssetBundle& bundle : named.group.bundles) {
        std::vector<PendingFile> pending = pendingFiles(bundle, placement, options_);
        std::vector<std::string> paths = freePaths(pending, 1, isFree);
        for (std::size_t i = 0; i < pending.size(); ++i) add(std::move(pending[i]), std::move(paths[i]));
      }
    }
  }

  void add(PendingFile&& file, std::string&& path) {
    given_.add(path);
    files_.push_back({std::move(file.asset), std::move(path), file.conversion, file.isPicture,
                      std::move(file.bundle)});
  }

  /// Moves one bundle's files to the plan or to what is already there.
  void sift(const AssetBundle& bundle, FilePlacement placement, std::span<PlannedFile> files,
            TransferPlan& result) {
    placement.isLivePhoto = bundle.isLivePhoto();
    placement.inVideoBundle = isInVideoBundle(bundle);
    const bool conflicts = std::any_of(files.begin(), files.end(), [&](const PlannedFile& file) {
      return destination_.holdsAnother(file.relativePath, file.asset);
    });
    if (conflicts) avoidOthers(pendingFiles(bundle, placement, options_), files);
    for (PlannedFile& file : files) {
      const KnownAssets::Record* const own = ownRecord(file.asset, placement);
      if (options_.onlyNew && (own != nullptr || isAlreadyThere(file.asset, file.relativePath, destination_))) {
        result.skippedKnown.push_back(std::move(file.asset));
        continue;
      }
      if (own != nullptr) file.relativePath = own->path;
      result.files.push_back(std::move(file));
    }
  }

  /// The record of a file that lies under its own path or a numbered form of it.
  const KnownAssets::Record* ownRecord(const MediaAsset& asset, const FilePlacement& placement) const {
    const auto* const record = destination_.knownAssets().record(asset);
    const bool counts = record != nullptr && isOnDisk(*record, destination_.filesOnDisk()) &&
                        isNumberedForm(record->path, relativePath(asset, placement, options_));
    return counts ? record : nullptr;
  }

  /// Gives a bundle, one of whose paths belongs to another asset, paths that do not.
  void avoidOthers(const std::vector<PendingFile>& pending, std::span<PlannedFile> files) {
    for (const PlannedFile& file : files) given_.remove(file.relativePath);
    const IsFree isFree = [this](const std::string& path, const MediaAsset& asset) {
      return destination_.holds(path, asset) || (!given_.contains(path) && !destination_.isOnDisk(path));
    };
    std::vector<std::string> paths = freePaths(pending, 2, isFree);
    for (std::size_t i = 0; i < files.size(); ++i) {
      given_.add(files[i].relativePath);
      given_.add(paths[i]);
      files[i].relativePath = std::move(paths[i]);
    }
  }

  const TransferOptions& options_;
  const DestinationView& destination_;
  PathRegister given_;
  std::vector<PlannedFile> files_;
};

}  // namespace

bool goesIntoVideo(const MediaAsset& asset, bool isLivePhoto, bool inVideoBundle) {
  if (asset.kind() == MediaKind::video) return !(isLivePhoto && !asset.isEditedVariant());
  return asset.kind() != MediaKind::photo && inVideoBundle;
}

bool isMixed(const MediaGroup& group) {
  bool hasPhoto = false;
  bool hasVideo = false;
  for (const AssetBundle& bundle : group.bundles) {
    for (const MediaAsset& asset : bundle.assets()) {
      (goesIntoVideo(asset, bundle.isLivePhoto(), isInVideoBundle(bundle)) ? hasVideo : hasPhoto) = true;
    }
    if (hasPhoto && hasVideo) return true;
  }
  return false;
}

std::string relativePath(const MediaAsset& asset, const FilePlacement& placement, const TransferOptions& options) {
  return directory(asset, placement, options) + outputName(asset, options);
}

PlannedConversion conversion(const MediaAsset& asset, const TransferOptions& options) {
  if (asset.kind() == MediaKind::photo && options.photoFormat == PhotoOutputFormat::jpeg &&
      !isJpeg(asset.name())) {
    return planned_conversion::Jpeg{options.jpegQuality};
  }
  if (asset.kind() == MediaKind::video && options.videoFormat == VideoOutputFormat::h264) {
    return planned_conversion::H264{};
  }
  return planned_conversion::None{};
}

bool isAlreadyThere(const MediaAsset& asset, const std::string& plannedPath, const DestinationView& destination) {
  if (destination.isOnDisk(plannedPath)) return !destination.holdsAnother(plannedPath, asset);
  const auto* const record = destination.knownAssets().record(asset);
  return record != nullptr && isOnDisk(*record, destination.filesOnDisk()) &&
         isNumberedForm(record->path, plannedPath);
}

std::vector<AssetBundle> newBundles(const MediaGroup& group, const std::string& folderName,
                                    const TransferOptions& options, const DestinationView& destination) {
  const TransferPlan planned = plan({{folderName, group}}, options, destination);
  absl::flat_hash_set<std::string_view> ids;
  for (const PlannedFile& file : planned.files) ids.insert(file.bundleID());
  std::vector<AssetBundle> result;
  std::copy_if(group.bundles.begin(), group.bundles.end(), std::back_inserter(result),
               [&](const AssetBundle& bundle) { return ids.contains(bundle.id()); });
  return result;
}

TransferPlan plan(const std::vector<NamedGroup>& groups, const TransferOptions& options,
                  const DestinationView& destination) {
  return Layout{options, destination}.plan(groups);
}

}  // namespace tavrix::TransferPlanner
