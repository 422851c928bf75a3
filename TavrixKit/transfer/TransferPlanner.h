#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/Shared.h"
#include "grouping/MediaGroup.h"
#include "transfer/DestinationView.h"
#include "transfer/TransferOptions.h"
#include "transfer/TransferPlan.h"

namespace tavrix::TransferPlanner {

/// A chosen group with its final folder name.
struct NamedGroup {
  std::string folderName;
  Shared<MediaGroup> group;
  /// The name by the settings, if the group continues a folder that has another name.
  std::optional<std::string> templateName{};
  /// Other folders. With `onlyNew`, a shot whose files are all in one of them is already there.
  std::vector<std::string> alsoIn{};
};

/// Plans every file of the groups in display order, bundles and files in their own order. Files
/// never share a path, compared without letter case: if two bundles would, the later one as a whole
/// gets " (2)", " (3)", … before its extensions. `destination` is the present content: with
/// `onlyNew` and loose files, files that are already there are left out, and no file gets a path
/// that is recorded for another asset. A pure function of its arguments.
TransferPlan plan(const std::vector<NamedGroup>& groups, const TransferOptions& options,
                  const DestinationView& destination = {});

/// The properties besides the file itself that determine its path.
struct FilePlacement {
  std::string folderName;
  bool groupIsMixed = false;   ///< the group has files for both subfolders
  bool isLivePhoto = false;    ///< the file's shot is a Live Photo
  bool inVideoBundle = false;  ///< the original of the file's shot is a video
};

/// Returns true if a file belongs in the subfolder "Video": videos, except the motion part of a
/// Live Photo, and files that accompany a video.
bool goesIntoVideo(const MediaAsset& asset, bool isLivePhoto, bool inVideoBundle);
/// Returns true if the group has files for both subfolders.
bool isMixed(const MediaGroup& group);
/// Returns the path of one file before paths are made unique.
std::string relativePath(const MediaAsset& asset, const FilePlacement& placement,
                         const TransferOptions& options);
PlannedConversion conversion(const MediaAsset& asset, const TransferOptions& options);

/// Returns true if a file with this planned path needs no transfer: a file at the path is not
/// recorded for another asset, or the file's own record names a path on disk that is the planned
/// one or a numbered form of it.
bool isAlreadyThere(const WantedFile& file, const std::string& plannedPath,
                    const DestinationView& destination);
/// Returns the bundles of a group, in its order, that have at least one file to transfer.
std::vector<AssetBundle> newBundles(const MediaGroup& group, const std::string& folderName,
                                    const TransferOptions& options,
                                    const DestinationView& destination);

}  // namespace tavrix::TransferPlanner
