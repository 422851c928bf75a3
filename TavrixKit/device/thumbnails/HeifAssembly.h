#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// A property of a picture in a HEIF file: the type of its box and the content.
struct HeifProperty {
  std::string type;
  std::string content;
};

/// Returns all of a HEIF file (ISO/IEC 23008-12) that comes before the bytes of its only picture,
/// which are `length` bytes, at most 1 GiB, and end the file. `type` is the type of the item, such
/// as "hvc1". The properties apply in their order.
std::string heifHead(std::string_view type, const std::vector<HeifProperty>& properties,
                     std::uint64_t length);

}  // namespace tavrix
