#pragma once

#include <functional>
#include <stop_token>
#include <vector>

#include "device/thumbnails/ThumbnailStore.h"

namespace tavrix::cli {

/// Called on the thread of the batch with the index of a picture and its thumbnail, which is null
/// if there is none.
using TakeThumbnail = std::function<void(std::size_t index, const SmallImage* image)>;

/// Makes the thumbnails of many pictures, a few at a time, and hands over the final one of each;
/// the order is that in which they are ready. Returns when all are done, or soon after `stop` was
/// requested; then the others are missing. `loop` is that of the store. Throws what `take` throws.
void makeThumbnails(StandardMainLoop& loop, ThumbnailStore& store,
                    const std::vector<MediaAsset>& pictures, std::uint32_t longestSide,
                    const TakeThumbnail& take, const std::stop_token& stop);

}  // namespace tavrix::cli
