#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The reasons why folders begin and end where they do, in both languages side by side.
namespace tavrix::sentences {

inline constexpr CountedNoun daysOfStay{"день", "дня", "дней", "day", "days"};
inline constexpr Sentence<> firstShot{"самый ранний из этих снимков",
                                      "the earliest of these shots"};
inline constexpr Sentence<> lastShot{"дальше нет снимков с местом", "no later shot has a place"};
inline constexpr Sentence<std::string_view, std::string_view> pause{"пауза {} > {}",
                                                                    "pause of {} > {}"};
inline constexpr Sentence<std::string_view, std::string_view> pauseBetweenPlaces{
    "{} без снимков с местом > {}", "{} without a shot with a place > {}"};
inline constexpr Sentence<std::string_view, std::string_view> jump{"переезд на {} > {}",
                                                                   "jump of {} > {}"};
inline constexpr Sentence<std::string_view, std::string_view> awayFromHome{"{} от дома > {}",
                                                                           "{} from home > {}"};
inline constexpr Sentence<std::string_view, std::string_view> backHome{
    "следующий снимок с местом не вдали от дома: {} ≤ {}",
    "the next shot with a place is not away from home: {} ≤ {}"};
inline constexpr Sentence<std::string_view, std::string_view> nextCity{
    "дальше новый город: {} от центра этого пребывания > {}",
    "a new city follows: {} from the centre of this stay > {}"};
inline constexpr Sentence<std::string_view, std::string_view> newCity{
    "новый город: {} от центра предыдущего пребывания > {}",
    "new city: {} from the centre of the previous stay > {}"};
inline constexpr Sentence<std::string_view, std::string_view> notAway{
    "не вдали от дома: {} ≤ {}", "not away from home: {} ≤ {}"};
/// Of several shots, with the distance of the farthest.
inline constexpr Sentence<std::string_view, std::string_view> noneAway{
    "не вдали от дома: самое дальнее — {} ≤ {}", "not away from home: the farthest {} ≤ {}"};
inline constexpr Sentence<std::string_view, std::string_view, int> outing{"вылазка {}: {} < {}",
                                                                          "outing of {}: {} < {}"};
inline constexpr Sentence<> noPosition{"место съёмки не записано", "the shot has no place"};
inline constexpr Sentence<std::string_view> calendarDay{"день {}", "the day {}"};
inline constexpr Sentence<std::string_view> calendarMonth{"месяц {}", "the month {}"};
inline constexpr Sentence<std::string_view> calendarYear{"год {}", "the year {}"};

}  // namespace tavrix::sentences
