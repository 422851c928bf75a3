#pragma once

#include <optional>
#include <string>

namespace tavrix {

/// The home that the user has set: degrees, and the name that the user typed for it.
struct ManualHome {
  double latitude = 0;
  double longitude = 0;
  std::optional<std::string> name{};

  friend bool operator==(const ManualHome&, const ManualHome&) = default;
};

}  // namespace tavrix
