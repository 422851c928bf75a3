#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the core library for the user, in both languages side by side.
namespace tavrix::sentences {

inline constexpr CountedNoun files{"файл", "файла", "файлов", "file", "files"};
inline constexpr CountedNoun folders{"папка", "папки", "папок", "folder", "folders"};
inline constexpr CountedNoun shots{"снимок", "снимка", "снимков", "snapshot", "snapshots"};

// Reasons why a file was not copied.
inline constexpr Sentence<> pathOutsideDestination{
    "путь файла выходит за пределы папки назначения",
    "the file's path goes outside the destination folder"};
inline constexpr Sentence<> unsafeName{"такое имя не может быть именем файла",
                                       "a file cannot have such a name"};
inline constexpr Sentence<std::string_view, std::string> verificationFailed{
    "Сверка не прошла: {} — {}", "Verification failed: {} — {}"};
inline constexpr Sentence<std::uint64_t, std::uint64_t> sizesDiffer{
    "ожидалось {} байт, получено {}", "expected {} bytes, got {}"};
inline constexpr Sentence<std::uint64_t> moreThanListed{"ожидалось {} байт, получено больше",
                                                        "expected {} bytes, got more"};
inline constexpr Sentence<> notInSource{"файла нет в источнике", "the file is not in the source"};
inline constexpr Sentence<std::string> unreadableInSource{"не удалось прочитать файл: {}",
                                                          "the file could not be read: {}"};
inline constexpr Sentence<> notRegularInSource{
    "в источнике это не обычный файл, а ссылка или устройство",
    "in the source this is not a regular file but a link or a device"};
inline constexpr Sentence<> changedWhileRead{"файл изменился, пока его читали",
                                             "the file changed while it was being read"};
inline constexpr Sentence<std::string> unwritable{"не удалось записать файл: {}",
                                                  "the file could not be written: {}"};
inline constexpr Sentence<> phoneDisconnected{"связь с айфоном прервалась",
                                              "the connection to the iPhone was lost"};
inline constexpr Sentence<> sourceFailed{"источник не отдал файл",
                                         "the source did not hand the file over"};

// The outcome of a run and of its shots and files.
inline constexpr Sentence<> allOnMac =
    onPlatform(Sentence<>{"Все снимки на Mac", "All snapshots are on the Mac"},
               Sentence<>{"Все снимки на компьютере", "All snapshots are on this computer"});
inline constexpr Sentence<std::string> notTransferred{"Не перенеслось: {}", "Not transferred: {}"};
inline constexpr Sentence<> transferBroken{"Перенос прерван", "Transfer interrupted"};
inline constexpr Sentence<> stateOnMac{"скопировано и сверено", "copied and verified"};
inline constexpr Sentence<> stateAlreadyThere{"уже были на месте", "were already in place"};
inline constexpr Sentence<> stateFailed{"не перенеслось", "not transferred"};
inline constexpr Sentence<> stateOff{"пропущено по настройкам", "skipped by the settings"};
inline constexpr Sentence<> stateOptimized{"уменьшенная копия, пропущено по настройкам",
                                           "reduced copy, skipped by the settings"};
inline constexpr Sentence<> stateNotReached{"не дошла очередь", "not reached"};

/// Returns the meaning of a system error code (errno), for the user: "нет места на диске".
std::string systemErrorText(Language language, int code);

}  // namespace tavrix::sentences
