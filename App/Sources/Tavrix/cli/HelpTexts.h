#pragma once

#include <string_view>

/// The help of the commands, in both languages side by side.
namespace tavrix::cli::help {

struct HelpText {
  std::string_view russian;
  std::string_view english;
};

inline constexpr HelpText program{
    R"(Tavrix переносит фотографии и видео айфона в папки.

Использование: tavrix КОМАНДА ПАРАМЕТРЫ…

  catalog SOURCE          файлы телефона: вид, дата и место съёмки
  bundles SOURCE          снимки: какие файлы составляют один кадр
  groups SOURCE           папки, в которые лягут снимки, с их именами
  places SOURCE           места съёмки
  plan SOURCE DEST        что перенеслось бы; ничего не пишет
  transfer SOURCE DEST    переносит; повтор переносит только недостающее
  snapshot SOURCE OUT-DIR записывает каталог телефона в OUT-DIR/snapshot.json
  phones                  айфоны на кабеле и их состояние
  cache, cache reset      сколько прочитанного помнит программа; забыть всё это
  template render         имя папки по шаблону
  template presets        готовые шаблоны имён
  template sanitize TEXT  имя, которое годится для папки

SOURCE — айфон на кабеле: phone или phone:НОМЕР; смонтированный телефон, карта памяти или копия
DCIM: папка, в которой лежит DCIM или папки вида 100APPLE; либо папка, в которой лежат
snapshot.json и media. DEST — папка для фотографий.

Примеры:
  tavrix groups ТЕЛЕФОН --set granularity=month
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ
  tavrix КОМАНДА --help
)",
    R"(Tavrix copies the photos and videos of an iPhone into folders.

Usage: tavrix COMMAND ARGUMENTS…

  catalog SOURCE          the phone's files: kind, date and place of each
  bundles SOURCE          the shots: which files make up one picture
  groups SOURCE           the folders that shots will lie in, with their names
  places SOURCE           the places where shots were taken
  plan SOURCE DEST        what would be transferred; writes nothing
  transfer SOURCE DEST    transfers; run again, it transfers only what is missing
  snapshot SOURCE OUT-DIR writes the phone's catalogue as OUT-DIR/snapshot.json
  phones                  the iPhones on the cable and their state
  cache, cache reset      how much of what it read the program keeps; forget all of it
  template render         a folder name from a template
  template presets        the templates that come with the program
  template sanitize TEXT  a name that a folder can have

SOURCE is an iPhone on the cable, phone or phone:SERIAL; a mounted phone, a memory card or a copy
of DCIM: a folder that holds DCIM or folders such as 100APPLE; or a folder that holds snapshot.json
and media. DEST is the folder for the photos.

Examples:
  tavrix groups PHONE --set granularity=month
  tavrix transfer PHONE PHOTOS
  tavrix COMMAND --help
)"};

inline constexpr HelpText commonOptions{
    R"(
Параметры всех команд:
  --json              результат для программ
  --lang ru|en|system язык сообщений (по умолчанию ru)
  --set КЛЮЧ=ЗНАЧЕНИЕ одна настройка на этот вызов; можно повторять
  --state DIR         папка состояния программы
  --verbose           строки журнала в поток ошибок
  --help              эта справка
  --version           версия программы

Завершение: 0 — всё сделано, 1 — часть файлов не удалась, 2 — ошибка в вызове,
3 — не удалось начать или остановлено, 130 — прервано.
)",
    R"(
Options of every command:
  --json              the result for programs
  --lang ru|en|system language of what people read (ru by default)
  --set KEY=VALUE     one setting for this call; may be repeated
  --state DIR         the program's state folder
  --verbose           log lines on standard error
  --help              this help
  --version           the program's version

Exit status: 0 all done, 1 some files failed, 2 wrong call, 3 could not start or was stopped,
130 interrupted.
)"};

/// Introduces the list of keys of --set.
inline constexpr HelpText settingKeysTitle{"\nКлючи --set:\n", "\nKeys of --set:\n"};

inline constexpr HelpText catalog{
    R"(tavrix catalog SOURCE — файлы телефона: вид, размер, дата и место съёмки.

Примеры:
  tavrix catalog ТЕЛЕФОН
  tavrix catalog ТЕЛЕФОН --json | jq '.[].name'
)",
    R"(tavrix catalog SOURCE — the phone's files: kind, size, date and place.

Examples:
  tavrix catalog PHONE
  tavrix catalog PHONE --json | jq '.[].name'
)"};

inline constexpr HelpText bundles{
    R"(tavrix bundles SOURCE — снимки: оригинал и файлы, которые идут вместе с ним.

Примеры:
  tavrix bundles ТЕЛЕФОН
  tavrix bundles ТЕЛЕФОН --json | jq '.[] | select(.isLivePhoto)'
)",
    R"(tavrix bundles SOURCE — the shots: the original and the files that go with it.

Examples:
  tavrix bundles PHONE
  tavrix bundles PHONE --json | jq '.[] | select(.isLivePhoto)'
)"};

inline constexpr HelpText groups{
    R"(tavrix groups SOURCE — папки, в которые лягут снимки, с именами и счётом.

Примеры:
  tavrix groups ТЕЛЕФОН --set granularity=month
  tavrix groups ТЕЛЕФОН --set timeZoneID=Europe/Moscow --set includeVideos=false
  tavrix groups ТЕЛЕФОН --set periodFrom=2026-05-01 --set periodTo=2026-05-31
)",
    R"(tavrix groups SOURCE — the folders that shots will lie in, with names and counts.

