#pragma once

#include <string_view>

#include "foundation/Sentence.h"
#include "text/HomeSentences.h"
#include "text/RunSentences.h"

/// The sentences of the inspector: the settings in four sections.
namespace tavrix::window::sentences {

inline constexpr Sentence<> inspectorName{"Настройки переноса", "Transfer options"};
inline constexpr Sentence<> inspectorWidth{"Ширина настроек", "Width of the options"};

// The content of the transfer.
inline constexpr Sentence<> whatSection{"Что переносить", "What to transfer"};
inline constexpr Sentence<> photosSwitch{"Фото", "Photos"};
inline constexpr Sentence<> photosHelp{"Снимки без движения.", "Pictures without motion."};
inline constexpr Sentence<> liveSwitch{"Live Photo", "Live Photos"};
inline constexpr Sentence<> liveHelp{"Снимок и короткое видео к нему.",
                                     "A picture with its short video."};
inline constexpr Sentence<> liveOnlyPhotoSwitch{"Только фото, без .MOV",
                                                "Photo only, without the .MOV"};
inline constexpr Sentence<> liveOnlyPhotoHelp{"Движение остаётся на телефоне.",
                                              "The motion stays on the phone."};
inline constexpr Sentence<> videosSwitch{"Видео", "Videos"};
inline constexpr Sentence<> videosHelp{"Отдельные видео, не движение Live Photo.",
                                       "Separate videos, not the motion of Live Photos."};
inline constexpr Sentence<> sidecarsSwitch{"Правки .AAE рядом", ".AAE edits alongside"};
inline constexpr Sentence<> sidecarsHelp{"Файл с правками — рядом со снимком.",
                                         "The file of edits stays with its picture."};
inline constexpr Sentence<> editedTitle{"Правленые версии фото (IMG_E): что переносить",
                                        "Edited photo versions (IMG_E): what to transfer"};
inline constexpr Sentence<> editedBoth{"Обе версии", "Both versions"};
inline constexpr Sentence<> editedOnly{"Только правленые", "Edited only"};
inline constexpr Sentence<> originalsOnly{"Только оригиналы", "Originals only"};

inline constexpr Sentence<std::string_view> optimizedTitle{"Оптимизированные копии: {}",
                                                           "Optimized copies: {}"};
inline constexpr Sentence<> optimizedSwitch{"Не переносить их", "Do not transfer them"};
inline constexpr Sentence<> optimizedHelp{"На телефоне только уменьшенный снимок.",
                                          "The phone has only a reduced picture."};
inline constexpr Sentence<> optimizedInfo{"Об оптимизированных копиях", "About optimized copies"};
inline constexpr Sentence<> optimizedInfoWhat{
    "Когда на iPhone мало места, он может оставить у себя уменьшенную копию снимка, а оригинал "
    "держать в iCloud. Переносим только то, что лежит на телефоне: ни iCloud, ни фотоальбомы этого "
    "компьютера не трогаем.",
    "When an iPhone is short of space, it may keep a reduced copy of a picture and leave the "
    "original in iCloud. Only what is on the phone is transferred: neither iCloud nor the albums "
    "on this computer are touched."};
inline constexpr Sentence<> optimizedInfoRemedy{
    "Чтобы перенести оригиналы, включите на iPhone «Настройки → Фото → Загрузка и оригиналы», "
    "дождитесь загрузки и подключите его снова.",
    "To transfer the originals, turn on Settings → Photos → Download and Keep Originals on the "
    "iPhone, wait for the download and connect it again."};

inline constexpr Sentence<> onlyNewSwitch{"Только новые", "Only new"};
inline constexpr Sentence<> onlyNewHelp{"Переносится то, чего ещё нет на месте.",
                                        "Only what is not yet in place."};
inline constexpr Sentence<> onlyNewInfo{"Как определяются новые файлы",
                                        "How new files are recognised"};
inline constexpr Sentence<> onlyNewExplanation{
    "Переносятся только файлы, которых ещё нет в папке назначения — сверка по конечному пути: "
    "папка группы, подпапка Photo/Video при разделении, имя с расширением выбранного формата. При "
    "смене имени папки, раскладки или формата файлы снова считаются новыми. В режиме zip "
    "переносится всё.",
    "Only files that are not yet in the destination are transferred, compared by their final path: "
    "the group's folder, the Photo/Video subfolder when separating, the name with the extension of "
    "the chosen format. Change the folder name, the layout or the format, and files count as new "
    "again. In zip mode everything is transferred."};
inline constexpr Sentence<> onlyNewDeleted{
    "Файл, который вы удалили из папки назначения, снова новый.",
    "A file that you have deleted from the destination is new again."};
inline constexpr Sentence<> zipTakesAll{"В режиме zip переносится всё.",
                                        "In zip mode everything is transferred."};

inline constexpr Sentence<> periodTitle{"Период", "Period"};
inline constexpr Sentence<> periodFromName{"Первый день", "First day"};
inline constexpr Sentence<> periodToName{"Последний день", "Last day"};
inline constexpr Sentence<> periodFromHint{"с начала", "from the start"};
inline constexpr Sentence<> periodToHint{"до конца", "to the end"};
inline constexpr Sentence<> periodHelp{"Оба дня входят. Снимки без даты — только без периода.",
                                       "Both days are included. Undated shots pass only without "
                                       "a period."};
inline constexpr Sentence<> periodEmpty{"Первый день позже последнего: переносить нечего.",
                                        "The first day is after the last: nothing is left."};
inline constexpr Sentence<> dayUnknown{"Такого дня нет. Например: 18.05.2026",
                                       "No such day. For example: 2026-05-18"};
inline constexpr Sentence<> dayChoose{"Выбрать в календаре", "Choose in a calendar"};
inline constexpr Sentence<> dayClear{"Убрать", "Clear"};
inline constexpr Sentence<> earlierMonth{"Предыдущий месяц", "Previous month"};
inline constexpr Sentence<> laterMonth{"Следующий месяц", "Next month"};
/// The locale of the calendar's names.
inline constexpr Sentence<> calendarLocale{"ru_RU", "en_GB"};
inline constexpr Sentence<> zoneTitle{"Часовой пояс", "Time zone"};
inline constexpr Sentence<> zoneHelp{"По нему съёмка делится на дни.",
                                     "Days begin and end by its clock."};
inline constexpr Sentence<> zoneUnknown{"Нет такого часового пояса.", "No such time zone."};

// How shots are grouped.
inline constexpr Sentence<> howSection{"Как делить", "How to divide"};
inline constexpr Sentence<> eventGap{"Пауза между событиями", "Pause between events"};
inline constexpr Sentence<> eventGapHelp{"Съёмка после паузы дольше этой — новое событие.",
                                         "After a longer pause a new event begins."};
inline constexpr Sentence<> splitByDistance{"Разрыв по расстоянию", "Split by distance"};
inline constexpr Sentence<> splitByDistanceHelp{"Дальний переезд тоже начинает событие.",
                                                "A far jump begins an event, too."};
inline constexpr Sentence<> eventDistance{"Переезд дальше", "Jumps farther than"};
inline constexpr Sentence<> eventDistanceHelp{"Между двумя соседними снимками.",
                                              "Between two shots in a row."};
inline constexpr Sentence<> tripDistance{"От дома дальше", "Farther from home than"};
inline constexpr Sentence<> tripDistanceHelp{"Ближе этого — ещё дома.",
                                             "Anything closer is still home."};
inline constexpr Sentence<> tripCity{"Соседние города до", "Neighbouring cities up to"};
inline constexpr Sentence<> tripCityHelp{
    "Ближе этого две съёмки вдали от дома — один город и одна поездка.",
    "Two shoots away from home that are closer than this are one city and one trip."};
inline constexpr Sentence<> tripDays{"Мин. дней поездки", "Minimum days of a trip"};
inline constexpr Sentence<> tripDaysHelp{
    "Короче этого отъезд — вылазка: её снимки лежат в папке месяца.",
    "A shorter absence is an outing: its shots lie in the folder of the month."};
inline constexpr Sentence<> tripGap{"Перерыв в поездке до", "Longest gap in a trip"};
inline constexpr Sentence<> tripGapHelp{"Без съёмки дольше этого — поездка закончилась.",
                                        "No shooting for longer than this ends the trip."};
inline constexpr Sentence<> placeRadius{"Радиус места", "Radius of a place"};
inline constexpr Sentence<> placeRadiusHelp{"Снимки ближе этого — из одного места.",
                                            "Shots closer than this are from one place."};
inline constexpr Sentence<> homeTitle{"Дом", "Home"};
inline constexpr Sentence<> homeHelp{
    "Откуда считать поездки: пребывание в одном городе вдали от этого места — одна папка",
    "Where trips are counted from: a stay in one city away from this place is one folder"};
inline constexpr Sentence<> homeAutomatic{"Снова автоматически", "Automatic again"};
inline constexpr Sentence<std::string_view, std::string_view> homeDays{"дней: {} (недавних: {})",
                                                                       "days: {} (recent: {})"};
inline constexpr Sentence<> homeChosen{"указан вручную", "set by you"};
inline constexpr Sentence<> homeMonths{"Дом по последним", "Home by the last"};
inline constexpr Sentence<> homeMonthsHelp{"За это время считаются недавние дни съёмки.",
                                           "Recent days of shooting are counted in this time."};
/// After "Дом по последним".
inline constexpr CountedNoun monthsOfHome{"месяцу", "месяцам", "месяцам", "month", "months"};
inline constexpr Sentence<> homeAllMonths{"всем месяцам", "all months"};
using tavrix::sentences::homeAmbiguous;
using tavrix::sentences::homeMissing;
using tavrix::sentences::whyTrips;

// The names of folders and files.
inline constexpr Sentence<> namesSection{"Имена", "Names"};
inline constexpr Sentence<> templateTitle{"Имя папки", "Folder name"};
using tavrix::sentences::ownTemplate;
/// The folder name of a real or a made-up folder.
inline constexpr Sentence<std::string_view> nameExample{"Например: {}", "For example: {}"};
inline constexpr Sentence<> exampleCity{"Рим", "Rome"};
inline constexpr Sentence<> exampleCountry{"Италия", "Italy"};
inline constexpr Sentence<> prefixTitle{"Префикс имён файлов", "Prefix of file names"};
inline constexpr Sentence<> prefixNone{"Без префикса", "No prefix"};
inline constexpr Sentence<> prefixPhone{"Телефон", "Phone"};
inline constexpr Sentence<> prefixCustom{"Свой", "Custom"};
inline constexpr Sentence<> prefixDone{"Готово", "Done"};
inline constexpr Sentence<> prefixDraft{"Текст перед именем файла", "Text before the file name"};
inline constexpr Sentence<> prefixNoneHelp{"Файлы называются, как на телефоне.",
                                           "Files are named as on the phone."};
inline constexpr Sentence<> prefixPhoneHelp{
    "Имя телефона впереди каждого файла: снимки двух телефонов не путаются.",
    "The phone's name in front of every file: the pictures of two phones are not mixed up."};
inline constexpr Sentence<> prefixCustomHelp{"Ваш текст впереди каждого файла.",
                                             "Your text in front of every file."};
inline constexpr Sentence<> placeNames{"Названия мест в именах папок",
                                       "Place names in folder names"};
inline constexpr Sentence<> placeNamesHelp{
    "Названия берутся из таблицы программы, без сети. Выключите — имена будут без городов.",
    "Names come from the program's own table, without network. Switched off, names have no "
    "cities."};
inline constexpr Sentence<> mergeDistricts{"Объединять районы", "Merge districts"};
inline constexpr Sentence<> mergeDistrictsHelp{"Район называется по своему городу.",
                                               "A district gets the name of its city."};
inline constexpr Sentence<> mergeSameNames{"Одинаковые имена — одна папка",
                                           "One folder for equal names"};
inline constexpr Sentence<> mergeSameNamesHelp{
    "Группы с одинаковым именем папки собираются в одну вместо суффиксов «(2)», «(3)».",
    "Groups with the same folder name go into one folder instead of getting the suffixes “(2)”, "
    "“(3)”."};
inline constexpr Sentence<> continueFolders{"Продолжать начатые папки", "Continue folders"};
inline constexpr Sentence<> continueFoldersHelp{
    "Новые снимки — в папку прошлого переноса, даже если теперь она называлась бы иначе.",
    "New shots go into the folder of an earlier transfer, even if its name would be different "
    "now."};

// The format of the files.
inline constexpr Sentence<> formatSection{"Формат", "Format"};
inline constexpr Sentence<> jpegSwitch{"Фото в JPEG", "Photos as JPEG"};
inline constexpr Sentence<> jpegHelp{"Снимки других форматов станут JPEG.",
                                     "Pictures of other formats become JPEG."};
inline constexpr Sentence<> jpegQuality{"Качество JPEG", "JPEG quality"};
inline constexpr Sentence<> jpegQualityHelp{"Выше качество — больше файлы.",
                                            "Higher quality makes larger files."};
inline constexpr Sentence<> h264Switch{"Видео в H.264", "Videos as H.264"};
inline constexpr Sentence<> h264Help{"Видео других форматов станут H.264. Долго.",
                                     "Other videos become H.264. Takes long."};
inline constexpr Sentence<> subfoldersSwitch{"Подпапки Photo и Video",
                                             "Subfolders Photo and Video"};
inline constexpr Sentence<> subfoldersHelp{"В каждой папке фото лежат отдельно от видео.",
                                           "In every folder, photos are apart from videos."};
inline constexpr Sentence<> flattenSwitch{"Только если есть и то, и другое",
                                          "Only where there are both"};
inline constexpr Sentence<> flattenHelp{"В папке одного вида подпапок нет.",
                                        "A folder of one kind has no subfolders."};
inline constexpr Sentence<> zipSwitch{"Упаковать в zip", "Pack into zip"};
inline constexpr Sentence<> zipHelp{"Вместо папок — архивы, без сжатия.",
                                    "Archives in place of folders, not compressed."};
inline constexpr Sentence<> zipTitle{"Архивы", "Archives"};
inline constexpr Sentence<> zipOne{"Один на всё", "One for all"};
inline constexpr Sentence<> zipPerFolder{"По одному на папку", "One per folder"};

// The choices that last for one launch.
inline constexpr Sentence<> whatForgotten{
    "Раздел забывается при закрытии программы, кроме выбора об оптимизированных копиях.",
    "This section is forgotten when the program closes, except the choice about optimized copies."};
inline constexpr Sentence<> namesForgotten{
    "Префикс, районы и одинаковые имена забываются при закрытии программы.",
    "The prefix, districts and equal names are forgotten when the program closes."};
inline constexpr Sentence<> formatForgotten{"Этот раздел забывается при закрытии программы.",
                                            "This section is forgotten when the program closes."};

// Numbers.
inline constexpr Sentence<std::string_view> hours{"{} ч", "{} h"};
inline constexpr Sentence<std::string_view> kilometres{"{} км", "{} km"};
inline constexpr Sentence<std::string_view> percent{"{} %", "{}%"};
inline constexpr Sentence<> hoursUnit{"ч", "h"};
inline constexpr Sentence<> kilometresUnit{"км", "km"};
inline constexpr Sentence<> percentUnit{"%", "%"};
inline constexpr CountedNoun daysOfTrip{"день", "дня", "дней", "day", "days"};
/// The earlier value of a changed setting: "было 4 ч".
inline constexpr Sentence<std::string_view> wasValue{"было {}", "was {}"};
inline constexpr Sentence<std::string_view> resetValue{"Вернуть {}", "Back to {}"};
inline constexpr Sentence<> less{"Меньше", "Less"};
inline constexpr Sentence<> more{"Больше", "More"};

}  // namespace tavrix::window::sentences
