#include "media/BundleFilter.h"

#include <algorithm>
#include <array>

#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

using EditedPolicy = BundleFilter::EditedPolicy;

bool isEditedPicture(const AssetBundle& bundle, const MediaAsset& asset) {
  return asset.isEditedVariant() && bundle.isPicture(asset);
}

bool hasEditedPicture(const AssetBundle& bundle) {
  return bundle.hasEditedVersion() &&
         std::any_of(bundle.assets().begin(), bundle.assets().end(),
                     [&](const MediaAsset& asset) { return isEditedPicture(bundle, asset); });
}

bool passesPeriod(const BundleFilter& filter, const AssetBundle& bundle, const ShotClock& clock) {
  if (!filter.from && !filter.to) return true;
  const auto day = clock.dayOf(bundle);
  return day && !(filter.from && *day < *filter.from) && !(filter.to && *day > *filter.to);
}

bool passesKind(const BundleFilter& filter, const AssetBundle& bundle) {
  if (bundle.isLivePhoto()) return filter.includeLive;
  switch (bundle.primaryPicture().kind()) {
    case MediaKind::photo:
      return filter.includePhotos;
    case MediaKind::video:
      return filter.includeVideos;
    case MediaKind::sidecar:
    case MediaKind::other:
      return true;
  }
  return true;
}

bool passesWholeTests(const BundleFilter& filter, const AssetBundle& bundle,
                      const BundleFilter::Context& context) {
  return passesPeriod(filter, bundle, context.clock) &&
         filter.keepsPlace(bundle, context.placeLookup) && passesKind(filter, bundle);
}

bool keepsAsset(const BundleFilter& filter, const AssetBundle& bundle, const MediaAsset& asset,
                bool isEdited) {
  if (filter.liveOnlyPhoto && bundle.isMotionPart(asset)) return false;
  if (!filter.includeAAE && asset.kind() == MediaKind::sidecar) return false;
  if (!isEdited || filter.editedPolicy == EditedPolicy::both) return true;
  if (filter.editedPolicy == EditedPolicy::originalsOnly) return !isEditedPicture(bundle, asset);
  // If the phone has lost the original, an edited picture or the sidecar is the shot's original.
  if (asset.isEditedVariant() || asset.kind() == MediaKind::sidecar) return true;
  return asset.id() != bundle.original().id() && !bundle.isMotionPart(asset);
}

/// Returns true if all files of a bundle that passes the whole tests are kept, the common case.
bool keepsEverything(const BundleFilter& filter, const AssetBundle& bundle) {
  return !filter.liveOnlyPhoto && filter.includeAAE &&
         (filter.editedPolicy == EditedPolicy::both || !bundle.hasEditedVersion());
}

bool isSkipped(const BundleFilter& filter, const AssetBundle& bundle) {
  return filter.skipOptimized && bundle.original().isOptimized();
}

std::vector<MediaAsset> assetsPassingFileTests(const BundleFilter& filter,
                                               const AssetBundle& bundle) {
  const bool isEdited = hasEditedPicture(bundle);
  std::vector<MediaAsset> kept;
  bool hasPicture = false;
  for (const MediaAsset& asset : bundle.assets()) {
    if (!keepsAsset(filter, bundle, asset, isEdited)) continue;
    hasPicture = hasPicture || bundle.isPicture(asset);
    kept.push_back(asset);
  }
  return hasPicture ? kept : std::vector<MediaAsset>{};
}

}  // namespace

std::string_view textOf(EditedPolicy policy) {
  constexpr std::array<std::string_view, 3> texts{"both", "editedOnly", "originalsOnly"};
  return texts.at(static_cast<std::size_t>(policy));
}

bool BundleFilter::keepsPlace(const AssetBundle& bundle, const PlaceLookup* lookup) const {
  if (!places) return true;
  const auto point = bundle.position();
  if (!point) return places->includeUnplaced;
  const auto names =
      lookup == nullptr ? std::nullopt : lookup->names(lookup->placeKey(*point), places->localeID);
  return names ? places->matches(*names) : places->includeUnresolved;
}

std::vector<MediaAsset> BundleFilter::keptAssets(const AssetBundle& bundle,
                                                 const Context& context) const {
  if (isSkipped(*this, bundle) || !passesWholeTests(*this, bundle, context)) return {};
  return assetsPassingFileTests(*this, bundle);
}

bool BundleFilter::keeps(const AssetBundle& bundle, const Context& context) const {
  return !keptAssets(bundle, context).empty();
}

std::vector<AssetBundle> filtered(const std::vector<AssetBundle>& bundles,
                                  const BundleFilter& filter,
                                  const BundleFilter::Context& context) {
  std::vector<AssetBundle> result;
  result.reserve(bundles.size());
  for (const AssetBundle& bundle : bundles) {
    if (isSkipped(filter, bundle) || !passesWholeTests(filter, bundle, context)) continue;
    if (keepsEverything(filter, bundle) && bundle.pictureCount() > 0) {
      result.push_back(bundle);
      continue;
    }
    std::vector<MediaAsset> kept = assetsPassingFileTests(filter, bundle);
    if (kept.size() == bundle.assets().size()) {
      result.push_back(bundle);
    } else if (auto rebuilt = BundleBuilder::bundle(bundle.id(), std::move(kept))) {
      result.push_back(*std::move(rebuilt));
    }
  }
  return result;
}

std::size_t OptimizedCopy::count(const std::vector<AssetBundle>& bundles,
                                 const BundleFilter& filter, const BundleFilter::Context& context) {
  return static_cast<std::size_t>(
      std::count_if(bundles.begin(), bundles.end(), [&](const AssetBundle& bundle) {
        return bundle.original().isOptimized() && passesWholeTests(filter, bundle, context);
      }));
}

}  // namespace tavrix
