#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>
#include <vector>

#include "USBPhonePresence/USBPhonePresence.h"
#include "USBPhonePresence/UnseenPhoneCheck.h"
#include "device/cable/CatalogCounts.h"
#include "device/cable/DeviceWatch.h"
#include "foundation/Log.h"
#include "foundation/TimeZone.h"
#include "foundation/tasks/MainLoop.h"
#include "foundation/tasks/SerialQueue.h"

namespace tavrix {

/// Follows the phones on the cable: reads the catalogue of the first phone as soon as it can be
/// read, and reports what prevents that. The watcher asks phones on threads of its own. Its
/// functions must be called on the main loop, and observers are called there.
class DeviceWatcher {
 public:
  struct Setup {
    PhoneBrowser& browser;
    MainLoop& loop;
    USBPhonePresence* bus = nullptr;            ///< if null, no phone is reported as unseen
    CatalogCounts* counts = nullptr;            ///< if null, no count is expected
    std::optional<std::string> cacheDirectory;  ///< if absent, nothing is kept
    TimeZone zone = TimeZone::utc();            ///< for dates without an offset
    std::function<Instant()> now;               ///< called from the watcher's threads
    Log* log = nullptr;                         ///< nothing is logged if null
    /// Identifier or serial number of the only phone to read; empty for any phone.
    std::string wanted{};
    MainLoop::Duration lookInterval = std::chrono::milliseconds{500};
  };
  /// The callbacks of an observer; each may be empty. An argument is valid until the callback calls
  /// the watcher.
  struct Observer {
    std::function<void(const DeviceState&)> stateChanged{};
    std::function<void(bool phoneOnCableButUnseen)> unseenChanged{};
    std::function<void(const std::vector<PhoneOnCable>&)> othersChanged{};
  };
  /// The subscription of an observer; it ends when its last copy is destroyed.
  using Subscription = std::shared_ptr<const Observer>;

  /// Everything that the setup refers to must outlive the watcher.
  explicit DeviceWatcher(Setup setup);
  /// Stops what is in progress; what was read is in the cache.
  ~DeviceWatcher();
  DeviceWatcher(const DeviceWatcher&) = delete;
  DeviceWatcher& operator=(const DeviceWatcher&) = delete;

  /// Starts to watch. If the watcher is already started, restarts a reading that was stopped or
  /// failed.
  void start();
  /// Stops the reading in progress; the watcher continues to watch.
  void stopReading();
  /// Reports that copying has lost the phone that was ready. The watcher asks the phone again, and
  /// reads it again when it answers.
  void phoneLost();
  /// Changes the only phone to read, as in the setup.
  void setWanted(std::string wanted);
  const std::string& wanted() const { return setup_.wanted; }
  /// Returns the zone for dates without an offset.
  const TimeZone& zone() const { return setup_.zone; }

  const DeviceState& state() const { return watch_.state; }
  /// Returns true if the state describes what is on the cable, that is, after the first scan of it.
  bool hasLooked() const { return cable_.has_value(); }
  /// Returns true if a phone has been on the bus for 12 s and the system does not provide it.
  bool phoneOnCableButUnseen() const { return unseen_.phoneOnCableButUnseen; }
  /// Returns the phones on the cable except the one that the state describes.
  const std::vector<PhoneOnCable>& others() const { return watch_.others; }

  /// Subscribes an observer to all changes from the next one on.
  [[nodiscard]] Subscription subscribe(Observer observer);

 private:
  struct Reports;

  struct NotStarted {};
  /// A scan of the cable is in progress.
  struct Scanning {
    bool isStale = false;  ///< its result is out of date
  };
  /// The next scan is posted to the loop.
  struct Resting {};
  using Looking = std::variant<NotStarted, Scanning, Resting>;

  void take(DeviceWatch::Event event);
  void carryOut(const DeviceWatch::Orders& orders);
  void beginReading(const PhoneOnCable& phone);
  void remember(const DeviceState::Ready& ready);
  std::optional<std::uint64_t> expectedCount() const;

  void look();
  void lookAnew();
  void seen(CableView cable);
  void lookLater();

  void checkUnseen(bool isScheduled);

  /// Calls a function of every observer that is still subscribed.
  template <typename Function, typename Value>
  void tell(Function Observer::* function, const Value& value);
  /// Wraps a task for the loop so that it does nothing once the watcher is destroyed.
  MainLoop::Task ifAlive(std::function<void()> task) const;
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  std::vector<std::weak_ptr<const Observer>> observers_;
  DeviceWatch watch_;
  UnseenPhoneCheck unseen_;

  Looking looking_;
  std::uint64_t scan_ = 0;          ///< the number of the last scan
  std::optional<CableView> cable_;  ///< as last seen, without the phones to be asked again

  std::stop_source ending_;
  std::stop_source readingStop_;
  std::shared_ptr<Reports> reports_;
  SerialQueue looks_;
  SerialQueue readings_;
};

}  // namespace tavrix
