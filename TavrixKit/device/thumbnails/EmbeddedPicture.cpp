#include "device/thumbnails/EmbeddedPicture.h"

#include <algorithm>
#include <span>

#include "device/metadata/MediaFormat.h"
#include "device/thumbnails/PicturePart.h"

namespace tavrix {
namespace {

using EmbeddedPictures::Wanted;

/// Enough for the Exif block of a JPEG file and for the list of items of most HEIF files.
constexpr std::size_t firstBytes = 64 * 1024;

PictureParts partsOf(FileBytes& file, MediaFormat format) {
  switch (format) {
    case MediaFormat::jpeg:
      return jpegParts(file);
    case MediaFormat::tiff:
      return tiffParts(file);
    case MediaFormat::heif:
      return heifParts(file);
    case MediaFormat::movie:
      return movieParts(file);
    case MediaFormat::png:
    case MediaFormat::gif:
    case MediaFormat::bmp:
    case MediaFormat::webp:
      break;
  }
  return {};
}

/// Returns 0 for a number of pixels that no picture has.
std::uint32_t pixels(std::uint64_t value) {
  constexpr std::uint64_t limit = 1U << 30U;
  return value > limit ? 0 : static_cast<std::uint32_t>(value);
}

/// Chooses among the parts of a file, cheapest first, and reads as few as possible.
class Choice {
 public:
  Choice(RangedReader& file, FileBytes& fetched, PictureParts parts)
      : file_(file), fetched_(fetched), found_(std::move(parts)) {
    std::stable_sort(
        found_.parts.begin(), found_.parts.end(),
        [](const PicturePart& a, const PicturePart& b) { return a.length < b.length; });
  }

  const PictureParts& found() const { return found_; }

  /// Returns the cheapest picture with a side of at least `leastSide`, or nullopt if there is none.
  std::optional<EmbeddedPicture> largeEnough(std::uint64_t leastSide) {
    for (PicturePart& part : found_.parts) {
      const std::uint64_t side = part.side();
      if (side > 0 && side < leastSide) continue;
      auto picture = readPart(part);
      if (!picture) continue;
      if (part.side() >= leastSide) return picture;
      // Its size was not known before.
      if (sideOf(*picture) > sideOf(largest_)) largest_ = std::move(*picture);
    }
    return std::nullopt;
  }

  /// Returns the largest picture, after largeEnough() has found none.
  std::optional<EmbeddedPicture> largest() {
    std::stable_sort(
        found_.parts.begin(), found_.parts.end(),
        [](const PicturePart& a, const PicturePart& b) { return a.side() > b.side(); });
    for (PicturePart& part : found_.parts) {
      if (part.side() <= sideOf(largest_)) break;
      auto picture = readPart(part);
      // The bytes may have fewer pixels than the list said.
      if (picture && sideOf(*picture) > sideOf(largest_)) return picture;
    }
    return sideOf(largest_) > 0 ? std::optional{std::move(largest_)} : std::nullopt;
  }

 private:
  static std::uint64_t sideOf(const EmbeddedPicture& picture) {
    return std::max(picture.width, picture.height);
  }

  std::optional<EmbeddedPicture> readPart(PicturePart& part) {
    auto bytes = fileOfPart(file_, fetched_, part);
    if (!bytes) return std::nullopt;
    EmbeddedPicture picture{part.origin, {}, pixels(part.size.width), pixels(part.size.height)};
    const bool hasSize = picture.width > 0 && picture.height > 0;
    if (!hasSize && part.origin != EmbeddedPicture::Origin::keyFrame) return std::nullopt;
    picture.request.bytes = std::move(*bytes);
    if (!part.isJpeg()) return picture;
    // An editor that turned the picture has left the thumbnail as it was.
    if (haveOtherShapes(part.size, found_.full)) return std::nullopt;
    picture.request.orientation = found_.orientation;
    picture.request.fullWidth = pixels(found_.full.width);
    picture.request.fullHeight = pixels(found_.full.height);
    return picture;
  }

  RangedReader& file_;
  FileBytes& fetched_;
  PictureParts found_;
  EmbeddedPicture largest_;
};

std::optional<EmbeddedPicture> wholeFile(RangedReader& file, const FileBytes& fetched,
                                         const PictureParts& parts, const Wanted& wanted) {
  const std::uint64_t size = fetched.size();
  if (!wanted.mayReadWhole || !parts.isDecodable || size > wanted.maxWholeBytes)
    return std::nullopt;
  EmbeddedPicture picture{
      EmbeddedPicture::Origin::whole, {}, pixels(parts.full.width), pixels(parts.full.height)};
  // The beginning has been fetched to find out the format.
  const auto begin = static_cast<std::size_t>(std::min<std::uint64_t>(firstBytes, size));
  std::string& bytes = picture.request.bytes;
  bytes = fetched.kept(0, begin).value_or("");
  const std::size_t kept = bytes.size();
  bytes.resize(static_cast<std::size_t>(size));
  // The file may have become shorter.
  const auto rest = std::span{bytes}.subspan(kept);
  if (!rest.empty() && file.read(kept, rest) < rest.size()) return std::nullopt;
  return picture;
}

std::optional<EmbeddedPicture> choose(Choice& choice, RangedReader& file, const FileBytes& fetched,
                                      const Wanted& wanted) {
  if (auto picture = choice.largeEnough(wanted.leastSide)) return picture;
  if (wanted.prefersWholeToSmaller) {
    if (auto picture = wholeFile(file, fetched, choice.found(), wanted)) return picture;
  }
  if (auto picture = choice.largest()) return picture;
  return wholeFile(file, fetched, choice.found(), wanted);
}

}  // namespace

std::optional<EmbeddedPicture> EmbeddedPictures::find(RangedReader& file, const Wanted& wanted) {
  FileBytes fetched{file, firstBytes};
  // To know a film from a picture takes a step past the media, too.
  const auto head = fetched.at(0, 8);
  if (head && head->ends_with("ftyp")) fetchAfterMedia(fetched);
  const auto format = mediaFormatOf(fetched);
  if (!format) return std::nullopt;
  Choice choice{file, fetched, partsOf(fetched, *format)};
  auto picture = choose(choice, file, fetched, wanted);
  if (picture) picture->filmLength = choice.found().filmLength;
  return picture;
}

}  // namespace tavrix