Examples:
  tavrix groups PHONE --set granularity=month
  tavrix groups PHONE --set timeZoneID=Europe/Rome --set includeVideos=false
  tavrix groups PHONE --set periodFrom=2026-05-01 --set periodTo=2026-05-31
)"};

inline constexpr HelpText places{
    R"(tavrix places SOURCE — места съёмки: близкие точки считаются одним местом.

Примеры:
  tavrix places ТЕЛЕФОН
  tavrix places ТЕЛЕФОН --set placeRadiusKm=25
)",
    R"(tavrix places SOURCE — the places of the shots; points close together count as one.

Examples:
  tavrix places PHONE
  tavrix places PHONE --set placeRadiusKm=25
)"};

inline constexpr HelpText plan{
    R"(tavrix plan SOURCE DEST — что перенеслось бы в DEST; ничего не пишет.

  --device-name NAME  имя телефона (по умолчанию iPhone)

Примеры:
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ --set separatePhotoVideo=true
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ --json | jq -r '.files[].relativePath'
)",
    R"(tavrix plan SOURCE DEST — what would be transferred into DEST; writes nothing.

  --device-name NAME  the phone's name (iPhone by default)

Examples:
  tavrix plan PHONE PHOTOS
  tavrix plan PHONE PHOTOS --set separatePhotoVideo=true
  tavrix plan PHONE PHOTOS --json | jq -r '.files[].relativePath'
)"};

inline constexpr HelpText transfer{
    R"(tavrix transfer SOURCE DEST — переносит снимки в папку DEST.

DEST создаётся, если есть папка, в которой ей лежать. Повтор переносит только то, чего в DEST
ещё нет. Ctrl-C останавливает перенос; всё, что успело скопироваться, остаётся.

  --device-name NAME  имя телефона (по умолчанию iPhone)

Примеры:
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ --set granularity=month --set includeAAE=false
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ --set fileNamePrefixMode=phone --device-name Анна
)",
    R"(tavrix transfer SOURCE DEST — transfers the shots into the folder DEST.

DEST is created when the folder above it exists. Run again, it transfers only what is not in DEST
yet. Ctrl-C stops the transfer; all that was copied by then stays.

  --device-name NAME  the phone's name (iPhone by default)

Examples:
  tavrix transfer PHONE PHOTOS
  tavrix transfer PHONE PHOTOS --set granularity=month --set includeAAE=false
  tavrix transfer PHONE PHOTOS --set fileNamePrefixMode=phone --device-name Anna
)"};

inline constexpr HelpText snapshot{
    R"(tavrix snapshot SOURCE OUT-DIR — записывает каталог телефона в OUT-DIR/snapshot.json.

OUT-DIR создаётся, если есть папка, в которой ей лежать; прежний snapshot.json заменяется.

Пример:
  tavrix snapshot ТЕЛЕФОН КАТАЛОГ
)",
    R"(tavrix snapshot SOURCE OUT-DIR — writes the phone's catalogue as OUT-DIR/snapshot.json.

OUT-DIR is created when the folder above it exists; an earlier snapshot.json is replaced.

Example:
  tavrix snapshot PHONE CATALOGUE
)"};

inline constexpr HelpText phones{
    R"(tavrix phones — айфоны на кабеле: имя, модель, номер и готов ли каждый отдать файлы.

Первый из них — источник phone, любой — источник phone:НОМЕР.

Примеры:
  tavrix phones
  tavrix transfer phone ФОТОГРАФИИ
)",
    R"(tavrix phones — the iPhones on the cable: name, model, number and whether each is ready.

The first one is the source phone, any is the source phone:SERIAL.

Examples:
  tavrix phones
  tavrix transfer phone PHOTOS
)"};

inline constexpr HelpText cache{
    R"(tavrix cache — сколько прочитанных дат, мест и размеров помнит программа и где они лежат.
tavrix cache reset — забыть их; в следующий раз файлы прочитаются заново.

Примеры:
  tavrix cache
  tavrix cache reset
)",
    R"(tavrix cache — how many dates, places and sizes the program keeps, and where they lie.
tavrix cache reset — forgets them; the next time, files are read again.

Examples:
  tavrix cache
  tavrix cache reset
)"};

inline constexpr HelpText templates{
    R"(tavrix template render --template JSON --context JSON — имя папки по шаблону.
tavrix template presets — готовые шаблоны имён.
tavrix template sanitize TEXT — имя, которое годится для папки.

Поля --context: dateStart, dateEnd (вида 2026-05-20T12:00:00Z), timeZone, city, countryName,
countryCode, eventName; любое можно опустить.

Примеры:
  tavrix template presets
  tavrix template sanitize 'Дача: 1/2'
  tavrix template render \
    --template '{"tokens":[{"year":{"_0":"full"}},{"literal":{"_0":" "}},{"city":{"_0":"asIs"}}],"language":"russian"}' \
    --context '{"dateStart":"2026-05-20T12:00:00Z","city":"Москва"}'
)",
    R"(tavrix template render --template JSON --context JSON — a folder name from a template.
tavrix template presets — the templates that come with the program.
tavrix template sanitize TEXT — a name that a folder can have.

Fields of --context: dateStart, dateEnd (such as 2026-05-20T12:00:00Z), timeZone, city,
countryName, countryCode, eventName; any may be left out.

Examples:
  tavrix template presets
  tavrix template sanitize 'Picnic: 1/2'
  tavrix template render \
    --template '{"tokens":[{"year":{"_0":"full"}},{"literal":{"_0":" "}},{"city":{"_0":"asIs"}}],"language":"english"}' \
    --context '{"dateStart":"2026-05-20T12:00:00Z","city":"Rome"}'
)"};

}  // namespace tavrix::cli::help
