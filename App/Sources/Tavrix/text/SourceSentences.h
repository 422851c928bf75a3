#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences about folders that stand for a phone and about the metadata cache, in both
/// languages side by side.
namespace tavrix::sentences {

// The entries of a folder that are not in its catalogue: the number and the first names.
inline constexpr Sentence<std::string, std::string> leftOutHidden{
    "Пропущены скрытые файлы и папки ({}): {}.", "Skipped hidden files and folders ({}): {}."};
inline constexpr Sentence<std::string, std::string> leftOutPlaceholder{
    "Пропущены файлы, которые есть только в облаке ({}): {}; скачайте их и повторите.",
    "Skipped files that are only in a cloud ({}): {}; download them and try again."};
inline constexpr Sentence<std::string, std::string> leftOutLink{
    "Пропущены ссылки ({}): {}; если нужно, положите на их место сами файлы.",
    "Skipped links ({}): {}; if you need them, replace the links with the files themselves."};
inline constexpr Sentence<std::string, std::string> leftOutSpecial{
    "Пропущены каналы, сокеты и устройства, в которых нет данных ({}): {}.",
    "Skipped pipes, sockets and devices, which hold no data ({}): {}."};
inline constexpr Sentence<std::string, std::string> leftOutUnreadableFolder{
    "Не удалось открыть папки ({}): {}; проверьте права доступа и диск.",
    "Cannot open folders ({}): {}; check their permissions and the disk."};
inline constexpr Sentence<std::string, std::string> leftOutUnreadableFile{
    "Пропущены файлы, о которых система ничего не сообщает ({}): {}; проверьте права доступа и "
    "диск.",
    "Skipped files about which the system reports nothing ({}): {}; check the permissions and the "
    "disk."};
inline constexpr Sentence<std::string, std::string> leftOutTooDeep{
    "Пропущены слишком глубоко вложенные папки ({}): {}; перенесите их выше.",
    "Skipped folders that are nested too deep ({}): {}; move them further up."};
inline constexpr Sentence<std::string, std::string> leftOutTooMany{
    "Папок или файлов больше, чем бывает на телефоне; остальные папки не прочитаны ({}): {}. "
    "Проверьте источник: возможно, он повреждён.",
    "There are more folders or files than a phone can have; the other folders were not read ({}): "
    "{}. Check the source, it may be damaged."};
inline constexpr Sentence<std::string, std::string> leftOutTooLarge{
    "Пропущены файлы, чей размер невозможен ({}): {}; возможно, источник повреждён.",
    "Skipped files whose size is impossible ({}): {}; the source may be damaged."};
inline constexpr Sentence<std::string, std::string> leftOutLongName{
    "Пропущены файлы и папки с недопустимо длинными именами ({}): {}; возможно, источник "
    "повреждён.",
    "Skipped files and folders whose names are too long ({}): {}; the source may be damaged."};
inline constexpr Sentence<std::string, std::string> leftOutVanished{
    "Файлы исчезли, пока шло чтение ({}): {}; повторите, если они должны там быть.",
    "Files disappeared while they were being read ({}): {}; try again if they should be there."};
inline constexpr Sentence<std::string, std::string> unreadableFiles{
    "Не удалось прочитать файлы ({}): {}; в каталоге они без даты съёмки и места. Проверьте права "
    "доступа и диск.",
    "Cannot read files ({}): {}; the catalogue has no capture date and place for them. Check the "
    "permissions and the disk."};
/// The skipped folder, and the folder that is the source.
inline constexpr Sentence<std::string_view, std::string_view> otherMediaFolder{
    "Папка «{}» пропущена, потому что источник — «{}»; для неё нужен отдельный вызов.",
    "The folder “{}” was skipped, because the source is “{}”; it needs a separate call."};
inline constexpr Sentence<> andOthers{"и другие", "and others"};

// Reading.
inline constexpr Sentence<> readingStopped{
    "Чтение остановлено. Прочитанное лежит в кэше — заново читать не придётся.",
    "Reading was stopped. What was read is in the cache and will not have to be read again."};
inline constexpr Sentence<> readingStoppedUnkept{
    "Чтение остановлено, а сохранить прочитанное не удалось; укажите папку состояния: --state DIR.",
    "Reading was stopped, and what was read could not be saved; name a state folder: --state DIR."};
inline constexpr Sentence<std::string, std::string> readingCounts{"Чтение: {} / {}",
                                                                  "Reading: {} / {}"};
inline constexpr Sentence<std::string> readingSpeed{"{}/с", "{}/s"};
inline constexpr Sentence<std::string> readingHits{"из кэша: {}", "from the cache: {}"};
inline constexpr Sentence<std::string_view> catalogueInSource{
    "Папка «{}» находится внутри источника; выберите для каталога другую.",
    "The folder “{}” is inside the source; choose another one for the catalogue."};
inline constexpr Sentence<std::string_view> stateInSource{
    "Папка состояния «{}» находится внутри источника; укажите другую: --state DIR.",
    "The state folder “{}” is inside the source; name another one: --state DIR."};
/// The number of folders that were not read, or only in part.
inline constexpr Sentence<std::string> runWithUnreadFolders{
    "В источнике прочитано не полностью: {}. Непрочитанное не перенесено; проверьте источник и "
    "повторите.",
    "Not read in full in the source: {}. What was not read was not transferred; check the source "
    "and run it again."};

// A card that was probably transferred before: its name, the number of matching files, of all.
inline constexpr Sentence<std::string_view, std::string, std::string> cardKnownByName{
    "Похоже, эта карта уже переносилась сюда под именем «{0}»: совпадают {1} из {2}. Если это она, "
    "назовите её так же: --device-name '{0}'; иначе файлы скопируются ещё раз.",
    "This card seems to have been transferred here before as “{0}”: {1} of {2} match. If it is the "
    "same card, give it the same name: --device-name '{0}'; otherwise the files are copied again."};
inline constexpr Sentence<std::string, std::string> cardKnownElsewhere{
    "Похоже, эта карта уже переносилась сюда, но с другого пути или под другим именем: совпадают "
    "{} из {}. Карта узнаётся по пути или имени, поэтому файлы скопируются ещё раз; чтобы этого не "
    "было, подключите и назовите её как раньше.",
    "This card seems to have been transferred here before, from another path or under another "
    "name: {} of {} match. A card is recognised by its path or name, so the files are copied "
    "again; to avoid that, mount and name it as before."};

// The cache.
inline constexpr Sentence<> noStateFolder{
    "Неизвестно, где папка состояния программы; укажите её: --state DIR.",
    "Cannot find the program's state folder; name it: --state DIR."};
inline constexpr Sentence<std::string, std::string> cacheHolds{
    "В кэше {}, папка «{}».", "The cache holds {} in the folder “{}”."};
inline constexpr Sentence<std::string> cacheReset{"Кэш сброшен, удалено: {}.",
                                                  "The cache was reset, removed: {}."};
inline constexpr Sentence<> cacheWasEmpty{"Кэш и так пуст.", "The cache is already empty."};
inline constexpr Sentence<std::string, std::string> cacheNotReset{
    "Не удалось удалить из кэша: {}, папка «{}»; проверьте права и повторите.",
    "Not removed from the cache: {}, folder “{}”; check the permissions and try again."};

}  // namespace tavrix::sentences
