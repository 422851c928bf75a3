#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the list of folders.
namespace tavrix::window::sentences {

inline constexpr CountedNoun photos{"фото", "фото", "фото", "photo", "photos"};
inline constexpr CountedNoun videos{"видео", "видео", "видео", "video", "videos"};
inline constexpr CountedNoun shots{"снимок", "снимка", "снимков", "shot", "shots"};
inline constexpr CountedNoun newFiles{"новый", "новых", "новых", "new", "new"};

// On a card.
inline constexpr Sentence<> noDate{"Без даты", "No date"};
inline constexpr Sentence<> inPlace{"уже на месте", "already there"};
inline constexpr Sentence<> nothingToCopy{"переносить нечего", "nothing to transfer"};
inline constexpr Sentence<> continued{"дополнит прежнюю папку", "adds to an earlier folder"};
inline constexpr Sentence<> fileDated{"известны только даты файлов",
                                      "only the dates of the files are known"};
inline constexpr Sentence<std::string_view> reducedCopies{"оптимизированных копий: {}",
                                                          "optimized copies: {}"};
inline constexpr Sentence<std::string_view, std::string_view> folderOf{"папка {} из {}",
                                                                       "folder {} of {}"};

// Above the list.
inline constexpr Sentence<> allChecked{"отмечены все", "all checked"};
inline constexpr Sentence<> noneChecked{"не отмечено ни одной", "none checked"};
inline constexpr Sentence<std::string_view> someChecked{"отмечено {}", "{} checked"};
inline constexpr Sentence<> oneChecked{"отмечена", "checked"};
inline constexpr Sentence<> oneUnchecked{"не отмечена", "not checked"};
inline constexpr Sentence<> checkAll{"Отметить все", "Check All"};
inline constexpr Sentence<> checkNone{"Снять все", "Uncheck All"};
inline constexpr Sentence<> onlyNew{"Только новые", "Only new"};
inline constexpr Sentence<> showAsGrid{"Карточки", "Cards"};
inline constexpr Sentence<> showAsList{"Список", "List"};

inline constexpr Sentence<> tipFolders{
    "Переносятся папки, отмеченные кружком слева вверху. Двойной щелчок показывает снимки папки, "
    "правая кнопка — остальные действия.",
    "Folders that are checked with the circle at the top left are transferred. Double-click a "
    "folder to see its shots; right-click for more."};

// In place of the folders.
inline constexpr Sentence<> nothingFound{"Ничего не найдено", "Nothing found"};
inline constexpr Sentence<> noShots{"По выбранным настройкам снимков нет",
                                    "No shots match the settings"};
inline constexpr Sentence<> showAll{"Показать все папки", "Show All Folders"};

// The menu of a folder.
inline constexpr Sentence<> checkFolders{"Отметить", "Check"};
inline constexpr Sentence<> uncheckFolders{"Снять отметку", "Uncheck"};
inline constexpr Sentence<> renameFolder{"Переименовать", "Rename"};
inline constexpr Sentence<> mergeFolders{"Склеить выбранные", "Merge Selected"};
inline constexpr Sentence<> takeApart{"Разобрать склейку", "Take Apart"};
inline constexpr Sentence<> undoMerge{"Отменить только что сделанную склейку",
                                      "Undo the Merge Just Made"};
inline constexpr Sentence<> copyName{"Скопировать имя", "Copy Name"};
inline constexpr Sentence<> folderName{"Имя папки", "Folder name"};
inline constexpr Sentence<> mergeSuggested{"Склеить", "Merge"};
inline constexpr Sentence<> keepApart{"Оставить как есть", "Leave as Is"};
inline constexpr Sentence<> foldersMergedNow{"Папки склеены", "The folders were merged"};
inline constexpr Sentence<> undo{"Отменить", "Undo"};
inline constexpr Sentence<> close{"Закрыть", "Close"};
inline constexpr Sentence<> spaceKey{"Пробел", "Space"};
inline constexpr Sentence<> folders{"Папки", "Folders"};

}  // namespace tavrix::window::sentences
