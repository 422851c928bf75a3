#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences about sources and destinations that cannot be used, in both languages side by
/// side.
namespace tavrix::sentences {

// The source.
inline constexpr Sentence<std::string_view> sourceMissing{
    "По пути «{}» ничего нет; проверьте, верно ли он набран и подключён ли диск.",
    "There is nothing at “{}”; check the spelling, and that the disk is connected."};
inline constexpr Sentence<std::string_view> sourceIsFile{
    "«{}» — файл, а нужна папка: смонтированный телефон, карта памяти или копия DCIM.",
    "“{}” is a file; name a folder: a mounted phone, a memory card or a copy of DCIM."};
inline constexpr Sentence<std::string_view, std::string_view> sourceIsCatalogue{
    "«{}» — сам каталог; укажите папку, в которой он лежит: «{}».",
    "“{}” is the catalogue itself; name the folder that contains it: “{}”."};
inline constexpr Sentence<std::string_view> snapshotMissing{
    "Нет файла «{}»; укажите папку, в которой лежат snapshot.json и media, папка DCIM или папки "
    "вида 100APPLE.",
    "There is no file “{}”; name a folder that contains snapshot.json and media, a DCIM folder, or "
    "folders such as 100APPLE."};
inline constexpr Sentence<std::string_view, std::string_view> snapshotUnreadable{
    "Не удалось прочитать файл «{}»: {}; проверьте права доступа и диск.",
    "Cannot read the file “{}”: {}; check its permissions and the disk."};
inline constexpr Sentence<std::string_view, std::uint64_t, std::uint64_t, std::string_view>
    snapshotWrong{"Ошибка в каталоге «{}», строка {}, столбец {}: {}; запишите его заново.",
                  "The catalogue “{}” is invalid, line {}, column {}: {}; record it again."};
inline constexpr Sentence<> snapshotNotJson{"это не JSON в кодировке UTF-8",
                                            "this is not JSON in UTF-8"};
inline constexpr Sentence<> snapshotTooLarge{
    "слишком длинное значение или список либо слишком глубокая вложенность",
    "a value or the list is too long, or the nesting is too deep"};
inline constexpr Sentence<> snapshotNotList{"файл должен быть списком записей",
                                            "the file must be a list of entries"};
inline constexpr Sentence<std::uint64_t, std::string_view> snapshotMissingField{
    "в записи {} нет поля «{}»", "entry {} lacks the field “{}”"};
inline constexpr Sentence<std::uint64_t, std::string_view> snapshotWrongType{
    "в записи {} у поля «{}» значение не того типа",
    "entry {} has a value of the wrong type in the field “{}”"};
inline constexpr Sentence<std::uint64_t, std::string_view> snapshotOutOfRange{
    "в записи {} число в поле «{}» вне допустимых границ",
    "entry {} has a number out of range in the field “{}”"};
inline constexpr Sentence<std::string_view> mediaMissing{
    "Нет папки «{}» с файлами телефона; создайте её и положите файлы туда.",
    "There is no folder “{}” with the phone's files; create it and put the files there."};

// The destination.
inline constexpr Sentence<std::string_view> destinationMissing{
    "Папки «{}» нет; проверьте путь и подключён ли диск.",
    "There is no folder “{}”; check the path and that the disk is connected."};
inline constexpr Sentence<std::string_view> destinationParentMissing{
    "Нельзя создать «{}»: сначала создайте папку уровнем выше.",
    "Cannot create “{}”: create the folder above it first."};
inline constexpr Sentence<std::string_view> destinationNotFolder{
    "«{}» — не папка; выберите для фотографий папку.",
    "“{}” is not a folder; choose a folder for the photos."};
inline constexpr Sentence<std::string_view> destinationInsideSource{
    "Папка «{}» находится внутри источника; выберите для фотографий другую.",
    "The folder “{}” is inside the source; choose another one for the photos."};
inline constexpr Sentence<std::string_view> destinationHoldsSource{
    "Папка «{}» содержит сам источник; выберите для фотографий другую.",
    "The folder “{}” contains the source itself; choose another one for the photos."};
inline constexpr Sentence<std::string_view> destinationBusy{
    "В папку «{}» уже идёт другой перенос; дождитесь его окончания и повторите.",
    "Another transfer into the folder “{}” is running; wait until it ends and try again."};
inline constexpr Sentence<std::string_view> destinationChanged{
    "Папка «{}» уже не та, в которую шёл перенос: подключён другой диск или пропали перенесённые "
    "файлы. Начните перенос снова — он проверит, что в ней есть.",
    "The folder “{}” is no longer the one that the transfer wrote to: another disk is connected, "
    "or "
    "transferred files are gone. Start the transfer again; it checks what is there."};
inline constexpr Sentence<std::string_view, std::string_view, std::int64_t> destinationNewer{
    "В папке «{}» запись «{}» сделана более новой версией программы (формат {}); обновите Tavrix.",
    "In the folder “{}” the record “{}” was written by a newer version of the program (format {}); "
    "update Tavrix."};

// Anything.
inline constexpr Sentence<std::string_view, std::string_view> fileRefused{
    "Не удалось обратиться к «{}»: {}; проверьте путь, права доступа и диск.",
    "Cannot access “{}”: {}; check the path, the permissions and the disk."};
inline constexpr Sentence<> outOfMemory{"Не хватает памяти; закройте другие программы и повторите.",
                                        "Not enough memory; close other programs and try again."};

}  // namespace tavrix::sentences
