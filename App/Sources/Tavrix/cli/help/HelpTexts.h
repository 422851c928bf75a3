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
  groups SOURCE           папки, в которые попадут снимки, с их именами
  places SOURCE           места съёмки по странам и городам
  geocache reset          забывает запомненные названия мест
  plan SOURCE DEST        показывает, что будет перенесено; ничего не записывает
  transfer SOURCE DEST    переносит; повтор переносит только недостающее
  history [RECORD-ID]     прошлые переносы и что стало с каждым файлом
  verify DEST             сверяет скопированное с записями: что цело, изменилось, пропало
  repair SOURCE DEST      снова копирует то, что изменилось или пропало
  marker rebuild SOURCE DEST
                          опознаёт скопированное, если записи в DEST потеряны
  snapshot SOURCE OUT-DIR
                          записывает каталог телефона в OUT-DIR/snapshot.json
  thumbnails SOURCE OUT-DIR
                          миниатюры всех снимков; с --sheet DIR — ещё и страница
  phones                  подключённые айфоны и их состояние
  window [SOURCE]         открывает окно программы
  cache, cache reset      сколько прочитанного помнит программа; забыть всё это
  template render         имя папки по шаблону
  template presets        готовые шаблоны имён
  template sanitize TEXT  имя, допустимое для папки
  settings                запомненные настройки; settings set KEY VALUE, settings reset KEY;
                          settings --all — что значит каждая
  presets                 все шаблоны имён; presets save NAME TEMPLATE,
                          presets delete NAME
  help [COMMAND или KEY]  справка о программе, о команде или о настройке

SOURCE — одно из трёх:
  подключённый айфон: phone или phone:НОМЕР;
  смонтированный телефон, карта памяти или копия DCIM: папка с DCIM или с папками вида 100APPLE;
  папка, в которой лежат snapshot.json и media.
DEST — папка для фотографий.

Примеры:
  tavrix groups ТЕЛЕФОН --set uiMode=trips --explain
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ
  tavrix КОМАНДА --help
)",
    R"(Tavrix copies the photos and videos of an iPhone into folders.

Usage: tavrix COMMAND ARGUMENTS…

  catalog SOURCE          the phone's files: kind, date and place of each
  bundles SOURCE          the shots: which files make up one picture
  groups SOURCE           the folders for the shots, with their names
  places SOURCE           the places where shots were taken, by country and city
  geocache reset          deletes the saved place names
  plan SOURCE DEST        shows what would be transferred; writes nothing
  transfer SOURCE DEST    transfers; a second run transfers only what is missing
  history [RECORD-ID]     past transfers, and the outcome of every file
  verify DEST             compares the copies with the records: intact, changed, missing
  repair SOURCE DEST      copies again what has changed or is missing
  marker rebuild SOURCE DEST
                          recognises the copies if the records in DEST are lost
  snapshot SOURCE OUT-DIR
                          writes the phone's catalogue to OUT-DIR/snapshot.json
  thumbnails SOURCE OUT-DIR
                          thumbnails of all pictures; with --sheet DIR a page, too
  phones                  the connected iPhones and their state
  window [SOURCE]         opens the window of the program
  cache, cache reset      how much of what it read the program keeps; deletes all of it
  template render         a folder name from a template
  template presets        the built-in templates
  template sanitize TEXT  a valid folder name
  settings                the saved settings; settings set KEY VALUE, settings reset KEY;
                          settings --all explains every one
  presets                 all name templates; presets save NAME TEMPLATE,
                          presets delete NAME
  help [COMMAND or KEY]   help on the program, a command or a setting

SOURCE is one of these:
  a connected iPhone: phone or phone:SERIAL;
  a mounted phone, a memory card or a copy of DCIM: a folder with DCIM or with folders such as
    100APPLE;
  a folder with snapshot.json and media.
DEST is the folder for the photos.

Examples:
  tavrix groups PHONE --set uiMode=trips --explain
  tavrix transfer PHONE PHOTOS
  tavrix COMMAND --help
)"};

