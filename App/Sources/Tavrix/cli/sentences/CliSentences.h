#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"

/// What the command line tells people, in both languages side by side.
namespace tavrix::cli::sentences {

using Text = std::string_view;

inline constexpr CountedNoun files{"файл", "файла", "файлов", "file", "files"};
inline constexpr CountedNoun folders{"папка", "папки", "папок", "folder", "folders"};
inline constexpr CountedNoun shots{"снимок", "снимка", "снимков", "shot", "shots"};
inline constexpr CountedNoun places{"место", "места", "мест", "place", "places"};
inline constexpr CountedNoun entries{"запись", "записи", "записей", "entry", "entries"};

// The call.
inline constexpr Sentence<> commandMissing{
    "Не названа команда; список команд: tavrix --help.",
    "No command is named; for the list of commands: tavrix --help."};
inline constexpr Sentence<Text> unknownCommand{
    "Непонятно, что такое «{}»; список команд и параметров: tavrix --help.",
    "It is not clear what “{}” is; for the list of commands and options: tavrix --help."};
inline constexpr Sentence<Text> unknownOption{
    "Параметра «{}» нет; список параметров: tavrix --help.",
    "There is no option “{}”; for the list of options: tavrix --help."};
inline constexpr Sentence<Text> optionValueMissing{
    "После «{}» не хватает значения; примеры: tavrix --help.",
    "A value is missing after “{}”; for examples: tavrix --help."};
inline constexpr Sentence<> argumentsUnclear{
    "Не удалось разобрать параметры; примеры: tavrix --help.",
    "The arguments are not clear; for examples: tavrix --help."};
inline constexpr Sentence<Text, Text> operandMissing{
    "Не хватает {0}; примеры: tavrix {1} --help.",
    "{0} is missing; for examples: tavrix {1} --help."};
inline constexpr Sentence<Text, Text> operandTooMany{
    "«{0}» здесь лишнее; примеры: tavrix {1} --help.",
    "“{0}” is one too many; for examples: tavrix {1} --help."};
inline constexpr Sentence<Text, Text> folderEmpty{
    "{0} — пустая строка; укажите папку, примеры: tavrix {1} --help.",
    "{0} is empty; name a folder, for examples: tavrix {1} --help."};
inline constexpr Sentence<Text> serialEmpty{
    "После «phone:» нужен серийный номер, его показывает «tavrix phones»; просто phone — первый на "
    "кабеле. Примеры: tavrix {} --help.",
    "“phone:” takes a serial number, as “tavrix phones” tells it; phone alone is the first on the "
    "cable. For examples: tavrix {} --help."};
inline constexpr Sentence<Text> unknownLanguage{
    "Язык «{}» неизвестен; можно: --lang ru, --lang en или --lang system.",
    "The language “{}” is not known; choose --lang ru, --lang en or --lang system."};

// Settings.
inline constexpr Sentence<Text> settingNotAssignment{
    "Настройка «{}» записана не как КЛЮЧ=ЗНАЧЕНИЕ; пример: --set uiMode=trips.",
    "The setting “{}” is not of the form KEY=VALUE; for example: --set uiMode=trips."};
inline constexpr Sentence<Text, Text, Text> settingUnknownKey{
    "Настройки «{}» (значение «{}») нет; есть такие: {}.",
    "There is no setting “{}” (value “{}”); there are: {}."};
inline constexpr Sentence<Text, Text, Text> settingBadValue{
    "Настройка «{}» не принимает значение «{}»; можно: {}.",
    "The setting “{}” does not take the value “{}”; allowed: {}."};
inline constexpr Sentence<Text, Text, Text> variableBadValue{
    "Переменная окружения {} не принимает значение «{}»; можно: {}.",
    "The environment variable {} does not take the value “{}”; allowed: {}."};
inline constexpr Sentence<> allowedBoolean{"true или false", "true or false"};
inline constexpr Sentence<> allowedAtLeastZero{"число от 0, например 2.5",
                                               "a number from 0 on, such as 2.5"};
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
inline constexpr Sentence<Text> allowedTemplate{"шаблон имени в виде JSON ({})",
                                                "a name template as JSON ({})"};
inline constexpr Sentence<> allowedTextMap{
    R"(объект JSON с именами папок вида {{"event-2026-05-20":"Дача"}})",
    R"(a JSON object with folder names such as {{"event-2026-05-20":"Picnic"}})"};
inline constexpr Sentence<> allowedPlaces{
    R"(названия стран и городов через запятую или объект JSON вида {{"countries":["Италия"],"cities":[],"includeUnplaced":true}})",
    R"(names of countries and cities with commas between, or a JSON object such as {{"countries":["Italy"],"cities":[],"includeUnplaced":true}})"};
inline constexpr Sentence<> allowedMerges{
    R"(объект JSON со списками групп вида {{"byDate":[["2026-05-20","2026-05-21"]]}} по режимам byDate, events, trips, flat)",
    R"(a JSON object with lists of groups such as {{"byDate":[["2026-05-20","2026-05-21"]]}} by the modes byDate, events, trips, flat)"};

// Name templates.
inline constexpr Sentence<Text, Text> templateRejected{
    "{}: {}; пример: tavrix template --help.", "{}: {}; for an example: tavrix template --help."};
inline constexpr Sentence<std::uint64_t, std::uint64_t> jsonFault{
    "это не JSON, строка {}, столбец {}", "it is not JSON, line {}, column {}"};
inline constexpr Sentence<> templateTooLarge{"он слишком велик", "it is too large"};
inline constexpr Sentence<Text> templateMissingKey{"нет поля «{}»", "the field “{}” is missing"};
inline constexpr Sentence<Text> templateWrongType{"у поля «{}» значение не того вида",
                                                  "the field “{}” has a value of a wrong type"};
inline constexpr Sentence<> templateNotObject{"это не объект JSON", "it is no JSON object"};
inline constexpr Sentence<std::uint64_t> templateTokenNotObject{"элемент {} — не объект JSON",
                                                                "token {} is no JSON object"};
inline constexpr Sentence<> templateTextTooLong{"слишком длинный текст", "the text is too long"};
inline constexpr Sentence<> templateKeyCount{"должно быть ровно одно поле",
                                             "there must be exactly one field"};
inline constexpr Sentence<Text, Text> templateUnknownToken{"поля «{}» не бывает, можно: {}",
                                                           "there is no field “{}”, allowed: {}"};
inline constexpr Sentence<Text, Text, Text> templateUnknownStyle{
    "значения «{1}» у «{0}» нет, можно: {2}", "“{0}” has no value “{1}”, allowed: {2}"};
inline constexpr Sentence<Text, Text> templateUnknownLanguage{
    "языка «{}» нет, можно: {}", "there is no language “{}”, allowed: {}"};
inline constexpr Sentence<std::uint64_t, Text> templateInToken{"в элементе {} {}",
                                                               "in token {} {}"};
inline constexpr Sentence<> theTemplate{"Шаблон имени не годится",
                                        "The name template does not work"};
inline constexpr Sentence<> theContext{"Данные для имени не годятся",
                                       "The context of the name does not work"};
inline constexpr Sentence<Text> contextField{"поле «{}» не читается",
                                             "the field “{}” is not readable"};

// The source.
inline constexpr Sentence<Text> snapshotMissing{
    "Нет файла «{}»; укажите папку, в которой лежат snapshot.json и media, папка DCIM или папки "
    "вида 100APPLE.",
    "There is no file “{}”; name a folder that holds snapshot.json and media, DCIM, or folders "
    "such "
    "as 100APPLE."};
inline constexpr Sentence<Text, Text> snapshotUnreadable{
    "Файл «{}» не читается ({}); проверьте права на него и диск.",
    "The file “{}” cannot be read ({}); check its permissions and the disk."};
inline constexpr Sentence<Text, std::uint64_t, std::uint64_t, Text> snapshotWrong{
    "Каталог «{}» не годится, строка {}, столбец {}: {}; запишите его заново.",
    "The catalogue “{}” does not work, line {}, column {}: {}; record it again."};
inline constexpr Sentence<> snapshotNotJson{"здесь не JSON в кодировке UTF-8",
                                            "this is not JSON in UTF-8"};
inline constexpr Sentence<> snapshotTooLarge{"слишком длинное значение, вложенность или список",
                                             "a value, a nesting or the list is too long"};
inline constexpr Sentence<> snapshotNotList{"файл должен быть списком записей",
                                            "the file must be a list of entries"};
inline constexpr Sentence<std::uint64_t, Text> snapshotMissingField{
    "в записи {} нет поля «{}»", "entry {} lacks the field “{}”"};
inline constexpr Sentence<std::uint64_t, Text> snapshotWrongType{
    "в записи {} у поля «{}» значение не того вида",
    "entry {} has a value of a wrong type in the field “{}”"};
inline constexpr Sentence<std::uint64_t, Text> snapshotOutOfRange{
    "в записи {} число в поле «{}» не подходит",
    "entry {} has a number out of range in the field “{}”"};
inline constexpr Sentence<Text> mediaMissing{
    "Нет папки «{}»; без неё переносить нечего: положите файлы телефона туда.",
    "There is no folder “{}” to transfer from; put the phone's files there."};

// The destination.
inline constexpr Sentence<Text> destinationParentMissing{
    "Папку «{}» не создать: нет папки, в которой ей лежать; создайте сначала ту.",
    "The folder “{}” cannot be created, because the folder above it does not exist; create that "
    "first."};
inline constexpr Sentence<Text> destinationNotFolder{
    "«{}» — не папка; выберите для фотографий папку.",
    "“{}” is no folder; choose a folder for the photos."};
inline constexpr Sentence<Text> destinationInsideMedia{
    "Папка «{}» лежит в папке с файлами телефона; выберите для фотографий другую.",
    "The folder “{}” lies in the folder of the phone's files; choose another one for the photos."};
inline constexpr Sentence<Text> destinationHoldsSource{
    "В папке «{}» лежит сам источник; выберите для фотографий другую.",
    "The folder “{}” holds the source itself; choose another one for the photos."};
inline constexpr Sentence<Text> destinationBusy{
    "В папку «{}» уже идёт другой перенос; дождитесь его конца и повторите.",
    "Another transfer is at work in the folder “{}”; wait for its end and try again."};
inline constexpr Sentence<Text, Text, std::int64_t> destinationNewer{
    "В папке «{}» запись «{}» сделана более новой версией программы (формат {}); обновите Tavrix.",
    "In the folder “{}” the record “{}” is by a newer version of the program (format {}); update "
    "Tavrix."};
inline constexpr Sentence<Text, Text> fileRefused{
    "Не получилось с «{}»: {}; проверьте путь, права и диск.",
    "It did not work with “{}”: {}; check the path, the permissions and the disk."};
inline constexpr Sentence<Text, Text> spaceHint{
    "Нужно {}, а свободно {}: когда место кончится, перенос подождёт.",
    "{} are needed and {} are free: when the space runs out, the transfer will wait."};
inline constexpr Sentence<Text, Text> markerNotSaved{
    "Что перенесено, то на месте, но запись о переносе не сохранилась: «{}», {}.",
    "What was transferred is in place, but the record of it was not saved: “{}”, {}."};
inline constexpr Sentence<Text> outputRefused{
    "Результат не записать: {}; освободите место и повторите.",
    "The result cannot be written: {}; free some space and try again."};
inline constexpr Sentence<> outOfMemory{"Не хватает памяти; закройте другие программы и повторите.",
                                        "Memory is short; close other programs and try again."};
inline constexpr Sentence<> internalFault{
    "Внутренняя ошибка программы; повторите с --verbose и сообщите, что напечатано.",
    "An internal error of the program; run it again with --verbose and report what it prints."};

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
inline constexpr Sentence<> titleFrom{"С", "From"};
inline constexpr Sentence<> titleTo{"По", "To"};
inline constexpr Sentence<> titleNew{"Новых", "New"};
inline constexpr Sentence<> titleKnown{"Уже там", "There"};
inline constexpr Sentence<> titleTitle{"Название", "Title"};
inline constexpr Sentence<> titleTemplate{"Шаблон", "Template"};
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
                                         "The phone's catalogue holds no file."};
