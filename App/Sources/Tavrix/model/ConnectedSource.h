#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "device/cable/Phones.h"
#include "device/thumbnails/ThumbnailMaking.h"
#include "foundation/Shared.h"
#include "foundation/TimeZone.h"
#include "media/MediaSource.h"
#include "runs/Destination.h"

namespace tavrix {

/// Reports that the phone cannot be reached, and waits until another attempt makes sense. Returns
/// false if the run is to end instead. Called by a source, in the middle of a file.
using AwaitPhone = std::function<bool(PhoneError::Kind)>;

/// The files of a source as thumbnails are made from them.
struct PictureAccess {
  std::string key;  ///< of the phone or folder in the metadata cache
  ThumbnailFiles files;
};

/// The files behind the catalogue of a source. The model and its runs share it; the functions are
/// safe to call from any thread unless they say otherwise.
class SourceFiles {
 public:
  virtual ~SourceFiles() = default;

  /// Opens the files for reading. Called in the background. A source that waits for its phone ends
  /// the wait on `stop`. Throws FileError, SourceError.
  virtual std::unique_ptr<MediaSource> openMedia(AwaitPhone awaitPhone,
                                                 std::stop_token stop) const = 0;
  /// Returns the catalogue with dates without an offset read in `zone`, or nullopt if the source
  /// does not know it. Called in the background.
  virtual std::optional<std::vector<MediaAsset>> assetsIn(const TimeZone& /*zone*/) const {
    return std::nullopt;
  }
  /// Returns access to parts of the files, or nullopt if there are no thumbnails of this source. It
  /// keeps working while the files are read by openMedia(), on connections of its own.
  virtual std::optional<PictureAccess> pictures() const { return std::nullopt; }
  /// Throws DestinationError unless the source and `destination` are apart.
  virtual void checkDestination(const std::string& /*destination*/) const {}
  /// Throws what prevents every file from being read.
  virtual void checkMedia() const {}
  /// Reports, on the main loop, that the phone cannot be reached. Returns true if the source looks
  /// for the phone itself and reports it ready again; returns false if the caller must try again.
  virtual bool reportLost() const { return false; }
};

/// A phone, or what stands for one, whose catalogue has been read.
struct ConnectedSource {
  std::string deviceName;
  PhoneIdentity phone;
  Shared<std::vector<MediaAsset>> assets;
  TimeZone zone = TimeZone::utc();  ///< in which the assets' dates without an offset were read
  std::uint64_t unreadFolders = 0;  ///< whose files could not be listed
  /// True for a folder, which is identified by its path or by a given name: the same card may have
  /// been transferred under another identity.
  bool isCard = false;
  std::shared_ptr<const SourceFiles> files;
};

}  // namespace tavrix
