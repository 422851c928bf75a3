#pragma once

#include "cli/HelpTexts.h"

/// The help of the commands that check a destination, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText verify{
    R"(tavrix verify DEST — сверяет скопированное в DEST с записями всех телефонов.

Перечитывает файлы и сравнивает размер и SHA-256. Говорит, что цело, что изменилось, пропало или
не читается, что записано без контрольной суммы и каких файлов нет ни в одной записи. Ничего не
меняет. Ctrl-C останавливает проверку.

  --write-checksums   дополняет DEST/SHA256SUMS для sha256sum -c: у каждого файла — сумма из
                      записи, без неё — из прежнего списка, с которым файл и сверяется; файлы, о
                      которых не знают ни запись, ни список, получают сумму, посчитанную сейчас

Завершение: 0 — потерь нет; 1 — файл изменился, пропал, не читается или так и не появился, либо
не читается запись или папка; 3 — DEST не читается или в ней нет записей; 130 — прервано.

Повреждённую запись восстанавливает tavrix marker rebuild с файлами и именем того телефона, чья
она. Если их больше нет, переименуйте её, добавив «.damaged»: её файлы станут файлами без записи.

Примеры:
  tavrix verify ФОТОГРАФИИ
  tavrix verify ФОТОГРАФИИ --json | jq -r '.files[] | select(.state == "changed") | .path'
  tavrix verify ФОТОГРАФИИ --write-checksums && (cd ФОТОГРАФИИ && sha256sum -c SHA256SUMS)
)",
    R"(tavrix verify DEST — compares what was copied into DEST with the records of all phones.

Reads the files again and compares size and SHA-256. Tells what is intact, what has changed, is
missing or unreadable, what is recorded without a checksum, and which files are in no record.
Changes nothing. Ctrl-C stops the check.

  --write-checksums   adds to DEST/SHA256SUMS for sha256sum -c: each file with its checksum of the
                      record, or else of the earlier list, which the file is then compared with;
                      a file that neither knows gets the checksum of now

Exit status: 0 no losses; 1 a file changed, is missing or unreadable or never came, or a record or
folder cannot be read; 3 DEST cannot be read or holds no record; 130 interrupted.

A damaged record is brought back by tavrix marker rebuild with the files and the name of the phone
that it is of. Where these are gone, add “.damaged” to its name: its files are then in no record.

Examples:
  tavrix verify PHOTOS
  tavrix verify PHOTOS --json | jq -r '.files[] | select(.state == "changed") | .path'
  tavrix verify PHOTOS --write-checksums && (cd PHOTOS && sha256sum -c SHA256SUMS)
)"};

inline constexpr HelpText marker{
    R"(tavrix marker rebuild SOURCE DEST — узнаёт в DEST файлы телефона, если запись о них потеряна.

Сравнивает файлы DEST с файлами SOURCE по размеру и SHA-256 и записывает в DEST, что из них
скопировано с этого телефона. Ничего не копирует; прежняя запись дополняется. Файлы, при переносе
преобразованные в другой формат, так не узнать. Настройки --set — те же, что у переноса: по ним
различаются файлы с одинаковым содержимым. Ctrl-C останавливает, опознанное остаётся.

  --device-name NAME  имя телефона, как при переносе (по умолчанию iPhone)

Примеры:
  tavrix marker rebuild ТЕЛЕФОН ФОТОГРАФИИ
  tavrix marker rebuild ТЕЛЕФОН ФОТОГРАФИИ --device-name Анна --set granularity=month
)",
    R"(tavrix marker rebuild SOURCE DEST — recognises the phone's files in DEST where their record is lost.

Compares the files of DEST with those of SOURCE by size and SHA-256, and records in DEST which of
them are copies from this phone. Copies nothing; an earlier record is added to. Files that were
converted to another format cannot be recognised so. Settings of --set are those of the transfer:
they tell files of equal content apart. Ctrl-C stops it; what was recognised stays.

  --device-name NAME  the phone's name, as with the transfer (iPhone by default)

Examples:
  tavrix marker rebuild PHONE PHOTOS
  tavrix marker rebuild PHONE PHOTOS --device-name Anna --set granularity=month
)"};

}  // namespace tavrix::cli::help
