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
  MediaAsset lead;         ///< of its bundle

  std::string basePath() const { return dirPath + outputName; }
  bool isLead() const { return asset.id() == lead.id(); }
};

bool isInVideoBundle(const AssetBundle& bundle) {
  return bundle.original().kind() == MediaKind::video;
}

/// The folders of one group, each with a "/" at its end, or empty.
struct Directories {
  std::string photos;
  std::string videos;

  const std::string& of(const MediaAsset& asset, bool isLivePhoto, bool inVideoBundle) const {
    return goesIntoVideo(asset, isLivePhoto, inVideoBundle) ? videos : photos;
  }
};

Directories directories(const std::string& folderName, bool groupIsMixed,
                        const TransferOptions& options) {
  std::string folder;
  if (!options.flatLayout) folder = replacingInvalidUtf8(folderName) + "/";
  const bool isSeparated =
      options.separatePhotoVideo && (groupIsMixed || !options.flattenSingleKind);
  return isSeparated ? Directories{folder + "Photo/", folder + "Video/"}
                     : Directories{folder, folder};
}

std::string outputName(const MediaAsset& asset, const TransferOptions& options) {
  std::string name = replacingInvalidUtf8(asset.name());
  if (asset.kind() == MediaKind::photo && options.photoFormat == PhotoOutputFormat::jpeg) {
    name = withExtension(name, "jpg");
  } else if (asset.kind() == MediaKind::video && options.videoFormat == VideoOutputFormat::h264) {
    name = withExtension(name, "mp4");
  }
  // Such a name would be treated as a temporary file, which a later run may replace.
  if (lowerExtension(name) == "part") name += "_";
  return fittingName(options.fileNamePrefix.value_or("") + name);
}

std::vector<PendingFile> pendingFiles(const AssetBundle& bundle, const Directories& places,
                                      const TransferOptions& options) {
  std::vector<PendingFile> files;
  for (const MediaAsset& asset : bundle.assets()) {
    files.push_back({asset, places.of(asset, bundle.isLivePhoto(), isInVideoBundle(bundle)),
                     outputName(asset, options), leadOf(bundle)});
  }
  return files;
}

/// Returns true if the path may be assigned to the file.
using IsFree = std::function<bool(const std::string& path, const PendingFile& file)>;

