#pragma once

#include <string>

#include "foundation/Sentence.h"

namespace tavrix::cli {

/// The sentences of the command line about thumbnails, in both languages side by side.
namespace sentences {

/// The number of files, their size, the folder.
inline constexpr Sentence<std::string, std::string, std::string> thumbnailsKept{
    "Миниатюры: {}, {}, папка «{}».", "Thumbnails: {}, {} in the folder “{}”."};
inline constexpr Sentence<std::string> thumbnailsReset{"Миниатюры удалены: {}.",
                                                       "The thumbnails were removed: {}."};

}  // namespace sentences

}  // namespace tavrix::cli
