#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "foundation/files/Folder.h"
#include "transfer/DestinationView.h"
#include "transfer/TransferPlanner.h"

namespace tavrix::bench {
namespace {

const std::string phoneHash(64, 'a');

/// Returns the number of bytes that this process has read so far.
std::uint64_t bytesRead() {
  std::ifstream file{"/proc/self/io"};
  std::string key;
  std::uint64_t value = 0;
  while (file >> key >> value) {
    if (key == "rchar:") return value;
  }
  return 0;
}

std::vector<TransferPlanner::NamedGroup> groupsOf(const TransferPlan& plan) {
  std::vector<std::pair<std::string, MediaGroup>> groups;
  for (const PlannedFile& file : plan.files) {
    const std::string name = file.relativePath.substr(0, file.relativePath.find('/'));
    if (groups.empty() || groups.back().first != name) groups.push_back({name, {}});
    auto& bundles = groups.back().second.bundles;
    if (bundles.empty() || bundles.back().id() != file.bundleID()) bundles.push_back(file.bundle);
  }
  std::vector<TransferPlanner::NamedGroup> named;
  for (auto& [name, group] : groups) named.push_back({name, std::move(group)});
  return named;
}

/// Writes every planned file, truncated to one byte, and the marker that records it.
void writeDestination(const TransferPlan& plan, const std::string& path) {
  DestinationMarker::PhoneRecord record{1, phoneHash, "iPhone", "iPhone", {}, {}, {}};
  for (const PlannedFile& file : plan.files) {
    const std::filesystem::path place = path + "/" + file.relativePath;
    std::filesystem::create_directories(place.parent_path());
    std::ofstream{place}.close();
    std::filesystem::resize_file(place, file.asset.sizeBytes());
    record.files.push_back({file.relativePath, file.asset.sizeBytes(), std::string(64, 'b'),
                            std::string{file.asset.id()}, std::nullopt});
  }
  const auto folder = openFolder(path);
  DestinationMarker::save(*folder, record);
}

TransferPlan planAgain(const std::vector<TransferPlanner::NamedGroup>& groups,
                       const std::string& path) {
  const auto folder = openFolder(path);
  return TransferPlanner::plan(groups, {}, readDestination(*folder, phoneHash).view);
}

/// Prints what each stage takes on its own, as the best of five.
void printStages(const std::vector<TransferPlanner::NamedGroup>& groups, const std::string& path) {
  const auto folder = openFolder(path);
  std::array<double, 4> best{};
  best.fill(1e9);
  for (int round = 0; round < 5; ++round) {
    DestinationMarker::Marker marker;
    ListedFiles listed;
    DestinationView view;
    const std::array<std::function<void()>, 4> stages{
        [&] { marker = DestinationMarker::load(*folder); }, [&] { listed = listFiles(*folder); },
        [&] { view = DestinationView{std::move(listed.files), RecordedFiles{marker, phoneHash}}; },
        [&] { TransferPlanner::plan(groups, {}, view); }};
    for (std::size_t i = 0; i < stages.size(); ++i) best[i] = std::min(best[i], seconds(stages[i]));
  }
  fmt::print("  marker {}, listing {} (in parallel); view {}, plan {}\n", time(best[0]),
             time(best[1]), time(best[2]), time(best[3]));
}

}  // namespace

void benchOnlyNew(const std::string& folder) {
  const std::string snapshot = folder + "/only-new.json";
  const std::string destination = folder + "/only-new";
  writeSnapshot(snapshot, 100'000);
  const TransferPlan plan = planOf(readCatalogue(snapshot));
  std::filesystem::create_directories(destination);
  writeDestination(plan, destination);
  const auto groups = groupsOf(plan);
  const Duel duelled = duel(
      5,
      [&] {
        const TransferPlan again = planAgain(groups, destination);
        if (!again.files.empty()) fmt::print("unexpected: {} files are new\n", again.files.size());
      },
      [&] { shell("find '" + destination + "' -type f -printf '%s %p\\n' > /dev/null"); });
  print({"\"only new\" over 100,000 files that are there : find -printf", time(duelled.ours),
         time(duelled.theirs), duelled.ratio(), 1.5});
  const auto before = bytesRead();
  planAgain(groups, destination);
  const auto markerBytes =
      std::filesystem::file_size(destination + "/" + DestinationMarker::fileName(phoneHash));
  fmt::print("  bytes read meanwhile: {}, of them the marker: {}\n", bytesRead() - before,
             markerBytes);
  printStages(groups, destination);
  std::filesystem::remove_all(destination);
}

}  // namespace tavrix::bench
