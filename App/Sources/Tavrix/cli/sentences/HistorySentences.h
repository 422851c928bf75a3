#pragma once

#include <string_view>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"

/// The sentences of the command line about past runs, in both languages side by side.
namespace tavrix::cli::sentences {

inline constexpr CountedNoun runs{"перенос", "переноса", "переносов", "transfer", "transfers"};

inline constexpr Sentence<std::string_view> badRecordID{
    "«{}» не похоже на номер записи; номера показывает tavrix history, последняя запись — last.",
    "“{}” is not a record's number; tavrix history shows the numbers, and last is the newest "
    "record."};
inline constexpr Sentence<std::string_view> noSuchRecord{
    "Записи «{}» нет; список записей: tavrix history.",
    "There is no record “{}”; for the list of records, run tavrix history."};
inline constexpr Sentence<std::string_view> ambiguousRecordID{
    "С «{}» начинается несколько номеров; допишите номер, список: tavrix history.",
    "Several record numbers begin with “{}”; copy more of the number from tavrix history."};
inline constexpr Sentence<std::string_view> badOutcome{
    "--outcome не принимает «{}»; можно: all, onMac, alreadyThere, failed, optimized.",
    "--outcome does not accept “{}”; allowed: all, onMac, alreadyThere, failed, optimized."};
inline constexpr Sentence<> deleteWithoutRecord{
    "Укажите, какую запись удалить; пример: tavrix history НОМЕР --delete.",
    "Name the record to delete; for example: tavrix history ID --delete."};
inline constexpr Sentence<> listOptionsWithRecord{
    "--phone, --dest, --path и --asset выбирают записи из списка; уберите их или номер записи.",
    "--phone, --dest, --path and --asset choose records from the list; remove them or the record's "
    "number."};
inline constexpr Sentence<> pathAndAsset{
    "--path и --asset нельзя указать вместе; оставьте одно.",
    "--path and --asset cannot be used together; remove one of them."};
inline constexpr Sentence<std::string_view, std::string_view> historyNotWritten{
    "Перенос завершён, но запись о нём в историю не попала: «{}», {}; укажите другую папку: "
    "--state DIR.",
    "The transfer has ended, but its record could not be added to the history: “{}”, {}; name "
    "another folder with --state DIR."};
inline constexpr Sentence<std::string_view, std::int64_t> recordNewer{
    "Запись {} сделана более новой версией программы (формат {}); обновите Tavrix.",
    "The record {} was written by a newer version of the program (format {}); update Tavrix."};
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
inline constexpr Sentence<> titleVerdict{"Итог", "Result"};
inline constexpr Sentence<> titleOutcomeState{"Состояние", "State"};
inline constexpr Sentence<> titlePathOrReason{"Путь или причина", "Path or reason"};
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
inline constexpr Sentence<> rowVerdict{"Итог", "Result"};
inline constexpr Sentence<> rowNote{"Примечание", "Note"};
inline constexpr Sentence<std::string_view, std::string_view> folderHeading{"{} — {}", "{} — {}"};
inline constexpr Sentence<std::string_view> keptOriginalState{"{}, без преобразования",
                                                              "{}, unconverted"};

}  // namespace tavrix::cli::sentences
