#include "device/cable/DeviceWatcher.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "device/cable/PhoneCatalogue.h"
#include "foundation/files/FileError.h"
#include "media/Snapshot.h"

namespace tavrix {
namespace {

/// Scans the cable. Asks only phones that are new, or were not ready when they were last asked.
CableView viewOfCable(PhoneBrowser& browser, const CableView& known, const std::stop_token& stop) {
  CableView view;
  try {
    for (const std::string& id : browser.deviceIDs(stop)) {
      const auto found =
          std::find_if(known.phones.begin(), known.phones.end(), [&](const PhoneOnCable& phone) {
            return phone.deviceID == id && phone.state == PhoneState::ready;
          });
      view.phones.push_back(found == known.phones.end() ? browser.describe(id, stop) : *found);
    }
  } catch (const PhoneError&) {
    view = {false, {}};
  }
  return view;
}

}  // namespace

/// Passes the reports of a reading to the main loop. Only the latest progress report is in transit
/// at any time, so that a fast reading does not flood the loop.
struct DeviceWatcher::Reports : std::enable_shared_from_this<DeviceWatcher::Reports> {
  using Receiver = std::function<void(DeviceWatch::Event)>;

  Reports(MainLoop& mainLoop, Receiver receive) : loop(mainLoop), receiver(std::move(receive)) {}

  void tell(DeviceWatch::Event event) {
    auto shared = std::make_shared<DeviceWatch::Event>(std::move(event));
    loop.post([self = shared_from_this(), shared] { self->receive(std::move(*shared)); });
  }
  void tellProgress(DeviceWatch::Event event) {
    const std::lock_guard lock{mutex};
    const bool isUnderWay = latest.has_value();
    latest = std::move(event);
    if (!isUnderWay) loop.post([self = shared_from_this()] { self->receiveLatest(); });
  }

  void receiveLatest() {
    std::unique_lock lock{mutex};
    const auto event = std::exchange(latest, std::nullopt);
    lock.unlock();
    receive(*event);
  }
  void receive(DeviceWatch::Event event) {
    if (receiver) receiver(std::move(event));
  }

