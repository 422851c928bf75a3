#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "foundation/GeoPoint.h"
#include "foundation/Time.h"
#include "media/DateSource.h"
#include "media/MediaKind.h"

namespace tavrix {

/// One file as the phone lists it. A handle to an immutable record: copying it copies a pointer,
/// and the texts are valid as long as any handle exists. Two assets with the same id are the same
/// file. A moved-from asset may only be assigned to or destroyed.
class MediaAsset {
 public:
  using Text = std::optional<std::string_view>;

  /// `fileDate` is given if `captureDate` is from the name of the file.
  MediaAsset(std::string_view id, std::string_view name, Text directory, MediaKind kind,
             std::uint64_t sizeBytes, std::optional<Instant> captureDate,
             std::optional<GeoPoint> location, bool isOptimized, Text cloudID, Text sha256,
             std::optional<Instant> cameraDate = std::nullopt, bool hasCameraData = false,
             Text contentID = std::nullopt, std::optional<Instant> fileDate = std::nullopt);

  /// Returns the identifier of the file within its source. Caches, markers and the history refer to
  /// it.
  std::string_view id() const;
  /// Returns the file name on the phone, in the listed letter case. Must not be trusted as a path.
  std::string_view name() const;
  /// Returns the folder on the phone, such as "100APPLE".
  Text directory() const;
  MediaKind kind() const;
  std::uint64_t sizeBytes() const;
  std::optional<Instant> captureDate() const;
  /// Returns the time on the camera's clock, interpreted as UTC: the picture's own date,
  /// independent of any time zone. Returns nullopt if the picture has no date, so that
  /// `captureDate` is that of the file.
  std::optional<Instant> cameraDate() const;
  /// Returns where `captureDate` comes from, or nullopt if there is none.
  std::optional<DateSource> dateSource() const;
  /// Returns the date of the file itself where it replaces or would replace that of the picture: it
  /// is `captureDate` unless that is from the name of the file. By it a copy of a picture without a
  /// date of its own is known again. Returns nullopt if the picture has a date.
  std::optional<Instant> fileDate() const;
  std::optional<GeoPoint> location() const;
  /// Returns true if the phone has only a reduced copy and the original is in the cloud library.
  bool isOptimized() const;
  /// Returns true if the file is an edited rendering of its shot: its name has the edit mark, or
  /// the photo library lists it as edited.
  bool isEditedVariant() const;
  /// Returns true if the file is a picture of the screen: its name begins with "Screenshot", or it
  /// is a PNG file with neither a position nor a camera's data on lens and exposure.
  bool isScreenshot() const;
  /// Returns a fingerprint of the identifier that the camera writes into a still and its motion
  /// part alike, or nullopt if the file has none. It is valid within the process.
  std::optional<std::uint64_t> contentID() const;
  /// Returns the cloud library's identifier of the shot.
  Text cloudID() const;
  /// Returns the SHA-256 of the bytes in hexadecimal, or nullopt if the source has none.
  Text sha256() const;

  /// Compares all fields.
  friend bool operator==(const MediaAsset& a, const MediaAsset& b);

 private:
  struct Record;
  std::shared_ptr<const Record> record_;
};

/// Returns a copy of an optional text of an asset that does not refer to the asset.
inline std::optional<std::string> owned(MediaAsset::Text text) {
  return text ? std::optional<std::string>{*text} : std::nullopt;
}

}  // namespace tavrix
