#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string>

#include "device/simulator/platform/PropertyList.h"
#include "device/simulator/platform/Stream.h"

namespace tavrix::simulator {

/// The keys of a simulated phone, generated in every run of a program. One key serves the phone and
/// the computers that it trusts.
class PhoneKeys {
 public:
  PhoneKeys();

  /// Returns the public key in PEM, as a phone provides it.
  const std::string& publicKey() const { return publicKey_; }
  SSL_CTX* context() const { return context_.get(); }
  /// Returns the record that a trusted computer keeps of a phone.
  PropertyList pairRecord(const std::string& hostID) const;

 private:
  std::string publicKey_;
  std::string privateKey_;
  std::string certificate_;
  std::unique_ptr<SSL_CTX, SSLFree> context_;
};

}  // namespace tavrix::simulator
