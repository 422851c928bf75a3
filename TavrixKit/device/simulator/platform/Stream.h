#pragma once

#include <openssl/ssl.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix::simulator {

struct SSLFree {
  void operator()(SSL* ssl) const { SSL_free(ssl); }
  void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
};

/// A connection; plain, or encrypted from secure() to unsecure(). All functions except hangUp()
/// must be called on one thread.
class Stream {
 public:
  explicit Stream(FileDescriptor socket) : socket_(std::move(socket)) {}

  /// Fills the buffer. Returns false if the other side is gone.
  bool read(std::span<char> buffer);
  bool write(std::span<const char> bytes);
  /// Reads a number of four bytes, most significant byte first, and then that many bytes. Returns
  /// false if there are more than 4 MiB, or if the other side is gone.
  bool readSized(std::string& bytes);
  /// Writes in the same form. With `cut`, writes the size of all `bytes` and only the first `cut`.
  bool writeSized(const std::string& bytes, std::size_t cut = std::string::npos);

  bool secure(SSL_CTX* context);
  void unsecure();
  /// Ends the connection, from any thread.
  void hangUp();

 private:
  FileDescriptor socket_;
  std::unique_ptr<SSL, SSLFree> ssl_;
};

}  // namespace tavrix::simulator
