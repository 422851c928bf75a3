#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tavrix {

/// SHA-256 (FIPS 180-4) of bytes that arrive piece by piece. One value computes many digests one
/// after another; not for two threads at once.
class Sha256 {
 public:
  Sha256();
  ~Sha256();
  Sha256(Sha256&&) noexcept;
  Sha256& operator=(Sha256&&) noexcept;

  void add(std::span<const std::byte> bytes);
  /// The digest as 64 lower-case hexadecimal digits; the next add() begins a new one.
  std::string finish();
  /// Forgets what was added.
  void restart();

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

/// The digest of a text's bytes, in lower-case hexadecimal.
std::string sha256Hex(std::string_view text);

/// The MD5 digest (RFC 1321) of a text's bytes, in lower-case hexadecimal, where a file format
/// names things by it; it protects nothing.
std::string md5Hex(std::string_view text);

}  // namespace tavrix
