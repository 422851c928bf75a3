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

  /// Returns 36 characters, letters in lower case: "f81d4fae-7dec-41d0-a765-00a0c91e6bf6".
  std::string text() const;
  /// Reads a text of the form that text() writes, with letters in either case. Returns nullopt if
  /// it has another form.
  static std::optional<Uuid> parse(std::string_view text);

  friend auto operator<=>(const Uuid&, const Uuid&) = default;
};

/// Returns a new identifier of version 4, from the system's source of randomness.
Uuid randomUuid();

}  // namespace tavrix
