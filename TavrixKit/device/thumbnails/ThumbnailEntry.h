#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "conversion/SmallImage.h"
#include "foundation/Time.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// The longest sides of thumbnails and of previews, in pixels.
inline constexpr std::uint32_t thumbnailSide = 320;
inline constexpr std::uint32_t previewSide = 1280;
inline constexpr std::uint32_t largePreviewSide = 2560;

/// The file that a thumbnail shows, and the size of the thumbnail. As in the metadata cache, a file
/// with another size or date is another file.
struct ThumbnailKey {
  std::string source;  ///< the key of the phone or folder in the metadata cache
  std::string path;    ///< the id of the asset
  std::uint64_t bytes = 0;
  /// The camera's date if the file has one: it does not depend on a time zone. Otherwise the date
  /// of the file.
  std::optional<Instant> date{};
  std::uint32_t longestSide = thumbnailSide;  ///< pixels

  static ThumbnailKey of(const MediaAsset& asset, const std::string& source,
                         std::uint32_t longestSide);
  /// Returns "SOURCE|PATH|BYTES|DATE|SIDE", different for different keys.
  std::string text() const;

  friend bool operator==(const ThumbnailKey&, const ThumbnailKey&) = default;
};

/// A picture as it was shown.
struct KeptThumbnail {
  enum class Quality {
    quick,  ///< to be replaced by one from a larger source
    sharp,  ///< no better one is known
  };
  SmallImage image;
  Quality quality = Quality::sharp;
  std::optional<std::chrono::milliseconds> filmLength{};  ///< see EmbeddedPicture
};
/// A file without a picture that the program can show.
struct NotShowable {
  friend bool operator==(const NotShowable&, const NotShowable&) = default;
};
using ThumbnailEntry = std::variant<KeptThumbnail, NotShowable>;

/// The file of one entry of the cache; docs/thumbnails.md describes it.
namespace ThumbnailFile {

inline constexpr std::uint64_t maxBytes = std::uint64_t{4} << 20U;

/// `programVersion` is stored with NotShowable, for which another version of the program looks
/// again.
std::string encode(const std::string& key, const ThumbnailEntry& entry,
                   const std::string& programVersion);
/// Returns nullopt if the bytes are damaged, belong to another key, or mark a file that
/// `programVersion` has not tried.
std::optional<ThumbnailEntry> decode(std::string_view bytes, const std::string& key,
                                     const std::string& programVersion);

}  // namespace ThumbnailFile

}  // namespace tavrix
