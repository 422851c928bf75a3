#include "SyntheticLibrary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>

#include "foundation/files/FileReader.h"
#include "grouping/GroupingEngine.h"
#include "media/BundleBuilder.h"
#include "media/Snapshot.h"
#include "naming/FolderNaming.h"
#include "naming/NamePresets.h"
#include "transfer/TransferPlanner.h"

namespace tavrix::bench {
namespace {

class Random {
 public:
  std::uint64_t below(std::uint64_t limit) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return (state_ >> 33U) % limit;
  }
  double between(double low, double high) {
    return low + (high - low) * static_cast<double>(below(1U << 30U)) / (1U << 30U);
  }

 private:
  std::uint64_t state_ = 2026;
};

GeoPoint placeOf(std::size_t number) {
  Random random;
  for (std::size_t i = 0; i < number % 7; ++i) random.below(2);
  const double turn =
      static_cast<double>(number) * 2.399963229728653;  // the golden angle spreads them evenly
  return {std::asin(std::sin(turn * 0.37) * 0.9) * 180 / 3.141592653589793,
          std::remainder(turn * 57.29577951308232, 360.0)};
}

class FileSink : public TextSink {
 public:
  explicit FileSink(const std::string& path) : file_(path, std::ios::binary) {}
  void write(std::string_view text) override {
    file_.write(text.data(), static_cast<std::streamsize>(text.size()));
  }

 private:
  std::ofstream file_;
};

/// Writes one shot after another until the list has enough files.
class PhoneWriter {
 public:
  explicit PhoneWriter(std::size_t files) : files_(files) { items_.reserve(files + 4); }

  std::vector<SnapshotItem> write() {
    while (items_.size() < files_) addShot();
    items_.resize(files_);
    return std::move(items_);
  }

 private:
  void addShot() {
    const std::uint64_t dice = random_.below(100);
    if (dice < 55) {
      add("", "HEIC", "photo");
    } else if (dice < 80) {
      add("", "HEIC", "photo");
      add("", "MOV", "video");
    } else if (dice < 92) {
      add("", "MOV", "video");
    } else {
      add("", "HEIC", "photo");
      add("", "AAE", "sidecar");
      add("E", "HEIC", "photo");
    }
    ++shot_;
  }

  void add(std::string_view mark, std::string_view extension, std::string_view kind) {
    SnapshotItem item;
    item.dir = fmt::format("{}APPLE", 100 + shot_ / 1000);
    item.name = fmt::format("IMG_{}{:04}.{}", mark, shot_ % 10000, extension);
    item.kind = kind;
    item.size = 20'000 + random_.below(4'000'000);
    if (kind != "sidecar") addMetadata(item);
    items_.push_back(std::move(item));
  }

  void addMetadata(SnapshotItem& item) {
    const auto step =
        static_cast<std::int64_t>(15LL * 365 * 86400 * static_cast<std::int64_t>(items_.size()) /
                                  static_cast<std::int64_t>(files_));
    const Instant moment{std::chrono::seconds{1262304000 + step}};
    const std::string text = iso8601(moment);
    item.exifDate = fmt::format("{}:{}:{} {}", text.substr(0, 4), text.substr(5, 2),
                                text.substr(8, 2), text.substr(11, 8));
    item.exifOffset = "+03:00";
    item.itemDate = static_cast<double>(1262304000 + step);
    item.px = 4032;
    item.py = 3024;
    item.cam = true;
    if (random_.below(5) == 0) return;
    const GeoPoint place = placeOf(shot_ / 40 % 2000);
    item.lat = place.latitude + random_.between(-0.004, 0.004);
    item.lon = place.longitude + random_.between(-0.004, 0.004);
  }

  std::size_t files_;
  std::size_t shot_ = 0;
  Random random_;
  std::vector<SnapshotItem> items_;
};

}  // namespace

void fillWithNoise(std::string& bytes, std::uint64_t& state) {
  for (std::size_t at = 0; at + sizeof state <= bytes.size(); at += sizeof state) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    bytes.replace(at, sizeof state, reinterpret_cast<const char*>(&state), sizeof state);
  }
}

void writeSnapshot(const std::string& path, std::size_t files) {
  FileSink sink{path};
  Snapshot::write(PhoneWriter{files}.write(), sink);
}

std::vector<GeoPoint> scatteredPoints(std::size_t count, std::size_t places) {
  Random random;
  std::vector<GeoPoint> points;
  points.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const GeoPoint place = placeOf(random.below(places));
    points.push_back({place.latitude + random.between(-0.008, 0.008),
                      place.longitude + random.between(-0.008, 0.008)});
  }
  return points;
}

std::vector<MediaAsset> travels(const TravelPlan& plan) {
  constexpr std::int64_t span = 15LL * 365 * 86400;
  const GeoPoint home{55.75, 37.62};
  // A trip takes the last third of its share of the events.
  const std::size_t eventsOfTrip = std::max<std::size_t>(1, plan.events / plan.trips);
  Random random;
  std::vector<MediaAsset> assets;
  assets.reserve(plan.shots);
  for (std::size_t i = 0; i < plan.shots; ++i) {
    const std::size_t event = i * plan.events / plan.shots;
    const std::size_t trip = event / eventsOfTrip;
    const bool isAway = event % eventsOfTrip >= eventsOfTrip - (eventsOfTrip + 2) / 3;
    const GeoPoint center = isAway ? placeOf(1 + trip % plan.places) : home;
    const auto eventBegin =
        static_cast<std::int64_t>(event) * span / static_cast<std::int64_t>(plan.events);
    const auto inEvent = static_cast<std::int64_t>(i - event * plan.shots / plan.events);
    const std::string id = fmt::format("T{}", i);
    std::optional<GeoPoint> place;
    if (random.below(10) > 0) {
      place = GeoPoint{center.latitude + random.between(-0.05, 0.05),
                       center.longitude + random.between(-0.05, 0.05)};
    }
    assets.emplace_back(id, id + ".HEIC", std::nullopt, MediaKind::photo, 1'000'000,
                        Instant{std::chrono::seconds{1262304000 + eventBegin + inEvent * 60}},
                        place, false, std::nullopt, std::nullopt);
  }
  return assets;
}

std::vector<MediaAsset> readCatalogue(const std::string& path) {
  const auto file = openFileForReading(path);
  return Snapshot::readAssets(*file, *TimeZone::load("Europe/Moscow"));
}

TransferPlan planOf(const std::vector<MediaAsset>& assets) {
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(assets);
  request.mode = grouping_mode::ByDate{};
  request.settings.timeZone = *TimeZone::load("Europe/Moscow");
  GroupingEngine::Result grouped = GroupingEngine::group(request);
  FolderNaming::Settings naming;
  naming.nameTemplate = NamePresets::defaultTemplate();
  naming.timeZone = request.settings.timeZone;
  const auto named = FolderNaming::resolve(naming, {grouped.groups.begin(), grouped.groups.end()});
  std::vector<TransferPlanner::NamedGroup> groups;
  for (const FolderNaming::Row& row : named.rows) groups.push_back({row.name, row.group});
  return TransferPlanner::plan(groups, {});
}

}  // namespace tavrix::bench
