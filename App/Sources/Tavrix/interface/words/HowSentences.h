#pragma once

#include <string_view>

#include "foundation/Sentence.h"
#include "text/HomeSentences.h"

/// The sentences of the inspector about the division into folders.
namespace tavrix::window::sentences {

inline constexpr Sentence<> howSection{"Как делить", "How to divide"};
inline constexpr Sentence<> eventGap{"Пауза между событиями", "Pause between events"};
inline constexpr Sentence<> eventGapHelp{"Съёмка после паузы дольше этой — новое событие.",
                                         "After a longer pause a new event begins."};
inline constexpr Sentence<> splitByDistance{"Разрыв по расстоянию", "Split by distance"};
inline constexpr Sentence<> splitByDistanceHelp{"Дальний переезд тоже начинает событие.",
                                                "A far jump begins an event, too."};
inline constexpr Sentence<> eventDistance{"Переезд дальше", "Jumps farther than"};
inline constexpr Sentence<> eventDistanceHelp{"Между двумя соседними снимками.",
                                              "Between two shots in a row."};
inline constexpr Sentence<> tripDistance{"От дома дальше", "Farther from home than"};
inline constexpr Sentence<> tripDistanceHelp{"Ближе этого — ещё дома.",
                                             "Anything closer is still home."};
inline constexpr Sentence<> tripCity{"Соседние города до", "Neighbouring cities up to"};
inline constexpr Sentence<> tripCityHelp{
    "Ближе этого две съёмки вдали от дома — один город и одна поездка.",
    "Two shoots away from home that are closer than this are one city and one trip."};
inline constexpr Sentence<> tripDays{"Мин. дней поездки", "Minimum days of a trip"};
inline constexpr Sentence<> tripDaysHelp{
    "Короче этого отъезд — вылазка: её снимки лежат в папке месяца.",
    "A shorter absence is an outing: its shots lie in the folder of the month."};
inline constexpr Sentence<> tripGap{"Перерыв в поездке до", "Longest gap in a trip"};
inline constexpr Sentence<> tripGapHelp{"Без съёмки дольше этого — поездка закончилась.",
                                        "No shooting for longer than this ends the trip."};
inline constexpr Sentence<> placeRadius{"Радиус места", "Radius of a place"};
inline constexpr Sentence<> placeRadiusHelp{"Снимки ближе этого — из одного места.",
                                            "Shots closer than this are from one place."};
inline constexpr Sentence<> homeTitle{"Дом", "Home"};
inline constexpr Sentence<> homeHelp{
    "Откуда считать поездки: пребывание в одном городе вдали от этого места — одна папка",
    "Where trips are counted from: a stay in one city away from this place is one folder"};
inline constexpr Sentence<> homeAutomatic{"Снова автоматически", "Automatic again"};
inline constexpr Sentence<std::string_view, std::string_view> homeDays{"дней: {} (недавних: {})",
                                                                       "days: {} (recent: {})"};
inline constexpr Sentence<> homeChosen{"указан вручную", "set by you"};
inline constexpr Sentence<> homePeriods{"Дом менялся", "Home has changed"};
inline constexpr Sentence<> homePeriodsHelp{
    "Поездки считаются от того дома, который был в то время.",
    "Trips are measured from the home of their time."};
inline constexpr Sentence<> homeMonths{"Дом по последним", "Home by the last"};
inline constexpr Sentence<> homeMonthsHelp{"За это время считаются недавние дни съёмки.",
                                           "Recent days of shooting are counted in this time."};
/// After "Дом по последним".
inline constexpr CountedNoun monthsOfHome{"месяцу", "месяцам", "месяцам", "month", "months"};
inline constexpr Sentence<> homeAllMonths{"всем месяцам", "all months"};
using tavrix::sentences::homeAmbiguous;
using tavrix::sentences::homeMissing;
using tavrix::sentences::whyTrips;

}  // namespace tavrix::window::sentences
