#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

#include "Destination.h"
#include "device/Phones.h"
#include "foundation/Shared.h"
#include "foundation/TimeZone.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Tells that there is no way to the phone, and waits until it is worth trying again; false when it
/// is not, because the run is to end. Called by a source, in the middle of a file.
using AwaitPhone = std::function<bool(PhoneError::Kind)>;

/// A phone, or what stands for one, whose catalogue has been read.
struct ConnectedSource {
  std::string deviceName;
  PhoneIdentity phone;
  Shared<std::vector<MediaAsset>> assets;
  /// In which the assets' dates are read that tell no offset.
  TimeZone zone = TimeZone::utc();
  /// The same catalogue in another zone; called in the background. Missing where nobody knows.
  std::function<std::vector<MediaAsset>(const TimeZone&)> assetsIn{};
  std::uint64_t unreadFolders = 0;  ///< whose files nobody could list
  /// A folder, which goes by its place or by a name that was given: the same card may have been
  /// here under another.
  bool isCard = false;
  /// Opens its files, on a thread other than the main loop's; a source that waits for its phone
  /// ends that when it is asked to stop. Throws FileError, SourceError.
  std::function<std::unique_ptr<MediaSource>(AwaitPhone, std::stop_token)> openMedia;
  /// Throws DestinationError unless a destination and the source lie apart; may be missing.
  std::function<void(const std::string& destination)> checkDestination{};
  /// Throws what stands in the way of fetching any file at all; may be missing.
  std::function<void()> checkMedia{};
  /// Told on the main loop that there is no way to the phone, so that it is looked for; may be
  /// missing.
  std::function<void()> lost{};
};

}  // namespace tavrix
