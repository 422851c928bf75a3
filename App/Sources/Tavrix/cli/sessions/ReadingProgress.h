#pragma once

#include <chrono>
#include <optional>

#include "cli/printing/ProgressBar.h"
#include "cli/sessions/CommandContext.h"
#include "transfer/ReadingMeter.h"

namespace tavrix::cli {

/// A progress bar for a command that reads many files, where there is a terminal to draw it on.
class ReadingProgress {
 public:
  explicit ReadingProgress(const CommandContext& context) {
    const Surroundings& around = context.surroundings;
    if (around.errColumns) bar_.emplace(around.err, *around.errColumns, context.language());
  }

  /// Of no use once this object is gone.
  ReadingMeter::Receiver receiver() {
    if (!bar_) return {};
    return [this](const TransferProgressSnapshot& progress) {
      bar_->show(progress, std::chrono::steady_clock::now());
    };
  }

 private:
  std::optional<ProgressBar> bar_;
};

}  // namespace tavrix::cli