  MainLoop& loop;
  Receiver receiver;  ///< used on the loop; empty once the watcher is gone
  std::mutex mutex;
  std::optional<DeviceWatch::Event> latest;
};

DeviceWatcher::DeviceWatcher(Setup setup)
    : setup_(std::move(setup)),
      reports_(std::make_shared<Reports>(
          setup_.loop, [this](DeviceWatch::Event event) { take(std::move(event)); })) {}

DeviceWatcher::~DeviceWatcher() {
  reports_->receiver = nullptr;
  ending_.request_stop();
  readingStop_.request_stop();
}

MainLoop::Task DeviceWatcher::ifAlive(std::function<void()> task) const {
  return [life = std::weak_ptr{life_}, task = std::move(task)] {
    if (!life.expired()) task();
  };
}

void DeviceWatcher::start() {
  if (!std::holds_alternative<NotStarted>(looking_)) {
    take(DeviceWatch::StartAsked{});
    return;
  }
  if (setup_.bus != nullptr) {
    setup_.bus->start([&loop = setup_.loop, changed = ifAlive([this] {
                                              // A scan may take long, and the time without the
                                              // phone is measured from now.
                                              checkUnseen(false);
                                              lookAnew();
                                            })] { loop.post(changed); });
  }
  look();
}

void DeviceWatcher::stopReading() { take(DeviceWatch::StopAsked{}); }

void DeviceWatcher::phoneLost() { take(DeviceWatch::PhoneLost{}); }

void DeviceWatcher::setWanted(std::string wanted) { setup_.wanted = std::move(wanted); }

DeviceWatcher::Subscription DeviceWatcher::subscribe(Observer observer) {
  auto subscription = std::make_shared<const Observer>(std::move(observer));
  observers_.push_back(subscription);
  return subscription;
}

template <typename Function, typename Value>
void DeviceWatcher::tell(Function Observer::* function, const Value& value) {
  std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
  // Iterates over a copy, because an observer may subscribe another one.
  for (const auto& each : std::vector{observers_}) {
    const Subscription observer = each.lock();
    if (observer && (*observer).*function) ((*observer).*function)(value);
  }
}

void DeviceWatcher::take(DeviceWatch::Event event) {
  const auto others = watch_.others;
  const auto expected = expectedCount();
  auto next = DeviceWatch::after(std::move(watch_), std::move(event), setup_.wanted, expected);
  watch_ = std::move(next.watch);
  carryOut(next.orders);
  if (watch_.others != others) tell(&Observer::othersChanged, watch_.others);
  if (!next.isNewState) return;
  if (const auto* ready = watch_.state.as<DeviceState::Ready>()) remember(*ready);
  tell(&Observer::stateChanged, watch_.state);
}

void DeviceWatcher::carryOut(const DeviceWatch::Orders& orders) {
  if (orders.endReading) readingStop_.request_stop();
  if (orders.read) beginReading(*orders.read);
  if (orders.lookAnew) lookAnew();
}

void DeviceWatcher::beginReading(const PhoneOnCable& phone) {
  readingStop_ = std::stop_source{};
  const std::uint64_t reading = watch_.reading;
  MetadataPass::Setup pass{
      .phoneKey = MetadataCache::phoneKey(phone.serialNumber),
      .directory = setup_.cacheDirectory,
      .now = setup_.now,
      .log = &log(),
      .progress = [reports = reports_, reading](const MetadataPass::Progress& progress) {
        reports->tellProgress(DeviceWatch::MetadataRead{reading, progress});
      }};
  readings_.post([&browser = setup_.browser, zone = setup_.zone, reports = reports_, reading,
                  id = phone.deviceID, pass = std::move(pass), stop = readingStop_.get_token()] {
    const auto found = [&](std::uint64_t count) {
      reports->tellProgress(DeviceWatch::ItemsFound{reading, count});
    };
    try {
      const auto files = browser.openFiles(id, stop);
      found(0);
      FolderCatalogue catalogue = PhoneCatalogue::read(*files, pass, stop, found);
      if (!catalogue.isComplete) return;
      auto assets = Snapshot::assetsOf(catalogue.items, zone);
      reports->tell(DeviceWatch::ReadingDone{reading, std::move(assets),
                                             Shared<FolderCatalogue>{std::move(catalogue)}});
    } catch (const PhoneError& error) {
      reports->tell(DeviceWatch::ReadingLost{reading, error.kind()});
    } catch (const FileError&) {
      reports->tell(DeviceWatch::FolderRefused{reading});
    }
  });
}

std::optional<std::uint64_t> DeviceWatcher::expectedCount() const {
  if (setup_.counts == nullptr || !watch_.phone) return std::nullopt;
  const auto& serialNumber = watch_.phone->serialNumber;
  return setup_.counts->count(serialNumber ? CatalogCounts::keyOf(*serialNumber)
                                           : CatalogCounts::keyOfLast());
}

void DeviceWatcher::remember(const DeviceState::Ready& ready) {
  writeLog(log(), "device watcher: catalogue read, assets={}", ready.assets->size());
  if (setup_.counts == nullptr) return;
  setup_.counts->setCount(CatalogCounts::keyOfLast(), ready.assets->size());
  const auto& serialNumber = ready.phone.serialNumber;
  if (!serialNumber) return;
  setup_.counts->setCount(CatalogCounts::keyOf(*serialNumber), ready.assets->size());
}

void DeviceWatcher::look() {
  looking_ = Scanning{};
  ++scan_;
  looks_.post([&browser = setup_.browser, &loop = setup_.loop, known = cable_.value_or(CableView{}),
               stop = ending_.get_token(),
               seen = std::make_shared<std::function<void(CableView)>>(
                   [this](CableView cable) { this->seen(std::move(cable)); }),
               life = std::weak_ptr{life_}] {
    auto cable = std::make_shared<CableView>(viewOfCable(browser, known, stop));
    loop.post([cable, seen, life] {
      if (!life.expired()) (*seen)(std::move(*cable));
    });
  });
}

void DeviceWatcher::lookAnew() {
  if (cable_) cable_->phones.clear();
  if (auto* const scanning = std::get_if<Scanning>(&looking_)) {
    scanning->isStale = true;
  } else {
    look();
  }
}

void DeviceWatcher::seen(CableView cable) {
  if (std::get<Scanning>(looking_).isStale) return look();
  looking_ = Resting{};
  cable_ = cable;
  take(DeviceWatch::CableSeen{std::move(cable)});
  checkUnseen(false);
  lookLater();
}

void DeviceWatcher::lookLater() {
  setup_.loop.postAfter(setup_.lookInterval, ifAlive([this, scan = scan_] {
                          const bool isNext = scan == scan_;  // no other scan came first
                          if (isNext && std::holds_alternative<Resting>(looking_)) look();
                        }));
}

void DeviceWatcher::checkUnseen(bool isScheduled) {
  if (setup_.bus == nullptr) return;
  const bool wasUnseen = unseen_.phoneOnCableButUnseen;
  const bool hasDevice = watch_.phone.has_value() || !watch_.others.empty();
  // If the system provides a phone, the bus need not be searched.
  const bool isOnBus = !hasDevice && setup_.bus->isPhoneOnBus();
  const auto now = setup_.loop.now();
  const auto next = isScheduled ? unseen_.checkedAgain(isOnBus, hasDevice, now, log())
                                : unseen_.updated(isOnBus, hasDevice, now, log());
  unseen_ = next.check;
  if (next.checkAfter) {
    setup_.loop.postAfter(*next.checkAfter, ifAlive([this] { checkUnseen(true); }));
  }
  if (unseen_.phoneOnCableButUnseen != wasUnseen) {
    tell(&Observer::unseenChanged, unseen_.phoneOnCableButUnseen);
  }
}

}  // namespace tavrix
