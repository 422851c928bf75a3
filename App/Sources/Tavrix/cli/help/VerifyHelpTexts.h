#pragma once

#include "cli/help/HelpTexts.h"

/// The help of the commands that check a destination, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText verify{
    R"(tavrix verify DEST — сверяет скопированное в DEST с записями всех телефонов.

Перечитывает файлы и сравнивает размер и SHA-256. Показывает, что цело, что
изменилось, пропало или не читается, что записано без контрольной суммы и каких
файлов нет ни в одной записи. Ничего не меняет. Ctrl-C останавливает проверку.
Изменившееся и пропавшее возвращает tavrix repair SOURCE DEST. Если в DEST идёт
перенос, то, что он пишет, не проверяется и потерей не считается.

  --write-checksums   дополняет DEST/SHA256SUMS для sha256sum -c: сумма файла
                      берётся из записи, без неё — из прежнего списка, с которым
                      файл и сверяется; файлы, которых нет ни в записи, ни в
                      списке, получают сумму, посчитанную сейчас

Завершение: 0 — потерь нет; 1 — файл изменился, пропал, не читается или так и не
появился, либо не читается запись или папка; 3 — DEST не читается или в ней нет
записей; 130 — прервано.

Повреждённую запись восстанавливает tavrix marker rebuild с файлами и именем
того телефона, к которому она относится. Если их больше нет, добавьте к имени
записи «.damaged»: её файлы станут файлами без записи.

Примеры:
  tavrix verify ФОТОГРАФИИ
  tavrix verify ФОТОГРАФИИ --json | jq '.files[] | select(.state == "changed")'
  tavrix verify ФОТОГРАФИИ --write-checksums
  cd ФОТОГРАФИИ && sha256sum -c SHA256SUMS
)",
    R"(tavrix verify DEST — compares the copies in DEST with the records of all phones.

Reads the files again and compares size and SHA-256. Shows what is intact, what
has changed, is missing or unreadable, what is recorded without a checksum, and
which files are in no record. Changes nothing. Ctrl-C stops the check. To copy
changed and missing files again: tavrix repair SOURCE DEST. If a transfer into
DEST is running, the files that it is writing are not checked and do not count
as losses.

  --write-checksums   adds to DEST/SHA256SUMS for sha256sum -c: each file gets
                      its checksum from the record, or else from the earlier
                      list, which it is then compared with; a file that is in
                      neither gets its present checksum

Exit status: 0 no losses; 1 a file changed, is missing or unreadable or was
never copied, or a record or folder cannot be read; 3 DEST cannot be read or has
no record; 130 interrupted.

tavrix marker rebuild restores a damaged record, with the files and the name of
the phone that it belongs to. If these no longer exist, add “.damaged” to the
name of the record: its files are then in no record.

Examples:
  tavrix verify PHOTOS
  tavrix verify PHOTOS --json | jq '.files[] | select(.state == "changed")'
  tavrix verify PHOTOS --write-checksums
  cd PHOTOS && sha256sum -c SHA256SUMS
)"};

inline constexpr HelpText marker{
    R"(tavrix marker rebuild SOURCE DEST — опознаёт в DEST файлы телефона.

Нужна, если запись потеряна. Сравнивает файлы DEST с файлами SOURCE по размеру и
SHA-256 и записывает в DEST, что из них скопировано с этого телефона. Ничего не
копирует; прежняя запись дополняется. Файлы, которые при переносе преобразованы
в другой формат, так опознать нельзя. Настройки --set — те же, что у переноса:
по ним различаются файлы с одинаковым содержимым. Ctrl-C останавливает,
опознанное остаётся.

  --device-name NAME  имя телефона, как при переносе (по умолчанию iPhone)

Примеры:
  tavrix marker rebuild ТЕЛЕФОН ФОТОГРАФИИ
  tavrix marker rebuild ТЕЛЕФОН ФОТОГРАФИИ --device-name Анна
)",
    R"(tavrix marker rebuild SOURCE DEST — recognises the phone's copies in DEST.

For a DEST whose record is lost. Compares the files of DEST with those of SOURCE
by size and SHA-256, and records in DEST which of them are copies from this
phone. Copies nothing; an earlier record is extended. Files that were converted
to another format cannot be recognised this way. Use the same --set settings as
for the transfer: they distinguish files with equal content. Ctrl-C stops it;
what was recognised stays.

  --device-name NAME  the phone's name, as for the transfer (default: iPhone)

Examples:
  tavrix marker rebuild PHONE PHOTOS
  tavrix marker rebuild PHONE PHOTOS --device-name Anna
)"};

}  // namespace tavrix::cli::help
