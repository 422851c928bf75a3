#pragma once

#include <optional>
#include <string>

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// The capture metadata in a film's header, byte for byte: date with offset, place, camera, and any
/// other data of its maker.
struct FilmMetadata {
  /// The content of the box "meta" with metadata by key (QuickTime File Format, "Metadata"), in the
  /// form of MP4; empty if there is none.
  std::string keyed;
  /// Complete boxes, one after another: those with international text (QuickTime File Format, "User
  /// data"), and the place in the form of 3GPP.
  std::string userData;

  friend bool operator==(const FilmMetadata&, const FilmMetadata&) = default;
};

/// Reads the metadata of a QuickTime or MP4 file. Returns empty metadata for any other file;
/// damaged parts are left out. Throws only what `file` throws.
FilmMetadata readFilmMetadata(RangedReader& file);

/// Returns the metadata with a box for the place as in MP4 files, unless it has one. `location` is
/// in the format of ISO 6709.
FilmMetadata withLocation(FilmMetadata metadata, const std::string& location);

/// Returns the box "udta" with the metadata for the header of an MP4 file; empty if there are none.
std::string userDataBox(const FilmMetadata& metadata);

}  // namespace tavrix
