#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "media/AssetBundle.h"

namespace tavrix {

/// One file of a photo library entry.
struct ResourceDescription {
  /// The role of the file in its shot. The text forms are the names of the cases.
  enum class Role {
    photo,
    alternatePhoto,  ///< a second still of the shot: the RAW or JPEG twin
    editedPhoto,
    video,
    editedVideo,
    pairedVideo,  ///< a Live Photo's motion part
    editedPairedVideo,
    adjustmentData,  ///< the edit instructions: the ".AAE" sidecar
  };

  Role role = Role::photo;
  std::string filename;
  std::optional<std::string> uti;  ///< uniform type identifier
  std::optional<std::uint64_t> sizeBytes;
  std::optional<bool> isLocallyAvailable;  ///< false if the bytes are only in the cloud

  friend bool operator==(const ResourceDescription&, const ResourceDescription&) = default;
};

/// One entry of a photo library that lists a shot together with its files.
struct AssetDescription {
  std::string localIdentifier;
  std::optional<std::string> cloudIdentifier;
  std::optional<Instant> captureDate;
  std::optional<GeoPoint> location;
  std::vector<ResourceDescription> resources;

  friend bool operator==(const AssetDescription&, const AssetDescription&) = default;
};

std::string_view textOf(ResourceDescription::Role role);

/// Builds shots from a photo library, which knows the files that belong together.
namespace ResourceBundles {

/// Returns one bundle for each description that has files, in the same order.
std::vector<AssetBundle> bundles(const std::vector<AssetDescription>& descriptions);
/// Returns nullopt if the description has no files. The original is the `photo`, otherwise the
/// `video`, otherwise the first file. The bundle's id is "library:" and the local identifier.
std::optional<AssetBundle> bundle(const AssetDescription& description);

MediaKind kind(ResourceDescription::Role role);

/// Returns the id of one file: "library:<local identifier>#<role>". If several files have the same
/// role, ".2", ".3", … is appended for the second, the third, …
std::string assetID(std::string_view localIdentifier, ResourceDescription::Role role,
                    int number = 1);
/// Returns the local identifier and the role of an id, or nullopt if it has another form.
std::optional<std::pair<std::string, ResourceDescription::Role>> split(std::string_view assetID);
/// Returns true if the id is that of an edited photo, video or motion part.
bool isEditedResource(std::string_view assetID);

}  // namespace ResourceBundles

}  // namespace tavrix
