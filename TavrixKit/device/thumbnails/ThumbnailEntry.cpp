#include "device/thumbnails/ThumbnailEntry.h"

#include <fmt/format.h>

#include <limits>

#include "device/metadata/MetadataCache.h"
#include "foundation/Digest.h"
#include "foundation/json/JsonValue.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix {

ThumbnailKey ThumbnailKey::of(const MediaAsset& asset, const std::string& source,
                              std::uint32_t longestSide) {
  return {.source = source,
          .path = std::string{asset.id()},
          .bytes = asset.sizeBytes(),
          .date = asset.cameraDate() ? asset.cameraDate() : asset.fileDate(),
          .longestSide = longestSide};
}

std::string ThumbnailKey::text() const {
  std::optional<double> seconds;
  if (date) seconds = static_cast<double>(date->time_since_epoch().count()) / 1000;
  return fmt::format("{}|{}|{}", source, MetadataCache::key(path, bytes, seconds), longestSide);
}

namespace ThumbnailFile {
namespace {

constexpr std::string_view magic = "tavrix-thumbnail 2 ";
constexpr std::size_t digestDigits = 64;
constexpr std::string_view quickText = "quick";
constexpr std::string_view sharpText = "sharp";

std::string bodyOf(const std::string& key, const ThumbnailEntry& entry,
                   const std::string& programVersion) {
  StringSink body;
  JsonWriter json{body, JsonLayout::line};
  json.beginObject();
  const auto* const kept = std::get_if<KeptThumbnail>(&entry);
  if (kept != nullptr) {
    const bool isQuick = kept->quality == KeptThumbnail::Quality::quick;
    if (kept->filmLength) {
      json.field("filmMilliseconds", static_cast<std::uint64_t>(kept->filmLength->count()));
    }
    json.field("height", kept->image.height).field("key", key);
    json.field("quality", isQuick ? quickText : sharpText).field("width", kept->image.width);
  } else {
    json.field("key", key).field("notShowable", programVersion);
  }
  json.endObject().finish();
  if (kept != nullptr) body.write(kept->image.jpeg);
  return body.text();
}

std::optional<std::uint32_t> pixels(const JsonValue& head, std::string_view field) {
  const JsonValue* const value = head.member(field);
  const auto number = value == nullptr ? std::nullopt : value->asUnsigned();
  if (!number || *number == 0 || *number > std::numeric_limits<std::uint16_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(*number);
}

std::optional<std::chrono::milliseconds> filmLength(const JsonValue& head) {
  const JsonValue* const value = head.member("filmMilliseconds");
  const auto number = value == nullptr ? std::nullopt : value->asUnsigned();
  if (!number || *number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  return std::chrono::milliseconds{*number};
}

bool holds(const JsonValue& head, std::string_view field, std::string_view text) {
  const JsonValue* const value = head.member(field);
  return value != nullptr && value->asString() != nullptr && *value->asString() == text;
}

std::optional<ThumbnailEntry> entryOf(const JsonValue& head, std::string_view picture,
                                      const std::string& programVersion) {
  if (head.member("notShowable") != nullptr) {
    if (!picture.empty() || !holds(head, "notShowable", programVersion)) return std::nullopt;
    return NotShowable{};
  }
  const auto width = pixels(head, "width");
  const auto height = pixels(head, "height");
  const bool isQuick = holds(head, "quality", quickText);
  const bool isKnown = isQuick || holds(head, "quality", sharpText);
  if (!width || !height || !isKnown || picture.empty()) return std::nullopt;
  return KeptThumbnail{{*width, *height, std::string{picture}},
                       isQuick ? KeptThumbnail::Quality::quick : KeptThumbnail::Quality::sharp,
                       filmLength(head)};
}

}  // namespace

std::string encode(const std::string& key, const ThumbnailEntry& entry,
                   const std::string& programVersion) {
  const std::string body = bodyOf(key, entry, programVersion);
  return fmt::format("{}{}\n{}", magic, sha256Hex(body), body);
}

std::optional<ThumbnailEntry> decode(std::string_view bytes, const std::string& key,
                                     const std::string& programVersion) {
  if (!bytes.starts_with(magic)) return std::nullopt;
  bytes.remove_prefix(magic.size());
  if (bytes.size() <= digestDigits || bytes[digestDigits] != '\n') return std::nullopt;
  const std::string_view digest = bytes.substr(0, digestDigits);
  bytes.remove_prefix(digestDigits + 1);
  if (sha256Hex(bytes) != digest) return std::nullopt;
  const auto end = bytes.find('\n');
  if (end == std::string_view::npos) return std::nullopt;
  try {
    const JsonValue head = parseJson(bytes.substr(0, end));
    if (!holds(head, "key", key)) return std::nullopt;
    return entryOf(head, bytes.substr(end + 1), programVersion);
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

}  // namespace ThumbnailFile

}  // namespace tavrix
