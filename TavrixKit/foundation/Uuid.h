#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

/// A universally unique identifier (RFC 9562).
struct Uuid {
  std::array<std::uint8_t, 16> bytes{};

  /// Thirty-six characters, digits in lower case: "f81d4fae-7dec-41d0-a765-00a0c91e6bf6".
  std::string text() const;
  /// The reverse of text(), letters of either case; nothing for anything else.
  static std::optional<Uuid> parse(std::string_view text);

  friend auto operator<=>(const Uuid&, const Uuid&) = default;
};

/// A new identifier of version 4, from the system's source of randomness.
Uuid randomUuid();

}  // namespace tavrix
