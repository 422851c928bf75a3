#include "device/cable/DeviceWatch.h"

#include <algorithm>
#include <utility>

namespace tavrix {
namespace {

using State = DeviceState;

/// Returns a number of a phone in the one form in which numbers are compared. The bus and the
/// service write the same number with and without a hyphen, in capitals and in small letters.
std::string comparable(std::string number) {
  std::erase(number, '-');
  for (char& each : number) {
    if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
  }
  return number;
}

/// Applies one event.
class Step {
 public:
  Step(DeviceWatch watch, const std::string& wanted, std::optional<std::uint64_t> expected)
      : next_{std::move(watch), {}, false}, wanted_(wanted), expected_(expected) {}

  DeviceWatch::Next take(DeviceWatch::Event event) && {
    std::visit([this](auto& each) { on(each); }, event);
    return std::move(next_);
  }

 private:
  DeviceWatch& watch() { return next_.watch; }
  std::string name() { return watch().phone ? deviceNameOf(*watch().phone) : std::string{}; }

  void become(State::Kind kind) {
    State state{std::move(kind)};
    if (state == watch().state) return;
    watch().state = std::move(state);
    next_.isNewState = true;
  }
  bool isCurrent(std::uint64_t reading) { return watch().isReading && reading == watch().reading; }

  void beginReading() {
    ++watch().reading;
    watch().isReading = true;
    next_.orders.read = watch().phone;
    become(State::Connecting{name()});
  }
  void endReading() {
    next_.orders.endReading = watch().isReading;
    watch().isReading = false;
  }
  /// Ends the reading; the new state reports how far it got.
  void stopBecause(State::Stopped::Reason reason) {
    MetadataPass::Progress status;
    if (const auto* reading = watch().state.as<State::ReadingMetadata>()) status = reading->status;
    if (const auto* listing = watch().state.as<State::Enumerating>()) {
      status.total = static_cast<std::size_t>(listing->itemsFound);
    }
    endReading();
    become(State::Stopped{name(), status, reason});
  }

  bool isWanted(const PhoneOnCable& phone) const {
    const std::string wanted = comparable(wanted_);
    return wanted.empty() || comparable(phone.deviceID) == wanted ||
           comparable(phone.serialNumber.value_or("")) == wanted;
  }
  /// Returns the phone that stays, or the first that may take its place; nullptr if there is none.
  const PhoneOnCable* choose(const std::vector<PhoneOnCable>& phones) {
    const auto find = [&](const auto& matches) {
      const auto found = std::find_if(phones.begin(), phones.end(), matches);
      return found == phones.end() ? nullptr : &*found;
    };
    if (watch().phone) {
      const auto* stays =
          find([&](const auto& each) { return each.deviceID == watch().phone->deviceID; });
      if (stays != nullptr && isWanted(*stays)) return stays;
    }
    return find([&](const auto& each) { return isWanted(each); });
  }

  void on(DeviceWatch::CableSeen& event) {
    if (!event.cable.hasService) {
      onNoService();
      return;
    }
    auto& phones = event.cable.phones;
    const PhoneOnCable* const chosen = choose(phones);
    const bool stays =
        chosen != nullptr && watch().phone && chosen->deviceID == watch().phone->deviceID;
    if (!stays && watch().phone) onDeparture();
    if (chosen != nullptr) onPhone(*chosen, stays);
    std::erase_if(phones, [&](const PhoneOnCable& each) {
      return watch().phone && each.deviceID == watch().phone->deviceID;
    });
    watch().others = std::move(phones);
    // The service answers, so a failure is over.
    if (chosen == nullptr && watch().state.is<State::Failed>()) become(State::Waiting{});
  }

  void onNoService() {
    // A reading in progress will notice this itself.
    if (watch().isReading) return;
    watch().phone.reset();
    watch().others.clear();
    become(State::Failed{State::Failed::Reason::noService, {}});
  }

  void onDeparture() {
    const auto* const stopped = watch().state.as<State::Stopped>();
    const bool isKnown = stopped != nullptr && stopped->reason == State::Stopped::Reason::phoneLeft;
    if (watch().isReading) {
      stopBecause(State::Stopped::Reason::phoneLeft);
    } else if (!isKnown) {
      become(State::Waiting{});
    }
    watch().phone.reset();
  }

