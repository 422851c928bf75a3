#include <fmt/format.h>
#include <rapidjson/filereadstream.h>
#include <rapidjson/reader.h>

#include <cstdio>
#include <memory>
#include <optional>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::bench {
namespace {

constexpr std::size_t million = 1'000'000;

/// Parses the file with the JSON library and discards all events.
void walkBare(const std::string& path) {
  constexpr unsigned flags = rapidjson::kParseFullPrecisionFlag |
                             rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file{std::fopen(path.c_str(), "rb"),
                                                             std::fclose};
  const auto buffer = std::make_unique<char[]>(65536);
  rapidjson::FileReadStream stream{file.get(), buffer.get(), 65536};
  rapidjson::BaseReaderHandler<> nobody;
  rapidjson::Reader{}.Parse<flags>(stream, nobody);
}

void benchReading(const std::string& path) {
  // Kept, so that freeing a million files is not measured as reading.
  std::vector<std::vector<MediaAsset>> catalogues;
  const Duel reading =
      duel(5, [&] { catalogues.push_back(readCatalogue(path)); }, [&] { walkBare(path); });
  print({"reading 1,000,000 files : the JSON library's bare walk", time(reading.ours),
         time(reading.theirs), reading.ratio(), 2.0});
}

void benchPlanning(const std::string& path, const std::string& smallPath) {
  std::optional<std::vector<MediaAsset>> assets;
  std::optional<std::vector<MediaAsset>> fewAssets;
  std::optional<TransferPlan> plan;
  const Duel planning = duel(
      3, [&] { plan = planOf(*assets); },
      [&] {
        plan.reset();
        assets.reset();
        assets = readCatalogue(path);
      });
  print({"bundles, filter, days, names, plan : reading, 1,000,000 files", time(planning.ours),
         time(planning.theirs), planning.ratio(), 1.0});
  plan.reset();
  const Duel whole = duel(
      3,
      [&] {
        assets.reset();
        assets = readCatalogue(path);
        plan = planOf(*assets);
        plan.reset();
      },
      [&] {
        fewAssets.reset();
        fewAssets = readCatalogue(smallPath);
        plan = planOf(*fewAssets);
        plan.reset();
      });
  print({"reading to plan, 1,000,000 files : 100,000 files", time(whole.ours), time(whole.theirs),
         whole.ratio(), 12.0});
}

void benchMemory(const std::string& path) {
  const double bytes = peakBytes([&] {
    const auto assets = readCatalogue(path);
    const TransferPlan plan = planOf(assets);
    if (plan.files.size() != million)
      fmt::print("unexpected: {} files planned\n", plan.files.size());
  });
  print({"peak memory from reading to plan, bytes a file : allowed",
         fmt::format("{:.0f} B", bytes / million), "700 B", bytes / million / 700, 1.0});
}

void benchClustering() {
  const auto points = scatteredPoints(million, 2000);
  const std::vector<GeoPoint> few{points.begin(), points.begin() + million / 10};
  const Duel clustering = duel(
      3, [&] { PlaceClustering::clusters(points, 2.0); },
      [&] { PlaceClustering::clusters(few, 2.0); });
  print({fmt::format("clustering 1,000,000 points ({} clusters) : 100,000 points",
                     PlaceClustering::assign(points, 2.0).centers.size()),
         time(clustering.ours), time(clustering.theirs), clustering.ratio(), 12.0});
}

}  // namespace

void benchPipeline(const std::string& folder) {
  const std::string path = folder + "/million.json";
  const std::string smallPath = folder + "/hundred-thousand.json";
  writeSnapshot(path, million);
  writeSnapshot(smallPath, million / 10);
  benchMemory(path);
  benchReading(path);
  benchPlanning(path, smallPath);
  benchClustering();
}

}  // namespace tavrix::bench
