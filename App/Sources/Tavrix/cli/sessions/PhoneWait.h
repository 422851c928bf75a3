#pragma once

#include <mutex>
#include <stop_token>
#include <string>

#include "cli/sessions/CommandContext.h"
#include "device/cable/Phones.h"

namespace tavrix::cli {

/// Waits for the phone of a command that does not use the model: asks for it again and again, and
/// reports each obstacle once on standard error. Safe to use from several threads.
class PhoneWait {
 public:
  /// `context` must outlive this object.
  PhoneWait(const CommandContext& context, std::stop_token stop)
      : context_(context), stop_(std::move(stop)) {}

  /// Reports the obstacle, the beginning of a sentence, and waits a moment. Returns false if a stop
  /// was requested.
  bool await(const std::string& obstacle);
  /// As above, for a phone that was lost while it was read.
  bool await(const std::string& deviceName, PhoneError::Kind kind);
  /// Reports that the phone is back if a wait was reported before.
  void phoneAnswered();

 private:
  const CommandContext& context_;
  std::stop_token stop_;
  std::mutex mutex_;
  std::string told_;  ///< the obstacle of the current wait; empty if there is none
};

}  // namespace tavrix::cli
