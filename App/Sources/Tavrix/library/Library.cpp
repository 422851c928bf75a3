#include "library/Library.h"

#include <algorithm>
#include <utility>

#include "grouping/GroupMerging.h"
#include "grouping/PlaceClustering.h"
#include "library/PlaceSpelling.h"
#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

std::uint64_t filesIn(const std::vector<AssetBundle>& bundles) {
  std::uint64_t count = 0;
  for (const AssetBundle& bundle : bundles) count += bundle.assets().size();
  return count;
}

Library::LeftOut leftOutOf(const std::vector<AssetBundle>& all,
                           const std::vector<AssetBundle>& kept) {
  Library::LeftOut leftOut;
  for (const AssetBundle& bundle : all) {
    if (bundle.pictureCount() > 0) continue;
    for (const MediaAsset& asset : bundle.assets()) {
      if (asset.kind() == MediaKind::other) {
        leftOut.unknown.emplace_back(asset.name());
      } else {
        ++leftOut.withoutPicture;
      }
    }
  }
  leftOut.bySettings = filesIn(all) - filesIn(kept) - leftOut.total();
  return leftOut;
}

const GroupMerges& mergesOf(const Settings& settings) {
  return ofCurrentMode(settings, &Settings::Gathering::mergesByMode);
}

GroupingEngine::Result groupsOf(const std::vector<AssetBundle>& bundles, const Settings& settings,
                                const std::shared_ptr<const PlaceLookup>& lookup,
                                const PlaceNaming* naming, bool wantsReasons) {
  return GroupingEngine::group({bundles, bundleFilter(settings), groupingMode(settings),
                                groupingSettings(settings, naming), settings.gathering.homeOverride,
                                lookup, wantsReasons, mergesOf(settings)});
}

std::optional<Library::Home> homeOf(const Settings& settings,
                                    const std::vector<HomeCandidate>& candidates,
                                    std::vector<HomePeriod> periods) {
  if (settings.gathering.uiMode != UIGroupingMode::trips) return std::nullopt;
  const int recentSpanDays = groupingSettings(settings).homeWindowDays;
  if (!periods.empty()) {
    const HomePeriod& now = periods.back();
    return Library::Home{.point = now.home.center,
                         .name = std::nullopt,
                         .rivals = now.rivals,
                         .recentSpanDays = recentSpanDays,
                         .periods = std::move(periods)};
  }
  return Library::Home{
      .point = HomeDetection::home(settings.gathering.homeOverride, candidates),
      .isManual = settings.gathering.homeOverride.has_value(),
      .name = settings.gathering.homeOverride ? settings.gathering.homeOverrideName : std::nullopt,
      .rivals = HomeDetection::rivals(candidates, settings.gathering.tripDistanceKm),
      .recentSpanDays = recentSpanDays};
}

/// The number of home candidates, from the best one on, that get names.
constexpr std::size_t namedCandidates = 5;

/// Returns the points that people see: the home, the first candidates, and the stays.
std::vector<GeoPoint> landmarkPoints(const Library& library) {
  std::vector<GeoPoint> points;
  if (library.home->point) points.push_back(*library.home->point);
  const auto& candidates = library.homeCandidates;
  for (std::size_t i = 0; i < std::min(candidates.size(), namedCandidates); ++i) {
    points.push_back(candidates[i].center);
  }
  for (const HomeCandidate& rival : library.home->rivals) points.push_back(rival.center);
  for (const HomePeriod& period : library.home->periods) points.push_back(period.home.center);
  if (!library.reasons) return points;
  if (const auto* const trips = std::get_if<TripReasons>(&*library.reasons)) {
    for (const TripReasons::Stay& stay : trips->stays) points.push_back(stay.center);
  }
  return points;
}

}  // namespace

const MediaGroup* groupOf(const Library& library, std::string_view id) {
  for (const FolderNaming::Row& row : library.rows) {
    if (row.group->id == id) return &*row.group;
    for (const MediaGroup& child : row.group->children) {
      if (child.id == id) return &child;
    }
  }
  return nullptr;
}

