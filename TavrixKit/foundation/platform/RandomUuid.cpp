#include <random>

#include "foundation/Uuid.h"

namespace tavrix {

Uuid randomUuid() {
  std::random_device source;
  Uuid uuid;
  for (std::uint8_t& byte : uuid.bytes) byte = static_cast<std::uint8_t>(source() & 0xFFU);
  // Version 4 and the variant of RFC 9562, section 5.4.
  uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
  uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
  return uuid;
}

}  // namespace tavrix
