#pragma once

#include <QMetaType>
#include <QObject>
#include <algorithm>
#include <vector>

#include "media/MediaAsset.h"

namespace tavrix::window {

/// The files whose pictures an item shows, as the models give them to the screens.
struct ShownPictures {
  Q_GADGET

 public:
  std::vector<MediaAsset> assets;

  /// Returns true if the same files are shown.
  friend bool operator==(const ShownPictures& a, const ShownPictures& b) {
    return std::ranges::equal(a.assets, b.assets, {}, &MediaAsset::id, &MediaAsset::id);
  }
};

}  // namespace tavrix::window
