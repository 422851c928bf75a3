#pragma once

#include <string>
#include <string_view>

#include "cli/sentences/CliSentences.h"
#include "foundation/Sentence.h"

/// The sentences of `tavrix repair`, and of other commands about it, in both languages side by
/// side.
namespace tavrix::cli::sentences {

/// The value is a command.
inline constexpr Sentence<std::string_view> repairHint{
    "Вернуть изменившееся и пропавшее (SOURCE — откуда переносили): {}",
    "To bring back what changed or is missing (SOURCE is where it came from): {}"};

// The result.
inline constexpr Sentence<> repairNothing{
    "Восстанавливать нечего: ни один файл не изменился и не пропал.",
    "There is nothing to repair: no file has changed or is missing."};
inline constexpr Sentence<std::string_view, std::string_view> repairComplete{
    "Восстановлено всё: {}, записано {}.", "Everything is repaired: {}, {} written."};
/// The repaired files, all files that were not in order, and the bytes.
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> repairPartial{
    "Восстановлено {} из {}, записано {}.", "Repaired {} of {}; {} written."};
inline constexpr Sentence<> repairedTitle{"Восстановлены:", "Repaired:"};
/// The path of a repaired file and the new name of the damaged one.
inline constexpr Sentence<std::string_view, std::string_view> repairedBeside{
    "{} — повреждённый файл теперь «{}»", "{} — the damaged file is now “{}”"};
inline constexpr Sentence<> unrepairedTitle{"Не удалось восстановить:", "Could not be repaired:"};
inline constexpr Sentence<> keptTitle{"Остались как есть:", "Left as they are:"};

// Reasons why a file is left as it is.
inline constexpr Sentence<std::string_view> keptOfOtherPhone{
    "записан за другим телефоном, «{}»: восстановите с ним",
    "recorded for another phone, “{}”: repair it with that phone"};
inline constexpr Sentence<> keptArchive{"это архив: новый перенос упакует его файлы заново",
                                        "this is an archive: a new transfer packs its files again"};
inline constexpr Sentence<> keptConverted{
    "преобразован при переносе: уберите повреждённый файл, если он там есть, и повторите перенос",
    "it was converted during the transfer: move the damaged file away, if there is one, and run "
    "the transfer again"};
inline constexpr Sentence<> keptReducedCopy{
    "на телефоне только уменьшенная копия, а оригинал в облаке",
    "the phone has only a reduced copy, the original is in the cloud"};
inline constexpr Sentence<> keptOtherContent{
    "в источнике под этим именем другой файл: возможно, его изменили",
    "the source has a different file under this name, perhaps it was edited"};
/// The recorded size and that in the source, in bytes.
inline constexpr Sentence<std::uint64_t, std::uint64_t> keptOtherSize{
    "в источнике под этим именем другой файл (был {} байт, теперь {}): возможно, его изменили",
    "the source has a different file under this name (was {} bytes, now {}), perhaps it was "
    "edited"};
inline constexpr Sentence<> keptNeverConfirmed{
    "прерванный перенос мог не успеть его скопировать: повторите перенос",
    "an interrupted transfer may not have copied it: run the transfer again"};

// The ends of the command.
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> repairNoRecord{
    "В папке «{}» нет записи о телефоне «{}», есть о других: {}. Назовите телефон, как при "
    "переносе (--device-name), или восстановите запись командой tavrix marker rebuild SOURCE DEST.",
    "The folder “{}” has no record of the phone “{}”, only of others: {}. Name the phone as in the "
    "transfer (--device-name), or restore the record with tavrix marker rebuild SOURCE DEST."};
inline constexpr Sentence<std::string_view, std::string_view> repairSpaceHint{
    "Нужно {}, а свободно {}: когда место кончится, команда подождёт.",
    "{} needed, but only {} free: when the space runs out, the command will wait."};
/// The path and the reason.
inline constexpr Sentence<std::string_view, std::string_view> repairNotRecorded{
    "Файлы восстановлены, но их контрольные суммы не записаны: «{}», {}.",
    "The files are repaired, but their checksums were not recorded: “{}”, {}."};
inline constexpr Sentence<> repairCancelled{
    "Восстановление прервано; сделанное осталось, повтор восстановит остальное.",
    "The repair was cancelled; what was repaired stays, and running it again repairs the rest."};
inline constexpr Sentence<std::string_view, std::string_view> repairInterrupted{
    "Восстановление остановлено: {} («{}»); устраните причину и повторите — восстановится "
    "остальное.",
    "The repair was stopped: {} (“{}”); fix the problem and run it again to repair the rest."};

// Other commands.
/// The name of the record.
inline constexpr Sentence<std::string_view> recordDamagedTransfer{
    "Запись «{}» повреждена или не читается, поэтому по ней ничего не опознаётся: файл с тем же "
    "именем считается уже перенесённым, а остальное скопируется ещё раз. Восстановите её командой "
    "tavrix marker rebuild SOURCE DEST с файлами и именем (--device-name) того телефона, к "
    "которому она относится.",
    "The record “{}” is damaged or unreadable, so nothing is recognised by it: a file of the same "
    "name is treated as already transferred, and the rest is copied again. Restore it with tavrix "
    "marker rebuild SOURCE DEST, using the files and the name (--device-name) of the phone that it "
    "belongs to."};
inline constexpr Sentence<> packingCancelledEarly{
    "Перенос отменён; ни один архив не готов, повтор упакует всё заново.",
    "The transfer was cancelled before an archive was finished; running it again packs everything "
    "from the beginning."};

}  // namespace tavrix::cli::sentences
