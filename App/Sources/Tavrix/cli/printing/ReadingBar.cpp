#include "cli/printing/ReadingBar.h"

#include <cmath>
#include <vector>

#include "cli/sentences/CliSentences.h"
#include "text/Measures.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

/// The speed is not meaningful before this time.
constexpr std::chrono::duration<double> measureTime{1};

/// The ranks of the parts: the time that is left stays longest.
enum ReadingRank { leftFirst, speedNext, hitsLast };

}  // namespace

std::string ReadingBar::text(const MetadataPass::Progress& progress,
                             std::chrono::duration<double> elapsed) const {
  const Language language = line_.form().language;
  const std::string counts =
      say(language, sentences::readingCounts, numberText(language, progress.done()),
          counted(language, progress.total, sentences::filesOfTotal));
  std::vector<ProgressPart> parts;
  if (elapsed >= measureTime && progress.read > 0) {
    const double speed = static_cast<double>(progress.read) / elapsed.count();
    const auto left = static_cast<double>(progress.total - progress.done()) / speed;
    const auto perSecond = static_cast<std::uint64_t>(std::round(speed));
    parts.push_back(
        {say(language, sentences::readingSpeed, counted(language, perSecond, sentences::files)),
         speedNext});
    parts.push_back({say(language, sentences::progressLeft,
                         durationText(std::chrono::seconds{std::llround(std::ceil(left))})),
                     leftFirst});
  }
  if (progress.hits > 0) {
    parts.push_back(
        {say(language, sentences::readingHits, numberText(language, progress.hits)), hitsLast});
  }
  return progressLine(line_.columns(), shareOf(progress.done(), progress.total), counts, parts);
}

void ReadingBar::show(const MetadataPass::Progress& progress,
                      std::chrono::steady_clock::time_point now) {
  if (progress.hits == progress.total) return;
  if (!begunAt_) begunAt_ = now;
  if (!line_.isDue(now)) return;
  line_.write([&] { return text(progress, now - *begunAt_); }, "reading",
              [&](JsonWriter& json) {
                json.field("filesDone", progress.done()).field("filesTotal", progress.total);
                json.field("fromCache", progress.hits);
              });
}

}  // namespace tavrix::cli
