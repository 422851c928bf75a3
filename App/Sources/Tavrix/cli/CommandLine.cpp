#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

#include "cli/CommandTable.h"
#include "cli/call/ExitStatus.h"
#include "cli/call/Nearest.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sessions/StoredSettings.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

struct Flags {
  bool help = false;
  bool version = false;
};

bool takesValue(std::string_view option) {
  const auto isIt = [option](const CommandOption& own) {
    return own.flag == nullptr && own.name == option;
  };
  const auto isCommon = [option](const CommonOption& common) {
    return common.takesValue && common.name == option;
  };
  return std::ranges::any_of(commonOptions(), isCommon) ||
         std::ranges::any_of(commandTable(), [&](const CommandSpec& command) {
           return std::ranges::any_of(command.options, isIt);
         });
}

bool isOption(std::string_view argument) {
  const auto isIt = [argument](const auto& option) { return option.name == argument; };
  return std::ranges::any_of(commonOptions(), isIt) ||
         std::ranges::any_of(commandTable(), [&](const CommandSpec& command) {
           return std::ranges::any_of(command.options, isIt);
         });
}

/// The parser ends a command at "++", so a mark replaces it. The mark contains a zero byte, which
/// no argument of a program can contain.
constexpr std::string_view plusPlus = "++";
constexpr std::string_view plusPlusMark{"++\0", 3};

std::string unmarked(const std::string& argument) {
  return argument == plusPlusMark ? std::string{plusPlus} : argument;
}

/// Returns the name of a flag for the parser, which would take what follows "=" as the flag's
/// value.
std::string parserName(std::string_view flag) {
  std::string name{flag};
  std::ranges::replace(name, '=', '-');
  return name;
}

bool isFlagWithWord(std::string_view argument) {
  return argument.find('=') != argument.npos &&
         std::ranges::any_of(commandTable(), [&](const CommandSpec& command) {
           return std::ranges::any_of(command.options, [&](const CommandOption& option) {
             return option.flag != nullptr && option.name == argument;
           });
         });
}

/// Returns the arguments in a form that the parser reads correctly. For "--x=" the parser would
/// take the next argument as the value, so an empty value is added.
std::vector<std::string> forParser(const std::vector<std::string>& arguments) {
  std::vector<std::string> result;
  bool isValue = false;
  bool isOperand = false;
  for (const std::string& argument : arguments) {
    const bool isFree = !isValue && !isOperand;
    isOperand = isOperand || (isFree && argument == "--");
    isValue = isFree && takesValue(argument);
    const std::string_view option = std::string_view{argument}.substr(0, argument.find('='));
    if (isFree && option.size() + 1 == argument.size() && takesValue(option)) {
      result.insert(result.end(), {std::string{option}, std::string{}});
    } else if (isFree && isFlagWithWord(argument)) {
      result.push_back(parserName(argument));
    } else {
      result.emplace_back(isFree && argument == plusPlus ? plusPlusMark : argument);
    }
  }
  return result;
}

/// One parse of the arguments. The checks and texts of the library are switched off; those here are
/// in the language of the call.
class Parser {
 public:
  explicit Parser(Language language) : language_(language) {
    app_.set_help_flag();
    app_.require_subcommand(0, 1);
    app_.allow_extras();
    app_.fallthrough();
    addCommonOptions();
    addCommands();
  }

  Request parse(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    run(arguments);
    if (flags_.version) return VersionRequest{};
    const CommandSpec* const form = chosenForm();
    if (flags_.help) return help(form);
    checkExtras(form);
    if (form == nullptr) fail(say(language_, sentences::commandMissing));
    call_.language = language_;
    takeOptions(*form);
    completeOperands(*form, surroundings.environment);
    checkFolders(*form);
    checkRequiredOptions(*form);
    return CommandRequest{form, call_};
  }

 private:
  [[noreturn]] void fail(std::string sentence) const {
    throw CommandFailure{ExitStatus::usage, std::move(sentence)};
  }

  void addCommonOptions() {
    app_.add_flag("-h,--help", flags_.help);
    app_.add_flag("--version", flags_.version);
    app_.add_flag("--json", call_.json);
    app_.add_flag("--verbose", call_.verbose);
    app_.add_flag("--quiet", call_.isQuiet);
    addOption(app_, "--progress");
    addOption(app_, "--lang");
    addOption(app_, "--state");
    addRepeated(app_, "--set", call_.settings);
  }

  /// Adds an option with a value that can be given several times.
  static void addRepeated(CLI::App& command, const std::string& name,
                          std::vector<std::string>& values) {
    command.add_option(name, values)->expected(1)->allow_extra_args(false)->take_all();
  }

