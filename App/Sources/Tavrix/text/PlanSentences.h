#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences about a plan, its progress and its result, in both languages side by side.
namespace tavrix::sentences {

// Before the first byte.
inline constexpr Sentence<std::string_view> copiesAgain{
    "То, что здесь уже есть, будет скопировано ещё раз под новыми именами: {}.",
    "What is already here will be copied again under new names: {}."};
inline constexpr Sentence<std::string_view, std::string_view> copiesAgainFrom{
    "То, что здесь уже есть, будет скопировано ещё раз под новыми именами: {}. Сейчас это лежит "
    "в «{}» и, возможно, рядом: состав или устройство папок изменились, или имена заданы вручную.",
    "What is already here will be copied again under new names: {}. It is now in “{}” and perhaps "
    "beside it: the folders have other shots or another layout than before, or names given by "
    "hand."};
inline constexpr Sentence<std::string_view, std::string_view> copiesAgainChanged{
    "То, что здесь уже есть, будет скопировано ещё раз под новыми именами: {}. С тех пор как эти "
    "папки получили имена, изменились настройки: {}.",
    "What is already here will be copied again under new names: {}. Settings that have changed "
    "since these folders were named: {}."};
inline constexpr Sentence<std::string_view, std::string_view> spaceHint{
    "Нужно {}, а свободно {}: когда место кончится, перенос подождёт.",
    "{} needed, but only {} free: when the space runs out, the transfer will wait."};

// Progress.
// Russian has one form for every total: "3 / 21 файлов".
inline constexpr CountedNoun filesOfTotal{"файлов", "файлов", "файлов", "file", "files"};
inline constexpr CountedNoun groupsOfTotal{"групп", "групп", "групп", "group", "groups"};

// The fate of every file.
inline constexpr Sentence<> rowCatalogue{"В каталоге", "In the catalogue"};
inline constexpr Sentence<> rowWithoutPicture{"пропущены: их снимка нет на телефоне",
                                              "skipped: their picture is not on the phone"};
inline constexpr Sentence<> rowUnknownKind{"пропущены: файлы незнакомого вида",
                                           "skipped: files of an unknown kind"};
inline constexpr Sentence<> rowBySettings{"пропущены по настройкам", "skipped by the settings"};
inline constexpr Sentence<> rowKnown{"уже есть в папке", "already in the folder"};
inline constexpr Sentence<> rowDiffering{"другого размера", "of another size"};
inline constexpr Sentence<> rowPlanned{"к переносу", "to transfer"};
inline constexpr Sentence<> rowCopied{"скопированы", "copied"};
inline constexpr Sentence<> rowAlreadyThere{"оказались на месте", "found in place"};
inline constexpr Sentence<> rowKeptOriginal{"остались без преобразования", "kept unconverted"};
inline constexpr Sentence<> rowFailed{"не перенесены", "failed"};
inline constexpr Sentence<> rowNotReached{"не дошла очередь", "not reached"};

// The files that did not get there as planned.
inline constexpr Sentence<> failuresTitle{"Не удалось перенести:", "Not transferred:"};
inline constexpr Sentence<> keptOriginalsTitle{"Перенесены без преобразования, под своим именем:",
                                               "Kept under their own name, unconverted:"};
/// The detail of a failed verification, in a line that already names the file.
inline constexpr Sentence<std::string_view> verificationFailedBeside{"сверка не прошла — {}",
                                                                     "verification failed — {}"};
inline constexpr Sentence<std::string_view> moreFailures{"… и ещё {}", "… and {} more"};

}  // namespace tavrix::sentences
