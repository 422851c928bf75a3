#pragma once

#include <string>
#include <vector>

#include "cli/CommandTable.h"
#include "cli/printing/SettingDescription.h"

namespace tavrix::cli {

/// A word that a shell offers, and its meaning in English in one line, which may be empty.
struct OfferedWord {
  std::string word;
  std::string meaning{};
};

/// Returns the first words of all commands, each once, in the order of the table.
std::vector<OfferedWord> firstWords();
/// Returns the second words of the commands that begin with `word`.
std::vector<OfferedWord> secondWords(std::string_view word);
/// Returns the options of a command, the common ones last.
std::vector<OfferedWord> optionsOf(const CommandSpec& command);

/// Returns all settings with the initial values of an English machine in UTC.
std::vector<SettingDescription> documentedSettings();

}  // namespace tavrix::cli
