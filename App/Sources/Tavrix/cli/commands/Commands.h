#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Settings.h"
#include "cli/CommandLine.h"
#include "cli/ExitStatus.h"
#include "cli/ResultPrinter.h"
#include "cli/Surroundings.h"
#include "device/OddPaths.h"
#include "device/Phones.h"
#include "foundation/Log.h"
#include "media/MediaAsset.h"

namespace tavrix::cli {

/// What a call has found out about its source.
struct SourceFindings {
  /// The folder that stands for a phone, or that there is none; empty until somebody has looked. A
  /// source that is unplugged meanwhile stays what it was.
  std::optional<std::optional<std::string>> cameraFolder;
  std::uint64_t unreadFolders = 0;    ///< whose files are missing from the catalogue
  std::optional<PhoneOnCable> phone;  ///< of a source on the cable, once it was looked for
  OddPaths oddPaths;                  ///< of its catalogue, once it was read
};

/// What every command works with.
struct CommandContext {
  const Invocation& call;
  const Surroundings& surroundings;
  const Settings& settings;
  ResultPrinter& printer;
  Log& log;
  SourceFindings& source;

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
ExitStatus listSettings(const CommandContext& context);
ExitStatus setSetting(const CommandContext& context);
ExitStatus resetSettings(const CommandContext& context);
ExitStatus listTemplates(const CommandContext& context);
ExitStatus savePreset(const CommandContext& context);
ExitStatus deletePreset(const CommandContext& context);

/// Runs the command line that the arguments (without the program's own name) ask for, errors told
/// included.
ExitStatus runCommandLine(const std::vector<std::string>& arguments,
                          const Surroundings& surroundings);

}  // namespace tavrix::cli
