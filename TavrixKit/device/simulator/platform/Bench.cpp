#include "device/simulator/platform/Bench.h"

#include <algorithm>
#include <utility>

namespace tavrix::simulator {

Bench::~Bench() {
  close();
  for (std::thread& thread : returns_) thread.join();
}

SimulatedPhone Bench::phone(std::size_t index) const {
  const std::lock_guard lock{mutex_};
  return phones_.at(index);
}

PhoneKeys& Bench::keys() {
  // Generating keys takes a while, so all simulators of a program share one pair.
  static PhoneKeys keys;
  return keys;
}

void Bench::tellPresence(std::size_t index, bool isPluggedIn) {
  const PropertyList attached = attachedMessage(index, phones_.at(index));
  PropertyList detached;
  detached.set("MessageType", "Detached").set("DeviceID", std::uint64_t{index + 1});
  for (const auto& [listener, tag] : listeners_) {
    writeMuxMessage(*listener, tag, isPluggedIn ? attached : detached);
  }
  if (isPluggedIn) return;
  for (auto [it, end] = streams_.equal_range(index); it != end; ++it) it->second->hangUp();
}

void Bench::change(std::size_t index, const std::function<void(SimulatedPhone&)>& change) {
  const std::lock_guard lock{mutex_};
  SimulatedPhone& phone = phones_.at(index);
  const bool wasPluggedIn = phone.isPluggedIn;
  change(phone);
  if (phone.isPluggedIn != wasPluggedIn) tellPresence(index, phone.isPluggedIn);
  changed_.notify_all();
}

std::optional<std::string> Bench::pairRecord(const std::string& deviceID) {
  {
    const std::lock_guard lock{mutex_};
    const auto found = pairRecords_.find(deviceID);
    if (found != pairRecords_.end()) return found->second;
    for (const SimulatedPhone& phone : phones_) {
      const bool isKnown =
          phone.deviceID == deviceID && phone.trust == SimulatedPhone::Trust::trusted;
      if (isKnown) break;
      if (&phone == &phones_.back()) return std::nullopt;
    }
  }
  return keys().pairRecord(systemID).xml();
}

void Bench::savePairRecord(const std::string& deviceID, std::optional<std::string> record) {
  const std::lock_guard lock{mutex_};
  pairRecords_[deviceID] = std::move(record);
}

bool Bench::attach(std::size_t index, Stream& stream) {
  const std::lock_guard lock{mutex_};
  if (!phones_.at(index).isPluggedIn) return false;
  streams_.emplace(index, &stream);
  return true;
}

void Bench::detach(std::size_t index, Stream& stream) {
  const std::lock_guard lock{mutex_};
  for (auto [it, end] = streams_.equal_range(index); it != end; ++it) {
    if (it->second != &stream) continue;
    streams_.erase(it);
    return;
  }
}

void Bench::listen(Stream& stream, std::uint32_t tag) {
  const std::lock_guard lock{mutex_};
  for (std::size_t i = 0; i < phones_.size(); ++i) {
    if (phones_[i].isPluggedIn) writeMuxMessage(stream, tag, attachedMessage(i, phones_[i]));
  }
  listeners_[&stream] = tag;
}

void Bench::endListening(Stream& stream) {
  const std::lock_guard lock{mutex_};
  listeners_.erase(&stream);
}

std::optional<SimulatedPhone::Fault::Kind> Bench::strike(std::size_t index) {
  const std::lock_guard lock{mutex_};
  auto& fault = phones_.at(index).fault;
  if (!fault) return std::nullopt;
  if (fault->callsBefore-- > 0) return std::nullopt;
  return std::exchange(fault, std::nullopt)->kind;
}

std::optional<AnswerPart> Bench::beginCall(std::size_t index) {
  using Kind = SimulatedPhone::Fault::Kind;
  const auto fault = strike(index);
  if (fault == Kind::leaves) {
    vanish(index);
    return std::nullopt;
  }
  if (fault == Kind::stalls) {
    change(index, [](SimulatedPhone& phone) { phone.hangs = true; });
    returnLater(index, phone(index).returnsAfter);
  }
  if (!awaitSpeech(index)) return std::nullopt;
  if (fault == Kind::leavesHalf) return AnswerPart::half;
  return fault == Kind::losesAnswer ? AnswerPart::none : AnswerPart::whole;
}

std::uint64_t Bench::allowance(std::size_t index, std::uint64_t bytes) {
  const std::lock_guard lock{mutex_};
  auto& rest = phones_.at(index).vanishesAfterBytes;
  if (!rest) return bytes;
  const std::uint64_t allowed = std::min(*rest, bytes);
  *rest -= allowed;
  return allowed;
}

bool Bench::awaitSpeech(std::size_t index, std::uint64_t bytes) {
  std::unique_lock lock{mutex_};
  SimulatedPhone& phone = phones_.at(index);
  if (phone.hangsAfterBytes) {
    phone.hangs = phone.hangs || *phone.hangsAfterBytes <= bytes;
    *phone.hangsAfterBytes -= std::min(*phone.hangsAfterBytes, bytes);
    if (phone.hangs) phone.hangsAfterBytes.reset();
  }
  changed_.wait(lock, [&] { return isClosed_ || !phone.hangs || !phone.isPluggedIn; });
  return !isClosed_ && phone.isPluggedIn;
}

void Bench::close() {
  const std::lock_guard lock{mutex_};
  isClosed_ = true;
  changed_.notify_all();
  closing_.notify_all();
}

void Bench::vanish(std::size_t index) {
  std::optional<std::chrono::milliseconds> delay;
  change(index, [&](SimulatedPhone& phone) {
    phone.isPluggedIn = false;
    phone.vanishesAfterBytes.reset();
    delay = phone.returnsAfter;
  });
  returnLater(index, delay);
}

void Bench::returnLater(std::size_t index, std::optional<std::chrono::milliseconds> delay) {
  const std::lock_guard lock{mutex_};
  if (isClosed_ || !delay) return;
  returns_.emplace_back([this, index, delay] {
    {
      std::unique_lock inner{mutex_};
      if (closing_.wait_for(inner, *delay, [this] { return isClosed_; })) return;
    }
    change(index, [](SimulatedPhone& phone) {
      phone.isPluggedIn = true;
      phone.hangs = false;
    });
  });
}

}  // namespace tavrix::simulator
