#include "cli/CommandLine.h"
#include "cli/help/Help.h"
#include "cli/printing/JsonPrinter.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/PlaceSentences.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/SettingWarnings.h"
#include "cli/sessions/Source.h"
#include "cli/sessions/StoredSettings.h"
#include "model/GroupsDebug.h"
#include "settings/PersistedSettings.h"
#include "settings/SettingKeys.h"

namespace tavrix::cli {
namespace {

/// Writes log lines for the user who runs the program; the user may see private fields.
class StandardErrorLog : public Log {
 public:
  explicit StandardErrorLog(const Messages& messages) : messages_(messages) {}
  bool showsPrivateFields() const override { return true; }
  void write(std::string_view line) override { messages_.logLine(line); }

 private:
  const Messages& messages_;
};

/// A variable of the environment and the setting that it sets.
struct SettingVariable {
  std::string_view variable;
  std::string_view key;
};
constexpr SettingVariable settingVariables[] = {{"DEMO_TIME_ZONE", "timeZoneID"},
                                                {"DEMO_MODE", "uiMode"}};

/// Applies the variables. A variable is ignored if the call sets the same setting.
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

/// Returns the settings of a call: initial values, overridden by those that the user keeps, then by
/// those of the environment, then by those of the call.
Settings settingsOf(const Invocation& call, const Surroundings& surroundings) {
  PersistedSettings::Values kept{initialSettings(surroundings), {}};
  if (const UserDefaults* const defaults = surroundings.defaults) {
    kept = PersistedSettings::read(*defaults, std::move(kept));
  }
  Settings settings = settingsFromVariables(std::move(kept.settings), call, surroundings);
  for (const std::string& assignment : call.settings) {
    auto changed = withSetting(std::move(settings), assignment, kept.savedPresets);
    if (const auto* const error = std::get_if<SettingError>(&changed)) {
      throw settingFailure(call.language, *error);
    }
    settings = std::get<Settings>(std::move(changed));
  }
  checkPeriod(call, settings);
  return settings;
}

/// Runs the command. If the table of places is missing, reports that after the command, or before
/// its error: without names of places, folders have other names than the user expects.
ExitStatus runTellingPlacesFault(const CommandSpec& command, const CommandContext& context) {
  try {
    const ExitStatus status = command.run(context);
    tellPlacesFault(context);
    return status;
  } catch (const OutputClosed&) {
    throw;
  } catch (...) {
    tellPlacesFault(context);
    throw;
  }
}

ExitStatus execute(const CommandRequest& request, const Surroundings& surroundings,
                   const Messages& messages) {
  const Invocation& call = request.call;
  if (surroundings.defaults != nullptr) {
    PersistedSettings::forgetAtLaunch(*surroundings.defaults, isDemo(surroundings.environment));
  }
  tellDefaultsFaults(surroundings, messages);
  tellSkippedDefaults(surroundings, messages);
  tellUnknownTimeZone(call, surroundings, messages);
  const Settings settings = settingsOf(call, surroundings);
  StandardErrorLog log{messages};
  TextPrinter text{surroundings.out, call.language, settings.gathering.timeZone,
                   surroundings.outColumns};
  JsonPrinter json{surroundings.out};
  ResultPrinter& printer = call.json ? static_cast<ResultPrinter&>(json) : text;
  SourceFindings source;
  const CommandContext context{
      call, surroundings, settings, printer, call.verbose ? log : silentLog(), source, messages};
  const auto state = stateFolder(context);
  if (state && !keepsGroupsDebug(surroundings.environment)) {
    GroupsDebug::remove(*state, context.log);
  }
  const ExitStatus status = runTellingPlacesFault(*request.command, context);
  const bool isPartial = status == ExitStatus::done && source.unreadFolders > 0;
  return isPartial ? ExitStatus::someFailed : status;
}

ExitStatus answer(const Request& request, const Surroundings& surroundings,
                  const Messages& messages) {
  if (const auto* const call = std::get_if<CommandRequest>(&request)) {
    return execute(*call, surroundings, messages);
  }
  if (const auto* const help = std::get_if<HelpRequest>(&request)) {
    surroundings.out.write(
        helpText(help->language, help->command != nullptr ? help->command->help : nullptr));
  } else {
    surroundings.out.write("Tavrix " TAVRIX_VERSION "\n" + std::string{placesAttribution});
  }
  return ExitStatus::done;
}

}  // namespace

ExitStatus runCommandLine(const std::vector<std::string>& arguments,
                          const Surroundings& surroundings) {
  std::string destination;
  const Messages messages{surroundings.err, messagesForm(arguments, surroundings)};
  try {
    const Request request = parseArguments(arguments, surroundings);
    if (const auto* const call = std::get_if<CommandRequest>(&request)) {
      if (!call->call.operands.empty()) destination = call->call.operands.back();
    }
    return answer(request, surroundings, messages);
  } catch (const OutputClosed&) {
    return ExitStatus::done;
  } catch (...) {
    const CommandFailure failure =
        failureOf(messages.form().language, destination, std::current_exception());
    messages.error(failure.sentence());
    return failure.status();
  }
}

}  // namespace tavrix::cli
