#include "cli/CommandTable.h"

#include "cli/HelpCommand.h"
#include "cli/commands/Commands.h"
#include "cli/help/HelpTexts.h"
#include "cli/help/PlacesHelpTexts.h"
#include "cli/help/RepairHelpTexts.h"
#include "cli/help/SettingsHelpTexts.h"
#include "cli/help/ThumbnailsHelpTexts.h"
#include "cli/help/VerifyHelpTexts.h"
#include "cli/help/WindowHelpTexts.h"

namespace tavrix::cli {
namespace {

using Text = std::optional<std::string>;

const CommandOption deviceName{"--device-name",
                               [](Invocation& call) -> Text& { return call.deviceName; }};

/// Returns the options of a command that works on a choice of shots, with those of its own.
std::vector<CommandOption> withChoice(std::vector<CommandOption> own = {}) {
  own.insert(
      own.end(),
      {deviceName,
       {.name = "--only", .values = [](Invocation& call) -> auto& { return call.choice.only; }},
       {.name = "--last", .value = [](Invocation& call) -> Text& { return call.choice.last; }},
       {.name = "--since-last",
        .flag = [](Invocation& call) -> bool& { return call.choice.sinceLast; }},
       {.name = "--exclude",
        .values = [](Invocation& call) -> auto& { return call.choice.exclude; }}});
  return own;
}

std::vector<CommandSpec> makeTable() {
  return {
      {"", "catalog", {"SOURCE"}, listCatalog, &help::catalog},
      {"", "bundles", {"SOURCE"}, listBundles, &help::bundles},
      {"",
       "groups",
       {"SOURCE"},
       listGroups,
       &help::groups,
       withChoice(
           {{"--explain", nullptr, [](Invocation& call) -> bool& { return call.explain; }},
            {"--explain=all", nullptr, [](Invocation& call) -> bool& { return call.explainsAll; }},
            {"--accept-suggestions", nullptr,
             [](Invocation& call) -> bool& { return call.acceptsSuggestions; }}})},
      {"", "places", {"SOURCE"}, listPlaces, &help::places},
      {"geocache", "reset", {}, resetPlaceNames, &help::geocache},
      {"",
       "plan",
       {"SOURCE", "DEST"},
       showPlan,
       &help::plan,
       withChoice(
           {{"--files", nullptr, [](Invocation& call) -> bool& { return call.listsFiles; }}})},
      {"",
       "transfer",
       {"SOURCE", "DEST"},
       transfer,
       &help::transfer,
       withChoice(
           {{"--dry-run", nullptr, [](Invocation& call) -> bool& { return call.isRehearsal; }}})},
      {"",
       "history",
       {"RECORD-ID"},
       showHistory,
       &help::history,
       {{"--outcome", [](Invocation& call) -> Text& { return call.history.outcome; }, nullptr,
         false, "all onMac alreadyThere failed optimized"},
        {"--phone", [](Invocation& call) -> Text& { return call.history.phone; }},
        {"--dest", [](Invocation& call) -> Text& { return call.history.destination; }, nullptr,
         false, "DIR"},
        {"--path", [](Invocation& call) -> Text& { return call.history.path; }, nullptr, false,
         "FILE"},
        {"--asset", [](Invocation& call) -> Text& { return call.history.asset; }},
        {"--delete", nullptr, [](Invocation& call) -> bool& { return call.history.deletes; }}},
       1},
      {"",
       "verify",
       {"DEST"},
       verify,
       &help::verify,
       {{"--write-checksums", nullptr,
         [](Invocation& call) -> bool& { return call.writeChecksums; }}}},
      {"", "repair", {"SOURCE", "DEST"}, repair, &help::repair, {deviceName}},
      {"marker", "rebuild", {"SOURCE", "DEST"}, rebuildMarker, &help::marker, {deviceName}},
      {"", "snapshot", {"SOURCE", "OUT-DIR"}, writeSnapshot, &help::snapshot},
      {"",
       "thumbnails",
       {"SOURCE", "OUT-DIR"},
       writeThumbnails,
       &help::thumbnails,
       {{"--size", [](Invocation& call) -> Text& { return call.thumbnails.size; }},
        {"--sheet", [](Invocation& call) -> Text& { return call.thumbnails.sheet; }, nullptr, false,
         "DIR"}}},
      {"", "phones", {}, listPhones, &help::phones},
      {"",
       "window",
       {"SOURCE"},
       openWindow,
       &help::window,
       {{"--destination", [](Invocation& call) -> Text& { return call.windowDestination; }, nullptr,
         false, "DIR"}},
       1},
      {"cache", "reset", {}, resetCache, &help::cache},
      {"", "cache", {}, showCache, &help::cache},
      {"template",
       "render",
       {},
       renderTemplate,
       &help::templates,
       {{"--template", [](Invocation& call) -> Text& { return call.nameTemplate; }, nullptr, true},
        {"--context", [](Invocation& call) -> Text& { return call.context; }, nullptr, true}}},
      {"template", "presets", {}, listPresets, &help::templates},
      {"template", "sanitize", {"TEXT"}, sanitizeText, &help::templates},
      {"settings", "set", {"KEY", "VALUE"}, setSetting, &help::settings, {}, 1},
      {"settings",
       "reset",
       {"KEY"},
       resetSettings,
       &help::settings,
       {{"--all", nullptr, [](Invocation& call) -> bool& { return call.resetsAll; }}},
       1},
      {"",
       "settings",
       {},
       listSettings,
       &help::settings,
       {{"--all", nullptr, [](Invocation& call) -> bool& { return call.describesAll; }}}},
      {"presets", "save", {"NAME", "TEMPLATE"}, savePreset, &help::presets},
      {"presets", "delete", {"NAME"}, deletePreset, &help::presets},
      {"", "presets", {}, listTemplates, &help::presets},
      {"", "help", {"TOPIC", "SUBCOMMAND"}, showHelp, &help::help, {}, 2},
  };
}

}  // namespace

std::string CommandSpec::words() const {
  std::string text{group};
  if (!text.empty()) text += ' ';
  return text.append(name);
}

std::span<const CommonOption> commonOptions() {
  static constexpr CommonOption options[] = {
      {"--json"},
      {"--lang", true, "ru en system"},
      {"--set", true, "KEY=VALUE"},
      {"--state", true, "DIR"},
      {"--progress", true, "bar json none"},
      {"--quiet"},
      {"--verbose"},
      {"--help"},
      {"--version"},
  };
  return options;
}

std::span<const CommandSpec> commandTable() {
  static const std::vector<CommandSpec> table = makeTable();
  return table;
}

}  // namespace tavrix::cli
