#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/GeoPoint.h"
#include "foundation/Time.h"
#include "sample/Landscape.h"

namespace tavrix {

/// One press of the shutter on the made-up phone.
struct SampleShot {
  enum class Kind {
    still,
    live,    ///< a Live Photo: still and motion part
    edited,  ///< a still with its edited rendering and edit sidecar
    video,
    savedPicture,  ///< a picture out of a message, without date and place
  };

  Kind kind = Kind::still;
  int number = 0;  ///< the number in the file name
  Scene scene = Scene::hills;
  LocalTime taken;                    ///< what the phone's clock showed
  std::chrono::minutes utcOffset{0};  ///< the clock's distance from UTC
  GeoPoint place;

  Instant instant() const { return Instant{taken.time_since_epoch() - utcOffset}; }
  /// "100APPLE", "101APPLE": phones begin a new folder from time to time.
  std::string directory() const { return number < 130 ? "100APPLE" : "101APPLE"; }
  /// "IMG_0105.JPG"; `mark` is "E" for the edited rendering.
  std::string fileName(const std::string& extension, const std::string& mark = "") const;

  friend bool operator==(const SampleShot&, const SampleShot&) = default;
};

/// A spring and summer of 2026: Moscow, a trip to Rome, a day in Kazan. In the order of their
/// numbers; the seed moves times and places a little.
std::vector<SampleShot> sampleShots(std::uint64_t seed);

}  // namespace tavrix
