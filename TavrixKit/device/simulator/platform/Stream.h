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

/// One connection; plain, or encrypted from secure() to unsecure(). All calls but hangUp() belong
/// to one thread.
class Stream {
 public:
  explicit Stream(FileDescriptor socket) : socket_(std::move(socket)) {}

  /// Fills the buffer; false when the other side is gone.
  bool read(std::span<char> buffer);
  bool write(std::span<const char> bytes);
  /// A number of four bytes, then that many; not more than `limit`.
  bool readSized(std::string& bytes);
  bool writeSized(const std::string& bytes);

  bool secure(SSL_CTX* context);
  void unsecure();
  /// Ends the connection, from any thread.
  void hangUp();

 private:
  FileDescriptor socket_;
  std::unique_ptr<SSL, SSLFree> ssl_;
};

}  // namespace tavrix::simulator