inline constexpr Sentence<> nothingInCatalogue{
    "Переносить нечего: в каталоге телефона нет ни одного файла.",
    "There is nothing to do: the phone's catalogue holds no file."};
inline constexpr Sentence<> emptyGroups{"Настройки не оставили ни одного снимка.",
                                        "The settings leave no shot."};
inline constexpr Sentence<> emptyPlaces{"Ни у одного снимка не записано место.",
                                        "No shot tells its place."};
inline constexpr Sentence<Text> optimizedNote{
    "Уменьшенные копии вместо оригиналов, которые лежат в облаке: {}.",
    "Reduced copies in place of originals that are in the cloud: {}."};
inline constexpr Sentence<Text, Text> snapshotWritten{"Записано: {} в «{}».",
                                                      "Written: {} in “{}”."};
inline constexpr Sentence<> flatFolder{"(прямо в папке назначения)", "(right in the destination)"};

// The plan and the run.
inline constexpr Sentence<Text> nothingToDo{
    "Переносить нечего: всё нужное уже лежит в «{}».",
    "There is nothing to do: all that is wanted is in “{}” already."};
inline constexpr Sentence<> nothingChosen{
    "Переносить нечего: настройки не оставили ни одного файла.",
    "There is nothing to do: the settings leave no file."};
