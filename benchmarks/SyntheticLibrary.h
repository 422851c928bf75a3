#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/GeoPoint.h"
#include "transfer/TransferPlan.h"

namespace tavrix::bench {

/// Writes the snapshot of a made-up phone with `files` files over fifteen years: stills, Live
/// Photos, edited shots with sidecars, videos; four of five with a position near one of 2,000
/// places.
void writeSnapshot(const std::string& path, std::size_t files);

/// Fills bytes with noise that no compression makes smaller and that goes on from a state.
void fillWithNoise(std::string& bytes, std::uint64_t& state);

/// Points scattered within a kilometre or so around `places` places.
std::vector<GeoPoint> scatteredPoints(std::size_t count, std::size_t places);

/// A life of fifteen years: shots come in bursts, the events, and a trip is a row of events in one
/// place away from home. Trips are spread evenly and go around the places in turn.
struct TravelPlan {
  std::size_t shots = 0;
  std::size_t events = 0;
  std::size_t trips = 0;
  std::size_t places = 0;  ///< to which trips go
};
/// Its stills in capture order, nine of ten with a position.
std::vector<MediaAsset> travels(const TravelPlan& plan);

/// What the whole way from the catalogue to the plan yields.
TransferPlan planOf(const std::vector<MediaAsset>& assets);
std::vector<MediaAsset> readCatalogue(const std::string& path);

}  // namespace tavrix::bench
