#include "services/Thumbnails.h"

#include <filesystem>

#include "conversion/PictureDecoder.h"

namespace tavrix {
namespace {

constexpr std::uint64_t maxWholeBytes = std::uint64_t{32} << 20U;

std::optional<EmbeddedPicture> findPicture(RangedReader& file, const MediaAsset&,
                                           std::uint32_t leastSide, bool mayReadWhole) {
  return EmbeddedPictures::find(file, {.leastSide = leastSide,
                                       .mayReadWhole = mayReadWhole,
                                       .maxWholeBytes = maxWholeBytes,
                                       .prefersWholeToSmaller = mayReadWhole});
}

ThumbnailDecoder decoderOf(const std::string& program) {
  const auto decoder = std::make_shared<PictureDecoder>(program);
  return {.decode = [decoder](
                        const PictureRequest& request,
                        std::stop_token stop) { return decoder->decode(request, std::move(stop)); },
          .prepare = [decoder] { decoder->prepare(); }};
}

/// Returns the folder in which the programs of the desktop share thumbnails.
std::optional<std::string> desktopFolder(const Environment& environment) {
  const auto cacheHome = variable(environment, "XDG_CACHE_HOME");
  if (cacheHome && std::filesystem::path{*cacheHome}.is_absolute())
    return *cacheHome + "/thumbnails";
  const auto home = variable(environment, "HOME");
  if (!home) return std::nullopt;
  return *home + "/.cache/thumbnails";
}

}  // namespace

std::unique_ptr<ThumbnailStore> openThumbnails(const ThumbnailServices& services,
                                               const Environment& environment) {
  ThumbnailMaking::Tools tools{.find = findPicture,
                               .desktopThumbnails = desktopFolder(environment)};
  if (services.folder) {
    tools.cache = std::make_shared<ThumbnailCache>(ThumbnailCache::Setup{
        .folder = *services.folder, .programVersion = TAVRIX_VERSION, .now = services.now});
  }
  return std::make_unique<ThumbnailStore>(ThumbnailStore::Setup{
      .loop = services.loop,
      .tools = std::move(tools),
      .decoders = {decoderOf(services.conversionProgram), decoderOf(services.conversionProgram)}});
}

}  // namespace tavrix
