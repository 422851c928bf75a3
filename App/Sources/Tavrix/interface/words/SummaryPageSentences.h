#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the summary of a transfer.
namespace tavrix::window::sentences {

/// The bytes written, and the time that it took.
inline constexpr Sentence<std::string_view, std::string_view> writtenIn{"Записано {} за {}",
                                                                        "{} written in {}"};
inline constexpr Sentence<std::uint64_t> secondsText{"{}\u00A0с", "{}\u00A0s"};
inline constexpr Sentence<> nothingWritten{"Ничего нового записывать не пришлось",
                                           "There was nothing new to write"};
inline constexpr Sentence<> mayUnplug{"iPhone можно отключать.", "You may unplug the iPhone."};
inline constexpr Sentence<> againTransfersRest{
    "Повторите перенос — скопируется только недостающее.",
    "Transfer again to copy only what is missing."};
inline constexpr Sentence<> againPacksAll{
    "Повторный перенос упакует всё заново, в новые архивы.",
    "Another transfer packs everything again, into new archives."};
/// The number of shots.
inline constexpr Sentence<std::string_view> optimizedLeftOut{
    "Оптимизированные копии пропущены: {}.", "Optimized copies skipped: {}."};
inline constexpr Sentence<> failedTitle{"Не перенеслось", "Not transferred"};
inline constexpr Sentence<> keptTitle{"Остались без преобразования", "Kept unconverted"};
inline constexpr Sentence<> notesTitle{"К сведению", "Notes"};
inline constexpr Sentence<> numbersTitle{"Файлы", "Files"};
inline constexpr Sentence<> wrongSizes{"сверка не прошла: размеры не совпали",
                                       "verification failed: the sizes differ"};
/// Files of folders that were not checked, or not shown.
inline constexpr Sentence<> rowUnchecked{"не выбраны", "not chosen"};
inline constexpr Sentence<> openFolderOfRun{"Открыть папку", "Open Folder"};
inline constexpr Sentence<> again{"Повторить", "Try Again"};
inline constexpr Sentence<> done{"Готово", "Done"};

}  // namespace tavrix::window::sentences
