#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "foundation/files/Folder.h"

namespace tavrix {

/// What the system tells of a file or folder. A moment is rounded down to a millisecond; one that
/// is more than 2^43 seconds from 1970 is taken for that limit.
inline FileStatus statusOf(const struct stat& raw) {
  using namespace std::chrono;
  using Type = FileStatus::Type;
  const Type type = S_ISREG(raw.st_mode)   ? Type::file
                    : S_ISDIR(raw.st_mode) ? Type::folder
                    : S_ISLNK(raw.st_mode) ? Type::link
                                           : Type::other;
  constexpr std::int64_t limit = std::int64_t{1} << 43U;
  // In nanoseconds 64 bits end with the year 2262.
  const seconds whole{std::clamp<std::int64_t>(raw.st_mtim.tv_sec, -limit, limit)};
  const auto rest = floor<milliseconds>(nanoseconds{raw.st_mtim.tv_nsec});
  return {type, static_cast<std::uint64_t>(raw.st_size), Instant{whole + rest}};
}

}  // namespace tavrix
