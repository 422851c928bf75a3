#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "foundation/files/Folder.h"
#include "media/BundleBuilder.h"
#include "media/LocalMediaSource.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlanner.h"

namespace tavrix::bench {
namespace {

struct Tree {
  std::size_t files;
  std::size_t bytes;
  double target;
  const char* what;
};

void writeSources(const std::string& path, const Tree& tree) {
  std::filesystem::create_directories(path);
  std::string content(tree.bytes, '\0');
  std::uint64_t state = 1;
  for (std::size_t i = 0; i < tree.files; ++i) {
    fillWithNoise(content, state);
    std::ofstream{fmt::format("{}/IMG_{:05}.HEIC", path, i), std::ios::binary} << content;
  }
}

TransferPlan planOfTree(const Tree& tree) {
  std::vector<MediaAsset> assets;
  for (std::size_t i = 0; i < tree.files; ++i) {
    const std::string name = fmt::format("IMG_{:05}.HEIC", i);
    const Instant date{std::chrono::seconds{1779278400 + 600 * static_cast<std::int64_t>(i)}};
    assets.emplace_back(name, name, std::nullopt, MediaKind::photo, tree.bytes, date, std::nullopt,
                        false, std::nullopt, std::nullopt);
  }
  std::vector<std::pair<std::string, MediaGroup>> groups;
  for (const AssetBundle& bundle : BundleBuilder::makeBundles(assets)) {
    const std::string day = iso8601(*bundle.captureDate()).substr(0, 10);
    if (groups.empty() || groups.back().first != day) groups.push_back({day, {}});
    groups.back().second.bundles.push_back(bundle);
  }
  std::vector<TransferPlanner::NamedGroup> named;
  for (auto& [name, group] : groups) named.push_back({name, std::move(group)});
  return TransferPlanner::plan(named, {});
}

void copyAsOthersDo(const std::string& sources, const std::string& copies) {
  shell("cp -r '" + sources + "' '" + copies + "' && sync -f '" + copies + "' && find '" + copies +
        "' -type f -print0 | xargs -0 sha256sum > /dev/null");
}

void copyAsWeDo(const TransferPlan& plan, const std::string& sources, const std::string& copies) {
  LocalMediaSource source{sources};
  const auto destination = openFolder(copies);
  std::size_t digests = 0;
  TransferEngine::Setup setup;
  setup.landed = [&](const LandedFile& landed) { digests += landed.sha256 ? 1U : 0U; };
  const auto report = TransferEngine{setup}.run(plan, source, *destination);
  if (report.copied != plan.files.size() || digests != plan.files.size()) {
    fmt::print("unexpected: {} copied\n", report.copied);
  }
}

void benchTree(const std::string& folder, const Tree& tree) {
  std::filesystem::create_directories(folder);
  const std::string sources = folder + "/sources";
  writeSources(sources, tree);
  const TransferPlan plan = planOfTree(tree);
  constexpr int rounds = 5;
  std::vector<Duel> duels;
  // Every copy uses a new folder: if the volume discards removed blocks, removing an earlier copy
  // would slow the next measurement. The first round is a warm-up.
  for (int round = 0; round <= rounds; ++round) {
    const std::string theirs = fmt::format("{}/theirs-{}", folder, round);
    const std::string ours = fmt::format("{}/ours-{}", folder, round);
    std::filesystem::create_directory(ours);
    shell("sync -f '" + folder + "'");
    const double theirTime = seconds([&] { copyAsOthersDo(sources, theirs); });
    const double ourTime = seconds([&] { copyAsWeDo(plan, sources, ours); });
    if (round > 0) duels.push_back({ourTime, theirTime});
  }
  // The time of a write varies from round to round, so the median is compared.
  std::sort(duels.begin(), duels.end(),
            [](const Duel& a, const Duel& b) { return a.ratio() < b.ratio(); });
  const Duel& median = duels[rounds / 2];
  print({fmt::format("copying {} with SHA-256, durable : cp, sync, sha256sum", tree.what),
         time(median.ours), time(median.theirs), median.ratio(), tree.target});
  std::filesystem::remove_all(folder);
}

}  // namespace

void benchCopying(const std::string& folder) {
  benchTree(folder, {20'000, 20'000, 1.1, "20,000 files of 20 KB"});
  benchTree(folder, {500, 3'000'000, 0.9, "500 files of 3 MB"});
}

}  // namespace tavrix::bench
