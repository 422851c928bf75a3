#pragma once

#include <optional>
#include <string_view>

namespace tavrix {

/// The rough kind of a file on the phone.
enum class MediaKind { photo, video, sidecar, other };

/// Returns "photo", "video", "sidecar" or "other".
std::string_view textOf(MediaKind kind);
/// Returns the kind that textOf() writes as `text`, or nullopt if there is none.
std::optional<MediaKind> mediaKindOf(std::string_view text);
/// Returns the kind from the text after the last dot of a name (a leading dot is also a dot),
/// ignoring letter case: "aae" is a sidecar, known picture and film formats are photo and video,
/// everything else is other.
MediaKind mediaKindOfFileName(std::string_view name);
/// Returns true for the kinds that the user sees as pictures: photos and videos.
constexpr bool isPictureKind(MediaKind kind) {
  return kind == MediaKind::photo || kind == MediaKind::video;
}

}  // namespace tavrix
