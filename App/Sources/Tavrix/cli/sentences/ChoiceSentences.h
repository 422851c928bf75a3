#pragma once

#include <string_view>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"

/// The sentences of the command line about a choice of folders and shots, in both languages side by
/// side.
namespace tavrix::cli::sentences {

inline constexpr Sentence<std::string_view> noSuchFolder{
    "Папки «{}» нет: --only принимает имя или id папки, их показывает tavrix groups --json.",
    "There is no folder “{}”: --only takes the name or the id of a folder, as shown by tavrix "
    "groups --json."};
inline constexpr Sentence<std::string_view, std::string_view> noSuchFolderLike{
    "Папки «{}» нет. Может быть, «{}»? Имена и id показывает tavrix groups --json.",
    "There is no folder “{}”. Did you mean “{}”? For the names and ids, run tavrix groups --json."};
inline constexpr Sentence<std::string_view> badLast{
    "«{}» — не срок для --last; примеры: 7d (дней), 3w (недель), 2m (месяцев).",
    "“{}” is no time for --last; examples: 7d (days), 3w (weeks), 2m (months)."};
inline constexpr Sentence<> noFinishedRun{
    "Завершённых переносов с этого телефона ещё не было, поэтому --since-last ничего не "
    "пропускает.",
    "No transfer from this phone has finished yet, so --since-last leaves nothing out."};
inline constexpr Sentence<> globEmpty{
    "После --exclude пустая строка; укажите маску, например '*.AAE'.",
    "--exclude is followed by an empty text; name a pattern, such as '*.AAE'."};
inline constexpr Sentence<std::string_view> globWithoutMatch{
    "Под маску --exclude «{}» не подходит ни один файл.", "No file matches --exclude “{}”."};

inline constexpr Sentence<std::string_view> leftOutByChoice{"Пропущены по выбору: {}.",
                                                            "Left out by the choice: {}."};
inline constexpr Sentence<> rowByChoice{"пропущены по выбору", "left out by the choice"};
inline constexpr Sentence<> emptyChoice{"Под выбор не подходит ни один снимок.",
                                        "No shot matches the choice."};
inline constexpr Sentence<> nothingMatchesChoice{
    "Переносить нечего: под выбор не подходит ни один снимок.",
    "There is nothing to do: no shot matches the choice."};

}  // namespace tavrix::cli::sentences
