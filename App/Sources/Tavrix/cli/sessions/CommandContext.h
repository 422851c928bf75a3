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

/// The source of a call and what reading it found.
struct SourceFindings {
  /// Opened by the first use, so that a source that is unplugged later stays what it was.
  std::unique_ptr<PictureSource> source;
  std::uint64_t unreadFolders = 0;  ///< whose files are missing from the catalogue
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
  /// Writes a sentence on a line of its own to standard error.
  void warn(const std::string& sentence) const {
    surroundings.err.write("tavrix: " + sentence + '\n');
  }
};

}  // namespace tavrix::cli