inline constexpr Sentence<Text, Text, Text> planHeadline{"Перенести: {}, {} в «{}».",
                                                         "To transfer: {}, {} into “{}”."};
inline constexpr Sentence<Text> runCompleted{"Перенос завершён, записано {}.",
                                             "The transfer is complete, {} written."};
inline constexpr Sentence<Text> runCompletedWithFailures{
    "Перенос завершён, но не удалось перенести {}; повторите — перенесётся только недостающее.",
    "The transfer has ended, but failed for {}; run it again to transfer only what is missing."};
inline constexpr Sentence<Text> runPartlyCompleted{
    "Перенос закончен, записано {}, но источник прочитан не весь.",
    "The transfer has ended, {} written, but the source was read only in part."};
inline constexpr Sentence<> runCancelled{
    "Перенос отменён; что успело скопироваться, останется, а повтор перенесёт остальное.",
    "The transfer was cancelled; what was copied stays, and running it again transfers the rest."};
inline constexpr Sentence<Text> packingCompletedWithFailures{
    "Перенос завершён, но не удалось перенести {}; повтор упакует всё заново, в новые архивы.",
    "The transfer has ended, but failed for {}; run again, it packs everything anew, into new "
    "archives."};
inline constexpr Sentence<> packingCancelled{
    "Перенос отменён; готовые архивы остались, а повтор упакует всё заново, в новые архивы.",
    "The transfer was cancelled; finished archives stay, and running it again packs everything "
    "anew, into new archives."};
