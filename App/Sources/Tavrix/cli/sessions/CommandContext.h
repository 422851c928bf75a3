#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "cli/call/ExitStatus.h"
#include "cli/call/Invocation.h"
#include "cli/call/Surroundings.h"
#include "foundation/Log.h"
#include "settings/Settings.h"
#include "sources/PictureSource.h"

namespace tavrix::cli {

class ResultPrinter;

/// The source of a call and the findings of reading it.
struct SourceFindings {
  /// Opened on first use and kept, so that its kind stays the same if it is unplugged later.
  std::unique_ptr<PictureSource> source;
  std::uint64_t unreadFolders = 0;  ///< folders whose files are missing from the catalogue
};

/// The call, its settings and everything else that a command works with.
struct CommandContext {
  const Invocation& call;
  const Surroundings& surroundings;
  const Settings& settings;
  ResultPrinter& printer;
  Log& log;
  SourceFindings& source;

  Language language() const { return call.language; }
  /// Writes a sentence on a line of its own to standard error.
  void warn(const std::string& sentence) const {
    surroundings.err.write("tavrix: " + sentence + '\n');
  }
};

}  // namespace tavrix::cli
