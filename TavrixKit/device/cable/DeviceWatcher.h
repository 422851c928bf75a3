#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "USBPhonePresence/USBPhonePresence.h"
#include "USBPhonePresence/UnseenPhoneCheck.h"
#include "device/CatalogCounts.h"
#include "device/DeviceWatch.h"
#include "device/SerialQueue.h"
#include "foundation/Log.h"
#include "foundation/MainLoop.h"
#include "foundation/TimeZone.h"

namespace tavrix {

/// Follows the phones on the cable: reads the catalogue of the first one as soon as it lets itself
/// be read, and tells what is in the way. Phones are asked on threads of the watcher; everything
/// here is called, and every observer told, on the main loop.
class DeviceWatcher {
 public:
  struct Setup {
    PhoneBrowser& browser;
    MainLoop& loop;
    USBPhonePresence* bus = nullptr;            ///< without one no phone goes unseen
    CatalogCounts* counts = nullptr;            ///< without one nothing is expected
    std::optional<std::string> cacheDirectory;  ///< without one nothing is kept
    TimeZone zone = TimeZone::utc();            ///< for dates that tell no offset
    std::function<Instant()> now;               ///< called from the watcher's threads
    Log* log = nullptr;                         ///< silent without one
    /// Identifier or serial number of the only phone to be read; empty when any is.
    std::string wanted{};
    MainLoop::Duration lookInterval = std::chrono::milliseconds{500};
  };
  /// What somebody wants to be told; each function may be missing. What it is given is good until
  /// it calls the watcher.
  struct Observer {
    std::function<void(const DeviceState&)> stateChanged{};
    std::function<void(bool phoneOnCableButUnseen)> unseenChanged{};
    std::function<void(const std::vector<PhoneOnCable>&)> othersChanged{};
  };
  /// Ends with its last copy.
  using Subscription = std::shared_ptr<const Observer>;

  /// All that the setup refers to outlives the watcher.
  explicit DeviceWatcher(Setup setup);
  /// Ends what is under way; what was read lies in the cache.
  ~DeviceWatcher();
  DeviceWatcher(const DeviceWatcher&) = delete;
  DeviceWatcher& operator=(const DeviceWatcher&) = delete;

  /// Begins to watch; later, begins the reading anew that was stopped or failed.
  void start();
  /// Ends the reading that is under way; the watcher goes on watching.
  void stopReading();
  /// Copying has lost the phone that was ready: it is asked anew, and read again when it answers.
  void phoneLost();
  /// Another choice of the only phone to be read, as in the setup.
  void setWanted(std::string wanted);
  const std::string& wanted() const { return setup_.wanted; }
  /// In which dates that tell no offset are read.
  const TimeZone& zone() const { return setup_.zone; }

  const DeviceState& state() const { return watch_.state; }
  /// Whether the state tells what is on the cable; not before the first look at it is over.
  bool hasLooked() const { return hasLooked_; }
  /// A phone is on the bus for 12 s, and the system does not hand it over.
  bool phoneOnCableButUnseen() const { return unseen_.phoneOnCableButUnseen; }
  /// The phones on the cable besides the one that the state is about.
  const std::vector<PhoneOnCable>& others() const { return watch_.others; }

  /// From the next change on.
  [[nodiscard]] Subscription subscribe(Observer observer);

 private:
  struct Reports;

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

  /// Calls a function of every observer that is still there.
  template <typename Function, typename Value>
  void tell(Function Observer::* function, const Value& value);
  /// Wraps a task for the loop so that nothing happens when the watcher is gone.
  MainLoop::Task ifAlive(std::function<void()> task) const;
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  std::vector<std::weak_ptr<const Observer>> observers_;
  bool isStarted_ = false;
  bool hasLooked_ = false;

  DeviceWatch watch_;
  UnseenPhoneCheck unseen_;

  CableView cable_;           ///< as it was seen last, without the phones to be asked anew
  bool isLooking_ = false;    ///< a look is under way
  bool isLookStale_ = false;  ///< and what it finds is out of date
  bool isLookDue_ = false;    ///< a look is posted to the loop

  std::stop_source ending_;
  std::stop_source readingStop_;
  std::shared_ptr<Reports> reports_;
  SerialQueue looks_;
  SerialQueue readings_;
};

}  // namespace tavrix
