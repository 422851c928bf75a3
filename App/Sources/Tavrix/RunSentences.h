#pragma once

#include <string>

#include "foundation/Sentence.h"

/// What the application writes into the record of a run, in both languages side by side.
namespace tavrix::sentences {

inline constexpr Sentence<> ownTemplate{"Свой шаблон", "Own template"};
inline constexpr Sentence<> noteUnderWay{
    "Программа завершилась до конца переноса: что успело скопироваться, лежит на месте, но здесь "
    "не отмечено.",
    "The program ended before the transfer did: what was copied by then is in place, but is not "
    "noted here."};
inline constexpr Sentence<> noteCancelled{"Перенос отменён.", "The transfer was cancelled."};
inline constexpr Sentence<std::string> noteInterrupted{"Перенос остановлен: {}",
                                                       "The transfer was stopped: {}"};
inline constexpr Sentence<> noteKeptOriginals{
    "Перевести не удалось — на Mac лежит оригинал под своим именем.",
    "The conversion failed — the Mac holds the original under its own name."};
inline constexpr Sentence<std::string> noteMarkerNotSaved{
    "Папка назначения не запомнила, что в неё перенесено: {}",
    "The destination folder could not note what was transferred: {}"};
/// How many folders.
inline constexpr Sentence<std::string> noteUnreadFolders{
    "В источнике не прочитано: {}; файлы оттуда не перенесены.",
    "Not read in the source: {}; the files there were not transferred."};

inline constexpr CountedNoun times{"раз", "раза", "раз", "time", "times"};
/// How many times.
inline constexpr Sentence<std::string> notePhoneWaits{
    "Во время переноса связь с iPhone пропадала {}; перенос её ждал.",
    "During the transfer the iPhone was out of reach {}; the transfer waited for it."};

}  // namespace tavrix::sentences
