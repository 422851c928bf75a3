#pragma once

#include "foundation/Sentence.h"

/// The list of the keys that the window uses. The names of keys stand in the screens.
namespace tavrix::window::sentences {

inline constexpr Sentence<> keysTitle{"Клавиши", "Keyboard"};
inline constexpr Sentence<> keySearch{"поиск", "search"};
inline constexpr Sentence<> keyLayouts{"дни, месяцы, годы, события, поездки",
                                       "days, months, years, events, trips"};
inline constexpr Sentence<> keyColumns{"левая и правая панели", "left and right columns"};
inline constexpr Sentence<> keyCheckAll{"отметить все папки, снять все",
                                        "check all folders, uncheck all"};
inline constexpr Sentence<> keySpace{"отметить папку или снять отметку",
                                     "check or uncheck the folder"};
inline constexpr Sentence<> keyEnter{"посмотреть снимки папки", "view the folder's shots"};
inline constexpr Sentence<> keyRename{"переименовать папку", "rename the folder"};
inline constexpr Sentence<> keyMerge{"склеить выбранные, отменить склейку",
                                     "merge the selected folders, undo the merge"};
inline constexpr Sentence<> keyCopy{"скопировать имена папок", "copy the names of folders"};
inline constexpr Sentence<> keySource{"открыть папку или карту", "open a folder or card"};
inline constexpr Sentence<> keyDestination{"выбрать, куда переносить", "choose the destination"};
inline constexpr Sentence<> keyTransfer{"перенести", "transfer"};
inline constexpr Sentence<> keyBack{"назад, закрыть", "back, close"};

}  // namespace tavrix::window::sentences
