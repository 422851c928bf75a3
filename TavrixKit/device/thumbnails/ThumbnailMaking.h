#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "device/metadata/RangedReader.h"
#include "device/thumbnails/EmbeddedPicture.h"
#include "device/thumbnails/ThumbnailCache.h"

namespace tavrix {

/// Returns the cheapest picture in a file whose longest side has at least `leastSide` pixels, else
/// the largest smaller one, else nullopt. With `mayReadWhole`, the whole file is a candidate, too,
/// if it can be decoded, and is preferred to a smaller picture. Throws what the reader throws.
/// Called on several threads.
using FindPicture = std::function<std::optional<EmbeddedPicture>(
    RangedReader& file, const MediaAsset& asset, std::uint32_t leastSide, bool mayReadWhole)>;

/// Decodes a picture outside of this process. Throws ConversionError.
using DecodePicture =
    std::function<SmallImage(const PictureRequest& request, std::stop_token stop)>;

/// The decoder of one worker. Both functions are called on its thread.
struct ThumbnailDecoder {
  DecodePicture decode;
  /// Called before the first file is read, so that the decoder starts meanwhile. May be empty.
  std::function<void()> prepare{};
};

/// Access to the files of a phone or folder. The functions are called on several threads at once.
struct ThumbnailFiles {
  /// Opens the file of an asset. It and the reader throw any exception if the file cannot be read.
  std::function<std::unique_ptr<RangedReader>(const MediaAsset& asset)> open;
  /// Returns the absolute path of an asset on this machine, for thumbnails of other programs. Empty
  /// for a phone.
  std::function<std::optional<std::string>(const MediaAsset& asset)> localPath{};
};

/// One piece of work for a worker: a value that holds everything it needs.
struct ThumbnailOrder {
  enum class Step {
    lookUp,  ///< in the cache
    quick,   ///< the cheapest embedded picture
    sharp,   ///< one of full size, if need be from the whole file
  };

  MediaAsset asset;
  ThumbnailKey key;
  Step step = Step::lookUp;
  std::shared_ptr<const SmallImage> quick{};      ///< known before a sharp one is made; may be null
  std::shared_ptr<const ThumbnailFiles> files{};  ///< null if `landedPath` is to be read instead
  std::optional<std::string> landedPath{};
  std::stop_token unwanted{};  ///< ends reading, and decoding of a whole file
  std::stop_token shutdown{};  ///< ends everything
};

struct ThumbnailOutcome {
  enum class Kind {
    final,        ///< `image` is the best there is
    preliminary,  ///< `image` is to be replaced
    absent,       ///< this step found nothing; the next one may
    notShowable,
    notNow,   ///< reading failed; another attempt may succeed
    stopped,  ///< on request
  };
  Kind kind = Kind::absent;
  std::shared_ptr<const SmallImage> image{};
  std::optional<std::chrono::milliseconds> filmLength{};  ///< see EmbeddedPicture
};

/// Makes thumbnails on the threads of workers. The members may be called on several threads at once
/// and throw nothing.
class ThumbnailMaking {
 public:
  struct Tools {
    FindPicture find;
    std::shared_ptr<ThumbnailCache> cache{};  ///< may be null
    /// The folder of other programs' thumbnails, see DesktopThumbnails.
    std::optional<std::string> desktopThumbnails{};
  };
  explicit ThumbnailMaking(Tools tools) : tools_(std::move(tools)) {}

  /// Looks the key up in the cache.
  ThumbnailOutcome lookUp(const ThumbnailKey& key) const;
  /// Does the step of the order, which is not lookUp, and keeps the result in the cache.
  ThumbnailOutcome make(const ThumbnailOrder& order, const DecodePicture& decode) const;
  /// See ThumbnailCache::trim().
  void trimCache() const;

 private:
  Tools tools_;
};

}  // namespace tavrix
