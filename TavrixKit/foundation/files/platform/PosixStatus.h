#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "foundation/files/Folder.h"

namespace tavrix {

/// Converts the system's status of a file or folder. The modification time is rounded down to a
/// millisecond and limited to 2^43 seconds before and after 1970.
inline FileStatus statusOf(const struct stat& raw) {
  using namespace std::chrono;
  using Type = FileStatus::Type;
  const Type type = S_ISREG(raw.st_mode)   ? Type::file
                    : S_ISDIR(raw.st_mode) ? Type::folder
                    : S_ISLNK(raw.st_mode) ? Type::link
                                           : Type::other;
  constexpr std::int64_t limit = std::int64_t{1} << 43U;
  // Not in nanoseconds: 64 bits of them overflow in the year 2262.
  const seconds whole{std::clamp<std::int64_t>(raw.st_mtim.tv_sec, -limit, limit)};
  const auto rest = floor<milliseconds>(nanoseconds{raw.st_mtim.tv_nsec});
  return {type, static_cast<std::uint64_t>(raw.st_size), Instant{whole + rest}};
}

}  // namespace tavrix
