#include "media/ResourceBundles.h"

#include <algorithm>
#include <array>

namespace tavrix {
namespace {

using Role = ResourceDescription::Role;

constexpr std::array<std::string_view, 8> roleTexts{
    "photo",       "alternatePhoto", "editedPhoto",       "video",
    "editedVideo", "pairedVideo",    "editedPairedVideo", "adjustmentData"};

// Cannot begin the id of a file on a phone: that begins with the folder or the name, and neither
// contains a colon.
constexpr std::string_view idPrefix = "library:";

const ResourceDescription* withRole(const AssetDescription& description, Role role) {
  const auto found =
      std::find_if(description.resources.begin(), description.resources.end(),
                   [&](const ResourceDescription& resource) { return resource.role == role; });
  return found == description.resources.end() ? nullptr : &*found;
}

/// Returns the number of files with the role of the file at `index`, up to and including that file.
int numberInRole(const std::vector<ResourceDescription>& resources, std::size_t index) {
  const auto end = resources.begin() + static_cast<std::ptrdiff_t>(index);
  return 1 + static_cast<int>(
                 std::count_if(resources.begin(), end, [&](const ResourceDescription& resource) {
                   return resource.role == resources[index].role;
                 }));
}

MediaAsset assetOf(const AssetDescription& description, std::size_t index) {
  const ResourceDescription& resource = description.resources[index];
  return MediaAsset{ResourceBundles::assetID(description.localIdentifier, resource.role,
                                             numberInRole(description.resources, index)),
                    resource.filename,
                    std::nullopt,
                    ResourceBundles::kind(resource.role),
                    resource.sizeBytes.value_or(0),
                    description.captureDate,
                    description.location,
                    !resource.isLocallyAvailable.value_or(true),
                    description.cloudIdentifier,
                    std::nullopt};
}

std::size_t originalIndex(const AssetDescription& description) {
  const ResourceDescription* original = withRole(description, Role::photo);
  if (original == nullptr) original = withRole(description, Role::video);
  return original == nullptr ? 0
                             : static_cast<std::size_t>(original - description.resources.data());
}

}  // namespace

std::string_view textOf(Role role) { return roleTexts.at(static_cast<std::size_t>(role)); }

MediaKind ResourceBundles::kind(Role role) {
  switch (role) {
    case Role::photo:
    case Role::alternatePhoto:
    case Role::editedPhoto:
      return MediaKind::photo;
    case Role::video:
    case Role::editedVideo:
    case Role::pairedVideo:
    case Role::editedPairedVideo:
      return MediaKind::video;
    case Role::adjustmentData:
      return MediaKind::sidecar;
  }
  return MediaKind::other;
}

std::string ResourceBundles::assetID(std::string_view localIdentifier, Role role, int number) {
  std::string id{idPrefix};
  id.append(localIdentifier).append("#").append(textOf(role));
  if (number > 1) id.append(".").append(std::to_string(number));
  return id;
}

std::optional<std::pair<std::string, Role>> ResourceBundles::split(std::string_view assetID) {
  if (!assetID.starts_with(idPrefix)) return std::nullopt;
  const auto hash = assetID.rfind('#');
  if (hash == std::string_view::npos || hash < idPrefix.size()) return std::nullopt;
  std::string_view role = assetID.substr(hash + 1);
  if (const auto dot = role.find('.'); dot != std::string_view::npos) {
    const std::string_view number = role.substr(dot + 1);
    if (number.empty() || number == "1" || number.front() == '0' || !parseDigits(number))
      return std::nullopt;
    role = role.substr(0, dot);
  }
  const auto found = std::find(roleTexts.begin(), roleTexts.end(), role);
  if (found == roleTexts.end()) return std::nullopt;
  return std::pair{std::string{assetID.substr(idPrefix.size(), hash - idPrefix.size())},
                   static_cast<Role>(found - roleTexts.begin())};
}

bool ResourceBundles::isEditedResource(std::string_view assetID) {
  const auto parts = split(assetID);
  return parts && (parts->second == Role::editedPhoto || parts->second == Role::editedVideo ||
                   parts->second == Role::editedPairedVideo);
}

std::optional<AssetBundle> ResourceBundles::bundle(const AssetDescription& description) {
  if (description.resources.empty()) return std::nullopt;
  std::vector<MediaAsset> assets;
  for (std::size_t i = 0; i < description.resources.size(); ++i)
    assets.push_back(assetOf(description, i));
  MediaAsset original = assets[originalIndex(description)];
  return AssetBundle{std::string{idPrefix} + description.localIdentifier, std::move(assets),
                     std::move(original)};
}

std::vector<AssetBundle> ResourceBundles::bundles(
    const std::vector<AssetDescription>& descriptions) {
  std::vector<AssetBundle> result;
  for (const AssetDescription& description : descriptions) {
    if (auto made = bundle(description)) result.push_back(std::move(*made));
  }
  return result;
}

}  // namespace tavrix
