#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "device/thumbnails/ThumbnailStore.h"
#include "services/Environment.h"

namespace tavrix {

struct ThumbnailServices {
  MainLoop& loop;
  /// The path of `tavrix-convert`, which decodes pictures.
  std::string conversionProgram;
  std::function<Instant()> now;
  /// Where thumbnails are kept, see thumbnailFolderOf(); if absent, nothing is kept.
  std::optional<std::string> folder{};
};

/// Returns the store of the user's thumbnails. Two pictures are made at a time. It also uses the
/// thumbnails that other programs of the desktop keep where `environment` places them.
std::unique_ptr<ThumbnailStore> openThumbnails(const ThumbnailServices& services,
                                               const Environment& environment);

}  // namespace tavrix
