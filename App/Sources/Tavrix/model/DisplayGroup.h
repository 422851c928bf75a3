#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Shared.h"
#include "grouping/GroupFaces.h"
#include "grouping/MediaGroup.h"

namespace tavrix {

/// A folder as displayed, with the effect of transferring it. Its check mark is apart from it, in
/// AppState::checks.
struct DisplayGroup {
  std::string id;
  std::string stableKey;  ///< the key under which its check mark is stored
  std::uint32_t key = 0;  ///< the number of `stableKey`, see FolderKeys
  std::string folderName;
  /// The name by the settings, if the group continues a folder that has another name.
  std::optional<std::string> templateName{};
  Shared<MediaGroup> group;
  std::uint64_t knownCount = 0;  ///< files already at the destination
  std::uint64_t newBytes = 0;
  std::uint64_t newCount = 0;
  std::uint64_t optimizedCount = 0;  ///< shots of which the phone has only a reduced copy
  MediaGroup::MediaCounts counts;
  bool hasLivePhoto = false;
  bool isFileDated = false;        ///< of each of its shots only the date of the file is known
  Shared<GroupFaces> faces;        ///< the pictures that stand for it
  std::uint64_t pictureCount = 0;  ///< a Live Photo counts once

  friend bool operator==(const DisplayGroup&, const DisplayGroup&) = default;
};

/// Returns the files of the faces, in their order.
std::vector<MediaAsset> previewAssets(const DisplayGroup& group);

/// Folders in display order. A folder that is unchanged between two lists is the same object in
/// both.
using DisplayGroups = Shared<std::vector<Shared<DisplayGroup>>>;

}  // namespace tavrix
