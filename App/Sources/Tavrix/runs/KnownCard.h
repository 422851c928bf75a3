#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "transfer/DestinationMarker.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// A card or phone that was transferred into a destination before, but goes by another identity.
struct KnownCard {
  std::string label;      ///< what it was called then
  std::string phoneHash;  ///< what it was told apart by
  std::size_t known = 0;  ///< planned files that are recorded for it with their ids and sizes
  std::size_t planned = 0;

  friend bool operator==(const KnownCard&, const KnownCard&) = default;
};

/// Whether a phone that is new to the destination seems to be one that it knows: at least half of
/// the planned files are recorded for that one. Of several the one with most of them.
std::optional<KnownCard> findKnownCard(const DestinationMarker::Marker& marker,
                                       const std::string& phoneHash, const TransferPlan& plan);

}  // namespace tavrix
