#pragma once

#include "media/MediaAsset.h"

namespace tavrix {

/// Any photo.
inline MediaAsset somePhoto() {
  return MediaAsset{"100APPLE/IMG_1.PNG", "IMG_1.PNG",  "100APPLE", MediaKind::photo, 1,
                    std::nullopt,         std::nullopt, false,      std::nullopt,     std::nullopt};
}

}  // namespace tavrix
