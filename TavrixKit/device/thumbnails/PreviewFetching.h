#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>

#include "device/thumbnails/PreviewFolder.h"
#include "media/MediaSource.h"

namespace tavrix {

/// The reason why a file cannot be viewed.
struct PreviewFailure {
  enum class Kind {
    notAPicture,   ///< by its name, so that a viewer might take it for a program
    noSource,      ///< the phone or folder is not there
    sourceFailed,  ///< it could not be read
    wrongSize,     ///< the source delivered another number of bytes than it had listed
    diskFull,
    notWritable,  ///< the folder of previews
  };
  Kind kind = Kind::noSource;
  std::optional<SourceError::Kind> source{};  ///< of Kind::sourceFailed, if known
  int code = 0;                               ///< the system's error code (errno), or 0

  friend bool operator==(const PreviewFailure&, const PreviewFailure&) = default;
};

/// The absolute path of a file to view, or the reason why there is none.
using PreviewResult = std::variant<std::string, PreviewFailure>;

/// One file to fetch: a value that holds everything a worker needs.
struct PreviewOrder {
  /// Opens the files of a phone or folder. Throws FileError, SourceError. When a stop is requested,
  /// a source that waits for its phone ends the wait.
  using OpenMedia = std::function<std::unique_ptr<MediaSource>(std::stop_token stop)>;

  MediaAsset asset;
  std::string key;
  OpenMedia open{};                                     ///< empty if only a kept file may be used
  std::function<void(std::uint64_t bytes)> received{};  ///< called with the bytes so far
  std::stop_token stop{};
};

/// Finds the file of an order in the folder, or else fetches it. Returns nullopt if a stop was
/// requested, or if the file is not kept and the order has no source. Throws nothing.
std::optional<PreviewResult> fetchPreview(PreviewFolder& folder, const PreviewOrder& order);

}  // namespace tavrix
