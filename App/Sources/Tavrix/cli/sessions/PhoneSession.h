#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "cli/printing/ReadingBar.h"
#include "cli/sessions/ModelSession.h"
#include "device/cable/DeviceWatcher.h"
#include "sources/FollowedDevice.h"

namespace tavrix::cli {

/// The phone of a call that waits for its phone: leads it to the model, as often as it comes back,
/// and tells on standard error what is in the way and how far reading is.
class PhoneSession {
 public:
  /// The session outlives it.
  explicit PhoneSession(ModelSession& session);
  PhoneSession(const PhoneSession&) = delete;
  PhoneSession& operator=(const PhoneSession&) = delete;

  /// Returns when the model has a phone to transfer from. Throws CommandFailure when a stop is
  /// asked for first; `interrupted()` has to be called then.
  void connect(const std::stop_token& stop);
  /// Tells of other phones on the cable while a run waits for its own.
  void tellOtherPhones() const;
  /// A stop was asked for.
  void interrupted() { watcher_.stopReading(); }

 private:
  void follow(const DeviceState& state);
  void tellUnseen(bool isUnseen) const;
  void followReading(const MetadataPass::Progress& progress);
  void followReady(const DeviceState::Ready& ready);
  std::string textOf(const DeviceState& state) const;
  [[noreturn]] void failWaiting() const;

  ModelSession& session_;
  const CommandContext& context_;
  std::unique_ptr<CatalogCounts> counts_;
  std::unique_ptr<USBPhonePresence> bus_;
  DeviceWatcher watcher_;
  bool isReading_ = false;  ///< the phone is being read, or was when it left
  bool wasLost_ = false;    ///< and that was told
  bool wasRead_ = false;    ///< it was ready before
  std::optional<ReadingBar> bar_;
  DeviceWatcher::Subscription subscription_;
  FollowedDevice followed_;
};

}  // namespace tavrix::cli
