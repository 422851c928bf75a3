#include "media/MediaKind.h"

#include <algorithm>
#include <array>

#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr std::array<std::string_view, 4> kindTexts{"photo", "video", "sidecar", "other"};
constexpr std::array<std::string_view, 31> photoExtensions{
    "heic", "heif", "hif",  "jpg",  "jpeg", "jpe", "jfif", "mpo", "png", "dng", "gif",
    "tif",  "tiff", "webp", "avif", "jxl",  "bmp", "cr2",  "cr3", "nef", "arw", "srw",
    "raf",  "orf",  "rw2",  "rwl",  "pef",  "x3f", "3fr",  "iiq", "erf"};
constexpr std::array<std::string_view, 13> videoExtensions{
    "mov", "mp4", "m4v", "3gp", "3g2", "avi", "mpg", "mpeg", "mts", "m2ts", "mkv", "webm", "insv"};

template <std::size_t count>
bool contains(const std::array<std::string_view, count>& list, std::string_view text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

}  // namespace

std::string_view textOf(MediaKind kind) { return kindTexts.at(static_cast<std::size_t>(kind)); }

std::optional<MediaKind> mediaKindOf(std::string_view text) {
  const auto found = std::find(kindTexts.begin(), kindTexts.end(), text);
  if (found == kindTexts.end()) return std::nullopt;
  return static_cast<MediaKind>(found - kindTexts.begin());
}

MediaKind mediaKindOfFileName(std::string_view name) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos) return MediaKind::other;
  const std::string extension = lowerCased(name.substr(dot + 1));
  if (extension == "aae") return MediaKind::sidecar;
  if (contains(photoExtensions, extension)) return MediaKind::photo;
  if (contains(videoExtensions, extension)) return MediaKind::video;
  return MediaKind::other;
}

}  // namespace tavrix
