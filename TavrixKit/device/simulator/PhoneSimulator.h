#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/simulator/SimulatedPhone.h"

namespace tavrix {

/// Phones on a cable that is not there: speaks the protocol of the daemon that hands phones over,
/// on a socket of its own, and behind it what a phone speaks. Programs find it through
/// USBMUXD_SOCKET_ADDRESS. It trusts its clients: it is for tests and demonstrations.
class PhoneSimulator {
 public:
  /// Serves from now on. A socket left at the path is replaced. Throws FileError.
  PhoneSimulator(const std::string& socketPath, std::vector<SimulatedPhone> phones);
  /// All phones leave; the socket is removed.
  ~PhoneSimulator();
  PhoneSimulator(const PhoneSimulator&) = delete;
  PhoneSimulator& operator=(const PhoneSimulator&) = delete;

  /// What programs are to find in USBMUXD_SOCKET_ADDRESS.
  std::string address() const;
  /// Changes a phone; plugging it in or out is told to whoever listens, and out ends its
  /// connections.
  void change(std::size_t phone, const std::function<void(SimulatedPhone&)>& change);
  /// The phone as it is now.
  SimulatedPhone phone(std::size_t phone) const;
  /// Calls on files that were answered so far, of all phones: each a round trip over the cable.
  std::uint64_t fileCalls() const;
  /// How often a phone has refused to trust, or to open its files.
  std::uint64_t refusals() const;

 private:
  class Server;
  std::string socketPath_;
  std::unique_ptr<Server> server_;
};

}  // namespace tavrix
