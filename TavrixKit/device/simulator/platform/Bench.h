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

/// The part of an answer that arrives.
enum class AnswerPart { whole, half, none };

/// The phones and the data that all connections share. Safe to use from several threads.
class Bench {
 public:
  explicit Bench(std::vector<SimulatedPhone> phones) : phones_(std::move(phones)) {}
  ~Bench();
  /// Ends all waiting for phones: they neither come back nor answer again.
  void close();

  std::size_t count() const { return phones_.size(); }
  SimulatedPhone phone(std::size_t index) const;
  void change(std::size_t index, const std::function<void(SimulatedPhone&)>& change);
  static PhoneKeys& keys();

  /// Returns the record that computers have stored of the phone with an identifier on the bus, or
  /// nullopt if there is none.
  std::optional<std::string> pairRecord(const std::string& deviceID);
  /// Replaces the record of a phone; nullopt deletes it.
  void savePairRecord(const std::string& deviceID, std::optional<std::string> record);

  /// Registers a connection of a phone, which ends when the phone leaves. Returns false if the
  /// phone has already left.
  bool attach(std::size_t index, Stream& stream);
  void detach(std::size_t index, Stream& stream);
  /// Registers a stream for messages about phones that come and go; every message has the tag
  /// `tag`.
  void listen(Stream& stream, std::uint32_t tag);
  void endListening(Stream& stream);

  /// Counts a call for the fault of the phone, which may strike; must be called before the answer
  /// is made. Waits as long as the phone hangs. Returns the part of the answer to be sent, or
  /// nullopt if the phone has left. After half an answer, the phone must vanish.
  std::optional<AnswerPart> beginCall(std::size_t index);
  /// Returns how many of `bytes` of a file get through; must be called before they are sent. If not
  /// all do, the phone must vanish.
  std::uint64_t allowance(std::size_t index, std::uint64_t bytes);
  /// Waits as long as the phone hangs; must be called before an answer is sent. `bytes` is the
  /// number of bytes of a file in the answer. Returns false if the phone has left meanwhile.
  bool awaitSpeech(std::size_t index, std::uint64_t bytes = 0);
  /// Unplugs the phone, and plugs it in again later if `returnsAfter` is set.
  void vanish(std::size_t index);

  std::atomic<std::uint64_t> fileCalls{0};
  std::atomic<std::uint64_t> refusals{0};

 private:
  /// Returns the fault that strikes at this call; nullopt if none does.
  std::optional<SimulatedPhone::Fault::Kind> strike(std::size_t index);
  void returnLater(std::size_t index, std::optional<std::chrono::milliseconds> delay);
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

/// Writes a message of the daemon that provides phones. Returns false if that fails.
bool writeMuxMessage(Stream& stream, std::uint32_t tag, const PropertyList& message);
PropertyList attachedMessage(std::size_t index, const SimulatedPhone& phone);

/// Serves one connection to the lockdown service of a phone until it ends.
void serveLockdown(Bench& bench, std::size_t phone, Stream& stream);
/// Serves one connection to the file service of a phone until it ends.
void serveFiles(Bench& bench, std::size_t phone, Stream& stream);

/// The ports of a phone's services.
inline constexpr std::uint16_t lockdownPort = 62078;
inline constexpr std::uint16_t filesPort = 49152;

}  // namespace tavrix::simulator
