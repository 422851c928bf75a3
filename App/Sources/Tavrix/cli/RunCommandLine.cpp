#include <algorithm>

#include "PersistedSettings.h"
#include "SettingKeys.h"
#include "cli/CliSentences.h"
#include "cli/Commands.h"
#include "cli/Failures.h"
#include "cli/FolderSource.h"
#include "cli/Help.h"
#include "cli/JsonPrinter.h"
#include "cli/PlaceSentences.h"
#include "cli/StoredSettings.h"
#include "cli/TextPrinter.h"
#include "model/GroupsDebug.h"

namespace tavrix::cli {
namespace {

/// Writes lines for whoever watches the program at work, who may know the person's paths.
class StandardErrorLog : public Log {
 public:
  StandardErrorLog(TextSink& sink, bool isTerminal) : sink_(sink), isTerminal_(isTerminal) {}
  bool showsPrivateFields() const override { return true; }
  void write(std::string_view line) override {
    const std::lock_guard lock{mutex_};
    // A progress bar may stand in the line.
    sink_.write(fmt::format("{}{}\n", isTerminal_ ? "\r\x1b[K" : "", line));
  }

 private:
  TextSink& sink_;
  bool isTerminal_;
  std::mutex mutex_;
};

/// A variable of the environment that stands for a setting.
struct SettingVariable {
  std::string_view variable;
  std::string_view key;
};
constexpr SettingVariable settingVariables[] = {{"DEMO_TIME_ZONE", "timeZoneID"},
                                                {"DEMO_MODE", "uiMode"}};

bool sets(const Invocation& call, std::string_view key) {
  return std::any_of(call.settings.begin(), call.settings.end(), [&](std::string_view assignment) {
    return assignment.substr(0, assignment.find('=')) == key;
  });
}

/// A variable that the call sets otherwise is not looked at.
Settings settingsFromVariables(Settings settings, const Invocation& call,
                               const Surroundings& surroundings) {
  for (const SettingVariable& each : settingVariables) {
    const auto value = variable(surroundings.environment, each.variable);
    if (!value || sets(call, each.key)) continue;
    auto changed = withSetting(settings, fmt::format("{}={}", each.key, *value));
    if (const auto* const error = std::get_if<SettingError>(&changed)) {
      throw variableFailure(call.language, each.variable, *error);
    }
    settings = std::get<Settings>(std::move(changed));
  }
  return settings;
}

/// Initial values, then those that the person keeps, then the environment's, then the call's.
Settings settingsOf(const Invocation& call, const Surroundings& surroundings) {
  const TimeZone zone = TimeZone::load(surroundings.systemTimeZoneID).value_or(TimeZone::utc());
  Settings settings = initialSettings(zone, surroundings.systemLocaleID);
  if (const UserDefaults* const defaults = surroundings.defaults) {
    settings = PersistedSettings::read(*defaults, {std::move(settings), {}}).settings;
  }
  settings = settingsFromVariables(std::move(settings), call, surroundings);
  for (const std::string& assignment : call.settings) {
    auto changed = withSetting(std::move(settings), assignment);
    if (const auto* const error = std::get_if<SettingError>(&changed)) {
      throw settingFailure(call.language, *error);
    }
    settings = std::get<Settings>(std::move(changed));
  }
  return settings;
}

ExitStatus execute(const CommandContext& context) {
  switch (context.call.command) {
    case Command::catalog:
      return listCatalog(context);
    case Command::bundles:
      return listBundles(context);
    case Command::groups:
      return listGroups(context);
    case Command::places:
      return listPlaces(context);
    case Command::geocacheReset:
      return resetPlaceNames(context);
    case Command::plan:
      return showPlan(context);
    case Command::transfer:
      return transfer(context);
    case Command::history:
      return showHistory(context);
    case Command::verify:
      return verify(context);
    case Command::markerRebuild:
      return rebuildMarker(context);
    case Command::snapshot:
      return writeSnapshot(context);
    case Command::phones:
      return listPhones(context);
    case Command::cacheReset:
      return resetCache(context);
    case Command::cache:
      return showCache(context);
    case Command::templateRender:
      return renderTemplate(context);
    case Command::templatePresets:
      return listPresets(context);
    case Command::templateSanitize:
      return sanitizeText(context);
    case Command::settings:
      return listSettings(context);
    case Command::settingsSet:
      return setSetting(context);
    case Command::settingsReset:
      return resetSettings(context);
    case Command::presets:
      return listTemplates(context);
    case Command::presetsSave:
      return savePreset(context);
    case Command::presetsDelete:
      return deletePreset(context);
  }
  return ExitStatus::usage;
}

ExitStatus executeCall(const Invocation& call, const Surroundings& surroundings) {
  if (surroundings.defaults != nullptr) {
    PersistedSettings::forgetAtLaunch(*surroundings.defaults, isDemo(surroundings.environment));
  }
  tellDefaultsFaults(call.language, surroundings);
  const Settings settings = settingsOf(call, surroundings);
  StandardErrorLog log{surroundings.err, surroundings.errColumns.has_value()};
  TextPrinter text{surroundings.out, call.language, settings.timeZone, surroundings.outColumns};
  JsonPrinter json{surroundings.out};
  ResultPrinter& printer = call.json ? static_cast<ResultPrinter&>(json) : text;
  SourceFindings source;
  const CommandContext context{
      call, surroundings, settings, printer, call.verbose ? log : silentLog(), source};
  const auto state = stateFolder(context);
  if (state && !keepsGroupsDebug(surroundings.environment)) {
    GroupsDebug::remove(*state, context.log);
  }
  const ExitStatus status = execute(context);
  const bool isPartial = status == ExitStatus::done && source.unreadFolders > 0;
  return isPartial ? ExitStatus::someFailed : status;
}

ExitStatus answer(const Request& request, const Surroundings& surroundings) {
  if (const auto* const call = std::get_if<Invocation>(&request)) {
    return executeCall(*call, surroundings);
  }
  if (const auto* const help = std::get_if<HelpRequest>(&request)) {
    surroundings.out.write(helpText(help->language, help->command));
  } else {
    surroundings.out.write("Tavrix " TAVRIX_VERSION "\n" + std::string{placesAttribution});
  }
  return ExitStatus::done;
}

}  // namespace

ExitStatus runCommandLine(const std::vector<std::string>& arguments,
                          const Surroundings& surroundings) {
  std::string destination;
  try {
    const Request request = parseArguments(arguments, surroundings);
    if (const auto* const call = std::get_if<Invocation>(&request)) {
      if (!call->operands.empty()) destination = call->operands.back();
    }
    return answer(request, surroundings);
  } catch (const OutputClosed&) {
    return ExitStatus::done;
  } catch (...) {
    const CommandFailure failure =
        failureOf(languageOf(arguments, surroundings), destination, std::current_exception());
    surroundings.err.write("tavrix: " + failure.sentence() + '\n');
    return failure.status();
  }
}

}  // namespace tavrix::cli
