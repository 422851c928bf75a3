#include "device/simulator/platform/Stream.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace tavrix::simulator {
namespace {

constexpr std::uint32_t largestPropertyList = 4 << 20;

}  // namespace

bool Stream::read(std::span<char> buffer) {
  while (!buffer.empty()) {
    const auto count = ssl_ ? SSL_read(ssl_.get(), buffer.data(), static_cast<int>(buffer.size()))
                            : ::recv(socket_.number(), buffer.data(), buffer.size(), 0);
    if (count < 0 && !ssl_ && errno == EINTR) continue;
    if (count <= 0) return false;
    buffer = buffer.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool Stream::write(std::span<const char> bytes) {
  while (!bytes.empty()) {
    const auto count = ssl_ ? SSL_write(ssl_.get(), bytes.data(), static_cast<int>(bytes.size()))
                            : ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && !ssl_ && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool Stream::readSized(std::string& bytes) {
  std::uint32_t size = 0;
  if (!read({reinterpret_cast<char*>(&size), sizeof size})) return false;
  size = ntohl(size);
  if (size > largestPropertyList) return false;
  bytes.resize(size);
  return read(bytes);
}

bool Stream::writeSized(const std::string& bytes, std::size_t cut) {
  const std::uint32_t size = htonl(static_cast<std::uint32_t>(bytes.size()));
  std::string message(sizeof size, '\0');
  std::memcpy(message.data(), &size, sizeof size);
  return write(message.append(bytes, 0, cut));
}

bool Stream::secure(SSL_CTX* context) {
  ssl_.reset(SSL_new(context));
  return ssl_ && SSL_set_fd(ssl_.get(), socket_.number()) == 1 && SSL_accept(ssl_.get()) == 1;
}

void Stream::unsecure() {
  if (ssl_) SSL_shutdown(ssl_.get());
  ssl_.reset();
}

void Stream::hangUp() { ::shutdown(socket_.number(), SHUT_RDWR); }

}  // namespace tavrix::simulator
