#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "media/AssetBundle.h"

namespace tavrix {

/// One file of an entry of a photo library.
struct ResourceDescription {
  /// What the file is to its shot; text forms are the case names.
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
  std::optional<bool> isLocallyAvailable;  ///< false: the bytes are only in the cloud

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

/// Shots from a library that knows which files belong together.
namespace ResourceBundles {

/// One bundle per description that has files, in the same order.
std::vector<AssetBundle> bundles(const std::vector<AssetDescription>& descriptions);
/// Nothing when the description has no files. The original is the `photo`, else the `video`, else
/// the first file; the bundle's id is the local identifier after "library:".
std::optional<AssetBundle> bundle(const AssetDescription& description);

MediaKind kind(ResourceDescription::Role role);

/// The id of one file: "library:<local identifier>#<role>"; of several with one role the later ones
/// add
/// ".2", ".3", …
std::string assetID(std::string_view localIdentifier, ResourceDescription::Role role,
                    int number = 1);
/// The local identifier and the role back; nothing for an id of another form.
std::optional<std::pair<std::string, ResourceDescription::Role>> split(std::string_view assetID);
/// Whether an id is that of an edited photo, video or motion part.
bool isEditedResource(std::string_view assetID);

}  // namespace ResourceBundles

}  // namespace tavrix
