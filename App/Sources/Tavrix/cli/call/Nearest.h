#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix::cli {

/// Returns the number of characters to insert, delete, replace or swap with their neighbour to turn
/// one word into the other (the optimal string alignment distance). Ignores ASCII letter case.
inline std::size_t typingDistance(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  std::vector<std::vector<std::size_t>> distance(a.size() + 1,
                                                 std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        distance[i][j] = i + j;
        continue;
      }
      const std::size_t change = lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1;
      distance[i][j] = std::min(
          {distance[i - 1][j] + 1, distance[i][j - 1] + 1, distance[i - 1][j - 1] + change});
      const bool isSwapped = i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) &&
                             lower(a[i - 2]) == lower(b[j - 1]);
      if (isSwapped) distance[i][j] = std::min(distance[i][j], distance[i - 2][j - 2] + 1);
    }
  }
  return distance[a.size()][b.size()];
}

/// Returns the word that the user probably meant, the first one if several are equally near.
/// Returns nullopt if all differ in more than a third of their characters.
template <typename Words>
std::optional<std::string> nearest(std::string_view typed, const Words& words) {
  std::optional<std::string> best;
  std::size_t least = 0;
  for (const std::string_view word : words) {
    if (typed.size() > 2 * word.size()) continue;
    const std::size_t distance = typingDistance(typed, word);
    const bool isNear = 3 * distance <= std::max<std::size_t>(word.size(), 3);
    if (isNear && (!best || distance < least)) {
      best = word;
      least = distance;
    }
  }
  return best;
}

}  // namespace tavrix::cli
