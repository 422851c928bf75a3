#pragma once

#include <string>

#include "foundation/Sentence.h"

/// The sentences that the application writes into the record of a run, in both languages side by
/// side.
namespace tavrix::sentences {

inline constexpr Sentence<> ownTemplate{"Свой шаблон", "Own template"};
inline constexpr Sentence<> noteUnderWay{
    "Программа завершилась до конца переноса: что успело скопироваться, лежит на месте, но здесь "
    "не отмечено.",
    "The program ended before the transfer did: what was copied by then is in place, but is not "
    "noted here."};
inline constexpr Sentence<> notePackingUnderWay{
    "Программа завершилась до конца переноса: готовые архивы лежат на месте, но здесь не отмечены; "
    "что ждало упаковки, перенесётся заново.",
    "The program ended before the transfer did: finished archives are in place, but are not noted "
    "here; what was waiting to be packed has to be transferred anew."};
inline constexpr Sentence<> noteCancelled{"Перенос отменён.", "The transfer was cancelled."};
inline constexpr Sentence<std::string> noteInterrupted{"Перенос остановлен: {}",
                                                       "The transfer was stopped: {}"};
inline constexpr Sentence<> noteKeptOriginals = onPlatform(
    Sentence<>{"Перевести не удалось — на Mac лежит оригинал под своим именем.",
               "The conversion failed — the Mac holds the original under its own name."},
    Sentence<>{"Перевести не удалось — на компьютере лежит оригинал под своим именем.",
               "The conversion failed — this computer holds the original under its own name."});
inline constexpr Sentence<std::string> noteMarkerNotSaved{
    "Папка назначения не запомнила, что в неё перенесено: {}",
    "The destination folder could not note what was transferred: {}"};
/// The name of the folder and the reason.
inline constexpr Sentence<std::string, std::string> noteGroupUnpacked{
    "Группа «{}» осталась обычной папкой: {}", "The group “{}” stayed an ordinary folder: {}"};
inline constexpr Sentence<std::string> noteWholeUnpacked{
    "Общий архив не получился, группы остались обычными папками: {}",
    "The combined archive did not work out, the groups stayed ordinary folders: {}"};
/// The number of files.
inline constexpr Sentence<std::string> noteRescued{
    "От прерванной упаковки остались файлы, которых на этом телефоне нет: {}; они лежат в обычных "
    "папках.",
    "An interrupted packing had left files that this phone does not hold: {}; they lie in ordinary "
    "folders."};
/// The number of files.
inline constexpr Sentence<std::string> noteStagingCleared{
    "От прерванной упаковки оставались временные копии ({}); они убраны.",
    "An interrupted packing had left temporary copies ({}); they are removed."};
/// The number of files.
inline constexpr Sentence<std::string> notePartsCleared{
    "От прерванного переноса оставались недописанные файлы ({}); они убраны.",
    "An interrupted transfer had left unfinished files ({}); they are removed."};
/// The number of files, the refused name of the first one and the name that it has got.
inline constexpr Sentence<std::string, std::string, std::string> noteSafeNames{
    "Папка назначения принимает не любые имена, поэтому часть файлов названа иначе: {} (первый — "
    "не «{}», а «{}»).",
    "The destination folder does not accept every name, so some files are named differently: {} "
    "(the first is not “{}” but “{}”)."};
/// The number of files, and the first of them.
inline constexpr Sentence<std::string, std::string> noteMisnamed{
    "По имени JPEG, а внутри другой формат: {} (первый — «{}»). Перенесено как есть.",
    "Named as JPEG, but of another format inside: {} (the first is “{}”). Copied as they are."};
/// The size that is still needed and the free space.
inline constexpr Sentence<std::string, std::string> diskFull{
    "На диске нет места: нужно ещё {} (свободно {}). Освободите место — продолжу сам.",
    "There is no space on the disk: {} more is needed ({} free). Free some space — I will carry on "
    "by myself."};

inline constexpr Sentence<std::string> destinationAway{
    "Папка назначения «{}» недоступна: диск или сетевая папка отключились. Подключите — продолжу "
    "сам.",
    "The destination “{}” cannot be reached: its disk or share was disconnected. Connect it — I "
    "will "
    "carry on by myself."};

inline constexpr Sentence<> destinationInUse{
    "В эту папку сейчас пишет другой перенос. Когда он закончится — продолжу сам.",
    "Another transfer is writing to this folder. When it has ended, I will carry on by myself."};

// The reasons why files were not packed.
inline constexpr Sentence<std::string> zipUnsafeName{"имя «{}» не годится для архива",
                                                     "the name “{}” cannot stand in an archive"};
inline constexpr Sentence<std::string> zipDuplicateName{"два файла называются «{}»",
                                                        "two files are named “{}”"};
inline constexpr Sentence<std::string> zipContentChanged{
    "файл «{}» изменился, пока его упаковывали", "the file “{}” changed while it was being packed"};
inline constexpr Sentence<> zipNotReadBack{"готовый архив не прошёл проверку чтением",
                                           "the finished archive could not be read back"};
inline constexpr Sentence<> notForArchives{"такие файлы в архив не входят",
                                           "such files do not go into archives"};

/// The number of files and the names of some of them.
inline constexpr Sentence<std::string, std::string> noteUnknownKind{
    "Не перенесено, потому что вид файла программе не знаком: {} ({}).",
    "Not transferred, because the program does not know the kind of file: {} ({})."};
/// The number of folders.
inline constexpr Sentence<std::string> noteUnreadFolders{
    "В источнике прочитано не целиком: {}; непрочитанное не перенесено.",
    "Not read in full in the source: {}; what was not read was not transferred."};

inline constexpr CountedNoun times{"раз", "раза", "раз", "time", "times"};
/// The number of interruptions.
inline constexpr Sentence<std::string> notePhoneWaits{
    "Во время переноса связь с iPhone пропадала {}; перенос её ждал.",
    "During the transfer the iPhone was out of reach {}; the transfer waited for it."};

}  // namespace tavrix::sentences