inline constexpr HelpText commonOptions{
    R"(
Параметры всех команд:
  --json              результат для программ
  --lang ru|en|system язык сообщений; без него — запомненный, а если его нет — язык системы.
                      Запомнить: tavrix settings set uiLanguage ru. Имена папок — на языке
                      шаблона ({language:…} в nameTemplate), обычно это язык дат системы (LC_TIME)
  --set КЛЮЧ=ЗНАЧЕНИЕ одна настройка на этот вызов; можно повторять, запомнить: tavrix settings
  --state DIR         папка состояния программы
  --progress bar|json|none
                      ход работы в потоке ошибок: строка на терминале (так по умолчанию),
                      объекты JSON по одному в строке для программ, ничего
  --quiet             только результат, предупреждения и ошибки
  --verbose           строки журнала в поток ошибок
  --help              эта справка
  --version           версия программы

Завершение: 0 — всё сделано, 1 — часть файлов не перенесена или часть источника не прочитана,
2 — ошибка в вызове, 3 — не удалось начать или остановлено, 130 — прервано.
)",
    R"(
Options of every command:
  --json              the result for programs
  --lang ru|en|system language of the messages; without it the saved one, else the system's.
                      To save it: tavrix settings set uiLanguage en. Folders are named in the
                      template's language ({language:…} in nameTemplate), which is at first that
                      of the system's dates (LC_TIME)
  --set KEY=VALUE     one setting for this call; can be repeated; to save one: tavrix settings
  --state DIR         the program's state folder
  --progress bar|json|none
                      progress on standard error: a line on a terminal (the default),
                      JSON objects, one a line, for programs, or nothing
  --quiet             only the result, warnings and errors
  --verbose           log lines on standard error
  --help              this help
  --version           the program's version

Exit status: 0 all done, 1 some files failed or a part of the source was not read, 2 usage error,
3 could not start or was stopped, 130 interrupted.
)"};

/// Ends the help of the program, each in the other language.
inline constexpr HelpText otherLanguage{"\nIn English: tavrix --help --lang en\n",
                                        "\nПо-русски: tavrix --help --lang ru\n"};

/// Introduces the list of keys of --set.
inline constexpr HelpText settingKeysTitle{
    "\nКлючи --set (что значит каждый — tavrix settings --all или tavrix help КЛЮЧ):\n",
    "\nKeys of --set (explained by tavrix settings --all and tavrix help KEY):\n"};

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
    R"(tavrix bundles SOURCE — the shots: each original and the files that belong to it.

Examples:
  tavrix bundles PHONE
  tavrix bundles PHONE --json | jq '.[] | select(.isLivePhoto)'
)"};

inline constexpr HelpText groups{
    R"(tavrix groups SOURCE — папки, в которые попадут снимки, с именами и числом файлов.

  --explain           почему папки разделены именно здесь и почему снимки не в поездке
  --explain=all       то же о каждом снимке
  --accept-suggestions
                      склеить, и запомнить это, папки, которые программа предлагает склеить:
                      поездки в один город, разделённые вылазкой
  --device-name NAME  имя телефона, по которому --since-last находит его переносы
                      (по умолчанию iPhone)

Раскладка — --set uiMode=…:
  events  события: новое начинается после паузы дольше eventGapHours часов или переезда дальше
          eventGapKm километров; так по умолчанию
  trips   поездки: от tripMinDays дней в одном городе дальше tripDistanceKm от дома; остальное
          по месяцам. Дом определяется сам, указать другой: homeOverride=ШИРОТА,ДОЛГОТА
  byDate  по дням, месяцам или годам: granularity=day, month или year
  flat    всё в одной папке

Чтобы склеить группы или назвать их по-своему, укажите их id: его печатает --json.

Примеры:
  tavrix groups ТЕЛЕФОН --explain
  tavrix groups ТЕЛЕФОН --set uiMode=trips --set homeOverride=55.75,37.62 --set tripMinDays=3
  tavrix groups ТЕЛЕФОН --set 'mergesByMode={"events":[["event-2026-05-20","event-2026-05-21"]]}'
  tavrix groups ТЕЛЕФОН --set 'nameOverrides={"event-2026-05-20":"Дача"}'
  tavrix groups ТЕЛЕФОН --set 'nameTemplate={year}-{month:nameCap} {city}'
  tavrix groups ТЕЛЕФОН --set uiMode=byDate --set granularity=month
  tavrix groups ТЕЛЕФОН --set timeZoneID=Europe/Moscow --set includeVideos=false
  tavrix groups ТЕЛЕФОН --set periodFrom=2026-05-01 --set periodTo=2026-05-31
)",
    R"(tavrix groups SOURCE — the folders for the shots, with names and counts.

  --explain           why folders are split where they are, and why shots are not in a trip
  --explain=all       the same for every shot
  --accept-suggestions
                      merge, and remember it, the folders that the program suggests to merge:
                      trips to one city that an outing separates
  --device-name NAME  the phone's name, by which --since-last finds its transfers
                      (default: iPhone)

