#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Destination.h"
#include "foundation/Shared.h"
#include "media/MediaSource.h"

namespace tavrix {

/// A phone, or what stands for one, whose catalogue has been read.
struct ConnectedSource {
  std::string deviceName;
  PhoneIdentity phone;
  Shared<std::vector<MediaAsset>> assets;
  std::uint64_t unreadFolders = 0;  ///< whose files nobody could list
  /// Opens its files, on a thread other than the main loop's. Throws FileError, SourceError.
  std::function<std::unique_ptr<MediaSource>()> openMedia;
  /// Throws DestinationError unless a destination and the source lie apart; may be missing.
  std::function<void(const std::string& destination)> checkDestination{};
};

}  // namespace tavrix
