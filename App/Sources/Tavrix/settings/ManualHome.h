#pragma once

#include <optional>
#include <string>

namespace tavrix {

/// A home that the person has set: degrees, and the name that was typed for it.
struct ManualHome {
  double latitude = 0;
  double longitude = 0;
  std::optional<std::string> name{};

  friend bool operator==(const ManualHome&, const ManualHome&) = default;
};

}  // namespace tavrix
