#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"

/// What the command line tells of phones on the cable. Each of the first says what is in the way
/// and what to do, and is followed by one of the two ends.
namespace tavrix::cli::sentences {

inline constexpr Sentence<> noPhone{"iPhone не подключён. Подключите его кабелем и разблокируйте",
                                    "No iPhone is connected. Connect it by cable and unlock it"};
inline constexpr Sentence<> phoneGone{"iPhone отключён. Подключите кабель",
                                      "The iPhone is disconnected. Plug the cable in"};
/// What the bus tells of a phone.
inline constexpr Sentence<std::string> phoneUnseen{
    "{}. Отключите кабель и подключите его снова; если это не поможет, перезагрузите iPhone",
    "{}. Unplug the cable and plug it in again; if that does not help, restart the iPhone"};
inline constexpr Sentence<std::string> phoneNotThere{
    "iPhone {} не подключён. Подключите его кабелем и разблокируйте",
    "The iPhone {} is not connected. Connect it by cable and unlock it"};
/// Another one's name, and the number of the one that is wanted.
inline constexpr Sentence<std::string, std::string> anotherPhone{
    "На кабеле другой iPhone — «{}», а нужен {}. Подключите его кабелем и разблокируйте",
    "Another iPhone is on the cable, “{}”; the one needed is {}. Connect it by cable and unlock "
    "it"};
inline constexpr Sentence<> phoneServiceMissing{
    "Служба usbmuxd, через которую виден iPhone, не отвечает. Установите пакет usbmuxd, запустите "
    "службу и подключите iPhone кабелем",
    "The service usbmuxd, through which an iPhone is seen, does not answer. Install the package "
    "usbmuxd, start the service and connect the iPhone by cable"};
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
    "The iPhone “{}” does not answer. Unplug the cable, plug it in again and unlock the iPhone"};

inline constexpr Sentence<std::string> phoneSilent{
    "iPhone «{}» на кабеле, но ответа от него нет. Отключите кабель и подключите его снова; если "
    "это не поможет, перезагрузите iPhone",
    "The iPhone “{}” is on the cable but gives no answer. Unplug the cable and plug it in again; "
    "if "
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
    "Взят iPhone «{}». На кабеле есть и другие: {}; чтобы взять другой, укажите его: phone:НОМЕР.",
    "The iPhone “{}” is taken. There are others on the cable: {}; to take another one, name it: "
    "phone:SERIAL."};

// What of a phone is not in its catalogue: how many, and their beginning.
inline constexpr Sentence<std::string, std::string> phoneFoldersRefused{
    "iPhone не показывает папки ({}): {}; подключите его заново и повторите.",
    "The iPhone does not show folders ({}): {}; plug it in again and try again."};
inline constexpr Sentence<std::string, std::string> phoneFilesRefused{
    "iPhone не отдаёт файлы ({}): {}; в каталоге они без даты съёмки и места. Подключите его "
    "заново "
    "и повторите.",
    "The iPhone does not hand over files ({}): {}; the catalogue lacks their capture date and "
    "place. Plug it in again and try again."};

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
                                             "does not answer: plug it in again"};
inline constexpr Sentence<> noPhonesListed{"На кабеле нет ни одного айфона.",
                                           "There is no iPhone on the cable."};
inline constexpr Sentence<> stateSilent{"на вопросы ответа нет: подключите его заново",
                                        "gives no answer: plug it in again"};

}  // namespace tavrix::cli::sentences
