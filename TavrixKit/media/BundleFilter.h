#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "media/AssetBundle.h"
#include "media/PlaceFilter.h"
#include "media/ShotClock.h"

namespace tavrix {

/// The user's choice of what to transfer. The filter works on shots: a sidecar is never kept
/// without its still, and Live Photos have a switch of their own.
struct BundleFilter {
  enum class EditedPolicy { both, editedOnly, originalsOnly };

  bool includePhotos = true;   ///< stills that are not part of a Live Photo
  bool includeLive = true;     ///< Live Photos, still and motion part
  bool liveOnlyPhoto = false;  ///< only the still of a Live Photo
  bool includeVideos = true;   ///< videos that are not part of a Live Photo
  bool includeAAE = true;      ///< sidecars
  EditedPolicy editedPolicy = EditedPolicy::both;
  bool skipOptimized = false;     ///< drop every shot whose original is an optimized copy
  std::optional<CivilDate> from;  ///< first day of the period, inclusive
  std::optional<CivilDate> to;    ///< last day of the period, inclusive
  std::optional<PlaceFilter> places;

  /// Further input of the tests: the clock of the days, and the lookup of place names, if any.
  struct Context {
    ShotClock clock{};
    const PlaceLookup* placeLookup = nullptr;
  };

  /// Returns true if at least one file of the bundle is kept.
  bool keeps(const AssetBundle& bundle, const Context& context) const;
  /// Returns the kept files in the bundle's order; empty if the whole bundle is dropped.
  std::vector<MediaAsset> keptAssets(const AssetBundle& bundle, const Context& context) const;
  /// Applies only the place test. Without a lookup every located shot is treated as not yet named.
  bool keepsPlace(const AssetBundle& bundle, const PlaceLookup* lookup) const;

  friend bool operator==(const BundleFilter&, const BundleFilter&) = default;
};

/// Returns "both", "editedOnly" or "originalsOnly".
std::string_view textOf(BundleFilter::EditedPolicy policy);

/// Returns the bundles that pass, in their order. A bundle that is kept in part is rebuilt under
/// its id.
std::vector<AssetBundle> filtered(const std::vector<AssetBundle>& bundles,
                                  const BundleFilter& filter, const BundleFilter::Context& context);

/// Only counts reduced copies. The producer of the assets recognises them.
namespace OptimizedCopy {

/// Returns the number of shots whose original is an optimized copy, among those that pass the tests
/// of period, place and kind. `skipOptimized` does not change the number.
std::size_t count(const std::vector<AssetBundle>& bundles, const BundleFilter& filter,
                  const BundleFilter::Context& context);

}  // namespace OptimizedCopy

}  // namespace tavrix
