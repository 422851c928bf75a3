#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tavrix {

/// Remembers the sizes of the phones' catalogues from launch to launch. The keys are those of the
/// user's defaults.
class CatalogCounts {
 public:
  virtual ~CatalogCounts() = default;
  virtual std::optional<std::uint64_t> count(const std::string& key) const = 0;
  virtual void setCount(const std::string& key, std::uint64_t count) = 0;

  /// Returns the key of the last phone.
  static std::string keyOfLast() { return "lastCatalogCount"; }
  /// Returns the key of the phone with a serial number.
  static std::string keyOf(const std::string& serialNumber) {
    return "lastCatalogCount-" + serialNumber;
  }
};

}  // namespace tavrix