  void onPhone(const PhoneOnCable& phone, bool stays) {
    const auto knownName = stays ? watch().phone->name : std::nullopt;
    watch().phone = phone;
    // A phone that does not answer gives no name either.
    if (!phone.name) watch().phone->name = knownName;
    if (watch().isReading || (stays && isSettled())) return;
    if (phone.state == PhoneState::ready) {
      beginReading();
    } else {
      show(phone.state);
    }
  }
  /// Returns true if only the user or the departure of the phone changes the state.
  bool isSettled() {
    const State& state = watch().state;
    const auto* const stopped = state.as<State::Stopped>();
    const auto* const failed = state.as<State::Failed>();
    return state.is<State::Ready>() ||
           (stopped != nullptr && stopped->reason == State::Stopped::Reason::asked) ||
           (failed != nullptr && failed->reason == State::Failed::Reason::folderRefused);
  }

  /// Shows the state of a phone that cannot be read.
  void show(PhoneState state) {
    using Reason = State::Failed::Reason;
    switch (state) {
      case PhoneState::ready:
        return;
      case PhoneState::locked:
        return become(State::Locked{name()});
      case PhoneState::trustPending:
        return become(State::Connecting{name(), true});
      case PhoneState::trustDenied:
        return become(State::Failed{Reason::trustDenied, name()});
      case PhoneState::silent:
        return become(State::Failed{Reason::silent, name()});
      case PhoneState::unreachable:
        return showUnreachable();
    }
  }
  /// Reports a failure only the second time, because a phone that has just been plugged in needs a
  /// moment before it answers.
  void showUnreachable() {
    const State& state = watch().state;
    const bool hadItsMoment = state.is<State::Connecting>() || state.is<State::Failed>();
    if (hadItsMoment) {
      become(State::Failed{State::Failed::Reason::unreachable, name()});
    } else {
      become(State::Connecting{name()});
    }
  }

  void on(const DeviceWatch::ItemsFound& event) {
    if (isCurrent(event.reading)) become(State::Enumerating{name(), event.count, expected_});
  }
  void on(const DeviceWatch::MetadataRead& event) {
    if (isCurrent(event.reading)) become(State::ReadingMetadata{name(), event.progress});
  }
  void on(DeviceWatch::ReadingDone& event) {
    if (!isCurrent(event.reading)) return;
    watch().isReading = false;
    become(
        State::Ready{name(), std::move(event.assets), *watch().phone, std::move(event.catalogue)});
  }
  void on(const DeviceWatch::FolderRefused& event) {
    if (!isCurrent(event.reading)) return;
    watch().isReading = false;
    become(State::Failed{State::Failed::Reason::folderRefused, name()});
  }
  void on(const DeviceWatch::ReadingLost& event) {
    if (!isCurrent(event.reading)) return;
    next_.orders.lookAnew = true;
    const bool isGone =
        event.kind == PhoneError::Kind::gone || event.kind == PhoneError::Kind::noService;
    if (isGone) {
      stopBecause(State::Stopped::Reason::phoneLeft);
      next_.orders.endReading = false;  // it has already ended
    } else {
      watch().isReading = false;
      show(stateOf(event.kind));
    }
  }

  void on(const DeviceWatch::PhoneLost&) {
    if (!watch().state.is<State::Ready>()) return;
    next_.orders.lookAnew = true;
    become(State::Connecting{name()});
  }

  void on(const DeviceWatch::StopAsked&) {
    if (watch().isReading) stopBecause(State::Stopped::Reason::asked);
  }
  void on(const DeviceWatch::StartAsked&) {
    const bool isWaited = watch().state.is<State::Stopped>() || watch().state.is<State::Failed>();
    if (isWaited && watch().phone && watch().phone->state == PhoneState::ready) beginReading();
  }

  DeviceWatch::Next next_;
  const std::string& wanted_;
  std::optional<std::uint64_t> expected_;
};

}  // namespace

PhoneState stateOf(PhoneError::Kind kind) {
  switch (kind) {
    case PhoneError::Kind::locked:
      return PhoneState::locked;
    case PhoneError::Kind::trustPending:
      return PhoneState::trustPending;
    case PhoneError::Kind::trustDenied:
      return PhoneState::trustDenied;
    case PhoneError::Kind::silent:
      return PhoneState::silent;
    default:
      return PhoneState::unreachable;
  }
}

std::string deviceNameOf(const PhoneOnCable& phone) {
  return phone.name && !phone.name->empty() ? *phone.name : "iPhone";
}

DeviceWatch::Next DeviceWatch::after(DeviceWatch watch, Event event, const std::string& wanted,
                                     std::optional<std::uint64_t> expected) {
  return Step{std::move(watch), wanted, expected}.take(std::move(event));
}

}  // namespace tavrix
