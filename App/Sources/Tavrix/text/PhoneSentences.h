#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"

/// The sentences about phones on the cable, in both languages side by side. Each of the first group
/// states the obstacle and what to do about it; carryOnByMyself or tryAgain completes it.
namespace tavrix::sentences {

inline constexpr Sentence<> noPhone{"iPhone не подключён. Подключите его кабелем и разблокируйте",
                                    "No iPhone is connected. Connect it by cable and unlock it"};
inline constexpr Sentence<> phoneGone{"iPhone отключён. Подключите кабель",
                                      "The iPhone is disconnected. Plug the cable in"};
/// The value is the text of unseenPhoneText().
inline constexpr Sentence<std::string> phoneUnseen{
    "{}. Отключите кабель и подключите его снова; если это не поможет, перезагрузите iPhone",
    "{}. Unplug the cable and plug it in again; if that does not help, restart the iPhone"};
inline constexpr Sentence<std::string> phoneNotThere{
    "iPhone {} не подключён. Подключите его кабелем и разблокируйте",
    "The iPhone {} is not connected. Connect it by cable and unlock it"};
/// The name of the connected phone, and the serial number of the phone that is needed.
inline constexpr Sentence<std::string, std::string> anotherPhone{
    "Подключён другой iPhone — «{}», а нужен {}. Подключите его кабелем и разблокируйте",
    "Another iPhone, “{}”, is connected, but {} is needed. Connect it by cable and unlock it"};
inline constexpr Sentence<> phoneServiceMissing{
    "Подключите iPhone кабелем и разблокируйте. Если он подключён, но не виден, установите службу "
    "usbmuxd, через которую система с ним говорит: sudo apt install usbmuxd",
    "Connect the iPhone by cable and unlock it. If it is connected and still not seen, install the "
    "service usbmuxd, through which the system talks to it: sudo apt install usbmuxd"};
inline constexpr Sentence<std::string> phoneLocked{"iPhone «{}» заблокирован. Разблокируйте его",
                                                   "The iPhone “{}” is locked. Unlock it"};
inline constexpr Sentence<std::string> phoneTrustPending{
    "iPhone «{}» спрашивает, доверять ли этому компьютеру. Нажмите на нём «Доверять» и введите код",
    "The iPhone “{}” asks whether to trust this computer. Tap Trust on it and enter the passcode"};
inline constexpr Sentence<std::string> phoneTrustDenied{
    "iPhone «{}» не доверяет этому компьютеру. Отключите кабель, подключите его снова и нажмите на "
    "iPhone «Доверять»",
    "The iPhone “{}” does not trust this computer. Unplug the cable, plug it in again and tap "
    "Trust "
    "on the iPhone"};
inline constexpr Sentence<std::string> phoneUnreachable{
    "iPhone «{}» не отвечает. Отключите кабель, подключите его снова и разблокируйте iPhone",
    "The iPhone “{}” does not respond. Unplug the cable, plug it in again and unlock the iPhone"};

inline constexpr Sentence<std::string> phoneSilent{
    "iPhone «{}» подключён, но не отвечает. Отключите кабель и подключите его снова; если это не "
    "поможет, перезагрузите iPhone",
    "The iPhone “{}” is connected but does not respond. Unplug the cable and plug it in again; if "
    "that does not help, restart the iPhone"};

inline constexpr Sentence<std::string> phoneFolderRefused{
    "iPhone «{}» не показывает свои снимки. Разблокируйте его и подключите кабель снова",
    "The iPhone “{}” does not show its pictures. Unlock it and plug the cable in again"};

inline constexpr Sentence<> carryOnByMyself{" — продолжу сам.", " — I will carry on by myself."};
inline constexpr Sentence<> tryAgain{", затем повторите команду.", ", then run the command again."};

inline constexpr Sentence<> phoneIsBack{"iPhone снова на связи — продолжаю.",
                                        "The iPhone is back — carrying on."};
inline constexpr Sentence<std::string, std::string> otherPhoneCame{
    "Подключён другой iPhone: {}. Перенос ждёт iPhone «{}».",
    "Another iPhone was connected: {}. The transfer waits for the iPhone “{}”."};
inline constexpr Sentence<> waitingStopped{
    "Ожидание айфона прервано. Ничего не скопировано; повторите команду, когда он будет готов.",
    "Waiting for the iPhone was stopped. Nothing was copied; run the command again when it is "
    "ready."};
inline constexpr Sentence<std::string, std::string> otherPhones{
    "Выбран iPhone «{}». Подключены и другие: {}; чтобы выбрать другой, укажите его: phone:НОМЕР.",
    "Using the iPhone “{}”. Others are connected: {}; to use another one, name it: phone:SERIAL."};

// The entries of a phone that are not in its catalogue: the number and the first names.
inline constexpr Sentence<std::string, std::string> phoneFoldersRefused{
    "iPhone не показывает папки ({}): {}; подключите его заново и повторите.",
    "The iPhone does not show folders ({}): {}; plug it in again and try again."};
inline constexpr Sentence<std::string, std::string> phoneFilesRefused{
    "iPhone не отдаёт файлы ({}): {}; в каталоге они без даты съёмки и места. Подключите его "
    "заново и повторите.",
    "The iPhone does not provide files ({}): {}; the catalogue has no capture date and place for "
    "them. Plug it in again and try again."};

// The list of phones.
inline constexpr Sentence<> stateReady{"готов", "ready"};
inline constexpr Sentence<> stateLocked{"заблокирован: разблокируйте его", "locked: unlock it"};
inline constexpr Sentence<> stateTrustPending{
    "спрашивает, доверять ли этому компьютеру: нажмите на нём «Доверять»",
    "asks whether to trust this computer: tap Trust on it"};
inline constexpr Sentence<> stateTrustDenied{
    "не доверяет этому компьютеру: подключите его заново и нажмите «Доверять»",
    "does not trust this computer: plug it in again and tap Trust"};
inline constexpr Sentence<> stateUnreachable{"не отвечает: подключите его заново",
                                             "does not respond: plug it in again"};
inline constexpr Sentence<> noPhonesListed{"Не подключён ни один iPhone.",
                                           "No iPhone is connected."};
inline constexpr Sentence<> stateSilent{"подключён, но не отвечает: подключите его заново",
                                        "connected but does not respond: plug it in again"};

}  // namespace tavrix::sentences
