#include "device/cable/platform/UsbServiceStream.h"

#include <limits>

namespace tavrix {
namespace {

constexpr unsigned longestSilence = 10'000;  // ms

class UsbServiceStream : public ServiceStream {
 public:
  explicit UsbServiceStream(ConnectionHandle connection) : connection_(std::move(connection)) {}

  bool send(std::string_view bytes) override {
    if (bytes.size() > largest) return false;
    const BrokenPipeGuard guard;
    std::uint32_t count = 0;
    const auto error = idevice_connection_send(connection_.get(), bytes.data(),
                                               static_cast<std::uint32_t>(bytes.size()), &count);
    return error == IDEVICE_E_SUCCESS && count == bytes.size();
  }

  bool receive(std::span<char> buffer) override {
    if (buffer.size() > largest) return false;
    // An encrypted connection may also write here.
    const BrokenPipeGuard guard;
    while (!buffer.empty()) {
      const auto size = static_cast<std::uint32_t>(buffer.size());
      std::uint32_t count = 0;
      const auto error = idevice_connection_receive_timeout(connection_.get(), buffer.data(), size,
                                                            &count, longestSilence);
      // The library may set the count to anything if it fails. No bytes are the end.
      if (error != IDEVICE_E_SUCCESS || count == 0 || count > size) return false;
      buffer = buffer.subspan(count);
    }
    return true;
  }

 private:
  static constexpr std::size_t largest = std::numeric_limits<int>::max();

  ConnectionHandle connection_;
};

}  // namespace

std::unique_ptr<ServiceStream> connectToService(idevice_t device,
                                                const lockdownd_service_descriptor& service) {
  idevice_connection_t raw = nullptr;
  if (idevice_connect(device, service.port, &raw) != IDEVICE_E_SUCCESS) {
    throw PhoneError{PhoneError::Kind::unreachable};
  }
  ConnectionHandle connection{raw};
  if (service.ssl_enabled != 0 && idevice_connection_enable_ssl(raw) != IDEVICE_E_SUCCESS) {
    throw PhoneError{PhoneError::Kind::unreachable};
  }
  return std::make_unique<UsbServiceStream>(std::move(connection));
}

}  // namespace tavrix
