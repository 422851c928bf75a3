#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "foundation/GeoPoint.h"
#include "foundation/Time.h"
#include "media/MediaKind.h"

namespace tavrix {

/// One file as the phone lists it. A handle to an immutable record: copying it copies a pointer,
/// and the texts live as long as any handle does. Two assets with the same id are the same file. A
/// moved-from asset may only be assigned or destroyed.
class MediaAsset {
 public:
  using Text = std::optional<std::string_view>;

  MediaAsset(std::string_view id, std::string_view name, Text directory, MediaKind kind,
             std::uint64_t sizeBytes, std::optional<Instant> captureDate,
             std::optional<GeoPoint> location, bool isOptimized, Text cloudID, Text sha256,
             std::optional<Instant> cameraDate = std::nullopt);

  /// Identifies the file within its source; caches, markers and the history refer to it.
  std::string_view id() const;
  /// The file name on the phone, letter case as listed. Never to be trusted as a path.
  std::string_view name() const;
  /// The phone's folder, such as "100APPLE".
  Text directory() const;
  MediaKind kind() const;
  std::uint64_t sizeBytes() const;
  std::optional<Instant> captureDate() const;
  /// What the camera's clock showed, read as if it were UTC: the picture's own date, which no time
  /// zone moves. Nothing where the picture tells none and `captureDate` is that of its file.
  std::optional<Instant> cameraDate() const;
  std::optional<GeoPoint> location() const;
  /// The phone holds only a reduced copy; the original is in the cloud library.
  bool isOptimized() const;
  /// An edited rendering of its shot: the name carries the edit mark, or a photo library says so.
  bool isEditedVariant() const;
  /// The cloud library's identifier of the shot.
  Text cloudID() const;
  /// SHA-256 of the bytes in hexadecimal, when the source has hashed the file.
  Text sha256() const;

  /// Equal in every field.
  friend bool operator==(const MediaAsset& a, const MediaAsset& b);

 private:
  struct Record;
  std::shared_ptr<const Record> record_;
};

}  // namespace tavrix
