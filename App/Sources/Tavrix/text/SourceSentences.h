#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// What the command line tells of folders that stand for a phone and of the metadata cache.
namespace tavrix::cli::sentences {

// What of a folder is not in its catalogue: how many, and their beginning.
inline constexpr Sentence<std::string, std::string> leftOutHidden{
    "Скрытые файлы и папки не вошли ({}): {}.", "Hidden files and folders are left out ({}): {}."};
inline constexpr Sentence<std::string, std::string> leftOutPlaceholder{
    "Не вошли файлы, которые есть только в облаке ({}): {}; скачайте их и повторите.",
    "Files that are only in a cloud are left out ({}): {}; download them and try again."};
inline constexpr Sentence<std::string, std::string> leftOutLink{
    "Не вошли ссылки ({}): {}; если нужно, положите на их место сами файлы.",
    "Links are left out ({}): {}; if they are wanted, put the files themselves in their place."};
inline constexpr Sentence<std::string, std::string> leftOutSpecial{
    "Не вошло то, что не хранит данных: каналы, сокеты, устройства ({}): {}.",
    "What holds no data is left out, such as pipes, sockets and devices ({}): {}."};
inline constexpr Sentence<std::string, std::string> leftOutUnreadableFolder{
    "Не открываются папки ({}): {}; проверьте права на них и диск.",
    "Folders cannot be opened ({}): {}; check their permissions and the disk."};
inline constexpr Sentence<std::string, std::string> leftOutUnreadableFile{
    "Не вошли файлы, о которых система ничего не сообщает ({}): {}; проверьте права и диск.",
    "Files of which the system tells nothing are left out ({}): {}; check permissions and the "
    "disk."};
inline constexpr Sentence<std::string, std::string> leftOutTooDeep{
    "Не вошли слишком глубоко вложенные папки ({}): {}; перенесите их выше.",
    "Folders nested too deep are left out ({}): {}; move them further up."};
inline constexpr Sentence<std::string, std::string> leftOutVanished{
    "Файлы исчезли, пока шло чтение ({}): {}; повторите, если они должны там быть.",
    "Files vanished while they were being read ({}): {}; try again if they should be there."};
inline constexpr Sentence<std::string, std::string> unreadableFiles{
    "Файлы не читаются ({}): {}; в каталоге они без даты съёмки и места. Проверьте права и диск.",
    "Files cannot be read ({}): {}; the catalogue lacks their capture date and place. Check "
    "permissions and the disk."};
/// The folder, and the one that is the source.
inline constexpr Sentence<std::string_view, std::string_view> otherMediaFolder{
    "Папка «{}» не вошла, потому что источник — «{}»; для неё нужен отдельный вызов.",
    "The folder “{}” is left out, for the source is “{}”; it takes a call of its own."};
inline constexpr Sentence<> andOthers{"и другие", "and others"};

// Reading.
inline constexpr Sentence<> readingStopped{
    "Чтение остановлено. Прочитанное лежит в кэше — заново читать не придётся.",
    "Reading was stopped. What was read is in the cache and will not have to be read again."};
inline constexpr Sentence<> readingStoppedUnkept{
    "Чтение остановлено, а сохранить прочитанное не удалось; укажите папку состояния: --state DIR.",
    "Reading was stopped, and what was read could not be kept; name a state folder: --state DIR."};
inline constexpr Sentence<std::string, std::string> readingCounts{"Чтение: {} / {}",
                                                                  "Reading: {} / {}"};
inline constexpr Sentence<std::string> readingSpeed{"{}/с", "{}/s"};
inline constexpr Sentence<std::string> readingHits{"из кэша: {}", "from the cache: {}"};
inline constexpr Sentence<std::string_view> catalogueInSource{
    "Папка «{}» лежит в самом источнике; выберите для каталога другую.",
    "The folder “{}” lies in the source itself; choose another one for the catalogue."};
inline constexpr Sentence<std::string_view> stateInSource{
    "Папка состояния «{}» лежит в самом источнике; укажите другую: --state DIR.",
    "The state folder “{}” lies in the source itself; name another one: --state DIR."};
/// Of the folders that could not be read, or not wholly: how many.
inline constexpr Sentence<std::string> runWithUnreadFolders{
    "В источнике прочитано не целиком: {}. Непрочитанное не перенесено; проверьте источник и "
    "повторите.",
    "Not read in full in the source: {}. What was not read was not transferred; check the source "
    "and run it again."};

// A card that the destination seems to know. How many files agree, of how many.
inline constexpr Sentence<std::string_view, std::string, std::string> cardKnownByName{
    "Похоже, эта карта уже переносилась сюда под именем «{0}»: совпадают {1} из {2}. Если это она, "
    "назовите её так же: --device-name '{0}'; иначе они копируются ещё раз.",
    "This card seems to have been transferred here before as “{0}”: {1} of {2} agree. If it is "
    "that "
    "card, name it the same: --device-name '{0}'; otherwise they are copied again."};
inline constexpr Sentence<std::string, std::string> cardKnownElsewhere{
    "Похоже, эта карта уже переносилась сюда, но с другого пути или под другим именем: "
    "совпадают {} из {}. Карта узнаётся по пути или имени, поэтому они копируются ещё раз; если "
    "это "
    "лишнее, подключите и назовите её как раньше.",
    "This card seems to have been transferred here before, from another path or under another "
    "name: {} of {} agree. A card is known by its path or name, so they are copied again; if that "
    "is "
    "not wanted, mount and name it as before."};

// The cache.
inline constexpr Sentence<> noStateFolder{
    "Неизвестно, где папка состояния программы; укажите её: --state DIR.",
    "It is not known where the program's state folder is; name it: --state DIR."};
inline constexpr Sentence<std::string, std::string> cacheHolds{"В кэше {}, папка «{}».",
                                                               "The cache holds {}, folder “{}”."};
inline constexpr Sentence<std::string> cacheReset{"Кэш сброшен, удалено: {}.",
                                                  "The cache is reset, removed: {}."};
inline constexpr Sentence<> cacheWasEmpty{"Кэш и так пуст.", "The cache is empty already."};
inline constexpr Sentence<std::string, std::string> cacheNotReset{
    "Не удалось удалить из кэша: {}, папка «{}»; проверьте права и повторите.",
    "Not removed from the cache: {}, folder “{}”; check the permissions and try again."};

}  // namespace tavrix::cli::sentences
