#pragma once

#include <array>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"

/// The meanings of the settings, in both languages side by side.
namespace tavrix::cli::sentences {

/// A setting in words. `initial` stands for an initial value that depends on the machine or is
/// JSON data; it is empty where the value itself is shown.
struct SettingMeaning {
  std::string_view key;
  Sentence<> meaning;
  Sentence<> initial{"", ""};
};

/// One line for each key of settingKeys() and for "uiLanguage".
inline constexpr std::array settingMeanings{
    // Which files are transferred.
    SettingMeaning{"includePhotos",
                   {"переносить фотографии (о Live Photo — includeLive)",
                    "transfer photos (for Live Photos: includeLive)"}},
    SettingMeaning{"includeLive", {"переносить Live Photo", "transfer Live Photos"}},
    SettingMeaning{"liveOnlyPhoto",
                   {"от Live Photo переносить только снимок, без ролика .MOV",
                    "of a Live Photo, transfer only the still, without its .MOV"}},
    SettingMeaning{"includeVideos", {"переносить видео", "transfer videos"}},
    SettingMeaning{"includeAAE",
                   {"переносить вместе со снимками файлы правок .AAE",
                    "transfer the .AAE files, which hold edits, with their shots"}},
    SettingMeaning{"editedPolicy",
                   {"что переносить от правленого снимка: обе версии, только правленую или только "
                    "оригинал",
                    "which versions of an edited shot to transfer: both, the edited one or the "
                    "original"}},
    SettingMeaning{"skipOptimized",
                   {"пропускать уменьшенные копии снимков, оригиналы которых лежат в облаке",
                    "skip reduced copies of shots whose originals are in the cloud"}},
    SettingMeaning{"onlyNew",
                   {"переносить только то, чего ещё нет в папке назначения",
                    "transfer only what is not yet in the destination"}},
    SettingMeaning{"continueFolders",
                   {"папка, в которую добавились снимки, сохраняет своё имя",
                    "a folder that gets more shots keeps its name"}},
    SettingMeaning{
        "periodFrom",
        {"первый день съёмки, с которого переносить", "the first day whose shots are transferred"}},
    SettingMeaning{"periodTo",
                   {"последний день съёмки, по который переносить",
                    "the last day whose shots are transferred"}},
    SettingMeaning{"places",
                   {"переносить снимки только из этих стран, городов и регионов",
                    "transfer only shots from these countries, cities and regions"}},

    // Which folders there are.
    SettingMeaning{"uiMode",
                   {"как раскладывать: по датам, событиям, поездкам или всё в одну папку",
                    "the folders: by dates, events or trips, or one folder for everything"}},
    SettingMeaning{"granularity",
                   {"папка на день, на месяц или на год (при uiMode=byDate)",
                    "one folder for a day, a month or a year (with uiMode=byDate)"}},
    SettingMeaning{"timeZoneID",
                   {"часовой пояс, по которому начинаются и кончаются дни",
                    "the time zone in which days begin and end"},
                   {"пояс системы", "the system's"}},
    SettingMeaning{"cameraDays",
                   {"дни по часам камеры: день, который был на них при съёмке",
                    "days by the camera's clock: the day that it showed when the shot was taken"}},
    SettingMeaning{"datesFromNames",
                   {"папка-источник: если в снимке нет даты, брать её из имени файла",
                    "a folder as the source: date a shot without a date by its file's name"}},
    SettingMeaning{"eventGapHours",
                   {"через сколько часов без съёмки начинается новое событие",
                    "hours without a shot after which a new event begins"}},
    SettingMeaning{"eventGapKm",
                   {"через сколько километров от прошлого снимка начинается новое событие",
                    "kilometres from the previous shot beyond which a new event begins"}},
    SettingMeaning{"splitByDistance",
                   {"делить события и по расстоянию (eventGapKm)",
                    "split events by distance as well (eventGapKm)"}},
    SettingMeaning{"placeRadiusKm",
                   {"радиус одного места в километрах", "the radius of one place in kilometres"}},
    SettingMeaning{"tripDistanceKm",
                   {"сколько километров от дома — уже поездка",
                    "kilometres from home beyond which a shot belongs to a trip"}},
    SettingMeaning{"tripMinDays",
                   {"сколько дней длится самая короткая поездка", "days of the shortest trip"}},
    SettingMeaning{"tripCityKm",
                   {"радиус города поездки в километрах; дальше начинается другая поездка",
                    "the radius of a trip's city in kilometres; beyond it another trip begins"}},
    SettingMeaning{"tripMaxGapHours",
                   {"через сколько часов без съёмки поездка закончена",
                    "hours without a shot after which a trip is over"}},
    SettingMeaning{"homeWindowMonths",
                   {"за сколько последних месяцев съёмки определяется дом",
                    "the number of the latest months from which home is detected"}},
    SettingMeaning{"homeRadiusKm",
                   {"радиус дома в километрах", "the radius of home in kilometres"}},
    SettingMeaning{"homePeriods",
                   {"переезды: считать поездки от того дома, который был в то время",
                    "moves: measure trips from the home of their time"}},
    SettingMeaning{"homeOverride",
                   {"где находится дом; без значения программа определяет его сама",
                    "where home is; without a value the program detects it"}},
    SettingMeaning{"homeOverrideName",
                   {"название дома, указанного в homeOverride",
                    "the name of the home that homeOverride sets"}},

    // How files are written.
    SettingMeaning{"photoJPEG", {"преобразовывать фотографии в JPEG", "convert photos to JPEG"}},
    SettingMeaning{"jpegQuality",
                   {"качество JPEG: чем больше, тем лучше картинка и больше файл",
                    "the quality of JPEG: a higher one gives better pictures and larger files"}},
    SettingMeaning{"videoH264",
                   {"преобразовывать видео в H.264 (MP4)", "convert videos to H.264 (MP4)"}},
    SettingMeaning{"separatePhotoVideo",
                   {"в каждой папке — отдельные папки Photo и Video",
                    "separate folders Photo and Video in every folder"}},
    SettingMeaning{"flattenSingleKind",
                   {"без папок Photo и Video там, где только фото или только видео",
                    "no folders Photo and Video where there are only photos or only videos"}},
    SettingMeaning{"fileNamePrefixMode",
                   {"что стоит перед именем файла: ничего, имя телефона или customFileNamePrefix",
                    "what precedes file names: nothing, the phone's name or "
                    "customFileNamePrefix"}},
    SettingMeaning{"customFileNamePrefix",
                   {"текст перед именем файла (при fileNamePrefixMode=custom)",
                    "the text before file names (with fileNamePrefixMode=custom)"}},
    SettingMeaning{"packAsZip",
                   {"складывать всё в архив zip", "put everything into a zip archive"}},
    SettingMeaning{"packPerGroup",
                   {"отдельный архив для каждой папки (при packAsZip=true)",
                    "an archive for each folder (with packAsZip=true)"}},

    // How folders are named.
    SettingMeaning{"nameTemplate",
                   {"шаблон имён папок; готовые и свои показывает tavrix presets",
                    "the template of folder names; tavrix presets lists the built-in and your own"},
                   {"Дата — Город", "Date — city"}},
    SettingMeaning{
        "geocodingEnabled",
        {"узнавать города и страны по координатам", "find the names of cities and countries"}},
    SettingMeaning{"mergeDistricts",
                   {"части большого города называть именем города",
                    "use the city's name for the parts of a large city"}},
    SettingMeaning{"mergeSameNames",
                   {"группы с одинаковым именем — в одну папку, без «(2)»",
                    "groups of the same name share one folder, without “(2)”"}},
    SettingMeaning{"severalCities",
                   {"две крупнейшие местности в имени папки, если ни в одной нет половины снимков",
                    "name a folder after its two largest places if neither has half of its shots"}},
    SettingMeaning{
        "wholeFolderDates",
        {"в именах папок месяца не писать день, в именах папок года — и месяц",
         "leave the day out of the names of months, and the month out of those of years"}},
    SettingMeaning{"datelessName",
                   {"имя папки для снимков без даты; исходное — на языке системы",
                    "the name of the folder for undated shots; at first in the system's "
                    "language"}},
    SettingMeaning{"nameByGroupID",
                   {"называть папки по id групп, а не по шаблону",
                    "name folders by the ids of their groups instead of the template"}},
    SettingMeaning{"nameOverrides",
                   {"свои имена папок по id групп", "your own folder names by group id"}},
    SettingMeaning{"mergesByMode",
                   {"какие группы склеить, отдельно для каждого uiMode",
                    "which groups to merge, for each uiMode"}},
    SettingMeaning{"rejectedSuggestions",
                   {"какие склейки больше не предлагать, отдельно для каждого uiMode",
                    "which merges not to suggest any more, for each uiMode"}},

    // The program itself.
    SettingMeaning{"uiLanguage",
                   {"язык сообщений, если нет --lang", "the language of messages without --lang"}},
};

// The list of all settings, and one of them.
inline constexpr Sentence<> titleInitially{"Исходно", "Initially"};
inline constexpr Sentence<> titleMeaning{"Что это и какие значения", "Meaning and values"};
inline constexpr Sentence<std::string_view, std::string_view> meaningAndValues{"{} [{}]",
                                                                               "{} [{}]"};
inline constexpr Sentence<std::string_view, std::string_view> meaningAndKeptValues{
    "{} [{}; запоминается]", "{} [{}; can be saved]"};
inline constexpr Sentence<> allSettingsHint{
    "На один вызов: --set КЛЮЧ=ЗНАЧЕНИЕ. Запоминаемые — на все вызовы: tavrix settings set КЛЮЧ "
    "ЗНАЧЕНИЕ.",
    "For one call: --set KEY=VALUE. Those that can be saved, for all calls: tavrix settings set "
    "KEY VALUE."};
inline constexpr Sentence<std::string_view, std::string_view> keyAndMeaning{"{} — {}.", "{} — {}."};
inline constexpr Sentence<> rowValues{"Значения", "Values"};
inline constexpr Sentence<> rowInitially{"Исходно", "Initially"};
inline constexpr Sentence<> rowForOneCall{"На один вызов", "For one call"};
inline constexpr Sentence<std::string_view> forOneCall{"--set {}=ЗНАЧЕНИЕ", "--set {}=VALUE"};
inline constexpr Sentence<> languageForOneCall{"--lang ru|en|system", "--lang ru|en|system"};
inline constexpr Sentence<> rowForAllCalls{"На все вызовы", "For all calls"};
inline constexpr Sentence<std::string_view> forAllCalls{"tavrix settings set {} ЗНАЧЕНИЕ",
                                                        "tavrix settings set {} VALUE"};
inline constexpr Sentence<> notForAllCalls{"не запоминается", "cannot be saved"};

// The topics of `tavrix help`.
inline constexpr Sentence<std::string_view> unknownTopic{
    "Нет ни команды, ни настройки «{}»; команды: tavrix help, настройки: tavrix settings --all.",
    "There is no command or setting “{}”; for the commands, run tavrix help, for the settings, "
    "tavrix settings --all."};
inline constexpr Sentence<std::string_view, std::string_view> unknownTopicLike{
    "Нет ни команды, ни настройки «{}». Может быть, tavrix help {}?",
    "There is no command or setting “{}”. Did you mean tavrix help {}?"};

}  // namespace tavrix::cli::sentences
