#include "cli/HelpCommand.h"

#include <algorithm>

#include "cli/CommandTable.h"
#include "cli/call/Nearest.h"
#include "cli/help/Help.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/SettingMeanings.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/SettingDescriptions.h"
#include "cli/sessions/StoredSettings.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

HelpTopic::Texts textsOf(const help::HelpText* help) {
  return {helpText(Language::russian, help), helpText(Language::english, help)};
}

/// Returns the command of these words, or any of the group of that name, whose commands share one
/// text. Returns nullptr if there is none.
const CommandSpec* commandOf(std::string_view words) {
  const auto table = commandTable();
  auto found = std::ranges::find(table, words, &CommandSpec::words);
  if (found == table.end()) found = std::ranges::find(table, words, &CommandSpec::group);
  return found == table.end() || words.empty() ? nullptr : &*found;
}

std::optional<SettingDescription> settingOf(const CommandContext& context, std::string_view key) {
  const auto settings = describeSettings(initialSettings(context.surroundings));
  const auto found = std::ranges::find(settings, key, &SettingDescription::key);
  return found == settings.end() ? std::nullopt : std::optional{*found};
}

/// Returns all words that have a help.
std::vector<std::string> topics(const CommandContext& context) {
  std::vector<std::string> words;
  for (const CommandSpec& command : commandTable()) {
    words.push_back(command.words());
    words.emplace_back(command.group);
  }
  for (const auto& setting : describeSettings(initialSettings(context.surroundings))) {
    words.push_back(setting.key);
  }
  std::erase(words, "");
  return words;
}

[[noreturn]] void failUnknown(const CommandContext& context, const std::string& topic) {
  const auto meant = nearest(topic, topics(context));
  const std::string shown = forSentence(topic);
  failUsage(meant ? say(context.language(), sentences::unknownTopicLike, shown, *meant)
                  : say(context.language(), sentences::unknownTopic, shown));
}

}  // namespace

ExitStatus showHelp(const CommandContext& context) {
  std::string topic;
  for (const std::string& word : context.call.operands) {
    topic.append(topic.empty() ? "" : " ").append(word);
  }
  HelpTopic help;
  if (const CommandSpec* const command = commandOf(topic)) help.texts = textsOf(command->help);
  if (context.call.operands.empty()) help.texts = textsOf(nullptr);
  help.setting = settingOf(context, topic);
  if (!help.texts && !help.setting) failUnknown(context, topic);
  context.printer.help(help);
  return ExitStatus::done;
}

}  // namespace tavrix::cli
