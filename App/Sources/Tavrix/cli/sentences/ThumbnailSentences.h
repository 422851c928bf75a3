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

// Writing thumbnails.
inline constexpr Sentence<std::string> thumbnailsWritten{"Миниатюр записано: {}.",
                                                         "Thumbnails written: {}."};
inline constexpr Sentence<std::string, std::string> thumbnailsWrittenWithout{
    "Миниатюр записано: {}, не удалось показать: {}.",
    "Thumbnails written: {}, files that could not be shown: {}."};
inline constexpr Sentence<std::string> noThumbnail{"{}: показать не удалось.",
                                                   "{}: could not be shown."};
inline constexpr Sentence<std::string> moreWithoutThumbnail{"И ещё таких: {}.",
                                                            "{} more could not be shown."};
inline constexpr Sentence<std::string, std::uint32_t, std::uint32_t> thumbnailSizeBad{
    "Размер «{}» не подходит: нужно целое число пикселей от {} до {}.",
    "The size “{}” does not fit: give a whole number of pixels from {} to {}."};
inline constexpr Sentence<std::string> folderNotEmpty{
    "В папке «{}» уже что-то есть: укажите новую или пустую, чтобы ничего не заменить.",
    "The folder “{}” is not empty: choose a new or an empty one, so that nothing is replaced."};
inline constexpr Sentence<> decoderMissing{
    "Рядом с программой нет tavrix-convert, без неё картинки не открыть: установите Tavrix заново.",
    "The program tavrix-convert, which opens pictures, is missing: install Tavrix again."};
/// The name of the phone.
inline constexpr Sentence<std::string> sheetTitle{"Снимки: {}", "Pictures: {}"};

}  // namespace sentences

}  // namespace tavrix::cli