inline constexpr Sentence<Text, Text> packingInterrupted{
    "Перенос остановлен: {} («{}»); устраните причину и повторите — всё упакуется заново.",
    "The transfer was stopped: {} (“{}”); mend that and run it again to pack everything anew."};
inline constexpr Sentence<Text, Text> runInterrupted{
    "Перенос остановлен: {} («{}»); устраните причину и повторите — перенесётся остальное.",
    "The transfer was stopped: {} (“{}”); mend that and run it again to transfer the rest."};
inline constexpr Sentence<> spaceIsFree{"Место появилось — продолжаю.",
                                        "There is room again — carrying on."};
inline constexpr Sentence<> rowCatalogue{"В каталоге", "In the catalogue"};
inline constexpr Sentence<> rowWithoutPicture{"не вошли: их снимка нет на телефоне",
                                              "left out: their picture is not on the phone"};
inline constexpr Sentence<> rowUnknownKind{"не вошли: файлы незнакомого вида",
                                           "left out: files of an unknown kind"};
inline constexpr Sentence<> rowBySettings{"не вошли по настройкам", "left out by the settings"};
inline constexpr Sentence<> rowKnown{"уже лежат в папке", "in the folder already"};
inline constexpr Sentence<> rowPlanned{"к переносу", "to transfer"};
inline constexpr Sentence<> rowCopied{"скопированы", "copied"};
inline constexpr Sentence<> rowAlreadyThere{"оказались на месте", "found in place"};
inline constexpr Sentence<> rowKeptOriginal{"остались без преобразования", "kept unconverted"};
inline constexpr Sentence<> rowFailed{"не удались", "failed"};
inline constexpr Sentence<> rowNotReached{"не дошла очередь", "not reached"};
inline constexpr Sentence<> failuresTitle{"Не удалось перенести:", "Not transferred:"};
inline constexpr Sentence<> keptOriginalsTitle{"Остались под своим именем без преобразования:",
                                               "Kept under their own name, unconverted:"};

// Progress.
// Russian reads "3 / 21 файлов": of twenty-one files, whatever the number.
inline constexpr CountedNoun filesOfTotal{"файлов", "файлов", "файлов", "file", "files"};
inline constexpr Sentence<Text, Text, Text, Text> progressCounts{"{} / {} · {} / {}",
                                                                 "{} / {} · {} / {}"};
inline constexpr CountedNoun groupsOfTotal{"групп", "групп", "групп", "group", "groups"};
inline constexpr Sentence<Text, Text> progressPacking{"4 · Архивация · {} / {}",
                                                      "4 · Packing · {} / {}"};
/// A file's name, and of it how much is done in hundredths.
inline constexpr Sentence<Text, int> progressConverting{"преобразуется {} ({}\u00A0%)",
                                                        "converting {} ({}%)"};
inline constexpr Sentence<Text> progressSpeed{"{}/с", "{}/s"};
inline constexpr Sentence<Text> progressLeft{"осталось {}", "{} left"};

}  // namespace tavrix::cli::sentences
