#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include "device/FolderCatalogue.h"
#include "device/Phones.h"

namespace tavrix {

namespace PhoneCatalogue {

/// Lists the pictures of a phone and reads their metadata, as far as the cache does not hold them;
/// paths are those below DCIM. A phone without DCIM has no files. Throws PhoneError when the phone
/// leaves meanwhile; what was read until then lies in the cache. Throws FileError when the phone
/// refuses its folder. When `stop` is asked for, the catalogue is incomplete, or there is none yet
/// and PhoneError (stopped) is thrown. `found` is told how many entries were listed so far.
FolderCatalogue read(PhoneFiles& files, MetadataPass::Setup setup, const std::stop_token& stop = {},
                     const std::function<void(std::uint64_t)>& found = {});

}  // namespace PhoneCatalogue

}  // namespace tavrix
