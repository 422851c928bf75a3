#include "media/BundleFilter.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Policy = BundleFilter::EditedPolicy;

const Instant noon = parseIso8601("2026-05-10T12:00:00Z").value();

/// Returns one shot of the given files. A "~" after a name marks a reduced copy.
AssetBundle shotOf(std::vector<std::string> names, std::optional<Instant> date = noon,
                   std::optional<GeoPoint> point = {}) {
  std::vector<MediaAsset> assets;
  for (std::string name : names) {
    const bool isOptimized = name.ends_with('~');
    if (isOptimized) name.pop_back();
    assets.push_back(
        {name, name, "A", mediaKindOfFileName(name), 1, date, point, isOptimized, {}, {}});
  }
  return BundleBuilder::bundle("A/1", std::move(assets)).value();
}

std::string kept(const BundleFilter& filter, const AssetBundle& bundle,
                 const BundleFilter::Context& context = {}) {
  std::string names;
  for (const MediaAsset& asset : filter.keptAssets(bundle, context)) {
    names += (names.empty() ? "" : " ") + std::string{asset.name()};
  }
  return names;
}

BundleFilter with(const std::function<void(BundleFilter&)>& change) {
  BundleFilter filter;
  change(filter);
  return filter;
}

const AssetBundle live = shotOf({"1.HEIC", "1.MOV", "1.AAE"});
const AssetBundle still = shotOf({"2.JPG", "2.AAE"});
const AssetBundle clip = shotOf({"3.MOV", "3.AAE"});
const AssetBundle edited = shotOf({"IMG_4.HEIC", "IMG_E4.HEIC", "IMG_4.AAE"});
const AssetBundle editedLive =
    shotOf({"IMG_5.HEIC", "IMG_5.MOV", "IMG_E5.HEIC", "IMG_E5.MOV", "IMG_5.AAE"});
const AssetBundle orphan = shotOf({"6.AAE"});
const AssetBundle unknown = shotOf({"7.XYZ"});
const AssetBundle editedOrphan = shotOf({"IMG_E8.HEIC", "IMG_8.AAE"});
const AssetBundle editedAlone = shotOf({"IMG_E9.HEIC"});
const AssetBundle editedSidecar = shotOf({"IMG_1.HEIC", "IMG_E1.AAE"});
const AssetBundle reduced = shotOf({"IMG_2.HEIC~", "IMG_E2.HEIC", "IMG_2.AAE"});
const AssetBundle reducedLive = shotOf({"3.HEIC~", "3.MOV", "3.AAE"});

