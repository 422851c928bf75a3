#include "device/thumbnails/ThumbnailMaking.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <limits>

#include "device/thumbnails/DesktopThumbnails.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using Kind = ThumbnailOutcome::Kind;
using Step = ThumbnailOrder::Step;

/// Thrown between two ranges if the picture is not wanted any more.
class Unwanted : public std::exception {};

class StoppableReader : public RangedReader {
 public:
  StoppableReader(std::unique_ptr<RangedReader> inner, std::stop_token stop)
      : inner_(std::move(inner)), stop_(std::move(stop)) {}

  std::uint64_t size() const override { return inner_->size(); }
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    if (stop_.stop_requested()) throw Unwanted{};
    return inner_->read(offset, buffer);
  }

 private:
  std::unique_ptr<RangedReader> inner_;
  std::stop_token stop_;
};

std::uint32_t longestSide(const SmallImage& image) { return std::max(image.width, image.height); }

std::optional<std::string> desktopPng(const std::string& thumbnails, const std::string& path,
                                      std::uint32_t leastSide) {
  if (!path.starts_with('/')) return std::nullopt;
  try {
    const auto status = openFolder(parentPath(path) + "/")->status(lastPathComponent(path));
    if (!status || status->type != FileStatus::Type::file) return std::nullopt;
    return DesktopThumbnails::find(thumbnails, {path, status->size, status->modified}, leastSide);
  } catch (const FileError&) {
    return std::nullopt;
  }
}

/// One order under way.
class Making {
 public:
  Making(const ThumbnailMaking::Tools& tools, const ThumbnailOrder& order,
         const DecodePicture& decode)
      : tools_(tools), order_(order), decode_(decode) {}

  ThumbnailOutcome quick() const {
    if (auto image = desktopThumbnail()) return {Kind::final, std::move(image), filmLength()};
    const auto file = open();
    auto picture = tools_.find(*file, order_.asset, enoughSide(), false);
    auto image = picture ? decoded(*picture) : nullptr;
    if (image == nullptr) return {Kind::absent};
    const std::uint32_t full = std::max(picture->request.fullWidth, picture->request.fullHeight);
    const bool isFinal = isEnough(*image) || (full > 0 && longestSide(*image) >= full);
    return {isFinal ? Kind::final : Kind::preliminary, std::move(image), picture->filmLength};
  }

  ThumbnailOutcome sharp() const {
    auto best = order_.quick;
    const auto file = open();
    auto picture = tools_.find(*file, order_.asset, order_.key.longestSide, true);
    if (picture && promisesMore(*picture, best)) better(best, decoded(*picture));
    // The pictures inside a file may be broken while the file itself is not.
    const bool isTried = picture && picture->origin == EmbeddedPicture::Origin::whole;
    if (best == nullptr && !isTried) {
      auto whole = tools_.find(*file, order_.asset, largerThanAny, true);
      if (whole && whole->origin == EmbeddedPicture::Origin::whole) better(best, decoded(*whole));
    }
    if (best == nullptr) return {Kind::notShowable};
    return {Kind::final, std::move(best), picture ? picture->filmLength : std::nullopt};
  }

 private:
  using Image = std::shared_ptr<const SmallImage>;
  static constexpr std::uint32_t largerThanAny = std::numeric_limits<std::uint32_t>::max();

  /// A smaller image is replaced by one from a larger source.
  std::uint32_t enoughSide() const { return (order_.key.longestSide + 1) / 2; }
  bool isEnough(const SmallImage& image) const { return longestSide(image) >= enoughSide(); }

  static bool promisesMore(const EmbeddedPicture& picture, const Image& known) {
    const std::uint32_t side = std::max(picture.width, picture.height);
    const bool isWhole = picture.origin == EmbeddedPicture::Origin::whole;
    return known == nullptr || isWhole || side == 0 || side > longestSide(*known);
  }
  static void better(Image& best, Image image) {
    if (image == nullptr) return;
    if (best == nullptr || longestSide(*image) > longestSide(*best)) best = std::move(image);
  }

  /// Returns what the file itself says, for a thumbnail that does not say it.
  std::optional<std::chrono::milliseconds> filmLength() const {
    if (order_.asset.kind() != MediaKind::video) return std::nullopt;
    try {
      const auto picture = tools_.find(*open(), order_.asset, enoughSide(), false);
      return picture ? picture->filmLength : std::nullopt;
    } catch (const Unwanted&) {
      throw;
    } catch (const std::exception&) {
      return std::nullopt;  // the thumbnail is good without it
    }
  }

