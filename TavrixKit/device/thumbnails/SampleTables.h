#pragma once

#include <cstdint>
#include <optional>

#include "device/metadata/FileBytes.h"
#include "device/metadata/IsoBoxes.h"

namespace tavrix {

/// A coded picture of a film: its bytes in the file, and which of the track's descriptions it has,
/// counted from 1.
struct FilmSample {
  std::uint64_t begin = 0;
  std::uint64_t length = 0;
  std::uint64_t description = 0;

  friend bool operator==(const FilmSample&, const FilmSample&) = default;
};

/// Returns the first sample of a track that can be decoded without another. `table` is the track's
/// box "stbl" (ISO/IEC 14496-12, 8.5 to 8.7). Only the beginnings of its lists are read. Returns
/// nullopt if the table is damaged or the sample is far from the track's beginning.
std::optional<FilmSample> firstKeySample(FileBytes& file, const IsoBox& table);

}  // namespace tavrix
