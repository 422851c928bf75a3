#pragma once

#include <string_view>
#include <utility>

#include "foundation/StringMap.h"
#include "transfer/DestinationMarker.h"

namespace tavrix::DestinationMarker {

/// The entry that takes precedence among all entries that name a path.
struct Claim {
  const PhoneRecord* record = nullptr;
  const FileRecord* file = nullptr;

  bool hasDigest() const;
  /// A claim with a digest outranks one without; ties are settled by the date of the record.
  bool outranks(const Claim& other) const {
    return std::pair{hasDigest(), record->lastTransfer} >
           std::pair{other.hasDigest(), other.record->lastTransfer};
  }
};

/// Claims by path. They point into the marker, which must not change.
using Claims = absl::flat_hash_map<std::string_view, Claim>;
Claims claims(const Marker& marker);

/// Returns true if `text` is a digest: 64 hexadecimal digits.
bool isDigest(std::string_view text);

}  // namespace tavrix::DestinationMarker