  std::unique_ptr<RangedReader> open() const {
    auto file = order_.landedPath ? openForRangedReading(*order_.landedPath)
                                  : order_.files->open(order_.asset);
    // Another file may have had the name of the copy before.
    if (order_.landedPath && file->size() != order_.asset.sizeBytes()) {
      throw FileError{FileOperation::open, *order_.landedPath, ESTALE};
    }
    return std::make_unique<StoppableReader>(std::move(file), order_.unwanted);
  }

  /// Returns nullptr if the bytes cannot be decoded. Throws ConversionError if that may be
  /// different another time.
  Image decoded(EmbeddedPicture& picture) const {
    picture.request.longestSide = order_.key.longestSide;
    // To stop the decoder means to end its process. That pays for a large file only; a small
    // picture is decoded sooner than a process starts, and is kept.
    const bool isLong = picture.origin == EmbeddedPicture::Origin::whole;
    const std::stop_token& stop = isLong ? order_.unwanted : order_.shutdown;
    try {
      return std::make_shared<const SmallImage>(decode_(picture.request, stop));
    } catch (const ConversionError& error) {
      if (stop.stop_requested()) throw Unwanted{};
      if (!isLasting(error.failure())) throw;
      return nullptr;
    }
  }

  /// Returns the thumbnail that another program made of a file of this machine, if it is large
  /// enough and can be decoded.
  Image desktopThumbnail() const {
    if (!tools_.desktopThumbnails || order_.files == nullptr || !order_.files->localPath) {
      return nullptr;
    }
    const auto path = order_.files->localPath(order_.asset);
    auto png = path ? desktopPng(*tools_.desktopThumbnails, *path, enoughSide()) : std::nullopt;
    if (!png) return nullptr;
    EmbeddedPicture picture;
    picture.origin = EmbeddedPicture::Origin::preview;
    picture.request.bytes = *std::move(png);
    picture.request.orientation = 1;
    Image image = decoded(picture);
    return image != nullptr && isEnough(*image) ? image : nullptr;
  }

  const ThumbnailMaking::Tools& tools_;
  const ThumbnailOrder& order_;
  const DecodePicture& decode_;
};

std::optional<ThumbnailEntry> entryOf(const ThumbnailOutcome& outcome) {
  if (outcome.kind == Kind::notShowable) return NotShowable{};
  if (outcome.image == nullptr) return std::nullopt;
  const bool isFinal = outcome.kind == Kind::final;
  return KeptThumbnail{*outcome.image,
                       isFinal ? KeptThumbnail::Quality::sharp : KeptThumbnail::Quality::quick,
                       outcome.filmLength};
}

}  // namespace

ThumbnailOutcome ThumbnailMaking::lookUp(const ThumbnailKey& key) const {
  auto entry = tools_.cache == nullptr ? std::nullopt : tools_.cache->find(key);
  if (!entry) return {Kind::absent};
  auto* const kept = std::get_if<KeptThumbnail>(&*entry);
  if (kept == nullptr) return {Kind::notShowable};
  const bool isFinal = kept->quality == KeptThumbnail::Quality::sharp;
  return {isFinal ? Kind::final : Kind::preliminary,
          std::make_shared<const SmallImage>(std::move(kept->image)), kept->filmLength};
}

ThumbnailOutcome ThumbnailMaking::make(const ThumbnailOrder& order,
                                       const DecodePicture& decode) const {
  ThumbnailOutcome outcome;
  try {
    const Making making{tools_, order, decode};
    outcome = order.step == Step::quick ? making.quick() : making.sharp();
  } catch (const Unwanted&) {
    return {Kind::stopped};
  } catch (...) {
    // A failure of the source or of the decoder's process says nothing about the picture.
    return {order.unwanted.stop_requested() ? Kind::stopped : Kind::notNow};
  }
  // If the source is taken away, the bytes that could not be decoded may have been torn.
  const bool isDoubtful = outcome.image == nullptr &&
                          (order.unwanted.stop_requested() || order.shutdown.stop_requested());
  if (isDoubtful) return {Kind::stopped};
  const auto entry = tools_.cache == nullptr ? std::nullopt : entryOf(outcome);
  if (entry) tools_.cache->keep(order.key, *entry);
  return outcome;
}

void ThumbnailMaking::trimCache() const {
  if (tools_.cache != nullptr) tools_.cache->trim();
}

}  // namespace tavrix
