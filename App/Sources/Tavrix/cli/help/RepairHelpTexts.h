#pragma once

#include "cli/help/HelpTexts.h"

/// The help of `tavrix repair`, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText repair{
    R"(tavrix repair SOURCE DEST — снова копирует изменившееся и пропавшее.

Сверяет DEST с записями, как tavrix verify, и берёт из SOURCE файлы, которые
изменились или пропали. Повреждённый файл не удаляется, а получает имя вида
«IMG_1 (damaged).HEIC». Копия встаёт на своё место, только если она в точности
такая, как в записи. Ctrl-C останавливает, восстановленное остаётся. Отключённый
телефон команда ждёт, как и перенос.

Как есть остаются: файлы других телефонов, архивы, преобразованные файлы и
файлы, которых в SOURCE нет или которые там теперь другие, — каждый с причиной.

  --device-name NAME  имя телефона, как при переносе (по умолчанию iPhone)

Завершение: 0 — всё восстановлено или восстанавливать нечего; 1 — что-то не
восстановлено; 3 — не удалось начать или остановлено; 130 — прервано.

Примеры:
  tavrix repair phone ФОТОГРАФИИ
  tavrix repair ТЕЛЕФОН ФОТОГРАФИИ --json | jq '.kept[]'
)",
    R"(tavrix repair SOURCE DEST — copies again what has changed or is missing in DEST.

Compares DEST with its records as tavrix verify does, and fetches from SOURCE
the files that have changed or are missing. A damaged file is never deleted: it
is renamed to a name such as “IMG_1 (damaged).HEIC”. A copy takes its place only
if it is exactly what the record says. Ctrl-C stops the command; what was
repaired stays. If the phone is unplugged, the command waits for it, as a
transfer does.

Left as they are, each with the reason: files of other phones, archives,
converted files, and files that SOURCE does not have or that are different there
now.

  --device-name NAME  the phone's name, as for the transfer (default: iPhone)

Exit status: 0 everything is repaired, or there is nothing to repair; 1 some
files are not repaired; 3 could not start or was stopped; 130 interrupted.

Examples:
  tavrix repair phone PHOTOS
  tavrix repair PHONE PHOTOS --json | jq '.kept[]'
)"};

}  // namespace tavrix::cli::help
