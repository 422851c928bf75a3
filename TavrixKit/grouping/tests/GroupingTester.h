#pragma once

#include <string>
#include <vector>

#include "grouping/GroupingEngine.h"
#include "media/BundleBuilder.h"

namespace tavrix {

inline constexpr double kmOfDegree = 3.141592653589793 * earthDiameterKm / 360;

/// Returns a point `km` kilometres north of Rome.
inline GeoPoint north(double km) { return {41.9 + km / kmOfDegree, 12.5}; }

/// Returns a still that is a shot of its own. An empty `time` means no date.
inline MediaAsset still(const std::string& id, const std::string& time,
                        std::optional<GeoPoint> place = {}) {
  return MediaAsset{id,    id + ".jpg", std::nullopt, MediaKind::photo, 100, parseIso8601(time),
                    place, false,       std::nullopt, std::nullopt};
}

inline GroupingEngine::Result grouped(const std::vector<MediaAsset>& assets, GroupingMode mode,
                                      const GroupingSettings& settings = {}) {
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(assets);
  request.mode = mode;
  request.settings = settings;
  request.wantsReasons = true;
  return GroupingEngine::group(request);
}

/// Returns "group: shot shot; group: shot" in the order of the groups.
inline std::string shape(const std::vector<MediaGroup>& groups) {
  std::string text;
  for (const MediaGroup& group : groups) {
    if (!text.empty()) text += "; ";
    text += group.id + ":";
    for (const AssetBundle& bundle : group.bundles) {
      text += " " + std::string{bundle.original().id()};
    }
  }
  return text;
}
inline std::string shape(const GroupingEngine::Result& result) { return shape(result.groups); }

}  // namespace tavrix
