#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the page of a transfer under way.
namespace tavrix::window::sentences {

/// The name of the phone, and the destination.
inline constexpr Sentence<std::string_view> transferringFrom{"Перенос с «{}»",
                                                             "Transfer from “{}”"};
inline constexpr Sentence<std::string_view, std::string_view> filesDone{"{} / {}", "{} / {}"};
inline constexpr Sentence<std::string_view, std::string_view> bytesDone{"{} из {}", "{} of {}"};
inline constexpr Sentence<std::string_view> bytesPerSecond{"{}/с", "{}/s"};
inline constexpr Sentence<std::string_view> aboutLeft{"осталось около {}", "about {} left"};
inline constexpr Sentence<> lessThanMinuteLeft{"осталось меньше минуты", "less than a minute left"};
inline constexpr Sentence<std::uint64_t> minutesText{"{}\u00A0мин", "{}\u00A0min"};
inline constexpr Sentence<std::uint64_t> hoursText{"{}\u00A0ч", "{}\u00A0h"};

inline constexpr Sentence<> stageCopying{"1 · Копирование", "1 · Copying"};
inline constexpr Sentence<> stageVerifying{"2 · Сверка", "2 · Verification"};
inline constexpr Sentence<> stageConverting{"3 · Конвертация", "3 · Conversion"};
inline constexpr Sentence<> stagePacking{"4 · Архивация", "4 · Packing"};
/// The files done, and all: "20 / 40 файлов".
inline constexpr Sentence<std::string_view, std::string_view> verifiedOf{"сверено {} / {}",
                                                                         "verified {} / {}"};
inline constexpr Sentence<> stageQueued{"в очереди", "queued"};
inline constexpr Sentence<> stageOff{"выключена", "off"};

inline constexpr Sentence<> transferWaits{"Перенос ждёт", "The transfer is waiting"};
inline constexpr Sentence<> finishing{"Дописываю на диск и сохраняю итог…",
                                      "Writing the last data and saving the result…"};
inline constexpr Sentence<> stopping{"Останавливаю…", "Stopping…"};
inline constexpr Sentence<> cancelTransfer{"Отменить", "Cancel"};
inline constexpr Sentence<> foldersOfRun{"Папки", "Folders"};

// For the system.
inline constexpr Sentence<> inhibitCopying{"Идёт перенос фотографий",
                                           "Photos are being transferred"};
inline constexpr Sentence<> inhibitReading{"Читаются фотографии", "Photos are being read"};

}  // namespace tavrix::window::sentences
