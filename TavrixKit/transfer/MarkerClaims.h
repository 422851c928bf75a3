#pragma once

#include <string_view>
#include <utility>

#include "foundation/StringMap.h"
#include "transfer/DestinationMarker.h"

namespace tavrix::DestinationMarker {

/// The entry that counts for a path, of all those that name it.
struct Claim {
  const PhoneRecord* record = nullptr;
  const FileRecord* file = nullptr;

  bool hasDigest() const;
  /// One with a digest counts more, then that of the later record.
  bool outranks(const Claim& other) const {
    return std::pair{hasDigest(), record->lastTransfer} >
           std::pair{other.hasDigest(), other.record->lastTransfer};
  }
};

/// By path. Points into the marker, which must stay as it is.
using Claims = absl::flat_hash_map<std::string_view, Claim>;
Claims claims(const Marker& marker);

/// Whether a recorded digest is one: 64 hexadecimal digits.
bool isDigest(std::string_view text);

}  // namespace tavrix::DestinationMarker
