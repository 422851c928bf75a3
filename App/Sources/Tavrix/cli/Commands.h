#pragma once

#include <optional>
#include <string>

#include "Settings.h"
#include "cli/CommandLine.h"
#include "cli/ExitStatus.h"
#include "cli/ResultPrinter.h"
#include "cli/Surroundings.h"
#include "device/Phones.h"
#include "foundation/Log.h"
#include "media/MediaAsset.h"

namespace tavrix::cli {

/// What every command works with.
struct CommandContext {
  const Invocation& call;
  const Surroundings& surroundings;
  const Settings& settings;
  ResultPrinter& printer;
  Log& log;
  std::optional<PhoneOnCable>& phone;  ///< of a source on the cable, once it was looked for

  Language language() const { return call.language; }
};

/// The commands. Each prints its result and throws what stops it.

ExitStatus listCatalog(const CommandContext& context);
ExitStatus listBundles(const CommandContext& context);
ExitStatus listGroups(const CommandContext& context);
ExitStatus listPlaces(const CommandContext& context);
ExitStatus resetPlaceNames(const CommandContext& context);
ExitStatus showPlan(const CommandContext& context);
ExitStatus transfer(const CommandContext& context);
ExitStatus showHistory(const CommandContext& context);
ExitStatus verify(const CommandContext& context);
ExitStatus rebuildMarker(const CommandContext& context);
ExitStatus writeSnapshot(const CommandContext& context);
ExitStatus listPhones(const CommandContext& context);
ExitStatus showCache(const CommandContext& context);
ExitStatus resetCache(const CommandContext& context);
ExitStatus renderTemplate(const CommandContext& context);
ExitStatus listPresets(const CommandContext& context);
ExitStatus sanitizeText(const CommandContext& context);

/// Runs the command line that the arguments (without the program's own name) ask for, errors told
/// included.
ExitStatus runCommandLine(const std::vector<std::string>& arguments,
                          const Surroundings& surroundings);

}  // namespace tavrix::cli
