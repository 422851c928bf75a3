#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the bar with the destination.
namespace tavrix::window::sentences {

inline constexpr Sentence<> destinationLabel{"Куда", "To"};
inline constexpr Sentence<> destinationHint{"Папка для фото и видео",
                                            "Folder for photos and videos"};
inline constexpr Sentence<> chooseFolder{"Выбрать…", "Choose…"};
inline constexpr Sentence<> chooseDestinationTitle{"Куда переносить фото и видео",
                                                   "Where to transfer photos and videos"};
/// The folder of the last run.
inline constexpr Sentence<std::string_view> asLastTime{"Как в прошлый раз: {}", "As last time: {}"};

inline constexpr Sentence<> destinationReading{"Смотрю, что уже есть в папке…",
                                               "Looking at what the folder has…"};
inline constexpr Sentence<> destinationWillBeMade{
    "Такой папки ещё нет, она будет создана", "There is no such folder yet, it will be created"};
inline constexpr Sentence<std::string_view> freeSpace{"Свободно {}", "{} free"};
inline constexpr Sentence<std::string_view> freeAfterwards{"После переноса останется {}",
                                                           "{} will be left after the transfer"};

/// The number of files: "28 114 файлов".
inline constexpr Sentence<std::string_view> transferFiles{"Перенести {}", "Transfer {}"};
inline constexpr Sentence<> transferVerb{"Перенести", "Transfer"};
/// A day: "22 ноября 2026".
inline constexpr Sentence<std::string_view> lastTransferred{"последний перенос: {}",
                                                            "last transferred: {}"};
inline constexpr Sentence<> nothingNew{"Новых файлов нет", "No new files"};
inline constexpr Sentence<> everythingInPlace{"Всё уже перенесено", "Everything is there already"};
inline constexpr Sentence<> nothingChecked{"Ничего не отмечено", "Nothing is checked"};

// The settings that changed since the folders of the destination were named.
inline constexpr Sentence<> subjectGathering{"деление на папки", "grouping into folders"};
inline constexpr Sentence<> subjectTimeZone{"часовой пояс", "time zone"};
inline constexpr Sentence<> subjectNames{"имена папок", "folder names"};
inline constexpr Sentence<> subjectLocale{"язык имён", "language of the names"};
inline constexpr Sentence<> subjectPlaces{"места в именах", "places in the names"};
inline constexpr Sentence<> subjectFormat{"формат файлов", "file format"};
inline constexpr Sentence<> subjectKinds{"отдельные папки для фото и видео",
                                         "separate folders for photos and videos"};
inline constexpr Sentence<> subjectPrefix{"префикс имён файлов", "file name prefix"};
inline constexpr Sentence<> keepNames{"Вернуть прежние настройки имён",
                                      "Restore the Earlier Settings of Names"};

/// The number of matching files, and of all.
inline constexpr Sentence<std::string_view, std::string_view> cardSeemsKnown{
    "Похоже, эта карта уже переносилась сюда под другим именем или с другого пути: совпадают {} из "
    "{}. Они скопируются ещё раз.",
    "This card seems to have been transferred here before under another name or from another path: "
    "{} of {} match. They will be copied again."};
/// The number of folders.
inline constexpr Sentence<std::string_view> foldersNotKnown{
    "Не удалось прочитать в папке назначения: {}. В них ничего не будет записано.",
    "Cannot read in the destination: {}. Nothing will be written to them."};

}  // namespace tavrix::window::sentences
