#pragma once

#include <optional>
#include <string_view>

namespace tavrix {

/// What a file on the phone is, coarsely.
enum class MediaKind { photo, video, sidecar, other };

/// "photo", "video", "sidecar", "other".
std::string_view textOf(MediaKind kind);
/// The kind of a text form; nothing for any other text.
std::optional<MediaKind> mediaKindOf(std::string_view text);
/// The kind by the text after a name's last dot (a leading dot included), letter case aside: "aae"
/// is a sidecar, known picture and film formats are photo and video, everything else is other.
MediaKind mediaKindOfFileName(std::string_view name);
/// Photos and videos are what a person sees as pictures.
constexpr bool isPictureKind(MediaKind kind) {
  return kind == MediaKind::photo || kind == MediaKind::video;
}

}  // namespace tavrix
