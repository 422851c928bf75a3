#include "foundation/Digest.h"

#include <openssl/evp.h>

#include <array>
#include <new>

namespace tavrix {
namespace {

void require(int succeeded) {
  // The library fails only if it runs out of memory.
  if (succeeded != 1) throw std::bad_alloc{};
}

const EVP_MD* algorithm() {
  static EVP_MD* const fetched = EVP_MD_fetch(nullptr, "SHA256", nullptr);
  return fetched;
}

std::string hexadecimal(std::span<const unsigned char> bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string hex;
  hex.reserve(2 * bytes.size());
  for (const unsigned char byte : bytes) {
    hex += digits[byte >> 4U];
    hex += digits[byte & 15U];
  }
  return hex;
}

}  // namespace

struct Sha256::Context {
  EVP_MD_CTX* evp = EVP_MD_CTX_new();

  Context() {
    if (evp == nullptr) throw std::bad_alloc{};
    restart();
  }
  ~Context() { EVP_MD_CTX_free(evp); }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  void restart() const { require(EVP_DigestInit_ex2(evp, algorithm(), nullptr)); }
};

Sha256::Sha256() : context_(std::make_unique<Context>()) {}
Sha256::~Sha256() = default;
Sha256::Sha256(Sha256&&) noexcept = default;
Sha256& Sha256::operator=(Sha256&&) noexcept = default;

void Sha256::add(std::span<const std::byte> bytes) {
  require(EVP_DigestUpdate(context_->evp, bytes.data(), bytes.size()));
}

std::string Sha256::finish() {
  std::array<unsigned char, 32> digest{};
  require(EVP_DigestFinal_ex(context_->evp, digest.data(), nullptr));
  context_->restart();
  return hexadecimal(digest);
}

void Sha256::restart() { context_->restart(); }

std::string sha256Hex(std::string_view text) {
  Sha256 digest;
  digest.add(std::as_bytes(std::span{text}));
  return digest.finish();
}

std::string md5Hex(std::string_view text) {
  std::array<unsigned char, 16> digest{};
  require(EVP_Digest(text.data(), text.size(), digest.data(), nullptr, EVP_md5(), nullptr));
  return hexadecimal(digest);
}

}  // namespace tavrix