/// Returns the paths of one bundle's files under one number, assigned to the lead first. If two
/// files would get the same path, only the later one takes a higher number. Returns an empty vector
/// if a path is not free.
std::vector<std::string> numberedPaths(const std::vector<PendingFile>& files, std::uint64_t number,
                                       const IsFree& isFree) {
  std::vector<std::string> paths(files.size());
  PathRegister own;
  const auto give = [&](std::size_t i) {
    std::string path = numberedPath(files[i].basePath(), number);
    if (!isFree(path, files[i])) return false;
    for (std::uint64_t next = number + 1; own.contains(path) || !isFree(path, files[i]); ++next) {
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
    // Names are assigned across all files before any file is left out; only then is the destination
    // consulted.
    if (consultsDestination()) {
      siftAll(groups, result);
    } else {
      result.files = std::move(files_);
    }
    return result;
  }

 private:
  bool consultsDestination() const {
    return options_.container == TransferOptions::Container::folder && !destination_.isEmpty();
  }

  Directories directoriesOf(const NamedGroup& named) const {
    const bool matters = options_.separatePhotoVideo && options_.flattenSingleKind;
    return directories(named.folderName, matters && isMixed(*named.group), options_);
  }

  void nameAll(const std::vector<NamedGroup>& groups) {
    std::size_t count = 0;
    for (const NamedGroup& named : groups) {
      for (const AssetBundle& bundle : named.group->bundles) count += bundle.assets().size();
    }
    files_.reserve(count);
    given_.reserve(count);
    for (const NamedGroup& named : groups) {
      const Directories places = directoriesOf(named);
      for (const AssetBundle& bundle : named.group->bundles) name(bundle, places);
    }
  }

  void name(const AssetBundle& bundle, const Directories& places) {
    const std::size_t first = files_.size();
    const bool inVideoBundle = isInVideoBundle(bundle);
    for (const MediaAsset& asset : bundle.assets()) {
      std::string path =
          places.of(asset, bundle.isLivePhoto(), inVideoBundle) + outputName(asset, options_);
      files_.push_back(
          {asset, std::move(path), conversion(asset, options_), bundle.isPicture(asset), bundle});
    }
    for (std::size_t i = first; i < files_.size(); ++i) {
      if (given_.add(files_[i].relativePath)) continue;
      // Rare: a path of the bundle is already assigned, to another bundle or within this one.
      for (std::size_t back = first; back < i; ++back) given_.remove(files_[back].relativePath);
      return nameWithNumbers(bundle, places, std::span{files_}.subspan(first));
    }
  }

  void nameWithNumbers(const AssetBundle& bundle, const Directories& places,
                       std::span<PlannedFile> files) {
    const IsFree isFree = [this](const std::string& path, const PendingFile&) {
      return !given_.contains(path);
    };
    std::vector<std::string> paths = freePaths(pendingFiles(bundle, places, options_), 1, isFree);
    for (std::size_t i = 0; i < files.size(); ++i) {
      given_.add(paths[i]);
      files[i].relativePath = std::move(paths[i]);
    }
  }

  void siftAll(const std::vector<NamedGroup>& groups, TransferPlan& result) {
    std::size_t next = 0;
    for (const NamedGroup& named : groups) {
      const Directories places = directoriesOf(named);
      for (const AssetBundle& bundle : named.group->bundles) {
        const auto files = std::span{files_}.subspan(next, bundle.assets().size());
        if (!skipRecorded(files, result) && !skipElsewhere(named, bundle, files, result)) {
          sift(bundle, places, files, result);
        }
        next += files.size();
      }
    }
    result.files.shrink_to_fit();
  }

  /// The common case, which costs half of sift(): every file of a bundle is where it was recorded.
  /// Returns false, and changes nothing, if that is not so.
  bool skipRecorded(std::span<PlannedFile> files, TransferPlan& result) const {
    const auto isRecorded = [&](const PlannedFile& file) {
      return !isConverted(file.conversion) &&
             destination_.isOnlyRecord(file.relativePath, file.wanted());
    };
    if (!options_.onlyNew || !std::all_of(files.begin(), files.end(), isRecorded)) return false;
    for (PlannedFile& file : files) skip(file, std::move(file.relativePath), result);
    return true;
  }

  /// Returns false, and changes nothing, unless all files of the bundle are in one of the other
  /// folders of its group.
  bool skipElsewhere(const NamedGroup& named, const AssetBundle& bundle,
                     std::span<PlannedFile> files, TransferPlan& result) const {
    if (!options_.onlyNew) return false;
    for (const std::string& folder : named.alsoIn) {
      const Directories places = directoriesOf({folder, named.group});
      std::vector<const std::string*> paths;
      for (const PlannedFile& file : files) {
        const std::string& place =
            places.of(file.asset, bundle.isLivePhoto(), isInVideoBundle(bundle));
        paths.push_back(
            destination_.landedPath(file.wanted(), place + outputName(file.asset, options_)));
        if (paths.back() == nullptr) break;
      }
      if (paths.back() == nullptr) continue;
      for (std::size_t i = 0; i < files.size(); ++i) skipCompared(files[i], *paths[i], result);
      return true;
    }
    return false;
  }

  static void skip(PlannedFile& file, std::string path, TransferPlan& result) {
    result.knownPaths.push_back(std::move(path));
    result.skippedKnown.push_back(std::move(file.asset));
  }

  /// As skip(), and notes it if the file at the path has another size.
  void skipCompared(PlannedFile& file, std::string path, TransferPlan& result) const {
    auto difference = destination_.difference(path, file.wanted());
    if (difference) result.differing.push_back(*std::move(difference));
    skip(file, std::move(path), result);
  }

  /// Moves one bundle's files to the plan or to the files that are already there.
  void sift(const AssetBundle& bundle, const Directories& places, std::span<PlannedFile> files,
            TransferPlan& result) {
    const bool conflicts = std::any_of(files.begin(), files.end(), [&](const PlannedFile& file) {
      return destination_.holdsAnother(file.relativePath, file.wanted());
    });
    if (conflicts) avoidOthers(pendingFiles(bundle, places, options_), files);
    for (PlannedFile& file : files) {
      const std::string& place =
          places.of(file.asset, bundle.isLivePhoto(), isInVideoBundle(bundle));
      const std::string base = place + outputName(file.asset, options_);
      const std::string* const own = destination_.landedPath(file.wanted(), base);
      if (const std::string* const kept = keptPath(file, base);
          options_.onlyNew && kept != nullptr) {
        skipCompared(file, *kept, result);
        continue;
      }
      if (options_.onlyNew &&
          (own != nullptr || isAlreadyThere(file.wanted(), file.relativePath, destination_))) {
        skipCompared(file, own != nullptr ? *own : std::move(file.relativePath), result);
        continue;
      }
      if (options_.onlyNew) {
        auto emptied = destination_.emptied(file.wanted(), base);
        if (emptied) result.differing.push_back(*std::move(emptied));
      }
      if (own != nullptr) file.relativePath = *own;
      result.files.push_back(std::move(file));
    }
  }

  /// Returns the path of the file's original if an earlier run kept it because it cannot be
  /// converted; nullptr if there is none, or if its converted form is there.
  const std::string* keptPath(const PlannedFile& file, const std::string& base) const {
    if (!isConverted(file.conversion)) return nullptr;
    const WantedFile original{file.asset, leadOf(file.bundle)};
    if (isAlreadyThere(original, file.relativePath, destination_)) return nullptr;
    return destination_.keptPath(original, withExtensionOf(base, file.asset.name()),
                                 textOf(file.conversion));
  }

  /// Gives new paths to a bundle that would take a path of another asset.
  void avoidOthers(const std::vector<PendingFile>& pending, std::span<PlannedFile> files) {
    for (const PlannedFile& file : files) given_.remove(file.relativePath);
    const IsFree isFree = [this](const std::string& path, const PendingFile& file) {
      const WantedFile wanted{file.asset, file.lead, conversion(file.asset, options_)};
      return destination_.holds(path, wanted) ||
             (!given_.contains(path) && !destination_.isOnDisk(path));
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
      (goesIntoVideo(asset, bundle.isLivePhoto(), isInVideoBundle(bundle)) ? hasVideo : hasPhoto) =
          true;
    }
    if (hasPhoto && hasVideo) return true;
  }
  return false;
}

std::string relativePath(const MediaAsset& asset, const FilePlacement& placement,
                         const TransferOptions& options) {
  const Directories places = directories(placement.folderName, placement.groupIsMixed, options);
  return places.of(asset, placement.isLivePhoto, placement.inVideoBundle) +
         outputName(asset, options);
}

PlannedConversion conversion(const MediaAsset& asset, const TransferOptions& options) {
  if (asset.kind() == MediaKind::photo && options.photoFormat == PhotoOutputFormat::jpeg &&
      !isJpegName(asset.name())) {
    return planned_conversion::Jpeg{options.jpegQuality};
  }
  if (asset.kind() == MediaKind::video && options.videoFormat == VideoOutputFormat::h264) {
    return planned_conversion::H264{};
  }
  return planned_conversion::None{};
}

bool isAlreadyThere(const WantedFile& file, const std::string& plannedPath,
                    const DestinationView& destination) {
  if (destination.isOnDisk(plannedPath)) {
    return !destination.holdsAnother(plannedPath, file);
  }
  return destination.landedPath(file, plannedPath) != nullptr;
}

std::vector<AssetBundle> newBundles(const MediaGroup& group, const std::string& folderName,
                                    const TransferOptions& options,
                                    const DestinationView& destination) {
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
