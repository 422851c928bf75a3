#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

enum class PhotoOutputFormat { original, jpeg };
enum class VideoOutputFormat { original, h264 };

/// The layout and format in which the chosen folders are written.
struct TransferOptions {
  enum class Container { folder, zipPerGroup, zipWhole };

  bool separatePhotoVideo = false;  ///< photos into a subfolder "Photo", videos into "Video"
  bool flattenSingleKind = false;   ///< when separating, no subfolder for a group of one kind
  bool onlyNew = true;              ///< plan only files that are not already in the destination
  PhotoOutputFormat photoFormat = PhotoOutputFormat::original;
  double jpegQuality = 0.85;  ///< 0 to 1
  VideoOutputFormat videoFormat = VideoOutputFormat::original;
  Container container = Container::folder;
  bool flatLayout = false;  ///< no group folders: every file goes straight into the destination
  std::optional<std::string> fileNamePrefix;  ///< put in front of every file name

  friend bool operator==(const TransferOptions&, const TransferOptions&) = default;
};

/// Return the enumerators' names: "original", "jpeg"; "original", "h264"; "folder", "zipPerGroup",
/// "zipWhole".
std::string_view textOf(PhotoOutputFormat format);
std::string_view textOf(VideoOutputFormat format);
std::string_view textOf(TransferOptions::Container container);

}  // namespace tavrix
