#pragma once

#include <functional>
#include <string>

#include "device/cable/Phones.h"
#include "device/metadata/OddPaths.h"
#include "model/ConnectedSource.h"

namespace tavrix {

/// Returns access to the pictures below a folder of this machine. `pathOf` returns the path of an
/// asset below the folder; one that leads out of it is refused with EXDEV. Links are not followed
/// at the last part.
PictureAccess picturesBelow(const std::string& folder,
                            std::function<std::string(const MediaAsset&)> pathOf);

/// Returns access to the pictures of a phone. Every thread that reads has a connection of its own,
/// opened with its first file and again after it was lost. `browser` must outlive the result.
ThumbnailFiles picturesOfPhone(PhoneBrowser& browser, const std::string& deviceID,
                               const OddPaths& oddPaths);

}  // namespace tavrix
