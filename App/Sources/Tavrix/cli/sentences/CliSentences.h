#pragma once

#include <string>
#include <string_view>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"
#include "text/PlanSentences.h"

/// The sentences of the command line for the user, in both languages side by side.
namespace tavrix::cli::sentences {

using Text = std::string_view;

inline constexpr CountedNoun files{"файл", "файла", "файлов", "file", "files"};
inline constexpr CountedNoun folders{"папка", "папки", "папок", "folder", "folders"};
inline constexpr CountedNoun shots{"снимок", "снимка", "снимков", "shot", "shots"};
inline constexpr CountedNoun places{"место", "места", "мест", "place", "places"};
inline constexpr CountedNoun entries{"запись", "записи", "записей", "entry", "entries"};

// The call.
inline constexpr Sentence<> commandMissing{
    "Не указана команда; список команд: tavrix --help.",
    "No command is given; for the list of commands, run tavrix --help."};
inline constexpr Sentence<Text> unknownCommand{
    "Команды «{}» нет; список команд: tavrix --help.",
    "There is no command “{}”; for the list of commands, run tavrix --help."};
inline constexpr Sentence<Text, Text> unknownCommandLike{
    "Команды «{0}» нет. Может быть, tavrix {1}? Список команд: tavrix --help.",
    "There is no command “{0}”. Did you mean tavrix {1}? For the list of commands, run tavrix "
    "--help."};
inline constexpr Sentence<Text, Text> unknownOptionLike{
    "Параметра «{0}» нет. Может быть, {1}? Список параметров: tavrix --help.",
    "There is no option “{0}”. Did you mean {1}? For the list of options, run tavrix --help."};
inline constexpr Sentence<Text> optionTwice{"Параметр {} указан дважды; оставьте один.",
                                            "The option {} is given twice; keep one of them."};
inline constexpr Sentence<Text> unknownOption{
    "Параметра «{}» нет; список параметров: tavrix --help.",
    "There is no option “{}”; for the list of options, run tavrix --help."};
inline constexpr Sentence<Text> optionValueMissing{
    "Не указано значение параметра «{}»; примеры: tavrix --help.",
    "The option “{}” needs a value; for examples, run tavrix --help."};
inline constexpr Sentence<> argumentsUnclear{
    "Не удалось разобрать параметры; примеры: tavrix --help.",
    "The arguments cannot be parsed; for examples, run tavrix --help."};
inline constexpr Sentence<Text, Text> operandMissing{
    "Не хватает {0}; примеры: tavrix {1} --help.",
    "{0} is missing; for examples, run tavrix {1} --help."};
inline constexpr Sentence<Text, Text> operandTooMany{
    "Лишний параметр «{0}»; примеры: tavrix {1} --help.",
    "Unexpected argument “{0}”; for examples, run tavrix {1} --help."};
inline constexpr Sentence<Text, Text> folderEmpty{
    "{0} — пустая строка; укажите папку, примеры: tavrix {1} --help.",
    "{0} is empty; name a folder, as in the examples of tavrix {1} --help."};
inline constexpr Sentence<Text> serialEmpty{
    "После «phone:» нужен серийный номер, его показывает tavrix phones; просто phone — первый "
    "подключённый iPhone. Примеры: tavrix {} --help.",
    "“phone:” needs a serial number, as shown by tavrix phones; plain phone is the first connected "
    "iPhone. For examples, run tavrix {} --help."};
inline constexpr Sentence<Text> unknownProgress{
    "Такого вида хода работы, как «{}», нет; можно: --progress=bar, --progress=json или "
    "--progress=none.",
    "There is no form of progress “{}”; choose --progress=bar, --progress=json or "
    "--progress=none."};
inline constexpr Sentence<Text> unknownLanguage{
    "Язык «{}» неизвестен; можно: --lang ru, --lang en или --lang system.",
    "The language “{}” is unknown; choose --lang ru, --lang en or --lang system."};

// Settings.
inline constexpr Sentence<Text> settingNotAssignment{
    "Настройка «{}» записана не в виде КЛЮЧ=ЗНАЧЕНИЕ; пример: --set uiMode=trips.",
    "The setting “{}” is not in the form KEY=VALUE; for example: --set uiMode=trips."};
inline constexpr Sentence<Text, Text, Text> settingUnknownKey{
    "Настройки «{}» (значение «{}») нет; есть такие: {}.",
    "There is no setting “{}” (value “{}”); the settings are: {}."};
inline constexpr Sentence<Text, Text, Text> settingUnknownKeyLike{
    "Настройки «{}» (значение «{}») нет. Может быть, {}? Все настройки: tavrix --help.",
    "There is no setting “{}” (value “{}”). Did you mean {}? For all settings, run tavrix --help."};
inline constexpr Sentence<Text, Text, Text> settingBadValue{
    "Настройка «{}» не принимает значение «{}»; можно: {}.",
    "The setting “{}” does not accept the value “{}”; allowed: {}."};
inline constexpr Sentence<Text, Text, Text, Text> settingBadValueLike{
    "Настройка «{0}» не принимает значение «{1}». Может быть, {2}? Можно: {3}.",
    "The setting “{0}” does not accept the value “{1}”. Did you mean {2}? Allowed: {3}."};
inline constexpr Sentence<Text, Text, Text> variableBadValue{
    "Переменная окружения {} не принимает значение «{}»; можно: {}.",
    "The environment variable {} does not accept the value “{}”; allowed: {}."};
inline constexpr Sentence<> allowedBoolean{"true или false", "true or false"};
inline constexpr Sentence<> allowedAtLeastZero{"число не меньше 0, например 2.5",
                                               "a number of at least 0, such as 2.5"};
inline constexpr Sentence<> allowedFraction{"число от 0 до 1, например 0.85",
                                            "a number from 0 to 1, such as 0.85"};
inline constexpr Sentence<> allowedCount{"целое число от 0 до 10000",
                                         "a whole number from 0 to 10000"};
inline constexpr Sentence<> allowedDay{"день вида 2026-05-20", "a day such as 2026-05-20"};
inline constexpr Sentence<> allowedTimeZone{"часовой пояс вида Europe/Moscow или UTC",
                                            "a time zone such as Europe/Moscow or UTC"};
inline constexpr Sentence<> allowedPoint{"широта и долгота в градусах вида 55.75,37.62",
                                         "latitude and longitude in degrees such as 55.75,37.62"};
inline constexpr Sentence<> allowedText{"любой текст", "any text"};
inline constexpr Sentence<> allowedTemplate{
    "шаблон вида {{year}}-{{month}} {{city}}, название шаблона или JSON",
    "a template such as {{year}}-{{month}} {{city}}, the title of a template, or JSON"};
inline constexpr Sentence<> allowedTextMap{
    R"(объект JSON с именами папок вида {{"event-2026-05-20":"Дача"}})",
    R"(a JSON object with folder names such as {{"event-2026-05-20":"Picnic"}})"};
inline constexpr Sentence<> allowedPlaces{
    "названия стран и городов через запятую или объект JSON вида "
    R"({{"countries":["Италия"],"cities":[],"includeUnplaced":true}})",
    "names of countries and cities, separated by commas, or a JSON object such as "
    R"({{"countries":["Italy"],"cities":[],"includeUnplaced":true}})"};
inline constexpr Sentence<> allowedMerges{
    "объект JSON со списками групп для режимов byDate, events, trips, flat, например "
    R"({{"byDate":[["2026-05-20","2026-05-21"]]}})",
    "a JSON object with lists of groups for the modes byDate, events, trips, flat, such as "
    R"({{"byDate":[["2026-05-20","2026-05-21"]]}})"};

// Name templates.
inline constexpr Sentence<Text, Text> templateRejected{
    "{}: {}; пример: tavrix template --help.",
    "{}: {}; for an example, run tavrix template --help."};
inline constexpr Sentence<std::uint64_t, std::uint64_t> jsonFault{
    "это не JSON (строка {}, столбец {})", "it is not JSON (line {}, column {})"};
inline constexpr Sentence<> templateTooLarge{"он слишком велик", "it is too large"};
inline constexpr Sentence<Text> templateMissingKey{"нет поля «{}»", "the field “{}” is missing"};
inline constexpr Sentence<Text> templateWrongType{"у поля «{}» значение не того типа",
                                                  "the field “{}” has a value of the wrong type"};
inline constexpr Sentence<> templateNotObject{"это не объект JSON", "it is not a JSON object"};
inline constexpr Sentence<std::uint64_t> templateTokenNotObject{"элемент {} — не объект JSON",
                                                                "token {} is not a JSON object"};
inline constexpr Sentence<> templateTextTooLong{"слишком длинный текст", "the text is too long"};
inline constexpr Sentence<> templateKeyCount{"должно быть ровно одно поле",
                                             "there must be exactly one field"};
inline constexpr Sentence<Text, Text> templateUnknownToken{"поля «{}» нет, можно: {}",
                                                           "there is no field “{}”, allowed: {}"};
inline constexpr Sentence<Text, Text, Text> templateUnknownStyle{
    "значения «{1}» у «{0}» нет, можно: {2}", "“{0}” has no value “{1}”, allowed: {2}"};
inline constexpr Sentence<Text, Text> templateUnknownLanguage{
    "языка «{}» нет, можно: {}", "there is no language “{}”, allowed: {}"};
inline constexpr Sentence<std::uint64_t, Text> templateInToken{"в элементе {} {}",
                                                               "in token {} {}"};
inline constexpr Sentence<> theTemplate{"Ошибка в шаблоне имени", "The name template is invalid"};
inline constexpr Sentence<> theContext{"Ошибка в данных для имени",
                                       "The context of the name is invalid"};
inline constexpr Sentence<Text> contextField{"не удалось разобрать поле «{}»",
                                             "the field “{}” cannot be read"};

// The source.

// The destination.
inline constexpr Sentence<Text> copiesAgainRemedy{"Чтобы имена остались прежними: {}",
                                                  "To keep the names as they were: {}"};
inline constexpr Sentence<Text, Text> continuesFolder{
    "Продолжает папку: «{}» (по шаблону — «{}»).",
    "Continues a folder: “{}” (the template gives “{}”)."};
inline constexpr Sentence<Text> moreContinueFolders{"И ещё продолжают свои папки: {}.",
                                                    "Others that continue their folders: {}."};
inline constexpr Sentence<Text, Text> markerNotSaved{
    "Перенесённые файлы на месте, но запись о переносе не сохранилась: «{}», {}.",
    "The transferred files are in place, but the record of the transfer was not saved: “{}”, {}."};
inline constexpr Sentence<Text> outputRefused{
    "Не удалось вывести результат: {}; освободите место и повторите.",
    "Cannot write the result: {}; free some space and try again."};
inline constexpr Sentence<> outputClosed{
    "Не удалось вывести результат: стандартный вывод закрыт; запустите команду без >&-.",
    "Cannot write the result: standard output is closed; run the command without >&-."};
inline constexpr Sentence<Text> outputFailed{
    "Не удалось вывести результат: {}; проверьте, куда он направлен, и повторите.",
    "Cannot write the result: {}; check where it is directed and try again."};
inline constexpr Sentence<> internalFault{
    "Внутренняя ошибка программы; повторите с --verbose и сообщите, что напечатано.",
    "Internal error of the program; run it again with --verbose and report what it prints."};

// Lists.
inline constexpr Sentence<> titleFile{"Файл", "File"};
inline constexpr Sentence<> titleKind{"Вид", "Kind"};
inline constexpr Sentence<> titleSize{"Размер", "Size"};
inline constexpr Sentence<> titleDate{"Снято", "Taken"};
inline constexpr Sentence<> titlePlace{"Место", "Place"};
inline constexpr Sentence<> titleNotes{"Пометки", "Notes"};
inline constexpr Sentence<> titleShot{"Снимок", "Shot"};
inline constexpr Sentence<> titleShots{"Снимков", "Shots"};
inline constexpr Sentence<> titleFiles{"Файлов", "Files"};
inline constexpr Sentence<> titleWith{"Вместе с ним", "Together with"};
inline constexpr Sentence<> titleFolder{"Папка", "Folder"};
inline constexpr Sentence<> titlePhotos{"Фото", "Photos"};
inline constexpr Sentence<> titleVideos{"Видео", "Videos"};
inline constexpr Sentence<> titleOthers{"Прочих", "Others"};
inline constexpr Sentence<> titleNew{"Новых", "New"};
inline constexpr Sentence<> titleKnown{"Уже там", "Already there"};
inline constexpr Sentence<> titleDiffering{"Другого размера", "Of another size"};
inline constexpr Sentence<> kindPhoto{"фото", "photo"};
inline constexpr Sentence<> kindVideo{"видео", "video"};
inline constexpr Sentence<> kindSidecar{"правки", "edits"};
inline constexpr Sentence<> kindOther{"прочее", "other"};
inline constexpr Sentence<> noteOptimized{"уменьшенная копия", "reduced copy"};
inline constexpr Sentence<> noteEdited{"правленая версия", "edited version"};
inline constexpr Sentence<Text, Text> totalCatalog{"{}, {}", "{}, {}"};
inline constexpr Sentence<Text, Text> totalBundles{"{}: {}", "{}: {}"};
inline constexpr Sentence<Text, Text, Text> totalGroups{"{}: {}, {}", "{}: {}, {}"};
inline constexpr Sentence<Text, Text> totalPlaces{"{}: {}", "{}: {}"};
inline constexpr Sentence<> emptyCatalog{"В каталоге телефона нет ни одного файла.",
                                         "The phone's catalogue is empty."};
inline constexpr Sentence<> nothingInCatalogue{
    "Переносить нечего: в каталоге телефона нет ни одного файла.",
    "There is nothing to do: the phone's catalogue is empty."};
inline constexpr Sentence<> emptyGroups{"Настройки исключили все снимки.",
                                        "The settings exclude every shot."};
inline constexpr Sentence<> emptyPlaces{"Ни у одного снимка нет места съёмки.",
                                        "No shot has a place."};
inline constexpr Sentence<Text> optimizedNote{
    "Уменьшенные копии вместо оригиналов, которые лежат в облаке: {}.",
    "Reduced copies instead of originals that are in the cloud: {}."};
inline constexpr Sentence<Text, Text> snapshotWritten{"Записано: {} в «{}».", "Wrote {} to “{}”."};
inline constexpr Sentence<> flatFolder{"(прямо в папке назначения)",
                                       "(directly in the destination)"};

// The plan and the run.
inline constexpr Sentence<Text> nothingToDo{
    "Переносить нечего: всё нужное уже лежит в «{}».",
    "There is nothing to do: everything needed is already in “{}”."};
inline constexpr Sentence<Text> nothingNew{
    "Переносить нечего, но не все файлы в «{}» такие, как на телефоне.",
    "There is nothing to transfer, but not all files in “{}” are as on the phone."};
inline constexpr Sentence<> nothingChosen{
    "Переносить нечего: настройки исключили все файлы.",
    "There is nothing to do: the settings exclude every file."};
inline constexpr Sentence<Text, Text, Text> planHeadline{"Перенести: {}, {} в «{}».",
                                                         "To transfer: {}, {} into “{}”."};
inline constexpr Sentence<Text> runCompleted{"Перенос завершён, записано {}.",
                                             "Finished; {} written."};
inline constexpr Sentence<Text> runCompletedWithFailures{
    "Перенос завершён, но не удалось перенести {}; повторите — перенесётся только недостающее.",
    "Finished; {} could not be transferred. Run it again to transfer only what is missing."};
inline constexpr Sentence<Text> runPartlyCompleted{
    "Перенос завершён, записано {}, но источник прочитан не полностью.",
    "Finished; {} written, but the source was read only in part."};
inline constexpr Sentence<> runCancelled{
    "Перенос отменён; скопированное осталось на месте, повтор перенесёт остальное.",
    "The transfer was cancelled; copied files stay in place, and running it again transfers the "
    "rest."};
inline constexpr Sentence<Text> packingCompletedWithFailures{
    "Перенос завершён, но не удалось перенести {}; повтор упакует всё заново, в новые архивы.",
    "Finished; {} could not be transferred. Running it again packs everything again, into new "
    "archives."};
inline constexpr Sentence<> packingCancelled{
    "Перенос отменён; готовые архивы остались, а повтор упакует всё заново, в новые архивы.",
    "The transfer was cancelled; finished archives stay in place, and running it again packs "
    "everything again, into new archives."};
inline constexpr Sentence<Text, Text> packingInterrupted{
    "Перенос остановлен: {} («{}»); устраните причину и повторите — всё упакуется заново.",
    "The transfer was stopped: {} (“{}”); fix the problem and run it again to pack everything "
    "again."};
inline constexpr Sentence<Text, Text> runInterrupted{
    "Перенос остановлен: {} («{}»); устраните причину и повторите — перенесётся остальное.",
    "The transfer was stopped: {} (“{}”); fix the problem and run it again to transfer the rest."};
inline constexpr Sentence<> spaceIsFree{"Место появилось — продолжаю.",
                                        "There is free space again — carrying on."};
inline constexpr Sentence<> destinationIsBack{"Папка назначения снова на месте — продолжаю.",
                                              "The destination is back — carrying on."};
inline constexpr Sentence<> folderIsFree{"Другой перенос закончился — продолжаю.",
                                         "The other transfer has ended — carrying on."};
inline constexpr Sentence<> archivesTitle{"Файлы лягут в архивы:", "The files go into archives:"};
inline constexpr Sentence<Text, Text, Text> archiveRow{"{} — {}, {}", "{} — {}, {}"};
inline constexpr Sentence<> toJPEG{"в JPEG", "to JPEG"};
inline constexpr Sentence<> toH264{"в H.264", "to H.264"};

// Progress.
inline constexpr Sentence<Text, Text> progressCounts{"{} / {}", "{} / {}"};
inline constexpr Sentence<Text, Text> progressPacking{"4 · Архивация · {} / {}",
                                                      "4 · Packing · {} / {}"};
/// The name of the file and the finished part of it in percent.
inline constexpr Sentence<Text, int> progressConverting{"преобразуется {} ({}\u00A0%)",
                                                        "converting {} ({}%)"};
inline constexpr Sentence<Text> progressSpeed{"{}/с", "{}/s"};
inline constexpr Sentence<Text> progressLeft{"осталось {}", "{} left"};

}  // namespace tavrix::cli::sentences
