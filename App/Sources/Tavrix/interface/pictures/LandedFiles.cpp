#include "interface/pictures/LandedFiles.h"

#include <algorithm>
#include <span>

#include "services/HistoryFolder.h"

namespace tavrix::window {
namespace {

constexpr std::size_t few = 64;

/// Returns the last few files that the run has finished, in the order of the plan.
std::span<const PlannedFile> lastFiles(const AppModel& model) {
  const Run* const run = model.run();
  const auto& progress = model.state().progress;
  if (run == nullptr || run->plan == nullptr || !progress) return {};
  const std::vector<PlannedFile>& files = run->plan->files;
  // After a pause the progress may count other files than the plan.
  if (progress->filesTotal != files.size()) return {};
  const std::size_t done = std::min<std::size_t>(progress->filesDone, files.size());
  const std::size_t first = done - std::min(done, few);
  return std::span{files}.subspan(first, done - first);
}

}  // namespace

const PlannedFile* lastLandedPicture(const AppModel& model) {
  const auto files = lastFiles(model);
  const auto last = std::find_if(files.rbegin(), files.rend(),
                                 [](const PlannedFile& file) { return file.isPicture; });
  return last == files.rend() ? nullptr : &*last;
}

std::optional<std::string> landedPath(const AppModel& model, const MediaAsset& asset) {
  const auto files = lastFiles(model);
  const auto found = std::ranges::find_if(
      files, [&](const PlannedFile& file) { return file.asset.id() == asset.id(); });
  // The size of a converted file cannot show that it is the right one.
  if (found == files.end() || isConverted(found->conversion)) return std::nullopt;
  return absolutePath(model.run()->destination) + "/" + found->relativePath;
}

}  // namespace tavrix::window
