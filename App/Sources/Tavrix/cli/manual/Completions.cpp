#include "cli/manual/Completions.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <map>

#include "cli/manual/CommandFacts.h"
#include "cli/manual/ShellScripts.h"

namespace tavrix::cli {
namespace {

/// A table that a script looks up by a word: the lines that it prints for each.
using Lookup = std::vector<std::pair<std::string, std::vector<std::string>>>;

/// Writes the functions of one shell.
struct Shell {
  /// Returns a function that prints lines.
  std::function<std::string(const std::string& name, const std::vector<std::string>& lines)> list;
  /// Returns a function that prints the lines of its argument.
  std::function<std::string(const std::string& name, const Lookup& lookup)> lookup;
};

/// Puts a text into single quotation marks.
std::string quoted(const std::string& text, std::string_view escapedMark) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string{escapedMark} : std::string{c};
  return result + "'";
}

std::string printed(const std::vector<std::string>& lines, std::string_view escapedMark) {
  std::string text = "printf '%s\\n'";
  for (const std::string& line : lines) text += " \\\n    " + quoted(line, escapedMark);
  return text;
}

/// The functions of bash and zsh.
Shell posixShell() {
  constexpr std::string_view mark = "'\\''";
  return {[=](const std::string& name, const std::vector<std::string>& lines) {
            return fmt::format("{}() {{\n  {}\n}}\n", name, printed(lines, mark));
          },
          [=](const std::string& name, const Lookup& lookup) {
            std::string cases;
            for (const auto& [word, lines] : lookup) {
              cases += fmt::format("  {}) {} ;;\n", quoted(word, mark), printed(lines, mark));
            }
            return fmt::format("{}() {{\n  case $1 in\n{}  esac\n}}\n", name, cases);
          }};
}

Shell fishShell() {
  constexpr std::string_view mark = "\\'";
  return {[=](const std::string& name, const std::vector<std::string>& lines) {
            return fmt::format("function {}\n  {}\nend\n", name, printed(lines, mark));
          },
          [=](const std::string& name, const Lookup& lookup) {
            std::string cases;
            for (const auto& [word, lines] : lookup) {
              cases +=
                  fmt::format("    case {}\n      {}\n", quoted(word, mark), printed(lines, mark));
            }
            return fmt::format("function {}\n  switch $argv[1]\n{}  end\nend\n", name, cases);
          }};
}

/// Returns "word<tab>meaning" for each.
std::vector<std::string> linesOf(const std::vector<OfferedWord>& words) {
  std::vector<std::string> lines;
  for (const OfferedWord& each : words) lines.push_back(each.word + '\t' + each.meaning);
  return lines;
}

std::vector<std::string> settingLines(const std::function<bool(const SettingDescription&)>& isIn) {
  std::vector<std::string> lines;
  for (const SettingDescription& setting : documentedSettings()) {
    if (!isIn(setting)) continue;
    lines.push_back(setting.key + '\t' + say(Language::english, setting.meaning));
  }
  return lines;
}

Lookup secondWordTable() {
  Lookup table;
  for (const OfferedWord& first : firstWords()) {
    const auto second = secondWords(first.word);
    if (!second.empty()) table.emplace_back(first.word, linesOf(second));
  }
  return table;
}

/// The options by command; those of every command also stand for no word yet and for a first word
/// that is no command itself.
Lookup optionTable() {
  const std::vector<std::string> common = linesOf(optionsOf(CommandSpec{}));
  Lookup table{{"", common}};
  for (const CommandSpec& command : commandTable()) {
    table.emplace_back(command.words(), linesOf(optionsOf(command)));
  }
  for (const OfferedWord& first : firstWords()) {
    const bool isCommand = std::ranges::any_of(
        commandTable(), [&](const CommandSpec& command) { return command.words() == first.word; });
    if (!isCommand) table.emplace_back(first.word, common);
  }
  return table;
}

Lookup operandTable() {
  Lookup table;
  for (const CommandSpec& command : commandTable()) {
    if (command.operands.empty()) continue;
    table.emplace_back(command.words(),
                       std::vector<std::string>{command.operands.begin(), command.operands.end()});
  }
  return table;
}

/// The hint of every option with a value; a free value has the hint "ANY".
Lookup valueTable() {
  std::map<std::string, std::string> hints;
  const auto add = [&](std::string_view name, ValueHint hint) {
    hints.emplace(name, hint.empty() ? "ANY" : hint);
  };
  for (const CommonOption& option : commonOptions()) {
    if (option.takesValue) add(option.name, option.hint);
  }
  for (const CommandSpec& command : commandTable()) {
    for (const CommandOption& option : command.options) {
      if (option.value != nullptr) add(option.name, option.hint);
    }
  }
  Lookup table;
  for (const auto& [name, hint] : hints) table.emplace_back(name, std::vector{hint});
  return table;
}

Lookup choiceTable() {
  Lookup table;
  for (const SettingDescription& setting : documentedSettings()) {
    if (setting.choices.empty()) continue;
    table.emplace_back(setting.key,
                       std::vector<std::string>{setting.choices.begin(), setting.choices.end()});
  }
  return table;
}

/// Returns the script with its first part replaced by the tables.
std::string completion(std::string_view head, std::string_view script, const Shell& shell) {
  return std::string{head} +
         "# Made from the program's table of commands; changes here are lost.\n" +
         shell.list("_tavrix_first_words", linesOf(firstWords())) +
         shell.lookup("_tavrix_second_words", secondWordTable()) +
         shell.lookup("_tavrix_operands", operandTable()) +
         shell.lookup("_tavrix_options", optionTable()) +
         shell.lookup("_tavrix_values", valueTable()) +
         shell.list("_tavrix_settings", settingLines([](const SettingDescription& setting) {
                      return setting.isForOneCall;
                    })) +
         shell.list("_tavrix_kept_settings", settingLines([](const SettingDescription& setting) {
                      return setting.isKept;
                    })) +
         shell.lookup("_tavrix_choices", choiceTable()) + std::string{script};
}

}  // namespace

std::string bashCompletion() {
  return completion("# Completion of tavrix for bash.\n", bashScript, posixShell());
}

std::string zshCompletion() { return completion("#compdef tavrix\n", zshScript, posixShell()); }

std::string fishCompletion() {
  return completion("# Completion of tavrix for fish.\n", fishScript, fishShell());
}

}  // namespace tavrix::cli
