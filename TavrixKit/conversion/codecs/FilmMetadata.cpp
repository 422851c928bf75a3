#include "conversion/codecs/FilmMetadata.h"

#include "device/metadata/Bytes.h"
#include "device/metadata/FileBytes.h"
#include "device/metadata/IsoBoxes.h"

namespace tavrix {
namespace {

constexpr std::size_t headBytes = 8;
constexpr std::uint64_t maxText = 1024;
constexpr std::size_t maxUserData = 16 * 1024;
constexpr char international = '\xA9';  ///< the copyright sign, which begins the type of a text
constexpr std::string_view locationType = "\xA9xyz";
constexpr std::string_view placeType = "loci";  ///< 3GPP TS 26.244, 8.4

std::string bigEndian(std::uint64_t value, int bytes) {
  std::string text;
  for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) {
    text += static_cast<char>(value >> static_cast<unsigned>(shift));
  }
  return text;
}

std::string box(std::string_view type, std::string_view content) {
  return bigEndian(headBytes + content.size(), 4).append(type).append(content);
}

/// In MP4 files, version and flags precede the boxes of "meta"; in QuickTime files they do not.
std::string inFormOfMp4(std::string_view meta) {
  constexpr std::string_view versionAndFlags{"\0\0\0\0", 4};
  if (meta.starts_with(versionAndFlags)) return std::string{meta};
  return std::string{versionAndFlags}.append(meta);
}

std::string keyedIn(FileBytes& file, const IsoBox& parent) {
  const auto meta = IsoBoxes::find(file, parent.begin, parent.end, "meta");
  const auto content = meta ? contentOf(file, *meta) : std::nullopt;
  return content && !content->empty() ? inFormOfMp4(*content) : std::string{};
}

std::string textsOf(FileBytes& file, const IsoBox& userData) {
  std::string texts;
  IsoBoxes boxes{file, userData.begin, userData.end};
  while (const auto text = boxes.next()) {
    const bool isText = text->type.starts_with(international) || text->type == placeType;
    if (!isText || text->length() > maxText) continue;
    const auto content = contentOf(file, *text);
    if (content && texts.size() < maxUserData) texts += box(text->type, *content);
  }
  return texts;
}

bool holds(std::string_view boxes, std::string_view type) {
  while (boxes.size() >= headBytes) {
    if (boxes.substr(4, 4) == type) return true;
    boxes.remove_prefix(tavrix::bigEndian(boxes.substr(0, 4)));
  }
  return false;
}

}  // namespace

FilmMetadata readFilmMetadata(RangedReader& file) {
  FilmMetadata metadata;
  FileBytes bytes{file};
  const auto moov = IsoBoxes::find(bytes, 0, bytes.size(), "moov");
  if (!moov) return metadata;
  metadata.keyed = keyedIn(bytes, *moov);
  if (const auto userData = IsoBoxes::find(bytes, moov->begin, moov->end, "udta")) {
    metadata.userData = textsOf(bytes, *userData);
    if (metadata.keyed.empty()) metadata.keyed = keyedIn(bytes, *userData);
  }
  return metadata;
}

FilmMetadata withLocation(FilmMetadata metadata, const std::string& location) {
  if (location.empty() || location.size() > maxText || holds(metadata.userData, locationType))
    return metadata;
  // The length and language of the text precede it ("eng", three times five bits).
  constexpr std::uint64_t english = 0x15C7;
  const std::string content = bigEndian(location.size(), 2) + bigEndian(english, 2) + location;
  metadata.userData += box(locationType, content);
  return metadata;
}

std::string userDataBox(const FilmMetadata& metadata) {
  // Directly in the header, "meta" has different forms in MP4 and QuickTime files, and readers
  // confuse them; in "udta" it has only one form.
  std::string boxes;
  if (!metadata.keyed.empty()) boxes += box("meta", metadata.keyed);
  boxes += metadata.userData;
  return boxes.empty() ? boxes : box("udta", boxes);
}

}  // namespace tavrix
