#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "cli/call/ExitStatus.h"
#include "cli/call/Invocation.h"
#include "cli/call/Surroundings.h"
#include "cli/printing/Messages.h"
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
  /// Why places have no names, until the user is told. An error that ends the command stands alone.
  std::optional<std::string> placesFault{};
  /// Called with the obstacle if the phone is not ready. Returns true to read again; returns false
  /// if a stop was requested. If empty, the reading fails instead.
  std::function<bool(const std::string& obstacle)> awaitPhone{};
};

/// The call, its settings and everything else that a command works with.
struct CommandContext {
  const Invocation& call;
  const Surroundings& surroundings;
  const Settings& settings;
  ResultPrinter& printer;
  Log& log;
  SourceFindings& source;
  const Messages& messages;  ///< standard error of the call

  Language language() const { return call.language; }
  void warn(const std::string& sentence) const { messages.warn(sentence); }
  void note(const std::string& sentence) const { messages.note(sentence); }
};

}  // namespace tavrix::cli
