#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The explanation why a folder begins and ends where it does.
namespace tavrix::window::sentences {

inline constexpr Sentence<> whyBoundary{"Почему здесь граница?", "Why Is This a Folder?"};
inline constexpr Sentence<std::string_view> folderBegan{"Начало: {}.", "Start: {}."};
inline constexpr Sentence<std::string_view> nextFolderBegan{"Следующая папка: {}.",
                                                            "The next folder: {}."};
inline constexpr Sentence<> noNextFolder{"Позже снимков нет.", "There are no later shots."};
inline constexpr Sentence<std::string_view> calendarOfZone{
    "Папки идут по календарю часового пояса {}.",
    "Folders follow the calendar of the time zone {}."};
inline constexpr Sentence<> calendarOfCameras{"Папки разделены по датам на часах камеры.",
                                              "Folders follow the dates of the camera’s clock."};
inline constexpr Sentence<std::string_view> calendarFolder{"Здесь {}.", "This is {}."};
inline constexpr Sentence<> undatedFolder{"Здесь снимки, у которых нет даты съёмки.",
                                          "These shots have no capture date."};
inline constexpr Sentence<std::string_view> tripFromHome{"Поездка: {} от дома.",
                                                         "A trip: {} from home."};
inline constexpr Sentence<std::string_view> tripBegan{"Началась: {}.", "It began: {}."};
inline constexpr Sentence<std::string_view> tripEnded{"Закончилась: {}.", "It ended: {}."};
inline constexpr Sentence<> monthOfNoTrip{"Здесь снимки, которые не вошли ни в одну поездку:",
                                          "These shots are in no trip:"};
inline constexpr Sentence<> moreReasons{"• и другие вылазки", "• and other outings"};
inline constexpr Sentence<> boundaryHint{
    "Пороги можно изменить справа, в разделе «Как делить».",
    "You can change the limits on the right, under “How to divide”."};
inline constexpr Sentence<> mergedByHand{"Эту папку склеили вы; её можно разобрать.",
                                         "You merged this folder; it can be taken apart."};

}  // namespace tavrix::window::sentences
