#include "sources/KeptCatalogCounts.h"

#include <cmath>

namespace tavrix {

std::optional<std::uint64_t> KeptCatalogCounts::count(const std::string& key) const {
  constexpr double largestWhole =
      9007199254740992;  // 2^53: above it, a double cannot hold every integer
  const auto number = defaults_.number(key);
  if (!number || !(*number >= 0 && *number <= largestWhole)) return std::nullopt;
  if (*number != std::floor(*number)) return std::nullopt;
  return static_cast<std::uint64_t>(*number);
}

void KeptCatalogCounts::setCount(const std::string& key, std::uint64_t count) {
  if (isDemo_ || this->count(key) == count) return;
  storing_.post([&defaults = defaults_, key, count] {
    defaults.set(key, JsonValue{static_cast<double>(count)});
  });
}

}  // namespace tavrix
