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

/// One shot taken or saved on the sample phone.
struct SampleShot {
  enum class Kind {
    still,
    live,    ///< a Live Photo: still and motion part
    edited,  ///< a still with its edited rendering and edit sidecar
    video,
    savedPicture,  ///< a picture saved from a message, without date and place
  };

  Kind kind = Kind::still;
  int number = 0;  ///< the number in the file name
  Scene scene = Scene::hills;
  LocalTime taken;                    ///< the time on the phone's clock
  std::chrono::minutes utcOffset{0};  ///< the offset of the clock from UTC
  GeoPoint place;

  Instant instant() const { return Instant{taken.time_since_epoch() - utcOffset}; }
  /// Returns "100APPLE" or "101APPLE"; phones start a new folder from time to time.
  std::string directory() const { return number < 130 ? "100APPLE" : "101APPLE"; }
  /// Returns for example "IMG_0105.JPG"; `mark` is "E" for the edited rendering.
  std::string fileName(const std::string& extension, const std::string& mark = "") const;

  friend bool operator==(const SampleShot&, const SampleShot&) = default;
};

/// Returns shots of spring and summer 2026, ordered by number: Moscow, a trip to Rome, a day in
/// Kazan. The seed shifts times and places slightly.
std::vector<SampleShot> sampleShots(std::uint64_t seed);

}  // namespace tavrix