NamedGroups rowsOf(const Shared<std::vector<AssetBundle>>& bundles, const Settings& settings,
                   const std::string& systemLocaleID, PlaceNaming* naming) {
  const auto lookup = lookupOf(bundles, settings, systemLocaleID, naming);
  const Settings spelled = withPlacesSpelled(settings, *bundles, lookup.get());
  return nameGroups(GroupMerging::apply(groupsOf(*bundles, spelled, lookup, naming, false).groups,
                                        mergesOf(settings)),
                    settings, systemLocaleID, naming, lookup);
}

Library makeLibrary(const std::vector<MediaAsset>& assets, const Settings& settings,
                    const std::string& systemLocaleID, bool wantsReasons, PlaceNaming* naming) {
  return makeLibrary(BundleBuilder::makeBundles(assets), assets.size(), settings, systemLocaleID,
                     wantsReasons, naming);
}

Library makeLibrary(Shared<std::vector<AssetBundle>> bundles, std::uint64_t fileCount,
                    const Settings& settings, const std::string& systemLocaleID, bool wantsReasons,
                    PlaceNaming* naming) {
  Library library;
  library.fileCount = fileCount;
  library.bundles = std::move(bundles);
  library.clock = groupingSettings(settings, naming).clock();

  const auto lookup = lookupOf(library.bundles, settings, systemLocaleID, naming);
  const Settings spelled = withPlacesSpelled(settings, *library.bundles, lookup.get());
  auto grouped = groupsOf(*library.bundles, spelled, lookup, naming, wantsReasons);
  library.optimizedCount =
      OptimizedCopy::count(*library.bundles, bundleFilter(spelled), {library.clock, lookup.get()});
  library.leftOut = leftOutOf(*library.bundles, grouped.filteredBundles);
  library.filteredBundles = std::move(grouped.filteredBundles);
  library.home = homeOf(settings, grouped.homeCandidates, std::move(grouped.homePeriods));
  library.homeCandidates = std::move(grouped.homeCandidates);
  library.homeIsAmbiguous = grouped.homeIsAmbiguous;
  library.reasons = std::move(grouped.reasons);
  library.suggestions =
      MergeSuggestions::open(std::move(grouped.suggestions), mergesOf(settings),
                             ofCurrentMode(settings, &Settings::Gathering::rejectedSuggestions));
  auto named = nameGroups(GroupMerging::apply(std::move(grouped.groups), mergesOf(settings)),
                          settings, systemLocaleID, naming, lookup);
  library.rows = std::move(named.rows);
  library.places = std::move(named.places);
  if (library.home && naming != nullptr && settings.naming.geocodingEnabled) {
    library.landmarks = naming->name(landmarkPoints(library), settings, {});
  }
  return library;
}

std::vector<LibraryPlace> placesOf(const std::vector<AssetBundle>& bundles, double radiusKm) {
  std::vector<GeoPoint> points;
  std::vector<const AssetBundle*> located;
  for (const AssetBundle& bundle : bundles) {
    const auto position = bundle.position();
    if (!position) continue;
    points.push_back(*position);
    located.push_back(&bundle);
  }
  const auto assignment = PlaceClustering::assign(points, radiusKm);
  std::vector<LibraryPlace> places;
  places.reserve(assignment.centers.size());
  for (const GeoPoint& center : assignment.centers) places.push_back({center, {}});
  for (std::size_t i = 0; i < located.size(); ++i) {
    places[assignment.clusterOfPoint[i]].bundles.push_back(*located[i]);
  }
  return places;
}

void addNames(std::vector<LibraryPlace>& places, const Settings& settings, PlaceNaming& naming) {
  std::vector<GeoPoint> centers;
  centers.reserve(places.size());
  for (const LibraryPlace& place : places) centers.push_back(place.center);
  const auto lookup = naming.name(centers, settings, {});
  for (LibraryPlace& place : places) {
    const std::string key = lookup->placeKey(place.center);
    for (const std::string language : {"en", "ru"}) {
      if (auto names = lookup->names(key, language)) place.names.emplace(language, *names);
    }
  }
}

}  // namespace tavrix
