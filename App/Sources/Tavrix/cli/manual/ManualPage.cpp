#include "cli/manual/ManualPage.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/help/Help.h"
#include "cli/help/HelpLayout.h"
#include "cli/help/HelpTexts.h"
#include "cli/manual/CommandFacts.h"
#include "cli/manual/ManualTexts.h"

namespace tavrix::cli {
namespace {

using Kind = HelpPart::Kind;
using Parts = std::vector<HelpPart>;

/// The page indents examples by 11 columns.
constexpr int exampleColumns = 80 - 11;
/// The help indents them by 2.
constexpr int helpIndent = 2;

/// Returns the text with the characters escaped that scdoc would read as marks.
std::string escaped(std::string_view text) {
  constexpr std::string_view marks = "\\*_#[]|`~^<>";
  std::string result;
  for (const char c : text) {
    if (marks.find(c) != marks.npos || (result.empty() && c == '-')) result += '\\';
    result += c;
  }
  return result;
}

std::string section(Language language, const Sentence<>& title) {
  return fmt::format("\n# {}\n\n", say(language, title));
}

/// A term and its description below.
std::string entry(std::string_view term, std::string_view text) {
  return fmt::format("*{}*\n\t{}\n\n", escaped(term), escaped(text));
}

bool isExample(const HelpPart& part) { return part.kind == Kind::example; }

std::string exampleText(const Parts& parts) {
  std::string text = "```\n";
  for (const HelpPart& part : parts) {
    const std::string example = exampleLines(part, exampleColumns + helpIndent);
    for (std::size_t at = 0; at < example.size();) {
      const std::size_t end = example.find('\n', at) + 1;
      for (const char c : example.substr(at + helpIndent, end - at - helpIndent)) {
        // A backslash escapes what follows even here.
        text += c == '\\' ? "\\\\" : std::string{c};
      }
      at = end;
    }
  }
  return text + "```\n\n";
}

std::string partText(const HelpPart& part) {
  switch (part.kind) {
    case Kind::command:
    case Kind::item:
      return part.text.empty() ? fmt::format("- {}\n", escaped(part.term))
                               : entry(part.term, part.text);
    case Kind::paragraph:
      return escaped(part.text) + "\n\n";
    case Kind::blank:
      return "\n";
    case Kind::example:
      break;
  }
  return {};
}

/// Returns parts of a help text; consecutive examples form one block.
std::string partsText(const Parts& parts) {
  std::string text;
  for (auto part = parts.begin(); part != parts.end();) {
    const auto end = std::find_if_not(part, parts.end(), isExample);
    if (end != part) {
      text += exampleText({part, end});
      part = end;
    } else {
      text += partText(*part++);
    }
  }
  return text;
}

std::string_view in(Language language, const help::HelpText& text) {
  return language == Language::russian ? text.russian : text.english;
}

Parts partsOf(Language language, const help::HelpText& text) {
  return helpParts(in(language, text));
}

std::string synopsis(Language language) {
  return fmt::format("*tavrix* _{}_ _{}_…\n\n*tavrix* help [_COMMAND_|_KEY_]\n",
                     say(language, sentences::manualCommand),
                     say(language, sentences::manualArguments));
}

/// Returns the help of the program without its first sentence, its usage and its examples.
std::string description(Language language) {
  Parts parts = partsOf(language, help::program);
  std::erase_if(parts, [](const HelpPart& part) { return isExample(part); });
  const auto isTitle = [](const HelpPart& part) {
    return part.text == "Examples:" || part.text == "Примеры:";
  };
  std::erase_if(parts, isTitle);
  constexpr std::ptrdiff_t introduction = 4;
  parts.erase(parts.begin(), parts.begin() + introduction);
  return partsText(parts);
}

std::string commands(Language language) {
  std::string text;
  std::vector<const help::HelpText*> seen;
  for (const CommandSpec& command : commandTable()) {
    if (std::ranges::find(seen, command.help) != seen.end()) continue;
    seen.push_back(command.help);
    text += fmt::format("## {}\n\n", command.group.empty() ? command.name : command.group);
    text += partsText(helpParts(commandText(language, *command.help)));
  }
  return text;
}

/// Returns the items of the common options, or what follows them.
std::string commonOptionsText(Language language, bool isAboutItems) {
  Parts parts = partsOf(language, help::commonOptions);
  const auto isItem = [](const HelpPart& part) { return part.kind == Kind::item; };
  std::erase_if(parts, [&](const HelpPart& part) { return part.text.ends_with(':'); });
  std::erase_if(parts, [&](const HelpPart& part) { return isItem(part) != isAboutItems; });
  return partsText(parts);
}

std::string settings(Language language) {
  std::string text;
  for (const SettingDescription& setting : documentedSettings()) {
    std::string about = say(language, sentences::manualSetting, say(language, setting.meaning),
                            valuesText(language, setting), initialText(language, setting));
    if (setting.isKept) about += ' ' + say(language, sentences::manualKept);
    text += entry(setting.key, about);
  }
  return text;
}

template <std::size_t count>
std::string entries(Language language, const sentences::ManualEntry (&all)[count]) {
  std::string text;
  for (const auto& each : all) text += entry(each.name, say(language, each.meaning) + ".");
  return text;
}

std::string examples(Language language) {
  Parts parts = partsOf(language, help::program);
  std::erase_if(parts, [](const HelpPart& part) { return !isExample(part); });
  return exampleText(parts);
}

}  // namespace

std::string manualPage(Language language, std::string_view version) {
  const auto title = [&](const Sentence<>& sentence) { return section(language, sentence); };
  return fmt::format("tavrix(1) \"Tavrix {}\" \"{}\"\n", version,
                     say(language, sentences::manualHeader)) +
         title(sentences::sectionName) + "tavrix - " + say(language, sentences::manualName) + '\n' +
         title(sentences::sectionSynopsis) + synopsis(language) +
         title(sentences::sectionDescription) + description(language) +
         title(sentences::sectionCommands) + commands(language) + title(sentences::sectionOptions) +
         commonOptionsText(language, true) + title(sentences::sectionSettings) +
         settings(language) + title(sentences::sectionExitStatus) +
         commonOptionsText(language, false) + title(sentences::sectionEnvironment) +
         entries(language, sentences::manualVariables) + title(sentences::sectionFiles) +
         entries(language, sentences::manualFiles) + title(sentences::sectionExamples) +
         examples(language);
}

}  // namespace tavrix::cli