TEST(BundleFilter, everySwitch_keepsAndDropsWhatItNames) {
  struct Row {
    const char* what;
    const AssetBundle& bundle;
    BundleFilter filter;
    const char* expected;
  };
  const BundleFilter all;
  const auto noPhotos = with([](auto& f) { f.includePhotos = false; });
  const auto noLive = with([](auto& f) { f.includeLive = false; });
  const auto onlyStill = with([](auto& f) { f.liveOnlyPhoto = true; });
  const auto noVideos = with([](auto& f) { f.includeVideos = false; });
  const auto noAAE = with([](auto& f) { f.includeAAE = false; });
  const auto editedOnly = with([](auto& f) { f.editedPolicy = Policy::editedOnly; });
  const auto originals = with([](auto& f) { f.editedPolicy = Policy::originalsOnly; });
  const auto skip = with([](auto& f) { f.skipOptimized = true; });
  const auto skipEdited =
      with([](auto& f) { f.skipOptimized = true, f.editedPolicy = Policy::editedOnly; });
  const auto skipStill = with([](auto& f) { f.skipOptimized = f.liveOnlyPhoto = true; });
  const Row rows[] = {
      {"everything", live, all, "1.HEIC 1.MOV 1.AAE"},
      {"sidecar alone", orphan, all, ""},
      {"no picture", unknown, all, ""},
      {"no photos", still, noPhotos, ""},
      {"no photos, a Live Photo", live, noPhotos, "1.HEIC 1.MOV 1.AAE"},
      {"no photos, a video", clip, noPhotos, "3.MOV 3.AAE"},
      {"no photos, original gone", editedOrphan, noPhotos, ""},
      {"no live", live, noLive, ""},
      {"no live, a photo", still, noLive, "2.JPG 2.AAE"},
      {"no live, a video", clip, noLive, "3.MOV 3.AAE"},
      {"only still", live, onlyStill, "1.HEIC 1.AAE"},
      {"only still, a video", clip, onlyStill, "3.MOV 3.AAE"},
      {"only still, edited", editedLive, onlyStill, "IMG_5.HEIC IMG_E5.HEIC IMG_E5.MOV IMG_5.AAE"},
      {"no videos", clip, noVideos, ""},
      {"no videos, a Live Photo", live, noVideos, "1.HEIC 1.MOV 1.AAE"},
      {"no sidecars", still, noAAE, "2.JPG"},
      {"no sidecars, sidecar alone", orphan, noAAE, ""},
      {"edited only", edited, editedOnly, "IMG_E4.HEIC IMG_4.AAE"},
      {"edited only, live", editedLive, editedOnly, "IMG_E5.HEIC IMG_E5.MOV IMG_5.AAE"},
      {"edited only, no edits", live, editedOnly, "1.HEIC 1.MOV 1.AAE"},
      {"edited only, sidecar edited", editedSidecar, editedOnly, "IMG_1.HEIC IMG_E1.AAE"},
      {"edited only, original gone", editedOrphan, editedOnly, "IMG_E8.HEIC IMG_8.AAE"},
      {"edited only, nothing else left", editedAlone, editedOnly, "IMG_E9.HEIC"},
      {"edited only, reduced original", reduced, editedOnly, "IMG_E2.HEIC IMG_2.AAE"},
      {"originals only", edited, originals, "IMG_4.HEIC IMG_4.AAE"},
      {"originals only, live", editedLive, originals, "IMG_5.HEIC IMG_5.MOV IMG_5.AAE"},
      {"originals only, no edits", still, originals, "2.JPG 2.AAE"},
      {"originals only, sidecar edited", editedSidecar, originals, "IMG_1.HEIC IMG_E1.AAE"},
      {"originals only, original gone", editedOrphan, originals, ""},
      {"skip", reduced, skip, ""},
      {"skip, live", reducedLive, skip, ""},
      {"skip, full size", edited, skip, "IMG_4.HEIC IMG_E4.HEIC IMG_4.AAE"},
      {"skip and edited only", reduced, skipEdited, ""},
      {"only still, reduced", reducedLive, onlyStill, "3.HEIC 3.AAE"},
      {"skip and only still, full size", live, skipStill, "1.HEIC 1.AAE"},
      {"skip and only still, reduced", reducedLive, skipStill, ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(kept(row.filter, row.bundle), row.expected) << row.what;
    EXPECT_EQ(row.filter.keeps(row.bundle, {}), *row.expected != '\0') << row.what;
  }
}

TEST(BundleFilter, period_isCutByTheDaysOfTheZone) {
  const CivilDate tenth{std::chrono::year{2026} / 5 / 10};
  const CivilDate eleventh{std::chrono::year{2026} / 5 / 11};
  const auto shot = [](const char* time) { return shotOf({"1.HEIC"}, parseIso8601(time)); };
  const BundleFilter::Context tokyo{{TimeZone::load("Asia/Tokyo").value()}, nullptr};
  struct Row {
    const char* time;
    bool inUTC;
    bool inTokyo;
  };
  const Row rows[] = {
      {"2026-05-09T14:59:59.999Z", false, false}, {"2026-05-09T15:00:00Z", false, true},
      {"2026-05-10T00:00:00Z", true, true},       {"2026-05-10T14:59:59Z", true, true},
      {"2026-05-10T23:59:59.999Z", true, false},  {"2026-05-11T00:00:00Z", false, false}};
  const BundleFilter oneDay = with([&](auto& f) { f.from = f.to = tenth; });
  for (const Row& row : rows) {
    EXPECT_EQ(oneDay.keeps(shot(row.time), {}), row.inUTC) << row.time;
    EXPECT_EQ(oneDay.keeps(shot(row.time), tokyo), row.inTokyo) << row.time;
  }
  EXPECT_TRUE(with([&](auto& f) { f.from = tenth; }).keeps(shot("2030-01-01T00:00:00Z"), {}));
  EXPECT_FALSE(with([&](auto& f) { f.from = eleventh; }).keeps(shot("2026-05-10T12:00:00Z"), {}));
  EXPECT_TRUE(with([&](auto& f) { f.to = tenth; }).keeps(shot("1990-01-01T00:00:00Z"), {}));
  const AssetBundle undated = shotOf({"1.HEIC"}, std::nullopt);
  EXPECT_TRUE(BundleFilter{}.keeps(undated, {}));
  EXPECT_FALSE(with([&](auto& f) { f.to = tenth; }).keeps(undated, {}));
}

/// Names the northern half of the Earth Yalta in "Land"; the southern half has no names yet.
class TwoPlaces : public PlaceLookup {
 public:
  std::string placeKey(const GeoPoint& point) const override {
    return point.latitude > 0 ? "north" : "south";
  }
  std::optional<PlaceNames> names(const std::string& key,
                                  const std::string& localeID) const override {
    if (key == "south") return std::nullopt;
    return PlaceNames{localeID == "ru" ? "Ялта" : "Yalta", "Land", "XX"};
  }
};

TEST(BundleFilter, places_goByCityOrCountryOfTheShotsCell) {
  const TwoPlaces lookup;
  const AssetBundle north = shotOf({"1.HEIC"}, noon, GeoPoint{1, 0});
  const AssetBundle south = shotOf({"1.HEIC"}, noon, GeoPoint{-1, 0});
  const auto passing = [&](const PlaceFilter& places) {
    const auto filter = with([&](auto& f) { f.places = places; });
    std::string result;
    if (filter.keeps(north, {{}, &lookup})) result += "north ";
    if (filter.keeps(south, {{}, &lookup})) result += "south ";
    if (filter.keeps(still, {{}, &lookup})) result += "nowhere ";
    return result;
  };
  EXPECT_EQ(passing({{}, {"Ялта"}, false, false, "ru"}), "north ");
  EXPECT_EQ(passing({{}, {"Ялта"}, false, false, "en"}), "");
  EXPECT_EQ(passing({{"Land"}, {}, false, false, "en"}), "north ");
  EXPECT_EQ(passing({{"Land"}, {"Elsewhere"}, true, true, "en"}), "north south nowhere ");
  EXPECT_EQ(passing({{}, {}, true, false, "en"}), "nowhere ");
  EXPECT_EQ(passing({{}, {}, false, true, "en"}), "south ");
  EXPECT_EQ(passing({}), "");
}

TEST(OptimizedCopy, count_followsTheContentButNotTheSkip) {
  const std::vector<AssetBundle> shots{reduced, reducedLive, live,
                                       shotOf({"IMG_E1.HEIC", "IMG_1.HEIC"}),
                                       shotOf({"4.HEIC~"}, noon + std::chrono::days{1})};
  for (const bool skips : {false, true}) {
    const auto count = [&](const std::function<void(BundleFilter&)>& change) {
      BundleFilter filter = with(change);
      filter.skipOptimized = skips;
      return OptimizedCopy::count(shots, filter, {});
    };
    EXPECT_EQ(count([](auto&) {}), 3U);
    EXPECT_EQ(count([](auto& f) { f.includePhotos = false; }), 1U);
    EXPECT_EQ(count([](auto& f) { f.includePhotos = f.includeLive = false; }), 0U);
    EXPECT_EQ(count([](auto& f) { f.to = CivilDate{std::chrono::year{2026} / 5 / 10}; }), 2U);
    EXPECT_EQ(count([](auto& f) { f.editedPolicy = Policy::editedOnly; }), 3U);
  }
  EXPECT_EQ(OptimizedCopy::count({}, {}, {}), 0U);
}

RC_GTEST_PROP(BundleFilter, filteredShots_areWhatKeptAssetsSay, ()) {
  BundleFilter filter;
  for (bool* flag : {&filter.includePhotos, &filter.includeLive, &filter.liveOnlyPhoto,
                     &filter.includeVideos, &filter.includeAAE, &filter.skipOptimized}) {
    *flag = *rc::gen::arbitrary<bool>();
  }
  filter.editedPolicy = *rc::gen::element(Policy::both, Policy::editedOnly, Policy::originalsOnly);
  const std::vector<AssetBundle> shots{live,        still,         clip,    edited,
                                       editedLive,  orphan,        unknown, editedOrphan,
                                       editedAlone, editedSidecar, reduced, reducedLive};
  std::vector<AssetBundle> expected;
  for (const AssetBundle& shot : shots) {
    if (auto rebuilt = BundleBuilder::bundle(shot.id(), filter.keptAssets(shot, {})))
      expected.push_back(*rebuilt);
  }
  RC_ASSERT(filtered(shots, filter, {}) == expected);
}

}  // namespace
}  // namespace tavrix
