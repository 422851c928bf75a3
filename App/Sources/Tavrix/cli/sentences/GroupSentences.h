#pragma once

#include <string_view>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"
#include "text/HomeSentences.h"

/// The sentences of the command line about folders: where home is, and why a folder begins or ends
/// where it does; in both languages side by side.
namespace tavrix::cli::sentences {

inline constexpr Sentence<> titleDays{"Даты", "Dates"};

// Home.
using tavrix::sentences::homeAmbiguous;
using tavrix::sentences::homeMissing;
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> homeCandidate{
    "{} — дней: {} (недавних: {})", "{} — days: {} (recent: {})"};
inline constexpr Sentence<std::string_view> homeFound{"Дом: {}", "Home: {}"};
inline constexpr Sentence<std::string_view> homeRecentSpan{
    "Дом — место, где снимали больше всего дней из недавних (последние {} до самого нового снимка "
    "с местом); при равенстве решают все дни, затем число снимков, затем, где начали снимать "
    "раньше.",
    "Home is the place with shots on the largest number of recent days (the last {} up to the "
    "newest shot with a place); ties are settled by all days, then by the number of shots, then by "
    "the earliest shot."};
inline constexpr Sentence<> homesFound{"Дома:", "Homes:"};
inline constexpr Sentence<> homePeriodsRule{
    "Новый дом — место не ближе 50 км от прежнего, где хотя бы 90 дней снимали чаще всего; поездки "
    "считаются от дома своего времени.",
    "A new home is a place at least 50 km from the one before, with most shots for at least 90 "
    "days; trips are measured from the home of their time."};
inline constexpr Sentence<> homeAllDays{
    "Дом — место, где снимали больше всего дней; при равенстве решает число снимков, затем, где "
    "начали снимать раньше.",
    "Home is the place with shots on the largest number of days; ties are settled by the number of "
    "shots, then by the earliest shot."};
inline constexpr Sentence<std::string_view> homeNext{"Следующее место по этому счёту: {}",
                                                     "Next by this count: {}"};
inline constexpr Sentence<std::string_view> homeManual{"Дом указан вручную: {}",
                                                       "Home set by you: {}"};
inline constexpr Sentence<std::string_view> homeAutomatic{"Автоматически выбран был бы: {}",
                                                          "The automatic choice would be: {}"};
inline constexpr Sentence<std::string_view> homeHint{
    "Указать другой дом: --set homeOverride={}", "To choose another home: --set homeOverride={}"};

// Why each folder is a folder.
using tavrix::sentences::whyTrips;
inline constexpr Sentence<> explainAllHint{"О каждом снимке — --explain=all.",
                                           "For every shot: --explain=all."};
/// The name without the day, and the present one.
inline constexpr Sentence<std::string_view, std::string_view> wholeFolderDatesHint{
    "Папка месяца или года названа по первому дню. Чтобы было «{}», а не «{}»: --set "
    "wholeFolderDates=true",
    "The folder of a month or year is named after its first day. For “{}” instead of “{}”: --set "
    "wholeFolderDates=true"};
inline constexpr Sentence<> acceptSuggestions{
    "Склеить всё это: tavrix groups … --accept-suggestions; больше не предлагать: "
    "rejectedSuggestions (tavrix help rejectedSuggestions).",
    "To merge all of this: tavrix groups … --accept-suggestions; to stop suggesting it: "
    "rejectedSuggestions (tavrix help rejectedSuggestions)."};
/// The number of merges.
inline constexpr Sentence<std::string_view> suggestionsAccepted{
    "Склеено и запомнено: {}. Вернуть всё как было: tavrix settings reset mergesByMode",
    "Merged and remembered: {}. To undo all merges: tavrix settings reset mergesByMode"};
inline constexpr CountedNoun merges{"склейка", "склейки", "склеек", "merge", "merges"};
inline constexpr Sentence<> nothingToAccept{"Склеивать нечего: предложений нет.",
                                            "There is nothing to merge: no suggestions."};
inline constexpr Sentence<> titleBegin{"Начало", "Start"};
inline constexpr Sentence<> titleWhyFolder{"Почему отдельная папка", "Why a separate folder"};
inline constexpr Sentence<> titleWhyNoTrip{"Почему не в поездке", "Why not in a trip"};
inline constexpr Sentence<std::string_view> calendarOfZone{
    "Папки идут по календарю часового пояса {}:",
    "Folders follow the calendar of the time zone {}:"};
inline constexpr Sentence<std::string_view> cameraDaysUsed{
    "Дни взяты по часам камеры, а где они неизвестны — по времени места съёмки, иначе по часовому "
    "поясу {}.",
    "Days follow the camera’s clock; where that is not known, the time at the place of the shot, "
    "otherwise the time zone {}."};
inline constexpr Sentence<> whyEvents{
    "Событие начинается там, где перед снимком была длинная пауза или дальний переезд:",
    "An event begins where a long pause or a far jump comes before a shot:"};
inline constexpr Sentence<> whyFlat{"Все снимки лежат вместе: делить нечего.",
                                    "All shots are in one folder: nothing is split."};
inline constexpr Sentence<> noStays{"Ни один снимок с местом не сделан вдали от дома.",
                                    "No shot with a place was taken away from home."};
inline constexpr Sentence<> noDate{"дата съёмки неизвестна", "the capture date is unknown"};
inline constexpr Sentence<std::string_view, std::string_view, std::string_view, std::string_view>
    stayLine{"{}, {} ({} от дома), {}", "{}, {} ({} from home), {}"};
/// Coordinates, in place of a name.
inline constexpr Sentence<std::string_view> nearPoint{"возле {}", "near {}"};
// The setting stands without a noun, so that every number reads well.
inline constexpr Sentence<std::string_view, std::string_view, int> stayTrip{
    "  поездка «{}»: {} ≥ {}", "  trip “{}”: {} ≥ {}"};
inline constexpr Sentence<std::string_view, int> stayOuting{
    "  вылазка, её снимки лежат в папке месяца: {} < {}",
    "  outing, its shots are in the month folder: {} < {}"};
inline constexpr Sentence<std::string_view, std::string_view, int> stayMergedOuting{
    "  вылазка, склеена в папку «{}»: {} < {}", "  outing, merged into the folder “{}”: {} < {}"};
inline constexpr Sentence<std::string_view> stayBegin{"  началось: {}", "  began: {}"};
inline constexpr Sentence<std::string_view> stayEnd{"  закончилось: {}", "  ended: {}"};

}  // namespace tavrix::cli::sentences
