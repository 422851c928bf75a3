#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// What the command line tells of past runs, in both languages side by side.
namespace tavrix::cli::sentences {

inline constexpr CountedNoun runs{"перенос", "переноса", "переносов", "transfer", "transfers"};

inline constexpr Sentence<std::string_view> badRecordID{
    "«{}» не похоже на номер записи; номера показывает tavrix history, последняя запись — last.",
    "“{}” is no record's number; tavrix history shows them, and the newest one is last."};
inline constexpr Sentence<std::string_view> noSuchRecord{
    "Записи «{}» нет; список записей: tavrix history.",
    "There is no record “{}”; for the list of records: tavrix history."};
inline constexpr Sentence<std::string_view> ambiguousRecordID{
    "На «{}» начинается не одна запись; допишите номер, список: tavrix history.",
    "More than one record begins with “{}”; write more of the number, the list: tavrix history."};
inline constexpr Sentence<std::string_view> badOutcome{
    "--outcome не принимает «{}»; можно: all, onMac, alreadyThere, failed, optimized.",
    "--outcome does not take “{}”; allowed: all, onMac, alreadyThere, failed, optimized."};
inline constexpr Sentence<> deleteWithoutRecord{
    "Непонятно, какую запись удалить; пример: tavrix history НОМЕР --delete.",
    "It is not clear which record to delete; for example: tavrix history ID --delete."};
inline constexpr Sentence<> listOptionsWithRecord{
    "--phone, --dest, --path и --asset выбирают записи из списка; уберите их или номер записи.",
    "--phone, --dest, --path and --asset choose records of the list; leave out them or the "
    "record's number."};
inline constexpr Sentence<> pathAndAsset{
    "--path и --asset вместе не спрашивают; оставьте одно.",
    "--path and --asset are not asked together; leave out one."};
inline constexpr Sentence<> stateFolderUnknown{
    "Неизвестно, где хранить историю: ни HOME, ни XDG_STATE_HOME не заданы; укажите --state DIR.",
    "There is no place for the history: neither HOME nor XDG_STATE_HOME is set; give --state DIR."};
inline constexpr Sentence<std::string_view, std::string_view> historyNotWritten{
    "Перенос закончился, но запись о нём в историю не попала: «{}», {}; укажите другую папку: "
    "--state DIR.",
    "The transfer has ended, but the history has no record of it: “{}”, {}; name another folder: "
    "--state DIR."};
inline constexpr Sentence<std::string_view, std::int64_t> recordNewer{
    "Запись {} сделана более новой версией программы (формат {}); обновите Tavrix.",
    "The record {} is by a newer version of the program (format {}); update Tavrix."};
inline constexpr Sentence<std::string_view, std::string_view> recordUnreadable{
    "Запись {0} повреждена ({1}); удалите её: tavrix history {0} --delete.",
    "The record {0} is damaged ({1}); delete it: tavrix history {0} --delete."};
inline constexpr Sentence<std::uint64_t, std::uint64_t> damageAtPosition{"строка {}, столбец {}",
                                                                         "line {}, column {}"};
inline constexpr Sentence<std::string_view> damageAtField{"поле «{}»", "the field “{}”"};

inline constexpr Sentence<> titleRecord{"Запись", "Record"};
inline constexpr Sentence<> titleBegun{"Начат", "Started"};
inline constexpr Sentence<> titlePhone{"Телефон", "Phone"};
inline constexpr Sentence<> titleDestination{"Куда", "Into"};
inline constexpr Sentence<> titleWritten{"Записано", "Written"};
inline constexpr Sentence<> titleVerdict{"Итог", "Verdict"};
inline constexpr Sentence<> titleState{"Состояние", "State"};
inline constexpr Sentence<> titlePathOrReason{"Где лежит или почему нет",
                                              "Where it lies or why not"};
inline constexpr Sentence<> noRuns{"Переносов ещё не было.", "There have been no transfers yet."};
inline constexpr Sentence<> noSuchRuns{"Таких переносов нет.", "There are no such transfers."};
inline constexpr Sentence<> noSuchShots{"Таких снимков в этом переносе нет.",
                                        "This transfer has no such snapshots."};
inline constexpr Sentence<std::string_view> recordDeleted{
    "Запись {} удалена; файлы остались на месте.",
    "The record {} is deleted; the files stay where they are."};
inline constexpr Sentence<std::string_view> recordHint{"Подробности: tavrix history {}",
                                                       "For details: tavrix history {}"};

inline constexpr Sentence<> rowRecord{"Запись", "Record"};
inline constexpr Sentence<> rowTime{"Время", "Time"};
inline constexpr Sentence<std::string_view, std::string_view> timeSpan{"{} – {}", "{} – {}"};
inline constexpr Sentence<> rowPhone{"Телефон", "Phone"};
inline constexpr Sentence<> rowDestination{"Папка", "Folder"};
inline constexpr Sentence<> rowTemplate{"Имена папок", "Folder names"};
inline constexpr Sentence<> rowWritten{"Записано", "Written"};
inline constexpr Sentence<> rowVerdict{"Итог", "Verdict"};
inline constexpr Sentence<> rowNote{"Примечание", "Note"};
inline constexpr Sentence<std::string_view, std::string_view> folderHeading{"{} — {}", "{} — {}"};
inline constexpr Sentence<std::string_view> keptOriginalState{"{}, без преобразования",
                                                              "{}, unconverted"};

}  // namespace tavrix::cli::sentences
