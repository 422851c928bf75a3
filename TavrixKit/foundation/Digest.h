#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tavrix {

/// A SHA-256 digest (FIPS 180-4) of bytes that arrive piece by piece. One object can compute many
/// digests one after another. Not safe to use from two threads at once.
class Sha256 {
 public:
  Sha256();
  ~Sha256();
  Sha256(Sha256&&) noexcept;
  Sha256& operator=(Sha256&&) noexcept;

  void add(std::span<const std::byte> bytes);
  /// Returns the digest as 64 lower-case hexadecimal digits. The next add() begins a new digest.
  std::string finish();
  /// Discards the bytes added so far.
  void restart();

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

/// Returns the SHA-256 digest of a text's bytes, in lower-case hexadecimal.
std::string sha256Hex(std::string_view text);

/// Returns the MD5 digest (RFC 1321) of a text's bytes, in lower-case hexadecimal. Only for file
/// formats that derive names from it; not for security.
std::string md5Hex(std::string_view text);

}  // namespace tavrix
