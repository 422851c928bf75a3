#pragma once

#include "cli/help/HelpTexts.h"

/// The help of `tavrix thumbnails`, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText thumbnails{
    R"(tavrix thumbnails SOURCE OUT-DIR — миниатюры всех фотографий и видео, файлами JPEG.

OUT-DIR — новая или пустая папка. Имя файла — номер и путь снимка на телефоне:
00042_100APPLE_IMG_0042.HEIC.jpg. Оригиналы целиком не читаются, если миниатюра
есть внутри файла; сделанное запоминается (tavrix cache).

  --size N     длинная сторона в пикселях, от 32 до 2560 (по умолчанию 320)
  --sheet DIR  ещё и страница DIR/index.html: папки с датами и миниатюрами

Завершение: 0 — показано всё; 1 — что-то показать не удалось; 3 — не удалось
начать или остановлено; 130 — прервано, записанное остаётся.

Примеры:
  tavrix thumbnails phone МИНИАТЮРЫ
  tavrix thumbnails ТЕЛЕФОН МИНИАТЮРЫ --sheet СТРАНИЦА --set uiMode=trips
)",
    R"(tavrix thumbnails SOURCE OUT-DIR — thumbnails of all photos and videos, as JPEG files.

OUT-DIR is a new or an empty folder. A file is named after the number and the
path of its picture: 00042_100APPLE_IMG_0042.HEIC.jpg. Originals are not read
whole if they have a thumbnail inside; what was made is kept (tavrix cache).

  --size N     longest side in pixels, 32 to 2560 (default: 320)
  --sheet DIR  also writes the page DIR/index.html: the folders with their dates
               and thumbnails

Exit status: 0 everything was shown; 1 some files could not be shown; 3 could
not start or was stopped; 130 interrupted, what was written stays.

Examples:
  tavrix thumbnails phone THUMBNAILS
  tavrix thumbnails PHONE THUMBNAILS --sheet PAGE --set uiMode=trips
)"};

}  // namespace tavrix::cli::help
