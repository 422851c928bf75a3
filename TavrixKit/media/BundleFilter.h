#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "foundation/TimeZone.h"
#include "media/AssetBundle.h"
#include "media/PlaceFilter.h"

namespace tavrix {

/// The person's choice of what to transfer. The filter works on shots: a sidecar never survives its
/// still, and a Live Photo has its own switch.
struct BundleFilter {
  enum class EditedPolicy { both, editedOnly, originalsOnly };

  bool includePhotos = true;   ///< stills that are not part of a Live Photo
  bool includeLive = true;     ///< Live Photos, still and motion part
  bool liveOnlyPhoto = false;  ///< of a Live Photo the still alone
  bool includeVideos = true;   ///< videos that are not part of a Live Photo
  bool includeAAE = true;      ///< sidecars
  EditedPolicy editedPolicy = EditedPolicy::both;
  bool skipOptimized = false;     ///< drop every shot whose original is an optimized copy
  std::optional<CivilDate> from;  ///< first day of the period, inclusive
  std::optional<CivilDate> to;    ///< last day of the period, inclusive
  std::optional<PlaceFilter> places;

  /// What the tests need besides the choice: the zone in which days are cut, and place names when
  /// there are any.
  struct Context {
    TimeZone timeZone = TimeZone::utc();
    const PlaceLookup* placeLookup = nullptr;
  };

  /// Whether any file of the bundle survives.
  bool keeps(const AssetBundle& bundle, const Context& context) const;
  /// The surviving files in the bundle's order; empty when the bundle is gone.
  std::vector<MediaAsset> keptAssets(const AssetBundle& bundle, const Context& context) const;
  /// The place test alone. Without a lookup every located shot counts as not yet named.
  bool keepsPlace(const AssetBundle& bundle, const PlaceLookup* lookup) const;

  friend bool operator==(const BundleFilter&, const BundleFilter&) = default;
};

/// "both", "editedOnly", "originalsOnly".
std::string_view textOf(BundleFilter::EditedPolicy policy);

/// The bundles that pass, in their order; one kept in part is rebuilt under its id.
std::vector<AssetBundle> filtered(const std::vector<AssetBundle>& bundles,
                                  const BundleFilter& filter, const BundleFilter::Context& context);

/// Recognising reduced copies is the producer's part; here they are counted.
namespace OptimizedCopy {

/// The shots whose original is an optimized copy, among those that pass all else that the filter
/// asks: the same number whether they are skipped or not.
std::size_t count(const std::vector<AssetBundle>& bundles, const BundleFilter& filter,
                  const BundleFilter::Context& context);

}  // namespace OptimizedCopy

}  // namespace tavrix
