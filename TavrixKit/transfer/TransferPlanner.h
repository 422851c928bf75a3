#pragma once

#include <string>
#include <vector>

#include "grouping/MediaGroup.h"
#include "transfer/DestinationView.h"
#include "transfer/TransferOptions.h"
#include "transfer/TransferPlan.h"

namespace tavrix::TransferPlanner {

/// A chosen group with its final folder name.
struct NamedGroup {
  std::string folderName;
  MediaGroup group;
};

/// Lays out every file of the groups in display order, bundles and files in their own order. Files
/// never share a path, letter case aside: of two bundles that would, the later takes " (2)", "
/// (3)", … before its extensions, as a whole. `destination` tells what is there: with `onlyNew` and
/// loose files, what is already there is left out; and no file is given a path that is recorded for
/// another asset. A pure function of its arguments.
TransferPlan plan(const std::vector<NamedGroup>& groups, const TransferOptions& options,
                  const DestinationView& destination = {});

/// What the place of one file depends on besides the file.
struct FilePlacement {
  std::string folderName;
  bool groupIsMixed = false;   ///< the group holds files for both subfolders
  bool isLivePhoto = false;    ///< the file's shot is a Live Photo
  bool inVideoBundle = false;  ///< the original of the file's shot is a video
};

/// Whether a file belongs in the subfolder "Video": videos, except the motion part of a Live Photo,
/// and what accompanies a video.
bool goesIntoVideo(const MediaAsset& asset, bool isLivePhoto, bool inVideoBundle);
/// Whether a group holds files for both subfolders.
bool isMixed(const MediaGroup& group);
/// The path of one file before paths are made unique.
std::string relativePath(const MediaAsset& asset, const FilePlacement& placement,
                         const TransferOptions& options);
PlannedConversion conversion(const MediaAsset& asset, const TransferOptions& options);

/// Whether a file with this planned path needs no transfer: something lies at the path that is not
/// recorded for another asset, or the file's own record names the path or a numbered form of it,
/// and that is on disk.
bool isAlreadyThere(const WantedFile& file, const std::string& plannedPath,
                    const DestinationView& destination);
/// The bundles of a group, in its order, that have at least one file to transfer.
std::vector<AssetBundle> newBundles(const MediaGroup& group, const std::string& folderName,
                                    const TransferOptions& options,
                                    const DestinationView& destination);

}  // namespace tavrix::TransferPlanner
