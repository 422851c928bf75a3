#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "cli/Surroundings.h"
#include "foundation/Sentence.h"

namespace tavrix::cli {

enum class Command {
  catalog,
  bundles,
  groups,
  places,
  geocacheReset,
  plan,
  transfer,
  history,
  verify,
  markerRebuild,
  snapshot,
  phones,
  cacheReset,
  cache,
  templateRender,
  templatePresets,
  templateSanitize,
  settings,
  settingsSet,
  settingsReset,
  presets,
  presetsSave,
  presetsDelete,
};

/// What `history` is asked for.
struct HistoryOptions {
  std::optional<std::string> outcome;
  std::optional<std::string> phone;
  std::optional<std::string> destination;
  std::optional<std::string> path;
  std::optional<std::string> asset;
  bool deletes = false;
};

/// A call of one command, checked for its form alone.
struct Invocation {
  Command command = Command::catalog;
  std::vector<std::string> operands;  ///< as many as the command takes, optional ones aside
  bool json = false;
  bool verbose = false;
  bool explain = false;  ///< why folders were cut where they were
  Language language = Language::russian;
  std::optional<std::string> stateFolder;
  std::vector<std::string> settings;  ///< "KEY=VALUE", in their order
  std::optional<std::string> deviceName;
  bool writeChecksums = false;
  bool resetsAll = false;                   ///< every setting
  std::optional<std::string> nameTemplate;  ///< JSON
  std::optional<std::string> context;       ///< JSON
  HistoryOptions history;

  const std::string& source() const { return operands.at(0); }
};

/// A call for help; without a command, on all of them.
struct HelpRequest {
  std::optional<Command> command;
  Language language = Language::russian;
};

struct VersionRequest {};

using Request = std::variant<Invocation, HelpRequest, VersionRequest>;

/// The language that the arguments ask for, whatever else is wrong with them; without that the one
/// that the person keeps, else Russian.
Language languageOf(const std::vector<std::string>& arguments, const Surroundings& surroundings);

/// Reads the arguments (without the program's own name). Where the environment names a demo folder,
/// the source may be left out. Throws CommandFailure.
Request parseArguments(const std::vector<std::string>& arguments, const Surroundings& surroundings);

}  // namespace tavrix::cli
