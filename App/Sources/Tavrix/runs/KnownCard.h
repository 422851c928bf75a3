#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "transfer/DestinationMarker.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// A card or phone that was copied to a destination before, under another identity.
struct KnownCard {
  std::string label;      ///< its name at that time
  std::string phoneHash;  ///< its identity at that time
  std::size_t known = 0;  ///< planned files recorded for it with the same ids and sizes
  std::size_t planned = 0;

  friend bool operator==(const KnownCard&, const KnownCard&) = default;
};

/// Returns the known phone that a phone new to the destination seems to be: at least half of the
/// planned files are recorded for it. If there are several, returns the one with most of them; if
/// none, nullopt.
std::optional<KnownCard> findKnownCard(const DestinationMarker::Marker& marker,
                                       const std::string& phoneHash, const TransferPlan& plan);

}  // namespace tavrix
