#pragma once

#include <optional>
#include <string>

#include "device/RangedReader.h"

namespace tavrix {

/// What a film's header tells of its capture, byte for byte: date with offset, place, camera, and
/// whatever else its maker writes there.
struct FilmMetadata {
  /// The content of the box "meta" with metadata by key (QuickTime File Format, "Metadata"), in the
  /// form that MP4 has; empty where there is none.
  std::string keyed;
  /// Boxes with international text (the same, "User data") and the place as 3GPP has it, whole, one
  /// behind the other.
  std::string userData;

  friend bool operator==(const FilmMetadata&, const FilmMetadata&) = default;
};

/// Of a QuickTime or MP4 file; nothing in it for another, and what is broken is left out. Throws
/// only what `file` throws.
FilmMetadata readFilmMetadata(RangedReader& file);

/// With a box for the place as MP4 files have it, unless there is one. `location` is of ISO 6709.
FilmMetadata withLocation(FilmMetadata metadata, const std::string& location);

/// The box "udta" that stands for it in the header of an MP4 file; empty when there is nothing.
std::string userDataBox(const FilmMetadata& metadata);

}  // namespace tavrix
