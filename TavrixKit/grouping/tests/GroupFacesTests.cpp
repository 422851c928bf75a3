#include "grouping/GroupFaces.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using Kind = GroupFaces::Face::Kind;

/// Returns the file of a word such as "a.jpg@60", taken 60 s after some moment, or "a.jpg" without
/// a date. After the time, "c" stands for camera data and "p" for a position.
MediaAsset fileOf(const std::string& word) {
  const std::string name = word.substr(0, word.find('@'));
  const std::string after = word.substr(std::min(word.find('@'), word.size()));
  std::optional<Instant> date;
  if (!after.empty())
    date = Instant{std::chrono::seconds{1779278400 + std::stoll(after.substr(1))}};
  const bool isPlaced = after.ends_with('p');
  return MediaAsset{name,
                    name,
                    std::nullopt,
                    mediaKindOfFileName(name),
                    100,
                    date,
                    isPlaced ? std::optional{GeoPoint{41.9, 12.5}} : std::nullopt,
                    false,
                    std::nullopt,
                    std::nullopt,
                    std::nullopt,
                    after.ends_with('c')};
}

std::vector<AssetBundle> shotsOf(const std::string& words) {
  std::vector<MediaAsset> files;
  std::istringstream stream{words};
  for (std::string word; stream >> word;) files.push_back(fileOf(word));
  const auto result = grouped(files, grouping_mode::Flat{});
  return result.groups.empty() ? std::vector<AssetBundle>{} : result.groups.front().bundles;
}

std::string textOf(const GroupFaces& faces) {
  std::string text;
  for (const auto& face : faces.faces) text.append(face.asset.id()).append(" ");
  return text + "+" + std::to_string(faces.otherShots);
}

TEST(GroupFacesTests, faces_areChosenByKindMomentAndTime) {
  struct Row {
    std::string shots;
    std::string faces;
  };
  const std::vector<Row> rows{
      {"", "+0"},
      {"a.aae@0", "+0"},
      {"a.jpg@0 b.jpg@20 c.jpg@40 d.jpg@1000 e.jpg@2000 f.jpg@3000 g.jpg@4000",
       "a.jpg d.jpg e.jpg f.jpg g.jpg +2"},
      // A burst alone, beside others, and beside films only.
      {"a.jpg@0 b.jpg@1 c.jpg@2", "a.jpg b.jpg c.jpg +0"},
      {"a.jpg@0 b.jpg@1 c.jpg@9 d.jpg@60 e.jpg@70 f.jpg@80", "a.jpg c.jpg d.jpg e.jpg f.jpg +1"},
      {"a.jpg@0 b.jpg@1 c.mov@60 d.mov@120 e.mov@180 f.mov@240",
       "a.jpg c.mov d.mov e.mov f.mov +1"},
      {"a.mov@0 b.jpg@60 c.mov@120 d.jpg@180", "b.jpg d.jpg a.mov c.mov +0"},
      {"a.jpg@0 b.jpg@20 c.jpg@40 d.jpg@60 e.mov@900 f.jpg@80", "a.jpg b.jpg c.jpg d.jpg f.jpg +1"},
      // Edited versions, of stills and of films, and Live Photos.
      {"IMG_0001.HEIC@0 IMG_E0001.JPG@0 IMG_O0001.AAE IMG_0002.HEIC@60 IMG_0002.MOV@60",
       "IMG_E0001.JPG IMG_0002.HEIC +0"},
      {"IMG_0001.HEIC@0 IMG_0001.MOV@0 IMG_E0001.MOV@0 IMG_0002.MOV@60 IMG_E0002.MOV@60",
       "IMG_0001.HEIC IMG_E0002.MOV +0"},
      // Screenshots, and what only resembles one.
      {"a.jpg@0 b.PNG@60 Screenshot_1.jpg@90 c.mov@120", "a.jpg c.mov +2"},
      {"a.png@0 b.mov@60", "b.mov a.png +0"},
      {"IMG_0001.PNG@0 IMG_E0001.JPG@0 b.jpg@60", "b.jpg +1"},
      {"a.png@0c b.png@60p c.png@120", "a.png b.png +1"},
      {"a.jpg b.jpg c.jpg d.jpg e.jpg f.jpg g.jpg", "a.jpg b.jpg c.jpg d.jpg g.jpg +2"},
      {"z.jpg@0 y.jpg@60 a.jpg b.jpg c.mov@120", "z.jpg y.jpg a.jpg b.jpg c.mov +0"}};
  for (const auto& [shots, faces] : rows) {
    EXPECT_EQ(textOf(GroupFaces::of(shotsOf(shots))), faces) << shots;
  }
}

