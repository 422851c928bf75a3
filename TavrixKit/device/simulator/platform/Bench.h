#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "device/simulator/SimulatedPhone.h"
#include "device/simulator/platform/PhoneKeys.h"
#include "device/simulator/platform/Stream.h"

namespace tavrix::simulator {

inline constexpr const char* systemID = "00000000-0000-0000-0000-00000000B01D";

/// The phones and what all connections share. Safe to use from several threads.
class Bench {
 public:
  explicit Bench(std::vector<SimulatedPhone> phones) : phones_(std::move(phones)) {}
  ~Bench();
  /// Nobody waits for a phone any more: it neither comes back nor speaks again.
  void close();

  std::size_t count() const { return phones_.size(); }
  SimulatedPhone phone(std::size_t index) const;
  void change(std::size_t index, const std::function<void(SimulatedPhone&)>& change);
  static PhoneKeys& keys();

  /// What computers have stored of each phone, by the phone's name on the bus.
  std::optional<std::string> pairRecord(const std::string& deviceID);
  void savePairRecord(const std::string& deviceID, std::optional<std::string> record);

  /// A connection of a phone ends when the phone leaves; false when it has left.
  bool attach(std::size_t index, Stream& stream);
  void detach(std::size_t index, Stream& stream);
  /// A stream that is told of phones that come and go; every message has its tag.
  void listen(Stream& stream, std::uint32_t tag);
  void endListening(Stream& stream);

  /// To be called before `bytes` of a file are sent: how many of them get through. When it is not
  /// all, the phone is to vanish.
  std::uint64_t allowance(std::size_t index, std::uint64_t bytes);
  /// To be called before an answer is sent: waits as long as the phone hangs; false when it has
  /// left meanwhile. `bytes` of a file are about to be sent.
  bool awaitSpeech(std::size_t index, std::uint64_t bytes = 0);
  /// Takes the phone from the cable, and puts it back when it is to return.
  void vanish(std::size_t index);

  std::atomic<std::uint64_t> fileCalls{0};
  std::atomic<std::uint64_t> refusals{0};

 private:
  void returnLater(std::size_t index, std::chrono::milliseconds delay);
  void tellPresence(std::size_t index, bool isPluggedIn);

  mutable std::mutex mutex_;
  std::vector<SimulatedPhone> phones_;
  std::multimap<std::size_t, Stream*> streams_;
  std::map<Stream*, std::uint32_t> listeners_;
  std::map<std::string, std::optional<std::string>> pairRecords_;
  std::condition_variable closing_;
  std::condition_variable changed_;
  bool isClosed_ = false;
  std::vector<std::thread> returns_;
};

/// A message of the daemon that hands phones over.
bool writeMuxMessage(Stream& stream, std::uint32_t tag, const PropertyList& message);
PropertyList attachedMessage(std::size_t index, const SimulatedPhone& phone);

/// Serve one connection until it ends.
void serveLockdown(Bench& bench, std::size_t phone, Stream& stream);
void serveFiles(Bench& bench, std::size_t phone, Stream& stream);

/// Where a phone's services listen.
inline constexpr std::uint16_t lockdownPort = 62078;
inline constexpr std::uint16_t filesPort = 49152;

}  // namespace tavrix::simulator
