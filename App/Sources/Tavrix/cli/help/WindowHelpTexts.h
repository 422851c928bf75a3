#pragma once

#include "cli/help/HelpTexts.h"

/// The help of `tavrix window`, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText window{
    R"(tavrix window [SOURCE] — открывает окно программы.

Без SOURCE окно ждёт iPhone на кабеле. Настройки окно берёт из запомненных
(tavrix settings), остальные выбирают в нём самом.

  --destination DIR   куда переносить

Завершение: как у окна; 3 — окно не установлено или не запустилось.

Примеры:
  tavrix window
  tavrix window /media/КАРТА --destination ФОТОГРАФИИ
)",
    R"(tavrix window [SOURCE] — opens the window of the program.

Without SOURCE the window waits for an iPhone on the cable. It begins with the
saved settings (tavrix settings); the others are chosen in it.

  --destination DIR   where to transfer to

Exit status: that of the window; 3 the window is not installed or did not start.

Examples:
  tavrix window
  tavrix window /media/CARD --destination PHOTOS
)"};

}  // namespace tavrix::cli::help
