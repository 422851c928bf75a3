#include "sample/SampleShot.h"

#include <fmt/format.h>

#include "sample/ExifSegment.h"
#include "sample/SampleRandom.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;
using Kind = SampleShot::Kind;

/// Several shots at one place, one after another.
struct Occasion {
  CivilDate day;
  std::chrono::minutes startOfDay;  ///< the first shot's time of day
  std::chrono::minutes utcOffset;
  GeoPoint place;
  Scene scene;
  std::vector<Kind> shots;
};

constexpr GeoPoint home{55.7423, 37.5989};
constexpr GeoPoint park{55.7298, 37.6011};
constexpr GeoPoint dacha{55.9721, 36.8204};
constexpr GeoPoint colosseum{41.8902, 12.4922};
constexpr GeoPoint pantheon{41.8986, 12.4769};
constexpr GeoPoint vatican{41.9022, 12.4539};
constexpr GeoPoint ostia{41.7308, 12.2780};
constexpr GeoPoint kazanKremlin{55.7989, 49.1064};

constexpr auto moscowOffset = 3h;
constexpr auto romeOffset = 2h;

CivilDate day(unsigned month, unsigned dayOfMonth) {
  return std::chrono::year{2026} / static_cast<int>(month) / static_cast<int>(dayOfMonth);
}

std::vector<Occasion> occasions() {
  constexpr auto s = Kind::still;
  return {
      {day(4, 11), 10h + 20min, moscowOffset, home, Scene::city, {s, s, Kind::live}},
      {day(4, 25), 15h + 5min, moscowOffset, park, Scene::hills, {s, s, Kind::edited}},
      {day(5, 8), 18h + 40min, romeOffset, pantheon, Scene::city, {s, s, Kind::live, s}},
      {day(5, 9), 9h + 15min, romeOffset, colosseum, Scene::city, {s, s, s, s, Kind::video, s}},
      {day(5, 9), 23h + 20min, romeOffset, pantheon, Scene::city, {s, s}},
      {day(5, 10), 11h + 30min, romeOffset, vatican, Scene::city, {s, Kind::live, s, s}},
      {day(5, 11), 19h + 10min, romeOffset, ostia, Scene::sea, {s, s, s, s}},
      {day(5, 23), 12h, moscowOffset, home, Scene::city, {s, Kind::savedPicture, s}},
      {day(6, 13),
       8h + 45min,
       moscowOffset,
       kazanKremlin,
       Scene::city,
       {s, s, s, Kind::live, s, s, s}},
      {day(6, 28), 20h + 30min, moscowOffset, park, Scene::hills, {s, s, Kind::video}},
      {day(7, 18), 5h + 50min, moscowOffset, dacha, Scene::hills, {s, s, s, Kind::live, s, s}},
      {day(8, 22), 17h, moscowOffset, dacha, Scene::sea, {s, s, s, s, s}},
  };
}

GeoPoint near(const GeoPoint& place, SampleRandom& random) {
  return exifRounded({place.latitude + random.between(-0.002, 0.002),
                      place.longitude + random.between(-0.002, 0.002)});
}

}  // namespace

std::string SampleShot::fileName(const std::string& extension, const std::string& mark) const {
  return fmt::format("IMG_{}{:04}.{}", mark, number, extension);
}

std::vector<SampleShot> sampleShots(std::uint64_t seed) {
  std::vector<SampleShot> shots;
  SampleRandom random{seed, 0};
  int number = 100;
  for (const Occasion& occasion : occasions()) {
    LocalTime clock = std::chrono::local_days{occasion.day} + occasion.startOfDay;
    for (const Kind kind : occasion.shots) {
      clock += std::chrono::seconds{random.wholeBetween(20, 400)};
      shots.push_back({kind, number++, occasion.scene, clock, occasion.utcOffset,
                       near(occasion.place, random)});
    }
  }
  return shots;
}

}  // namespace tavrix