  /// Adds an option with a value. The parser accepts it several times; checkOnce() rejects that.
  void addOption(CLI::App& command, const std::string& name) {
    command.add_option(name, slot_)->take_all();
  }

  void addCommands() {
    for (const CommandSpec& form : commandTable()) {
      CLI::App* const command = form.group.empty()
                                    ? group(form.name)
                                    : group(form.group)->add_subcommand(std::string{form.name});
      for (const std::string_view operand : form.operands) {
        command->add_option(std::string{operand}, slot_);
      }
      for (const CommandOption& option : form.options) {
        if (option.flag != nullptr) {
          command->add_flag(parserName(option.name), option.flag(call_));
        } else if (option.values != nullptr) {
          addRepeated(*command, std::string{option.name}, option.values(call_));
        } else {
          addOption(*command, std::string{option.name});
        }
      }
      commands_.push_back(command);
    }
  }

  /// Returns the command for a first word; it may have further words and may be a command itself.
  CLI::App* group(std::string_view name) {
    CLI::App*& command = groups_[name];
    if (command == nullptr) {
      command = app_.add_subcommand(std::string{name});
      command->require_subcommand(0, 1);
    }
    return command;
  }

  void run(const std::vector<std::string>& arguments) {
    checkValues(arguments);
    try {
      std::vector<std::string> lastFirst = forParser(arguments);
      std::reverse(lastFirst.begin(), lastFirst.end());
      app_.parse(std::move(lastFirst));
    } catch (const CLI::ArgumentMismatch& mismatch) {
      const std::string text = mismatch.what();
      fail(say(language_, sentences::optionValueMissing, text.substr(0, text.find(':'))));
    } catch (const CLI::ParseError&) {
      fail(say(language_, sentences::argumentsUnclear));
    }
  }

  /// Rejects an option that is followed by another option in place of its value. A value of that
  /// name is given with "=".
  void checkValues(const std::vector<std::string>& arguments) const {
    for (std::size_t i = 0; i + 1 < arguments.size() && arguments[i] != "--"; ++i) {
      if (!takesValue(arguments[i])) continue;
      const std::string& next = arguments[i + 1];
      if (isOption(next) || next == "-h" || next == "--") {
        fail(say(language_, sentences::optionValueMissing, arguments[i]));
      }
      ++i;
    }
  }

  const CommandSpec* chosenForm() const {
    for (std::size_t i = 0; i < commands_.size(); ++i) {
      if (commands_[i]->parsed()) return &commandTable()[i];
    }
    return nullptr;
  }

  Request help(const CommandSpec* form) const {
    if (form != nullptr) return HelpRequest{form, language_};
    // Only the group was given; its commands share one text.
    for (const CommandSpec& each : commandTable()) {
      const auto group = groups_.find(each.group);
      if (group != groups_.end() && group->second->parsed()) {
        return HelpRequest{&each, language_};
      }
    }
    return HelpRequest{nullptr, language_};
  }

  void checkExtras(const CommandSpec* form) const {
    std::vector<std::string> extras = app_.remaining(true);
    std::erase(extras, "--");
    if (extras.empty()) return;
    const std::string first = printable(unmarked(extras.front()));
    if (first.starts_with('-')) {
      const auto meant = nearest(first.substr(0, first.find('=')), optionsOf(form));
      fail(meant ? say(language_, sentences::unknownOptionLike, first, *meant)
                 : say(language_, sentences::unknownOption, first));
    }
    if (form == nullptr) {
      const auto meant = nearest(first, commandWords());
      fail(meant ? say(language_, sentences::unknownCommandLike, first, *meant)
                 : say(language_, sentences::unknownCommand, first));
    }
    fail(say(language_, sentences::operandTooMany, first, form->words()));
  }

  static std::vector<std::string_view> commandWords() {
    std::vector<std::string_view> words;
    for (const CommandSpec& each : commandTable()) {
      words.push_back(each.group.empty() ? each.name : each.group);
    }
    return words;
  }

  static std::vector<std::string_view> optionsOf(const CommandSpec* form) {
    std::vector<std::string_view> options;
    for (const CommonOption& option : commonOptions()) options.push_back(option.name);
    if (form == nullptr) return options;
    for (const CommandOption& option : form->options) options.push_back(option.name);
    return options;
  }

  const CLI::App& commandOf(const CommandSpec& form) const {
    return *commands_[static_cast<std::size_t>(&form - commandTable().data())];
  }

  /// Returns the value of an option or operand, which may be empty. Returns nullopt if it was not
  /// given.
  static std::optional<std::string> given(const CLI::App& command, std::string_view name) {
    const CLI::Option* const option = command.get_option_no_throw(std::string{name});
    if (option == nullptr || option->count() == 0) return std::nullopt;
    return option->results().back();
  }

