#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/simulator/SimulatedPhone.h"

namespace tavrix {

/// Simulates phones on a cable. Speaks the protocol of the daemon that provides phones, on a socket
/// of its own, and behind it the protocols of a phone. Programs find it through
/// USBMUXD_SOCKET_ADDRESS. It trusts its clients, so it is only for tests and demonstrations.
class PhoneSimulator {
 public:
  /// Starts to serve. Replaces a socket that was left at the path. Throws FileError.
  PhoneSimulator(const std::string& socketPath, std::vector<SimulatedPhone> phones);
  /// Unplugs all phones and removes the socket.
  ~PhoneSimulator();
  PhoneSimulator(const PhoneSimulator&) = delete;
  PhoneSimulator& operator=(const PhoneSimulator&) = delete;

  /// Returns the value that programs need in USBMUXD_SOCKET_ADDRESS.
  std::string address() const;
  /// Changes a phone. Reports to listening programs that it was plugged in or unplugged; unplugging
  /// also ends its connections.
  void change(std::size_t phone, const std::function<void(SimulatedPhone&)>& change);
  /// Sets whether the service ends every new connection at once, as a service does that is about to
  /// start or end. Connections that exist stay.
  void rejectConnections(bool isRejecting);
  /// Returns the number of connections that were ended in this way.
  std::uint64_t rejections() const;
  /// Returns the current properties of a phone.
  SimulatedPhone phone(std::size_t phone) const;
  /// Returns the number of file calls answered so far by all phones; each is a round trip over the
  /// cable.
  std::uint64_t fileCalls() const;
  /// Returns the number of times that a phone refused to trust a computer or to open its files.
  std::uint64_t refusals() const;

 private:
  class Server;
  std::string socketPath_;
  std::unique_ptr<Server> server_;
};

}  // namespace tavrix
