#include "device/simulator/platform/PhoneKeys.h"

#include <openssl/core_names.h>
#include <openssl/encoder.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

namespace tavrix::simulator {
namespace {

template <typename Object, void (*release)(Object*)>
struct Release {
  void operator()(Object* object) const { release(object); }
};
using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY, EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509, X509_free>>;
using Encoder = std::unique_ptr<OSSL_ENCODER_CTX, Release<OSSL_ENCODER_CTX, OSSL_ENCODER_CTX_free>>;

std::string encoded(const Key& key, int selection, const char* structure) {
  const Encoder encoder{
      OSSL_ENCODER_CTX_new_for_pkey(key.get(), selection, "PEM", structure, nullptr)};
  unsigned char* bytes = nullptr;
  std::size_t size = 0;
  if (OSSL_ENCODER_to_data(encoder.get(), &bytes, &size) != 1) return {};
  std::string text{reinterpret_cast<const char*>(bytes), size};
  OPENSSL_free(bytes);
  return text;
}

Certificate selfSigned(const Key& key) {
  constexpr long tenYears = 10L * 365 * 24 * 60 * 60;
  Certificate certificate{X509_new()};
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), 0);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), tenYears);
  X509_set_pubkey(certificate.get(), key.get());
  X509_sign(certificate.get(), key.get(), EVP_sha256());
  return certificate;
}

std::string textOf(const Certificate& certificate) {
  const std::unique_ptr<BIO, decltype(&BIO_free)> memory{BIO_new(BIO_s_mem()), BIO_free};
  PEM_write_bio_X509(memory.get(), certificate.get());
  char* bytes = nullptr;
  const long size = BIO_get_mem_data(memory.get(), &bytes);
  return {bytes, static_cast<std::size_t>(size)};
}

}  // namespace

PhoneKeys::PhoneKeys() : context_(SSL_CTX_new(TLS_server_method())) {
  constexpr std::size_t keyBits = 2048;
  const Key key{EVP_RSA_gen(keyBits)};
  const Certificate certificate = selfSigned(key);
  publicKey_ = encoded(key, EVP_PKEY_PUBLIC_KEY, "type-specific");
  privateKey_ = encoded(key, EVP_PKEY_KEYPAIR, "type-specific");
  certificate_ = textOf(certificate);
  SSL_CTX_use_certificate(context_.get(), certificate.get());
  SSL_CTX_use_PrivateKey(context_.get(), key.get());
}

PropertyList PhoneKeys::pairRecord(const std::string& hostID) const {
  PropertyList record;
  for (const char* const name : {"DeviceCertificate", "HostCertificate", "RootCertificate"}) {
    record.setData(name, certificate_);
  }
  record.setData("HostPrivateKey", privateKey_).setData("RootPrivateKey", privateKey_);
  record.set("HostID", "00000000-0000-0000-0000-000000000001");
  record.set("SystemBUID", hostID).set("WiFiMACAddress", "00:00:00:00:00:01");
  return record;
}

}  // namespace tavrix::simulator
