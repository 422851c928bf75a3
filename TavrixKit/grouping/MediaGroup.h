#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "media/AssetBundle.h"

namespace tavrix {

/// One destination folder as computed by grouping. Copying it copies pointers to its shots.
struct MediaGroup {
  /// Files by kind, a Live Photo's motion part among the videos.
  struct MediaCounts {
    std::uint64_t photos = 0;
    std::uint64_t videos = 0;
    std::uint64_t sidecars = 0;
    std::uint64_t others = 0;
    std::uint64_t totalBytes = 0;

    friend bool operator==(const MediaCounts&, const MediaCounts&) = default;
  };

  /// The group's anchor: unique within one result, and the same again when the same data is grouped
  /// again. Manual names and merges refer to it.
  std::string id;
  std::optional<Instant> dateStart;  ///< earliest capture date inside
  std::optional<Instant> dateEnd;    ///< latest capture date inside
  std::optional<GeoPoint> place;     ///< spherical centre of the shots' positions
  /// In capture order; ties and undated shots in catalogue order.
  std::vector<AssetBundle> bundles;
  /// The groups that a merged group was made of; empty for any other.
  std::vector<MediaGroup> children;

  MediaCounts counts() const;

  friend bool operator==(const MediaGroup&, const MediaGroup&) = default;
};

}  // namespace tavrix
