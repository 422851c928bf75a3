#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/call/ExitStatus.h"
#include "cli/call/Invocation.h"

namespace tavrix::cli {

struct CommandContext;
namespace help {
struct HelpText;
}

/// The values of an option for completion: words separated by spaces, "DIR" or "FILE". Empty if
/// the value is free or there is none.
using ValueHint = std::string_view;

/// An option of every command.
struct CommonOption {
  std::string_view name;  ///< with its dashes
  bool takesValue = false;
  ValueHint hint{};
};

/// An option that belongs to one command. Exactly one of `value`, `flag` and
/// `values` is set.
struct CommandOption {
  /// With its dashes. The name of a flag may contain "=" and a word: "--explain=all".
  std::string_view name;
  /// Returns where the option's value is stored.
  std::optional<std::string>& (*value)(Invocation&) = nullptr;
  /// Returns what the option sets to true.
  bool& (*flag)(Invocation&) = nullptr;
  bool isRequired = false;
  ValueHint hint{};
  /// Returns where the values of an option that can be repeated are stored.
  std::vector<std::string>& (*values)(Invocation&) = nullptr;
};

/// One command of the program: its words, its arguments, its action and its help.
struct CommandSpec {
  std::string_view group;  ///< the word before `name`; empty if there is none
  std::string_view name;
  std::vector<std::string_view> operands;
  ExitStatus (*run)(const CommandContext&) = nullptr;
  const help::HelpText* help = nullptr;  ///< the commands of a group share one text
  std::vector<CommandOption> options{};
  std::size_t optionalOperands = 0;  ///< the last operands that may be left out

  std::size_t requiredOperands() const { return operands.size() - optionalOperands; }
  bool takesSource() const { return !operands.empty() && operands.front() == "SOURCE"; }
  /// Returns the words that call the command, such as "marker rebuild".
  std::string words() const;
};

/// Returns all commands. A new command is one row here.
std::span<const CommandSpec> commandTable();
/// Returns the options of every command in the order of the help.
std::span<const CommonOption> commonOptions();

}  // namespace tavrix::cli
