#pragma once

#include "device/cable/CatalogCounts.h"
#include "foundation/tasks/SerialQueue.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// The sizes of the phones' catalogues, kept in the user defaults. They are written on a thread of
/// their own, because writing waits for the disk. In a demo they are not written.
class KeptCatalogCounts : public CatalogCounts {
 public:
  /// `defaults` must outlive this object.
  KeptCatalogCounts(UserDefaults& defaults, bool isDemo) : defaults_(defaults), isDemo_(isDemo) {}

  /// Returns nullopt if the stored value is not a whole number of files.
  std::optional<std::uint64_t> count(const std::string& key) const override;
  void setCount(const std::string& key, std::uint64_t count) override;

 private:
  UserDefaults& defaults_;
  bool isDemo_;
  SerialQueue storing_;
};

}  // namespace tavrix
