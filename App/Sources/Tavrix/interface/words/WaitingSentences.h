#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the screen without a source: waiting for a phone, or reading one. The texts
/// below the titles are those of deviceText().
namespace tavrix::window::sentences {

inline constexpr Sentence<> connectTitle{"Подключите iPhone кабелем",
                                         "Connect the iPhone by cable"};
inline constexpr Sentence<> connectText{"Переносим только то, что лежит на телефоне.",
                                        "Only what is on the phone is transferred."};
inline constexpr Sentence<> unlockTitle{"Разблокируйте iPhone", "Unlock the iPhone"};
inline constexpr Sentence<> connectingTitle{"Подключаюсь…", "Connecting…"};
inline constexpr Sentence<> trustTitle{"Нажмите на iPhone «Доверять»", "Tap Trust on the iPhone"};
inline constexpr Sentence<> deniedTitle{"iPhone не доверяет этому компьютеру",
                                        "The iPhone does not trust this computer"};
inline constexpr Sentence<> unreachableTitle{"iPhone не отвечает", "The iPhone does not respond"};
inline constexpr Sentence<> refusedTitle{"iPhone не показывает снимки",
                                         "The iPhone does not show its pictures"};
inline constexpr Sentence<> unseenRemedy{
    "Отключите кабель и подключите его снова; если это не поможет, перезагрузите iPhone.",
    "Unplug the cable and plug it in again; if that does not help, restart the iPhone."};
/// The last part of the path.
inline constexpr Sentence<std::string_view> openingTitle{"Открываю «{}»…", "Opening “{}”…"};
inline constexpr Sentence<> listingTitle{"Получаю список файлов…", "Listing the files…"};
inline constexpr Sentence<> readingTitle{"Читаю сведения о снимках…",
                                         "Reading the details of the shots…"};
inline constexpr Sentence<> stoppedTitle{"Чтение остановлено", "Reading was stopped"};
inline constexpr Sentence<> goneTitle{"iPhone отключён", "The iPhone is disconnected"};
inline constexpr Sentence<> sourceFailedTitle{"Не удалось открыть", "Cannot open it"};
inline constexpr Sentence<> keptInCache{
    "Прочитанное лежит в кэше — заново читать не придётся.",
    "What was read is kept and will not have to be read again."};

// The steps.
inline constexpr Sentence<> stepPlug{"Подключить", "Plug in"};
inline constexpr Sentence<> stepUnlock{"Разблокировать", "Unlock"};
inline constexpr Sentence<> stepTrust{"Доверять компьютеру", "Trust the computer"};

/// The files read, and all: "1 204 / 31 206 файлов".
inline constexpr Sentence<std::string_view, std::string_view> readOf{"{} / {}", "{} / {}"};
/// The items found, and those of last time.
inline constexpr Sentence<std::string_view, std::string_view> foundOf{
    "{}, в прошлый раз было {}", "{}, last time there were {}"};
inline constexpr Sentence<std::string_view> readPerSecond{"{}/с", "{}/s"};

inline constexpr Sentence<> retry{"Повторить", "Try Again"};
inline constexpr Sentence<> stopReading{"Остановить", "Stop"};
inline constexpr Sentence<> goOnReading{"Продолжить чтение", "Go On Reading"};
inline constexpr Sentence<> orDropFolder{"или перетащите папку в окно", "or drop a folder here"};
inline constexpr Sentence<> waitForPhone{"Ждать iPhone на кабеле",
                                         "Wait for an iPhone on the Cable"};

}  // namespace tavrix::window::sentences
