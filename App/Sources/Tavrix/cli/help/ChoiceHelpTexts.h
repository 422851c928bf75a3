#pragma once

#include "cli/help/HelpTexts.h"

/// The help of the options that choose folders and shots, in both languages side by side.
namespace tavrix::cli::help {

/// Follows the text of each command that takes these options.
inline constexpr HelpText choice{
    R"(
Выбор снимков (groups, plan, transfer):
  --only ПАПКА      только эта папка, по id или имени; можно повторять
  --last 7d|3w|2m   только снятое за последние дни, недели или месяцы; сегодня тоже считается:
                    7d — это сегодня и шесть дней до него по календарю timeZoneID. Снимки без
                    даты пропускаются
  --since-last      только снимки, которых не записал ни один завершённый перенос с этого
                    телефона (--device-name), в какую бы папку он ни шёл. Снимок, который с тех пор
                    отредактировали или который тогда не удалось перенести, тоже выбирается
  --exclude МАСКА   без файлов, подходящих под маску: * — что угодно, ? — один знак, [0-9] — знак
                    из набора; можно повторять. Маска без «/» сравнивается с именем файла, маска
                    с «/» — с его id (tavrix catalog --json); регистр букв не важен. Если
                    исключено само фото или видео, снимок пропускается целиком

Выбор делается, когда снимки уже разложены по папкам: имена и пути те же, что и без него, поэтому
у одного события не появится вторая папка. Настройки periodFrom, periodTo и places действуют,
наоборот, до раскладки; вместе с --last берётся то, что подходит и туда, и сюда.

Примеры:
  tavrix groups ТЕЛЕФОН --last 2w
  tavrix plan ТЕЛЕФОН ФОТОГРАФИИ --only event-2026-05-20 --only 'Дача'
  tavrix transfer ТЕЛЕФОН ФОТОГРАФИИ --since-last --exclude '*.AAE' --exclude '*/100APPLE/*'
)",
    R"(
Choosing shots (groups, plan, transfer):
  --only FOLDER     only this folder, by id or name; can be repeated
  --last 7d|3w|2m   only what was taken in the last days, weeks or months, today included: 7d is
                    today and the six days before, by the calendar of timeZoneID. Shots without a
                    date are left out
  --since-last      only shots that no finished transfer from this phone (--device-name) has
                    recorded, whatever folder it went into. A shot that was edited since, or could
                    not be transferred then, is chosen too
  --exclude GLOB    without the files that match: * is anything, ? one character, [0-9] one
                    character of a set; can be repeated. A pattern without "/" is compared with the
                    name of a file, one with "/" with its id (tavrix catalog --json); letter case
                    is ignored. If the photo or video itself is excluded, the whole shot is left out

The choice is made after the shots were put into folders: names and paths are the same as without
it, so one event never gets a second folder. The settings periodFrom, periodTo and places, on the
contrary, apply before; together with --last, only what passes both is taken.

Examples:
  tavrix groups PHONE --last 2w
  tavrix plan PHONE PHOTOS --only event-2026-05-20 --only 'Picnic'
  tavrix transfer PHONE PHOTOS --since-last --exclude '*.AAE' --exclude '*/100APPLE/*'
)"};

}  // namespace tavrix::cli::help
