#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the page of one folder with its shots, and of a shot in full size.
namespace tavrix::window::sentences {

inline constexpr Sentence<> viewShots{"Посмотреть снимки", "View Shots"};
inline constexpr Sentence<> enterKey{"Ввод", "Enter"};
inline constexpr Sentence<> backToFolders{"Все папки", "All Folders"};
inline constexpr Sentence<> shotsOfFolder{"Снимки", "Shots"};
inline constexpr Sentence<> undatedShots{"Без даты", "No date"};

// The marks of a shot, on its picture and for screen readers.
inline constexpr Sentence<> liveMark{"Live Photo", "Live Photo"};
inline constexpr Sentence<> filmMark{"видео", "video"};
inline constexpr Sentence<> editedMark{"правленый", "edited"};
inline constexpr Sentence<> reducedMark{"оптимизированная копия", "optimized copy"};
inline constexpr Sentence<std::string_view, std::string_view> shotOf{"снимок {} из {}",
                                                                     "shot {} of {}"};

// A shot in full size.
inline constexpr Sentence<std::string_view, std::string_view> positionOf{"{} из {}", "{} of {}"};
inline constexpr Sentence<> earlierShot{"Предыдущий", "Previous"};
inline constexpr Sentence<> laterShot{"Следующий", "Next"};
inline constexpr Sentence<> takenTitle{"Снято", "Taken"};
inline constexpr Sentence<> nameDateTitle{"Дата из имени файла", "Date in the file name"};
inline constexpr Sentence<> fileDateTitle{"Дата файла", "Date of the file"};
inline constexpr Sentence<> placeTitle{"Место", "Place"};
inline constexpr Sentence<> lengthTitle{"Длительность", "Length"};
inline constexpr Sentence<> filesTitle{"Файлы", "Files"};
inline constexpr Sentence<> marksTitle{"Особенности", "Kind"};
inline constexpr Sentence<> pathTitle{"Куда ляжет", "Will be saved as"};
inline constexpr Sentence<std::string_view, std::string_view> fileWithSize{"{}, {}", "{}, {}"};
inline constexpr Sentence<> openOutside{"Открыть в другой программе", "Open in Another Program"};
inline constexpr Sentence<std::string_view, std::string_view> fetching{"Читается: {} из {}",
                                                                       "Reading: {} of {}"};
inline constexpr Sentence<> cannotOpenAlone{
    "Этот файл не открывается отсюда: по имени это не снимок и не видео.",
    "This file cannot be opened from here: by its name it is neither a photo nor a video."};
inline constexpr Sentence<> cannotOpenAway{
    "Телефона или папки нет на связи; подключите и попробуйте ещё раз.",
    "The phone or folder is not there; connect it and try again."};
inline constexpr Sentence<> cannotOpenRead{"Файл не удалось прочитать; попробуйте ещё раз.",
                                           "The file could not be read; try again."};
inline constexpr Sentence<> cannotOpenFull{
    "На диске нет места для временной копии; освободите его и попробуйте ещё раз.",
    "There is no space on the disk for a temporary copy; free some and try again."};
inline constexpr Sentence<> cannotOpenWrite{
    "Временную копию не удалось записать; проверьте права на папку кэша.",
    "The temporary copy could not be written; check the permissions of the cache folder."};
inline constexpr Sentence<> noProgram{
    "В системе не нашлось программы, которая открывает такие файлы.",
    "The system has no program that opens such files."};

}  // namespace tavrix::window::sentences
