#pragma once

#include "device/cable/CatalogCounts.h"
#include "foundation/tasks/SerialQueue.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// The sizes of the phones' catalogues in the user defaults. They are written on a thread of their
/// own, since that waits for the disk, and in a demo not at all.
class KeptCatalogCounts : public CatalogCounts {
 public:
  /// The defaults outlive it.
  KeptCatalogCounts(UserDefaults& defaults, bool isDemo) : defaults_(defaults), isDemo_(isDemo) {}

  /// Nothing for what is no whole number of files.
  std::optional<std::uint64_t> count(const std::string& key) const override;
  void setCount(const std::string& key, std::uint64_t count) override;

 private:
  UserDefaults& defaults_;
  bool isDemo_;
  SerialQueue storing_;
};

}  // namespace tavrix
