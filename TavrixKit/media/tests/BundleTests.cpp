#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "media/BundleBuilder.h"
#include "media/ResourceBundles.h"

namespace tavrix {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAreArray;
using Role = ResourceDescription::Role;

/// Returns an asset from a path such as "100APPLE/IMG_0100.HEIC".
MediaAsset assetAt(const std::string& path, MediaAsset::Text contentID = {}) {
  const auto slash = path.find('/');
  const MediaAsset::Text directory =
      slash == std::string::npos ? MediaAsset::Text{} : std::string_view{path}.substr(0, slash);
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  return {path, name,  directory, mediaKindOfFileName(name), 1, {}, {}, false, {}, {},
          {},   false, contentID};
}

std::vector<MediaAsset> assetsAt(const std::vector<std::string>& paths) {
  std::vector<MediaAsset> assets;
  for (const std::string& path : paths) assets.push_back(assetAt(path));
  return assets;
}

/// Returns "id: original* other …" with the pictures of the shot in brackets, then "live" and
/// "edited" if they apply.
std::string shown(const AssetBundle& bundle) {
  std::string text = bundle.id() + ":";
  for (const MediaAsset& asset : bundle.assets()) {
    const std::string name{asset.name()};
    text += bundle.isPicture(asset) ? " [" + name + "]" : " " + name;
    if (asset.id() == bundle.original().id()) text += "*";
  }
  if (bundle.isLivePhoto()) text += " live";
  if (bundle.hasEditedVersion()) text += " edited";
  return text;
}

TEST(BundleBuilder, catalogue_isGatheredIntoShots) {
  struct Row {
    std::vector<std::string> paths;
    std::vector<std::string> shots;
  };
  const Row rows[] = {
      {{}, {}},
      {{"A/IMG_0101.HEIC", "A/IMG_0102.MOV", "A/IMG_0101.MOV"},
       {"A/IMG_0101: [IMG_0101.HEIC]* IMG_0101.MOV live", "A/IMG_0102: [IMG_0102.MOV]*"}},
      {{"A/IMG_0100.AAE", "A/IMG_E0100.HEIC", "A/IMG_0100.HEIC"},
       {"A/IMG_0100: IMG_0100.AAE [IMG_E0100.HEIC] [IMG_0100.HEIC]* edited"}},
      {{"A/IMG_0100.AAE"}, {"A/IMG_0100: IMG_0100.AAE*"}},
      {{"A/IMG_1.HEIC", "B/IMG_1.HEIC", "IMG_1.HEIC"},
       {"A/IMG_1: [IMG_1.HEIC]*", "B/IMG_1: [IMG_1.HEIC]*", "/IMG_1: [IMG_1.HEIC]*"}},
      {{"A/img_1.heic", "A/IMG_01.JPG", "A/IMG_1.MOV"},
       {"A/IMG_1: [img_1.heic]* IMG_1.MOV live", "A/IMG_01: [IMG_01.JPG]*"}},
      {{"Screenshot 2026.png", "A/IMG_1400 2.HEIC"},
       {"asset:Screenshot 2026.png: [Screenshot 2026.png]*",
        "asset:A/IMG_1400 2.HEIC: [IMG_1400 2.HEIC]*"}},
      {{"A/IMG_E1.HEIC", "A/IMG_E1.MOV"}, {"A/IMG_1: [IMG_E1.HEIC]* [IMG_E1.MOV] edited"}},
      {{"A/IMG_E1.HEIC", "A/IMG_1.AAE"}, {"A/IMG_1: [IMG_E1.HEIC] IMG_1.AAE* edited"}},
      {{"A/IMG_E1.HEIC", "A/IMG_1.MOV"}, {"A/IMG_1: [IMG_E1.HEIC] [IMG_1.MOV]* edited"}},
      {{"A/IMG_1.MOV", "A/IMG_1.MP4", "A/IMG_1.DNG", "A/IMG_1.JPG", "A/IMG_E1.MOV"},
       {"A/IMG_1: IMG_1.MOV IMG_1.MP4 [IMG_1.DNG]* [IMG_1.JPG] [IMG_E1.MOV] live edited"}},
  };
  for (const Row& row : rows) {
    std::vector<std::string> shots;
    for (const AssetBundle& bundle : BundleBuilder::makeBundles(assetsAt(row.paths)))
      shots.push_back(shown(bundle));
    EXPECT_EQ(shots, row.shots);
  }
}

TEST(BundleBuilder, filmWithTheIdentifierOfAnotherStill_isAShotOfItsOwn) {
  struct Row {
    std::vector<std::pair<std::string, const char*>> files;
    std::vector<std::string> shots;
  };
  const Row rows[] = {
      {{{"A/IMG_1.HEIC", "a"}, {"A/IMG_1.MOV", "a"}}, {"A/IMG_1: [IMG_1.HEIC]* IMG_1.MOV live"}},
      {{{"A/IMG_1.HEIC", "a"}, {"A/IMG_1.MOV", ""}}, {"A/IMG_1: [IMG_1.HEIC]* IMG_1.MOV live"}},
      {{{"A/IMG_1.HEIC", ""}, {"A/IMG_1.MOV", "b"}}, {"A/IMG_1: [IMG_1.HEIC]* IMG_1.MOV live"}},
      // One of the stills is enough.
      {{{"A/IMG_1.JPG", "b"}, {"A/IMG_1.HEIC", "a"}, {"A/IMG_1.MOV", "a"}},
       {"A/IMG_1: [IMG_1.JPG]* [IMG_1.HEIC] IMG_1.MOV live"}},
      // Sidecar and edited versions stay with the still; the film comes first in the catalogue.
      {{{"A/IMG_1.MOV", "b"},
        {"A/IMG_2.HEIC", ""},
        {"A/IMG_1.AAE", ""},
        {"A/IMG_E1.MOV", "b"},
        {"A/IMG_E1.HEIC", "c"},
        {"A/IMG_1.HEIC", "a"}},
       {"asset:A/IMG_1.MOV: [IMG_1.MOV]*", "A/IMG_2: [IMG_2.HEIC]*",
        "A/IMG_1: IMG_1.AAE [IMG_E1.MOV] [IMG_E1.HEIC] [IMG_1.HEIC]* edited"}},
      {{{"A/IMG_1.MOV", "b"}, {"A/IMG_E1.HEIC", "a"}},
       {"A/IMG_1: [IMG_1.MOV]* [IMG_E1.HEIC] edited"}},
  };
  for (const Row& row : rows) {
    std::vector<MediaAsset> assets;
    for (const auto& [path, contentID] : row.files) assets.push_back(assetAt(path, contentID));
    std::vector<std::string> shots;
    for (const AssetBundle& bundle : BundleBuilder::makeBundles(assets))
      shots.push_back(shown(bundle));
    EXPECT_EQ(shots, row.shots);
  }
}

TEST(AssetBundle, primaryPicture_standsForAShotWithoutItsOriginal) {
  const auto primary = [](const std::vector<std::string>& paths) {
    return std::string{BundleBuilder::makeBundles(assetsAt(paths)).at(0).primaryPicture().name()};
  };
  EXPECT_EQ(primary({"A/IMG_E1.HEIC", "A/IMG_1.AAE"}), "IMG_E1.HEIC");
  EXPECT_EQ(primary({"A/IMG_1.AAE", "A/IMG_E1.HEIC", "A/IMG_1.HEIC"}), "IMG_1.HEIC");
  EXPECT_EQ(primary({"A/IMG_1.AAE", "A/IMG_1.XYZ"}), "IMG_1.AAE");
}

TEST(AssetBundle, position_isThatOfThePrimaryPictureElseOfAnyFile) {
  const auto at = [](const char* id, const char* name, std::optional<GeoPoint> point) {
    return MediaAsset{id, name, {}, mediaKindOfFileName(name), 1, {}, point, false, {}, {}};
  };
  const auto movie = at("1", "IMG_1.MOV", GeoPoint{1, 1});
  EXPECT_EQ(BundleBuilder::bundle("x", {movie, at("2", "IMG_1.HEIC", GeoPoint{2, 2})})->position(),
            (GeoPoint{2, 2}));
  EXPECT_EQ(BundleBuilder::bundle("x", {movie, at("2", "IMG_1.HEIC", {})})->position(),
            (GeoPoint{1, 1}));
  EXPECT_FALSE(BundleBuilder::bundle("x", {at("2", "IMG_1.HEIC", {})})->position());
  EXPECT_FALSE(BundleBuilder::bundle("x", {}));
}

RC_GTEST_PROP(BundleBuilder, anyCatalogue_losesNothingAndRepeatsNothing, ()) {
  const auto part = [](std::vector<std::string> texts) { return *rc::gen::elementOf(texts); };
  std::vector<MediaAsset> assets;
  for (int i = *rc::gen::inRange(0, 40); i > 0; --i) {
    const std::string name = part({"IMG_", "IMG_E", "img_", "VK "}) + part({"1", "01", "2", "3"}) +
                             part({".HEIC", ".MOV", ".AAE", "", ".x y"});
    const std::string directory = part({"", "A", "B"});
    assets.push_back({std::to_string(i),
                      name,
                      directory,
                      mediaKindOfFileName(name),
                      1,
                      {},
                      {},
                      false,
                      {},
                      {},
                      {},
                      false,
                      part({"", "a", "b"})});
  }
  const auto bundles = BundleBuilder::makeBundles(assets);
  std::map<std::string_view, std::size_t> order;
  for (std::size_t i = 0; i < assets.size(); ++i) order[assets[i].id()] = i;
  std::set<std::string_view> seen;
  std::set<std::string> ids;
  std::size_t first = 0;
  for (const AssetBundle& bundle : bundles) {
    RC_ASSERT(ids.insert(bundle.id()).second);
    RC_ASSERT(order[bundle.assets().front().id()] >= first);
    first = order[bundle.assets().front().id()];
    std::vector<std::size_t> places;
    for (const MediaAsset& asset : bundle.assets()) {
      RC_ASSERT(seen.insert(asset.id()).second);
      places.push_back(order[asset.id()]);
    }
    RC_ASSERT(std::is_sorted(places.begin(), places.end()));
    RC_ASSERT(seen.contains(bundle.original().id()));
    RC_ASSERT(BundleBuilder::bundle(bundle.id(), bundle.assets()) == bundle);
  }
  RC_ASSERT(seen.size() == assets.size());
}

TEST(ResourceBundles, description_becomesOneShotOfItsFiles) {
  AssetDescription description{"7F/L0#001", "cloud", Instant{}, GeoPoint{1, 2}, {}};
  EXPECT_FALSE(ResourceBundles::bundle(description));
  description.resources = {{Role::adjustmentData, "Adjustments.plist", {}, {}, {}},
                           {Role::alternatePhoto, "IMG_1.DNG", {}, 5, {}},
                           {Role::photo, "IMG_1.HEIC", {}, 10, false},
                           {Role::pairedVideo, "IMG_1.MOV", {}, 20, true},
                           {Role::editedPhoto, "FullSizeRender.jpg", {}, 30, {}},
                           {Role::editedPairedVideo, "FullSizeRender.mov", {}, 40, {}}};
  const auto bundle = ResourceBundles::bundle(description);
  EXPECT_EQ(shown(*bundle),
            "library:7F/L0#001: Adjustments.plist [IMG_1.DNG] [IMG_1.HEIC]* IMG_1.MOV "
            "[FullSizeRender.jpg] "
            "[FullSizeRender.mov] live edited");
  EXPECT_EQ(bundle->original().sizeBytes(), 10U);
  EXPECT_TRUE(bundle->original().isOptimized());
  EXPECT_EQ(bundle->assets()[0].kind(), MediaKind::sidecar);
  EXPECT_EQ(bundle->assets()[0].sizeBytes(), 0U);
  EXPECT_FALSE(bundle->assets()[3].isOptimized());
  EXPECT_EQ(bundle->assets()[4].cloudID(), "cloud");
  EXPECT_EQ(bundle->assets()[4].location(), (GeoPoint{1, 2}));
}

RC_GTEST_PROP(ResourceBundles, assetID_splitsIntoWhatItWasMadeOf, (const std::string& identifier)) {
  const auto role = static_cast<Role>(*rc::gen::inRange(0, 8));
  const int number = *rc::gen::inRange(1, 12);
  const std::string id = ResourceBundles::assetID(
      identifier + *rc::gen::element("", "#photo", "#", ".2"), role, number);
  const auto parts = ResourceBundles::split(id);
  RC_ASSERT(parts.has_value());
  RC_ASSERT(ResourceBundles::assetID(parts->first, parts->second, number) == id);
}

TEST(ResourceBundles, otherIDs_doNotSplit) {
  for (const char* id :
       {"", "100APPLE/IMG_1.HEIC", "IMG_1.HEIC#2", "library:x", "library:x#", "library:x#Photo",
        "library:x#photo.", "library:x#photo.1", "library:x#photo.02", "#photo", "x#photo"}) {
    EXPECT_FALSE(ResourceBundles::split(id)) << id;
  }
}

}  // namespace
}  // namespace tavrix