The mode is set by --set uiMode=…:
  events  a new event begins after a pause of more than eventGapHours hours or a jump of more
          than eventGapKm kilometres; this is the default
  trips   tripMinDays days or more in one city, farther than tripDistanceKm from home, are a trip;
          the rest goes into month folders. Home is detected; to choose another one:
          homeOverride=LATITUDE,LONGITUDE
  byDate  by days, months or years: granularity=day, month or year
  flat    everything in one folder

To merge groups or to name them yourself, use the ids that --json prints.

Examples:
  tavrix groups PHONE --explain
  tavrix groups PHONE --set uiMode=trips --set homeOverride=41.9,12.5 --set tripMinDays=3
  tavrix groups PHONE --set 'mergesByMode={"events":[["event-2026-05-20","event-2026-05-21"]]}'
  tavrix groups PHONE --set 'nameOverrides={"event-2026-05-20":"Picnic"}'
  tavrix groups PHONE --set 'nameTemplate={year}-{month:nameCap} {city}'
  tavrix groups PHONE --set uiMode=byDate --set granularity=month
  tavrix groups PHONE --set timeZoneID=Europe/Rome --set includeVideos=false
  tavrix groups PHONE --set periodFrom=2026-05-01 --set periodTo=2026-05-31
)"};

inline constexpr HelpText plan{
    R"(tavrix plan SOURCE DEST — показывает, что будет перенесено в DEST; ничего не записывает.

  --files             назвать каждый файл, а не только папки
  --device-name NAME  имя телефона (по умолчанию iPhone)

Примеры:
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ --set separatePhotoVideo=true
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ --json | jq -r '.files[].relativePath'
)",
    R"(tavrix plan SOURCE DEST — shows what would be transferred into DEST; writes nothing.

  --files             name every file, not only the folders
  --device-name NAME  the phone's name (default: iPhone)

Examples:
  tavrix plan PHONE PHOTOS
  tavrix plan PHONE PHOTOS --set separatePhotoVideo=true
  tavrix plan PHONE PHOTOS --json | jq -r '.files[].relativePath'
)"};

inline constexpr HelpText transfer{
    R"(tavrix transfer SOURCE DEST — переносит снимки в папку DEST.

DEST создаётся, если есть папка уровнем выше. Повтор переносит только то, чего в DEST ещё нет.
Пока iPhone отключён или на диске нет места, перенос ждёт, а потом продолжает сам.
Ctrl-C останавливает перенос; всё, что успело скопироваться, остаётся.

Папка, в которую добавились снимки, сохраняет своё имя, даже если шаблон дал бы теперь другое.
Если изменить настройки имён, язык или часовой пояс, снимки скопируются ещё раз под новыми
именами; об этом говорится заранее. --set continueFolders=false — имена только по шаблону.

С --set packAsZip=true все файлы складываются в один архив zip, а если добавить
--set packPerGroup=true — каждая папка в свой. Архив получает имя, когда прочитан обратно и
сверен. В архивы переносится всё, и повтор делает новые рядом со старыми. На время упаковки нужно
вдвое больше места; если его нет, перенос ждёт.

  --dry-run           только показать, что будет сделано; то же, что tavrix plan
  --device-name NAME  имя телефона (по умолчанию iPhone)
                      по нему карта узнаётся, куда бы её ни подключили,
                      и скопированное не копируется снова

Примеры:
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ --set uiMode=trips --set includeAAE=false
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ --set fileNamePrefixMode=phone --device-name Анна
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ --set packAsZip=true --set packPerGroup=true
)",
    R"(tavrix transfer SOURCE DEST — transfers the shots into the folder DEST.

