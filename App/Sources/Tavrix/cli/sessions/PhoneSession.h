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

/// The phone of a command that waits for its phone. Gives the phone to the model each time it is
/// connected, and reports on standard error the obstacles and the progress of reading.
class PhoneSession {
 public:
  /// `session` must outlive this object.
  explicit PhoneSession(ModelSession& session);
  PhoneSession(const PhoneSession&) = delete;
  PhoneSession& operator=(const PhoneSession&) = delete;

  /// Returns when the model has a phone to transfer from. Throws CommandFailure if a stop is
  /// requested first; on such a request the caller must also call interrupted().
  void connect(const std::stop_token& stop);
  /// While a run waits for its phone, reports the last of the other phones on the cable.
  void tellOtherPhones() const;
  /// Stops reading after a stop was requested.
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
  /// A reading that has not ended: the phone is being read, or left while it was.
  struct Reading {
    bool isLossReported = false;
  };
  std::optional<Reading> reading_;
  bool wasRead_ = false;  ///< the phone was ready before
  std::optional<ReadingBar> bar_;
  DeviceWatcher::Subscription subscription_;
  FollowedDevice followed_;
};

}  // namespace tavrix::cli
