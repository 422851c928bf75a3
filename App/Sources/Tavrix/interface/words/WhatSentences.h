#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the inspector about the files to transfer.
namespace tavrix::window::sentences {

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
inline constexpr Sentence<> datesFromNames{"Даты из имён файлов", "Dates from file names"};
inline constexpr Sentence<> datesFromNamesHelp{
    "Если у снимка из папки нет своей даты, её даёт имя: IMG-20200131-WA0001.jpg.",
    "A shot from a folder without a date of its own gets it from its name: "
    "IMG-20200131-WA0001.jpg."};
inline constexpr Sentence<> cameraDays{"Дни по часам камеры", "Days by the camera’s clock"};
inline constexpr Sentence<> cameraDaysHelp{
    "Снимок остаётся в том дне, который был на часах камеры, в какой бы стране его ни сняли.",
    "A shot stays on the day that the camera’s clock showed, wherever it was taken."};
inline constexpr Sentence<> zoneUnknown{"Нет такого часового пояса.", "No such time zone."};

}  // namespace tavrix::window::sentences
