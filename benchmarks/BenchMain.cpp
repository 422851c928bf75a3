// Measures the program against yardsticks on the same machine, alternately within one run: shared
// machines are noisy, but ratios are stable. The arguments select benchmarks: start pipeline
// grouping model only-new copying packing verify history metadata phone places stills thumbnails
// videos.

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Benches.h"
#include "Measure.h"

namespace {

/// The exit status if a row missed its target; 1 and 2 mean that a benchmark could not run.
constexpr int missedStatus = 3;

}  // namespace

int main(int count, char** values) {
  const std::vector<std::string> chosen{values + 1, values + count};
  const auto isChosen = [&](const char* name) {
    return chosen.empty() || std::find(chosen.begin(), chosen.end(), name) != chosen.end();
  };
  const std::string folder =
      std::filesystem::absolute(std::filesystem::path{values[0]}.parent_path() / "work").string();
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  fmt::print("{:<76} {:>12} {:>12} {:>8} {:>8}\n", "ours : theirs", "ours", "theirs", "ratio",
             "at most");
  if (isChosen("start")) tavrix::bench::benchStart(folder + "/start");
  if (isChosen("pipeline")) tavrix::bench::benchPipeline(folder);
  if (isChosen("grouping")) tavrix::bench::benchGrouping();
  if (isChosen("model")) tavrix::bench::benchModel(folder + "/model");
  if (isChosen("only-new")) tavrix::bench::benchOnlyNew(folder);
  if (isChosen("copying")) tavrix::bench::benchCopying(folder + "/copying");
  if (isChosen("packing")) tavrix::bench::benchPacking(folder + "/packing");
  if (isChosen("verify")) tavrix::bench::benchVerifying(folder + "/verifying");
  if (isChosen("history")) tavrix::bench::benchHistory(folder + "/history");
  if (isChosen("places")) tavrix::bench::benchPlaces(folder);
  if (isChosen("stills")) tavrix::bench::benchStills(folder + "/stills");
  if (isChosen("thumbnails")) tavrix::bench::benchThumbnails(folder + "/thumbnails");
  if (isChosen("metadata")) tavrix::bench::benchMetadata(folder + "/metadata");
  if (isChosen("phone")) tavrix::bench::benchPhone(folder + "/phone");
  if (isChosen("videos")) tavrix::bench::benchVideos(folder + "/videos");
  std::filesystem::remove_all(folder);
  const int missed = tavrix::bench::missedRows();
  if (missed > 0) fmt::print("{} rows missed their target.\n", missed);
  return missed > 0 ? missedStatus : 0;
}
