#pragma once

#include <string_view>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"

/// The sentences of the command line about checking a destination and recognising copies, in both
/// languages side by side.
namespace tavrix::cli::sentences {

/// Follows "из" or "of": "из 21 файла", "из 22 файлов".
inline constexpr CountedNoun outOfFiles{"файла", "файлов", "файлов", "file", "files"};
/// Stands before "not intact".
inline constexpr CountedNoun filesAre{"файл", "файла", "файлов", "file is", "files are"};
inline constexpr CountedNoun records{"запись", "записи", "записей", "record", "records"};

inline constexpr Sentence<std::string_view> recordsMissing{
    "В папке «{}» нет записей о переносах, сверять не с чем; восстановите их командой tavrix "
    "marker rebuild SOURCE DEST.",
    "The folder “{}” has no record of a transfer to compare with; restore it with tavrix marker "
    "rebuild SOURCE DEST."};
inline constexpr Sentence<std::string_view, std::string_view> recordsDamaged{
    "В папке «{}» запись «{}» повреждена или не читается, сверять не с чем; восстановите её "
    "командой tavrix marker rebuild SOURCE DEST.",
    "In the folder “{}” the record “{}” is damaged or unreadable, so there is nothing to compare "
    "with; restore it with tavrix marker rebuild SOURCE DEST."};
inline constexpr Sentence<std::string_view, std::string_view> recordDamaged{
    "Запись «{}» повреждена или не читается, её файлы не проверены. Восстановите её командой "
    "tavrix marker rebuild SOURCE DEST с файлами и именем (--device-name) того телефона, к "
    "которому она относится; если их больше нет, переименуйте запись в «{}.damaged».",
    "The record “{}” is damaged or unreadable, so its files are not checked. Restore it with "
    "tavrix marker rebuild SOURCE DEST, using the files and the name (--device-name) of the phone "
    "that it belongs to; if these no longer exist, rename the record to “{}.damaged”."};
inline constexpr Sentence<std::string_view, std::string_view> folderUnreadable{
    "Не удалось прочитать папку «{}» ({}), её содержимое неизвестно; откройте к ней доступ и "
    "повторите.",
    "The folder “{}” cannot be read ({}), so its content is unknown; grant access to it and try "
    "again."};
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> foldersUnreadable{
    "Недоступны для чтения: {}, первая из них — «{}» ({}), их содержимое неизвестно; откройте к "
    "ним доступ и повторите.",
    "{} cannot be read, the first one is “{}” ({}), so their content is unknown; grant access to "
    "them and try again."};
inline constexpr Sentence<std::string_view> transferAtWork{
    "В папку «{}» сейчас идёт перенос: то, что он пишет, не проверяется и потерей не считается; "
    "повторите проверку после него.",
    "A transfer into the folder “{}” is running: files that it is writing are not checked and do "
    "not count as losses; check again after it."};
inline constexpr Sentence<std::string_view> checksumsForeign{
    "Файл «{}» — не список контрольных сумм, и он останется как есть; переименуйте его и "
    "повторите.",
    "The file “{}” is not a list of checksums and stays as it is; rename it and try again."};
inline constexpr Sentence<std::string_view, std::string_view> checksumsNotWritten{
    "Контрольные суммы не записаны: «{}», {}; устраните причину и повторите.",
    "The checksums were not written: “{}”, {}; fix the problem and run it again."};

// The check.
inline constexpr Sentence<std::string_view> checkAllIntact{
    "Проверка завершена, всё цело; прочитано {}.",
    "The check is complete, everything is intact; {} read."};
inline constexpr Sentence<std::string_view> checkNoLosses{
    "Проверка завершена, потерь нет, но сверить удалось не всё; прочитано {}.",
    "The check is complete and found no losses, but not everything could be compared; {} read."};
inline constexpr Sentence<std::string_view> checkWhileRunning{
    "Проверка завершена, потерь нет; то, что пишет идущий сейчас перенос, не проверено; прочитано "
    "{}.",
    "The check is complete and found no losses; files that the running transfer is writing were "
    "not checked; {} read."};
inline constexpr Sentence<std::string_view, std::string_view> checkLosses{
    "Проверка завершена; не в порядке {}, прочитано {}.",
    "The check is complete: {} not intact; {} read."};
/// The first value is what could not be read: "1 запись, 2 папки".
inline constexpr Sentence<std::string_view, std::string_view> checkIncomplete{
    "Проверено не всё, не читаются: {}; среди проверенного потерь нет, прочитано {}.",
    "Not everything could be checked, unreadable: {}; there are no losses among what was checked, "
    "{} read."};
inline constexpr Sentence<> checkEmpty{"Записи пусты, проверять нечего.",
                                       "The records are empty; there is nothing to check."};
inline constexpr Sentence<std::string_view, std::string_view> checkCancelled{
    "Проверка прервана, проверено {} из {}; повторите, чтобы проверить всё.",
    "The check was cancelled after {} of {}; run it again to check everything."};
inline constexpr Sentence<> rowRecorded{"В записях", "In the records"};
inline constexpr Sentence<> rowIntact{"целы", "intact"};
inline constexpr Sentence<> rowChanged{"изменились", "changed"};
inline constexpr Sentence<> rowMissing{"пропали", "missing"};
inline constexpr Sentence<> rowUnreadable{"не читаются", "unreadable"};
inline constexpr Sentence<> rowWithoutChecksum{"на месте, но контрольной суммы в записи нет",
                                               "in place, but without a checksum in the record"};
inline constexpr Sentence<> rowNeverConfirmed{"их нет; возможно, их и не копировали",
                                              "absent, perhaps never copied"};
inline constexpr Sentence<> rowBeingWritten{"пишет идущий перенос",
                                            "being written by the running transfer"};
inline constexpr Sentence<> rowOfRunningTransfer{"Файлы идущего переноса, без записи",
                                                 "Files of the running transfer, not recorded"};
inline constexpr Sentence<> rowUnknown{"Нет ни в одной записи", "In no record"};
inline constexpr Sentence<> rowLeftOvers{"Остатки прерванных переносов (.part)",
                                         "Remnants of interrupted transfers (.part)"};
inline constexpr Sentence<> changedTitle{"Изменились:", "Changed:"};
inline constexpr Sentence<> missingTitle{"Пропали:", "Missing:"};
inline constexpr Sentence<> unreadableTitle{"Не читаются:", "Unreadable:"};
inline constexpr Sentence<> withoutChecksumTitle{"На месте, но контрольной суммы в записи нет:",
                                                 "In place, but without a checksum in the record:"};
inline constexpr Sentence<> neverConfirmedTitle{
    "Их нет: прерванный перенос не успел их скопировать или они пропали — повторите перенос:",
    "Absent: an interrupted transfer never copied them, or they were lost; run the transfer "
    "again:"};
inline constexpr Sentence<> damagedRecordsTitle{"Записи повреждены или не читаются:",
                                                "Damaged or unreadable records:"};
inline constexpr Sentence<> unreadableFoldersTitle{"Папки не читаются, их содержимое неизвестно:",
                                                   "Unreadable folders, whose content is unknown:"};
inline constexpr Sentence<> rowDamagedRecords{"Записи не читаются", "Unreadable records"};
inline constexpr Sentence<> rowUnreadableFolders{"Папки не читаются", "Unreadable folders"};
inline constexpr Sentence<> unknownTitle{"Нет ни в одной записи:", "In no record:"};
inline constexpr Sentence<> leftOversTitle{"Остатки прерванных переносов:",
                                           "Remnants of interrupted transfers:"};
inline constexpr Sentence<std::string_view> moreInJson{"… и ещё {}; полный список даст --json",
                                                       "… and {} more; --json lists all"};
inline constexpr Sentence<std::string, std::string> fileAndReason{"{} — {}", "{} — {}"};
inline constexpr Sentence<> contentDiffers{"размер прежний, содержимое другое",
                                           "same size, different content"};
inline constexpr Sentence<> listDiffers{"содержимое не совпадает с SHA256SUMS",
                                        "the content does not match SHA256SUMS"};
inline constexpr Sentence<> linkInPlace{"на его месте ссылка", "a link is in its place"};
inline constexpr Sentence<> folderInPlace{"на его месте папка", "a folder is in its place"};
inline constexpr Sentence<> otherInPlace{"на его месте не файл",
                                         "something that is not a file is in its place"};
inline constexpr Sentence<> pathLeadsOut{"путь ведёт через ссылку или за пределы папки",
                                         "the path leads through a link or out of the folder"};
inline constexpr Sentence<std::string_view, std::string_view> checksumsWritten{
    "Контрольные суммы записаны в «{}»: {}.", "Checksums written to “{}”: {}."};
inline constexpr Sentence<std::string_view> checksumsNew{
    "Для {} контрольной суммы в записях не было: она посчитана сейчас и ни с чем не сверена.",
    "{} had no checksum in the records: it was computed now and compared with nothing."};

// Recognising copies.
inline constexpr Sentence<std::string_view, std::string_view> rebuildSaved{
    "Запись о телефоне «{}» сохранена; опознано сейчас: {}.",
    "The record of the phone “{}” was saved; newly recognised: {}."};
inline constexpr Sentence<std::string_view> rebuildNothingNew{
    "Новых файлов не опознано; запись о телефоне «{}» не изменилась.",
    "No new file was recognised; the record of the phone “{}” has not changed."};
inline constexpr Sentence<std::string_view> rebuildNothing{
    "Не опознан ни один файл; записи о телефоне «{}» в папке нет.",
    "No file was recognised; the folder has no record of the phone “{}”."};
inline constexpr Sentence<std::string_view, std::string_view> rebuildCancelledEarly{
    "Опознание прервано, просмотрено {} из {}; новых файлов не опознано, повторите.",
    "The comparison was cancelled after {} of {}; no new file was recognised, run it again."};
inline constexpr Sentence<std::string_view, std::string_view> rebuildCancelled{
    "Опознание прервано, просмотрено {} из {}; опознанное записано, повтор продолжит.",
    "The comparison was cancelled after {} of {}; the recognised files are recorded, run it again "
    "to continue."};
inline constexpr Sentence<> rowInFolder{"Файлов в папке", "Files in the folder"};
inline constexpr Sentence<> rowRecognised{"опознаны", "recognised"};
inline constexpr Sentence<> rowAlreadyRecorded{"были в записи", "already in the record"};
inline constexpr Sentence<> rowRecognisedNow{"опознаны сейчас", "newly recognised"};
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
