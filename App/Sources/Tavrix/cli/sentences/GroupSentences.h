#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// What the command line tells of folders: from where trips are measured, and why folders are cut
/// where they are; in both languages side by side.
namespace tavrix::cli::sentences {

inline constexpr CountedNoun daysOfStay{"день", "дня", "дней", "day", "days"};
/// After "из".
inline constexpr CountedNoun foldersMerged{"папки", "папок", "папок", "folder", "folders"};

// Home.
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> homeCandidate{
    "{} — дней: {} (недавних: {})", "{} — days: {} (recent: {})"};
inline constexpr Sentence<std::string_view> homeFound{"Дом: {}", "Home: {}"};
inline constexpr Sentence<std::string_view> homeRecentSpan{
    "Домом считается место, где снимали в большее число недавних дней (последние {} до самого "
    "нового снимка с местом); при равенстве решают все дни, потом число снимков, потом, где начали "
    "снимать раньше.",
    "Home is the place with shots on the most recent days (the last {} up to the newest shot that "
    "tells its place); between equals all days decide, then the number of shots, then where shots "
    "were taken first."};
inline constexpr Sentence<> homeAllDays{
    "Домом считается место, где снимали в большее число дней; при равенстве решает число снимков, "
    "потом, где начали снимать раньше.",
    "Home is the place with shots on the most days; between equals the number of shots decides, "
    "then where shots were taken first."};
inline constexpr Sentence<std::string_view> homeNext{"Следующее по этому счёту: {}",
                                                     "Next by this count: {}"};
inline constexpr Sentence<std::string_view> homeManual{"Дом указан вручную: {}",
                                                       "Home as chosen by you: {}"};
inline constexpr Sentence<std::string_view> homeAutomatic{"Сам нашёлся бы: {}",
                                                          "Found by itself it would be: {}"};
inline constexpr Sentence<> homeMissing{"Дом не определён: нет геоданных",
                                        "Home not determined: no geodata"};
inline constexpr Sentence<> homeAmbiguous{"Несколько вариантов дома — проверьте выбор",
                                          "Several possible homes: check the choice"};
inline constexpr Sentence<std::string_view> homeHint{"Указать другой дом: --set homeOverride={}",
                                                     "To choose another: --set homeOverride={}"};

// Merged folders.
inline constexpr Sentence<std::string_view, std::string_view> mergedFrom{"Склеено из {} {}",
                                                                         "Merged from {} {}"};
inline constexpr Sentence<std::string_view> eventsInside{"События внутри: {}", "Events inside: {}"};

// Why folders are what they are.
inline constexpr Sentence<> titleBegin{"Начало", "Begins"};
inline constexpr Sentence<> titleWhyFolder{"Почему отдельная папка", "Why a folder of its own"};
inline constexpr Sentence<> titleWhyNoTrip{"Почему не в поездке", "Why in no trip"};
inline constexpr Sentence<std::string_view> calendarOfZone{
    "Папки идут по календарю часового пояса {}:", "Folders follow the calendar of the zone {}:"};
inline constexpr Sentence<> whyEvents{
    "Событие начинается там, где перед снимком была длинная пауза или дальний переезд:",
    "An event begins where a long pause or a far jump lies before a shot:"};
inline constexpr Sentence<> whyTrips{
    "Пребывание в одном городе вдали от дома — папка поездки; новый город — новая поездка. "
    "Остальное — по месяцам.",
    "A stay in one city away from home is a trip folder; a new city is a new trip. The rest goes "
    "by months."};
inline constexpr Sentence<> whyFlat{"Все снимки лежат вместе: делить нечего.",
                                    "All shots lie together: nothing is split."};
inline constexpr Sentence<> noStays{"Ни один снимок с местом не сделан вдали от дома.",
                                    "No shot that tells its place was taken away from home."};
inline constexpr Sentence<std::string_view> calendarDay{"день {}", "the day {}"};
inline constexpr Sentence<std::string_view> calendarMonth{"месяц {}", "the month {}"};
inline constexpr Sentence<std::string_view> calendarYear{"год {}", "the year {}"};
inline constexpr Sentence<> noDate{"дата съёмки неизвестна", "the capture date is not known"};
inline constexpr Sentence<> firstShot{"самый ранний из этих снимков",
                                      "the earliest of these shots"};
inline constexpr Sentence<> lastShot{"дальше нет снимков с местом",
                                     "no later shot tells its place"};
inline constexpr Sentence<std::string_view, std::string_view> pause{"пауза {} > {}",
                                                                    "pause of {} > {}"};
inline constexpr Sentence<std::string_view, std::string_view> pauseBetweenPlaces{
    "{} без снимков с местом > {}", "{} without a shot that tells its place > {}"};
inline constexpr Sentence<std::string_view, std::string_view> jump{"переезд на {} > {}",
                                                                   "jump of {} > {}"};
inline constexpr Sentence<std::string_view, std::string_view> awayFromHome{"{} от дома > {}",
                                                                           "{} from home > {}"};
inline constexpr Sentence<std::string_view, std::string_view> backHome{
    "следующий снимок с местом не вдали от дома: {} ≤ {}",
    "the next shot that tells its place is not away from home: {} ≤ {}"};
inline constexpr Sentence<std::string_view, std::string_view> nextCity{
    "дальше новый город: {} от центра этого пребывания > {}",
    "a new city follows: {} from the centre of this stay > {}"};
inline constexpr Sentence<std::string_view, std::string_view> newCity{
    "новый город: {} от центра прежнего пребывания > {}",
    "new city: {} from the centre of the stay before > {}"};
inline constexpr Sentence<std::string_view, std::string_view> notAway{
    "не вдали от дома: {} ≤ {}", "not away from home: {} ≤ {}"};
inline constexpr Sentence<std::string_view, std::string_view, std::string_view, std::string_view>
    stayLine{"{}, возле {} ({} от дома), {}", "{}, near {} ({} from home), {}"};
// Without a noun after the setting the numbers read well whatever they are.
inline constexpr Sentence<std::string_view, std::string_view, int> stayTrip{
    "  поездка «{}»: {} ≥ {}", "  trip “{}”: {} ≥ {}"};
inline constexpr Sentence<std::string_view, int> stayOuting{
    "  вылазка, её снимки лежат в папке месяца: {} < {}",
    "  outing, its shots lie in the month folder: {} < {}"};
inline constexpr Sentence<std::string_view> stayBegin{"  началось: {}", "  began: {}"};
inline constexpr Sentence<std::string_view> stayEnd{"  закончилось: {}", "  ended: {}"};
inline constexpr Sentence<std::string_view, std::string_view, int> outing{"вылазка {}: {} < {}",
                                                                          "outing of {}: {} < {}"};
inline constexpr Sentence<> noPosition{"место съёмки не записано",
                                       "the shot does not tell its place"};

}  // namespace tavrix::cli::sentences