  void checkOnce(const CLI::App& command, std::string_view name) const {
    const CLI::Option* const option = command.get_option_no_throw(std::string{name});
    if (option != nullptr && option->count() > 1) {
      fail(say(language_, sentences::optionTwice, name));
    }
  }

  void takeOptions(const CommandSpec& form) {
    for (const std::string_view name : {"--lang", "--progress", "--state"}) checkOnce(app_, name);
    const std::string language = given(app_, "--lang").value_or("ru");
    if (!isLanguageChoice(language)) {
      fail(say(language_, sentences::unknownLanguage, printable(language)));
    }
    const std::string progress = given(app_, "--progress").value_or("bar");
    const auto progressForm = progressFormOf(progress);
    if (!progressForm) fail(say(language_, sentences::unknownProgress, printable(progress)));
    call_.progress = *progressForm;
    call_.stateFolder = given(app_, "--state");
    for (const CommandOption& option : form.options) {
      if (option.value == nullptr) continue;
      checkOnce(commandOf(form), option.name);
      option.value(call_) = given(commandOf(form), option.name);
    }
  }

  /// Returns the given operands of a command, in the order of the command.
  std::vector<std::string> givenOperands(const CommandSpec& form) const {
    std::vector<std::string> operands;
    for (const std::string_view operand : form.operands) {
      if (const auto text = given(commandOf(form), operand)) operands.push_back(unmarked(*text));
    }
    return operands;
  }

  void completeOperands(const CommandSpec& form, const Environment& environment) {
    call_.operands = givenOperands(form);
    const auto demoFolder = variable(environment, "DEMO_DIR");
    const bool isDemo = variable(environment, "DEBUG_SNAPSHOT") == "1" && demoFolder;
    if (form.takesSource() && isDemo && call_.operands.size() + 1 == form.operands.size()) {
      call_.operands.insert(call_.operands.begin(), *demoFolder);
    }
    if (call_.operands.size() < form.requiredOperands()) {
      fail(say(language_, sentences::operandMissing, form.operands[call_.operands.size()],
               form.words()));
    }
  }

  /// Throws CommandFailure for an empty folder name, which would mean the root folder.
  void checkFolders(const CommandSpec& form) const {
    for (std::size_t i = 0; i < call_.operands.size(); ++i) {
      const std::string_view operand = form.operands[i];
      const bool isFolder = operand == "SOURCE" || operand == "DEST" || operand == "OUT-DIR";
      if (isFolder && call_.operands[i].empty()) {
        fail(say(language_, sentences::folderEmpty, form.operands[i], form.words()));
      }
    }
    if (form.takesSource() && !call_.operands.empty() && call_.source() == "phone:") {
      fail(say(language_, sentences::serialEmpty, form.words()));
    }
    if (call_.stateFolder == "") {
      fail(say(language_, sentences::folderEmpty, "--state", form.words()));
    }
  }

  void checkRequiredOptions(const CommandSpec& form) {
    for (const CommandOption& option : form.options) {
      if (option.isRequired && !option.value(call_)) {
        fail(say(language_, sentences::operandMissing, option.name, form.words()));
      }
    }
  }

  Language language_;
  CLI::App app_;
  Flags flags_;
  std::string slot_;  ///< unused: the values are read from the parser
  Invocation call_;
  std::vector<CLI::App*> commands_;
  std::map<std::string_view, CLI::App*> groups_;
};

}  // namespace

Language languageOf(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
  std::string chosen = keptLanguage(surroundings.defaults).value_or("system");
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    constexpr std::string_view option = "--lang";
    if (arguments[i] == option && i + 1 < arguments.size()) chosen = arguments[i + 1];
    if (arguments[i].starts_with("--lang=")) {
      chosen = arguments[i].substr(option.size() + 1);
    }
  }
  return languageOfChoice(chosen, surroundings.messagesLocaleID);
}

Messages::Form messagesForm(const std::vector<std::string>& arguments,
                            const Surroundings& surroundings) {
  Messages::Form form{.columns = surroundings.errColumns,
                      .language = languageOf(arguments, surroundings)};
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    constexpr std::string_view option = "--progress";
    std::optional<std::string> chosen;
    if (arguments[i] == option && i + 1 < arguments.size()) chosen = arguments[i + 1];
    if (arguments[i].starts_with("--progress=")) chosen = arguments[i].substr(option.size() + 1);
    if (chosen) form.progress = progressFormOf(*chosen).value_or(form.progress);
    form.isQuiet = form.isQuiet || arguments[i] == "--quiet";
  }
  return form;
}

Request parseArguments(const std::vector<std::string>& arguments,
                       const Surroundings& surroundings) {
  return Parser{languageOf(arguments, surroundings)}.parse(arguments, surroundings);
}

}  // namespace tavrix::cli
