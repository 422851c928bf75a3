#pragma once

#include <chrono>
#include <optional>

#include "cli/printing/ProgressBar.h"
#include "cli/sessions/CommandContext.h"
#include "transfer/ReadingMeter.h"

namespace tavrix::cli {

/// The progress of a command that reads many files, if the call shows any.
class ReadingProgress {
 public:
  explicit ReadingProgress(const CommandContext& context) {
    if (context.messages.showsProgress()) bar_.emplace(context.messages);
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