DEST is created if the folder above it exists. A second run transfers only what is not yet in
DEST. While the iPhone is disconnected or the disk is full, the transfer waits, and then carries on
by itself. Ctrl-C stops the transfer; everything copied by then stays.

A folder that gets more shots keeps its name, even if the template would now give another one.
If you change how names are made, the language or the time zone, shots are copied again under the
new names; you are told so before. --set continueFolders=false names by the template alone.

With --set packAsZip=true all files go into one zip archive; with --set packPerGroup=true as well,
each folder goes into its own archive. An archive gets its name after it was read back and
compared. Everything goes into the archives, and a second run makes new ones beside the old ones.
Packing needs twice the space for a while; if there is too little, the transfer waits.

  --dry-run           only show what would be done; the same as tavrix plan
  --device-name NAME  the phone's name (default: iPhone)
                      by this name a card is recognised wherever it is mounted,
                      and what was copied is not copied again

Examples:
  tavrix transfer PHONE PHOTOS
  tavrix transfer PHONE PHOTOS --set uiMode=trips --set includeAAE=false
  tavrix transfer PHONE PHOTOS --set fileNamePrefixMode=phone --device-name Anna
  tavrix transfer PHONE PHOTOS --set packAsZip=true --set packPerGroup=true
)"};

inline constexpr HelpText history{
    R"(tavrix history — список переносов, новые сверху.
tavrix history RECORD-ID — один перенос: папки, снимки и файлы, с причиной каждой неудачи.

RECORD-ID — номер записи, его начало или last (последняя). История хранится в папке состояния.

  --outcome ЧТО   только такие снимки (в списке — переносы, где они есть): all, onMac,
                  alreadyThere, failed, optimized
  --phone NAME    переносы с этого телефона
  --dest DIR      переносы в эту папку
  --path FILE     что переносы сделали с этим файлом
  --asset ID      что переносы сделали с этим файлом телефона (id из tavrix catalog)
  --delete        удалить запись; перенесённые файлы остаются

Примеры:
  tavrix history
  tavrix history last --outcome failed
  tavrix history --path ФОТОГРАФИИ/2026-05-20/IMG_1400.HEIC
)",
    R"(tavrix history — the transfers, newest first.
tavrix history RECORD-ID — one transfer: folders, snapshots and files, with the reason of every
failure.

RECORD-ID is the number of a record, its beginning, or last. The history is in the state folder.

  --outcome WHAT  only snapshots with this outcome (in the list: transfers that have any): all,
                  onMac, alreadyThere, failed, optimized
  --phone NAME    transfers from this phone
  --dest DIR      transfers into this folder
  --path FILE     what transfers did with this file
  --asset ID      what transfers did with this file of the phone (its id in tavrix catalog)
  --delete        delete the record; the transferred files stay

Examples:
  tavrix history
  tavrix history last --outcome failed
  tavrix history --path PHOTOS/2026-05-20/IMG_1400.HEIC
)"};

inline constexpr HelpText snapshot{
    R"(tavrix snapshot SOURCE OUT-DIR — записывает каталог телефона в OUT-DIR/snapshot.json.

OUT-DIR создаётся, если есть папка уровнем выше; прежний snapshot.json заменяется.

Пример:
  tavrix snapshot ТЕЛЕФОН КАТАЛОГ
)",
    R"(tavrix snapshot SOURCE OUT-DIR — writes the phone's catalogue to OUT-DIR/snapshot.json.

OUT-DIR is created if the folder above it exists; an earlier snapshot.json is replaced.

Example:
  tavrix snapshot PHONE CATALOGUE
)"};

inline constexpr HelpText phones{
    R"(tavrix phones — подключённые айфоны: имя, модель, номер и готов ли каждый отдать файлы.

Первый из них — источник phone, любой другой — источник phone:НОМЕР.

Примеры:
  tavrix phones
  tavrix transfer phone ФОТОГРАФИИ
)",
    R"(tavrix phones — the connected iPhones: name, model, number and whether each is ready.