/// Returns a group of up to 40 shots, some of them of one moment.
std::vector<AssetBundle> someShots(std::mt19937& random) {
  static const std::vector<std::string> endings{".jpg", ".mov", ".png", ".aae"};
  const std::size_t kinds = 1 + random() % endings.size();
  std::string words;
  std::uint64_t time = 0;
  for (std::size_t i = random() % 40; i > 0; --i) {
    time += random() % 3 == 0 ? random() % 5000 : random() % 8;
    words += "x" + std::to_string(i) + endings[random() % kinds] + "@" + std::to_string(time) + " ";
  }
  return shotsOf(words);
}

struct Dated {
  Kind kind;
  Instant date;
};

bool isApart(const Dated& shot, const std::vector<Dated>& others) {
  return std::none_of(others.begin(), others.end(), [&](const Dated& other) {
    return std::chrono::abs(other.date - shot.date) < GroupFaces::moment;
  });
}

TEST(GroupFacesTests, facesOfAnyGroup_areOfDifferentMomentsAndTheBestKinds) {
  std::mt19937 random{7};
  for (int round = 0; round < 2000; ++round) {
    const auto shots = someShots(random);
    const GroupFaces result = GroupFaces::of(shots);
    ASSERT_EQ(result, GroupFaces::of(shots));
    std::vector<Dated> faces;
    std::vector<bool> isFace(shots.size());
    bool hasOneMomentTwice = false;
    for (const auto& face : result.faces) {
      ASSERT_EQ(face.asset, shots.at(face.shot).original());
      ASSERT_FALSE(isFace[face.shot]);
      isFace[face.shot] = true;
      const Dated dated{face.kind, *face.asset.captureDate()};
      hasOneMomentTwice = hasOneMomentTwice || !isApart(dated, faces);
      faces.push_back(dated);
    }
    std::size_t left = 0;
    std::size_t screenshotsLeft = 0;
    for (std::size_t i = 0; i < shots.size(); ++i) {
      const MediaAsset& file = shots[i].original();
      if (isFace[i] || file.kind() == MediaKind::sidecar) continue;
      ++left;
      const bool isFilm = file.kind() == MediaKind::video;
      const Dated dated{isFilm                ? Kind::film
                        : file.isScreenshot() ? Kind::screenshot
                                              : Kind::photograph,
                        *file.captureDate()};
      if (dated.kind == Kind::screenshot) ++screenshotsLeft;
      const bool isEligible =
          dated.kind != Kind::screenshot || faces.empty() || faces.front().kind != Kind::photograph;
      if (!isEligible || !isApart(dated, faces)) continue;
      EXPECT_FALSE(hasOneMomentTwice) << "another moment is left";
      for (const Dated& face : faces) EXPECT_LE(face.kind, dated.kind) << "a better kind is left";
    }
    EXPECT_EQ(result.otherShots, left);
    const bool isFull = faces.size() == GroupFaces::usualCount;
    EXPECT_TRUE(isFull || left == screenshotsLeft) << "shots are left, but there is room";
    if (!faces.empty() && faces.front().kind == Kind::photograph) {
      for (const Dated& face : faces) EXPECT_NE(face.kind, Kind::screenshot);
    }
  }
}

}  // namespace
}  // namespace tavrix
