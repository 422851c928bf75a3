#include "cli/manual/CommandFacts.h"

#include <algorithm>

#include "cli/help/Help.h"
#include "cli/help/HelpLayout.h"
#include "cli/help/HelpTexts.h"
#include "cli/sessions/SettingDescriptions.h"

namespace tavrix::cli {
namespace {

/// Returns a sentence without its last stop.
std::string headline(std::string text) {
  if (text.ends_with('.')) text.pop_back();
  return text;
}

/// Returns the description of the first part whose term is `term`, or begins with it and a space.
std::string describedAs(std::string_view help, HelpPart::Kind kind, const std::string& term) {
  for (const HelpPart& part : helpParts(help)) {
    const bool isMeant = part.term == term || part.term.starts_with(term + " ");
    if (part.kind == kind && isMeant) return headline(part.text);
  }
  return {};
}

std::string textOf(const CommandSpec& command) {
  return commandText(Language::english, *command.help);
}

std::string meaningOf(const CommandSpec& command) {
  return describedAs(textOf(command), HelpPart::Kind::command, "tavrix " + command.words());
}

std::string meaningOf(const CommandSpec& command, std::string_view option) {
  const std::string name{option};
  const std::string text = textOf(command);
  const std::string own =
      describedAs(text, HelpPart::Kind::command, "tavrix " + command.words() + " " + name);
  return own.empty() ? describedAs(text, HelpPart::Kind::item, name) : own;
}

}  // namespace

std::vector<OfferedWord> firstWords() {
  std::vector<OfferedWord> words;
  for (const CommandSpec& command : commandTable()) {
    const std::string word{command.group.empty() ? command.name : command.group};
    const auto known = std::ranges::find(words, word, &OfferedWord::word);
    if (known == words.end()) {
      words.push_back({word, meaningOf(command)});
    } else if (command.group.empty()) {
      // The command itself says more about the word than its first second word.
      known->meaning = meaningOf(command);
    }
  }
  return words;
}

std::vector<OfferedWord> secondWords(std::string_view word) {
  std::vector<OfferedWord> words;
  for (const CommandSpec& command : commandTable()) {
    if (command.group == word) words.push_back({std::string{command.name}, meaningOf(command)});
  }
  return words;
}

std::vector<OfferedWord> optionsOf(const CommandSpec& command) {
  std::vector<OfferedWord> options;
  for (const CommandOption& option : command.options) {
    options.push_back({std::string{option.name}, meaningOf(command, option.name)});
  }
  for (const CommonOption& option : commonOptions()) {
    const std::string name{option.name};
    options.push_back({name, describedAs(help::commonOptions.english, HelpPart::Kind::item, name)});
  }
  return options;
}

std::vector<SettingDescription> documentedSettings() {
  return describeSettings(tavrix::initialSettings(TimeZone::utc(), "en_US"));
}

}  // namespace tavrix::cli
