#pragma once

#include "foundation/Sentence.h"

/// The sentences of the inspector about the format of the files.
namespace tavrix::window::sentences {

inline constexpr Sentence<> formatSection{"Формат", "Format"};
inline constexpr Sentence<> jpegSwitch{"Фото в JPEG", "Photos as JPEG"};
inline constexpr Sentence<> jpegHelp{"Снимки других форматов станут JPEG.",
                                     "Pictures of other formats become JPEG."};
inline constexpr Sentence<> jpegQuality{"Качество JPEG", "JPEG quality"};
inline constexpr Sentence<> jpegQualityHelp{"Выше качество — больше файлы.",
                                            "Higher quality makes larger files."};
inline constexpr Sentence<> h264Switch{"Видео в H.264", "Videos as H.264"};
inline constexpr Sentence<> h264Help{"Видео других форматов станут H.264. Долго.",
                                     "Other videos become H.264. Takes long."};
inline constexpr Sentence<> subfoldersSwitch{"Подпапки Photo и Video",
                                             "Subfolders Photo and Video"};
inline constexpr Sentence<> subfoldersHelp{"В каждой папке фото лежат отдельно от видео.",
                                           "In every folder, photos are apart from videos."};
inline constexpr Sentence<> flattenSwitch{"Только если есть и то, и другое",
                                          "Only where there are both"};
inline constexpr Sentence<> flattenHelp{"В папке одного вида подпапок нет.",
                                        "A folder of one kind has no subfolders."};
inline constexpr Sentence<> zipSwitch{"Упаковать в zip", "Pack into zip"};
inline constexpr Sentence<> zipHelp{"Вместо папок — архивы, без сжатия.",
                                    "Archives in place of folders, not compressed."};
inline constexpr Sentence<> zipTitle{"Архивы", "Archives"};
inline constexpr Sentence<> zipOne{"Один на всё", "One for all"};
inline constexpr Sentence<> zipPerFolder{"По одному на папку", "One per folder"};

}  // namespace tavrix::window::sentences
