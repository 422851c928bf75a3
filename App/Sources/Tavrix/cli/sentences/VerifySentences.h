#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// What the command line tells of checks of a destination and of recognising copies, in both
/// languages side by side.
namespace tavrix::cli::sentences {

/// After "из", "of": "из 21 файла", "из 22 файлов".
inline constexpr CountedNoun outOfFiles{"файла", "файлов", "файлов", "file", "files"};
/// Before "not in order".
inline constexpr CountedNoun filesAre{"файл", "файла", "файлов", "file is", "files are"};
inline constexpr CountedNoun records{"запись", "записи", "записей", "record", "records"};

inline constexpr Sentence<std::string_view> destinationMissing{
    "Папки «{}» нет; проверьте путь и подключён ли диск.",
    "There is no folder “{}”; check the path and whether the disk is connected."};
inline constexpr Sentence<std::string_view> recordsMissing{
    "В папке «{}» нет записей о переносах, сверять не с чем; восстановите их командой tavrix "
    "marker rebuild SOURCE DEST.",
    "The folder “{}” holds no record of a transfer to compare with; bring one back by tavrix "
    "marker "
    "rebuild SOURCE DEST."};
inline constexpr Sentence<std::string_view, std::string_view> recordsDamaged{
    "В папке «{}» запись «{}» повреждена или не читается, сверять не с чем; восстановите её "
    "командой tavrix marker rebuild SOURCE DEST.",
    "In the folder “{}” the record “{}” is damaged or cannot be read, and there is nothing to "
    "compare with; bring it back by tavrix marker rebuild SOURCE DEST."};
inline constexpr Sentence<std::string_view, std::string_view> recordDamaged{
    "Запись «{}» повреждена или не читается: то, что в ней было, не проверено. Восстановите её "
    "командой tavrix marker rebuild SOURCE DEST с файлами и именем (--device-name) того телефона, "
    "чья она; если их больше нет, переименуйте запись в «{}.damaged».",
    "The record “{}” is damaged or cannot be read, and what it held is not checked. Bring it back "
    "by tavrix marker rebuild SOURCE DEST with the files and the name (--device-name) of the phone "
    "that it is of; where these are gone, rename the record to “{}.damaged”."};
inline constexpr Sentence<std::string_view, std::string_view> folderUnreadable{
    "Папка «{}» не читается ({}), и что в ней лежит, неизвестно; откройте к ней доступ и "
    "повторите.",
    "The folder “{}” cannot be read ({}), and nobody can say what lies in it; grant access to it "
    "and try again."};
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> foldersUnreadable{
    "Не читаются {}, первая из них — «{}» ({}), и что в них лежит, неизвестно; откройте к ним "
    "доступ и повторите.",
    "{} cannot be read, the first of them “{}” ({}), and nobody can say what lies in them; grant "
    "access to them and try again."};
inline constexpr Sentence<std::string_view> transferAtWork{
    "В папку «{}» сейчас идёт перенос: то, что он ещё пишет, проверится в следующий раз.",
    "A transfer is at work in the folder “{}”: what it is still writing is for the next check."};
inline constexpr Sentence<std::string_view> checksumsForeign{
    "Файл «{}» — не список контрольных сумм, и он останется как есть; переименуйте его и "
    "повторите.",
    "The file “{}” is no list of checksums and stays as it is; rename it and try again."};
inline constexpr Sentence<std::string_view, std::string_view> checksumsNotWritten{
    "Контрольные суммы не записались: «{}», {}; устраните причину и повторите.",
    "The checksums were not written: “{}”, {}; mend that and try again."};

// The check.
inline constexpr Sentence<std::string_view> checkAllIntact{
    "Проверка завершена, всё цело; прочитано {}.",
    "The check is complete, everything is intact; {} read."};
inline constexpr Sentence<std::string_view> checkNoLosses{
    "Проверка завершена, потерь нет, но сверить удалось не всё; прочитано {}.",
    "The check is complete and found no loss, but not everything could be compared; {} read."};
inline constexpr Sentence<std::string_view, std::string_view> checkLosses{
    "Проверка завершена; не в порядке {}, прочитано {}.",
    "The check is complete: {} not in order; {} read."};
/// What could not be read: "1 запись, 2 папки".
inline constexpr Sentence<std::string_view, std::string_view> checkIncomplete{
    "Проверено не всё, не читаются: {}; среди проверенного потерь нет, прочитано {}.",
    "Not everything could be checked, unreadable: {}; no loss among what was checked, {} read."};
inline constexpr Sentence<> checkEmpty{"Записи пусты, проверять нечего.",
                                       "The records are empty, there is nothing to check."};
inline constexpr Sentence<std::string_view, std::string_view> checkCancelled{
    "Проверка прервана, проверено {} из {}; повторите, чтобы проверить всё.",
    "The check was cancelled after {} of {}; run it again to check everything."};
inline constexpr Sentence<> rowRecorded{"В записях", "In the records"};
inline constexpr Sentence<> rowIntact{"целы", "intact"};
inline constexpr Sentence<> rowChanged{"изменились", "changed"};
inline constexpr Sentence<> rowMissing{"пропали", "missing"};
inline constexpr Sentence<> rowUnreadable{"не читаются", "unreadable"};
inline constexpr Sentence<> rowWithoutChecksum{"на месте, но контрольной суммы в записи нет",
                                               "there, with no checksum in the record"};
inline constexpr Sentence<> rowNeverConfirmed{"их нет; возможно, их и не копировали",
                                              "not there, and perhaps never copied"};
inline constexpr Sentence<> rowUnknown{"Нет ни в одной записи", "In no record"};
inline constexpr Sentence<> rowLeftOvers{"Остатки прерванных переносов (.part)",
                                         "Remnants of interrupted transfers (.part)"};
inline constexpr Sentence<> changedTitle{"Изменились:", "Changed:"};
inline constexpr Sentence<> missingTitle{"Пропали:", "Missing:"};
inline constexpr Sentence<> unreadableTitle{"Не читаются:", "Unreadable:"};
inline constexpr Sentence<> withoutChecksumTitle{"На месте, но контрольной суммы в записи нет:",
                                                 "There, with no checksum in the record:"};
inline constexpr Sentence<> neverConfirmedTitle{
    "Их нет: прерванный перенос не успел их скопировать или они пропали — повторите перенос:",
    "Not there: an interrupted transfer never copied them, or they were lost — run it again:"};
inline constexpr Sentence<> damagedRecordsTitle{"Записи повреждены или не читаются:",
                                                "Records damaged or unreadable:"};
inline constexpr Sentence<> unreadableFoldersTitle{
    "Папки не читаются, и что в них лежит, неизвестно:",
    "Folders that cannot be read, so that nobody can say what lies in them:"};
inline constexpr Sentence<> rowDamagedRecords{"Записи не читаются", "Unreadable records"};
inline constexpr Sentence<> rowUnreadableFolders{"Папки не читаются", "Unreadable folders"};
inline constexpr Sentence<> unknownTitle{"Нет ни в одной записи:", "In no record:"};
inline constexpr Sentence<> leftOversTitle{"Остатки прерванных переносов:",
                                           "Remnants of interrupted transfers:"};
inline constexpr Sentence<std::string_view> moreInJson{"… и ещё {}; полный список даст --json",
                                                       "… and {} more; --json lists all"};
inline constexpr Sentence<std::string, std::string> fileAndReason{"{} — {}", "{} — {}"};
inline constexpr Sentence<> contentDiffers{"размер прежний, содержимое другое",
                                           "the size is the same, the content is not"};
inline constexpr Sentence<> listDiffers{"содержимое не то, что в SHA256SUMS",
                                        "the content is not that of SHA256SUMS"};
inline constexpr Sentence<> linkInPlace{"на его месте ссылка", "a link stands in its place"};
inline constexpr Sentence<> folderInPlace{"на его месте папка", "a folder stands in its place"};
inline constexpr Sentence<> otherInPlace{"на его месте не файл",
                                         "something that is no file stands in its place"};
inline constexpr Sentence<> pathLeadsOut{"путь ведёт через ссылку или за пределы папки",
                                         "the path leads over a link or out of the folder"};
inline constexpr Sentence<std::string_view, std::string_view> checksumsWritten{
    "Контрольные суммы записаны в «{}»: {}.", "Checksums written as “{}”: {}."};
inline constexpr Sentence<std::string_view> checksumsNew{
    "Для {} контрольной суммы в записях не было: она посчитана сейчас и ни с чем не сверена.",
    "{} had no checksum in the records: theirs was computed now and compared with nothing."};

// Recognising copies.
inline constexpr Sentence<std::string_view, std::string_view> rebuildSaved{
    "Запись о телефоне «{}» сохранена; опознаны заново: {}.",
    "The record of the phone “{}” is saved; recognised anew: {}."};
inline constexpr Sentence<std::string_view> rebuildNothingNew{
    "Заново не опознан ни один файл; запись о телефоне «{}» не изменилась.",
    "No file was recognised anew; the record of the phone “{}” has not changed."};
inline constexpr Sentence<std::string_view> rebuildNothing{
    "Не опознан ни один файл; записи о телефоне «{}» в папке нет.",
    "No file was recognised; the folder holds no record of the phone “{}”."};
inline constexpr Sentence<std::string_view, std::string_view> rebuildCancelledEarly{
    "Опознание прервано, просмотрено {} из {}; ничего нового не опознано, повторите.",
    "Recognising was cancelled after {} of {}; nothing was recognised anew, run it again."};
inline constexpr Sentence<std::string_view, std::string_view> rebuildCancelled{
    "Опознание прервано, просмотрено {} из {}; опознанное записано, повтор продолжит.",
    "Recognising was cancelled after {} of {}; what was recognised is recorded, and running it "
    "again goes on."};
inline constexpr Sentence<> rowInFolder{"Файлов в папке", "Files in the folder"};
inline constexpr Sentence<> rowRecognised{"опознаны", "recognised"};
inline constexpr Sentence<> rowAlreadyRecorded{"были в записи", "in the record before"};
inline constexpr Sentence<> rowRecognisedNow{"опознаны заново", "recognised anew"};
inline constexpr Sentence<> rowNotRecognised{"не опознаны", "not recognised"};
inline constexpr Sentence<> rowOtherPhone{"записаны за другим телефоном",
                                          "recorded for another phone"};
inline constexpr Sentence<> rowUnmatched{"таких файлов на телефоне нет",
                                         "the phone has no such file"};
inline constexpr Sentence<> unmatchedTitle{"Таких файлов на телефоне нет:",
                                           "The phone has no such file:"};
inline constexpr Sentence<> unreadableOnPhoneTitle{"Не прочитаны с телефона:",
                                                   "Not read from the phone:"};

}  // namespace tavrix::cli::sentences
