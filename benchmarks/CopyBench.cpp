#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "Benches.h"
#include "Measure.h"
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
    for (std::size_t at = 0; at + 8 <= content.size(); at += 8) {
      state = state * 6364136223846793005U + 1442695040888963407U;
      content.replace(at, 8, reinterpret_cast<const char*>(&state), 8);
    }
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
  std::vector<TransferPlanner::NamedGroup> groups;
  for (const AssetBundle& bundle : BundleBuilder::makeBundles(assets)) {
    const std::string day = iso8601(*bundle.captureDate()).substr(0, 10);
    if (groups.empty() || groups.back().folderName != day) groups.push_back({day, {}});
    groups.back().group.bundles.push_back(bundle);
  }
  return TransferPlanner::plan(groups, {});
}

void benchTree(const std::string& folder, const Tree& tree) {
  const std::string sources = folder + "/sources";
  const std::string copies = folder + "/copies";
  writeSources(sources, tree);
  shell("sync -f '" + folder + "'");
  const TransferPlan plan = planOfTree(tree);
  const auto reset = [&] {
    std::filesystem::remove_all(copies);
    shell("sync -f '" + folder + "'");
  };
  Duel best{1e9, 1e9};
  for (int round = 0; round < 3; ++round) {
    reset();
    best.theirs = std::min(best.theirs, seconds([&] {
                             shell("cp -r '" + sources + "' '" + copies + "' && sync -f '" +
                                   copies + "' && find '" + copies +
                                   "' -type f -print0 | xargs -0 sha256sum > /dev/null");
                           }));
    reset();
    std::filesystem::create_directory(copies);
    best.ours = std::min(
        best.ours, seconds([&] {
          LocalMediaSource source{sources};
          const auto destination = openFolder(copies);
          std::size_t digests = 0;
          TransferEngine::Setup setup;
          setup.landed = [&](const LandedFile& landed) { digests += landed.sha256 ? 1U : 0U; };
          const auto report = TransferEngine{setup}.run(plan, source, *destination);
          if (report.copied != tree.files || digests != tree.files)
            fmt::print("unexpected: {} copied\n", report.copied);
        }));
  }
  print({fmt::format("copying {} with SHA-256, durable : cp, sync, sha256sum", tree.what),
         time(best.ours), time(best.theirs), best.ratio(), tree.target});
  std::filesystem::remove_all(copies);
  std::filesystem::remove_all(sources);
}

}  // namespace

void benchCopying(const std::string& folder) {
  benchTree(folder, {20'000, 20'000, 1.2, "20,000 files of 20 KB"});
  benchTree(folder, {2'000, 3'000'000, 0.9, "2,000 files of 3 MB"});
}

}  // namespace tavrix::bench
