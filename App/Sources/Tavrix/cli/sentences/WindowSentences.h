#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of `tavrix window` and others about the desktop, in both languages side by side.
namespace tavrix::cli::sentences {

/// For the system, which shows it to users who ask why the computer does not fall asleep.
inline constexpr Sentence<> awakeForTransfer{"Идёт перенос фотографий",
                                             "Photos are being transferred"};

/// The path of the program.
inline constexpr Sentence<std::string_view> windowNotInstalled{
    "Окно не установлено: нет программы «{}»; установите пакет tavrix-window.",
    "The window is not installed: there is no program “{}”; install the package tavrix-window."};
/// The path of the program and the reason.
inline constexpr Sentence<std::string_view, std::string_view> windowNotStarted{
    "Не удалось запустить «{}»: {}; проверьте права доступа и повторите.",
    "Cannot start “{}”: {}; check its permissions and run the command again."};
/// An option.
inline constexpr Sentence<std::string_view> windowTakesNo{
    "Окно не принимает {}: настройки выбирают в нём самом. Пример: tavrix window --help.",
    "The window does not take {}: its settings are chosen in it. For an example, run tavrix window "
    "--help."};

}  // namespace tavrix::cli::sentences
