#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tavrix {

/// Remembers from launch to launch how large the phones' catalogues were. The keys are those of the
/// person's defaults.
class CatalogCounts {
 public:
  virtual ~CatalogCounts() = default;
  virtual std::optional<std::uint64_t> count(const std::string& key) const = 0;
  virtual void setCount(const std::string& key, std::uint64_t count) = 0;

  /// Of the last phone, and of the phone with a serial number.
  static std::string keyOfLast() { return "lastCatalogCount"; }
  static std::string keyOf(const std::string& serialNumber) {
    return "lastCatalogCount-" + serialNumber;
  }
};

}  // namespace tavrix
