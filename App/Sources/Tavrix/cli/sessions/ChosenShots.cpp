#include "cli/sessions/ChosenShots.h"

#include <algorithm>
#include <charconv>

#include "cli/sentences/ChoiceSentences.h"
#include "cli/sessions/Source.h"
#include "history/RecordedFiles.h"
#include "library/ContinuedFolders.h"
#include "services/HistoryFolder.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

/// Returns the day `count` months earlier, or the last day of that month if it is shorter.
CivilDate monthsBefore(CivilDate day, int count) {
  const CivilDate before = day - std::chrono::months{count};
  return before.ok() ? before : before.year() / before.month() / std::chrono::last;
}

/// Returns the first day of the period `text` that ends with `today`, such as "7d". Returns nullopt
/// for any other text.
std::optional<CivilDate> firstDayOf(std::string_view text, CivilDate today) {
  constexpr int most = 10000;
  int count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  const bool hasUnit = error == std::errc{} && end + 1 == text.data() + text.size();
  if (!hasUnit || count < 1 || count > most) return std::nullopt;
  const std::chrono::sys_days day{today};
  switch (*end) {
    case 'd':
      return day - std::chrono::days{count - 1};
    case 'w':
      return day - std::chrono::days{7 * count - 1};
    case 'm':
      return std::chrono::sys_days{monthsBefore(today, count)} + std::chrono::days{1};
    default:
      return std::nullopt;
  }
}

bool matchesAny(const FileGlob& glob, const std::vector<AssetBundle>& bundles) {
  return std::any_of(bundles.begin(), bundles.end(), [&](const AssetBundle& bundle) {
    return std::any_of(bundle.assets().begin(), bundle.assets().end(),
                       [&](const MediaAsset& asset) { return glob.matches(asset.id()); });
  });
}

bool hasFinishedRun(const CommandContext& context, const PhoneIdentity& phone) {
  auto history = HistoryFolder::open(requiredStateFolder(context), context.log);
  return history && !finishedRuns(history->store(), phone.hash).empty();
}

}  // namespace

Choice choiceOf(const CommandContext& context) {
  const ChoiceOptions& options = context.call.choice;
  Choice choice{.folders = options.only, .from = std::nullopt, .excluded = {}};
  choice.isSinceLast = options.sinceLast;
  for (const std::string& pattern : options.exclude) {
    // Often a variable of a script that was not set: nothing would be left out.
    if (pattern.empty()) {
      throw CommandFailure{ExitStatus::usage, say(context.language(), sentences::globEmpty)};
    }
    choice.excluded.emplace_back(pattern);
  }
  if (!options.last) return choice;
  const CivilDate today = context.settings.gathering.timeZone.dateAt(context.surroundings.now());
  choice.from = firstDayOf(*options.last, today);
  if (!choice.from) {
    throw CommandFailure{ExitStatus::usage,
                         say(context.language(), sentences::badLast, forSentence(*options.last))};
  }
  return choice;
}

StringSet recordedFiles(const CommandContext& context, const PhoneIdentity& phone,
                        const std::vector<AssetBundle>& shots) {
  auto history = HistoryFolder::open(requiredStateFolder(context), context.log);
  return history ? tavrix::recordedFiles(history->store(), phone.hash, shots) : StringSet{};
}

void tellChoice(const CommandContext& context, const PhoneIdentity& phone,
                const std::vector<AssetBundle>& bundles) {
  const Choice choice = choiceOf(context);
  for (const FileGlob& glob : choice.excluded) {
    if (matchesAny(glob, bundles)) continue;
    context.warn(say(context.language(), sentences::globWithoutMatch, forSentence(glob.text())));
  }
  if (choice.isSinceLast && !hasFinishedRun(context, phone)) {
    context.warn(say(context.language(), sentences::noFinishedRun));
  }
}

ChosenPart chosenPart(const CommandContext& context, Library library, Choosing::Folders folders,
                      std::shared_ptr<const TransferPlan> plan) {
  Choice choice = choiceOf(context);
  library.rows = rowsOf(folders);
  if (choice.isEverything()) return {std::move(library), std::move(plan)};
  const PhoneIdentity phone = phoneOf(context);
  tellChoice(context, phone, *library.bundles);
  const Choosing choosing{
      choice, library.clock,
      choice.isSinceLast ? recordedFiles(context, phone, *library.bundles) : StringSet{}};
  choosing.check(folders);
  folders = choosing.partOf(folders);
  if (plan) plan = std::make_shared<const TransferPlan>(partOf(*plan, folders));
  return {partOf(std::move(library), rowsOf(folders)), std::move(plan)};
}

}  // namespace tavrix::cli