The first one is the source phone, any other one is the source phone:SERIAL.

Examples:
  tavrix phones
  tavrix transfer phone PHOTOS
)"};

inline constexpr HelpText cache{
    R"(tavrix cache — сколько прочитанных дат, мест, размеров и миниатюр помнит программа и где они лежат.
tavrix cache reset — забывает их; в следующий раз файлы прочитаются заново.

Примеры:
  tavrix cache
  tavrix cache reset
)",
    R"(tavrix cache — how many dates, places, sizes and thumbnails the program keeps, and where.
tavrix cache reset — deletes them; the next time, files are read again.

Examples:
  tavrix cache
  tavrix cache reset
)"};

inline constexpr HelpText templates{
    R"(tavrix template render --template TEMPLATE --context JSON — имя по шаблону.
tavrix template presets — готовые шаблоны имён и что даёт каждый.
tavrix template sanitize TEXT — имя, допустимое для папки.

TEMPLATE — текст, в котором блоки стоят в фигурных скобках:
  {year}     год: 2026; {year:short} — 26
  {month}    месяц: 05; {month:nameCap} — Май. Другие виды: plain — 5,
             nameLower — май, abbr и abbrUpper — сокращённое название
  {day}      день: 05; {day:plain} — 5
  {period}   первый и последний день: 2026-08-01–2026-08-03
  {city}     город или его район
  {country}  страна: Италия; {country:code} — IT
У города и страны после двоеточия можно указать регистр букв: lower, upper
или capital, например {city:upper} и {country:code:lower}. Месяцы и места
названы на языке системы; другой язык: {language:russian} или
{language:english}. Сами скобки пишутся {{ и }}.

Вместо шаблона можно указать название готового или сохранённого («Месяц
словом») либо JSON. Так же он задаётся в --set nameTemplate=TEMPLATE.

Поля --context: dateStart, dateEnd (вида 2026-05-20T12:00:00Z), timeZone, city,
countryName, countryCode, eventName; любое можно опустить.

Примеры:
  tavrix template presets
  tavrix template sanitize 'Дача: 1/2'
  tavrix template render --template '{year}-{month:nameCap} {city}' \
    --context '{"dateStart":"2026-05-20T12:00:00Z","city":"Москва"}'
  tavrix groups ТЕЛЕФОН --set 'nameTemplate={language:english}{city} {year}'
  tavrix settings set nameTemplate 'Месяц словом'
)",
    R"(tavrix template render --template TEMPLATE --context JSON — a name.
tavrix template presets — the built-in templates and what each gives.
tavrix template sanitize TEXT — a valid folder name.

TEMPLATE is a text with blocks in braces:
  {year}     the year: 2026; {year:short} is 26
  {month}    the month: 05; {month:nameCap} is May. Other styles: plain is 5,
             nameLower is may, abbr and abbrUpper are the short name
  {day}      the day: 05; {day:plain} is 5
  {period}   the first and last day: 2026-08-01–2026-08-03
  {city}     the city or its quarter
  {country}  the country: Italy; {country:code} is IT
A city or country can have a letter case after a colon: lower, upper or
capital, as in {city:upper} and {country:code:lower}. Months and places are
named in the language of the system; to choose another one, put in
{language:english} or {language:russian}. Braces themselves are {{ and }}.

Instead of a template, give the title of a built-in or saved one (“Month in
words”) or its JSON. --set nameTemplate=TEMPLATE takes the same.

Fields of --context: dateStart, dateEnd (such as 2026-05-20T12:00:00Z),
timeZone, city, countryName, countryCode, eventName; all are optional.

Examples:
  tavrix template presets
  tavrix template sanitize 'Picnic: 1/2'
  tavrix template render --template '{year}-{month:nameCap} {city}' \
    --context '{"dateStart":"2026-05-20T12:00:00Z","city":"Rome"}'
  tavrix groups PHONE --set 'nameTemplate={language:english}{city} {year}'
  tavrix settings set nameTemplate 'Month in words'
)"};

}  // namespace tavrix::cli::help
