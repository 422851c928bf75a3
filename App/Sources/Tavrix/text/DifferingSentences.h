#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences about files of a destination that do not have the expected size, in both languages
/// side by side.
namespace tavrix::sentences {

/// The number of files and the path of the only or the first one.
inline constexpr Sentence<std::string_view, std::string_view> onlyFile{"{} («{}»)", "{} (“{}”)"};
inline constexpr Sentence<std::string_view, std::string_view> firstOfFiles{
    "{} (первый — «{}»)", "{} (the first is “{}”)"};

// The value is the number of files with the path of one.
inline constexpr Sentence<std::string_view> differDamaged{
    "Стали короче после копирования и, похоже, повреждены: {}. Перенос такие файлы не заменяет; "
    "вернуть их может «tavrix repair».",
    "Shorter than when they were copied, and probably damaged: {}. A transfer does not replace "
    "such files; “tavrix repair” can bring them back."};
inline constexpr Sentence<std::string_view> differChanged{
    "Изменены в папке после копирования: {}. Такие файлы ещё раз не переносятся.",
    "Changed in the folder since they were copied: {}. Such files are not transferred again."};
inline constexpr Sentence<std::string_view> differForeign{
    "Называются так же, как на телефоне, но другого размера: {}. Записи о них в папке нет; файлы "
    "телефона с такими именами не переносятся.",
    "Named as on the phone, but of another size: {}. The folder has no record of them; the files "
    "of the phone with such names are not transferred."};
inline constexpr Sentence<std::string_view> differEmptied{
    "Опустели после копирования: {}. Эти файлы переносятся ещё раз, под именами с номером.",
    "Emptied since they were copied: {}. These files are transferred again under numbered names."};

// Beside the path of a file.
inline constexpr Sentence<> fileDamaged{"стал короче после копирования, не заменён",
                                        "shorter than when it was copied, not replaced"};
inline constexpr Sentence<> fileChanged{"изменён после копирования, не заменён",
                                        "changed since it was copied, not replaced"};
inline constexpr Sentence<> fileForeign{
    "другого размера и без записи, файл телефона не перенесён",
    "of another size and without a record, the phone’s file was not transferred"};
inline constexpr Sentence<> fileEmptied{"опустел после копирования, перенесён ещё раз",
                                        "emptied since it was copied, transferred again"};

}  // namespace tavrix::sentences
