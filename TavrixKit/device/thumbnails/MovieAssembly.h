#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrix {

/// The parts of a film's track that a film of one of its samples needs.
struct OneSampleTrack {
  std::string description;  ///< the sample's description, a box in "stsd"
  std::string geometry;     ///< matrix and size, the last 44 bytes of the track's header
};

/// Returns all of a QuickTime file that comes before the bytes of its only sample, which are
/// `length` bytes, at most 1 GiB, and end the file.
std::string movieHead(const OneSampleTrack& track, std::uint64_t length);

}  // namespace tavrix
